#pragma once

#include "DLG/Export.h"

namespace DLG::DeleteMedia {

// Asks whether to delete the media files as well. The check box starts checked whatever
// outDeleteMedia holds, and its state is written to outDeleteMedia once the dialog closes,
// confirmed or not; when no dialog could be shown it is left alone. Returns whether the user
// confirmed.
DLG_API bool DoDeleteMediaDialog(bool& outDeleteMedia);

} // namespace DLG::DeleteMedia
