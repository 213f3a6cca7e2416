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

void frmGame::DeviceReset() {
    gui->OnLostDevice();
    if (!dx->ResetDeviceOnly()) return;  // still lost: the next frame tries again
    if (levels->CurrentLevel > 0) track->BuildLevel(levels->CurrentLevel, true);
    gui->SetupScreen(0);
    gui->OnRestoreDevice();
    if (GameState == Playing) sound->ResumeMusic();
}

void frmGame::ChangeVideoMode(int32_t mode) {
    dx->ApplyVideoMode(mode);
    DeviceReset();
    gui->OnChangeVideoMode();
    background->resetbackground();
    background->create(BackgroundsPath + "bk002.jpg");
    options->Options.VideoMode = dx->VideoMode;
    options->SaveOptions();
}

}  // namespace qb
