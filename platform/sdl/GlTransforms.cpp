#include "platform/sdl/GlTransforms.h"

#include <cmath>

namespace qb {

Matrix4 D3DDepthToGl() {
    Matrix4 m;
    m.m[2][2] = 2.0f;
    m.m[3][2] = -1.0f;
    return m;
}

Matrix4 ScreenSpaceProjection(int bufferW, int bufferH, float scale) {
    const float w = static_cast<float>(bufferW), h = static_cast<float>(bufferH);
    Matrix4 m;
    m.m[0][0] = 2.0f * scale / w;
    m.m[1][1] = -2.0f * scale / h;
    m.m[2][2] = 2.0f;
    // Direct3D puts pixel centres on whole numbers, GL half-way between them.
    m.m[3][0] = 1.0f / w - 1.0f;
    m.m[3][1] = 1.0f - 1.0f / h;
    m.m[3][2] = -1.0f;
    return m;
}

float PointSpriteScreenSize(float size, int viewportHeight, float distance, float a, float b, float c) {
    const float attenuation = a + b * distance + c * distance * distance;
    if (attenuation <= 0.0f) return 0.0f;
    return static_cast<float>(viewportHeight) * size * std::sqrt(1.0f / attenuation);
}

}  // namespace qb
