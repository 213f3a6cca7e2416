// Pieces of the fixed-function mapping shared by the device's files: the
// vertex GL is handed, Direct3D colours and blend factors in GL terms, and
// texture stage 0 as a GL texture combiner.
#pragma once

#include <epoxy/gl.h>

#include <cstdint>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

// Position with w, colour as RGBA bytes, one texture pair.
struct GlVertex {
    float x, y, z, w;
    uint8_t rgba[4];
    float u, v;
};

// ARGB word to R, G, B, A bytes.
void UnpackArgb(uint32_t argbColour, uint8_t rgba[4]);
GlVertex FromBlockVertex(const BlockVertex& b);
GLenum GlBlendFactor(uint32_t blend);
GLenum GlPrimitive(Primitive type);
// Vertices a Direct3D primitive count stands for.
int VertexCount(Primitive type, int primitiveCount);
// One half (colour or alpha) of texture stage 0 as a GL combiner. At stage 0
// "current" is the diffuse colour.
void GlCombine(bool alpha, uint32_t op, uint32_t arg1, uint32_t arg2);
// Whether texture stage 0's alpha comes out fully opaque, given whether the
// texture, the vertices' diffuse colours and the texture factor are.
bool StageAlphaOpaque(uint32_t op, uint32_t arg1, uint32_t arg2, bool textureOpaque, bool diffuseOpaque,
                      bool factorOpaque = true);
// Whether blending with these factors leaves a fully opaque source as it is:
// then a draw may skip it, and the destination read it costs.
bool BlendKeepsOpaqueSource(uint32_t srcBlend, uint32_t destBlend);
// Whether every vertex colour's alpha is 255.
template <typename Vertex>
bool DiffuseOpaque(const Vertex* v, int count) {
    for (int i = 0; i < count; ++i)
        if ((v[i].diffuse >> 24) != 255u) return false;
    return true;
}

}  // namespace qb
