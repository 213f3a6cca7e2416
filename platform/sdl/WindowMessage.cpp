#include "platform/sdl/WindowMessage.h"

#include <SDL.h>

#include "platform/sdl/SdlWindow.h"

namespace qb {

bool DrawWindowMessage(GraphicsDevice& device, const std::string& text) {
    const FontId font = device.createFont("Liberation Sans", 14, true);
    if (font == 0) return false;
    device.clear(0xFF000000u, 1.0f);
    device.beginScene();
    const std::string wrapped = WrapForMessageBox(text, 70) + "\n\nPress a key or click to go on.";
    int top = 60;
    size_t start = 0;
    while (start <= wrapped.size()) {
        size_t end = wrapped.find('\n', start);
        if (end == std::string::npos) end = wrapped.size();
        device.drawText(font, wrapped.substr(start, end - start), 40, top, 780, top + 30, 0xFFFFFFFFu);
        top += 26;
        start = end + 1;
    }
    device.endScene();
    device.present();
    device.releaseFont(font);
    return true;
}

bool ShowWindowMessage(GraphicsDevice& device, const std::string& text) {
    if (!DrawWindowMessage(device, text)) return false;
    SDL_FlushEvents(SDL_KEYDOWN, SDL_MOUSEBUTTONUP);
    for (;;) {
        SDL_Event e;
        if (SDL_WaitEventTimeout(&e, 200)) {
            if (e.type == SDL_KEYDOWN || e.type == SDL_MOUSEBUTTONDOWN) return true;
            if (e.type == SDL_QUIT) {
                // The close request is the game's to act on.
                SDL_PushEvent(&e);
                return true;
            }
        }
        // Redrawn now and then: an exposed window shows the message again.
        DrawWindowMessage(device, text);
    }
}

}  // namespace qb
