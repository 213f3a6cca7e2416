#include "tools/content/WorldPaint.h"

#include <SDL2/SDL.h>
#include <SDL2/SDL_image.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace qb::content {

Rgb Mix(const Rgb& a, const Rgb& b, float t) {
    return Rgb{a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}
Rgb Scale(const Rgb& a, float k) {
    return Rgb{a.r * k, a.g * k, a.b * k};
}
Rgb Add(const Rgb& a, const Rgb& b) {
    return Rgb{a.r + b.r, a.g + b.g, a.b + b.b};
}
float Smooth(float e0, float e1, float x) {
    const float t = std::clamp((x - e0) / (e1 - e0), 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

float Noise::lattice(int x, int y) const {
    uint32_t h =
        seed_ * 0x9E3779B1u ^ static_cast<uint32_t>(x) * 0x85EBCA77u ^ static_cast<uint32_t>(y) * 0xC2B2AE3Du;
    h ^= h >> 15;
    h *= 0x2C1B3C6Du;
    h ^= h >> 12;
    h *= 0x297A2D39u;
    h ^= h >> 15;
    return static_cast<float>(h & 0xFFFFFF) / static_cast<float>(0xFFFFFF);
}

float Noise::value(float x, float y, int period) const {
    const float fx = std::floor(x), fy = std::floor(y);
    int x0 = static_cast<int>(fx), y0 = static_cast<int>(fy);
    int x1 = x0 + 1, y1 = y0 + 1;
    if (period > 0) {
        auto wrap = [period](int v) { return ((v % period) + period) % period; };
        x0 = wrap(x0);
        x1 = wrap(x1);
        y0 = wrap(y0);
        y1 = wrap(y1);
    }
    const float tx = x - fx, ty = y - fy;
    const float sx = tx * tx * (3 - 2 * tx), sy = ty * ty * (3 - 2 * ty);
    const float a = lattice(x0, y0), b = lattice(x1, y0), c = lattice(x0, y1), d = lattice(x1, y1);
    return (a + (b - a) * sx) + ((c + (d - c) * sx) - (a + (b - a) * sx)) * sy;
}

float Noise::fbm(float x, float y, int octaves, int period) const {
    float sum = 0, amp = 0.5f, total = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += value(x, y, period) * amp;
        total += amp;
        x *= 2;
        y *= 2;
        if (period > 0) period *= 2;
        amp *= 0.5f;
    }
    return sum / total;
}

void Canvas::blend(int x, int y, const Rgb& c, float a) {
    if (x < 0 || y < 0 || x >= w || y >= h || a <= 0) return;
    Rgb& p = at(x, y);
    p = Mix(p, c, std::min(a, 1.0f));
}

void Canvas::fill(const Rgb& c) {
    std::fill(px.begin(), px.end(), c);
}

void Canvas::verticalGradient(const std::vector<std::pair<float, Rgb>>& stops) {
    for (int y = 0; y < h; ++y) {
        const float t = h > 1 ? static_cast<float>(y) / (h - 1) : 0;
        Rgb c = stops.front().second;
        for (size_t i = 1; i < stops.size(); ++i) {
            if (t <= stops[i].first) {
                const float span = stops[i].first - stops[i - 1].first;
                const float k = span > 0 ? (t - stops[i - 1].first) / span : 0;
                c = Mix(stops[i - 1].second, stops[i].second, Smooth(0, 1, std::clamp(k, 0.0f, 1.0f)));
                break;
            }
            c = stops[i].second;
        }
        for (int x = 0; x < w; ++x) at(x, y) = c;
    }
}

void Canvas::disc(float cx, float cy, float r, const Rgb& c, float alpha) {
    const int x0 = static_cast<int>(std::floor(cx - r - 1)), x1 = static_cast<int>(std::ceil(cx + r + 1));
    const int y0 = static_cast<int>(std::floor(cy - r - 1)), y1 = static_cast<int>(std::ceil(cy + r + 1));
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) {
            const float d = std::hypot(x + 0.5f - cx, y + 0.5f - cy);
            blend(x, y, c, alpha * std::clamp(r - d + 0.5f, 0.0f, 1.0f));
        }
}

void Canvas::ring(float cx, float cy, float r, float width, const Rgb& c, float alpha) {
    const float outer = r + width / 2;
    const int x0 = static_cast<int>(std::floor(cx - outer - 1)),
              x1 = static_cast<int>(std::ceil(cx + outer + 1));
    const int y0 = static_cast<int>(std::floor(cy - outer - 1)),
              y1 = static_cast<int>(std::ceil(cy + outer + 1));
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) {
            const float d = std::fabs(std::hypot(x + 0.5f - cx, y + 0.5f - cy) - r);
            blend(x, y, c, alpha * std::clamp(width / 2 - d + 0.5f, 0.0f, 1.0f));
        }
}

void Canvas::bevel(int width, float light, float dark) {
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int left = x, top = y, right = w - 1 - x, bottom = h - 1 - y;
            const int lt = std::min(left, top), rb = std::min(right, bottom);
            Rgb& p = at(x, y);
            if (lt < width && lt <= rb)
                p = Mix(p, palette::White, light * (1.0f - static_cast<float>(lt) / width));
            else if (rb < width)
                p = Mix(p, palette::Black, dark * (1.0f - static_cast<float>(rb) / width));
        }
}

void Canvas::line(float x0, float y0, float x1, float y1, float width, const Rgb& c, float alpha) {
    const float dx = x1 - x0, dy = y1 - y0, len2 = dx * dx + dy * dy;
    const int bx0 = static_cast<int>(std::floor(std::min(x0, x1) - width - 1));
    const int bx1 = static_cast<int>(std::ceil(std::max(x0, x1) + width + 1));
    const int by0 = static_cast<int>(std::floor(std::min(y0, y1) - width - 1));
    const int by1 = static_cast<int>(std::ceil(std::max(y0, y1) + width + 1));
    for (int y = by0; y <= by1; ++y)
        for (int x = bx0; x <= bx1; ++x) {
            const float px0 = x + 0.5f - x0, py0 = y + 0.5f - y0;
            const float t = len2 > 0 ? std::clamp((px0 * dx + py0 * dy) / len2, 0.0f, 1.0f) : 0;
            const float d = std::hypot(px0 - t * dx, py0 - t * dy);
            blend(x, y, c, alpha * std::clamp(width / 2 - d + 0.5f, 0.0f, 1.0f));
        }
}

void Canvas::grain(const Noise& n, float scale, float amount, int period) {
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const float k = 1 + amount * (n.fbm(x / scale, y / scale, 3, period) - 0.5f);
            at(x, y) = Scale(at(x, y), k);
        }
}

namespace {
SDL_Surface* ToSurface(const Canvas& c) {
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, c.w, c.h, 24, SDL_PIXELFORMAT_RGB24);
    if (!s) throw std::runtime_error(SDL_GetError());
    auto byte = [](float v) { return static_cast<Uint8>(std::clamp(std::lround(v), 0L, 255L)); };
    for (int y = 0; y < c.h; ++y) {
        auto* row = static_cast<Uint8*>(s->pixels) + y * s->pitch;
        for (int x = 0; x < c.w; ++x) {
            const Rgb& p = c.at(x, y);
            row[3 * x] = byte(p.r);
            row[3 * x + 1] = byte(p.g);
            row[3 * x + 2] = byte(p.b);
        }
    }
    return s;
}
}  // namespace

void Canvas::saveBmp(const std::string& path) const {
    SDL_Surface* s = ToSurface(*this);
    const int rc = SDL_SaveBMP(s, path.c_str());
    SDL_FreeSurface(s);
    if (rc != 0) throw std::runtime_error(path + ": " + SDL_GetError());
}

void Canvas::saveJpg(const std::string& path, int quality) const {
    SDL_Surface* s = ToSurface(*this);
    const int rc = IMG_SaveJPG(s, path.c_str(), quality);
    SDL_FreeSurface(s);
    if (rc != 0) throw std::runtime_error(path + ": " + IMG_GetError());
}

}  // namespace qb::content
