#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "DLG/Export.h"
#include "DLG/FileRelinker.h"
#include "DLG/FolderNameSearch.h"

namespace DLG {

// What the chooser for a missing item offers, as bits of GetDialogFlags.
inline constexpr std::uint32_t kRelinkDialog_Choose = 1;        // choose the file
inline constexpr std::uint32_t kRelinkDialog_Skip = 2;          // pass over this item
inline constexpr std::uint32_t kRelinkDialog_SkipAll = 4;       // pass over every item like it
inline constexpr std::uint32_t kRelinkDialog_SearchOthers = 8;  // announces the search for others
inline constexpr std::uint32_t kRelinkDialog_Cancel = 16;       // stop relinking

// The host's application type whose chooser offers no "skip all" and does not announce the search
// for other items (the search itself follows the auto-locate choice).
inline constexpr int kApplicationType_NoBatchRelink = 4;

// What the locate and link dialogs do with a missing item and a file the user chose.
class DLG_API ILinkLocateLogic {
public:
    virtual ~ILinkLocateLogic();

    virtual std::uint32_t GetDialogFlags() const = 0;
    // Opens inPath to check it. When it can be used the item's link will carry what was
    // learnt; when not, the user is told why and false comes back.
    virtual bool ValidateAndLink(const FileRelinkerRef& inItem, const std::wstring& inPath) = 0;
    virtual void Link(const FileRelinkerRef& inItem, const std::wstring& inFullPath) = 0;
    // Searches for the items from inStartIndex on.
    virtual void LocateOthers(const std::vector<FileRelinkerRef>& inItems, std::size_t inStartIndex) = 0;
    virtual bool IsHandledElsewhere(const FileRelinkerRef& inItem) const = 0;
    virtual void Skip(const FileRelinkerRef& inItem) = 0;
    virtual void SkipAll() = 0;
    virtual bool IsAutoLocate() const = 0;
};

// Links each item to the file the user chose, after opening the file to check it.
class DLG_API LinkMediaLogic : public ILinkLocateLogic {
public:
    std::uint32_t GetDialogFlags() const override { return kRelinkDialog_Choose; }
    bool ValidateAndLink(const FileRelinkerRef& inItem, const std::wstring& inPath) override;
    void Link(const FileRelinkerRef& inItem, const std::wstring& inFullPath) override;
    void LocateOthers(const std::vector<FileRelinkerRef>&, std::size_t) override {}
    bool IsHandledElsewhere(const FileRelinkerRef&) const override { return false; }
    void Skip(const FileRelinkerRef& inItem) override { inItem->SetSkipped(true); }
    void SkipAll() override { mSkipAll = true; }
    bool IsAutoLocate() const override { return false; }

protected:
    bool IsSkipAllSet() const { return mSkipAll; }

private:
    bool mSkipAll = false;
    // The file that ValidateAndLink opened last for an item, handed on by the Link of that item
    // and path that follows it.
    struct CheckedFile {
        const IFileRelinker* item = nullptr;
        std::wstring path;
        TL::MediaInfo info;
    };
    std::optional<CheckedFile> mCheckedFile;
};

// Locating missing files: every folder where a file was found is remembered, and the items
// after a located one are searched for there and at their old place relative to it.
class DLG_API LocateLogic : public LinkMediaLogic {
public:
    explicit LocateLogic(bool inAutoLocate, const FolderQueries& inQueries = kDiskQueries);

    std::uint32_t GetDialogFlags() const override;
    void Link(const FileRelinkerRef& inItem, const std::wstring& inFullPath) override;
    void LocateOthers(const std::vector<FileRelinkerRef>& inItems, std::size_t inStartIndex) override;
    bool IsAutoLocate() const override { return mAutoLocate; }

    const FolderSet& RememberedFolders() const { return mFolders; }
    const std::map<std::wstring, std::wstring>& Moves() const { return mMoves; }

    static const FolderQueries kDiskQueries;

private:
    bool IsPassedOver(const IFileRelinker& inItem) const;
    NameSearchResult FindByRelativePlace(FolderNameSearch& ioSearch, const std::vector<FileRelinkerRef>& inItems,
                                         std::size_t inIndex);

    bool mAutoLocate;
    const FolderQueries& mQueries;
    FolderSet mFolders;
    std::map<std::wstring, std::wstring> mMoves;
};

} // namespace DLG
