#include "shell/DriveControls.h"

#include "physics/PlayEvents.h"
#include "physics/clsPlayer.h"
#include "platform/KeyboardDevice.h"
#include "shell/KeyScript.h"
#include "shell/KeyboardControls.h"
#include "shell/frmGame.h"

namespace qb {

void ApplyDrive(frmGame& game, uint8_t bits, int jumps) {
    clsPlayer& pl = *game.player;
    if (bits & DriveAccelerate) pl.accelerate();
    if (bits & DriveBrake) pl.deccelerate();
    // Without a steering key the car stops moving sideways at once, except
    // on ice, where it keeps sliding.
    if ((bits & (DriveLeft | DriveRight)) == 0 && !pl.ISPlayerOnAnIceBlock()) pl.HorizontalVelocity(0);
    if (bits & DriveRight) pl.MoveRight();
    if (bits & DriveLeft) pl.Moveleft();
    for (int i = 0; i < jumps; ++i) {
        if (!game.OnGround || pl.getexplodeStatus()) continue;
        pl.verticalvelocity(KeyboardControls::JumpVelocity);
        game.Events.Add(Happening::Jump);
    }
}

std::vector<uint8_t> DriveKeys(uint8_t bits) {
    std::vector<uint8_t> keys;
    if (bits & DriveAccelerate) keys.push_back(DIK_UP);
    if (bits & DriveBrake) keys.push_back(DIK_DOWN);
    if (bits & DriveLeft) keys.push_back(DIK_LEFT);
    if (bits & DriveRight) keys.push_back(DIK_RIGHT);
    if (bits & DriveJump) keys.push_back(DIK_SPACE);
    return keys;
}

uint8_t DriveBitsOfKeys(const std::vector<uint8_t>& keys) {
    uint8_t bits = 0;
    for (uint8_t k : keys) {
        switch (k) {
            case DIK_UP:
                bits |= DriveAccelerate;
                break;
            case DIK_DOWN:
                bits |= DriveBrake;
                break;
            case DIK_LEFT:
                bits |= DriveLeft;
                break;
            case DIK_RIGHT:
                bits |= DriveRight;
                break;
            case DIK_SPACE:
            case DIK_LSHIFT:
            case DIK_RSHIFT:
            case DIK_LCONTROL:
            case DIK_RCONTROL:
                bits |= DriveJump;
                break;
            default:
                break;
        }
    }
    return bits;
}

std::vector<uint8_t> DriveFrames(const KeyScript& script) {
    std::vector<uint8_t> frames;
    frames.reserve(static_cast<size_t>(script.TotalFrames()));
    for (const KeyStep& s : script.steps)
        frames.insert(frames.end(), static_cast<size_t>(s.count), DriveBitsOfKeys(s.keys));
    return frames;
}

KeyScript DriveScript(const std::vector<uint8_t>& frames) {
    KeyScript script;
    for (size_t i = 0; i < frames.size();) {
        size_t j = i;
        while (j < frames.size() && frames[j] == frames[i]) ++j;
        script.steps.push_back(KeyStep{static_cast<int64_t>(j - i), DriveKeys(frames[i])});
        i = j;
    }
    return script;
}

}  // namespace qb
