// Fitting the fixed-size back buffer into whatever window or desktop we got:
// scaled to fit, shape kept, black bars around it.
#pragma once

namespace qb {

struct ViewRect {
    int x = 0, y = 0, w = 0, h = 0;  // from the window's top-left corner
};

// The largest rectangle of the back buffer's shape, centred in the window.
ViewRect LetterboxRect(int windowW, int windowH, int bufferW, int bufferH);

// A window position (pixels from the top-left) as a back-buffer position.
// Positions over the bars land outside 0..buffer size.
void WindowToBackBuffer(const ViewRect& picture, int bufferW, int bufferH, float wx, float wy, float& bx,
                        float& by);
// The same in screen units, `scale` back-buffer pixels each: where the
// menus' layout (with its offsets) places things.
void WindowToScreenUnits(const ViewRect& picture, int bufferW, int bufferH, float scale, float wx, float wy,
                         float& sx, float& sy);

}  // namespace qb
