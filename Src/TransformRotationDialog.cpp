#include "DLG/TransformRotationDialog.h"

#include "DLG/OneValueDialog.h"

namespace DLG::TransformRotation {

bool DoTransformRotationDialog(double& ioDegrees)
{
    return RunNumberDialog(L"TransformRotationDialog", L"degreesNumberEdit", ioDegrees);
}

} // namespace DLG::TransformRotation
