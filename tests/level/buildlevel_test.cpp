// Building a track's objects from its record, and drawing and moving the
// world around the car.
#include <filesystem>
#include <set>

#include "level/LevelRecords.h"
#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "shell/frmGame.h"
#include "tests/world/WorldTest.h"
#include "world/AnimatedTextures.h"
#include "world/clsBackground.h"

namespace qb {
namespace {

struct BuildRig {
    std::string dir;
    HeadlessPlatform hp;
    std::unique_ptr<frmGame> game;
    explicit BuildRig(const std::string& name) : dir(test::WorldScratch(name)), hp(dir, dir) {
        test::TouchTextures(dir);
        test::Touch(dir + "textures/stone.BMP");
        test::Touch(dir + "models/orb.x");
        test::Touch(dir + "backgrounds/bk003.jpg");
        game = std::make_unique<frmGame>(hp.platform);
        game->TexturesPath = dir + "textures/";
        game->BackgroundsPath = dir + "backgrounds/";
        game->animated->InitAnimatedTextures();
    }
    TrackObjects& track() { return *game->track; }
};

LevelRecord Track(int blocks, int ramps, int platforms, int stars) {
    LevelRecord r;
    r.TextureNames = {"", "road.bmp", "wall.bmp", "Stone.bmp", "", "AnimationTest_1.bmp"};
    r.Settings.Gravity = 0.0025f;
    r.BlockUpper = blocks - 1;
    r.RampUpper = ramps - 1;
    r.PlatformUpper = platforms - 1;
    r.StarUpper = stars - 1;
    for (int i = 0; i < blocks; ++i) {
        BlockRecord b;
        b.Z = static_cast<float>(i * 4);
        b.scaleX = 3;
        b.scalez = 4;
        b.TextureD = 1;
        b.TextureA = 2;
        r.Blocks.push_back(b);
    }
    for (int i = 0; i < ramps; ++i) r.Ramps.push_back(RampRecord{});
    for (int i = 0; i < platforms; ++i) r.Platforms.push_back(MovingPlatformRecord{});
    for (int i = 0; i < stars; ++i) r.Stars.push_back(StarRecord{});
    r.Background = "bk003.jpg" + std::string(41, ' ');
    return r;
}

// Every kind of object takes its record's values; ramps and stars sit on
// whole numbers (half to even), blocks and platforms keep fractions.
TEST(BuildLevel, EveryObjectGetsItsRecordValues) {
    BuildRig rig("build-values");
    LevelRecord rec = Track(2, 2, 1, 2);
    // Face B is Stone.bmp (only stone.BMP is on disk), C an empty name, A no
    // such index, D an animation frame.
    rec.Blocks[1] = BlockRecord{1.5f, 2.25f, 4, 3, 0.5f, 4, 9, 3, 4, 5, 2, 0, 4};
    rec.Ramps[0] = RampRecord{2.5f, 3.5f, 6.5f, 2.5f, 1.5f, 3.4f, 1, 2, 3};
    rec.Ramps[1] = RampRecord{-0.5f, 0.4f, 7.6f, 1, 1, 1, 3, 1, 0};
    rec.Platforms[0] = MovingPlatformRecord{1.25f, 2, 9.5f, 2, 1, 1, 1, 1, 1, 2, 1, 1, 3, 10, 2, 3, 7};
    rec.Stars[0] = StarRecord{2.5f, 3.5f, 10.5f};
    rec.Stars[1] = StarRecord{-2.5f, 1.0f, 11.49f};
    rig.game->RaceFrames = 77;
    TrackObjects& t = rig.track();
    t.BuildLevel(rec, false);
    EXPECT_EQ(rig.game->RaceFrames, 0);
    EXPECT_FLOAT_EQ(t.Gravity, 0.0025f);
    EXPECT_EQ(rig.game->background->pictureName(), "") << "no background unless asked for";

    using Names = std::vector<std::string>;
    ASSERT_EQ(t.BlockUpper, 1);
    const clsBlock& blk = *t.blocks[1];
    EXPECT_EQ(std::tuple(blk.Xpos(), blk.Ypos(), blk.Zpos(), blk.scalez(), int{blk.changeactioncode()},
                         int{blk.ScaleTextureTop()}),
              std::tuple(1.5f, 2.25f, 4, 4.0f, 4, 2));
    EXPECT_EQ((Names{blk.GetTextureA(), blk.GetTextureB(), blk.GetTextureC(), blk.GetTextureD()}),
              (Names{"_default.bmp", "_default.bmp", "_default.bmp", "AnimationTest_1.bmp"}));
    EXPECT_TRUE(blk.isAnimated(3));
    EXPECT_EQ(t.blocks[0]->GetTextureD() + " " + t.blocks[0]->GetTextureA(), "road.bmp wall.bmp");
    // The collision planes keep the shortened depth; corners use the full one.
    EXPECT_FLOAT_EQ(blk.GetFaceCorners(3).p[1].z, 8.0f);

    const clsRamp& r = *t.ramps[0];
    EXPECT_EQ(
        std::tuple(r.Xpos(), r.Ypos(), r.Zpos(), r.scaleX(), r.scaleY(), r.scalez(), int{r.rotateVal()}),
        std::tuple(2, 4, 6, 2, 2, 3, 3));
    // The turns come before the sizes: the planes match the final ramp.
    EXPECT_FLOAT_EQ(r.GetGradient(), -1.0f);
    EXPECT_EQ(r.GetTextureA() + " " + r.GetTextureB(), "road.bmp wall.bmp");
    EXPECT_EQ(std::tuple(t.ramps[1]->Xpos(), t.ramps[1]->Zpos()), std::tuple(0, 8));  // -0.5 rounds to -0
    EXPECT_EQ(std::tuple(t.stars[0]->Xpos(), t.stars[0]->Ypos(), t.stars[0]->Zpos(), t.stars[1]->Xpos(),
                         t.stars[1]->Zpos()),
              std::tuple(2, 4, 10, -2, 11));
    EXPECT_TRUE(t.stars[1]->visible());

    const clsMovingPlatform& p = *t.platforms[0];
    EXPECT_EQ(std::tuple(p.Xpos(), p.Zpos(), p.origin().x, p.MloopBack(), int{p.Mdir()}, int{p.Mspeed()},
                         int{p.Mdist()}, int{p.changeactioncode()}, p.GetTextureD()),
              std::tuple(1.25f, 9.5f, 1.25f, true, 2, 10, 3, 3, "wall.bmp"));
    rig.game->MovePlatforms();
    EXPECT_FLOAT_EQ(p.Xpos(), 1.15f);
}

TEST(BuildLevel, EmptyKindsKeepTheirOldListsUnseen) {
    BuildRig rig("build-empty");
    rig.track().BuildLevel(Track(3, 2, 2, 2), false);
    clsRamp* oldRamp = rig.track().ramps[0].get();
    rig.track().BuildLevel(Track(1, 0, 0, 0), false);
    const TrackObjects& t = rig.track();
    EXPECT_EQ(std::tuple(t.BlockUpper, t.RampUpper, t.PlatformUpper, t.StarUpper), std::tuple(0, -1, -1, -1));
    EXPECT_EQ(rig.track().ramps[0].get(), oldRamp);
    EXPECT_EQ(rig.track().blocks.size(), 1u);
    // Drawing and moving never touch the left-overs.
    rig.hp.graphics.drawCalls = 0;
    rig.game->DrawWorld(true);
    EXPECT_EQ(rig.hp.graphics.drawCalls, 1 + 2);  // sky, one block: face A, then B to D in one call
    const float before = rig.track().platforms[0]->Xpos();
    rig.game->MovePlatforms();
    EXPECT_FLOAT_EQ(rig.track().platforms[0]->Xpos(), before);
}

// The device holds the face textures and the sky of the track on show: a
// new track lets go of what only the old one showed, keeps the frames of a
// face it animates, and a sky asked for again is not read again.
TEST(BuildLevel, ATrackHoldsOnlyTheTexturesAndTheSkyItShows) {
    BuildRig rig("build-held");
    test::Touch(rig.dir + "backgrounds/bk001.jpg");
    auto held = [&] {
        std::multiset<std::string> names;
        for (const auto& [id, path] : rig.hp.graphics.textures)
            names.insert(std::filesystem::path(path).filename().string());
        return names;
    };
    using Names = std::multiset<std::string>;
    const LevelRecord plain = Track(3, 1, 0, 0);
    LevelRecord animated = Track(2, 0, 0, 0);
    animated.Background = "bk001.jpg" + std::string(41, ' ');
    for (BlockRecord& b : animated.Blocks) {
        b.TextureD = 5;
        b.TextureA = 0;
    }
    rig.track().BuildLevel(plain, true);
    EXPECT_EQ(held(), (Names{"bk003.jpg", "road.bmp", "wall.bmp"}));

    rig.track().BuildLevel(animated, true);
    EXPECT_EQ(held(), (Names{"AnimationTest_1.bmp", "_default.bmp", "bk001.jpg", "road.bmp"}));
    for (int i = 0; i < 4; ++i) rig.track().blocks[0]->UpdateAnimatedTexture();
    const Names animating{"AnimationTest_0.bmp",
                          "AnimationTest_1.bmp",
                          "AnimationTest_2.bmp",
                          "AnimationTest_3.bmp",
                          "_default.bmp",
                          "bk001.jpg",
                          "road.bmp"};
    EXPECT_EQ(held(), animating);
    // The same track again (a restart) reads nothing, its frames included.
    const int loads = rig.hp.graphics.texturesLoaded;
    rig.track().BuildLevel(animated, true);
    for (int i = 0; i < 4; ++i) rig.track().blocks[0]->UpdateAnimatedTexture();
    EXPECT_EQ(held(), animating);
    EXPECT_EQ(rig.hp.graphics.texturesLoaded, loads);

    rig.track().BuildLevel(plain, true);
    EXPECT_EQ(held(), (Names{"bk003.jpg", "road.bmp", "wall.bmp"}));
}

// Every restart rebuilds the track: the old objects give their vertex slots
// back before the new ones take theirs, so a big track never needs room for
// two copies of itself.
TEST(BuildLevel, ARebuiltTrackTakesTheSlotsTheOldOneGaveBack) {
    BuildRig rig("build-slots");
    const LevelRecord rec = Track(1500, 300, 300, 0);
    rig.track().BuildLevel(rec, false);
    const size_t buffers = rig.hp.graphics.buffers.size();
    EXPECT_EQ(buffers, 3u);  // 2 100 slots of 1 024 a buffer
    for (int i = 0; i < 3; ++i) rig.track().BuildLevel(rec, false);
    EXPECT_EQ(rig.hp.graphics.buffers.size(), buffers);
    EXPECT_EQ(rig.track().resources().vertices.slotsInUse(), 2100);
}

TEST(DrawWorld, DrawsFrom25BehindTo50AheadWhilePlaying) {
    BuildRig rig("draw-range");
    LevelRecord rec = Track(0, 0, 0, 0);
    for (float z : {-30.0f, -27.0f, 0.0f, 50.5f, 51.0f, 80.0f}) {
        BlockRecord b;
        b.Z = z;
        b.scalez = 2;
        rec.Blocks.push_back(b);
    }
    rec.BlockUpper = 5;
    // Ramps ignore negative positions: one at -26 stays at 0.
    rec.RampUpper = 2;
    rec.Ramps = {RampRecord{0, 0, -26, 1, 1, 2, 1, 1, 0}, RampRecord{0, 0, 50, 1, 1, 2, 1, 1, 0},
                 RampRecord{0, 0, 51, 1, 1, 2, 1, 1, 0}};
    rec.StarUpper = 0;
    rec.Stars = {StarRecord{0, 0, 300}};
    rig.track().BuildLevel(rec, false);
    rig.game->GameState = Playing;
    const float z = rig.game->player->Posz();
    ASSERT_FLOAT_EQ(z, 1.0f);
    auto& g = rig.hp.graphics;
    g.drawCalls = 0;
    rig.game->DrawWorld(false);
    // Blocks at -27 (reaching -25, not beyond -24), 0 and 50.5 (rounded to 50) are
    // drawn; -30, 51 and 80 are not. Ramps at 0 and 50 are drawn, at 51 not.
    // Stars are always drawn. Each block and ramp is one call: its faces
    // share one texture.
    EXPECT_EQ(g.drawCalls, 1 + 2 + 2 + 1);
    g.drawCalls = 0;
    rig.game->GameState = TrackChoice;
    rig.game->DrawWorld(true);
    EXPECT_EQ(g.drawCalls, 1 + 6 + 3 + 1);
}

TEST(DrawWorld, OnlyPlayMovesFallingBlocksAndSpinningStars) {
    BuildRig rig("draw-play");
    LevelRecord rec = Track(1, 0, 0, 1);
    rec.Blocks[0].Y = 5;
    rig.track().BuildLevel(rec, false);
    rig.track().blocks[0]->Fall();
    rig.game->GameState = PauseMenu;
    rig.game->AdvanceMotion();
    rig.game->DrawWorld(false);
    EXPECT_FLOAT_EQ(rig.track().blocks[0]->Ypos(), 5);
    EXPECT_EQ(rig.track().stars[0]->spinAngle(), 0);
    rig.game->GameState = Playing;
    rig.game->DrawWorld(false);  // drawing alone moves nothing
    EXPECT_FLOAT_EQ(rig.track().blocks[0]->Ypos(), 5);
    rig.game->AdvanceMotion();
    EXPECT_FLOAT_EQ(rig.track().blocks[0]->Ypos(), 5 - 0.0025f);
    EXPECT_EQ(rig.track().stars[0]->spinAngle(), 5);
}

TEST(DrawWorld, AnimationStepReachesEveryBlockOfTheTrack) {
    BuildRig rig("draw-anim");
    LevelRecord rec = Track(3, 0, 0, 0);
    for (auto& b : rec.Blocks) b.TextureD = 5;
    rig.track().BuildLevel(rec, false);
    rig.game->StepAnimatedTextures();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(rig.track().blocks[i]->GetTextureD(), "AnimationTest_2.bmp");
}

}  // namespace
}  // namespace qb
