#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "KOR/InterfaceRef.h"

namespace BE {

// Values an object keeps for others under dotted keys ("DLG.MediaRelinker.ItemSkipped"), for as
// long as the object lives. A key never set reads as the default handed in.
class HOST_API IPropertyBag : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual bool GetBoolProperty(const std::wstring& inKey, bool inDefault) const = 0;
    virtual void SetBoolProperty(const std::wstring& inKey, bool inValue) = 0;

protected:
    ~IPropertyBag() override;
};

inline constexpr int kMediaState_Online = 0;
inline constexpr int kMediaState_Offline = 1; // its file is missing

using MediaFileDescriptor = std::array<std::uint8_t, 16>;

// A media file of the project. A numbered still sequence is one media item: its path is that
// of its first frame.
class HOST_API IMedia : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual std::wstring GetFilePath() const = 0;
    // How many numbered stills the item stands for; 0 when it is one file.
    virtual int GetStillCount() const = 0;
    // kMediaState_Online or kMediaState_Offline.
    virtual int GetState() const = 0;
    // Whether the media stands for a file of its own rather than one the host makes (a matte).
    virtual bool IsFileMedia() const = 0;
    // The streams the media's file had when it was last opened.
    virtual bool HasVideo() const = 0;
    virtual bool HasAudio() const = 0;
    // The host implementation that serves the media.
    virtual KOR::InterfaceID GetImplementationID() const = 0;
    // Identifies the media's file as it was imported.
    virtual MediaFileDescriptor GetFileDescriptor() const = 0;
    virtual KOR::InterfaceRef<IPropertyBag> GetPropertyBag() const = 0;
    // Points the media at the file at inPath; it is online from now on.
    virtual void Relink(const std::wstring& inPath) = 0;
    // What the file at the media's path holds, once it has been opened.
    virtual void SetStreams(bool inHasVideo, bool inHasAudio) = 0;

protected:
    ~IMedia() override;
};

using MediaRef = KOR::InterfaceRef<IMedia>;

// The implementation of media that stand for a linked file.
HOST_API KOR::InterfaceID GetTarvixLinkMediaImplementationID();

} // namespace BE
