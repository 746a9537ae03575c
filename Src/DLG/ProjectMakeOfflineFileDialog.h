#pragma once

#include "DLG/Export.h"

namespace DLG {

// Asks whether media made offline keep their files on disk (the choice at start) or have
// them deleted. outDeleteFiles is written only when the user confirms; returns whether they did.
DLG_API bool DoProjectMakeOfflineFileDialog(bool& outDeleteFiles);

} // namespace DLG
