#pragma once

#include "KOR/HostAPI.h"

namespace UIF {

class HOST_API SoundService {
public:
    virtual ~SoundService();
    virtual void Beep() = 0;
};

// The system's alert sound: a key refused, a value out of range.
HOST_API void Beep();

} // namespace UIF
