#include "physics/clsParticles.h"

#include <algorithm>
#include <cmath>

#include "platform/D3DMath.h"
#include "platform/Platform.h"
#include "platform/QuorbitDebug.h"

namespace qb {

clsParticles::clsParticles(Platform& platform, QuorbitDebug& debug) : platform_(platform), debug_(debug) {
    particles_.reserve(8 * BurstSize);
    vertices_.reserve(8 * BurstSize);
}

clsParticles::~clsParticles() {
    if (texture_ != 0) platform_.graphics.releaseTexture(texture_);
}

void clsParticles::create() {
    texture_ = platform_.graphics.createTextureFromFile(platform_.paths.gameDir + "misc/starParticle.bmp", 32,
                                                        32, 0xFFFF00FFu, true);
    debug_.WriteLine(texture_ != 0 ? "CREATED PARTICLE ENGINE = True" : "CREATED PARTICLE ENGINE = Failed");
}

void clsParticles::resetParticles() {
    count_ = 0;
    drawnFrom_.clear();
    particles_.resize(1);
    vertices_.resize(1);
}

float clsParticles::Rnd() {
    return static_cast<float>(random_() >> 8) / 16777216.0f;
}

float clsParticles::RandomColour() {
    return static_cast<float>(std::floor(static_cast<double>(Rnd()) * 100 + 1) / 10);
}

uint32_t clsParticles::Pack(const ColorValue& c) {
    auto byte = [](float v) {
        const double scaled = std::nearbyint(static_cast<double>(v) * 255);
        return static_cast<uint32_t>(std::clamp(scaled, 0.0, 255.0));
    };
    return argb(byte(c.a), byte(c.r), byte(c.g), byte(c.b));
}

void clsParticles::AddStarExplosion(float& x, float& y, float& z) {
    const int32_t old = count_;
    count_ += BurstSize;
    particles_.resize(static_cast<size_t>(count_));
    vertices_.resize(static_cast<size_t>(count_));
    const int32_t now = static_cast<int32_t>(platform_.clock.tickCount());
    for (int32_t k = old; k < count_; ++k) {
        Particle& p = particles_[static_cast<size_t>(k)];
        p.dead = 0;
        p.lifetime = static_cast<int32_t>(std::nearbyint(static_cast<double>(Rnd()) * 5000 + 10000 - 2500));
        p.birthTime = now;
        p.position =
            Vector3{static_cast<float>(x + 0.2), static_cast<float>(y + 0.5), static_cast<float>(z - 0.2)};
        const float vx = static_cast<float>(static_cast<double>(Rnd()) * 0.6 - 0.6 / 2);
        const float vy = static_cast<float>(2 * (static_cast<double>(Rnd()) * 1.2) - 1.2 / 2);
        p.velocity = Vector3{vx, vy, 0};
        const float r = static_cast<float>(std::nearbyint(RandomColour()));
        const float g = static_cast<float>(std::nearbyint(RandomColour()));
        const float b = static_cast<float>(std::nearbyint(RandomColour()));
        p.startColour = ColorValue{r, g, b, 1};
        p.endColour = ColorValue{0, 0, 0, 0};
        p.currentColour = p.startColour;
    }
    for (int32_t k = 0; k < count_; ++k) {
        const Particle& p = particles_[static_cast<size_t>(k)];
        PointVertex& v = vertices_[static_cast<size_t>(k)];
        v.x = p.position.x;
        v.y = p.position.y;
        v.z = p.position.z;
        v.diffuse = Pack(p.currentColour);
    }
}

void clsParticles::UpdateParticles() {
    const int32_t now = static_cast<int32_t>(platform_.clock.tickCount());
    int32_t alive = 0;
    for (int32_t k = 0; k < count_; ++k) {
        Particle& p = particles_[static_cast<size_t>(k)];
        if (p.dead == 0) {
            p.position.x += p.velocity.x / 5;
            p.position.y += p.velocity.y / 5;
            p.velocity.y = static_cast<float>(std::fabs(static_cast<double>(p.velocity.y) - 0.05 / 500));
            p.velocity.z = 0;
            const double age = static_cast<double>(now) - static_cast<double>(p.birthTime);
            const float f = static_cast<float>(age / static_cast<double>(p.lifetime));
            const ColorValue& s = p.startColour;
            const ColorValue& e = p.endColour;
            p.currentColour = ColorValue{s.r + f * (e.r - s.r), s.g + f * (e.g - s.g), s.b + f * (e.b - s.b),
                                         s.a + f * (e.a - s.a)};
            if (p.position.y < -1.0f) p.dead = 1;
            if (age >= p.lifetime) p.dead = 1;
            alive += 1;
        } else {
            p.currentColour = ColorValue{0, 0, 0, 0};
            p.position.z = -1000;
        }
    }
    if (alive == 0) {
        count_ = 0;
        particles_.assign(1, Particle{});
        vertices_.assign(1, PointVertex{});
    }
    lastUpdate_ = static_cast<uint32_t>(now);
    for (int32_t k = 0; k < count_; ++k) {
        const Particle& p = particles_[static_cast<size_t>(k)];
        PointVertex& v = vertices_[static_cast<size_t>(k)];
        v.x = p.position.x;
        v.y = p.position.y;
        v.z = p.position.z;
        v.diffuse = Pack(p.currentColour);
    }
}

void clsParticles::KeepDrawnState() {
    drawnFrom_.resize(static_cast<size_t>(count_));
    for (int32_t k = 0; k < count_; ++k)
        drawnFrom_[static_cast<size_t>(k)] = particles_[static_cast<size_t>(k)].position;
}

void clsParticles::draw(float blend) {
    if (count_ <= 0) return;
    const PointVertex* shown = vertices_.data();
    if (blend < 1.0f) {
        // Sparks born since the last play frame, and dead ones, have no
        // path to follow: they stand where they are.
        between_.assign(vertices_.begin(), vertices_.begin() + count_);
        const int32_t known = std::min(count_, static_cast<int32_t>(drawnFrom_.size()));
        for (int32_t k = 0; k < known; ++k) {
            const Particle& p = particles_[static_cast<size_t>(k)];
            if (p.dead != 0) continue;
            const Vector3 at = Lerp(drawnFrom_[static_cast<size_t>(k)], p.position, blend);
            PointVertex& v = between_[static_cast<size_t>(k)];
            v.x = at.x;
            v.y = at.y;
            v.z = at.z;
        }
        shown = between_.data();
    }
    GraphicsDevice& device = platform_.graphics;
    device.setTransform(TransformKind::World, MatrixIdentity());
    device.setRenderState(RenderState::AlphaBlendEnable, 1);
    device.setRenderState(RenderState::ZWriteEnable, 0);
    device.setTexture(texture_);
    device.setRenderState(RenderState::PointSize, FloatToDWord(0.03f));
    device.drawPointVertices(shown, count_);
    device.setRenderState(RenderState::ZWriteEnable, 1);
}

}  // namespace qb
