#pragma once

#include <string>
#include <vector>

#include "DLG/Export.h"

namespace DLG {

// Shows a track per name with a check box for whether it is shown. inNames and ioShown are of
// one length. ioShown is written only when the user confirms; returns whether they did.
DLG_API bool DoHideShowTracksDialog(std::vector<std::wstring>& inNames, std::vector<bool>& ioShown);

} // namespace DLG
