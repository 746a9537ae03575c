#pragma once

#include <cstdint>
#include <string>

#include "KOR/InterfaceRef.h"
#include "UIF/DialogImpl.h"

namespace zelui::drawbot {
class SupplierInterface;
}
namespace zelui::ui {
class UI_Node;
}

namespace DLG {

// The options of the serial export path, edited in place in the host's record; OK writes the
// seven fields below, Cancel nothing.
class SerialExportOptionsDialog : public UIF::DialogImpl {
public:
    static constexpr unsigned int kTemplateID = 1280;
    static constexpr int kMasterCheckbox = 11280;
    static constexpr int kModeList = 11281;
    static constexpr int kSecondEdit = 11282;
    static constexpr int kEighthsEdit = 11283;
    static constexpr int kThirdEdit = 11284;
    static constexpr int kFlagCheckbox = 11285;
    static constexpr int kDependentCheckbox = 11286;

    static constexpr std::size_t kEighthsOffset = 14; // 16-bit signed, shown divided by 8
    static constexpr std::size_t kSecondOffset = 16;  // 16-bit signed
    static constexpr std::size_t kThirdOffset = 18;   // 16-bit signed
    static constexpr std::size_t kFlagOffset = 26;
    static constexpr std::size_t kMasterOffset = 27;
    static constexpr std::size_t kDependentOffset = 28;
    static constexpr std::size_t kModeOffset = 29;

    SerialExportOptionsDialog(std::uint8_t* ioRecord, zelui::ui::UI_Node* inParent);

protected:
    void OnInitDialog() override;
    void OnCommand(int inID, int inNotifyCode) override;

private:
    void ShowDependent();
    void WriteRecord();

    std::uint8_t* mRecord;
};

// The creator that DispatchDialog calls for kSerialExportToTapeDialogID. inParameters must
// offer BE::ISerialExportOptionsRequest.
void CreateSerialExportOptionsDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                                     const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);

} // namespace DLG
