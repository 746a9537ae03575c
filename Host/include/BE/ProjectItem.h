#pragma once

#include <string>

#include "BE/Media.h"
#include "KOR/InterfaceRef.h"

namespace BE {

// An item of the project's bin that stands for a media.
class HOST_API IProjectItem : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual MediaRef GetMedia() const = 0;

protected:
    ~IProjectItem() override;
};

using ProjectItemRef = KOR::InterfaceRef<IProjectItem>;

} // namespace BE
