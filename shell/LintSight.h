// The checker's eyes: frame by frame along the solution it keeps the camera
// and the car, notes each hazard the car comes to (deadly tiles, walls taller
// than a seam, platform faces at road level, gaps) and each star it takes,
// and afterwards judges whether the driver could see them coming.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Types.h"
#include "shell/TrackLint.h"

namespace qb {

class frmGame;
struct SimRow;

class SightCheck {
public:
    explicit SightCheck(const LintOptions& options) : options_(options) {}
    // After each play frame of the solution.
    void Observe(frmGame& game, const SimRow& row);
    // Adds the findings of the in-view, star and seen-in-time rules.
    void Judge(LintReport& report) const;

private:
    struct Seen {
        Vector3 car, eye, lookAt;
    };
    struct Hazard {
        std::string what;   // for the message
        Vector3 point;      // the part the driver must see
        int64_t frame = 0;  // the frame the car gets there
        bool platform = false;
    };
    void NoteHazard(const std::string& key, const std::string& what, const Vector3& point, bool platform);
    bool Visible(const Hazard& h, size_t frame) const;

    LintOptions options_;
    std::vector<Seen> frames_;
    std::vector<Hazard> hazards_;
    std::vector<std::string> hazardKeys_;
    std::vector<std::pair<Vector3, int64_t>> starsTaken_;
    std::vector<bool> starVisible_;
    float ground_ = 0;
    bool haveGround_ = false, supported_ = true;
    float lastSupportTop_ = 0;
    Vector3 previous_{0, 3, 1};
};

}  // namespace qb
