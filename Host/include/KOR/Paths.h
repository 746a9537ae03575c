#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "KOR/HostAPI.h"

namespace KOR {

// Folders the host knows by name ("vrel.scripts" holds the layout scripts).
class HOST_API DirectoryRegistry {
public:
    // The folder registered as inName, or an empty string.
    static std::wstring FindDirectory(const std::wstring& inName);
    static void RegisterDirectory(const std::wstring& inName, const std::wstring& inPath);
};

namespace PathUtils {
// inPath made absolute (against the working folder) with "." and ".." steps and doubled or
// trailing separators removed; empty stays empty.
HOST_API std::wstring ToNormalizedPath(const std::wstring& inPath);
HOST_API std::wstring AddTrailingSlash(const std::wstring& inPath);
HOST_API bool ExistsOnDisk(const std::wstring& inPath);
// The part after the last backslash or "/"; the whole path when it has neither.
HOST_API std::wstring GetFilePart(const std::wstring& inPath);
// Whether inName can name a file on every system the editor runs on: not blank, no path
// separator, none of <>:"|?* or control characters, no reserved device name (CON, PRN, AUX, NUL,
// COM1-9, LPT1-9, with or without an extension), no trailing dot or blank, at most 255 UTF-8 bytes.
HOST_API bool IsValidFileName(const std::wstring& inName);
// Whether both paths name one existing file as the file system resolves them (on a
// case-insensitive one, names differing only in case do).
HOST_API bool IsSameFile(const std::wstring& inFirst, const std::wstring& inSecond);
// The text that stands for a file in menus and lists: its file part (after the last backslash
// or "/") without its extension.
HOST_API std::wstring GetDisplayStringFromPath(const std::wstring& inPath);
// The full paths of the files in inDirectory whose names end in inSuffix, sorted by name.
HOST_API std::vector<std::wstring> ListFiles(const std::wstring& inDirectory, const std::wstring& inSuffix);
// Whether inPath names an existing folder.
HOST_API bool IsDirectory(const std::wstring& inPath);
// Whether inPath is an absolute path that the file system could hold (not blank, no zero character).
HOST_API bool IsValidPath(const std::wstring& inPath);
// The folder part of a path: everything before its last backslash or "/" ("/" or "D:\\" for a file
// at a root).
HOST_API std::wstring GetFullDirectoryPart(const std::wstring& inPath);
// The extension of the file part with its dot (".png"); empty when the file part has no dot.
HOST_API std::wstring GetExtensionPart(const std::wstring& inPath);
// inBase followed by inRelative with one separator between them, the "." and ".." steps of
// inRelative resolved against inBase (never above its root).
HOST_API std::wstring CombinePaths(const std::wstring& inBase, const std::wstring& inRelative);
// Whether inTo can be reached from the folder of inFrom: both absolute, on the same root (the
// same drive or share). outRelative receives the way, "sub/b.wav" or "../other/c.wav", written
// with the separator that inTo uses.
HOST_API bool ArePathsRelative(const std::wstring& inFrom, const std::wstring& inTo, std::wstring& outRelative);
// The names in inFolder as the file system lists them, without "." and ".."; false when the
// folder cannot be read.
HOST_API bool ListFolderNames(const std::wstring& inFolder, std::vector<std::wstring>& outNames);
} // namespace PathUtils

// Reads a whole UTF-8 text file; false when it cannot be read.
HOST_API bool ReadTextFile(const std::wstring& inPath, std::wstring& outText);

// A file on disk, read in one piece.
class HOST_API File {
public:
    enum class Mode { kRead };
    using Result = std::int32_t; // 0 on success, negative on failure

    explicit File(const std::wstring& inPath);
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool Open(Mode inMode);
    std::int64_t SizeOnDisk() const;
    // Reads up to inSize bytes; outRead receives how many came.
    Result Read(void* outBuffer, std::int64_t inSize, std::int64_t& outRead);
    void Close();

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace KOR
