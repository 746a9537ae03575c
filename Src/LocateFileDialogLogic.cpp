#include "DLG/LocateFileDialogLogic.h"

#include <utility>

#include "DLG/GenericListErrorDialog.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "KOR/Application.h"
#include "KOR/Paths.h"
#include "zelcore/Error.h"

namespace DLG {

namespace {

TL::NeededStreams StreamsOf(const TL::MediaInfo& inInfo)
{
    if (inInfo.hasVideo && inInfo.hasAudio) {
        return TL::NeededStreams::kVideoAndAudio;
    }
    if (inInfo.hasVideo) {
        return TL::NeededStreams::kVideo;
    }
    return inInfo.hasAudio ? TL::NeededStreams::kAudio : TL::NeededStreams::kAny;
}

void ReportUnusableFile(const std::wstring& inPath, std::int32_t inResult)
{
    DoGenericListErrorDialog({{KOR::PathUtils::GetFilePart(inPath), TL::ImporterResultToErrorString(inResult)}},
                             LoadString(kStr_RelinkUnusableMessage), LoadString(kStr_RelinkUnusableFileColumn),
                             LoadString(kStr_RelinkUnusableProblemColumn));
}

// Step F of the automatic search, with its promise on what it found.
NameSearchResult SearchRemembered(FolderNameSearch& ioSearch, const FolderSet& inFolders, const std::wstring& inName)
{
    NameSearchResult result = ioSearch.Search(inFolders, inName);
    if (result.count > 0) {
        const std::vector<std::wstring>& outFoundPaths = result.paths;
        ZEL_OUTPUT_CONTRACT(!outFoundPaths.empty());
    }
    return result;
}

// The names the automatic search will look for: those of the items it walks.
std::vector<std::wstring> FileNamesOf(const std::vector<FileRelinkerRef>& inItems, std::size_t inStartIndex)
{
    std::vector<std::wstring> names;
    for (std::size_t index = inStartIndex; index < inItems.size(); ++index) {
        names.push_back(KOR::PathUtils::GetFilePart(inItems[index]->GetFilePath()));
    }
    return names;
}

} // namespace

ILinkLocateLogic::~ILinkLocateLogic() = default;

bool LinkMediaLogic::ValidateAndLink(const FileRelinkerRef& inItem, const std::wstring& inPath)
{
    TL::MediaInfo info;
    const std::int32_t result = TL::Media::GetInfoAboutMediaFile(inPath, info, StreamsOf(inItem->GetMediaInfo()));
    if (result < 0) {
        ReportUnusableFile(inPath, result);
        return false;
    }
    mCheckedFile = CheckedFile{inItem.Get(), inPath, info};
    return true;
}

void LinkMediaLogic::Link(const FileRelinkerRef& inItem, const std::wstring& inFullPath)
{
    const TL::MediaInfo* info = mCheckedFile && mCheckedFile->item == inItem.Get() && mCheckedFile->path == inFullPath
                                    ? &mCheckedFile->info
                                    : nullptr;
    IFileRelinker& item = *inItem;
    TL::ExecuteActionWithoutUndo([&] { item.Relink(inFullPath, info); });
    mCheckedFile.reset();
}

const FolderQueries LocateLogic::kDiskQueries;

LocateLogic::LocateLogic(bool inAutoLocate, const FolderQueries& inQueries)
    : mAutoLocate(inAutoLocate), mQueries(inQueries)
{
}

std::uint32_t LocateLogic::GetDialogFlags() const
{
    const KOR::Application* application = KOR::Application::Instance();
    if (application && application->GetApplicationType() == kApplicationType_NoBatchRelink) {
        return kRelinkDialog_Choose | kRelinkDialog_Skip | kRelinkDialog_Cancel;
    }
    return kRelinkDialog_Choose | kRelinkDialog_Skip | kRelinkDialog_SkipAll | kRelinkDialog_SearchOthers |
           kRelinkDialog_Cancel;
}

void LocateLogic::Link(const FileRelinkerRef& inItem, const std::wstring& inFullPath)
{
    ZEL_INPUT_CONTRACT(!inFullPath.empty());
    const std::wstring oldPath = inItem->GetFilePath();
    if (!oldPath.empty()) {
        mFolders.insert(KOR::PathUtils::GetFullDirectoryPart(inFullPath));
        mMoves[oldPath] = inFullPath;
    }
    LinkMediaLogic::Link(inItem, inFullPath);
}

void LocateLogic::LocateOthers(const std::vector<FileRelinkerRef>& inItems, std::size_t inStartIndex)
{
    FolderNameSearch search(mQueries, FileNamesOf(inItems, inStartIndex));
    for (std::size_t index = inStartIndex; index < inItems.size(); ++index) {
        const FileRelinkerRef item = inItems[index];
        if (mAutoLocate && IsPassedOver(*item)) {
            continue;
        }
        const std::wstring oldPath = item->GetFilePath();
        if (oldPath.empty()) {
            continue;
        }
        NameSearchResult found = SearchRemembered(search, mFolders, KOR::PathUtils::GetFilePart(oldPath));
        if (!found.found && inStartIndex > 0) {
            found = FindByRelativePlace(search, inItems, index);
        }
        // Two files of the same name are for the user to choose between.
        if (found.count == 1) {
            mMoves[oldPath] = found.paths.front();
            LinkMediaLogic::Link(item, found.paths.front());
        }
    }
}

bool LocateLogic::IsPassedOver(const IFileRelinker& inItem) const
{
    return inItem.IsSkipped() || (IsSkipAllSet() && inItem.IsSkipAllTarget());
}

NameSearchResult LocateLogic::FindByRelativePlace(FolderNameSearch& ioSearch,
                                                  const std::vector<FileRelinkerRef>& inItems, std::size_t inIndex)
{
    const FileRelinkerRef reference = inItems[inIndex - 1];
    if (reference->IsSkipped() || reference->IsExcludedFromReuse() || !reference->IsOffline()) {
        return {};
    }
    const std::wstring referenceOldPath = reference->GetFilePath();
    std::wstring relative;
    if (!KOR::PathUtils::ArePathsRelative(referenceOldPath, inItems[inIndex]->GetFilePath(), relative) ||
        relative.empty()) {
        return {};
    }
    const auto move = mMoves.find(referenceOldPath);
    if (move == mMoves.end()) {
        return {};
    }
    const std::wstring candidate =
        KOR::PathUtils::CombinePaths(KOR::PathUtils::GetFullDirectoryPart(move->second), relative);
    if (!mQueries.IsExistingFile(candidate)) {
        return {};
    }
    mFolders.insert(KOR::PathUtils::GetFullDirectoryPart(candidate));
    return SearchRemembered(ioSearch, mFolders, KOR::PathUtils::GetFilePart(candidate));
}

} // namespace DLG
