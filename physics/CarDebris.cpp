#include "physics/CarDebris.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "platform/D3DMath.h"

namespace qb {

namespace {

// The car's parts as boxes around its reference point (the middle of the
// underside at the nose), the way the model is put together, each with the
// quarter of the skin that covers it.
enum Region : uint8_t { Paint, Glass, Steel, Glow };
struct Part {
    float x0, x1, y0, y1, z0, z1;
    Region region;
};
constexpr Part Parts[] = {
    {-0.30f, 0.00f, 0.10f, 0.31f, -0.78f, -0.03f, Paint},   // hull, left half
    {0.00f, 0.30f, 0.10f, 0.31f, -0.78f, -0.03f, Paint},    // hull, right half
    {-0.34f, 0.34f, 0.05f, 0.15f, -0.22f, 0.00f, Paint},    // nose skirt
    {-0.17f, 0.17f, 0.31f, 0.46f, -0.58f, -0.24f, Glass},   // canopy
    {-0.40f, -0.27f, 0.03f, 0.21f, -0.77f, -0.10f, Steel},  // left pod
    {0.27f, 0.40f, 0.03f, 0.21f, -0.77f, -0.10f, Steel},    // right pod
    {-0.38f, -0.29f, 0.06f, 0.18f, -0.80f, -0.72f, Glow},   // left thruster
    {0.29f, 0.38f, 0.06f, 0.18f, -0.80f, -0.72f, Glow},     // right thruster
    {-0.03f, 0.03f, 0.28f, 0.38f, -0.76f, -0.68f, Steel},   // wing post
    {-0.33f, 0.33f, 0.38f, 0.43f, -0.80f, -0.67f, Paint},   // rear wing
    {-0.22f, 0.22f, 0.00f, 0.03f, -0.70f, -0.12f, Glow},    // hover plate
};
const Vector3 CarMiddle{0, 0.25f, -0.4f};

// The top-left of each skin quarter; a face shows the quarter's inner part.
constexpr float RegionU[4] = {0.0f, 0.5f, 0.0f, 0.5f};
constexpr float RegionV[4] = {0.0f, 0.0f, 0.5f, 0.5f};

// Corners of a box numbered by bits (1: +x, 2: +y, 4: +z); each face
// goes round its four corners, with the light it catches from above.
struct Face {
    int corner[4];
    float shade;
};
constexpr Face Faces[6] = {
    {{0, 4, 6, 2}, 0.78f}, {{1, 3, 7, 5}, 0.72f}, {{0, 1, 5, 4}, 0.5f},
    {{2, 6, 7, 3}, 1.0f},  {{0, 2, 3, 1}, 0.66f}, {{4, 5, 7, 6}, 0.86f},
};

uint32_t SeedFrom(const Vector3& at) {
    // FNV-1a over the bits of the place: every explosion its own pattern,
    // the same one every time at that place.
    uint32_t h = 2166136261u;
    unsigned char bytes[sizeof at];
    std::memcpy(bytes, &at, sizeof at);
    for (unsigned char b : bytes) h = (h ^ b) * 16777619u;
    return h;
}

Matrix4 Turn(const Vector3& angle) {
    return MatrixMultiply(MatrixMultiply(MatrixRotationX(angle.x), MatrixRotationY(angle.y)),
                          MatrixRotationZ(angle.z));
}

// How far the piece, turned as it is, reaches below its centre.
float Reach(const Vector3& half, const Matrix4& turn) {
    return std::fabs(half.x * turn.m[0][1]) + std::fabs(half.y * turn.m[1][1]) +
           std::fabs(half.z * turn.m[2][1]);
}

Vector3 Add(const Vector3& a, const Vector3& b) {
    return Vector3{a.x + b.x, a.y + b.y, a.z + b.z};
}
Vector3 Scale(const Vector3& a, float s) {
    return Vector3{a.x * s, a.y * s, a.z * s};
}
}  // namespace

float CarDebris::Rnd() {
    return static_cast<float>(random_() >> 8) / 16777216.0f;
}

void CarDebris::Clear() {
    pieces_.clear();
    drawnFrom_.clear();
    opacity_ = 0;
    age_ = 0;
}

void CarDebris::Follow(const clsPlayer& car, const TrackObjects& track, bool standing) {
    if (!car.getexplodeStatus()) {
        if (Active()) Clear();
        return;
    }
    if (!Active()) {
        ground_.clear();
        if (standing) FindGround(track, car.PosY());
        Burst(car.GetPosition(), car.GetVelocity());
    } else {
        Step();
    }
    const int32_t f = car.ExplodeFrame();
    opacity_ = f <= FadeFrom ? 1.0f
               : f >= GoneAt ? 0.0f
                             : static_cast<float>(GoneAt - f) / static_cast<float>(GoneAt - FadeFrom);
}

void CarDebris::FindGround(const TrackObjects& track, float height) {
    floor_ = height;
    auto add = [&](float x, float top, float z, float sx, float sz) {
        if (std::fabs(top - height) < 0.05f) ground_.push_back(Area{x, x + sx, z, z + sz});
    };
    for (int32_t i = 0; i <= track.BlockUpper; ++i) {
        const clsBlock& b = *track.blocks[static_cast<size_t>(i)];
        add(b.Xpos(), b.Ypos() + b.scaleY(), static_cast<float>(b.Zpos()), b.scaleX(), b.scalez());
    }
    for (int32_t i = 0; i <= track.PlatformUpper; ++i) {
        const clsMovingPlatform& p = *track.platforms[static_cast<size_t>(i)];
        add(p.Xpos(), p.Ypos() + p.scaleY(), p.Zpos(), p.scaleX(), p.scalez());
    }
}

bool CarDebris::OnGround(const Vector3& at) const {
    for (const Area& a : ground_)
        if (at.x >= a.x0 && at.x <= a.x1 && at.z >= a.z0 && at.z <= a.z1) return true;
    return false;
}

void CarDebris::Burst(const Vector3& at, const Vector4& carVelocity) {
    random_.seed(SeedFrom(at));
    age_ = 0;
    pieces_.clear();
    // The pieces keep a quarter of the car's way and are thrown out from its
    // middle and up; the small shards fly faster and spin harder.
    const Vector3 carried{carVelocity.x * 0.25f, carVelocity.y * 0.25f, carVelocity.z * 0.25f};
    auto launch = [&](const Vector3& local, const Vector3& half, uint8_t region, float kick) {
        Piece p;
        p.centre = Add(at, local);
        p.half = half;
        p.region = region;
        float dx = local.x - CarMiddle.x, dz = local.z - CarMiddle.z;
        const float len = std::sqrt(dx * dx + dz * dz);
        if (len < 0.05f) {
            const float a = Rnd() * 6.2831853f;
            dx = std::cos(a);
            dz = std::sin(a);
        } else {
            dx /= len;
            dz /= len;
        }
        const float out = (0.04f + 0.06f * Rnd()) * kick;
        const float up = 0.18f + 0.14f * Rnd() + 0.05f * (kick - 1.0f);
        p.velocity = Add(carried, Vector3{dx * out, up, dz * out});
        p.spin = Vector3{(Rnd() * 2 - 1) * 0.3f * kick, (Rnd() * 2 - 1) * 0.3f * kick,
                         (Rnd() * 2 - 1) * 0.3f * kick};
        pieces_.push_back(p);
    };
    for (const Part& part : Parts)
        launch(Vector3{(part.x0 + part.x1) / 2, (part.y0 + part.y1) / 2, (part.z0 + part.z1) / 2},
               Vector3{(part.x1 - part.x0) / 2, (part.y1 - part.y0) / 2, (part.z1 - part.z0) / 2},
               part.region, 1.0f);
    for (int i = 0; i < ShardCount; ++i) {
        const Vector3 local{-0.3f + 0.6f * Rnd(), 0.1f + 0.25f * Rnd(), -0.75f + 0.7f * Rnd()};
        const Vector3 half{0.03f + 0.04f * Rnd(), 0.015f + 0.02f * Rnd(), 0.03f + 0.04f * Rnd()};
        launch(local, half, i % 2 == 0 ? Paint : Steel, 1.7f);
    }
}

void CarDebris::Step() {
    age_ += 1;
    for (Piece& p : pieces_) {
        if (p.resting && !OnGround(p.centre)) p.resting = false;  // slid off an edge
        if (p.resting) {
            // Lying on the ground: it slides to a stop.
            p.velocity.x *= 0.8f;
            p.velocity.z *= 0.8f;
            p.spin = Scale(p.spin, 0.8f);
        } else {
            p.velocity.y -= Gravity;
        }
        p.centre = Add(p.centre, p.velocity);
        p.angle = Add(p.angle, p.spin);
        // Its lowest corner touches the ground, whichever way it lies.
        const float rest = floor_ + Reach(p.half, Turn(p.angle));
        if (p.resting) {
            p.centre.y = rest;
        } else if (p.centre.y < rest && p.velocity.y < 0 && p.centre.y > rest - 0.5f && OnGround(p.centre)) {
            p.centre.y = rest;
            p.velocity.y = -p.velocity.y * Bounce;
            p.velocity.x *= 0.7f;
            p.velocity.z *= 0.7f;
            p.spin = Scale(p.spin, 0.6f);
            if (p.velocity.y < 0.03f) {
                p.velocity.y = 0;
                p.resting = true;
            }
        }
    }
}

void CarDebris::KeepDrawnState() {
    drawnFrom_ = pieces_;
}

void CarDebris::BuildBox(const Piece& p, float shade, uint8_t alpha, std::array<BlockVertex, 36>& out) const {
    Vector3 corner[8];
    for (int i = 0; i < 8; ++i)
        corner[i] = Vector3{(i & 1) ? p.half.x : -p.half.x, (i & 2) ? p.half.y : -p.half.y,
                            (i & 4) ? p.half.z : -p.half.z};
    const float u0 = RegionU[p.region] + 0.02f, v0 = RegionV[p.region] + 0.02f, span = 0.46f;
    const float us[4] = {u0, u0 + span, u0 + span, u0}, vs[4] = {v0, v0, v0 + span, v0 + span};
    size_t n = 0;
    for (const Face& f : Faces) {
        const auto level = static_cast<uint32_t>(std::clamp(f.shade * shade * 255.0f, 0.0f, 255.0f));
        const uint32_t colour = argb(alpha, level, level, level);
        for (int k : {0, 1, 2, 0, 2, 3}) {
            const Vector3& c = corner[f.corner[k]];
            out[n++] = BlockVertex{c.x, c.y, c.z, colour, 0, us[k], vs[k]};
        }
    }
}

void CarDebris::draw(GraphicsDevice& device, TextureId skin, float blend) {
    if (!Active() || opacity_ <= 0) return;
    // Burnt darker as they fly.
    const float shade = 1.0f - 0.5f * std::min(1.0f, static_cast<float>(age_) / 30.0f);
    const auto alpha = static_cast<uint8_t>(std::lround(opacity_ * 255.0f));
    device.setTexture(skin);
    device.setRenderState(RenderState::AlphaBlendEnable, 1);
    device.setRenderState(RenderState::CullMode, 1);
    device.setTextureStageState(TextureStageState::AlphaOp, TopModulate);
    device.setTextureStageState(TextureStageState::AlphaArg1, TaTexture);
    device.setTextureStageState(TextureStageState::AlphaArg2, TaDiffuse);
    std::array<BlockVertex, 36> box;
    for (size_t i = 0; i < pieces_.size(); ++i) {
        const Piece& p = pieces_[i];
        // Pieces broken off since the last play frame stand where they are.
        const Piece& from = i < drawnFrom_.size() ? drawnFrom_[i] : p;
        const Vector3 at = Lerp(from.centre, p.centre, blend);
        const Vector3 turn = Lerp(from.angle, p.angle, blend);
        const Matrix4 world = MatrixMultiply(Turn(turn), MatrixTranslation(at.x, at.y, at.z));
        device.setTransform(TransformKind::World, world);
        BuildBox(p, shade, alpha, box);
        device.drawBlockVertices(Primitive::TriangleList, box.data(), 12);
    }
    device.setTextureStageState(TextureStageState::AlphaOp, TopSelectArg1);
    device.setTextureStageState(TextureStageState::AlphaArg1, TaTexture);
    device.setTextureStageState(TextureStageState::AlphaArg2, TaCurrent);
    device.setRenderState(RenderState::CullMode, 3);
}

}  // namespace qb
