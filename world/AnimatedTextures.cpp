#include "world/AnimatedTextures.h"

namespace qb {

void AnimatedTextures::InitAnimatedTextures() {
    names_ = {"AnimationTest_0.bmp", "AnimationTest_1.bmp", "AnimationTest_2.bmp", "AnimationTest_3.bmp"};
}

bool AnimatedTextures::IsAnimatedTexture(const std::string& name) const {
    if (name.empty()) return false;
    for (const auto& n : names_)
        if (n == name) return true;
    return false;
}

std::string AnimatedTextures::NextAnimationFrame(const std::string& name) const {
    if (name.empty()) return {};
    for (int i = 0; i < FrameCount; ++i)
        if (names_[i] == name) return names_[(i + 1) % FrameCount];
    return {};
}

}  // namespace qb
