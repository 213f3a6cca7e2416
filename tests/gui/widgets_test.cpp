// The button, the text field and the bitmap-size reader on their own.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "gui/BITMAP_Loader.h"
#include "gui/GUI_Button.h"
#include "gui/clsFontField.h"
#include "platform/headless/HeadlessPlatform.h"

namespace qb {
namespace {

const std::string Gui = std::string(QUORBIT_GAME_DIR) + "/gui/";

struct ButtonRig {
    HeadlessGraphics device;
    PictureStore pictures{device};
    float offX = 0, offY = 0;
    std::vector<int16_t> sounds;
    GUI_Button b{pictures, offX, offY, [this](int16_t n) { sounds.push_back(n); }};
};

TEST(BitmapLoader, ReadsWidthAndHeightFromTheHeaders) {
    const std::string path = ::testing::TempDir() + "size.bmp";
    unsigned char h[54] = {'B', 'M'};
    h[14] = 40;
    h[18] = 0x2C;  // width 300
    h[19] = 0x01;
    h[22] = 0xFE;  // height -2: a top-down bitmap, taken as it stands
    h[23] = 0xFF;
    h[24] = 0xFF;
    h[25] = 0xFF;
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(h), sizeof h);
    int32_t w = 0, ht = 0;
    GetBitmapSize(path, w, ht);
    EXPECT_EQ(w, 300);
    EXPECT_EQ(ht, -2);
    EXPECT_THROW(GetBitmapSize(::testing::TempDir() + "missing.bmp", w, ht), std::runtime_error);
    std::ofstream(path, std::ios::binary | std::ios::trunc).write("BM", 2);
    EXPECT_THROW(GetBitmapSize(path, w, ht), std::runtime_error);
}

TEST(Button, LoadsItsSizeAndPlacesItselfOnWholePixelsHalfToEven) {
    ButtonRig r;
    r.b.LoadTexture(Gui + "quit.bmp", 0xFF000000u);
    EXPECT_EQ(std::tuple(r.b.width(), r.b.height()), std::tuple(220, 48));
    // The whole picture, untinted; depth 1 only top left.
    const auto& c = r.b.Corners();
    EXPECT_EQ(std::tuple(c[0].z, c[1].z, c[3].u, c[3].v, c[3].diffuse),
              std::tuple(1.0f, 0.0f, 1.0f, 1.0f, 0xFFFFFFFFu));
    r.b.X(2.5f);
    EXPECT_EQ(r.b.LayoutX(), 2);
    r.b.X(3.5f);
    EXPECT_EQ(r.b.LayoutX(), 4);
    EXPECT_THROW(r.b.LoadRollover(Gui + "no_such_picture.bmp", 0), std::runtime_error);
}

// Pixel centres lie on whole numbers: a quad covers the pixels whose centres
// are inside it, its left and top edges included, its right and bottom not.
TEST(Button, ThePixelsAPictureCoversAreExactlyThePixelsThatHitIt) {
    ButtonRig r;
    r.b.LoadTexture(Gui + "quit.bmp", 0xFF000000u);
    r.b.X(290);
    r.b.Y(485);
    for (float offset : {0.0f, 112.0f}) {
        r.offX = offset;
        r.offY = offset * 0.75f;
        r.b.OnChangeVideoMode();
        const auto& c = r.b.Corners();
        const float midX = r.b.X() + 100, midY = r.b.Y() + 20;
        int columns = 0, rows = 0;
        for (float px = r.b.X() - 3; px < r.b.X() + 226; ++px) {
            const bool drawn = px >= c[0].x && px < c[1].x;
            columns += drawn;
            EXPECT_EQ(r.b.Contains(px, midY), drawn) << "column " << px;
        }
        for (float py = r.b.Y() - 3; py < r.b.Y() + 54; ++py) {
            const bool drawn = py >= c[0].y && py < c[2].y;
            rows += drawn;
            EXPECT_EQ(r.b.Contains(midX, py), drawn) << "row " << py;
        }
        // One pixel of the bitmap each: nothing squeezed or stretched.
        EXPECT_EQ(columns, 220);
        EXPECT_EQ(rows, 48);
    }
    EXPECT_TRUE(r.b.Contains(402, 569));  // the top-left pixel at 1024x768
    EXPECT_FALSE(r.b.Contains(401, 569));
}

TEST(Button, RolloverSoundPlaysOncePerHighlight) {
    ButtonRig r;
    r.b.LoadTexture(Gui + "quit.bmp", 0xFF000000u);
    r.b.LoadRollover(Gui + "quit_roll_over.bmp", 0xFF000000u);
    r.b.MouseOverSFX(8);
    r.b.enabled(true);
    r.b.draw(1);
    EXPECT_TRUE(r.sounds.empty());
    EXPECT_EQ(r.device.boundTexture, r.b.Texture());
    r.b.MouseOver(true);
    r.b.draw(1);
    r.b.draw(1);
    EXPECT_EQ(r.sounds, std::vector<int16_t>{8});
    EXPECT_EQ(r.device.boundTexture, r.b.RolloverTexture());
    // One frame without the highlight, and it sounds again.
    r.b.MouseOver(false);
    r.b.draw(1);
    r.b.MouseOver(true);
    r.b.draw(1);
    EXPECT_EQ(r.sounds, (std::vector<int16_t>{8, 8}));
    // Losing the highlight without being drawn does not re-arm it.
    r.b.MouseOver(false);
    r.b.MouseOver(true);
    r.b.draw(1);
    EXPECT_EQ(r.sounds.size(), 2u);
}

TEST(Button, DrawsNothingWhenDisabledOrInAnotherPass) {
    ButtonRig r;
    r.b.LoadTexture(Gui + "quit.bmp", 0xFF000000u);
    r.b.draw(1);
    r.b.enabled(true);
    r.b.draw(2);
    EXPECT_EQ(r.device.drawCalls, 0);
    EXPECT_TRUE(r.device.renderStates.empty());
    EXPECT_TRUE(r.device.stageStates.empty());
    r.b.draw(1);
    EXPECT_EQ(std::tuple(r.device.drawCalls, r.device.renderStates[RenderState::ZWriteEnable],
                         r.device.renderStates[RenderState::AlphaBlendEnable]),
              std::tuple(1, 1u, 0u));
}

TEST(Button, AlphaLevelTintsTheCornersAndOpaqueKeepsThem) {
    ButtonRig r;
    r.b.LoadTexture(Gui + "bdrop2.bmp", 0xFF000000u);
    r.b.SetAlphaLevel(160);
    EXPECT_TRUE(r.b.AlphaOn());
    EXPECT_EQ(r.b.Corners()[0].diffuse, 0xA0FFFFFFu);
    r.b.enabled(true);
    r.b.draw(1);
    // Drawn translucent, then the opaque states are back.
    EXPECT_EQ(r.device.stageStates[TextureStageState::AlphaOp], static_cast<uint32_t>(TopSelectArg1));
    EXPECT_EQ(r.device.renderStates[RenderState::DestBlend], static_cast<uint32_t>(BlendInvSrcAlpha));
    r.b.SetAlphaLevel(255);
    EXPECT_EQ(std::tuple(r.b.AlphaOn(), r.b.GetAlphaLevel(), r.b.Corners()[0].diffuse),
              std::tuple(false, 160, 0xA0FFFFFFu));
}

TEST(FontField, NameEntryEditing) {
    HeadlessGraphics device;
    float off = 0;
    clsFontField f(device, off, off);
    f.Set_Text("Your NAME");
    f.concatString("A");
    EXPECT_EQ(f.Get_String(), "A");
    f.removeLastCharacter();
    EXPECT_EQ(f.Get_String(), "");
    f.removeLastCharacter();
    EXPECT_EQ(f.Get_String(), "");
    // A Backspace on the prompt only shortens it; letters then follow it.
    f.Set_Text("Your NAME");
    f.removeLastCharacter();
    f.concatString("A");
    EXPECT_EQ(f.Get_String(), "Your NAMA");
}

TEST(FontField, TheFontIsBuiltOncePerChangeNotPerFrame) {
    HeadlessGraphics device;
    float off = 0;
    clsFontField f(device, off, off);
    f.Set_Field(0, 200, 500, 800);
    f.Set_FontName("Ariel");
    f.Set_FontSize(18);
    f.Set_Bold(true);
    f.Set_Text("Stars 0 / of 3");
    f.Render();
    const FontId first = f.Font();
    ASSERT_NE(first, 0u);
    EXPECT_EQ(device.fonts.at(first), "Ariel:18:bold");
    f.Render();
    f.Set_Text("Stars 1 / of 3");
    f.Render();
    EXPECT_EQ(f.Font(), first);
    EXPECT_EQ(device.textDrawn.back(), "Stars 1 / of 3");
    f.Set_FontSize(30);
    f.Render();
    EXPECT_NE(f.Font(), first);
    EXPECT_EQ(device.fonts.size(), 1u);  // the old one was released
}

}  // namespace
}  // namespace qb
