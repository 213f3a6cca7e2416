#include "shell/LintSight.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "level/TrackObjects.h"
#include "platform/DirectX.h"
#include "shell/CameraPicture.h"
#include "shell/SimDriver.h"
#include "shell/frmGame.h"

namespace qb {

namespace {

// The two video modes; the race projection is the same in both, so what
// differs is only the size of the screen it is stretched over.
constexpr float Modes[2][2] = {{800, 600}, {1024, 768}};
// A step this high or lower reads as a seam in the road.
constexpr float Seam = 0.25f;
// Blocks and ramps are drawn from this far behind to this far ahead of the car.
constexpr float DrawnBehind = 25, DrawnAhead = 50;

std::string Num(double v) {
    std::ostringstream s;
    s.setf(std::ios::fixed);
    s.precision(1);
    s << v;
    return s.str();
}

std::string At(const Vector3& p) {
    return "x " + Num(p.x) + ", y " + Num(p.y) + ", z " + Num(p.z);
}

struct TopFace {
    float x0, x1, z0, z1, top, low;
};

TopFace Top(const Vector3& greatest, const Vector3& smallest) {
    return {smallest.x, greatest.x, smallest.z, greatest.z, greatest.y, smallest.y};
}

bool Over(const TopFace& f, float x, float z) {
    return x >= f.x0 && x <= f.x1 && z >= f.z0 && z <= f.z1;
}

}  // namespace

void SightCheck::NoteHazard(const std::string& key, const std::string& what, const Vector3& point,
                            bool platform) {
    if (std::find(hazardKeys_.begin(), hazardKeys_.end(), key) != hazardKeys_.end()) return;
    hazardKeys_.push_back(key);
    hazards_.push_back({what, point, static_cast<int64_t>(frames_.size()), platform});
}

void SightCheck::Observe(frmGame& game, const SimRow& row) {
    const TrackObjects& t = *game.track;
    const Vector3 p = row.position;
    frames_.push_back({p, game.dx->CameraEye, game.dx->CameraLookAt});

    if (starVisible_.empty())
        for (int32_t s = 0; s <= t.StarUpper; ++s) starVisible_.push_back(true);
    for (int32_t s = 0; s <= t.StarUpper; ++s) {
        const clsStar& star = *t.stars[static_cast<size_t>(s)];
        if (starVisible_[static_cast<size_t>(s)] && !star.visible()) {
            starVisible_[static_cast<size_t>(s)] = false;
            starsTaken_.push_back({Vector3{static_cast<float>(star.Xpos()), static_cast<float>(star.Ypos()),
                                           static_cast<float>(star.Zpos())},
                                   row.frame});
        }
    }

    const float carLeft = p.x - 0.4f, carRight = p.x + 0.4f;
    auto clampX = [&](const TopFace& f) { return std::clamp(p.x, f.x0, f.x1); };
    bool supported = false;
    float supportTop = -1e9f;
    auto support = [&](const TopFace& f) {
        if (Over(f, p.x, p.z - 0.4f) && f.low <= p.y + 0.3f) {
            supported = true;
            supportTop = std::max(supportTop, f.top);
        }
    };
    Vector3 g, s;
    for (int32_t i = 0; i <= t.BlockUpper; ++i) {
        const clsBlock& b = *t.blocks[static_cast<size_t>(i)];
        b.GetCollisionPlaneBounds(3, g, s);
        const TopFace f = Top(g, s);
        support(f);
        const bool sideBySide = f.x0 < carRight && f.x1 > carLeft;
        if (b.changeactioncode() == 6 && p.z >= f.z0 && p.z - 0.8f <= f.z1 &&
            std::max(f.x0 - carRight, carLeft - f.x1) <= 1.0f)
            NoteHazard("deadly " + std::to_string(i), "the deadly tile at " + At({clampX(f), f.top, f.z0}),
                       {clampX(f), f.top, f.z0}, false);
        if (haveGround_ && sideBySide && previous_.z < f.z0 && f.z0 <= p.z + 0.3f && f.top > ground_ + Seam &&
            b.Ypos() < ground_ + 0.8f)
            NoteHazard("wall " + std::to_string(i),
                       "the " + Num(f.top - ground_) + "-unit wall face at " + At({clampX(f), f.top, f.z0}),
                       {clampX(f), f.top, f.z0}, false);
    }
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) {
        const clsMovingPlatform& m = *t.platforms[static_cast<size_t>(i)];
        m.GetCollisionPlaneBounds(3, g, s);
        const TopFace f = Top(g, s);
        support(f);
        if (haveGround_ && f.x0 < carRight && f.x1 > carLeft && previous_.z < f.z0 && f.z0 <= p.z + 0.3f &&
            f.top > ground_ - Seam && m.Ypos() < ground_ + 0.8f)
            NoteHazard("platform " + std::to_string(i),
                       "the front of the moving platform at " + At({clampX(f), f.top, f.z0}) +
                           " (level with or above the road, so it stops the car like a wall)",
                       {clampX(f), f.top, f.z0}, true);
    }
    for (int32_t i = 0; i <= t.RampUpper; ++i) {
        const clsRamp& r = *t.ramps[static_cast<size_t>(i)];
        for (int face : {3, 6}) {
            r.GetCollisionPlaneBounds(face, g, s);
            support(Top(g, s));
        }
    }
    if (supported_ && !supported && haveGround_)
        NoteHazard("gap " + std::to_string(static_cast<int>(std::lround(p.z))),
                   "the edge of the gap at " + At({p.x, lastSupportTop_, p.z - 0.4f}),
                   {p.x, lastSupportTop_, p.z - 0.4f}, false);
    if (supported) lastSupportTop_ = supportTop;
    supported_ = supported;
    if (row.onGround) {
        ground_ = p.y;
        haveGround_ = true;
    }
    previous_ = p;
}

bool SightCheck::Visible(const Hazard& h, size_t frame) const {
    const Seen& f = frames_[frame];
    if (!h.platform && (h.point.z < f.car.z - DrawnBehind || h.point.z > f.car.z + DrawnAhead)) return false;
    for (const auto& mode : Modes)
        if (!CameraPicture(f.eye, f.lookAt, mode[0], mode[1]).Inside(h.point, 0)) return false;
    return true;
}

void SightCheck::Judge(LintReport& report) const {
    report.figures.hazards = static_cast<int>(hazards_.size());
    // The car: every corner of its box, every frame, in both modes.
    int64_t firstOut = 0, framesOut = 0;
    std::string edge;
    for (size_t i = 0; i < frames_.size(); ++i) {
        const Seen& f = frames_[i];
        bool out = false;
        for (const auto& mode : Modes) {
            const CameraPicture pic(f.eye, f.lookAt, mode[0], mode[1]);
            for (int c = 0; c < 8 && !out; ++c) {
                const Vector3 corner{f.car.x + ((c & 1) ? 0.4f : -0.4f), f.car.y + ((c & 2) ? 0.8f : 0.0f),
                                     f.car.z - ((c & 4) ? 0.8f : 0.0f)};
                if (pic.Inside(corner, options_.viewMargin)) continue;
                out = true;
                if (firstOut == 0) {
                    const CameraPicture::Spot spot = pic.Where(corner);
                    const float mx = options_.viewMargin * pic.width(),
                                my = options_.viewMargin * pic.height();
                    edge = spot.y < my                  ? "too high (near the top edge)"
                           : spot.y > pic.height() - my ? "too low (near the bottom edge)"
                           : spot.x < mx                ? "too far left"
                                                        : "too far right";
                }
            }
        }
        if (out) {
            if (firstOut == 0) firstOut = static_cast<int64_t>(i) + 1;
            ++framesOut;
        }
    }
    if (firstOut > 0) {
        const Vector3 car = frames_[static_cast<size_t>(firstOut - 1)].car;
        report.findings.push_back(
            {"in view", firstOut,
             "the car at " + At(car) + " is " + edge + " of the picture for " + std::to_string(framesOut) +
                 " frames; the camera follows only along z, so keep the route within about x -9..9 and "
                 "below y 8 (the higher the road, the less of it ahead is in view)"});
    }
    for (const auto& [star, frame] : starsTaken_) {
        const Seen& f = frames_[static_cast<size_t>(std::max<int64_t>(1, frame) - 1)];
        const Vector3 middle{star.x, star.y + 0.5f, star.z};
        bool inside = true;
        for (const auto& mode : Modes)
            inside = inside &&
                     CameraPicture(f.eye, f.lookAt, mode[0], mode[1]).Inside(middle, options_.viewMargin);
        if (!inside)
            report.findings.push_back({"star in view", frame,
                                       "the star at " + At(star) +
                                           " is taken at the edge of the picture or outside it: bring it "
                                           "nearer the middle of the road"});
    }
    for (const Hazard& h : hazards_) {
        int64_t lead = 0;
        int64_t j = h.frame - 1;  // index of the frame the car gets there
        while (j >= 0 && Visible(h, static_cast<size_t>(j))) {
            ++lead;
            --j;
        }
        if (j < 0 || lead >= options_.seenFrames) continue;  // in sight since the start, or long enough
        report.findings.push_back(
            {"seen in time", h.frame,
             h.what + " comes into the picture " + Num(lead / 25.0) + " s before the car gets there (needs " +
                 Num(options_.seenFrames / 25.0) +
                 " s): give it a longer run-up on low, straight road in view, or move it further on"});
    }
}

}  // namespace qb
