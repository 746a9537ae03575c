#pragma once

#include "KOR/HostAPI.h"

namespace zelcore::debug {

// What the host does when a contract fails: offer the debugger, then break if accepted.
class HOST_API DebugService {
public:
    virtual ~DebugService();
    virtual bool OfferBreak(const char* inExpression, const char* inFile, int inLine) = 0;
    virtual void Break() = 0;
};

} // namespace zelcore::debug
