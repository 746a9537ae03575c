#pragma once

#include "KOR/HostAPI.h"

namespace UIF {

class HOST_API CursorService {
public:
    virtual ~CursorService();
    virtual void SetWaitCursor() = 0;
    virtual void RestoreCursor() = 0;
};

// The wait cursor over every window of the host, for work that holds up the UI thread. Each
// SetWaitCursor pairs with one RestoreCursor; nested pairs restore the outer cursor.
HOST_API void SetWaitCursor();
HOST_API void RestoreCursor();

// Shows the wait cursor for its own life, so that it is restored on every path out of a block.
class WaitCursor {
public:
    WaitCursor() { SetWaitCursor(); }
    ~WaitCursor() { RestoreCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace UIF
