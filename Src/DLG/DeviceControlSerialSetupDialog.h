#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DLG/SerialPorts.h"
#include "KOR/InterfaceRef.h"
#include "UIF/DialogImpl.h"

namespace zelui::drawbot {
class SupplierInterface;
}
namespace zelui::ui {
class UI_Node;
}

namespace DLG {

// The set-up of serial deck control over the host's settings record. The record is read at
// initialisation and on each change of protocol, and written only by OK, at these offsets.
class CDeviceControlSerialSetupDialog : public UIF::DialogImpl {
public:
    static constexpr unsigned int kTemplateID = 1300;
    static constexpr int kProtocolList = 11300;
    static constexpr int kPortList = 11301;
    static constexpr int kGeneralCheckbox = 11302;
    static constexpr int kProtocolFlagCheckbox = 11303;
    static constexpr int kFirstOptionList = 11304;
    static constexpr int kSecondOptionList = 11305;

    static constexpr std::size_t kProtocolOffset = 4;
    static constexpr std::size_t kPortOffset = 6;
    static constexpr std::size_t kFirstOptionOffset = 8;
    static constexpr std::size_t kSecondOptionOffset = 10;
    static constexpr std::size_t kProtocolFlagOffset = 24;
    static constexpr std::size_t kGeneralFlagOffset = 25;

    CDeviceControlSerialSetupDialog(std::uint8_t* ioRecord, zelui::ui::UI_Node* inParent,
                                    std::vector<SerialPorts::Port> inPorts);

protected:
    void OnInitDialog() override;
    void OnCommand(int inID, int inNotifyCode) override;

private:
    void FillFirstOptions(long inProtocol);
    void ProtocolChanged();
    void WriteRecord();

    std::uint8_t* mRecord;
    std::vector<SerialPorts::Port> mPorts;
};

// The creator that DispatchDialog calls for kSerialSetupDialogID. inParameters must offer
// BE::ISerialSetupRequest.
void CreateSerialSetupDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                             const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);

} // namespace DLG
