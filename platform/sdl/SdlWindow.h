// The game window under SDL2: one OpenGL window, full screen on the desktop
// (Alt+Enter toggles a window), its events delivered only when the loop asks.
// Showing it never fails loudly: when there is no display or no OpenGL the
// reason is kept and the graphics device reports no 3D hardware.
#pragma once

#include <SDL.h>

#include <functional>
#include <string>

#include "platform/Window.h"
#include "platform/sdl/Letterbox.h"

namespace qb {

// Breaks a message into lines of at most `width` characters at blanks.
std::string WrapForMessageBox(const std::string& text, size_t width = 72);

class SdlKeyboard;

class SdlWindow : public Window {
public:
    // hidden: never mapped on screen (pictures are taken from the back buffer).
    SdlWindow(SdlKeyboard& keyboard, bool hidden, std::string iconPath);
    ~SdlWindow() override;
    SdlWindow(const SdlWindow&) = delete;
    SdlWindow& operator=(const SdlWindow&) = delete;

    void show() override;
    void processEvents(WindowEvents& handler) override;
    bool hasFocus() override;
    void messageBox(const std::string& text) override;
    bool openUrl(const std::string& url) override;
    bool waitForRefresh() override;
    bool waitForEvent(int timeoutMs) override;
    bool takeRedrawRequest() override;

    // --- for the graphics device ------------------------------------------------------
    bool ready() const { return context_ != nullptr; }
    const std::string& failure() const { return failure_; }
    bool hidden() const { return hidden_; }
    // The back buffer's size and its pixels per screen unit, so that mouse
    // positions come out in screen units; a window takes the size it shows.
    void setBackBufferSize(int w, int h, float scale);
    // The whole display in pixels while full screen (false in a window).
    bool fullScreenPixels(int& w, int& h) const;
    // Drawable pixels per window unit.
    float pixelDensity() const;
    // Where the back buffer lands in the drawable, in GL pixels (origin bottom-left).
    ViewRect drawablePicture(int& drawableW, int& drawableH) const;
    // Shows the frame drawn into the default framebuffer.
    void swap();
    // Finds out whether swaps wait for the display; call with a current context.
    void measureVsync();
    void toggleFullscreen();

    // Shows the desktop's message box; 0 when it was shown. Replaceable so
    // a failing desktop can be tried.
    std::function<int(const std::string&)> systemBox;
    // Called with the text when the desktop's box could not be shown.
    std::function<bool(const std::string&)> inWindowMessage;

private:
    SdlKeyboard& keyboard_;
    bool hidden_;
    std::string iconPath_;
    SDL_Window* window_ = nullptr;
    SDL_GLContext context_ = nullptr;
    std::string failure_;
    bool videoStarted_ = false;
    bool focus_ = false;
    bool swapIntervalSet_ = false;
    bool vsyncPaces_ = false;
    int bufferW_ = 800, bufferH_ = 600;
    float scale_ = 1.0f;
    bool closedUnderUs_ = false;  // the X window was destroyed by someone else
    bool closeReported_ = false;
    bool redraw_ = true;

    void fail(const std::string& why);
    void mouseToBackBuffer(int x, int y, float& bx, float& by) const;
};

}  // namespace qb
