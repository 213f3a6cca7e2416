#include "level/TrackOverview.h"

#include <algorithm>
#include <cmath>

namespace qb {

namespace {

// How the world folds onto the picture: the driver's left (-x) rises, a unit
// of height rises less, and height also leans forward so the faces across the
// road get a width of their own. The depth runs along the one direction these
// three leave unseen, pointing away from the viewer.
constexpr float kAcrossRise = 0.8f, kHeightRise = 0.6f, kLean = 0.4f;
constexpr Vector3 kDepthAxis{-kHeightRise / kAcrossRise, -1.0f, kLean};
// Room left free before and after the longest track, and above and below
// the band (between the rows).
constexpr float kMargin = 0.015f, kBandMargin = 0.06f;

template <typename F>
void ForCorners(const TrackBox& b, F f) {
    for (int i = 0; i < 8; ++i)
        f(Vector3{(i & 1) ? b.max.x : b.min.x, (i & 2) ? b.max.y : b.min.y, (i & 4) ? b.max.z : b.min.z});
}

template <typename Record>
void AddBox(TrackBox& box, const Record& r, float extraX) {
    box.add({r.X - extraX, r.Y, r.Z}, {r.X + r.scaleX + extraX, r.Y + r.scaleY, r.Z + r.scalez});
}

}  // namespace

void TrackBox::add(const Vector3& lo, const Vector3& hi) {
    const Vector3 a{std::min(lo.x, hi.x), std::min(lo.y, hi.y), std::min(lo.z, hi.z)};
    const Vector3 b{std::max(lo.x, hi.x), std::max(lo.y, hi.y), std::max(lo.z, hi.z)};
    if (empty) {
        min = a;
        max = b;
        empty = false;
        return;
    }
    min = {std::min(min.x, a.x), std::min(min.y, a.y), std::min(min.z, a.z)};
    max = {std::max(max.x, b.x), std::max(max.y, b.y), std::max(max.z, b.z)};
}

TrackBox TrackBounds(const LevelRecord& track) {
    TrackBox box;
    for (const BlockRecord& b : track.Blocks) AddBox(box, b, 0.0f);
    for (const RampRecord& r : track.Ramps) AddBox(box, r, 0.0f);
    // A platform may slide its whole distance either way.
    for (const MovingPlatformRecord& p : track.Platforms) AddBox(box, p, static_cast<float>(p.Mdist));
    for (const StarRecord& s : track.Stars)
        box.add({s.X - 0.5f, s.Y - 0.5f, s.Z - 0.5f}, {s.X + 0.5f, s.Y + 0.5f, s.Z + 0.5f});
    return box;
}

float TrackOverview::Across(const Vector3& p) const {
    return p.z + kLean * p.y;
}

float TrackOverview::Up(const Vector3& p) const {
    return -kAcrossRise * p.x + kHeightRise * p.y;
}

float TrackOverview::Depth(const Vector3& p) const {
    return kDepthAxis.x * p.x + kDepthAxis.y * p.y + kDepthAxis.z * p.z;
}

TrackOverview::TrackOverview(const std::vector<TrackBox>& tracks, float width, float height)
    : width_(std::max(width, 1.0f)), height_(std::max(height, 1.0f)) {
    float longest = 0, upMin = 0, upMax = 0, depthMin = 0, depthMax = 0;
    bool first = true;
    for (const TrackBox& t : tracks) {
        if (t.empty) continue;
        float a0 = 0, a1 = 0;
        bool firstCorner = true;
        ForCorners(t, [&](const Vector3& c) {
            const float a = Across(c), u = Up(c), d = Depth(c);
            a0 = firstCorner ? a : std::min(a0, a);
            a1 = firstCorner ? a : std::max(a1, a);
            upMin = first ? u : std::min(upMin, u);
            upMax = first ? u : std::max(upMax, u);
            depthMin = first ? d : std::min(depthMin, d);
            depthMax = first ? d : std::max(depthMax, d);
            firstCorner = first = false;
        });
        longest = std::max(longest, a1 - a0);
    }
    const float band = std::max(upMax - upMin, 1.0f) * (1.0f + 2 * kBandMargin);
    const float strip = std::max(longest, 1.0f) * (1.0f + 2 * kMargin);
    // The two directions are fitted apart: the longest track fills the rows,
    // the band of all tracks fills a row's height. A track is some fifty
    // times longer than wide, so the sideways shapes come out stretched,
    // which is what lets one tell them apart.
    scale_ = width_ * static_cast<float>(rows_) / strip;
    upScale_ = height_ / static_cast<float>(rows_) / band;
    rowLength_ = width_ / scale_;
    lead_ = std::max(longest, 1.0f) * kMargin;
    bandMiddle_ = (upMin + upMax) / 2;
    depthMin_ = depthMin - 1.0f;
    depthRange_ = depthMax - depthMin + 2.0f;
}

float TrackOverview::AcrossStart(const TrackBox& track) const {
    float start = 0;
    bool first = true;
    ForCorners(track, [&](const Vector3& c) {
        start = first ? Across(c) : std::min(start, Across(c));
        first = false;
    });
    return start - lead_;
}

int TrackOverview::RowsUsed(const TrackBox& track) const {
    if (track.empty) return 1;
    float end = 0;
    bool first = true;
    ForCorners(track, [&](const Vector3& c) {
        end = first ? Across(c) : std::max(end, Across(c));
        first = false;
    });
    const int rows = static_cast<int>(std::ceil((end - AcrossStart(track)) / rowLength_));
    return std::clamp(rows, 1, rows_);
}

Matrix4 TrackOverview::RowProjection(const TrackBox& track, int row) const {
    const float rowStart = AcrossStart(track) + static_cast<float>(row) * rowLength_;
    const float ax = 2.0f / rowLength_;
    const float up = 2.0f * upScale_ / height_;
    const float rowMiddle = 1.0f - (2.0f * static_cast<float>(row) + 1.0f) / static_cast<float>(rows_);
    const float d = 1.0f / depthRange_;
    Matrix4 m;
    // Row vectors: [x y z 1] * m.
    m.m[0][0] = 0;
    m.m[1][0] = kLean * ax;
    m.m[2][0] = ax;
    m.m[3][0] = -rowStart * ax - 1.0f;
    m.m[0][1] = -kAcrossRise * up;
    m.m[1][1] = kHeightRise * up;
    m.m[2][1] = 0;
    m.m[3][1] = rowMiddle - bandMiddle_ * up;
    m.m[0][2] = kDepthAxis.x * d;
    m.m[1][2] = kDepthAxis.y * d;
    m.m[2][2] = kDepthAxis.z * d;
    m.m[3][2] = -depthMin_ * d;
    m.m[0][3] = m.m[1][3] = m.m[2][3] = 0;
    m.m[3][3] = 1;
    return m;
}

}  // namespace qb
