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
    // A new push button labelled inLabel in inParent's window.
    UI_Button(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent, const std::wstring& inLabel);
    ~UI_Button() override;
    // Presses the button as a click would.
    void Press();
    void SetLabel(const std::wstring& inLabel);
};

// A check box: a button that keeps an on/off state. Setting the state tells no listener; a
// click by the user does.
class HOST_API UI_CheckBox : public UI_Button {
public:
    using UI_Button::UI_Button;
    // A new check box labelled inLabel in inParent's window, clear.
    UI_CheckBox(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent, const std::wstring& inLabel);
    ~UI_CheckBox() override;
    void SetChecked(bool inChecked);
    bool IsChecked() const;
    // kCheck_Mixed for a box that shows neither state (one of several that differ).
    static constexpr int kCheck_Clear = 0;
    static constexpr int kCheck_Checked = 1;
    static constexpr int kCheck_Mixed = 2;
    int GetCheckValue() const;
};

// A radio button. The host does not uncheck its neighbours: a dialog keeps its radio buttons
// exclusive itself.
class HOST_API UI_RadioButton : public UI_CheckBox {
public:
    using UI_CheckBox::UI_CheckBox;
    ~UI_RadioButton() override;
};

// Radio buttons made in code that keep themselves exclusive: selecting one clears the others.
// The group tells its listeners when the user selects another button (by click or arrow key);
// SetSelectedIndex tells no one.
class HOST_API UI_RadioGroup : public UI_Control {
public:
    // A new, empty group: a transparent panel in inParent's window, placed by SetBounds.
    UI_RadioGroup(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent);
    ~UI_RadioGroup() override;

    // Adds a button named inID and labelled inLabel at inBounds in the group's own coordinates;
    // its index is the number of buttons added before it.
    boost::intrusive_ptr<UI_RadioButton> AddRadioButton(const std::wstring& inID, const std::wstring& inLabel,
                                                        const ui::Rect& inBounds);
    int GetButtonCount() const;
    boost::intrusive_ptr<UI_RadioButton> GetButton(int inIndex) const;
    // -1 when none is selected.
    int GetSelectedIndex() const;
    void SetSelectedIndex(int inIndex);

private:
    std::vector<boost::intrusive_ptr<UI_RadioButton>> mButtons;
};

// A push button that shows an image instead of a text. The image is asked for each time the
// button is drawn, as the name of a host image resource; an empty name draws the button bare.
class HOST_API UI_PictureButton : public UI_Button {
public:
    using ImageSupplier = boost::function<std::wstring()>;
    UI_PictureButton(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent);
    ~UI_PictureButton() override;
    void SetImageSupplier(ImageSupplier inSupplier);
    // The text shown as the button's tip and read by assistive technology.
    void SetToolTip(const std::wstring& inText);
};

// A list of rows, each with one text per column, optionally a check box per row. Listeners
// hear when the user checks or clears a row or selects another one; changes made through
// these calls tell no one.
class HOST_API UI_ListBox : public UI_Control {
public:
    using UI_Control::UI_Control;
    ~UI_ListBox() override;

    void Clear();
    // Appends a row and returns its index.
    int AddRow(const std::vector<std::wstring>& inCells);
    int GetRowCount() const;
    std::wstring GetCellText(int inRow, int inColumn) const;
    // Rows added from now on show a check box.
    void SetRowsCheckable(bool inCheckable);
    void SetRowChecked(int inRow, bool inChecked);
    bool IsRowChecked(int inRow) const;
    // Selects one row (and makes it current); -1 selects none.
    void SelectRow(int inRow);
    // The first selected row, or -1.
    int GetSelectedRow() const;
    // The columns' header titles, from the first column on; an empty title keeps the script's.
    void SetColumnTitles(const std::vector<std::wstring>& inTitles);

private:
    bool mCheckable = false;
};

class HOST_API UI_StaticText : public UI_Control {
public:
    using UI_Control::UI_Control;
    // A new text in inParent's window.
    UI_StaticText(const drawbot::SupplierInterface* inSupplier, ui::UI_Node* inParent, const std::wstring& inText);
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
    // In a text of several lines, "\r\n", "\r" and "\n" each end one line.
    void SetText(const std::wstring& inText);
    std::wstring GetText() const;
    // Selects the whole text and takes the focus, so that typing replaces it.
    void SelectAll();
    void SetReadOnly(bool inReadOnly);
    // At most inLength characters may be typed (a text field made in code); 0 for no limit.
    void SetMaxLength(int inLength);
    // Listeners hear of a change when the user has finished editing (Enter, or the focus leaving
    // a field whose text they changed) rather than at every key.
    void SetNotifyWhenFinished(bool inWhenFinished);
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
