#include "world/clsBackground.h"

namespace qb {

clsBackground::~clsBackground() {
    if (texture_ != 0) device_.releaseTexture(texture_);
}

void clsBackground::create(const std::string& path) {
    // The sky on show is kept when asked for again (a new screen size only
    // moves its corners). Another one replaces it: the old picture goes
    // first, so two skies are never held at once. The quad shows the picture
    // at about its own size, so it needs no smaller copies.
    if (path != name_ || texture_ == 0) {
        if (texture_ != 0) device_.releaseTexture(texture_);
        texture_ = device_.createTextureFromFile(path, 0, 0, 0, false);
        name_ = path;
    }
    const float w = screenWidth_, h = screenHeight_;
    // Without its picture the quad would show its plain vertex colour: black
    // then, as an empty sky is, so white menu text stays readable over it.
    const uint32_t c = texture_ != 0 ? 0xFFFFFFFFu : 0xFF000000u;
    // Skies are painted 4:3. A screen of another shape shows the middle of
    // the picture at its own shape, so the sun stays round: the 4:3 video
    // modes see all of it, as always.
    float u0 = 0, u1 = 1, v0 = 0, v1 = 1;
    if (w > 0 && h > 0) {
        const float shape = (w * 3.0f) / (h * 4.0f);
        if (shape > 1.0f) {
            v0 = 0.5f - 0.5f / shape;
            v1 = 0.5f + 0.5f / shape;
        } else if (shape < 1.0f) {
            u0 = 0.5f - 0.5f * shape;
            u1 = 0.5f + 0.5f * shape;
        }
    }
    // Triangle-strip order: top-left, top-right, bottom-left, bottom-right.
    quad_[0] = ScreenVertex{0, 0, 0.999f, 1, c, 0, u0, v0};
    quad_[1] = ScreenVertex{w, 0, 0.999f, 1, c, 0, u1, v0};
    quad_[2] = ScreenVertex{0, h, 0.999f, 1, c, 0, u0, v1};
    quad_[3] = ScreenVertex{w, h, 0.999f, 1, c, 0, u1, v1};
}

void clsBackground::draw() {
    device_.drawBackdrop(texture_, quad_);
}

}  // namespace qb
