#include <cstdio>
#include <string>
#include <vector>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/optionsDat.h"
#include "platform/DirectX.h"
#include "platform/QuorbitDebug.h"
#include "shell/frmGame.h"
#include "world/clsBackground.h"

namespace qb {

bool frmGame::DeviceReset() {
    gui->OnLostDevice();
    if (!dx->ResetDeviceOnly()) return false;  // the next frame tries again
    if (levels->CurrentLevel > 0) track->BuildLevel(levels->CurrentLevel, true);
    gui->SetupScreen(0);
    gui->OnRestoreDevice();
    if (GameState == Playing) sound->ResumeMusic();
    return true;
}

void frmGame::FitToDisplay() {
    if (!graphicsReady || !dx->DisplayChanged()) return;
    dx->FitDisplay();
    if (!dx->ResetDeviceOnly()) return;
    char line[96];
    std::snprintf(line, sizeof line, "Display %dx%d pixels, menus scaled %.2f times", dx->Present.width,
                  dx->Present.height, static_cast<double>(dx->Present.screenScale));
    debug->WriteLine(line);
    gui->OnChangeVideoMode();
    if (!background->pictureName().empty()) background->create(background->pictureName());
    // The screen's fields are placed again, showing what they showed (the
    // star count in play, a name half typed, the finish's time against the
    // best in its colour).
    struct Shown {
        std::string text;
        int16_t r = 0, g = 0, b = 0;
    };
    std::vector<Shown> shown;
    for (int32_t i = 1; gui->HasField(i); ++i) {
        Shown s{gui->Field(i).Get_String()};
        gui->Field(i).Get_Colour(s.r, s.g, s.b);
        shown.push_back(s);
    }
    gui->SetupScreen(0);
    if (static_cast<size_t>(gui->FieldCount) == shown.size())
        for (int32_t i = 1; gui->HasField(i); ++i) {
            const Shown& s = shown[static_cast<size_t>(i - 1)];
            gui->Field(i).Set_Text(s.text);
            gui->Field(i).Set_Colour(s.r, s.g, s.b);
        }
}

void frmGame::ChangeVideoMode(int32_t mode) {
    const int32_t inUse = dx->VideoMode;
    dx->ApplyVideoMode(mode);
    if (!DeviceReset()) {
        // The mode could not be had: back to the one in use, and options.dat
        // keeps it, so the next start does not fail the same way.
        debug->WriteLine("Video mode " + std::to_string(mode) + " failed, staying at mode " +
                         std::to_string(inUse));
        dx->ApplyVideoMode(inUse);
        DeviceReset();
        gui->OnChangeVideoMode();
        return;
    }
    gui->OnChangeVideoMode();
    background->resetbackground();
    background->create(BackgroundsPath + "bk002.jpg");
    options->Options.VideoMode = dx->VideoMode;
    options->SaveOptions();
}

}  // namespace qb
