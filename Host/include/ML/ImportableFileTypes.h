#pragma once

#include <set>
#include <string>

#include "KOR/ClassRegistry.h"

namespace ML {

// The host's importer registry: which files its importers take.
class HOST_API IImporterRegistry : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID; // {8DB73A9C-526F-4145-B454-98603C920FC2}

    // Whether a still-image importer takes the file, by its name.
    virtual bool IsStillImporterAvailable(const std::wstring& inFileName) const = 0;
    // The extensions that some importer takes, upper case, without the dot.
    virtual std::set<std::wstring> GetImportableExtensions() const = 0;

protected:
    ~IImporterRegistry() override;
};

// The class of the host's importer registry object, {ABBB22E3-1D4D-4c87-8BFF-3162577F0528}.
inline constexpr KOR::ClassID kImporterRegistryClassID = {0xAB, 0xBB, 0x22, 0xE3, 0x1D, 0x4D, 0x4C, 0x87,
                                                          0x8B, 0xFF, 0x31, 0x62, 0x57, 0x7F, 0x05, 0x28};

namespace ImportableFileTypeUtils {
// The extensions the installed importers take, upper case without the dot; empty without a registry.
HOST_API std::set<std::wstring> GetImportableFileExtensions();
} // namespace ImportableFileTypeUtils

} // namespace ML
