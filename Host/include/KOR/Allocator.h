#pragma once

#include <cstddef>

#include "KOR/HostAPI.h"

namespace KOR {

// The host's small-object allocator. Blocks handed out here go back here, never to free().
class HOST_API Allocator {
public:
    static void* Allocate(std::size_t inSize);
    static void Free(void* inBlock);
};

} // namespace KOR
