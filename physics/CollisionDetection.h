#pragma once

namespace qb {

class frmGame;

class CollisionDetection {
public:
    void CheckCollisions(frmGame& game) { (void)game; }
};

}  // namespace qb
