// The sound family of the content tool: effects into sfx/, music into music/.
#pragma once

#include <string>
#include <vector>

#include "tools/content/SoundSynth.h"

namespace qb::content::sound {

void MakeSoundEffects(const std::string& gameDir);  // sfx/*.wav
// music/track01.ogg .. track06.ogg (one a zone) and music/winlevel.ogg
void MakeMusic(const std::string& gameDir);

// The pieces of zones 2 to 6: file name, Ogg serial number and the score.
struct ZonePiece {
    const char* file;
    int serial;
    Stereo (*score)();
};
std::vector<ZonePiece> ZonePieces();

}  // namespace qb::content::sound
