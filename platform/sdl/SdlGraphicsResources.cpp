// The device's resources: textures, vertex buffers, meshes, fonts, and the
// picture of the back buffer.
#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/sdl/GlPipeline.h"
#include "platform/sdl/GlTextures.h"
#include "platform/sdl/SdlGraphics.h"
#include "platform/sdl/XMesh.h"

namespace qb {

SdlGraphics::VertexBuffer SdlGraphics::upload(const BlockVertex* vertices, int count) {
    VertexBuffer b;
    std::vector<GlVertex> converted;
    converted.reserve(static_cast<size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) converted.push_back(FromBlockVertex(vertices[i]));
    glGenBuffers(1, &b.vbo);
    glBindBuffer(GL_ARRAY_BUFFER, b.vbo);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(converted.size() * sizeof(GlVertex)),
                 converted.data(), GL_DYNAMIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    b.count = count;
    b.opaque = DiffuseOpaque(vertices, count);
    return b;
}

TextureId SdlGraphics::createTextureFromFile(const std::string& path, int, int, uint32_t colourKey,
                                             bool mipmaps) {
    if (!created_) return 0;
    bool opaque = false;
    const GLuint tex = LoadTextureFile(path, colourKey, mipmaps, &opaque);
    if (tex == 0) return 0;
    const TextureId id = nextId_++;
    textures_[id] = tex;
    if (opaque) opaqueTextures_.insert(id);
    return id;
}

void SdlGraphics::releaseTexture(TextureId texture) {
    auto it = textures_.find(texture);
    if (it == textures_.end()) return;
    glDeleteTextures(1, &it->second);
    textures_.erase(it);
    opaqueTextures_.erase(texture);
}

BufferId SdlGraphics::createVertexBuffer(const BlockVertex* vertices, int count) {
    if (!created_) return 0;
    const BufferId id = nextId_++;
    buffers_[id] = upload(vertices, count);
    return id;
}

void SdlGraphics::updateVertexBuffer(BufferId buffer, int startVertex, const BlockVertex* vertices,
                                     int count) {
    auto it = buffers_.find(buffer);
    if (it == buffers_.end() || startVertex < 0 || count <= 0 || startVertex > it->second.count - count)
        return;
    scratch_.clear();
    for (int i = 0; i < count; ++i) scratch_.push_back(FromBlockVertex(vertices[i]));
    glBindBuffer(GL_ARRAY_BUFFER, it->second.vbo);
    glBufferSubData(
        GL_ARRAY_BUFFER, static_cast<GLintptr>(startVertex) * static_cast<GLintptr>(sizeof(GlVertex)),
        static_cast<GLsizeiptr>(count) * static_cast<GLsizeiptr>(sizeof(GlVertex)), scratch_.data());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void SdlGraphics::releaseVertexBuffer(BufferId buffer) {
    auto it = buffers_.find(buffer);
    if (it == buffers_.end()) return;
    glDeleteBuffers(1, &it->second.vbo);
    buffers_.erase(it);
}

MeshId SdlGraphics::loadMesh(const std::string& path, int& materialCount) {
    materialCount = 0;
    XMeshData data;
    if (!created_ || !LoadXMesh(path, data)) return 0;
    Mesh mesh;
    mesh.materials = data.materials;
    for (const auto& subset : data.subsets)
        mesh.subsets.push_back(upload(subset.data(), static_cast<int>(subset.size())));
    materialCount = static_cast<int>(mesh.materials.size());
    const MeshId id = nextId_++;
    meshes_[id] = std::move(mesh);
    return id;
}

MeshMaterial SdlGraphics::meshMaterial(MeshId mesh, int index) {
    auto it = meshes_.find(mesh);
    if (it == meshes_.end() || index < 0 || index >= static_cast<int>(it->second.materials.size())) return {};
    return it->second.materials[static_cast<size_t>(index)];
}

void SdlGraphics::releaseMesh(MeshId mesh) {
    auto it = meshes_.find(mesh);
    if (it == meshes_.end()) return;
    for (auto& s : it->second.subsets) glDeleteBuffers(1, &s.vbo);
    meshes_.erase(it);
}

FontId SdlGraphics::createFont(const std::string& face, int sizePoints, bool bold) {
    if (!created_) return 0;
    // Opened at the size the scaled-up screen shows it.
    return text_.createFont(face, static_cast<int>(std::lround(sizePoints * scale_)), bold);
}

void SdlGraphics::releaseFont(FontId font) {
    text_.releaseFont(font);
}

bool SdlGraphics::saveScreenshot(const std::string& pngPath) {
    if (!created_) return false;
    clearColourNow();
    std::vector<uint32_t> pixels(static_cast<size_t>(bufferW_) * static_cast<size_t>(bufferH_));
    glBindFramebuffer(GL_FRAMEBUFFER, fbo_);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, bufferW_, bufferH_, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels.data());
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceWithFormat(0, bufferW_, bufferH_, 32, SDL_PIXELFORMAT_ARGB8888);
    if (!surface) return false;
    SDL_LockSurface(surface);
    for (int y = 0; y < bufferH_; ++y)  // GL rows run bottom-up
        std::memcpy(static_cast<uint8_t*>(surface->pixels) +
                        static_cast<size_t>(y) * static_cast<size_t>(surface->pitch),
                    pixels.data() + static_cast<size_t>(bufferH_ - 1 - y) * static_cast<size_t>(bufferW_),
                    static_cast<size_t>(bufferW_) * 4);
    SDL_UnlockSurface(surface);
    const bool ok = IMG_SavePNG(surface, pngPath.c_str()) == 0;
    SDL_FreeSurface(surface);
    return ok;
}

}  // namespace qb
