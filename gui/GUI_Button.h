// One picture of the menus: a screen-aligned textured quad from a bitmap,
// with an optional roll-over picture shown while it is highlighted, a sound
// played once when the highlight begins, a translucency level and a place
// in the keyboard order. The screens decide the highlight; the button only
// remembers it and draws.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "gui/PictureStore.h"
#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

class GUI_Button {
public:
    // offsetX/offsetY are the layout offsets of the device (GuiOffsetX/Y),
    // read whenever the button places itself; playEffect sounds a roll-over.
    GUI_Button(PictureStore& pictures, const float& offsetX, const float& offsetY,
               std::function<void(int16_t)> playEffect);
    ~GUI_Button();
    GUI_Button(const GUI_Button&) = delete;
    GUI_Button& operator=(const GUI_Button&) = delete;

    void TabIndex(int32_t value) { tabIndex_ = value; }
    int32_t TabIndex() const { return tabIndex_; }
    // Enabling puts the pictures on the device (throws when they cannot be
    // had); disabling keeps them until ReleasePictures.
    void enabled(bool value);
    bool enabled() const { return enabled_; }
    void setrenderpass(int16_t index) { renderPass_ = index; }
    int16_t setrenderpass() const { return renderPass_; }
    void Rollover(bool bData) { rollover_ = bData; }
    bool Rollover() const { return rollover_; }
    void MouseOver(bool bData) { mouseOver_ = bData; }
    void MouseOverSFX(int32_t index) { mouseOverSfx_ = static_cast<int16_t>(index); }

    // Layout position (800x600 space), rounded half to even; the getters
    // give the position on screen, offsets included.
    void X(float iData);
    float X() const;
    void Y(float iData);
    float Y() const;
    int32_t width() const { return width_; }
    int32_t height() const { return height_; }

    // Full paths; colour keys are ARGB. The size comes from the bitmap's
    // header at once, the pixels when the button is shown. Throw when the
    // bitmap (or, on an enabled button, the texture) cannot be had.
    void LoadTexture(const std::string& TextureFileName, uint32_t ColourKey);
    void LoadRollover(const std::string& TextureFileName, uint32_t ColourKey);
    // Gives the pictures back to the store; the next enabling takes them again.
    void ReleasePictures();

    // The offsets changed: re-place the corners.
    void OnChangeVideoMode() { Update(alpha_); }
    // Rebuilds the four corners with the given alpha (the stored alpha stays).
    void Update(int16_t alpha);
    void SetAlphaLevel(int16_t A);
    int16_t GetAlphaLevel() const { return alpha_; }
    void draw(int16_t Pass);

    // Strictly inside the button on screen (a point on the border is out).
    // Says nothing about enabled.
    bool Contains(float px, float py) const;

    // Read-only views for the screens and the tests.
    bool IsMouseOver() const { return mouseOver_; }
    int16_t MouseOverSfxNumber() const { return mouseOverSfx_; }
    bool SoundPlayed() const { return soundPlayed_; }
    bool AlphaOn() const { return alphaOn_; }
    int32_t LayoutX() const { return x_; }
    int32_t LayoutY() const { return y_; }
    TextureId Texture() const { return texture_; }  // 0 while not on the device
    const std::string& PictureFile() const { return file_; }
    const std::string& RolloverFile() const { return rolloverFile_; }
    TextureId RolloverTexture() const { return rolloverTexture_; }
    const std::array<ScreenVertex, 4>& Corners() const { return corners_; }

private:
    void takePictures();

    PictureStore& pictures_;
    GraphicsDevice& device_;
    const float& offsetX_;
    const float& offsetY_;
    std::function<void(int16_t)> playEffect_;

    std::string file_, rolloverFile_;
    uint32_t key_ = 0, rolloverKey_ = 0;
    TextureId texture_ = 0;
    TextureId rolloverTexture_ = 0;
    std::array<ScreenVertex, 4> corners_{};
    int32_t x_ = 0, y_ = 0;
    int32_t width_ = 0, height_ = 0;
    bool mouseOver_ = false;
    bool rollover_ = false;
    int16_t mouseOverSfx_ = 0;
    bool soundPlayed_ = false;
    int16_t renderPass_ = 0;
    bool alphaOn_ = false;
    int16_t alpha_ = 0;
    bool enabled_ = false;
    int32_t tabIndex_ = 0;
};

}  // namespace qb
