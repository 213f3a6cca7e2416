#include "physics/CollisionDetection.h"

#include "level/TrackObjects.h"
#include "physics/PlayEvents.h"
#include "physics/clsParticles.h"
#include "physics/clsPlayer.h"

namespace qb {

namespace {
// A Single combined with a double constant is worked out in double and
// stored back as a Single.
inline float AddD(float a, double b) {
    return static_cast<float>(static_cast<double>(a) + b);
}

// Broad phase: the car's predicted x and z within one unit of the object's
// x and z extents.
inline bool Near(float px, float pz, float x0, float x1, float z0, float z1) {
    return x0 < px && px < x1 && z0 < pz && pz < z1;
}
}  // namespace

void CollisionDetection::ResetCollisionState(const PlayWorld& w) {
    w.onGround = false;
    OnRamp = false;
    ExplodeRequested = false;
    SqueezedFromLeft = false;
    SqueezedFromRight = false;
    Carried = false;
    w.car.setplayernotonice();
    CollisionBoxAxes[0] = Vector3{0, 0.8f, 0};
    CollisionBoxAxes[1] = Vector3{0.8f, 0, 0};
    CollisionBoxAxes[2] = Vector3{0, 0, 0.8f};
}

int32_t CollisionDetection::GatherCandidates(const TrackObjects& t, const clsPlayer& pl) {
    const float px = pl.Posx() + pl.HorizontalVelocity();
    const float pz = pl.Posz() + pl.ForwardVelocity();

    nearBlocks_.clear();
    nearRamps_.clear();
    nearPlatforms_.clear();
    for (int32_t i = 0; i <= t.BlockUpper; ++i) {
        const clsBlock& b = *t.blocks[static_cast<size_t>(i)];
        const float z = static_cast<float>(b.Zpos());
        if (Near(px, pz, b.Xpos() - 1, b.Xpos() + b.scaleX() + 1, z - 1, z + b.scalez() + 1))
            nearBlocks_.push_back(i);
    }
    for (int32_t i = 0; i <= t.RampUpper; ++i) {
        const clsRamp& r = *t.ramps[static_cast<size_t>(i)];
        const int32_t x = r.Xpos(), z = r.Zpos();
        if (Near(px, pz, static_cast<float>(x - 1), static_cast<float>(x + r.scaleX() + 1),
                 static_cast<float>(z - 1), static_cast<float>(z + r.scalez() + 1)))
            nearRamps_.push_back(i);
    }
    for (int32_t i = 0; i <= t.PlatformUpper; ++i) {
        const clsMovingPlatform& m = *t.platforms[static_cast<size_t>(i)];
        if (Near(px, pz, m.Xpos() - 1, m.Xpos() + m.scaleX() + 1, m.Zpos() - 1, m.Zpos() + m.scalez() + 1))
            nearPlatforms_.push_back(i);
    }

    Candidates.clear();
    auto addBlock = [&](int32_t i, int face) {
        const clsBlock& b = *t.blocks[static_cast<size_t>(i)];
        Candidates.push_back(CollisionCandidate{
            b.GetPlaneNormal(face), b.GetCollisionPlane(face), static_cast<int16_t>(b.changeactioncode()),
            static_cast<int16_t>(face), KindBlock, static_cast<int16_t>(i), b.Xpos(), b.Ypos(),
            static_cast<float>(b.Zpos()), b.GetFaceCorners(face)});
    };
    auto addRamp = [&](int32_t i, int face) {
        const clsRamp& r = *t.ramps[static_cast<size_t>(i)];
        Candidates.push_back(CollisionCandidate{r.GetPlaneNormal(face), r.GetCollisionPlane(face), 0,
                                                static_cast<int16_t>(face), KindRamp, static_cast<int16_t>(i),
                                                static_cast<float>(r.Xpos()), static_cast<float>(r.Ypos()),
                                                static_cast<float>(r.Zpos()), r.GetFaceCorners(face)});
    };
    auto addPlatform = [&](int32_t i, int face) {
        const clsMovingPlatform& m = *t.platforms[static_cast<size_t>(i)];
        Candidates.push_back(CollisionCandidate{
            m.GetPlaneNormal(face), m.GetCollisionPlane(face), static_cast<int16_t>(m.changeactioncode()),
            static_cast<int16_t>(face), KindPlatform, static_cast<int16_t>(i), m.Xpos(), m.Ypos(), m.Zpos(),
            m.GetFaceCorners(face)});
    };

    for (int face = 1; face <= 5; ++face)
        for (int32_t i : nearPlatforms_) addPlatform(i, face);
    for (int32_t i : nearBlocks_)
        if (t.blocks[static_cast<size_t>(i)]->changeactioncode() == clsBlock::Deadly) addBlock(i, 3);
    for (int32_t i : nearBlocks_) {
        const uint8_t code = t.blocks[static_cast<size_t>(i)]->changeactioncode();
        if (code != clsBlock::Plain && code != clsBlock::Deadly) addBlock(i, 3);
    }
    for (int32_t i : nearBlocks_) addBlock(i, 3);
    for (int32_t i : nearRamps_) addRamp(i, 6);
    for (int face = 1; face <= 5; ++face)
        for (int32_t i : nearRamps_) addRamp(i, face);
    for (int face : {1, 2, 4, 5})
        for (int32_t i : nearBlocks_) addBlock(i, face);
    return static_cast<int32_t>(Candidates.size());
}

void CollisionDetection::CheckCollisions(const PlayWorld& w) {
    ResetCollisionState(w);
    clsPlayer& pl = w.car;
    TrackObjects& t = w.track;
    pl.verticalvelocity(pl.verticalvelocity() - t.Gravity);

    const int32_t n = GatherCandidates(t, pl);
    for (int32_t i = 0; i < n; ++i) {
        const CollisionCandidate& c = Candidates[static_cast<size_t>(i)];
        const float r = pl.CalculateEffectiveRadius(c.normal);
        const Vector4 C = pl.CalculateCollisionBoxCentre();
        const Vector4 v = pl.GetVelocity();
        Vector4 P{C.x + v.x, C.y + v.y, C.z + v.z, 1.0f};
        if (c.objectKind == KindPlatform)
            P.x = P.x - t.platforms[static_cast<size_t>(c.objectIndex)]->GetVelocity().x;
        const Vector4 Dv{P.x - C.x, P.y - C.y, P.z - C.z, 0.0f};
        const float d = c.plane.d - r;
        const float num = c.plane.a * C.x + c.plane.b * C.y + c.plane.c * C.z + d;
        const float den = c.plane.a * Dv.x + c.plane.b * Dv.y + c.plane.c * Dv.z;
        if (den == 0) continue;
        const float hit = -num / den;
        // A box that already touches a face the car stands on (a top, a
        // slope, a ramp's landing strip), to within what rounding leaves, and
        // moves into it meets it now (at a hit of zero or a hair before):
        // otherwise a car resting exactly on a top, or set down exactly on a
        // slope by the previous frame, would sink through. Never a wall or an
        // underside: a box a hair past a front's plane went by above or
        // beside that front, and meeting it late, with the box set back
        // along its whole motion (sideways and up or down too), made the
        // next block of a level road or of a kerb a wall that blew the car
        // up.
        const bool carries = c.faceNumber == 3 || c.faceNumber == 6;
        const bool touching = carries && den < 0 && num <= 0 && num >= -TouchTolerance;
        if (!(hit > 0 && hit <= 1) && !touching) continue;

        const Vector3 H{C.x + hit * Dv.x, C.y + hit * Dv.y, C.z + hit * Dv.z};
        if (!FindContactPoints(H, c.normal, CollisionBoxAxes, ContactPoints)) {
            // No face of the game is tilted against all three axes: one
            // that is means a broken track, and there is no sensible answer.
            w.events.Add(Happening::BrokenTrack);
            return;
        }
        // Seen along the axis the inside test drops, a slope's corners can
        // turn either way round (a steep rotation 1, a 45-degree rotation 2).
        const bool eitherWinding = c.objectKind == KindRamp && c.faceNumber == 3;
        for (int k = 0; k < ContactPoints.count; ++k) {
            const Vector3 p = ContactPoints.p[k];
            if (!PointInFace(c.corners.p[0], c.corners.p[1], c.corners.p[2], c.corners.p[3], p,
                             eitherWinding))
                continue;
            if (!FaceResponse(w, c, p)) return;  // the finish ends the pass
        }
    }

    PickUpStars(w);

    if (ExplodeRequested) {
        if (!pl.getexplodeStatus()) w.events.Add(Happening::Explode);
        pl.explode();
        for (int32_t i = 0; i <= t.PlatformUpper; ++i) t.platforms[static_cast<size_t>(i)]->stopMoving();
        w.starsCollected = 0;
    }
    const float y = pl.PosY();
    if (y > -15 && y < -10) w.events.Add(Happening::Dropping);
    if (y < -100) {
        pl.DeathStatus(true);
        w.starsCollected = 0;
        w.events.Add(Happening::FellOut);
    }
}

bool CollisionDetection::FaceResponse(const PlayWorld& w, const CollisionCandidate& c, const Vector3& p) {
    clsPlayer& pl = w.car;
    TrackObjects& t = w.track;
    const float x = pl.Posx(), y = pl.PosY(), z = pl.Posz();
    auto platformVelocityX = [&]() {
        return t.platforms[static_cast<size_t>(c.objectIndex)]->GetVelocity().x;
    };

    switch (c.faceNumber) {
        case 1:  // the object is on the car's +x side
            pl.HorizontalVelocity(static_cast<float>(static_cast<double>(p.x - x) - 0.4 - 0.0001));
            if (SqueezedFromLeft) ExplodeRequested = true;
            if (c.objectKind == KindPlatform) {
                pl.HorizontalVelocity(pl.HorizontalVelocity() + platformVelocityX());
                SqueezedFromRight = true;
            }
            break;
        case 2:  // the object is on the car's -x side
            pl.HorizontalVelocity(static_cast<float>(static_cast<double>(p.x - x) + 0.4 + 0.0001));
            if (SqueezedFromRight) ExplodeRequested = true;
            if (c.objectKind == KindPlatform) {
                pl.HorizontalVelocity(pl.HorizontalVelocity() + platformVelocityX());
                SqueezedFromLeft = true;
            }
            break;
        case 3:
            if (c.objectKind == KindRamp) {
                const clsRamp& r = *t.ramps[static_cast<size_t>(c.objectIndex)];
                w.onGround = true;
                if (r.rotateVal() == 0 || r.rotateVal() == 2)
                    pl.verticalvelocity(pl.ForwardVelocity() * r.GetGradient());
                else
                    pl.verticalvelocity(pl.HorizontalVelocity() * r.GetGradient());
                OnRamp = true;
                break;
            }
            if (pl.verticalvelocity() > 0) break;
            w.onGround = true;
            pl.verticalvelocity(AddD(p.y - y, 0.0001));
            if (!LandingAction(w, c)) return false;
            // Every corner of the car standing on the top answers here; the
            // platform's motion is added once, or the car would slide along
            // at a multiple of the platform's speed.
            if (c.objectKind == KindPlatform && !Carried) {
                pl.HorizontalVelocity(pl.HorizontalVelocity() + platformVelocityX());
                Carried = true;
            }
            break;
        case 4:  // the front
            if (OnRamp) break;
            if (pl.ForwardVelocity() > LargestSafeFrontSpeed) ExplodeRequested = true;
            pl.ForwardVelocity(AddD(p.z - z, -0.0001));
            break;
        case 5:  // the underside stops a climb
            if (pl.verticalvelocity() > 0) {
                pl.PosY(static_cast<float>(static_cast<double>(p.y) - 0.8 - 0.0001));
                pl.verticalvelocity(0);
            }
            break;
        case 6:  // a ramp's landing strip
            w.onGround = true;
            pl.verticalvelocity(AddD(p.y - y, 0.0001));
            break;
        default:
            break;
    }
    return true;
}

bool CollisionDetection::LandingAction(const PlayWorld& w, const CollisionCandidate& c) {
    clsPlayer& pl = w.car;
    TrackObjects& t = w.track;
    clsBlock* block =
        c.objectKind == KindBlock ? t.blocks[static_cast<size_t>(c.objectIndex)].get() : nullptr;
    switch (c.actionCode) {
        case clsBlock::Finish:
            // The session ends the run: nothing more happens in this pass.
            w.events.FinishFrames = w.raceFrames;
            w.events.FinishStars = w.starsCollected;
            w.events.Add(Happening::Finish);
            return false;
        case clsBlock::BouncePad:
            w.events.Add(Happening::BouncePad);
            if (block) block->Bounce();
            pl.verticalvelocity(BouncePadLaunch);
            pl.SetBouncePad();
            w.onGround = false;
            break;
        case clsBlock::Ice:
            pl.SetPlayerOnIce();
            break;
        case clsBlock::Falling: {
            w.events.Add(Happening::FallingBlock);
            double top, fallvel = 0;
            if (block) {
                block->Fall();
                fallvel = block->fallvel();
                top = static_cast<double>(block->Ypos()) + static_cast<double>(block->scaleY());
            } else {
                const clsMovingPlatform& m = *t.platforms[static_cast<size_t>(c.objectIndex)];
                top = static_cast<double>(m.Ypos()) + static_cast<double>(m.scaleY());
            }
            pl.PosY(static_cast<float>(top + fallvel + 0.0001));
            pl.verticalvelocity(static_cast<float>(-fallvel - 0.0001));
            break;
        }
        case clsBlock::Turbo:
            w.events.Add(Happening::Turbo);
            pl.ForwardVelocity(TurboSpeed);
            break;
        case clsBlock::Deadly:
            ExplodeRequested = true;
            break;
        default:
            break;
    }
    return true;
}

void CollisionDetection::PickUpStars(const PlayWorld& w) {
    TrackObjects& t = w.track;
    const int32_t S = t.StarUpper;
    if (S < 0) return;
    const clsPlayer& pl = w.car;
    const double px = pl.Posx(), py = pl.PosY();
    const float pz = pl.Posz();
    for (int32_t s = 0; s <= S; ++s) {
        clsStar& star = *t.stars[static_cast<size_t>(s)];
        if (!star.visible()) continue;
        const int32_t sx = star.Xpos(), sy = star.Ypos(), sz = star.Zpos();
        if (!(sx - 0.8 < px && px < sx + 0.8)) continue;
        if (!(sy - 0.8 < py && py < sy + 0.8)) continue;
        if (!(static_cast<float>(sz - 1) < pz && pz < static_cast<float>(sz + 1))) continue;
        star.GetStar();
        float fx = static_cast<float>(sx), fy = static_cast<float>(sy), fz = static_cast<float>(sz);
        w.sparks.AddStarExplosion(fx, fy, fz);
        w.starsCollected += 1;
        w.events.Add(Happening::Star, w.starsCollected);
    }
}

}  // namespace qb
