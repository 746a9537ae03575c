#pragma once

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "KOR/BatchOperation.h"
#include "KOR/InterfaceRef.h"

namespace Demo {

// A media file of the sample project, at its place in the demo's media folder, which stands in
// for the project's "/media" drive.
struct MediaFile {
    QString clipName;
    QString path;
    bool online = true;
};

// The clips of the sample project with their files under inMediaFolder.
std::vector<MediaFile> SampleProjectMedia(const QString& inMediaFolder);

// Holds an operation's worker once its work reaches a fraction, until released or cancelled:
// the gallery pictures a progress dialog half-way through real work this way.
class PauseGate {
public:
    explicit PauseGate(float inFraction) : mFraction(inFraction) {}

    float Fraction() const { return mFraction; }
    bool IsHolding() const;
    void Release();

    // On the worker. Returns at once when already released.
    void Hold(const KOR::IBatchOperation& inOperation);
    // Wakes a holding worker to look at its abort flag.
    void Wake();

private:
    const float mFraction;
    mutable std::mutex mMutex;
    std::condition_variable mChanged;
    bool mHolding = false;
    bool mReleased = false;
};

// A batch operation on media files that runs on the shared work queue and reports through its
// station. What it found is a list of lines, complete once it has posted its completion.
class MediaOperation : public KOR::RefCounted<KOR::BatchOperation> {
public:
    MediaOperation(std::vector<MediaFile> inFiles, std::shared_ptr<PauseGate> inPause);

    // Queues the work; the queued request keeps the operation alive until it has completed.
    void Start();
    void RequestCancel() override;
    QStringList Report() const;

protected:
    virtual void Run() = 0;
    // Reports inDone of inTotal units of work, with an estimate of the time left, and holds at
    // the pause point.
    void Advance(std::int64_t inDone, std::int64_t inTotal);
    void AddReport(const QString& inLine);
    const std::vector<MediaFile>& Files() const { return mFiles; }

private:
    const std::vector<MediaFile> mFiles;
    const std::shared_ptr<PauseGate> mPause;
    std::int64_t mStartMs = 0;
    std::int64_t mLastTimeLeftMs = 0;
    mutable std::mutex mReportMutex;
    QStringList mReport;
};

// Renders the sample project's online audio clips as PCM WAV files (48 kHz, 24-bit stereo, of
// inSeconds each) and records their SHA-256 checksums in the folder's "checksums.sha256".
class RenderMediaOperation : public MediaOperation {
public:
    RenderMediaOperation(const QString& inMediaFolder, int inSeconds, std::shared_ptr<PauseGate> inPause);

private:
    void Run() override;
    // False when cancelled; the partial file is removed.
    bool RenderClip(const MediaFile& inFile, std::int64_t& ioFramesDone, std::int64_t inFramesTotal,
                    QByteArray& outChecksum);

    QString mMediaFolder;
    int mSeconds;
};

// Reads every media file of the sample project and checks it against the checksum recorded
// when it was rendered; progress goes by bytes read.
class VerifyMediaOperation : public MediaOperation {
public:
    VerifyMediaOperation(const QString& inMediaFolder, std::shared_ptr<PauseGate> inPause);

private:
    void Run() override;
    // The file's SHA-256, or empty when it could not be read or the operation was cancelled.
    QByteArray Checksum(const QString& inPath, std::int64_t& ioBytesDone, std::int64_t inBytesTotal);

    QString mMediaFolder;
};

} // namespace Demo
