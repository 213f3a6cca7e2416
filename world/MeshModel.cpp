#include "world/MeshModel.h"

namespace qb {

void MeshModel::Load(const std::string& file, const std::string& skinsDir) {
    Release();
    int count = 0;
    mesh_ = device_.loadMesh(file, count);
    for (int i = 0; i < count; ++i) {
        const MeshMaterial m = device_.meshMaterial(mesh_, i);
        skins_.push_back(m.textureFile.empty()
                             ? 0
                             : device_.createTextureFromFile(skinsDir + m.textureFile, 0, 0, 0, true));
    }
}

void MeshModel::Release() {
    for (TextureId t : skins_)
        if (t != 0) device_.releaseTexture(t);
    skins_.clear();
    if (mesh_ != 0) device_.releaseMesh(mesh_);
    mesh_ = 0;
}

void MeshModel::Draw() const {
    for (size_t i = 0; i < skins_.size(); ++i) {
        device_.setTexture(skins_[i]);
        device_.drawMeshSubset(mesh_, static_cast<int>(i));
    }
}

}  // namespace qb
