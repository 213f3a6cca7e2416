// The 3D device on OpenGL (a compatibility context through libepoxy): the
// game's Direct3D-shaped fixed-function pipeline - its render and texture
// stage states, row-vector matrices and pre-transformed screen vertices -
// drawn into an off-screen back buffer of the video mode's size, which
// present() scales into the window between black bars.
#pragma once

#include <epoxy/gl.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/GraphicsDevice.h"
#include "platform/sdl/GlBackdrop.h"
#include "platform/sdl/GlPipeline.h"
#include "platform/sdl/GlText.h"

namespace qb {

class SdlWindow;

class SdlGraphics : public GraphicsDevice {
public:
    explicit SdlGraphics(SdlWindow& window);
    ~SdlGraphics() override;
    SdlGraphics(const SdlGraphics&) = delete;
    SdlGraphics& operator=(const SdlGraphics&) = delete;

    std::string adapterDescription() override;
    bool hasHardwareRasterizer() override;
    bool hasHardwareTnL() override;
    bool supportsMultiSample(int samples) override;
    void createDevice(const PresentParams& params) override;
    bool resetDevice(const PresentParams& params) override;
    bool isUsable() override { return true; }  // GL devices are never lost
    bool fullScreenPixels(int& w, int& h) override;
    float pixelDensity() override;

    void clear(uint32_t argbColour, float depth) override;
    void beginScene() override {}
    void endScene() override {}
    void present() override;
    void setTransform(TransformKind kind, const Matrix4& m) override;
    void setRenderState(RenderState state, uint32_t value) override;
    void setTextureStageState(TextureStageState state, uint32_t value) override;
    void setTexture(TextureId texture) override { boundTexture_ = texture; }

    // Textures keep their file's size; the requested size only matters to
    // Direct3D's power-of-two stretching, which GL does not need.
    TextureId createTextureFromFile(const std::string& path, int width, int height, uint32_t colourKey,
                                    bool mipmaps) override;
    void releaseTexture(TextureId texture) override;
    BufferId createVertexBuffer(const BlockVertex* vertices, int count) override;
    void updateVertexBuffer(BufferId buffer, int startVertex, const BlockVertex* vertices,
                            int count) override;
    void releaseVertexBuffer(BufferId buffer) override;
    // Materials carry the texture file names as stored in the .x file; the
    // caller loads them (from the skins folder) and binds them per subset.
    MeshId loadMesh(const std::string& path, int& materialCount) override;
    MeshMaterial meshMaterial(MeshId mesh, int index) override;
    void releaseMesh(MeshId mesh) override;
    FontId createFont(const std::string& face, int sizePoints, bool bold) override;
    void releaseFont(FontId font) override;

    void drawBuffer(Primitive type, BufferId buffer, int startVertex, int primitiveCount) override;
    void drawBlockVertices(Primitive type, const BlockVertex* v, int primitiveCount) override;
    void drawScreenVertices(Primitive type, const ScreenVertex* v, int primitiveCount) override;
    void drawPointVertices(const PointVertex* v, int count) override;
    void drawMeshSubset(MeshId mesh, int subset) override;
    void drawBackdrop(TextureId texture, const std::array<ScreenVertex, 4>& quad) override;
    void drawText(FontId font, const std::string& text, int left, int top, int right, int bottom,
                  uint32_t argbColour) override;

    // The back buffer as it stands (the last frame drawn) written as a PNG.
    bool saveScreenshot(const std::string& pngPath);

private:
    struct VertexBuffer {
        GLuint vbo = 0;
        int count = 0;
        bool opaque = false;  // every vertex colour's alpha is 255
    };
    struct Mesh {
        std::vector<MeshMaterial> materials;
        std::vector<VertexBuffer> subsets;
    };

    SdlWindow& window_;
    bool created_ = false;
    bool glChecked_ = false, glUsable_ = false;
    std::string glProblem_;
    int bufferW_ = 800, bufferH_ = 600;
    float scale_ = 1.0f;  // back-buffer pixels per screen unit
    GLuint fbo_ = 0, colour_ = 0, depth_ = 0, white_ = 0;
    uint64_t frame_ = 0;
    // The last clear, and whether anything was drawn over it since.
    uint32_t clearColour_ = 0;
    float clearDepth_ = 1.0f;
    bool drawnSinceClear_ = true;
    bool colourPending_ = false;
    GlBackdrop backdrop_;
    uint32_t nextId_ = 1;

    // Direct3D's state as last set.
    std::map<RenderState, uint32_t> renderStates_;
    uint32_t stage_[6] = {};
    TextureId boundTexture_ = 0;
    Matrix4 world_, view_, projection_;

    std::map<TextureId, GLuint> textures_;
    std::set<TextureId> opaqueTextures_;  // no pixel with alpha below 255
    std::map<BufferId, VertexBuffer> buffers_;
    std::map<MeshId, Mesh> meshes_;
    TextRenderer text_;
    std::vector<GlVertex> scratch_;

    bool checkGl();
    void resetStates();
    void makeBackBuffer(int w, int h);
    void loadPixelMatrices();
    void freeBackBuffer();
    void clearColourNow();
    // Diffuse-opaque: every vertex colour of the draw has alpha 255.
    void applyStates(bool diffuseOpaque);
    void loadWorldMatrices();
    void loadScreenMatrices();
    void setArrays(const GlVertex* base);
    void drawScratch(GLenum mode, int vertices);
    VertexBuffer upload(const BlockVertex* vertices, int count);
};

}  // namespace qb
