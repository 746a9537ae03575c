#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

#include "HostQt/ProjectManagerPlan.h"

// The file work of the project manager: copying files whole, cutting WAV files to the sample and
// cutting compressed movies by stream copy. Each writes into a Sink, which either only counts
// the bytes (what a run would write, computed before writing anything) or writes them as well;
// both see the very same bytes, so a count is the size the written file gets.

namespace HostQt::ProjectManagement {

class Sink {
public:
    // Told the bytes written so far after each write; answering false stops the work as cancelled.
    using Progress = std::function<bool(std::uint64_t inWritten)>;

    // Counts only.
    Sink() = default;
    // Writes a new file at inPath; an existing file there is never replaced. An empty inPath
    // counts only, still asking inProgress.
    Sink(QString inPath, Progress inProgress);
    ~Sink();
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    // 0, or kError_DestinationExists, kError_AccessDenied, kError_DiskFull, kError_WriteFault.
    long Open();
    bool Write(const void* inData, std::size_t inSize);
    // A counting sink takes inBytes as written without being handed them.
    void Count(std::uint64_t inBytes);
    bool IsCounting() const { return mPath.isEmpty(); }
    // As lseek; inWhence is SEEK_SET, SEEK_CUR or SEEK_END. Negative on failure.
    std::int64_t Seek(std::int64_t inOffset, int inWhence);
    // Asks the progress whether to go on without writing, for work that reads long before it
    // writes; false (and cancelled) when it says stop.
    bool KeepGoing();
    // Closes the file; 0 or the first failure (kResult_Cancelled when the progress said stop).
    long Close();

    // The file's length: the furthest byte written.
    std::uint64_t Size() const { return mSize; }
    long Failure() const { return mFailure; }
    const QString& Path() const { return mPath; }

private:
    bool Fail(long inCode);

    QString mPath;
    Progress mProgress;
    int mFile = -1;
    std::uint64_t mPosition = 0;
    std::uint64_t mSize = 0;
    std::uint64_t mWritten = 0;
    long mFailure = 0;
};

enum class CutKind {
    kWhole,   // copied as it is (stills, files no demuxer knows, other containers, WAV past 4 GiB)
    kWav,     // uncompressed WAV: cut to the sample
    kStreams, // a movie or compressed audio in MOV, MP4 or M4A: cut by stream copy from a key frame
};

struct MediaLayout {
    CutKind kind = CutKind::kWhole;
    std::int64_t duration = 0; // ticks
    // Tick lengths that a cut start must be a whole number of: the sample of a WAV file, the
    // time-base step of each copied stream.
    std::vector<std::int64_t> units;
};

// 0, kError_SourceMissing or kError_ReadFailed.
long ProbeMedia(const QString& inPath, MediaLayout& outLayout);

// Each returns 0 or a failure code (kError_ReadFailed, kError_TrimFailed, or the sink's).
long CopyWhole(const QString& inPath, Sink& ioSink);
// inSpan.start must be a whole number of samples.
long CutWav(const QString& inPath, Span inSpan, Sink& ioSink);
// Copies the video and audio streams from the key frame at or before inSpan.start up to
// inSpan.end, times moved back by outCutStart: the key frame's time aligned down to inGrid. Audio
// keeps the packet before its first one as pre-roll, at a negative time.
long CutStreams(const QString& inPath, Span inSpan, std::int64_t inGrid, Sink& ioSink, std::int64_t& outCutStart);

} // namespace HostQt::ProjectManagement
