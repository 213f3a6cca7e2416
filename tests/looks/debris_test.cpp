// The pieces of a blown-up car: where they start, how they fly, that they
// are gone before the restart, and that they change nothing of the run.
#include <cmath>
#include <cstring>

#include "physics/CarDebris.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

using test::Drive;

// Up from the start runs onto the deadly block at frame 31; the explosion
// and the restart come round twice in 160 frames.
std::string DeadlyAhead() {
    return test::TrackHead() +
           " block -2 0 -5 4 1 15 tex road\n star 0 1 6\n block -2 0 10 4 1 4 tex road deadly\n";
}

// The same with a narrow road on past the deadly block: pieces land on it
// and fall past its edges.
std::string DeadlyOnANarrowRoad() {
    return test::TrackHead() +
           " block -2 0 -5 4 1 15 tex road\n block -0.6 0 10 1.2 1 4 tex road deadly\n block -0.6 0 14 1.2 1 "
           "20 tex "
           "road\n";
}

int RunToExplosion(Drive& d) {
    int frame = 1;
    while (!(d.frame({DIK_UP}).events & EventExplode)) {
        EXPECT_FALSE(d.game().debris->Active()) << "frame " << frame;
        if (++frame > 100) return 0;
    }
    return frame;
}

float Dist(const Vector3& a, const Vector3& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

TEST(Debris, TheCarBreaksApartWhereItBlewUpTumblesFallsAndIsGoneBeforeTheRestart) {
    Drive d("debris", DeadlyOnANarrowRoad());
    ASSERT_EQ(RunToExplosion(d), 31);
    const CarDebris& debris = *d.game().debris;
    const Vector3 car = d.car().GetPosition();
    // On the explosion frame every piece sits inside the car's box.
    ASSERT_EQ(debris.Pieces().size(), 11u + CarDebris::ShardCount);
    EXPECT_EQ(debris.Age(), 0);
    EXPECT_EQ(debris.Opacity(), 1.0f);
    for (const CarDebris::Piece& p : debris.Pieces()) {
        EXPECT_NEAR(p.centre.x, car.x, 0.4f);
        EXPECT_GE(p.centre.y, car.y);
        EXPECT_LE(p.centre.y, car.y + 0.8f);
        EXPECT_LE(p.centre.z, car.z);
        EXPECT_GE(p.centre.z, car.z - 0.8f);
    }
    // They are drawn with the car's skin, a box each.
    HeadlessGraphics& g = d.hp().graphics;
    const int before = g.primitivesDrawn;
    const TextureId skin = 77;
    d.game().debris->draw(g, skin, 1.0f);
    EXPECT_EQ(g.primitivesDrawn - before, 12 * static_cast<int>(debris.Pieces().size()));
    EXPECT_EQ(g.boundTexture, skin);

    // The next frame each piece has moved, turned and lost Gravity of its
    // upward speed; a drawing at the start of the frame shows where it was.
    const std::vector<CarDebris::Piece> first = debris.Pieces();
    d.frame({DIK_UP});
    for (size_t i = 0; i < first.size(); ++i) {
        const CarDebris::Piece& p = debris.Pieces()[i];
        EXPECT_GT(Dist(p.centre, first[i].centre), 0.1f) << i;
        EXPECT_GT(Dist(p.angle, first[i].angle), 0.0f) << i;
        EXPECT_FLOAT_EQ(p.velocity.y, first[i].velocity.y - CarDebris::Gravity) << i;
    }
    d.game().debris->draw(g, d.car().SkinTexture(), 0.0f);
    EXPECT_FLOAT_EQ(g.world.m[3][0], first.back().centre.x);
    EXPECT_FLOAT_EQ(g.world.m[3][2], first.back().centre.z);

    // They fly apart, land on the road without sinking into it or fall past
    // its edges, and fade out with the fireball: nothing is left to draw on
    // the death frame.
    float opacity = debris.Opacity();
    bool died = false;
    for (int i = 0; i < 60 && !died; ++i) {
        died = (d.frame({DIK_UP}).events & EventDeath) != 0;
        EXPECT_LE(debris.Opacity(), opacity);
        opacity = debris.Opacity();
        for (const CarDebris::Piece& p : debris.Pieces()) {
            const bool overRoad = std::fabs(p.centre.x) < 0.6f && p.centre.z > 10 && p.centre.z < 34;
            EXPECT_TRUE(!overRoad || p.centre.y >= car.y || p.centre.y < car.y - 0.5f) << "frame " << i;
        }
    }
    ASSERT_TRUE(died);
    int landed = 0, fell = 0;
    for (const CarDebris::Piece& p : debris.Pieces()) {
        landed += p.resting ? 1 : 0;
        fell += p.centre.y < car.y - 2 ? 1 : 0;
    }
    EXPECT_GT(landed, 0);
    EXPECT_GT(fell, 0);
    float spread = 0;
    for (const CarDebris::Piece& p : debris.Pieces()) spread += Dist(p.centre, car) / debris.Pieces().size();
    EXPECT_GT(spread, 1.5f);
    EXPECT_EQ(debris.Opacity(), 0.0f);
    const int drawn = g.drawCalls;
    d.game().debris->draw(g, d.car().SkinTexture(), 1.0f);
    EXPECT_EQ(g.drawCalls, drawn);
    // The restart starts with a whole car.
    d.frame({DIK_UP});
    EXPECT_FALSE(debris.Active());
}

uint64_t Fnv(uint64_t h, const std::string& s) {
    for (unsigned char c : s) h = (h ^ c) * 0x100000001b3ull;
    return h;
}

TEST(Debris, TheRunIsTheOneDrivenBeforeThePiecesExistedAndThePiecesRepeat) {
    // The frames of two explosions and restarts, as quorbit-sim prints them;
    // the digest was taken from the game before the car broke apart.
    Drive a("debris-a", DeadlyAhead()), b("debris-b", DeadlyAhead());
    uint64_t h = 0xcbf29ce484222325ull;
    for (int i = 0; i < 160; ++i) {
        h = Fnv(h, FormatSimRow(a.frame({DIK_UP})) + "\n");
        b.frame({DIK_UP});
        const auto& pa = a.game().debris->Pieces();
        const auto& pb = b.game().debris->Pieces();
        ASSERT_EQ(pa.size(), pb.size());
        for (size_t k = 0; k < pa.size(); ++k)
            for (auto field :
                 {&CarDebris::Piece::centre, &CarDebris::Piece::angle, &CarDebris::Piece::velocity})
                ASSERT_EQ(std::memcmp(&(pa[k].*field), &(pb[k].*field), sizeof(Vector3)), 0)
                    << "frame " << i << " piece " << k;
    }
    EXPECT_EQ(h, 0xcfe0fb557128438full);
}

}  // namespace
}  // namespace qb
