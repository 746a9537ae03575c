#include "DLG/TransformOpacityDialog.h"

#include "DLG/OneValueDialog.h"

namespace DLG::TransformOpacity {

namespace {

constexpr double kPercent = 100.0;

} // namespace

double OpacityToPercent(double inOpacity) { return inOpacity * kPercent; }

double OpacityFromPercent(double inPercent, double inPreviousOpacity)
{
    // Multiplying and dividing by 100 does not always give the same double back.
    if (inPercent == OpacityToPercent(inPreviousOpacity)) {
        return inPreviousOpacity;
    }
    return inPercent / kPercent;
}

bool DoTransformOpacityDialog(double& ioOpacity)
{
    double percent = OpacityToPercent(ioOpacity);
    if (!RunNumberDialog(L"TransformOpacityDialog", L"opacityNumberEdit", percent)) {
        return false;
    }
    ioOpacity = OpacityFromPercent(percent, ioOpacity);
    return true;
}

} // namespace DLG::TransformOpacity
