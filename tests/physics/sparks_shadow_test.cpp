// The star sparks and the shadow pieces.
#include <cmath>

#include "level/TrackObjects.h"
#include "physics/clsParticles.h"
#include "physics/clsShadow.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

const std::string Plain = TrackHead() + " block -5 0 -5 10 1 20 tex road\n";

TEST(Sparks, TwoBurstsInOneFrameKeepTheFirstAsItWas) {
    Drive d("twobursts", Plain);
    clsParticles& p = *d.game().particles;
    float a = 0, b = 1, c = 2;
    p.AddStarExplosion(a, b, c);
    const std::vector<Particle> first(p.Particles().begin(), p.Particles().begin() + 30);
    float e = 9, f = 9, g = 9;
    p.AddStarExplosion(e, f, g);
    ASSERT_EQ(p.Count(), 60);
    for (int k = 0; k < 30; ++k) {
        EXPECT_EQ(p.Particles()[k].position.x, first[k].position.x);
        EXPECT_EQ(p.Particles()[k].velocity.y, first[k].velocity.y);
        EXPECT_EQ(p.Vertices()[k].diffuse, clsParticles::Pack(first[k].currentColour));
    }
    EXPECT_FLOAT_EQ(p.Particles()[30].position.x, 9.2f);
}

TEST(Sparks, EveryStepMovesByAFifthAndTurnsTheSparkUpward) {
    Drive d("sparkstep", Plain);
    clsParticles& p = *d.game().particles;
    float x = 0, y = 5, z = 0;
    p.AddStarExplosion(x, y, z);
    const std::vector<Particle> before = p.Particles();
    d.hp().clock.advanceMs(40);
    p.UpdateParticles();
    bool sawDownward = false;
    for (int k = 0; k < 30; ++k) {
        const Particle& was = before[k];
        const Particle& now = p.Particles()[k];
        EXPECT_FLOAT_EQ(now.position.x, was.position.x + was.velocity.x / 5);
        EXPECT_FLOAT_EQ(now.position.y, was.position.y + was.velocity.y / 5);
        EXPECT_NEAR(now.velocity.y, std::fabs(was.velocity.y - 0.0001f), 1e-6);
        EXPECT_GE(now.velocity.y, 0.0f);
        sawDownward = sawDownward || was.velocity.y < 0;
    }
    EXPECT_TRUE(sawDownward) << "a burst should hold sparks that start downward";
}

TEST(Sparks, DieAtTheEndOfTheirLifeAndTheListEmptiesOnTheNextUpdate) {
    Drive d("sparkdeath", Plain);
    clsParticles& p = *d.game().particles;
    float x = 0, y = 5, z = 0;
    p.AddStarExplosion(x, y, z);
    d.hp().clock.advanceMs(12500);
    p.UpdateParticles();
    EXPECT_EQ(p.Count(), 30);
    for (const Particle& s : p.Particles()) EXPECT_EQ(s.dead, 1);
    p.UpdateParticles();
    EXPECT_EQ(p.Count(), 0);
}

TEST(Sparks, AfterAResetTheNextBurstStartsAtTheFront) {
    Drive d("sparksreset", Plain);
    clsParticles& p = *d.game().particles;
    float x = 0, y = 5, z = 0;
    p.AddStarExplosion(x, y, z);
    p.resetParticles();
    EXPECT_EQ(p.Count(), 0);
    float u = 7, v = 7, w = 7;
    p.AddStarExplosion(u, v, w);
    EXPECT_EQ(p.Count(), 30);
    EXPECT_FLOAT_EQ(p.Particles()[0].position.x, 7.2f);
}

// Places the car and lays its shadow.
const clsShadow& ShadowAt(Drive& d, float x, float y, float z) {
    clsPlayer& car = d.car();
    car.Posx(x);
    car.PosY(y);
    car.Posz(z);
    car.ForwardVelocity(0);
    car.HorizontalVelocity(0);
    d.game().shadow->Place();
    return *d.game().shadow;
}

void ExpectPiece(const clsShadow& s, int q, float l, float w) {
    EXPECT_NEAR(s.Quarters()[q - 1].length, l, 1e-6) << "piece " << q;
    EXPECT_NEAR(s.Quarters()[q - 1].width, w, 1e-6) << "piece " << q;
}

TEST(Shadow, WellInsideOneBlockTheFirstPieceCarriesTheWholePicture) {
    Drive d("shadowblock", Plain);
    const clsShadow& s = ShadowAt(d, 0, 1.0001f, 5);
    ExpectPiece(s, 1, 0.8f, 0.8f);
    ExpectPiece(s, 2, 0.8f, 0);
    ExpectPiece(s, 3, 0, 0.8f);
    ExpectPiece(s, 4, 0, 0);
    for (int q = 0; q < 4; ++q) EXPECT_EQ(s.Quarters()[q].kind, 1);
    // Over the footprint, 0.1 above the top.
    EXPECT_NEAR(s.Origins()[0].y, 1.1f, 1e-6);
}

TEST(Shadow, OverAGapTheShadowBreaksAtBothEdges) {
    Drive d("shadowgap", TrackHead() + " block -5 0 -5 10 1 9.7 tex road\n block -5 0 5 10 1 15 tex road\n");
    const clsShadow& s = ShadowAt(d, 0, 1.0001f, 5.3f);
    ExpectPiece(s, 1, 0.3f, 0.8f);
    ExpectPiece(s, 3, 0.2f, 0.8f);
    EXPECT_NEAR(s.Quarters()[1].width, 0, 1e-6);
    EXPECT_NEAR(s.Quarters()[3].width, 0, 1e-6);
    EXPECT_EQ(s.Quarters()[0].index, 1);
    EXPECT_EQ(s.Quarters()[2].index, 0);
    // Piece 3 reaches forward from the back corner to the rear block's edge.
    EXPECT_NEAR(s.Origins()[2].z, 4.7f, 1e-5);
}

TEST(Shadow, ACornerOverNothingGivesNoPiece) {
    Drive d("shadowedge", TrackHead() + " block -5 0 -5 5.1 1 20 tex road\n");
    const clsShadow& s = ShadowAt(d, 0, 1.0001f, 5);
    EXPECT_EQ(s.Quarters()[1].kind, 0);
    EXPECT_EQ(s.Quarters()[3].kind, 0);
    ExpectPiece(s, 2, 0, 0);
    ExpectPiece(s, 4, 0, 0);
    EXPECT_NEAR(s.Quarters()[0].width, 0.5f, 1e-6);
    EXPECT_NEAR(s.Quarters()[2].width, 0.5f, 1e-6);
    EXPECT_EQ(s.DropPoints()[1].x, 0.0f);
    EXPECT_EQ(s.DropPoints()[1].y, 0.0f);
}

TEST(Shadow, FromAHundredUpNothingBelowIsFound) {
    Drive d("shadowhigh", Plain);
    const clsShadow& s = ShadowAt(d, 0, 150, 5);
    for (int q = 0; q < 4; ++q) EXPECT_EQ(s.Quarters()[q].kind, 0);
}

TEST(Shadow, OnAPlatformTheSecondPieceCarriesTheWholePicture) {
    Drive d("shadowplatform",
            TrackHead() + " block -9 0 40 1 1 1 tex road\n platform -5 0 -5 10 1 20 tex road\n");
    d.game().track->platforms[0]->UpdateCollisionPlanes();
    const clsShadow& s = ShadowAt(d, 0, 1.0001f, 5);
    ExpectPiece(s, 1, 0.8f, 0);
    ExpectPiece(s, 2, 0.8f, 0.8f);
    ExpectPiece(s, 3, 0, 0.8f);
    ExpectPiece(s, 4, 0, 0);
    EXPECT_EQ(s.Quarters()[1].kind, 2);
}

TEST(Shadow, OnARampThePiecesLieAtTheSlopeAndTiltWithIt) {
    Drive d("shadowramp", TrackHead() + " block -9 0 40 1 1 1 tex road\n ramp -2 0 0 4 2 8 tex road wall\n");
    const clsShadow& s = ShadowAt(d, 0, 1.5f, 4);
    EXPECT_EQ(s.Quarters()[1].kind, 3);
    ExpectPiece(s, 2, 0.8f, 0.8f);
    ExpectPiece(s, 3, 0, 0.8f);
    ExpectPiece(s, 4, 0, 0);
    // Height at the car's nose: tan(a) = 2 / 8.
    EXPECT_NEAR(s.Origins()[1].y, 1.0f + 0.1f, 1e-5);
    // The back edge of the piece drops along the slope.
    const BlockVertex* v = s.Vertices().data() + 6;
    EXPECT_NEAR(v[5].y, -0.25f * 0.8f, 1e-6);
    EXPECT_EQ(v[0].y, 0.0f);
}

}  // namespace
}  // namespace qb
