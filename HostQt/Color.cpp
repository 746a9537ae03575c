// Colour-space conversions: HSV and HSL on normalised floats, computed in double, and 8-bit YUV
// with the BT.601 weights. Plain arithmetic, no toolkit.

#include "KOR/Color.h"

#include <algorithm>
#include <cmath>

namespace KOR {

namespace {

// What HSV and HSL share: the largest and smallest channel, and the hue when there is one.
struct Hexcone {
    double max;
    double min;
    bool hasHue; // max above min: not a grey
    float hue;   // 0 up to but excluding 1; 0 for a grey
};

Hexcone HexconeOf(float inRed, float inGreen, float inBlue)
{
    const double red = inRed;
    const double green = inGreen;
    const double blue = inBlue;
    Hexcone cone{std::max({red, green, blue}), std::min({red, green, blue}), false, 0.0F};
    cone.hasHue = cone.max != cone.min;
    if (!cone.hasHue) {
        return cone;
    }
    const double chroma = cone.max - cone.min;
    double sixths = 0.0;
    if (cone.max == red) {
        sixths = (green - blue) / chroma;
        if (sixths < 0.0) {
            sixths += 6.0;
        }
    } else if (cone.max == green) {
        sixths = (blue - red) / chroma + 2.0;
    } else {
        sixths = (red - green) / chroma + 4.0;
    }
    cone.hue = static_cast<float>(sixths / 6.0);
    return cone;
}

// Sixths of the circle, 0 up to but excluding 6: hue 1 is the same red as hue 0. Whole pictures
// are converted pixel by pixel, so the usual hue from 0 to 1 skips std::fmod.
double SixthsOf(float inHue)
{
    const double sixths = static_cast<double>(inHue) * 6.0;
    if (sixths >= 0.0 && sixths < 6.0) {
        return sixths;
    }
    const double wrapped = std::fmod(sixths, 6.0);
    return wrapped < 0.0 ? wrapped + 6.0 : wrapped;
}

// The channels of a colour whose largest channel is inMax and smallest inMin, at hue inSixths
// (0 up to 6): in each sixth of the circle one channel is the largest, one the smallest and the
// third rises or falls between them.
void ChannelsFromHue(double inSixths, double inMax, double inMin, float& outRed, float& outGreen, float& outBlue)
{
    const int sector = std::min(static_cast<int>(inSixths), 5);
    const double fraction = inSixths - sector;
    const double rising = inMin + (inMax - inMin) * fraction;
    const double falling = inMax - (inMax - inMin) * fraction;
    double red = inMax;
    double green = inMax;
    double blue = inMax;
    switch (sector) {
    case 0:
        green = rising;
        blue = inMin;
        break;
    case 1:
        red = falling;
        blue = inMin;
        break;
    case 2:
        red = inMin;
        blue = rising;
        break;
    case 3:
        red = inMin;
        green = falling;
        break;
    case 4:
        red = rising;
        green = inMin;
        break;
    default:
        green = inMin;
        blue = falling;
        break;
    }
    outRed = static_cast<float>(red);
    outGreen = static_cast<float>(green);
    outBlue = static_cast<float>(blue);
}

// Rounds to nearest, halves away from zero, as std::lround does but without a library call (whole
// pictures are converted): adding the double just below 0.5 keeps a value just below a
// half from rounding up. Exact for magnitudes far below 2^52.
long RoundHalfAway(double inValue)
{
    return static_cast<long>(inValue + std::copysign(0.49999999999999994, inValue));
}

std::uint8_t ToByte(long inValue, bool& ioClipped)
{
    if (inValue < 0 || inValue > 255) {
        ioClipped = true;
    }
    return static_cast<std::uint8_t>(std::clamp(inValue, 0L, 255L));
}

std::int8_t ToSignedByte(double inValue)
{
    return static_cast<std::int8_t>(std::clamp(RoundHalfAway(inValue), -128L, 127L));
}

void SetFlags(bool* outHueMeaningful, bool inHue, bool* outSaturationMeaningful, bool inSaturation)
{
    if (outHueMeaningful) {
        *outHueMeaningful = inHue;
    }
    if (outSaturationMeaningful) {
        *outSaturationMeaningful = inSaturation;
    }
}

constexpr double kLumaRed = 0.299;
constexpr double kLumaGreen = 0.587;
constexpr double kLumaBlue = 0.114;
// U and V span half the channel range each way: the largest B - Y (or R - Y) is scaled to 0.5.
constexpr double kUScale = 0.5 / (1.0 - kLumaBlue);
constexpr double kVScale = 0.5 / (1.0 - kLumaRed);

} // namespace

void NormalizedRGBtoHSV(float inRed, float inGreen, float inBlue, float& outHue, float& outSaturation,
                        float& outValue, bool* outHueMeaningful, bool* outSaturationMeaningful)
{
    const Hexcone cone = HexconeOf(inRed, inGreen, inBlue);
    const bool hasSaturation = cone.max > 0.0;
    outHue = cone.hue;
    outSaturation = hasSaturation ? static_cast<float>((cone.max - cone.min) / cone.max) : 0.0F;
    outValue = static_cast<float>(cone.max);
    SetFlags(outHueMeaningful, cone.hasHue, outSaturationMeaningful, hasSaturation);
}

void NormalizedRGBtoHSL(float inRed, float inGreen, float inBlue, float& outHue, float& outSaturation,
                        float& outLightness, bool* outHueMeaningful, bool* outSaturationMeaningful)
{
    const Hexcone cone = HexconeOf(inRed, inGreen, inBlue);
    const double lightness = (cone.max + cone.min) / 2.0;
    const bool hasSaturation = lightness > 0.0 && lightness < 1.0;
    outHue = cone.hue;
    outSaturation =
        hasSaturation ? static_cast<float>((cone.max - cone.min) / (1.0 - std::abs(2.0 * lightness - 1.0))) : 0.0F;
    outLightness = static_cast<float>(lightness);
    SetFlags(outHueMeaningful, cone.hasHue, outSaturationMeaningful, hasSaturation);
}

void NormalizedHSVtoRGB(float inHue, float inSaturation, float inValue, float& outRed, float& outGreen,
                        float& outBlue)
{
    const double value = inValue;
    ChannelsFromHue(SixthsOf(inHue), value, value * (1.0 - inSaturation), outRed, outGreen, outBlue);
}

void NormalizedHSLtoRGB(float inHue, float inSaturation, float inLightness, float& outRed, float& outGreen,
                        float& outBlue)
{
    const double lightness = inLightness;
    const double chroma = (1.0 - std::abs(2.0 * lightness - 1.0)) * inSaturation;
    const double min = lightness - chroma / 2.0;
    ChannelsFromHue(SixthsOf(inHue), min + chroma, min, outRed, outGreen, outBlue);
}

void ColorRGBtoYUV(const ParamColor<unsigned long>& inColor, std::uint8_t& outY, std::int8_t& outU, std::int8_t& outV)
{
    const double red = inColor.Red();
    const double blue = inColor.Blue();
    const double luma = kLumaRed * red + kLumaGreen * inColor.Green() + kLumaBlue * blue;
    outY = static_cast<std::uint8_t>(std::clamp(RoundHalfAway(luma), 0L, 255L));
    outU = ToSignedByte((blue - luma) * kUScale);
    outV = ToSignedByte((red - luma) * kVScale);
}

bool ColorYUVtoRGB(std::uint8_t inY, std::int8_t inU, std::int8_t inV, ParamColor<unsigned long>& outColor)
{
    const double y = inY;
    bool clipped = false;
    const std::uint8_t red = ToByte(RoundHalfAway(y + 1.402 * inV), clipped);
    const std::uint8_t green = ToByte(RoundHalfAway(y - 0.344136 * inU - 0.714136 * inV), clipped);
    const std::uint8_t blue = ToByte(RoundHalfAway(y + 1.772 * inU), clipped);
    outColor = ParamColor<unsigned long>(red, green, blue);
    return !clipped;
}

} // namespace KOR
