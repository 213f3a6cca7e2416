// The difficulty table in docs/tracks.md against the shipped tracks: it must
// describe the tracks as they are (a re-solved or reordered track leaves a
// stale row behind), and the order it shows must keep its promise: harder
// track by track within a zone, and zone by zone in the middle.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "level/LevelStructure.h"
#include "shell/KeyScript.h"
#include "shell/KeyTimeline.h"

namespace qb {
namespace {

struct Row {
    int zone = 0, track = 0;
    std::string name;
    int keyChanges = 0, window = 0, hazards = 0;
    double difficulty = 0;
};

std::vector<std::string> Cells(const std::string& line) {
    std::vector<std::string> out;
    std::stringstream in(line.substr(1));
    std::string cell;
    while (std::getline(in, cell, '|')) {
        cell.erase(0, cell.find_first_not_of(' '));
        cell.erase(cell.find_last_not_of(' ') + 1);
        out.push_back(cell);
    }
    return out;
}

std::vector<Row> Table() {
    std::ifstream in(std::string(QUORBIT_SOURCE_DIR) + "/docs/tracks.md");
    std::vector<Row> rows;
    std::string line;
    while (std::getline(in, line)) {
        if (line.rfind("| ", 0) != 0) continue;
        const std::vector<std::string> c = Cells(line);
        if (c.size() != 10 || c[0].empty() || !std::isdigit(static_cast<unsigned char>(c[0][0]))) continue;
        rows.push_back({std::stoi(c[0]), std::stoi(c[1]), c[2], std::stoi(c[4]),
                        c[5] == "-" ? -1 : std::stoi(c[5]), std::stoi(c[6]), std::stod(c[9])});
    }
    return rows;
}

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

TEST(DifficultyTable, DescribesTheShippedTracksAndRisesWithinAndAcrossZones) {
    const std::vector<Row> rows = Table();
    ASSERT_EQ(rows.size(), 60u);
    LevelStructure levels(std::string(QUORBIT_GAME_DIR) + "/levels.dat");
    std::string error;
    ASSERT_TRUE(levels.LoadLevels(error)) << error;

    double lastMedian = -1;
    for (int zone = 1; zone <= 6; ++zone) {
        std::vector<double> scores;
        for (const Row& r : rows) {
            if (r.zone != zone) continue;
            SCOPED_TRACE("track " + std::to_string(r.track) + " " + r.name);
            EXPECT_EQ((r.track - 1) / 10 + 1, zone);
            EXPECT_EQ(levels.Level(r.track).Settings.SettingsText, r.name);
            char keys[64];
            std::snprintf(keys, sizeof keys, "%s/content/solutions/%02d.keys", QUORBIT_SOURCE_DIR, r.track);
            KeyScript script;
            ASSERT_TRUE(LoadKeyScript(keys, script, error)) << error;
            EXPECT_EQ(KeyTimeline(script).KeyChanges(), r.keyChanges) << "a stale row: regenerate the table";
            // Measured for every track; in the first three zones no move is
            // tighter than 6 frames.
            ASSERT_GT(r.window, 0);
            if (zone <= 3) {
                EXPECT_GE(r.window, 6);
            }
            EXPECT_EQ(r.difficulty, r.keyChanges + 2 * r.hazards + 2 * (13 - std::min(r.window, 13)));
            if (!scores.empty()) {
                EXPECT_GE(r.difficulty, scores.back()) << "easier than the track before";
            }
            scores.push_back(r.difficulty);
        }
        ASSERT_EQ(scores.size(), 10u);
        EXPECT_GT(Median(scores), lastMedian) << "zone " << zone << " is no harder than the one before";
        lastMedian = Median(scores);
    }
}

}  // namespace
}  // namespace qb
