#pragma once

#include "KOR/HostAPI.h"

namespace UIF {

// The brightness of the host's user interface, from 0 (darkest) to 100 (lightest).
class HOST_API ColorManager {
public:
    static int GetBrightness();
    // Recolours every window of the host; values outside 0 to 100 are clamped.
    static void SetBrightness(int inBrightness);
};

} // namespace UIF
