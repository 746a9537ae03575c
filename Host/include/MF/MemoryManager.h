#pragma once

#include <cstdint>

#include "KOR/HostAPI.h"

namespace MF::MM {

// Asks the media memory manager to free up to inBytes of its caches (decoded frames, thumbnails,
// audio peaks). Urgency 0 frees what is not in use now; higher urgencies may also drop what is
// about to be shown.
HOST_API void Purge(std::uint64_t inBytes, int inUrgency);

} // namespace MF::MM
