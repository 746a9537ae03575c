// The host's media cache: conformed audio named after what it was made from, the memory
// manager's purge and the pause of background media work.

#include "HostQt/MediaCache.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QPixmapCache>

#include <atomic>

#include "KOR/Paths.h"
#include "MF/MemoryManager.h"
#include "ML/ConformUtils.h"

namespace HostQt {

namespace {

std::atomic<int> gPauseCount{0};

// "<file base> <digest> a" ... "<rate>Hz.wav": the parts of a conformed file's name around its
// stream number.
bool ConformedNameParts(const QString& inMediaPath, int inSampleRate, QString& outPrefix, QString& outSuffix)
{
    const QFileInfo media(inMediaPath);
    if (!media.isFile()) {
        return false;
    }
    const QByteArray identity = media.absoluteFilePath().toUtf8() + '|' + QByteArray::number(media.size()) + '|' +
                                QByteArray::number(media.lastModified().toMSecsSinceEpoch());
    const QString digest =
        QString::fromLatin1(QCryptographicHash::hash(identity, QCryptographicHash::Sha1).toHex().left(16));
    outPrefix = media.completeBaseName() + QLatin1Char(' ') + digest + QStringLiteral(" a");
    outSuffix = QStringLiteral(" %1Hz.wav").arg(inSampleRate);
    return true;
}

} // namespace

QString MediaCacheFolder() { return QString::fromStdWString(KOR::DirectoryRegistry::FindDirectory(L"media.cache")); }

QString ConformedAudioPath(const QString& inMediaPath, int inStreamIndex, int inSampleRate)
{
    QString prefix;
    QString suffix;
    if (!ConformedNameParts(inMediaPath, inSampleRate, prefix, suffix) || MediaCacheFolder().isEmpty()) {
        return {};
    }
    return QDir(MediaCacheFolder()).filePath(prefix + QString::number(inStreamIndex + 1) + suffix);
}

QStringList ExistingConformedAudio(const QString& inMediaPath, int inSampleRate)
{
    QStringList found;
    for (int stream = 0;; ++stream) {
        const QString path = ConformedAudioPath(inMediaPath, stream, inSampleRate);
        if (path.isEmpty() || !QFileInfo(path).isFile()) {
            return found;
        }
        found.append(path);
    }
}

} // namespace HostQt

namespace ML {

AudioConformationStarted::AudioConformationStarted(int inStreamCount, double inTotalSeconds)
    : Message(KOR::HashMessageTypeNameToMessageID(kTypeName)), mStreamCount(inStreamCount),
      mTotalSeconds(inTotalSeconds)
{
}
AudioConformationStarted::~AudioConformationStarted() = default;

AudioConformationProgress::AudioConformationProgress(std::wstring inMediaName, int inStreamIndex, float inFraction)
    : Message(KOR::HashMessageTypeNameToMessageID(kTypeName)), mMediaName(std::move(inMediaName)),
      mStreamIndex(inStreamIndex), mFraction(inFraction)
{
}
AudioConformationProgress::~AudioConformationProgress() = default;

AudioConformationFinished::AudioConformationFinished(bool inCompleted, std::wstring inFailure)
    : Message(KOR::HashMessageTypeNameToMessageID(kTypeName)), mCompleted(inCompleted), mFailure(std::move(inFailure))
{
}
AudioConformationFinished::~AudioConformationFinished() = default;

std::vector<std::wstring> ConformUtils::GetConformedFiles(const BE::MediaRef& inMedia, int inSampleRate)
{
    std::vector<std::wstring> files;
    if (inMedia) {
        for (const QString& path :
             HostQt::ExistingConformedAudio(QString::fromStdWString(inMedia->GetFilePath()), inSampleRate)) {
            files.push_back(path.toStdWString());
        }
    }
    return files;
}

void PauseWorkerThreads(bool inPause)
{
    if (inPause) {
        HostQt::gPauseCount.fetch_add(1);
    } else {
        int count = HostQt::gPauseCount.load();
        while (count > 0 && !HostQt::gPauseCount.compare_exchange_weak(count, count - 1)) {
        }
    }
}

bool AreWorkerThreadsPaused() { return HostQt::gPauseCount.load() > 0; }

} // namespace ML

// The only picture memory the reference host keeps is Qt's pixmap cache (icons, swatches).
void MF::MM::Purge(std::uint64_t, int) { QPixmapCache::clear(); }
