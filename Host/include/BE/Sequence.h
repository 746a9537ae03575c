#pragma once

#include <string>
#include <vector>

#include "BE/Media.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Time.h"

namespace BE {

// Times of clips are media times: from the start of the media's file, the in point being the
// first instant shown and the out point the first instant no longer shown.

// A media as the project's bin shows it: the whole of one media file, under the clip's name.
class HOST_API IMasterClip : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual MediaRef GetMedia() const = 0;

protected:
    ~IMasterClip() override;
};

using MasterClipRef = KOR::InterfaceRef<IMasterClip>;

// A span of a master clip that the bin shows as an item of its own.
class HOST_API IChildClip : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual MasterClipRef GetMasterClip() const = 0;
    virtual KOR::Time GetInPoint() const = 0;
    virtual KOR::Time GetOutPoint() const = 0;

protected:
    ~IChildClip() override;
};

using ChildClipRef = KOR::InterfaceRef<IChildClip>;

enum class TrackKind { kVideo, kAudio };

// A clip on a track of a sequence: from GetStart on in the sequence, it shows its master clip's
// media from the in point up to the out point.
class HOST_API IClip : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual MasterClipRef GetMasterClip() const = 0;
    virtual TrackKind GetTrackKind() const = 0;
    // 0 for the first track of its kind.
    virtual int GetTrackIndex() const = 0;
    // Sequence time.
    virtual KOR::Time GetStart() const = 0;
    virtual KOR::Time GetInPoint() const = 0;
    virtual KOR::Time GetOutPoint() const = 0;

protected:
    ~IClip() override;
};

using ClipRef = KOR::InterfaceRef<IClip>;

class HOST_API ISequence : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual KOR::FrameRate GetFrameRate() const = 0;
    // The clips of every track, video tracks first, each track's clips in time order.
    virtual std::vector<ClipRef> GetClips() const = 0;

protected:
    ~ISequence() override;
};

using SequenceRef = KOR::InterfaceRef<ISequence>;

// Clips the user selected in a sequence.
class HOST_API ITrackItemSelection : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::vector<ClipRef> GetClips() const = 0;

protected:
    ~ITrackItemSelection() override;
};

using TrackItemSelectionRef = KOR::InterfaceRef<ITrackItemSelection>;

// Items the user selected in the project's bin, by kind.
class HOST_API IProjectItemSelection : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::vector<MasterClipRef> GetMasterClips() const = 0;
    virtual std::vector<ChildClipRef> GetChildClips() const = 0;
    virtual std::vector<SequenceRef> GetSequences() const = 0;

protected:
    ~IProjectItemSelection() override;
};

using ProjectItemSelectionRef = KOR::InterfaceRef<IProjectItemSelection>;

} // namespace BE
