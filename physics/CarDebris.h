// The car breaking apart when it blows up: its hull halves, nose, canopy,
// pods, thrusters, wing and a handful of shards fly out from where it
// stood, tumble, fall and bounce on the ground it stood on, char and fade
// out with the fireball. Only a picture: it follows the car's explosion and
// never feeds anything back, so a run is the same with or without it. It
// counts play frames (never the clock) and draws its random numbers from a
// seed made of the place of the explosion, so it is repeatable.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

class clsPlayer;
class TrackObjects;

class CarDebris {
public:
    static constexpr float Gravity = 0.014f;  // units per play frame, each frame
    static constexpr float Bounce = 0.4f;     // vertical speed kept at a bounce
    static constexpr int32_t FadeFrom = 9;    // explosion picture where fading starts
    static constexpr int32_t GoneAt = 15;     // explosion picture where the pieces are gone
    static constexpr int32_t ShardCount = 8;  // small bits besides the car's parts

    struct Piece {
        Vector3 centre;      // world units
        Vector3 velocity;    // units per play frame
        Vector3 half;        // half the size along the piece's own axes
        Vector3 angle;       // turns about x, y and z (radians)
        Vector3 spin;        // radians per play frame about each
        uint8_t region = 0;  // which quarter of the car's skin it shows
        bool resting = false;
    };

    // Follows the car through one play frame: breaks it apart on the frame
    // it blows up, then moves the pieces on; nothing once the car is whole
    // again. When the car stood on something, the pieces land on the tops
    // of the track at that height and fall past their edges.
    void Follow(const clsPlayer& car, const TrackObjects& track, bool standing);
    void Clear();
    // The present places and turns become the ones drawings start from.
    void KeepDrawnState();
    // Draws the pieces `blend` of the way from the last play frame to now,
    // textured with the car's skin.
    void draw(GraphicsDevice& device, TextureId skin, float blend);

    const std::vector<Piece>& Pieces() const { return pieces_; }
    bool Active() const { return !pieces_.empty(); }
    // 1 while the pieces are solid, down to 0 as the explosion ends.
    float Opacity() const { return opacity_; }
    // Play frames since the car broke apart.
    int32_t Age() const { return age_; }

private:
    struct Area {
        float x0, x1, z0, z1;
    };
    void Burst(const Vector3& at, const Vector4& carVelocity);
    void FindGround(const TrackObjects& track, float height);
    bool OnGround(const Vector3& at) const;
    void Step();
    float Rnd();
    void BuildBox(const Piece& p, float shade, uint8_t alpha, std::array<BlockVertex, 36>& out) const;

    std::vector<Piece> pieces_;
    std::vector<Piece> drawnFrom_;
    std::vector<Area> ground_;  // tops at the height the car stood on
    float floor_ = 0;
    float opacity_ = 0;
    int32_t age_ = 0;
    std::mt19937 random_;
};

}  // namespace qb
