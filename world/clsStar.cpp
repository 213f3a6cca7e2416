#include "world/clsStar.h"

#include <cmath>

#include "platform/D3DMath.h"
#include "platform/WholeNumbers.h"
#include "world/WorldResources.h"

namespace qb {

void clsStar::load(const std::string& modelFile) {
    visible_ = true;
    mesh_ = res_.mesh(modelFile, res_.SkinsPath);
}

void clsStar::Spin(const WorldFrame& frame) {
    if (!visible_ || !frame.playing) return;
    spin_ += 5;
    if (spin_ > 360) spin_ = 1;
}

void clsStar::draw(float blend) {
    if (!visible_ || mesh_ == nullptr) return;
    GraphicsDevice& device = res_.device;
    // Past 360 the angle starts again at 1: keep turning the same way.
    const int32_t to = spin_ < drawnSpin_ ? spin_ + 360 : spin_;
    const double degrees =
        blend >= 1.0f ? spin_ : Lerp(static_cast<float>(drawnSpin_), static_cast<float>(to), blend);
    const float radians = static_cast<float>(degrees * 0.0174532923847437);
    Matrix4 world = MatrixRotationY(radians);
    world.m[3][0] = x_;
    world.m[3][1] = y_;
    world.m[3][2] = z_;
    device.setTransform(TransformKind::World, world);
    const int count = static_cast<int>(mesh_->materials.size());
    for (int i = 0; i < count; ++i) {
        device.setTexture(mesh_->textures[i]);
        device.drawMeshSubset(mesh_->mesh, i);
    }
}

int32_t clsStar::Xpos() const {
    return WholeCoordinate(x_);
}
int32_t clsStar::Ypos() const {
    return WholeCoordinate(y_);
}
void clsStar::Ypos(int32_t value) {
    if (value > -1) y_ = static_cast<float>(value);
}
int32_t clsStar::Zpos() const {
    return WholeCoordinate(z_);
}
void clsStar::Zpos(int32_t value) {
    if (value > -1) z_ = static_cast<float>(value);
}

}  // namespace qb
