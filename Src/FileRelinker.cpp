#include "DLG/FileRelinker.h"

#include <utility>

#include "KOR/Paths.h"

namespace DLG {

// {5C0E7A51-2D3B-4F86-9A61-0B7E4C2D9F13}
const KOR::InterfaceID IFileRelinker::kIID = {0x5c, 0x0e, 0x7a, 0x51, 0x2d, 0x3b, 0x4f, 0x86,
                                              0x9a, 0x61, 0x0b, 0x7e, 0x4c, 0x2d, 0x9f, 0x13};

IFileRelinker::~IFileRelinker() = default;

DependencyRelinker::DependencyRelinker(std::wstring inFilePath, std::wstring inName, RelinkCallback inOnRelink)
    : mFilePath(std::move(inFilePath)), mName(std::move(inName)), mOnRelink(std::move(inOnRelink))
{
}

void DependencyRelinker::Relink(const std::wstring& inPath, const TL::MediaInfo*)
{
    if (mOnRelink) {
        mOnRelink(inPath);
    }
}

std::wstring DependencyRelinker::GetDisplayName() const
{
    return mName.empty() ? KOR::PathUtils::GetFilePart(mFilePath) : mName;
}

} // namespace DLG
