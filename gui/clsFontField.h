// One line of text over the frame: a string in a font (face, size in points,
// bold) and a colour, centred horizontally at the top of a rectangle. The
// name entry edits one in place, hence the two editing operations.
#pragma once

#include <cstdint>
#include <string>

#include "platform/GraphicsDevice.h"

namespace qb {

class clsFontField {
public:
    // The rectangle is placed with the device's layout offsets at the time
    // Set_Field runs.
    clsFontField(GraphicsDevice& device, const float& offsetX, const float& offsetY);
    ~clsFontField();
    clsFontField(const clsFontField&) = delete;
    clsFontField& operator=(const clsFontField&) = delete;

    void Render();
    const std::string& Get_String() const { return text_; }
    void Set_Colour(int16_t R, int16_t G, int16_t b);
    void OnLostDevice();
    void onRestoreDevice();
    uint32_t Get_Colour(int16_t& R, int16_t& G, int16_t& b) const;
    void Set_Text(const std::string& writing) { text_ = writing; }
    // The prompt "Your NAME" is replaced by the first typed text.
    void concatString(const std::string& writing);
    void removeLastCharacter();
    // Defaults nothing on screen uses: "Ariel" 18 bold, pale blue, bottom strip.
    void create();
    // Layout pixels (800x600); note the order top, bottom, left, right.
    void Set_Field(int32_t top, int32_t bottom, int32_t left, int32_t right);
    void Set_FontName(const std::string& Name);
    const std::string& Get_FontName() const { return face_; }
    void Set_FontSize(int32_t size);
    int32_t Get_Fontsize() const { return size_; }
    void Set_Bold(bool value);
    bool Get_Bold() const { return bold_; }

    int32_t Left() const { return left_; }
    int32_t Top() const { return top_; }
    int32_t Right() const { return right_; }
    int32_t Bottom() const { return bottom_; }
    uint32_t Colour() const { return colour_; }
    // A one-pixel rim in this colour (ARGB) round the letters, for a text
    // that stands on a sky of any brightness; 0 for none.
    void Set_Outline(uint32_t argb) { outline_ = argb; }
    // The font object in use (0 until the first Render after a change).
    FontId Font() const { return font_; }
    static constexpr const char* NamePrompt = "Your NAME";

private:
    // The font is built from the description once per change of face, size
    // or weight, when it is next drawn.
    void fontChanged() { fontStale_ = true; }
    void buildFont();

    GraphicsDevice& device_;
    const float& offsetX_;
    const float& offsetY_;
    FontId font_ = 0;
    bool fontStale_ = true;
    int32_t left_ = 0, top_ = 0, right_ = 0, bottom_ = 0;
    // The standard font object's defaults until the screen sets its own.
    std::string face_ = "MS Sans Serif";
    int32_t size_ = 8;
    bool bold_ = false;
    uint32_t colour_ = 0;
    uint32_t outline_ = 0;
    int16_t red_ = 0, green_ = 0, blue_ = 0;
    std::string text_;
};

}  // namespace qb
