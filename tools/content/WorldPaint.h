// A small float-RGB canvas for the track's pictures (face textures, skies,
// the star's skin): gradients, seeded value noise, discs, bevels, and
// writing through SDL2 / SDL2_image. Everything is deterministic.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qb::content {

struct Rgb {
    float r = 0, g = 0, b = 0;
};

// The game's palette: deep night blues, neon cyan, warm orange and magenta.
namespace palette {
constexpr Rgb Night{20, 26, 58};
constexpr Rgb Deep{35, 52, 110};
constexpr Rgb Steel{112, 132, 176};
constexpr Rgb SteelLight{184, 198, 228};
constexpr Rgb Cyan{63, 224, 255};
constexpr Rgb Teal{31, 181, 168};
constexpr Rgb Orange{255, 138, 42};
constexpr Rgb Magenta{255, 61, 139};
constexpr Rgb Gold{255, 211, 74};
constexpr Rgb Red{232, 40, 52};
constexpr Rgb Ice{191, 241, 255};
constexpr Rgb White{255, 255, 255};
constexpr Rgb Black{8, 10, 20};
}  // namespace palette

Rgb Mix(const Rgb& a, const Rgb& b, float t);
Rgb Scale(const Rgb& a, float k);
Rgb Add(const Rgb& a, const Rgb& b);
float Smooth(float e0, float e1, float x);

// Value noise in [0, 1] from a seed; tiles with the given period when > 0.
class Noise {
public:
    explicit Noise(uint32_t seed) : seed_(seed) {}
    float value(float x, float y, int period = 0) const;
    // Fractal sum of `octaves` layers, in [0, 1].
    float fbm(float x, float y, int octaves, int period = 0) const;

private:
    float lattice(int x, int y) const;
    uint32_t seed_;
};

class Canvas {
public:
    Canvas(int w, int h) : w(w), h(h), px(static_cast<size_t>(w) * h) {}
    Rgb& at(int x, int y) { return px[static_cast<size_t>(y) * w + x]; }
    const Rgb& at(int x, int y) const { return px[static_cast<size_t>(y) * w + x]; }
    // Blends `c` over pixel (x, y) with coverage a; off-canvas is ignored.
    void blend(int x, int y, const Rgb& c, float a);
    void fill(const Rgb& c);
    void verticalGradient(const std::vector<std::pair<float, Rgb>>& stops);
    // Anti-aliased disc and ring (soft edge of about one pixel).
    void disc(float cx, float cy, float r, const Rgb& c, float alpha = 1);
    void ring(float cx, float cy, float r, float width, const Rgb& c, float alpha = 1);
    // Light top/left and dark bottom/right edges of `width` pixels.
    void bevel(int width, float light, float dark);
    // Thin anti-aliased line.
    void line(float x0, float y0, float x1, float y1, float width, const Rgb& c, float alpha = 1);
    // Multiplies every pixel by (1 + amount * (noise - 0.5)).
    void grain(const Noise& n, float scale, float amount, int period = 0);

    void saveBmp(const std::string& path) const;
    void saveJpg(const std::string& path, int quality) const;

    int w, h;
    std::vector<Rgb> px;
};

}  // namespace qb::content
