// The track's face textures: one 128 x 128 tile per world unit, all in the
// game's palette, every special block readable at a glance. Tiles wrap
// seamlessly (noise periods divide the tile) and are drawn with the image's
// top towards the far end of the track, so arrows point the way to drive.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>

#include "tools/content/Content.h"
#include "tools/content/SymbolTiles.h"
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

// A wall face: a bright lip along the top edge, where it meets the road,
// then dark ribbed metal falling into shadow. From the driver's camera even
// a one-unit step shows as a lit edge over a dark face, never as a seam.
Canvas Wall() {
    Canvas c(N, N);
    c.verticalGradient({{0, Mix(p::Steel, p::Night, 0.55f)}, {0.6f, p::Night}, {1, p::Black}});
    c.grain(Noise(21), 16, 0.12f, N / 16);
    // Vertical ribs: the face reads as upright, unlike any road.
    for (int x = 0; x < N; ++x) {
        const float rib = 0.5f + 0.5f * std::cos(static_cast<float>(x) / N * 8.0f * 6.2831853f);
        for (int y = 20; y < N; ++y)
            c.blend(x, y, rib > 0.5f ? p::Black : p::SteelLight, 0.22f * std::fabs(rib - 0.5f) * 2);
    }
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < N; ++x)
            c.blend(x, y, y < 11 ? Mix(p::Gold, p::White, 0.45f) : p::Black, y < 11 ? 0.95f : 0.6f);
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

Canvas RampTile() {
    Canvas c = Panel(Mix(p::Steel, p::Deep, 0.2f), 101);
    for (float y : {40.0f, 88.0f}) {
        Chevron(c, N / 2.0f, y + 2, 36, 24, 12, p::Black, 0.35f);
        Chevron(c, N / 2.0f, y, 36, 24, 10, p::Gold);
    }
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
        {"finish.bmp", FinishTile},
        {"bounce.bmp", BounceTile},
        {"ice.bmp", IceTile},
        {"falling.bmp", FallingTile},
        {"turbo.bmp", TurboTile},
        {"deadly.bmp", DeadlyTile},
        {"ramp.bmp", RampTile},
        {"platform.bmp", PlatformTile},
    };
    for (const auto& [name, make] : tiles) make().saveBmp(dir + name);
    for (int f = 0; f < 4; ++f) Animation(f).saveBmp(dir + "AnimationTest_" + std::to_string(f) + ".bmp");
}

}  // namespace qb::content
