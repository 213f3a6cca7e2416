#include "world/WorldResources.h"

namespace qb {

WorldResources::~WorldResources() {
    clear();
}

TextureId WorldResources::texture(const std::string& path) {
    auto it = textures_.find(path);
    if (it != textures_.end()) return it->second;
    const TextureId id = device.createTextureFromFile(path, 0, 0, 0, true);
    if (id != 0) textures_.emplace(path, id);
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
    for (auto& [path, id] : textures_) device.releaseTexture(id);
    textures_.clear();
}

}  // namespace qb
