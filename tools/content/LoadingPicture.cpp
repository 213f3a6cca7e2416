// backgrounds/load.jpg: shown while the game starts. The night sky, a track
// of floating blocks running off towards the horizon, the game's name.
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "tools/content/Content.h"
#include "tools/content/GuiStyle.h"

namespace qb::content {

namespace {

constexpr int W = 1024, H = 768;
namespace p = palette;

// A trapezoid between two rows, each row given by its left and right x.
void Quad(Canvas& c, float yTop, float l0, float r0, float yBottom, float l1, float r1, const Rgb& top,
          const Rgb& bottom) {
    for (int y = static_cast<int>(std::floor(yTop)); y <= static_cast<int>(std::ceil(yBottom)); ++y) {
        if (y < 0 || y >= H) continue;
        const float t = std::clamp((y + 0.5f - yTop) / std::max(1.0f, yBottom - yTop), 0.0f, 1.0f);
        const float l = l0 + (l1 - l0) * t, r = r0 + (r1 - r0) * t;
        for (int x = static_cast<int>(std::floor(l)); x <= static_cast<int>(std::ceil(r)); ++x) {
            if (x < 0 || x >= W) continue;
            const float cover = std::clamp(std::min(x + 1 - l, r - x), 0.0f, 1.0f);
            c.blend(x, y, Mix(top, bottom, t), cover);
        }
    }
}

}  // namespace

void MakeLoadingPicture(const std::string& gameDir) {
    std::filesystem::create_directories(gameDir + "backgrounds");
    Picture pic(W, H, Rgb{0, 0, 0});
    Canvas& c = pic.canvas;
    c.verticalGradient({{0, {8, 10, 30}}, {0.5f, {28, 36, 92}}, {0.78f, {92, 52, 120}}, {1, {20, 16, 46}}});
    // Stars, thinning towards the horizon.
    uint32_t s = 4242;
    auto next = [&s]() {
        s = s * 1664525u + 1013904223u;
        return static_cast<float>(s >> 8) / static_cast<float>(1u << 24);
    };
    for (int i = 0; i < 420; ++i) {
        const float x = next() * W, y = next() * H * 0.7f, m = next();
        c.disc(x, y, 0.5f + m * m * 1.5f, Mix(p::Ice, p::White, m),
               (0.3f + 0.7f * m) * (1 - y / (H * 0.75f)));
    }
    // A glow on the horizon where the track disappears.
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float d = std::hypot((x - W / 2.0f) / 420.0f, (y - 500.0f) / 90.0f);
            const float k = 0.55f * std::exp(-d * d);
            if (k > 0.003f) c.at(x, y) = Add(c.at(x, y), Scale(p::Magenta, k));
        }
    // Floating blocks running off to the horizon, far ones first, with gaps
    // between them; a few special ones and stars on the way.
    const Rgb tops[] = {p::Steel, p::Steel, p::Orange, p::Steel, p::Ice,
                        p::Steel, p::Gold,  p::Steel,  p::Teal,  p::Steel};
    constexpr float Horizon = 450, K = 230;
    for (int i = 9; i >= 0; --i) {
        const float d0 = 1.0f + 0.85f * static_cast<float>(i), d1 = d0 + 0.55f;
        auto sx = [](float d, float lateral) { return W / 2.0f + lateral / d; };
        const float lateral = 260.0f * std::sin(static_cast<float>(i) * 0.55f);
        const float yNear = Horizon + K / d0, yFar = Horizon + K / d1;
        const float halfNear = 170.0f / d0, halfFar = 170.0f / d1;
        const float cNear = sx(d0, lateral), cFar = sx(d1, lateral);
        const float thick = 40.0f / d0;
        Quad(c, yFar, cFar - halfFar, cFar + halfFar, yNear, cNear - halfNear, cNear + halfNear,
             Mix(tops[i], p::Black, 0.25f), tops[i]);
        Quad(c, yNear, cNear - halfNear, cNear + halfNear, yNear + thick, cNear - halfNear, cNear + halfNear,
             p::Deep, p::Night);
        c.line(cNear - halfNear, yNear, cNear + halfNear, yNear, std::max(1.0f, 3.0f / d0), p::Cyan, 0.8f);
        if (i % 3 == 1) {
            const float r = 22.0f / d0;
            pic.star((cNear + cFar) / 2, (yNear + yFar) / 2 - r * 1.6f, r, r * 0.45f, p::Gold, p::Orange);
        }
    }
    for (size_t i = 0; i < pic.inside.size(); ++i) pic.inside[i] = 1;

    TextStyle title;
    title.px = 132;
    title.colour = p::Magenta;
    pic.text("QUORBIT", W / 2.0f + 6, 206, title);
    title.colour = p::Cyan;
    title.outline = true;
    title.outlineColour = gui::Navy;
    pic.text("QUORBIT", W / 2.0f, 200, title);
    TextStyle sub;
    sub.px = 26;
    sub.colour = p::Gold;
    sub.shadow = true;
    pic.text("race the clock on tracks of floating blocks", W / 2.0f, 300, sub);
    TextStyle loading;
    loading.px = 24;
    loading.colour = p::White;
    loading.shadow = true;
    pic.text("Loading ...", W / 2.0f, 350, loading);
    c.saveJpg(gameDir + "backgrounds/load.jpg", 92);
}

}  // namespace qb::content
