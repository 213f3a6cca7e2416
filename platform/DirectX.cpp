#include "platform/DirectX.h"

#include <algorithm>
#include <cmath>

#include "platform/D3DMath.h"
#include "platform/QuorbitDebug.h"
#include "platform/Window.h"

namespace qb {

namespace {
constexpr float Pi = 3.14159265358979f;
}

DirectX::DirectX(GraphicsDevice& device_, QuorbitDebug& log, Window& window)
    : device(device_), log_(log), window_(window) {}

std::string CleanAdapterName(const std::string& raw) {
    std::string r;
    for (char c : raw)
        if (c != '\0') r += c;
    return r;
}

int DirectX::HardwareCheck() {
    log_.WriteLine("Graphics Card = " + CleanAdapterName(device.adapterDescription()));
    if (!device.hasHardwareRasterizer()) {
        log_.WriteLine("No 3D Hardware Detected");
        return 0;
    }
    log_.WriteLine("Hardware Rasterizer (HAL) avalible");
    return 1;
}

void DirectX::RecomputeGuiOffsets() {
    GuiOffsetX = (ScreenWidth - 800.0f) / 2.0f;
    GuiOffsetY = (ScreenHeight - 600.0f) / 2.0f;
}

void DirectX::ApplyVideoMode(int32_t mode) {
    if (mode != 1 && mode != 2) return;
    VideoMode = mode;
    FitDisplay();
}

void DirectX::DisplayTarget(int& w, int& h, double& scale) {
    if (device.fullScreenPixels(w, h) && w > 0 && h > 0) {
        scale = std::min(w / 800.0, h / 600.0);
        return;
    }
    scale = device.pixelDensity();
    if (!(scale > 0.0)) scale = 1.0;
    const bool big = VideoMode == 2;
    w = static_cast<int>(std::lround((big ? 1024 : 800) * scale));
    h = static_cast<int>(std::lround((big ? 768 : 600) * scale));
}

void DirectX::FitDisplay() {
    int w = 0, h = 0;
    double scale = 1.0;
    DisplayTarget(w, h, scale);
    Present.width = w;
    Present.height = h;
    Present.screenScale = static_cast<float>(scale);
    ScreenWidth = static_cast<float>(w / scale);
    ScreenHeight = static_cast<float>(h / scale);
    RecomputeGuiOffsets();
}

bool DirectX::DisplayChanged() {
    int w = 0, h = 0;
    double scale = 1.0;
    DisplayTarget(w, h, scale);
    return w != Present.width || h != Present.height || static_cast<float>(scale) != Present.screenScale;
}

float DirectX::AspectRatio() const {
    return static_cast<float>(static_cast<double>(ScreenWidth) * 3.0 /
                              (static_cast<double>(ScreenHeight) * 4.0));
}

bool DirectX::InitialiseGraphics() {
    try {
        if (HardwareCheck() == 0) {
            window_.messageBox("No 3D hardware detected. Quorbit requires a 3D accelerator Video Card");
            return false;
        }
        // An unknown stored mode (a fresh options.dat holds 0) plays at
        // 800x600, and the options screen marks that mode as the one in use.
        ApplyVideoMode((VideoMode == 1 || VideoMode == 2) ? VideoMode : 1);
        Present.multiSamples = 0;
        for (int samples : {2, 4, 6})
            if (device.supportsMultiSample(samples)) Present.multiSamples = samples;
        if (!device.hasHardwareTnL()) {
            log_.WriteLine("No Hardware Transform and lighting avalible");
            window_.messageBox("Hardware Transform and lighting required. Feature not found");
            return false;
        }
        log_.WriteLine("Hardware Transform and lighting avalible");
        device.createDevice(Present);
        SetFixedState();
        ResetCamera();
        SetAllTransforms();
        return true;
    } catch (const DeviceError& e) {
        window_.messageBox("Something went wrong trying to initalise DX " + std::to_string(e.number) + " " +
                           e.description);
        return false;
    }
}

bool DirectX::ResetDeviceOnly() {
    try {
        if (!device.resetDevice(Present) || !device.isUsable()) return false;
    } catch (const DeviceError& e) {
        log_.WriteLine(e.description + " " + std::to_string(e.number));
        log_.WriteLine("Reset failed");
        return false;
    }
    SetAllTransforms();
    SetFixedState();
    return true;
}

void DirectX::SetFixedState() {
    device.setRenderState(RenderState::ZEnable, 1);
    device.setRenderState(RenderState::AlphaBlendEnable, 1);
    device.setRenderState(RenderState::PointSize, FloatToDWord(0.03f));
}

void DirectX::ResetCamera() {
    CameraEye = {0, 25, -18};
    CameraLookAt = {0, 8, 0};
}

void DirectX::SetView() {
    View = MatrixLookAtLH(CameraEye, CameraLookAt, Vector3{0, 1, 0});
    device.setTransform(TransformKind::View, View);
}

void DirectX::SetAllTransforms() {
    World = MatrixIdentity();
    device.setTransform(TransformKind::World, World);
    SetView();
    Projection = MatrixPerspectiveFovLH(Pi / 4.0f, AspectRatio(), 0.1f, 500.0f);
    device.setTransform(TransformKind::Projection, Projection);
}

}  // namespace qb
