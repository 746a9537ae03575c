#pragma once

#include "DLG/Export.h"

namespace DLG::FontSize {

// Edits a font size in points. ioSize is written only when the user confirms; returns whether they did.
DLG_API bool DoFontSizeDialog(double& ioSize);

} // namespace DLG::FontSize
