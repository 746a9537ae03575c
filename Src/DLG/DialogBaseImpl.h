#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "DLG/ControlValues.h"
#include "DLG/Export.h"
#include "UIF/Workspace.h"
#include "zelui/Controls.h"
#include "zelvrel/UI_Vrel.h"

namespace DLG {

// The base of every script dialog. Making one switches the command target to the focused
// panel's super-commander, stops the players and ends any input capture; while it exists the
// host does not save automatically. Dismissal (Cancel, Escape, closing the window) marks it cancelled, acceptance
// (OK, Enter) marks it confirmed.
class DialogBaseImpl : public zelvrel::UI_Vrel {
public:
    DialogBaseImpl(const std::wstring& inNodeName, const zelui::drawbot::SupplierInterface* inSupplier,
                   zelui::ui::UI_Node* inParent);
    // Drawn through the workspace's supplier, over its main window.
    DialogBaseImpl(const std::wstring& inNodeName, const UIF::Workspace& inWorkspace);
    ~DialogBaseImpl() override;

    bool WasCancelled() const { return mCancelled; }
    void SetCancelled(bool inCancelled) { mCancelled = inCancelled; }

    // Builds and runs the dialog. A script that builds no dialog (empty or unreadable) shows
    // nothing and counts as cancelled, so the caller's values stay as they were.
    void Run(std::stringstream& inScript);

protected:
    // Checks the controls before every acceptance; false keeps the dialog open, after telling
    // the user what is wrong.
    virtual bool ValidateControls();
    // Copies the controls' values into the dialog's fields; runs on every acceptance.
    virtual void ReadControls();
    // The OK path: check and read the controls, mark confirmed, end the dialog.
    void Accept();
    // The cancel path: mark cancelled, end the dialog.
    void Dismiss();
    // For a dialog that follows work to its end: Escape and closing the window run inRequestStop
    // instead of closing it, and only the work's end closes the dialog.
    void StopInsteadOfClosing(std::function<void()> inRequestStop);
    // Binds "okButton" and "cancelButton" as the buttons that Enter and Escape press: OK runs
    // Accept, cancel runs Dismiss. A missing button is skipped.
    void BindOkAndCancel();

    // Shows ioField in inControl now and copies the control's value back into ioField on every
    // acceptance, before ReadControls. A null control (the script lacks it) binds nothing.
    template <class Control, class Field>
    boost::intrusive_ptr<Control> Bind(boost::intrusive_ptr<Control> inControl, Field& ioField)
    {
        if (inControl) {
            ShowValue(*inControl, ioField);
            mReaders.emplace_back([inControl, &ioField] { ReadValue(*inControl, ioField); });
        }
        return inControl;
    }
    // The same for the control that the script names inName.
    template <class Control, class Field>
    boost::intrusive_ptr<Control> Bind(const std::wstring& inName, Field& ioField)
    {
        return Bind(GetUINodePtr<Control>(inName), ioField);
    }
    // Runs inHandler each time the user changes the control named inName; returns the control.
    // The handler is the control's own kind, so that no std::function type crosses to the host.
    template <class Control>
    boost::intrusive_ptr<Control> OnChange(const std::wstring& inName,
                                           zelui::controls::UI_Control::ChangeHandler inHandler)
    {
        boost::intrusive_ptr<Control> control = GetUINodePtr<Control>(inName);
        if (control) {
            control->NotifyWhenChanged(std::move(inHandler));
        }
        return control;
    }

private:
    void ReadBoundFields();
    bool HandleResponse(zelui::ui::UI_Dialog::Response& ioResponse);

    // Puts the host in its modal state: the focused panel's super-commander becomes the
    // command target and players stop; auto-save is blocked for exactly the life of the
    // dialog, whatever ends it.
    class ModalScope {
    public:
        ModalScope();
        ~ModalScope();
        ModalScope(const ModalScope&) = delete;
        ModalScope& operator=(const ModalScope&) = delete;
    };

    bool mCancelled;
    ModalScope mModalScope;
    std::vector<std::function<void()>> mReaders;
    boost::intrusive_ptr<zelui::controls::UI_Button> mOkButton;
    boost::intrusive_ptr<zelui::controls::UI_Button> mCancelButton;
};

// Loads inScriptFile and finds the workspace that a script dialog opens in. Null when either
// fails: then the entry function returns false without showing a dialog.
UIF::Workspace* PrepareScriptDialog(const std::wstring& inScriptFile, std::stringstream& outScript);

// Runs the script dialog Dialog, made from the workspace and a copy of ioValues, and copies its
// Result() (when it has one: a question has none) into ioValues when the user confirmed.
// Returns whether they did; on cancel ioValues stays as the caller passed it.
template <class Dialog, class Values>
bool RunScriptDialog(const std::wstring& inScriptFile, Values& ioValues)
{
    std::stringstream script;
    const UIF::Workspace* workspace = PrepareScriptDialog(inScriptFile, script);
    if (!workspace) {
        return false;
    }
    Dialog dialog(*workspace, ioValues);
    dialog.Run(script);
    if (dialog.WasCancelled()) {
        return false;
    }
    if constexpr (requires { dialog.Result(); }) {
        ioValues = dialog.Result();
    }
    return true;
}

} // namespace DLG
