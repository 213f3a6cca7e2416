// The picture behind everything (the sky, a menu's backdrop) kept at the back
// buffer's size. Every frame starts with it, and texturing a whole screen of
// it again each time costs a software renderer as much as the rest of the
// frame together; copying a picture already the buffer's size is a memcpy.
#pragma once

#include <epoxy/gl.h>

#include <array>
#include <cstdint>
#include <map>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

// Everything that decides what the backdrop's pixels come out as.
struct BackdropKey {
    TextureId texture = 0;
    std::array<ScreenVertex, 4> quad{};
    std::map<RenderState, uint32_t> renderStates;
    std::array<uint32_t, 6> stage{};
    uint32_t clearColour = 0;
    float scale = 1.0f;
    int width = 0, height = 0;

    bool operator==(const BackdropKey& other) const;
};

// Whether a backdrop drawn right after a clear to `clearDepth` passes the
// depth test everywhere (or meets none): only then is a copy the same picture.
bool BackdropPassesDepth(const std::array<ScreenVertex, 4>& quad, bool depthTest, float clearDepth);

class GlBackdrop {
public:
    GlBackdrop() = default;
    GlBackdrop(const GlBackdrop&) = delete;
    GlBackdrop& operator=(const GlBackdrop&) = delete;

    // Frees the kept picture; the GL context must still be current.
    void release();
    bool holds(const BackdropKey& key) const { return valid_ && key == key_; }
    // Makes (or reuses) a target of the key's size and binds it as the draw
    // framebuffer, for the caller to draw the backdrop into as it would into
    // the back buffer. False when GL cannot make it.
    bool beginRecording(const BackdropKey& key);
    // Puts the kept picture into the colour of framebuffer `target`.
    void copyInto(GLuint target) const;

private:
    GLuint fbo_ = 0, colour_ = 0;
    int width_ = 0, height_ = 0;
    bool valid_ = false;
    BackdropKey key_;
};

}  // namespace qb
