#pragma once

#include "DLG/Export.h"

namespace DLG::TransformOpacity {

// Opacity is a fraction (1 is opaque) that the dialog shows as a percentage.
double OpacityToPercent(double inOpacity);
// The opacity for inPercent. A percentage still showing inPreviousOpacity gives it back
// exactly, so that confirming an untouched value changes nothing.
double OpacityFromPercent(double inPercent, double inPreviousOpacity);

// Edits an opacity, shown in percent. ioOpacity is written only when the user confirms;
// returns whether they did.
DLG_API bool DoTransformOpacityDialog(double& ioOpacity);

} // namespace DLG::TransformOpacity
