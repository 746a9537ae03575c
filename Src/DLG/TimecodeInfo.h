#pragma once

#include "BE/Project.h"
#include "DLG/Export.h"
#include "UIF/TimecodeInfo.h"

namespace DLG {

// How inProject shows times: its display formats, video frame rate and audio rate.
DLG_API UIF::TimecodeInfo GetTimecodeInfo(KOR::InterfaceRef<BE::IProject> inProject);

// The same, with a notifier that tells bound controls when those settings change. The
// notifier lives as long as any copy of the result.
DLG_API UIF::TimecodeControlInfo CreateNotifyingTimecodeControlInfo(KOR::InterfaceRef<BE::IProject> inProject);

} // namespace DLG
