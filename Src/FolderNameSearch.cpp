#include "DLG/FolderNameSearch.h"

#include <algorithm>

#include "KOR/Paths.h"

namespace DLG {

namespace {

bool IsPrintableAscii(wchar_t inCharacter) { return inCharacter >= 0x20 && inCharacter < 0x7F; }

bool IsPrintableAscii(const std::wstring& inName)
{
    return std::all_of(inName.begin(), inName.end(), [](wchar_t c) { return IsPrintableAscii(c); });
}

// Names that equal each other ignoring ASCII case share a key.
std::wstring ComparisonKey(std::wstring inName)
{
    std::transform(inName.begin(), inName.end(), inName.begin(),
                   [](wchar_t c) { return c >= L'A' && c <= L'Z' ? c + 32 : c; });
    return inName;
}

bool ComesFirst(const std::wstring* inFirst, const std::wstring* inSecond) { return *inFirst < *inSecond; }

} // namespace

FolderQueries::~FolderQueries() = default;

bool FolderQueries::IsExistingFile(const std::wstring& inPath) const
{
    return KOR::PathUtils::ExistsOnDisk(inPath) && !KOR::PathUtils::IsDirectory(inPath);
}

bool FolderQueries::ListNames(const std::wstring& inFolder, std::vector<std::wstring>& outNames) const
{
    return KOR::PathUtils::ListFolderNames(inFolder, outNames);
}

bool IsPlainName(const std::wstring& inName)
{
    return IsPrintableAscii(inName) && inName.find(L'~') == std::wstring::npos &&
           KOR::PathUtils::IsValidFileName(inName);
}

NameSearchResult SearchFoldersLiterally(const FolderSet& inFolders, const std::wstring& inFileName,
                                        const FolderQueries& inQueries)
{
    NameSearchResult result;
    for (const std::wstring& folder : inFolders) {
        const std::wstring candidate = KOR::PathUtils::AddTrailingSlash(folder) + inFileName;
        if (inQueries.IsExistingFile(candidate)) {
            ++result.count;
            result.paths.push_back(candidate);
        }
    }
    result.found = result.count > 0;
    return result;
}

FolderNameSearch::FolderNameSearch(const FolderQueries& inQueries, const std::vector<std::wstring>& inNames)
    : mQueries(inQueries)
{
    for (const std::wstring& name : inNames) {
        if (IsPlainName(name)) {
            mWantedKeys.insert(ComparisonKey(name));
        }
    }
}

NameSearchResult FolderNameSearch::Search(const FolderSet& inFolders, const std::wstring& inFileName)
{
    if (!IsPlainName(inFileName) || !mWantedKeys.contains(ComparisonKey(inFileName))) {
        return SearchFoldersLiterally(inFolders, inFileName, mQueries);
    }
    IndexNewFolders(inFolders);
    NameSearchResult result;
    for (const std::wstring* folder : FoldersToAsk(inFolders, inFileName)) {
        const std::wstring candidate = KOR::PathUtils::AddTrailingSlash(*folder) + inFileName;
        if (mQueries.IsExistingFile(candidate)) {
            ++result.count;
            result.paths.push_back(candidate);
        }
    }
    result.found = result.count > 0;
    return result;
}

void FolderNameSearch::IndexNewFolders(const FolderSet& inFolders)
{
    if (inFolders.size() == mIndexed.size()) {
        return;
    }
    for (const std::wstring& folder : inFolders) {
        if (!mIndexed.contains(folder)) {
            IndexFolder(folder);
        }
    }
}

void FolderNameSearch::IndexFolder(const std::wstring& inFolder)
{
    const std::wstring* folder = &*mIndexed.insert(inFolder).first;
    std::vector<std::wstring> names;
    const bool listed = mQueries.ListNames(inFolder, names);
    if (!listed || !std::all_of(names.begin(), names.end(), [](const std::wstring& n) { return IsPrintableAscii(n); })) {
        mUnsureFolders.push_back(folder);
        return;
    }
    for (std::wstring& name : names) {
        std::wstring key = ComparisonKey(std::move(name));
        if (mWantedKeys.contains(key)) {
            mFoldersByKey.emplace(std::move(key), folder);
        }
    }
}

std::vector<const std::wstring*> FolderNameSearch::FoldersToAsk(const FolderSet& inFolders,
                                                                const std::wstring& inFileName) const
{
    std::vector<const std::wstring*> folders = mUnsureFolders;
    const auto [first, last] = mFoldersByKey.equal_range(ComparisonKey(inFileName));
    for (auto holding = first; holding != last; ++holding) {
        folders.push_back(holding->second);
    }
    std::erase_if(folders, [&](const std::wstring* f) { return !inFolders.contains(*f); });
    // A folder holding names equal but for case is asked once.
    std::sort(folders.begin(), folders.end(), ComesFirst);
    folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
    return folders;
}

} // namespace DLG
