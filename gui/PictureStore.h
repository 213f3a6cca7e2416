// The menu pictures on the device, each file (with its colour key) held as
// one texture however many buttons show it, and only while one of them
// does: the last holder to let go releases it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "platform/GraphicsDevice.h"

namespace qb {

class PictureStore {
public:
    explicit PictureStore(GraphicsDevice& device) : device_(device) {}
    ~PictureStore();
    PictureStore(const PictureStore&) = delete;
    PictureStore& operator=(const PictureStore&) = delete;

    GraphicsDevice& device() { return device_; }

    // The texture of `path` keyed with `colourKey` (ARGB, 0 for none), loaded
    // for its first holder at width x height. Throws std::runtime_error when
    // the device cannot make it.
    TextureId acquire(const std::string& path, uint32_t colourKey, int32_t width, int32_t height);
    // One holder of `texture` lets go; 0 is ignored.
    void release(TextureId texture);

private:
    struct Entry {
        TextureId texture = 0;
        int holders = 0;
    };
    GraphicsDevice& device_;
    std::map<std::pair<std::string, uint32_t>, Entry> pictures_;
};

}  // namespace qb
