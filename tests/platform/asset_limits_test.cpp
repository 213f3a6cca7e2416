// Pictures and models are checked against what they claim before a decoder
// sizes anything: every shipped asset passes, a header claiming a giant
// picture or a model claiming billions of vertices is refused at once, and
// a file past its size limit is refused from its size alone.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "platform/AssetLimits.h"
#include "platform/sdl/GlTextures.h"
#include "platform/sdl/XMesh.h"
#include "tests/support/TestFiles.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

std::string Write(const std::string& name, const std::string& bytes) {
    const std::string path = ::testing::TempDir() + name;
    test::WriteFile(path, bytes);
    return path;
}

std::string Le32(uint32_t v) {
    return std::string{static_cast<char>(v), static_cast<char>(v >> 8), static_cast<char>(v >> 16),
                       static_cast<char>(v >> 24)};
}

// A BMP header (file header and info header) claiming w x h, 24 bits, and
// a few bytes of pixels.
std::string BmpHeader(uint32_t w, uint32_t h) {
    std::string b = "BM" + Le32(54 + 64) + Le32(0) + Le32(54);
    b += Le32(40) + Le32(w) + Le32(h) + std::string("\x01\x00\x18\x00", 4) + Le32(0) + Le32(64);
    b += Le32(2835) + Le32(2835) + Le32(0) + Le32(0);
    return b + std::string(64, '\x7f');
}

// Sparse: a header, then nothing but length; costs no disk.
std::string Sparse(const std::string& name, const std::string& head, int64_t size) {
    const std::string path = Write(name, head);
    EXPECT_EQ(::truncate(path.c_str(), size), 0);
    return path;
}

TEST(AssetLimits, EveryShippedPictureAndModelPasses) {
    int pictures = 0, models = 0;
    for (const auto& e : fs::recursive_directory_iterator(QUORBIT_GAME_DIR)) {
        const std::string ext = e.path().extension().string();
        std::string why;
        if (ext == ".bmp" || ext == ".jpg" || ext == ".png") {
            int32_t w = 0, h = 0;
            EXPECT_TRUE(CheckPictureFile(e.path().string(), w, h, why)) << e.path() << " " << why;
            ++pictures;
        } else if (ext == ".x") {
            EXPECT_TRUE(CheckModelFile(e.path().string(), why)) << e.path() << " " << why;
            ++models;
        }
    }
    EXPECT_GT(pictures, 50);
    EXPECT_EQ(models, 2);
}

TEST(AssetLimits, PicturesClaimingTooManyPixelsAreRefusedBeforeDecoding) {
    int32_t w = 0, h = 0;
    std::string why;
    EXPECT_TRUE(CheckPictureFile(Write("side.bmp", BmpHeader(4096, 4096)), w, h, why)) << why;
    EXPECT_EQ(w, 4096);

    const std::string giant = Write("giant.bmp", BmpHeader(40000, 40000));
    EXPECT_FALSE(CheckPictureFile(giant, w, h, why));
    EXPECT_NE(why.find("40000 x 40000"), std::string::npos) << why;
    ArgbImage image;
    EXPECT_FALSE(LoadArgbImage(giant, image));
    EXPECT_TRUE(image.pixels.empty());

    EXPECT_FALSE(CheckPictureFile(Write("wide.bmp", BmpHeader(4097, 1)), w, h, why));
    EXPECT_FALSE(CheckPictureFile(Write("flat.bmp", BmpHeader(16, 0)), w, h, why));

    std::string png = "\x89PNG\r\n\x1a\n" + std::string("\0\0\0\x0dIHDR", 8);
    png += std::string("\0\0\x13\x88", 4) + std::string("\0\0\0\x10", 4) + std::string(13, '\0');
    EXPECT_FALSE(CheckPictureFile(Write("wide.png", png), w, h, why));  // 5000 wide
    EXPECT_NE(why.find("5000 x 16"), std::string::npos) << why;

    // A JPEG's size sits in its frame header, after whatever comes first.
    std::string jpg = std::string("\xFF\xD8\xFF\xE0\x00\x04\x00\x00", 8);
    jpg += std::string("\xFF\xC0\x00\x11\x08\x13\x88\x00\x10", 9) + std::string(16, '\0');
    EXPECT_FALSE(CheckPictureFile(Write("tall.jpg", jpg), w, h, why));
    EXPECT_NE(why.find("16 x 5000"), std::string::npos) << why;

    EXPECT_FALSE(CheckPictureFile(Write("what.gif", "GIF89a" + std::string(20, '\0')), w, h, why));
}

TEST(AssetLimits, AModelWhoseCountsOutgrowItsFileIsRefused) {
    const std::string player = test::ReadFile(std::string(QUORBIT_GAME_DIR) + "/models/player.x");
    ASSERT_FALSE(player.empty());
    std::string why;
    XMeshData mesh;
    ASSERT_TRUE(LoadXMesh(Write("good.x", player), mesh));

    // The vertex count: the first number in the mesh's braces.
    const size_t vertices = player.find('{', player.find("Mesh ")) + 1;
    const size_t end = player.find(';', vertices);
    std::string claims = player;
    claims.replace(vertices, end - vertices, "\n 2000000000");
    const std::string bad = Write("claims.x", claims);
    EXPECT_FALSE(CheckModelFile(bad, why));
    EXPECT_NE(why.find("2000000000"), std::string::npos) << why;
    EXPECT_FALSE(LoadXMesh(bad, mesh));

    // The face count follows the ";;" that closes the vertex list.
    const size_t faces = player.find(";;", vertices) + 2;
    claims = player;
    claims.replace(faces, player.find(';', faces) - faces, "\n 99999999");
    EXPECT_FALSE(CheckModelFile(Write("faces.x", claims), why));
    EXPECT_NE(why.find("99999999"), std::string::npos) << why;

    claims = player;
    claims.replace(8, 4, "bin ");
    EXPECT_FALSE(CheckModelFile(Write("binary.x", claims), why));
}

TEST(AssetLimits, PicturesSoundsAndModelsOverTheirFileSizeAreRefusedUnread) {
    // A 16 x 16 BMP header: read at the limit, refused one byte past it.
    const std::string bmp = BmpHeader(16, 16);
    int32_t w = 0, h = 0;
    std::string why;
    EXPECT_TRUE(CheckPictureFile(Sparse("at.bmp", bmp, kLargestPictureFile), w, h, why)) << why;
    EXPECT_EQ(w, 16);
    EXPECT_FALSE(CheckPictureFile(Sparse("past.bmp", bmp, kLargestPictureFile + 1), w, h, why));
    EXPECT_FALSE(why.empty());
    EXPECT_FALSE(CheckWaveFile(Sparse("past.wav", "RIFF\0\0\0\0WAVE", kLargestPictureFile + 1), why));
    EXPECT_FALSE(why.empty());
    EXPECT_FALSE(CheckModelFile(Sparse("past.x", "xof 0303txt 0032\n", kLargestModelFile + 1), why));
    EXPECT_FALSE(why.empty());
    for (const char* f : {"at.bmp", "past.bmp", "past.wav", "past.x"}) fs::remove(::testing::TempDir() + f);
}

}  // namespace
}  // namespace qb
