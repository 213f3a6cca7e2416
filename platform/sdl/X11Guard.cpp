#include "platform/sdl/X11Guard.h"

#include <SDL_syswm.h>
#include <dlfcn.h>

#include <atomic>

namespace qb {

namespace {

std::atomic<bool> windowGone{false};
Window guardedWindow = 0;

#ifdef SDL_VIDEO_DRIVER_X11
using ErrorHandler = int (*)(Display*, XErrorEvent*);
using SetErrorHandler = ErrorHandler (*)(ErrorHandler);
ErrorHandler previousHandler = nullptr;

int OnXError(Display* display, XErrorEvent* error) {
    // Calls on a window that no longer exists: the window was closed.
    if (error->error_code == BadWindow || error->error_code == BadDrawable) {
        windowGone = true;
        return 0;
    }
    return previousHandler ? previousHandler(display, error) : 0;
}
#endif

}  // namespace

void InstallX11Guard(SDL_Window* window) {
#ifdef SDL_VIDEO_DRIVER_X11
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!window || !SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11) return;
    // SDL loads Xlib itself; reach for the one it loaded rather than link our own.
    void* xlib = dlopen("libX11.so.6", RTLD_NOW | RTLD_NOLOAD);
    if (!xlib) return;
    auto set = reinterpret_cast<SetErrorHandler>(dlsym(xlib, "XSetErrorHandler"));
    if (set) {
        guardedWindow = info.info.x11.window;
        ErrorHandler old = set(OnXError);
        if (old != OnXError) previousHandler = old;
        SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
    }
    dlclose(xlib);  // NOLOAD took a reference of its own
#else
    (void)window;
#endif
}

bool X11WindowGone() { return windowGone; }

bool X11DestroysWindow(const SDL_Event& e) {
#ifdef SDL_VIDEO_DRIVER_X11
    if (e.type != SDL_SYSWMEVENT || !e.syswm.msg || e.syswm.msg->subsystem != SDL_SYSWM_X11) return false;
    const XEvent& x = e.syswm.msg->msg.x11.event;
    if (x.type == DestroyNotify && guardedWindow != 0 && x.xdestroywindow.window == guardedWindow) {
        windowGone = true;
        return true;
    }
#else
    (void)e;
#endif
    return false;
}

}  // namespace qb
