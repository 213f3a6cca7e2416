#include "world/clsBackground.h"

namespace qb {

clsBackground::~clsBackground() {
    if (texture_ != 0) device_.releaseTexture(texture_);
}

void clsBackground::create(const std::string& path) {
    const TextureId fresh = device_.createTextureFromFile(path, 0, 0, 0, true);
    if (texture_ != 0) device_.releaseTexture(texture_);
    texture_ = fresh;
    name_ = path;
    const float w = screenWidth_, h = screenHeight_;
    // Without its picture the quad would show its plain vertex colour: black
    // then, as an empty sky is, so white menu text stays readable over it.
    const uint32_t c = texture_ != 0 ? 0xFFFFFFFFu : 0xFF000000u;
    // Triangle-strip order: top-left, top-right, bottom-left, bottom-right.
    quad_[0] = ScreenVertex{0, 0, 0.999f, 1, c, 0, 0, 0};
    quad_[1] = ScreenVertex{w, 0, 0.999f, 1, c, 0, 1, 0};
    quad_[2] = ScreenVertex{0, h, 0.999f, 1, c, 0, 0, 1};
    quad_[3] = ScreenVertex{w, h, 0.999f, 1, c, 0, 1, 1};
}

void clsBackground::draw() {
    device_.setRenderState(RenderState::ZWriteEnable, 0);
    device_.setTexture(texture_);
    device_.drawScreenVertices(Primitive::TriangleStrip, quad_.data(), 2);
    device_.setRenderState(RenderState::ZWriteEnable, 1);
}

}  // namespace qb
