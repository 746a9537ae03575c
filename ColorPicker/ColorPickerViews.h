#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "ColorPicker/ColorComponents.h"
#include "KOR/Color.h"
#include "zelui/UI_SubView.h"

namespace DLG::ColorPicker {

class UI_ColorPickerControlsContainer;

// A field of colours with a marker where the current colour lies: the square (two axes) or the
// slider (one). Dragging or clicking moves the marker, and so do the arrow keys (ten steps with
// Shift); each move goes to the container as a changed record. The picture is computed again
// only when what it shows changed, not when only the marker moved.
class ColorFieldView : public zelui::ui::UI_SubView {
public:
    void SetWebAdjust(unsigned int inWebAdjust);
    // The mode and colour to show; the view redraws when it shows something else now.
    void ShowColor(TarvixColorPickerMode inMode, const ColorComponents& inColor);
    const ViewPoint& GetMarker() const { return mMarker; }
    // The value-unit position of a point in the view, clamped to 0-255 on each axis.
    ViewPoint PositionAt(int inX, int inY) const;

    void UI_Draw(zelui::drawbot::DrawInterface& ioDrawer) override;
    bool UI_DoMouseEvent(zelui::ui::UI_Node* inNode, const zelui::ui::MouseEvent& inEvent) override;
    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override;

protected:
    ColorFieldView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                   const std::wstring& inName, UI_ColorPickerControlsContainer& inContainer, int inPictureWidth);

    // What the picture depends on besides the mode and the web mask.
    virtual std::array<float, 2> PictureKey(TarvixColorPickerMode inMode, const ColorComponents& inColor) const = 0;
    virtual void Render(TarvixColorPickerMode inMode, const ColorComponents& inColor, std::uint32_t* outPixels) const = 0;
    virtual ViewPoint MarkerOf(TarvixColorPickerMode inMode, const ColorComponents& inColor) const = 0;
    virtual void DrawMarker(zelui::drawbot::DrawInterface& ioDrawer, const zelui::ui::Rect& inBounds) const = 0;
    // What the marker at inMarker covers, so that a move redraws only there.
    virtual zelui::ui::Rect MarkerArea(const ViewPoint& inMarker, const zelui::ui::Rect& inBounds) const = 0;
    // Hands a new position to the container.
    virtual void SendPosition(const ViewPoint& inPosition) = 0;
    virtual bool HasHorizontalAxis() const = 0;

    UI_ColorPickerControlsContainer& mContainer;
    ViewPoint mMarker{0.0F, 0.0F};
    // The marker's colour: one that shows on the colour under it.
    zelui::drawbot::RGBColor mMarkerColor;

private:
    void MoveMarkerBy(float inDeltaX, float inDeltaY);

    int mPictureWidth;
    std::vector<std::uint32_t> mPixels;
    bool mPictureValid = false;
    TarvixColorPickerMode mMode = kTarvixColorPickerMode_Hue;
    unsigned int mWebAdjust = kWebAdjustOff;
    std::array<float, 2> mPictureKey{};
    ColorComponents mColor;
    bool mDragging = false;
};

// The two components of the mode's description that are not on the slider.
class SquareView : public ColorFieldView {
public:
    SquareView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
               UI_ColorPickerControlsContainer& inContainer);

protected:
    std::array<float, 2> PictureKey(TarvixColorPickerMode inMode, const ColorComponents& inColor) const override;
    void Render(TarvixColorPickerMode inMode, const ColorComponents& inColor, std::uint32_t* outPixels) const override;
    ViewPoint MarkerOf(TarvixColorPickerMode inMode, const ColorComponents& inColor) const override;
    void DrawMarker(zelui::drawbot::DrawInterface& ioDrawer, const zelui::ui::Rect& inBounds) const override;
    zelui::ui::Rect MarkerArea(const ViewPoint& inMarker, const zelui::ui::Rect& inBounds) const override;
    void SendPosition(const ViewPoint& inPosition) override;
    bool HasHorizontalAxis() const override { return true; }
};

// The mode's own component, from 255 at the top to 0 at the bottom.
class SliderView : public ColorFieldView {
public:
    SliderView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
               UI_ColorPickerControlsContainer& inContainer);

protected:
    std::array<float, 2> PictureKey(TarvixColorPickerMode inMode, const ColorComponents& inColor) const override;
    void Render(TarvixColorPickerMode inMode, const ColorComponents& inColor, std::uint32_t* outPixels) const override;
    ViewPoint MarkerOf(TarvixColorPickerMode inMode, const ColorComponents& inColor) const override;
    void DrawMarker(zelui::drawbot::DrawInterface& ioDrawer, const zelui::ui::Rect& inBounds) const override;
    zelui::ui::Rect MarkerArea(const ViewPoint& inMarker, const zelui::ui::Rect& inBounds) const override;
    void SendPosition(const ViewPoint& inPosition) override;
    bool HasHorizontalAxis() const override { return false; }
};

// The new colour (as it will be handed back) above the colour the picker opened with. A click
// on the lower half, or Space while the chip has the focus, brings the opening colour back; a
// click on the upper half keeps the exact current colour.
class ChipView : public zelui::ui::UI_SubView {
public:
    ChipView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
             UI_ColorPickerControlsContainer& inContainer, const KOR::ParamColor<unsigned long>& inOriginal);

    void ShowColor(const KOR::ParamColor<unsigned long>& inNewColor);
    // The colour shown at a position in chip units (the view's pixels).
    KOR::ParamColor<unsigned long> GetColorAt(const ViewPoint& inPosition) const;

    void UI_Draw(zelui::drawbot::DrawInterface& ioDrawer) override;
    bool UI_DoMouseEvent(zelui::ui::UI_Node* inNode, const zelui::ui::MouseEvent& inEvent) override;
    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override;

private:
    void Send(const ViewPoint& inPosition);

    UI_ColorPickerControlsContainer& mContainer;
    KOR::ParamColor<unsigned long> mOriginal;
    KOR::ParamColor<unsigned long> mNewColor;
};

// Shows, when the colour is not broadcast-safe, a warning beside the nearest safe colour; a
// click (or Space while it has the focus) takes the safe colour. Once the colour is safe the
// view is empty and hands the focus to the square.
class NTSCView : public zelui::ui::UI_SubView {
public:
    NTSCView(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
             UI_ColorPickerControlsContainer& inContainer);

    void ShowColor(const KOR::ParamColor<unsigned long>& inColor);
    bool IsSafe() const { return mSafe; }
    // The colour to use: the shown colour when it is safe, the safe replacement when not.
    KOR::ParamColor<unsigned long> GetSafeColor() const { return mSafeColor; }

    void UI_Draw(zelui::drawbot::DrawInterface& ioDrawer) override;
    bool UI_DoMouseEvent(zelui::ui::UI_Node* inNode, const zelui::ui::MouseEvent& inEvent) override;
    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override;

private:
    void Send(const ViewPoint& inPosition);

    UI_ColorPickerControlsContainer& mContainer;
    KOR::ParamColor<unsigned long> mColor;
    KOR::ParamColor<unsigned long> mSafeColor;
    bool mSafe = true;
};

} // namespace DLG::ColorPicker
