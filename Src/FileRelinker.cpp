#include "DLG/FileRelinker.h"

#include <utility>

#include "KOR/Paths.h"

namespace DLG {

// {5C0E7A51-2D3B-4F86-9A61-0B7E4C2D9F13}
const KOR::InterfaceID IFileRelinker::kIID = {0x5c, 0x0e, 0x7a, 0x51, 0x2d, 0x3b, 0x4f, 0x86,
                                              0x9a, 0x61, 0x0b, 0x7e, 0x4c, 0x2d, 0x9f, 0x13};

IFileRelinker::~IFileRelinker() = default;

const std::wstring MediaRelinker::kSkippedProperty = L"DLG.MediaRelinker.ItemSkipped";

std::wstring MediaRelinker::GetFilePath() const { return mMissingPath; }

FileDescriptor MediaRelinker::GetFileDescriptor() const { return mMedia ? mMedia->GetFileDescriptor() : FileDescriptor{}; }

bool MediaRelinker::CheckLinkImplementation() const
{
    return mMedia && mMedia->GetImplementationID() == BE::GetTarvixLinkMediaImplementationID();
}

void MediaRelinker::Relink(const std::wstring& inPath, const TL::MediaInfo* inInfo)
{
    if (!mMedia) {
        return;
    }
    mMedia->Relink(inPath);
    mRelinked = true;
    if (inInfo) {
        mMedia->SetStreams(inInfo->hasVideo, inInfo->hasAudio);
    }
}

std::wstring MediaRelinker::GetDisplayName() const
{
    if (!mMedia) {
        return {};
    }
    const std::wstring name = mMedia->GetName();
    return name.empty() ? KOR::PathUtils::GetFilePart(mMissingPath) : name;
}

void MediaRelinker::SetSkipped(bool inSkipped)
{
    if (mMedia) {
        mMedia->GetPropertyBag()->SetBoolProperty(kSkippedProperty, inSkipped);
    }
}

bool MediaRelinker::IsSkipped() const
{
    return mMedia && mMedia->GetPropertyBag()->GetBoolProperty(kSkippedProperty, false);
}

bool MediaRelinker::IsSkipAllTarget() const { return mMedia && mMedia->IsFileMedia(); }

bool MediaRelinker::IsExcludedFromReuse() const { return mMedia && mMedia->IsFileMedia(); }

TL::MediaInfo MediaRelinker::GetMediaInfo() const
{
    TL::MediaInfo info;
    if (mMedia) {
        info.hasVideo = mMedia->HasVideo();
        info.hasAudio = mMedia->HasAudio();
    }
    return info;
}

bool MediaRelinker::IsOffline() const
{
    return IsExcludedFromReuse() && mMedia->GetState() == BE::kMediaState_Offline;
}

DependencyRelinker::DependencyRelinker(std::wstring inFilePath, std::wstring inName, RelinkCallback inOnRelink)
    : mFilePath(std::move(inFilePath)), mName(std::move(inName)), mOnRelink(std::move(inOnRelink))
{
}

void DependencyRelinker::Relink(const std::wstring& inPath, const TL::MediaInfo*)
{
    mRelinked = true;
    if (mOnRelink) {
        mOnRelink(inPath);
    }
}

std::wstring DependencyRelinker::GetDisplayName() const
{
    return mName.empty() ? KOR::PathUtils::GetFilePart(mFilePath) : mName;
}

} // namespace DLG
