#include "gui/Gui.h"

#include <cmath>
#include <limits>

#include "audio/DXmusicSFX.h"
#include "platform/DirectX.h"
#include "shell/frmGame.h"

namespace qb {

namespace {

// One slot of the table: its bitmap, roll-over bitmap, layout place, colour
// key, roll-over sound and alpha (255: opaque). A Y of -1 is set per screen.
struct SlotSpec {
    int32_t slot;
    const char* bitmap;
    const char* rollover;
    int32_t x, y;
    uint32_t key;
    int32_t sound;
    int16_t alpha;
};

constexpr uint32_t K0 = Gui::KeyBlack, K189 = Gui::KeyGrey189, K198 = Gui::KeyGrey198;

// The roll-over pictures of zones B to F complete the zone choice.
constexpr SlotSpec SlotTable[] = {
    {1, "title.bmp", nullptr, 0, 80, K0, 0, 255},
    {2, "MainMenu.bmp", "MainMenu_Rollover.bmp", 440, 20, K0, 8, 255},
    {3, "blocktypes.bmp", nullptr, 50, 150, K0, 0, 255},
    {4, "zoneA.bmp", "zoneA_Rollover.bmp", 50, 150, K0, 8, 255},
    {5, "zoneb.bmp", "zoneb_Rollover.bmp", 300, 150, K0, 8, 255},
    {6, "zonec.bmp", "zonec_Rollover.bmp", 550, 150, K0, 8, 255},
    {7, "zoneD.bmp", "zoneD_Rollover.bmp", 50, 350, K0, 8, 255},
    {8, "zoneE.bmp", "zoneE_Rollover.bmp", 300, 350, K0, 8, 255},
    {9, "zoneF.bmp", "zoneF_Rollover.bmp", 550, 350, K0, 8, 255},
    {10, "bdrop2.bmp", nullptr, 190, 240, K0, 0, 160},
    {11, "SFX.bmp", nullptr, 235, 265, K0, 0, 255},
    {12, "music.bmp", nullptr, 235, 320, K0, 0, 255},
    {13, "video.bmp", nullptr, 235, 375, K0, 0, 255},
    {14, "goback.bmp", "goback_rollover.bmp", 290, 485, K0, 8, 255},
    {15, "alpha3.bmp", nullptr, 640, 400, K0, 0, 255},
    {16, "small_button_left.bmp", "small_button_left_rollover.bmp", 415, 275, K0, 0, 255},
    {17, "small_button_right.bmp", "small_button_right_rollover.bmp", 540, 275, K0, 0, 255},
    {18, "small_button_right.bmp", "small_button_right_rollover.bmp", 540, 330, K0, 0, 255},
    {19, "Play.bmp", "Play_roll_over.bmp", 235, 265, K0, 8, 255},
    {20, "options.bmp", "options_roll_over.bmp", 235, 320, K0, 8, 255},
    {21, "instructions.bmp", "instructions_roll_over.bmp", 235, 375, K0, 8, 255},
    {22, "website.bmp", "website_roll_over.bmp", 235, 430, K0, 8, 255},
    {23, "quit.bmp", "quit_roll_over.bmp", 290, 485, K0, 8, 255},
    {24, "button_right_245_195.bmp", "button_right_245_195_rollover.bmp", 510, -1, K0, 8, 255},
    {25, "button_left_45_190.bmp", "button_left_45_190_rollover.bmp", 215, -1, K0, 8, 255},
    {26, "playtrack.bmp", "playtrack_rollover.bmp", 300, -1, K0, 8, 255},
    {27, "leftsidebar.bmp", nullptr, 20, 60, K0, 0, 160},
    {28, "fastesttimes.bmp", nullptr, 50, 90, K0, 0, 255},
    {29, "position.bmp", nullptr, 45, 110, K189, 0, 255},
    {30, "QuitMenu.bmp", nullptr, 200, 200, K0, 0, 160},
    {31, "restart.bmp", "restart_rollover.bmp", 230, 220, K0, 8, 255},
    {32, "exit_level.bmp", "exit_level_rollover.bmp", 230, 260, K0, 8, 255},
    {33, "quit_game.bmp", "quit_game_rollover.bmp", 230, 300, K0, 8, 255},
    {34, "cancel.bmp", "cancel_rollover.bmp", 230, 340, K0, 8, 255},
    {35, "enterhighscore.bmp", nullptr, 190, 140, K0, 0, 255},
    {36, "madeit.bmp", nullptr, 190, 140, K0, 0, 255},
    {37, "small_button_left.bmp", "small_button_left_rollover.bmp", 415, 330, K0, 0, 255},
    {38, "story.bmp", nullptr, 50, 150, K0, 0, 255},
    {39, "credits.bmp", nullptr, 50, 150, K0, 0, 255},
    {40, "small_button_right.bmp", "small_button_right_rollover.bmp", 735, 510, K0, 8, 255},
    {41, "small_button_left.bmp", "small_button_left_rollover.bmp", 640, 510, K0, 8, 255},
    {42, "allstars.bmp", nullptr, 615, 80, K0, 0, 255},
    {43, "allstars_grey.bmp", nullptr, 615, 80, K0, 0, 255},
    {44, "zoneF.bmp", nullptr, 550, 350, K0, 0, 255},
    {45, "allstars_zone.bmp", nullptr, 200, 250, K0, 0, 255},
    {46, "allstars_zone.bmp", nullptr, 450, 250, K0, 0, 255},
    {47, "allstars_zone.bmp", nullptr, 700, 250, K0, 0, 255},
    {48, "allstars_zone.bmp", nullptr, 200, 450, K0, 0, 255},
    {49, "allstars_zone.bmp", nullptr, 450, 450, K0, 0, 255},
    {50, "allstars_zone.bmp", nullptr, 700, 450, K0, 0, 255},
    {51, "statsbar.bmp", nullptr, 580, 220, K0, 0, 160},
    {52, "stats.bmp", nullptr, 597, 260, K189, 0, 255},
    {53, "800x600.bmp", "800x600_rollover.bmp", 410, 385, K198, 0, 255},
    {54, "800x600_selected.bmp", "800x600_selected_rollover.bmp", 410, 385, K198, 0, 255},
    {55, "1024x768.bmp", "1024x768_rollover.bmp", 410, 415, K198, 0, 255},
    {56, "1024x768_selected.bmp", "1024x768_selected_rollover.bmp", 410, 415, K198, 0, 255},
    {57, "controls.bmp", "controls_rollover.bmp", 290, 552, K0, 8, 255},
    {58, "defaults.bmp", "defaults_rollover.bmp", 290, 430, K0, 8, 255},
    {59, "userlevel.bmp", "userlevel_Rollover.bmp", 440, 60, K0, 8, 255},
    {60, "watch.bmp", "watch_rollover.bmp", 270, 20, K0, 8, 255},
    {61, "watchend.bmp", nullptr, 190, 140, K0, 0, 255},
};

}  // namespace

Gui::Gui(frmGame& game) : pictures(game.platform.graphics), game_(game) {}

Gui::~Gui() {
    // The user tracks' files go back first, so the game keeps its own.
    userTracks.Deactivate(game_.levels, game_.stats);
}

void Gui::LoadGuiBitmaps() {
    const std::string folder = game_.platform.paths.gameDir + "gui/";
    DirectX& dx = *game_.dx;
    auto sfx = [this](int16_t n) { game_.sound->PlayEffect(n); };
    for (int32_t i = 1; i <= SlotCount; ++i)
        if (!Buttons[static_cast<size_t>(i)])
            Buttons[static_cast<size_t>(i)] =
                std::make_unique<GUI_Button>(pictures, dx.GuiOffsetX, dx.GuiOffsetY, sfx);
    for (const SlotSpec& s : SlotTable) {
        GUI_Button& b = Button(s.slot);
        b.LoadTexture(folder + s.bitmap, s.key);
        b.X(static_cast<float>(s.x));
        if (s.y >= 0) b.Y(static_cast<float>(s.y));
        if (s.rollover != nullptr) b.LoadRollover(folder + s.rollover, s.key);
        if (s.sound != 0) b.MouseOverSFX(s.sound);
        if (s.alpha != 255) b.SetAlphaLevel(s.alpha);
    }
}

void Gui::DisableAllButtons() {
    for (int32_t i = 1; i <= SlotCount; ++i)
        if (Buttons[static_cast<size_t>(i)]) Button(i).enabled(false);
}

void Gui::ReleaseHiddenPictures() {
    for (int32_t i = 1; i <= SlotCount; ++i)
        if (Buttons[static_cast<size_t>(i)] && !Button(i).enabled()) Button(i).ReleasePictures();
}

void Gui::ResetTabIndices() {
    for (int32_t i = 1; i <= SlotCount; ++i)
        if (Buttons[static_cast<size_t>(i)]) Button(i).TabIndex(0);
}

void Gui::ClearMouseOver() {
    for (int32_t i = 1; i <= SlotCount; ++i)
        if (Buttons[static_cast<size_t>(i)]) Button(i).MouseOver(false);
}

void Gui::GuiMouseMove(float X, float Y) {
    for (int32_t i = 1; i <= SlotCount; ++i) {
        if (!Buttons[static_cast<size_t>(i)]) continue;
        GUI_Button& b = Button(i);
        if (b.enabled() && b.Contains(X, Y) && b.Rollover()) {
            ClearMouseOver();
            b.MouseOver(true);
            if (b.TabIndex() > 0) CurrentTab = b.TabIndex();
        }
    }
}

void Gui::GuiMouseClick(float X, float Y) {
    if (ClickRaceOptions(X, Y)) return;
    for (int32_t i = 1; i <= SlotCount; ++i) {
        if (!Buttons[static_cast<size_t>(i)]) continue;
        GUI_Button& b = Button(i);
        if (b.enabled() && b.Contains(X, Y) && Click(i)) return;
    }
}

int32_t Gui::SlotWithTab(int32_t tab) const {
    for (int32_t i = 1; i <= SlotCount; ++i) {
        const auto& b = Buttons[static_cast<size_t>(i)];
        if (b && b->TabIndex() == tab) return i;
    }
    return 0;
}

void Gui::MoveFocus(int32_t step) {
    if (TabCount < 1) return;
    int32_t wanted;
    if (step > 0)
        wanted = CurrentTab == TabCount ? 1 : CurrentTab + 1;
    else
        wanted = CurrentTab == 1 ? TabCount : CurrentTab - 1;
    const int32_t slot = SlotWithTab(wanted);
    CurrentTab = wanted;
    ClearMouseOver();
    if (slot != 0) Button(slot).MouseOver(true);
}

void Gui::MoveFocusToward(int32_t dx, int32_t dy) {
    const int32_t from = SlotWithTab(CurrentTab);
    if (from == 0) return;
    const GUI_Button& f = Button(from);
    const float fx = f.X() + static_cast<float>(f.width()) / 2,
                fy = f.Y() + static_cast<float>(f.height()) / 2;
    int32_t best = 0;
    float bestScore = std::numeric_limits<float>::max();
    for (int32_t i = 1; i <= SlotCount; ++i) {
        if (i == from || !Buttons[static_cast<size_t>(i)]) continue;
        const GUI_Button& b = Button(i);
        if (!b.enabled() || b.TabIndex() <= 0) continue;
        const float ox = b.X() + static_cast<float>(b.width()) / 2 - fx;
        const float oy = b.Y() + static_cast<float>(b.height()) / 2 - fy;
        const float along = ox * static_cast<float>(dx) + oy * static_cast<float>(dy);
        if (along <= 0) continue;
        // Straight ahead beats diagonal: the sideways distance counts double.
        const float across = std::fabs(ox * static_cast<float>(dy) - oy * static_cast<float>(dx));
        const float score = along + 2 * across;
        if (score < bestScore) {
            bestScore = score;
            best = i;
        }
    }
    if (best == 0) return;
    CurrentTab = Button(best).TabIndex();
    ClearMouseOver();
    Button(best).MouseOver(true);
}

void Gui::DrawButtons() {
    for (int32_t i = 1; i <= SlotCount; ++i) {
        const auto& b = Buttons[static_cast<size_t>(i)];
        if (b && b->enabled()) b->draw(1);
    }
}

void Gui::DrawTextFields() {
    for (int32_t i = 1; i <= FieldCount && static_cast<size_t>(i) < Fields.size(); ++i) Field(i).Render();
}

void Gui::OnLostDevice() {
    for (int32_t i = 1; i <= FieldCount && static_cast<size_t>(i) < Fields.size(); ++i)
        Field(i).OnLostDevice();
}

void Gui::OnRestoreDevice() {
    for (int32_t i = 1; i <= FieldCount && static_cast<size_t>(i) < Fields.size(); ++i)
        Field(i).onRestoreDevice();
}

void Gui::OnChangeVideoMode() {
    for (int32_t i = 1; i <= SlotCount; ++i)
        if (Buttons[static_cast<size_t>(i)]) Button(i).OnChangeVideoMode();
}

void Gui::NewFields(int32_t count) {
    Fields.clear();
    Fields.resize(static_cast<size_t>(count) + 1);
    DirectX& dx = *game_.dx;
    for (int32_t i = 1; i <= count; ++i)
        Fields[static_cast<size_t>(i)] =
            std::make_unique<clsFontField>(game_.platform.graphics, dx.GuiOffsetX, dx.GuiOffsetY);
    FieldCount = count;
}

clsFontField& Gui::AddField(int32_t i, int32_t top, int32_t bottom, int32_t left, int32_t right, int32_t size,
                            int16_t r, int16_t g, int16_t b, const std::string& text) {
    clsFontField& f = Field(i);
    f.Set_Field(top, bottom, left, right);
    f.Set_FontSize(size);
    f.Set_Colour(r, g, b);
    f.Set_FontName("Ariel");
    f.Set_Text(text);
    f.Set_Bold(true);
    return f;
}

}  // namespace qb
