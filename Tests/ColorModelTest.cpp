// The colour picker's logic: the host's conversions, the recompute rule, field values, view
// positions, hex text, the web mask, the broadcast-safe test and the pictures of the views.

#include <algorithm>
#include <array>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "ColorPicker/ColorComponents.h"

namespace {

using namespace DLG::ColorPicker;
using Color = KOR::ParamColor<unsigned long>;

TarvixColorPickerMode Mode(int inValue) { return static_cast<TarvixColorPickerMode>(inValue); }

std::string Describe(const Color& inColor)
{
    return std::to_string(inColor.Red()) + "," + std::to_string(inColor.Green()) + "," + std::to_string(inColor.Blue());
}

void ExpectSame(const ColorComponents& inActual, const ColorComponents& inExpected, const std::string& inWhat)
{
    SCOPED_TRACE(inWhat);
    const auto bytes = [](const ColorComponents& inC) {
        return std::tuple(+inC.red, +inC.green, +inC.blue, +inC.yuvY, +inC.yuvU, +inC.yuvV);
    };
    const auto floats = [](const ColorComponents& inC) {
        return std::array{inC.hue, inC.saturation, inC.brightness, inC.hslHue, inC.hslSaturation, inC.lightness};
    };
    EXPECT_EQ(bytes(inActual), bytes(inExpected)) << "red, green, blue, Y, U, V";
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_NEAR(floats(inActual)[i], floats(inExpected)[i], 1e-4) << "hue, s, b, HSL hue, s, l: " << i;
    }
}

// One description's answer for a colour: the three components and the two flags.
struct Described {
    float hue, saturation, third;
    bool hueMeaningful, saturationMeaningful;
};

TEST(ColorConversion, HSVAndHSLWithTheirFlagsAndBack)
{
    const struct {
        Color rgb;
        Described hsv, hsl;
    } cases[] = {
        {{0, 0, 0}, {0, 0, 0, false, false}, {0, 0, 0, false, false}},
        {{255, 255, 255}, {0, 0, 1, false, true}, {0, 0, 1, false, false}},
        {{128, 128, 128}, {0, 0, 128 / 255.0F, false, true}, {0, 0, 128 / 255.0F, false, true}},
        {{255, 0, 0}, {0, 1, 1, true, true}, {0, 1, 0.5F, true, true}},
        {{0, 0, 255}, {4 / 6.0F, 1, 1, true, true}, {4 / 6.0F, 1, 0.5F, true, true}},
        {{255, 0, 255}, {5 / 6.0F, 1, 1, true, true}, {5 / 6.0F, 1, 0.5F, true, true}},
        {{64, 128, 32}, {5 / 18.0F, 0.75F, 128 / 255.0F, true, true}, {5 / 18.0F, 0.6F, 80 / 255.0F, true, true}},
        {{255, 255, 128}, {1 / 6.0F, 127 / 255.0F, 1, true, true}, {1 / 6.0F, 1, 383 / 510.0F, true, true}},
    };
    const auto check = [](const Color& inColor, const Described& inExpected, auto inToDescription, auto inToRGB) {
        const float rgb[] = {inColor.Red() / 255.0F, inColor.Green() / 255.0F, inColor.Blue() / 255.0F};
        Described got{-1, -1, -1, !inExpected.hueMeaningful, !inExpected.saturationMeaningful};
        inToDescription(rgb[0], rgb[1], rgb[2], got.hue, got.saturation, got.third, &got.hueMeaningful,
                        &got.saturationMeaningful);
        EXPECT_NEAR(got.hue, inExpected.hue, 1e-6);
        EXPECT_NEAR(got.saturation, inExpected.saturation, 1e-6);
        EXPECT_NEAR(got.third, inExpected.third, 1e-6);
        EXPECT_EQ(got.hueMeaningful, inExpected.hueMeaningful);
        EXPECT_EQ(got.saturationMeaningful, inExpected.saturationMeaningful);
        float back[3];
        inToRGB(got.hue, got.saturation, got.third, back[0], back[1], back[2]);
        for (int channel = 0; channel < 3; ++channel) {
            EXPECT_NEAR(back[channel], rgb[channel], 1e-6) << "channel " << channel;
        }
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(Describe(c.rgb));
        check(c.rgb, c.hsv, KOR::NormalizedRGBtoHSV, KOR::NormalizedHSVtoRGB);
        check(c.rgb, c.hsl, KOR::NormalizedRGBtoHSL, KOR::NormalizedHSLtoRGB);
    }
}

TEST(ColorConversion, YUVRoundsClampsAndSaysWhenItClips)
{
    using YUV = std::tuple<int, int, int>;
    const struct {
        Color rgb;
        YUV yuv;
    } forward[] = {
        {{0, 0, 0}, {0, 0, 0}},         {{255, 255, 255}, {255, 0, 0}},  {{255, 0, 0}, {76, -43, 127}}, // V clamps
        {{0, 0, 255}, {29, 127, -21}}, {{0, 255, 0}, {150, -84, -107}}, {{64, 128, 32}, {98, -37, -24}},
    };
    for (const auto& c : forward) {
        std::uint8_t y = 0;
        std::int8_t u = 0, v = 0;
        KOR::ColorRGBtoYUV(c.rgb, y, u, v);
        EXPECT_EQ(YUV(y, u, v), c.yuv) << Describe(c.rgb);
    }
    const struct {
        std::uint8_t y;
        std::int8_t u, v;
        bool inside;
        Color rgb;
    } back[] = {
        {128, 0, 0, true, {128, 128, 128}}, {76, -43, 127, true, {254, 0, 0}}, // blue -0.196 rounds to 0
        {0, -128, 0, false, {0, 44, 0}},    {255, 127, 127, false, {255, 121, 255}},
    };
    for (const auto& c : back) {
        Color rgb(0xFF000000UL);
        EXPECT_EQ(KOR::ColorYUVtoRGB(c.y, c.u, c.v, rgb), c.inside) << Describe(c.rgb);
        EXPECT_EQ(rgb, c.rgb);
    }
}

TEST(ColorRecompute, KeepsTheSourceAndDerivesTheRest)
{
    const struct {
        const char* what;
        int source;
        ColorComponents before, after;
    } cases[] = {
        {"HSB red", 0, {.saturation = 1, .brightness = 1}, {255, 0, 0, 0, 1, 1, 0, 1, 0.5F, 76, -43, 127}},
        {"hue 359 is hue 0", 1, {.hue = 359, .saturation = 1, .brightness = 1},
         {255, 0, 0, 359, 1, 1, 0, 1, 0.5F, 76, -43, 127}},
        {"0.998 x 255 is 254.49", 2, {.brightness = 0.998F},
         {254, 254, 254, 0, 0, 0.998F, 0, 0, 254 / 255.0F, 254, 0, 0}},
        {"0.999 rounds up", 2, {.brightness = 0.999F}, {255, 255, 255, 0, 0, 0.999F, 0, 0, 1, 255, 0, 0}},
        {"0.001 rounds down", 2, {.brightness = 0.001F}, {0, 0, 0, 0, 0, 0.001F, 0, 0, 0, 0, 0, 0}},
        {"0.002 rounds up", 2, {.brightness = 0.002F}, {1, 1, 1, 0, 0, 0.002F, 0, 0, 1 / 255.0F, 1, 0, 0}},
        {"HSL hue 359", 6, {.hslHue = 359, .hslSaturation = 1, .lightness = 0.5F},
         {255, 0, 0, 0, 1, 1, 359, 1, 0.5F, 76, -43, 127}},
        {"RGB", 3, {64, 128, 32},
         {64, 128, 32, 99.72222F, 0.75F, 128 / 255.0F, 99.72222F, 0.6F, 80 / 255.0F, 98, -37, -24}},
        {"grey: stale hues and saturations become 0", 4, {128, 128, 128, 200, 0.7F, 0.3F, 50, 0.4F, 0.1F},
         {128, 128, 128, 0, 0, 128 / 255.0F, 0, 0, 128 / 255.0F, 128, 0, 0}},
        {"white has no HSL saturation", 5, {255, 255, 255, 10, 0.5F, 0, 10, 0.5F},
         {255, 255, 255, 0, 0, 1, 0, 0, 1, 255, 0, 0}},
        {"YUV keeps a clipped triple as entered", 9, {.yuvU = -128},
         {0, 44, 0, 119.66667F, 1, 44 / 255.0F, 119.66667F, 1, 22 / 255.0F, 0, -128, 0}},
    };
    for (const auto& c : cases) {
        ColorComponents components = c.before;
        EXPECT_TRUE(components.RecomputeFrom(Mode(c.source)));
        ExpectSame(components, c.after, c.what);
    }
}

TEST(ColorRecompute, AModeAboveElevenChangesNothing)
{
    ColorComponents components{1, 2, 3, 4, 0.5F, 0.6F, 7, 0.8F, 0.9F, 10, 11, 12};
    const ColorComponents before = components;
    EXPECT_FALSE(components.RecomputeFrom(Mode(12)));
    components.SetFromSquare(Mode(12), {10, 20});
    components.SetFromSlider(Mode(12), {10, 20});
    components.SetFieldValue(Mode(12), 5);
    ExpectSame(components, before, "mode 12");
}

TEST(ColorFields, ShownAndTypedValues)
{
    const struct {
        int mode;
        double typed;
        ColorComponents stored;
        double shown;
    } cases[] = {
        {0, 123.4, {.hue = 123.4F}, 123.4},     {1, 50, {.saturation = 0.5F}, 50},
        {2, 100, {.brightness = 1}, 100},       {3, 200.9, {.red = 200}, 200},
        {7, 12.5, {.hslSaturation = 0.125F}, 12.5}, {9, 255, {.yuvY = 255}, 255},
        {10, -3.7, {.yuvU = -3}, -3},           {11, -128, {.yuvV = -128}, -128},
    };
    for (const auto& c : cases) {
        ColorComponents components;
        components.SetFieldValue(Mode(c.mode), c.typed);
        ExpectSame(components, c.stored, "mode " + std::to_string(c.mode));
        EXPECT_NEAR(components.GetFieldValue(Mode(c.mode)), c.shown, 1e-4) << "mode " << c.mode;
    }
    for (const Color color : {Color(255, 255, 255), Color(255, 0, 1), Color(0, 0, 255), Color(0, 255, 0)}) {
        ColorComponents components;
        components.LoadRGB(color);
        for (int mode = 0; mode < 12; ++mode) {
            const double shown = components.GetFieldValue(Mode(mode));
            EXPECT_GE(shown, kComponentFields[mode].minimum) << Describe(color) << " mode " << mode;
            EXPECT_LE(shown, kComponentFields[mode].maximum) << Describe(color) << " mode " << mode;
        }
    }
}

TEST(ColorViews, PositionsSetTheModesComponents)
{
    const struct {
        int mode;
        bool slider;
        ViewPoint position;
        ColorComponents set;
    } cases[] = {
        {0, false, {255, 0}, {.saturation = 1}},
        {0, false, {127.5F, 51}, {.saturation = 0.5F, .brightness = 0.2F}},
        {1, false, {255, 127.5F}, {.hue = 359, .brightness = 0.5F}},
        {2, false, {0, 255}, {.saturation = 1}},
        {3, false, {127.5F, 0.4F}, {.green = 128}},
        {4, false, {200.6F, 1.4F}, {.red = 201, .blue = 1}},
        {5, false, {10, 20}, {.red = 10, .green = 20}},
        {6, false, {51, 127.5F}, {.hslSaturation = 0.2F, .lightness = 0.5F}},
        {7, false, {255, 0}, {.hslHue = 359}},
        {8, false, {0, 255}, {.hslSaturation = 1}},
        {9, false, {0, 255}, {.yuvU = -128, .yuvV = 127}},
        {9, false, {127.2F, 128.9F}, {}}, // -0.8 and 0.9 truncate to 0
        {9, false, {100.5F, 0}, {.yuvU = -27, .yuvV = -128}},
        {10, false, {255, 127.2F}, {.yuvY = 255}},
        {11, false, {127.6F, 255}, {.yuvY = 128, .yuvU = 127}},
        {0, true, {100, 255}, {.hue = 359}},
        {2, true, {100, 51}, {.brightness = 0.2F}},
        {3, true, {0, 127.5F}, {.red = 128}},
        {8, true, {0, 255}, {.lightness = 1}},
        {9, true, {0, 0.4F}, {}},
        {10, true, {0, 127.2F}, {}},
        {11, true, {0, 0}, {.yuvV = -128}},
    };
    for (const auto& c : cases) {
        ColorComponents components;
        if (c.slider) {
            components.SetFromSlider(Mode(c.mode), c.position);
        } else {
            components.SetFromSquare(Mode(c.mode), c.position);
        }
        ExpectSame(components, c.set,
                   "mode " + std::to_string(c.mode) + (c.slider ? " slider " : " square ") +
                       std::to_string(c.position.x) + "," + std::to_string(c.position.y));
    }
}

TEST(ColorViews, EveryComponentComesBackFromItsOwnPosition)
{
    std::vector<ColorComponents> colours;
    for (int value = -128; value < 128; ++value) {
        colours.push_back({.red = static_cast<std::uint8_t>(value + 128),
                           .yuvY = static_cast<std::uint8_t>(127 - value),
                           .yuvU = static_cast<std::int8_t>(value),
                           .yuvV = static_cast<std::int8_t>(-1 - value)});
    }
    colours.emplace_back().LoadRGB(Color(200, 60, 30));
    for (const ColorComponents& colour : colours) {
        for (int mode = 0; mode < 12; ++mode) {
            ColorComponents moved = colour;
            moved.SetFromSquare(Mode(mode), colour.GetSquarePosition(Mode(mode)));
            moved.SetFromSlider(Mode(mode), {0, colour.GetSliderPosition(Mode(mode))});
            ExpectSame(moved, colour, "mode " + std::to_string(mode) + " U " + std::to_string(colour.yuvU));
        }
    }
}

std::uint32_t ExpectedPixel(ColorComponents inColor, int inMode, unsigned int inWebAdjust)
{
    inColor.RecomputeFrom(Mode(inMode));
    const Color masked = ApplyWebAdjust(inColor.GetRGB(), inWebAdjust);
    return static_cast<std::uint32_t>(masked.Red()) << 16 | masked.Green() << 8 | masked.Blue();
}

TEST(ColorViews, PicturesShowTheColourAtEachPosition)
{
    ColorComponents current;
    current.LoadRGB(Color(200, 60, 30));
    std::vector<std::uint32_t> square(kFieldSize * kFieldSize);
    std::vector<std::uint32_t> slider(kFieldSize);
    const std::pair<int, int> samples[] = {{0, 0}, {255, 255}, {255, 0}, {37, 200}, {128, 5}};
    for (const unsigned int mask : {kWebAdjustOff, kWebAdjustOn}) {
        for (int mode = 0; mode < 12; ++mode) {
            RenderSquare(Mode(mode), current, mask, square.data());
            RenderSlider(Mode(mode), current, mask, slider.data());
            for (const auto& [x, row] : samples) {
                ColorComponents at = current;
                at.SetFromSquare(Mode(mode), {static_cast<float>(x), static_cast<float>(255 - row)});
                EXPECT_EQ(square[row * kFieldSize + x], ExpectedPixel(at, mode, mask))
                    << "mode " << mode << " x " << x << " row " << row << " mask " << mask;
                at = current;
                at.SetFromSlider(Mode(mode), {0, static_cast<float>(255 - row)});
                if (mode != 0 && mode != 6) {
                    EXPECT_EQ(slider[row], ExpectedPixel(at, mode, mask)) << "mode " << mode << " row " << row;
                }
            }
        }
    }
    // The hue sliders show the spectrum at full strength, even for black.
    for (const int mode : {0, 6}) {
        RenderSlider(Mode(mode), ColorComponents{}, kWebAdjustOff, slider.data());
        EXPECT_EQ(slider[0], 0xFF0000U) << "hue 359";
        EXPECT_EQ(slider[255], 0xFF0000U) << "hue 0";
        for (const std::uint32_t pixel : slider) {
            const std::uint32_t channels[] = {pixel >> 16, (pixel >> 8) & 0xFF, pixel & 0xFF};
            EXPECT_EQ(*std::max_element(std::begin(channels), std::end(channels)), 0xFFU) << std::hex << pixel;
            EXPECT_EQ(*std::min_element(std::begin(channels), std::end(channels)), 0U) << std::hex << pixel;
        }
    }
}

TEST(ColorHex, FormatAfterTheWebMask)
{
    const struct {
        Color color;
        unsigned int mask;
        const wchar_t* text;
    } cases[] = {
        {{1, 2, 3}, kWebAdjustOff, L"010203"},       {{0, 0, 0}, kWebAdjustOff, L"000000"},
        {{255, 255, 255}, kWebAdjustOff, L"FFFFFF"}, {{0xFF, 0x7F, 0x33}, kWebAdjustOn, L"E06020"},
        {{0x9F, 0x40, 0x1F}, kWebAdjustOn, L"804000"}, {Color(0xAB030201UL), kWebAdjustOff, L"010203"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FormatHexText(c.color, c.mask), c.text) << Describe(c.color);
    }
    EXPECT_EQ(ApplyWebAdjust({0x9F, 0x40, 0x1F}, kWebAdjustOn), Color(0x80, 0x40, 0x00));
    EXPECT_EQ(ApplyWebAdjust(Color(0xFF1F409FUL), kWebAdjustOff), Color(0x9F, 0x40, 0x1F)) << "bits 24-31 cleared";
}

TEST(ColorHex, ParseUpToSixDigits)
{
    const struct {
        const wchar_t* text;
        bool read;
        Color color;
    } cases[] = {
        {L"ff8000", true, {255, 128, 0}},     {L"FF8000", true, {255, 128, 0}},       {L"ff", true, {0, 0, 255}},
        {L"1234567", true, {0x12, 0x34, 0x56}}, {L"0a0b0cZZ", true, {10, 11, 12}},     {L"xyz", false, {7, 7, 7}},
        {L"", false, {7, 7, 7}},              {L"\u00e9ff", false, {7, 7, 7}},
    };
    for (const auto& c : cases) {
        Color color(7, 7, 7);
        EXPECT_EQ(ParseHexText(c.text, color), c.read) << Describe(c.color);
        EXPECT_EQ(color, c.color);
    }
}

TEST(ColorBroadcastSafe, ReplacesColoursBeyondTheLimits)
{
    const struct {
        Color in;
        bool safe;
        Color out;
    } cases[] = {
        {{0, 0, 255}, true, {0, 0, 255}},   {{200, 50, 50}, true, {200, 50, 50}}, {{255, 0, 0}, false, {201, 0, 0}},
        {{255, 255, 0}, false, {223, 223, 42}}, {{0, 255, 0}, false, {0, 228, 0}},
        {Color(0x5A0000FFUL), false, Color(0x5A0000C9UL)}, {Color(0x5AFF0000UL), true, Color(0x5AFF0000UL)},
        {{0, 165, 235}, false, {0, 158, 223}}, // pulled toward the exact luma; the fixed-point one gives 222
        // A scale a hair above 1 pulls blue just below 0: it stays 0, and the colour may come back unchanged.
        {{112, 208, 0}, false, {111, 208, 0}}, {{0, 144, 254}, true, {0, 144, 254}},
    };
    for (const auto& c : cases) {
        Color out(0x11111111UL);
        EXPECT_EQ(TestBroadcastSafe(c.in, out), c.safe) << Describe(c.in);
        EXPECT_EQ(out.GetValue(), c.out.GetValue()) << Describe(c.in);
    }
    for (int level = 0; level < 256; ++level) {
        const Color grey(level, level, level);
        Color out;
        EXPECT_TRUE(TestBroadcastSafe(grey, out)) << level;
        EXPECT_EQ(out, grey);
    }
}

TEST(ColorRecord, DefaultsAndColourComparison)
{
    const ColorPickerModel fresh;
    EXPECT_EQ(std::tuple(fresh.GetMode(), fresh.GetColorRGB().GetValue(), fresh.GetHexString()),
              std::tuple(kTarvixColorPickerMode_Hue, 0UL, std::wstring(L"000000")));
    EXPECT_EQ((std::array{fresh.GetSquareViewCoords(), fresh.GetSliderViewCoords(), fresh.GetChipViewCoords(),
                          fresh.GetNTSCViewCoords()}),
              (std::array<ViewPoint, 4>{{{0, 255}, {0, 255}, {0, 80}, {0, 0}}}));

    ColorPickerModel other;
    other.SetColorRGB(Color(0xAB030201UL));
    EXPECT_EQ(other.GetColorRGB().GetValue(), 0x030201UL);
    other.SetMode(kTarvixColorPickerMode_YUV_V);
    other.SetColorHSB(10, 0.5F, 0.5F);
    other.SetHexString(L"FFFFFF");
    ColorPickerModel same;
    same.SetColorRGB(Color(1, 2, 3));
    EXPECT_TRUE(other.SameColor(same));
    same.SetBlue(4);
    EXPECT_FALSE(other.SameColor(same));
}

} // namespace
