#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace KOR {

// The texts a module shows, by numeric string ID.
class HOST_API ResourceCollection {
public:
    virtual ~ResourceCollection();
    // True and the text when the table holds inID.
    virtual bool FindString(unsigned int inID, std::wstring& outText) const = 0;
};

// The loaded module as the operating system sees it: where its own resources (images) are.
struct NativeModule {
    std::wstring resourceDirectory; // empty when the module has no resources
};

// The object that the host creates for a loaded module; it is also the module's string table.
class HOST_API Module : public ResourceCollection {
public:
    ~Module() override;
    // The native side of the module, for OS_ResourceManager.
    NativeModule GetNativeModule() const;
};

// The text of string inID, or a visible placeholder ("<string 11152>") when the table lacks it.
HOST_API std::wstring LoadStringW(const ResourceCollection& inResources, unsigned int inID);

// A localisation key of the form "$$$/path/Key=Default text": the text that the host's
// localisation table holds for the key, otherwise the default after "=". Other text stays as it is.
HOST_API std::wstring Localize(const std::wstring& inKeyWithDefault);

} // namespace KOR
