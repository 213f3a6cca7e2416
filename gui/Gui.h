// The menu screens: 61 button slots placed once, whose pictures are on the
// device only while a screen shows them, the text fields of the current
// screen, and the one routine that sets a screen up from GameState.
// The pointer arrives through GuiMouseMove / GuiMouseClick, the keyboard
// handler moves CurrentTab and calls the same actions (Click, OpenZone ...).
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "gui/GUI_Button.h"
#include "gui/PictureStore.h"
#include "gui/UserTracks.h"
#include "gui/clsFontField.h"

namespace qb {

class frmGame;

class Gui {
public:
    static constexpr int32_t SlotCount = 61;
    // The track choices' button that watches the track's best run, and the
    // panel of the screen at its end.
    static constexpr int32_t WatchSlot = 60;
    static constexpr int32_t WatchEndSlot = 61;
    static constexpr int32_t ZoneCount = 6;
    static constexpr int32_t TracksPerZone = 10;
    // Colour keys of the bitmaps (ARGB).
    static constexpr uint32_t KeyBlack = 0xFF000000u;
    static constexpr uint32_t KeyGrey189 = 0xFFBDBDBDu;
    static constexpr uint32_t KeyGrey198 = 0xFFC6C6C6u;

    explicit Gui(frmGame& game);
    ~Gui();
    Gui(const Gui&) = delete;
    Gui& operator=(const Gui&) = delete;

    // Names and places every slot's pictures from the gui folder (their
    // pixels are read when a screen shows them); a missing bitmap throws.
    void LoadGuiBitmaps();
    // Builds the screen of the current GameState. Direction matters on the
    // track choices: 0 keeps the track, 1 previous, 2 next, 3 only lights
    // the "next" arrow.
    void SetupScreen(int Direction);
    void DisableAllButtons();
    // Lets go of the pictures of every button the screen does not show.
    void ReleaseHiddenPictures();
    void ResetTabIndices();
    void ClearMouseOver();

    // Window pixels.
    void GuiMouseMove(float X, float Y);
    void GuiMouseClick(float X, float Y);

    // The click table: performs the action of (GameState, slot); false when
    // there is none. The keyboard uses it for its Return actions too.
    bool Click(int32_t slot);
    // The slot whose TabIndex is `tab`, 0 for none.
    int32_t SlotWithTab(int32_t tab) const;
    // Keyboard focus: on (+1) / back (-1) over 1..TabCount with wrap-around,
    // shown as the highlight.
    void MoveFocus(int32_t step);
    // Moves the focus to the nearest keyboard stop in a screen direction
    // (dx, dy each -1, 0 or 1); no stop that way leaves it where it is.
    void MoveFocusToward(int32_t dx, int32_t dy);
    // Return on the zone choice: opens the focused stop (zone A at its
    // first track, another zone, the user tracks or the main menu).
    void ActivateZoneChoiceFocus();

    // Zones 1..6: zone z holds tracks 10(z-1)+1 .. 10z of levels.dat.
    bool ZoneHasTracks(int32_t zone) const;
    // Selects the zone at its first track and shows its track choice.
    void OpenZone(int32_t zone);
    // The maker's home page, shipped with the game (web/index.html).
    std::string WebPageUrl() const;
    void OpenWebSite();
    // The Controls screen: its rows are the play actions, then Defaults and
    // Go back; a row waiting for its new key shows so.
    static constexpr int32_t ControlsRows = 9;
    int32_t ControlsRow = 1;
    bool ControlsWaiting = false;
    void ShowControls();
    void ControlsDefaults();
    void SaveControls();

    void DrawButtons();
    void DrawTextFields();
    void OnLostDevice();
    void OnRestoreDevice();
    void OnChangeVideoMode();

    GUI_Button& Button(int32_t slot) { return *Buttons.at(static_cast<size_t>(slot)); }
    clsFontField& Field(int32_t i) { return *Fields.at(static_cast<size_t>(i)); }
    bool HasField(int32_t i) const {
        return i >= 1 && i <= FieldCount && static_cast<size_t>(i) < Fields.size();
    }

    // The buttons' pictures: declared first, so it outlives them.
    PictureStore pictures;
    // Slots 1..61 ([0] unused); each created on first use.
    // The two race choices on the options screen (fields 3 and 4), kept in
    // settings.cfg: the ghost of the best run and the clock on screen.
    void ShowRaceOptions();
    void ToggleRaceOption(const char* settingKey);
    bool ClickRaceOptions(float X, float Y);

    std::array<std::unique_ptr<GUI_Button>, SlotCount + 1> Buttons;
    // Fields of the current screen, 1..FieldCount ([0] unused).
    std::vector<std::unique_ptr<clsFontField>> Fields;
    int32_t FieldCount = 0;
    int32_t CurrentTab = 0;
    int32_t TabCount = 0;
    // The user-made tracks found in usertracks/.
    UserTracks userTracks;
    // The music of the track about to start: its zone's piece; the user
    // tracks take the six pieces in turn down their list.
    int16_t TrackMusic() const;

private:
    void GoTo(int16_t state);
    void NewFields(int32_t count);
    clsFontField& AddField(int32_t i, int32_t top, int32_t bottom, int32_t left, int32_t right, int32_t size,
                           int16_t r, int16_t g, int16_t b, const std::string& text);
    void SetupMainMenu();
    void SetupTrackChoice(int Direction);
    void SetupUserTracks(int Direction);
    void PlaceTrackChoiceButtons();
    int32_t TrackNumberTop() const;
    int32_t TrackNumberBottom() const;
    void FastestTimeFields();
    void SetupPauseMenu();
    // "Stars 2 / of 5" for the run that has just finished.
    std::string StarsTakenText() const;
    // The watch button when the track's best run can be watched, else why
    // not in fields `field` and `field` + 1.
    void OfferWatch(int32_t field);
    void SetupWatchEnd();
    // The play screen's note: what is being watched, or why there is no ghost.
    std::string PlayNote() const;
    static constexpr int32_t NoteTop = 560;
    void SetupOptions(bool again);
    void SetupControls();
    bool ClickControls(int32_t slot);
    void SetupZoneChoice();
    void SetupInstructions(int page);
    void ShowVolumes();
    void PreviewTrack(const std::string& sky);
    bool ClickOptions(int32_t slot);
    bool ClickZoneChoice(int32_t slot);
    void StartSelectedTrack();

    frmGame& game_;
    // The screen the last SetupScreen built.
    int16_t shownState_ = -1;
};

}  // namespace qb
