#pragma once

#include <string>

#include "KOR/InterfaceRef.h"

namespace BE {

// The parameters object that the host hands to the colour matte name dialog: the name of
// the matte being created or renamed.
class HOST_API IColorMatteNameParameters : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual void SetName(const std::wstring& inName) = 0;

protected:
    ~IColorMatteNameParameters() override;
};

} // namespace BE
