// The session's side of a play frame's physics: what the player hears and
// sees of what happened, and what the statistics count. The physics only
// notes it, so a run driven without a player (the ghost, a check) changes
// nothing here unless its session answers.
#include <cstdlib>
#include <string>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/TrackObjects.h"
#include "persist/Stats.h"
#include "physics/CollisionDetection.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"
#include "platform/QuorbitDebug.h"
#include "shell/GuiLink.h"
#include "shell/frmGame.h"

namespace qb {

PlayWorld frmGame::PhysicsWorld() {
    return PlayWorld{*track, *player, *particles, Events, OnGround, StarsCollected, RaceFrames};
}

void frmGame::ApplyPlayEffects() {
    for (const PlayHappening& h : Events.Happenings()) {
        switch (h.what) {
            case Happening::Jump:
                sound->PlayEffect(SfxJump);
                stats->JumpCount += 1;
                break;
            case Happening::Star:
                sound->PlayEffect(SfxGetStar);
                SetFieldText(
                    *this, 1,
                    "Stars " + std::to_string(h.value) + " / of " + std::to_string(track->StarUpper + 1));
                break;
            case Happening::BouncePad:
                sound->PlayEffect(SfxBouncePad);
                break;
            case Happening::FallingBlock:
            case Happening::Dropping:
                sound->PlayEffect(SfxFall);
                break;
            case Happening::Turbo:
                sound->PlayEffect(SfxTurboPlatform);
                break;
            case Happening::BlowUp:
                sound->PlayEffect(SfxBlowUp);
                break;
            case Happening::BlownUp:
                stats->BlownUpCount += 1;
                gui->SetupScreen(0);
                break;
            case Happening::FellOut:
                stats->FallenOffCount += 1;
                gui->SetupScreen(0);
                break;
            case Happening::Finish:
                Winlevel();
                break;
            case Happening::BrokenTrack:
                // Nothing sensible can follow: the player is told and the game ends.
                platform.window.messageBox("Whoops: You got eaten by a bug");
                debug->Close();
                std::exit(1);
            case Happening::Explode:
                break;
        }
    }
    Events.ClearHappenings();
}

}  // namespace qb
