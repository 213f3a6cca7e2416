// A model of its own: a mesh with a skin for each of its parts, read from its
// .x file and released by its one owner. The car and its ghost each keep one;
// the pieces of a track share theirs through WorldResources.
#pragma once

#include <string>
#include <vector>

#include "platform/GraphicsDevice.h"

namespace qb {

class MeshModel {
public:
    explicit MeshModel(GraphicsDevice& device) : device_(device) {}
    ~MeshModel() { Release(); }
    MeshModel(const MeshModel&) = delete;
    MeshModel& operator=(const MeshModel&) = delete;

    // Reads the model at `file` with its skins from `skinsDir`, after
    // releasing the one held. Throws what the device throws for a file it
    // cannot read; what was read by then is held until released.
    void Load(const std::string& file, const std::string& skinsDir);
    void Release();
    // Every part with its skin, at the world transform already set.
    void Draw() const;
    bool Loaded() const { return mesh_ != 0; }
    // The skin of part `part` (0 when it has none or there is no such part).
    TextureId Skin(size_t part) const { return part < skins_.size() ? skins_[part] : 0; }

private:
    GraphicsDevice& device_;
    MeshId mesh_ = 0;
    std::vector<TextureId> skins_;  // 0 where a part has none
};

}  // namespace qb
