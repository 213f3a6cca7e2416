// A route through a track, as its designer wrote it down: commands that take
// effect once the car's nose passes a z, and the autopilot that turns them
// into keys frame by frame while the real game runs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qb {

class frmGame;

struct RouteCommand {
    enum Op { Lane, FreeLane, Ride, Speed, Jump, Hold, Release, Board };
    double z = 0;
    Op op = Lane;
    double value = 0;  // lane x, speed, or platform index
};

// One command per line, "Z COMMAND [ARG]": x X | x free | ride P | speed S |
// jump | hold | release | board P. Riding a platform means steering for its
// middle, so the car keeps clear of both edges whatever it does on board. False with a message naming the
// line.
bool ParseRoute(const std::string& text, std::vector<RouteCommand>& out, std::string& error);

// The autopilot: one call per frame, before the frame runs.
class Autopilot {
public:
    explicit Autopilot(std::vector<RouteCommand> route) : route_(std::move(route)) {}
    // The keys to hold this frame, from the game as the last frame left it.
    // They are held as hands hold them: a key once pressed stays down for
    // at least MinHold frames and, once let go, stays up as long.
    std::vector<uint8_t> Keys(frmGame& game);
    static constexpr int MinHold = 3;
    // Index of the last command that took effect (-1 before the first).
    int LastFired() const { return static_cast<int>(next_) - 1; }

private:
    bool PlatformWillCarry(frmGame& game, int index) const;
    std::vector<uint8_t> Wanted(frmGame& game);
    std::vector<uint8_t> LikeHands(const std::vector<uint8_t>& wanted);

    std::vector<RouteCommand> route_;
    size_t next_ = 0;
    bool steer_ = false;
    double laneX_ = 0;
    double speed_ = 0.6;
    bool jumpPending_ = false, holdJump_ = false;
    int boarding_ = -1;
    int stoppedFor_ = 0;
    int riding_ = -1;
    // Frames since each key went down (positive) or up (negative).
    int since_[256] = {};
};

}  // namespace qb
