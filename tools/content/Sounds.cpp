#include "tools/content/Sounds.h"

#include "tools/content/Content.h"

namespace qb::content {

void MakeSounds(const std::string& gameDir) {
    sound::MakeSoundEffects(gameDir);
    sound::MakeMusic(gameDir);
}

}  // namespace qb::content
