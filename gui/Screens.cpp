// SetupScreen: which buttons a screen shows, its keyboard stops, its
// highlight and its text fields.
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "audio/DXmusicSFX.h"
#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "persist/Settings.h"
#include "persist/Stats.h"
#include "platform/D3DMath.h"
#include "platform/DirectX.h"
#include "platform/QuorbitDebug.h"
#include "shell/GhostCar.h"
#include "shell/RaceClock.h"
#include "shell/RaceTime.h"
#include "shell/ReplayStore.h"
#include "shell/WatchRun.h"
#include "shell/frmGame.h"
#include "world/clsBackground.h"

namespace qb {

namespace {
// Below the resolution buttons, above "go back".
constexpr int32_t RaceOptionsTop = 450;
// Left edges of the ghost, clock and smooth-motion switches, then the right end.
constexpr int32_t RaceOptionColumns[] = {200, 330, 460, 600};
}  // namespace

namespace {

// Leading and trailing characters of code 32 or below (blanks, NULs and
// control characters) go.
std::string TrimName(const std::string& s) {
    size_t b = 0, e = s.size();
    while (b < e && static_cast<unsigned char>(s[b]) <= 32) ++b;
    while (e > b && static_cast<unsigned char>(s[e - 1]) <= 32) --e;
    return s.substr(b, e - b);
}

// Where the track's name stands on the track choices: above the preview,
// between the fastest-times panel and the track's statistics.
constexpr int32_t NameTop = 62;

// The track's name, which track sources keep in the record's settings text
// (the game has no other use for it): printable, one line, not too long for
// its place under the preview. A longer one stops at a whole word with "...",
// so no word shows cut.
std::string TrackName(const LevelRecord& r) {
    std::string name;
    for (char c : TrimName(r.Settings.SettingsText)) name += static_cast<unsigned char>(c) < 32 ? ' ' : c;
    if (name.size() <= 40) return name;
    size_t cut = name.find_last_of(' ', 37);
    if (cut == std::string::npos || cut < 20) cut = 37;
    return TrimName(name.substr(0, cut)) + "...";
}

std::string TimeText(int32_t seconds, int32_t hundredths) {
    return std::to_string(seconds) + ":" + (hundredths < 10 ? "0" : "") + std::to_string(hundredths);
}

// The names and times of the fastest-times table sit in the dark wells of its
// panel (slot 29 at x 45, 170 wide), inside their rounded corners.
constexpr int32_t WellLeft = 49, WellRight = 211;

// Why a user track file cannot be played, in lines that fit where its
// preview would be (at most `most` of them).
std::vector<std::string> UnplayableLines(const std::string& reason, size_t most) {
    constexpr size_t LineChars = 44;
    std::vector<std::string> lines{"This file cannot be played:"};
    std::string line;
    size_t at = 0;
    while (at < reason.size() && lines.size() < most) {
        size_t end = reason.find(' ', at);
        if (end == std::string::npos) end = reason.size();
        const std::string word = reason.substr(at, end - at);
        if (!line.empty() && line.size() + 1 + word.size() > LineChars) {
            lines.push_back(line);
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
        at = end + 1;
    }
    if (!line.empty() && lines.size() < most) lines.push_back(line);
    return lines;
}
// The name and the time of the finish panels (slots 35 and 36 at x 190, 420
// wide) sit in its bands, 20 in from either side.
constexpr int32_t PanelBandLeft = 216, PanelBandRight = 584;

// The track number and the track's name stand on the zone's sky, bright or
// dark: a navy rim keeps their letters readable on all of them.
constexpr uint32_t TrackNumberRim = 0xFF0A0E26u;

// The sky of each zone's track choice.
const char* const ZoneSkies[Gui::ZoneCount + 1] = {"",          "_default.jpg", "bk001.jpg", "bk003.jpg",
                                                   "bk006.jpg", "bk004.jpg",    "bk005.jpg"};

}  // namespace

void Gui::SetupScreen(int Direction) {
    const bool again = game_.GameState == shownState_;
    shownState_ = game_.GameState;
    DisableAllButtons();
    switch (game_.GameState) {
        case MainMenu:
            SetupMainMenu();
            break;
        case Playing: {
            ResetTabIndices();
            const LevelStructure& lv = *game_.levels;
            const int32_t stars = lv.HasLevel(lv.CurrentLevel) ? lv.Level(lv.CurrentLevel).StarUpper + 1 : 0;
            NewFields(3);
            const int32_t left = static_cast<int32_t>(std::nearbyint(game_.dx->GuiOffsetX + 500.0f));
            AddField(1, 0, 200, left, 800, 18, 255, 255, 0, "Stars 0 / of " + std::to_string(stars));
            // The race clock, in the star counter's style on the other side.
            AddField(2, 0, 200, 20, 400, 18, 255, 255, 0, "");
            // A note along the bottom: what is being watched, or why there
            // is no ghost.
            AddField(3, NoteTop, NoteTop + 30, 20, 780, 13, 255, 255, 255, PlayNote())
                .Set_Outline(TrackNumberRim);
            break;
        }
        case WatchEnd:
            SetupWatchEnd();
            break;
        case TrackChoice:
            // The track choice of the user tracks is their own screen.
            if (userTracks.Active()) {
                game_.GameState = UserTrackChoice;
                SetupUserTracks(Direction);
            } else {
                SetupTrackChoice(Direction);
            }
            break;
        case PauseMenu:
            SetupPauseMenu();
            break;
        case NameEntry:
            // The texts within the bands of the panel (a name too wide for
            // its band is drawn smaller by the device); the stars above the
            // time band as on the made-it screen, the line against the best
            // run between the time and the name.
            Button(35).enabled(true);
            NewFields(4);
            AddField(1, 370, 450, PanelBandLeft, PanelBandRight, 30, 255, 255, 0, clsFontField::NamePrompt);
            AddField(2, 269, 344, PanelBandLeft, PanelBandRight, 30, 0, 0, 0, "Your Time = ");
            AddField(3, 334, 358, PanelBandLeft, PanelBandRight, 13, 255, 255, 255, "");
            AddField(4, 230, 260, PanelBandLeft, PanelBandRight, 18, 255, 255, 0, StarsTakenText());
            break;
        case MadeIt:
            Button(36).enabled(true);
            NewFields(3);
            AddField(1, 340, 450, PanelBandLeft, PanelBandRight, 30, 0, 0, 0, "Test Time");
            // Above the time band, where the panel has room; the line
            // against the best run goes under the band, above the hint.
            AddField(2, 290, 320, PanelBandLeft, PanelBandRight, 18, 255, 255, 0, StarsTakenText());
            AddField(3, 402, 422, PanelBandLeft, PanelBandRight, 13, 255, 255, 255,
                     "");  // against the best run
            break;
        case Options:
            SetupOptions(again);
            break;
        case ControlsMenu:
            SetupControls();
            break;
        case ZoneChoice:
            SetupZoneChoice();
            break;
        case InstructionsPage1:
            SetupInstructions(1);
            break;
        case InstructionsPage2:
            SetupInstructions(2);
            break;
        case InstructionsPage3:
            SetupInstructions(3);
            break;
        case UserTrackChoice:
            SetupUserTracks(Direction);
            break;
        default:
            break;
    }
    ReleaseHiddenPictures();
}

std::string Gui::StarsTakenText() const {
    // The stars this drive took: the finish screens are set up before the
    // finish resets the count.
    const LevelStructure& lv = *game_.levels;
    const int32_t stars = lv.HasLevel(lv.CurrentLevel) ? lv.Level(lv.CurrentLevel).StarUpper + 1 : 0;
    return "Stars " + std::to_string(game_.StarsCollected) + " / of " + std::to_string(stars);
}

void Gui::SetupMainMenu() {
    userTracks.Deactivate(game_.levels, game_.stats);
    game_.sound->StopMusic();
    // The loading picture says so: once loaded, the menus have their own sky.
    if (game_.background->pictureName() == game_.BackgroundsPath + "load.jpg")
        game_.background->create(game_.BackgroundsPath + "bk002.jpg");
    ClearMouseOver();
    for (int32_t s : {1, 10, 19, 20, 21, 22, 23, 15}) Button(s).enabled(true);
    ResetTabIndices();
    for (int32_t i = 0; i < 5; ++i) Button(19 + i).TabIndex(i + 1);
    Button(19).MouseOver(true);
    CurrentTab = 1;
    TabCount = 5;
}

void Gui::SetupPauseMenu() {
    ResetTabIndices();
    ClearMouseOver();
    for (int32_t s : {30, 31, 32, 33, 34}) Button(s).enabled(true);
    for (int32_t i = 0; i < 4; ++i) Button(31 + i).TabIndex(i + 1);
    Button(32).MouseOver(true);
    CurrentTab = 2;
    TabCount = 4;
}

void Gui::PlaceTrackChoiceButtons() {
    const DirectX& dx = *game_.dx;
    // The offset counts twice here: these keep their distance from the
    // bottom edge of the display.
    Button(26).Y(dx.GuiOffsetY + 495.0f);
    Button(25).Y(dx.GuiOffsetY + 475.0f);
    Button(24).Y(dx.GuiOffsetY + 475.0f);
}

// The track number sits under the arrows and, like them, keeps its distance
// from the bottom of the display: the offset counts twice, at both edges
// (with the bottom left at 600 it came out upside down at 1024x768 and was
// never drawn).
int32_t Gui::TrackNumberTop() const {
    return static_cast<int32_t>(std::nearbyint(game_.dx->GuiOffsetY + 550.0f));
}

int32_t Gui::TrackNumberBottom() const {
    return static_cast<int32_t>(std::nearbyint(game_.dx->GuiOffsetY + 600.0f));
}

void Gui::SetupTrackChoice(int Direction) {
    ResetTabIndices();
    game_.sound->StopMusic();
    for (int32_t s : {24, 25, 2, 26, 27, 28, 29, 51, 52}) Button(s).enabled(true);
    PlaceTrackChoiceButtons();
    LevelStructure& lv = *game_.levels;
    switch (Direction) {
        case 1:
            lv.CurrentLevel -= 1;
            Button(24).MouseOver(false);
            Button(25).MouseOver(true);
            break;
        case 2:
            lv.CurrentLevel += 1;
            Button(25).MouseOver(false);
            Button(24).MouseOver(true);
            break;
        case 3:
            Button(24).MouseOver(true);
            break;
        default:
            break;
    }
    // A zone the file fills only in part ends at its last track.
    if (lv.ZoneLastLevel > lv.LevelCount() && lv.LevelCount() >= lv.ZoneFirstLevel)
        lv.ZoneLastLevel = lv.LevelCount();
    if (lv.CurrentLevel < lv.ZoneFirstLevel) lv.CurrentLevel = lv.ZoneLastLevel;
    if (lv.CurrentLevel > lv.ZoneLastLevel) lv.CurrentLevel = lv.ZoneFirstLevel;
    Button(lv.AllStars(lv.CurrentLevel) ? 42 : 43).enabled(true);

    NewFields(14);
    FastestTimeFields();
    OfferWatch(13);
    AddField(12, NameTop, NameTop + 30, 230, 570, 18, 255, 255, 0,
             lv.HasLevel(lv.CurrentLevel) ? TrackName(lv.Level(lv.CurrentLevel)) : std::string())
        .Set_Outline(TrackNumberRim);
    const int32_t size = lv.ZoneLastLevel - lv.ZoneFirstLevel + 1;
    AddField(7, TrackNumberTop(), TrackNumberBottom(), 300, 500, 13, 255, 255, 255,
             std::to_string(lv.CurrentLevel - (lv.ZoneFirstLevel - 1)) + " / " + std::to_string(size))
        .Set_Outline(TrackNumberRim);
    LevelStat st;
    const Stats& stats = *game_.stats;
    if (lv.CurrentLevel >= 1 && lv.CurrentLevel <= stats.LevelCount())
        st = stats.LevelStats[static_cast<size_t>(lv.CurrentLevel)];
    AddField(8, 285, 315, 597, 764, 13, 255, 255, 255, FormatPlayTime(st.PlayTime));
    AddField(9, 365, 390, 597, 764, 13, 255, 255, 255, std::to_string(st.BlownUp) + " Times");
    AddField(10, 445, 475, 597, 764, 13, 255, 255, 255, std::to_string(st.FallenOff) + " Times");
    AddField(11, 505, 535, 597, 764, 13, 255, 255, 255, std::to_string(st.Jumps) + " Times");

    const int32_t zone = lv.CurrentZone >= 1 && lv.CurrentZone <= ZoneCount ? lv.CurrentZone : 1;
    PreviewTrack(game_.BackgroundsPath + ZoneSkies[zone]);
}

// Fields 1 to 6: the names and times of the three fastest drives of the
// current track (blank names and 0:00 where the file has none).
void Gui::FastestTimeFields() {
    const LevelStructure& lv = *game_.levels;
    FastestTimes t;
    if (lv.HasLevel(lv.CurrentLevel)) t = lv.Level(lv.CurrentLevel).Times;
    for (int32_t p = 0; p < 3; ++p) {
        AddField(1 + p, 200 + 100 * p, 400 + 100 * p, WellLeft, WellRight, 13, 255, 255, 255,
                 TrimName(t.Names[static_cast<size_t>(p)]));
        AddField(4 + p, 230 + 100 * p, 600, WellLeft, WellRight, 13, 255, 255, 255,
                 TimeText(t.Seconds[static_cast<size_t>(p)], t.Hundredths[static_cast<size_t>(p)]));
    }
}

void Gui::PreviewTrack(const std::string& sky) {
    DirectX& dx = *game_.dx;
    // The base camera moved back 45 and up 10: the whole start of the track.
    dx.View = MatrixLookAtLH(Vector3{0, 35, -63}, Vector3{0, 18, 0}, Vector3{0, 1, 0});
    dx.device.setTransform(TransformKind::View, dx.View);
    game_.track->BuildLevel(game_.levels->CurrentLevel, false);
    if (game_.background->pictureName() != sky) game_.background->create(sky);
}

void Gui::SetupUserTracks(int Direction) {
    ResetTabIndices();
    game_.sound->StopMusic();
    for (int32_t s : {24, 25, 2, 26, 27, 28, 29}) Button(s).enabled(true);
    PlaceTrackChoiceButtons();
    if (!userTracks.Active()) {
        // Coming from the zone choice: look for new files every time. They
        // live where the game may write, so their fastest times can be saved
        // (an installed copy brings its examples there at its first start).
        const std::string folder = game_.platform.paths.writeDir + "usertracks/";
        std::error_code ec;
        std::filesystem::create_directories(folder, ec);
        userTracks.Scan(folder, folder);
    }
    if (Direction == 1) {
        userTracks.Step(-1);
        Button(24).MouseOver(false);
        Button(25).MouseOver(true);
    } else if (Direction == 2) {
        userTracks.Step(1);
        Button(25).MouseOver(false);
        Button(24).MouseOver(true);
    } else if (Direction == 3) {
        Button(24).MouseOver(true);
    }
    userTracks.Activate(game_.levels, game_.stats);
    const bool playable = userTracks.Playable(userTracks.Current);
    // A track has two more fields (why its best run cannot be watched), a
    // file that cannot be played one a line of why.
    const std::vector<std::string> why = playable || userTracks.Count() == 0
                                             ? std::vector<std::string>()
                                             : UnplayableLines(userTracks.Problem(userTracks.Current), 5);
    NewFields(playable ? 10 : 8 + static_cast<int32_t>(why.size()));
    AddField(7, TrackNumberTop(), TrackNumberBottom(), 300, 500, 13, 255, 255, 255,
             std::to_string(userTracks.Current) + " / " + std::to_string(userTracks.Count()))
        .Set_Outline(TrackNumberRim);
    if (!playable) {
        for (int32_t p = 0; p < 3; ++p) {
            AddField(1 + p, 200 + 100 * p, 400 + 100 * p, WellLeft, WellRight, 13, 255, 255, 255, "No Name");
            AddField(4 + p, 230 + 100 * p, 600, WellLeft, WellRight, 13, 255, 255, 255, "0:0");
        }
        // The file's name where a track's name stands, and why it cannot
        // be played where its preview would be.
        if (!why.empty())
            AddField(8, NameTop, NameTop + 30, 230, 570, 18, 255, 255, 0,
                     userTracks.FileName(userTracks.Current))
                .Set_Outline(TrackNumberRim);
        for (size_t i = 0; i < why.size(); ++i) {
            const int32_t top = 230 + 30 * static_cast<int32_t>(i);
            AddField(9 + static_cast<int32_t>(i), top, top + 30, 230, 570, 13, 255, 255, 255, why[i])
                .Set_Outline(TrackNumberRim);
        }
        // Nothing to show behind the menu but the sky.
        game_.track->BuildLevel(LevelRecord{}, false);
        if (game_.background->pictureName() != game_.BackgroundsPath + ZoneSkies[1])
            game_.background->create(game_.BackgroundsPath + ZoneSkies[1]);
        return;
    }
    FastestTimeFields();
    OfferWatch(9);
    // A track without a name goes by its file's.
    const std::string name = TrackName(game_.levels->Level(game_.levels->CurrentLevel));
    AddField(8, NameTop, NameTop + 30, 230, 570, 18, 255, 255, 0,
             name.empty() ? userTracks.FileName(userTracks.Current) : name)
        .Set_Outline(TrackNumberRim);
    // The track's own sky when the game has it, else the first zone's.
    const LevelStructure& lv = *game_.levels;
    std::string sky = game_.BackgroundsPath + lv.Level(lv.CurrentLevel).BackgroundFile();
    std::error_code ec;
    if (lv.Level(lv.CurrentLevel).BackgroundFile().empty() || !std::filesystem::is_regular_file(sky, ec))
        sky = game_.BackgroundsPath + ZoneSkies[1];
    PreviewTrack(sky);
}

void Gui::ShowVolumes() {
    if (HasField(1)) Field(1).Set_Text(std::to_string(game_.sound->SfxVolume / 20 + 100) + "%");
    if (HasField(2)) Field(2).Set_Text(std::to_string(game_.sound->MusicVolume) + "%");
}

void Gui::SetupOptions(bool again) {
    ResetTabIndices();
    for (int32_t s : {1, 10, 11, 12, 14, 15, 16, 17, 37, 18, 13, 57}) Button(s).enabled(true);
    const int32_t mode = game_.dx->VideoMode;
    const int32_t small = mode == 1 ? 54 : 53, large = mode == 2 ? 56 : 55;
    Button(small).enabled(true);
    Button(large).enabled(true);
    // Keyboard stops: the arrows move over the volume buttons, the two modes
    // and "go back" by where they lie; Return presses the focused one. The
    // focus starts on "go back" and stays where it was when a mode change
    // sets the screen up again.
    const int32_t stops[] = {16, 17, 37, 18, small, large, 57, 14};
    for (int32_t i = 0; i < 8; ++i) Button(stops[i]).TabIndex(i + 1);
    TabCount = 8;
    if (!again || CurrentTab < 1 || CurrentTab > TabCount) CurrentTab = 8;
    ClearMouseOver();
    Button(stops[CurrentTab - 1]).MouseOver(true);
    NewFields(5);
    AddField(1, 280, 350, 460, 535, 18, 0, 0, 0, "");
    AddField(2, 335, 400, 460, 535, 18, 0, 0, 0, "");
    // Dark like the volumes: the panel behind them is pale.
    for (int32_t i = 0; i < 3; ++i)
        AddField(3 + i, RaceOptionsTop, RaceOptionsTop + 30, RaceOptionColumns[i], RaceOptionColumns[i + 1],
                 13, 0, 0, 0, "");
    ShowVolumes();
    ShowRaceOptions();
}

void Gui::ShowRaceOptions() {
    const Settings& s = *game_.settings;
    if (HasField(3))
        Field(3).Set_Text(std::string("Ghost (G): ") +
                          (s.GetBool(GhostCar::SettingKey, true) ? "on" : "off"));
    if (HasField(4))
        Field(4).Set_Text(std::string("Clock (C): ") +
                          (s.GetBool(RaceClock::SettingKey, true) ? "on" : "off"));
    if (HasField(5))
        Field(5).Set_Text(std::string("Smooth (M): ") +
                          (s.GetBool(frmGame::SmoothMotionKey, true) ? "on" : "off"));
}

void Gui::ToggleRaceOption(const char* settingKey) {
    Settings& s = *game_.settings;
    s.SetBool(settingKey, !s.GetBool(settingKey, true));
    if (!s.Save()) game_.debug->WriteLine("Could not write " + s.path());
    game_.SmoothMotion = s.GetBool(frmGame::SmoothMotionKey, true);
    ShowRaceOptions();
}

bool Gui::ClickRaceOptions(float X, float Y) {
    if (game_.GameState != Options) return false;
    const float x = X - static_cast<float>(game_.dx->GuiOffsetX),
                y = Y - static_cast<float>(game_.dx->GuiOffsetY);
    if (y < RaceOptionsTop || y > RaceOptionsTop + 30) return false;
    const char* keys[] = {GhostCar::SettingKey, RaceClock::SettingKey, frmGame::SmoothMotionKey};
    for (int32_t i = 0; i < 3; ++i) {
        if (x >= RaceOptionColumns[i] && x < RaceOptionColumns[i + 1]) {
            ToggleRaceOption(keys[i]);
            return true;
        }
    }
    return false;
}

void Gui::SetupZoneChoice() {
    userTracks.Deactivate(game_.levels, game_.stats);
    ResetTabIndices();
    for (int32_t s : {2, 4, 5, 6, 7, 8, 9, 59}) Button(s).enabled(true);
    Button(2).TabIndex(1);
    Button(4).TabIndex(2);
    Button(59).TabIndex(3);
    int32_t tab = 3;
    for (int32_t z = 1; z <= ZoneCount; ++z) {
        GUI_Button& zb = Button(3 + z);
        const bool open = ZoneHasTracks(z);
        // An empty zone shows as a faint ghost that nothing lights up.
        zb.Rollover(open && zb.RolloverTexture() != 0);
        zb.SetAlphaLevel(open ? 255 : 90);
        if (open && z > 1) zb.TabIndex(++tab);
        if (game_.levels->ZoneComplete(z)) Button(44 + z).enabled(true);
    }
    Button(4).MouseOver(true);
    CurrentTab = 2;
    TabCount = tab;
}

void Gui::SetupInstructions(int page) {
    ResetTabIndices();
    Button(1).enabled(true);
    Button(2).enabled(true);
    // Every page has both arrows, so the mouse can turn them all as the
    // arrow keys do (pages wrap round).
    Button(page == 1 ? 38 : page == 2 ? 3 : 39).enabled(true);
    Button(40).enabled(true);
    Button(41).enabled(true);
    NewFields(1);
    AddField(1, 525, 590, 680, 740, 8, 255, 255, 0, "Page " + std::to_string(page) + " / 3");
}

}  // namespace qb
