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

void ShowValue(zelui::controls::UI_ListBox& ioControl, const std::vector<bool>& inChecked)
{
    for (int row = 0; row < ioControl.GetRowCount(); ++row) {
        ioControl.SetRowChecked(row, static_cast<std::size_t>(row) < inChecked.size() && inChecked[row]);
    }
}

void ReadValue(const zelui::controls::UI_ListBox& inControl, std::vector<bool>& outChecked)
{
    for (std::size_t row = 0; row < outChecked.size(); ++row) {
        outChecked[row] = inControl.IsRowChecked(static_cast<int>(row));
    }
}

} // namespace DLG
