#include "tools/content/GuiStyle.h"

#include <algorithm>

namespace qb::content::gui {

Picture Button(int w, int h, const std::string& label, int px, bool lit, Rgb key) {
    Picture pic(w, h, key);
    const float r = static_cast<float>(h) * 0.3f;
    pic.panel(0, 0, static_cast<float>(w), static_cast<float>(h), r, lit ? LitTop : ButtonTop,
              lit ? LitBottom : ButtonBottom);
    pic.border(0, 0, static_cast<float>(w), static_cast<float>(h), r, 2, lit ? Rgb{255, 244, 214} : p::Cyan);
    // A soft gloss over the upper half.
    for (int y = 3; y < h / 2; ++y)
        for (int x = 3; x < w - 3; ++x)
            if (pic.isInside(x, y)) pic.canvas.blend(x, y, p::White, lit ? 0.16f : 0.08f);
    TextStyle st;
    st.px = px;
    st.colour = lit ? Navy : p::White;
    st.shadow = !lit;
    pic.text(label, static_cast<float>(w) / 2, static_cast<float>(h) / 2, st);
    return pic;
}

Picture ArrowButton(int w, int h, int dir, bool lit, bool round) {
    Picture pic(w, h, KeyBlack);
    // A round button stands a little inside its square, so a label beside
    // it (the instruction pages' "Page 2 / 3") keeps clear of it.
    const float m = round ? 3.0f : 0.0f;
    const float fw = static_cast<float>(w) - 2 * m, fh = static_cast<float>(h) - 2 * m;
    const float r = round ? std::min(fw, fh) / 2 : std::min(fw, fh) * 0.25f;
    pic.panel(m, m, fw, fh, r, lit ? LitTop : ButtonTop, lit ? LitBottom : ButtonBottom);
    pic.border(m, m, fw, fh, r, 2, lit ? Rgb{255, 244, 214} : p::Cyan);
    const float size = std::min(fw, fh) * 0.5f;
    pic.arrow(m + fw / 2 + 1, m + fh / 2 + 2, size, dir, lit ? Rgb{120, 50, 10} : Rgb{6, 10, 30});
    pic.arrow(m + fw / 2, m + fh / 2, size, dir, lit ? Navy : p::White);
    return pic;
}

Picture Tag(int w, int h, const std::string& label, int px, Rgb key) {
    Picture pic(w, h, key);
    const float r = static_cast<float>(h) * 0.3f;
    pic.panel(0, 0, static_cast<float>(w), static_cast<float>(h), r, Rgb{30, 40, 86}, Rgb{14, 18, 46});
    pic.border(0, 0, static_cast<float>(w), static_cast<float>(h), r, 1, p::Steel);
    TextStyle st;
    st.px = px;
    st.colour = p::Gold;
    pic.text(label, static_cast<float>(w) / 2, static_cast<float>(h) / 2, st);
    return pic;
}

Picture GlassPanel(int w, int h, const Rgb& top, const Rgb& bottom, const Rgb& edge) {
    Picture pic(w, h, KeyBlack);
    pic.panel(0, 0, static_cast<float>(w), static_cast<float>(h), 16, top, bottom);
    pic.border(0, 0, static_cast<float>(w), static_cast<float>(h), 16, 3, edge);
    return pic;
}

TextStyle Outlined(int px, const Rgb& colour) {
    TextStyle st;
    st.px = px;
    st.colour = colour;
    st.outline = true;
    return st;
}

void Save(const Picture& pic, const std::string& dir, const std::string& name) {
    pic.save(dir + name);
}

}  // namespace qb::content::gui
