#include "platform/sdl/GlPipeline.h"

namespace qb {

void UnpackArgb(uint32_t argbColour, uint8_t rgba[4]) {
    rgba[0] = static_cast<uint8_t>(argbColour >> 16);
    rgba[1] = static_cast<uint8_t>(argbColour >> 8);
    rgba[2] = static_cast<uint8_t>(argbColour);
    rgba[3] = static_cast<uint8_t>(argbColour >> 24);
}

GlVertex FromBlockVertex(const BlockVertex& b) {
    GlVertex v{b.x, b.y, b.z, 1.0f, {}, b.u, b.v};
    UnpackArgb(b.diffuse, v.rgba);
    return v;
}

GLenum GlBlendFactor(uint32_t blend) {
    switch (blend) {
        case BlendZero:
            return GL_ZERO;
        case BlendOne:
            return GL_ONE;
        case BlendSrcAlpha:
            return GL_SRC_ALPHA;
        case BlendInvSrcAlpha:
            return GL_ONE_MINUS_SRC_ALPHA;
        // The back buffer has no alpha, as the game's 16-bit one had none:
        // its alpha reads as 1.
        case BlendDestAlpha:
            return GL_DST_ALPHA;
        case BlendInvDestAlpha:
            return GL_ONE_MINUS_DST_ALPHA;
        default:
            return GL_ONE;
    }
}

GLenum GlPrimitive(Primitive type) {
    switch (type) {
        case Primitive::PointList:
            return GL_POINTS;
        case Primitive::TriangleList:
            return GL_TRIANGLES;
        case Primitive::TriangleStrip:
            return GL_TRIANGLE_STRIP;
    }
    return GL_TRIANGLES;
}

int VertexCount(Primitive type, int primitiveCount) {
    if (primitiveCount <= 0) return 0;
    switch (type) {
        case Primitive::PointList:
            return primitiveCount;
        case Primitive::TriangleList:
            return primitiveCount * 3;
        case Primitive::TriangleStrip:
            return primitiveCount + 2;
    }
    return 0;
}

bool StageAlphaOpaque(uint32_t op, uint32_t arg1, uint32_t arg2, bool textureOpaque, bool diffuseOpaque,
                      bool factorOpaque) {
    auto opaque = [&](uint32_t arg) {
        return arg == TaTexture ? textureOpaque : arg == TaTFactor ? factorOpaque : diffuseOpaque;
    };
    switch (op) {
        case TopSelectArg1:
            return opaque(arg1);
        case TopSelectArg2:
            return opaque(arg2);
        case TopModulate:
            return opaque(arg1) && opaque(arg2);
        default:  // the diffuse alpha passes
            return diffuseOpaque;
    }
}

bool BlendKeepsOpaqueSource(uint32_t srcBlend, uint32_t destBlend) {
    const bool sourceWhole = srcBlend == BlendOne || srcBlend == BlendSrcAlpha;
    const bool destGone = destBlend == BlendZero || destBlend == BlendInvSrcAlpha;
    return sourceWhole && destGone;
}

void GlCombine(bool alpha, uint32_t op, uint32_t arg1, uint32_t arg2) {
    const GLenum combine = alpha ? GL_COMBINE_ALPHA : GL_COMBINE_RGB;
    const GLenum src0 = alpha ? GL_SRC0_ALPHA : GL_SRC0_RGB;
    const GLenum src1 = alpha ? GL_SRC1_ALPHA : GL_SRC1_RGB;
    const GLint operand = alpha ? GL_SRC_ALPHA : GL_SRC_COLOR;
    // The texture factor is the environment's constant colour.
    auto source = [](uint32_t arg) {
        return arg == TaTexture ? GL_TEXTURE : arg == TaTFactor ? GL_CONSTANT : GL_PRIMARY_COLOR;
    };
    glTexEnvi(GL_TEXTURE_ENV, alpha ? GL_OPERAND0_ALPHA : GL_OPERAND0_RGB, operand);
    glTexEnvi(GL_TEXTURE_ENV, alpha ? GL_OPERAND1_ALPHA : GL_OPERAND1_RGB, operand);
    switch (op) {
        case TopSelectArg1:
            glTexEnvi(GL_TEXTURE_ENV, combine, GL_REPLACE);
            glTexEnvi(GL_TEXTURE_ENV, src0, source(arg1));
            break;
        case TopSelectArg2:
            glTexEnvi(GL_TEXTURE_ENV, combine, GL_REPLACE);
            glTexEnvi(GL_TEXTURE_ENV, src0, source(arg2));
            break;
        case TopModulate:
            glTexEnvi(GL_TEXTURE_ENV, combine, GL_MODULATE);
            glTexEnvi(GL_TEXTURE_ENV, src0, source(arg1));
            glTexEnvi(GL_TEXTURE_ENV, src1, source(arg2));
            break;
        default:  // disabled: the diffuse colour passes
            glTexEnvi(GL_TEXTURE_ENV, combine, GL_REPLACE);
            glTexEnvi(GL_TEXTURE_ENV, src0, GL_PRIMARY_COLOR);
            break;
    }
}

}  // namespace qb
