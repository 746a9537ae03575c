#pragma once

#include <cstdint>

#include "KOR/HostAPI.h"

namespace KOR {

template <class T>
class ParamColor;

// A colour packed in one word: red in bits 0-7, green in 8-15, blue in 16-23. The bits above
// belong to whoever made the colour and pass through unchanged.
template <>
class ParamColor<unsigned long> {
public:
    constexpr ParamColor() = default;
    constexpr explicit ParamColor(unsigned long inValue) : mValue(inValue) {}
    constexpr ParamColor(std::uint8_t inRed, std::uint8_t inGreen, std::uint8_t inBlue)
        : mValue(inRed | (static_cast<unsigned long>(inGreen) << 8) | (static_cast<unsigned long>(inBlue) << 16))
    {
    }

    constexpr unsigned long GetValue() const { return mValue; }
    constexpr void SetValue(unsigned long inValue) { mValue = inValue; }
    constexpr std::uint8_t Red() const { return static_cast<std::uint8_t>(mValue & 0xFF); }
    constexpr std::uint8_t Green() const { return static_cast<std::uint8_t>((mValue >> 8) & 0xFF); }
    constexpr std::uint8_t Blue() const { return static_cast<std::uint8_t>((mValue >> 16) & 0xFF); }

    friend constexpr bool operator==(const ParamColor&, const ParamColor&) = default;

private:
    unsigned long mValue = 0;
};

// Colour-space conversions on normalised values (0 to 1 for every component, hue included).
// The flags say whether the hue and the saturation mean anything for the colour given: a grey
// has no hue, and black (or, for HSL, white) has no saturation; a value that means nothing is
// returned as 0.
HOST_API void NormalizedRGBtoHSV(float inRed, float inGreen, float inBlue, float& outHue, float& outSaturation,
                                 float& outValue, bool* outHueMeaningful, bool* outSaturationMeaningful);
HOST_API void NormalizedRGBtoHSL(float inRed, float inGreen, float inBlue, float& outHue, float& outSaturation,
                                 float& outLightness, bool* outHueMeaningful, bool* outSaturationMeaningful);
// Hue 1 is the same red as hue 0. The arithmetic is in double; only the results are rounded to float.
HOST_API void NormalizedHSVtoRGB(float inHue, float inSaturation, float inValue, float& outRed, float& outGreen,
                                 float& outBlue);
HOST_API void NormalizedHSLtoRGB(float inHue, float inSaturation, float inLightness, float& outRed, float& outGreen,
                                 float& outBlue);

// 8-bit YUV with full-range luma (0 to 255) and U and V centred on 0 (-128 to 127), by the
// BT.601 weights on 0-255 channels: Y = 0.299 R + 0.587 G + 0.114 B, U = (B - Y) 0.5 / 0.886,
// V = (R - Y) 0.5 / 0.701, each rounded to nearest (halves away from zero) and clamped.
HOST_API void ColorRGBtoYUV(const ParamColor<unsigned long>& inColor, std::uint8_t& outY, std::int8_t& outU,
                            std::int8_t& outV);
// The colour of a YUV triple: R = Y + 1.402 V, G = Y - 0.344136 U - 0.714136 V, B = Y + 1.772 U,
// rounded like the above. Not every triple lies inside the RGB cube: such a colour is clipped to
// it, and the answer is false; true when no channel had to be clipped. A colour goes through
// YUV and back within one step per channel.
HOST_API bool ColorYUVtoRGB(std::uint8_t inY, std::int8_t inU, std::int8_t inV, ParamColor<unsigned long>& outColor);

} // namespace KOR
