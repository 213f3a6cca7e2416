#pragma once

namespace qb {

class clsParticles {
public:
    bool create() { return true; }
};

}  // namespace qb
