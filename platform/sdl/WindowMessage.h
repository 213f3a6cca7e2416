// A message drawn in the game window itself, for when the desktop cannot
// show a message box (no window manager support, a broken toolkit): the
// player still reads why, and dismisses it with a key or a click.
#pragma once

#include <string>

#include "platform/GraphicsDevice.h"

namespace qb {

// Draws one frame: the text in white on black, broken into lines, with how
// to go on below it. False when the device cannot draw text.
bool DrawWindowMessage(GraphicsDevice& device, const std::string& text);

// Draws the message until a key, a click or a request to close; false when
// nothing could be drawn (the caller has printed the text already).
bool ShowWindowMessage(GraphicsDevice& device, const std::string& text);

}  // namespace qb
