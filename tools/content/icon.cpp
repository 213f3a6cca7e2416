// The desktop icon: a hover-car on a floating block under a night sky, drawn
// with a few filled shapes so it reads at 48 pixels.
#include <SDL2/SDL.h>
#include <SDL2/SDL_image.h>

#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "tools/content/Content.h"

namespace qb::content {

namespace {
void put(SDL_Surface* s, int x, int y, Uint8 r, Uint8 g, Uint8 b, Uint8 a = 255) {
    if (x < 0 || y < 0 || x >= s->w || y >= s->h) return;
    auto* row = static_cast<Uint32*>(s->pixels) + y * (s->pitch / 4);
    row[x] = SDL_MapRGBA(s->format, r, g, b, a);
}
}  // namespace

void MakeIcon(const std::string& gameDir) {
    const int n = 128;
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, n, n, 32, SDL_PIXELFORMAT_RGBA32);
    if (!s) throw std::runtime_error(SDL_GetError());
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            // Rounded square with a deep blue to violet gradient.
            const float dx = std::fmax(std::fabs(x - 63.5f) - 48.0f, 0.0f);
            const float dy = std::fmax(std::fabs(y - 63.5f) - 48.0f, 0.0f);
            const float d = std::sqrt(dx * dx + dy * dy);
            if (d > 14.0f) {
                put(s, x, y, 0, 0, 0, 0);
                continue;
            }
            const float t = y / float(n);
            Uint8 a = d > 13.0f ? Uint8(255 * (14.0f - d)) : 255;
            put(s, x, y, Uint8(20 + 60 * t), Uint8(24 + 20 * t), Uint8(70 + 90 * t), a);
        }
    // The block: a top face and a front face.
    for (int y = 78; y < 112; ++y)
        for (int x = 22; x < 106; ++x) {
            const bool top = y < 88;
            if (top)
                put(s, x, y, 120, 200, 255);
            else
                put(s, x, y, 40, 90, 150);
        }
    // The car: a wedge body with a canopy and two glowing thrusters.
    for (int y = 50; y < 74; ++y)
        for (int x = 34; x < 94; ++x) {
            const float fy = (y - 50) / 24.0f;
            const float half = 16.0f + 14.0f * fy;
            if (std::fabs(x - 64.0f) > half) continue;
            const bool canopy = y < 62 && std::fabs(x - 64.0f) < 9.0f;
            if (canopy)
                put(s, x, y, 150, 230, 255);
            else
                put(s, x, y, 240, 90, 40);
        }
    for (int y = 72; y < 78; ++y)
        for (int x = 0; x < n; ++x)
            if (std::fabs(x - 44.0f) < 6 || std::fabs(x - 84.0f) < 6) put(s, x, y, 255, 230, 120);
    std::filesystem::create_directories(gameDir + "icons");
    const std::string path = gameDir + "icons/quorbit.png";
    if (IMG_SavePNG(s, path.c_str()) != 0) throw std::runtime_error(IMG_GetError());
    SDL_FreeSurface(s);
}

}  // namespace qb::content
