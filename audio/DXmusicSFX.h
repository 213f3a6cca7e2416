// Sound effects and music.
#pragma once

namespace qb {

class DXmusicSFX {
public:
    bool InitSound() { return false; }
    void PauseMusic() {}
    void ResumeMusic() {}
};

}  // namespace qb
