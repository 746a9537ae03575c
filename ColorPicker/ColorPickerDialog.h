#pragma once

#include "DLG/Export.h"
#include "KOR/Color.h"

namespace DLG::ColorPickerDialog {

// Lets the user pick a colour, starting from inColor. True when they confirmed: outColor then
// holds the chosen colour. On cancel, or without a host workspace, outColor is left as it was.
DLG_API bool PickColor(const KOR::ParamColor<unsigned long>& inColor, KOR::ParamColor<unsigned long>& outColor);

} // namespace DLG::ColorPickerDialog
