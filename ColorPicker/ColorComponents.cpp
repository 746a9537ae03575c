#include "ColorPicker/ColorComponents.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "zelcore/Utility.h"

namespace DLG::ColorPicker {

namespace {

// Hue runs over 359 degrees both ways, so that 359 is the normalised 1.0 (the same red as 0).
constexpr float kHueScale = 359.0F;
constexpr float kPositionScale = 255.0F;
constexpr double kPercent = 100.0;
constexpr double kFromPercent = 0.01;

// How a component lies on an axis of the square or the slider.
enum class AxisKind { kHue, kUnit, kByte, kSignedByte };

AxisKind KindOf(TarvixColorPickerMode inComponent)
{
    switch (inComponent) {
    case kTarvixColorPickerMode_Hue:
    case kTarvixColorPickerMode_HSL_H: return AxisKind::kHue;
    case kTarvixColorPickerMode_Saturation:
    case kTarvixColorPickerMode_Brightness:
    case kTarvixColorPickerMode_HSL_S:
    case kTarvixColorPickerMode_HSL_L: return AxisKind::kUnit;
    case kTarvixColorPickerMode_YUV_U:
    case kTarvixColorPickerMode_YUV_V: return AxisKind::kSignedByte;
    default: return AxisKind::kByte;
    }
}

// Every component is named by the mode that lays it on the slider. Templates serve the const
// and the changing record alike; each answers null for a component of another kind.
template <class Components>
auto FloatComponent(Components& inComponents, TarvixColorPickerMode inComponent) -> decltype(&inComponents.hue)
{
    switch (inComponent) {
    case kTarvixColorPickerMode_Hue: return &inComponents.hue;
    case kTarvixColorPickerMode_Saturation: return &inComponents.saturation;
    case kTarvixColorPickerMode_Brightness: return &inComponents.brightness;
    case kTarvixColorPickerMode_HSL_H: return &inComponents.hslHue;
    case kTarvixColorPickerMode_HSL_S: return &inComponents.hslSaturation;
    case kTarvixColorPickerMode_HSL_L: return &inComponents.lightness;
    default: return nullptr;
    }
}

template <class Components>
auto ByteComponent(Components& inComponents, TarvixColorPickerMode inComponent) -> decltype(&inComponents.red)
{
    switch (inComponent) {
    case kTarvixColorPickerMode_Red: return &inComponents.red;
    case kTarvixColorPickerMode_Green: return &inComponents.green;
    case kTarvixColorPickerMode_Blue: return &inComponents.blue;
    case kTarvixColorPickerMode_YUV_Y: return &inComponents.yuvY;
    default: return nullptr;
    }
}

template <class Components>
auto SignedComponent(Components& inComponents, TarvixColorPickerMode inComponent) -> decltype(&inComponents.yuvU)
{
    return inComponent == kTarvixColorPickerMode_YUV_U ? &inComponents.yuvU : &inComponents.yuvV;
}

// The components that the square's x and y axes show in each mode.
struct SquareAxes {
    TarvixColorPickerMode x;
    TarvixColorPickerMode y;
};
constexpr std::array<SquareAxes, 12> kSquareAxes = {{
    {kTarvixColorPickerMode_Saturation, kTarvixColorPickerMode_Brightness},
    {kTarvixColorPickerMode_Hue, kTarvixColorPickerMode_Brightness},
    {kTarvixColorPickerMode_Hue, kTarvixColorPickerMode_Saturation},
    {kTarvixColorPickerMode_Green, kTarvixColorPickerMode_Blue},
    {kTarvixColorPickerMode_Red, kTarvixColorPickerMode_Blue},
    {kTarvixColorPickerMode_Red, kTarvixColorPickerMode_Green},
    {kTarvixColorPickerMode_HSL_S, kTarvixColorPickerMode_HSL_L},
    {kTarvixColorPickerMode_HSL_H, kTarvixColorPickerMode_HSL_L},
    {kTarvixColorPickerMode_HSL_H, kTarvixColorPickerMode_HSL_S},
    {kTarvixColorPickerMode_YUV_U, kTarvixColorPickerMode_YUV_V},
    {kTarvixColorPickerMode_YUV_Y, kTarvixColorPickerMode_YUV_V},
    {kTarvixColorPickerMode_YUV_Y, kTarvixColorPickerMode_YUV_U},
}};

bool IsMode(TarvixColorPickerMode inMode)
{
    return static_cast<unsigned int>(inMode) <= kTarvixColorPickerMode_YUV_V;
}

// Sets a component from a normalised axis value. The byte components are computed in float on
// purpose: there (n / 255) x 255 is exactly n for every n from 0 to 255, so a position that
// GetAxisPosition gave comes back to the same byte even where U and V truncate.
void SetAxis(ColorComponents& ioComponents, TarvixColorPickerMode inComponent, float inValue)
{
    switch (KindOf(inComponent)) {
    case AxisKind::kHue: *FloatComponent(ioComponents, inComponent) = inValue * kHueScale; break;
    case AxisKind::kUnit: *FloatComponent(ioComponents, inComponent) = inValue; break;
    case AxisKind::kByte:
        *ByteComponent(ioComponents, inComponent) =
            static_cast<std::uint8_t>(std::clamp(static_cast<int>(inValue * 255.0F + 0.5F), 0, 255));
        break;
    case AxisKind::kSignedByte:
        *SignedComponent(ioComponents, inComponent) =
            static_cast<std::int8_t>(std::clamp(static_cast<int>(inValue * 255.0F - 128.0F), -128, 127));
        break;
    }
}

// Where a component lies on an axis, 0 to 255.
float GetAxisPosition(const ColorComponents& inComponents, TarvixColorPickerMode inComponent)
{
    switch (KindOf(inComponent)) {
    case AxisKind::kHue: return *FloatComponent(inComponents, inComponent) / kHueScale * kPositionScale;
    case AxisKind::kUnit: return *FloatComponent(inComponents, inComponent) * kPositionScale;
    case AxisKind::kByte: return *ByteComponent(inComponents, inComponent);
    case AxisKind::kSignedByte: return *SignedComponent(inComponents, inComponent) + 128.0F;
    }
    return 0.0F;
}

// A converted channel to 8 bits, rounding half up: the integer part of (value x 255 + 0.5).
std::uint8_t ToChannel(float inNormalised)
{
    return static_cast<std::uint8_t>(std::clamp(static_cast<int>(inNormalised * 255.0 + 0.5), 0, 255));
}

// A group's three components in mode order as its conversion takes them: floats (which hold the
// 8-bit ones exactly), hue normalised.
using GroupValues = std::array<float, 3>;

GroupValues ValuesOf(const ColorComponents& inComponents, ColorGroup inGroup)
{
    switch (inGroup) {
    case ColorGroup::kHSB: return {inComponents.hue / kHueScale, inComponents.saturation, inComponents.brightness};
    case ColorGroup::kRGB:
        return {static_cast<float>(inComponents.red), static_cast<float>(inComponents.green),
                static_cast<float>(inComponents.blue)};
    case ColorGroup::kHSL:
        return {inComponents.hslHue / kHueScale, inComponents.hslSaturation, inComponents.lightness};
    case ColorGroup::kYUV:
        return {static_cast<float>(inComponents.yuvY), static_cast<float>(inComponents.yuvU),
                static_cast<float>(inComponents.yuvV)};
    case ColorGroup::kNone: break;
    }
    return {};
}

// The RGB colour of a group's values. The recompute rule and the pictures both come here, so a
// picture shows exactly the colour that a click on it gives.
KOR::ParamColor<unsigned long> ColorOf(ColorGroup inGroup, const GroupValues& inValues)
{
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    switch (inGroup) {
    case ColorGroup::kHSB:
        KOR::NormalizedHSVtoRGB(inValues[0], inValues[1], inValues[2], red, green, blue);
        break;
    case ColorGroup::kHSL:
        KOR::NormalizedHSLtoRGB(inValues[0], inValues[1], inValues[2], red, green, blue);
        break;
    case ColorGroup::kRGB:
        return {static_cast<std::uint8_t>(inValues[0]), static_cast<std::uint8_t>(inValues[1]),
                static_cast<std::uint8_t>(inValues[2])};
    case ColorGroup::kYUV: {
        KOR::ParamColor<unsigned long> color;
        KOR::ColorYUVtoRGB(static_cast<std::uint8_t>(inValues[0]), static_cast<std::int8_t>(inValues[1]),
                           static_cast<std::int8_t>(inValues[2]), color);
        return color;
    }
    case ColorGroup::kNone: break;
    }
    return {ToChannel(red), ToChannel(green), ToChannel(blue)};
}

// Which of its group's three values a component is.
std::size_t IndexInGroup(TarvixColorPickerMode inComponent) { return static_cast<std::size_t>(inComponent) % 3; }

// The value a component takes at a normalised axis value, exactly as SetAxis stores it.
float AxisValue(TarvixColorPickerMode inComponent, float inValue)
{
    ColorComponents scratch;
    SetAxis(scratch, inComponent, inValue);
    return ValuesOf(scratch, GroupOf(inComponent))[IndexInGroup(inComponent)];
}

using FromRGB = void (*)(float, float, float, float&, float&, float&, bool*, bool*);

// HSB or HSL from RGB. A hue or saturation that the conversion says means nothing is stored as
// 0, whatever number it returned.
void Derive(const ColorComponents& inComponents, FromRGB inConvert, float& outHue, float& outSaturation,
            float& outThird)
{
    float hue = 0.0F;
    float saturation = 0.0F;
    bool hueMeaningful = false;
    bool saturationMeaningful = false;
    inConvert(inComponents.red / 255.0F, inComponents.green / 255.0F, inComponents.blue / 255.0F, hue, saturation,
              outThird, &hueMeaningful, &saturationMeaningful);
    outHue = hueMeaningful ? hue * kHueScale : 0.0F;
    outSaturation = saturationMeaningful ? saturation : 0.0F;
}

void DeriveYUV(ColorComponents& ioComponents)
{
    KOR::ColorRGBtoYUV(ioComponents.GetRGB(), ioComponents.yuvY, ioComponents.yuvU, ioComponents.yuvV);
}

std::uint32_t Pixel(const KOR::ParamColor<unsigned long>& inColor, unsigned int inWebAdjust)
{
    return (inColor.Red() & inWebAdjust) << 16 | (inColor.Green() & inWebAdjust) << 8 | (inColor.Blue() & inWebAdjust);
}

// The value of row inRow of a picture whose row 0 is value 255, normalised.
float RowValue(int inRow) { return static_cast<float>(kFieldSize - 1 - inRow) / kPositionScale; }

std::string Narrow(const std::wstring& inText)
{
    std::string text;
    text.reserve(inText.size());
    for (const wchar_t c : inText) {
        text.push_back(static_cast<std::uint32_t>(c) < 128 ? static_cast<char>(c) : '?');
    }
    return text;
}

} // namespace

// One decimal is the fewest with which every RGB colour shown in the HSB or HSL fields and typed
// back as shown comes back unchanged (Bench/ColorRoundTrip.cpp counts them).
const std::array<ComponentField, 12> kComponentFields = {{
    {L"Hue", L"$$$/zelui/sharedui/ColorPicker/HueRadioString=H:", L"HotText_Hue", 0.0, 359.0, 1},
    {L"Saturation", L"$$$/zelui/sharedui/ColorPicker/SatRadioString=S:", L"HotText_Sat", 0.0, 100.0, 1},
    {L"Brightness", L"$$$/zelui/sharedui/ColorPicker/BriRadioString=B:", L"HotText_Bri", 0.0, 100.0, 1},
    {L"Red", L"$$$/zelui/sharedui/ColorPicker/RedRadioString=R:", L"HotText_Red", 0.0, 255.0, 0},
    {L"Green", L"$$$/zelui/sharedui/ColorPicker/GreenRadioString=G:", L"HotText_Green", 0.0, 255.0, 0},
    {L"Blue", L"$$$/zelui/sharedui/ColorPicker/BlueRadioString=B:", L"HotText_Blue", 0.0, 255.0, 0},
    {L"HSL_H", L"$$$/zelui/sharedui/ColorPicker/HSLHRadioString=H:", L"HotText_HSL_H", 0.0, 359.0, 1},
    {L"HSL_S", L"$$$/zelui/sharedui/ColorPicker/HSLSRadioString=S:", L"HotText_HSL_S", 0.0, 100.0, 1},
    {L"HSL_L", L"$$$/zelui/sharedui/ColorPicker/HSLLRadioString=L:", L"HotText_HSL_L", 0.0, 100.0, 1},
    {L"YUV_Y", L"$$$/zelui/sharedui/ColorPicker/YUVYRadioString=Y:", L"HotText_YUV_Y", 0.0, 255.0, 0},
    {L"YUV_U", L"$$$/zelui/sharedui/ColorPicker/YUVURadioString=U:", L"HotText_YUV_U", -128.0, 127.0, 0},
    {L"YUV_V", L"$$$/zelui/sharedui/ColorPicker/YUVVRadioString=V:", L"HotText_YUV_V", -128.0, 127.0, 0},
}};

ColorGroup GroupOf(TarvixColorPickerMode inMode)
{
    if (inMode <= 2) {
        return ColorGroup::kHSB;
    }
    if (inMode <= 5) {
        return ColorGroup::kRGB;
    }
    if (inMode <= 8) {
        return ColorGroup::kHSL;
    }
    if (inMode <= 11) {
        return ColorGroup::kYUV;
    }
    return ColorGroup::kNone;
}

bool ColorComponents::RecomputeFrom(TarvixColorPickerMode inSourceMode)
{
    const ColorGroup source = GroupOf(inSourceMode);
    if (source == ColorGroup::kNone) {
        return false;
    }
    const KOR::ParamColor<unsigned long> color = ColorOf(source, ValuesOf(*this, source));
    red = color.Red();
    green = color.Green();
    blue = color.Blue();
    if (source != ColorGroup::kHSB) {
        Derive(*this, KOR::NormalizedRGBtoHSV, hue, saturation, brightness);
    }
    if (source != ColorGroup::kHSL) {
        Derive(*this, KOR::NormalizedRGBtoHSL, hslHue, hslSaturation, lightness);
    }
    if (source != ColorGroup::kYUV) {
        DeriveYUV(*this);
    }
    return true;
}

void ColorComponents::LoadRGB(const KOR::ParamColor<unsigned long>& inColor)
{
    red = inColor.Red();
    green = inColor.Green();
    blue = inColor.Blue();
    RecomputeFrom(kTarvixColorPickerMode_Red);
}

double ColorComponents::GetFieldValue(TarvixColorPickerMode inMode) const
{
    if (!IsMode(inMode)) {
        return 0.0;
    }
    switch (KindOf(inMode)) {
    case AxisKind::kHue: return *FloatComponent(*this, inMode);
    case AxisKind::kUnit: return *FloatComponent(*this, inMode) * kPercent;
    case AxisKind::kByte: return *ByteComponent(*this, inMode);
    case AxisKind::kSignedByte: return *SignedComponent(*this, inMode);
    }
    return 0.0;
}

void ColorComponents::SetFieldValue(TarvixColorPickerMode inMode, double inShown)
{
    if (!IsMode(inMode)) {
        return;
    }
    switch (KindOf(inMode)) {
    case AxisKind::kHue: *FloatComponent(*this, inMode) = static_cast<float>(inShown); break;
    case AxisKind::kUnit: *FloatComponent(*this, inMode) = static_cast<float>(inShown * kFromPercent); break;
    case AxisKind::kByte: *ByteComponent(*this, inMode) = static_cast<std::uint8_t>(static_cast<int>(inShown)); break;
    case AxisKind::kSignedByte:
        *SignedComponent(*this, inMode) = static_cast<std::int8_t>(static_cast<int>(inShown));
        break;
    }
}

void ColorComponents::SetFromSquare(TarvixColorPickerMode inMode, const ViewPoint& inPosition)
{
    if (!IsMode(inMode)) {
        return;
    }
    SetAxis(*this, kSquareAxes[inMode].x, inPosition.x / kPositionScale);
    SetAxis(*this, kSquareAxes[inMode].y, inPosition.y / kPositionScale);
}

void ColorComponents::SetFromSlider(TarvixColorPickerMode inMode, const ViewPoint& inPosition)
{
    if (IsMode(inMode)) {
        SetAxis(*this, inMode, inPosition.y / kPositionScale);
    }
}

ViewPoint ColorComponents::GetSquarePosition(TarvixColorPickerMode inMode) const
{
    if (!IsMode(inMode)) {
        return {};
    }
    return {GetAxisPosition(*this, kSquareAxes[inMode].x), GetAxisPosition(*this, kSquareAxes[inMode].y)};
}

float ColorComponents::GetSliderPosition(TarvixColorPickerMode inMode) const
{
    return IsMode(inMode) ? GetAxisPosition(*this, inMode) : 0.0F;
}

std::wstring FormatHexText(const KOR::ParamColor<unsigned long>& inColor, unsigned int inWebAdjust)
{
    const KOR::ParamColor<unsigned long> masked = ApplyWebAdjust(inColor, inWebAdjust);
    // The leading 1 keeps the zeros in front of red; it is dropped again.
    const unsigned long number = 0x1000000UL + (static_cast<unsigned long>(masked.Red()) << 16) +
                                 (static_cast<unsigned long>(masked.Green()) << 8) + masked.Blue();
    return zelcore::utility::NumberToHexString(number).substr(1);
}

bool ParseHexText(const std::wstring& inText, KOR::ParamColor<unsigned long>& outColor)
{
    unsigned long number = 0;
    if (std::sscanf(Narrow(inText).c_str(), "%06lx", &number) != 1) {
        return false;
    }
    outColor = KOR::ParamColor<unsigned long>(static_cast<std::uint8_t>(number >> 16),
                                              static_cast<std::uint8_t>(number >> 8),
                                              static_cast<std::uint8_t>(number));
    return true;
}

KOR::ParamColor<unsigned long> ApplyWebAdjust(const KOR::ParamColor<unsigned long>& inColor, unsigned int inWebAdjust)
{
    return {static_cast<std::uint8_t>(inColor.Red() & inWebAdjust),
            static_cast<std::uint8_t>(inColor.Green() & inWebAdjust),
            static_cast<std::uint8_t>(inColor.Blue() & inWebAdjust)};
}

bool TestBroadcastSafe(const KOR::ParamColor<unsigned long>& inColor, KOR::ParamColor<unsigned long>& outSafe)
{
    constexpr double kEncode = 0.45454545454545453;
    constexpr double kDecode = 2.2;
    constexpr double kFixedOne = 8192.0;
    constexpr std::int64_t kChromaLimitSquared = 19607184; // 4428 squared: 20/37 in fixed point
    constexpr std::int64_t kCompositeLimit = 9077;          // 41/37 in fixed point
    constexpr double kChromaLimit = 0.5405405405405406;
    constexpr double kCompositeLimitOne = 1.1081081081081081;

    outSafe = inColor;
    const std::array<std::uint8_t, 3> in = {inColor.Red(), inColor.Green(), inColor.Blue()};
    std::array<double, 3> encoded{};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        encoded[channel] = std::pow(in[channel] / 255.0, kEncode);
    }
    const auto [r, g, b] = encoded;
    const double luma = 0.2989 * r + 0.5866 * g + 0.1144 * b;
    const double inPhase = 0.5959 * r - 0.2741 * g - 0.3218 * b;
    const double quadrature = 0.2113 * r - 0.5227 * g + 0.3113 * b;
    const std::int64_t y = static_cast<std::int32_t>(luma * kFixedOne);
    const std::int64_t i = static_cast<std::int32_t>(inPhase * kFixedOne);
    const std::int64_t q = static_cast<std::int32_t>(quadrature * kFixedOne);
    const std::int64_t chromaSquared = i * i + q * q;
    if (chromaSquared <= kChromaLimitSquared && chromaSquared <= (kCompositeLimit - y) * (kCompositeLimit - y)) {
        return true;
    }

    // Unsafe chroma is never 0 here. The scale may pass 1 by a hair near the composite limit, which
    // can pull a channel of 0 a little below 0: that channel stays 0.
    const double chroma = std::sqrt((i / kFixedOne) * (i / kFixedOne) + (q / kFixedOne) * (q / kFixedOne));
    const double chromaScale = kChromaLimit / chroma;
    const double compositeScale = (kCompositeLimitOne - y / kFixedOne) / chroma;
    const double scale = chromaScale <= compositeScale ? chromaScale : compositeScale;
    std::array<std::uint8_t, 3> out{};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double pulled = std::max(luma + (encoded[channel] - luma) * scale, 0.0);
        out[channel] = static_cast<std::uint8_t>(static_cast<std::int32_t>(std::pow(pulled, kDecode) * 255.0) & 0xFF);
    }
    if (out == in) {
        return true;
    }
    outSafe = KOR::ParamColor<unsigned long>((inColor.GetValue() & ~0xFFFFFFUL) | out[0] | out[1] << 8 |
                                             static_cast<unsigned long>(out[2]) << 16);
    return false;
}

// The pictures hold every component but those on their axes at the current values, and take
// the axis values from tables made once per picture.
void RenderSquare(TarvixColorPickerMode inMode, const ColorComponents& inCurrent, unsigned int inWebAdjust,
                  std::uint32_t* outPixels)
{
    if (!IsMode(inMode)) {
        return;
    }
    const ColorGroup group = GroupOf(inMode);
    const SquareAxes axes = kSquareAxes[inMode];
    std::array<float, kFieldSize> columnValues{};
    for (int x = 0; x < kFieldSize; ++x) {
        columnValues[x] = AxisValue(axes.x, static_cast<float>(x) / kPositionScale);
    }
    GroupValues values = ValuesOf(inCurrent, group);
    for (int row = 0; row < kFieldSize; ++row) {
        values[IndexInGroup(axes.y)] = AxisValue(axes.y, RowValue(row));
        for (const float columnValue : columnValues) {
            values[IndexInGroup(axes.x)] = columnValue;
            *outPixels++ = Pixel(ColorOf(group, values), inWebAdjust);
        }
    }
}

void RenderSlider(TarvixColorPickerMode inMode, const ColorComponents& inCurrent, unsigned int inWebAdjust,
                  std::uint32_t* outPixels)
{
    if (!IsMode(inMode)) {
        return;
    }
    const ColorGroup group = GroupOf(inMode);
    GroupValues values = ValuesOf(inCurrent, group);
    // A hue slider shows the spectrum itself, never the current colour's (possibly black) shade.
    if (inMode == kTarvixColorPickerMode_Hue) {
        values = {0.0F, 1.0F, 1.0F};
    } else if (inMode == kTarvixColorPickerMode_HSL_H) {
        values = {0.0F, 1.0F, 0.5F};
    }
    for (int row = 0; row < kFieldSize; ++row) {
        values[IndexInGroup(inMode)] = AxisValue(inMode, RowValue(row));
        outPixels[row] = Pixel(ColorOf(group, values), inWebAdjust);
    }
}

} // namespace DLG::ColorPicker
