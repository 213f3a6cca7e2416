#pragma once

namespace qb {

class clsPlayer {
public:
    bool DeathStatus() const { return false; }
    float Posz() const { return 1.0f; }
};

}  // namespace qb
