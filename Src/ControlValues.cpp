#include "DLG/ControlValues.h"

namespace DLG {

void ShowValue(zelui::controls::UI_NumberEdit& ioControl, double inValue) { ioControl.SetValue(inValue); }

void ReadValue(const zelui::controls::UI_NumberEdit& inControl, double& outValue) { outValue = inControl.GetValue(); }

void ShowValue(zelui::controls::UI_TextEdit& ioControl, const std::wstring& inText) { ioControl.SetText(inText); }

void ReadValue(const zelui::controls::UI_TextEdit& inControl, std::wstring& outText) { outText = inControl.GetText(); }

void ShowValue(zelui::controls::UI_CheckBox& ioControl, bool inChecked) { ioControl.SetChecked(inChecked); }

void ReadValue(const zelui::controls::UI_CheckBox& inControl, bool& outChecked) { outChecked = inControl.IsChecked(); }

void ShowValue(zelui::controls::UI_HotTextNumber& ioControl, double inValue)
{
    ioControl.SetValue(inValue);
    ioControl.UpdateStringFromValue();
}

void ReadValue(const zelui::controls::UI_HotTextNumber& inControl, double& outValue) { outValue = inControl.GetValue(); }

} // namespace DLG
