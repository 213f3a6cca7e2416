// Headless services: no window, no GL context, no sound card. The device
// records what it was asked to do, the keyboard plays a script, the clock only
// moves when a test (or a sleep) moves it. Everything is deterministic.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace qb {

class HeadlessGraphics : public GraphicsDevice {
public:
    // What a test can ask for.
    bool failCreate = false;  // createDevice throws
    bool hardware = true;     // HAL present
    bool tnl = true;          // hardware T&L present
    bool usable = true;       // isUsable answers this
    int failResetWidth = 0;   // a reset to this back-buffer width throws
    std::vector<int> sampleSupport{2, 4};
    std::string adapter = "Headless Adapter";
    PresentParams created;
    int createCount = 0, resetCount = 0, presentCount = 0, clearCount = 0;
    int drawCalls = 0, primitivesDrawn = 0, textCalls = 0;
    std::vector<std::string> textDrawn;  // texts of this frame's drawText calls that show
    std::vector<std::array<int, 4>> textRects;
    std::vector<uint32_t> textColours;  // and their rectangles: left, top, right, bottom
    Matrix4 world, view, projection;
    std::map<RenderState, uint32_t> renderStates;
    std::map<TextureStageState, uint32_t> stageStates;
    TextureId boundTexture = 0;
    std::map<TextureId, std::string> textures;  // live textures and their files
    int texturesLoaded = 0;                     // total successful loads

    std::string adapterDescription() override { return adapter; }
    bool hasHardwareRasterizer() override { return hardware; }
    bool hasHardwareTnL() override { return tnl; }
    bool supportsMultiSample(int samples) override;
    void createDevice(const PresentParams& params) override;
    bool resetDevice(const PresentParams& params) override;
    bool isUsable() override { return usable; }
    bool fullScreenPixels(int& w, int& h) override {
        w = displayW;
        h = displayH;
        return fullScreen;
    }
    float pixelDensity() override { return density; }
    // The display a test puts the game on.
    bool fullScreen = false;
    int displayW = 800, displayH = 600;
    float density = 1.0f;

    void clear(uint32_t, float) override;
    void beginScene() override {}
    void endScene() override {}
    void present() override { ++presentCount; }
    void setTransform(TransformKind kind, const Matrix4& m) override;
    void setRenderState(RenderState state, uint32_t value) override { renderStates[state] = value; }
    void setTextureStageState(TextureStageState s, uint32_t v) override { stageStates[s] = v; }
    void setTexture(TextureId texture) override { boundTexture = texture; }

    TextureId createTextureFromFile(const std::string& path, int width, int height, uint32_t colourKey,
                                    bool mipmaps) override;
    void releaseTexture(TextureId texture) override { textures.erase(texture); }
    BufferId createVertexBuffer(const BlockVertex* vertices, int count) override;
    void updateVertexBuffer(BufferId buffer, int startVertex, const BlockVertex* vertices,
                            int count) override;
    void releaseVertexBuffer(BufferId buffer) override { buffers.erase(buffer); }
    MeshId loadMesh(const std::string& path, int& materialCount) override;
    MeshMaterial meshMaterial(MeshId mesh, int index) override;
    void releaseMesh(MeshId) override {}
    FontId createFont(const std::string& face, int sizePoints, bool bold) override;
    void releaseFont(FontId font) override { fonts.erase(font); }

    void drawBuffer(Primitive type, BufferId buffer, int startVertex, int primitiveCount) override;
    void drawBlockVertices(Primitive type, const BlockVertex* v, int primitiveCount) override;
    void drawScreenVertices(Primitive type, const ScreenVertex* v, int primitiveCount) override;
    void drawPointVertices(const PointVertex* v, int count) override;
    void drawMeshSubset(MeshId mesh, int subset) override;
    void drawText(FontId font, const std::string& text, int left, int top, int right, int bottom,
                  uint32_t argbColour) override;

    std::map<BufferId, std::vector<BlockVertex>> buffers;
    int verticesUpdated = 0;  // by updateVertexBuffer, in total
    struct BufferDraw {
        BufferId buffer = 0;
        int startVertex = 0, primitives = 0;
    } lastBufferDraw;
    std::map<FontId, std::string> fonts;
    std::vector<PointVertex> points;  // the last point list drawn
    // The mesh parts drawn since the last clear, each with the states it was
    // drawn in.
    struct MeshDraw {
        MeshId mesh = 0;
        int subset = 0;
        TextureId texture = 0;
        Matrix4 world;
        std::map<RenderState, uint32_t> states;
        std::map<TextureStageState, uint32_t> stage;
    };
    std::vector<MeshDraw> meshDraws;

private:
    uint32_t nextId_ = 1;
};

// A keyboard whose state the test sets; events are queued like a real device.
class ScriptedKeyboard : public KeyboardDevice {
public:
    bool present = true;
    uint8_t keys[256] = {};
    KeyboardInfo info{"Headless Keyboard", 0x413, "{6F1D2B61-D5A0-11CF-BFC7-444553540000}"};

    void press(uint8_t key);                            // state down + event
    void release(uint8_t key);                          // state up + event
    void setOnly(std::initializer_list<uint8_t> down);  // exactly these down (events for changes)

    bool acquire(KeyboardInfo& out) override;
    void getState(uint8_t state[256]) override;
    long getEvents(std::vector<KeyEvent>& out) override;

private:
    std::deque<KeyEvent> queue_;
    bool overflow_ = false;
    uint32_t sequence_ = 0;
    void push(uint8_t key, uint32_t data);
};

// A controller whose reading the test sets; `pressed` and `driverLost` are
// reported once, like the real device's.
class ScriptedGamepad : public GamepadDevice {
public:
    PadReading state;
    void tap(uint32_t buttons) { state.pressed |= buttons; }
    PadReading read() override {
        const PadReading r = state;
        state.pressed = 0;
        state.driverLost = false;
        return r;
    }
};

// Counter in microseconds (frequency 1 000 000); sleeping moves it forward.
class FakeClock : public Clock {
public:
    int64_t now = 0;  // microseconds
    void advanceMs(double ms) { now += static_cast<int64_t>(ms * 1000.0); }
    // Called at every counter read: lets a test make work "take" time.
    std::function<void()> onRead;

    int64_t performanceCounter() override;
    int64_t performanceFrequency() override { return 1000000; }
    uint32_t tickCount() override { return static_cast<uint32_t>(now / 1000); }
    void sleepUntil(int64_t counter) override {
        if (counter > now) now = counter;
    }
};

// Window events come from a queue a test fills; message boxes go to stderr
// and are remembered.
class HeadlessWindow : public Window {
public:
    bool focus = true;
    bool shown = false;
    std::vector<std::string> messages;
    std::vector<std::string> openedUrls;
    bool urlOpens = true;
    // Queued events, delivered at the next processEvents.
    std::deque<std::function<void(WindowEvents&)>> pending;
    // Called at every processEvents, before the queue: tests script a run here.
    std::function<void(WindowEvents&)> onProcess;
    int processCount = 0;

    void show() override { shown = true; }
    void processEvents(WindowEvents& handler) override;
    bool hasFocus() override { return focus; }
    void messageBox(const std::string& text) override;
    bool openUrl(const std::string& url) override;
    bool waitForRefresh() override { return false; }
};

// Remembers what would have sounded.
class HeadlessAudio : public AudioDevice {
public:
    bool available = true;
    std::map<int, std::string> effects;  // slot -> file
    std::map<int, std::string> music;    // piece -> file
    std::map<int, float> effectGain;
    std::map<int, bool> effectSounding;
    std::vector<std::string> log;  // "play 4", "stop 1", "music 1 loop", "pause", ...
    float musicGain = 1;
    int musicPlaying = 0;

    bool open() override { return available; }
    void close() override {}
    bool loadEffect(int slot, const std::string& path) override;
    void playEffect(int slot) override;
    void stopEffect(int slot) override;
    void rewindEffect(int slot) override;
    bool effectPlaying(int slot) override { return effectSounding[slot]; }
    void setEffectGain(int slot, float gain) override { effectGain[slot] = gain; }
    bool loadMusic(int piece, const std::string& path) override;
    void playMusic(int piece, bool loop) override;
    void pauseMusic() override;
    void stopMusic(int piece) override;
    void setMusicGain(float gain) override { musicGain = gain; }
};

class FixedSystemInfo : public SystemInfo {
public:
    std::string os = "Debian GNU/Linux 12 (bookworm)";
    std::string cpu = "Headless CPU";
    int32_t mhz = 1800;
    uint64_t memory = 536326144ull;  // 511.48046875 MB
    std::string operatingSystemName() override { return os; }
    std::string processorName() override { return cpu; }
    int32_t processorSpeedMhz() override { return mhz; }
    uint64_t totalPhysicalMemory() override { return memory; }
    std::string date = "2026-01-02";
    std::string today() override { return date; }
};

// All headless services in one place, owning what Platform refers to.
struct HeadlessPlatform {
    HeadlessGraphics graphics;
    ScriptedKeyboard keyboard;
    ScriptedGamepad gamepad;
    FakeClock clock;
    HeadlessWindow window;
    HeadlessAudio audio;
    FixedSystemInfo system;
    Platform platform;
    // gameDir: data to read; writeDir: where files are written (defaults to gameDir).
    explicit HeadlessPlatform(const std::string& gameDir, const std::string& writeDir = "");
};

}  // namespace qb
