// The picture behind everything is kept at the back buffer's size and copied
// in each frame: the copy must be the very picture drawing it would give, and
// must follow every change (another picture, colour, buffer size, a frame
// that draws something first).
#include <SDL.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "platform/sdl/GlBackdrop.h"
#include "platform/sdl/GlTextures.h"
#include "platform/sdl/SdlGraphics.h"
#include "platform/sdl/SdlKeyboard.h"
#include "platform/sdl/SdlWindow.h"

namespace qb {
namespace {

constexpr uint32_t Black = 0xFF000000u;

// A picture with a different colour in each pixel, so a copy shifted,
// flipped or scaled by one pixel shows.
std::string WriteGradient(const std::string& name, int w, int h, int seed) {
    const std::string path = ::testing::TempDir() + name;
    SDL_Surface* s = SDL_CreateRGBSurfaceWithFormat(0, w, h, 24, SDL_PIXELFORMAT_RGB24);
    SDL_LockSurface(s);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            auto* p = static_cast<uint8_t*>(s->pixels) + y * s->pitch + x * 3;
            p[0] = static_cast<uint8_t>(x * 7 + seed);
            p[1] = static_cast<uint8_t>(y * 5);
            p[2] = static_cast<uint8_t>((x ^ y) * 3 + seed);
        }
    SDL_UnlockSurface(s);
    SDL_SaveBMP(s, path.c_str());
    SDL_FreeSurface(s);
    return path;
}

std::array<ScreenVertex, 4> Sky(float w, float h, uint32_t colour, float z = 0.999f) {
    return {{{0, 0, z, 1, colour, 0, 0, 0},
             {w, 0, z, 1, colour, 0, 1, 0},
             {0, h, z, 1, colour, 0, 0, 1},
             {w, h, z, 1, colour, 0, 1, 1}}};
}

class GlBackdropTest : public ::testing::Test {
protected:
    SdlKeyboard keyboard;
    SdlWindow window{keyboard, true, ""};
    SdlGraphics device{window};

    void SetUp() override {
        window.show();
        if (!device.hasHardwareRasterizer()) GTEST_SKIP() << "no OpenGL: " << window.failure();
        device.createDevice(PresentParams{800, 600, 0});
        device.setRenderState(RenderState::ZEnable, 1);
    }

    // One frame: the backdrop as the game draws it (kept and copied) or as
    // the plain drawing gives it, then a small quad over it.
    ArgbImage frame(const std::string& name, TextureId texture, const std::array<ScreenVertex, 4>& quad,
                    bool kept, bool drawFirst = false) {
        device.clear(Black, 1.0f);
        device.setRenderState(RenderState::AlphaBlendEnable, 0);
        if (drawFirst) {
            device.setTexture(0);
            device.drawScreenVertices(Primitive::TriangleStrip, Sky(50, 50, 0xFF00FF00u, 0.5f).data(), 2);
        }
        if (kept)
            device.drawBackdrop(texture, quad);
        else
            device.GraphicsDevice::drawBackdrop(texture, quad);
        device.setTexture(0);
        device.drawScreenVertices(Primitive::TriangleStrip, Sky(20, 20, 0xFFFF0000u, 0.9f).data(), 2);
        device.present();
        ArgbImage picture;
        const std::string path = ::testing::TempDir() + name;
        EXPECT_TRUE(device.saveScreenshot(path));
        EXPECT_TRUE(LoadArgbImage(path, picture));
        return picture;
    }
};

TEST_F(GlBackdropTest, TheKeptPictureIsTheDrawnOneAndFollowsEveryChange) {
    const TextureId first =
        device.createTextureFromFile(WriteGradient("qb_sky1.bmp", 256, 192, 0), 0, 0, 0, true);
    const TextureId second =
        device.createTextureFromFile(WriteGradient("qb_sky2.bmp", 256, 192, 90), 0, 0, 0, true);
    ASSERT_NE(first, 0u);
    ASSERT_NE(second, 0u);
    const auto white = Sky(800, 600, 0xFFFFFFFFu);
    const ArgbImage drawn = frame("qb_drawn.png", first, white, false);
    ASSERT_EQ(drawn.width, 800);
    // The first frame makes the kept picture, the next ones copy it.
    EXPECT_EQ(frame("qb_kept1.png", first, white, true).pixels, drawn.pixels);
    EXPECT_EQ(frame("qb_kept2.png", first, white, true).pixels, drawn.pixels);
    EXPECT_EQ(frame("qb_kept3.png", first, white, true).pixels, drawn.pixels);

    // Another picture, another vertex colour, a smaller quad.
    EXPECT_EQ(frame("qb_other.png", second, white, true).pixels,
              frame("qb_other_drawn.png", second, white, false).pixels);
    const auto tinted = Sky(800, 600, 0xFF8080FFu);
    EXPECT_EQ(frame("qb_tint.png", second, tinted, true).pixels,
              frame("qb_tint_drawn.png", second, tinted, false).pixels);
    const auto part = Sky(500, 400, 0xFFFFFFFFu);
    EXPECT_EQ(frame("qb_part.png", first, part, true).pixels,
              frame("qb_part_drawn.png", first, part, false).pixels);
    // Something drawn before it: the backdrop goes over it as drawn.
    EXPECT_EQ(frame("qb_first.png", first, white, true, true).pixels,
              frame("qb_first_drawn.png", first, white, false, true).pixels);

    // A larger back buffer.
    ASSERT_TRUE(device.resetDevice(PresentParams{1024, 768, 0}));
    device.setRenderState(RenderState::ZEnable, 1);
    const auto large = Sky(1024, 768, 0xFFFFFFFFu);
    const ArgbImage bigDrawn = frame("qb_big_drawn.png", first, large, false);
    ASSERT_EQ(bigDrawn.width, 1024);
    EXPECT_EQ(frame("qb_big1.png", first, large, true).pixels, bigDrawn.pixels);
    EXPECT_EQ(frame("qb_big2.png", first, large, true).pixels, bigDrawn.pixels);
}

TEST(BackdropDepth, ACopyStandsInOnlyWhereTheDrawnQuadWouldPassEverywhere) {
    EXPECT_TRUE(BackdropPassesDepth(Sky(8, 8, 0, 0.999f), true, 1.0f));
    EXPECT_TRUE(BackdropPassesDepth(Sky(8, 8, 0, 1.0f), true, 1.0f));  // less or equal passes
    EXPECT_FALSE(BackdropPassesDepth(Sky(8, 8, 0, 0.999f), true, 0.5f));
    EXPECT_TRUE(BackdropPassesDepth(Sky(8, 8, 0, 0.999f), false, 0.5f));
    auto clipped = Sky(8, 8, 0, 0.5f);
    clipped[3].z = 1.5f;  // beyond the far plane: cut off when drawn
    EXPECT_FALSE(BackdropPassesDepth(clipped, false, 1.0f));
    clipped[3].z = -0.1f;
    EXPECT_FALSE(BackdropPassesDepth(clipped, false, 1.0f));
}

}  // namespace
}  // namespace qb
