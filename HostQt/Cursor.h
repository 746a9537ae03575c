#pragma once

#include "UIF/Cursor.h"

namespace HostQt {

// The wait cursor as the application's override cursor, stacked as Qt stacks them.
class OverrideCursors : public UIF::CursorService {
public:
    void SetWaitCursor() override;
    void RestoreCursor() override;
};

} // namespace HostQt
