#pragma once

#include "DLG/Export.h"
#include "KOR/Time.h"

namespace DLG {

// Edits where a sequence's timecode starts, in the current project's display format.
// ioZeroPoint is written only when the user confirms; returns whether they did.
DLG_API bool DoSequenceZeroPointDialog(KOR::Time& ioZeroPoint);

} // namespace DLG
