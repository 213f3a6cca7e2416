#include "gui/PictureStore.h"

#include <stdexcept>

namespace qb {

PictureStore::~PictureStore() {
    for (auto& [name, e] : pictures_) device_.releaseTexture(e.texture);
}

TextureId PictureStore::acquire(const std::string& path, uint32_t colourKey, int32_t width, int32_t height) {
    auto it = pictures_.find({path, colourKey});
    if (it == pictures_.end()) {
        const TextureId id = device_.createTextureFromFile(path, width, height, colourKey, false);
        if (id == 0) throw std::runtime_error("Cannot create a texture from " + path);
        it = pictures_.emplace(std::make_pair(path, colourKey), Entry{id, 0}).first;
    }
    ++it->second.holders;
    return it->second.texture;
}

void PictureStore::release(TextureId texture) {
    if (texture == 0) return;
    for (auto it = pictures_.begin(); it != pictures_.end(); ++it) {
        if (it->second.texture != texture) continue;
        if (--it->second.holders <= 0) {
            device_.releaseTexture(texture);
            pictures_.erase(it);
        }
        return;
    }
}

}  // namespace qb
