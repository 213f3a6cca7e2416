// The instruction page on blocks shows the very tiles the tracks are drawn
// with, every special kind and the moving platform among them, so what a
// player learns there is what the road shows.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <string>

#include "platform/sdl/GlTextures.h"

namespace qb {
namespace {

constexpr int kCells = 4;
using Grid = std::array<std::array<double, 3>, kCells * kCells>;

// Mean colour of a kCells x kCells grid over the square (x, y, size).
Grid Means(const ArgbImage& im, double x, double y, double size) {
    Grid g{};
    const double cell = size / kCells;
    for (int c = 0; c < kCells * kCells; ++c) {
        const int x0 = static_cast<int>(x + (c % kCells) * cell),
                  y0 = static_cast<int>(y + (c / kCells) * cell);
        const int x1 = static_cast<int>(x + (c % kCells + 1) * cell),
                  y1 = static_cast<int>(y + (c / kCells + 1) * cell);
        int n = 0;
        for (int j = y0; j < y1; ++j)
            for (int i = x0; i < x1; ++i) {
                const uint32_t p = im.pixels[static_cast<size_t>(j * im.width + i)];
                g[static_cast<size_t>(c)][0] += (p >> 16) & 255;
                g[static_cast<size_t>(c)][1] += (p >> 8) & 255;
                g[static_cast<size_t>(c)][2] += p & 255;
                ++n;
            }
        for (double& v : g[static_cast<size_t>(c)]) v /= n;
    }
    return g;
}

double Difference(const Grid& a, const Grid& b) {
    double sum = 0;
    for (size_t c = 0; c < a.size(); ++c)
        for (int k = 0; k < 3; ++k) sum += std::fabs(a[c][k] - b[c][k]);
    return sum / (a.size() * 3);
}

TEST(InstructionPage, TheBlocksPageShowsTheTilesTheTracksAreDrawnWith) {
    const std::string dir = QUORBIT_GAME_DIR;
    ArgbImage page;
    ASSERT_TRUE(LoadArgbImage(dir + "/gui/blocktypes.bmp", page));
    // Two columns of five 46-pixel pictures; the last one is the star.
    const char* const tiles[] = {"road",  "finish", "bounce",   "ice", "falling",
                                 "turbo", "deadly", "platform", "ramp"};
    Grid shown[9], made[9];
    for (int i = 0; i < 9; ++i) {
        ArgbImage tile;
        ASSERT_TRUE(LoadArgbImage(dir + "/textures/" + tiles[i] + ".bmp", tile)) << tiles[i];
        const int x = 30 + (i / 5) * 340, y = 58 + (i % 5) * 56;
        // The inner part of each, clear of the edges the scaling blurs.
        shown[i] = Means(page, x + 3, y + 3, 40);
        made[i] = Means(tile, tile.width * 3 / 46.0, tile.height * 3 / 46.0, tile.width * 40 / 46.0);
    }
    // Each picture matches its own tile far better than any other kind's.
    for (int i = 0; i < 9; ++i) {
        EXPECT_LT(Difference(shown[i], made[i]), 12) << tiles[i];
        for (int j = 0; j < 9; ++j) {
            if (j == i) continue;
            EXPECT_GT(Difference(shown[i], made[j]), 2 * Difference(shown[i], made[i]))
                << tiles[i] << " " << tiles[j];
        }
    }
}

}  // namespace
}  // namespace qb
