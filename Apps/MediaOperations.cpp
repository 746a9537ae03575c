#include "MediaOperations.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <array>
#include <cmath>
#include <exception>
#include <numbers>

#include "HostQt/WavFile.h"
#include "KOR/Clock.h"
#include "KOR/WorkQueue.h"

namespace Demo {

namespace {

constexpr int kWorkPriority = 3;
constexpr qint64 kReadChunk = 256 * 1024;
constexpr const char* kChecksumFile = "checksums.sha256";
constexpr const char* kProjectDrive = "/media/";
// Estimates of the time left start once the work has run this long, and come this often.
constexpr std::int64_t kTimeLeftAfterMs = 100;
constexpr std::int64_t kTimeLeftEveryMs = 250;

constexpr int kSampleRate = 48000;
constexpr int kChannels = 2;
constexpr HostQt::WavLayout kLayout{HostQt::WavFormat::kInt24, kChannels, kSampleRate};
constexpr int kFramesPerChunk = 4800;

// "<hex>  <path relative to the folder>" per line, as sha256sum writes them.
QHash<QString, QByteArray> ReadChecksums(const QString& inFolder)
{
    QHash<QString, QByteArray> checksums;
    QFile file(QDir(inFolder).filePath(QString::fromLatin1(kChecksumFile)));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return checksums;
    }
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const qsizetype gap = line.indexOf(QStringLiteral("  "));
        if (gap > 0) {
            checksums.insert(line.mid(gap + 2), line.left(gap).toLatin1());
        }
    }
    return checksums;
}

bool WriteChecksums(const QString& inFolder, const QHash<QString, QByteArray>& inChecksums)
{
    QSaveFile file(QDir(inFolder).filePath(QString::fromLatin1(kChecksumFile)));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    for (auto entry = inChecksums.begin(); entry != inChecksums.end(); ++entry) {
        file.write(entry.value() + "  " + entry.key().toUtf8() + "\n");
    }
    return file.commit();
}

// Surf as filtered noise that swells and ebbs, and a gull's falling call every few seconds.
class Ambience {
public:
    explicit Ambience(quint32 inSeed) : mNoise(inSeed) {}

    std::array<double, kChannels> Next()
    {
        const double t = static_cast<double>(mFrame++) / kSampleRate;
        std::array<double, kChannels> out{};
        const double swell = 0.55 + 0.45 * std::sin(2.0 * std::numbers::pi * t / 7.0);
        const double callTime = std::fmod(t, 3.7);
        const double call = callTime < 0.45 ? std::sin(2.0 * std::numbers::pi * (2200.0 - 1400.0 * callTime) * callTime) *
                                                  std::sin(std::numbers::pi * callTime / 0.45)
                                            : 0.0;
        for (int channel = 0; channel < kChannels; ++channel) {
            mLowpass[channel] += 0.06 * (White() - mLowpass[channel]);
            const double pan = channel == 0 ? 0.35 : 0.2;
            out[channel] = 0.5 * swell * mLowpass[channel] + pan * call;
        }
        return out;
    }

private:
    double White()
    {
        mNoise = mNoise * 1664525u + 1013904223u;
        return static_cast<double>(mNoise) / 2147483648.0 - 1.0;
    }

    quint32 mNoise;
    std::int64_t mFrame = 0;
    std::array<double, kChannels> mLowpass{};
};

QString Relative(const QString& inFolder, const QString& inPath) { return QDir(inFolder).relativeFilePath(inPath); }

} // namespace

std::vector<MediaFile> SampleProjectMedia(const QString& inMediaFolder)
{
    QFile project(QStringLiteral(":/SampleProject.json"));
    project.open(QIODevice::ReadOnly);
    std::vector<MediaFile> files;
    const QString drive = QString::fromLatin1(kProjectDrive);
    for (const QJsonValue clip : QJsonDocument::fromJson(project.readAll()).object().value(QStringLiteral("clips")).toArray()) {
        const QString path = clip[QStringLiteral("path")].toString();
        files.push_back({clip[QStringLiteral("name")].toString(),
                         QDir(inMediaFolder).filePath(path.startsWith(drive) ? path.mid(drive.size()) : path),
                         clip[QStringLiteral("online")].toBool(true)});
    }
    return files;
}

bool PauseGate::IsHolding() const
{
    std::lock_guard lock(mMutex);
    return mHolding;
}

void PauseGate::Release()
{
    std::lock_guard lock(mMutex);
    mReleased = true;
    mChanged.notify_all();
}

void PauseGate::Hold(const KOR::IBatchOperation& inOperation)
{
    std::unique_lock lock(mMutex);
    mHolding = true;
    mChanged.wait(lock, [&] { return mReleased || inOperation.IsCancelRequested(); });
    mHolding = false;
    mReleased = true;
}

void PauseGate::Wake()
{
    std::lock_guard lock(mMutex);
    mChanged.notify_all();
}

MediaOperation::MediaOperation(std::vector<MediaFile> inFiles, std::shared_ptr<PauseGate> inPause)
    : mFiles(std::move(inFiles)), mPause(std::move(inPause))
{
}

void MediaOperation::Start()
{
    KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(kWorkPriority).QueueRequest(
        [self = KOR::InterfaceRef<MediaOperation>(this)] {
            self->RunToCompletion([&] {
                self->mStartMs = KOR::Clock::GetMilliseconds();
                try {
                    self->Run();
                } catch (const std::exception& error) {
                    self->AddReport(QStringLiteral("failed: %1").arg(QString::fromLocal8Bit(error.what())));
                    throw;
                }
            });
        });
}

void MediaOperation::RequestCancel()
{
    BatchOperation::RequestCancel();
    if (mPause) {
        mPause->Wake();
    }
}

QStringList MediaOperation::Report() const
{
    std::lock_guard lock(mReportMutex);
    return mReport;
}

void MediaOperation::AddReport(const QString& inLine)
{
    std::lock_guard lock(mReportMutex);
    mReport << inLine;
}

void MediaOperation::Advance(std::int64_t inDone, std::int64_t inTotal)
{
    const float fraction = inTotal > 0 ? static_cast<float>(static_cast<double>(inDone) / static_cast<double>(inTotal)) : 1.0f;
    PostProgress(fraction);
    const std::int64_t now = KOR::Clock::GetMilliseconds();
    const std::int64_t elapsed = now - mStartMs;
    if (inDone > 0 && elapsed >= kTimeLeftAfterMs && now - mLastTimeLeftMs >= kTimeLeftEveryMs) {
        mLastTimeLeftMs = now;
        PostTimeLeft(static_cast<double>(elapsed) / 1000.0 * static_cast<double>(inTotal - inDone) /
                     static_cast<double>(inDone));
    }
    if (mPause && fraction >= mPause->Fraction()) {
        mPause->Hold(*this);
    }
}

RenderMediaOperation::RenderMediaOperation(const QString& inMediaFolder, int inSeconds,
                                           std::shared_ptr<PauseGate> inPause)
    : MediaOperation(SampleProjectMedia(inMediaFolder), std::move(inPause)), mMediaFolder(inMediaFolder),
      mSeconds(inSeconds)
{
}

void RenderMediaOperation::Run()
{
    std::vector<const MediaFile*> audio;
    for (const MediaFile& file : Files()) {
        if (file.online && file.path.endsWith(QStringLiteral(".wav"), Qt::CaseInsensitive)) {
            audio.push_back(&file);
        }
    }
    const std::int64_t framesTotal = static_cast<std::int64_t>(audio.size()) * mSeconds * kSampleRate;
    std::int64_t framesDone = 0;
    QHash<QString, QByteArray> checksums = ReadChecksums(mMediaFolder);
    for (const MediaFile* file : audio) {
        PostDescription(L"Rendering " + file->clipName.toStdWString());
        QByteArray checksum;
        if (!RenderClip(*file, framesDone, framesTotal, checksum)) {
            AddReport(IsCancelRequested() ? QStringLiteral("%1: cancelled").arg(file->clipName)
                                          : QStringLiteral("%1: could not be written to %2").arg(file->clipName, file->path));
            break;
        }
        checksums.insert(Relative(mMediaFolder, file->path), checksum);
        AddReport(QStringLiteral("%1: rendered, %2 s").arg(file->clipName).arg(mSeconds));
    }
    if (!WriteChecksums(mMediaFolder, checksums)) {
        AddReport(QStringLiteral("the checksums could not be written to %1").arg(mMediaFolder));
    }
}

bool RenderMediaOperation::RenderClip(const MediaFile& inFile, std::int64_t& ioFramesDone, std::int64_t inFramesTotal,
                                      QByteArray& outChecksum)
{
    QDir().mkpath(QFileInfo(inFile.path).absolutePath());
    QSaveFile file(inFile.path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const std::int64_t frames = static_cast<std::int64_t>(mSeconds) * kSampleRate;
    auto write = [&](const QByteArray& inData) {
        hash.addData(inData);
        return file.write(inData) == inData.size();
    };
    if (!write(HostQt::WavHeader(kLayout, frames))) {
        return false;
    }
    Ambience ambience(static_cast<quint32>(qHash(inFile.clipName)));
    QByteArray chunk;
    for (std::int64_t frame = 0; frame < frames; frame += kFramesPerChunk) {
        if (IsCancelRequested()) {
            return false; // QSaveFile drops what it wrote
        }
        chunk.clear();
        const std::int64_t count = std::min<std::int64_t>(kFramesPerChunk, frames - frame);
        for (std::int64_t i = 0; i < count; ++i) {
            for (const double sample : ambience.Next()) {
                HostQt::AppendWavSample(chunk, kLayout.format, sample);
            }
        }
        if (!write(chunk)) {
            return false;
        }
        ioFramesDone += count;
        Advance(ioFramesDone, inFramesTotal);
    }
    outChecksum = hash.result().toHex();
    return file.commit();
}

VerifyMediaOperation::VerifyMediaOperation(const QString& inMediaFolder, std::shared_ptr<PauseGate> inPause)
    : MediaOperation(SampleProjectMedia(inMediaFolder), std::move(inPause)), mMediaFolder(inMediaFolder)
{
}

void VerifyMediaOperation::Run()
{
    const QHash<QString, QByteArray> expected = ReadChecksums(mMediaFolder);
    std::int64_t bytesTotal = 0;
    for (const MediaFile& file : Files()) {
        bytesTotal += file.online ? QFileInfo(file.path).size() : 0;
    }
    std::int64_t bytesDone = 0;
    for (const MediaFile& file : Files()) {
        if (IsCancelRequested()) {
            AddReport(QStringLiteral("cancelled before %1").arg(file.clipName));
            return;
        }
        if (!file.online) {
            AddReport(QStringLiteral("%1: offline").arg(file.clipName));
            continue;
        }
        if (!QFileInfo::exists(file.path)) {
            AddReport(QStringLiteral("%1: missing (%2)").arg(file.clipName, file.path));
            continue;
        }
        PostDescription(L"Verifying " + file.clipName.toStdWString());
        const QByteArray checksum = Checksum(file.path, bytesDone, bytesTotal);
        const QByteArray recorded = expected.value(Relative(mMediaFolder, file.path));
        if (IsCancelRequested()) {
            AddReport(QStringLiteral("%1: cancelled").arg(file.clipName));
        } else if (checksum.isEmpty()) {
            AddReport(QStringLiteral("%1: could not be read").arg(file.clipName));
        } else if (recorded.isEmpty()) {
            AddReport(QStringLiteral("%1: no checksum recorded").arg(file.clipName));
        } else {
            AddReport(QStringLiteral("%1: %2").arg(file.clipName, checksum == recorded ? QStringLiteral("verified")
                                                                                      : QStringLiteral("CHECKSUM MISMATCH")));
        }
    }
}

QByteArray VerifyMediaOperation::Checksum(const QString& inPath, std::int64_t& ioBytesDone, std::int64_t inBytesTotal)
{
    QFile file(inPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    while (!file.atEnd()) {
        if (IsCancelRequested()) {
            return {};
        }
        const QByteArray chunk = file.read(kReadChunk);
        if (chunk.isEmpty()) {
            return {};
        }
        hash.addData(chunk);
        ioBytesDone += chunk.size();
        Advance(ioBytesDone, inBytesTotal);
    }
    return hash.result().toHex();
}

} // namespace Demo
