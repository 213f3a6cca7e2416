// The track's face textures: one 128 x 128 tile per world unit, all in the
// game's palette, every special block readable at a glance. Tiles wrap
// seamlessly (noise periods divide the tile) and are drawn with the image's
// top towards the far end of the track, so arrows point the way to drive.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>

#include "tools/content/Content.h"
#include "tools/content/WorldPaint.h"

namespace qb::content {

namespace {
constexpr int N = 128;
namespace p = palette;

// A base panel: colour with a little seeded grain, then a bevel.
Canvas Panel(const Rgb& base, uint32_t seed, float grainAmount = 0.16f, int bevelWidth = 6) {
    Canvas c(N, N);
    c.fill(base);
    c.grain(Noise(seed), 16, grainAmount, N / 16);
    if (bevelWidth > 0) c.bevel(bevelWidth, 0.35f, 0.5f);
    return c;
}

void Rivets(Canvas& c, const Rgb& colour) {
    for (float x : {14.0f, N - 14.0f})
        for (float y : {14.0f, N - 14.0f}) {
            c.disc(x + 0.8f, y + 0.8f, 3.2f, p::Black, 0.5f);
            c.disc(x, y, 3.0f, colour);
            c.disc(x - 0.8f, y - 0.8f, 1.2f, p::White, 0.6f);
        }
}

void Chevron(Canvas& c, float cx, float cy, float half, float height, float width, const Rgb& colour,
             float alpha = 1) {
    c.line(cx - half, cy + height / 2, cx, cy - height / 2, width, colour, alpha);
    c.line(cx, cy - height / 2, cx + half, cy + height / 2, width, colour, alpha);
}

Canvas Road() {
    Canvas c = Panel(Mix(p::Steel, p::Deep, 0.35f), 11);
    // A recessed inner panel outline and rivets: a bolted deck plate.
    for (int i = 18; i < N - 18; ++i) {
        c.blend(i, 18, p::Black, 0.25f);
        c.blend(18, i, p::Black, 0.25f);
        c.blend(i, N - 19, p::White, 0.12f);
        c.blend(N - 19, i, p::White, 0.12f);
    }
    Rivets(c, p::SteelLight);
    return c;
}

Canvas RoadAlt() {
    Canvas c = Panel(Mix(p::Deep, p::Steel, 0.3f), 12);
    // A glowing lane line along the track, dashed once per tile.
    for (int y = 24; y < N - 24; ++y)
        for (int x = 0; x < N; ++x) {
            const float d = std::fabs(x + 0.5f - N / 2.0f);
            c.blend(x, y, p::Cyan, std::clamp(1.0f - (d - 3) / 6, 0.0f, 1.0f) * 0.9f);
        }
    return c;
}

Canvas Wall() {
    Canvas c(N, N);
    c.verticalGradient({{0, Mix(p::Deep, p::Steel, 0.25f)}, {1, p::Night}});
    c.grain(Noise(21), 16, 0.12f, N / 16);
    for (int groove : {42, 86}) {
        for (int x = 0; x < N; ++x) {
            c.blend(x, groove, p::Black, 0.55f);
            c.blend(x, groove + 1, p::White, 0.15f);
        }
    }
    for (int x = 0; x < N; ++x) {
        c.blend(x, 3, p::Cyan, 0.85f);
        c.blend(x, 4, p::Cyan, 0.45f);
    }
    c.bevel(3, 0.25f, 0.4f);
    return c;
}

Canvas Edge() {
    Canvas c(N, N);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            // Diagonal stripes, 4 per tile, soft-edged so they do not shimmer.
            const float s = std::fmod(static_cast<float>(x + y) / (N / 4.0f), 1.0f);
            const float k = Smooth(0.46f, 0.54f, s) - Smooth(0.96f, 1.0f, s);
            c.at(x, y) = Mix(p::Night, p::Orange, k);
        }
    c.grain(Noise(31), 16, 0.1f, N / 16);
    c.bevel(5, 0.3f, 0.5f);
    return c;
}

Canvas Finish() {
    Canvas c(N, N);
    const int cell = N / 4;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x)
            c.at(x, y) = ((x / cell + y / cell) % 2 == 0) ? Rgb{236, 240, 250} : p::Black;
    c.grain(Noise(41), 16, 0.08f, N / 16);
    c.bevel(5, 0.25f, 0.45f);
    return c;
}

Canvas BouncePad() {
    Canvas c = Panel(Mix(p::Magenta, p::Night, 0.35f), 51, 0.1f, 6);
    const float m = N / 2.0f;
    c.disc(m, m, 50, Mix(p::Magenta, p::Night, 0.15f));
    for (float r : {46.0f, 34.0f, 22.0f}) c.ring(m, m, r, 4, Mix(p::Magenta, p::White, 0.45f));
    c.disc(m, m, 10, p::White);
    c.disc(m, m, 6, p::Magenta);
    return c;
}

Canvas IceTile() {
    Canvas c(N, N);
    Noise n(61);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            const float v = n.fbm(x / 32.0f, y / 32.0f, 4, N / 32);
            c.at(x, y) = Mix(Mix(p::Ice, p::Cyan, 0.35f), p::White, v * 0.7f);
        }
    // Hairline cracks from a fixed list of strokes, and a few glints.
    const float cracks[][4] = {{10, 20, 52, 48},  {52, 48, 60, 90},    {52, 48, 96, 40},
                               {96, 40, 120, 70}, {70, 100, 110, 118}, {24, 96, 60, 90}};
    for (const auto& k : cracks) c.line(k[0], k[1], k[2], k[3], 1.4f, Mix(p::Deep, p::Cyan, 0.5f), 0.7f);
    for (const auto& g : {std::pair{30.0f, 34.0f}, std::pair{88.0f, 84.0f}, std::pair{104.0f, 20.0f}}) {
        c.line(g.first - 5, g.second, g.first + 5, g.second, 1.2f, p::White, 0.9f);
        c.line(g.first, g.second - 5, g.first, g.second + 5, 1.2f, p::White, 0.9f);
    }
    c.bevel(5, 0.35f, 0.3f);
    return c;
}

Canvas FallingTile() {
    Canvas c = Panel(Mix(p::Orange, p::Gold, 0.25f), 71, 0.22f, 6);
    // Cracks spreading from the middle: this plate will not hold.
    const float m = N / 2.0f;
    const float cracks[][4] = {{m, m, 18, 30},  {m, m, 110, 22},    {m, m, 100, 112},   {m, m, 22, 104},
                               {18, 30, 8, 52}, {110, 22, 122, 44}, {100, 112, 84, 124}};
    for (const auto& k : cracks) c.line(k[0], k[1], k[2], k[3], 3.0f, Mix(p::Night, p::Orange, 0.2f), 0.85f);
    // A downward warning triangle.
    const float t = 26;
    c.line(m - t, m - t * 0.6f, m + t, m - t * 0.6f, 6, p::Night);
    c.line(m - t, m - t * 0.6f, m, m + t * 0.9f, 6, p::Night);
    c.line(m + t, m - t * 0.6f, m, m + t * 0.9f, 6, p::Night);
    return c;
}

Canvas Turbo() {
    Canvas c = Panel(Mix(p::Teal, p::Night, 0.55f), 81, 0.1f, 6);
    for (float y : {44.0f, 84.0f}) {
        Chevron(c, N / 2.0f, y + 2, 40, 30, 16, p::Black, 0.35f);
        Chevron(c, N / 2.0f, y, 40, 30, 14, p::Cyan);
        Chevron(c, N / 2.0f, y, 40, 30, 5, p::White, 0.8f);
    }
    return c;
}

Canvas Deadly() {
    Canvas c(N, N);
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            const float s = std::fmod(static_cast<float>(x - y + N) / (N / 4.0f), 1.0f);
            const float k = Smooth(0.46f, 0.54f, s) - Smooth(0.96f, 1.0f, s);
            c.at(x, y) = Mix(p::Red, Mix(p::Red, p::Night, 0.7f), k);
        }
    c.grain(Noise(91), 16, 0.12f, N / 16);
    const float m = N / 2.0f;
    c.disc(m, m + 2, 34, p::Black, 0.4f);
    c.disc(m, m, 32, p::Night);
    c.ring(m, m, 30, 4, p::Gold);
    c.line(m - 15, m - 15, m + 15, m + 15, 9, p::Gold);
    c.line(m - 15, m + 15, m + 15, m - 15, 9, p::Gold);
    c.bevel(5, 0.25f, 0.5f);
    return c;
}

Canvas RampTile() {
    Canvas c = Panel(Mix(p::Steel, p::Deep, 0.2f), 101);
    for (float y : {40.0f, 88.0f}) {
        Chevron(c, N / 2.0f, y + 2, 36, 24, 12, p::Black, 0.35f);
        Chevron(c, N / 2.0f, y, 36, 24, 10, p::Gold);
    }
    return c;
}

Canvas PlatformTile() {
    Canvas c = Panel(Mix(p::Teal, p::Steel, 0.3f), 111, 0.12f, 0);
    // A gold rim with dark ticks: something that moves.
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            const int e = std::min(std::min(x, y), std::min(N - 1 - x, N - 1 - y));
            if (e < 12) {
                const bool tick = ((x + y) / 12) % 2 == 0;
                c.at(x, y) = tick ? p::Gold : Mix(p::Night, p::Gold, 0.15f);
            }
        }
    c.bevel(5, 0.3f, 0.5f);
    Rivets(c, p::Gold);
    return c;
}

// Energy bands sliding diagonally: frame f is a quarter period further on.
Canvas Animation(int frame) {
    Canvas c(N, N);
    const float period = N / 4.0f;
    for (int y = 0; y < N; ++y)
        for (int x = 0; x < N; ++x) {
            const float s = std::fmod((x + y + frame * period / 4.0f) / period, 1.0f);
            const float glow = std::pow(0.5f + 0.5f * std::cos(s * 6.2831853f), 6.0f);
            c.at(x, y) = Mix(Mix(p::Night, p::Deep, 0.6f), p::Cyan, glow);
            c.at(x, y) = Mix(c.at(x, y), p::White, glow * glow * 0.5f);
        }
    c.bevel(6, 0.3f, 0.55f);
    return c;
}

Canvas DefaultTile() {
    Canvas c = Panel(Mix(p::Steel, p::SteelLight, 0.2f), 121, 0.1f, 6);
    for (int i = 0; i < N; i += 32)
        for (int j = 0; j < N; ++j) {
            c.blend(i, j, p::Deep, 0.2f);
            c.blend(j, i, p::Deep, 0.2f);
        }
    return c;
}
}  // namespace

// Names shared with the track sources.
void MakeTextures(const std::string& gameDir) {
    const std::string dir = gameDir + "textures/";
    std::filesystem::create_directories(dir);
    const std::pair<const char*, std::function<Canvas()>> tiles[] = {
        {"_default.bmp", DefaultTile},
        {"road.bmp", Road},
        {"road_alt.bmp", RoadAlt},
        {"wall.bmp", Wall},
        {"edge.bmp", Edge},
        {"finish.bmp", Finish},
        {"bounce.bmp", BouncePad},
        {"ice.bmp", IceTile},
        {"falling.bmp", FallingTile},
        {"turbo.bmp", Turbo},
        {"deadly.bmp", Deadly},
        {"ramp.bmp", RampTile},
        {"platform.bmp", PlatformTile},
    };
    for (const auto& [name, make] : tiles) make().saveBmp(dir + name);
    for (int f = 0; f < 4; ++f) Animation(f).saveBmp(dir + "AnimationTest_" + std::to_string(f) + ".bmp");
}

}  // namespace qb::content
