// What a menu picture is made of, boiled down to one number: when it has not
// changed since the last drawing, the picture on screen is still right and
// the menu need not be drawn again.
#include <cstring>

#include "gui/Gui.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "platform/DirectX.h"
#include "shell/frmGame.h"
#include "world/clsBackground.h"

namespace qb {

namespace {

struct Fnv {
    uint64_t h = 1469598103934665603ull;
    void bytes(const void* p, size_t n) {
        const auto* c = static_cast<const unsigned char*>(p);
        for (size_t i = 0; i < n; ++i) h = (h ^ c[i]) * 1099511628211ull;
    }
    template <typename T>
    void add(const T& v) {
        bytes(&v, sizeof v);
    }
    void add(const std::string& s) {
        add(s.size());
        bytes(s.data(), s.size());
    }
};

}  // namespace

uint64_t frmGame::MenuPictureKey() const {
    Fnv f;
    f.add(GameState);
    f.add(levels->CurrentLevel);
    f.add(dx->CameraEye);
    f.add(dx->CameraLookAt);
    f.add(dx->ScreenWidth);
    f.add(dx->ScreenHeight);
    f.add(background->texture());
    f.add(background->quad());
    f.add(track->BlockUpper);
    for (int32_t i = 0; i <= track->StarUpper; ++i) f.add(track->stars[i]->visible());
    for (int32_t s = 1; s <= Gui::SlotCount; ++s) {
        const auto& b = gui->Buttons[static_cast<size_t>(s)];
        if (!b || !b->enabled()) continue;
        f.add(s);
        f.add(b->IsMouseOver());
        f.add(b->Texture());
        f.add(b->RolloverTexture());
        f.add(b->Corners());
    }
    for (int32_t i = 1; gui->HasField(i); ++i) {
        const clsFontField& t = gui->Field(i);
        f.add(t.Get_String());
        f.add(t.Colour());
        f.add(t.Left());
        f.add(t.Top());
        f.add(t.Right());
        f.add(t.Bottom());
        f.add(t.Get_FontName());
        f.add(t.Get_Fontsize());
    }
    return f.h;
}

}  // namespace qb
