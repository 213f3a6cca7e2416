#include "platform/sdl/XMesh.h"

#include <assimp/cimport.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>

#include "platform/AssetLimits.h"

namespace qb {

namespace {

uint32_t PackColour(const aiColor4D& c) {
    auto byte = [](float v) {
        return static_cast<uint32_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255.0f));
    };
    return argb(byte(c.a), byte(c.r), byte(c.g), byte(c.b));
}

ColorValue Colour(const aiMaterial* m, const char* key, unsigned type, unsigned index) {
    aiColor4D c(0, 0, 0, 1);
    if (aiGetMaterialColor(m, key, type, index, &c) != aiReturn_SUCCESS) return ColorValue{};
    return ColorValue{c.r, c.g, c.b, c.a};
}

}  // namespace

bool LoadXMesh(const std::string& path, XMeshData& out) {
    out = XMeshData{};
    std::string why;
    if (!CheckModelFile(path, why)) return false;
    const unsigned flags =
        aiProcess_Triangulate | aiProcess_PreTransformVertices | aiProcess_ConvertToLeftHanded;
    const aiScene* scene = aiImportFile(path.c_str(), flags);
    if (!scene) return false;
    out.materials.resize(scene->mNumMaterials);
    out.subsets.resize(scene->mNumMaterials);
    for (unsigned i = 0; i < scene->mNumMaterials; ++i) {
        const aiMaterial* m = scene->mMaterials[i];
        MeshMaterial& mat = out.materials[i];
        mat.diffuse = Colour(m, AI_MATKEY_COLOR_DIFFUSE);
        mat.ambient = Colour(m, AI_MATKEY_COLOR_AMBIENT);
        mat.specular = Colour(m, AI_MATKEY_COLOR_SPECULAR);
        mat.emissive = Colour(m, AI_MATKEY_COLOR_EMISSIVE);
        float power = 0;
        if (aiGetMaterialFloat(m, AI_MATKEY_SHININESS, &power) == aiReturn_SUCCESS) mat.power = power;
        aiString file;
        if (aiGetMaterialTexture(m, aiTextureType_DIFFUSE, 0, &file, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr) == aiReturn_SUCCESS)
            mat.textureFile = file.C_Str();
    }
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        const aiMesh* mesh = scene->mMeshes[i];
        if (mesh->mMaterialIndex >= out.subsets.size()) continue;
        std::vector<BlockVertex>& list = out.subsets[mesh->mMaterialIndex];
        for (unsigned f = 0; f < mesh->mNumFaces; ++f) {
            const aiFace& face = mesh->mFaces[f];
            if (face.mNumIndices != 3) continue;  // points and lines left over by triangulation
            for (unsigned k = 0; k < 3; ++k) {
                const unsigned idx = face.mIndices[k];
                BlockVertex v;
                v.x = mesh->mVertices[idx].x;
                v.y = mesh->mVertices[idx].y;
                v.z = mesh->mVertices[idx].z;
                v.diffuse = mesh->mColors[0] ? PackColour(mesh->mColors[0][idx]) : 0xFFFFFFFFu;
                v.specular = 0;
                if (mesh->mTextureCoords[0]) {
                    v.u = mesh->mTextureCoords[0][idx].x;
                    v.v = mesh->mTextureCoords[0][idx].y;
                }
                list.push_back(v);
            }
        }
    }
    aiReleaseImport(scene);
    return true;
}

}  // namespace qb
