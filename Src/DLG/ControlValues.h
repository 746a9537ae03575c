#pragma once

#include <string>
#include <vector>

#include "zelui/Controls.h"
#include "zelui/HotTextNumber.h"

namespace DLG {

// How a dialog field is shown in a control and read back from it: one pair per kind of
// control and field, for DialogBaseImpl::Bind.
void ShowValue(zelui::controls::UI_NumberEdit& ioControl, double inValue);
void ReadValue(const zelui::controls::UI_NumberEdit& inControl, double& outValue);
void ShowValue(zelui::controls::UI_TextEdit& ioControl, const std::wstring& inText);
void ReadValue(const zelui::controls::UI_TextEdit& inControl, std::wstring& outText);
void ShowValue(zelui::controls::UI_CheckBox& ioControl, bool inChecked);
void ReadValue(const zelui::controls::UI_CheckBox& inControl, bool& outChecked);
void ShowValue(zelui::controls::UI_HotTextNumber& ioControl, double inValue);
void ReadValue(const zelui::controls::UI_HotTextNumber& inControl, double& outValue);
// A list's rows checked by the flags, row by row; rows without a flag are cleared.
void ShowValue(zelui::controls::UI_ListBox& ioControl, const std::vector<bool>& inChecked);
void ReadValue(const zelui::controls::UI_ListBox& inControl, std::vector<bool>& outChecked);

} // namespace DLG
