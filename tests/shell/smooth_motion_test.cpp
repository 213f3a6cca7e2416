// Smooth motion: drawings at the refresh between play frames change nothing
// of the run, and place the car, the camera and the sparks part way.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/Settings.h"
#include "persist/Stats.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"
#include "platform/D3DMath.h"
#include "platform/DirectX.h"
#include "shell/KeyScript.h"
#include "tests/replay/ReplayRuns.h"
#include "tests/shell/TestGame.h"

namespace qb {
namespace {

using test::TestGame;

struct Digest {
    uint64_t h = 1469598103934665603ull;
    template <typename T>
    void add(const T& v) {
        const auto* c = reinterpret_cast<const unsigned char*>(&v);
        for (size_t i = 0; i < sizeof v; ++i) h = (h ^ c[i]) * 1099511628211ull;
    }
};

// Everything a run leaves behind: the car, the track's moving objects, the
// sparks, the clock, the counters.
uint64_t EndState(frmGame& g) {
    Digest d;
    const clsPlayer& car = *g.player;
    d.add(car.GetPosition());
    d.add(car.GetVelocity());
    d.add(car.getexplodeStatus());
    d.add(car.SpinAngle());
    d.add(g.GameState);
    d.add(g.RaceFrames);
    d.add(g.StarsCollected);
    d.add(g.stats->BlownUpCount);
    d.add(g.stats->FallenOffCount);
    d.add(g.dx->CameraEye);
    const TrackObjects& t = *g.track;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) {
        d.add(t.blocks[i]->Ypos());
        d.add(t.blocks[i]->fallvel());
    }
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) d.add(t.platforms[i]->Xpos());
    for (int32_t i = 0; i <= t.StarUpper; ++i) {
        d.add(t.stars[i]->visible());
        d.add(t.stars[i]->spinAngle());
    }
    d.add(g.particles->Count());
    for (int32_t k = 0; k < g.particles->Count(); ++k) d.add(g.particles->Particles()[k].position);
    return d.h;
}

struct LoopRun {
    TestGame t;
    int frames = 0;
    int presents = 0;

    LoopRun(const char* name, bool smooth, int32_t track, const KeyScript& script) : t(name) {
        frmGame& g = *t.game;
        EXPECT_TRUE(g.startup());
        g.SmoothMotion = smooth;
        LevelStructure& l = *g.levels;
        l.CurrentZone = (track - 1) / 10 + 1;
        l.ZoneFirstLevel = (l.CurrentZone - 1) * 10 + 1;
        l.ZoneLastLevel = l.CurrentZone * 10;
        l.CurrentLevel = track;
        g.GameState = TrackChoice;
        g.track->BuildLevel(track, false);
        g.startPlaying();
        const int total = static_cast<int>(script.TotalFrames());
        auto hold = [&](int frame) {
            std::memset(t.hp.keyboard.keys, 0, sizeof t.hp.keyboard.keys);
            if (const auto* keys = script.KeysAt(frame))
                for (uint8_t k : *keys) t.hp.keyboard.keys[k] = 128;
        };
        hold(0);
        int64_t lastSeen = g.FrameStartCount;
        const int presentsBefore = t.hp.graphics.presentCount;
        t.hp.window.onProcess = [&, total](WindowEvents& w) {
            if (g.FrameStartCount != lastSeen) {  // a play frame has just run
                lastSeen = g.FrameStartCount;
                hold(++frames);
            }
            // A finish leaves play; the run ends there too.
            if (frames >= total || g.GameState != Playing) w.onClose();
        };
        g.runMainLoop();
        presents = t.hp.graphics.presentCount - presentsBefore;
    }
};

void ExpectSameRun(const char* name, int32_t track, const KeyScript& script) {
    LoopRun once(name, false, track, script);
    LoopRun smooth(name, true, track, script);
    EXPECT_EQ(once.frames, smooth.frames);
    EXPECT_EQ(EndState(*once.t.game), EndState(*smooth.t.game)) << "track " << track;
    // One drawing per play frame, against more than two per frame at 60 a second.
    EXPECT_NEAR(once.presents, once.frames, 2);
    EXPECT_GT(smooth.presents, 2 * smooth.frames);
}

TEST(SmoothMotion, TheRunIsTheSameWithDrawingsBetweenFrames) {
    // Bounce pads, falling blocks and moving platforms, each driven to the
    // finish with its stars (and their sparks).
    for (int track : {5, 8, 10}) {
        const KeyScript s = test::Solution(track);
        ASSERT_GT(s.TotalFrames(), 100);
        ExpectSameRun("smooth-solution", track, s);
    }
    // A run that blows up on a deadly block and starts again.
    ExpectSameRun("smooth-crash", 9, KeyScript{{KeyStep{400, {DIK_UP}}}});
}

// The game started and racing track 1 from its start.
bool RacingTrackOne(frmGame& g) {
    if (!g.startup()) return false;
    g.levels->CurrentLevel = 1;
    g.track->BuildLevel(1, false);
    g.startPlaying();
    return true;
}

TEST(SmoothMotion, CarCameraAndSparksAreDrawnPartWayBetweenFrames) {
    TestGame t("smooth-between");
    frmGame& g = *t.game;
    ASSERT_TRUE(RacingTrackOne(g));
    clsPlayer& car = *g.player;
    car.ForwardVelocity(0.5f);
    car.HorizontalVelocity(0.1f);
    float x = 0, y = 4, z = 5;
    g.particles->AddStarExplosion(x, y, z);
    g.KeepDrawnState();
    const Vector3 from = car.GetPosition();
    const Vector3 eyeFrom = g.dx->CameraEye;
    const Vector3 sparkFrom = g.particles->Particles()[0].position;
    // Newborn sparks have no path yet: they stand where they are.
    g.DrawBlend = 0.5f;
    g.RenderFrame();
    ASSERT_EQ(t.hp.graphics.points.size(), 30u);
    EXPECT_FLOAT_EQ(t.hp.graphics.points[0].y, sparkFrom.y);
    g.AdvanceMotion();
    const Vector3 to = car.GetPosition();
    ASSERT_FLOAT_EQ(to.z - from.z, 0.5f);
    ASSERT_FLOAT_EQ(g.dx->CameraEye.z - eyeFrom.z, 0.5f);

    // The car a quarter of the way.
    car.draw(0.25f, *g.shadow);
    const Vector3 drawn = car.DrawnPosition(0.25f);
    EXPECT_FLOAT_EQ(drawn.z, from.z + 0.125f);
    EXPECT_FLOAT_EQ(drawn.x, from.x + 0.025f);
    // The camera half way (the view moves the half-way eye to the origin).
    g.DrawBlend = 0.5f;
    g.RenderFrame();
    const Vector3 eyeHalf{eyeFrom.x, eyeFrom.y, eyeFrom.z + 0.25f};
    const Vector3 atEye = TransformCoord(eyeHalf, t.hp.graphics.view);
    EXPECT_NEAR(atEye.x, 0, 1e-4);
    EXPECT_NEAR(atEye.y, 0, 1e-4);
    EXPECT_NEAR(atEye.z, 0, 1e-4);
    // The sparks half way along their step.
    g.particles->draw(0.5f);
    const Vector3 sparkTo = g.particles->Particles()[0].position;
    ASSERT_EQ(t.hp.graphics.points.size(), 30u);
    const PointVertex& shown = t.hp.graphics.points[0];
    EXPECT_NE(sparkFrom.y, sparkTo.y);
    EXPECT_FLOAT_EQ(shown.x, (sparkFrom.x + sparkTo.x) / 2);
    EXPECT_FLOAT_EQ(shown.y, (sparkFrom.y + sparkTo.y) / 2);
    g.particles->draw(1.0f);
    EXPECT_FLOAT_EQ(t.hp.graphics.points[0].y, sparkTo.y);

    // A restart puts the car back at the start at once: no sweep back.
    g.resetgame(false);
    const Vector3 start = car.GetPosition();
    for (float blend : {0.0f, 0.5f}) {
        const Vector3 p = car.DrawnPosition(blend);
        EXPECT_FLOAT_EQ(p.z, start.z);
        EXPECT_FLOAT_EQ(p.y, start.y);
    }
}

TEST(SmoothMotion, PlayFramesKeepTheirPaceWhileDrawingsComeBetween) {
    TestGame t("smooth-pace");
    frmGame& g = *t.game;
    ASSERT_TRUE(RacingTrackOne(g));
    std::vector<int64_t> starts;
    int64_t lastSeen = g.FrameStartCount;
    t.hp.window.onProcess = [&](WindowEvents& w) {
        if (g.FrameStartCount != lastSeen) {
            lastSeen = g.FrameStartCount;
            starts.push_back(g.FrameStartCount);
        }
        if (starts.size() > 50) w.onClose();
    };
    g.runMainLoop();
    ASSERT_GT(starts.size(), 50u);
    for (size_t i = 1; i < starts.size(); ++i) {
        EXPECT_GT(starts[i] - starts[i - 1], 40000);
        EXPECT_LT(starts[i] - starts[i - 1], 41000);
    }
    // About 60 drawings a second over the two seconds of play.
    const double seconds = static_cast<double>(starts.back() - starts.front()) / 1e6;
    EXPECT_NEAR(t.hp.graphics.presentCount / seconds, 60.0, 6.0);
}

TEST(SmoothMotion, OnUnlessTheSettingsFileTurnsItOff) {
    {
        test::TestGame t("smooth-default");
        ASSERT_TRUE(t.game->startup());
        EXPECT_TRUE(t.game->SmoothMotion);
    }
    test::TestGame t("smooth-off");
    std::ofstream(t.writeDir + "settings.cfg") << "# mine\nsmooth_motion = off\n";
    ASSERT_TRUE(t.game->startup());
    EXPECT_FALSE(t.game->SmoothMotion);
    // Options shows it and a click on it switches it, at once and for good.
    frmGame& g = *t.game;
    g.GameState = Options;
    g.gui->SetupScreen(0);
    EXPECT_EQ(g.gui->Field(5).Get_String(), "Smooth (M): off");
    g.Form_MouseDown(1, 530, 460);
    EXPECT_TRUE(g.SmoothMotion);
    EXPECT_EQ(g.gui->Field(5).Get_String(), "Smooth (M): on");
    Settings saved(t.writeDir + "settings.cfg");
    saved.Load();
    EXPECT_TRUE(saved.GetBool(frmGame::SmoothMotionKey, false));
}

// A still menu waits instead of drawing the same picture again; anything
// that changes it is drawn at once.
TEST(IdleMenu, DrawnOnlyWhenSomethingOnItChanges) {
    test::TestGame t("idle-menu");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    int passes = 0;
    std::vector<int64_t> drawings;
    t.hp.window.onProcess = [&](WindowEvents& w) {
        ++passes;
        if (passes % 10 == 0) drawings.push_back(g.MenuDrawings);
        if (passes == 10) w.onMouseMove(5, 5);           // over nothing: the picture stays
        if (passes == 20) w.onMouseMove(400, 320 + 20);  // onto OPTIONS: its highlight
        if (passes == 30) w.onMouseMove(401, 320 + 21);  // still on it: nothing new
        if (passes == 40) w.onClose();
    };
    const int64_t start = t.hp.clock.now;
    g.runMainLoop();
    EXPECT_EQ(drawings, (std::vector<int64_t>{1, 1, 2, 2}));
    EXPECT_TRUE(g.gui->Button(20).IsMouseOver());
    // Idle passes waited rather than spun.
    EXPECT_GE(t.hp.clock.now - start, 39 * 16000);
}

}  // namespace
}  // namespace qb
