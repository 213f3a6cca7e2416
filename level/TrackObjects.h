// The live objects of the current track: blocks, ramps, moving platforms and
// stars, rebuilt from the track record by BuildLevel.
#pragma once

namespace qb {

class frmGame;

class TrackObjects {
public:
    explicit TrackObjects(frmGame& game) : game_(game) {}
    void BuildLevel(int level, bool reloadBackground) {
        (void)level;
        (void)reloadBackground;
    }

private:
    frmGame& game_;
};

}  // namespace qb
