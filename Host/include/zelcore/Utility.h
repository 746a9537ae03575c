#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace zelcore::utility {

// The number that text starts with, after blanks: "12.5 dB" is 12.5, "-3" is -3, and a comma
// stands for the decimal point. Text that starts with no number is 0.
HOST_API double StringToNumber(const std::wstring& inText);

// inNumber in hexadecimal digits, upper case, without prefix or leading zeros ("FF" for 255, "0" for 0).
HOST_API std::wstring NumberToHexString(unsigned long inNumber);

} // namespace zelcore::utility
