#pragma once

#include <string>

#include "KOR/InterfaceRef.h"

namespace zelui::drawbot {
class SupplierInterface;
}
namespace zelui::ui {
class UI_Node;
}

namespace DLG::ColorMatteName {

// The creator that DispatchDialog calls for kColorMatteNameDialogID. inParameters must offer
// BE::IColorMatteNameParameters; its name is changed only when the user confirms a non-empty name.
void CreateColorMatteNameDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                                const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);

} // namespace DLG::ColorMatteName
