#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "ColorPicker/ColorPickerModel.h"
#include "KOR/Color.h"

namespace DLG::ColorPicker {

// The four descriptions of a colour; a mode belongs to the group of its component.
enum class ColorGroup { kHSB, kRGB, kHSL, kYUV, kNone };
// By the upper bounds 2, 5, 8 and 11 in turn; a mode above 11 is kNone.
ColorGroup GroupOf(TarvixColorPickerMode inMode);

// Web-safe masks: every channel keeps its top three bits when the box is ticked.
inline constexpr unsigned int kWebAdjustOff = 0xFF;
inline constexpr unsigned int kWebAdjustOn = 0xE0;

// One component's controls and number field.
struct ComponentField {
    const wchar_t* radioID;  // "Hue"
    const wchar_t* labelKey; // "$$$/zelui/sharedui/ColorPicker/HueRadioString=H:"
    const wchar_t* fieldID;  // "HotText_Hue"
    double minimum;          // as shown
    double maximum;
    int decimalPlaces;
};
// By mode: index 0 is Hue, 11 is YUV_V.
extern const std::array<ComponentField, 12> kComponentFields;

// The picker's working values: every description of the current colour, in stored units (hue
// in degrees 0-359, the other HSB and HSL components 0-1).
struct ColorComponents {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    float hue = 0.0F;
    float saturation = 0.0F;
    float brightness = 0.0F;
    float hslHue = 0.0F;
    float hslSaturation = 0.0F;
    float lightness = 0.0F;
    std::uint8_t yuvY = 0;
    std::int8_t yuvU = 0;
    std::int8_t yuvV = 0;

    KOR::ParamColor<unsigned long> GetRGB() const { return {red, green, blue}; }

    // Keeps the source group's values as they are, derives RGB from them (unless RGB is the
    // source) and every other group from RGB. A mode above 11 changes nothing; false then.
    bool RecomputeFrom(TarvixColorPickerMode inSourceMode);
    // Takes a colour from outside: RGB, then HSB, HSL and YUV derived from it.
    void LoadRGB(const KOR::ParamColor<unsigned long>& inColor);

    // The value the mode's number field shows (percentages for saturation, brightness and
    // lightness) and the reverse: a typed field value stored into the mode's component
    // (divided by 100 for percentages, truncated for the 8-bit components).
    double GetFieldValue(TarvixColorPickerMode inMode) const;
    void SetFieldValue(TarvixColorPickerMode inMode, double inShown);

    // View positions, in value units 0-255: the square's x and y and the slider's position set
    // the components the mode lays on them. Neither recomputes.
    void SetFromSquare(TarvixColorPickerMode inMode, const ViewPoint& inPosition);
    void SetFromSlider(TarvixColorPickerMode inMode, const ViewPoint& inPosition);
    // Where the colour lies on the square and the slider (the reverse of the two above).
    ViewPoint GetSquarePosition(TarvixColorPickerMode inMode) const;
    float GetSliderPosition(TarvixColorPickerMode inMode) const;
};

// The six hex digits of a colour after the web mask, red first ("010203").
std::wstring FormatHexText(const KOR::ParamColor<unsigned long>& inColor, unsigned int inWebAdjust);
// Reads up to six hex digits at the start of inText ("ff" is blue 255); false when there are
// none, and outColor is then untouched.
bool ParseHexText(const std::wstring& inText, KOR::ParamColor<unsigned long>& outColor);

// Each channel ANDed with the web mask; bits 24-31 cleared.
KOR::ParamColor<unsigned long> ApplyWebAdjust(const KOR::ParamColor<unsigned long>& inColor, unsigned int inWebAdjust);

// Whether inColor stays inside the broadcast (NTSC) chroma and composite limits. When it does
// not, outSafe is the colour pulled toward its luma until it does; otherwise outSafe is inColor.
bool TestBroadcastSafe(const KOR::ParamColor<unsigned long>& inColor, KOR::ParamColor<unsigned long>& outSafe);

// Pictures of the square and the slider for the mode, with the other components as in
// inCurrent and every colour ANDed with the web mask, as 0x00RRGGBB pixels.
// The square is kFieldSize x kFieldSize, x growing rightwards and y growing upwards (row 0 is
// value 255); the slider is one column of kFieldSize values, row 0 being value 255.
inline constexpr int kFieldSize = 256;
void RenderSquare(TarvixColorPickerMode inMode, const ColorComponents& inCurrent, unsigned int inWebAdjust,
                  std::uint32_t* outPixels);
void RenderSlider(TarvixColorPickerMode inMode, const ColorComponents& inCurrent, unsigned int inWebAdjust,
                  std::uint32_t* outPixels);

} // namespace DLG::ColorPicker
