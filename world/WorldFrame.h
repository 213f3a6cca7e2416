// What a world object needs to know about the frame it is drawn in. Blocks
// and stars only animate while a track is being played; the menus show the
// same objects frozen.
#pragma once

namespace qb {

struct WorldFrame {
    bool playing = false;  // GameState == Playing
    float gravity = 0.0f;  // the current track's per-frame gravity (falling blocks)
};

}  // namespace qb
