// The instruction page on blocks shows the very tiles the tracks are drawn
// with, the moving platform among them, so what a player learns there is
// what the road shows.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "platform/sdl/GlTextures.h"

namespace qb {
namespace {

// Mean red, green and blue of a 4 x 4 grid over the square (x, y, size).
std::vector<double> Means(const ArgbImage& im, double x, double y, double size) {
    std::vector<double> m(48, 0.0);
    const int n = static_cast<int>(size);
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i) {
            const uint32_t p =
                im.pixels[static_cast<size_t>(static_cast<int>(y + j) * im.width + static_cast<int>(x + i))];
            const size_t cell = static_cast<size_t>(3 * ((j * 4 / n) * 4 + i * 4 / n));
            for (int k = 0; k < 3; ++k) m[cell + k] += ((p >> (16 - 8 * k)) & 255) * 16.0 / (n * n);
        }
    return m;
}

double Difference(const std::vector<double>& a, const std::vector<double>& b) {
    double sum = 0;
    for (size_t c = 0; c < a.size(); ++c) sum += std::fabs(a[c] - b[c]) / a.size();
    return sum;
}

TEST(InstructionPage, TheBlocksPageShowsTheTilesTheTracksAreDrawnWith) {
    const std::string dir = QUORBIT_GAME_DIR;
    ArgbImage page;
    ASSERT_TRUE(LoadArgbImage(dir + "/gui/blocktypes.bmp", page));
    // Two columns of five 46-pixel pictures (the tenth is the star); the
    // inner 40 pixels are compared, clear of the edges the scaling blurs.
    const char* const tiles[] = {"road",  "finish", "bounce",   "ice", "falling",
                                 "turbo", "deadly", "platform", "ramp"};
    std::vector<double> shown[9], made[9];
    for (int i = 0; i < 9; ++i) {
        ArgbImage tile;
        ASSERT_TRUE(LoadArgbImage(dir + "/textures/" + tiles[i] + ".bmp", tile)) << tiles[i];
        shown[i] = Means(page, 33 + (i / 5) * 340, 61 + (i % 5) * 56, 40);
        made[i] = Means(tile, tile.width * 3 / 46.0, tile.width * 3 / 46.0, tile.width * 40 / 46.0);
    }
    for (int i = 0; i < 9; ++i) {
        EXPECT_LT(Difference(shown[i], made[i]), 12) << tiles[i];
        for (int j = 0; j < 9; ++j)
            EXPECT_TRUE(j == i || Difference(shown[i], made[j]) > 2 * Difference(shown[i], made[i]))
                << tiles[i] << " looks like " << tiles[j];
    }
}

}  // namespace
}  // namespace qb
