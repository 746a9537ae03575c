#pragma once

#include <cstdint>
#include <string>

#include "BE/Project.h"
#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"

namespace TL::ProjectManager {

// What the project manager makes of a project.
struct Options {
    // True: a new project that keeps only the used parts of its media (with handles); false: a
    // copy of the project with all its files collected in the destination.
    bool createTrimmedProject = true;
    // False: the new project's media are not copied; its clips point at where the copies would
    // be and stay offline until their media are brought there.
    bool keepOnline = true;
    bool excludeUnusedClips = true;
    bool includeHandles = true;
    int handleFrames = 30; // frames at each clip's sequence rate, before and after what is used
    bool includePreviews = true;
    bool includeConformedAudio = true;
    bool includeProxies = true;
    bool renameMediaToClipNames = true;
    std::wstring destinationFolder;
};

// What an operation answers: 0 when done, kResult_Cancelled, or a negative failure code.
inline constexpr long kResult_OK = 0;
inline constexpr long kResult_Cancelled = static_cast<std::int32_t>(0xA00F0007);
inline constexpr long kError_AccessDenied = static_cast<std::int32_t>(0xA00F0002); // may not write there
inline constexpr long kError_SourceMissing = static_cast<std::int32_t>(0xA00F0003); // a file to copy is gone
inline constexpr long kError_ReadFailed = static_cast<std::int32_t>(0xA00F0004);    // a file to copy cannot be read
inline constexpr long kError_WriteFault = static_cast<std::int32_t>(0xA00F0005);
inline constexpr long kError_DestinationExists = static_cast<std::int32_t>(0xA00F0006); // would replace a file
inline constexpr long kError_DiskFull = static_cast<std::int32_t>(0xA0070070);
inline constexpr long kError_NothingToKeep = static_cast<std::int32_t>(0xA011000E); // no clip is used
inline constexpr long kError_TrimFailed = static_cast<std::int32_t>(0xA0110010);    // a media could not be cut

// A project manager run: Start queues it on the shared work queue; it reports progress by bytes
// on its station and ends with the completion message. The results are complete once the
// completion message has been posted.
class HOST_API IProjectManagerOperation : public KOR::IBatchOperation {
public:
    static const KOR::InterfaceID kIID;

    // False when it could not be queued or was started before.
    virtual bool Start() = 0;
    virtual long GetResult() const = 0;
    // What the project's files take on disk now, and what the result takes (or will take).
    virtual std::uint64_t GetOriginalSize() const = 0;
    virtual std::uint64_t GetResultingSize() const = 0;
    // The path or item a failure concerns; empty otherwise.
    virtual std::wstring GetFailureText() const = 0;
    // The new project's file once a run (not a calculation) succeeded.
    virtual std::wstring GetResultProjectPath() const = 0;

protected:
    ~IProjectManagerOperation() override;
};

using ProjectManagerOperationRef = KOR::InterfaceRef<IProjectManagerOperation>;

// With inCalculateOnly the operation only computes the two sizes and writes nothing; otherwise it
// writes the new project into inOptions.destinationFolder. A failed or cancelled run removes what
// it wrote there and never changes the project or its files.
HOST_API ProjectManagerOperationRef CreateProjectManagerOperation(const BE::ProjectRef& inProject,
                                                                  const Options& inOptions, bool inCalculateOnly);

} // namespace TL::ProjectManager
