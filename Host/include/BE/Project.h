#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "BE/AudioClip.h"
#include "BE/ColorMatte.h"
#include "BE/Media.h"
#include "BE/Sequence.h"
#include "KOR/InterfaceRef.h"

namespace BE {

class IProjectSettings;

// What saving a project answers: 0, or a negative 32-bit host code.
inline constexpr long kSave_OK = 0;
inline constexpr long kSaveError_Failed = static_cast<std::int32_t>(0xA00F0001);       // none of those below
inline constexpr long kSaveError_AccessDenied = static_cast<std::int32_t>(0xA00F0002); // the folder may not be written
inline constexpr long kSaveError_PathNotFound = static_cast<std::int32_t>(0xA00F0003); // the folder does not exist
inline constexpr long kSaveError_WriteFault = static_cast<std::int32_t>(0xA00F0005);   // writing failed part way
inline constexpr long kSaveError_Cancelled = static_cast<std::int32_t>(0xA00F0007);    // the user stopped it
inline constexpr long kSaveError_FileReadOnly = static_cast<std::int32_t>(0xA00C00CD); // the file may not be replaced
inline constexpr long kSaveError_DiskFull = static_cast<std::int32_t>(0xA00C00CE);

// An open project of the host.
class HOST_API IProject : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::wstring GetName() const = 0;
    virtual std::wstring GetFilePath() const = 0;
    // Null when the project has no settings object.
    virtual KOR::InterfaceRef<IProjectSettings> GetProjectSettings() const = 0;
    // The clips that carry audio, in the project's order.
    virtual std::vector<AudioClipRef> GetAudioClips() const = 0;
    // The project's colour mattes, in the project's order; by default none.
    virtual std::vector<ColorMatteRef> GetColorMattes() const;
    // The project's media, in the order they came in; by default none.
    virtual std::vector<MediaRef> GetMedia() const;
    // The bin's master clips, child clips and sequences, in the bin's order; by default none.
    virtual std::vector<MasterClipRef> GetMasterClips() const;
    virtual std::vector<ChildClipRef> GetChildClips() const;
    virtual std::vector<SequenceRef> GetSequences() const;
    // Whether the project changed since it was last saved or opened; by default never.
    virtual bool HasUnsavedChanges() const;
    // Adds a media item named inName for the file at inFilePath (the first frame of inStillCount
    // numbered stills, or one file when 0); null when the project takes no media.
    virtual MediaRef AddMedia(const std::wstring& inName, const std::wstring& inFilePath, int inStillCount);
    // Writes the project to inFilePath, replacing the file there only once the new one is
    // complete; kSave_OK or a kSaveError_ code. Unless inAsCopy, the project is from now on
    // the one at inFilePath.
    virtual long SaveToFile(const std::wstring& inFilePath, bool inAsCopy) = 0;

protected:
    ~IProject() override;
};

using ProjectRef = KOR::InterfaceRef<IProject>;

} // namespace BE
