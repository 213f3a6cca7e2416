// The pictures that frame the menus: title, backdrops, headings, the zone
// pictures, the star markers and the two result panels.
#include <string>
#include <tuple>
#include <utility>

#include "tools/content/GuiStyle.h"

namespace qb::content::gui {

namespace {

Picture Title() {
    Picture pic(800, 68, KeyBlack);
    TextStyle st = Outlined(58, p::Cyan);
    st.outlineColour = Navy;
    // A magenta echo behind the cyan letters.
    TextStyle echo = st;
    echo.colour = p::Magenta;
    pic.text("QUORBIT", 403, 37, echo);
    pic.text("QUORBIT", 400, 34, st);
    return pic;
}

// The maker's badge; on the main menu it opens the home page too.
Picture Badge() {
    Picture pic(140, 140, KeyBlack);
    pic.disc(70, 70, 68, p::Cyan);
    pic.disc(70, 70, 64, Navy);
    pic.disc(70, 70, 58, Rgb{36, 52, 110});
    pic.star(70, 44, 20, 8, p::Gold, p::Orange);
    TextStyle st;
    st.px = 22;
    st.colour = p::White;
    pic.text("ALPHA 3", 70, 80, st);
    st.px = 13;
    st.bold = false;
    st.colour = p::Ice;
    pic.text("home page", 70, 103, st);
    return pic;
}

// Zone z's picture: its sky, a frame and the zone's name on a bar.
Picture Zone(const std::string& gameDir, int z, bool lit) {
    static const char* const skies[] = {"_default.jpg", "bk001.jpg", "bk003.jpg",
                                        "bk006.jpg",    "bk004.jpg", "bk005.jpg"};
    constexpr int W = 200, H = 180;
    Picture pic(W, H, KeyBlack);
    pic.panel(0, 0, W, H, 14, lit ? LitTop : p::Cyan, lit ? LitBottom : p::Teal);
    pic.image(gameDir + "backgrounds/" + skies[z - 1], 5, 5, W - 10, H - 10);
    // Rounded inner corners again, over the picture.
    pic.border(0, 0, W, H, 14, lit ? 6 : 4, lit ? LitTop : p::Cyan);
    pic.panel(5, H - 48, W - 10, 43, 10, lit ? LitTop : Rgb{30, 40, 90}, lit ? LitBottom : Rgb{12, 16, 44});
    TextStyle st;
    st.px = 24;
    st.colour = lit ? Navy : p::White;
    st.shadow = !lit;
    pic.text(std::string("ZONE ") + static_cast<char>('A' + z - 1), W / 2.0f, H - 34, st);
    st.px = 12;
    st.shadow = false;
    st.bold = false;
    st.colour = lit ? Navy : p::Ice;
    pic.text("TRACKS " + std::to_string(10 * (z - 1) + 1) + " TO " + std::to_string(10 * z), W / 2.0f, H - 15,
             st);
    return pic;
}

Picture AllStars(bool got) {
    Picture pic(150, 130, KeyBlack);
    const Rgb top = got ? p::Gold : Rgb{150, 150, 160}, bottom = got ? p::Orange : Rgb{86, 86, 100};
    const Rgb rim = got ? Rgb{90, 40, 0} : Rgb{30, 30, 40};
    for (const auto& [x, y, r] : {std::tuple<float, float, float>{35, 58, 24}, {115, 58, 24}, {75, 44, 32}}) {
        pic.star(x, y, r + 3, (r + 3) * 0.45f, rim, rim);
        pic.star(x, y, r, r * 0.45f, top, bottom);
    }
    TextStyle st = Outlined(19, got ? p::Gold : Rgb{170, 170, 180});
    pic.text(got ? "ALL STARS!" : "ALL STARS", 75, 108, st);
    return pic;
}

Picture ZoneStar() {
    Picture pic(48, 48, KeyBlack);
    pic.star(24, 25, 23, 10, Rgb{90, 40, 0}, Rgb{90, 40, 0});
    pic.star(24, 25, 19, 8, p::Gold, p::Orange);
    return pic;
}

// One row of a table: a label band over a dark well where the game writes
// the value (white text stays readable over the brightest sky).
void TableRow(Picture& pic, float y, float w, float h, const char* label, const Rgb& colour) {
    pic.panel(0, y, w, h, 8, Rgb{10, 14, 38}, Rgb{6, 8, 26});
    pic.panel(0, y, w, 24, 8, Rgb{34, 46, 96}, Rgb{18, 24, 60});
    pic.border(0, y, w, h, 8, 1, colour);
    TextStyle st;
    st.px = 14;
    st.colour = colour;
    pic.text(label, w / 2, y + 12, st);
}

// The places of the fastest-times table: badge, name, time (key grey 189
// between the rows).
Picture Places() {
    Picture pic(170, 350, Key189);
    const char* const names[] = {"1ST", "2ND", "3RD"};
    const Rgb colours[] = {p::Gold, Rgb{214, 222, 236}, Rgb{222, 150, 90}};
    for (int i = 0; i < 3; ++i)
        TableRow(pic, 60.0f + 100.0f * static_cast<float>(i), 170, 88, names[i], colours[i]);
    return pic;
}

Picture StatLabels() {
    Picture pic(167, 276, Key189);
    const std::pair<float, const char*> rows[] = {
        {0, "TIME PLAYED"}, {80, "BLOWN UP"}, {160, "FALLEN OFF"}, {220, "JUMPS"}};
    for (const auto& [y, label] : rows) TableRow(pic, y, 167, 54, label, p::Gold);
    return pic;
}

enum class Result { Record, MadeIt, Watched };

// The finish panels: a heading, a light band for the time (the game writes
// it in black) and, for a record, a dark band where the name is typed. The
// end of a watched best run has the band and its own heading.
Picture ResultPanel(Result kind) {
    const bool record = kind == Result::Record;
    // A record's panel is taller: the stars taken stand above its time band,
    // as on the others, with the name box under the band.
    constexpr int W = 420;
    const int H = record ? 370 : 330;
    Picture pic(W, H, KeyBlack);
    pic.panel(0, 0, W, H, 18, Rgb{40, 58, 124}, Rgb{14, 20, 52});
    pic.border(0, 0, W, H, 18, 3, p::Cyan);
    TextStyle head = Outlined(30, p::Gold);
    head.outline = false;
    head.shadow = true;
    pic.text(record                    ? "NEW FASTEST TIME!"
             : kind == Result::Watched ? "BEST RUN"
                                       : "TRACK COMPLETE!",
             W / 2.0f, 36, head);
    for (int i = 0; i < 5; ++i)
        pic.star(90.0f + 60.0f * static_cast<float>(i), 66, 8, 3.5f, p::Gold, p::Orange);
    TextStyle hint;
    hint.px = 14;
    hint.bold = false;
    hint.colour = p::Ice;
    if (record) {
        // The game writes the stars above the band and how the time
        // compares with the best run between the band and the name box.
        pic.panel(20, 124, W - 40, 64, 12, Rgb{236, 242, 255}, Rgb{176, 192, 226});
        pic.panel(20, 222, W - 40, 64, 12, Rgb{8, 12, 34}, Rgb{24, 30, 70});
        pic.border(20, 222, W - 40, 64, 12, 2, p::Gold);
        pic.text("Type your name (up to 15 letters)", W / 2.0f, 312, hint);
        pic.text("and press Return", W / 2.0f, 332, hint);
    } else if (kind == Result::Watched) {
        // The game writes who drove it and the stars above the band.
        pic.panel(20, 192, W - 40, 64, 12, Rgb{236, 242, 255}, Rgb{176, 192, 226});
        pic.text("Click or press Return to go back", W / 2.0f, 290, hint);
    } else {
        pic.panel(20, 192, W - 40, 64, 12, Rgb{236, 242, 255}, Rgb{176, 192, 226});
        TextStyle sub = hint;
        sub.px = 18;
        sub.bold = true;
        sub.colour = p::White;
        pic.text("You made it to the finish", W / 2.0f, 110, sub);
        pic.text("but not into the fastest three.", W / 2.0f, 136, hint);
        // Low enough to leave the game a line under the band.
        pic.text("Click or press Return to go on", W / 2.0f, 298, hint);
    }
    return pic;
}

}  // namespace

void MakePanels(const std::string& gameDir, const std::string& dir) {
    Save(Title(), dir, "title.bmp");
    Save(Badge(), dir, "alpha3.bmp");
    // Backdrops drawn see-through (added to the picture behind): light where
    // the game writes black text, dark where it writes white.
    Save(GlassPanel(420, 310, Rgb{150, 166, 206}, Rgb{110, 128, 178}, Rgb{200, 240, 255}), dir, "bdrop2.bmp");
    Save(GlassPanel(190, 500, Rgb{40, 56, 110}, Rgb{24, 32, 76}, p::Cyan), dir, "leftsidebar.bmp");
    Save(GlassPanel(200, 330, Rgb{40, 56, 110}, Rgb{24, 32, 76}, p::Cyan), dir, "statsbar.bmp");
    Save(GlassPanel(400, 196, Rgb{60, 76, 140}, Rgb{34, 44, 96}, p::Cyan), dir, "QuitMenu.bmp");
    Picture heading(150, 22, KeyBlack);
    heading.text("FASTEST TIMES", 75, 11, Outlined(15, p::Gold));
    Save(heading, dir, "fastesttimes.bmp");
    Save(Places(), dir, "position.bmp");
    Save(StatLabels(), dir, "stats.bmp");
    Save(AllStars(true), dir, "allstars.bmp");
    Save(AllStars(false), dir, "allstars_grey.bmp");
    Save(ZoneStar(), dir, "allstars_zone.bmp");
    Save(ResultPanel(Result::Record), dir, "enterhighscore.bmp");
    Save(ResultPanel(Result::MadeIt), dir, "madeit.bmp");
    Save(ResultPanel(Result::Watched), dir, "watchend.bmp");
    const char* const zoneFiles[] = {"zoneA", "zoneb", "zonec", "zoneD", "zoneE", "zoneF"};
    for (int z = 1; z <= 6; ++z) {
        Save(Zone(gameDir, z, false), dir, std::string(zoneFiles[z - 1]) + ".bmp");
        Save(Zone(gameDir, z, true), dir, std::string(zoneFiles[z - 1]) + "_Rollover.bmp");
    }
}

}  // namespace qb::content::gui
