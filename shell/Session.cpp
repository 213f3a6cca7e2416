// A run: its start, its end after a death (an immediate restart), and the
// finish with its time.
#include <cstdio>
#include <string>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/Stats.h"
#include "physics/CarDebris.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"
#include "physics/clsShadow.h"
#include "platform/DirectX.h"
#include "platform/QuorbitDebug.h"
#include "shell/GhostCar.h"
#include "shell/GuiLink.h"
#include "shell/RaceClock.h"
#include "shell/RaceTime.h"
#include "shell/ReplayStore.h"
#include "shell/RunRecorder.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"

namespace qb {

void frmGame::startPlaying() {
    OnGround = false;
    StarsCollected = 0;
    player->load(platform.paths.gameDir + "models/player.x");
    GameState = Playing;
    particles->resetParticles();
    debris->Clear();
    dx->ResetCamera();
    RunStartTicks = platform.clock.tickCount();
    recorder->Begin();
    replays->Forget();
    ghost->Prepare();
    clock->Update();
    shadow->Place();
    KeepDrawnState();
}

void frmGame::resetgame(bool winLevel) {
    const uint32_t now = platform.clock.tickCount();
    const uint32_t elapsed = now - RunStartTicks;
    RunStartTicks = now;
    player->resetPLayer();
    // A restart starts like a start: standing on nothing, so a jump key
    // held through an explosion cannot jump from the start point in the air.
    OnGround = false;
    recorder->Begin();
    sound->StopFallSound();
    StarsCollected = 0;
    particles->resetParticles();
    debris->Clear();
    dx->ResetCamera();
    track->BuildLevel(levels->CurrentLevel, false);
    if (winLevel) sound->PlayMusic(MusicWin);
    // A watched run is not play: nothing of it goes into the statistics.
    if (watch->Active())
        stats->ResetPlayCounters();
    else if (!stats->FoldPlay(levels->CurrentLevel, elapsed))
        debug->WriteLine("Could not write stats.dat");
    ResetFPSCounter();
    shadow->Place();
    KeepDrawnState();
}

void frmGame::Winlevel() {
    if (watch->Active()) {
        watch->Finish(RaceFrames, StarsCollected);
        return;
    }
    const int32_t c = levels->CurrentLevel;
    const int32_t frames = RaceFrames;
    std::string why;
    const Replay* best = replays->Best(why);
    const int32_t bestBefore = best ? best->frames : -1;
    if (levels->HasLevel(c)) replays->SaveFinishedRun(frames, StarsCollected, levels->Level(c).StarUpper + 1);
    const RaceTime time = RaceTime::FromFrames(RaceFrames);
    RaceFrames = 0;
    if (!levels->TimeQualifies(time.Seconds, time.Hundredths)) {
        GameState = MadeIt;
        gui->SetupScreen(0);
        SetFieldText(*this, 1, time.Text());
        ShowFinishDifference(3, frames, bestBefore);
    } else {
        GameState = NameEntry;
        gui->SetupScreen(0);
        SetFieldText(*this, 2, time.Text());
        LastFinishSeconds = time.Seconds;
        LastFinishHundredths = time.Hundredths;
        ShowFinishDifference(3, frames, bestBefore);
    }
    if (levels->HasLevel(c) && StarsCollected == levels->Level(c).StarUpper + 1) {
        if (!levels->SaveAllStarsFlag()) debug->WriteLine(levels->WriteError());
    }
    resetgame(true);
}

void frmGame::ShowFinishDifference(int32_t field, int32_t frames, int32_t bestFrames) {
    if (bestFrames < 0 || !clock->Shown()) return;
    const std::string d = RaceClock::Difference(frames, bestFrames);
    SetFieldText(*this, field, d + (frames < bestFrames ? " a new best" : " against the best"));
    if (gui->HasField(field))
        gui->Field(field).Set_Colour(frames < bestFrames ? 120 : 255, frames < bestFrames ? 255 : 150,
                                     frames < bestFrames ? 120 : 150);  // light: both finish panels are dark
}

void frmGame::DrawPlayerAndParticles() {
    // The pieces first: the fireball is drawn over them without hiding them.
    debris->draw(platform.graphics, player->SkinTexture(), DrawBlend);
    player->draw(DrawBlend, *shadow);
    // A watched run is the ghost's own run: it would only cover the car.
    if (!watch->Active()) ghost->draw(static_cast<int64_t>(recorder->Frames().size()));
    particles->draw(DrawBlend);
}

}  // namespace qb
