// The look shared by every menu picture: navy buttons edged in neon cyan
// with white labels, lit orange with navy labels under the pointer, and
// panels in the game's night palette.
#pragma once

#include <string>

#include "tools/content/GuiPaint.h"

namespace qb::content::gui {

namespace p = palette;

constexpr Rgb KeyBlack{0, 0, 0};
constexpr Rgb Key189{189, 189, 189};
constexpr Rgb Key198{198, 198, 198};

constexpr Rgb ButtonTop{44, 66, 136};
constexpr Rgb ButtonBottom{16, 24, 64};
constexpr Rgb LitTop{255, 186, 84};
constexpr Rgb LitBottom{236, 104, 24};
constexpr Rgb Navy{20, 26, 58};

// A labelled button of the given size; `lit` is its roll-over look.
Picture Button(int w, int h, const std::string& label, int px, bool lit, Rgb key = KeyBlack);
// The same with an arrow instead of a label (dir -1 left, +1 right).
Picture ArrowButton(int w, int h, int dir, bool lit, bool round);
// A plain tag: a navy plate with a label (labels beside controls).
Picture Tag(int w, int h, const std::string& label, int px, Rgb key = KeyBlack);
// A see-through panel (drawn translucent by the game).
Picture GlassPanel(int w, int h, const Rgb& top, const Rgb& bottom, const Rgb& edge);
// Text standing on the colour key, ringed dark so its edges stay clean.
TextStyle Outlined(int px, const Rgb& colour);

// Writes a picture into the gui folder `dir`.
void Save(const Picture& pic, const std::string& dir, const std::string& name);

// The parts of the gui family; `gameDir` ends with '/', `dir` is its gui/.
void MakeButtons(const std::string& dir);
void MakePanels(const std::string& gameDir, const std::string& dir);
void MakePages(const std::string& gameDir, const std::string& dir);
void MakeWebPage(const std::string& gameDir);

}  // namespace qb::content::gui
