#include "DLG/FontSizeDialog.h"

#include "DLG/OneValueDialog.h"

namespace DLG::FontSize {

bool DoFontSizeDialog(double& ioSize) { return RunNumberDialog(L"FontSizeDialog", L"sizeNumberEdit", ioSize); }

} // namespace DLG::FontSize
