// What a player hears and sees of a run, frame by frame: the sounds, the star
// counter, the screens and the statistics each happening of the drive brings,
// in the frame it happens and in their order. Scripted runs over the special
// blocks, a star, a jump, the finish, an explosion and a fall off the track
// are written out as a transcript and compared whole.
#include <algorithm>
#include <sstream>

#include "gui/Gui.h"
#include "shell/GuiLink.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

// The frames in which something a player notices changed, one line each.
class Transcript {
public:
    explicit Transcript(Drive& d) : d_(d) {
        Look();
        out_.str("");  // what the start shows is the baseline
    }

    // Plays `n` frames with `keys` held, noting every change.
    void Frames(int n, std::initializer_list<uint8_t> keys = {}) {
        for (int i = 0; i < n; ++i) {
            d_.frame(keys);
            ++frame_;
            Look();
        }
    }
    std::string Text() const { return out_.str(); }

private:
    void Look() {
        frmGame& g = d_.game();
        std::string line;
        const std::vector<std::string>& log = d_.hp().audio.log;
        for (; heard_ < log.size(); ++heard_) line += " [" + log[heard_] + "]";
        // The texts that changed; the race clock (field 2 in play) changes
        // every frame and is left out.
        fields_.resize(std::max<size_t>(fields_.size(), static_cast<size_t>(g.gui->FieldCount) + 1));
        for (int32_t f = 1; f <= g.gui->FieldCount; ++f) {
            const std::string text = FieldText(g, f);
            if ((g.GameState == Playing && f == 2) || text == fields_[f]) continue;
            line += " " + std::to_string(f) + "='" + text + "'";
            fields_[f] = text;
        }
        const Stats& s = *g.stats;
        const LevelStat& l = s.LevelStats[1];
        std::ostringstream c;
        c << " jumps " << s.JumpCount << " blown " << s.BlownUpCount << " fallen " << s.FallenOffCount
          << " | kept " << l.Jumps << "/" << l.BlownUp << "/" << l.FallenOff;
        if (c.str() != counters_) line += c.str();
        counters_ = c.str();
        if (g.GameState != state_) line += " state " + std::to_string(g.GameState);
        state_ = g.GameState;
        if (!line.empty()) out_ << frame_ << ":" << line << "\n";
    }

    Drive& d_;
    int frame_ = 0;
    size_t heard_ = 0;
    std::vector<std::string> fields_;
    std::string counters_;
    int16_t state_ = -1;
    std::ostringstream out_;
};

TEST(PlayEffects, AStarAJumpAndTheFinish) {
    Drive d("fxfinish", TrackHead() +
                            " block -2 0 -5 4 1 30 tex road\n block -2 0 25 4 1 4 tex flag finish\n"
                            " star 0 1 9\n star 0 1 20\n star 5 1 20\n");
    Transcript t(d);
    t.Frames(20);
    t.Frames(1, {DIK_SPACE, DIK_RETURN});
    t.Frames(60, {DIK_UP});
    EXPECT_EQ(
        t.Text(),
        R"(21: [stop 1] [rewind 1] [play 1] [stop 1] [rewind 1] [play 1] jumps 2 blown 0 fallen 0 | kept 0/0/0
48: [stop 4] [rewind 4] [play 4] 1='Stars 1 / of 3'
67: [stop 4] [rewind 4] [play 4] 1='Stars 2 / of 3'
77: [stop 3] 1='Your NAME' 2='Time = 3:04' 4='Stars 2 / of 3' jumps 0 blown 0 fallen 0 | kept 2/0/0 state 5
)");
}

TEST(PlayEffects, BouncePadTurboAndFallingBlock) {
    Drive d("fxblocks", TrackHead() +
                            " block -2 0 -5 4 1 15 tex road\n block -2 0 10 4 1 3 tex road turbo\n"
                            " block -2 0 13 4 1 27 tex road\n block -2 0 40 4 1 3 tex road bounce\n"
                            " block -2 0 43 4 1 37 tex road\n block -2 0 80 4 1 6 tex road falling\n");
    Transcript t(d);
    t.Frames(120, {DIK_UP});
    // Every corner standing on a turbo or falling top answers, and the pass
    // meets those tops twice: several sounds in one frame.
    EXPECT_EQ(t.Text(), R"(31: [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7]
32: [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7]
33: [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7] [stop 7] [rewind 7] [play 7]
61: [stop 6] [rewind 6] [play 6]
101: [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3]
102: [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3]
103: [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3]
104: [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3]
105: [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3]
106: [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3] [rewind 3] [play 3]
)");
}

TEST(PlayEffects, AnExplosionAndAFallOffTheTrack) {
    Drive d("fxdeath", TrackHead() +
                           " block -2 0 -5 4 1 15 tex road\n block -2 0 10 4 1 4 tex road deadly\n"
                           " star 0 1 3\n");
    Transcript t(d);
    t.Frames(70, {DIK_UP});
    t.Frames(20);
    t.Frames(15, {DIK_UP});
    t.Frames(120, {DIK_RIGHT});
    EXPECT_EQ(t.Text(), R"(11: [stop 4] [rewind 4] [play 4] 1='Stars 1 / of 1'
31: [play 5]
74: 1='Stars 0 / of 1' jumps 0 blown 1 fallen 0 | kept 0/0/0
75: [stop 3] jumps 0 blown 0 fallen 0 | kept 0/1/0
101: [stop 4] [rewind 4] [play 4] 1='Stars 1 / of 1'
156: [rewind 3] [play 3]
157: [rewind 3] [play 3]
158: [rewind 3] [play 3]
159: [rewind 3] [play 3]
160: [rewind 3] [play 3]
161: [rewind 3] [play 3]
216: 1='Stars 0 / of 1' jumps 0 blown 0 fallen 1 | kept 0/1/0
217: [stop 3] jumps 0 blown 0 fallen 0 | kept 0/1/1
)");
}

TEST(PlayEffects, ATrackTheCarCannotTouchSensiblyEndsTheGame) {
    Drive d("fxbug", TrackHead() + " block -2 0 -5 4 1 20 tex road\n");
    d.game().Events.Add(Happening::BrokenTrack);
    EXPECT_EXIT(d.game().ApplyPlayEffects(), ::testing::ExitedWithCode(1), "Whoops: You got eaten by a bug");
}

}  // namespace
}  // namespace qb
