// One camera for every track of a file, to put whole tracks side by side (a
// contact sheet): an oblique view from behind, above and to the right, so top
// faces, the right-hand faces and the faces that stand across the road all
// show, and a step reads as a step. A track is long and thin, so its picture
// is folded into three rows like lines of text, the start at the top left.
// The scales along and across and the band of the rows are fitted once to all
// the tracks given, so one track can be compared with another by eye: a short
// track fills less, a narrow one stays thin.
#pragma once

#include <vector>

#include "level/LevelRecords.h"
#include "platform/Types.h"

namespace qb {

// An axis-aligned box in world units; `empty` while nothing has been added.
struct TrackBox {
    Vector3 min{0, 0, 0}, max{0, 0, 0};
    bool empty = true;
    void add(const Vector3& lo, const Vector3& hi);
};

// Everything that can be drawn: blocks, ramps, platforms over the whole of
// their travel, and stars as the unit box they stand in.
TrackBox TrackBounds(const LevelRecord& track);

class TrackOverview {
public:
    // Fitted to `tracks` (their bounds) for a picture `width` by `height`
    // pixels.
    TrackOverview(const std::vector<TrackBox>& tracks, float width, float height);

    // Where a world point lands: across (u) and up (v) the unfolded strip,
    // and its depth away from the viewer.
    float Across(const Vector3& p) const;
    float Up(const Vector3& p) const;
    float Depth(const Vector3& p) const;

    // The projection that draws row `row` (0 at the top) of a track with
    // bounds `track`, the view being the identity: world to Direct3D's clip
    // space (depth 0..1), a parallel projection.
    Matrix4 RowProjection(const TrackBox& track, int row) const;
    // The rows of the picture, and those the track needs (1 to Rows()).
    int Rows() const { return rows_; }
    int RowsUsed(const TrackBox& track) const;
    // World units across one row; pixels a world unit along the strip and
    // up it.
    float RowLength() const { return rowLength_; }
    float Scale() const { return scale_; }
    float UpScale() const { return upScale_; }

private:
    float AcrossStart(const TrackBox& track) const;

    float width_, height_;
    int rows_ = 3;
    float rowLength_ = 1, scale_ = 1, upScale_ = 1;
    float lead_ = 0;  // free room before a track's start
    float bandMiddle_ = 0;
    float depthMin_ = 0, depthRange_ = 1;
};

}  // namespace qb
