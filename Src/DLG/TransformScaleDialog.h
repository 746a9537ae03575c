#pragma once

#include "DLG/Export.h"

namespace DLG::TransformScale {

// Edits a scale in percent: one uniform scale, or a horizontal and a vertical one, with
// ioIsUniform choosing which applies. Only the chosen kind can be typed in. All four are
// written only when the user confirms; returns whether they did.
DLG_API bool DoTransformScaleDialog(double& ioUniform, double& ioHorizontal, double& ioVertical, bool& ioIsUniform);

} // namespace DLG::TransformScale
