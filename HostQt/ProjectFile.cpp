// The reference project's file: its audio clips with their peaks, its colour mattes, and its atomic save.

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "BE/Project.h"
#include "HostQt/ProjectFile.h"

namespace BE {

const KOR::InterfaceID IAudioClip::kIID = {0x42, 0x45, 0x41, 0x75, 0x64, 0x69, 0x6f, 0x43,
                                           0x6c, 0x69, 0x70, 0x00, 0x00, 0x00, 0x00, 0x01};
IAudioClip::~IAudioClip() = default;

} // namespace BE

namespace HostQt {

namespace {

constexpr std::uint16_t kWavFormat_PCM = 1;
constexpr std::uint16_t kWavFormat_Float = 3;
constexpr std::uint16_t kWavFormat_Extensible = 0xFFFE;

std::uint32_t ReadU32(const char* inBytes)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(inBytes);
    return bytes[0] | (bytes[1] << 8) | (bytes[2] << 16) | (static_cast<std::uint32_t>(bytes[3]) << 24);
}

std::uint16_t ReadU16(const char* inBytes)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(inBytes);
    return static_cast<std::uint16_t>(bytes[0] | (bytes[1] << 8));
}

struct SampleFormat {
    bool isFloat = false;
    int bytes = 0; // per sample
};

// One sample's absolute value, full scale 1.0. Integers of more than 8 bits are signed, 8-bit ones offset by 128.
double SampleMagnitude(const char* inSample, const SampleFormat& inFormat)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(inSample);
    if (inFormat.isFloat) {
        if (inFormat.bytes == 4) {
            float value;
            std::memcpy(&value, inSample, sizeof value);
            return std::fabs(static_cast<double>(value));
        }
        double value;
        std::memcpy(&value, inSample, sizeof value);
        return std::fabs(value);
    }
    if (inFormat.bytes == 1) {
        return std::fabs((static_cast<int>(bytes[0]) - 128) / 128.0);
    }
    std::uint32_t raw = 0;
    for (int i = 0; i < inFormat.bytes; ++i) {
        raw |= static_cast<std::uint32_t>(bytes[i]) << (8 * (i + 4 - inFormat.bytes));
    }
    // Shifted to the top of 32 bits, every width reads as a fraction of 2^31.
    return std::fabs(static_cast<double>(static_cast<std::int32_t>(raw)) / 2147483648.0);
}

std::optional<SampleFormat> ReadFormatChunk(const QByteArray& inChunk)
{
    if (inChunk.size() < 16) {
        return std::nullopt;
    }
    std::uint16_t format = ReadU16(inChunk.constData());
    const std::uint16_t channels = ReadU16(inChunk.constData() + 2);
    const std::uint16_t blockAlign = ReadU16(inChunk.constData() + 12);
    const std::uint16_t bits = ReadU16(inChunk.constData() + 14);
    if (format == kWavFormat_Extensible && inChunk.size() >= 26) {
        format = ReadU16(inChunk.constData() + 24); // the sub-format's first two bytes
    }
    if (channels == 0 || blockAlign % channels != 0) {
        return std::nullopt;
    }
    const SampleFormat sample{format == kWavFormat_Float, blockAlign / channels};
    const bool intOk = format == kWavFormat_PCM && sample.bytes >= 1 && sample.bytes <= 4 && bits <= 8 * sample.bytes;
    const bool floatOk = format == kWavFormat_Float && (sample.bytes == 4 || sample.bytes == 8);
    return intOk || floatOk ? std::optional<SampleFormat>(sample) : std::nullopt;
}

std::optional<double> ScanSamples(QFile& ioFile, std::uint32_t inBytes, const SampleFormat& inFormat)
{
    constexpr qint64 kBlock = 1 << 16;
    const qint64 block = kBlock - kBlock % inFormat.bytes;
    qint64 left = std::min<qint64>(inBytes, ioFile.size() - ioFile.pos());
    left -= left % inFormat.bytes;
    double peak = 0.0;
    QByteArray buffer;
    while (left > 0) {
        buffer = ioFile.read(std::min(block, left));
        if (buffer.isEmpty()) {
            return std::nullopt;
        }
        const qsizetype whole = buffer.size() - buffer.size() % inFormat.bytes;
        for (qsizetype at = 0; at < whole; at += inFormat.bytes) {
            peak = std::max(peak, SampleMagnitude(buffer.constData() + at, inFormat));
        }
        left -= buffer.size();
    }
    return peak;
}

class AudioClip : public KOR::RefCounted<BE::IAudioClip> {
public:
    AudioClip(int inIndex, const QJsonObject& inClip)
        : mIndex(inIndex), mName(inClip.value(QStringLiteral("name")).toString().toStdWString()),
          mPath(inClip.value(QStringLiteral("path")).toString()),
          mPeak(RecordedPeak(inClip))
    {
    }

    std::wstring GetName() const override { return mName; }
    std::wstring GetMediaPath() const override { return mPath.toStdWString(); }
    // Measured once; an unreadable file falls back on what the project recorded.
    double GetPeakAmplitude() const override
    {
        if (!mMeasured) {
            mMeasured = true;
            if (const std::optional<double> measured = MeasureWavPeak(mPath)) {
                mPeak = measured;
            }
        }
        return mPeak.value_or(kPeakUnknown);
    }

    int Index() const { return mIndex; }
    // The peak to record: measured if it was asked for, otherwise as the file had it.
    std::optional<double> KnownPeak() const { return mPeak; }

private:
    static std::optional<double> RecordedPeak(const QJsonObject& inClip)
    {
        const QJsonValue peak = inClip.value(QStringLiteral("peakAmplitude"));
        return peak.isDouble() && peak.toDouble() >= 0.0 ? std::optional<double>(peak.toDouble()) : std::nullopt;
    }

    int mIndex;
    std::wstring mName;
    QString mPath;
    mutable std::optional<double> mPeak;
    mutable bool mMeasured = false;
};

// A matte is one colour, without alpha: the bits above blue are not kept.
class ColorMatte : public KOR::RefCounted<BE::IColorMatte> {
public:
    ColorMatte(int inIndex, std::wstring inName, KOR::ParamColor<unsigned long> inColor)
        : mIndex(inIndex), mName(std::move(inName)), mColor(inColor)
    {
    }

    std::wstring GetName() const override { return mName; }
    KOR::ParamColor<unsigned long> GetColor() const override { return mColor; }
    void SetColor(const KOR::ParamColor<unsigned long>& inColor) override
    {
        mColor = KOR::ParamColor<unsigned long>(inColor.Red(), inColor.Green(), inColor.Blue());
    }

    int Index() const { return mIndex; }

private:
    int mIndex;
    std::wstring mName;
    KOR::ParamColor<unsigned long> mColor;
};

std::optional<KOR::ParamColor<unsigned long>> ParseColor(const QString& inText)
{
    static const QRegularExpression kHexColor(QStringLiteral("^#([0-9A-Fa-f]{6})$"));
    const QRegularExpressionMatch match = kHexColor.match(inText);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const unsigned int rgb = match.captured(1).toUInt(nullptr, 16);
    return KOR::ParamColor<unsigned long>(static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                                          static_cast<std::uint8_t>(rgb));
}

QString ColorText(const KOR::ParamColor<unsigned long>& inColor)
{
    const unsigned int rgb = (inColor.Red() << 16) | (inColor.Green() << 8) | inColor.Blue();
    return QStringLiteral("#%1").arg(rgb, 6, 16, QLatin1Char('0')).toUpper();
}

long OpenFailure(const QFileInfo& inTarget, const QFileInfo& inFolder)
{
    if (inTarget.exists() && !inTarget.isWritable()) {
        return BE::kSaveError_FileReadOnly;
    }
    if (!inFolder.isWritable()) {
        return BE::kSaveError_AccessDenied;
    }
    return BE::kSaveError_Failed;
}

// The new file is made by whoever saves; a project that someone else owns (a shared folder's
// group, an administrator saving for a user) keeps its owner and group where the system allows.
void KeepOwnership(const QSaveFile& inFile, const QFileInfo& inTarget)
{
#ifdef Q_OS_UNIX
    if (inTarget.exists() && (inTarget.ownerId() != geteuid() || inTarget.groupId() != getegid())) {
        [[maybe_unused]] const int refused = fchown(inFile.handle(), inTarget.ownerId(), inTarget.groupId());
    }
#else
    Q_UNUSED(inFile);
    Q_UNUSED(inTarget);
#endif
}

long WriteFailure(const QFileInfo& inFolder, qint64 inNeeded)
{
    const QStorageInfo storage(inFolder.absoluteFilePath());
    return storage.isValid() && storage.bytesAvailable() < inNeeded ? BE::kSaveError_DiskFull
                                                                     : BE::kSaveError_WriteFault;
}

} // namespace

std::optional<double> MeasureWavPeak(const QString& inPath)
{
    QFile file(inPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray header = file.read(12);
    if (header.size() < 12 || !header.startsWith("RIFF") || header.mid(8, 4) != "WAVE") {
        return std::nullopt;
    }
    std::optional<SampleFormat> format;
    for (QByteArray chunk = file.read(8); chunk.size() == 8; chunk = file.read(8)) {
        const std::uint32_t size = ReadU32(chunk.constData() + 4);
        if (chunk.startsWith("fmt ")) {
            format = ReadFormatChunk(file.read(size));
        } else if (chunk.startsWith("data")) {
            return format ? ScanSamples(file, size, *format) : std::nullopt;
        } else if (!file.seek(file.pos() + size)) {
            return std::nullopt;
        }
        if (size % 2 != 0 && !file.seek(file.pos() + 1)) { // chunks are padded to even sizes
            return std::nullopt;
        }
    }
    return std::nullopt;
}

std::vector<BE::AudioClipRef> ReadAudioClips(const QJsonArray& inClips)
{
    std::vector<BE::AudioClipRef> clips;
    for (int index = 0; index < inClips.size(); ++index) {
        const QJsonObject clip = inClips.at(index).toObject();
        if (clip.value(QStringLiteral("audioOnly")).toBool() || clip.contains(QStringLiteral("peakAmplitude"))) {
            clips.emplace_back(new AudioClip(index, clip));
        }
    }
    return clips;
}

QJsonArray WriteAudioClips(QJsonArray inClips, const std::vector<BE::AudioClipRef>& inAudioClips)
{
    for (const BE::AudioClipRef& ref : inAudioClips) {
        const auto* clip = dynamic_cast<const AudioClip*>(ref.Get());
        if (clip && clip->KnownPeak() && clip->Index() < inClips.size()) {
            QJsonObject entry = inClips.at(clip->Index()).toObject();
            entry.insert(QStringLiteral("peakAmplitude"), *clip->KnownPeak());
            inClips.replace(clip->Index(), entry);
        }
    }
    return inClips;
}

std::vector<BE::ColorMatteRef> ReadColorMattes(const QJsonArray& inMattes)
{
    std::vector<BE::ColorMatteRef> mattes;
    for (int index = 0; index < inMattes.size(); ++index) {
        const QJsonObject matte = inMattes.at(index).toObject();
        if (const auto color = ParseColor(matte.value(QStringLiteral("color")).toString())) {
            mattes.emplace_back(
                new ColorMatte(index, matte.value(QStringLiteral("name")).toString().toStdWString(), *color));
        }
    }
    return mattes;
}

QJsonArray WriteColorMattes(QJsonArray inMattes, const std::vector<BE::ColorMatteRef>& inColorMattes)
{
    for (const BE::ColorMatteRef& ref : inColorMattes) {
        const auto* matte = dynamic_cast<const ColorMatte*>(ref.Get());
        if (matte && matte->Index() < inMattes.size()) {
            QJsonObject entry = inMattes.at(matte->Index()).toObject();
            entry.insert(QStringLiteral("color"), ColorText(matte->GetColor()));
            inMattes.replace(matte->Index(), entry);
        }
    }
    return inMattes;
}

long WriteProjectFile(const QJsonObject& inProject, const QString& inPath)
{
    const QFileInfo target(inPath);
    const QFileInfo folder(target.absolutePath());
    if (!folder.isDir()) {
        return BE::kSaveError_PathNotFound;
    }
    if (target.isDir()) {
        return BE::kSaveError_Failed;
    }
    QSaveFile file(inPath);
    if (!file.open(QIODevice::WriteOnly)) {
        return OpenFailure(target, folder);
    }
    KeepOwnership(file, target);
    const QByteArray data = QJsonDocument(inProject).toJson();
    // Committing flushes without looking at how much reached the disk: a short write (a disk
    // filling up) would replace the old file with the start of the new one. Flush and measure first.
    if (file.write(data) != data.size() || !file.flush() || file.size() != data.size()) {
        file.cancelWriting();
    }
    if (!file.commit()) {
        return WriteFailure(folder, data.size());
    }
    return BE::kSave_OK;
}

} // namespace HostQt
