// When the X server destroys the game window under us (a tool closing it
// outright rather than asking), Xlib's default answer to the next call on it
// is to end the process. We take that as the window being closed instead.
#pragma once

#include <SDL.h>

namespace qb {

// Installs the guard for this window (no-op on other video drivers) and asks
// SDL to pass on the raw window-system events the guard looks at.
void InstallX11Guard(SDL_Window* window);
// True once the window has been destroyed by the X server or another client.
bool X11WindowGone();
// The window's size as the X server has it. Without a window manager a
// "full screen" window keeps its created size while SDL reports the
// display's; drawing must follow the real one. False on other drivers.
bool X11ActualWindowSize(SDL_Window* window, int& w, int& h);
// Looks at one raw window-system event; true when it destroys our window.
bool X11DestroysWindow(const SDL_Event& e);

}  // namespace qb
