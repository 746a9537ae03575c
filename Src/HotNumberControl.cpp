#include "DLG/HotNumberControl.h"

#include "KOR/Stations.h"
#include "UIF/KeyFilter.h"
#include "UIF/Sound.h"
#include "zelcore/Error.h"
#include "zelcore/Utility.h"

namespace DLG {

namespace {

constexpr double kFontSize = 11.0;

// Editing and navigation keys reach the field whatever it holds.
bool IsEditingKey(int inKeyCode)
{
    using namespace zelui::ui;
    switch (inKeyCode) {
    case kKey_Backspace:
    case kKey_Delete:
    case kKey_Tab:
    case kKey_Left:
    case kKey_Right:
    case kKey_Home:
    case kKey_End: return true;
    default: return false;
    }
}

} // namespace

HotNumberTextEdit::HotNumberTextEdit(const zelui::drawbot::SupplierInterface* inSupplier,
                                     zelui::ui::UI_Node* inParent, int inDecimalPlaces, double inMinimum)
    : UI_TextEdit(inSupplier, inParent), mDecimalPlaces(inDecimalPlaces), mMinimum(inMinimum)
{
}

bool HotNumberTextEdit::Accepts(wchar_t inCharacter) const
{
    if (mMinimum < 0) {
        return mDecimalPlaces == 0 ? UIF::KeyFilterStandard::AcceptSignedInteger(inCharacter)
                                   : UIF::KeyFilterStandard::AcceptSignedFloat(inCharacter);
    }
    return mDecimalPlaces == 0 ? UIF::KeyFilterStandard::AcceptUnsignedInteger(inCharacter)
                               : UIF::KeyFilterStandard::AcceptUnsignedFloat(inCharacter);
}

bool HotNumberTextEdit::UI_DoKeyboardEvent(zelui::ui::UI_Node*, const zelui::ui::KeyboardEvent& inEvent)
{
    if (!IsEnabled()) {
        return false;
    }
    // Keys that type nothing (shortcuts, function keys) have no character to check.
    if (IsEditingKey(inEvent.keyCode) || inEvent.keyCode != zelui::ui::kKey_Character) {
        return false;
    }
    if (Accepts(inEvent.character)) {
        return false;
    }
    if (inEvent.keyDown) {
        UIF::Beep();
    }
    return true;
}

void InteractiveRelay::Relay(zelui::controls::UI_HotTextNumber& ioControl, int inMessage, bool inCancelled)
{
    if (mDelivering) {
        return;
    }
    mDelivering = true;
    struct Done {
        bool& mFlag;
        ~Done() { mFlag = false; }
    } done{mDelivering};
    switch (inMessage) {
    case zelui::controls::kInteractive_Begin: ioControl.BeginInteractiveChange(); break;
    case zelui::controls::kInteractive_Continue: ioControl.ContinueInteractiveChange(); break;
    case zelui::controls::kInteractive_Finish:
    case zelui::controls::kInteractive_FinishByKey:
        inCancelled ? ioControl.CancelInteractiveChange() : ioControl.FinishInteractiveChange();
        break;
    default: break;
    }
}

HotNumberControl::HotNumberControl(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent)
    : UI_HotTextNumber(inSupplier, inParent), mStation(KOR::StationRegistry::RegisterUniqueStation())
{
    SetFontSize(kFontSize);
    SetMinimum(0.0);
    SetFormatFlags(zelui::controls::kNumberFormat_Plain);
    SetWantsKeyboardFocus(true);
    SetEnabled(false);
    RegisterInteractiveHandler();
}

HotNumberControl::HotNumberControl(zelui::controls::UI_HotTextNumber& inReplaced)
    : UI_HotTextNumber(inReplaced), mStation(KOR::StationRegistry::RegisterUniqueStation())
{
    SetLocalRect(inReplaced.GetLocalRect());
    SetValue(inReplaced.GetValue());
    SetMinimum(inReplaced.GetMinimum());
    SetMaximum(inReplaced.GetMaximum());
    SetDecimalPlaces(inReplaced.GetDecimalPlaces());
    SetFormatFlags(inReplaced.GetFormatFlags());
    SetOverwritePostLabel(inReplaced.GetOverwritePostLabel());
    SetTextLabel(inReplaced.GetTextLabel());
    SetWantsKeyboardFocus(true);
    RegisterInteractiveHandler();
    UpdateStringFromValue();
}

HotNumberControl::~HotNumberControl() { KOR::StationRegistry::DisposeStation(mStation); }

void HotNumberControl::RegisterInteractiveHandler()
{
    SetInteractiveChangeHandler(
        [this](int inMessage, bool inCancelled) { mRelay.Relay(*this, inMessage, inCancelled); });
}

void HotNumberControl::UpdateStringFromValue()
{
    if (IsValueUnknown()) {
        SetText(GetUnknownValueText());
        return;
    }
    const std::wstring text = FormatValue(GetValue());
    if (text != GetText()) {
        SetText(text);
    }
}

bool HotNumberControl::IsInRange(double inValue) const { return GetMinimum() <= inValue && inValue <= GetMaximum(); }

boost::intrusive_ptr<zelui::controls::UI_TextEdit> HotNumberControl::CreateInPlaceEditor(zelui::ui::UI_Node* inParent)
{
    return new HotNumberTextEdit(nullptr, inParent, GetDecimalPlaces(), GetMinimum());
}

void HotNumberControl::CommitInPlaceText()
{
    auto* field = dynamic_cast<zelui::controls::UI_TextEdit*>(GetFirstChild());
    if (!field) {
        zelcore::config::ThrowError(zelcore::messages::kInvalidTypeConversion);
    }
    double value = zelcore::utility::StringToNumber(field->GetText());
    if (value > GetMaximum()) {
        UIF::Beep();
        value = GetMaximum();
    } else if (value < GetMinimum()) {
        UIF::Beep();
        value = GetMinimum();
    }
    SetValue(value);
    UpdateStringFromValue();
    BroadcastChange();
}

} // namespace DLG
