#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "KOR/HostAPI.h"

namespace KOR {

namespace DiskUtils {
// A byte count as a person reads it: "512 bytes", "1.4 MB", "23.7 GB".
HOST_API std::wstring MakeDiskSpaceString(std::uint64_t inBytes);
// Bytes the current user may still write on the volume that holds inPath; 0 when unknown.
HOST_API std::uint64_t GetFreeSpace(const std::wstring& inPath);
} // namespace DiskUtils

// A folder of the file system.
class HOST_API Directory {
public:
    static Directory ConstructDirectory(const std::wstring& inPath);

    const std::wstring& GetPath() const { return mPath; }
    bool Exists() const;
    // Whether a file can be created in it now.
    bool IsDirectoryWriteable() const;

private:
    explicit Directory(std::wstring inPath) : mPath(std::move(inPath)) {}
    std::wstring mPath;
};

} // namespace KOR
