#pragma once

#include <memory>
#include <string>

#include "BE/DeviceControl.h"
#include "KOR/InterfaceRef.h"
#include "UIF/DialogImpl.h"

namespace zelui::drawbot {
class SupplierInterface;
}
namespace zelui::ui {
class UI_Node;
class UI_Timer;
}

namespace DLG {

// Shows the state, timecode and dropped frames of a running export to tape, looking at it
// every kPollMilliseconds, until it ends (result 1) or the user aborts it (result 2). Escape
// and the window's close button are the Abort button: closing the window aborts the export.
class SerialExportStatusDialog : public UIF::DialogImpl {
public:
    static constexpr unsigned int kTemplateID = 1290;
    static constexpr int kStateText = 11290;
    static constexpr int kTimecodeText = 11291;
    static constexpr int kDroppedFramesText = 11292;
    static constexpr int kAbortButton = 2;
    static constexpr int kPollMilliseconds = 100;

    SerialExportStatusDialog(KOR::InterfaceRef<BE::ISerialExportStatus> inExport, zelui::ui::UI_Node* inParent);
    ~SerialExportStatusDialog() override;

    // Shows the export as it is now and returns true; once it is over, ends the dialog and
    // returns false.
    bool Refresh();

protected:
    void OnInitDialog() override;
    void OnCommand(int inID, int inNotifyCode) override;

private:
    KOR::InterfaceRef<BE::ISerialExportStatus> mExport;
    std::unique_ptr<zelui::ui::UI_Timer> mTimer;
};

// The creator that DispatchDialog calls for kSerialExportStatusDialogID. inParameters must
// offer BE::ISerialExportStatus.
void CreateSerialExportStatusDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                                    const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);

} // namespace DLG
