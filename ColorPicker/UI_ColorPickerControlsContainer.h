#pragma once

#include <array>
#include <string>

#include <boost/intrusive_ptr.hpp>

#include "ColorPicker/ColorComponents.h"
#include "ColorPicker/ColorPickerModel.h"
#include "DLG/Export.h"
#include "KOR/Color.h"
#include "zelui/Controls.h"
#include "zelui/HotTextNumber.h"
#include "zelui/UI_Container.h"

namespace DLG::ColorPicker {

class SquareView;
class SliderView;
class ChipView;
class NTSCView;

// The picker's panel: the mode radios, the twelve number fields, the hex field, the web-safe
// box, the broadcast-safe button and the four views. Every user action becomes a changed copy
// of the current record that goes through ModelUpdate, which takes over the one part that
// changed and brings every field and view in line with it.
class DLG_API UI_ColorPickerControlsContainer : public zelui::ui::UI_Container {
public:
    // The message kind of a number field that carries a new value (a typed value, a drag step, an
    // arrow key, a drag put back by Escape); other kinds are ignored.
    static constexpr int kValueChangedMessage = zelui::controls::kInteractive_Continue;

    UI_ColorPickerControlsContainer(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                                    const KOR::ParamColor<unsigned long>& inColor, TarvixColorPickerMode inMode,
                                    bool inHDRSupported);
    ~UI_ColorPickerControlsContainer() override;

    // Builds the controls and views and loads inColor in inMode.
    void InitializeView(const KOR::ParamColor<unsigned long>& inColor, TarvixColorPickerMode inMode);
    // Takes a colour from outside: every description is derived from its RGB.
    void InitRGB(const KOR::ParamColor<unsigned long>& inColor);
    void SetMode(TarvixColorPickerMode inMode);

    // Applies the first part of inNewModel that differs from the current record, and only that.
    void ModelUpdate(const ColorPickerModel* inNewModel);
    // Derives every other description from the source mode's group. With inFromUser the source
    // group's fields stay as the user left them and the hex text is rewritten; without it the
    // source fields are rewritten and the hex text is left alone.
    void UpdateTextEntries(TarvixColorPickerMode inSourceMode, bool inFromUser);
    // Reads a typed hex text; one that does not start with a hex digit changes no colour.
    void SetHexString(const std::wstring& inText);
    // Shows inColor's hex text (after the web mask) and keeps it as the record's.
    void SetWebText(const KOR::ParamColor<unsigned long>& inColor);

    // One component each: stored as given (stored units) and shown in its field.
    void SetHueValue(float inHue);
    void SetSaturationValue(float inSaturation);
    void SetBrightnessValue(float inBrightness);
    void SetRedValue(std::uint8_t inRed);
    void SetGreenValue(std::uint8_t inGreen);
    void SetBlueValue(std::uint8_t inBlue);
    void SetHSL_HValue(float inHue);
    void SetHSL_SValue(float inSaturation);
    void SetHSL_LValue(float inLightness);
    void SetYUV_YValue(std::uint8_t inY);
    void SetYUV_UValue(std::int8_t inU);
    void SetYUV_VValue(std::int8_t inV);

    // Positions from the views, in value units.
    void SetSquareViewCoords(const ViewPoint& inPoint);
    void SetSliderViewCoords(const ViewPoint& inPoint);
    void SetChipViewCoords(const ViewPoint& inPoint);
    void SetNTSCViewCoords(const ViewPoint& inPoint);

    // Control handlers.
    void RadioButtonChanged();
    void HotTextNumberChanged(zelui::controls::UI_HotTextNumber* inField, int inMessage);
    void TextEditChanged();
    void WebSafeCheckboxChanged();
    void NTSCButtonChanged();
    // Takes what the user is still typing: a number field's open text and the hex field's.
    void CommitPendingEdits();

    ColorPickerModel& GetModel() { return mModel; }
    const ColorPickerModel& GetConstModel() const { return mModel; }
    const ColorComponents& GetComponents() const { return mComponents; }
    unsigned int GetWebAdjust() const { return mWebAdjust; }
    bool IsHDRSupported() const { return mHDRSupported; }
    // The colour handed back: the record's channels each ANDed with the web mask.
    KOR::ParamColor<unsigned long> GetMaskedColor() const;

    boost::intrusive_ptr<SquareView> GetSquareView() const;
    boost::intrusive_ptr<SliderView> GetSliderView() const;
    boost::intrusive_ptr<ChipView> GetChipView() const;
    boost::intrusive_ptr<NTSCView> GetNTSCView() const;

    // The room the controls take.
    static constexpr int kContentWidth = 580;
    static constexpr int kContentHeight = 312;

private:
    void BuildViews();
    void BuildModeControls();
    void BuildHexAndWebControls();
    // Shows a component's stored value in its field.
    void ShowField(TarvixColorPickerMode inMode);
    void ShowGroupFields(ColorGroup inGroup);
    // The record takes the working components and the views' positions for them.
    void StoreComponents();
    void RefreshViews();
    void RefreshNTSCButton();

    const zelui::drawbot::SupplierInterface* mSupplier;
    ColorPickerModel mModel;
    ColorComponents mComponents;
    KOR::ParamColor<unsigned long> mOriginalColor;
    unsigned int mWebAdjust = kWebAdjustOff;
    std::wstring mHexString;
    bool mHDRSupported;

    boost::intrusive_ptr<zelui::controls::UI_RadioGroup> mModeRadios;
    std::array<boost::intrusive_ptr<zelui::controls::UI_HotTextNumber>, 12> mFields;
    boost::intrusive_ptr<zelui::controls::UI_TextEdit> mHexEdit;
    boost::intrusive_ptr<zelui::controls::UI_CheckBox> mWebSafeBox;
    boost::intrusive_ptr<zelui::controls::UI_PictureButton> mNTSCButton;
    boost::intrusive_ptr<SquareView> mSquareView;
    boost::intrusive_ptr<SliderView> mSliderView;
    boost::intrusive_ptr<ChipView> mChipView;
    boost::intrusive_ptr<NTSCView> mNTSCView;
};

} // namespace DLG::ColorPicker
