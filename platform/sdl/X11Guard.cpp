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

bool X11WindowGone() {
    return windowGone;
}

bool X11ActualWindowSize(SDL_Window* window, int& w, int& h) {
#ifdef SDL_VIDEO_DRIVER_X11
    if (!window || windowGone) return false;
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11) return false;
    using GetAttributes = Status (*)(Display*, Window, XWindowAttributes*);
    static GetAttributes get = [] {
        void* xlib = dlopen("libX11.so.6", RTLD_NOW | RTLD_NOLOAD);
        // Xlib stays loaded by SDL for the whole run, so the pointer stays good.
        GetAttributes f =
            xlib ? reinterpret_cast<GetAttributes>(dlsym(xlib, "XGetWindowAttributes")) : nullptr;
        if (xlib) dlclose(xlib);
        return f;
    }();
    XWindowAttributes a{};
    if (!get || !get(info.info.x11.display, info.info.x11.window, &a) || a.width <= 0 || a.height <= 0)
        return false;
    w = a.width;
    h = a.height;
    return true;
#else
    (void)window;
    (void)w;
    (void)h;
    return false;
#endif
}

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
