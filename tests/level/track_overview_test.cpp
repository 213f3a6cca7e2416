// The overview camera of the contact sheet: every track framed whole, one
// scale for all, and the faces drawn the way the game's own camera draws them.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "level/LevelFileReader.h"
#include "level/TrackOverview.h"
#include "platform/D3DMath.h"

using namespace qb;

namespace {

constexpr float W = 1024, H = 768;

Vector3 Ndc(const Vector3& p, const Matrix4& m) {
    return TransformCoord(p, m);
}

LevelRecord Road(float length, float height) {
    LevelRecord r;
    r.Blocks.push_back(BlockRecord{-2, 0, -5, 4, 1, length});
    r.Blocks.push_back(BlockRecord{-12, 0, length / 2, 4, height, 4});
    return r;
}

// Twice the signed area of a projected triangle (x right, y up).
float Turn(const Vector3& a, const Vector3& b, const Vector3& c, const Matrix4& m) {
    const Vector3 p = Ndc(a, m), q = Ndc(b, m), r = Ndc(c, m);
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
}

}  // namespace

TEST(TrackOverview, EveryShippedTrackIsFramedWholeInItsRows) {
    LevelFile file;
    LevelFileError error;
    ASSERT_TRUE(ReadLevelFileAt(std::string(QUORBIT_GAME_DIR) + "/levels.dat", file, error))
        << error.Describe();
    std::vector<TrackBox> boxes;
    for (const LevelRecord& r : file.Levels) boxes.push_back(TrackBounds(r));
    const TrackOverview view(boxes, W, H);
    int allRows = 0;
    for (size_t n = 0; n < boxes.size(); ++n) {
        const TrackBox& b = boxes[n];
        const int rows = view.RowsUsed(b);
        allRows += rows == view.Rows();
        for (int i = 0; i < 8; ++i) {
            const Vector3 c{(i & 1) ? b.max.x : b.min.x, (i & 2) ? b.max.y : b.min.y,
                            (i & 4) ? b.max.z : b.min.z};
            int shown = 0;
            for (int row = 0; row < rows; ++row) {
                const Vector3 p = Ndc(c, view.RowProjection(b, row));
                if (p.x < -1 || p.x > 1) continue;
                ++shown;
                const float top = 1.0f - 2.0f * row / view.Rows();
                EXPECT_LE(p.y, top) << "track " << n + 1 << " corner " << i << " row " << row;
                EXPECT_GE(p.y, top - 2.0f / view.Rows()) << "track " << n + 1 << " corner " << i;
                EXPECT_GT(p.z, 0.0f);
                EXPECT_LT(p.z, 1.0f);
            }
            EXPECT_GE(shown, 1) << "track " << n + 1 << " corner " << i << " is in no row";
        }
    }
    EXPECT_GE(allRows, 1) << "the longest track fills every row";
}

TEST(TrackOverview, OneScaleForEveryTrackFittedToTheLongestAndTheTallest) {
    const TrackBox longRoad = TrackBounds(Road(600, 1)), shortRoad = TrackBounds(Road(100, 1));
    const TrackOverview view({longRoad, shortRoad}, W, H);
    EXPECT_EQ(view.RowsUsed(longRoad), view.Rows());
    EXPECT_LT(view.RowsUsed(shortRoad), view.Rows());
    // The far end of the longest track comes close to the right of the last row.
    const Vector3 end = Ndc({2, 1, 595}, view.RowProjection(longRoad, view.Rows() - 1));
    EXPECT_GT(end.x, 0.9f);
    EXPECT_LT(end.x, 1.0f);
    // A 4-unit block is the same size in pixels in both tracks.
    auto width = [&](const TrackBox& b, float z) {
        const Matrix4 m = view.RowProjection(b, 0);
        return (Ndc({-2, 1, z + 4}, m).x - Ndc({-2, 1, z}, m).x) * W / 2;
    };
    EXPECT_NEAR(width(longRoad, 10), width(shortRoad, 10), 1e-3f);
    EXPECT_NEAR(width(longRoad, 10), 4 * view.Scale(), 1e-2f);

    // A tower in one track squeezes every track up and down to keep it
    // inside a row; along the road nothing changes.
    const TrackBox tower = TrackBounds(Road(100, 120));
    const TrackOverview tall({longRoad, tower}, W, H);
    EXPECT_LT(tall.UpScale(), view.UpScale() / 5);
    EXPECT_EQ(tall.Scale(), view.Scale());
    const Vector3 top = Ndc({-12, 120, 50}, tall.RowProjection(tower, 0));
    EXPECT_LE(top.y, 1.0f);
    EXPECT_GE(Ndc({2, 0, 50}, tall.RowProjection(tower, 0)).y, 1.0f - 2.0f / tall.Rows());
}

TEST(TrackOverview, FacesTurnAsTheGameCameraDrawsThemAndRoofsHideWhatIsBelow) {
    const TrackBox box = TrackBounds(Road(200, 6));
    const TrackOverview view({box}, W, H);
    const Matrix4 overview = view.RowProjection(box, 0);
    const Matrix4 game = MatrixMultiply(MatrixLookAtLH({0, 35, -63}, {0, 18, 0}, {0, 1, 0}),
                                        MatrixPerspectiveFovLH(3.14159265f / 4, 1, 0.1f, 500));
    // A block left of the road and ahead: its top, the face towards the
    // driver and its right-hand face, each as a triangle in one order.
    const float x0 = -12, x1 = -8, y1 = 6, z0 = 30, z1 = 34;
    const Vector3 faces[3][3] = {{{x0, y1, z0}, {x0, y1, z1}, {x1, y1, z1}},
                                 {{x0, 0, z0}, {x0, y1, z0}, {x1, y1, z0}},
                                 {{x1, 0, z0}, {x1, y1, z0}, {x1, y1, z1}}};
    for (const auto& f : faces) {
        const float seen = Turn(f[0], f[1], f[2], overview);
        EXPECT_GT(std::fabs(seen) * W * H / 4, 4.0f) << "a face shows with some size";
        EXPECT_EQ(seen > 0, Turn(f[0], f[1], f[2], game) > 0) << "the same way round as in the game";
    }
    // The road point drawn at the same place as the block's top corner lies
    // behind it.
    const Vector3 roof{x1, y1, z0};
    const Vector3 a = Ndc(roof, overview);
    const Vector3 o = Ndc({0, 0, 0}, overview), dx = Ndc({1, 0, 0}, overview), dz = Ndc({0, 0, 1}, overview);
    const float ax = dx.x - o.x, ay = dx.y - o.y, bx = dz.x - o.x, by = dz.y - o.y;
    const float det = ax * by - ay * bx;
    const float x = ((a.x - o.x) * by - (a.y - o.y) * bx) / det,
                z = (ax * (a.y - o.y) - ay * (a.x - o.x)) / det;
    const Vector3 ground = Ndc({x, 0, z}, overview);
    EXPECT_NEAR(ground.x, a.x, 1e-4f);
    EXPECT_NEAR(ground.y, a.y, 1e-4f);
    EXPECT_GT(ground.z, a.z);
}
