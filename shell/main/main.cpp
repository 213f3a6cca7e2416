// quorbit: the game on the real platform (SDL2 window, OpenGL, SDL2_mixer).
#include "platform/sdl/SdlPlatform.h"
#include "shell/frmGame.h"

int main(int argc, char** argv) {
    qb::SdlPlatform real(argc > 0 ? argv[0] : "quorbit");
    qb::frmGame game(real.platform);
    return game.Form_Load();
}
