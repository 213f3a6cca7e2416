#pragma once

namespace qb {

class AnimatedTextures {
public:
    void InitAnimatedTextures() {}
};

}  // namespace qb
