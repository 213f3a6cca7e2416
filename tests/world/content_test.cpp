// The generated pictures and the star model the tracks rely on.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/TestFiles.h"

namespace {

using qb::test::ReadFile;

const char* const kTextures[] = {"_default.bmp",
                                 "road.bmp",
                                 "road_alt.bmp",
                                 "wall.bmp",
                                 "edge.bmp",
                                 "finish.bmp",
                                 "bounce.bmp",
                                 "ice.bmp",
                                 "falling.bmp",
                                 "turbo.bmp",
                                 "deadly.bmp",
                                 "ramp.bmp",
                                 "platform.bmp",
                                 "AnimationTest_0.bmp",
                                 "AnimationTest_1.bmp",
                                 "AnimationTest_2.bmp",
                                 "AnimationTest_3.bmp"};
const char* const kSkies[] = {"_default.jpg", "bk001.jpg", "bk002.jpg", "bk003.jpg",
                              "bk004.jpg",    "bk005.jpg", "bk006.jpg"};

// Every texture, sky and the star are there, and the same program makes the
// same bytes again.
TEST(WorldContent, EveryTextureSkyAndTheStarAreThereAndMadeAgainTheSame) {
    const std::string game = std::string(QUORBIT_GAME_DIR) + "/";
    const std::string dir = qb::test::FreshDir("world-content");
    const std::string cmd = std::string(QUORBIT_TOOLS_DIR) + "/quorbit-content " + dir + " > /dev/null";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    for (const char* t : kTextures) {
        const std::string data = ReadFile(game + "textures/" + t);
        ASSERT_GT(data.size(), 128u * 128u * 3u) << t;
        EXPECT_EQ(data.substr(0, 2), "BM") << t;
        EXPECT_EQ(ReadFile(dir + "textures/" + t), data) << t;
    }
    std::string previous;
    for (const char* s : kSkies) {
        const std::string data = ReadFile(game + "backgrounds/" + s);
        ASSERT_GT(data.size(), 10000u) << s;
        EXPECT_EQ(static_cast<unsigned char>(data[0]), 0xFF) << s;  // JPEG start of image
        EXPECT_NE(data, previous) << s;
        EXPECT_EQ(ReadFile(dir + "backgrounds/" + s), data) << s;
        previous = data;
    }
    // The animation frames differ from each other: the face visibly moves.
    EXPECT_NE(ReadFile(game + "textures/AnimationTest_0.bmp"),
              ReadFile(game + "textures/AnimationTest_1.bmp"));
    const std::string orb = ReadFile(game + "models/orb.x");
    EXPECT_EQ(orb.substr(0, 16), "xof 0303txt 0032");
    EXPECT_NE(orb.find("TextureFilename { \"orb.bmp\"; }"), std::string::npos);
    EXPECT_EQ(ReadFile(dir + "models/orb.x"), orb);
    EXPECT_EQ(ReadFile(game + "skins/orb.bmp").substr(0, 2), "BM");
    std::filesystem::remove_all(dir);
}

}  // namespace
