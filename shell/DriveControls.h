// The driving controls of one play frame as a handful of bits: what the keys
// asked of the car, after the keyboard's own rules (Return jumps only once it
// has been let go since the track started). A recorded run is these bits
// frame by frame; a replay feeds them back without the keyboard.
#pragma once

#include <cstdint>
#include <vector>

namespace qb {

class frmGame;
struct KeyScript;

enum DriveBit : uint8_t {
    DriveAccelerate = 1,
    DriveBrake = 2,
    DriveLeft = 4,
    DriveRight = 8,
    DriveJump = 16,
};

// Acts on the car as the held keys do: accelerate, brake, stop sliding
// sideways unless steering or on ice, steer, and `jumps` jump attempts
// (the keyboard can ask twice in a frame: a jump key and Return). A jump is
// noted in game.Events for the session to answer.
void ApplyDrive(frmGame& game, uint8_t bits, int jumps);

// The key-script form (Up, Down, Left, Right, Space) and back.
std::vector<uint8_t> DriveKeys(uint8_t bits);
uint8_t DriveBitsOfKeys(const std::vector<uint8_t>& keys);
// One entry per play frame.
std::vector<uint8_t> DriveFrames(const KeyScript& script);
KeyScript DriveScript(const std::vector<uint8_t>& frames);

}  // namespace qb
