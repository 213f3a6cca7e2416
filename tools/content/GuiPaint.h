// Pictures for the menus: a float canvas plus an "inside" mask. Pixels left
// outside every shape are written as the bitmap's exact colour key; pixels
// inside never equal it. Shapes have hard edges against the key (a soft
// edge would leave a fringe of key colour); text inside is anti-aliased,
// rendered with SDL2_ttf from a font found through fontconfig.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/content/WorldPaint.h"

namespace qb::content {

// The font file fontconfig picks for a pattern such as "DejaVu Sans:bold".
std::string FindFontFile(const std::string& pattern);

struct TextStyle {
    int px = 20;  // pixel height of the font
    bool bold = true;
    Rgb colour{255, 255, 255};
    float alpha = 1;
    int align = 0;         // -1 left at x, 0 centred on x, 1 right at x
    bool shadow = false;   // a dark copy one pixel down-right beneath
    bool outline = false;  // a dark ring around the letters (for text on the key)
    Rgb outlineColour{12, 16, 40};
    bool condensed = false;  // the narrower companion face
};

class Picture {
public:
    Picture(int w, int h, Rgb key);
    int w() const { return canvas.w; }
    int h() const { return canvas.h; }

    // Fills a rounded rectangle with a vertical gradient and marks it inside.
    void panel(float x, float y, float pw, float ph, float radius, const Rgb& top, const Rgb& bottom);
    // A line of `width` along the inner edge of a rounded rectangle.
    void border(float x, float y, float pw, float ph, float radius, float width, const Rgb& c,
                float alpha = 1);
    // Draws text with its middle at height cy; returns its width in pixels.
    int text(const std::string& s, float x, float cy, const TextStyle& st);
    // Width of a text in a style, without drawing.
    static int textWidth(const std::string& s, const TextStyle& st);
    // Marks a disc inside and fills it.
    void disc(float cx, float cy, float r, const Rgb& c);
    // A five-pointed star, filled, marked inside.
    void star(float cx, float cy, float outer, float inner, const Rgb& top, const Rgb& bottom);
    // Arrow triangle pointing left (dir -1) or right (+1), filled.
    void arrow(float cx, float cy, float size, int dir, const Rgb& c);
    // Copies a picture file (scaled to fit the rectangle) and marks it inside.
    void image(const std::string& path, int x, int y, int iw, int ih);
    void markInside(int x, int y) { inside[static_cast<size_t>(y) * canvas.w + x] = 1; }
    bool isInside(int x, int y) const { return inside[static_cast<size_t>(y) * canvas.w + x] != 0; }

    // Writes a 24-bit BMP: the key outside, never the key inside.
    void save(const std::string& path) const;

    Canvas canvas;
    std::vector<uint8_t> inside;
    Rgb key;
};

}  // namespace qb::content
