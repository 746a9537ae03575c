#pragma once

#include <cstdint>
#include <string>

#include "DLG/Export.h"
#include "KOR/Color.h"
#include "zelcore/Geom.h"

// The picker's modes: which component lies on the slider. The value is the index of the mode's
// radio button, so the order is fixed. Groups of three: HSB, RGB, HSL, YUV.
enum TarvixColorPickerMode {
    kTarvixColorPickerMode_Hue = 0,
    kTarvixColorPickerMode_Saturation,
    kTarvixColorPickerMode_Brightness,
    kTarvixColorPickerMode_Red,
    kTarvixColorPickerMode_Green,
    kTarvixColorPickerMode_Blue,
    kTarvixColorPickerMode_HSL_H,
    kTarvixColorPickerMode_HSL_S,
    kTarvixColorPickerMode_HSL_L,
    kTarvixColorPickerMode_YUV_Y,
    kTarvixColorPickerMode_YUV_U,
    kTarvixColorPickerMode_YUV_V,
};

namespace DLG::ColorPicker {

using ViewPoint = zelcore::geom::PointT<float>;

// A snapshot of everything the picker shows. It only stores: no setter converts or checks, and
// nothing recomputes one description from another. Controls make a changed copy and hand it
// to the container, which takes over the one part that differs.
class DLG_API ColorPickerModel {
public:
    ColorPickerModel() = default;
    virtual ~ColorPickerModel();
    ColorPickerModel(const ColorPickerModel&) = default;
    ColorPickerModel& operator=(const ColorPickerModel&) = default;

    TarvixColorPickerMode GetMode() const { return mMode; }
    void SetMode(TarvixColorPickerMode inMode) { mMode = inMode; }

    std::uint8_t GetRed() const { return mRed; }
    std::uint8_t GetGreen() const { return mGreen; }
    std::uint8_t GetBlue() const { return mBlue; }
    void SetRed(std::uint8_t inRed) { mRed = inRed; }
    void SetGreen(std::uint8_t inGreen) { mGreen = inGreen; }
    void SetBlue(std::uint8_t inBlue) { mBlue = inBlue; }
    // The three channels packed, bits 24-31 zero.
    KOR::ParamColor<unsigned long> GetColorRGB() const { return {mRed, mGreen, mBlue}; }
    // Takes the three low bytes of inColor.
    void SetColorRGB(const KOR::ParamColor<unsigned long>& inColor);

    float GetHue() const { return mHue; }
    float GetSaturation() const { return mSaturation; }
    float GetBrightness() const { return mBrightness; }
    void SetHue(float inHue) { mHue = inHue; }
    void SetSaturation(float inSaturation) { mSaturation = inSaturation; }
    void SetBrightness(float inBrightness) { mBrightness = inBrightness; }
    void GetColorHSB(float& outHue, float& outSaturation, float& outBrightness) const;
    void SetColorHSB(float inHue, float inSaturation, float inBrightness);

    float GetHSL_H() const { return mHSL_H; }
    float GetHSL_S() const { return mHSL_S; }
    float GetHSL_L() const { return mHSL_L; }
    void SetHSL_H(float inHue) { mHSL_H = inHue; }
    void SetHSL_S(float inSaturation) { mHSL_S = inSaturation; }
    void SetHSL_L(float inLightness) { mHSL_L = inLightness; }
    void GetColorHSL(float& outHue, float& outSaturation, float& outLightness) const;
    void SetColorHSL(float inHue, float inSaturation, float inLightness);

    std::uint8_t GetYUV_Y() const { return mYUV_Y; }
    std::int8_t GetYUV_U() const { return mYUV_U; }
    std::int8_t GetYUV_V() const { return mYUV_V; }
    void SetYUV_Y(std::uint8_t inY) { mYUV_Y = inY; }
    void SetYUV_U(std::int8_t inU) { mYUV_U = inU; }
    void SetYUV_V(std::int8_t inV) { mYUV_V = inV; }
    void GetColorYUV(std::uint8_t& outY, std::int8_t& outU, std::int8_t& outV) const;
    void SetColorYUV(std::uint8_t inY, std::int8_t inU, std::int8_t inV);

    // View positions, in the views' value units (0 to 255 on each axis).
    const ViewPoint& GetSquareViewCoords() const { return mSquareViewCoords; }
    const ViewPoint& GetSliderViewCoords() const { return mSliderViewCoords; }
    const ViewPoint& GetChipViewCoords() const { return mChipViewCoords; }
    const ViewPoint& GetNTSCViewCoords() const { return mNTSCViewCoords; }
    void SetSquareViewCoords(const ViewPoint& inPoint) { mSquareViewCoords = inPoint; }
    void SetSliderViewCoords(const ViewPoint& inPoint) { mSliderViewCoords = inPoint; }
    void SetChipViewCoords(const ViewPoint& inPoint) { mChipViewCoords = inPoint; }
    void SetNTSCViewCoords(const ViewPoint& inPoint) { mNTSCViewCoords = inPoint; }

    // Two words that travel with the record and mean nothing to the picker.
    std::uint32_t GetUserData1() const { return mUserData1; }
    std::uint32_t GetUserData2() const { return mUserData2; }
    void SetUserData1(std::uint32_t inData) { mUserData1 = inData; }
    void SetUserData2(std::uint32_t inData) { mUserData2 = inData; }

    const std::wstring& GetHexString() const { return mHexString; }
    void SetHexString(const std::wstring& inText) { mHexString = inText; }

    // Two records hold the same colour when red, green and blue agree; nothing else counts.
    bool SameColor(const ColorPickerModel& inOther) const;

private:
    TarvixColorPickerMode mMode = kTarvixColorPickerMode_Hue;
    std::uint8_t mRed = 0;
    std::uint8_t mGreen = 0;
    std::uint8_t mBlue = 0;
    float mHue = 0.0F;
    float mSaturation = 0.0F;
    float mBrightness = 0.0F;
    float mHSL_H = 0.0F;
    float mHSL_S = 0.0F;
    float mHSL_L = 0.0F;
    std::uint8_t mYUV_Y = 0;
    std::int8_t mYUV_U = 0;
    std::int8_t mYUV_V = 0;
    ViewPoint mSquareViewCoords{0.0F, 255.0F};
    ViewPoint mSliderViewCoords{0.0F, 255.0F};
    ViewPoint mChipViewCoords{0.0F, 80.0F};
    ViewPoint mNTSCViewCoords{0.0F, 0.0F};
    std::uint32_t mUserData1 = 0;
    std::uint32_t mUserData2 = 0;
    std::wstring mHexString = L"000000";
};

} // namespace DLG::ColorPicker
