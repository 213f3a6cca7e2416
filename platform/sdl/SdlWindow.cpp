#include "platform/sdl/SdlWindow.h"

#include <SDL_image.h>

#include <cmath>
#include <csignal>
#include <cstring>
#include <iostream>

#include "platform/sdl/SdlKeyboard.h"
#include "platform/sdl/X11Guard.h"

namespace qb {

SdlWindow::SdlWindow(SdlKeyboard& keyboard, bool hidden, std::string iconPath)
    : keyboard_(keyboard), hidden_(hidden), iconPath_(std::move(iconPath)) {}

SdlWindow::~SdlWindow() {
    if (context_) SDL_GL_DeleteContext(context_);
    // A window someone else destroyed must not be destroyed again: SDL's
    // video shutdown would do just that, and Xlib ends the process on the
    // error. The X server drops what is left when the connection closes.
    if (X11WindowGone() || closedUnderUs_) return;
    if (window_) SDL_DestroyWindow(window_);
    if (videoStarted_) SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

void SdlWindow::fail(const std::string& why) {
    failure_ = why;
    std::cerr << "Quorbit: " << why << "\n";
    if (context_) SDL_GL_DeleteContext(context_);
    context_ = nullptr;
    if (window_) SDL_DestroyWindow(window_);
    window_ = nullptr;
}

void SdlWindow::show() {
    if (window_) {
        if (!hidden_) SDL_ShowWindow(window_);
        return;
    }
    if (!videoStarted_) {
        SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
        bool started = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
        if (!started && hidden_) {
            // Nobody sees a hidden window: without a display, draw off-screen.
            SDL_SetHint(SDL_HINT_VIDEODRIVER, "offscreen");
            started = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
        }
        if (!started) {
            fail(std::string("no display to open the game window on (") + SDL_GetError() + ")");
            return;
        }
        videoStarted_ = true;
        // SDL falls back on drivers that show nothing; a player would see no game.
        const char* driver = SDL_GetCurrentVideoDriver();
        const bool invisible =
            driver && (std::strcmp(driver, "offscreen") == 0 || std::strcmp(driver, "dummy") == 0);
        if (invisible && !hidden_) {
            fail("no display to open the game window on (set DISPLAY or WAYLAND_DISPLAY)");
            return;
        }
    }
    // A compatibility context: the game's pipeline is the fixed-function one.
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 1);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);  // depth lives with the back buffer

    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_ALLOW_HIGHDPI | SDL_WINDOW_RESIZABLE;
    flags |= hidden_ ? SDL_WINDOW_HIDDEN : SDL_WINDOW_FULLSCREEN_DESKTOP;
    window_ = SDL_CreateWindow("Quorbit", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, bufferW_, bufferH_,
                               flags);
    if (!window_) {
        fail(std::string("the game window could not be created (") + SDL_GetError() + ")");
        return;
    }
    context_ = SDL_GL_CreateContext(window_);
    if (!context_) {
        fail(std::string("no usable OpenGL for the game window (") + SDL_GetError() + ")");
        return;
    }
    SDL_GL_MakeCurrent(window_, context_);
    if (!iconPath_.empty()) {
        if (SDL_Surface* icon = IMG_Load(iconPath_.c_str())) {
            SDL_SetWindowIcon(window_, icon);
            SDL_FreeSurface(icon);
        }
    }
    InstallX11Guard(window_);
    swapIntervalSet_ = !hidden_ && SDL_GL_SetSwapInterval(1) == 0;
    if (!hidden_) {
        SDL_RaiseWindow(window_);
        SDL_PumpEvents();
    }
    focus_ = hidden_ || (SDL_GetWindowFlags(window_) & SDL_WINDOW_INPUT_FOCUS) != 0;
}

void SdlWindow::setBackBufferSize(int w, int h, float scale) {
    bufferW_ = w;
    bufferH_ = h;
    scale_ = scale > 0 ? scale : 1.0f;
    if (window_ && (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN) == 0) {
        // A window is sized in its own units: the buffer over the density.
        const float density = pixelDensity();
        SDL_SetWindowSize(window_, static_cast<int>(std::lround(w / density)),
                          static_cast<int>(std::lround(h / density)));
    }
}

bool SdlWindow::fullScreenPixels(int& w, int& h) const {
    if (!window_ || hidden_ || (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN) == 0) return false;
    // The whole display the window is on, in pixels. Without a window
    // manager the X window itself may not grow until someone sizes it: until
    // then the picture is shown scaled down into it.
    SDL_DisplayMode mode{};
    const int display = SDL_GetWindowDisplayIndex(window_);
    if (display < 0 || SDL_GetDesktopDisplayMode(display, &mode) != 0) return false;
    const float density = pixelDensity();
    w = static_cast<int>(std::lround(mode.w * density));
    h = static_cast<int>(std::lround(mode.h * density));
    return w > 0 && h > 0;
}

float SdlWindow::pixelDensity() const {
    if (!window_ || hidden_) return 1.0f;
    int ww = 0, wh = 0, dw = 0, dh = 0;
    SDL_GetWindowSize(window_, &ww, &wh);
    SDL_GL_GetDrawableSize(window_, &dw, &dh);
    if (ww <= 0 || dw <= 0) return 1.0f;
    return static_cast<float>(dw) / static_cast<float>(ww);
}

ViewRect SdlWindow::drawablePicture(int& drawableW, int& drawableH) const {
    drawableW = bufferW_;
    drawableH = bufferH_;
    if (window_ && !X11ActualWindowSize(window_, drawableW, drawableH))
        SDL_GL_GetDrawableSize(window_, &drawableW, &drawableH);
    ViewRect r = LetterboxRect(drawableW, drawableH, bufferW_, bufferH_);
    r.y = drawableH - r.y - r.h;  // GL counts rows from the bottom
    return r;
}

void SdlWindow::mouseToBackBuffer(int x, int y, float& bx, float& by) const {
    int w = bufferW_, h = bufferH_;
    if (window_ && !X11ActualWindowSize(window_, w, h)) SDL_GetWindowSize(window_, &w, &h);
    WindowToScreenUnits(LetterboxRect(w, h, bufferW_, bufferH_), bufferW_, bufferH_, scale_,
                        static_cast<float>(x), static_cast<float>(y), bx, by);
}

void SdlWindow::toggleFullscreen() {
    if (!window_ || hidden_) return;
    const bool full = (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN) != 0;
    SDL_SetWindowFullscreen(window_, full ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
    // The game fits its back buffer to the new display when it sees this.
    redraw_ = true;
    if (full) SDL_SetWindowPosition(window_, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
}

void SdlWindow::processEvents(WindowEvents& handler) {
    if (!videoStarted_) return;
    SDL_Event e;
    while (SDL_PollEvent(&e)) {
        if (X11DestroysWindow(e)) closedUnderUs_ = true;
        switch (e.type) {
            case SDL_QUIT:
                handler.onClose();
                break;
            case SDL_WINDOWEVENT:
                if (e.window.event == SDL_WINDOWEVENT_CLOSE) {
                    handler.onClose();
                } else if (e.window.event == SDL_WINDOWEVENT_FOCUS_GAINED) {
                    focus_ = true;
                    redraw_ = true;
                } else if (e.window.event == SDL_WINDOWEVENT_EXPOSED ||
                           e.window.event == SDL_WINDOWEVENT_SHOWN ||
                           e.window.event == SDL_WINDOWEVENT_SIZE_CHANGED ||
                           e.window.event == SDL_WINDOWEVENT_RESTORED) {
                    redraw_ = true;
                } else if (e.window.event == SDL_WINDOWEVENT_FOCUS_LOST) {
                    focus_ = hidden_;
                    keyboard_.releaseAll(e.window.timestamp);
                }
                break;
            case SDL_KEYDOWN:
            case SDL_KEYUP: {
                const bool down = e.type == SDL_KEYDOWN;
                const SDL_Scancode sc = e.key.keysym.scancode;
                const bool alt = (e.key.keysym.mod & KMOD_ALT) != 0;
                if (down && alt && (sc == SDL_SCANCODE_RETURN || sc == SDL_SCANCODE_KP_ENTER)) {
                    if (!e.key.repeat) toggleFullscreen();
                    break;  // the menus never see this Return
                }
                if (down && alt && sc == SDL_SCANCODE_F4) {
                    handler.onClose();
                    break;
                }
                if (!e.key.repeat) keyboard_.onKey(sc, down, e.key.timestamp);
                break;
            }
            case SDL_MOUSEMOTION: {
                float x, y;
                mouseToBackBuffer(e.motion.x, e.motion.y, x, y);
                handler.onMouseMove(x, y);
                break;
            }
            case SDL_MOUSEBUTTONDOWN: {
                float x, y;
                mouseToBackBuffer(e.button.x, e.button.y, x, y);
                // The form's button numbers: 1 left, 2 right, 4 middle.
                const int button = e.button.button == SDL_BUTTON_LEFT     ? 1
                                   : e.button.button == SDL_BUTTON_RIGHT  ? 2
                                   : e.button.button == SDL_BUTTON_MIDDLE ? 4
                                                                          : 0;
                handler.onMouseDown(button, x, y);
                break;
            }
            default:
                break;
        }
    }
    if (X11WindowGone() && !closeReported_) {
        closeReported_ = true;
        closedUnderUs_ = true;
        handler.onClose();
    }
}

bool SdlWindow::hasFocus() {
    if (!window_) return false;
    return focus_;
}

// SDL's own X11 message box never wraps: a long path would run off the box.
std::string WrapForMessageBox(const std::string& text, size_t width) {
    std::string out, line;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find(' ', start);
        if (end == std::string::npos) end = text.size();
        const std::string word = text.substr(start, end - start);
        if (!line.empty() && line.size() + 1 + word.size() > width) {
            out += line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
        start = end + 1;
    }
    return out + line;
}

void SdlWindow::messageBox(const std::string& text) {
    std::cerr << "Quorbit: " << text << "\n";
    if (videoStarted_ && !hidden_) {
        // A box behind a full-screen window helps nobody.
        const bool full = window_ && (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN) != 0;
        if (full) SDL_SetWindowFullscreen(window_, 0);
        // While the box waits for a click, a request to end the program ends
        // it: SDL's own handlers would only queue a quit nobody reads.
        struct sigaction plain {
        }, oldTerm{}, oldInt{}, oldHup{};
        plain.sa_handler = SIG_DFL;
        sigaction(SIGTERM, &plain, &oldTerm);
        sigaction(SIGINT, &plain, &oldInt);
        sigaction(SIGHUP, &plain, &oldHup);
        const int shown = systemBox ? systemBox(text)
                                    : SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_INFORMATION, "Quorbit",
                                                               WrapForMessageBox(text).c_str(), window_);
        sigaction(SIGTERM, &oldTerm, nullptr);
        sigaction(SIGINT, &oldInt, nullptr);
        sigaction(SIGHUP, &oldHup, nullptr);
        if (shown != 0 && inWindowMessage) inWindowMessage(text);
        if (full) SDL_SetWindowFullscreen(window_, SDL_WINDOW_FULLSCREEN_DESKTOP);
    }
}

bool SdlWindow::openUrl(const std::string& url) {
    return SDL_OpenURL(url.c_str()) == 0;
}

bool SdlWindow::waitForEvent(int timeoutMs) {
    if (!videoStarted_ || hidden_) return false;
    SDL_WaitEventTimeout(nullptr, timeoutMs);
    return true;  // it waited, whether or not an event came
}

bool SdlWindow::takeRedrawRequest() {
    const bool r = redraw_;
    redraw_ = false;
    return r;
}

bool SdlWindow::waitForRefresh() {
    // The present before this call already waited for the display when it
    // paces swaps; otherwise the loop paces itself.
    return vsyncPaces_;
}

void SdlWindow::swap() {
    if (window_ && !hidden_ && !closedUnderUs_ && !X11WindowGone()) SDL_GL_SwapWindow(window_);
}

void SdlWindow::measureVsync() {
    vsyncPaces_ = false;
    if (!window_ || hidden_ || !swapIntervalSet_) return;
    // With a swap interval of 1 four empty swaps span at least one refresh;
    // a display that does not pace (a virtual frame buffer) is done at once.
    const Uint64 start = SDL_GetPerformanceCounter();
    for (int i = 0; i < 4; ++i) SDL_GL_SwapWindow(window_);
    const double ms = static_cast<double>(SDL_GetPerformanceCounter() - start) * 1000.0 /
                      static_cast<double>(SDL_GetPerformanceFrequency());
    vsyncPaces_ = ms >= 8.0;
}

}  // namespace qb
