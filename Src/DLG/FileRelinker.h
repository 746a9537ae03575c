#pragma once

#include <array>
#include <cstdint>
#include <string>

#include <boost/function.hpp>

#include "BE/Media.h"
#include "DLG/Export.h"
#include "KOR/InterfaceRef.h"
#include "KOR/KORUnknown.h"
#include "TL/Media.h"

namespace DLG {

using FileDescriptor = std::array<std::uint8_t, 16>;

// One missing file that the locate and link dialogs try to find again.
class DLG_API IFileRelinker : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    // Where the file is expected: its missing path. Stays the same after the item is relinked,
    // so that items that moved together can be found from it.
    virtual std::wstring GetFilePath() const = 0;
    virtual FileDescriptor GetFileDescriptor() const = 0;
    // Whether the wrapped item is one that the host's link-media implementation serves.
    virtual bool CheckLinkImplementation() const = 0;
    // Points the wrapped item at inPath. inInfo describes the file when it was just opened to
    // check it; null when it was found by name alone.
    virtual void Relink(const std::wstring& inPath, const TL::MediaInfo* inInfo) = 0;
    // The item's own name; the file part of GetFilePath when it has none.
    virtual std::wstring GetDisplayName() const = 0;
    virtual void SetSkipped(bool inSkipped) = 0;
    virtual bool IsSkipped() const = 0;
    // Whether "skip all" passes over this item.
    virtual bool IsSkipAllTarget() const = 0;
    // Whether this item may never lend its old place to the items after it.
    virtual bool IsExcludedFromReuse() const = 0;
    // What the wrapped item knows of its file's streams.
    virtual TL::MediaInfo GetMediaInfo() const = 0;
    virtual bool IsOffline() const = 0;
    // Whether Relink was called: the item was linked while this relinker lived.
    virtual bool WasRelinked() const = 0;

protected:
    ~IFileRelinker() override;
};

using FileRelinkerRef = KOR::InterfaceRef<IFileRelinker>;

// A media of the project whose file is missing. With no media every answer is neutral. The skip
// mark is kept on the media, under kSkippedProperty, so that a media skipped once stays skipped
// in later relinking for as long as the media lives.
class DLG_API MediaRelinker : public KOR::RefCounted<IFileRelinker> {
public:
    static const std::wstring kSkippedProperty;

    explicit MediaRelinker(BE::MediaRef inMedia) : mMedia(std::move(inMedia)) {}

    std::wstring GetFilePath() const override;
    FileDescriptor GetFileDescriptor() const override;
    bool CheckLinkImplementation() const override;
    void Relink(const std::wstring& inPath, const TL::MediaInfo* inInfo) override;
    std::wstring GetDisplayName() const override;
    void SetSkipped(bool inSkipped) override;
    bool IsSkipped() const override;
    bool IsSkipAllTarget() const override;
    bool IsExcludedFromReuse() const override;
    TL::MediaInfo GetMediaInfo() const override;
    bool IsOffline() const override;
    bool WasRelinked() const override { return mRelinked; }

    const BE::MediaRef& GetMedia() const { return mMedia; }

private:
    BE::MediaRef mMedia;
    bool mRelinked = false;
    // The file the media had when this relinker was made: the place it is looked for from.
    std::wstring mMissingPath = mMedia ? mMedia->GetFilePath() : std::wstring();
};

// A file that an item depends on rather than a media of the project: a title's image, a
// project's settings file. Relinking hands the new path to the owner's callback.
class DLG_API DependencyRelinker : public KOR::RefCounted<IFileRelinker> {
public:
    using RelinkCallback = boost::function<void(const std::wstring& inNewPath)>;

    DependencyRelinker(std::wstring inFilePath, std::wstring inName, RelinkCallback inOnRelink);

    std::wstring GetFilePath() const override { return mFilePath; }
    FileDescriptor GetFileDescriptor() const override { return {}; }
    bool CheckLinkImplementation() const override { return false; }
    void Relink(const std::wstring& inPath, const TL::MediaInfo* inInfo) override;
    std::wstring GetDisplayName() const override;
    void SetSkipped(bool inSkipped) override { mSkipped = inSkipped; }
    bool IsSkipped() const override { return mSkipped; }
    bool IsSkipAllTarget() const override { return false; }
    bool IsExcludedFromReuse() const override { return false; }
    TL::MediaInfo GetMediaInfo() const override { return {}; }
    bool IsOffline() const override { return true; }
    bool WasRelinked() const override { return mRelinked; }

private:
    std::wstring mFilePath;
    std::wstring mName;
    RelinkCallback mOnRelink;
    bool mSkipped = false;
    bool mRelinked = false;
};

} // namespace DLG
