// quorbit: the game on the real platform (SDL2 window, OpenGL, SDL2_mixer).
#include <exception>
#include <iostream>

#include "platform/sdl/SdlPlatform.h"
#include "shell/frmGame.h"

int main(int argc, char** argv) {
    try {
        qb::SdlPlatform real(argc > 0 ? argv[0] : "quorbit");
        qb::frmGame game(real.platform);
        return game.Form_Load();
    } catch (const qb::DeviceError& e) {
        std::cerr << "Quorbit: the graphics device failed: " << e.number << " " << e.description << "\n";
    } catch (const std::exception& e) {
        std::cerr << "Quorbit: " << e.what() << "\n";
    }
    return 1;
}
