#include "shell/RunRecorder.h"

#include "shell/ReplayFile.h"

namespace qb {

RunRecorder::RunRecorder() {
    frames_.reserve(static_cast<size_t>(Replay::LongestRun) + 1);
}

void RunRecorder::Begin() {
    frames_.clear();
    spoiled_ = false;
    ++runs_;
}

void RunRecorder::Record(uint8_t driveBits) {
    // Past the longest run a replay may hold, the run is no longer kept.
    if (frames_.size() == frames_.capacity()) {
        spoiled_ = true;
        return;
    }
    frames_.push_back(driveBits);
}

}  // namespace qb
