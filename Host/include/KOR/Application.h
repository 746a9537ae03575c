#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace KOR {

// The running editor as a whole.
class HOST_API Application {
public:
    virtual ~Application();
    virtual std::wstring GetName() const = 0;
    // The edition of the editor that runs; 0 for the full editor. Editions differ in what some
    // dialogs offer.
    virtual int GetApplicationType() const { return 0; }
    // The running application, or null when the host has none (a test without
    // one).
    static Application* Instance();
};

} // namespace KOR
