#pragma once

#include "KOR/HostAPI.h"

namespace UIF {

class HOST_API PlayerService {
public:
    virtual ~PlayerService();
    virtual void StopAllPlayers() = 0;
};

class HOST_API PlayerControl {
public:
    // No playback runs under a modal dialog.
    static void StopAllPlayers();
};

} // namespace UIF
