#include "ColorPicker/ColorPickerModel.h"

namespace DLG::ColorPicker {

ColorPickerModel::~ColorPickerModel() = default;

void ColorPickerModel::SetColorRGB(const KOR::ParamColor<unsigned long>& inColor)
{
    mRed = inColor.Red();
    mGreen = inColor.Green();
    mBlue = inColor.Blue();
}

void ColorPickerModel::GetColorHSB(float& outHue, float& outSaturation, float& outBrightness) const
{
    outHue = mHue;
    outSaturation = mSaturation;
    outBrightness = mBrightness;
}

void ColorPickerModel::SetColorHSB(float inHue, float inSaturation, float inBrightness)
{
    mHue = inHue;
    mSaturation = inSaturation;
    mBrightness = inBrightness;
}

void ColorPickerModel::GetColorHSL(float& outHue, float& outSaturation, float& outLightness) const
{
    outHue = mHSL_H;
    outSaturation = mHSL_S;
    outLightness = mHSL_L;
}

void ColorPickerModel::SetColorHSL(float inHue, float inSaturation, float inLightness)
{
    mHSL_H = inHue;
    mHSL_S = inSaturation;
    mHSL_L = inLightness;
}

void ColorPickerModel::GetColorYUV(std::uint8_t& outY, std::int8_t& outU, std::int8_t& outV) const
{
    outY = mYUV_Y;
    outU = mYUV_U;
    outV = mYUV_V;
}

void ColorPickerModel::SetColorYUV(std::uint8_t inY, std::int8_t inU, std::int8_t inV)
{
    mYUV_Y = inY;
    mYUV_U = inU;
    mYUV_V = inV;
}

bool ColorPickerModel::SameColor(const ColorPickerModel& inOther) const
{
    return mRed == inOther.mRed && mGreen == inOther.mGreen && mBlue == inOther.mBlue;
}

} // namespace DLG::ColorPicker
