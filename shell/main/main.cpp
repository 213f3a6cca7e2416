// quorbit: the game on the real platform (SDL2 window, OpenGL, SDL2_mixer).
#include <malloc.h>

#include <exception>
#include <iostream>

#include "platform/sdl/SdlPlatform.h"
#include "shell/frmGame.h"

int main(int argc, char** argv) {
    // Pictures and sounds are decoded into blocks of hundreds of kilobytes
    // that live only until they are uploaded. Given straight back to the
    // system, they leave no hole in the heap for the rest of the run; the
    // allocator's own choice would raise its threshold past them after the
    // first one is freed and keep their pages.
    mallopt(M_MMAP_THRESHOLD, 64 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024);
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
