// The collision pass, once per play frame between the controls and the
// drawing: gravity, the sweep of the car's box against the faces of the
// objects around it, the responses (land, stop, carry, bump), the special
// blocks, the stars, the explosion a face asked for, and falling out.
//
// It sets speeds that the car's draw integrates later in the same frame; it
// moves the car itself only when it lands on a falling block or bumps an
// underside. What it makes happen for the player (sounds, the star counter,
// the end of a run) it only notes in the frame's PlayEvents.
#pragma once

#include <cstdint>
#include <vector>

#include "physics/ContactGeometry.h"
#include "platform/Types.h"

namespace qb {

class TrackObjects;
class clsPlayer;
class clsParticles;
class PlayEvents;

// What one pass works on, all of it the session's: the track, the car, the
// star sparks, the run values the pass changes and the frame's record.
struct PlayWorld {
    TrackObjects& track;
    clsPlayer& car;
    clsParticles& sparks;
    PlayEvents& events;
    bool& onGround;
    int32_t& starsCollected;
    int32_t raceFrames;  // the race clock, kept at the finish
};

// One face of one object, as the sweep sees it.
struct CollisionCandidate {
    Vector3 normal;
    CollisionPlane plane;
    int16_t actionCode = 0;
    int16_t faceNumber = 0;
    int16_t objectKind = 0;  // 1 block, 2 moving platform, 3 ramp
    int16_t objectIndex = 0;
    float objectX = 0, objectY = 0, objectZ = 0;
    FaceCorners corners;
};

class CollisionDetection {
public:
    enum Kind : int16_t { KindBlock = 1, KindPlatform = 2, KindRamp = 3 };

    static constexpr float Clearance = 0.0001f;
    static constexpr float BouncePadLaunch = 0.45f;
    static constexpr float TurboSpeed = 1.0f;
    static constexpr float LargestSafeFrontSpeed = 0.4f;
    // How far a box may sit inside the plane of a face it stands on and
    // still count as touching it: well above rounding, far below anything a
    // player sees.
    static constexpr float TouchTolerance = 0.001f;

    void CheckCollisions(const PlayWorld& w);
    void ResetCollisionState(const PlayWorld& w);
    // Fills Candidates (numbered from 1 in the game's terms, 0-based here)
    // and returns how many there are.
    int32_t GatherCandidates(const TrackObjects& t, const clsPlayer& pl);

    // Module state of the pass in progress (OnGround itself is the session's).
    bool OnRamp = false;
    bool ExplodeRequested = false;
    bool SqueezedFromLeft = false;
    bool SqueezedFromRight = false;
    bool Carried = false;  // a platform top has added its motion this frame
    Vector3 CollisionBoxAxes[3] = {{0, 0.8f, 0}, {0.8f, 0, 0}, {0, 0, 0.8f}};
    std::vector<CollisionCandidate> Candidates;
    ContactSet ContactPoints;

private:
    // Runs the response of face `c` at contact point p. False when the pass
    // must end at once (the finish).
    bool FaceResponse(const PlayWorld& w, const CollisionCandidate& c, const Vector3& p);
    bool LandingAction(const PlayWorld& w, const CollisionCandidate& c);
    void PickUpStars(const PlayWorld& w);

    std::vector<int32_t> nearBlocks_, nearRamps_, nearPlatforms_;
};

}  // namespace qb
