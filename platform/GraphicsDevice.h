// The 3D device the game draws through: a small fixed-function pipeline in the
// shape the game was written for (transforms, a handful of render states, one
// texture stage, triangle lists/strips and point sprites). The real device is
// OpenGL under SDL2; the headless one records calls for tests and tools.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/Types.h"

namespace qb {

using TextureId = uint32_t;  // 0 = no texture
using BufferId = uint32_t;   // 0 = no buffer
using MeshId = uint32_t;     // 0 = no mesh
using FontId = uint32_t;     // 0 = no font

enum class TransformKind { World, View, Projection };
enum class Primitive { PointList, TriangleList, TriangleStrip };

enum class RenderState {
    ZEnable,           // 0/1
    ZWriteEnable,      // 0/1
    AlphaBlendEnable,  // 0/1
    SrcBlend,          // Blend value
    DestBlend,         // Blend value
    PointSize,         // float bits (FloatToDWord)
    MultisampleAntialias,
    CullMode,       // 1 none, 2 clockwise, 3 counter-clockwise (default)
    TextureFactor,  // ARGB: the colour a texture stage's TaTFactor argument stands for
};

enum Blend : uint32_t {
    BlendZero = 1,
    BlendOne = 2,
    BlendSrcAlpha = 5,
    BlendInvSrcAlpha = 6,
    BlendDestAlpha = 7,
    BlendInvDestAlpha = 8,
};

enum class TextureStageState { ColorOp, ColorArg1, ColorArg2, AlphaOp, AlphaArg1, AlphaArg2 };

enum TextureOp : uint32_t { TopDisable = 1, TopSelectArg1 = 2, TopSelectArg2 = 3, TopModulate = 4 };
enum TextureArg : uint32_t { TaDiffuse = 0, TaCurrent = 1, TaTexture = 2, TaTFactor = 3 };

// What the device was asked to create: the back buffer size and multisampling.
struct PresentParams {
    int width = 800;
    int height = 600;
    int multiSamples = 0;
    // Back-buffer pixels per screen unit. Pre-transformed vertices and text
    // are given in screen units (the menus' layout space), so a display
    // larger than the layout shows them scaled up, sharp.
    float screenScale = 1.0f;
};

struct MeshMaterial {
    ColorValue diffuse, ambient, specular, emissive;
    float power = 0;
    std::string textureFile;  // file name from the .x file, may be empty
};

class GraphicsDevice {
public:
    virtual ~GraphicsDevice() = default;

    // --- the adapter and the device -------------------------------------------------
    virtual std::string adapterDescription() = 0;  // raw, may hold '\0' padding
    virtual bool hasHardwareRasterizer() = 0;
    virtual bool hasHardwareTnL() = 0;
    virtual bool supportsMultiSample(int samples) = 0;
    // Throws DeviceError with a number and description when creation fails.
    virtual void createDevice(const PresentParams& params) = 0;
    // Remakes the device for `params`: false while it is still lost; throws
    // DeviceError when it cannot be remade (a size it cannot have).
    virtual bool resetDevice(const PresentParams& params) = 0;
    virtual bool isUsable() = 0;  // TestCooperativeLevel
    // The whole display in pixels while the game is shown full screen; false
    // in a window, whose back buffer keeps the video mode's size.
    virtual bool fullScreenPixels(int& w, int& h) {
        (void)w;
        (void)h;
        return false;
    }
    // Back-buffer pixels per window unit (2 on a doubled HiDPI screen).
    virtual float pixelDensity() { return 1.0f; }

    // --- frames and state -----------------------------------------------------------
    virtual void clear(uint32_t argbColour, float depth) = 0;
    virtual void beginScene() = 0;
    virtual void endScene() = 0;
    virtual void present() = 0;
    virtual void setTransform(TransformKind kind, const Matrix4& m) = 0;
    virtual void setRenderState(RenderState state, uint32_t value) = 0;
    virtual void setTextureStageState(TextureStageState state, uint32_t value) = 0;
    virtual void setTexture(TextureId texture) = 0;

    // --- resources ------------------------------------------------------------------
    // width/height 0 take the file's size; colourKey 0 means no key (ARGB
    // otherwise: matching pixels become transparent). Returns 0 when the file
    // cannot be read.
    virtual TextureId createTextureFromFile(const std::string& path, int width, int height,
                                            uint32_t colourKey, bool mipmaps) = 0;
    virtual void releaseTexture(TextureId texture) = 0;
    virtual BufferId createVertexBuffer(const BlockVertex* vertices, int count) = 0;
    // Rewrites `count` vertices from `startVertex` on; a range outside the
    // buffer changes nothing.
    virtual void updateVertexBuffer(BufferId buffer, int startVertex, const BlockVertex* vertices,
                                    int count) = 0;
    virtual void releaseVertexBuffer(BufferId buffer) = 0;
    // Loads a DirectX .x mesh. Returns 0 when it cannot be read.
    virtual MeshId loadMesh(const std::string& path, int& materialCount) = 0;
    virtual MeshMaterial meshMaterial(MeshId mesh, int index) = 0;
    virtual void releaseMesh(MeshId mesh) = 0;
    virtual FontId createFont(const std::string& face, int sizePoints, bool bold) = 0;
    virtual void releaseFont(FontId font) = 0;

    // --- drawing --------------------------------------------------------------------
    virtual void drawBuffer(Primitive type, BufferId buffer, int startVertex, int primitiveCount) = 0;
    virtual void drawBlockVertices(Primitive type, const BlockVertex* v, int primitiveCount) = 0;
    virtual void drawScreenVertices(Primitive type, const ScreenVertex* v, int primitiveCount) = 0;
    virtual void drawPointVertices(const PointVertex* v, int count) = 0;
    virtual void drawMeshSubset(MeshId mesh, int subset) = 0;
    // The picture behind everything, drawn first after clear(): a screen
    // triangle strip of four with `texture`, leaving depth as it is. A device
    // may keep it at the back buffer's size and copy it in each frame.
    virtual void drawBackdrop(TextureId texture, const std::array<ScreenVertex, 4>& quad) {
        setRenderState(RenderState::ZWriteEnable, 0);
        setTexture(texture);
        drawScreenVertices(Primitive::TriangleStrip, quad.data(), 2);
        setRenderState(RenderState::ZWriteEnable, 1);
    }
    // Text centred horizontally in the rectangle, top-aligned (DT_CENTER).
    virtual void drawText(FontId font, const std::string& text, int left, int top, int right, int bottom,
                          uint32_t argbColour) = 0;
};

struct DeviceError {
    long number = 0;
    std::string description;
};

inline uint32_t FloatToDWord(float f) {
    uint32_t r;
    static_assert(sizeof(r) == sizeof(f));
    __builtin_memcpy(&r, &f, 4);
    return r;
}

inline float DWordToFloat(uint32_t d) {
    float r;
    __builtin_memcpy(&r, &d, 4);
    return r;
}

}  // namespace qb
