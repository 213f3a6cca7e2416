#include "physics/clsShadow.h"

#include <cmath>

#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "physics/maths.h"
#include "platform/D3DMath.h"
#include "platform/Platform.h"
#include "platform/QuorbitDebug.h"

namespace qb {

namespace {
constexpr float F = clsShadow::Footprint;
constexpr uint32_t ShadowColour = 0x00FFFFFFu;

inline float AtMost08(float v) {
    return v > F ? F : v;
}

// The x and z extent of the object a corner stands on.
struct Extent {
    float X = 0, Z = 0, SX = 0, SZ = 0;
};

Extent ExtentOf(const TrackObjects& t, uint8_t kind, int32_t index) {
    const size_t i = static_cast<size_t>(index);
    switch (kind) {
        case 1: {
            const clsBlock& b = *t.blocks[i];
            return Extent{b.Xpos(), static_cast<float>(b.Zpos()), b.scaleX(), b.scalez()};
        }
        case 2: {
            const clsMovingPlatform& m = *t.platforms[i];
            return Extent{m.Xpos(), m.Zpos(), m.scaleX(), m.scalez()};
        }
        default: {
            const clsRamp& r = *t.ramps[i];
            return Extent{static_cast<float>(r.Xpos()), static_cast<float>(r.Zpos()),
                          static_cast<float>(r.scaleX()), static_cast<float>(r.scalez())};
        }
    }
}

// tan of a ramp's slope angle along its direction of rise.
double RampTangent(const clsRamp& r) {
    const bool alongZ = r.rotateVal() == 0 || r.rotateVal() == 2;
    const double a = std::atan(static_cast<double>(r.scaleY()) / (alongZ ? r.scalez() : r.scaleX()));
    return std::tan(a);
}

bool InsideTop(const Vector3& hit, const Vector3& greatest, const Vector3& smallest) {
    return smallest.x < hit.x && hit.x < greatest.x && smallest.z < hit.z && hit.z < greatest.z;
}
}  // namespace

clsShadow::clsShadow(Platform& platform, QuorbitDebug& debug, const TrackObjects& track, const clsPlayer& car)
    : platform_(platform), debug_(debug), track_(track), car_(car) {}

clsShadow::~clsShadow() {
    GraphicsDevice& device = platform_.graphics;
    if (buffer_ != 0) device.releaseVertexBuffer(buffer_);
    if (texture_ != 0) device.releaseTexture(texture_);
}

void clsShadow::create() {
    const float h = 0.225f, l = 0.45f;
    for (int q = 0; q < 4; ++q) {
        BlockVertex* v = &vertices_[static_cast<size_t>(6 * q)];
        const float xz[6][2] = {{-h, 0}, {h, 0}, {h, -l}, {-h, 0}, {h, -l}, {-h, -l}};
        for (int k = 0; k < 6; ++k) v[k] = BlockVertex{xz[k][0], 0, xz[k][1], ShadowColour, 0, 0, 0};
    }
    GraphicsDevice& device = platform_.graphics;
    if (buffer_ == 0) buffer_ = device.createVertexBuffer(vertices_.data(), VertexCount);
    texture_ = device.createTextureFromFile(platform_.paths.gameDir + "misc/shadowimage.bmp", 0, 0,
                                            0xFFFF00FFu, true);
    debug_.WriteLine(texture_ != 0 ? "Created Player Shadow = True" : "Created Player Shadow = Failed");
}

void clsShadow::setBlending() {
    GraphicsDevice& device = platform_.graphics;
    device.setTexture(texture_);
    device.setRenderState(RenderState::AlphaBlendEnable, 1);
    device.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
    device.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
}

void clsShadow::draw2() {
    if (buffer_ == 0) return;
    GraphicsDevice& device = platform_.graphics;
    setBlending();
    for (int q = 0; q < 4; ++q) {
        device.setTransform(TransformKind::World, MatrixTranslation(0, 0, 0));
        device.drawBuffer(Primitive::TriangleList, buffer_, 6 * q, 2);
    }
}

Vector3 clsShadow::FindDropPoint(const Vector3& probe, ShadowQuarter& record, uint8_t quarter) {
    const TrackObjects& t = track_;
    const clsPlayer& pl = car_;
    const Vector3 down{0, probe.y - 100, 0};
    float best = 100;
    Vector3 result{0, 0, 0};
    Vector3 hit, greatest, smallest;
    auto take = [&](float distance, int32_t index, uint8_t kind) {
        best = distance;
        record.distance = distance;
        record.index = index;
        record.kind = kind;
        record.quarter = quarter;
    };

    for (int32_t i : nearBlocks_) {
        const clsBlock& b = *t.blocks[static_cast<size_t>(i)];
        if (!SegmentPlaneHit(b.GetCollisionPlane(3), probe, down, hit)) continue;
        b.GetCollisionPlaneBounds(3, greatest, smallest);
        if (!InsideTop(hit, greatest, smallest)) continue;
        const float d = Distance(probe, hit);
        if (!(d < best)) continue;
        take(d, i, 1);
        result = Vector3{hit.x, b.Ypos() + b.scaleY() + b.fallvel(), hit.z};
    }
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) {
        const clsMovingPlatform& m = *t.platforms[static_cast<size_t>(i)];
        if (!SegmentPlaneHit(m.GetCollisionPlane(3), probe, down, hit)) continue;
        m.GetCollisionPlaneBounds(3, greatest, smallest);
        if (!InsideTop(hit, greatest, smallest)) continue;
        const float d = Distance(probe, hit);
        if (!(d < best)) continue;
        take(d, i, 2);
        result = Vector3{hit.x, m.Ypos() + m.scaleY(), hit.z};
    }
    for (int32_t i = 0; i <= t.RampUpper; ++i) {
        const clsRamp& r = *t.ramps[static_cast<size_t>(i)];
        if (!SegmentPlaneHit(r.GetCollisionPlane(3), probe, down, hit)) continue;
        r.GetCollisionPlaneBounds(3, greatest, smallest);
        if (!InsideTop(hit, greatest, smallest)) continue;
        const float d = Distance(probe, hit);
        if (!(d < best)) continue;
        take(d, i, 3);
        // The height of the slope a little uphill of the car, the same for
        // every corner over this ramp.
        const double tanA = RampTangent(r);
        const double Y = r.Ypos(), top = static_cast<double>(r.Ypos()) + r.scaleY();
        const float x = pl.Posx(), z = pl.Posz(), f = pl.ForwardVelocity();
        double height = Y;
        switch (r.rotateVal()) {
            case 0:
                height = Y + tanA * static_cast<float>((z + f) - static_cast<float>(r.Zpos()));
                if (height > top) height = top;
                if (height < Y) height = Y;
                break;
            case 1:
                height = Y + tanA * (static_cast<double>(x) + 0.4 - r.Xpos());
                if (height > top) height = top;
                break;
            case 2:
                height = Y + tanA * static_cast<float>(static_cast<float>(r.Zpos() + r.scalez()) - (z - f));
                if (height < Y) height = Y;
                break;
            default:
                height =
                    Y + tanA * (static_cast<double>(r.Xpos() + r.scaleX()) - (static_cast<double>(x) - 0.4));
                if (height > top) height = top;
                break;
        }
        result = Vector3{hit.x, static_cast<float>(height), hit.z};
    }
    return result;
}

void clsShadow::Place() {
    const clsPlayer& pl = car_;
    const TrackObjects& t = track_;
    const float x = pl.Posx(), y = pl.PosY(), z = pl.Posz(), f = pl.ForwardVelocity();
    const float left = static_cast<float>(x - 0.4), right = static_cast<float>(x + 0.4);
    const float up = static_cast<float>(y + 0.4);
    const float front = z + f, back = static_cast<float>(static_cast<double>(z + f) - 0.8);
    const Vector3 probes[4] = {{left, up, front}, {right, up, front}, {left, up, back}, {right, up, back}};

    // Blocks pass a cheap test around the car's predicted position first;
    // it is the same for all four corners.
    nearBlocks_.clear();
    const float px = x + pl.HorizontalVelocity(), pz = z + f;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) {
        const clsBlock& b = *t.blocks[static_cast<size_t>(i)];
        const float bz = static_cast<float>(b.Zpos());
        if (px + 1 > b.Xpos() && px < b.Xpos() + b.scaleX() + 1 && pz + 1 > bz && pz < bz + b.scalez() + 1)
            nearBlocks_.push_back(i);
    }
    quarters_ = {};
    for (int q = 0; q < 4; ++q)
        drops_[q] = FindDropPoint(probes[q], quarters_[q], static_cast<uint8_t>(q + 1));

    // Piece lengths: each starts at its corner and stops at its object's edge.
    float l[4] = {0, 0, 0, 0}, w[4] = {0, 0, 0, 0};
    Extent e[4];
    for (int q = 0; q < 4; ++q) {
        const ShadowQuarter& r = quarters_[q];
        if (r.kind == 0) continue;
        e[q] = ExtentOf(t, r.kind, r.index);
        const Extent& o = e[q];
        const Vector3& D = drops_[q];
        const float farZ = o.Z + o.SZ, farX = o.X + o.SX;
        switch (q) {
            case 0:
                l[0] = AtMost08(D.z - o.Z);
                w[0] = AtMost08(farX - D.x);
                break;
            case 1:
                l[1] = AtMost08(D.z - o.Z);
                if (r.kind == 1)
                    w[1] = D.x - F > o.X ? F - w[0] : D.x - o.X;
                else
                    w[1] = AtMost08(D.x - o.X);
                break;
            case 2:
                if (r.kind == 1) {
                    l[2] = AtMost08(farZ - D.z);
                } else if (r.kind == 2) {
                    l[2] = farZ > D.z + F ? F - l[0] : farZ - D.z;
                } else if (D.z + F < farZ) {
                    l[2] = F - l[0];
                    if (l[2] < 0) l[2] = 0;
                } else {
                    l[2] = farZ - D.z;
                }
                w[2] = AtMost08(farX - D.x);
                break;
            default:
                l[3] = farZ > D.z + F ? F - l[1] : farZ - D.z;
                w[3] = AtMost08(D.x - o.X);
                break;
        }
    }
    // Where two pieces would cover the same part of the footprint, the later
    // one keeps it.
    if (w[0] == F && w[1] > 0) w[0] = F - w[1];
    if (l[0] == F && l[3] > 0) l[0] = F - l[3];
    if (l[2] == F && l[0] > 0) l[2] = F - l[0];
    if (l[1] == F && l[3] > 0) l[1] = F - l[3];
    if (w[3] == F && w[2] > 0) w[3] = F - w[2];

    for (int q = 0; q < 4; ++q) {
        ShadowQuarter& r = quarters_[q];
        r.length = l[q];
        r.width = w[q];
        r.textureX = w[q] / F;
        r.textureZ = l[q] / F;
    }

    // Rebuild the pieces.
    for (int q = 0; q < 4; ++q) {
        const float hw = w[q] / 2, len = l[q];
        const float tx = quarters_[q].textureX, tz = quarters_[q].textureZ;
        const float u0 = (q == 0 || q == 2) ? 0 : 1 - tx, u1 = (q == 0 || q == 2) ? tx : 1;
        const float v0 = q < 2 ? 0 : 1 - tz, v1 = q < 2 ? tz : 1;
        BlockVertex* v = &vertices_[static_cast<size_t>(6 * q)];
        v[0] = BlockVertex{-hw, 0, 0, ShadowColour, 0, u0, v0};
        v[1] = BlockVertex{hw, 0, 0, ShadowColour, 0, u1, v0};
        v[2] = BlockVertex{hw, 0, -len, ShadowColour, 0, u1, v1};
        v[3] = BlockVertex{-hw, 0, 0, ShadowColour, 0, u0, v0};
        v[4] = BlockVertex{hw, 0, -len, ShadowColour, 0, u1, v1};
        v[5] = BlockVertex{-hw, 0, -len, ShadowColour, 0, u0, v1};

        if (quarters_[q].kind == 3) {
            // Tilt the piece along the slope by lifting or lowering one edge.
            const clsRamp& ramp = *t.ramps[static_cast<size_t>(quarters_[q].index)];
            const Extent& o = e[q];
            const Vector3& D = drops_[q];
            const float tanA = static_cast<float>(RampTangent(ramp));
            const bool frontPiece = q < 2;
            const bool leftPiece = q == 0 || q == 2;
            const float ex = leftPiece ? AtMost08(o.X + o.SX - D.x) : AtMost08(D.x - o.X);
            switch (ramp.rotateVal()) {
                case 0: {
                    const float ez = frontPiece ? AtMost08(D.z - o.Z) : o.Z + o.SZ - D.z;
                    for (int k : {2, 4, 5}) v[k].y = -tanA * ez;
                    break;
                }
                case 1:
                    for (int k : {0, 3, 5}) v[k].y = -tanA * ex;
                    break;
                case 2: {
                    const float ez = frontPiece ? AtMost08(D.z - o.Z) : AtMost08(o.Z + o.SZ - D.z);
                    for (int k : {2, 4, 5}) v[k].y = tanA * ez;
                    break;
                }
                default:
                    for (int k : {1, 2, 4}) v[k].y = -tanA * ex;
                    break;
            }
        }
    }
    const Vector3& D1 = drops_[0];
    const Vector3& D2 = drops_[1];
    const Vector3& D3 = drops_[2];
    const Vector3& D4 = drops_[3];
    origins_[0] = Vector3{D1.x + w[0] / 2, D1.y, D1.z};
    origins_[1] = Vector3{D2.x - w[1] / 2, D2.y, D2.z};
    origins_[2] = Vector3{D3.x + w[2] / 2, D3.y, D3.z + l[2]};
    origins_[3] = Vector3{D4.x - w[3] / 2, D4.y, D4.z + l[3]};

    GraphicsDevice& device = platform_.graphics;
    if (buffer_ == 0)
        buffer_ = device.createVertexBuffer(vertices_.data(), VertexCount);
    else
        device.updateVertexBuffer(buffer_, 0, vertices_.data(), VertexCount);
    for (Vector3& o : origins_) o.y = static_cast<float>(static_cast<double>(o.y) + 0.1);
}

void clsShadow::draw(const Vector3& offset) {
    if (buffer_ == 0) return;
    GraphicsDevice& device = platform_.graphics;
    setBlending();
    for (int q = 0; q < 4; ++q) {
        const Vector3& o = origins_[q];
        device.setTransform(TransformKind::World,
                            MatrixTranslation(o.x + offset.x, o.y + offset.y, o.z + offset.z));
        device.drawBuffer(Primitive::TriangleList, buffer_, 6 * q, 2);
    }
}

}  // namespace qb
