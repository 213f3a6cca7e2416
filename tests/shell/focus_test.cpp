// Another window takes the focus in the middle of a race: the music pauses,
// nothing on the track moves and the clock stands still, until the focus
// comes back.
#include <gtest/gtest.h>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "tests/physics/DriveTest.h"
#include "world/clsMovingPlatform.h"

namespace qb {
namespace {

struct Snapshot {
    Vector3 car;
    float platform;
    int32_t clock;
    bool operator==(const Snapshot& o) const {
        return car.x == o.car.x && car.y == o.car.y && car.z == o.car.z && platform == o.platform &&
               clock == o.clock;
    }
};

TEST(Focus, LosingItPausesTheMusicAndFreezesTheRaceUntilItComesBack) {
    const std::string dir = test::MakeGameDir(
        "focus",
        test::TrackHead() +
            " block -2 0 -5 4 1 200 tex road\n platform 4 0 10 4 1 4 dir right speed 5 dist 3 loop\n");
    HeadlessPlatform hp(dir);
    frmGame g(hp.platform);
    ASSERT_TRUE(g.startup());
    g.sound->SetMusicVolume(50);
    g.gui->OpenZone(1);
    g.gui->Click(26);  // Play track
    ASSERT_EQ(g.GameState, Playing);
    ASSERT_EQ(hp.audio.musicPlaying, MusicTrack);

    auto now = [&] {
        return Snapshot{g.player->GetPosition(), g.track->platforms.at(0)->Xpos(), g.RaceFrames};
    };
    Snapshot frozen{};
    int unfocused = 0, refocusedAt = -1;
    int64_t blurredAt = 0, awayFor = 0;  // fake microseconds
    bool movedWhileAway = false, musicWhileAway = false;
    g.HandleKeyboard();  // a first pass on the track: Up goes down in play
    hp.keyboard.press(DIK_UP);
    hp.window.onProcess = [&](WindowEvents&) {
        if (hp.window.focus && refocusedAt < 0 && g.RaceFrames >= 10) {
            hp.window.focus = false;  // the frame in progress still ends
            return;
        }
        if (!hp.window.focus) {
            if (unfocused == 0) {
                frozen = now();
                blurredAt = hp.clock.now;
            }
            movedWhileAway |= !(now() == frozen);
            musicWhileAway |= hp.audio.musicPlaying != 0;
            if (++unfocused == 40) {
                awayFor = hp.clock.now - blurredAt;
                hp.window.focus = true;
                refocusedAt = g.RaceFrames;
            }
            return;
        }
        if (refocusedAt >= 0 && g.RaceFrames >= refocusedAt + 5) g.GameRunning = false;
    };
    g.runMainLoop();
    ASSERT_EQ(unfocused, 40);
    EXPECT_FALSE(movedWhileAway) << "the car, a platform or the clock moved without the focus";
    EXPECT_FALSE(musicWhileAway);
    EXPECT_NE(std::find(hp.audio.log.begin(), hp.audio.log.end(), "pause"), hp.audio.log.end());
    // Forty paced passes of fake time went by (no spinning), but the race
    // went on where it stopped.
    EXPECT_GT(awayFor, 39 * 5000);
    EXPECT_EQ(refocusedAt, frozen.clock);
    EXPECT_EQ(hp.audio.musicPlaying, MusicTrack);
    EXPECT_GT(g.player->GetPosition().z, frozen.car.z);
    EXPECT_NE(g.track->platforms.at(0)->Xpos(), frozen.platform);
}

}  // namespace
}  // namespace qb
