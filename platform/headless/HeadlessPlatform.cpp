#include "platform/headless/HeadlessPlatform.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace qb {

namespace {
bool fileExists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::is_regular_file(path, ec);
}

std::string withSlash(std::string dir) {
    if (!dir.empty() && dir.back() != '/') dir += '/';
    return dir;
}
}  // namespace

// --- graphics --------------------------------------------------------------------------

bool HeadlessGraphics::supportsMultiSample(int samples) {
    return std::find(sampleSupport.begin(), sampleSupport.end(), samples) != sampleSupport.end();
}

void HeadlessGraphics::createDevice(const PresentParams& params) {
    if (failCreate) throw DeviceError{-2005530516, "D3DERR_NOTAVAILABLE"};
    created = params;
    ++createCount;
}

bool HeadlessGraphics::resetDevice(const PresentParams& params) {
    ++resetCount;
    if (params.width == failResetWidth)
        throw DeviceError{static_cast<long>(static_cast<int32_t>(0x8876017Cu)),
                          "no room for the back buffer"};
    created = params;
    return usable;
}

void HeadlessGraphics::clear(uint32_t, float) {
    ++clearCount;
    textDrawn.clear();
    textRects.clear();
    textColours.clear();
    meshDraws.clear();
}

void HeadlessGraphics::setTransform(TransformKind kind, const Matrix4& m) {
    switch (kind) {
        case TransformKind::World:
            world = m;
            break;
        case TransformKind::View:
            view = m;
            break;
        case TransformKind::Projection:
            projection = m;
            break;
    }
}

TextureId HeadlessGraphics::createTextureFromFile(const std::string& path, int, int, uint32_t, bool) {
    if (!fileExists(path)) return 0;
    const TextureId id = nextId_++;
    textures[id] = path;
    ++texturesLoaded;
    return id;
}

BufferId HeadlessGraphics::createVertexBuffer(const BlockVertex* vertices, int count) {
    const BufferId id = nextId_++;
    buffers[id].assign(vertices, vertices + count);
    return id;
}

void HeadlessGraphics::updateVertexBuffer(BufferId buffer, int startVertex, const BlockVertex* vertices,
                                          int count) {
    auto it = buffers.find(buffer);
    if (it == buffers.end() || startVertex < 0 || count < 0 ||
        static_cast<size_t>(startVertex) + static_cast<size_t>(count) > it->second.size())
        return;
    std::copy(vertices, vertices + count, it->second.begin() + startVertex);
    verticesUpdated += count;
}

MeshId HeadlessGraphics::loadMesh(const std::string& path, int& materialCount) {
    materialCount = 0;
    if (!fileExists(path)) return 0;
    materialCount = 1;
    return nextId_++;
}

MeshMaterial HeadlessGraphics::meshMaterial(MeshId, int) {
    MeshMaterial m;
    m.diffuse = {1, 1, 1, 1};
    return m;
}

FontId HeadlessGraphics::createFont(const std::string& face, int sizePoints, bool bold) {
    const FontId id = nextId_++;
    fonts[id] = face + ":" + std::to_string(sizePoints) + (bold ? ":bold" : "");
    return id;
}

void HeadlessGraphics::drawBuffer(Primitive, BufferId buffer, int startVertex, int primitiveCount) {
    lastBufferDraw = BufferDraw{buffer, startVertex, primitiveCount};
    ++drawCalls;
    primitivesDrawn += primitiveCount;
}

void HeadlessGraphics::drawBlockVertices(Primitive, const BlockVertex*, int primitiveCount) {
    ++drawCalls;
    primitivesDrawn += primitiveCount;
}

void HeadlessGraphics::drawScreenVertices(Primitive, const ScreenVertex*, int primitiveCount) {
    ++drawCalls;
    primitivesDrawn += primitiveCount;
}

void HeadlessGraphics::drawPointVertices(const PointVertex* v, int count) {
    points.assign(v, v + count);
    ++drawCalls;
    primitivesDrawn += count;
}

void HeadlessGraphics::drawMeshSubset(MeshId mesh, int subset) {
    ++drawCalls;
    meshDraws.push_back(MeshDraw{mesh, subset, boundTexture, world, renderStates, stageStates});
}

void HeadlessGraphics::drawText(FontId, const std::string& text, int left, int top, int right, int bottom,
                                uint32_t argbColour) {
    ++textCalls;
    // As on the real device, an empty or upside-down rectangle shows nothing.
    if (right <= left || bottom <= top) return;
    textDrawn.push_back(text);
    textRects.push_back({left, top, right, bottom});
    textColours.push_back(argbColour);
}

// --- keyboard --------------------------------------------------------------------------

void ScriptedKeyboard::push(uint8_t key, uint32_t data) {
    if (queue_.size() >= static_cast<size_t>(BufferSize)) {
        overflow_ = true;
        return;
    }
    queue_.push_back(KeyEvent{key, data, 0, sequence_++});
}

void ScriptedKeyboard::press(uint8_t key) {
    if (keys[key] != 128) push(key, 128);
    keys[key] = 128;
}

void ScriptedKeyboard::release(uint8_t key) {
    if (keys[key] != 0) push(key, 0);
    keys[key] = 0;
}

void ScriptedKeyboard::setOnly(std::initializer_list<uint8_t> down) {
    bool want[256] = {};
    for (uint8_t k : down) want[k] = true;
    for (int k = 0; k < 256; ++k) {
        if (want[k])
            press(static_cast<uint8_t>(k));
        else
            release(static_cast<uint8_t>(k));
    }
}

bool ScriptedKeyboard::acquire(KeyboardInfo& out) {
    if (!present) return false;
    out = info;
    return true;
}

void ScriptedKeyboard::getState(uint8_t state[256]) {
    std::copy(keys, keys + 256, state);
}

long ScriptedKeyboard::getEvents(std::vector<KeyEvent>& out) {
    out.assign(queue_.begin(), queue_.end());
    queue_.clear();
    if (overflow_) {
        overflow_ = false;
        return DIERR_BUFFEROVERFLOW;
    }
    return 0;
}

// --- clock and window ------------------------------------------------------------------

int64_t FakeClock::performanceCounter() {
    if (onRead) onRead();
    return now;
}

void HeadlessWindow::processEvents(WindowEvents& handler) {
    ++processCount;
    if (onProcess) onProcess(handler);
    while (!pending.empty()) {
        auto ev = std::move(pending.front());
        pending.pop_front();
        ev(handler);
    }
}

void HeadlessWindow::messageBox(const std::string& text) {
    messages.push_back(text);
    std::cerr << "Quorbit: " << text << "\n";
}

bool HeadlessWindow::openUrl(const std::string& url) {
    openedUrls.push_back(url);
    return urlOpens;
}

// --- audio -----------------------------------------------------------------------------

bool HeadlessAudio::loadEffect(int slot, const std::string& path) {
    if (!fileExists(path)) return false;
    effects[slot] = path;
    return true;
}

void HeadlessAudio::playEffect(int slot) {
    log.push_back("play " + std::to_string(slot));
    effectSounding[slot] = true;
}

void HeadlessAudio::stopEffect(int slot) {
    log.push_back("stop " + std::to_string(slot));
    effectSounding[slot] = false;
}

void HeadlessAudio::rewindEffect(int slot) {
    log.push_back("rewind " + std::to_string(slot));
}

bool HeadlessAudio::loadMusic(int piece, const std::string& path) {
    if (!fileExists(path)) return false;
    music[piece] = path;
    return true;
}

void HeadlessAudio::playMusic(int piece, bool loop) {
    log.push_back("music " + std::to_string(piece) + (loop ? " loop" : ""));
    musicPlaying = piece;
}

void HeadlessAudio::pauseMusic() {
    log.push_back("pause");
    musicPlaying = 0;
}

void HeadlessAudio::stopMusic(int piece) {
    log.push_back("stopmusic " + std::to_string(piece));
    if (musicPlaying == piece) musicPlaying = 0;
}

// --- the bundle ------------------------------------------------------------------------

HeadlessPlatform::HeadlessPlatform(const std::string& gameDir, const std::string& writeDir)
    : platform{graphics,
               keyboard,
               gamepad,
               clock,
               window,
               audio,
               system,
               GamePaths{withSlash(gameDir), withSlash(writeDir.empty() ? gameDir : writeDir), {}, {}}} {}

}  // namespace qb
