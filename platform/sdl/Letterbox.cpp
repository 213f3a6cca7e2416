#include "platform/sdl/Letterbox.h"

#include <algorithm>
#include <cmath>

namespace qb {

ViewRect LetterboxRect(int windowW, int windowH, int bufferW, int bufferH) {
    ViewRect r;
    if (windowW <= 0 || windowH <= 0 || bufferW <= 0 || bufferH <= 0) return r;
    const double scale =
        std::min(static_cast<double>(windowW) / bufferW, static_cast<double>(windowH) / bufferH);
    r.w = std::min(windowW, static_cast<int>(std::lround(bufferW * scale)));
    r.h = std::min(windowH, static_cast<int>(std::lround(bufferH * scale)));
    r.x = (windowW - r.w) / 2;
    r.y = (windowH - r.h) / 2;
    return r;
}

void WindowToBackBuffer(const ViewRect& picture, int bufferW, int bufferH, float wx, float wy, float& bx,
                        float& by) {
    if (picture.w <= 0 || picture.h <= 0) {
        bx = wx;
        by = wy;
        return;
    }
    bx = static_cast<float>((static_cast<double>(wx) - picture.x) * bufferW / picture.w);
    by = static_cast<float>((static_cast<double>(wy) - picture.y) * bufferH / picture.h);
}

void WindowToScreenUnits(const ViewRect& picture, int bufferW, int bufferH, float scale, float wx, float wy,
                         float& sx, float& sy) {
    WindowToBackBuffer(picture, bufferW, bufferH, wx, wy, sx, sy);
    if (scale > 0) {
        sx /= scale;
        sy /= scale;
    }
}

}  // namespace qb
