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
std::wstring ComparisonKey(const std::wstring& inName)
{
    std::wstring key = inName;
    std::transform(key.begin(), key.end(), key.begin(), [](wchar_t c) { return c >= L'A' && c <= L'Z' ? c + 32 : c; });
    return key;
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

NameSearchResult FolderNameSearch::Search(const FolderSet& inFolders, const std::wstring& inFileName)
{
    if (!IsPlainName(inFileName)) {
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
    for (const std::wstring& name : names) {
        std::vector<const std::wstring*>& folders = mFoldersByKey[ComparisonKey(name)];
        // Names equal ignoring case may share a folder on a case-sensitive file system.
        if (folders.empty() || folders.back() != folder) {
            folders.push_back(folder);
        }
    }
}

std::vector<const std::wstring*> FolderNameSearch::FoldersToAsk(const FolderSet& inFolders,
                                                                const std::wstring& inFileName) const
{
    std::vector<const std::wstring*> folders = mUnsureFolders;
    if (const auto holding = mFoldersByKey.find(ComparisonKey(inFileName)); holding != mFoldersByKey.end()) {
        folders.insert(folders.end(), holding->second.begin(), holding->second.end());
    }
    std::erase_if(folders, [&](const std::wstring* f) { return !inFolders.contains(*f); });
    std::sort(folders.begin(), folders.end(), ComesFirst);
    return folders;
}

} // namespace DLG
