#include "gui/GUI_Button.h"

#include <cmath>
#include <stdexcept>

#include "gui/BITMAP_Loader.h"

namespace qb {

GUI_Button::GUI_Button(PictureStore& pictures, const float& offsetX, const float& offsetY,
                       std::function<void(int16_t)> playEffect)
    : pictures_(pictures),
      device_(pictures.device()),
      offsetX_(offsetX),
      offsetY_(offsetY),
      playEffect_(std::move(playEffect)) {}

GUI_Button::~GUI_Button() {
    ReleasePictures();
}

void GUI_Button::enabled(bool value) {
    if (value) takePictures();
    enabled_ = value;
}

void GUI_Button::takePictures() {
    if (texture_ == 0 && !file_.empty()) texture_ = pictures_.acquire(file_, key_, width_, height_);
    // The roll-over picture is had with the picture: a screen may switch the
    // highlight on while it shows.
    if (rolloverTexture_ == 0 && !rolloverFile_.empty()) {
        try {
            rolloverTexture_ = pictures_.acquire(rolloverFile_, rolloverKey_, width_, height_);
        } catch (...) {
            ReleasePictures();
            throw;
        }
    }
}

void GUI_Button::ReleasePictures() {
    pictures_.release(texture_);
    pictures_.release(rolloverTexture_);
    texture_ = rolloverTexture_ = 0;
}

void GUI_Button::X(float iData) {
    x_ = static_cast<int32_t>(std::nearbyint(iData));
    Update(alpha_);
}

float GUI_Button::X() const {
    return static_cast<float>(x_) + offsetX_;
}

void GUI_Button::Y(float iData) {
    y_ = static_cast<int32_t>(std::nearbyint(iData));
    Update(alpha_);
}

float GUI_Button::Y() const {
    return static_cast<float>(y_) + offsetY_;
}

void GUI_Button::LoadTexture(const std::string& TextureFileName, uint32_t ColourKey) {
    GetBitmapSize(TextureFileName, width_, height_);
    ReleasePictures();
    file_ = TextureFileName;
    key_ = ColourKey;
    alpha_ = 255;
    Update(255);
    renderPass_ = 1;
    if (enabled_) takePictures();
}

void GUI_Button::LoadRollover(const std::string& TextureFileName, uint32_t ColourKey) {
    int32_t w = 0, h = 0;
    GetBitmapSize(TextureFileName, w, h);
    ReleasePictures();
    rolloverFile_ = TextureFileName;
    rolloverKey_ = ColourKey;
    rollover_ = true;
    if (enabled_) takePictures();
}

void GUI_Button::Update(int16_t alpha) {
    // Worked out in double, kept as floats. Pixel centres lie on whole
    // numbers, so the quad from (left, top) to (left + width, top + height)
    // covers exactly the picture's width x height pixels, one texel each, and
    // exactly the pixels that hit it (Contains).
    const double left = static_cast<double>(x_) + offsetX_;
    const double top = static_cast<double>(y_) + offsetY_;
    const double right = left + width_;
    const double bottom = top + height_;
    const uint32_t diffuse = (static_cast<uint32_t>(alpha) & 0xFFu) << 24 | 0x00FFFFFFu;
    auto corner = [diffuse](double sx, double sy, float depth, float u, float v) {
        ScreenVertex c;
        c.x = static_cast<float>(sx);
        c.y = static_cast<float>(sy);
        c.z = depth;
        c.rhw = 1;
        c.diffuse = diffuse;
        c.specular = 0;
        c.u = u;
        c.v = v;
        return c;
    };
    corners_[0] = corner(left, top, 1, 0, 0);
    corners_[1] = corner(right, top, 0, 1, 0);
    corners_[2] = corner(left, bottom, 0, 0, 1);
    corners_[3] = corner(right, bottom, 0, 1, 1);
}

void GUI_Button::SetAlphaLevel(int16_t A) {
    if (A != 255) {
        Update(A);
        alphaOn_ = true;
        alpha_ = A;
    } else {
        alphaOn_ = false;
    }
}

bool GUI_Button::Contains(float px, float py) const {
    const float left = X(), top = Y();
    const float right = left + static_cast<float>(width_);
    const float bottom = top + static_cast<float>(height_);
    // The pixels the picture covers: its left and top edges are on it, its
    // right and bottom edges (the next pixel) are not.
    return left <= px && px < right && top <= py && py < bottom;
}

void GUI_Button::draw(int16_t Pass) {
    if (!enabled_ || Pass != renderPass_) return;
    GraphicsDevice& d = device_;
    d.setRenderState(RenderState::MultisampleAntialias, 0);
    d.setRenderState(RenderState::ZWriteEnable, 0);
    if (!alphaOn_) {
        d.setTextureStageState(TextureStageState::AlphaOp, TopSelectArg1);
        d.setTextureStageState(TextureStageState::AlphaArg1, TaTexture);
        d.setTextureStageState(TextureStageState::AlphaArg2, TaCurrent);
        d.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
        d.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
    } else {
        d.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
        d.setRenderState(RenderState::DestBlend, BlendDestAlpha);
        d.setTextureStageState(TextureStageState::AlphaOp, TopModulate);
        d.setTextureStageState(TextureStageState::AlphaArg1, TaDiffuse);
        d.setTextureStageState(TextureStageState::AlphaArg2, TaCurrent);
    }
    d.setRenderState(RenderState::AlphaBlendEnable, 1);
    if (!mouseOver_) {
        d.setTexture(texture_);
        soundPlayed_ = false;
    } else {
        // A highlighted button without a roll-over picture keeps its own.
        d.setTexture(rollover_ ? rolloverTexture_ : texture_);
        if (!soundPlayed_ && mouseOverSfx_ != 0) {
            if (playEffect_) playEffect_(mouseOverSfx_);
            soundPlayed_ = true;
        }
    }
    d.drawScreenVertices(Primitive::TriangleStrip, corners_.data(), 2);
    d.setRenderState(RenderState::ZWriteEnable, 1);
    d.setRenderState(RenderState::AlphaBlendEnable, 0);
    d.setRenderState(RenderState::MultisampleAntialias, 1);
    if (alphaOn_) {
        d.setTextureStageState(TextureStageState::AlphaOp, TopSelectArg1);
        d.setTextureStageState(TextureStageState::AlphaArg1, TaTexture);
        d.setTextureStageState(TextureStageState::AlphaArg2, TaCurrent);
        d.setRenderState(RenderState::SrcBlend, BlendSrcAlpha);
        d.setRenderState(RenderState::DestBlend, BlendInvSrcAlpha);
    }
}

}  // namespace qb
