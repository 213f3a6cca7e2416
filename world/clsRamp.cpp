#include "world/clsRamp.h"

#include <cmath>
#include <stdexcept>

#include "platform/WholeNumbers.h"
#include "world/BoxShape.h"
#include "world/WorldResources.h"

namespace qb {

namespace {
constexpr uint32_t kSlopeColour = 0xFFFFFFFFu;
constexpr uint32_t kSideColour = 0xFF9A9A9Au;

// The rotation-0 wedge in the unit box (rises towards +z), clockwise seen
// from outside. Texture coordinates are in units of the face's own edges:
// `across` the slope's width, `along` its run, `up` the height.
enum Edge { Zero, Across, Along, Up };
struct WedgeVertex {
    float x, y, z;
    Edge uEdge;
    float u;
    Edge vEdge;
    float v;
};
constexpr WedgeVertex kWedge[18] = {
    // slope
    {0, 1, 1, Zero, 0, Zero, 0},
    {1, 1, 1, Across, 1, Zero, 0},
    {0, 0, 0, Zero, 0, Along, 1},
    {1, 1, 1, Across, 1, Zero, 0},
    {1, 0, 0, Across, 1, Along, 1},
    {0, 0, 0, Zero, 0, Along, 1},
    // side at x = 0, side at x = 1
    {0, 0, 0, Zero, 0, Up, 1},
    {0, 0, 1, Along, 1, Up, 1},
    {0, 1, 1, Along, 1, Zero, 0},
    {1, 0, 0, Zero, 0, Up, 1},
    {1, 1, 1, Along, 1, Zero, 0},
    {1, 0, 1, Along, 1, Up, 1},
    // end wall at z = 1
    {1, 1, 1, Zero, 0, Zero, 0},
    {0, 1, 1, Across, 1, Zero, 0},
    {1, 0, 1, Zero, 0, Up, 1},
    {0, 1, 1, Across, 1, Zero, 0},
    {0, 0, 1, Across, 1, Up, 1},
    {1, 0, 1, Zero, 0, Up, 1},
};

const CollisionPlane kNoPlane{};

float EdgeLength(Edge e, float across, float along, float up) {
    switch (e) {
        case Across:
            return across;
        case Along:
            return along;
        case Up:
            return up;
        default:
            return 0;
    }
}
}  // namespace

clsRamp::clsRamp(WorldResources& resources) : res_(resources) {}

clsRamp::~clsRamp() {
    res_.vertices.give(slot_);
}

void clsRamp::buildVertices() {
    const bool alongZ = rotation_ % 2 == 0;
    const float across = alongZ ? sizeX_ : sizeZ_;
    const float along = alongZ ? sizeZ_ : sizeX_;
    for (int i = 0; i < VertexCount; ++i) {
        const WedgeVertex& w = kWedge[i];
        float x = w.x, z = w.z;
        // Each quarter turn takes the direction of rise from +z to +x, -z, -x.
        for (int r = 0; r < rotation_ % 4; ++r) {
            const float nx = z, nz = 1.0f - x;
            x = nx;
            z = nz;
        }
        BlockVertex& v = vertices_[i];
        v.x = x;
        v.y = w.y;
        v.z = z;
        v.diffuse = i < 6 ? kSlopeColour : kSideColour;
        v.specular = 0;
        v.u = w.u * EdgeLength(w.uEdge, across, along, sizeY_);
        v.v = w.v * EdgeLength(w.vEdge, across, along, sizeY_);
    }
}

void clsRamp::create(float x, float y, float z) {
    rotation_ = 0;
    sizeX_ = sizeY_ = sizeZ_ = 1;
    selected_ = false;
    buildVertices();
    UploadVertices();
    x_ = x;
    y_ = y;
    z_ = z;
    CalculateCollisionPlanes();
}

void clsRamp::rotate() {
    rotation_ = rotation_ >= 3 ? 0 : static_cast<uint8_t>(rotation_ + 1);
    buildVertices();
    UploadVertices();
    CalculateCollisionPlanes();
}

void clsRamp::draw() {
    GraphicsDevice& device = res_.device;
    Matrix4 world;
    world.m[0][0] = sizeX_;
    world.m[1][1] = sizeY_;
    world.m[2][2] = sizeZ_;
    world.m[3][0] = x_;
    world.m[3][1] = y_;
    world.m[3][2] = z_;
    device.setTransform(TransformKind::World, world);
    device.setTexture(faces_[0].texture);
    if (faces_[1].texture == faces_[0].texture) {
        device.drawBuffer(Primitive::TriangleList, slot_.buffer, slot_.start, 6);
        return;
    }
    device.drawBuffer(Primitive::TriangleList, slot_.buffer, slot_.start, 2);
    // Both side triangles and the end wall share texture B: one call.
    device.setTexture(faces_[1].texture);
    device.drawBuffer(Primitive::TriangleList, slot_.buffer, slot_.start + 6, 4);
}

void clsRamp::Texture(const std::string& Name, const std::string& face, const std::string& TextureDir) {
    int i = -1;
    if (face == "A") i = 0;
    if (face == "B") i = 1;
    if (i < 0) return;
    faces_[i].texture = res_.texture(TextureDir + Name);
    faces_[i].name = Name;
    selected_ = false;
}

int32_t clsRamp::Xpos() const {
    return WholeCoordinate(x_);
}
void clsRamp::Xpos(int32_t value) {
    x_ = static_cast<float>(value);
}
int32_t clsRamp::Ypos() const {
    return WholeCoordinate(y_);
}
void clsRamp::Ypos(int32_t value) {
    if (value > -1) y_ = static_cast<float>(value);
}
int32_t clsRamp::Zpos() const {
    return WholeCoordinate(z_);
}
void clsRamp::Zpos(int32_t value) {
    if (value > -1) z_ = static_cast<float>(value);
}

int16_t clsRamp::scaleX() const {
    return Whole16(sizeX_);
}
int16_t clsRamp::scaleY() const {
    return Whole16(sizeY_);
}
int16_t clsRamp::scalez() const {
    return Whole16(sizeZ_);
}

void clsRamp::scaleX(int16_t value) {
    sizeX_ = value;
    buildVertices();
    UploadVertices();
    CalculateCollisionPlanes();
}

void clsRamp::scaleY(int16_t value) {
    sizeY_ = value;
    buildVertices();
    UploadVertices();
    CalculateCollisionPlanes();
}

void clsRamp::scalez(int16_t value) {
    sizeZ_ = value;
    buildVertices();
    UploadVertices();
    CalculateCollisionPlanes();
}

float clsRamp::GetGradient() const {
    switch (rotation_) {
        case 0:
            return sizeY_ / sizeZ_;
        case 1:
            return sizeY_ / sizeX_;
        case 2:
            return -(sizeY_ / sizeZ_);
        case 3:
            return -(sizeY_ / sizeX_);
        default:
            return 0;
    }
}

void clsRamp::CalculateCollisionPlanes() {
    // Outward directions of the faces; the slope's only needs to point up.
    static const Vector3 kOut[6] = {{-1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {0, -1, 0}, {0, 1, 0}};
    for (int face = 1; face <= 6; ++face) {
        // Along a side where the wedge has no height there is nothing to hit.
        const bool none =
            (face == 1 && rotation_ == 1) || (face == 2 && rotation_ == 3) || (face == 4 && rotation_ == 0);
        if (none || rotation_ > 3) {
            planes_[face - 1] = kNoPlane;
            continue;
        }
        const FaceCorners c = GetFaceCorners(face);
        CollisionPlane p = PlaneFromPoints(c.p[0], c.p[1], c.p[2]);
        const Vector3& o = kOut[face - 1];
        if (p.a * o.x + p.b * o.y + p.c * o.z < 0) p = CollisionPlane{-p.a, -p.b, -p.c, -p.d};
        planes_[face - 1] = p;
    }
}

const CollisionPlane& clsRamp::GetCollisionPlane(int planenumber) const {
    if (planenumber < 1 || planenumber > 6)
        throw std::out_of_range("collision plane " + std::to_string(planenumber));
    return planes_[planenumber - 1];
}

Vector3 clsRamp::GetPlaneNormal(int planenumber) const {
    const CollisionPlane& p = GetCollisionPlane(planenumber);
    return Vector3{p.a, p.b, p.c};
}

void clsRamp::GetCollisionPlaneBounds(int planenumber, Vector3& greatest, Vector3& smallest) const {
    if (planenumber < 1 || planenumber > 6) return;
    CornerBounds(GetFaceCorners(planenumber), planenumber, greatest, smallest);
}

void clsRamp::UploadVertices() {
    if (slot_.buffer == 0) slot_ = res_.vertices.take();
    res_.vertices.write(slot_, vertices_.data(), VertexCount);
}

FaceCorners clsRamp::GetFaceCorners(int planenumber) const {
    const float X = x_, Y = y_, Z = z_, x1 = x_ + sizeX_, y1 = y_ + sizeY_, z1 = z_ + sizeZ_;
    // The landing strip: one car length beyond the high edge.
    const double d = StripDepth;
    const float zFar = static_cast<float>(z1 + d), zNear = static_cast<float>(Z - d);
    const float xFar = static_cast<float>(x1 + d), xNear = static_cast<float>(X - d);
    const FaceCorners none{};
    switch (planenumber) {
        case 1:
            switch (rotation_) {
                case 0:
                    return {{{X, Y, Z}, {X, y1, z1}, {X, Y, z1}, {X, Y, Z}}};
                case 2:
                    return {{{X, Y, Z}, {X, y1, Z}, {X, Y, z1}, {X, Y, Z}}};
                case 3:
                    return {{{X, Y, Z}, {X, y1, Z}, {X, y1, z1}, {X, Y, z1}}};
                default:
                    return none;
            }
        case 2:
            switch (rotation_) {
                case 0:
                    return {{{x1, Y, Z}, {x1, y1, z1}, {x1, Y, z1}, {x1, Y, Z}}};
                case 1:
                    return {{{x1, Y, Z}, {x1, y1, Z}, {x1, y1, z1}, {x1, Y, z1}}};
                case 2:
                    return {{{x1, Y, Z}, {x1, y1, Z}, {x1, Y, z1}, {x1, Y, Z}}};
                default:
                    return none;
            }
        case 3:
            switch (rotation_) {
                case 0:
                    return {{{X, Y, Z}, {X, y1, z1}, {x1, y1, z1}, {x1, Y, Z}}};
                case 1:
                    return {{{X, Y, Z}, {X, Y, z1}, {x1, y1, z1}, {x1, y1, Z}}};
                case 2:
                    return {{{X, y1, Z}, {X, Y, z1}, {x1, Y, z1}, {x1, y1, Z}}};
                case 3:
                    return {{{x1, Y, Z}, {X, y1, Z}, {X, y1, z1}, {x1, Y, z1}}};
                default:
                    return none;
            }
        case 4:
            switch (rotation_) {
                case 1:
                    return {{{X, Y, Z}, {x1, y1, Z}, {x1, Y, Z}, {X, Y, Z}}};
                case 2:
                    return {{{X, Y, Z}, {X, y1, Z}, {x1, y1, Z}, {x1, Y, Z}}};
                case 3:
                    return {{{X, Y, Z}, {X, y1, Z}, {x1, Y, Z}, {X, Y, Z}}};
                default:
                    return none;
            }
        case 5:
            return {{{X, Y, Z}, {X, Y, z1}, {x1, Y, z1}, {x1, Y, Z}}};
        case 6:
            switch (rotation_) {
                case 0:
                    return {{{X, y1, z1}, {X, y1, zFar}, {x1, y1, zFar}, {x1, y1, z1}}};
                case 1:
                    return {{{x1, y1, Z}, {x1, y1, z1}, {xFar, y1, z1}, {xFar, y1, Z}}};
                case 2:
                    return {{{X, y1, Z}, {x1, y1, Z}, {x1, y1, zNear}, {X, y1, zNear}}};
                case 3:
                    return {{{X, y1, Z}, {xNear, y1, Z}, {xNear, y1, z1}, {X, y1, z1}}};
                default:
                    return none;
            }
        default:
            return none;
    }
}

}  // namespace qb
