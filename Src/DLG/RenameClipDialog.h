#pragma once

#include <string>

#include "DLG/Export.h"

namespace DLG {

// Renames a clip. An empty name is refused with a message and the dialog stays open. ioName is
// written only when the user confirms; returns whether they did.
DLG_API bool DoRenameClipDialog(std::wstring& ioName);

} // namespace DLG
