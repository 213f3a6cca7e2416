#include "platform/sdl/GlBackdrop.h"

#include <cstring>

namespace qb {

bool BackdropKey::operator==(const BackdropKey& other) const {
    // ScreenVertex is eight 4-byte fields without padding.
    return texture == other.texture && std::memcmp(quad.data(), other.quad.data(), sizeof(quad)) == 0 &&
           renderStates == other.renderStates && stage == other.stage && clearColour == other.clearColour &&
           scale == other.scale && width == other.width && height == other.height;
}

bool BackdropPassesDepth(const std::array<ScreenVertex, 4>& quad, bool depthTest, float clearDepth) {
    for (const ScreenVertex& v : quad) {
        // Outside 0..1 the quad is clipped, which a copy would not be.
        if (!(v.z >= 0.0f && v.z <= 1.0f)) return false;
        if (depthTest && v.z > clearDepth) return false;  // the device tests LESSEQUAL
    }
    return true;
}

void GlBackdrop::release() {
    if (fbo_) glDeleteFramebuffers(1, &fbo_);
    if (colour_) glDeleteTextures(1, &colour_);
    fbo_ = colour_ = 0;
    width_ = height_ = 0;
    valid_ = false;
}

bool GlBackdrop::beginRecording(const BackdropKey& key) {
    valid_ = false;
    if (key.width <= 0 || key.height <= 0) return false;
    if (key.width != width_ || key.height != height_) {
        release();
        glGenTextures(1, &colour_);
        glBindTexture(GL_TEXTURE_2D, colour_);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        // The back buffer's own format, so the copy needs no conversion.
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, key.width, key.height, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
        glGenFramebuffers(1, &fbo_);
        glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, colour_, 0);
        if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
            release();
            return false;
        }
        width_ = key.width;
        height_ = key.height;
    }
    glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
    glViewport(0, 0, width_, height_);
    key_ = key;
    valid_ = true;
    return true;
}

void GlBackdrop::copyInto(GLuint target) const {
    glDisable(GL_SCISSOR_TEST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, fbo_);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, target);
    glBlitFramebuffer(0, 0, width_, height_, 0, 0, width_, height_, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, target);
}

}  // namespace qb
