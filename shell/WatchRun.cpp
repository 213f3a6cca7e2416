#include "shell/WatchRun.h"

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "shell/DriveControls.h"
#include "shell/ReplayStore.h"
#include "shell/RunRecorder.h"
#include "shell/frmGame.h"

namespace qb {

bool WatchRun::Start() {
    std::string why;
    const Replay* best = game_.replays->Best(why);
    if (best == nullptr) return false;
    run_ = *best;
    frames_ = DriveFrames(run_.keys);
    next_ = 0;
    finished_ = false;
    finishFrames_ = finishStars_ = 0;
    game_.sound->PlayEffect(SfxTransit);
    game_.sound->PlayMusic(game_.gui->TrackMusic());
    active_ = true;
    game_.startPlaying();
    runs_ = game_.recorder->Runs();
    game_.gui->SetupScreen(0);
    return true;
}

bool WatchRun::NextFrame(uint8_t& bits) {
    // A restart (the car fell or blew up) or keys run out before the finish:
    // the file does not drive to its finish here, whatever it claims.
    if (game_.recorder->Runs() != runs_ || next_ >= frames_.size()) {
        Stop(false);
        return false;
    }
    bits = frames_[next_++];
    return true;
}

void WatchRun::Finish(int32_t frames, int32_t stars) {
    finished_ = true;
    finishFrames_ = frames;
    finishStars_ = stars;
    Stop(true);
}

void WatchRun::Leave() {
    game_.sound->PlayEffect(SfxTransit);
    game_.RaceFrames = 0;
    game_.resetgame(false);
    active_ = false;
    game_.GameState = TrackChoice;
    game_.gui->SetupScreen(0);
}

void WatchRun::Stop(bool finished) {
    game_.RaceFrames = 0;
    // Still active here: the reset books nothing of the watched run.
    game_.resetgame(finished);
    active_ = false;
    game_.GameState = WatchEnd;
    game_.gui->SetupScreen(0);
}

}  // namespace qb
