// DirectX .x meshes read with assimp, back in the file's own left-handed
// coordinates, winding and texture coordinates (assimp turns .x files
// right-handed on import; we undo that). One vertex list per material: the
// mesh subset with that attribute number.
#pragma once

#include <string>
#include <vector>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

struct XMeshData {
    std::vector<MeshMaterial> materials;
    std::vector<std::vector<BlockVertex>> subsets;  // triangle lists, index = material
};

// False when the file cannot be read. The vertices are white unless the file
// gives vertex colours: the game draws unlit, and Direct3D's unlit colour of
// a vertex without one is opaque white.
bool LoadXMesh(const std::string& path, XMeshData& out);

}  // namespace qb
