#pragma once

#include <boost/function.hpp>

#include "zelui/Controls.h"
#include "zelui/Events.h"

namespace zelui::drawbot {
class SupplierInterface;
}

namespace zelui::controls {

// Number display flags.
inline constexpr unsigned long kNumberFormat_ShowPlusSign = 1;
inline constexpr unsigned long kNumberFormat_Grouping = 2; // thousands separators
inline constexpr unsigned long kNumberFormat_Plain = 8;    // digits, point and minus only

// The host's interactive-change messages while the user drags a hot number.
inline constexpr int kInteractive_Begin = 0;
inline constexpr int kInteractive_Continue = 1;
inline constexpr int kInteractive_Finish = 2;
inline constexpr int kInteractive_FinishByKey = 3;

// What listeners of a hot number hear about an interactive change (a whole drag).
enum class InteractivePhase { kBegin, kContinue, kFinish, kCancel };

// A number shown as text that the user drags to change, or clicks into and types.
//
// Dragging sideways changes the value by its increment for every pixel (ten times with Shift,
// a tenth with the command key, while those are factors), clamped to the range; Escape during
// a drag puts the value back. A click, Enter or F2 opens a text field in place; Enter or leaving
// it commits, Escape cancels. Up and Down step by the increment.
class HOST_API UI_HotTextNumber : public UI_Control {
public:
    using InteractiveHandler = boost::function<void(int inMessage, bool inCancelled)>;
    using InteractiveListener = boost::function<void(InteractivePhase)>;

    static constexpr double kDefaultIncrement = 1.0;

    // A new control in inParent's window.
    UI_HotTextNumber(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent);
    // A new control that takes inReplaced's place in its window's layout, its accessible name
    // and its tab stop; inReplaced stays, for its owner to hide. Nothing else is copied.
    explicit UI_HotTextNumber(UI_HotTextNumber& inReplaced);
    // The control of a widget that a layout script built.
    using UI_Control::UI_Control;
    ~UI_HotTextNumber() override;

    void SetValue(double inValue);
    double GetValue() const { return mValue; }
    void SetMinimum(double inMinimum) { mMinimum = inMinimum; }
    double GetMinimum() const { return mMinimum; }
    void SetMaximum(double inMaximum) { mMaximum = inMaximum; }
    double GetMaximum() const { return mMaximum; }
    void SetDecimalPlaces(int inPlaces) { mDecimalPlaces = inPlaces; }
    int GetDecimalPlaces() const { return mDecimalPlaces; }
    void SetIncrement(double inIncrement) { mIncrement = inIncrement; }
    double GetIncrement() const { return mIncrement; }
    void SetFormatFlags(unsigned long inFlags) { mFormatFlags = inFlags; }
    unsigned long GetFormatFlags() const { return mFormatFlags; }
    // The label shown after the number ("dB"); with overwrite set it replaces the number's own unit text.
    void SetTextLabel(const std::wstring& inLabel);
    const std::wstring& GetTextLabel() const { return mTextLabel; }
    void SetOverwritePostLabel(bool inOverwrite) { mOverwritePostLabel = inOverwrite; }
    bool GetOverwritePostLabel() const { return mOverwritePostLabel; }
    void SetValueUnknown(bool inUnknown);
    bool IsValueUnknown() const { return mValueUnknown; }
    static std::wstring GetUnknownValueText() { return L"--"; }
    void SetFontSize(double inPoints);
    void SetWantsKeyboardFocus(bool inWants);
    void SetIsShiftModifierAFactor(bool inIsFactor) { mShiftIsFactor = inIsFactor; }
    bool IsShiftModifierAFactor() const { return mShiftIsFactor; }
    void SetIsCmdModifierAFactor(bool inIsFactor) { mCmdIsFactor = inIsFactor; }
    bool IsCmdModifierAFactor() const { return mCmdIsFactor; }
    ui::Rect GetLocalRect() const;
    void SetLocalRect(const ui::Rect& inRect);

    // The text shown, as UpdateStringFromValue last set it.
    const std::wstring& GetText() const { return mText; }
    void SetText(const std::wstring& inText);
    // The value as text, by decimal places and format flags.
    std::wstring FormatValue(double inValue) const;
    // Refreshes the text from the value.
    virtual void UpdateStringFromValue();

    // Drag messages go to the handler when one is set, otherwise straight to the listeners.
    void SetInteractiveChangeHandler(InteractiveHandler inHandler) { mInteractiveHandler = std::move(inHandler); }
    void SendInteractiveMessage(int inMessage, bool inCancelled);
    void NotifyWhenInteractiveChange(InteractiveListener inListener);
    void BeginInteractiveChange();
    void ContinueInteractiveChange();
    void FinishInteractiveChange();
    void CancelInteractiveChange();

    // Mouse events before the control's own handling; true consumes the event.
    virtual bool UI_DoMouseEvent(ui::UI_Node* inNode, const ui::MouseEvent& inEvent);

    // The in-place text field while the user types; null otherwise.
    ui::UI_Node* GetFirstChild() const { return mInPlaceEditor.get(); }
    void StartInPlaceEdit();
    // Ends typing; a commit of changed text runs CommitInPlaceText first. With inRefocus the
    // control takes the focus back (after Enter or Escape, not when the user went elsewhere).
    void EndInPlaceEdit(bool inCommit, bool inRefocus = true);
    // Clamps inValue to the range; the minimum wins when the limits cross.
    double ClampToRange(double inValue) const;

protected:
    // Makes the in-place text field, in inParent (this control's window).
    virtual boost::intrusive_ptr<UI_TextEdit> CreateInPlaceEditor(ui::UI_Node* inParent);
    // Takes what was typed; the field is still the first child. By default: read the number,
    // clamp it to the range, set it, refresh and tell the listeners.
    virtual void CommitInPlaceText();
    void Repaint();

private:
    void Broadcast(InteractivePhase inPhase);

    double mValue = 0.0;
    double mMinimum = 0.0;
    double mMaximum = 100.0;
    int mDecimalPlaces = 0;
    double mIncrement = kDefaultIncrement;
    unsigned long mFormatFlags = kNumberFormat_Plain;
    std::wstring mTextLabel;
    bool mOverwritePostLabel = false;
    bool mValueUnknown = false;
    bool mShiftIsFactor = true;
    bool mCmdIsFactor = true;
    std::wstring mText;
    InteractiveHandler mInteractiveHandler;
    std::vector<InteractiveListener> mInteractiveListeners;
    boost::intrusive_ptr<UI_TextEdit> mInPlaceEditor;
    bool mEndingInPlaceEdit = false;
};

} // namespace zelui::controls
