// The game window: its events arrive only when the loop asks for them.
#pragma once

#include <string>

namespace qb {

class WindowEvents {
public:
    virtual ~WindowEvents() = default;
    // Positions in 800x600-layout-sized screen pixels of the back buffer.
    virtual void onMouseMove(float x, float y) = 0;
    virtual void onMouseDown(int button, float x, float y) = 0;
    virtual void onClose() = 0;
};

class Window {
public:
    virtual ~Window() = default;
    virtual void show() = 0;
    // Delivers pending window events to the handler (and feeds the keyboard).
    virtual void processEvents(WindowEvents& handler) = 0;
    virtual bool hasFocus() = 0;
    // Shows a message box (or prints it where there is no display).
    virtual void messageBox(const std::string& text) = 0;
    // Opens a page with the desktop's opener. False when nothing could.
    virtual bool openUrl(const std::string& url) = 0;
    // Waits for the next display refresh where the display paces us, else
    // returns false so the caller paces itself.
    virtual bool waitForRefresh() = 0;
    // Waits up to timeoutMs for the next window event (it stays pending).
    // False when this window cannot wait: the caller sleeps instead.
    virtual bool waitForEvent(int timeoutMs) {
        (void)timeoutMs;
        return false;
    }
    // True once after the window showed or changed size: the picture on it
    // must be drawn again even if nothing in it changed.
    virtual bool takeRedrawRequest() { return false; }
};

}  // namespace qb
