// The sparks of a picked-up star: each star adds a burst of 30 coloured
// point sprites that drift up and fade over 7.5 to 12.5 seconds. Dead sparks
// stay in the list (parked far away, transparent) until every spark is dead.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

struct Platform;
class QuorbitDebug;

struct Particle {
    Vector3 position;
    Vector3 velocity;
    ColorValue startColour;
    ColorValue endColour;
    ColorValue currentColour;
    int32_t lifetime = 0;   // ms
    int32_t birthTime = 0;  // tick count
    int32_t dead = 0;
};

class clsParticles {
public:
    static constexpr int32_t BurstSize = 30;

    clsParticles(Platform& platform, QuorbitDebug& debug);
    ~clsParticles();
    clsParticles(const clsParticles&) = delete;
    clsParticles& operator=(const clsParticles&) = delete;

    // Loads the spark texture and logs the outcome.
    void create();
    void resetParticles();
    void AddStarExplosion(float& x, float& y, float& z);
    // One play frame of motion, fading and ageing.
    void UpdateParticles();
    // Draws the sparks `blend` of the way from where the last play frame
    // found them to where they are now (1: where they are).
    void draw(float blend = 1.0f);
    // The present positions become the ones drawings start from.
    void KeepDrawnState();
    // 0.1 .. 10.0 in steps of 0.1.
    float RandomColour();

    // ARGB from a colour whose components are 0..1 (larger ones clamp).
    static uint32_t Pack(const ColorValue& c);

    int32_t Count() const { return count_; }
    const std::vector<Particle>& Particles() const { return particles_; }
    const std::vector<PointVertex>& Vertices() const { return vertices_; }
    TextureId Texture() const { return texture_; }
    uint32_t LastUpdate() const { return lastUpdate_; }
    // Makes the sparks repeatable (tests).
    void Seed(uint32_t seed) { random_.seed(seed); }

private:
    float Rnd();

    Platform& platform_;
    QuorbitDebug& debug_;
    int32_t count_ = 0;
    std::vector<Particle> particles_ = std::vector<Particle>(1);
    std::vector<PointVertex> vertices_ = std::vector<PointVertex>(1);
    std::vector<Vector3> drawnFrom_;  // positions at the last play frame
    std::vector<PointVertex> between_;
    TextureId texture_ = 0;
    uint32_t lastUpdate_ = 0;
    std::mt19937 random_{20030611u};
};

}  // namespace qb
