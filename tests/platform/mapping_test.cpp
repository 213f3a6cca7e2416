// The pure pieces of the real platform: letterboxing and mouse positions,
// the Direct3D-to-GL transforms, point-sprite size, colour keys, .x meshes,
// font look-up and message-box text. (The colour byte order is checked on
// real pixels in gl_smoke_test.)
#include <SDL.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <tuple>

#include "platform/D3DMath.h"
#include "platform/sdl/GlText.h"
#include "platform/sdl/GlTextures.h"
#include "platform/sdl/GlTransforms.h"
#include "platform/sdl/Letterbox.h"
#include "platform/sdl/SdlWindow.h"
#include "platform/sdl/XMesh.h"

namespace qb {
namespace {

Vector4 Apply(const Vector4& v, const Matrix4& m) {
    Vector4 r;
    r.x = v.x * m.m[0][0] + v.y * m.m[1][0] + v.z * m.m[2][0] + v.w * m.m[3][0];
    r.y = v.x * m.m[0][1] + v.y * m.m[1][1] + v.z * m.m[2][1] + v.w * m.m[3][1];
    r.z = v.x * m.m[0][2] + v.y * m.m[1][2] + v.z * m.m[2][2] + v.w * m.m[3][2];
    r.w = v.x * m.m[0][3] + v.y * m.m[1][3] + v.z * m.m[2][3] + v.w * m.m[3][3];
    return r;
}

TEST(Letterbox, ThePictureKeepsItsShapeWithBarsOnTheSpareSides) {
    struct Case {
        int windowW, windowH, bufferW, bufferH;
        ViewRect expected;
    };
    const Case cases[] = {
        {1920, 1080, 800, 600, {240, 0, 1440, 1080}},  // wide desktop: bars left and right
        {1024, 1024, 1024, 768, {0, 128, 1024, 768}},  // tall window: bars top and bottom
        {800, 600, 800, 600, {0, 0, 800, 600}},
    };
    for (const Case& c : cases) {
        const ViewRect r = LetterboxRect(c.windowW, c.windowH, c.bufferW, c.bufferH);
        EXPECT_EQ(std::tie(r.x, r.y, r.w, r.h),
                  std::tie(c.expected.x, c.expected.y, c.expected.w, c.expected.h))
            << c.windowW << "x" << c.windowH;
    }
}

TEST(Letterbox, MousePositionsComeBackInBackBufferPixels) {
    auto at = [](const ViewRect& view, float windowX, float windowY) {
        float x, y;
        WindowToBackBuffer(view, 800, 600, windowX, windowY, x, y);
        return std::pair(x, y);
    };
    EXPECT_EQ(at(LetterboxRect(800, 600, 800, 600), 123, 456), std::pair(123.0f, 456.0f));
    const ViewRect r = LetterboxRect(1920, 1080, 800, 600);
    EXPECT_EQ(at(r, 240, 0), std::pair(0.0f, 0.0f));        // the picture's top-left corner
    EXPECT_EQ(at(r, 960, 540), std::pair(400.0f, 300.0f));  // the desktop's centre
    EXPECT_LT(at(r, 100, 540).first, 0);                    // over the left bar: off the picture
    EXPECT_GT(at(r, 1800, 540).first, 800);                 // over the right bar
    // A window of no size does not divide by zero.
    const ViewRect none = LetterboxRect(0, 0, 800, 600);
    EXPECT_EQ(none.w, 0);
    EXPECT_EQ(at(none, 5, 6), std::pair(5.0f, 6.0f));
}

TEST(GlTransforms, DepthMappingKeepsXYAndWAndIsLinearInD3DDepth) {
    const Matrix4 d3d = MatrixPerspectiveFovLH(3.14159265f / 4, 1.0f, 0.1f, 500.0f);
    const Matrix4 gl = MatrixMultiply(d3d, D3DDepthToGl());
    for (float z : {0.5f, 3.0f, 25.0f, 250.0f}) {
        const Vector4 a = Apply({1.5f, -2.0f, z, 1}, d3d);
        const Vector4 b = Apply({1.5f, -2.0f, z, 1}, gl);
        EXPECT_FLOAT_EQ(a.x, b.x);
        EXPECT_FLOAT_EQ(a.y, b.y);
        EXPECT_FLOAT_EQ(a.w, b.w);
        EXPECT_NEAR(b.z / b.w, 2.0f * (a.z / a.w) - 1.0f, 1e-5);
    }
}

TEST(GlTransforms, ScreenPixelsLandOnGlPixelCentres) {
    const Matrix4 s = ScreenSpaceProjection(800, 600);
    // Direct3D's pixel (0, 0) is GL's top-left pixel, centre (0.5, 599.5).
    const Vector4 tl = Apply({0, 0, 0, 1}, s);
    EXPECT_NEAR((tl.x + 1) / 2 * 800, 0.5f, 1e-4);
    EXPECT_NEAR((tl.y + 1) / 2 * 600, 599.5f, 1e-3);
    EXPECT_NEAR(tl.z, -1.0f, 1e-6);
    const Vector4 br = Apply({799, 599, 1, 1}, s);
    EXPECT_NEAR((br.x + 1) / 2 * 800, 799.5f, 1e-3);
    EXPECT_NEAR((br.y + 1) / 2 * 600, 0.5f, 1e-3);
    EXPECT_NEAR(br.z, 1.0f, 1e-6);
}

TEST(GlTransforms, DefaultPointScaleGivesViewportHeightTimesSize) {
    EXPECT_FLOAT_EQ(PointSpriteScreenSize(0.03f, 600), 18.0f);
    EXPECT_FLOAT_EQ(PointSpriteScreenSize(0.06f, 768, 40.0f), 0.06f * 768);
    // With C = 1 the size falls off with distance.
    EXPECT_NEAR(PointSpriteScreenSize(0.5f, 600, 10.0f, 0, 0, 1), 30.0f, 1e-4);
}

TEST(ColourKey, OnlyExactArgbMatchesTurnTransparentBlack) {
    uint32_t px[] = {0xFF000000u, 0xFF000001u, 0x00000000u, 0xFFBDBDBDu, 0xFF000000u, 0xFEFFFFFFu};
    EXPECT_EQ(ApplyColourKey(px, 6, 0xFF000000u), 2u);
    EXPECT_EQ(px[0], 0u);
    EXPECT_EQ(px[1], 0xFF000001u);  // nearly black stays
    EXPECT_EQ(px[3], 0xFFBDBDBDu);
    EXPECT_EQ(px[4], 0u);
    EXPECT_EQ(ApplyColourKey(px, 6, 0xFFBDBDBDu), 1u);
    EXPECT_EQ(px[3], 0u);
    // Key 0 means no key: transparent black pixels stay as they are.
    EXPECT_EQ(ApplyColourKey(px, 6, 0), 0u);
    EXPECT_EQ(px[1], 0xFF000001u);
}

TEST(ColourKey, BitmapPixelsFromAFileAreOpaqueUntilKeyed) {
    const std::string path = ::testing::TempDir() + "qb_key.bmp";
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, 4, 2, 24, SDL_PIXELFORMAT_RGB24);
    ASSERT_NE(s, nullptr);
    SDL_FillRect(s, nullptr, SDL_MapRGB(s->format, 255, 0, 255));
    SDL_Rect right{2, 0, 2, 2};
    SDL_FillRect(s, &right, SDL_MapRGB(s->format, 10, 200, 30));
    ASSERT_EQ(SDL_SaveBMP(s, path.c_str()), 0);
    SDL_FreeSurface(s);
    ArgbImage img;
    ASSERT_TRUE(LoadArgbImage(path, img));
    ASSERT_EQ(std::tuple(img.width, img.height), std::tuple(4, 2));
    const uint32_t m = 0xFFFF00FFu, g = 0xFF0AC81Eu;
    EXPECT_EQ(img.pixels, (std::vector<uint32_t>{m, m, g, g, m, m, g, g}));
    EXPECT_EQ(ApplyColourKey(img.pixels.data(), img.pixels.size(), m), 4u);
    EXPECT_EQ(img.pixels, (std::vector<uint32_t>{0, 0, g, g, 0, 0, g, g}));
    EXPECT_FALSE(LoadArgbImage(::testing::TempDir() + "qb_missing.bmp", img));
}

const char* TriangleX = R"(xof 0303txt 0032
Material Red {
 1.0;0.0;0.0;1.0;;
 0.0;
 0.0;0.0;0.0;;
 0.0;0.0;0.0;;
 TextureFilename { "skin.bmp"; }
}
Material Plain {
 0.0;0.5;1.0;1.0;;
 0.0;
 0.0;0.0;0.0;;
 0.0;0.0;0.0;;
}
Mesh Tri {
 4;
 0.0;0.0;1.0;,
 1.0;0.0;2.0;,
 0.0;3.0;1.0;,
 5.0;5.0;5.0;;
 2;
 3;0,1,2;,
 3;1,3,2;;
 MeshMaterialList {
  2;
  2;
  0,
  1;;
  {Red}
  {Plain}
 }
 MeshTextureCoords {
  4;
  0.0;0.0;,
  1.0;0.0;,
  0.0;1.0;,
  0.25;0.75;;
 }
}
)";

TEST(XMeshFile, CoordinatesWindingAndTextureCoordinatesComeOutAsStored) {
    const std::string path = ::testing::TempDir() + "qb_tri.x";
    std::ofstream(path) << TriangleX;
    XMeshData mesh;
    ASSERT_TRUE(LoadXMesh(path, mesh));
    ASSERT_EQ(mesh.materials.size(), 2u);
    EXPECT_EQ(std::tuple(mesh.materials[0].textureFile, mesh.materials[0].diffuse.r,
                         mesh.materials[1].textureFile, mesh.materials[1].diffuse.b),
              std::tuple("skin.bmp", 1.0f, "", 1.0f));
    ASSERT_EQ(mesh.subsets.size(), 2u);
    ASSERT_EQ(mesh.subsets[0].size(), 3u);
    ASSERT_EQ(mesh.subsets[1].size(), 3u);
    // Position and texture coordinates of a corner, as the file stores them.
    auto corner = [](const auto& v) { return std::tuple(v.x, v.y, v.z, v.u, v.v); };
    const auto& a = mesh.subsets[0];
    // Face 0,1,2 in the file's order, left-handed z untouched; Direct3D
    // texture coordinates: v grows downwards, as in the file.
    EXPECT_EQ(corner(a[0]), std::tuple(0.0f, 0.0f, 1.0f, 0.0f, 0.0f));
    EXPECT_EQ(corner(a[1]), std::tuple(1.0f, 0.0f, 2.0f, 1.0f, 0.0f));
    EXPECT_EQ(corner(a[2]), std::tuple(0.0f, 3.0f, 1.0f, 0.0f, 1.0f));
    EXPECT_EQ(corner(mesh.subsets[1][1]), std::tuple(5.0f, 5.0f, 5.0f, 0.25f, 0.75f));  // face 1,3,2
    EXPECT_EQ(a[0].diffuse, 0xFFFFFFFFu);  // unlit and without vertex colours: white
    EXPECT_FALSE(LoadXMesh(::testing::TempDir() + "qb_none.x", mesh));
}

TEST(Fonts, PointsAreMeantFor96Dpi) {
    EXPECT_EQ(FontPixelSize(18), 24);
    EXPECT_EQ(FontPixelSize(13), 17);
    EXPECT_EQ(FontPixelSize(12), 16);
}

TEST(Fonts, TheGamesFaceNameFindsAScalableSans) {
    bool boldFace = false;
    const std::string file = ResolveFontFile("Ariel", true, boldFace);
    ASSERT_FALSE(file.empty());
    EXPECT_TRUE(std::filesystem::exists(file)) << file;
    bool regularBold = true;
    const std::string regular = ResolveFontFile("Ariel", false, regularBold);
    EXPECT_FALSE(regularBold);
    if (file.find("Liberation") != std::string::npos) {
        EXPECT_TRUE(boldFace) << file;
    }
}

TEST(MessageBoxText, LongMessagesBreakAtBlanksAndShortOnesStayWhole) {
    EXPECT_EQ(WrapForMessageBox("No 3D hardware detected."), "No 3D hardware detected.");
    const std::string wrapped = WrapForMessageBox("aaaa bbbb cccc dddd", 9);
    EXPECT_EQ(wrapped, "aaaa bbbb\ncccc dddd");
    // A word longer than a line is kept whole on a line of its own.
    EXPECT_EQ(WrapForMessageBox("x /a/very/long/path/levels.dat y", 10),
              "x\n/a/very/long/path/levels.dat\ny");
}

}  // namespace
}  // namespace qb
