// Records the run in progress: the driving bits of every play frame from the
// start (or restart) on. Room for the longest run a replay may hold is taken
// once, so recording never allocates while the car is moving.
#pragma once

#include <cstdint>
#include <vector>

namespace qb {

class RunRecorder {
public:
    RunRecorder();

    // A new run: forget the frames so far (keeps the room).
    void Begin();
    void Record(uint8_t driveBits);
    // A frame whose controls a replay cannot repeat (the keyboard lost
    // events and nothing acted): the run is not worth keeping.
    void Spoil() { spoiled_ = true; }
    bool Usable() const { return !spoiled_ && !frames_.empty(); }
    const std::vector<uint8_t>& Frames() const { return frames_; }
    // How many runs have begun: tells a frame that restarted the run midway.
    uint32_t Runs() const { return runs_; }

private:
    std::vector<uint8_t> frames_;
    bool spoiled_ = false;
    uint32_t runs_ = 0;
};

}  // namespace qb
