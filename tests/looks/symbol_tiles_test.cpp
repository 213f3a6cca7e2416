// The special blocks, the moving platform and the ramp drawn by quorbit-shot
// from straight above, one symbol tile each: every pair must differ clearly
// in its pattern of light and dark, in grey and as the three kinds of colour
// blindness see it, so no kind is told apart by hue alone.
//
// Measure: each tile's inner 80 % is averaged into a 10 x 10 grid of CIE
// lightness L* (0 black .. 100 white); two tiles differ by the root mean
// square of their cell differences. Colour blindness is simulated with the
// full-severity matrices of Machado, Oliveira and Fernandes (2009) on linear
// RGB. Threshold: 18 L* for every pair in every view (a plain black/white
// chequer against its inverse would give 100; two renders of one tile 0).
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/D3DMath.h"
#include "platform/sdl/GlTextures.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

namespace fs = std::filesystem;
constexpr int kGrid = 10;
using Pattern = std::array<double, kGrid * kGrid>;
using Matrix3 = std::array<std::array<double, 3>, 3>;

struct Tile {
    const char* kind;
    float x, z;  // minimum corner of the 2 x 2 top, at height 1
};

// Two rows of four, two units square, two apart.
const Tile kTiles[] = {{"finish", -7, 8}, {"bounce", -3, 8},  {"ice", 1, 8},       {"falling", 5, 8},
                       {"turbo", -7, 12}, {"deadly", -3, 12}, {"platform", 1, 12}, {"ramp", 5, 12}};

const char* const kTrack = R"(track 1  Every Kind
  gravity 10
  texture side "wall.bmp"
  texture plat "platform.bmp"
  texture slope "ramp.bmp"
  texture flag "finish.bmp"
  texture pad "bounce.bmp"
  texture icy "ice.bmp"
  texture drop "falling.bmp"
  texture boost "turbo.bmp"
  texture danger "deadly.bmp"
  block -7 0 8  2 1 2  tex side side side flag  finish
  block -3 0 8  2 1 2  tex side side side pad  bounce
  block 1 0 8  2 1 2  tex side side side icy  ice
  block 5 0 8  2 1 2  tex side side side drop  falling
  block -7 0 12  2 1 2  tex side side side boost  turbo
  block -3 0 12  2 1 2  tex side side side danger  deadly
  platform 1 0 12  2 1 2  tex side side side plat  dir still speed 0 dist 0
  ramp 5 0 12  2 1 2  tex slope side
)";

const Vector3 kEye{0, 22, 9}, kAt{0, 1, 11};

const Matrix3 kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
const Matrix3 kProtan = {
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
const Matrix3 kDeutan = {
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
const Matrix3 kTritan = {
    {{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};

double Linear(int c) {
    const double v = c / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

// L* of a pixel as seen through `m`.
double Lightness(uint32_t argb, const Matrix3& m) {
    const double rgb[3] = {Linear((argb >> 16) & 255), Linear((argb >> 8) & 255), Linear(argb & 255)};
    double seen[3];
    for (int i = 0; i < 3; ++i)
        seen[i] = std::clamp(m[i][0] * rgb[0] + m[i][1] * rgb[1] + m[i][2] * rgb[2], 0.0, 1.0);
    const double y = 0.2126 * seen[0] + 0.7152 * seen[1] + 0.0722 * seen[2];
    return y > 216.0 / 24389.0 ? 116.0 * std::cbrt(y) - 16.0 : y * 24389.0 / 27.0;
}

class SymbolTiles : public ::testing::Test {
protected:
    static ArgbImage picture;
    static std::string skipped;

    static void SetUpTestSuite() {
        const fs::path dir = test::FreshDir("symbols");
        test::LinkGameFolders(dir.string(), {"textures", "backgrounds", "models", "skins", "misc"});
        std::ofstream(dir / "kinds.trk") << kTrack;
        const std::string tools = std::string(QUORBIT_TOOLS_DIR) + "/";
        const std::string build = tools + "quorbit-track build -o " + (dir / "levels.dat").string() + " " +
                                  (dir / "kinds.trk").string() + " >/dev/null";
        ASSERT_EQ(std::system(build.c_str()), 0) << build;
        // The GL driver's own allocations are no leak of ours.
        const std::string shot = "ASAN_OPTIONS=detect_leaks=0 " + tools + "quorbit-shot --game-dir " +
                                 dir.string() + " --track 1 --mode 1 --eye 0,22,9 --at 0,1,11 --out " +
                                 (dir / "kinds.png").string() + " >/dev/null 2>&1";
        if (std::system(shot.c_str()) != 0) {
            skipped = "quorbit-shot found no OpenGL to draw with";
            return;
        }
        ASSERT_TRUE(LoadArgbImage((dir / "kinds.png").string(), picture));
        fs::remove_all(dir);
    }

    // Where a point of the world lands in the 800 x 600 picture.
    static std::pair<double, double> Project(float x, float y, float z) {
        const Matrix4 view = MatrixLookAtLH(kEye, kAt, {0, 1, 0});
        const Matrix4 proj = MatrixPerspectiveFovLH(3.14159265f / 4, 1.0f, 0.1f, 500.0f);
        const Vector3 ndc = TransformCoord(TransformCoord({x, y, z}, view), proj);
        return {(ndc.x + 1) / 2 * picture.width, (1 - ndc.y) / 2 * picture.height};
    }

    // The tile's inner 80 % averaged into the grid; the ramp's slope is
    // sampled at its mid height.
    static Pattern Sample(const Tile& t, const Matrix3& m) {
        Pattern p{};
        const float top = std::string(t.kind) == "ramp" ? 0.5f : 1.0f;
        constexpr int kSub = 4;
        for (int gy = 0; gy < kGrid; ++gy)
            for (int gx = 0; gx < kGrid; ++gx) {
                double sum = 0;
                for (int sy = 0; sy < kSub; ++sy)
                    for (int sx = 0; sx < kSub; ++sx) {
                        const float u = 0.1f + 0.8f * (gx + (sx + 0.5f) / kSub) / kGrid;
                        const float w = 0.1f + 0.8f * (gy + (sy + 0.5f) / kSub) / kGrid;
                        // Rows run from the far edge (+z, the image's top) to the near one.
                        const auto [px, py] = Project(t.x + 2 * u, top, t.z + 2 - 2 * w);
                        const int ix = std::clamp(static_cast<int>(px), 0, picture.width - 1);
                        const int iy = std::clamp(static_cast<int>(py), 0, picture.height - 1);
                        sum += Lightness(picture.pixels[static_cast<size_t>(iy) * picture.width + ix], m);
                    }
                p[static_cast<size_t>(gy * kGrid + gx)] = sum / (kSub * kSub);
            }
        return p;
    }

    static double Distance(const Pattern& a, const Pattern& b) {
        double sum = 0;
        for (size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
        return std::sqrt(sum / static_cast<double>(a.size()));
    }
};

ArgbImage SymbolTiles::picture;
std::string SymbolTiles::skipped;

TEST_F(SymbolTiles, EveryPairDiffersInLightnessInGreyAndToColourBlindEyes) {
    if (!skipped.empty()) GTEST_SKIP() << skipped;
    ASSERT_EQ(picture.width, 800);
    ASSERT_EQ(picture.height, 600);
    const std::pair<const char*, const Matrix3*> views[] = {
        {"grey", &kIdentity}, {"deuteranopia", &kDeutan}, {"protanopia", &kProtan}, {"tritanopia", &kTritan}};
    for (const auto& [name, matrix] : views) {
        std::vector<Pattern> patterns;
        for (const Tile& t : kTiles) patterns.push_back(Sample(t, *matrix));
        double closest = 1e9;
        for (size_t a = 0; a < patterns.size(); ++a)
            for (size_t b = a + 1; b < patterns.size(); ++b) {
                const double d = Distance(patterns[a], patterns[b]);
                closest = std::min(closest, d);
                EXPECT_GE(d, 18.0) << name << ": " << kTiles[a].kind << " against " << kTiles[b].kind;
            }
        std::printf("%-13s closest pair %.1f L*\n", name, closest);
    }
}

}  // namespace
}  // namespace qb
