#include "ColorPicker/ColorPickerDlog.h"

#include "ColorPicker/ColorPickerDialog.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "KOR/Module.h"
#include "UIF/Workspace.h"

namespace DLG::ColorPicker {

namespace {

constexpr int kButtonWidth = 90;
constexpr int kButtonHeight = 28;
constexpr int kSpacing = 10;

} // namespace

ColorPickerDlog::ColorPickerDlog(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                                 KOR::ParamColor<unsigned long> inColor, const std::wstring& inTitle)
    : OS_Dialog(inSupplier, inParent, inTitle)
{
    SetName(L"ColorPickerDialog");
    mContainer = new UI_ColorPickerControlsContainer(inSupplier, this, inColor, kTarvixColorPickerMode_Hue, false);
    mOkButton = new zelui::controls::UI_Button(inSupplier, this, KOR::Localize(L"$$$/zelui/sharedui/OK=OK"));
    mOkButton->SetName(L"okButton");
    mCancelButton =
        new zelui::controls::UI_Button(inSupplier, this, KOR::Localize(L"$$$/zelui/sharedui/Cancel=Cancel"));
    mCancelButton->SetName(L"cancelButton");
    mCancelButton->NotifyWhenChanged([this] { CancelButtonPressed(); });
    mOkButton->NotifyWhenChanged([this] { EndDialog(kResponse_Accept); });
    SetOkButton(mOkButton.get());
    SetCancelButton(mCancelButton.get());
    // Closing the window confirms: what is still being typed counts, as it would for OK.
    SetResponseHandler([this](Response&) {
        if (!mCancelled) {
            mContainer->CommitPendingEdits();
        }
        return true;
    });
    SetContentSize(UI_ColorPickerControlsContainer::kContentWidth,
                   UI_ColorPickerControlsContainer::kContentHeight + kButtonRowHeight);
}

ColorPickerDlog::~ColorPickerDlog() = default;

KOR::ParamColor<unsigned long> ColorPickerDlog::GetColorRGB() const { return mContainer->GetMaskedColor(); }

void ColorPickerDlog::CancelButtonPressed()
{
    mCancelled = true;
    EndDialog(kResponse_Dismiss);
}

// The container takes all but the button row, which keeps to the bottom right.
void ColorPickerDlog::UI_SizeChanged(const zelui::ui::Rect& inBounds)
{
    OS_Dialog::UI_SizeChanged(inBounds);
    mContainer->SetBounds({0, 0, inBounds.width, inBounds.height - kButtonRowHeight});
    const int top = inBounds.height - kButtonRowHeight + (kButtonRowHeight - kButtonHeight) / 2;
    const int cancelLeft = inBounds.width - kSpacing - kButtonWidth;
    mCancelButton->SetBounds({cancelLeft, top, kButtonWidth, kButtonHeight});
    mOkButton->SetBounds({cancelLeft - kSpacing - kButtonWidth, top, kButtonWidth, kButtonHeight});
}

bool ColorPickerDlog::UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent)
{
    return OS_Dialog::UI_DoKeyboardEvent(inNode, inEvent);
}

bool ColorPickerDlog::UI_DoMouseEvent(zelui::ui::UI_Node*, const zelui::ui::MouseEvent&) { return false; }

} // namespace DLG::ColorPicker

namespace DLG::ColorPickerDialog {

bool PickColor(const KOR::ParamColor<unsigned long>& inColor, KOR::ParamColor<unsigned long>& outColor)
{
    bool result = false;
    UIF::Workspace* workspace = UIF::Workspace::GetPtr();
    if (workspace == nullptr) {
        return result;
    }
    const std::wstring title = LoadString(kStr_ColorPickerTitle);
    boost::intrusive_ptr<ColorPicker::ColorPickerDlog> dialog(new ColorPicker::ColorPickerDlog(
        workspace->GetDrawSupplier(), workspace->GetMainTopLevelWindow(), inColor, title));
    dialog->RunModal();
    if (!dialog->GetCancelled()) {
        outColor = dialog->GetColorRGB();
        result = true;
    }
    return result;
}

} // namespace DLG::ColorPickerDialog
