#include "DLG/DeviceControlSerialSetupDialog.h"

#include "BE/DeviceControl.h"
#include "DLG/Module.h"
#include "DLG/SerialDialogSupport.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

using SerialDialogs::ListItem;
using SerialDialogs::ReadField;
using SerialDialogs::WriteField;

constexpr ListItem kProtocols[] = {{11439, 1}, {11440, 16}, {11441, 18}, {11444, 4}, {11445, 64}, {11446, 20}};
constexpr ListItem kFirstOptions[] = {{11456, 1}};
constexpr ListItem kFirstOptionsOfProtocol1[] = {{11457, 2}, {11458, 3}};
constexpr ListItem kSecondOptions[] = {{11452, 32}, {11451, 16}, {11450, 1}, {11454, 64}, {11453, 128}};

bool HasProtocolFlag(long inProtocol) { return inProtocol == 16 || inProtocol == 18 || inProtocol == 20; }

} // namespace

CDeviceControlSerialSetupDialog::CDeviceControlSerialSetupDialog(std::uint8_t* ioRecord, zelui::ui::UI_Node* inParent,
                                                                 std::vector<SerialPorts::Port> inPorts)
    : UIF::DialogImpl(kTemplateID, inParent), mRecord(ioRecord), mPorts(std::move(inPorts))
{
}

void CDeviceControlSerialSetupDialog::OnInitDialog()
{
    SerialDialogs::ApplyHostColors(*this);
    SerialDialogs::AddItems(*this, kProtocolList, kProtocols);
    for (const SerialPorts::Port& port : mPorts) {
        SetListItemData(kPortList, AddListString(kPortList, port.name), static_cast<long>(port.number));
    }
    // Filled for the stored protocol, so that a stored option 2 or 3 of protocol 1 is there to be
    // selected; the protocol-change step below refills it for the protocol the list shows.
    const std::uint16_t protocol = ReadField<std::uint16_t>(mRecord, kProtocolOffset);
    FillFirstOptions(protocol);
    SerialDialogs::AddItems(*this, kSecondOptionList, kSecondOptions);

    SerialDialogs::SelectByCode(*this, kPortList, ReadField<std::uint16_t>(mRecord, kPortOffset));
    SerialDialogs::SelectByCode(*this, kFirstOptionList, ReadField<std::uint16_t>(mRecord, kFirstOptionOffset));
    SerialDialogs::SelectByCode(*this, kSecondOptionList, ReadField<std::uint16_t>(mRecord, kSecondOptionOffset));
    SerialDialogs::SelectByCode(*this, kProtocolList, protocol);
    ProtocolChanged();
}

void CDeviceControlSerialSetupDialog::OnCommand(int inID, int inNotifyCode)
{
    if (inID == kProtocolList && inNotifyCode == kNotify_SelectionChanged) {
        ProtocolChanged();
    } else if (inID == 1) {
        WriteRecord();
        EndDialog(1);
    } else if (inID == 2) {
        EndDialog(2);
    }
}

void CDeviceControlSerialSetupDialog::FillFirstOptions(long inProtocol)
{
    ResetList(kFirstOptionList);
    SerialDialogs::AddItems(*this, kFirstOptionList, kFirstOptions);
    if (inProtocol == 1) {
        SerialDialogs::AddItems(*this, kFirstOptionList, kFirstOptionsOfProtocol1);
    }
}

// The check boxes show the record, not what they showed before: a change of protocol resets them.
void CDeviceControlSerialSetupDialog::ProtocolChanged()
{
    const long protocol = SerialDialogs::SelectedCode(*this, kProtocolList);
    const long firstOption = SerialDialogs::SelectedCode(*this, kFirstOptionList);
    FillFirstOptions(protocol);
    SerialDialogs::SelectByCode(*this, kFirstOptionList, firstOption);

    SetItemEnabled(kGeneralCheckbox, true);
    SetItemChecked(kGeneralCheckbox, mRecord[kGeneralFlagOffset] != 0);
    const bool hasFlag = HasProtocolFlag(protocol);
    SetItemEnabled(kProtocolFlagCheckbox, hasFlag);
    SetItemChecked(kProtocolFlagCheckbox, hasFlag && mRecord[kProtocolFlagOffset] != 0);
}

// An empty list reports kListError for its absent selection, which is stored cut to 16 bits.
void CDeviceControlSerialSetupDialog::WriteRecord()
{
    const auto code = [this](int inList) {
        return static_cast<std::uint16_t>(SerialDialogs::SelectedCode(*this, inList));
    };
    WriteField(mRecord, kProtocolOffset, code(kProtocolList));
    WriteField(mRecord, kPortOffset, code(kPortList));
    WriteField(mRecord, kFirstOptionOffset, code(kFirstOptionList));
    WriteField(mRecord, kSecondOptionOffset, code(kSecondOptionList));
    mRecord[kGeneralFlagOffset] = IsItemChecked(kGeneralCheckbox) ? 1 : 0;
    mRecord[kProtocolFlagOffset] = IsItemChecked(kProtocolFlagCheckbox) ? 1 : 0;
}

void CreateSerialSetupDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                             const zelui::drawbot::SupplierInterface*, zelui::ui::UI_Node* inParent)
{
    ZEL_INPUT_CONTRACT(inDialogID == kSerialSetupDialogID);
    auto request = KOR::InterfaceRef<BE::ISerialSetupRequest>::Query(inParameters);
    std::uint8_t* record = request->GetSettingsRecord();
    ZEL_INPUT_CONTRACT(record != nullptr);
    zelui::ui::UI_Node* parent = request->GetParentWindow();
    CDeviceControlSerialSetupDialog dialog(record, parent ? parent : inParent, SerialPorts::EnumeratePorts());
    const long result = dialog.DoModal();
    request->SetCancelled(result == 2);
    request->SetResultCode(result);
}

} // namespace DLG
