// The star sparks and the shadow pieces.
#include <functional>

#include "level/TrackObjects.h"
#include "physics/clsParticles.h"
#include "physics/clsShadow.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;
using test::TrackHead;

const std::string Plain = TrackHead() + " block -5 0 -5 10 1 20 tex road\n";

TEST(Sparks, BurstsAddThirtyEachAndAResetStartsAtTheFront) {
    Drive d("bursts", Plain);
    clsParticles& p = *d.game().particles;
    float a = 0, b = 1, c = 2;
    p.AddStarExplosion(a, b, c);
    const std::vector<Particle> first(p.Particles().begin(), p.Particles().begin() + 30);
    float e = 9, f = 9, g = 9;
    p.AddStarExplosion(e, f, g);
    ASSERT_EQ(p.Count(), 60);
    // A second burst in the same frame leaves the first as it was.
    for (int k = 0; k < 30; ++k) {
        EXPECT_EQ(p.Particles()[k].position.x, first[k].position.x);
        EXPECT_EQ(p.Particles()[k].velocity.y, first[k].velocity.y);
        EXPECT_EQ(p.Vertices()[k].diffuse, clsParticles::Pack(first[k].currentColour));
    }
    EXPECT_FLOAT_EQ(p.Particles()[30].position.x, 9.2f);
    p.resetParticles();
    EXPECT_EQ(p.Count(), 0);
    p.AddStarExplosion(g, f, e);
    EXPECT_EQ(p.Count(), 30);
    EXPECT_FLOAT_EQ(p.Particles()[0].position.x, 9.2f);
}

TEST(Sparks, RiseAndDieAtTheEndOfTheirLifeThenTheListEmpties) {
    Drive d("sparkdeath", Plain);
    clsParticles& p = *d.game().particles;
    float x = 0, y = 5, z = 0;
    p.AddStarExplosion(x, y, z);
    bool sawDownward = false;
    for (const Particle& s : p.Particles()) sawDownward = sawDownward || s.velocity.y < 0;
    EXPECT_TRUE(sawDownward) << "a burst should hold sparks that start downward";
    d.hp().clock.advanceMs(40);
    p.UpdateParticles();
    for (const Particle& s : p.Particles()) EXPECT_GE(s.velocity.y, 0.0f) << "every spark turns upward";
    d.hp().clock.advanceMs(12500);
    p.UpdateParticles();
    EXPECT_EQ(p.Count(), 30);
    for (const Particle& s : p.Particles()) EXPECT_EQ(s.dead, 1);
    p.UpdateParticles();
    EXPECT_EQ(p.Count(), 0);
}

TEST(Shadow, EachPieceStopsAtTheEdgeOfWhatItsCornerStandsOver) {
    constexpr float Any = -1;  // not looked at
    struct Case {
        const char* what;
        std::string track;
        Vector3 car;
        float piece[4][2];  // length, width of pieces 1..4
        int kind[4];        // 1 block, 2 platform, 3 ramp, 0 nothing
        std::function<void(const clsShadow&)> more = [](const clsShadow&) {};
    } cases[] = {
        {"well inside one block the first piece carries the whole picture",
         Plain,
         {0, 1.0001f, 5},
         {{0.8f, 0.8f}, {0.8f, 0}, {0, 0.8f}, {0, 0}},
         {1, 1, 1, 1}},
        {"over a gap it breaks at both edges",
         TrackHead() + " block -5 0 -5 10 1 9.7 tex road\n block -5 0 5 10 1 15 tex road\n",
         {0, 1.0001f, 5.3f},
         {{0.3f, 0.8f}, {Any, 0}, {0.2f, 0.8f}, {Any, 0}},
         {1, 1, 1, 1}},
        {"a corner over nothing gives no piece",
         TrackHead() + " block -5 0 -5 5.1 1 20 tex road\n",
         {0, 1.0001f, 5},
         {{Any, 0.5f}, {0, 0}, {Any, 0.5f}, {0, 0}},
         {1, 0, 1, 0}},
        {"from a hundred up nothing below is found",
         Plain,
         {0, 150, 5},
         {{0, 0}, {0, 0}, {0, 0}, {0, 0}},
         {0, 0, 0, 0}},
        {"on a platform the second piece carries the whole picture",
         TrackHead() + " block -9 0 40 1 1 1 tex road\n platform -5 0 -5 10 1 20 tex road\n",
         {0, 1.0001f, 5},
         {{0.8f, 0}, {0.8f, 0.8f}, {0, 0.8f}, {0, 0}},
         {2, 2, 2, 2}},
        {"on a ramp",
         TrackHead() + " block -9 0 40 1 1 1 tex road\n ramp -2 0 0 4 2 8 tex road wall\n",
         {0, 1.5f, 4},
         {{Any, Any}, {0.8f, 0.8f}, {0, 0.8f}, {0, 0}},
         {3, 3, 3, 3}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Drive d("shadow", c.track);
        if (d.game().track->PlatformUpper >= 0) d.game().track->platforms[0]->UpdateCollisionPlanes();
        clsPlayer& car = d.car();
        car.Posx(c.car.x);
        car.PosY(c.car.y);
        car.Posz(c.car.z);
        car.ForwardVelocity(0);
        car.HorizontalVelocity(0);
        clsShadow& s = *d.game().shadow;
        s.Place();
        for (int q = 0; q < 4; ++q) {
            const ShadowQuarter& r = s.Quarters()[q];
            if (c.piece[q][0] != Any) {
                EXPECT_NEAR(r.length, c.piece[q][0], 1e-6) << "piece " << q + 1;
            }
            if (c.piece[q][1] != Any) {
                EXPECT_NEAR(r.width, c.piece[q][1], 1e-6) << "piece " << q + 1;
            }
            EXPECT_EQ(r.kind, c.kind[q]) << "piece " << q + 1;
        }
        c.more(s);
    }
}

}  // namespace
}  // namespace qb
