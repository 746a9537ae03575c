#pragma once

#include <string>
#include <utility>
#include <vector>

#include "DLG/Export.h"

namespace DLG {

// Shows inMessage above a list of one row per pair (the item, such as a file name, and what
// went wrong with it) under the column titles inItemTitle and inProblemTitle (the script's
// titles where empty), with an OK button only. Returns true when closed with OK or Enter,
// false by Escape or the window's close button; either way nothing is written.
DLG_API bool DoGenericListErrorDialog(std::vector<std::pair<std::wstring, std::wstring>> inRows,
                                      std::wstring inMessage, std::wstring inItemTitle,
                                      std::wstring inProblemTitle);

} // namespace DLG
