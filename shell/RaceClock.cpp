#include "shell/RaceClock.h"

#include <cstdlib>

#include "persist/Settings.h"
#include "shell/GuiLink.h"
#include "shell/RaceTime.h"
#include "shell/ReplayStore.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"

namespace qb {

bool RaceClock::Shown() const {
    return game_.settings->GetBool(SettingKey, true);
}

int32_t RaceClock::BestFrames() const {
    std::string why;
    const Replay* best = game_.replays->Best(why);
    return best ? best->frames : -1;
}

std::string RaceClock::Text(int32_t frames, int32_t bestFrames) const {
    if (!Shown()) return "";
    std::string text = RaceTime::FromFrames(frames).Clock();
    if (bestFrames >= 0) text += "   best " + RaceTime::FromFrames(bestFrames).Clock();
    return text;
}

std::string RaceClock::Difference(int32_t frames, int32_t bestFrames) {
    const int32_t d = frames - bestFrames;
    return (d < 0 ? "-" : "+") + RaceTime::FromFrames(std::abs(d)).Clock();
}

void RaceClock::Update() {
    // The note under a race (why there is no ghost) has been read after a
    // few seconds; a watched run keeps its own.
    if (game_.RaceFrames >= NoteFrames && !game_.watch->Active() && !FieldText(game_, NoteField).empty())
        SetFieldText(game_, NoteField, "");
    // The text only changes when the clock does: nothing is laid out again
    // while the game stands still.
    const std::string text = Text(game_.RaceFrames, BestFrames());
    if (text == shown_ && FieldText(game_, Field) == text) return;
    shown_ = text;
    SetFieldText(game_, Field, text);
}

}  // namespace qb
