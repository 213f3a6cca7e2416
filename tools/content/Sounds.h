// The sound family of the content tool: effects into sfx/, music into music/.
#pragma once

#include <string>

namespace qb::content::sound {

void MakeSoundEffects(const std::string& gameDir);  // sfx/*.wav
void MakeMusic(const std::string& gameDir);         // music/track01.ogg, music/winlevel.ogg

}  // namespace qb::content::sound
