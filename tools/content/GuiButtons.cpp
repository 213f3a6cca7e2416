// Every clickable picture of the menus, each with its roll-over twin.
#include <string>

#include "tools/content/GuiStyle.h"

namespace qb::content::gui {

namespace {

// name.bmp and name + suffix + .bmp.
void Pair(const std::string& dir, const std::string& name, const std::string& rollover, int w, int h,
          const std::string& label, int px, Rgb key = KeyBlack) {
    Save(Button(w, h, label, px, false, key), dir, name + ".bmp");
    Save(Button(w, h, label, px, true, key), dir, rollover + ".bmp");
}

void ArrowPair(const std::string& dir, const std::string& name, int w, int h, int dir_, bool round) {
    Save(ArrowButton(w, h, dir_, false, round), dir, name + ".bmp");
    Save(ArrowButton(w, h, dir_, true, round), dir, name + "_rollover.bmp");
}

// The video-mode buttons: plain, or marked as the mode in use.
Picture ModeButton(const std::string& label, bool selected, bool lit) {
    constexpr int W = 150, H = 28;
    if (!selected) return Button(W, H, label, 15, lit, Key198);
    Picture pic(W, H, Key198);
    const Rgb top = lit ? Rgb{120, 255, 214} : Rgb{46, 200, 170};
    const Rgb bottom = lit ? Rgb{30, 190, 150} : Rgb{14, 110, 100};
    pic.panel(0, 0, W, H, 8, top, bottom);
    pic.border(0, 0, W, H, 8, 2, lit ? palette::White : Rgb{190, 255, 240});
    TextStyle st;
    st.px = 15;
    st.colour = Navy;
    pic.text("\u2714 " + label, W / 2.0f, H / 2.0f, st);
    return pic;
}

}  // namespace

void MakeButtons(const std::string& dir) {
    // Main menu: four wide buttons on the backdrop, quit below them.
    Pair(dir, "Play", "Play_roll_over", 330, 48, "PLAY", 24);
    Pair(dir, "options", "options_roll_over", 330, 48, "OPTIONS", 24);
    Pair(dir, "instructions", "instructions_roll_over", 330, 48, "INSTRUCTIONS", 24);
    Pair(dir, "website", "website_roll_over", 330, 48, "WEB SITE", 24);
    Pair(dir, "quit", "quit_roll_over", 220, 48, "QUIT", 24);
    Pair(dir, "goback", "goback_rollover", 220, 48, "GO BACK", 24);
    Pair(dir, "controls", "controls_rollover", 220, 48, "CONTROLS", 24);
    Pair(dir, "defaults", "defaults_rollover", 220, 48, "DEFAULTS", 24);
    // Top right of the zone, track and instruction screens.
    Pair(dir, "MainMenu", "MainMenu_Rollover", 160, 34, "MAIN MENU", 17);
    Pair(dir, "userlevel", "userlevel_Rollover", 160, 34, "USER TRACKS", 16);
    // Track choice.
    Pair(dir, "playtrack", "playtrack_rollover", 200, 50, "PLAY TRACK", 24);
    Pair(dir, "watch", "watch_rollover", 160, 34, "WATCH BEST", 17);
    ArrowPair(dir, "button_right_245_195", 70, 75, 1, false);
    ArrowPair(dir, "button_left_45_190", 70, 75, -1, false);
    ArrowPair(dir, "small_button_left", 40, 40, -1, true);
    ArrowPair(dir, "small_button_right", 40, 40, 1, true);
    // Pause menu.
    Pair(dir, "restart", "restart_rollover", 340, 36, "RESTART TRACK", 19);
    Pair(dir, "exit_level", "exit_level_rollover", 340, 36, "EXIT TRACK", 19);
    Pair(dir, "quit_game", "quit_game_rollover", 340, 36, "QUIT TO MAIN MENU", 19);
    Pair(dir, "cancel", "cancel_rollover", 340, 36, "CARRY ON", 19);
    // Options: the two video modes, plain and in use, each lit and unlit.
    for (const auto& [file, label] : {std::pair<std::string, std::string>{"800x600", "800 x 600"},
                                      std::pair<std::string, std::string>{"1024x768", "1024 x 768"}}) {
        Save(ModeButton(label, false, false), dir, file + ".bmp");
        Save(ModeButton(label, false, true), dir, file + "_rollover.bmp");
        Save(ModeButton(label, true, false), dir, file + "_selected.bmp");
        Save(ModeButton(label, true, true), dir, file + "_selected_rollover.bmp");
    }
    Save(Tag(170, 45, "EFFECTS", 20), dir, "SFX.bmp");
    Save(Tag(170, 45, "MUSIC", 20), dir, "music.bmp");
    Save(Tag(170, 45, "SCREEN", 20), dir, "video.bmp");
}

}  // namespace qb::content::gui
