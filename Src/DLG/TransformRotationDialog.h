#pragma once

#include "DLG/Export.h"

namespace DLG::TransformRotation {

// Edits a rotation in degrees. ioDegrees is written only when the user confirms; returns whether they did.
DLG_API bool DoTransformRotationDialog(double& ioDegrees);

} // namespace DLG::TransformRotation
