// The skies behind the tracks, one per zone, plus the night sky the menus
// share (bk002.jpg). Painted at 1024 x 768, the larger video mode, with
// seeded noise so every build gives the same pictures.
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "tools/content/Content.h"
#include "tools/content/WorldPaint.h"

namespace qb::content {

namespace {
constexpr int W = 1024, H = 768;
namespace p = palette;

// Soft clouds: fbm thresholded, lit from `light` on top and shaded below.
void Clouds(Canvas& c, uint32_t seed, float scale, float cover, float top, float bottom, const Rgb& light,
            const Rgb& shade, float alpha) {
    Noise n(seed);
    for (int y = 0; y < H; ++y) {
        const float fy = static_cast<float>(y) / H;
        const float band = Smooth(top, top + 0.08f, fy) * (1 - Smooth(bottom - 0.08f, bottom, fy));
        if (band <= 0) continue;
        for (int x = 0; x < W; ++x) {
            // Stretched sideways: layered clouds rather than blobs.
            const float v = n.fbm(x / (scale * 2.2f), y / scale, 5);
            const float d = Smooth(cover, cover + 0.18f, v);
            if (d <= 0) continue;
            const float under = n.fbm(x / (scale * 2.2f), (y - 10) / scale, 5);
            const float lit = std::clamp(0.5f + (v - under) * 6, 0.0f, 1.0f);
            c.blend(x, y, Mix(shade, light, lit), d * band * alpha);
        }
    }
}

void Stars(Canvas& c, uint32_t seed, int count, float maxY, float brightness) {
    uint32_t s = seed;
    auto next = [&s]() {
        s = s * 1664525u + 1013904223u;
        return static_cast<float>(s >> 8) / static_cast<float>(1u << 24);
    };
    for (int i = 0; i < count; ++i) {
        const float x = next() * W, y = next() * H * maxY, m = next();
        const float r = 0.6f + m * m * 1.6f;
        const float fade = 1 - Smooth(maxY * 0.6f, maxY, y / H);
        c.disc(x, y, r, Mix(p::Ice, p::White, next()), brightness * (0.35f + 0.65f * m) * fade);
        if (m > 0.93f) {  // a few bright ones with a cross glint
            c.line(x - 7, y, x + 7, y, 1.0f, p::White, 0.5f * fade);
            c.line(x, y - 7, x, y + 7, 1.0f, p::White, 0.5f * fade);
        }
    }
}

void Glow(Canvas& c, float cx, float cy, float radius, const Rgb& colour, float strength) {
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float d = std::hypot(x - cx, (y - cy) * 1.2f) / radius;
            const float k = strength * std::exp(-d * d);
            if (k > 0.002f) c.at(x, y) = Add(c.at(x, y), Scale(colour, k));
        }
}

// Zone 1: a clear blue day with white clouds low down.
Canvas Day() {
    Canvas c(W, H);
    c.verticalGradient({{0, {28, 78, 170}}, {0.55f, {92, 160, 228}}, {1, {196, 228, 250}}});
    Glow(c, 790, 150, 260, {255, 236, 190}, 0.35f);
    c.disc(790, 150, 38, {255, 250, 230});
    Clouds(c, 201, 90, 0.52f, 0.35f, 1.0f, p::White, {150, 176, 214}, 0.95f);
    Clouds(c, 202, 60, 0.6f, 0.1f, 0.45f, p::White, {170, 196, 230}, 0.6f);
    return c;
}

// Zone 2: sunset, magenta above a low orange sun.
Canvas Sunset() {
    Canvas c(W, H);
    c.verticalGradient(
        {{0, {44, 22, 84}}, {0.45f, {196, 52, 120}}, {0.75f, {255, 140, 60}}, {1, {255, 206, 120}}});
    Glow(c, 512, 600, 330, {255, 170, 80}, 0.55f);
    c.disc(512, 600, 90, {255, 226, 150});
    // Horizontal bands cut across the sun, retro style.
    for (int i = 0; i < 6; ++i) {
        const float y = 600 + 12 + i * 13.0f;
        for (int x = 380; x < 644; ++x)
            for (int t = 0; t < 2 + i; ++t) c.blend(x, static_cast<int>(y) + t, {255, 150, 70}, 0.9f);
    }
    Clouds(c, 211, 80, 0.56f, 0.15f, 0.7f, {255, 150, 140}, {90, 30, 90}, 0.85f);
    return c;
}

// Menus: deep night with stars and a faint band of the galaxy.
Canvas Night() {
    Canvas c(W, H);
    c.verticalGradient({{0, p::Black}, {0.6f, p::Night}, {1, Mix(p::Deep, p::Teal, 0.25f)}});
    Noise n(221);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float d = std::fabs((y - H * 0.55f) - (x - W * 0.5f) * -0.45f) / 140.0f;
            const float band = std::exp(-d * d) * n.fbm(x / 120.0f, y / 120.0f, 5);
            c.at(x, y) = Add(c.at(x, y), Scale(Mix(p::Deep, p::Magenta, 0.3f), band * 0.7f));
        }
    Stars(c, 222, 900, 0.95f, 0.9f);
    Glow(c, 512, H + 120, 420, Scale(p::Cyan, 0.5f), 0.25f);
    return c;
}

// Zone 3: aurora curtains over a teal horizon.
Canvas Aurora() {
    Canvas c(W, H);
    c.verticalGradient({{0, p::Black}, {0.7f, {10, 36, 60}}, {1, {20, 90, 100}}});
    Stars(c, 231, 500, 0.8f, 0.7f);
    Noise n(232);
    for (int x = 0; x < W; ++x) {
        // A wavy curtain line with fading rays rising from it.
        const float base =
            H * (0.42f + 0.1f * std::sin(x / 160.0f) + 0.06f * (n.fbm(x / 90.0f, 0.5f, 3) - 0.5f));
        const float strength = 0.4f + 0.6f * n.fbm(x / 40.0f, 3.5f, 3);
        for (int y = 0; y < H; ++y) {
            const float above = (base - y) / (H * 0.3f);
            const float below = (y - base) / 18.0f;
            float k = y <= base ? std::exp(-above * 2.2f) : std::exp(-below * below);
            if (y < base - H * 0.3f) k *= 0.5f;
            const Rgb colour = Mix({60, 255, 170}, {120, 90, 255}, std::clamp(above, 0.0f, 1.0f));
            c.at(x, y) = Add(c.at(x, y), Scale(colour, k * strength * 0.55f));
        }
    }
    return c;
}

// Zone 5: deep space, a violet nebula and a ringed planet.
Canvas Nebula() {
    Canvas c(W, H);
    c.fill(p::Black);
    Noise n(241), m(242);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float a = n.fbm(x / 260.0f, y / 260.0f, 6);
            const float b = m.fbm(x / 140.0f + 7, y / 140.0f, 5);
            const float k = Smooth(0.42f, 0.8f, a);
            Rgb colour = Mix({90, 30, 150}, p::Magenta, b);
            colour = Mix(colour, p::Cyan, Smooth(0.65f, 0.9f, b) * 0.5f);
            c.at(x, y) = Add(Mix(p::Black, p::Night, 0.6f), Scale(colour, k * 0.8f));
        }
    Stars(c, 243, 700, 1.0f, 0.9f);
    // The planet: a lit disc with an elliptic ring.
    const float px = 240, py = 200, pr = 80;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float dx = x + 0.5f - px, dy = y + 0.5f - py;
            const float ring = std::fabs(std::hypot(dx, dy * 3.2f) - 135) / 10;
            const bool behind = dy < 0 && std::hypot(dx, dy) < pr;
            if (ring < 1 && !behind) c.blend(x, y, {255, 200, 150}, (1 - ring) * 0.8f);
        }
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float dx = x + 0.5f - px, dy = y + 0.5f - py, d = std::hypot(dx, dy);
            if (d > pr + 1) continue;
            const float lit = std::clamp(0.2f + 0.8f * (-(dx + dy) / (pr * 1.4f) + 0.5f), 0.0f, 1.0f);
            const float bands = 0.85f + 0.15f * std::sin(dy / 7.0f);
            c.blend(x, y, Scale(Mix({70, 40, 90}, {255, 170, 110}, lit), bands),
                    std::clamp(pr - d + 0.5f, 0.0f, 1.0f));
        }
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const float dx = x + 0.5f - px, dy = y + 0.5f - py;
            const float ring = std::fabs(std::hypot(dx, dy * 3.2f) - 135) / 10;
            if (ring < 1 && dy >= 0) c.blend(x, y, {255, 210, 160}, (1 - ring) * 0.85f);
        }
    return c;
}

// Zone 6: a storm at dusk, dark red clouds lit from below.
Canvas Storm() {
    Canvas c(W, H);
    c.verticalGradient({{0, {18, 8, 20}}, {0.6f, {70, 18, 30}}, {1, {210, 80, 40}}});
    Glow(c, 700, H, 380, {255, 110, 50}, 0.5f);
    Clouds(c, 251, 110, 0.45f, 0.0f, 0.85f, {200, 70, 60}, {30, 10, 24}, 0.95f);
    // A forked bolt far away.
    const float bolt[][2] = {{300, 120}, {322, 210}, {296, 260}, {330, 360}, {318, 400}};
    for (int i = 0; i + 1 < 5; ++i) {
        c.line(bolt[i][0], bolt[i][1], bolt[i + 1][0], bolt[i + 1][1], 9, {255, 120, 200}, 0.25f);
        c.line(bolt[i][0], bolt[i][1], bolt[i + 1][0], bolt[i + 1][1], 2.5f, p::White, 0.95f);
    }
    c.line(296, 260, 262, 318, 2, p::White, 0.8f);
    return c;
}

// Zone 4: dawn above a sea of clouds, soft peach and lavender.
Canvas Dawn() {
    Canvas c(W, H);
    c.verticalGradient(
        {{0, {70, 80, 160}}, {0.5f, {190, 150, 200}}, {0.72f, {255, 190, 160}}, {1, {255, 226, 200}}});
    Glow(c, 300, 560, 300, {255, 220, 170}, 0.5f);
    Clouds(c, 261, 70, 0.42f, 0.62f, 1.0f, {255, 240, 236}, {170, 140, 190}, 1.0f);
    Clouds(c, 262, 110, 0.62f, 0.05f, 0.4f, {255, 220, 230}, {150, 130, 190}, 0.5f);
    return c;
}
}  // namespace

void MakeBackgrounds(const std::string& gameDir) {
    const std::string dir = gameDir + "backgrounds/";
    std::filesystem::create_directories(dir);
    Day().saveJpg(dir + "_default.jpg", 90);
    Sunset().saveJpg(dir + "bk001.jpg", 90);
    Night().saveJpg(dir + "bk002.jpg", 90);
    Aurora().saveJpg(dir + "bk003.jpg", 90);
    Nebula().saveJpg(dir + "bk004.jpg", 90);
    Storm().saveJpg(dir + "bk005.jpg", 90);
    Dawn().saveJpg(dir + "bk006.jpg", 90);
}

}  // namespace qb::content
