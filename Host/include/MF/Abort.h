#pragma once

#include "KOR/KORUnknown.h"

namespace MF {

// Asked by long media work between its steps: true once whoever started the work wants it to
// stop. Read from worker threads; answers without blocking.
class HOST_API IAbort : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual bool IsAborted() const = 0;

protected:
    ~IAbort() override;
};

} // namespace MF
