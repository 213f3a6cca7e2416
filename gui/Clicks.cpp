// The click table: what a button does on each screen. The keyboard's Return
// actions go through the same entries.
#include <algorithm>
#include <filesystem>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"

namespace qb {

void Gui::GoTo(int16_t state) {
    game_.sound->PlayEffect(SfxTransit);
    game_.GameState = state;
    SetupScreen(0);
}

bool Gui::Click(int32_t slot) {
    switch (game_.GameState) {
        case MainMenu:
            switch (slot) {
                case 19:
                    GoTo(ZoneChoice);
                    return true;
                case 20:
                    GoTo(Options);
                    return true;
                case 21:
                    GoTo(InstructionsPage1);
                    return true;
                case 22:
                case 15:
                    game_.sound->PlayEffect(SfxTransit);
                    OpenWebSite();
                    return true;
                case 23:
                    game_.sound->PlayEffect(SfxTransit);
                    game_.GameState = Closing;
                    game_.GameRunning = false;
                    return true;
                default:
                    return false;
            }
        case TrackChoice:
        case UserTrackChoice:
            switch (slot) {
                case 2:
                    GoTo(ZoneChoice);
                    return true;
                case 24:
                    game_.sound->PlayEffect(SfxTransit);
                    SetupScreen(2);
                    return true;
                case 25:
                    game_.sound->PlayEffect(SfxTransit);
                    SetupScreen(1);
                    return true;
                case 26:
                    StartSelectedTrack();
                    return true;
                case WatchSlot:
                    // Offered only where the track's best run can be watched.
                    return Button(WatchSlot).enabled() && game_.watch->Start();
                default:
                    return false;
            }
        case PauseMenu:
            switch (slot) {
                case 31:
                    game_.sound->PlayEffect(SfxTransit);
                    game_.GameState = Playing;
                    game_.resetgame(false);
                    game_.StarsCollected = 0;
                    SetupScreen(0);
                    return true;
                case 32:
                    game_.sound->PlayEffect(SfxTransit);
                    game_.GameState = TrackChoice;
                    game_.resetgame(false);
                    SetupScreen(3);
                    return true;
                case 33:
                    game_.sound->PlayEffect(SfxTransit);
                    game_.GameState = MainMenu;
                    game_.resetgame(false);
                    SetupScreen(0);
                    return true;
                case 34:
                    game_.sound->PlayEffect(SfxTransit);
                    game_.GameState = Playing;
                    return true;
                default:
                    return false;
            }
        case Options:
            if (slot == 57) {
                GoTo(ControlsMenu);
                return true;
            }
            return ClickOptions(slot);
        case ControlsMenu:
            return ClickControls(slot);
        case ZoneChoice:
            return ClickZoneChoice(slot);
        case InstructionsPage1:
        case InstructionsPage2:
        case InstructionsPage3: {
            // 2 back to the menu, 40 the next page, 41 the previous one.
            const int page = game_.GameState - InstructionsPage1;
            if (slot == 2)
                GoTo(MainMenu);
            else if (slot == 40)
                GoTo(static_cast<int16_t>(InstructionsPage1 + (page + 1) % 3));
            else if (slot == 41)
                GoTo(static_cast<int16_t>(InstructionsPage1 + (page + 2) % 3));
            else
                return false;
            return true;
        }
        default:
            return false;
    }
}

bool Gui::ClickOptions(int32_t slot) {
    DXmusicSFX& s = *game_.sound;
    switch (slot) {
        case 14:
            GoTo(MainMenu);
            return true;
        case 16:
        case 17:
            s.SetSfxVolume(s.SfxVolume + (slot == 16 ? -200 : 200));
            ShowVolumes();
            s.PlayEffect(SfxJump);
            return true;
        case 18:
        case 37:
            s.SetMusicVolume(s.MusicVolume + (slot == 18 ? 10 : -10));
            ShowVolumes();
            return true;
        case 53:
            game_.ChangeVideoMode(1);
            return true;
        case 55:
            game_.ChangeVideoMode(2);
            return true;
        default:
            return false;
    }
}

bool Gui::ClickZoneChoice(int32_t slot) {
    if (slot == 2) {
        GoTo(MainMenu);
        return true;
    }
    if (slot == 59) {
        GoTo(UserTrackChoice);
        return true;
    }
    if (slot >= 4 && slot <= 9) {
        // An empty zone does nothing, and the click goes on to the slots above.
        if (!ZoneHasTracks(slot - 3)) return false;
        OpenZone(slot - 3);
        return true;
    }
    return false;
}

bool Gui::ZoneHasTracks(int32_t zone) const {
    return zone >= 1 && zone <= ZoneCount && game_.levels->LevelCount() >= TracksPerZone * (zone - 1) + 1;
}

void Gui::OpenZone(int32_t zone) {
    LevelStructure& lv = *game_.levels;
    lv.CurrentZone = zone;
    lv.ZoneFirstLevel = TracksPerZone * (zone - 1) + 1;
    lv.ZoneLastLevel = TracksPerZone * zone;
    lv.CurrentLevel = lv.ZoneFirstLevel;
    GoTo(TrackChoice);
}

void Gui::ActivateZoneChoiceFocus() {
    const int32_t slot = SlotWithTab(CurrentTab);
    if (slot == 2) {
        GoTo(MainMenu);
    } else if (slot == 59) {
        GoTo(UserTrackChoice);
    } else if (slot >= 5 && slot <= 9 && ZoneHasTracks(slot - 3)) {
        OpenZone(slot - 3);
    } else {
        // Zone A, as Return always opened it: its first track.
        LevelStructure& lv = *game_.levels;
        game_.GameState = TrackChoice;
        lv.CurrentZone = 1;
        lv.ZoneFirstLevel = 1;
        lv.ZoneLastLevel = TracksPerZone;
        lv.CurrentLevel = 1;
        game_.sound->PlayEffect(SfxTransit);
        SetupScreen(0);
    }
}

void Gui::StartSelectedTrack() {
    // Nothing to drive on an empty user track screen or an unplayable file.
    if (game_.GameState == UserTrackChoice &&
        (!userTracks.Active() || !userTracks.Playable(userTracks.Current)))
        return;
    game_.sound->PlayEffect(SfxTransit);
    game_.sound->PlayMusic(TrackMusic());
    game_.startPlaying();
    SetupScreen(0);
}

int16_t Gui::TrackMusic() const {
    if (game_.GameState == UserTrackChoice)
        return DXmusicSFX::ZoneMusic(1 + (std::max(userTracks.Current, 1) - 1) % MusicLastZone);
    return DXmusicSFX::ZoneMusic(game_.levels->CurrentZone);
}

std::string Gui::WebPageUrl() const {
    std::error_code ec;
    const auto page = std::filesystem::absolute(game_.platform.paths.gameDir + "web/index.html", ec);
    return "file://" +
           (ec ? game_.platform.paths.gameDir + "web/index.html" : page.lexically_normal().string());
}

void Gui::OpenWebSite() {
    // A desktop without a browser simply shows nothing.
    game_.platform.window.openUrl(WebPageUrl());
}

}  // namespace qb
