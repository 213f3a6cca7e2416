// Full screen fills the display at any shape: the 3-D view takes all of it
// with the same vertical field of view, the 800x600 menu layout is scaled as
// large as fits and centred, and the pointer lands where the layout is drawn.
#include <gtest/gtest.h>

#include <cmath>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "platform/D3DMath.h"
#include "platform/DirectX.h"
#include "platform/sdl/Letterbox.h"
#include "tests/shell/TestGame.h"
#include "world/clsBackground.h"

namespace qb {
namespace {

struct Display {
    const char* name;
    int w, h;       // pixels
    float density;  // pixels per window unit
    bool full;
};

// Where a layout point is drawn on the display, in pixels.
void LayoutToPixels(const DirectX& dx, float lx, float ly, float& px, float& py) {
    px = (lx + dx.GuiOffsetX) * dx.Present.screenScale;
    py = (ly + dx.GuiOffsetY) * dx.Present.screenScale;
}

TEST(DisplayFit, FullScreenFillsEveryShapeAndTheLayoutFitsCentred) {
    const Display displays[] = {
        {"16:9", 1920, 1080, 1, true},        {"16:10", 1680, 1050, 1, true}, {"4:3", 1024, 768, 1, true},
        {"HiDPI 16:10", 2880, 1800, 2, true}, {"5:4", 1280, 1024, 1, true},
    };
    for (const Display& d : displays) {
        SCOPED_TRACE(d.name);
        test::TestGame t(std::string("fit-") + (d.full ? "full" : "win"));
        t.hp.graphics.fullScreen = d.full;
        t.hp.graphics.displayW = d.w;
        t.hp.graphics.displayH = d.h;
        t.hp.graphics.density = d.density;
        ASSERT_TRUE(t.game->startup());
        const DirectX& dx = *t.game->dx;
        // The back buffer is the whole display, at its own resolution.
        EXPECT_EQ(std::tuple(t.hp.graphics.created.width, t.hp.graphics.created.height),
                  std::tuple(d.w, d.h));
        const float s = dx.Present.screenScale;
        EXPECT_FLOAT_EQ(s, std::min(d.w / 800.0f, d.h / 600.0f));
        // The layout touches two opposite edges and is centred between the others.
        float l, tp, r, b;
        LayoutToPixels(dx, 0, 0, l, tp);
        LayoutToPixels(dx, 800, 600, r, b);
        EXPECT_NEAR(l, d.w - r, 0.5f);
        EXPECT_NEAR(tp, d.h - b, 0.5f);
        EXPECT_GE(l, -0.5f);
        EXPECT_GE(tp, -0.5f);
        EXPECT_TRUE(std::fabs(l) < 0.5f || std::fabs(tp) < 0.5f);
        // Same vertical field of view; the width follows the display's shape.
        const Matrix4& p = t.hp.graphics.projection;
        EXPECT_NEAR(p.m[1][1], 1.0f / std::tan(3.14159265f / 8), 1e-4);
        EXPECT_NEAR(p.m[1][1] / p.m[0][0], (d.w / static_cast<float>(d.h)) / (4.0f / 3.0f), 1e-4);

        // The pointer over a button's middle, in window units, finds it.
        GUI_Button& options = t.game->gui->Button(20);
        float px, py;
        LayoutToPixels(dx, options.LayoutX() + options.width() / 2.0f,
                       options.LayoutY() + options.height() / 2.0f, px, py);
        const int winW = static_cast<int>(d.w / d.density), winH = static_cast<int>(d.h / d.density);
        float sx, sy;
        WindowToScreenUnits(LetterboxRect(winW, winH, d.w, d.h), d.w, d.h, s, px / d.density, py / d.density,
                            sx, sy);
        EXPECT_TRUE(options.Contains(sx, sy)) << sx << "," << sy;
        EXPECT_NEAR(sx, options.X() + options.width() / 2.0f, 0.01f);
        EXPECT_NEAR(sy, options.Y() + options.height() / 2.0f, 0.01f);
        t.game->Form_MouseMove(sx, sy);
        EXPECT_TRUE(options.IsMouseOver());
    }
}

TEST(DisplayFit, AWindowKeepsTheVideoModesAtTheScreensPixelDensity) {
    for (float density : {1.0f, 2.0f}) {
        test::TestGame t("fit-window");
        t.hp.graphics.density = density;
        ASSERT_TRUE(t.game->startup());
        DirectX& dx = *t.game->dx;
        EXPECT_EQ(t.hp.graphics.created.width, static_cast<int>(800 * density));
        EXPECT_FLOAT_EQ(dx.ScreenWidth, 800);
        EXPECT_FLOAT_EQ(dx.GuiOffsetX, 0);
        t.game->ChangeVideoMode(2);
        EXPECT_EQ(dx.Present.width, static_cast<int>(1024 * density));
        EXPECT_EQ(std::tuple(dx.ScreenWidth, dx.GuiOffsetX, dx.GuiOffsetY),
                  std::tuple(1024.0f, 112.0f, 84.0f));
        EXPECT_NEAR(t.hp.graphics.projection.m[0][0], t.hp.graphics.projection.m[1][1],
                    1e-6);  // 4:3 as always
    }
}

TEST(DisplayFit, GoingFullScreenMidRaceRefitsWithoutRestartingTheRun) {
    test::TestGame t("fit-toggle");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.levels->CurrentLevel = 1;
    g.track->BuildLevel(1, false);
    g.GameState = Playing;
    g.gui->SetupScreen(0);
    g.startPlaying();
    g.RaceFrames = 40;
    g.gui->Field(1).Set_Text("Stars 2 / of 5");
    t.hp.graphics.fullScreen = true;
    t.hp.graphics.displayW = 1920;
    t.hp.graphics.displayH = 1080;
    g.FitToDisplay();
    EXPECT_EQ(
        std::tuple(g.dx->Present.width, t.hp.graphics.resetCount, g.RaceFrames, g.gui->Field(1).Get_String()),
        std::tuple(1920, 1, 40, "Stars 2 / of 5"));
    // The sky covers the whole display.
    g.background->draw();
    EXPECT_FLOAT_EQ(g.background->quad()[3].x * g.dx->Present.screenScale, 1920);
    // ... showing the middle of the 4:3 picture at the display's shape.
    EXPECT_NEAR(g.background->quad()[3].v - g.background->quad()[0].v, 0.75f, 1e-5);
    EXPECT_NEAR(g.background->quad()[0].v + g.background->quad()[3].v, 1.0f, 1e-5);
    EXPECT_FLOAT_EQ(g.background->quad()[3].u - g.background->quad()[0].u, 1.0f);
    g.FitToDisplay();  // nothing changed: nothing done
    EXPECT_EQ(t.hp.graphics.resetCount, 1);
}

// The finish screen's texts were filled in after it was set up: a refit
// must not put back the set-up's texts or colours.
TEST(DisplayFit, GoingFullScreenOnTheNameEntryKeepsItsTextsAndColours) {
    test::TestGame t("fit-name");
    frmGame& g = *t.game;
    ASSERT_TRUE(g.startup());
    g.GameState = NameEntry;
    g.gui->SetupScreen(0);
    g.gui->Field(1).Set_Text("ANN");
    g.gui->Field(2).Set_Text("Time = 17:80");
    g.gui->Field(3).Set_Text("-0:04 a new best");
    g.gui->Field(3).Set_Colour(120, 255, 120);
    std::vector<std::string> before;
    for (int32_t i = 1; g.gui->HasField(i); ++i) before.push_back(g.gui->Field(i).Get_String());
    t.hp.graphics.fullScreen = true;
    t.hp.graphics.displayW = 1920;
    t.hp.graphics.displayH = 1080;
    g.FitToDisplay();
    ASSERT_EQ(t.hp.graphics.resetCount, 1);
    std::vector<std::string> after;
    for (int32_t i = 1; g.gui->HasField(i); ++i) after.push_back(g.gui->Field(i).Get_String());
    EXPECT_EQ(after, before);
    EXPECT_EQ(g.gui->Field(3).Colour(), 0xFF78FF78u);
}

}  // namespace
}  // namespace qb
