// The picture stretched over the whole screen behind everything.
#pragma once

#include <array>
#include <string>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

class clsBackground {
public:
    // The quad covers the display of the current video mode, read at create.
    clsBackground(GraphicsDevice& device, const float& screenWidth, const float& screenHeight)
        : device_(device), screenWidth_(screenWidth), screenHeight_(screenHeight) {}
    ~clsBackground();
    clsBackground(const clsBackground&) = delete;
    clsBackground& operator=(const clsBackground&) = delete;

    void resetbackground() { name_.clear(); }
    // Loads the picture at `path` and builds the screen-filling quad.
    void create(const std::string& path);
    void draw();

    const std::string& pictureName() const { return name_; }
    TextureId texture() const { return texture_; }
    const std::array<ScreenVertex, 4>& quad() const { return quad_; }

private:
    GraphicsDevice& device_;
    const float& screenWidth_;
    const float& screenHeight_;
    TextureId texture_ = 0;
    std::array<ScreenVertex, 4> quad_{};
    std::string name_;
};

}  // namespace qb
