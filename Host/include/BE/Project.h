#pragma once

#include <string>

#include "KOR/InterfaceRef.h"

namespace BE {

class IProjectSettings;

// An open project of the host.
class HOST_API IProject : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual std::wstring GetFilePath() const = 0;
    // Null when the project has no settings object.
    virtual KOR::InterfaceRef<IProjectSettings> GetProjectSettings() const = 0;

protected:
    ~IProject() override;
};

using ProjectRef = KOR::InterfaceRef<IProject>;

} // namespace BE
