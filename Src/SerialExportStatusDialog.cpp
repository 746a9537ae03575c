#include "DLG/SerialExportStatusDialog.h"

#include "DLG/ExportToTapeDialogImpl.h"
#include "DLG/Module.h"
#include "DLG/SerialDialogSupport.h"
#include "DLG/StringIDs.h"
#include "zelcore/Error.h"
#include "zelui/UI_Timer.h"

namespace DLG {

SerialExportStatusDialog::SerialExportStatusDialog(KOR::InterfaceRef<BE::ISerialExportStatus> inExport,
                                                   zelui::ui::UI_Node* inParent)
    : UIF::DialogImpl(kTemplateID, inParent), mExport(std::move(inExport)),
      mTimer(std::make_unique<zelui::ui::UI_Timer>(kPollMilliseconds, [this] { Refresh(); }))
{
}

SerialExportStatusDialog::~SerialExportStatusDialog() = default;

void SerialExportStatusDialog::OnInitDialog()
{
    SerialDialogs::ApplyHostColors(*this);
    SetItemText(kAbortButton, LoadString(kStr_SerialStatusAbort));
    // An export that is already over ends the dialog here, before it shows; then nothing polls.
    if (Refresh()) {
        mTimer->Start();
    }
}

bool SerialExportStatusDialog::Refresh()
{
    if (!mExport->IsRunning()) {
        mTimer->Stop();
        EndDialog(1);
        return false;
    }
    SetItemText(kStateText, LoadString(ExportStateTextIDs(mExport->GetExportState()).first));
    SetItemText(kTimecodeText, mExport->GetCurrentTimecode().GetString());
    SetItemText(kDroppedFramesText,
                LoadStringWith(kStr_SerialStatusDroppedFrames, std::to_wstring(mExport->GetDroppedFrames())));
    return true;
}

void SerialExportStatusDialog::OnCommand(int inID, int)
{
    if (inID == kAbortButton) {
        mTimer->Stop();
        mExport->Abort();
        EndDialog(2);
    }
}

void CreateSerialExportStatusDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                                    const zelui::drawbot::SupplierInterface*, zelui::ui::UI_Node* inParent)
{
    ZEL_INPUT_CONTRACT(inDialogID == kSerialExportStatusDialogID);
    auto status = KOR::InterfaceRef<BE::ISerialExportStatus>::Query(inParameters);
    zelui::ui::UI_Node* parent = status->GetParentWindow();
    SerialExportStatusDialog dialog(status, parent ? parent : inParent);
    dialog.DoModal();
}

} // namespace DLG
