#pragma once

#include <string>
#include <vector>

#include "DLG/Export.h"

namespace DLG {

// The error text: each line followed by "\r\n".
std::wstring ErrorLinesText(const std::vector<std::wstring>& inLines);

// Shows inLines in a read-only text under the window title inTitle (the script's title when
// empty), with an OK button only. Returns true when closed with OK or Enter, false by Escape
// or the window's close button; either way nothing is written.
DLG_API bool DoGenericTextErrorDialog(std::vector<std::wstring> inLines, std::wstring inTitle);

} // namespace DLG
