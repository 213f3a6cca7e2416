// User tracks come from strangers: the list is made without reading the
// files, only the file on screen is held, and one that cannot be read is a
// row that says why and cannot be started.
#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>
#if defined(__SANITIZE_ADDRESS__)
// From the sanitizer's runtime (GCC ships no header for it).
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "level/TrackLimits.h"
#include "level/TrackObjects.h"
#include "tests/gui/GuiTestGame.h"

namespace qb {
namespace {

namespace fs = std::filesystem;
using test::GuiGame;

// Bytes in use, the large blocks mapped on their own included.
size_t Heap() {
#if defined(__SANITIZE_ADDRESS__)
    // The sanitizer's allocator keeps its own books; malloc's are empty.
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 m = mallinfo2();
    return m.uordblks + m.hblkhd;
#endif
}

// The fields that say why a file cannot be played, as one text.
std::string Why(GuiGame& t) {
    std::string s;
    for (int i = 9; t.gui().HasField(i); ++i) s += t.field(i) + " ";
    return s;
}

TEST(UntrustedUserTracks, AFileThatCannotBeReadIsOneUnplayableRowThatSaysWhy) {
    GuiGame t("user-bad", 10);
    const std::string u = t.dir + "usertracks/";
    fs::create_directories(u);
    test::WriteTrackFile(u + "a_good.dat", 2);
    // Over the size limit (sparse: costs nothing on disk).
    test::WriteTrackFile(u + "b_big.dat", 1);
    ASSERT_EQ(::truncate((u + "b_big.dat").c_str(), limits::kTrackFileBytes + 1), 0);
    std::ofstream(u + "c_garbage.dat") << "not a track file";
    // A good header over records cut short: found out only when it is shown.
    test::WriteTrackFile(u + "d_cut.dat", 3);
    ASSERT_EQ(::truncate((u + "d_cut.dat").c_str(), static_cast<off_t>(fs::file_size(u + "d_cut.dat") - 40)),
              0);
    ASSERT_TRUE(t.start());
    t.show(ZoneChoice);
    t.click(59);
    ASSERT_EQ(t.game->GameState, UserTrackChoice);
    EXPECT_EQ(t.field(7), "1 / 7");  // 2 + 1 + 1 + 3 rows as listed
    EXPECT_EQ(Why(t).find("cannot be played"), std::string::npos);
    t.click(24);
    t.click(24);
    EXPECT_EQ(t.field(7), "3 / 7");
    EXPECT_EQ(t.field(8), "b_big.dat");
    EXPECT_EQ(t.field(9), "This file cannot be played:");
    EXPECT_NE(Why(t).find("over the limit of 16777216 bytes"), std::string::npos) << Why(t);
    EXPECT_EQ(t.field(1), "No Name");
    EXPECT_EQ(t.game->track->BlockUpper, -1);
    // Neither Play track nor Return starts it.
    t.click(26);
    EXPECT_EQ(t.game->GameState, UserTrackChoice);
    t.game->gui->Click(26);
    EXPECT_EQ(t.game->GameState, UserTrackChoice);

    t.click(24);
    EXPECT_EQ(t.field(8), "c_garbage.dat");
    EXPECT_NE(Why(t).find("level count"), std::string::npos) << Why(t);
    // The cut file's three rows fold into one once it has been read.
    t.click(24);
    EXPECT_EQ(t.field(7), "5 / 5");
    EXPECT_EQ(t.field(8), "d_cut.dat");
    EXPECT_NE(Why(t).find("track 3"), std::string::npos) << Why(t);
    t.click(24);
    EXPECT_EQ(t.field(7), "1 / 5");
    t.click(25);
    EXPECT_EQ(t.field(7), "5 / 5");
    // Coming back from an unplayable row to a good one plays it.
    t.click(24);
    t.click(26);
    EXPECT_EQ(t.game->GameState, Playing);
    EXPECT_EQ(t.game->levels->path(), u + "a_good.dat");
}

// Each file holds fifty tracks of a thousand blocks: a couple of megabytes
// in memory, where the preview of one track is less.
TEST(UntrustedUserTracks, OnlyTheFileOnScreenIsHeldAndVisitsDoNotAddUp) {
    GuiGame t("user-many", 10);
    const std::string u = t.dir + "usertracks/";
    fs::create_directories(u);
    constexpr int Files = 8, Tracks = 50;
    LevelFile f;
    LevelRecord r = test::SmallTrack();
    r.Blocks.resize(1000, r.Blocks[0]);
    r.BlockUpper = 999;
    f.Levels.assign(Tracks, r);
    f.AllStars.assign(Tracks, 0);
    const std::vector<uint8_t> bytes = EncodeLevelFile(f);
    for (int i = 0; i < Files; ++i) {
        std::ofstream out(u + "t" + std::to_string(i) + ".dat", std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    ASSERT_TRUE(t.start());
    // What one file costs read.
    size_t one = 0;
    {
        const size_t before = Heap();
        LevelStructure lv(u + "t0.dat");
        std::string error;
        ASSERT_TRUE(lv.LoadLevels(error)) << error;
        one = Heap() - before;
    }
    ASSERT_GT(one, size_t{1} << 20);

    // A visit shows a track of every file.
    auto visit = [&] {
        t.show(ZoneChoice);
        t.click(59);
        for (int i = 0; i < Files; ++i) {
            t.gui().userTracks.Current = 1 + i * Tracks;
            t.show(UserTrackChoice);
            EXPECT_EQ(t.game->levels->path(), u + "t" + std::to_string(i) + ".dat");
        }
    };
    t.show(ZoneChoice);
    const size_t menus = Heap();
    visit();
    const size_t first = Heap();
    // The last file and its preview, never all eight.
    EXPECT_LT(first - menus, 3 * one) << "one file: " << one;
    for (int v = 0; v < 4; ++v) visit();
    EXPECT_LT(Heap(), first + one / 4) << "after the first visit: " << first;
    t.show(ZoneChoice);
    EXPECT_EQ(t.game->levels->path(), t.dir + "levels.dat");
}

}  // namespace
}  // namespace qb
