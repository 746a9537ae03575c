#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace KOR {

// Named message stations: controls and views register one to be reached by messages.
class HOST_API StationRegistry {
public:
    // A name no other live station has.
    static std::wstring RegisterUniqueStation();
    static void DisposeStation(const std::wstring& inName);
    static bool IsRegistered(const std::wstring& inName);
};

} // namespace KOR
