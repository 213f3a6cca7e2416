// The blocks of every shipped and example track as laid out by the track
// generator: a road cut into strips around deadly tiles and holes must still
// be one surface. Two blocks sharing space draw over each other and give the
// car two sets of faces to meet; a crack a hair wide between two strips of
// the same road is a ledge the car's sweep can catch.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "level/LevelStructure.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

struct Box {
    double x0, x1, y0, y1, z0, z1;
};

Box Of(const BlockRecord& b) {
    return {b.X, b.X + b.scaleX, b.Y, b.Y + b.scaleY, b.Z, b.Z + b.scalez};
}

constexpr double Eps = 1e-3;

bool SameTop(const Box& a, const Box& b) {
    return std::abs(a.y1 - b.y1) < Eps;
}

// The generator's kerbs: a unit wide or less and two thick, standing a unit
// above the road; the car never drives along their tops.
bool Kerb(const Box& b) {
    return b.x1 - b.x0 < 1 + Eps && b.y1 - b.y0 > 2 - Eps;
}

bool Covers(const Box& b, double x, double z) {
    return x > b.x0 && x < b.x1 && z > b.z0 && z < b.z1;
}

// Sources keep three decimals, so two blocks meeting at a third of a unit
// may touch a thousandth apart either way.
constexpr double Rounding = 0.005;

// Names the first two blocks of a track that share space, or "".
std::string Overlap(const std::vector<Box>& boxes) {
    for (size_t i = 0; i < boxes.size(); ++i)
        for (size_t j = i + 1; j < boxes.size(); ++j) {
            const Box &a = boxes[i], &b = boxes[j];
            if (std::min(a.x1, b.x1) - std::max(a.x0, b.x0) > Rounding &&
                std::min(a.y1, b.y1) - std::max(a.y0, b.y0) > Rounding &&
                std::min(a.z1, b.z1) - std::max(a.z0, b.z0) > Rounding)
                return "blocks " + std::to_string(i) + " and " + std::to_string(j);
        }
    return "";
}

// Names the first place where a block's top stops and road of the same
// height carries on a little further out: a crack narrower than a car.
std::string Crack(const std::vector<Box>& boxes) {
    constexpr double Near = 0.02, Far = 0.35;
    for (size_t i = 0; i < boxes.size(); ++i) {
        const Box& b = boxes[i];
        if (Kerb(b)) continue;
        auto probe = [&](double x, double z, double dx, double dz) {
            bool near = false, far = false;
            for (const Box& o : boxes) {
                // Anything standing at the road's height fills the gap (a
                // kerb between two lanes); only road goes on beyond it.
                if (o.y1 > b.y1 - Eps && o.y0 < b.y1) near = near || Covers(o, x + dx * Near, z + dz * Near);
                if (SameTop(b, o) && !Kerb(o)) far = far || Covers(o, x + dx * Far, z + dz * Far);
            }
            return far && !near;
        };
        for (double z = b.z0 + 0.05; z < b.z1; z += 0.5)
            for (auto [x, dx] : {std::pair{b.x0, -1.0}, std::pair{b.x1, 1.0}})
                if (probe(x, z, dx, 0))
                    return "beside block " + std::to_string(i) + " at z " + std::to_string(z);
        for (double x = b.x0 + 0.05; x < b.x1; x += 0.5)
            for (auto [z, dz] : {std::pair{b.z0, -1.0}, std::pair{b.z1, 1.0}})
                if (probe(x, z, 0, dz))
                    return "across block " + std::to_string(i) + " at x " + std::to_string(x);
    }
    return "";
}

void CheckFile(const std::string& path) {
    LevelStructure levels(path);
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;
    for (int32_t n = 1; n <= levels.LevelCount(); ++n) {
        std::vector<Box> boxes;
        for (const BlockRecord& b : levels.Level(n).Blocks) boxes.push_back(Of(b));
        SCOPED_TRACE(path + " track " + std::to_string(n));
        EXPECT_EQ(Overlap(boxes), "");
        EXPECT_EQ(Crack(boxes), "");
    }
}

TEST(BlockLayout, NoTwoBlocksShareSpaceAndTheRoadHasNoCracks) {
    CheckFile(std::string(QUORBIT_GAME_DIR) + "/levels.dat");
    int examples = 0;
    for (const auto& e : fs::directory_iterator(std::string(QUORBIT_GAME_DIR) + "/usertracks"))
        if (e.path().extension() == ".dat") {
            CheckFile(e.path().string());
            ++examples;
        }
    EXPECT_GE(examples, 3);
}

// The checks themselves, on boxes laid the ways the generator could get
// wrong: strips that reach into each other, and strips that stop short.
TEST(BlockLayout, TheChecksCatchOverlapsAndCracks) {
    const Box left{-3, -1, 0, 1, 0, 40}, tile{-1, 1, 0, 1, 10, 14}, right{1, 3, 0, 1, 0, 40};
    EXPECT_EQ(Overlap({left, tile, right}), "");
    EXPECT_EQ(Crack({left, tile, right}), "");
    EXPECT_NE(Overlap({left, {-1.2, 1, 0, 1, 10, 14}, right}), "");
    EXPECT_NE(Crack({left, {-0.9, 1, 0, 1, 10, 14}, right}), "");           // a slit beside the tile
    EXPECT_NE(Crack({{-3, 3, 0, 1, 0, 20}, {-3, 3, 0, 1, 20.1, 40}}), "");  // a slit across the road
    // A real gap, a step down, a kerb on the road's edge and a thin kerb
    // between two lanes are no cracks.
    EXPECT_EQ(Crack({left, {-1, -0.8, 0, 2, 0, 40}, {-0.8, 1, 0, 1, 0, 40}}), "");
    EXPECT_EQ(Crack({{-3, -2, -1, 1, 0, 40}, {-1.8, -0.8, -1, 1, 0, 40}}), "");  // two kerbs side by side
    EXPECT_EQ(Crack({{-3, 3, 0, 1, 0, 20}, {-3, 3, 0, 1, 25, 40}}), "");
    EXPECT_EQ(Crack({{-3, 3, 0, 1, 0, 20}, {-3, 3, -1, 0, 20.1, 40}}), "");
    EXPECT_EQ(Crack({{-3, 3, 0, 1, 0, 40}, {3, 4, 0, 2, 0, 40}}), "");
}

}  // namespace
}  // namespace qb
