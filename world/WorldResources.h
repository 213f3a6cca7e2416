// Textures and meshes shared by the objects of a track. Every block face
// that names the same file shows the same picture, so each file is read from
// disk once and the texture is handed out again on every later request: a
// rebuilt track (after every crash) and the animation frames cost no disk
// reads. Objects hold ids only; the cache releases them when it is cleared
// or destroyed.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/GraphicsDevice.h"

namespace qb {

class AnimatedTextures;

struct SharedMesh {
    MeshId mesh = 0;
    std::vector<MeshMaterial> materials;  // diffuse already copied to ambient
    std::vector<TextureId> textures;      // 0 where a material names no skin
};

class WorldResources {
public:
    explicit WorldResources(GraphicsDevice& device) : device(device) {}
    ~WorldResources();
    WorldResources(const WorldResources&) = delete;
    WorldResources& operator=(const WorldResources&) = delete;

    // A mipmapped texture for the file at `path`, loaded on first request.
    // 0 when the file cannot be read (asked again next time).
    TextureId texture(const std::string& path);
    // The .x mesh at `path` with its materials and skins (from `skinsDir`),
    // loaded on first request; nullptr when the model cannot be read.
    const SharedMesh* mesh(const std::string& path, const std::string& skinsDir);
    // Releases everything loaded so far.
    void clear();

    int texturesHeld() const { return static_cast<int>(textures_.size()); }

    GraphicsDevice& device;
    std::string TexturesPath;                    // folder of the face textures, ends with '/'
    std::string SkinsPath;                       // folder of the model skins, ends with '/'
    const AnimatedTextures* animated = nullptr;  // frame table for animated faces

private:
    std::unordered_map<std::string, TextureId> textures_;
    std::unordered_map<std::string, SharedMesh> meshes_;
};

}  // namespace qb
