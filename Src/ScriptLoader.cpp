#include "DLG/ScriptLoader.h"

#include <cstring>

#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "KOR/Paths.h"
#include "UIF/MessageBox.h"

namespace DLG {

namespace {

constexpr std::int64_t kTerminatorBytes = 4;

std::wstring ScriptPath(const std::wstring& inFileName)
{
    return KOR::PathUtils::AddTrailingSlash(KOR::DirectoryRegistry::FindDirectory(L"vrel.scripts")) + inFileName;
}

// The size of the script plus its terminator; 0 when it cannot be opened.
std::int64_t BufferSize(const std::wstring& inPath)
{
    if (!KOR::PathUtils::ExistsOnDisk(inPath)) {
        return 0;
    }
    KOR::File file(inPath);
    if (!file.Open(KOR::File::Mode::kRead)) {
        return 0;
    }
    const std::int64_t size = file.SizeOnDisk() + kTerminatorBytes;
    file.Close();
    return size;
}

bool ReadScript(const std::wstring& inPath, char* outBuffer, std::int64_t inSize)
{
    if (inSize < kTerminatorBytes || !KOR::PathUtils::ExistsOnDisk(inPath)) {
        return false;
    }
    KOR::File file(inPath);
    if (!file.Open(KOR::File::Mode::kRead)) {
        return false;
    }
    std::int64_t read = 0;
    const KOR::File::Result result = file.Read(outBuffer, inSize - kTerminatorBytes, read);
    file.Close();
    return result == 0;
}

} // namespace

ScriptLoader::ScriptLoader(const std::wstring& inFileName)
{
    const std::wstring path = ScriptPath(inFileName);
    const std::int64_t size = BufferSize(path);
    // Never less than the terminator, so that the text always ends inside the buffer.
    const std::int64_t allocated = size < kTerminatorBytes ? kTerminatorBytes : size;
    mBuffer = std::make_unique<char[]>(static_cast<std::size_t>(allocated));
    if (!ReadScript(path, mBuffer.get(), size)) {
        UIF::MessageBoxW(LoadString(kStr_ScriptMissingText), LoadString(kStr_ScriptMissingCaption),
                         UIF::kMessageBox_OK, UIF::kMessageBoxIcon_Error, 0);
    }
}

ScriptLoader::~ScriptLoader() = default;

bool ScriptLoader::GetStream(std::stringstream& outStream) const
{
    if (!mBuffer) {
        return false;
    }
    outStream.str(std::string(mBuffer.get()));
    return true;
}

} // namespace DLG
