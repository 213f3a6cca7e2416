// Text for the device: a face name resolved through fontconfig, rendered with
// SDL2_ttf into a texture that is kept while the same text keeps being drawn,
// so a text drawn every frame costs one upload.
#pragma once

#include <epoxy/gl.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/GraphicsDevice.h"

typedef struct _TTF_Font TTF_Font;

namespace qb {

// The font file fontconfig offers for a face. The game names "Ariel", which
// no system has: it is read as Arial, whose metric twin (Liberation Sans)
// fontconfig knows. boldFace tells whether the file itself is a bold face.
std::string ResolveFontFile(const std::string& face, bool bold, bool& boldFace);

// Point sizes are meant for a 96 dpi screen: the em in pixels.
int FontPixelSize(int points);

struct TextImage {
    GLuint texture = 0;
    int width = 0, height = 0;
    uint64_t lastUsed = 0;
};

class TextRenderer {
public:
    TextRenderer() = default;
    ~TextRenderer();
    TextRenderer(const TextRenderer&) = delete;
    TextRenderer& operator=(const TextRenderer&) = delete;

    // 0 when no font file could be opened.
    FontId createFont(const std::string& face, int sizePoints, bool bold);
    void releaseFont(FontId font);
    // The white picture of the text, or nullptr when there is nothing to draw.
    const TextImage* image(FontId font, const std::string& text, uint64_t frame);
    // Drops the pictures not drawn for a while.
    void endFrame(uint64_t frame);
    void releaseAll();

private:
    struct OpenFont {
        TTF_Font* font = nullptr;
        int users = 0;
    };
    bool ttfStarted_ = false;
    FontId nextId_ = 1;
    std::map<std::string, OpenFont> open_;                            // by description
    std::map<FontId, std::string> fonts_;                             // id -> description
    std::map<std::pair<std::string, std::string>, TextImage> cache_;  // (description, text)
};

}  // namespace qb
