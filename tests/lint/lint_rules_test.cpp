// The track checker against small tracks, each built to break one rule,
// and one fair track that must pass them all.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "shell/KeyScript.h"
#include "shell/TrackLint.h"
#include "tests/physics/DriveTest.h"

namespace qb {
namespace {

namespace fs = std::filesystem;

KeyScript Keys(const std::string& text) {
    KeyScript s;
    std::string error;
    EXPECT_TRUE(ParseKeyScript(text, s, error)) << error;
    return s;
}

const char* const Head =
    "track 1 test\n"
    "  texture road \"road.bmp\"\n"
    "  texture flag \"finish.bmp\"\n";

// Road, a 6-unit gap at z 60, road, the finish at z 120; one star after the gap.
const std::string Gap = std::string(Head) +
                        "  block -2 0 -5  4 1 65\n"
                        "  block -2 0 66  4 1 54\n"
                        "  block -2 0 120  4 1 4  tex flag finish\n"
                        "  star 0 1 90\n";
const char* const JumpTheGap = "106 Up\n4 Up+Space\n200 Up\n";

std::set<std::string> Rules(const LintReport& r) {
    std::set<std::string> out;
    for (const LintFinding& f : r.findings) out.insert(f.rule);
    return out;
}

LintReport Lint(const std::string& source, const std::string& keys, bool windows = false) {
    const std::string dir = test::MakeGameDir("lint", source);
    LintOptions o;
    o.windows = windows;
    const LintReport r = LintTrack(dir, 1, Keys(keys), o);
    fs::remove_all(dir);
    return r;
}

TEST(TrackLint, AFairTrackPassesEveryRuleAndIsMeasured) {
    const LintReport r = Lint(Gap, JumpTheGap, true);
    EXPECT_TRUE(r.Passed()) << r.Describe("gap");
    EXPECT_EQ(r.figures.keyChanges, 3);  // Up, Space down, Space up
    EXPECT_EQ(r.figures.stars, 1);
    EXPECT_EQ(r.figures.hazards, 1);  // the gap
    EXPECT_EQ(r.figures.length, 129);
    EXPECT_NEAR(r.figures.seconds, 8.52, 1e-9);
    EXPECT_EQ(r.figures.jitterRuns, 100);
    EXPECT_GE(r.figures.jitterWins, 95);
    // The take-off can come a good half second early or late.
    EXPECT_GE(r.figures.narrowestWindow, 10);
    EXPECT_GT(r.figures.narrowestAt, 100);
}

struct Breaker {
    const char* name;
    std::string source;
    const char* keys;
    std::set<std::string> rules;  // exactly the rules that must catch it
    const char* hint;             // part of the advice a maker gets
};

TEST(TrackLint, EachRuleCatchesATrackBuiltToBreakIt) {
    const std::vector<Breaker> breakers = {
        {"the route leaves the picture sideways",
         std::string(Head) + "  block -2 0 -5  4 1 25\n  block -2 0 20  20 1 120\n"
                             "  block 12 0 140  6 1 4  tex flag finish\n  star 14 1 130\n",
         "40 Up\n120 Up+Right\n300 Up\n",
         {"in view", "star in view"},
         "x -9..9"},
        {"a gap high up comes into sight late",
         std::string(Head) + "  block -2 0 -5  4 1 25\n  ramp -2 1 20  4 11 40  rot 0\n"
                             "  block -2 0 60  4 12 40\n  block -2 0 106  4 12 40\n"
                             "  block -2 0 146  4 12 4  tex flag finish\n  star 0 12 120\n",
         "172 Up\n4 Up+Space\n300 Up\n",
         {"seen in time"},
         "gap"},
        {"a gap only just jumpable",
         std::string(Head) + "  block -2 0 -5  4 1 65\n  block -2 0 75  4 1 45\n"
                             "  block -2 0 120  4 1 4  tex flag finish\n  star 0 1 90\n",
         "112 Up\n4 Up+Space\n200 Up\n",
         {"timing"},
         "died near z 70"},
        {"nothing in the way",
         std::string(Head) + "  block -2 0 -5  4 1 125\n  block -2 0 120  4 1 4  tex flag finish\n"
                             "  star 0 1 90\n",
         "300 Up\n",
         {"one key"},
         "Up alone"},
        {"a jump key tapped for one frame",
         Gap,
         "106 Up\n1 Up+Space\n200 Up\n",
         {"held"},
         "at least 3 frames"},
        {"a solution that falls into the gap", Gap, "300 Up\n", {"finish"}, "z 65"},
    };
    for (const Breaker& b : breakers) {
        const LintReport r = Lint(b.source, b.keys);
        EXPECT_EQ(Rules(r), b.rules) << b.name << "\n" << r.Describe("test");
        EXPECT_NE(r.Describe("test").find(b.hint), std::string::npos) << b.name << "\n" << r.Describe("test");
    }
}

}  // namespace
}  // namespace qb
