// Pictures, sounds and models are refused from their size alone past their
// limits (the files are sparse: the test costs no disk).
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/AssetLimits.h"

namespace qb {
namespace {

std::string Sparse(const std::string& name, const std::string& head, int64_t size) {
    const std::string path = ::testing::TempDir() + name;
    std::ofstream(path, std::ios::binary) << head;
    EXPECT_EQ(::truncate(path.c_str(), size), 0);
    return path;
}

TEST(AssetFileLimits, PicturesSoundsAndModelsOverTheirSizeAreRefusedUnread) {
    // A 16 x 16 BMP header: read at the limit, refused one byte past it.
    std::string bmp =
        "BM" + std::string(12, '\0') + std::string("\x28\0\0\0\x10\0\0\0\x10\0\0\0\x01\0\x18\0", 16);
    bmp += std::string(24, '\0');
    int32_t w = 0, h = 0;
    std::string why;
    EXPECT_TRUE(CheckPictureFile(Sparse("at.bmp", bmp, kLargestPictureFile), w, h, why)) << why;
    EXPECT_EQ(w, 16);
    EXPECT_FALSE(CheckPictureFile(Sparse("past.bmp", bmp, kLargestPictureFile + 1), w, h, why));
    EXPECT_FALSE(why.empty());

    EXPECT_FALSE(CheckWaveFile(Sparse("past.wav", "RIFF\0\0\0\0WAVE", kLargestPictureFile + 1), why));
    EXPECT_FALSE(why.empty());

    const std::string model = Sparse("past.x", "xof 0303txt 0032\n", kLargestModelFile + 1);
    EXPECT_FALSE(CheckModelFile(model, why));
    EXPECT_FALSE(why.empty());
    for (const char* f : {"at.bmp", "past.bmp", "past.wav", "past.x"})
        std::filesystem::remove(::testing::TempDir() + f);
}

}  // namespace
}  // namespace qb
