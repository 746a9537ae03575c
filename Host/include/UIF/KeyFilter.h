#pragma once

#include "KOR/HostAPI.h"

namespace UIF {

// Which typed characters a kind of field admits.
class HOST_API KeyFilterStandard {
public:
    static bool AcceptUnsignedInteger(wchar_t inChar); // 0-9
    static bool AcceptSignedInteger(wchar_t inChar);   // and a sign
    static bool AcceptUnsignedFloat(wchar_t inChar);   // 0-9 and a decimal point or comma
    static bool AcceptSignedFloat(wchar_t inChar);     // and a sign
    static bool AcceptTimecodeDelimiter(wchar_t inChar); // : ; . , + / and blank
};

} // namespace UIF
