#pragma once

#include <string>

#include "KOR/Color.h"
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

// A colour matte of the project: a clip that shows one colour all over.
class HOST_API IColorMatte : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual KOR::ParamColor<unsigned long> GetColor() const = 0;
    virtual void SetColor(const KOR::ParamColor<unsigned long>& inColor) = 0;

protected:
    ~IColorMatte() override;
};

using ColorMatteRef = KOR::InterfaceRef<IColorMatte>;

} // namespace BE
