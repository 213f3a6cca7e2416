#include "tools/content/SymbolTiles.h"

#include <algorithm>
#include <cmath>

namespace qb::content {

namespace {
constexpr int N = SymbolTileSize;
constexpr float M = N / 2.0f;
namespace p = palette;

Canvas Base(const Rgb& colour, uint32_t seed, float grain = 0.1f) {
    Canvas c(N, N);
    c.fill(colour);
    c.grain(Noise(seed), 16, grain, N / 16);
    return c;
}

// A dark drop shadow under a shape, so it stands off its ground.
void ShadowedPolygon(Canvas& c, const std::vector<std::pair<float, float>>& pts, const Rgb& colour) {
    std::vector<std::pair<float, float>> shadow = pts;
    for (auto& [x, y] : shadow) {
        x += 2.5f;
        y += 3.0f;
    }
    FillPolygon(c, shadow, p::Black, 0.45f);
    FillPolygon(c, pts, colour);
}

bool Inside(const std::vector<std::pair<float, float>>& pts, float x, float y) {
    bool in = false;
    for (size_t i = 0, j = pts.size() - 1; i < pts.size(); j = i++) {
        const auto [xi, yi] = pts[i];
        const auto [xj, yj] = pts[j];
        if ((yi > y) != (yj > y) && x < (xj - xi) * (y - yi) / (yj - yi) + xi) in = !in;
    }
    return in;
}
}  // namespace

void FillPolygon(Canvas& c, const std::vector<std::pair<float, float>>& pts, const Rgb& colour, float alpha) {
    float x0 = 1e9f, y0 = 1e9f, x1 = -1e9f, y1 = -1e9f;
    for (const auto& [x, y] : pts) {
        x0 = std::min(x0, x);
        y0 = std::min(y0, y);
        x1 = std::max(x1, x);
        y1 = std::max(y1, y);
    }
    for (int y = std::max(0, static_cast<int>(y0)); y <= std::min(c.h - 1, static_cast<int>(y1)); ++y)
        for (int x = std::max(0, static_cast<int>(x0)); x <= std::min(c.w - 1, static_cast<int>(x1)); ++x) {
            int hits = 0;
            for (int sy = 0; sy < 4; ++sy)
                for (int sx = 0; sx < 4; ++sx)
                    if (Inside(pts, x + (sx + 0.5f) / 4, y + (sy + 0.5f) / 4)) ++hits;
            if (hits) c.blend(x, y, colour, alpha * static_cast<float>(hits) / 16.0f);
        }
}

// Black and white squares, four a side: the chequered flag.
Canvas FinishTile() {
    Canvas c(N, N);
    const int cell = N / 4;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x)
            c.at(x, y) = ((x / cell + y / cell) % 2 == 0) ? Rgb{236, 240, 250} : p::Black;
    c.grain(Noise(41), 16, 0.08f, N / 16);
    c.bevel(5, 0.25f, 0.45f);
    return c;
}

// A target: one wide bright ring and a bright bull's-eye on dark ground.
Canvas BounceTile() {
    Canvas c = Base(Mix(p::Magenta, p::Black, 0.65f), 51);
    c.ring(M + 2, M + 3, 42, 16, p::Black, 0.45f);
    c.ring(M, M, 42, 16, Mix(p::Magenta, p::White, 0.55f));
    c.ring(M, M, 42, 4, p::White, 0.6f);
    c.disc(M + 2, M + 3, 15, p::Black, 0.45f);
    c.disc(M, M, 15, Mix(p::Magenta, p::White, 0.7f));
    c.bevel(5, 0.3f, 0.5f);
    return c;
}

// A dark six-armed snowflake on pale ice.
Canvas IceTile() {
    Canvas c(N, N);
    Noise n(61);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            const float v = n.fbm(x / 32.0f, y / 32.0f, 4, N / 32);
            c.at(x, y) = Mix(Mix(p::Ice, p::White, 0.5f), p::White, v * 0.4f);
        }
    const Rgb ink = Mix(p::Deep, p::Cyan, 0.25f);
    for (int arm = 0; arm < 6; ++arm) {
        const float a = static_cast<float>(arm) * 3.14159265f / 3.0f + 3.14159265f / 6.0f;
        const float dx = std::cos(a), dy = std::sin(a);
        c.line(M, M, M + 52 * dx, M + 52 * dy, 8, ink);
        // Two side branches on every arm.
        for (float along : {24.0f, 38.0f}) {
            const float bx = M + along * dx, by = M + along * dy, len = along == 24.0f ? 16.0f : 11.0f;
            for (float turn : {-1.0f, 1.0f}) {
                const float b = a + turn * 0.9f;
                c.line(bx, by, bx + len * std::cos(b), by + len * std::sin(b), 6, ink);
            }
        }
    }
    c.disc(M, M, 9, ink);
    c.bevel(5, 0.2f, 0.3f);
    return c;
}

// A heavy downward wedge split by a light crack: this floor gives way.
Canvas FallingTile() {
    Canvas c = Base(Mix(p::Orange, p::Gold, 0.35f), 71, 0.16f);
    ShadowedPolygon(c, {{12, 20}, {116, 20}, {M, 116}}, Mix(p::Night, p::Black, 0.5f));
    const std::vector<std::pair<float, float>> crack = {
        {M - 4, 22}, {M + 8, 46}, {M - 6, 66}, {M + 4, 88}, {M, 110}};
    for (size_t k = 0; k + 1 < crack.size(); ++k)
        c.line(crack[k].first, crack[k].second, crack[k + 1].first, crack[k + 1].second, 5,
               Mix(p::Orange, p::Gold, 0.5f));
    c.bevel(5, 0.3f, 0.5f);
    return c;
}

// A bright lightning bolt on dark teal.
Canvas TurboTile() {
    Canvas c = Base(Mix(p::Teal, p::Black, 0.72f), 81);
    ShadowedPolygon(c, {{76, 4}, {26, 72}, {58, 72}, {42, 124}, {102, 50}, {70, 50}, {96, 4}},
                    Mix(p::Cyan, p::White, 0.55f));
    c.bevel(5, 0.25f, 0.5f);
    return c;
}

// A broad light cross from corner to corner on black, ringed in red.
Canvas DeadlyTile() {
    Canvas c = Base(Mix(p::Red, p::Black, 0.8f), 91);
    const float e = 18, w = 22;
    for (float dy : {3.0f, 0.0f}) {
        const Rgb ink = dy > 0 ? p::Black : Mix(p::Gold, p::White, 0.3f);
        const float a = dy > 0 ? 0.45f : 1.0f;
        c.line(e + dy, e + dy, N - e + dy, N - e + dy, w, ink, a);
        c.line(e + dy, N - e + dy, N - e + dy, e + dy, w, ink, a);
    }
    for (int i = 0; i < N; ++i)
        for (int k = 0; k < 7; ++k) {
            c.blend(i, k, p::Red, 0.9f);
            c.blend(i, N - 1 - k, p::Red, 0.9f);
            c.blend(k, i, p::Red, 0.9f);
            c.blend(N - 1 - k, i, p::Red, 0.9f);
        }
    c.bevel(4, 0.25f, 0.5f);
    return c;
}

// A white two-way arrow across the track between dark rails: it slides.
Canvas PlatformTile() {
    Canvas c = Base(Mix(p::Teal, p::Steel, 0.35f), 111, 0.12f);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            const int e = std::min(y, N - 1 - y);
            if (e < 18) c.at(x, y) = ((x / 16) % 2 == 0) ? p::Gold : Mix(p::Night, p::Black, 0.4f);
        }
    ShadowedPolygon(c,
                    {{6, M},
                     {38, M - 30},
                     {38, M - 12},
                     {90, M - 12},
                     {90, M - 30},
                     {122, M},
                     {90, M + 30},
                     {90, M + 12},
                     {38, M + 12},
                     {38, M + 30}},
                    p::White);
    c.bevel(5, 0.3f, 0.5f);
    return c;
}

}  // namespace qb::content
