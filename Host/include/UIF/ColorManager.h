#pragma once

#include <string>

#include "KOR/Color.h"
#include "KOR/HostAPI.h"

namespace UIF {

// The brightness of the host's user interface, from 0 (darkest) to 100 (lightest).
class HOST_API ColorManager {
public:
    static int GetBrightness();
    // Recolours every window of the host; values outside 0 to 100 are clamped.
    static void SetBrightness(int inBrightness);
    // The colour of the interface element named inKey ("colors.kor.ListBox": the background of
    // lists and edits; "colors.kor.ListBoxText": their text) at the current brightness.
    static KOR::ParamColor<unsigned long> GetColor(const std::wstring& inKey);
};

} // namespace UIF
