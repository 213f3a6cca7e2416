// The menu screens: 59 button slots and the text fields of the current screen.
#pragma once

namespace qb {

class frmGame;

class Gui {
public:
    explicit Gui(frmGame& game) : game_(game) {}
    void LoadGuiBitmaps() {}
    void SetupScreen(int b) { (void)b; }
    void GuiMouseClick(float x, float y) {
        (void)x;
        (void)y;
    }
    void GuiMouseMove(float x, float y) {
        (void)x;
        (void)y;
    }

    void OnLostDevice() {}
    void OnRestoreDevice() {}
    void OnChangeVideoMode() {}
    void DrawButtons() {}
    void DrawTextFields() {}

private:
    frmGame& game_;
};

}  // namespace qb
