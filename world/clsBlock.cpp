#include "world/clsBlock.h"

#include <cmath>
#include <stdexcept>

#include "platform/D3DMath.h"
#include "platform/WholeNumbers.h"
#include "world/AnimatedTextures.h"
#include "world/BoxShape.h"
#include "world/WorldResources.h"

namespace qb {

namespace {
const char* const kFaceLetters[4] = {"A", "B", "C", "D"};

int FaceIndex(const std::string& face) {
    for (int i = 0; i < 4; ++i)
        if (face == kFaceLetters[i]) return i;
    return -1;
}

void CheckPlane(int planenumber, int count) {
    if (planenumber < 1 || planenumber > count)
        throw std::out_of_range("collision plane " + std::to_string(planenumber));
}
}  // namespace

clsBlock::clsBlock(WorldResources& resources) : res_(resources) {}

clsBlock::~clsBlock() {
    res_.vertices.give(slot_);
}

void clsBlock::Bounce() {
    bouncing_ = true;
    bouncePhase_ = -1.0f;
    bounceBase_ = y_;
}

void clsBlock::Fall() {
    falling_ = true;
}

void clsBlock::draw(float blend) {
    GraphicsDevice& device = res_.device;
    // scaling(size) followed by translation(position), written out directly.
    Matrix4 world;
    world.m[0][0] = sizeX_;
    world.m[1][1] = sizeY_;
    world.m[2][2] = sizeZ_;
    world.m[3][0] = x_;
    world.m[3][1] = Lerp(drawnY_, y_, blend);
    world.m[3][2] = z_;
    device.setTransform(TransformKind::World, world);
    DrawBoxFaces(device, slot_, {faces_[0].texture, faces_[1].texture, faces_[2].texture, faces_[3].texture});
}

void clsBlock::Advance(const WorldFrame& frame) {
    if (!frame.playing) return;

    if (falling_) {
        // A falling block never stops: it falls for as long as the track exists.
        fallvel_ = fallvel_ + frame.gravity;
        y_ = y_ - fallvel_;
        UpdateCollisionPlanes();
    }
    if (bouncing_) {
        const double t = bouncePhase_;
        const float height = static_cast<float>(static_cast<double>(bounceBase_) + 1.0 - t * t);
        fallvel_ = y_ - height;
        y_ = height;
        if (bouncePhase_ >= 1.1f) {
            bouncing_ = false;
            y_ = bounceBase_;
            fallvel_ = 0;
        }
        UpdateCollisionPlanes();
        bouncePhase_ = static_cast<float>(static_cast<double>(bouncePhase_) + 0.1);
    }
}

void clsBlock::Ypos(float value) {
    if (value > -1.0f) y_ = drawnY_ = value;
}

int32_t clsBlock::Zpos() const {
    return WholeCoordinate(z_);
}

void clsBlock::Zpos(int32_t value) {
    if (value > -1) z_ = static_cast<float>(value);
}

void clsBlock::Texture(const std::string& Name, const std::string& face, const std::string& TextureDir) {
    const int i = FaceIndex(face);
    if (i < 0) return;
    faces_[i].texture = res_.texture(TextureDir + Name);
    faces_[i].name = Name;
    faces_[i].animated = res_.animated != nullptr && res_.animated->IsAnimatedTexture(Name);
}

void clsBlock::create(float x, float y, float z, float sx, float sy, float sz) {
    BuildBoxVertices(vertices_, SideColour, TopColour);
    UploadVertices();
    x_ = x;
    y_ = drawnY_ = y;
    z_ = z;
    sizeX_ = sx;
    sizeY_ = sy;
    sizeZ_ = static_cast<float>(static_cast<double>(sz) - 0.1);
    UpdateCollisionPlanes();
}

void clsBlock::scaleX(float value) {
    if (value <= 0) return;
    sizeX_ = value;
    TileBoxX(vertices_, sizeX_, scaleTextureSide_, scaleTextureTop_);
    UploadVertices();
}

void clsBlock::scaleY(float value) {
    if (value <= 0) return;
    sizeY_ = value;
    TileBoxY(vertices_, sizeY_, scaleTextureSide_);
    UploadVertices();
}

void clsBlock::scalez(float value) {
    if (value <= 0) return;
    sizeZ_ = value;
    TileBoxZ(vertices_, sizeZ_, scaleTextureSide_, scaleTextureTop_);
    UploadVertices();
}

void clsBlock::ShowSymbolLarge() {
    if (actionCode_ == 0 || scaleTextureTop_ != 0) return;
    TileTopSymbol(vertices_, sizeX_, sizeZ_);
    UploadVertices();
}

const CollisionPlane& clsBlock::GetCollisionPlane(int planenumber) const {
    CheckPlane(planenumber, 5);
    return planes_[planenumber - 1];
}

Vector3 clsBlock::GetPlaneNormal(int planenumber) const {
    const CollisionPlane& p = GetCollisionPlane(planenumber);
    return Vector3{p.a, p.b, p.c};
}

void clsBlock::UpdateAnimatedTexture() {
    if (res_.animated == nullptr) return;
    for (int f = 0; f < 4; ++f)
        if (faces_[f].animated)
            Texture(res_.animated->NextAnimationFrame(faces_[f].name), kFaceLetters[f], res_.TexturesPath);
}

void clsBlock::SETTEXTURE() {
    res_.device.setTexture(faces_[0].texture);
}

void clsBlock::GetCollisionPlaneBounds(int planenumber, Vector3& greatest, Vector3& smallest) const {
    if (planenumber < 1 || planenumber > 5) return;
    CornerBounds(GetFaceCorners(planenumber), planenumber, greatest, smallest);
}

void clsBlock::UpdateCollisionPlanes() {
    BoxPlanes(Box{x_, y_, z_, sizeX_, sizeY_, sizeZ_}, planes_);
}

void clsBlock::UploadVertices() {
    if (slot_.buffer == 0) slot_ = res_.vertices.take();
    res_.vertices.write(slot_, vertices_.data(), VertexCount);
}

FaceCorners clsBlock::GetFaceCorners(int planenumber) const {
    return BoxFaceCorners(Box{x_, y_, z_, sizeX_, sizeY_, sizeZ_}, planenumber);
}

}  // namespace qb
