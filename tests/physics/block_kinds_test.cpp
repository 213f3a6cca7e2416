// The special blocks, stars, falling out and the explosion's course. What
// they sound and show is pinned in tests/session/play_effects_test.cpp.
#include "level/TrackObjects.h"
#include "physics/clsParticles.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

std::string Under(const std::string& kind, const std::string& extra = "") {
    return TrackHead() + extra + " block -2 0 -5 4 1 20 tex road " + kind + "\n";
}

// Frames with no keys until one notes `event`.
void Until(Drive& d, uint32_t event) {
    for (int frame = 0; !(d.frame().events & event); ++frame) ASSERT_LT(frame, 100);
}

TEST(BouncePad, LaunchesAtFortyFiveHundredthsAndSpinsTwentyFiveFrames) {
    Drive d("bounce", Under("bounce"));
    Until(d, EventBounce);
    EXPECT_FLOAT_EQ(d.car().verticalvelocity(), 0.45f);
    EXPECT_FALSE(d.rows.back().onGround);
    EXPECT_TRUE(d.game().track->blocks[0]->isBouncing());
    // Angles 0, 30 ... 720 are drawn, one a frame; then the spin is over.
    EXPECT_FLOAT_EQ(d.car().SpinAngle(), 30);
    for (int i = 2; i <= 24; ++i) {
        d.frame();
        ASSERT_TRUE(d.car().BouncePadActive()) << "frame " << i;
    }
    d.frame();
    EXPECT_FALSE(d.car().BouncePadActive());
}

TEST(Turbo, SetsFullSpeed) {
    Drive d("turbo", Under("turbo"));
    Until(d, EventTurbo);
    EXPECT_FLOAT_EQ(d.car().ForwardVelocity(), 1.0f);
}

TEST(FallingBlock, CarriesTheCarDown) {
    Drive d("falling", Under("falling", " block -2 0 30 4 1 4 tex road\n"));
    Until(d, EventFallBlock);
    const clsBlock& b = *d.game().track->blocks[1];
    EXPECT_TRUE(b.isFalling());
    for (int i = 0; i < 20; ++i) {
        const SimRow& r = d.frame();
        EXPECT_TRUE(r.events & EventFallBlock) << "frame " << i;
        EXPECT_TRUE(r.onGround);
        // Riding just above the top, one step of the fall behind it.
        const float top = b.Ypos() + b.scaleY();
        EXPECT_GE(r.position.y, top);
        EXPECT_LE(r.position.y, top + b.fallvel() + 0.001f);
    }
    EXPECT_FLOAT_EQ(b.fallvel(), 21 * 0.025f);
}

TEST(Ice, LastsOnlyWhileTouched) {
    Drive d(
        "ice",
        TrackHead() +
            " texture icy \"ice.bmp\"\n block -2 0 -5 4 1 8 tex icy ice\n block -2 0 3 4 1 20 tex road\n");
    ASSERT_TRUE(d.settle());
    EXPECT_TRUE(d.rows.back().onIce);
    while (d.car().Posz() < 5) d.frame({DIK_UP});
    EXPECT_FALSE(d.rows.back().onIce);
    EXPECT_FLOAT_EQ(d.car().Friction(), 0.04f);
}

TEST(Deadly, BlowsTheCarUpAndTheRunRestartsAfterTheExplosion) {
    Drive d("deadly",
            Under("deadly",
                  " block -2 0 30 4 1 4 tex road\n platform -2 5 40 4 1 4 dir right speed 5 dist 2 loop\n"));
    Until(d, EventExplode);
    const Vector3 at = d.car().GetPosition();
    EXPECT_FALSE(d.game().track->platforms[0]->isMoving());
    // The car stands still while the explosion plays (85 ms a picture at
    // 40 ms a frame), whatever its speeds say.
    int deathFrame = 0;
    for (int i = 1; i <= 60 && deathFrame == 0; ++i) {
        const SimRow& r = d.frame({DIK_UP});
        ASSERT_TRUE(r.exploding);
        EXPECT_EQ(r.position.z, at.z);
        EXPECT_EQ(r.position.y, at.y);
        if (r.events & EventDeath) deathFrame = i;
    }
    EXPECT_EQ(deathFrame, 43);
    // The next frame starts the run again on a rebuilt track.
    const SimRow& r = d.frame();
    EXPECT_FALSE(r.exploding || r.dead);
    EXPECT_EQ(r.raceFrames, 1);
    EXPECT_FLOAT_EQ(r.position.y, 3.0f - 0.025f);
    EXPECT_TRUE(d.game().track->platforms[0]->isMoving());
}

TEST(FallingOut, BelowMinusAHundredEndsTheRun) {
    Drive d("fallout", TrackHead() + " block -2 0 200 4 1 4 tex road\n");
    Until(d, EventDeath);
    EXPECT_TRUE(d.rows.back().dead);
    // The pass that first sees the car below -100 ends the run.
    const size_t n = d.rows.size();
    EXPECT_LT(d.rows[n - 2].position.y, -100.0f);
    EXPECT_GE(d.rows[n - 3].position.y, -100.0f);
    const SimRow& r = d.frame();
    EXPECT_FALSE(r.dead);
    EXPECT_FLOAT_EQ(r.position.y, 2.975f);
    EXPECT_EQ(d.run->Result(), "result: died");
}

TEST(Stars, AStarIsTakenOnceWithABurstOfSparks) {
    Drive d("star", TrackHead() + " block -2 0 -5 4 1 30 tex road\n star 0 1 8\n star 0 1 40\n star 0 9 9\n");
    d.frames(60, {DIK_UP});
    EXPECT_EQ(d.game().StarsCollected, 1);
    EXPECT_FALSE(d.game().track->stars[0]->visible());
    EXPECT_TRUE(d.game().track->stars[2]->visible()) << "high above the car's path";
    EXPECT_EQ(d.game().particles->Count(), clsParticles::BurstSize);
}

}  // namespace
}  // namespace qb
