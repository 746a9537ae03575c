#pragma once

#include "KOR/HostAPI.h"

namespace zelui::drawbot {

// The host's source of drawing resources (fonts, colours, surfaces) for the views it builds.
// Dialogs only pass it on to the views they create.
class HOST_API SupplierInterface {
public:
    virtual ~SupplierInterface();
};

} // namespace zelui::drawbot
