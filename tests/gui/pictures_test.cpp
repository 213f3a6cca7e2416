// The generated menu pictures: keyed the way the slot table says, sized so
// that each screen's buttons fit the layout without covering each other.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <set>

#include "gui/BITMAP_Loader.h"
#include "tests/gui/GuiTestGame.h"

namespace qb {
namespace {

using test::GuiGame;

struct Bmp {
    int32_t w = 0, h = 0;
    std::vector<uint8_t> bytes;
    uint32_t pixel(int x, int y) const {  // 24-bit, bottom-up rows padded to 4 bytes
        const uint32_t offset =
            bytes[10] | bytes[11] << 8 | bytes[12] << 16 | static_cast<uint32_t>(bytes[13]) << 24;
        const size_t stride = (static_cast<size_t>(w) * 3 + 3) & ~size_t{3};
        const size_t at = offset + static_cast<size_t>(h - 1 - y) * stride + static_cast<size_t>(x) * 3;
        return 0xFF000000u | static_cast<uint32_t>(bytes[at + 2]) << 16 |
               static_cast<uint32_t>(bytes[at + 1]) << 8 | bytes[at];
    }
};

Bmp ReadBmp(const std::string& path) {
    Bmp b;
    std::ifstream in(path, std::ios::binary);
    b.bytes.assign(std::istreambuf_iterator<char>(in), {});
    GetBitmapSize(path, b.w, b.h);
    return b;
}

TEST(Pictures, EveryButtonIsKeyedAroundItsShapeAndItsRolloverMatchesIt) {
    GuiGame t("pictures");
    ASSERT_TRUE(t.start());
    Gui& g = t.gui();
    const std::string dir = t.dir + "gui/";
    int keyed = 0;
    for (int s = 1; s <= Gui::SlotCount; ++s) {
        if (s == 57 || s == 58) continue;
        GUI_Button& b = g.Button(s);
        ASSERT_GT(b.width(), 0) << s;
        const std::string& file = b.PictureFile();
        const Bmp bmp = ReadBmp(file);
        ASSERT_EQ(bmp.bytes[28], 24) << file;
        const uint32_t key = (s == 29 || s == 52)   ? Gui::KeyGrey189
                             : (s >= 53 && s <= 56) ? Gui::KeyGrey198
                                                    : Gui::KeyBlack;
        // Rounded shapes leave the key in the corner; something shows inside.
        if (bmp.pixel(0, 0) == key) ++keyed;
        int shown = 0;
        for (int y = 0; y < bmp.h; y += 2)
            for (int x = 0; x < bmp.w; x += 2) shown += bmp.pixel(x, y) != key;
        EXPECT_GT(shown, bmp.w * bmp.h / 64) << file;  // a sixteenth of the picture at least
        if (b.Rollover()) {
            int32_t w = 0, h = 0;
            GetBitmapSize(b.RolloverFile(), w, h);
            EXPECT_EQ(w, b.width()) << s;
            EXPECT_EQ(h, b.height()) << s;
        }
    }
    EXPECT_GE(keyed, 50);
}

// Each screen holds on the device exactly the pictures it shows (and their
// roll-overs), each file once however many buttons show it; a race holds
// none; and going round the menus again and again holds no more.
TEST(Pictures, AScreenHoldsOnlyThePicturesItShows) {
    GuiGame t("held", 10, {1, 1, 1, 1, 1, 1});
    ASSERT_TRUE(t.start());
    const std::string gui = t.dir + "gui/";
    auto held = [&] {
        std::multiset<std::string> files;
        for (const auto& [id, path] : t.hp.graphics.textures)
            if (path.rfind(gui, 0) == 0) files.insert(path);
        return files;
    };
    auto shown = [&] {
        std::set<std::string> files;
        for (int s : t.enabled()) {
            files.insert(t.button(s).PictureFile());
            if (!t.button(s).RolloverFile().empty()) files.insert(t.button(s).RolloverFile());
        }
        return std::multiset<std::string>(files.begin(), files.end());
    };
    const int16_t walk[] = {
        MainMenu,          ZoneChoice, TrackChoice,  PauseMenu, Playing, InstructionsPage1, InstructionsPage2,
        InstructionsPage3, Options,    ControlsMenu, NameEntry, MadeIt,  WatchEnd,          MainMenu};
    for (int16_t state : walk) {
        t.show(state);
        EXPECT_EQ(held(), shown()) << "screen " << state;
        if (state == Playing) {
            EXPECT_TRUE(held().empty());
        }
    }
    // All six zones complete: the zone choice shows one star picture six times.
    t.show(ZoneChoice);
    EXPECT_EQ(held().count(gui + "allstars_zone.bmp"), 1u);
    const size_t live = t.hp.graphics.textures.size();
    for (int round = 0; round < 20; ++round)
        for (int16_t state : walk) t.show(state);
    t.show(ZoneChoice);
    EXPECT_EQ(t.hp.graphics.textures.size(), live);
}

TEST(Pictures, ScreensFitTheLayoutAndTheirButtonsDoNotOverlap) {
    GuiGame t("layout", 60);
    ASSERT_TRUE(t.start());
    for (int16_t state : {MainMenu, TrackChoice, PauseMenu, Options, ZoneChoice, InstructionsPage1,
                          InstructionsPage2, InstructionsPage3, UserTrackChoice, NameEntry, MadeIt}) {
        t.show(state);
        const std::vector<int> on = t.enabled();
        for (int a : on) {
            GUI_Button& ba = t.button(a);
            EXPECT_GE(ba.X(), 0.0f) << state << " slot " << a;
            EXPECT_LE(ba.X() + ba.width(), 800.0f) << state << " slot " << a;
            EXPECT_LE(ba.Y() + ba.height(), 600.0f) << state << " slot " << a;
            if (!ba.Rollover()) continue;
            for (int b : on) {
                GUI_Button& bb = t.button(b);
                if (b <= a || !bb.Rollover()) continue;
                const bool apart = ba.X() + ba.width() <= bb.X() || bb.X() + bb.width() <= ba.X() ||
                                   ba.Y() + ba.height() <= bb.Y() || bb.Y() + bb.height() <= ba.Y();
                EXPECT_TRUE(apart) << "screen " << state << ": slots " << a << " and " << b;
            }
        }
    }
    // Each zone's star marker sits on its zone's picture.
    for (int z = 1; z <= 6; ++z) {
        GUI_Button& zone = t.button(3 + z);
        GUI_Button& mark = t.button(44 + z);
        EXPECT_GE(mark.X(), zone.X());
        EXPECT_LE(mark.X() + mark.width(), zone.X() + zone.width());
        EXPECT_LE(mark.Y() + mark.height(), zone.Y() + zone.height());
    }
}

// Every row a field's text can take, across its whole rectangle, lies on its
// panel's dark well (white and yellow texts) or light band (black texts):
// the text lines up with the picture made for it, and a name as wide as the
// rectangle (the device draws a wider one smaller) stays inside.
TEST(Pictures, NamesAndTimesSitOnTheBandsMadeForThem) {
    GuiGame t("wells", 10);
    ASSERT_TRUE(t.start());
    struct Case {
        int16_t state;
        int panelSlot;
        std::vector<int> fields;
    };
    for (const Case& c : {Case{TrackChoice, 29, {1, 2, 3, 4, 5, 6}}, Case{NameEntry, 35, {1, 2, 3, 4}},
                          Case{MadeIt, 36, {1, 2, 3}}}) {
        t.show(c.state);
        GUI_Button& panel = t.button(c.panelSlot);
        const Bmp bmp = ReadBmp(panel.PictureFile());
        for (int f : c.fields) {
            const clsFontField& field = t.gui().Field(f);
            const bool dark = field.Colour() != 0xFF000000u;
            const int lineHeight = static_cast<int>(std::lround(field.Get_Fontsize() * 96.0 / 72.0 * 1.15));
            int off = 0;
            for (int y = field.Top(); y < field.Top() + lineHeight; ++y)
                for (int x = field.Left(); x < field.Right(); ++x) {
                    const int px = x - static_cast<int>(panel.X()), py = y - static_cast<int>(panel.Y());
                    bool ok = px >= 0 && py >= 0 && px < bmp.w && py < bmp.h;
                    if (ok) {
                        const uint32_t p = bmp.pixel(px, py);
                        const int lum = (static_cast<int>((p >> 16) & 255) * 3 +
                                         static_cast<int>((p >> 8) & 255) * 6 + static_cast<int>(p & 255)) /
                                        10;
                        ok = dark ? lum < 80 : lum > 150;
                    }
                    off += !ok;
                }
            EXPECT_EQ(off, 0) << "screen " << c.state << " field " << f << " (" << field.Left() << ".."
                              << field.Right() << ", from " << field.Top() << ")";
        }
    }
}

}  // namespace
}  // namespace qb
