#include <gtest/gtest.h>

#include "level/LevelStructure.h"
#include "tests/level/TrackBytes.h"

namespace qb {
namespace {

using test::Bytes;

// A file of `count` simple tracks on disk, loaded.
struct Loaded {
    std::string path;
    std::vector<uint8_t> original;
    LevelStructure levels;
    explicit Loaded(const std::string& name, int count = 1)
        : path(test::Scratch(name) + "levels.dat"), levels(path) {
        std::vector<Bytes> records(static_cast<size_t>(count), test::SimpleRecord());
        original = test::FileOf(records).b;
        test::WriteBytes(path, original);
        std::string error;
        EXPECT_TRUE(levels.LoadLevels(error)) << error;
    }
    // Bytes that differ from the original file, as (offset, new value).
    std::vector<std::pair<size_t, uint8_t>> Changes() const {
        const auto now = test::ReadBytes(path);
        EXPECT_EQ(now.size(), original.size());
        std::vector<std::pair<size_t, uint8_t>> d;
        for (size_t i = 0; i < now.size() && i < original.size(); ++i)
            if (now[i] != original[i]) d.emplace_back(i, now[i]);
        return d;
    }
};

// The names in the table, place by place, without their padding.
std::string Places(const FastestTimes& t) {
    std::string s;
    for (const std::string& n : t.Names)
        s += (s.empty() ? "" : "/") + n.substr(0, n.find_last_not_of(' ') + 1);
    return s;
}

TEST(LevelStructure, AllStarsFlagWritesTwoBytesAndZoneFlagsOnlyWhenTheZoneIsComplete) {
    Loaded t("allstars", 3);
    LevelStructure& L = t.levels;
    ASSERT_EQ(L.LevelCount(), 3);
    EXPECT_EQ(L.RecordAreaStart(), 17 + 24);
    L.CurrentZone = 1;
    L.ZoneFirstLevel = 1;
    L.ZoneLastLevel = 2;
    L.CurrentLevel = 2;
    ASSERT_TRUE(L.SaveAllStarsFlag());
    EXPECT_TRUE(L.AllStars(2));
    EXPECT_FALSE(L.ZoneComplete(1));
    // Track 2's record starts 206 bytes into the record area (offset 40 of
    // the file); its flag sits 70 bytes in.
    const size_t flag2 = 40 + 206 + 70;
    EXPECT_EQ(t.Changes(), (std::vector<std::pair<size_t, uint8_t>>{{flag2, 0xFF}, {flag2 + 1, 0xFF}}));

    L.CurrentLevel = 1;
    ASSERT_TRUE(L.SaveAllStarsFlag());
    EXPECT_TRUE(L.ZoneComplete(1));
    const auto now = test::ReadBytes(t.path);
    EXPECT_EQ(std::vector<uint8_t>(now.begin() + 4, now.begin() + 16),
              (std::vector<uint8_t>{0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(now[40 + 70], 0xFF);
    EXPECT_FALSE(L.AllStars(3));

    // The flags survive a reload.
    LevelStructure again(t.path);
    std::string error;
    ASSERT_TRUE(again.LoadLevels(error));
    EXPECT_TRUE(again.AllStars(1) && again.AllStars(2) && !again.AllStars(3));
    EXPECT_TRUE(again.ZoneComplete(1));
    EXPECT_FALSE(again.ZoneComplete(2));

    // A zone running past the last track counts only the tracks there are.
    Loaded one("zonerange", 1);
    one.levels.CurrentLevel = 1;
    one.levels.ZoneFirstLevel = 1;
    one.levels.ZoneLastLevel = 10;
    ASSERT_TRUE(one.levels.SaveAllStarsFlag());
    EXPECT_TRUE(one.levels.ZoneComplete(1));
}

TEST(LevelStructure, FastestTimeIsOne69BytePatchAndTiesGoBelow) {
    Loaded t("times", 2);
    LevelStructure& L = t.levels;
    L.CurrentLevel = 2;
    EXPECT_TRUE(L.TimeQualifies(10, 0));  // empty table
    ASSERT_TRUE(L.SaveFastestTime("ANNA", 10, 40));
    const FastestTimes& ft = L.Level(2).Times;
    EXPECT_EQ(std::tuple(ft.Names[0], ft.Seconds[0], ft.Hundredths[0]),
              std::tuple("ANNA           ", 10, 40));

    // Only the 69 bytes of track 2's table changed.
    const size_t table = 32 + 206 + 1;  // two tracks: the records start at 32
    for (const auto& [at, value] : t.Changes()) {
        EXPECT_GE(at, table);
        EXPECT_LT(at, table + 69);
        (void)value;
    }
    const auto now = test::ReadBytes(t.path);
    EXPECT_EQ(std::string(now.begin() + table, now.begin() + table + 15), "ANNA           ");
    EXPECT_EQ(now[table + 45], 10);  // seconds, place 1
    EXPECT_EQ(now[table + 57], 40);  // hundredths, place 1

    // A tie with place 1 goes below it.
    ASSERT_TRUE(L.SaveFastestTime("BEN", 10, 40));
    EXPECT_EQ(Places(ft), "ANNA/BEN/");
    // A slower one goes to place 3; the table is then full.
    ASSERT_TRUE(L.SaveFastestTime("CY", 12, 0));
    EXPECT_FALSE(L.TimeQualifies(12, 0));  // equal to place 3
    EXPECT_TRUE(L.TimeQualifies(11, 96));
    // A new best pushes place 3 out.
    ASSERT_TRUE(L.SaveFastestTime("A NAME OF TWENTY CHR", 9, 0));
    EXPECT_EQ(Places(ft), "A NAME OF TWENT/ANNA/BEN");
    EXPECT_EQ(ft.Seconds[2], 10);

    LevelStructure again(t.path);
    std::string error;
    ASSERT_TRUE(again.LoadLevels(error));
    EXPECT_EQ(again.Level(2).Times.Names, ft.Names);
    EXPECT_EQ(again.Level(2).Times.Seconds, ft.Seconds);
    EXPECT_EQ(again.Level(2).Times.Hundredths, ft.Hundredths);
    EXPECT_EQ(again.Level(1).Times.Seconds[0], 0);
}

TEST(LevelStructure, InsertionRules) {
    FastestTimes t;
    LevelStructure::InsertFastestTime(t, "A", 20, 0);
    LevelStructure::InsertFastestTime(t, "B", 19, 96);  // better: place 1
    EXPECT_EQ(Places(t), "B/A/");
    LevelStructure::InsertFastestTime(t, "C", 20, 0);  // ties place 2: goes to 3
    EXPECT_EQ(Places(t), "B/A/C");
    LevelStructure::InsertFastestTime(t, "D", 19, 96);  // ties place 1, beats place 2
    EXPECT_EQ(Places(t), "B/D/A");
    LevelStructure::InsertFastestTime(t, "E", 99, 0);  // place 3, replaced without comparison
    EXPECT_EQ(Places(t), "B/D/E");
    EXPECT_EQ(t.Names[2].size(), 15u);
}

TEST(LevelStructure, BrokenOrMissingFileLeavesNoTrackAndNamesFileTrackAndByte) {
    const std::string dir = test::Scratch("broken");
    {
        LevelStructure L(dir + "missing.dat");
        std::string error;
        EXPECT_FALSE(L.LoadLevels(error));
        EXPECT_NE(error.find(dir + "missing.dat"), std::string::npos) << error;
        EXPECT_EQ(L.LevelCount(), 0);
        EXPECT_FALSE(L.LoadLevelIndex());
        L.CurrentLevel = 1;
        EXPECT_FALSE(L.SaveAllStarsFlag());
        EXPECT_FALSE(L.SaveFastestTime("X", 1, 0));
        EXPECT_FALSE(L.TimeQualifies(1, 0));
    }
    Bytes f = test::FileOf({test::SimpleRecord(), test::SimpleRecord()});
    std::fill_n(f.b.begin() + 32 + 206 + 133, 4, 0xFF);  // track 2 block upper index -1
    test::WriteBytes(dir + "levels.dat", f.b);
    LevelStructure L(dir + "levels.dat");
    std::string error;
    EXPECT_FALSE(L.LoadLevels(error));
    EXPECT_EQ(L.LevelCount(), 0);
    EXPECT_NE(error.find(dir + "levels.dat"), std::string::npos) << error;
    EXPECT_NE(error.find("track 2"), std::string::npos) << error;
    EXPECT_NE(error.find("byte 371"), std::string::npos) << error;
    // The header alone is fine, but it must not bring the tracks back.
    EXPECT_FALSE(L.LoadLevelIndex());
    EXPECT_EQ(L.LevelCount(), 0);

    // A file gone since it was read is not made anew by a patch.
    Loaded gone("gone", 1);
    std::filesystem::remove(gone.path);
    gone.levels.CurrentLevel = 1;
    EXPECT_FALSE(gone.levels.SaveFastestTime("X", 1, 0));
    EXPECT_FALSE(std::filesystem::exists(gone.path));
    EXPECT_FALSE(gone.levels.WriteError().empty());
}

}  // namespace
}  // namespace qb
