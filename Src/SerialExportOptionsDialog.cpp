#include "DLG/SerialExportOptionsDialog.h"

#include "BE/DeviceControl.h"
#include "DLG/Module.h"
#include "DLG/SerialDialogSupport.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

using SerialDialogs::ReadField;
using SerialDialogs::WriteField;

constexpr SerialDialogs::ListItem kModes[] = {{11488, 1}, {11489, 0}};
constexpr int kEighth = 8;

} // namespace

SerialExportOptionsDialog::SerialExportOptionsDialog(std::uint8_t* ioRecord, zelui::ui::UI_Node* inParent)
    : UIF::DialogImpl(kTemplateID, inParent), mRecord(ioRecord)
{
}

void SerialExportOptionsDialog::OnInitDialog()
{
    SerialDialogs::ApplyHostColors(*this);
    SerialDialogs::AddItems(*this, kModeList, kModes);
    SerialDialogs::SelectByCode(*this, kModeList, mRecord[kModeOffset]);
    for (const int edit : {kEighthsEdit, kSecondEdit, kThirdEdit}) {
        SetItemUnsignedOnly(edit);
    }
    // Integer division rounds toward zero, as the stored eighths are shown.
    SetItemText(kEighthsEdit, std::to_wstring(ReadField<std::int16_t>(mRecord, kEighthsOffset) / kEighth));
    SetItemText(kSecondEdit, std::to_wstring(ReadField<std::int16_t>(mRecord, kSecondOffset)));
    SetItemText(kThirdEdit, std::to_wstring(ReadField<std::int16_t>(mRecord, kThirdOffset)));
    SetItemChecked(kFlagCheckbox, mRecord[kFlagOffset] != 0);
    SetItemChecked(kMasterCheckbox, mRecord[kMasterOffset] != 0);
    ShowDependent();
}

void SerialExportOptionsDialog::OnCommand(int inID, int)
{
    if (inID == kMasterCheckbox) {
        ShowDependent();
    } else if (inID == 1) {
        WriteRecord();
        EndDialog(1);
    } else if (inID == 2) {
        EndDialog(2);
    }
}

// The dependent box follows its master and shows the stored flag, not what it showed before.
void SerialExportOptionsDialog::ShowDependent()
{
    const bool master = IsItemChecked(kMasterCheckbox);
    SetItemEnabled(kDependentCheckbox, master);
    SetItemChecked(kDependentCheckbox, master && mRecord[kDependentOffset] != 0);
}

void SerialExportOptionsDialog::WriteRecord()
{
    const auto entered = [this](int inEdit) { return GetItemUnsigned(inEdit); };
    WriteField(mRecord, kEighthsOffset, static_cast<std::int16_t>(entered(kEighthsEdit) * kEighth));
    WriteField(mRecord, kSecondOffset, static_cast<std::int16_t>(entered(kSecondEdit)));
    WriteField(mRecord, kThirdOffset, static_cast<std::int16_t>(entered(kThirdEdit)));
    mRecord[kModeOffset] = SerialDialogs::SelectedCode(*this, kModeList) != 0 ? 1 : 0;
    mRecord[kFlagOffset] = IsItemChecked(kFlagCheckbox) ? 1 : 0;
    mRecord[kMasterOffset] = IsItemChecked(kMasterCheckbox) ? 1 : 0;
    mRecord[kDependentOffset] = IsItemChecked(kDependentCheckbox) ? 1 : 0;
}

void CreateSerialExportOptionsDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                                     const zelui::drawbot::SupplierInterface*, zelui::ui::UI_Node* inParent)
{
    ZEL_INPUT_CONTRACT(inDialogID == kSerialExportToTapeDialogID);
    auto request = KOR::InterfaceRef<BE::ISerialExportOptionsRequest>::Query(inParameters);
    std::uint8_t* record = request->GetOptionsRecord();
    ZEL_INPUT_CONTRACT(record != nullptr);
    zelui::ui::UI_Node* parent = request->GetParentWindow();
    SerialExportOptionsDialog dialog(record, parent ? parent : inParent);
    const long result = dialog.DoModal();
    request->SetCancelled(result == 2);
    request->SetResultCode(result);
}

} // namespace DLG
