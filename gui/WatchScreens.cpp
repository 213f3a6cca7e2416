// The screens around a watched best run: the offer on the track choices, the
// note while it runs and the screen at its end.
#include <string>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "shell/GhostCar.h"
#include "shell/RaceTime.h"
#include "shell/ReplayStore.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"

namespace qb {

namespace {
// Under the track's name, over the sky: rimmed like the track number.
constexpr int32_t OfferTop = 94;
constexpr uint32_t Rim = 0xFF0A0E26u;
// The bands of the end panel (slot 61 at x 190, 420 wide).
constexpr int32_t BandLeft = 216, BandRight = 584;
}  // namespace

void Gui::OfferWatch(int32_t field) {
    // Read afresh on every arrival: a run may have been dropped in since.
    game_.replays->Forget();
    std::string why;
    const bool can = game_.replays->Best(why) != nullptr;
    Button(WatchSlot).enabled(can);
    AddField(field, OfferTop, OfferTop + 22, 215, 605, 13, 255, 190, 120,
             why.empty() ? "" : "The best run cannot be watched:")
        .Set_Outline(Rim);
    AddField(field + 1, OfferTop + 20, OfferTop + 42, 215, 605, 13, 255, 190, 120, why).Set_Outline(Rim);
}

std::string Gui::PlayNote() const {
    const WatchRun& w = *game_.watch;
    if (w.Active()) {
        const std::string& driver = w.Run().driver;
        return "Watching the best run" + (driver.empty() ? std::string() : " of " + driver) +
               "  -  Esc leaves";
    }
    return game_.ghost->Enabled() && !game_.ghost->Problem().empty() ? "No ghost: " + game_.ghost->Problem()
                                                                     : std::string();
}

void Gui::SetupWatchEnd() {
    ResetTabIndices();
    Button(WatchEndSlot).enabled(true);
    const WatchRun& w = *game_.watch;
    const Replay& run = w.Run();
    NewFields(3);
    std::string by = run.driver.empty() ? std::string("Best run") : "Best run of " + run.driver;
    if (!run.date.empty()) by += ", " + run.date;
    AddField(1, 225, 255, BandLeft, BandRight, 18, 255, 255, 255, by);
    if (w.Finished()) {
        AddField(2, 265, 295, BandLeft, BandRight, 18, 255, 255, 0,
                 "Stars " + std::to_string(w.FinishStars()) + " / of " + std::to_string(run.starCount));
        AddField(3, 332, 396, BandLeft, BandRight, 30, 0, 0, 0,
                 RaceTime::FromFrames(w.FinishFrames()).Text());
    } else {
        // A file that claims a finish its keys do not drive to.
        AddField(2, 265, 295, BandLeft, BandRight, 13, 255, 190, 120,
                 "This run does not reach the finish on this track");
        AddField(3, 332, 396, BandLeft, BandRight, 30, 0, 0, 0, "No finish");
    }
}

}  // namespace qb
