// Watching a track's best run from its track choice: the real game drives
// itself to exactly the recorded finish with its sounds and books nothing;
// Esc leaves at once; a kept file that cannot be used says why on screen,
// and the game goes on.
#include "audio/DXmusicSFX.h"
#include "shell/GhostCar.h"
#include "shell/RaceClock.h"
#include "shell/RaceTime.h"
#include "shell/WatchRun.h"
#include "tests/replay/ReplayRuns.h"

namespace qb {
namespace {

using namespace test;

TEST(Watch, TheBestRunDrivesItselfToExactlyItsRecordedFinishAndBooksNothing) {
    SimRun run(GameDir);
    FinishTrack(run, 10);  // jumps and stars
    frmGame& g = run.game();
    ReplayStore& store = *g.replays;
    run.Step({});
    run.Step({DIK_RETURN});  // the name entry: no name
    ASSERT_EQ(g.GameState, TrackChoice);
    const Replay best = Read(store.BestPath(store.CurrentTrack()));
    // What a run books: statistics, fastest times, the last run.
    auto booked = [&] {
        const std::string& dir = g.platform.paths.writeDir;
        return ReadFile(dir + "stats.dat") + ReadFile(dir + "levels.dat") + ReadFile(store.LastPath());
    };
    const std::string kept = booked();
    EXPECT_TRUE(g.gui->Button(Gui::WatchSlot).enabled());

    const long heard = static_cast<long>(run.platform().audio.log.size());
    run.Step({});
    run.Step({DIK_W});
    ASSERT_TRUE(g.watch->Active());
    EXPECT_EQ(FieldText(g, RaceClock::NoteField).find("Watching the best run"), 0u);
    EXPECT_EQ(PlayOn(run, best.PlayFrames() + 100), best.PlayFrames());
    ASSERT_EQ(g.GameState, WatchEnd);
    EXPECT_EQ(g.watch->FinishFrames(), best.frames);
    EXPECT_EQ(g.watch->FinishStars(), best.stars);
    EXPECT_EQ(FieldText(g, 3), RaceTime::FromFrames(best.frames).Text());
    // With its sounds: the jumps and the stars are heard as in the race.
    const std::vector<std::string>& log = run.platform().audio.log;
    for (int effect : {SfxJump, SfxGetStar})
        EXPECT_NE(std::find(log.begin() + heard, log.end(), "play " + std::to_string(effect)), log.end());
    // Nothing of it is booked.
    EXPECT_TRUE(booked() == kept);

    // Return goes back to the track; watched again, Esc leaves at once.
    run.Step({});
    run.Step({DIK_RETURN});
    EXPECT_EQ(g.GameState, TrackChoice);
    run.Step({});
    g.Form_MouseDown(1, g.gui->Button(Gui::WatchSlot).X() + 20, g.gui->Button(Gui::WatchSlot).Y() + 10);
    ASSERT_TRUE(g.watch->Active());
    PlayOn(run, 30);
    run.Step({DIK_ESCAPE});
    EXPECT_EQ(g.GameState, TrackChoice);
    EXPECT_TRUE(booked() == kept);
}

TEST(Watch, AUserTrackOffersItsBestRunToo) {
    SimRun run(GameDir);
    std::string error;
    KeyScript keys;
    ASSERT_TRUE(LoadKeyScript(std::string(QUORBIT_SOURCE_DIR) + "/content/solutions/user_sunday_drive.keys",
                              keys, error));
    ASSERT_TRUE(run.Start(1, error)) << error;
    frmGame& g = run.game();
    fs::create_directories(g.platform.paths.writeDir + "usertracks");
    fs::copy_file(GameDir + "/usertracks/sunday_drive.dat",
                  g.platform.paths.writeDir + "usertracks/sunday_drive.dat");
    g.GameState = UserTrackChoice;
    g.gui->SetupScreen(0);
    g.gui->Click(26);
    Race(run, keys);
    ToTrackChoice(run);
    run.Step({});
    run.Step({DIK_W});
    ASSERT_TRUE(g.watch->Active()) << g.GameState;
    PlayOn(run, 10000);
    EXPECT_EQ(g.watch->FinishFrames(), run.FinishFrames());
    EXPECT_EQ(Read(g.platform.paths.writeDir + "replays/user-sunday_drive-01-best.replay").frames,
              run.FinishFrames());
}

TEST(Watch, AKeptFileThatCannotBeUsedSaysWhyOnScreenAndTheGameGoesOn) {
    SimRun run(GameDir);
    FinishTrack(run, 1);
    frmGame& g = run.game();
    const std::string path = g.replays->BestPath(g.replays->CurrentTrack());
    const std::string good = ReadFile(path);
    const Replay kept = Read(path);
    auto with = [&](const std::string& from, const std::string& to) {
        std::string t = good;
        return t.replace(t.find(from), from.size(), to);
    };
    std::string otherHash = good;  // driven on another version of the track
    char& digit = otherHash[good.find("track-hash ") + 11];
    digit = digit == '0' ? '1' : '0';
    const std::pair<std::string, std::string> files[] = {
        {good.substr(0, good.find("keys\n")), "cut short"},
        {"\x89PNG\r\n\x1a\n garbage", "not a Quorbit replay"},
        {with("quorbit-replay 1", "quorbit-replay 2"), "format 2"},
        {with("track 1\n", "track 2\n"), "a run of track 2 of levels.dat"},
        {otherHash, "older version of this track"},
        {with("frames ", "frames 99"), "longer than an hour"},
    };
    for (const auto& [text, why] : files) {
        std::ofstream(path, std::ios::binary) << text;
        ToTrackChoice(run);
        run.Step({});
        EXPECT_FALSE(g.gui->Button(Gui::WatchSlot).enabled()) << why;
        EXPECT_EQ(FieldText(g, 13), "The best run cannot be watched:");
        EXPECT_NE(FieldText(g, 14).find(why), std::string::npos) << FieldText(g, 14);
        run.Step({DIK_W});
        EXPECT_EQ(g.GameState, TrackChoice);
        // Raced: no ghost, and the note says why until it has been read.
        run.Step({DIK_RETURN});
        ASSERT_EQ(g.GameState, Playing);
        EXPECT_EQ(g.ghost->Frames(), 0);
        EXPECT_NE(FieldText(g, RaceClock::NoteField).find("No ghost: " + FieldText(g, 14)),
                  std::string::npos);
        PlayOn(run, RaceClock::NoteFrames + 1);
        EXPECT_EQ(FieldText(g, RaceClock::NoteField), "");
        EXPECT_NE(ReadFile(g.platform.paths.writeDir + "Debug.txt").find(why), std::string::npos) << why;
        g.resetgame(false);  // out of the race, as the pause menu leaves it
    }

    // The next finish keeps its run in place of the bad one.
    RaceAgain(run);
    Race(run, Solution(1));
    EXPECT_EQ(ReadFile(path), good);

    // A file whose keys do not drive to the finish it claims: watched, it
    // ends without one.
    std::ofstream(path, std::ios::binary)
        << good.substr(0, good.find("keys\n") + 5) << kept.PlayFrames() << " -\n";
    ToTrackChoice(run);
    run.Step({});
    run.Step({DIK_W});
    ASSERT_TRUE(g.watch->Active());
    EXPECT_EQ(PlayOn(run, 10000), kept.PlayFrames() + 1);
    EXPECT_EQ(g.GameState, WatchEnd);
    EXPECT_EQ(FieldText(g, 3), "No finish");
}

}  // namespace
}  // namespace qb
