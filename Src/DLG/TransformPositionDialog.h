#pragma once

#include "DLG/Export.h"

namespace DLG::TransformPosition {

// Edits a position. x and y are written only when the user confirms; returns whether they were.
DLG_API bool DoTransformPositionDialog(double& ioX, double& ioY);

} // namespace DLG::TransformPosition
