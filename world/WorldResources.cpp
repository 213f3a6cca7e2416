#include "world/WorldResources.h"

#include "world/AnimatedTextures.h"

namespace qb {

WorldResources::~WorldResources() {
    clear();
}

TextureId WorldResources::texture(const std::string& path) {
    auto it = textures_.find(path);
    if (it != textures_.end()) {
        it->second.track = track_;
        return it->second.id;
    }
    const TextureId id = device.createTextureFromFile(path, 0, 0, 0, true);
    if (id != 0) textures_.emplace(path, HeldTexture{id, track_});
    return id;
}

const SharedMesh* WorldResources::mesh(const std::string& path, const std::string& skinsDir) {
    auto it = meshes_.find(path);
    if (it != meshes_.end()) return &it->second;
    int count = 0;
    const MeshId id = device.loadMesh(path, count);
    if (id == 0) return nullptr;
    SharedMesh m;
    m.mesh = id;
    m.materials.resize(count);
    m.textures.assign(count, 0);
    for (int i = 0; i < count; ++i) {
        m.materials[i] = device.meshMaterial(id, i);
        // Drawn unlit: the ambient term takes the diffuse colour.
        m.materials[i].ambient = m.materials[i].diffuse;
        if (!m.materials[i].textureFile.empty())
            m.textures[i] = texture(skinsDir + m.materials[i].textureFile);
    }
    return &meshes_.emplace(path, std::move(m)).first->second;
}

void WorldResources::clear() {
    for (auto& [path, m] : meshes_) device.releaseMesh(m.mesh);
    meshes_.clear();
    for (auto& [path, t] : textures_) device.releaseTexture(t.id);
    textures_.clear();
}

void WorldResources::releaseUnused() {
    auto isFrame = [this](const std::string& path) {
        return animated != nullptr && animated->IsAnimatedTexture(path.substr(path.find_last_of('/') + 1));
    };
    // A track that animates a face keeps all the frames it steps through.
    bool animates = false;
    for (const auto& [path, t] : textures_) animates = animates || (t.track == track_ && isFrame(path));
    for (auto it = textures_.begin(); it != textures_.end();) {
        bool skin = false;
        for (const auto& [path, m] : meshes_)
            for (TextureId t : m.textures) skin = skin || t == it->second.id;
        if (it->second.track == track_ || skin || (animates && isFrame(it->first))) {
            ++it;
            continue;
        }
        device.releaseTexture(it->second.id);
        it = textures_.erase(it);
    }
}

}  // namespace qb
