// The graphics module: video mode, the device's creation and fixed states,
// the camera with its three matrices, and the menu layout offsets.
#pragma once

#include <cstdint>
#include <string>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

class QuorbitDebug;
class Window;

class DirectX {
public:
    DirectX(GraphicsDevice& device, QuorbitDebug& log, Window& window);

    // 1 = 800x600, 2 = 1024x768; anything else is treated as 800x600 when the
    // device is created (a fresh options.dat holds 0).
    int32_t VideoMode = 0;
    float ScreenWidth = 800.0f, ScreenHeight = 600.0f;
    float GuiOffsetX = 0.0f, GuiOffsetY = 0.0f;
    Vector3 CameraEye{0, 25, -18};
    Vector3 CameraLookAt{0, 8, 0};
    Matrix4 World, View, Projection;
    PresentParams Present;

    // Hardware check: logs the card name and whether a HAL is there; 1 or 0.
    int HardwareCheck();
    // Creates the device for the current video mode, sets the fixed states,
    // the camera and the matrices. Shows a message box and returns false when
    // there is no usable device.
    bool InitialiseGraphics();
    // Resets the device itself; false when it stays unusable.
    bool ResetDeviceOnly();
    void SetFixedState();
    void SetAllTransforms();  // world = identity, view from the camera, projection
    void SetView();           // view from the camera
    void ResetCamera();
    void RecomputeGuiOffsets();
    // Width over height of the 3-D view: 1 on a 4:3 screen (whose picture
    // the game stretches from a square), wider screens see more to the sides.
    float AspectRatio() const;
    // Keeps the mode (1 or 2; others change nothing) and fits the display.
    void ApplyVideoMode(int32_t mode);
    // Sizes the back buffer for the display: full screen, all of it, with
    // the 800x600 layout scaled as large as fits and centred; in a window,
    // the video mode's size at the screen's pixel density. Sets the screen
    // size in layout units and the offsets that centre the layout.
    void FitDisplay();
    // The display no longer matches the back buffer (full screen toggled,
    // the desktop resized).
    bool DisplayChanged();

    GraphicsDevice& device;

private:
    void DisplayTarget(int& w, int& h, double& scale);

    QuorbitDebug& log_;
    Window& window_;
};

// Removes every '\0' from an adapter description.
std::string CleanAdapterName(const std::string& raw);

}  // namespace qb
