// What a picture or a model file claims is checked against what it can be
// before a decoder sizes anything from it: a header claiming 40 000 x 40 000
// pixels or a model claiming two billion vertices would otherwise cost
// gigabytes before the first missing byte is noticed.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

constexpr int32_t kLargestPictureSide = 4096;
constexpr int64_t kLargestPictureFile = 32 << 20;
constexpr int64_t kLargestModelFile = 4 << 20;

// Width and height from the header of a BMP, PNG or JPEG file. False with
// `why` set for another kind of file, a damaged header, a side of 0 or over
// kLargestPictureSide, or a file over kLargestPictureFile.
bool CheckPictureFile(const std::string& path, int32_t& width, int32_t& height, std::string& why);

// A text DirectX model whose every count (the numbers opening a list: the
// vertices, faces, normals, texture coordinates of a mesh) fits in the bytes
// after it. False with `why` set otherwise, and for binary or compressed
// models or a file over kLargestModelFile.
bool CheckModelFile(const std::string& path, std::string& why);

// A RIFF WAVE file whose chunks, its sound data among them, are all there:
// a file cut short would otherwise play the part that survived.
bool CheckWaveFile(const std::string& path, std::string& why);

}  // namespace qb
