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
