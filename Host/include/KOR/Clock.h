#pragma once

#include <cstdint>

#include "KOR/HostAPI.h"

namespace KOR {

// The host's monotonic clock in milliseconds, and sleeping by it. A test installs one whose
// sleep moves its time on instead of waiting.
class HOST_API ClockService {
public:
    virtual ~ClockService();
    virtual std::int64_t Milliseconds() const = 0;
    virtual void Sleep(std::int64_t inMilliseconds) = 0;
};

namespace Clock {
// The installed clock's time; the steady system clock when the host installs none.
HOST_API std::int64_t GetMilliseconds();
// Blocks the calling thread for inMilliseconds on the installed clock; nothing for 0 or less.
HOST_API void SleepMilliseconds(std::int64_t inMilliseconds);
} // namespace Clock

} // namespace KOR
