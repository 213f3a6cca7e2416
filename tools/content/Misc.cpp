// misc/: the sixteen pictures of the car's explosion (black is see-through),
// the spark of a collected star and the car's soft shadow (magenta is
// see-through in both).
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>

#include "tools/content/Content.h"
#include "tools/content/WorldPaint.h"

namespace qb::content {

namespace {
constexpr Rgb Key{255, 0, 255};
constexpr Rgb Transparent{0, 0, 0};

float Clamp01(float v) {
    return std::min(1.0f, std::max(0.0f, v));
}

// Colour of burning gas from hot (1) to cooled smoke (0).
Rgb FireRamp(float heat) {
    const Rgb smoke{58, 50, 46}, ember{150, 34, 14}, flame{246, 120, 24}, yellow{255, 214, 92},
        white{255, 250, 226};
    if (heat < 0.25f) return Mix(smoke, ember, heat / 0.25f);
    if (heat < 0.5f) return Mix(ember, flame, (heat - 0.25f) / 0.25f);
    if (heat < 0.8f) return Mix(flame, yellow, (heat - 0.5f) / 0.3f);
    return Mix(yellow, white, (heat - 0.8f) / 0.2f);
}

// A visible pixel must not come out as the key colour after 5-bit packing.
Rgb KeepVisible(Rgb c) {
    if (std::max({c.r, c.g, c.b}) < 24) c = Rgb{24, 20, 18};
    return c;
}

// Frame k of 16: a flash, a turbulent fireball that swells and cools, then
// drifting smoke that thins to nothing.
void WriteExplosionFrame(const std::string& path, int k) {
    const int n = 64;
    const float t = static_cast<float>(k - 1) / 15.0f;  // 0 .. 1
    const float radius = 8.0f + 22.0f * (1.0f - std::pow(1.0f - t, 2.2f));
    const float cooling = std::pow(1.0f - t, 1.3f);
    const float thinning = 0.12f + 0.75f * t * t;  // holes open in the smoke
    const Noise turbulence(0x5EEDu + 17u);
    Canvas c(n, n);
    c.fill(Transparent);
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const float dx = x + 0.5f - n / 2.0f, dy = y + 0.5f - n / 2.0f - 4.0f * t;  // smoke rises
            const float d = std::sqrt(dx * dx + dy * dy) / radius;
            const float swirl = turbulence.fbm(x / 9.0f + k * 0.35f, y / 9.0f - k * 0.5f, 4);
            const float body = 1.0f - d + (swirl - 0.5f) * (0.55f + 0.4f * t);
            if (body <= thinning * 0.5f) continue;
            const float density = Clamp01((body - thinning * 0.5f) * 2.2f);
            if (t > 0.55f && density < 0.25f + 0.5f * (t - 0.55f)) continue;  // wisps break apart
            const float heat = Clamp01((0.35f + 0.9f * density + 0.25f * (swirl - 0.5f)) * cooling * 1.25f);
            c.at(x, y) = KeepVisible(Scale(FireRamp(heat), 0.55f + 0.45f * density));
        }
    // Sparks thrown out early on.
    if (k <= 9) {
        for (int s = 0; s < 10; ++s) {
            const float angle = 0.63f * s + 0.3f * (s % 3);
            const float dist = 6.0f + (radius + 6.0f) * (0.4f + 0.6f * t) * (0.7f + 0.06f * (s % 5));
            const float sx = n / 2.0f + std::cos(angle) * dist, sy = n / 2.0f + std::sin(angle) * dist;
            if (sx < 1 || sy < 1 || sx > n - 2 || sy > n - 2) continue;
            c.disc(sx, sy, 1.3f - 0.1f * k, FireRamp(1.0f - 0.08f * k));
        }
    }
    // Anything the soft edges left nearly black must not turn see-through
    // in a ragged way: snap it either to the key or to a visible colour.
    for (Rgb& p : c.px) {
        const float m = std::max({p.r, p.g, p.b});
        if (m > 0 && m < 24) p = m < 12 ? Transparent : KeepVisible(p);
    }
    c.saveBmp(path);
}

// A soft white spark: a bright core, a halo and four short rays.
void WriteStarParticle(const std::string& path) {
    const int n = 32;
    Canvas c(n, n);
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const float dx = std::fabs(x + 0.5f - n / 2.0f), dy = std::fabs(y + 0.5f - n / 2.0f);
            const float r = std::sqrt(dx * dx + dy * dy);
            const float ray = std::max(Clamp01(1.0f - dx / 1.6f) * Clamp01(1.0f - dy / 15.0f),
                                       Clamp01(1.0f - dy / 1.6f) * Clamp01(1.0f - dx / 15.0f));
            const float glow = std::max(Clamp01(1.0f - r / 9.0f), ray);
            if (glow < 0.12f) {
                c.at(x, y) = Key;
                continue;
            }
            c.at(x, y) = Mix(Rgb{168, 176, 200}, Rgb{255, 255, 255}, Clamp01(glow * 1.4f));
        }
    c.saveBmp(path);
}

// The car's shadow: a dark rounded patch whose rim is stippled, so it looks
// soft even where only see-through or solid pixels exist.
void WriteShadow(const std::string& path) {
    static const int bayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const int n = 64;
    Canvas c(n, n);
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            // Rounded-square distance: 0 in the middle, 1 at the rim.
            const float ux = std::fabs(x + 0.5f - n / 2.0f) / (n / 2.0f),
                        uy = std::fabs(y + 0.5f - n / 2.0f) / (n / 2.0f);
            const float d = std::pow(std::pow(ux, 4.0f) + std::pow(uy, 4.0f), 0.25f);
            const float cover = Clamp01((0.98f - d) / 0.42f);
            const float threshold = (bayer[y % 4][x % 4] + 0.5f) / 16.0f;
            if (cover <= threshold) {
                c.at(x, y) = Key;
                continue;
            }
            c.at(x, y) = Mix(Rgb{40, 40, 52}, Rgb{14, 14, 20}, cover);
        }
    c.saveBmp(path);
}
}  // namespace

void MakeMisc(const std::string& gameDir) {
    const std::string dir = gameDir + "misc/";
    std::filesystem::create_directories(dir);
    for (int k = 1; k <= 16; ++k) WriteExplosionFrame(dir + "explode" + std::to_string(k) + ".bmp", k);
    WriteStarParticle(dir + "starParticle.bmp");
    WriteShadow(dir + "shadowimage.bmp");
}

}  // namespace qb::content
