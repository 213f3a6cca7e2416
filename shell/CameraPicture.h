// Where a point of the world lands on the screen in a race: the camera at
// its eye looking at its look-at point, through the race projection, on a
// screen of the video mode's size.
#pragma once

#include "platform/Types.h"

namespace qb {

class CameraPicture {
public:
    CameraPicture(const Vector3& eye, const Vector3& lookAt, float width, float height);

    struct Spot {
        bool inFront = false;  // between the near and the far plane
        float x = 0, y = 0;    // pixels from the top left corner
    };
    Spot Where(const Vector3& p) const;
    // In front of the camera and at least `margin` (a share of the width and
    // of the height) inside every edge of the screen.
    bool Inside(const Vector3& p, float margin) const;
    float width() const { return width_; }
    float height() const { return height_; }

private:
    Matrix4 viewProjection_;
    float width_, height_;
};

}  // namespace qb
