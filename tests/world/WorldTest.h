// Helpers for the world tests: a recording device, a scratch textures folder
// and float comparisons of the shared records.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/headless/HeadlessPlatform.h"
#include "tests/support/TestFiles.h"
#include "world/AnimatedTextures.h"
#include "world/WorldResources.h"

namespace qb::test {

inline std::string WorldScratch(const std::string& name) {
    const std::string dir = FreshDir("world-" + name);
    for (const char* sub : {"textures", "backgrounds", "models", "skins"})
        std::filesystem::create_directory(dir + sub);
    return dir;
}

inline void Touch(const std::string& path) {
    std::ofstream(path) << "x";
}

// The headless device only checks that a file exists.
inline void TouchTextures(const std::string& dir) {
    for (const char* n : {"_default.bmp", "road.bmp", "wall.bmp", "stone.bmp", "AnimationTest_0.bmp",
                          "AnimationTest_1.bmp", "AnimationTest_2.bmp", "AnimationTest_3.bmp"})
        Touch(dir + "textures/" + n);
}

struct WorldRig {
    std::string dir;
    HeadlessGraphics device;
    AnimatedTextures animated;
    WorldResources res{device};
    explicit WorldRig(const std::string& name) : dir(WorldScratch(name)) {
        TouchTextures(dir);
        animated.InitAnimatedTextures();
        res.animated = &animated;
        res.TexturesPath = dir + "textures/";
        res.SkinsPath = dir + "skins/";
    }
};

#define EXPECT_VEC3(v, X, Y, Z)      \
    do {                             \
        EXPECT_FLOAT_EQ((v).x, (X)); \
        EXPECT_FLOAT_EQ((v).y, (Y)); \
        EXPECT_FLOAT_EQ((v).z, (Z)); \
    } while (0)

#define EXPECT_PLANE(p, A, B, C, D)    \
    do {                               \
        EXPECT_FLOAT_EQ((p).a, (A));   \
        EXPECT_FLOAT_EQ((p).b, (B));   \
        EXPECT_FLOAT_EQ((p).c, (C));   \
        EXPECT_NEAR((p).d, (D), 1e-6); \
    } while (0)

}  // namespace qb::test
