// Pictures for the device: BMP and JPG files read with SDL2_image, the
// colour key applied, and the result uploaded as a GL texture. The decoded
// pixels live only until the upload: the GL keeps its own copy.
#pragma once

#include <epoxy/gl.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qb {

// A picture as 32-bit ARGB pixels, rows from the top.
struct ArgbImage {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;
};

// Reads a picture file. False when it cannot be read or decoded.
bool LoadArgbImage(const std::string& path, ArgbImage& out);

// Every pixel equal to the key becomes transparent black, as Direct3D's
// texture loader does. A key of 0 means no key. Returns the pixels keyed.
size_t ApplyColourKey(uint32_t* argb, size_t count, uint32_t key);

// Uploads the picture as an RGBA texture that repeats, filtered linearly
// (mip levels are made when asked, sampling stays on the top level as the
// game never turns mip filtering on).
GLuint UploadTexture(const ArgbImage& image, bool mipmaps);

// Reads, keys and uploads a picture file in one go, holding at most the
// decoded picture and one converted copy at a time (a picture without a
// key goes up as the decoder's own 24-bit pixels). 0 when the file cannot
// be read or decoded. `opaque`, when given, says whether every pixel came
// out with an alpha of one.
GLuint LoadTextureFile(const std::string& path, uint32_t colourKey, bool mipmaps, bool* opaque = nullptr);

}  // namespace qb
