#pragma once

#include <sstream>
#include <string>

#include <boost/function.hpp>

#include "DLG/Export.h"
#include "zelui/Controls.h"
#include "zelvrel/UI_Vrel.h"

namespace UIF {
class Workspace;
}

namespace DLG {

// The base of every script dialog. While one exists, no player runs and the host does not save
// automatically; the command target is the focused panel's super-commander and nobody holds
// the input. Dismissal (Cancel, Escape, closing the window) marks it cancelled, acceptance
// (OK, Enter) marks it confirmed.
class DialogBaseImpl : public zelvrel::UI_Vrel {
public:
    DialogBaseImpl(const std::wstring& inNodeName, const zelui::drawbot::SupplierInterface* inSupplier,
                   zelui::ui::UI_Node* inParent);
    ~DialogBaseImpl() override;

    bool WasCancelled() const { return mCancelled; }
    void SetCancelled(bool inCancelled) { mCancelled = inCancelled; }

    // Builds and runs the dialog. A script that builds no dialog (empty or unreadable) shows
    // nothing and counts as cancelled, so the caller's values stay as they were.
    void Run(std::stringstream& inScript);

protected:
    // Copies the controls' values into the dialog's fields; runs on every acceptance.
    virtual void ReadControls();
    // The OK path: read the controls, mark confirmed, end the dialog.
    void Accept();
    // The cancel path: mark cancelled, end the dialog.
    void Dismiss();
    // Binds "okButton" and "cancelButton" as the buttons that Enter and Escape press. OK runs
    // inOkHandler, Accept when none is given; cancel runs Dismiss. A missing button is skipped.
    void BindOkAndCancel(boost::function<void()> inOkHandler = {});

private:
    bool HandleResponse(zelui::ui::UI_Dialog::Response& ioResponse);

    // Puts the host in its modal state: the focused panel's super-commander becomes the
    // command target, players stop and auto-save is blocked, for exactly the life of the
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
    boost::intrusive_ptr<zelui::controls::UI_Button> mOkButton;
    boost::intrusive_ptr<zelui::controls::UI_Button> mCancelButton;
};

// Loads inScriptFile and finds the workspace that a script dialog opens in. Null when either
// fails: then the entry function returns false without showing a dialog.
UIF::Workspace* PrepareScriptDialog(const std::wstring& inScriptFile, std::stringstream& outScript);

} // namespace DLG
