#include "gui/clsFontField.h"

#include <cmath>

namespace qb {

clsFontField::clsFontField(GraphicsDevice& device, const float& offsetX, const float& offsetY)
    : device_(device), offsetX_(offsetX), offsetY_(offsetY) {}

clsFontField::~clsFontField() {
    if (font_ != 0) device_.releaseFont(font_);
}

void clsFontField::buildFont() {
    const FontId fresh = device_.createFont(face_, size_, bold_);
    if (font_ != 0) device_.releaseFont(font_);
    font_ = fresh;
    fontStale_ = false;
}

void clsFontField::Render() {
    if (fontStale_) buildFont();
    if (outline_ != 0)
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                if (dx != 0 || dy != 0)
                    device_.drawText(font_, text_, left_ + dx, top_ + dy, right_ + dx, bottom_ + dy,
                                     outline_);
    device_.drawText(font_, text_, left_, top_, right_, bottom_, colour_);
}

void clsFontField::Set_Colour(int16_t R, int16_t G, int16_t b) {
    red_ = R;
    green_ = G;
    blue_ = b;
    colour_ = 0xFF000000u | (static_cast<uint32_t>(R) & 0xFFu) << 16 |
              (static_cast<uint32_t>(G) & 0xFFu) << 8 | (static_cast<uint32_t>(b) & 0xFFu);
}

// A GL font lives as long as its context, which a reset keeps; the hooks
// stay so a device that does lose its fonts can drop and rebuild them.
void clsFontField::OnLostDevice() {}

void clsFontField::onRestoreDevice() {}

uint32_t clsFontField::Get_Colour(int16_t& R, int16_t& G, int16_t& b) const {
    R = red_;
    G = green_;
    b = blue_;
    return colour_;
}

void clsFontField::concatString(const std::string& writing) {
    if (text_ == NamePrompt) text_.clear();
    text_ += writing;
}

void clsFontField::removeLastCharacter() {
    if (!text_.empty()) text_.pop_back();
}

void clsFontField::create() {
    face_ = "Ariel";
    size_ = 18;
    bold_ = true;
    Set_Colour(204, 204, 255);
    left_ = 1;
    top_ = 550;
    right_ = 800;
    bottom_ = 600;
    fontChanged();
}

void clsFontField::Set_Field(int32_t top, int32_t bottom, int32_t left, int32_t right) {
    auto place = [](float offset, int32_t v) {
        return static_cast<int32_t>(std::nearbyint(offset + static_cast<float>(v)));
    };
    top_ = place(offsetY_, top);
    bottom_ = place(offsetY_, bottom);
    left_ = place(offsetX_, left);
    right_ = place(offsetX_, right);
}

void clsFontField::Set_FontName(const std::string& Name) {
    if (Name != face_) fontChanged();
    face_ = Name;
}

void clsFontField::Set_FontSize(int32_t size) {
    if (size != size_) fontChanged();
    size_ = size;
}

void clsFontField::Set_Bold(bool value) {
    if (value != bold_) fontChanged();
    bold_ = value;
}

}  // namespace qb
