#include "platform/sdl/GlText.h"

#include <SDL_ttf.h>
#include <fontconfig/fontconfig.h>
#include <strings.h>

#include <cmath>
#include <vector>

namespace qb {

std::string ResolveFontFile(const std::string& face, bool bold, bool& boldFace) {
    boldFace = false;
    std::string family = face;
    if (strcasecmp(face.c_str(), "Ariel") == 0) family = "Arial";
    if (!FcInit()) return "";
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
    FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern, FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    std::string file;
    if (match) {
        FcChar8* path = nullptr;
        if (FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch && path)
            file = reinterpret_cast<const char*>(path);
        int weight = FC_WEIGHT_REGULAR;
        if (FcPatternGetInteger(match, FC_WEIGHT, 0, &weight) == FcResultMatch)
            boldFace = weight >= FC_WEIGHT_DEMIBOLD;
        FcPatternDestroy(match);
    }
    FcPatternDestroy(pattern);
    return file;
}

int FontPixelSize(int points) {
    return static_cast<int>(std::lround(points * 96.0 / 72.0));
}

TextRenderer::~TextRenderer() {
    releaseAll();
}

void TextRenderer::releaseAll() {
    for (auto& [key, img] : cache_)
        if (img.texture) glDeleteTextures(1, &img.texture);
    cache_.clear();
    for (auto& [key, f] : open_)
        if (f.font) TTF_CloseFont(f.font);
    open_.clear();
    fonts_.clear();
    if (ttfStarted_) TTF_Quit();
    ttfStarted_ = false;
}

FontId TextRenderer::createFont(const std::string& face, int sizePoints, bool bold) {
    if (!ttfStarted_) {
        if (TTF_Init() != 0) return 0;
        ttfStarted_ = true;
    }
    const int pixels = FontPixelSize(sizePoints > 0 ? sizePoints : 1);
    const std::string description = face + "|" + std::to_string(pixels) + (bold ? "|b" : "|r");
    auto it = open_.find(description);
    if (it == open_.end()) {
        bool boldFace = false;
        const std::string file = ResolveFontFile(face, bold, boldFace);
        if (file.empty()) return 0;
        TTF_Font* font = TTF_OpenFont(file.c_str(), pixels);
        if (!font) return 0;
        if (bold && !boldFace) TTF_SetFontStyle(font, TTF_STYLE_BOLD);
        it = open_.emplace(description, OpenFont{font, 0}).first;
    }
    ++it->second.users;
    const FontId id = nextId_++;
    fonts_[id] = description;
    return id;
}

void TextRenderer::releaseFont(FontId font) {
    auto f = fonts_.find(font);
    if (f == fonts_.end()) return;
    auto it = open_.find(f->second);
    fonts_.erase(f);
    // The face stays open (and its texts cached) while it is alive: the game
    // makes a fresh font for every change of a text field.
    if (it != open_.end() && it->second.users > 0) --it->second.users;
}

const TextImage* TextRenderer::image(FontId font, const std::string& text, uint64_t frame) {
    if (text.empty()) return nullptr;
    auto f = fonts_.find(font);
    if (f == fonts_.end()) return nullptr;
    auto key = std::make_pair(f->second, text);
    auto cached = cache_.find(key);
    if (cached != cache_.end()) {
        cached->second.lastUsed = frame;
        return &cached->second;
    }
    TTF_Font* ttf = open_[f->second].font;
    // The game's texts are single-byte (Windows) text.
    SDL_Surface* rendered = TTF_RenderText_Blended(ttf, text.c_str(), SDL_Color{255, 255, 255, 255});
    if (!rendered) return nullptr;
    SDL_Surface* argb = SDL_ConvertSurfaceFormat(rendered, SDL_PIXELFORMAT_ARGB8888, 0);
    SDL_FreeSurface(rendered);
    if (!argb) return nullptr;
    TextImage img;
    img.width = argb->w;
    img.height = argb->h;
    img.lastUsed = frame;
    glGenTextures(1, &img.texture);
    glBindTexture(GL_TEXTURE_2D, img.texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    SDL_LockSurface(argb);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, argb->pitch / 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, argb->w, argb->h, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                 argb->pixels);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    SDL_UnlockSurface(argb);
    SDL_FreeSurface(argb);
    return &cache_.emplace(key, img).first->second;
}

void TextRenderer::endFrame(uint64_t frame) {
    constexpr uint64_t KeepFrames = 120;
    for (auto it = cache_.begin(); it != cache_.end();) {
        if (frame - it->second.lastUsed > KeepFrames) {
            glDeleteTextures(1, &it->second.texture);
            it = cache_.erase(it);
        } else {
            ++it;
        }
    }
    // Faces nobody holds any more and whose texts are gone can close.
    for (auto it = open_.begin(); it != open_.end();) {
        bool inUse = it->second.users > 0;
        for (const auto& [key, img] : cache_)
            if (key.first == it->first) inUse = true;
        if (!inUse) {
            TTF_CloseFont(it->second.font);
            it = open_.erase(it);
        } else {
            ++it;
        }
    }
}

}  // namespace qb
