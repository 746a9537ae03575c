#include "DLG/DialogBaseImpl.h"

#include "DLG/ScriptLoader.h"
#include "TL/AutoSave.h"
#include "UIF/PlayerControl.h"
#include "UIF/Workspace.h"
#include "zelui/UI_Node.h"

namespace DLG {

DialogBaseImpl::DialogBaseImpl(const std::wstring& inNodeName, const zelui::drawbot::SupplierInterface* inSupplier,
                               zelui::ui::UI_Node* inParent)
    : zelvrel::UI_Vrel(inNodeName, inSupplier, inParent), mCancelled(false)
{
    if (zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get()) {
        manager->EndInputCapture(false);
    }
    SetResponseHandler([this](zelui::ui::UI_Dialog::Response& ioResponse) { return HandleResponse(ioResponse); });
}

DialogBaseImpl::DialogBaseImpl(const std::wstring& inNodeName, const UIF::Workspace& inWorkspace)
    : DialogBaseImpl(inNodeName, inWorkspace.GetDrawSupplier(), inWorkspace.GetMainTopLevelWindow())
{
}

DialogBaseImpl::~DialogBaseImpl() = default;

void DialogBaseImpl::StopInsteadOfClosing(std::function<void()> inRequestStop)
{
    SetResponseHandler([stop = std::move(inRequestStop)](zelui::ui::UI_Dialog::Response& ioResponse) {
        if (ioResponse == zelui::ui::UI_Dialog::kResponse_Dismiss) {
            stop();
        }
        ioResponse = zelui::ui::UI_Dialog::kResponse_KeepOpen;
        return false;
    });
}

DialogBaseImpl::ModalScope::ModalScope()
{
    if (UIF::Workspace* workspace = UIF::Workspace::GetPtr()) {
        if (UIF::TabView* view = workspace->GetFocusedTabView()) {
            if (UIF::Commander* super = view->GetSuperCommander()) {
                super->SwitchTarget();
            }
        }
    }
    UIF::PlayerControl::StopAllPlayers();
    TL::BlockAutoSave();
}

DialogBaseImpl::ModalScope::~ModalScope() { TL::UnblockAutoSave(); }

void DialogBaseImpl::Run(std::stringstream& inScript)
{
    if (!ParseVrelScript(inScript)) {
        mCancelled = true;
    }
}

bool DialogBaseImpl::ValidateControls() { return true; }

void DialogBaseImpl::ReadControls() {}

void DialogBaseImpl::Accept()
{
    if (!ValidateControls()) {
        return;
    }
    ReadBoundFields();
    ReadControls();
    SetCancelled(false);
    if (zelui::ui::UI_Dialog* view = GetDialogView()) {
        view->EndDialog(zelui::ui::UI_Dialog::kResponse_Accept);
    }
}

void DialogBaseImpl::Dismiss()
{
    SetCancelled(true);
    if (zelui::ui::UI_Dialog* view = GetDialogView()) {
        view->EndDialog(zelui::ui::UI_Dialog::kResponse_Dismiss);
    }
}

void DialogBaseImpl::BindOkAndCancel()
{
    mOkButton = GetUINodePtr<zelui::controls::UI_Button>(L"okButton");
    mCancelButton = GetUINodePtr<zelui::controls::UI_Button>(L"cancelButton");
    if (mOkButton) {
        mOkButton->NotifyWhenChanged([this] { Accept(); });
        GetDialogView()->SetOkButton(mOkButton.get());
    }
    if (mCancelButton) {
        mCancelButton->NotifyWhenChanged([this] { Dismiss(); });
        GetDialogView()->SetCancelButton(mCancelButton.get());
    }
}

void DialogBaseImpl::ReadBoundFields()
{
    for (const std::function<void()>& read : mReaders) {
        read();
    }
}

bool DialogBaseImpl::HandleResponse(zelui::ui::UI_Dialog::Response& ioResponse)
{
    if (ioResponse == zelui::ui::UI_Dialog::kResponse_Dismiss) {
        mCancelled = true;
        return false;
    }
    if (ioResponse == zelui::ui::UI_Dialog::kResponse_Accept) {
        if (!ValidateControls()) {
            ioResponse = zelui::ui::UI_Dialog::kResponse_KeepOpen;
            return false;
        }
        ReadBoundFields();
        ReadControls();
        mCancelled = false;
        return true;
    }
    return false;
}

UIF::Workspace* PrepareScriptDialog(const std::wstring& inScriptFile, std::stringstream& outScript)
{
    ScriptLoader loader(inScriptFile);
    if (!loader.GetStream(outScript)) {
        return nullptr;
    }
    return UIF::Workspace::GetPtr();
}

} // namespace DLG
