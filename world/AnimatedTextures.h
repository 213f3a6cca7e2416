// The four picture files an animated block face cycles through.
#pragma once

#include <array>
#include <string>

namespace qb {

class AnimatedTextures {
public:
    static constexpr int FrameCount = 4;

    // Fills the frame table; until then no name counts as animated.
    void InitAnimatedTextures();
    // Exact, case-sensitive match against the frame table.
    bool IsAnimatedTexture(const std::string& name) const;
    // The frame after `name`, wrapping from the last to the first; empty when
    // `name` is not a frame.
    std::string NextAnimationFrame(const std::string& name) const;
    // Frame file name at position 1..4 (empty before InitAnimatedTextures).
    const std::string& Frame(int position) const { return names_.at(position - 1); }

private:
    std::array<std::string, FrameCount> names_{};
};

}  // namespace qb
