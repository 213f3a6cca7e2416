// The picture stretched over the whole screen behind everything.
#pragma once

#include <string>

#include "platform/GraphicsDevice.h"

namespace qb {

class clsBackground {
public:
    explicit clsBackground(GraphicsDevice& device) : device_(device) {}
    void create(const std::string& path) { (void)path; }
    void draw() {}
    void resetbackground() {}

private:
    GraphicsDevice& device_;
};

}  // namespace qb
