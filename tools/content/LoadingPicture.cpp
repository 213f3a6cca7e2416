// backgrounds/load.jpg: shown while the game starts. The night sky, a track
// of floating blocks running off towards the horizon, the game's name.
#include <cmath>
#include <filesystem>

#include "tools/content/Content.h"
#include "tools/content/GuiStyle.h"

namespace qb::content {

namespace {

constexpr int W = 1024, H = 768;
namespace p = palette;

// One block seen from behind and above: top face, front face, a lit edge.
void Block(Picture& pic, float cx, float cy, float w, float h, const Rgb& top, const Rgb& front) {
    const float depth = h * 0.6f;
    pic.panel(cx - w / 2, cy, w, depth, 2, Mix(top, p::White, 0.15f), top);
    pic.panel(cx - w / 2, cy + depth, w, h, 2, front, Scale(front, 0.55f));
    pic.canvas.line(cx - w / 2, cy + depth, cx + w / 2, cy + depth, std::max(1.0f, h * 0.08f), p::Cyan, 0.8f);
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
        c.disc(x, y, 0.5f + m * m * 1.5f, Mix(p::Ice, p::White, m), (0.3f + 0.7f * m) * (1 - y / (H * 0.75f)));
    }
    // A glow on the horizon where the track disappears.
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float d = std::hypot((x - W / 2.0f) / 420.0f, (y - 500.0f) / 90.0f);
            const float k = 0.55f * std::exp(-d * d);
            if (k > 0.003f) c.at(x, y) = Add(c.at(x, y), Scale(p::Magenta, k));
        }
    // Floating blocks, far ones first; every fourth a special one.
    const Rgb tops[] = {p::Steel, p::Steel, p::Orange, p::Steel, p::Ice, p::Steel, p::Gold, p::Steel};
    for (int i = 11; i >= 0; --i) {
        const float t = static_cast<float>(i) / 11.0f;  // 0 near, 1 far
        const float scale = 1.0f / (1.0f + 3.2f * t);
        const float cx = W / 2.0f + std::sin(t * 5.0f) * 150.0f * scale;
        const float cy = 505 + 240 * scale - 60 * (1 - scale);
        Block(pic, cx, cy, 300 * scale, 44 * scale, tops[i % 8], p::Deep);
        if (i % 3 == 1) pic.star(cx, cy - 40 * scale, 16 * scale, 7 * scale, p::Gold, p::Orange);
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
    pic.text("Loading ...", W / 2.0f, 720, loading);
    c.saveJpg(gameDir + "backgrounds/load.jpg", 92);
}

}  // namespace qb::content
