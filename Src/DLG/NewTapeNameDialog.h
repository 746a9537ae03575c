#pragma once

#include <string>

#include "DLG/Export.h"

namespace DLG {

// Asks for the name of a new tape, offering inDefaultName (all selected, so typing replaces
// it). outName receives the name as entered, empty or not, only when the user confirms;
// returns whether they did.
DLG_API bool DoNewTapeNameDialog(std::wstring inDefaultName, std::wstring& outName);

} // namespace DLG
