// The ghost: a see-through copy of the car driving the track's best run,
// frame for frame beside the live one. Its run is driven once, headless, on
// a game of its own when a race starts, and kept as the car's place in every
// frame; so it cannot touch the live run (no collisions, sounds, stars or
// statistics), and drawing it is only a look-up.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Types.h"
#include "shell/ReplayStore.h"
#include "world/MeshModel.h"

namespace qb {

class frmGame;

struct GhostFrame {
    Vector3 position;
    float spinAngle = 720;  // the bounce-pad spin, as the car draws it
    bool spinning = false;
};

class GhostCar {
public:
    static constexpr const char* SettingKey = "race.ghost";
    // The texture factor it is drawn with (ARGB): its alpha is how much of
    // the ghost covers what is behind it.
    static constexpr uint32_t Look = 0x80FFFFFFu;

    explicit GhostCar(frmGame& game);
    GhostCar(const GhostCar&) = delete;
    GhostCar& operator=(const GhostCar&) = delete;

    // Whether the player wants it (settings.cfg).
    bool Enabled() const;
    // At a race start: the best run of the track, driven into its frames
    // unless those are already at hand.
    void Prepare();
    // The ghost's place after play frame `frame` of its run (1-based), or
    // nullptr once its run has ended or when there is none.
    const GhostFrame* At(int64_t frame) const;
    int64_t Frames() const { return static_cast<int64_t>(frames_.size()); }
    // Why the track's best run is not followed (its file was refused, or it
    // does not drive to its finish); empty when there is simply none.
    const std::string& Problem() const { return problem_; }
    // Draws it where it is after the live run's frame `frame`.
    void draw(int64_t frame);

private:
    bool Drive(const Replay& run, std::string& error);
    void LoadModel();

    frmGame& game_;
    std::vector<GhostFrame> frames_;
    std::string problem_;
    std::string drivenSeen_;  // the run (or the refusal) its frames come from
    MeshModel model_;
    bool modelTried_ = false;
};

}  // namespace qb
