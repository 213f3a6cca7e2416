#include "tools/content/GuiPaint.h"

#include <SDL2/SDL.h>
#include <SDL2/SDL_image.h>
#include <SDL2/SDL_ttf.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace qb::content {

std::string FindFontFile(const std::string& pattern) {
    if (!FcInit()) throw std::runtime_error("fontconfig did not start");
    FcPattern* pat = FcNameParse(reinterpret_cast<const FcChar8*>(pattern.c_str()));
    FcConfigSubstitute(nullptr, pat, FcMatchPattern);
    FcDefaultSubstitute(pat);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pat, &result);
    std::string file;
    FcChar8* f = nullptr;
    if (match && FcPatternGetString(match, FC_FILE, 0, &f) == FcResultMatch)
        file = reinterpret_cast<char*>(f);
    if (match) FcPatternDestroy(match);
    FcPatternDestroy(pat);
    if (file.empty()) throw std::runtime_error("no font for " + pattern);
    return file;
}

namespace {

// The fonts stay open for the whole run and are closed at its end, so the
// sanitizer build of the tool reports no leaks.
struct FontCache {
    std::map<int, TTF_Font*> open;
    bool started = false;
    ~FontCache() {
        for (auto& entry : open) TTF_CloseFont(entry.second);
        if (started) TTF_Quit();
        FcFini();
    }
};

TTF_Font* Font(int px, bool bold, bool condensed) {
    static FontCache cache;
    auto& open = cache.open;
    if (!cache.started) {
        if (TTF_Init() != 0) throw std::runtime_error(TTF_GetError());
        cache.started = true;
    }
    const int id = px * 4 + (bold ? 1 : 0) + (condensed ? 2 : 0);
    auto it = open.find(id);
    if (it != open.end()) return it->second;
    std::string pattern = condensed ? "DejaVu Sans Condensed" : "DejaVu Sans";
    pattern += bold ? ":bold" : ":regular";
    TTF_Font* font = TTF_OpenFont(FindFontFile(pattern).c_str(), px);
    if (!font) throw std::runtime_error(TTF_GetError());
    open[id] = font;
    return font;
}

bool InRoundRect(float px, float py, float x, float y, float w, float h, float r) {
    if (px < x || py < y || px > x + w || py > y + h) return false;
    const float cx = std::clamp(px, x + r, x + w - r), cy = std::clamp(py, y + r, y + h - r);
    return (px - cx) * (px - cx) + (py - cy) * (py - cy) <= r * r;
}

}  // namespace

Picture::Picture(int w, int h, Rgb k) : canvas(w, h), inside(static_cast<size_t>(w) * h, 0), key(k) {
    canvas.fill(key);
}

void Picture::panel(float x, float y, float pw, float ph, float radius, const Rgb& top, const Rgb& bottom) {
    for (int py = 0; py < h(); ++py)
        for (int px = 0; px < w(); ++px) {
            if (!InRoundRect(px + 0.5f, py + 0.5f, x, y, pw, ph, radius)) continue;
            canvas.at(px, py) = Mix(top, bottom, std::clamp((py + 0.5f - y) / ph, 0.0f, 1.0f));
            markInside(px, py);
        }
}

void Picture::border(float x, float y, float pw, float ph, float radius, float width, const Rgb& c,
                     float alpha) {
    for (int py = 0; py < h(); ++py)
        for (int px = 0; px < w(); ++px) {
            const float fx = px + 0.5f, fy = py + 0.5f;
            if (!InRoundRect(fx, fy, x, y, pw, ph, radius)) continue;
            if (InRoundRect(fx, fy, x + width, y + width, pw - 2 * width, ph - 2 * width,
                            std::max(0.0f, radius - width)))
                continue;
            canvas.blend(px, py, c, alpha);
            markInside(px, py);
        }
}

int Picture::textWidth(const std::string& s, const TextStyle& st) {
    int tw = 0, th = 0;
    TTF_SizeUTF8(Font(st.px, st.bold, st.condensed), s.c_str(), &tw, &th);
    return tw;
}

int Picture::text(const std::string& s, float x, float cy, const TextStyle& st) {
    if (s.empty()) return 0;
    TTF_Font* font = Font(st.px, st.bold, st.condensed);
    SDL_Surface* raw = TTF_RenderUTF8_Blended(font, s.c_str(), SDL_Color{255, 255, 255, 255});
    if (!raw) throw std::runtime_error(TTF_GetError());
    SDL_Surface* g = SDL_ConvertSurfaceFormat(raw, SDL_PIXELFORMAT_ARGB8888, 0);
    SDL_FreeSurface(raw);
    if (!g) throw std::runtime_error(SDL_GetError());
    const int gw = g->w, gh = g->h;
    int left = static_cast<int>(std::lround(x));
    if (st.align == 0) left -= gw / 2;
    if (st.align > 0) left -= gw;
    const int top = static_cast<int>(std::lround(cy - gh / 2.0f));
    auto coverage = [g](int gx, int gy) -> float {
        if (gx < 0 || gy < 0 || gx >= g->w || gy >= g->h) return 0;
        const auto* row =
            reinterpret_cast<const uint32_t*>(static_cast<const uint8_t*>(g->pixels) + gy * g->pitch);
        return static_cast<float>(row[gx] >> 24) / 255.0f;
    };
    auto stamp = [&](int dx, int dy, const Rgb& c, float a, float markFrom) {
        for (int gy = 0; gy < gh; ++gy)
            for (int gx = 0; gx < gw; ++gx) {
                const float k = coverage(gx, gy);
                if (k <= 0) continue;
                const int px = left + gx + dx, py = top + gy + dy;
                if (px < 0 || py < 0 || px >= w() || py >= h()) continue;
                canvas.blend(px, py, c, k * a);
                if (k >= markFrom) markInside(px, py);
            }
    };
    if (st.outline) {
        // Text standing on the colour key: a solid dark ring keeps the
        // letters' soft edges away from the transparent pixels.
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx)
                if (dx * dx + dy * dy <= 5) stamp(dx, dy, st.outlineColour, 1, 0.3f);
    }
    if (st.shadow) stamp(1, 2, Rgb{6, 8, 22}, 0.7f * st.alpha, 2);
    stamp(0, 0, st.colour, st.alpha, st.outline ? 0.3f : 2);
    SDL_FreeSurface(g);
    return gw;
}

void Picture::disc(float cx, float cy, float r, const Rgb& c) {
    for (int py = 0; py < h(); ++py)
        for (int px = 0; px < w(); ++px) {
            const float dx = px + 0.5f - cx, dy = py + 0.5f - cy;
            if (dx * dx + dy * dy > r * r) continue;
            canvas.at(px, py) = c;
            markInside(px, py);
        }
}

void Picture::star(float cx, float cy, float outer, float inner, const Rgb& top, const Rgb& bottom) {
    float vx[10], vy[10];
    for (int i = 0; i < 10; ++i) {
        const float a = -1.5707963f + static_cast<float>(i) * 0.62831853f;
        const float r = (i % 2 == 0) ? outer : inner;
        vx[i] = cx + r * std::cos(a);
        vy[i] = cy + r * std::sin(a);
    }
    for (int py = 0; py < h(); ++py)
        for (int px = 0; px < w(); ++px) {
            const float fx = px + 0.5f, fy = py + 0.5f;
            bool in = false;
            for (int i = 0, j = 9; i < 10; j = i++)
                if ((vy[i] > fy) != (vy[j] > fy) &&
                    fx < (vx[j] - vx[i]) * (fy - vy[i]) / (vy[j] - vy[i]) + vx[i])
                    in = !in;
            if (!in) continue;
            canvas.at(px, py) = Mix(top, bottom, std::clamp((fy - (cy - outer)) / (2 * outer), 0.0f, 1.0f));
            markInside(px, py);
        }
}

void Picture::arrow(float cx, float cy, float size, int dir, const Rgb& c) {
    const float tipX = cx + dir * size * 0.5f, baseX = cx - dir * size * 0.5f;
    for (int py = 0; py < h(); ++py)
        for (int px = 0; px < w(); ++px) {
            const float fx = px + 0.5f, fy = py + 0.5f;
            const float t = (fx - baseX) / (tipX - baseX);  // 0 at the base, 1 at the tip
            if (t < 0 || t > 1) continue;
            if (std::fabs(fy - cy) > (1 - t) * size * 0.55f) continue;
            canvas.at(px, py) = c;
            markInside(px, py);
        }
}

void Picture::image(const std::string& path, int x, int y, int iw, int ih) {
    SDL_Surface* raw = IMG_Load(path.c_str());
    if (!raw) throw std::runtime_error(path + ": " + IMG_GetError());
    SDL_Surface* s = SDL_ConvertSurfaceFormat(raw, SDL_PIXELFORMAT_ARGB8888, 0);
    SDL_FreeSurface(raw);
    if (!s) throw std::runtime_error(SDL_GetError());
    // Box filter: average the source pixels that fall on each target pixel.
    for (int ty = 0; ty < ih; ++ty)
        for (int tx = 0; tx < iw; ++tx) {
            const int x0 = tx * s->w / iw, x1 = std::max(x0 + 1, (tx + 1) * s->w / iw);
            const int y0 = ty * s->h / ih, y1 = std::max(y0 + 1, (ty + 1) * s->h / ih);
            float r = 0, g = 0, b = 0;
            int n = 0;
            for (int sy = y0; sy < y1; ++sy) {
                const auto* row =
                    reinterpret_cast<const uint32_t*>(static_cast<const uint8_t*>(s->pixels) + sy * s->pitch);
                for (int sx = x0; sx < x1; ++sx, ++n) {
                    r += static_cast<float>((row[sx] >> 16) & 255);
                    g += static_cast<float>((row[sx] >> 8) & 255);
                    b += static_cast<float>(row[sx] & 255);
                }
            }
            const int px = x + tx, py = y + ty;
            if (px < 0 || py < 0 || px >= w() || py >= h()) continue;
            canvas.at(px, py) = Rgb{r / n, g / n, b / n};
            markInside(px, py);
        }
    SDL_FreeSurface(s);
}

void Picture::save(const std::string& path) const {
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, w(), h(), 24, SDL_PIXELFORMAT_RGB24);
    if (!s) throw std::runtime_error(SDL_GetError());
    auto byte = [](float v) { return static_cast<int>(std::clamp(std::lround(v), 0L, 255L)); };
    const int kr = byte(key.r), kg = byte(key.g), kb = byte(key.b);
    for (int y = 0; y < h(); ++y) {
        auto* row = static_cast<Uint8*>(s->pixels) + y * s->pitch;
        for (int x = 0; x < w(); ++x) {
            int r = kr, g = kg, b = kb;
            if (isInside(x, y)) {
                const Rgb& p = canvas.at(x, y);
                r = byte(p.r);
                g = byte(p.g);
                b = byte(p.b);
                // A shape's pixel must never turn transparent.
                if (r == kr && g == kg && b == kb) b = kb < 255 ? b + 1 : b - 1;
            }
            row[3 * x] = static_cast<Uint8>(r);
            row[3 * x + 1] = static_cast<Uint8>(g);
            row[3 * x + 2] = static_cast<Uint8>(b);
        }
    }
    const int rc = SDL_SaveBMP(s, path.c_str());
    SDL_FreeSurface(s);
    if (rc != 0) throw std::runtime_error(path + ": " + SDL_GetError());
}

}  // namespace qb::content
