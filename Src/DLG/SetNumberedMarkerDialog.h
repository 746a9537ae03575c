#pragma once

#include <string>

#include "DLG/Export.h"

namespace DLG::SetNumberedMarker {

// Names the numbered marker inNumber; the number is shown, not edited. ioName is written only
// when the user confirms; returns whether they did.
DLG_API bool DoSetNumberedMarkerDialog(long inNumber, std::wstring& ioName);

} // namespace DLG::SetNumberedMarker
