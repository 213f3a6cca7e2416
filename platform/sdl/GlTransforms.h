// How the Direct3D-shaped transforms become OpenGL ones. The game's matrices
// are row-vector, left-handed, with clip depth 0..w; GL wants depth -w..w.
// A row-vector matrix laid out row by row is exactly the column-major array
// GL loads, so no transposing is needed anywhere.
#pragma once

#include "platform/Types.h"

namespace qb {

// Applied after the projection: z' = 2z - w, so D3D's depth 0..1 becomes
// GL's -1..1 while x, y and w are untouched.
Matrix4 D3DDepthToGl();

// Projection for pre-transformed vertices: back-buffer pixels (y down, pixel
// centres on whole numbers as Direct3D has them) and depth 0..1 to GL's
// normalised coordinates.
// `scale` back-buffer pixels to a screen unit (pixel centres stay on pixels).
Matrix4 ScreenSpaceProjection(int bufferW, int bufferH, float scale = 1.0f);

// Direct3D's point-sprite size on screen with point scaling on:
// viewport height * size * sqrt(1 / (A + B*d + C*d*d)). The game keeps the
// default factors A = 1, B = C = 0, which makes it viewport height * size.
float PointSpriteScreenSize(float size, int viewportHeight, float distance = 0.0f, float a = 1.0f,
                            float b = 0.0f, float c = 0.0f);

}  // namespace qb
