#include "platform/sdl/SdlGraphics.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

#include "platform/D3DMath.h"
#include "platform/sdl/GlPipeline.h"
#include "platform/sdl/GlTextures.h"
#include "platform/sdl/GlTransforms.h"
#include "platform/sdl/SdlWindow.h"

namespace qb {

namespace {

constexpr long D3DERR_NOTAVAILABLE = static_cast<long>(static_cast<int32_t>(0x8876086Au));
constexpr long D3DERR_OUTOFVIDEOMEMORY = static_cast<long>(static_cast<int32_t>(0x8876017Cu));

enum StageSlot { ColorOpSlot, ColorArg1Slot, ColorArg2Slot, AlphaOpSlot, AlphaArg1Slot, AlphaArg2Slot };

}  // namespace

SdlGraphics::SdlGraphics(SdlWindow& window) : window_(window) {
    resetStates();
}

SdlGraphics::~SdlGraphics() {
    if (!window_.ready()) return;
    text_.releaseAll();
    backdrop_.release();
    for (auto& [id, tex] : textures_) glDeleteTextures(1, &tex);
    for (auto& [id, b] : buffers_) glDeleteBuffers(1, &b.vbo);
    for (auto& [id, m] : meshes_)
        for (auto& s : m.subsets) glDeleteBuffers(1, &s.vbo);
    if (white_) glDeleteTextures(1, &white_);
    freeBackBuffer();
}

bool SdlGraphics::checkGl() {
    if (glChecked_) return glUsable_;
    glChecked_ = true;
    if (!window_.ready()) {
        glProblem_ = window_.failure();
        return false;
    }
    // The back buffer is a framebuffer object: core since 3.0, an extension before.
    const bool fbo = epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_ARB_framebuffer_object");
    const bool combine = epoxy_gl_version() >= 13 || epoxy_has_gl_extension("GL_ARB_texture_env_combine");
    if (!fbo || !combine || epoxy_gl_version() < 15) {
        glProblem_ = "OpenGL " + std::to_string(epoxy_gl_version() / 10) + "." +
                     std::to_string(epoxy_gl_version() % 10) +
                     " lacks framebuffer objects or texture combiners";
        std::fprintf(stderr, "Quorbit: %s\n", glProblem_.c_str());
        return false;
    }
    glUsable_ = true;
    return true;
}

std::string SdlGraphics::adapterDescription() {
    if (!checkGl()) return "";
    const GLubyte* renderer = glGetString(GL_RENDERER);
    return renderer ? reinterpret_cast<const char*>(renderer) : "";
}

bool SdlGraphics::hasHardwareRasterizer() {
    return checkGl();
}

bool SdlGraphics::hasHardwareTnL() {
    return checkGl();
}

bool SdlGraphics::supportsMultiSample(int) {
    return false;
}

void SdlGraphics::resetStates() {
    // Direct3D's defaults, which a new or reset device starts from.
    renderStates_ = {{RenderState::ZEnable, 1},
                     {RenderState::ZWriteEnable, 1},
                     {RenderState::AlphaBlendEnable, 0},
                     {RenderState::SrcBlend, BlendOne},
                     {RenderState::DestBlend, BlendZero},
                     {RenderState::PointSize, FloatToDWord(1.0f)},
                     {RenderState::MultisampleAntialias, 1},
                     {RenderState::CullMode, 3},
                     {RenderState::TextureFactor, 0xFFFFFFFFu}};
    stage_[ColorOpSlot] = TopModulate;
    stage_[ColorArg1Slot] = TaTexture;
    stage_[ColorArg2Slot] = TaCurrent;
    stage_[AlphaOpSlot] = TopSelectArg1;
    stage_[AlphaArg1Slot] = TaTexture;
    stage_[AlphaArg2Slot] = TaCurrent;
    boundTexture_ = 0;
    world_ = view_ = projection_ = Matrix4{};
}

void SdlGraphics::freeBackBuffer() {
    if (fbo_) glDeleteFramebuffers(1, &fbo_);
    if (colour_) glDeleteTextures(1, &colour_);
    if (depth_) glDeleteRenderbuffers(1, &depth_);
    fbo_ = colour_ = depth_ = 0;
}

void SdlGraphics::makeBackBuffer(int w, int h) {
    freeBackBuffer();
    glGenTextures(1, &colour_);
    glBindTexture(GL_TEXTURE_2D, colour_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    // No alpha channel: blending with the destination's alpha reads 1, as on
    // the game's 16-bit back buffer.
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, w, h, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
    glGenRenderbuffers(1, &depth_);
    glBindRenderbuffer(GL_RENDERBUFFER, depth_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, w, h);
    glGenFramebuffers(1, &fbo_);
    glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, colour_, 0);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_);
    const GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
    if (status != GL_FRAMEBUFFER_COMPLETE) {
        freeBackBuffer();
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        throw DeviceError{D3DERR_OUTOFVIDEOMEMORY, "the back buffer could not be made (framebuffer status " +
                                                       std::to_string(status) + ")"};
    }
    bufferW_ = w;
    bufferH_ = h;
    glViewport(0, 0, w, h);
}

bool SdlGraphics::fullScreenPixels(int& w, int& h) {
    return window_.fullScreenPixels(w, h);
}

float SdlGraphics::pixelDensity() {
    return window_.pixelDensity();
}

void SdlGraphics::createDevice(const PresentParams& params) {
    if (!checkGl()) throw DeviceError{D3DERR_NOTAVAILABLE, glProblem_};
    if (!white_) {
        ArgbImage white{1, 1, {0xFFFFFFFFu}};
        white_ = UploadTexture(white, false);
    }
    glDisable(GL_LIGHTING);
    glShadeModel(GL_SMOOTH);
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_COMBINE);
    // Direct3D's front faces turn clockwise on screen.
    glFrontFace(GL_CW);
    glDepthFunc(GL_LEQUAL);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    window_.measureVsync();
    makeBackBuffer(params.width, params.height);
    scale_ = params.screenScale > 0 ? params.screenScale : 1.0f;
    window_.setBackBufferSize(bufferW_, bufferH_, scale_);
    resetStates();
    created_ = true;
}

bool SdlGraphics::resetDevice(const PresentParams& params) {
    if (!created_) return false;
    try {
        if (params.width != bufferW_ || params.height != bufferH_)
            makeBackBuffer(params.width, params.height);
    } catch (const DeviceError&) {
        return false;
    }
    // Fonts opened from now on are sized for the new scale.
    if (params.screenScale > 0) scale_ = params.screenScale;
    window_.setBackBufferSize(bufferW_, bufferH_, scale_);
    resetStates();
    return true;
}

void SdlGraphics::clear(uint32_t argbColour, float depth) {
    if (!created_) return;
    glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
    glViewport(0, 0, bufferW_, bufferH_);
    glDisable(GL_SCISSOR_TEST);
    glClearColor(((argbColour >> 16) & 255) / 255.0f, ((argbColour >> 8) & 255) / 255.0f,
                 (argbColour & 255) / 255.0f, 1.0f);
    glClearDepth(depth);
    glDepthMask(GL_TRUE);  // Direct3D clears depth whatever the write state
    glClear(GL_DEPTH_BUFFER_BIT);
    // The colour is cleared with the first drawing: a frame that starts
    // with its backdrop's copy never needs it.
    colourPending_ = true;
    clearColour_ = argbColour;
    clearDepth_ = depth;
    drawnSinceClear_ = false;
}

void SdlGraphics::clearColourNow() {
    if (!colourPending_) return;
    colourPending_ = false;
    glClearColor(((clearColour_ >> 16) & 255) / 255.0f, ((clearColour_ >> 8) & 255) / 255.0f,
                 (clearColour_ & 255) / 255.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

void SdlGraphics::present() {
    if (!created_) return;
    if (!window_.hidden()) {
        int dw = 0, dh = 0;
        const ViewRect picture = window_.drawablePicture(dw, dh);
        clearColourNow();
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glDisable(GL_SCISSOR_TEST);
        if (picture.x != 0 || picture.y != 0 || picture.w != dw || picture.h != dh) {
            glViewport(0, 0, dw, dh);
            glClearColor(0, 0, 0, 1);
            glClear(GL_COLOR_BUFFER_BIT);
        }
        if (picture.w == bufferW_ && picture.h == bufferH_) {
            // Shown at its own size: a copy rather than a filtered drawing.
            glBindFramebuffer(GL_READ_FRAMEBUFFER, fbo_);
            glBlitFramebuffer(0, 0, bufferW_, bufferH_, picture.x, picture.y, picture.x + bufferW_,
                              picture.y + bufferH_, GL_COLOR_BUFFER_BIT, GL_NEAREST);
            window_.swap();
            glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
            glViewport(0, 0, bufferW_, bufferH_);
            text_.endFrame(++frame_);
            return;
        }
        glViewport(picture.x, picture.y, picture.w, picture.h);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_BLEND);
        glDisable(GL_CULL_FACE);
        glBindTexture(GL_TEXTURE_2D, colour_);
        GlCombine(false, TopSelectArg1, TaTexture, TaCurrent);
        GlCombine(true, TopSelectArg1, TaTexture, TaCurrent);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        scratch_.assign({{-1, -1, 0, 1, {255, 255, 255, 255}, 0, 0},
                         {1, -1, 0, 1, {255, 255, 255, 255}, 1, 0},
                         {-1, 1, 0, 1, {255, 255, 255, 255}, 0, 1},
                         {1, 1, 0, 1, {255, 255, 255, 255}, 1, 1}});
        drawScratch(GL_TRIANGLE_STRIP, 4);
        window_.swap();
        glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
        glViewport(0, 0, bufferW_, bufferH_);
    }
    text_.endFrame(++frame_);
}

void SdlGraphics::setTransform(TransformKind kind, const Matrix4& m) {
    switch (kind) {
        case TransformKind::World:
            world_ = m;
            break;
        case TransformKind::View:
            view_ = m;
            break;
        case TransformKind::Projection:
            projection_ = m;
            break;
    }
}

void SdlGraphics::setRenderState(RenderState state, uint32_t value) {
    renderStates_[state] = value;
}

void SdlGraphics::setTextureStageState(TextureStageState state, uint32_t value) {
    stage_[static_cast<int>(state)] = value;
}

void SdlGraphics::applyStates(bool diffuseOpaque) {
    clearColourNow();
    drawnSinceClear_ = true;
    if (renderStates_[RenderState::ZEnable]) {
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
    } else {
        glDisable(GL_DEPTH_TEST);
    }
    glDepthMask(renderStates_[RenderState::ZWriteEnable] ? GL_TRUE : GL_FALSE);
    // The game leaves blending on after its translucent pieces; an opaque
    // piece drawn so looks the same without it and costs less.
    const bool textureOpaque = boundTexture_ == 0 || opaqueTextures_.count(boundTexture_) != 0;
    const uint32_t factor = renderStates_[RenderState::TextureFactor];
    const bool keeps =
        StageAlphaOpaque(stage_[AlphaOpSlot], stage_[AlphaArg1Slot], stage_[AlphaArg2Slot], textureOpaque,
                         diffuseOpaque, (factor >> 24) == 255u) &&
        BlendKeepsOpaqueSource(renderStates_[RenderState::SrcBlend], renderStates_[RenderState::DestBlend]);
    if (renderStates_[RenderState::AlphaBlendEnable] && !keeps) {
        glEnable(GL_BLEND);
        glBlendFunc(GlBlendFactor(renderStates_[RenderState::SrcBlend]),
                    GlBlendFactor(renderStates_[RenderState::DestBlend]));
    } else {
        glDisable(GL_BLEND);
    }
    switch (renderStates_[RenderState::CullMode]) {
        case 1:
            glDisable(GL_CULL_FACE);
            break;
        case 2:
            glEnable(GL_CULL_FACE);
            glCullFace(GL_FRONT);
            break;
        default:
            glEnable(GL_CULL_FACE);
            glCullFace(GL_BACK);
            break;
    }
    auto tex = textures_.find(boundTexture_);
    glBindTexture(GL_TEXTURE_2D, tex != textures_.end() ? tex->second : white_);
    GlCombine(false, stage_[ColorOpSlot], stage_[ColorArg1Slot], stage_[ColorArg2Slot]);
    GlCombine(true, stage_[AlphaOpSlot], stage_[AlphaArg1Slot], stage_[AlphaArg2Slot]);
    const bool usesFactor = stage_[ColorArg1Slot] == TaTFactor || stage_[ColorArg2Slot] == TaTFactor ||
                            stage_[AlphaArg1Slot] == TaTFactor || stage_[AlphaArg2Slot] == TaTFactor;
    if (usesFactor) {
        uint8_t rgba[4];
        UnpackArgb(factor, rgba);
        const GLfloat colour[4] = {rgba[0] / 255.0f, rgba[1] / 255.0f, rgba[2] / 255.0f, rgba[3] / 255.0f};
        glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, colour);
    }
}

void SdlGraphics::loadWorldMatrices() {
    const Matrix4 projection = MatrixMultiply(projection_, D3DDepthToGl());
    const Matrix4 modelView = MatrixMultiply(world_, view_);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(&projection.m[0][0]);
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixf(&modelView.m[0][0]);
}

void SdlGraphics::loadPixelMatrices() {
    const Matrix4 projection = ScreenSpaceProjection(bufferW_, bufferH_);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(&projection.m[0][0]);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void SdlGraphics::loadScreenMatrices() {
    const Matrix4 projection = ScreenSpaceProjection(bufferW_, bufferH_, scale_);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(&projection.m[0][0]);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void SdlGraphics::setArrays(const GlVertex* base) {
    const char* p = reinterpret_cast<const char*>(base);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(4, GL_FLOAT, sizeof(GlVertex), p + offsetof(GlVertex, x));
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(GlVertex), p + offsetof(GlVertex, rgba));
    glTexCoordPointer(2, GL_FLOAT, sizeof(GlVertex), p + offsetof(GlVertex, u));
}

void SdlGraphics::drawScratch(GLenum mode, int vertices) {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    setArrays(scratch_.data());
    glDrawArrays(mode, 0, vertices);
}

void SdlGraphics::drawBuffer(Primitive type, BufferId buffer, int startVertex, int primitiveCount) {
    auto it = buffers_.find(buffer);
    const int n = VertexCount(type, primitiveCount);
    if (!created_ || it == buffers_.end() || n == 0 || startVertex < 0 || startVertex + n > it->second.count)
        return;
    applyStates(it->second.opaque);
    loadWorldMatrices();
    glBindBuffer(GL_ARRAY_BUFFER, it->second.vbo);
    setArrays(nullptr);
    glDrawArrays(GlPrimitive(type), startVertex, n);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void SdlGraphics::drawBlockVertices(Primitive type, const BlockVertex* v, int primitiveCount) {
    const int n = VertexCount(type, primitiveCount);
    if (!created_ || n == 0) return;
    scratch_.clear();
    for (int i = 0; i < n; ++i) scratch_.push_back(FromBlockVertex(v[i]));
    applyStates(DiffuseOpaque(v, n));
    loadWorldMatrices();
    drawScratch(GlPrimitive(type), n);
}

void SdlGraphics::drawScreenVertices(Primitive type, const ScreenVertex* v, int primitiveCount) {
    const int n = VertexCount(type, primitiveCount);
    if (!created_ || n == 0) return;
    scratch_.clear();
    for (int i = 0; i < n; ++i) {
        // Handing GL (x, y, z, 1) / rhw keeps the texturing perspective-correct.
        const float w = v[i].rhw > 0.0f ? 1.0f / v[i].rhw : 1.0f;
        GlVertex g{v[i].x * w, v[i].y * w, v[i].z * w, w, {}, v[i].u, v[i].v};
        UnpackArgb(v[i].diffuse, g.rgba);
        scratch_.push_back(g);
    }
    applyStates(DiffuseOpaque(v, n));
    loadScreenMatrices();
    drawScratch(GlPrimitive(type), n);
}

void SdlGraphics::drawPointVertices(const PointVertex* v, int count) {
    if (!created_ || count <= 0) return;
    scratch_.clear();
    for (int i = 0; i < count; ++i) {
        GlVertex g{v[i].x, v[i].y, v[i].z, 1.0f, {}, v[i].u, v[i].v};
        UnpackArgb(v[i].diffuse, g.rgba);
        scratch_.push_back(g);
    }
    applyStates(DiffuseOpaque(v, count));
    loadWorldMatrices();
    GLfloat range[2] = {1.0f, 64.0f};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, range);
    const float size = PointSpriteScreenSize(DWordToFloat(renderStates_[RenderState::PointSize]), bufferH_);
    glPointSize(std::clamp(size, std::max(range[0], 1.0f), range[1]));
    // Sprites only while drawing points: some drivers replace the texture
    // coordinates of every primitive while it is on.
    glEnable(GL_POINT_SPRITE);
    glTexEnvi(GL_POINT_SPRITE, GL_COORD_REPLACE, GL_TRUE);
    drawScratch(GL_POINTS, count);
    glDisable(GL_POINT_SPRITE);
}

void SdlGraphics::drawMeshSubset(MeshId mesh, int subset) {
    auto it = meshes_.find(mesh);
    if (!created_ || it == meshes_.end() || subset < 0 ||
        subset >= static_cast<int>(it->second.subsets.size()))
        return;
    const VertexBuffer& b = it->second.subsets[static_cast<size_t>(subset)];
    if (b.count == 0) return;
    applyStates(b.opaque);
    loadWorldMatrices();
    glBindBuffer(GL_ARRAY_BUFFER, b.vbo);
    setArrays(nullptr);
    glDrawArrays(GL_TRIANGLES, 0, b.count);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void SdlGraphics::drawBackdrop(TextureId texture, const std::array<ScreenVertex, 4>& quad) {
    if (!created_) return;
    // A copy is the same picture only over a fresh clear that the quad's
    // depth passes everywhere; anything else draws it as it comes.
    if (drawnSinceClear_ ||
        !BackdropPassesDepth(quad, renderStates_[RenderState::ZEnable] != 0, clearDepth_)) {
        GraphicsDevice::drawBackdrop(texture, quad);
        return;
    }
    setRenderState(RenderState::ZWriteEnable, 0);
    setTexture(texture);
    BackdropKey key{texture, quad, renderStates_, {}, clearColour_, scale_, bufferW_, bufferH_};
    std::copy(std::begin(stage_), std::end(stage_), key.stage.begin());
    if (backdrop_.holds(key)) {
        colourPending_ = false;  // the copy covers every pixel
        backdrop_.copyInto(fbo_);
    } else if (backdrop_.beginRecording(key)) {
        // Drawn over the same clear colour as the back buffer has.
        clearColourNow();
        drawScreenVertices(Primitive::TriangleStrip, quad.data(), 2);
        backdrop_.copyInto(fbo_);
        glViewport(0, 0, bufferW_, bufferH_);
    } else {
        glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
        glViewport(0, 0, bufferW_, bufferH_);
        clearColourNow();
        drawScreenVertices(Primitive::TriangleStrip, quad.data(), 2);
    }
    drawnSinceClear_ = true;
    setRenderState(RenderState::ZWriteEnable, 1);
}

void SdlGraphics::drawText(FontId font, const std::string& text, int left, int top, int right, int bottom,
                           uint32_t argbColour) {
    if (!created_ || right <= left || bottom <= top) return;
    clearColourNow();
    drawnSinceClear_ = true;
    const TextImage* img = text_.image(font, text, frame_);
    if (!img) return;
    // The rectangle in back-buffer pixels: the text is drawn at the
    // display's own resolution.
    auto px = [this](int v) { return static_cast<int>(std::lround(v * scale_)); };
    left = px(left);
    top = px(top);
    right = px(right);
    bottom = px(bottom);
    // Centred across the rectangle, from its top, clipped to it; the font
    // object keeps its own states, so the game's are left as they were. A
    // text wider than its rectangle (a long name in a narrow panel) is drawn
    // smaller to fit rather than cut off at both ends.
    const int room = right - left;
    const bool shrink = img->width > room;
    float w = static_cast<float>(img->width), h = static_cast<float>(img->height);
    if (shrink) {
        h = h * static_cast<float>(room) / w;
        w = static_cast<float>(room);
    }
    const float x = static_cast<float>(shrink ? left : left + (room - img->width) / 2) - 0.5f;
    // A smaller text keeps the middle of its line where the full one had it.
    const float y = static_cast<float>(top) + (static_cast<float>(img->height) - h) / 2 - 0.5f;
    uint8_t c[4];
    UnpackArgb(argbColour, c);
    scratch_.assign({{x, y, 0, 1, {c[0], c[1], c[2], c[3]}, 0, 0},
                     {x + w, y, 0, 1, {c[0], c[1], c[2], c[3]}, 1, 0},
                     {x, y + h, 0, 1, {c[0], c[1], c[2], c[3]}, 0, 1},
                     {x + w, y + h, 0, 1, {c[0], c[1], c[2], c[3]}, 1, 1}});
    glEnable(GL_SCISSOR_TEST);
    glScissor(left, bufferH_ - bottom, right - left, bottom - top);
    glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glDisable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindTexture(GL_TEXTURE_2D, img->texture);
    const GLint filter = shrink ? GL_LINEAR : GL_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
    GlCombine(false, TopModulate, TaTexture, TaDiffuse);
    GlCombine(true, TopModulate, TaTexture, TaDiffuse);
    loadPixelMatrices();
    drawScratch(GL_TRIANGLE_STRIP, 4);
    glDisable(GL_SCISSOR_TEST);
}

}  // namespace qb
