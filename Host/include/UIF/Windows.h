#pragma once

#include "KOR/HostAPI.h"
#include "KOR/Platform.h"

namespace UIF::Windows {

// Disables a window and the windows it owns while a system dialog is up; what it disabled it
// enables again when it goes. A null window disables the editor's main window.
class HOST_API ParentAndChildWindowDisabler {
public:
    explicit ParentAndChildWindowDisabler(HWND inWindow);
    ~ParentAndChildWindowDisabler();
    ParentAndChildWindowDisabler(const ParentAndChildWindowDisabler&) = delete;
    ParentAndChildWindowDisabler& operator=(const ParentAndChildWindowDisabler&) = delete;

private:
    struct Disabled;
    Disabled* mDisabled;
};

} // namespace UIF::Windows
