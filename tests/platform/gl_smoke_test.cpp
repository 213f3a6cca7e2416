// The OpenGL device drawing for real into its back buffer (hidden window):
// a textured block with Direct3D's culling, a colour-keyed screen quad, the
// translucent button blend, text and a point sprite, checked pixel by pixel
// on the saved picture. Skips where there is no OpenGL at all.
#include <SDL.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "platform/D3DMath.h"
#include "platform/sdl/GlTextures.h"
#include "platform/sdl/SdlGraphics.h"
#include "platform/sdl/SdlKeyboard.h"
#include "platform/sdl/SdlWindow.h"
#include "platform/sdl/WindowMessage.h"
#include "world/clsBackground.h"

namespace qb {
namespace {

constexpr uint32_t Backdrop = 0xFF000040u;  // clear colour: (0, 0, 64)

std::string WriteBmp(const std::string& name, int w, int h, uint32_t left, uint32_t right) {
    const std::string path = ::testing::TempDir() + name;
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, w, h, 24, SDL_PIXELFORMAT_RGB24);
    auto map = [&](uint32_t c) { return SDL_MapRGB(s->format, (c >> 16) & 255, (c >> 8) & 255, c & 255); };
    SDL_FillRect(s, nullptr, map(left));
    SDL_Rect r{w / 2, 0, w - w / 2, h};
    SDL_FillRect(s, &r, map(right));
    SDL_SaveBMP(s, path.c_str());
    SDL_FreeSurface(s);
    return path;
}

class GlDevice : public ::testing::Test {
protected:
    SdlKeyboard keyboard;
    SdlWindow window{keyboard, true, ""};
    SdlGraphics device{window};
    ArgbImage picture;

    void SetUp() override {
        // A hidden window draws off-screen when there is no display at all;
        // only a machine without any OpenGL skips.
        window.show();
        if (!device.hasHardwareRasterizer()) GTEST_SKIP() << "no OpenGL: " << window.failure();
        device.createDevice(PresentParams{800, 600, 0});
        device.setRenderState(RenderState::ZEnable, 1);
        device.setRenderState(RenderState::AlphaBlendEnable, 1);
    }

    void shoot(const std::string& name) {
        device.present();
        const std::string path = ::testing::TempDir() + name;
        ASSERT_TRUE(device.saveScreenshot(path));
        ASSERT_TRUE(LoadArgbImage(path, picture));
        ASSERT_EQ(picture.width, 800);
        ASSERT_EQ(picture.height, 600);
    }
    uint32_t at(int x, int y) const {
        return picture.pixels[static_cast<size_t>(y) * 800 + static_cast<size_t>(x)];
    }
    static int channel(uint32_t c, int shift) { return static_cast<int>((c >> shift) & 255); }
    void expectColour(int x, int y, int r, int g, int b, int tolerance = 3) const {
        const uint32_t c = at(x, y);
        EXPECT_NEAR(channel(c, 16), r, tolerance) << "red at " << x << "," << y;
        EXPECT_NEAR(channel(c, 8), g, tolerance) << "green at " << x << "," << y;
        EXPECT_NEAR(channel(c, 0), b, tolerance) << "blue at " << x << "," << y;
    }

    // The camera 3 units in front of the unit cube's front face, looking at it.
    void lookAtCube() {
        device.setTransform(TransformKind::View,
                            MatrixLookAtLH({0.5f, 0.5f, -3}, {0.5f, 0.5f, 0}, {0, 1, 0}));
        device.setTransform(TransformKind::Projection,
                            MatrixPerspectiveFovLH(3.14159265f / 4, 1.0f, 0.1f, 500.0f));
        device.setTransform(TransformKind::World, MatrixIdentity());
    }
};

BlockVertex V(float x, float y, float z, uint32_t diffuse, float u, float v) {
    return {x, y, z, diffuse, 0, u, v};
}

// A textured screen quad for a triangle strip, corners top left, top right,
// bottom left, bottom right; a button's top-left corner sits at depth 1.
std::array<ScreenVertex, 4> Quad(float x, float y, float w, float h, uint32_t colour, float z = 0,
                                 float topLeftZ = 0) {
    return {{{x, y, topLeftZ, 1, colour, 0, 0, 0},
             {x + w, y, z, 1, colour, 0, 1, 0},
             {x, y + h, z, 1, colour, 0, 0, 1},
             {x + w, y + h, z, 1, colour, 0, 1, 1}}};
}

TEST_F(GlDevice, BlockFrontFaceShowsAndBackWindingIsCulled) {
    const TextureId red =
        device.createTextureFromFile(WriteBmp("qb_red.bmp", 8, 8, 0xFF0000, 0xFF0000), 0, 0, 0, true);
    ASSERT_NE(red, 0u);
    // The block's front face as the block builds it, grey 9A9A9A.
    const BlockVertex front[6] = {V(0, 1, 0, 0xFF9A9A9A, 0, 0), V(1, 1, 0, 0xFF9A9A9A, 1, 0),
                                  V(0, 0, 0, 0xFF9A9A9A, 0, 1), V(1, 1, 0, 0xFF9A9A9A, 1, 0),
                                  V(1, 0, 0, 0xFF9A9A9A, 1, 1), V(0, 0, 0, 0xFF9A9A9A, 0, 1)};
    const BufferId buffer = device.createVertexBuffer(front, 6);
    device.clear(Backdrop, 1.0f);
    lookAtCube();
    device.setTexture(red);
    device.drawBuffer(Primitive::TriangleList, buffer, 0, 2);
    // The same face wound the other way, moved left: Direct3D culls it.
    const BlockVertex back[6] = {front[0], front[2], front[1], front[3], front[5], front[4]};
    device.setTransform(TransformKind::World, MatrixTranslation(-1.5f, 0, 0));
    device.drawBlockVertices(Primitive::TriangleList, back, 2);
    shoot("qb_block.png");
    expectColour(400, 300, 154, 0, 0);  // red texture times grey diffuse
    expectColour(400 - 240, 300, 0, 0, 64);
    // The face spans a third of the view height around the centre: 0.5 / tan(pi/8) / 3.
    expectColour(400, 300 - 110, 154, 0, 0);
    expectColour(400, 300 - 135, 0, 0, 64);
}

// Track objects share buffers: each rewrites and draws its own range only.
TEST_F(GlDevice, ARangeOfASharedBufferIsRewrittenInPlaceAndTheRestKept) {
    auto face = [](uint32_t colour) {
        return std::array<BlockVertex, 6>{V(0, 1, 0, colour, 0, 0), V(1, 1, 0, colour, 1, 0),
                                          V(0, 0, 0, colour, 0, 1), V(1, 1, 0, colour, 1, 0),
                                          V(1, 0, 0, colour, 1, 1), V(0, 0, 0, colour, 0, 1)};
    };
    const std::array<BlockVertex, 12> blank{};
    const BufferId buffer = device.createVertexBuffer(blank.data(), 12);
    device.updateVertexBuffer(buffer, 6, face(0xFF00FF00).data(), 6);
    device.updateVertexBuffer(buffer, 0, face(0xFFFF0000).data(), 6);
    device.updateVertexBuffer(buffer, 8, face(0xFFFF0000).data(), 6);  // past the end: ignored
    device.clear(Backdrop, 1.0f);
    lookAtCube();
    device.setTexture(0);
    device.drawBuffer(Primitive::TriangleList, buffer, 6, 2);
    shoot("qb_range.png");
    expectColour(400, 300, 0, 255, 0);
    device.setTransform(TransformKind::World, MatrixTranslation(-1.0f, 0, 0));
    device.drawBuffer(Primitive::TriangleList, buffer, 0, 2);
    shoot("qb_range2.png");
    expectColour(400 - 240, 300, 255, 0, 0);
    expectColour(400, 300, 0, 255, 0);
}

TEST_F(GlDevice, NearerGeometryHidesFartherAndScreenDepthCounts) {
    const BlockVertex nearQuad[4] = {V(0, 1, 0, 0xFF00FF00, 0, 0), V(1, 1, 0, 0xFF00FF00, 1, 0),
                                     V(0, 0, 0, 0xFF00FF00, 0, 1), V(1, 0, 0, 0xFF00FF00, 1, 1)};
    const BlockVertex farQuad[4] = {V(-1, 2, 2, 0xFFFF0000, 0, 0), V(2, 2, 2, 0xFFFF0000, 1, 0),
                                    V(-1, -1, 2, 0xFFFF0000, 0, 1), V(2, -1, 2, 0xFFFF0000, 1, 1)};
    device.clear(Backdrop, 1.0f);
    lookAtCube();
    device.setTexture(0);  // untextured: the diffuse colour
    device.drawBlockVertices(Primitive::TriangleStrip, nearQuad, 2);
    device.drawBlockVertices(Primitive::TriangleStrip, farQuad, 2);
    // Screen quads: a near one (depth 0.1) then a far one (0.9) over the same pixels.
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(700, 20, 40, 40, 0xFFFFFF00, 0.1f, 0.1f).data(),
                              2);
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(700, 20, 40, 40, 0xFF00FFFF, 0.9f, 0.9f).data(),
                              2);
    shoot("qb_depth.png");
    expectColour(400, 300, 0, 255, 0);
    expectColour(400, 100, 255, 0, 0);
    expectColour(720, 40, 255, 255, 0);
    // Direct3D pixel rules: a quad from x = 700 to 740 covers pixels 700..739.
    expectColour(700, 40, 255, 255, 0);
    expectColour(739, 40, 255, 255, 0);
    expectColour(740, 40, 0, 0, 64);
    expectColour(699, 40, 0, 0, 64);
}

TEST_F(GlDevice, ColourKeyedQuadAndTranslucentButtonBlend) {
    // Left half magenta (the key), right half green.
    const TextureId keyed = device.createTextureFromFile(WriteBmp("qb_keyed.bmp", 64, 64, 0xFF00FF, 0x00FF00),
                                                         64, 64, 0xFFFF00FFu, true);
    ASSERT_NE(keyed, 0u);
    device.clear(Backdrop, 1.0f);
    device.setRenderState(RenderState::ZWriteEnable, 0);
    device.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
    device.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
    device.setTextureStageState(TextureStageState::AlphaOp, TopSelectArg1);
    device.setTextureStageState(TextureStageState::AlphaArg1, TaTexture);
    device.setTexture(keyed);
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(100, 100, 64, 63, 0xFFFFFFFFu, 0, 1).data(), 2);
    // A translucent button: diffuse alpha 160 modulated with itself, added to
    // what is there (destination alpha reads 1).
    device.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
    device.setRenderState(RenderState::DestBlend, BlendDestAlpha);
    device.setTextureStageState(TextureStageState::AlphaOp, TopModulate);
    device.setTextureStageState(TextureStageState::AlphaArg1, TaDiffuse);
    device.setTextureStageState(TextureStageState::AlphaArg2, TaCurrent);
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(300, 100, 64, 63, 0xA0FFFFFFu, 0, 1).data(), 2);
    shoot("qb_keyed.png");
    expectColour(110, 130, 0, 0, 64);       // keyed: the backdrop shows through
    expectColour(150, 130, 0, 255, 0);      // green, opaque
    expectColour(310, 130, 0, 0, 64);       // keyed texels are transparent black: nothing added
    expectColour(350, 130, 0, 100, 64, 4);  // green * (160/255)^2 added to the backdrop
}

// The game leaves blending on after its translucent pieces, and the device
// skips it for a piece it can prove opaque: what is not opaque, or is added
// rather than laid over, must still blend.
TEST_F(GlDevice, BlendingLeftOnStillBlendsAllThatIsNotOpaque) {
    const TextureId solid =
        device.createTextureFromFile(WriteBmp("qb_solid.bmp", 8, 8, 0x9A28C8, 0x9A28C8), 0, 0, 0, true);
    ASSERT_NE(solid, 0u);
    device.clear(Backdrop, 1.0f);
    device.setRenderState(RenderState::ZWriteEnable, 0);
    device.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
    device.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
    device.setTextureStageState(TextureStageState::AlphaOp, TopModulate);
    device.setTextureStageState(TextureStageState::AlphaArg1, TaTexture);
    device.setTextureStageState(TextureStageState::AlphaArg2, TaDiffuse);
    device.setTexture(solid);
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(100, 100, 40, 40, 0xFFFFFFFFu).data(), 2);
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(200, 100, 40, 40, 0x80FFFFFFu).data(), 2);
    // The same half-transparent colour from a vertex buffer, in front of the cube's camera.
    const BlockVertex face[4] = {V(0, 1, 0, 0x80FFFFFF, 0, 0), V(1, 1, 0, 0x80FFFFFF, 1, 0),
                                 V(0, 0, 0, 0x80FFFFFF, 0, 1), V(1, 0, 0, 0x80FFFFFF, 1, 1)};
    const BufferId buffer = device.createVertexBuffer(face, 4);
    lookAtCube();
    device.drawBuffer(Primitive::TriangleStrip, buffer, 0, 2);
    // Added light: an opaque source still adds to what is there.
    device.setRenderState(RenderState::SrcBlend, BlendOne);
    device.setRenderState(RenderState::DestBlend, BlendOne);
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(600, 100, 40, 40, 0xFFFFFFFFu).data(), 2);
    shoot("qb_blend_on.png");
    expectColour(120, 120, 0x9A, 0x28, 0xC8, 0);  // opaque: exactly the texel
    expectColour(220, 120, 77, 20, 132);          // half of it over the backdrop
    expectColour(400, 300, 77, 20, 132);
    expectColour(620, 120, 0x9A, 0x28, 255);  // blue 200 + 64, saturated
}

TEST_F(GlDevice, TextIsCentredTopAlignedAndClipped) {
    device.clear(Backdrop, 1.0f);
    const FontId font = device.createFont("Ariel", 18, true);
    ASSERT_NE(font, 0u);
    device.drawText(font, "Quorbit", 0, 500, 800, 560, 0xFFFFFFFFu);
    device.drawText(font, "WWWWWWWWWWWWWWWW", 390, 200, 600, 214, 0xFFFFFF00u);
    shoot("qb_text.png");
    int minX = 800, maxX = -1, minY = 600, maxY = -1, yellowOutside = 0, yellowInside = 0;
    for (int y = 0; y < 600; ++y)
        for (int x = 0; x < 800; ++x) {
            const uint32_t c = at(x, y);
            const bool lit = channel(c, 16) > 128;
            if (!lit) continue;
            if (y >= 500) {
                minX = std::min(minX, x), maxX = std::max(maxX, x);
                minY = std::min(minY, y), maxY = std::max(maxY, y);
            } else if (channel(c, 0) < 100) {
                (x >= 390 && x < 600 && y >= 200 && y < 214 ? yellowInside : yellowOutside) += 1;
            }
        }
    ASSERT_GE(maxX, 0) << "no text drawn";
    EXPECT_NEAR((minX + maxX) / 2.0, 400.0, 3.0);
    EXPECT_GT(maxX - minX, 50);
    EXPECT_GE(minY, 500);
    EXPECT_LT(minY, 512);
    EXPECT_LT(maxY, 535);
    EXPECT_GT(yellowInside, 20);
    EXPECT_EQ(yellowOutside, 0);
    // Drawing the same text again is served from the cache and looks the same.
    device.clear(Backdrop, 1.0f);
    device.drawText(font, "Quorbit", 0, 500, 800, 560, 0xFFFFFFFFu);
    const uint32_t before = at(minX, minY + 5);
    shoot("qb_text2.png");
    EXPECT_EQ(at(minX, minY + 5), before);
}

// The widest fifteen-letter name in the fastest-times panel (13 points) and
// in the name entry (30 points): drawn whole, smaller, inside its rectangle.
TEST_F(GlDevice, ATextWiderThanItsRectangleIsDrawnSmallerToFit) {
    const std::string name = "WWWWWWWWWWWWWWW";
    for (const auto& [points, left, right] : {std::tuple<int, int, int>{13, 49, 211}, {30, 216, 584}}) {
        const FontId font = device.createFont("Ariel", points, true);
        ASSERT_NE(font, 0u);
        // Its own height, drawn where there is room.
        device.clear(Backdrop, 1.0f);
        device.drawText(font, name, 0, 100, 800, 200, 0xFFFFFF00u);
        shoot("qb_name_wide.png");
        int fullTop = 600, fullBottom = -1;
        for (int y = 100; y < 200; ++y)
            for (int x = 0; x < 800; ++x)
                if (channel(at(x, y), 16) > 128)
                    fullTop = std::min(fullTop, y), fullBottom = std::max(fullBottom, y);
        device.clear(Backdrop, 1.0f);
        device.drawText(font, name, left, 300, right, 400, 0xFFFFFF00u);
        shoot("qb_name_narrow.png");
        int minX = 800, maxX = -1, top = 600, bottom = -1;
        for (int y = 250; y < 450; ++y)
            for (int x = 0; x < 800; ++x)
                if (channel(at(x, y), 16) > 128) {
                    minX = std::min(minX, x), maxX = std::max(maxX, x);
                    top = std::min(top, y), bottom = std::max(bottom, y);
                }
        ASSERT_GE(maxX, 0) << points;
        // Whole: from one end of the rectangle to the other, nothing outside.
        EXPECT_GE(minX, left) << points;
        EXPECT_LE(maxX, right - 1) << points;
        EXPECT_LE(minX, left + 3) << points;
        EXPECT_GE(maxX, right - 4) << points;
        // Smaller: the letters are shorter than at their own size, on the
        // middle of the same line.
        EXPECT_LT(bottom - top, (fullBottom - fullTop) * 0.85) << points;
        EXPECT_NEAR((top + bottom) / 2.0 - 300, (fullTop + fullBottom) / 2.0 - 100, 2.0) << points;
    }
}

TEST_F(GlDevice, PointSpriteIsViewportHeightTimesSizeWide) {
    const TextureId white =
        device.createTextureFromFile(WriteBmp("qb_white.bmp", 8, 8, 0xFFFFFF, 0xFFFFFF), 0, 0, 0, true);
    device.clear(Backdrop, 1.0f);
    lookAtCube();
    device.setTexture(white);
    device.setRenderState(RenderState::PointSize, FloatToDWord(0.03f));  // 18 pixels at 600 high
    const PointVertex p{0.5f, 0.5f, 5.0f, 0xFFFFFF00u, 0, 0};
    device.drawPointVertices(&p, 1);
    shoot("qb_point.png");
    expectColour(400, 300, 255, 255, 0);
    expectColour(408, 300, 255, 255, 0);
    expectColour(400, 291, 255, 255, 0);
    expectColour(411, 300, 0, 0, 64);
    expectColour(400, 311, 0, 0, 64);
}

TEST_F(GlDevice, VideoModeChangeRemakesTheBackBufferAndKeepsTextures) {
    const TextureId red =
        device.createTextureFromFile(WriteBmp("qb_red2.bmp", 8, 8, 0xFF0000, 0xFF0000), 0, 0, 0, true);
    ASSERT_TRUE(device.resetDevice(PresentParams{1024, 768, 0}));
    EXPECT_TRUE(device.isUsable());
    device.setRenderState(RenderState::ZEnable, 1);
    device.clear(Backdrop, 1.0f);
    device.setTexture(red);
    // The bottom-right corner exists only in the larger mode.
    device.drawScreenVertices(Primitive::TriangleStrip, Quad(1000, 740, 24, 28, 0xFFFFFFFFu).data(), 2);
    device.present();
    const std::string path = ::testing::TempDir() + "qb_mode2.png";
    ASSERT_TRUE(device.saveScreenshot(path));
    ASSERT_TRUE(LoadArgbImage(path, picture));
    ASSERT_EQ(picture.width, 1024);
    ASSERT_EQ(picture.height, 768);
    const uint32_t corner = picture.pixels[static_cast<size_t>(760) * 1024 + 1010];
    EXPECT_EQ(corner & 0xFFFFFFu, 0xFF0000u);
    EXPECT_EQ(picture.pixels[10] & 0xFFFFFFu, 0x000040u);
}

// A sky whose picture is missing is black, as an empty sky: drawn over the
// backdrop it must not turn the screen white behind white menu text.
TEST_F(GlDevice, AMissingSkyIsDrawnBlack) {
    const float w = 800, h = 600;
    clsBackground sky(device, w, h);
    sky.create(::testing::TempDir() + "no-such-sky.jpg");
    device.clear(Backdrop, 1.0f);
    sky.draw();
    shoot("qb_nosky.png");
    expectColour(400, 300, 0, 0, 0);
    expectColour(5, 5, 0, 0, 0);
}

// When the desktop cannot show a message box the game draws the message
// itself: white lines on black, from the top left of the picture.
TEST_F(GlDevice, AMessageDrawnInTheWindowIsReadable) {
    ASSERT_TRUE(DrawWindowMessage(device, "The fastest time could not be saved: No space left on device"));
    shoot("qb_message.png");
    int lit = 0;
    for (int y = 60; y < 90; ++y)
        for (int x = 40; x < 400; ++x) lit += channel(at(x, y), 16) > 128 ? 1 : 0;
    EXPECT_GT(lit, 200);
    expectColour(790, 590, 0, 0, 0);
    expectColour(400, 400, 0, 0, 0);
}

}  // namespace
}  // namespace qb
