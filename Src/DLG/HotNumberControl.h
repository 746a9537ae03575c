#pragma once

#include <string>

#include "DLG/Export.h"
#include "zelui/HotTextNumber.h"

namespace DLG {

// The in-place text field of a hot number: it admits only the characters the number can
// hold (a sign only when the minimum is below zero, a point only with decimal places) and
// beeps at the others.
class DLG_API HotNumberTextEdit : public zelui::controls::UI_TextEdit {
public:
    HotNumberTextEdit(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent,
                      int inDecimalPlaces, double inMinimum);

    bool UI_DoKeyboardEvent(zelui::ui::UI_Node* inNode, const zelui::ui::KeyboardEvent& inEvent) override;

private:
    bool Accepts(wchar_t inCharacter) const;

    int mDecimalPlaces;
    double mMinimum;
};

// Passes the host's drag messages on to a hot number's listeners, one whole drag as one
// change, and nothing while a change is still being delivered.
class InteractiveRelay {
public:
    void Relay(zelui::controls::UI_HotTextNumber& ioControl, int inMessage, bool inCancelled);

private:
    bool mDelivering = false;
};

// The module's draggable number field, built on its own or in place of a scripted one. Typed
// values are clamped to the range, with a beep.
class DLG_API HotNumberControl : public zelui::controls::UI_HotTextNumber {
public:
    HotNumberControl(const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);
    // Takes inReplaced's place and copies its rectangle, value, range, decimal places, format
    // flags and label, but not its increment: the replacement steps by the default increment.
    explicit HotNumberControl(zelui::controls::UI_HotTextNumber& inReplaced);
    ~HotNumberControl() override;

    void UpdateStringFromValue() override;
    bool IsInRange(double inValue) const;
    const std::wstring& GetStationName() const { return mStation; }

protected:
    boost::intrusive_ptr<zelui::controls::UI_TextEdit> CreateInPlaceEditor(zelui::ui::UI_Node* inParent) override;
    void CommitInPlaceText() override;

private:
    void RegisterInteractiveHandler();

    std::wstring mStation;
    InteractiveRelay mRelay;
};

} // namespace DLG
