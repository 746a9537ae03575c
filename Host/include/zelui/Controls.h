#pragma once

#include <string>
#include <vector>

#include <boost/function.hpp>

#include "zelui/Events.h"
#include "zelui/UI_Node.h"

namespace zelui::drawbot {
class SupplierInterface;
}

namespace zelui::controls {

// A control that tells its listeners when the user changed it (a button: when it was pressed).
class HOST_API UI_Control : public ui::UI_Node {
public:
    using ChangeHandler = boost::function<void()>;

    using UI_Node::UI_Node;
    ~UI_Control() override;

    void NotifyWhenChanged(ChangeHandler inHandler);
    // Runs the handlers; the toolkit calls it on each change the user makes.
    void BroadcastChange();

private:
    std::vector<ChangeHandler> mHandlers;
};

class HOST_API UI_Button : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_Button() override;
    // Presses the button as a click would.
    void Press();
    // A checkable button (a disclosure triangle, a check box) and whether it is checked.
    bool IsChecked() const;
    void SetChecked(bool inChecked);
};

class HOST_API UI_StaticText : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_StaticText() override;
    void SetText(const std::wstring& inText);
    std::wstring GetText() const;
};

class HOST_API UI_TextEdit : public UI_Control {
public:
    using UI_Control::UI_Control;
    // A new one-line text field in inParent's window.
    UI_TextEdit(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent);
    ~UI_TextEdit() override;

    // Each key before the field handles it; true consumes the key. By default the field has it.
    virtual bool UI_DoKeyboardEvent(ui::UI_Node* inNode, const ui::KeyboardEvent& inEvent);
    void SetText(const std::wstring& inText);
    std::wstring GetText() const;
    // Selects the whole text and takes the focus, so that typing replaces it.
    void SelectAll();
    void SetReadOnly(bool inReadOnly);
};

// A number typed as text. Its range and decimal places come from the layout script unless set.
// A value set and not edited since reads back exactly as it was set, not rounded to the places shown.
class HOST_API UI_NumberEdit : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_NumberEdit() override;
    void SetValue(double inValue);
    double GetValue() const;
    void SelectAll();
    void SetRange(double inMinimum, double inMaximum);
    void SetDecimalPlaces(int inPlaces);
};

// A bar that fills from its minimum to its maximum as an operation goes on.
class HOST_API UI_ProgressBar : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_ProgressBar() override;
    void SetRange(int inMinimum, int inMaximum);
    int GetMaximum() const;
    void SetValue(int inValue);
    int GetValue() const;
};

} // namespace zelui::controls
