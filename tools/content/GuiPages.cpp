// The three instruction pages (story and controls, the block kinds,
// credits), the family's entry point, and the home page shipped with the game.
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/content/Content.h"
#include "tools/content/GuiStyle.h"

namespace qb::content {

namespace gui {

namespace {

constexpr int PageW = 700, PageH = 350;

Picture PageFrame(const std::string& heading) {
    Picture pic(PageW, PageH, KeyBlack);
    pic.panel(0, 0, PageW, PageH, 18, Rgb{34, 50, 108}, Rgb{12, 18, 48});
    pic.border(0, 0, PageW, PageH, 18, 3, p::Cyan);
    TextStyle head;
    head.px = 26;
    head.colour = p::Gold;
    head.shadow = true;
    pic.text(heading, PageW / 2.0f, 28, head);
    return pic;
}

// Word-wraps `text` into lines no wider than `width`; returns the next y.
float Paragraph(Picture& pic, const std::string& text, float x, float y, float width, const TextStyle& st,
                float lineStep) {
    std::vector<std::string> words;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(' ', start);
        if (end == std::string::npos) end = text.size();
        if (end > start) words.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    std::string line;
    for (const std::string& w : words) {
        const std::string tryLine = line.empty() ? w : line + " " + w;
        if (!line.empty() && Picture::textWidth(tryLine, st) > width) {
            pic.text(line, x, y, st);
            y += lineStep;
            line = w;
        } else {
            line = tryLine;
        }
    }
    if (!line.empty()) pic.text(line, x, y, st);
    return y + lineStep;
}

Picture Story() {
    Picture pic = PageFrame("THE STORY AND THE CONTROLS");
    TextStyle body;
    body.px = 15;
    body.bold = false;
    body.colour = p::White;
    body.align = -1;
    float y = 68;
    y = Paragraph(pic,
                  "High above the clouds the old racing orbits still float where their builders left them: "
                  "roads of blocks, ramps and drifting platforms hanging in the sky.",
                  28, y, 330, body, 20);
    y = Paragraph(pic,
                  "Take the little orbiter out, pick up every star and race the clock to the chequered "
                  "finish block. The three fastest drivers of each track have their names written into it "
                  "for good.",
                  28, y + 8, 330, body, 20);
    Paragraph(pic, "Fall off or blow up and the track starts again at once.", 28, y + 16, 330, body, 20);

    pic.panel(380, 56, 296, 270, 12, Rgb{20, 30, 70}, Rgb{10, 14, 40});
    pic.border(380, 56, 296, 270, 12, 1, p::Steel);
    TextStyle key;
    key.px = 15;
    key.colour = p::Cyan;
    key.align = -1;
    TextStyle what = body;
    const std::pair<const char*, const char*> rows[] = {
        {"Up", "accelerate"},      {"Down", "brake"},      {"Left / Right", "steer"},
        {"Space, Shift,", "jump"}, {"Ctrl or Return", ""}, {"Esc or P", "pause menu"},
        {"Backspace", "restart"},
    };
    float ry = 84;
    for (const auto& [k, w] : rows) {
        pic.text(k, 396, ry, key);
        pic.text(w, 540, ry, what);
        ry += 25;
    }
    TextStyle menu = body;
    menu.colour = p::Ice;
    menu.px = 13;
    Paragraph(pic,
              "Your own keys: Options, Controls. A controller: the stick drives, A jumps and chooses, "
              "B goes back, Start pauses.",
              396, ry + 4, 264, menu, 16);
    return pic;
}

Picture BlockTypes(const std::string& gameDir) {
    Picture pic = PageFrame("THE BLOCKS");
    struct Kind {
        const char* texture;  // nullptr: the star
        const char* name;
        const char* effect;
    };
    // The tiles the track shows, so a kind is known by its symbol on the road.
    const Kind kinds[] = {
        {"road.bmp", "Plain", "Solid ground to drive on."},
        {"finish.bmp", "Finish", "Land on it to stop the clock."},
        {"bounce.bmp", "Bounce pad", "Throws you high into the air."},
        {"ice.bmp", "Ice", "Hardly any grip: you slide on."},
        {"falling.bmp", "Falling", "Drops away once you are on it."},
        {"turbo.bmp", "Turbo", "Full speed at once."},
        {"deadly.bmp", "Deadly", "Touch it and you blow up."},
        {"platform.bmp", "Moving platform", "Carries you to and fro."},
        {"ramp.bmp", "Ramp", "A slope up or down to another level."},
        {nullptr, "Star", "Take them all for the star badge."},
    };
    TextStyle name;
    name.px = 17;
    name.colour = p::Gold;
    name.align = -1;
    TextStyle effect = name;
    effect.px = 14;
    effect.bold = false;
    effect.colour = p::White;
    constexpr int Rows = 5, Size = 46;
    for (int i = 0; i < 2 * Rows; ++i) {
        const int col = i / Rows, row = i % Rows;
        const int x = 30 + col * 340, y = 58 + row * 56;
        const Kind& k = kinds[i];
        pic.panel(static_cast<float>(x - 3), static_cast<float>(y - 3), Size + 6, Size + 6, 6, p::Steel,
                  p::Deep);
        if (k.texture != nullptr) {
            pic.image(gameDir + "textures/" + k.texture, x, y, Size, Size);
        } else {
            pic.panel(static_cast<float>(x), static_cast<float>(y), Size, Size, 4, Rgb{20, 30, 70},
                      Rgb{10, 14, 40});
            pic.star(static_cast<float>(x + Size / 2), static_cast<float>(y + Size / 2 + 1), 19, 8, p::Gold,
                     p::Orange);
        }
        pic.text(k.name, static_cast<float>(x + Size + 16), static_cast<float>(y + 11), name);
        pic.text(k.effect, static_cast<float>(x + Size + 16), static_cast<float>(y + 32), effect);
    }
    return pic;
}

Picture Credits() {
    Picture pic = PageFrame("CREDITS");
    TextStyle big;
    big.px = 20;
    big.colour = p::Cyan;
    TextStyle body;
    body.px = 15;
    body.bold = false;
    body.colour = p::White;
    const char* const lines[] = {
        "Game, tracks and code: the Quorbit team",
        "Every picture, model, sound and tune is made by the game's own content tool",
        "Lettering: DejaVu Sans",
        "Built on SDL2, SDL2_image, SDL2_ttf, SDL2_mixer, OpenGL, assimp and fontconfig",
        "Make your own tracks with quorbit-track and drop them into usertracks/",
    };
    pic.text("Quorbit, alpha 3", PageW / 2.0f, 80, big);
    float y = 128;
    for (const char* l : lines) {
        pic.text(l, PageW / 2.0f, y, body);
        y += 34;
    }
    TextStyle thanks = big;
    thanks.colour = p::Gold;
    pic.text("Thanks for playing!", PageW / 2.0f, 312, thanks);
    return pic;
}

}  // namespace

void MakePages(const std::string& gameDir, const std::string& dir) {
    Save(Story(), dir, "story.bmp");
    Save(BlockTypes(gameDir), dir, "blocktypes.bmp");
    Save(Credits(), dir, "credits.bmp");
}

}  // namespace gui

void MakeGui(const std::string& gameDir) {
    const std::string dir = gameDir + "gui/";
    std::filesystem::create_directories(dir);
    gui::MakeButtons(dir);
    gui::MakePanels(gameDir, dir);
    gui::MakePages(gameDir, dir);
    gui::MakeWebPage(gameDir);
}

}  // namespace qb::content
