#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace DLG {

// Folders searched for missing files by name, in ascending order of their paths.
using FolderSet = std::set<std::wstring>;

// What a search by file name found: every candidate, in ascending folder order.
struct NameSearchResult {
    bool found = false;
    std::size_t count = 0;
    std::vector<std::wstring> paths;

    friend bool operator==(const NameSearchResult&, const NameSearchResult&) = default;
};

// The file system questions a search asks. The host answers them; a test may answer them from a
// model of another file system's name rules.
class FolderQueries {
public:
    virtual ~FolderQueries();
    // Whether inPath names something that exists and is not a folder, as the file system looks
    // names up (its own case and spelling rules).
    virtual bool IsExistingFile(const std::wstring& inPath) const;
    // The names the folder holds as the file system lists them; false when it cannot be read.
    virtual bool ListNames(const std::wstring& inFolder, std::vector<std::wstring>& outNames) const;
};

// Asks every folder about the name: the folder with a trailing separator, then the name, counts
// when it exists and is not a folder. Every folder is tried; equal names are never chosen between.
NameSearchResult SearchFoldersLiterally(const FolderSet& inFolders, const std::wstring& inFileName,
                                        const FolderQueries& inQueries);

// The same answers as SearchFoldersLiterally from one listing per folder. A folder is asked about
// a name only when its listing holds a name that the file system might take for it; the answer
// itself still comes from asking. Listings are taken when a folder is first searched and kept for
// the life of the object, so one object serves one automatic search: the disk may change while
// the user chooses a file. The folder set may only grow between calls.
class FolderNameSearch {
public:
    // inNames: the names the search will be asked about. Only those are kept from the listings;
    // another name is asked of every folder.
    FolderNameSearch(const FolderQueries& inQueries, const std::vector<std::wstring>& inNames);

    NameSearchResult Search(const FolderSet& inFolders, const std::wstring& inFileName);

private:
    void IndexNewFolders(const FolderSet& inFolders);
    void IndexFolder(const std::wstring& inFolder);
    std::vector<const std::wstring*> FoldersToAsk(const FolderSet& inFolders, const std::wstring& inFileName) const;

    const FolderQueries& mQueries;
    std::unordered_set<std::wstring> mWantedKeys;
    std::set<std::wstring> mIndexed;
    // By the name's comparison key: the folders whose listing holds a name of that key.
    std::unordered_multimap<std::wstring, const std::wstring*> mFoldersByKey;
    // Folders whose listing can't rule a name out: unreadable, or holding names that another
    // spelling might reach.
    std::vector<const std::wstring*> mUnsureFolders;
};

// Whether the file system can only take inName for a listed name that equals it ignoring ASCII
// case: printable ASCII, a valid file name everywhere, no "~" (short-name aliases). Other names
// are looked up folder by folder.
bool IsPlainName(const std::wstring& inName);

} // namespace DLG
