#pragma once

#include <string>

#include "KOR/HostAPI.h"
#include "KOR/Module.h"

namespace zelui::utility {

// The images among a module's native resources, by resource name.
class HOST_API OS_ResourceManager {
public:
    explicit OS_ResourceManager(const KOR::NativeModule& inModule);

    // True when the module holds an image named inName.
    bool HasImage(const std::wstring& inName) const;
    // Where the image named inName is stored, or an empty text when the module lacks it.
    std::wstring ImagePath(const std::wstring& inName) const;

private:
    KOR::NativeModule mModule;
};

} // namespace zelui::utility
