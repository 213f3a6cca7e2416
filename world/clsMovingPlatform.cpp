#include "world/clsMovingPlatform.h"

#include <cmath>
#include <stdexcept>

#include "platform/D3DMath.h"
#include "world/BoxShape.h"
#include "world/WorldResources.h"

namespace qb {

namespace {
const char* const kFaceLetters[4] = {"A", "B", "C", "D"};

// Positions are kept to 3 decimals (half to even) so that a platform's path
// does not drift over thousands of steps.
float Round3(float value) {
    return static_cast<float>(std::nearbyint(static_cast<double>(value) * 1000.0) / 1000.0);
}
}  // namespace

clsMovingPlatform::clsMovingPlatform(WorldResources& resources) : res_(resources) {}

clsMovingPlatform::~clsMovingPlatform() {
    res_.vertices.give(slot_);
}

void clsMovingPlatform::StartAnimation() {
    savedOrigin_ = origin_;
    savedDir_ = dir_;
}

void clsMovingPlatform::StopAnimation() {
    origin_ = savedOrigin_;
    x_ = drawnX_ = origin_.x;
    y_ = origin_.y;
    z_ = origin_.z;
    dir_ = savedDir_;
}

void clsMovingPlatform::AlignTexureCoords(int Side, int value) {
    const uint8_t v = static_cast<uint8_t>(value);
    if (Side == 1) {
        scaleTextureSide_ = v;
        TileBoxY(vertices_, sizeY_, scaleTextureSide_);
    } else {
        scaleTextureTop_ = v;
    }
    TileBoxX(vertices_, sizeX_, scaleTextureSide_, scaleTextureTop_);
    TileBoxZ(vertices_, sizeZ_, scaleTextureSide_, scaleTextureTop_);
    UploadVertices();
}

void clsMovingPlatform::draw(float blend) {
    GraphicsDevice& device = res_.device;
    Matrix4 world;
    world.m[0][0] = sizeX_;
    world.m[1][1] = sizeY_;
    world.m[2][2] = sizeZ_;
    world.m[3][0] = Lerp(drawnX_, x_, blend);
    world.m[3][1] = y_;
    world.m[3][2] = z_;
    device.setTransform(TransformKind::World, world);
    DrawBoxFaces(device, slot_, {faces_[0].texture, faces_[1].texture, faces_[2].texture, faces_[3].texture});
}

Vector3 clsMovingPlatform::GetVelocity() const {
    const double v = speed_ / 100.0;
    if (dir_ == TowardsMinusX) {
        if (static_cast<float>(x_ - v) >= static_cast<float>(origin_.x - static_cast<double>(dist_)))
            return Vector3{static_cast<float>(-v), 0, 0};
    } else if (dir_ == TowardsPlusX) {
        if (static_cast<float>(x_ + v) <= static_cast<float>(origin_.x + static_cast<double>(dist_)))
            return Vector3{static_cast<float>(v), 0, 0};
    }
    return Vector3{};
}

void clsMovingPlatform::move() {
    const double v = speed_ / 100.0;
    directionChanged_ = false;
    if (moving_ && dir_ == TowardsMinusX) {
        const float limit = static_cast<float>(origin_.x - static_cast<double>(dist_));
        const float next = static_cast<float>(x_ - v);
        if (next >= limit) {
            x_ = Round3(next);
        } else if (loopBack_) {
            directionChanged_ = true;
            x_ = Round3(limit);
            origin_.x = x_;
            dir_ = TowardsPlusX;
        } else {
            x_ = drawnX_ = origin_.x;  // a jump back to the start is not a slide
        }
    } else if (moving_ && dir_ == TowardsPlusX) {
        const float limit = static_cast<float>(origin_.x + static_cast<double>(dist_));
        const float next = static_cast<float>(x_ + v);
        if (next <= limit) {
            x_ = Round3(next);
        } else if (loopBack_) {
            directionChanged_ = true;
            x_ = Round3(limit);
            origin_.x = x_;
            dir_ = TowardsMinusX;
        } else {
            x_ = drawnX_ = origin_.x;
        }
    }
    UpdateCollisionPlanes();
}

void clsMovingPlatform::Xpos(float value) {
    x_ = drawnX_ = value;
    origin_.x = value;
    savedOrigin_.x = value;
}

void clsMovingPlatform::Ypos(float value) {
    if (value <= -1.0f) return;
    y_ = value;
    origin_.y = value;
    savedOrigin_.y = value;
}

void clsMovingPlatform::Zpos(float value) {
    if (value <= -1.0f) return;
    z_ = value;
    origin_.z = value;
    savedOrigin_.z = value;
}

void clsMovingPlatform::Texture(const std::string& Name, const std::string& face,
                                const std::string& TextureDir) {
    for (int i = 0; i < 4; ++i) {
        if (face != kFaceLetters[i]) continue;
        faces_[i].texture = res_.texture(TextureDir + Name);
        faces_[i].name = Name;
        selected_ = false;
        return;
    }
}

void clsMovingPlatform::create(float x, float y, float z) {
    BuildBoxVertices(vertices_, 0xFF9A9A9Au, 0xFFFFFFFFu);
    UploadVertices();
    x_ = drawnX_ = x;
    y_ = y;
    z_ = z;
    origin_ = savedOrigin_ = Vector3{x, y, z};
    moving_ = true;
    UpdateCollisionPlanes();
}

void clsMovingPlatform::ShowSymbolLarge() {
    if (scaleTextureTop_ != 0) return;
    TileTopSymbol(vertices_, sizeX_, sizeZ_);
    UploadVertices();
}

void clsMovingPlatform::scaleX(float value) {
    if (value <= 0) return;
    sizeX_ = value;
    TileBoxX(vertices_, sizeX_, scaleTextureSide_, scaleTextureTop_);
    UploadVertices();
}

void clsMovingPlatform::scaleY(float value) {
    if (value <= 0) return;
    sizeY_ = value;
    TileBoxY(vertices_, sizeY_, scaleTextureSide_);
    UploadVertices();
}

void clsMovingPlatform::scalez(float value) {
    if (value <= 0) return;
    sizeZ_ = value;
    TileBoxZ(vertices_, sizeZ_, scaleTextureSide_, scaleTextureTop_);
    UploadVertices();
}

void clsMovingPlatform::ResetToOrigin() {
    if (dir_ == 1) return;
    x_ = drawnX_ = origin_.x;
    y_ = origin_.y;
    z_ = origin_.z;
}

const CollisionPlane& clsMovingPlatform::GetCollisionPlane(int planenumber) const {
    if (planenumber < 1 || planenumber > 5)
        throw std::out_of_range("collision plane " + std::to_string(planenumber));
    return planes_[planenumber - 1];
}

Vector3 clsMovingPlatform::GetPlaneNormal(int planenumber) const {
    const CollisionPlane& p = GetCollisionPlane(planenumber);
    return Vector3{p.a, p.b, p.c};
}

void clsMovingPlatform::GetCollisionPlaneBounds(int planenumber, Vector3& greatest, Vector3& smallest) const {
    if (planenumber < 1 || planenumber > 5) return;
    CornerBounds(GetFaceCorners(planenumber), planenumber, greatest, smallest);
}

void clsMovingPlatform::UploadVertices() {
    if (slot_.buffer == 0) slot_ = res_.vertices.take();
    res_.vertices.write(slot_, vertices_.data(), static_cast<int>(vertices_.size()));
}

void clsMovingPlatform::UpdateCollisionPlanes() {
    BoxPlanes(Box{x_, y_, z_, sizeX_, sizeY_, sizeZ_}, planes_);
}

FaceCorners clsMovingPlatform::GetFaceCorners(int planenumber) const {
    return BoxFaceCorners(Box{x_, y_, z_, sizeX_, sizeY_, sizeZ_}, planenumber);
}

}  // namespace qb
