#pragma once

#include <memory>
#include <string>

#include "KOR/Color.h"
#include "KOR/HostAPI.h"

namespace zelui::ui {
class UI_Node;
}

namespace UIF {

// A native modal dialog over a template of the module's resources. The template's controls are
// known by number; the dialog talks to them through these calls, the way window messages would.
// Push button 1 is OK and 2 is Cancel; Escape and closing the window are command 2 too.
class HOST_API DialogImpl {
public:
    // What GetListItemData and GetListSelection answer for an absent item.
    static constexpr long kListError = -1;
    // Notification codes of OnCommand.
    static constexpr int kNotify_Clicked = 0;
    static constexpr int kNotify_SelectionChanged = 1;

    DialogImpl(unsigned int inTemplateID, zelui::ui::UI_Node* inParent);
    virtual ~DialogImpl();
    DialogImpl(const DialogImpl&) = delete;
    DialogImpl& operator=(const DialogImpl&) = delete;

    // Shows the dialog and returns the code it ended with; -1 when the template is missing or
    // unreadable (nothing was shown).
    long DoModal();
    void EndDialog(long inCode);

    void SetItemEnabled(int inID, bool inEnabled);
    void SetItemChecked(int inID, bool inChecked);
    bool IsItemChecked(int inID) const;
    void SetItemText(int inID, const std::wstring& inText);
    std::wstring GetItemText(int inID) const;
    // An edit that takes the digits 0 to 9 only.
    void SetItemUnsignedOnly(int inID);
    // The edit's text as an unsigned number; 0 and outOk false when it is empty or too large.
    unsigned long GetItemUnsigned(int inID, bool* outOk = nullptr) const;

    // Drop-down lists. Indices count from 0; changes made through these calls notify no one.
    // A list selects its first item when it gets one; only an empty list has no selection.
    void ResetList(int inID);
    // Appends inText and returns its index.
    int AddListString(int inID, const std::wstring& inText);
    void SetListItemData(int inID, int inIndex, long inData);
    // kListError when inIndex names no item.
    long GetListItemData(int inID, int inIndex) const;
    int GetListCount(int inID) const;
    // kListError when nothing is selected.
    int GetListSelection(int inID) const;
    void SetListSelection(int inID, int inIndex);

    // Colours of the dialog's lists, edits and check boxes.
    void SetControlColors(KOR::ParamColor<unsigned long> inText, KOR::ParamColor<unsigned long> inBackground);

protected:
    // The controls exist and the window is not yet shown.
    virtual void OnInitDialog();
    // A user's action on control inID: a click, or a new selection in a list. By default
    // 1 and 2 end the dialog with their number.
    virtual void OnCommand(int inID, int inNotifyCode);

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace UIF
