#pragma once

namespace qb {

class frmGame;

class KeyboardControls {
public:
    explicit KeyboardControls(frmGame& game) : game_(game) {}
    void HandleKeyboard() {}

private:
    frmGame& game_;
};

}  // namespace qb
