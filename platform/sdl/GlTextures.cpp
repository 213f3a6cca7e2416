#include "platform/sdl/GlTextures.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cstring>

#include "platform/AssetLimits.h"

namespace qb {

bool LoadArgbImage(const std::string& path, ArgbImage& out) {
    int32_t width = 0, height = 0;
    std::string why;
    if (!CheckPictureFile(path, width, height, why)) return false;
    SDL_Surface* loaded = IMG_Load(path.c_str());
    if (!loaded) return false;
    SDL_Surface* argb = SDL_ConvertSurfaceFormat(loaded, SDL_PIXELFORMAT_ARGB8888, 0);
    SDL_FreeSurface(loaded);
    if (!argb) return false;
    out.width = argb->w;
    out.height = argb->h;
    out.pixels.resize(static_cast<size_t>(argb->w) * static_cast<size_t>(argb->h));
    SDL_LockSurface(argb);
    for (int y = 0; y < argb->h; ++y)
        std::memcpy(out.pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(argb->w),
                    static_cast<const uint8_t*>(argb->pixels) +
                        static_cast<size_t>(y) * static_cast<size_t>(argb->pitch),
                    static_cast<size_t>(argb->w) * 4);
    SDL_UnlockSurface(argb);
    SDL_FreeSurface(argb);
    return true;
}

size_t ApplyColourKey(uint32_t* argb, size_t count, uint32_t key) {
    if (key == 0) return 0;
    size_t keyed = 0;
    for (size_t i = 0; i < count; ++i)
        if (argb[i] == key) {
            argb[i] = 0;
            ++keyed;
        }
    return keyed;
}

namespace {

// Rows of `pitch` bytes, `bytesPerPixel` each: the unpack state that reads
// them as they lie.
void SetUnpackRows(int pitch, int width, int bytesPerPixel) {
    if (pitch % bytesPerPixel == 0) {
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, pitch / bytesPerPixel);
    } else {  // rows padded to 4 bytes
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, width);
    }
}

GLuint Upload(int width, int height, GLenum format, GLenum type, const void* pixels, bool mipmaps) {
    GLuint tex = 0;
    glGenTextures(1, &tex);
    glBindTexture(GL_TEXTURE_2D, tex);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, format, type, pixels);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    if (mipmaps && (epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_ARB_framebuffer_object")))
        glGenerateMipmap(GL_TEXTURE_2D);
    return tex;
}

}  // namespace

GLuint UploadTexture(const ArgbImage& image, bool mipmaps) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    // ARGB words are BGRA bytes on every machine when read as 8_8_8_8_REV.
    return Upload(image.width, image.height, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, image.pixels.data(),
                  mipmaps);
}

GLuint LoadTextureFile(const std::string& path, uint32_t colourKey, bool mipmaps, bool* opaque) {
    if (opaque) *opaque = false;
    int32_t width = 0, height = 0;
    std::string why;
    if (!CheckPictureFile(path, width, height, why)) return 0;
    SDL_Surface* loaded = IMG_Load(path.c_str());
    if (!loaded) return 0;
    const Uint32 format = loaded->format->format;
    if (colourKey == 0 && (format == SDL_PIXELFORMAT_RGB24 || format == SDL_PIXELFORMAT_BGR24)) {
        // Opaque 24-bit pixels (the skies, the block faces) go up as they
        // are: the GL reads them with an alpha of one, as the ARGB copy had.
        SDL_LockSurface(loaded);
        SetUnpackRows(loaded->pitch, loaded->w, 3);
        const GLuint tex = Upload(loaded->w, loaded->h, format == SDL_PIXELFORMAT_RGB24 ? GL_RGB : GL_BGR,
                                  GL_UNSIGNED_BYTE, loaded->pixels, mipmaps);
        SDL_UnlockSurface(loaded);
        SDL_FreeSurface(loaded);
        if (opaque) *opaque = true;
        return tex;
    }
    SDL_Surface* argb = SDL_ConvertSurfaceFormat(loaded, SDL_PIXELFORMAT_ARGB8888, 0);
    SDL_FreeSurface(loaded);
    if (!argb) return 0;
    SDL_LockSurface(argb);
    const size_t rowWords = static_cast<size_t>(argb->pitch) / 4;
    for (int y = 0; y < argb->h; ++y)
        ApplyColourKey(static_cast<uint32_t*>(argb->pixels) + static_cast<size_t>(y) * rowWords,
                       static_cast<size_t>(argb->w), colourKey);
    bool allOpaque = true;
    for (int y = 0; y < argb->h && allOpaque; ++y) {
        const uint32_t* row = static_cast<const uint32_t*>(argb->pixels) + static_cast<size_t>(y) * rowWords;
        for (int x = 0; x < argb->w; ++x)
            if ((row[x] >> 24) != 255u) {
                allOpaque = false;
                break;
            }
    }
    SetUnpackRows(argb->pitch, argb->w, 4);
    const GLuint tex = Upload(argb->w, argb->h, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, argb->pixels, mipmaps);
    if (opaque) *opaque = allOpaque && tex != 0;
    SDL_UnlockSurface(argb);
    SDL_FreeSurface(argb);
    return tex;
}

}  // namespace qb
