// Textures and meshes shared by the objects of a track. Every block face
// that names the same file shows the same picture, so each file is read from
// disk once and the texture is handed out again on every later request: a
// rebuilt track (after every crash) and the animation frames cost no disk
// reads. Objects hold ids only; the cache releases them when it is cleared
// or destroyed, and a new track lets go of the textures the last one used
// and it does not.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/GraphicsDevice.h"
#include "world/VertexPool.h"

namespace qb {

class AnimatedTextures;

struct SharedMesh {
    MeshId mesh = 0;
    std::vector<MeshMaterial> materials;  // diffuse already copied to ambient
    std::vector<TextureId> textures;      // 0 where a material names no skin
};

class WorldResources {
public:
    explicit WorldResources(GraphicsDevice& device) : device(device), vertices(device) {}
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
    // A new track is being built: what is asked for from here on is its own.
    void beginTrack() { ++track_; }
    // Releases the textures the track begun last has not asked for. Meshes
    // stay (the one model of the stars), with the skins they show.
    void releaseUnused();

    int texturesHeld() const { return static_cast<int>(textures_.size()); }

    GraphicsDevice& device;
    // The slots the track's boxes and ramps keep their vertices in. They
    // outlive clear(): objects still standing keep theirs.
    VertexPool vertices;
    std::string TexturesPath;                    // folder of the face textures, ends with '/'
    std::string SkinsPath;                       // folder of the model skins, ends with '/'
    const AnimatedTextures* animated = nullptr;  // frame table for animated faces

private:
    struct HeldTexture {
        TextureId id = 0;
        unsigned track = 0;  // the track that asked for it last
    };
    std::unordered_map<std::string, HeldTexture> textures_;
    std::unordered_map<std::string, SharedMesh> meshes_;
    unsigned track_ = 0;
};

}  // namespace qb
