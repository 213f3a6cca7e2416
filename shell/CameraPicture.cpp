#include "shell/CameraPicture.h"

#include "platform/D3DMath.h"

namespace qb {

namespace {
constexpr float Pi = 3.14159265f;
}

CameraPicture::CameraPicture(const Vector3& eye, const Vector3& lookAt, float width, float height)
    : width_(width), height_(height) {
    // The race sets this projection for both video modes; only the screen
    // it is stretched over changes.
    viewProjection_ = MatrixMultiply(MatrixLookAtLH(eye, lookAt, Vector3{0, 1, 0}),
                                     MatrixPerspectiveFovLH(Pi / 4.0f, 1.0f, 0.1f, 500.0f));
}

CameraPicture::Spot CameraPicture::Where(const Vector3& p) const {
    const auto& m = viewProjection_.m;
    float v[4];
    for (int c = 0; c < 4; ++c) v[c] = p.x * m[0][c] + p.y * m[1][c] + p.z * m[2][c] + m[3][c];
    Spot s;
    if (v[3] <= 0) return s;
    const float depth = v[2] / v[3];
    s.inFront = depth >= 0 && depth <= 1;
    s.x = (v[0] / v[3] + 1) / 2 * width_;
    s.y = (1 - v[1] / v[3]) / 2 * height_;
    return s;
}

bool CameraPicture::Inside(const Vector3& p, float margin) const {
    const Spot s = Where(p);
    const float mx = margin * width_, my = margin * height_;
    return s.inFront && s.x >= mx && s.x <= width_ - mx && s.y >= my && s.y <= height_ - my;
}

}  // namespace qb
