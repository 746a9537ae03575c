#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "BE/Project.h"
#include "BE/Sequence.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Stations.h"
#include "MF/Abort.h"

namespace ML {

// What conforming posts on the station it was given, in this order: one Started, Progress as it
// goes, one Finished, also when it stopped at an abort request or failed.
class HOST_API AudioConformationStarted : public KOR::Message {
public:
    static constexpr const char* kTypeName = "ML::AudioConformationStarted";
    // inStreamCount audio streams of inTotalSeconds of audio in all need conforming.
    AudioConformationStarted(int inStreamCount, double inTotalSeconds);
    ~AudioConformationStarted() override;
    int GetStreamCount() const { return mStreamCount; }
    double GetTotalSeconds() const { return mTotalSeconds; }

private:
    int mStreamCount;
    double mTotalSeconds;
};

class HOST_API AudioConformationProgress : public KOR::Message {
public:
    static constexpr const char* kTypeName = "ML::AudioConformationProgress";
    // inStreamIndex counts from 0 up to the Started message's stream count.
    AudioConformationProgress(std::wstring inMediaName, int inStreamIndex, float inFraction);
    ~AudioConformationProgress() override;
    // The media whose audio is being conformed now.
    const std::wstring& GetMediaName() const { return mMediaName; }
    int GetStreamIndex() const { return mStreamIndex; }
    // How much of all the audio to conform is done, 0 to 1.
    float GetFraction() const { return mFraction; }

private:
    std::wstring mMediaName;
    int mStreamIndex;
    float mFraction;
};

class HOST_API AudioConformationFinished : public KOR::Message {
public:
    static constexpr const char* kTypeName = "ML::AudioConformationFinished";
    // inFailure is empty when every stream was conformed or the work stopped at an abort
    // request; otherwise it says what could not be conformed and why.
    AudioConformationFinished(bool inCompleted, std::wstring inFailure);
    ~AudioConformationFinished() override;
    bool IsCompleted() const { return mCompleted; }
    const std::wstring& GetFailure() const { return mFailure; }

private:
    bool mCompleted;
    std::wstring mFailure;
};

// The host keeps its own audio files for the audio streams of media: decoded and resampled to
// the project's audio rate as 32-bit float, in its media cache. A stream needs conforming while
// no such file exists for the media's file as it is now.
namespace ConformUtils {
// With inConform false: only whether anything in the scope needs conforming; no station, no
// abort. With inConform true: conforms what the scope needs, posting the conformation messages on
// inStation (nothing posted when it is empty) and asking inAbort (when given) between blocks.
// Either way: true when something in the scope still needs conforming on return (after an abort
// or a failure), false when everything is conformed. Offline media need nothing.
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::IProject>& inProject, bool inConform,
                           const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort);
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::ITrackItemSelection>& inSelection, bool inConform,
                           const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort);
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::IClip>& inClip, bool inConform, const std::wstring& inStation,
                           const KOR::InterfaceRef<MF::IAbort>& inAbort);
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::ISequence>& inSequence, bool inConform,
                           const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort);
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::IChildClip>& inChildClip, bool inConform,
                           const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort);
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::IProjectItemSelection>& inSelection, bool inConform,
                           const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort);
HOST_API bool NeedsConform(const KOR::InterfaceRef<BE::IMasterClip>& inMasterClip, bool inConform,
                           const std::wstring& inStation, const KOR::InterfaceRef<MF::IAbort>& inAbort);

// The conformed files that exist now for inMedia's audio streams at inSampleRate.
HOST_API std::vector<std::wstring> GetConformedFiles(const BE::MediaRef& inMedia, int inSampleRate);
} // namespace ConformUtils

// Holds (true) or lets go on (false) the host's background media work: peak files, conforming
// that the host starts of its own accord, thumbnails. Calls nest: work goes on once every pause
// has been matched by a resume.
HOST_API void PauseWorkerThreads(bool inPause);
HOST_API bool AreWorkerThreadsPaused();

} // namespace ML
