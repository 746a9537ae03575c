#include "ColorPicker/ColorPickerViews.h"

#include <algorithm>
#include <cmath>

#include "ColorPicker/UI_ColorPickerControlsContainer.h"
#include "KOR/Module.h"

namespace DLG::ColorPicker {

namespace {

using zelui::drawbot::RGBColor;
using zelui::ui::KeyboardEvent;
using zelui::ui::MouseEvent;
using zelui::ui::Rect;

constexpr float kMaxValue = 255.0F;
constexpr float kLargeStep = 10.0F;

RGBColor ToRGB(const KOR::ParamColor<unsigned long>& inColor) { return {inColor.Red(), inColor.Green(), inColor.Blue()}; }

// Black on light colours, white on dark ones, so that a marker shows on every colour.
RGBColor ContrastingColor(const KOR::ParamColor<unsigned long>& inColor)
{
    const int luma = (299 * inColor.Red() + 587 * inColor.Green() + 114 * inColor.Blue()) / 1000;
    return luma > 128 ? RGBColor{0, 0, 0} : RGBColor{255, 255, 255};
}

float Clamp(float inValue) { return std::clamp(inValue, 0.0F, kMaxValue); }

// The pixel at which a value 0-255 lies along inPixels pixels, value 0 on the first.
int PixelOf(float inValue, int inPixels)
{
    return static_cast<int>(std::lround(inValue / kMaxValue * static_cast<float>(inPixels - 1)));
}

bool IsActivationKey(const KeyboardEvent& inEvent)
{
    return inEvent.keyDown && inEvent.modifiers == 0 && inEvent.keyCode == zelui::ui::kKey_Character &&
           inEvent.character == L' ';
}

} // namespace

ColorFieldView::ColorFieldView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                               const std::wstring& inName, UI_ColorPickerControlsContainer& inContainer,
                               int inPictureWidth)
    : UI_SubView(inSupplier, inParent, inName),
      mContainer(inContainer),
      mPictureWidth(inPictureWidth),
      mPixels(static_cast<std::size_t>(inPictureWidth) * kFieldSize)
{
    SetWantsKeyboardFocus(true);
    SetCrossCursor(true);
}

void ColorFieldView::SetWebAdjust(unsigned int inWebAdjust)
{
    if (inWebAdjust != mWebAdjust) {
        mWebAdjust = inWebAdjust;
        mPictureValid = false;
        Invalidate();
    }
}

void ColorFieldView::ShowColor(TarvixColorPickerMode inMode, const ColorComponents& inColor)
{
    const std::array<float, 2> key = PictureKey(inMode, inColor);
    const ViewPoint marker = MarkerOf(inMode, inColor);
    const RGBColor markerColor = ContrastingColor(ApplyWebAdjust(inColor.GetRGB(), mWebAdjust));
    if (!mPictureValid || inMode != mMode || key != mPictureKey) {
        mPictureValid = false;
        mMode = inMode;
        mPictureKey = key;
        mColor = inColor;
        Invalidate();
    } else if (!(marker == mMarker) || !(markerColor == mMarkerColor)) {
        const Rect bounds = GetLocalRect();
        Invalidate(MarkerArea(mMarker, bounds));
        Invalidate(MarkerArea(marker, bounds));
    }
    mMarker = marker;
    mMarkerColor = markerColor;
}

ViewPoint ColorFieldView::PositionAt(int inX, int inY) const
{
    const Rect bounds = GetLocalRect();
    const float width = static_cast<float>(std::max(bounds.width - 1, 1));
    const float height = static_cast<float>(std::max(bounds.height - 1, 1));
    const float x = HasHorizontalAxis() ? Clamp(static_cast<float>(inX) * kMaxValue / width) : 0.0F;
    return {x, Clamp(kMaxValue - static_cast<float>(inY) * kMaxValue / height)};
}

void ColorFieldView::UI_Draw(zelui::drawbot::DrawInterface& ioDrawer)
{
    if (!mPictureValid) {
        Render(mMode, mColor, mPixels.data());
        if (mWebAdjust != kWebAdjustOff) {
            const std::uint32_t mask = mWebAdjust * 0x010101U;
            std::for_each(mPixels.begin(), mPixels.end(), [mask](std::uint32_t& ioPixel) { ioPixel &= mask; });
        }
        mPictureValid = true;
    }
    const Rect bounds = GetLocalRect();
    ioDrawer.DrawPixels({mPixels.data(), mPictureWidth, kFieldSize}, bounds);
    DrawMarker(ioDrawer, bounds);
    ioDrawer.FrameRect(bounds, zelui::drawbot::ColorRole::kFrame);
    if (HasFocus()) {
        ioDrawer.DrawFocusRing({bounds.left + 1, bounds.top + 1, bounds.width - 2, bounds.height - 2});
    }
}

bool ColorFieldView::UI_DoMouseEvent(zelui::ui::UI_Node*, const MouseEvent& inEvent)
{
    if (inEvent.button != 1) {
        return false;
    }
    switch (inEvent.type) {
    case MouseEvent::Type::kDown:
        mDragging = true;
        SetFocus();
        break;
    case MouseEvent::Type::kDrag:
        if (!mDragging) {
            return false;
        }
        break;
    case MouseEvent::Type::kUp: mDragging = false; return true;
    case MouseEvent::Type::kClick: return true;
    }
    SendPosition(PositionAt(inEvent.x, inEvent.y));
    return true;
}

bool ColorFieldView::UI_DoKeyboardEvent(zelui::ui::UI_Node*, const KeyboardEvent& inEvent)
{
    if (!inEvent.keyDown || (inEvent.modifiers & ~zelui::ui::kModifier_Shift) != 0) {
        return false;
    }
    const float step = (inEvent.modifiers & zelui::ui::kModifier_Shift) != 0 ? kLargeStep : 1.0F;
    switch (inEvent.keyCode) {
    case zelui::ui::kKey_Up: MoveMarkerBy(0.0F, step); return true;
    case zelui::ui::kKey_Down: MoveMarkerBy(0.0F, -step); return true;
    case zelui::ui::kKey_Left:
        if (!HasHorizontalAxis()) {
            return false;
        }
        MoveMarkerBy(-step, 0.0F);
        return true;
    case zelui::ui::kKey_Right:
        if (!HasHorizontalAxis()) {
            return false;
        }
        MoveMarkerBy(step, 0.0F);
        return true;
    default: return false;
    }
}

// Steps from the marker's whole value, so that a marker between two values lands on the next one.
void ColorFieldView::MoveMarkerBy(float inDeltaX, float inDeltaY)
{
    const auto stepped = [](float inValue, float inDelta) {
        if (inDelta == 0.0F) {
            return inValue;
        }
        const float whole = inDelta > 0.0F ? std::floor(inValue + 0.5F) : std::ceil(inValue - 0.5F);
        return Clamp(whole + inDelta);
    };
    SendPosition({stepped(mMarker.x, inDeltaX), stepped(mMarker.y, inDeltaY)});
}

SquareView::SquareView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                       UI_ColorPickerControlsContainer& inContainer)
    : ColorFieldView(inSupplier, inParent, L"SquareView", inContainer, kFieldSize)
{
}

// The square shows every value of its two components at the slider's value.
std::array<float, 2> SquareView::PictureKey(TarvixColorPickerMode inMode, const ColorComponents& inColor) const
{
    return {inColor.GetSliderPosition(inMode), 0.0F};
}

void SquareView::Render(TarvixColorPickerMode inMode, const ColorComponents& inColor, std::uint32_t* outPixels) const
{
    RenderSquare(inMode, inColor, kWebAdjustOff, outPixels);
}

ViewPoint SquareView::MarkerOf(TarvixColorPickerMode inMode, const ColorComponents& inColor) const
{
    return inColor.GetSquarePosition(inMode);
}

constexpr int kMarkerRadius = 5;

void SquareView::DrawMarker(zelui::drawbot::DrawInterface& ioDrawer, const Rect& inBounds) const
{
    const Rect area = MarkerArea(mMarker, inBounds);
    ioDrawer.FrameEllipse({area.left + 1, area.top + 1, area.width - 2, area.height - 2}, mMarkerColor);
    const RGBColor inner = mMarkerColor == RGBColor{0, 0, 0} ? RGBColor{255, 255, 255} : RGBColor{0, 0, 0};
    ioDrawer.FrameEllipse({area.left + 2, area.top + 2, area.width - 4, area.height - 4}, inner);
}

// The ring around the marker's point, with a pixel to spare for smoothing.
Rect SquareView::MarkerArea(const ViewPoint& inMarker, const Rect& inBounds) const
{
    const int x = inBounds.left + PixelOf(inMarker.x, inBounds.width);
    const int y = inBounds.top + inBounds.height - 1 - PixelOf(inMarker.y, inBounds.height);
    return {x - kMarkerRadius - 1, y - kMarkerRadius - 1, 2 * kMarkerRadius + 3, 2 * kMarkerRadius + 3};
}

void SquareView::SendPosition(const ViewPoint& inPosition)
{
    ColorPickerModel changed = mContainer.GetConstModel();
    changed.SetSquareViewCoords(inPosition);
    mContainer.ModelUpdate(&changed);
}

SliderView::SliderView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                       UI_ColorPickerControlsContainer& inContainer)
    : ColorFieldView(inSupplier, inParent, L"SliderView", inContainer, 1)
{
}

// The hue slider is the same rainbow whatever the colour; the others follow the square's values.
std::array<float, 2> SliderView::PictureKey(TarvixColorPickerMode inMode, const ColorComponents& inColor) const
{
    if (inMode == kTarvixColorPickerMode_Hue || inMode == kTarvixColorPickerMode_HSL_H) {
        return {0.0F, 0.0F};
    }
    const ViewPoint square = inColor.GetSquarePosition(inMode);
    return {square.x, square.y};
}

void SliderView::Render(TarvixColorPickerMode inMode, const ColorComponents& inColor, std::uint32_t* outPixels) const
{
    RenderSlider(inMode, inColor, kWebAdjustOff, outPixels);
}

ViewPoint SliderView::MarkerOf(TarvixColorPickerMode inMode, const ColorComponents& inColor) const
{
    return {0.0F, inColor.GetSliderPosition(inMode)};
}

void SliderView::DrawMarker(zelui::drawbot::DrawInterface& ioDrawer, const Rect& inBounds) const
{
    const Rect area = MarkerArea(mMarker, inBounds);
    ioDrawer.FrameRect(area, mMarkerColor);
    const RGBColor inner = mMarkerColor == RGBColor{0, 0, 0} ? RGBColor{255, 255, 255} : RGBColor{0, 0, 0};
    ioDrawer.FrameRect({area.left + 1, area.top + 1, area.width - 2, area.height - 2}, inner);
}

// A bar five pixels high across the slider.
Rect SliderView::MarkerArea(const ViewPoint& inMarker, const Rect& inBounds) const
{
    const int y = inBounds.top + inBounds.height - 1 - PixelOf(inMarker.y, inBounds.height);
    return {inBounds.left, y - 2, inBounds.width, 5};
}

void SliderView::SendPosition(const ViewPoint& inPosition)
{
    ColorPickerModel changed = mContainer.GetConstModel();
    changed.SetSliderViewCoords(inPosition);
    mContainer.ModelUpdate(&changed);
}

ChipView::ChipView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                   UI_ColorPickerControlsContainer& inContainer, const KOR::ParamColor<unsigned long>& inOriginal)
    : UI_SubView(inSupplier, inParent, L"ChipView"), mContainer(inContainer), mOriginal(inOriginal), mNewColor(inOriginal)
{
    SetWantsKeyboardFocus(true);
}

void ChipView::ShowColor(const KOR::ParamColor<unsigned long>& inNewColor)
{
    if (inNewColor != mNewColor) {
        mNewColor = inNewColor;
        Invalidate();
    }
}

KOR::ParamColor<unsigned long> ChipView::GetColorAt(const ViewPoint& inPosition) const
{
    // The upper half shows the colour masked; what it stands for is the exact colour.
    return inPosition.y < static_cast<float>(GetLocalRect().height) / 2.0F ? mContainer.GetConstModel().GetColorRGB()
                                                                            : mOriginal;
}

void ChipView::UI_Draw(zelui::drawbot::DrawInterface& ioDrawer)
{
    const Rect bounds = GetLocalRect();
    const int half = bounds.height / 2;
    ioDrawer.FillRect({bounds.left, bounds.top, bounds.width, half}, ToRGB(mNewColor));
    ioDrawer.FillRect({bounds.left, bounds.top + half, bounds.width, bounds.height - half}, ToRGB(mOriginal));
    ioDrawer.FrameRect(bounds, zelui::drawbot::ColorRole::kFrame);
    if (HasFocus()) {
        ioDrawer.DrawFocusRing({bounds.left + 1, bounds.top + half + 1, bounds.width - 2, bounds.height - half - 2});
    }
}

bool ChipView::UI_DoMouseEvent(zelui::ui::UI_Node*, const MouseEvent& inEvent)
{
    if (inEvent.type != MouseEvent::Type::kClick || inEvent.button != 1) {
        return false;
    }
    Send({static_cast<float>(inEvent.x) + 0.5F, static_cast<float>(inEvent.y) + 0.5F});
    return true;
}

bool ChipView::UI_DoKeyboardEvent(zelui::ui::UI_Node*, const KeyboardEvent& inEvent)
{
    if (!IsActivationKey(inEvent)) {
        return false;
    }
    Send({0.5F, static_cast<float>(GetLocalRect().height) - 0.5F});
    return true;
}

void ChipView::Send(const ViewPoint& inPosition)
{
    ColorPickerModel changed = mContainer.GetConstModel();
    changed.SetChipViewCoords(inPosition);
    mContainer.ModelUpdate(&changed);
}

NTSCView::NTSCView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                   UI_ColorPickerControlsContainer& inContainer)
    : UI_SubView(inSupplier, inParent, L"NTSCView"), mContainer(inContainer)
{
}

void NTSCView::ShowColor(const KOR::ParamColor<unsigned long>& inColor)
{
    if (inColor == mColor) {
        return;
    }
    mColor = inColor;
    const bool wasSafe = mSafe;
    const KOR::ParamColor<unsigned long> shownSafe = mSafeColor;
    mSafe = TestBroadcastSafe(inColor, mSafeColor);
    // A safe colour shows nothing, whichever it is.
    if (mSafe != wasSafe || (!mSafe && mSafeColor != shownSafe)) {
        if (mSafe && HasFocus()) {
            mContainer.GetSquareView()->SetFocus();
        }
        SetWantsKeyboardFocus(!mSafe);
        Invalidate();
    }
}

void NTSCView::UI_Draw(zelui::drawbot::DrawInterface& ioDrawer)
{
    if (mSafe) {
        return;
    }
    const Rect bounds = GetLocalRect();
    const int imageSize = std::min(bounds.height, 24);
    ioDrawer.DrawImage(L"ntsc-warning", {bounds.left, bounds.top, imageSize, imageSize});
    const Rect swatch{bounds.left + imageSize + 4, bounds.top, bounds.width - imageSize - 4, imageSize};
    ioDrawer.FillRect(swatch, ToRGB(mSafeColor));
    ioDrawer.FrameRect(swatch, zelui::drawbot::ColorRole::kFrame);
    ioDrawer.DrawText(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/NotBroadcastSafe=Not broadcast-safe"),
                      {bounds.left, bounds.top + imageSize + 2, bounds.width, bounds.height - imageSize - 2},
                      zelui::drawbot::ColorRole::kText);
    if (HasFocus()) {
        ioDrawer.DrawFocusRing(swatch);
    }
}

bool NTSCView::UI_DoMouseEvent(zelui::ui::UI_Node*, const MouseEvent& inEvent)
{
    if (mSafe || inEvent.type != MouseEvent::Type::kClick || inEvent.button != 1) {
        return false;
    }
    Send({static_cast<float>(inEvent.x) + 0.5F, static_cast<float>(inEvent.y) + 0.5F});
    return true;
}

bool NTSCView::UI_DoKeyboardEvent(zelui::ui::UI_Node*, const KeyboardEvent& inEvent)
{
    if (mSafe || !IsActivationKey(inEvent)) {
        return false;
    }
    Send({0.5F, 0.5F});
    return true;
}

void NTSCView::Send(const ViewPoint& inPosition)
{
    ColorPickerModel changed = mContainer.GetConstModel();
    changed.SetNTSCViewCoords(inPosition);
    mContainer.ModelUpdate(&changed);
}

} // namespace DLG::ColorPicker
