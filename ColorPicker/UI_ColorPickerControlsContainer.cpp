#include "ColorPicker/UI_ColorPickerControlsContainer.h"

#include "ColorPicker/ColorPickerViews.h"
#include "DLG/HotNumberControl.h"
#include "KOR/Module.h"
#include "zelcore/Error.h"

namespace DLG::ColorPicker {

namespace {

using zelui::controls::UI_HotTextNumber;
using zelui::ui::Rect;

// Geometry: the square and slider on the left, the chips beside them, the twelve modes in a
// column on the right (a gap between descriptions), the hex field and web-safe box below.
constexpr int kMargin = 10;
constexpr Rect kSquareBounds{kMargin, kMargin, kFieldSize, kFieldSize};
constexpr Rect kSliderBounds{276, kMargin, 24, kFieldSize};
constexpr Rect kChipBounds{312, kMargin, 64, 80};
constexpr Rect kNTSCButtonBounds{382, kMargin, 28, 28};
constexpr Rect kNTSCViewBounds{312, 100, 124, 46};
constexpr int kRadioColumn = 446;
constexpr int kRadioWidth = 40;
constexpr int kFieldColumn = 488;
constexpr int kFieldWidth = 80;
constexpr int kRowHeight = 22;
constexpr int kGroupGap = 8;
constexpr int kBottomRow = 278;

int RowTop(int inIndex) { return kMargin + inIndex * kRowHeight + (inIndex / 3) * kGroupGap; }

// What assistive technology reads for each mode's radio and field: the labels alone ("H:",
// "S:") do not tell HSB from HSL.
constexpr std::array<const wchar_t*, 12> kAccessibleNames{
    L"$$$/zelui/sharedui/ColorPicker/HueName=Hue",
    L"$$$/zelui/sharedui/ColorPicker/SatName=Saturation",
    L"$$$/zelui/sharedui/ColorPicker/BriName=Brightness",
    L"$$$/zelui/sharedui/ColorPicker/RedName=Red",
    L"$$$/zelui/sharedui/ColorPicker/GreenName=Green",
    L"$$$/zelui/sharedui/ColorPicker/BlueName=Blue",
    L"$$$/zelui/sharedui/ColorPicker/HSLHName=HSL hue",
    L"$$$/zelui/sharedui/ColorPicker/HSLSName=HSL saturation",
    L"$$$/zelui/sharedui/ColorPicker/HSLLName=Lightness",
    L"$$$/zelui/sharedui/ColorPicker/YUVYName=Luma (Y)",
    L"$$$/zelui/sharedui/ColorPicker/YUVUName=Chroma U",
    L"$$$/zelui/sharedui/ColorPicker/YUVVName=Chroma V",
};

// The unit shown after each field's number.
const wchar_t* UnitOf(std::size_t inMode)
{
    switch (GroupOf(static_cast<TarvixColorPickerMode>(inMode))) {
    case ColorGroup::kHSB:
    case ColorGroup::kHSL: return inMode % 3 == 0 ? L"\u00B0" : L"%";
    default: return L"";
    }
}

// A float that compares unequal or unordered has changed.
bool Differs(float inA, float inB) { return !(inA == inB); }

constexpr ViewPoint kChipDefault{0.0F, 80.0F};
constexpr ViewPoint kNTSCDefault{0.0F, 0.0F};

} // namespace

UI_ColorPickerControlsContainer::UI_ColorPickerControlsContainer(const zelui::drawbot::SupplierInterface* inSupplier,
                                                                 zelui::ui::UI_Node* inParent,
                                                                 const KOR::ParamColor<unsigned long>& inColor,
                                                                 TarvixColorPickerMode inMode, bool inHDRSupported)
    : UI_Container(inSupplier, inParent), mSupplier(inSupplier), mOriginalColor(inColor), mHDRSupported(inHDRSupported)
{
    SetContentSize(kContentWidth, kContentHeight);
    InitializeView(inColor, inMode);
}

// The views hold a reference back to the container: they go with it.
UI_ColorPickerControlsContainer::~UI_ColorPickerControlsContainer() = default;

void UI_ColorPickerControlsContainer::InitializeView(const KOR::ParamColor<unsigned long>& inColor,
                                                     TarvixColorPickerMode inMode)
{
    if (!mSquareView) {
        BuildViews();
        BuildModeControls();
        BuildHexAndWebControls();
    }
    mModel.SetMode(inMode);
    SetMode(inMode);
    InitRGB(inColor);
}

void UI_ColorPickerControlsContainer::BuildViews()
{
    zelui::ui::UI_Node* content = GetContentView();
    mSquareView = new SquareView(mSupplier, content, *this);
    AddChild(mSquareView, L"SquareView", kSquareBounds);
    mSquareView->SetAccessibleName(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/SquareName=Color field"));
    mSliderView = new SliderView(mSupplier, content, *this);
    AddChild(mSliderView, L"SliderView", kSliderBounds);
    mSliderView->SetAccessibleName(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/SliderName=Color slider"));
    mChipView = new ChipView(mSupplier, content, *this, mOriginalColor);
    AddChild(mChipView, L"ChipView", kChipBounds);
    mChipView->SetAccessibleName(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/ChipName=New and original color"));

    mNTSCButton = new zelui::controls::UI_PictureButton(mSupplier, content);
    AddChild(mNTSCButton, L"NTSCButton", kNTSCButtonBounds);
    mNTSCButton->SetImageSupplier([] { return std::wstring(L"ntsc-warning"); });
    mNTSCButton->SetToolTip(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/NTSCButtonTip=This color is not "
                                          L"broadcast-safe. Click to use the nearest safe color."));
    mNTSCButton->NotifyWhenChanged([this] { NTSCButtonChanged(); });
    mNTSCButton->SetVisible(false);

    mNTSCView = new NTSCView(mSupplier, content, *this);
    AddChild(mNTSCView, L"NTSCView", kNTSCViewBounds);
    mNTSCView->SetAccessibleName(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/NTSCName=Nearest broadcast-safe color"));
}

void UI_ColorPickerControlsContainer::BuildModeControls()
{
    zelui::ui::UI_Node* content = GetContentView();
    mModeRadios = new zelui::controls::UI_RadioGroup(mSupplier, content);
    AddChild(mModeRadios, L"ModeRadioGroup", {kRadioColumn, 0, kRadioWidth, kContentHeight});
    for (std::size_t mode = 0; mode < kComponentFields.size(); ++mode) {
        const ComponentField& component = kComponentFields[mode];
        const int row = RowTop(static_cast<int>(mode));
        const Rect radioBounds{0, row, kRadioWidth, kRowHeight - 2};
        const auto radio =
            mModeRadios->AddRadioButton(component.radioID, KOR::Localize(component.labelKey), radioBounds);
        AddChild(radio, component.radioID, radioBounds);
        radio->SetAccessibleName(KOR::Localize(kAccessibleNames[mode]));

        auto field = boost::intrusive_ptr<UI_HotTextNumber>(new HotNumberControl(mSupplier, content));
        // A number control made in code starts disabled, for its owner to enable when it has a value.
        field->SetEnabled(true);
        field->SetMinimum(component.minimum);
        field->SetMaximum(component.maximum);
        field->SetDecimalPlaces(component.decimalPlaces);
        field->SetTextLabel(UnitOf(mode));
        AddChild(field, component.fieldID, {kFieldColumn, row, kFieldWidth, kRowHeight - 2});
        field->SetAccessibleName(KOR::Localize(kAccessibleNames[mode]));
        UI_HotTextNumber* raw = field.get();
        field->NotifyWhenChanged([this, raw] { HotTextNumberChanged(raw, kValueChangedMessage); });
        field->NotifyWhenInteractiveChange([this, raw](zelui::controls::InteractivePhase inPhase) {
            // A drag step and a drag put back by Escape both leave a new value in the field.
            if (inPhase == zelui::controls::InteractivePhase::kContinue ||
                inPhase == zelui::controls::InteractivePhase::kCancel) {
                HotTextNumberChanged(raw, kValueChangedMessage);
            }
        });
        mFields[mode] = field;
    }
    mModeRadios->NotifyWhenChanged([this] { RadioButtonChanged(); });
}

void UI_ColorPickerControlsContainer::BuildHexAndWebControls()
{
    zelui::ui::UI_Node* content = GetContentView();
    auto hexLabel = boost::intrusive_ptr<zelui::controls::UI_StaticText>(
        new zelui::controls::UI_StaticText(mSupplier, content, L"#"));
    AddChild(hexLabel, L"HexLabel", {kMargin, kBottomRow, 12, kRowHeight});
    mHexEdit = new zelui::controls::UI_TextEdit(mSupplier, content);
    AddChild(mHexEdit, L"Hex", {kMargin + 14, kBottomRow, 80, kRowHeight});
    mHexEdit->SetAccessibleName(KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/HexName=Hexadecimal color"));
    mHexEdit->SetMaxLength(6);
    mHexEdit->SetNotifyWhenFinished(true);
    mHexEdit->NotifyWhenChanged([this] { TextEditChanged(); });

    mWebSafeBox = new zelui::controls::UI_CheckBox(
        mSupplier, content, KOR::Localize(L"$$$/zelui/sharedui/ColorPicker/WebSafe=Only Web Colors"));
    AddChild(mWebSafeBox, L"WebSafeCheckbox", {kMargin + 110, kBottomRow, 160, kRowHeight});
    mWebSafeBox->NotifyWhenChanged([this] { WebSafeCheckboxChanged(); });
}

void UI_ColorPickerControlsContainer::InitRGB(const KOR::ParamColor<unsigned long>& inColor)
{
    SetRedValue(inColor.Red());
    SetGreenValue(inColor.Green());
    SetBlueValue(inColor.Blue());
    UpdateTextEntries(kTarvixColorPickerMode_Red, false);
    SetWebText(mComponents.GetRGB());
}

void UI_ColorPickerControlsContainer::SetMode(TarvixColorPickerMode inMode)
{
    mModel.SetMode(inMode);
    if (GroupOf(inMode) == ColorGroup::kNone) {
        return;
    }
    if (mModeRadios) {
        mModeRadios->SetSelectedIndex(static_cast<int>(inMode));
    }
    StoreComponents();
    RefreshViews();
}

void UI_ColorPickerControlsContainer::ModelUpdate(const ColorPickerModel* inNewModel)
{
    ZEL_INPUT_CONTRACT(inNewModel != nullptr);
    const ColorPickerModel& next = *inNewModel;
    const ColorComponents before = mComponents;
    const auto recomputeFrom = [&](TarvixColorPickerMode inSource) {
        for (std::size_t mode = 0; mode < mFields.size(); ++mode) {
            const auto component = static_cast<TarvixColorPickerMode>(mode);
            if (before.GetFieldValue(component) != mComponents.GetFieldValue(component)) {
                ShowField(component);
            }
        }
        UpdateTextEntries(inSource, true);
    };

    if (next.GetMode() != mModel.GetMode()) {
        SetMode(next.GetMode());
    } else if (Differs(next.GetHue(), mModel.GetHue()) || Differs(next.GetSaturation(), mModel.GetSaturation()) ||
               Differs(next.GetBrightness(), mModel.GetBrightness())) {
        next.GetColorHSB(mComponents.hue, mComponents.saturation, mComponents.brightness);
        recomputeFrom(kTarvixColorPickerMode_Hue);
    } else if (!next.SameColor(mModel)) {
        mComponents.red = next.GetRed();
        mComponents.green = next.GetGreen();
        mComponents.blue = next.GetBlue();
        recomputeFrom(kTarvixColorPickerMode_Red);
    } else if (Differs(next.GetHSL_H(), mModel.GetHSL_H()) || Differs(next.GetHSL_S(), mModel.GetHSL_S()) ||
               Differs(next.GetHSL_L(), mModel.GetHSL_L())) {
        next.GetColorHSL(mComponents.hslHue, mComponents.hslSaturation, mComponents.lightness);
        recomputeFrom(kTarvixColorPickerMode_HSL_H);
    } else if (next.GetYUV_Y() != mModel.GetYUV_Y() || next.GetYUV_U() != mModel.GetYUV_U() ||
               next.GetYUV_V() != mModel.GetYUV_V()) {
        next.GetColorYUV(mComponents.yuvY, mComponents.yuvU, mComponents.yuvV);
        recomputeFrom(kTarvixColorPickerMode_YUV_Y);
    } else if (!(next.GetSquareViewCoords() == mModel.GetSquareViewCoords())) {
        mModel.SetSquareViewCoords(next.GetSquareViewCoords());
        SetSquareViewCoords(next.GetSquareViewCoords());
    } else if (!(next.GetSliderViewCoords() == mModel.GetSliderViewCoords())) {
        mModel.SetSliderViewCoords(next.GetSliderViewCoords());
        SetSliderViewCoords(next.GetSliderViewCoords());
    } else if (!(next.GetChipViewCoords() == mModel.GetChipViewCoords())) {
        mModel.SetChipViewCoords(next.GetChipViewCoords());
        SetChipViewCoords(next.GetChipViewCoords());
    } else if (!(next.GetNTSCViewCoords() == mModel.GetNTSCViewCoords())) {
        mModel.SetNTSCViewCoords(next.GetNTSCViewCoords());
        SetNTSCViewCoords(next.GetNTSCViewCoords());
    } else if (next.GetHexString() != mModel.GetHexString()) {
        mModel.SetHexString(next.GetHexString());
        SetHexString(next.GetHexString());
    }
}

void UI_ColorPickerControlsContainer::UpdateTextEntries(TarvixColorPickerMode inSourceMode, bool inFromUser)
{
    const ColorGroup source = GroupOf(inSourceMode);
    if (!mComponents.RecomputeFrom(inSourceMode)) {
        return;
    }
    for (const ColorGroup group : {ColorGroup::kHSB, ColorGroup::kRGB, ColorGroup::kHSL, ColorGroup::kYUV}) {
        if (group != source) {
            ShowGroupFields(group);
        }
    }
    if (inFromUser) {
        SetWebText(mComponents.GetRGB());
    } else {
        ShowGroupFields(source);
    }
    StoreComponents();
    RefreshViews();
}

void UI_ColorPickerControlsContainer::SetHexString(const std::wstring& inText)
{
    KOR::ParamColor<unsigned long> color;
    if (!ParseHexText(inText, color)) {
        // Nothing to read: the field shows the colour's text again rather than what was typed.
        SetWebText(mComponents.GetRGB());
        return;
    }
    SetRedValue(color.Red());
    SetGreenValue(color.Green());
    SetBlueValue(color.Blue());
    UpdateTextEntries(kTarvixColorPickerMode_Red, true);
}

void UI_ColorPickerControlsContainer::SetWebText(const KOR::ParamColor<unsigned long>& inColor)
{
    mHexString = FormatHexText(inColor, mWebAdjust);
    mModel.SetHexString(mHexString);
    if (mHexEdit && mHexEdit->GetText() != mHexString) {
        mHexEdit->SetText(mHexString);
    }
}

void UI_ColorPickerControlsContainer::SetHueValue(float inHue)
{
    mComponents.hue = inHue;
    ShowField(kTarvixColorPickerMode_Hue);
}

void UI_ColorPickerControlsContainer::SetSaturationValue(float inSaturation)
{
    mComponents.saturation = inSaturation;
    ShowField(kTarvixColorPickerMode_Saturation);
}

void UI_ColorPickerControlsContainer::SetBrightnessValue(float inBrightness)
{
    mComponents.brightness = inBrightness;
    ShowField(kTarvixColorPickerMode_Brightness);
}

void UI_ColorPickerControlsContainer::SetRedValue(std::uint8_t inRed)
{
    mComponents.red = inRed;
    ShowField(kTarvixColorPickerMode_Red);
}

void UI_ColorPickerControlsContainer::SetGreenValue(std::uint8_t inGreen)
{
    mComponents.green = inGreen;
    ShowField(kTarvixColorPickerMode_Green);
}

void UI_ColorPickerControlsContainer::SetBlueValue(std::uint8_t inBlue)
{
    mComponents.blue = inBlue;
    ShowField(kTarvixColorPickerMode_Blue);
}

void UI_ColorPickerControlsContainer::SetHSL_HValue(float inHue)
{
    mComponents.hslHue = inHue;
    ShowField(kTarvixColorPickerMode_HSL_H);
}

void UI_ColorPickerControlsContainer::SetHSL_SValue(float inSaturation)
{
    mComponents.hslSaturation = inSaturation;
    ShowField(kTarvixColorPickerMode_HSL_S);
}

void UI_ColorPickerControlsContainer::SetHSL_LValue(float inLightness)
{
    mComponents.lightness = inLightness;
    ShowField(kTarvixColorPickerMode_HSL_L);
}

void UI_ColorPickerControlsContainer::SetYUV_YValue(std::uint8_t inY)
{
    mComponents.yuvY = inY;
    ShowField(kTarvixColorPickerMode_YUV_Y);
}

void UI_ColorPickerControlsContainer::SetYUV_UValue(std::int8_t inU)
{
    mComponents.yuvU = inU;
    ShowField(kTarvixColorPickerMode_YUV_U);
}

void UI_ColorPickerControlsContainer::SetYUV_VValue(std::int8_t inV)
{
    mComponents.yuvV = inV;
    ShowField(kTarvixColorPickerMode_YUV_V);
}

// The components the position sets are shown at once, then everything else follows from them.
void UI_ColorPickerControlsContainer::SetSquareViewCoords(const ViewPoint& inPoint)
{
    const TarvixColorPickerMode mode = mModel.GetMode();
    mComponents.SetFromSquare(mode, inPoint);
    ShowGroupFields(GroupOf(mode));
    UpdateTextEntries(mode, true);
}

void UI_ColorPickerControlsContainer::SetSliderViewCoords(const ViewPoint& inPoint)
{
    const TarvixColorPickerMode mode = mModel.GetMode();
    mComponents.SetFromSlider(mode, inPoint);
    ShowGroupFields(GroupOf(mode));
    UpdateTextEntries(mode, true);
}

// A click on the chip loads the colour there. The record forgets the click's place so that
// the next click on the same place counts again.
void UI_ColorPickerControlsContainer::SetChipViewCoords(const ViewPoint& inPoint)
{
    InitRGB(mChipView->GetColorAt(inPoint));
    mModel.SetChipViewCoords(kChipDefault);
}

void UI_ColorPickerControlsContainer::SetNTSCViewCoords(const ViewPoint&)
{
    NTSCButtonChanged();
    mModel.SetNTSCViewCoords(kNTSCDefault);
}

void UI_ColorPickerControlsContainer::RadioButtonChanged()
{
    const int selected = mModeRadios->GetSelectedIndex();
    if (selected < 0) {
        return;
    }
    ColorPickerModel changed = mModel;
    changed.SetMode(static_cast<TarvixColorPickerMode>(selected));
    ModelUpdate(&changed);
}

void UI_ColorPickerControlsContainer::HotTextNumberChanged(UI_HotTextNumber* inField, int inMessage)
{
    if (inMessage != kValueChangedMessage || inField == nullptr) {
        return;
    }
    const std::wstring id = inField->GetName();
    for (std::size_t mode = 0; mode < kComponentFields.size(); ++mode) {
        if (id == kComponentFields[mode].fieldID) {
            ColorComponents changedComponents = mComponents;
            changedComponents.SetFieldValue(static_cast<TarvixColorPickerMode>(mode), inField->GetValue());
            ColorPickerModel changed = mModel;
            changed.SetColorHSB(changedComponents.hue, changedComponents.saturation, changedComponents.brightness);
            changed.SetColorRGB(changedComponents.GetRGB());
            changed.SetColorHSL(changedComponents.hslHue, changedComponents.hslSaturation, changedComponents.lightness);
            changed.SetColorYUV(changedComponents.yuvY, changedComponents.yuvU, changedComponents.yuvV);
            ModelUpdate(&changed);
            return;
        }
    }
}

void UI_ColorPickerControlsContainer::TextEditChanged()
{
    ColorPickerModel changed = mModel;
    changed.SetHexString(mHexEdit->GetText());
    ModelUpdate(&changed);
}

void UI_ColorPickerControlsContainer::WebSafeCheckboxChanged()
{
    const unsigned int mask = mWebSafeBox->IsChecked() ? kWebAdjustOn : kWebAdjustOff;
    mSquareView->SetWebAdjust(mask);
    mSliderView->SetWebAdjust(mask);
    mWebAdjust = mask;
    const ColorPickerModel unchanged = mModel;
    ModelUpdate(&unchanged);
    // The hex text and the chip show the colour as it will be handed back.
    SetWebText(mComponents.GetRGB());
    RefreshViews();
}

void UI_ColorPickerControlsContainer::NTSCButtonChanged()
{
    const KOR::ParamColor<unsigned long> safe = mNTSCView->GetSafeColor();
    SetRedValue(safe.Red());
    SetGreenValue(safe.Green());
    SetBlueValue(safe.Blue());
    UpdateTextEntries(kTarvixColorPickerMode_Red, true);
}

void UI_ColorPickerControlsContainer::CommitPendingEdits()
{
    for (const auto& field : mFields) {
        if (field->GetFirstChild() != nullptr) {
            field->EndInPlaceEdit(true, false);
        }
    }
    TextEditChanged();
}

KOR::ParamColor<unsigned long> UI_ColorPickerControlsContainer::GetMaskedColor() const
{
    return ApplyWebAdjust(mModel.GetColorRGB(), mWebAdjust);
}

boost::intrusive_ptr<SquareView> UI_ColorPickerControlsContainer::GetSquareView() const { return mSquareView; }
boost::intrusive_ptr<SliderView> UI_ColorPickerControlsContainer::GetSliderView() const { return mSliderView; }
boost::intrusive_ptr<ChipView> UI_ColorPickerControlsContainer::GetChipView() const { return mChipView; }
boost::intrusive_ptr<NTSCView> UI_ColorPickerControlsContainer::GetNTSCView() const { return mNTSCView; }

void UI_ColorPickerControlsContainer::ShowField(TarvixColorPickerMode inMode)
{
    const auto index = static_cast<std::size_t>(inMode);
    if (index < mFields.size() && mFields[index]) {
        mFields[index]->SetValue(mComponents.GetFieldValue(inMode));
        mFields[index]->UpdateStringFromValue();
    }
}

void UI_ColorPickerControlsContainer::ShowGroupFields(ColorGroup inGroup)
{
    if (inGroup == ColorGroup::kNone) {
        return;
    }
    const int first = 3 * static_cast<int>(inGroup);
    for (int mode = first; mode < first + 3; ++mode) {
        ShowField(static_cast<TarvixColorPickerMode>(mode));
    }
}

void UI_ColorPickerControlsContainer::StoreComponents()
{
    mModel.SetColorRGB(mComponents.GetRGB());
    mModel.SetColorHSB(mComponents.hue, mComponents.saturation, mComponents.brightness);
    mModel.SetColorHSL(mComponents.hslHue, mComponents.hslSaturation, mComponents.lightness);
    mModel.SetColorYUV(mComponents.yuvY, mComponents.yuvU, mComponents.yuvV);
    const TarvixColorPickerMode mode = mModel.GetMode();
    if (GroupOf(mode) != ColorGroup::kNone) {
        mModel.SetSquareViewCoords(mComponents.GetSquarePosition(mode));
        mModel.SetSliderViewCoords({0.0F, mComponents.GetSliderPosition(mode)});
    }
}

void UI_ColorPickerControlsContainer::RefreshViews()
{
    if (!mSquareView) {
        return;
    }
    const TarvixColorPickerMode mode = mModel.GetMode();
    if (GroupOf(mode) != ColorGroup::kNone) {
        mSquareView->ShowColor(mode, mComponents);
        mSliderView->ShowColor(mode, mComponents);
    }
    mChipView->ShowColor(GetMaskedColor());
    mNTSCView->ShowColor(mModel.GetColorRGB());
    RefreshNTSCButton();
}

void UI_ColorPickerControlsContainer::RefreshNTSCButton()
{
    const bool unsafe = !mNTSCView->IsSafe();
    if (mNTSCButton->IsVisible() != unsafe) {
        mNTSCButton->SetVisible(unsafe);
    }
}

} // namespace DLG::ColorPicker
