#pragma once

// What the conform tests share: sources written on the spot, a reader for the files conforming
// makes, projects over those sources and a record of the conform messages.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <numbers>
#include <string>
#include <vector>

#include "HostQt/MediaCache.h"
#include "HostQt/ReferenceHost.h"
#include "HostQt/WavFile.h"
#include "KOR/Stations.h"
#include "ML/ConformUtils.h"

namespace ConformSupport {

// A tone of inHz in every channel (channel c at inHz * (c + 1)), 0.5 of full scale, as 16-bit
// WAV of inSeconds; written in pieces so that long files need little memory.
inline void WriteToneWav(const QString& inPath, int inRate, int inChannels, double inSeconds, double inHz = 441.0)
{
    const auto frames = static_cast<std::int64_t>(std::llround(inSeconds * inRate));
    QFile file(inPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return;
    }
    file.write(HostQt::WavHeader({HostQt::WavFormat::kInt16, inChannels, inRate}, frames));
    QByteArray block;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < inChannels; ++channel) {
            const double t = static_cast<double>(frame) / inRate;
            HostQt::AppendWavSample(block, HostQt::WavFormat::kInt16,
                                    0.5 * std::sin(2 * std::numbers::pi * inHz * (channel + 1) * t));
        }
        if (block.size() >= (1 << 20)) {
            file.write(block);
            block.clear();
        }
    }
    file.write(block);
}

// The value WriteToneWav stored for a frame, as the 16-bit sample it became, in [-1, 1).
inline float StoredToneSample(std::int64_t inFrame, int inChannel, int inRate, double inHz = 441.0)
{
    const double t = static_cast<double>(inFrame) / inRate;
    const double value = 0.5 * std::sin(2 * std::numbers::pi * inHz * (inChannel + 1) * t);
    return static_cast<float>(std::clamp(std::lround(value * 32768.0), -32768L, 32767L) / 32768.0);
}

// A WAV file as conforming writes it: the format chunk's fields and the samples.
struct ConformedWav {
    bool valid = false;
    int formatCode = 0;
    int channels = 0;
    int sampleRate = 0;
    int bitsPerSample = 0;
    QByteArray subFormat;          // 16 bytes for the extensible format
    std::uint32_t channelMask = 0; // the extensible format's speakers
    std::vector<float> samples;

    std::int64_t Frames() const { return channels > 0 ? static_cast<std::int64_t>(samples.size()) / channels : 0; }
    float At(std::int64_t inFrame, int inChannel) const
    {
        return samples[static_cast<std::size_t>(inFrame * channels + inChannel)];
    }
};

inline ConformedWav ReadConformedWav(const QString& inPath)
{
    ConformedWav wav;
    QFile file(inPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return wav;
    }
    const QByteArray bytes = file.readAll();
    if (bytes.size() < 12 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE" ||
        qFromLittleEndian<quint32>(bytes.constData() + 4) != static_cast<quint32>(bytes.size() - 8)) {
        return wav;
    }
    qsizetype at = 12;
    bool haveFormat = false;
    while (at + 8 <= bytes.size()) {
        const QByteArray id = bytes.mid(at, 4);
        const auto size = static_cast<qsizetype>(qFromLittleEndian<quint32>(bytes.constData() + at + 4));
        const char* body = bytes.constData() + at + 8;
        if (at + 8 + size > bytes.size()) {
            return wav;
        }
        if (id == "fmt ") {
            wav.formatCode = qFromLittleEndian<quint16>(body);
            wav.channels = qFromLittleEndian<quint16>(body + 2);
            wav.sampleRate = static_cast<int>(qFromLittleEndian<quint32>(body + 4));
            wav.bitsPerSample = qFromLittleEndian<quint16>(body + 14);
            if (size >= 40) {
                wav.channelMask = qFromLittleEndian<quint32>(body + 20);
                wav.subFormat = QByteArray(body + 24, 16);
            }
            haveFormat = true;
        } else if (id == "data" && haveFormat) {
            wav.samples.resize(static_cast<std::size_t>(size) / sizeof(float));
            std::memcpy(wav.samples.data(), body, wav.samples.size() * sizeof(float));
            wav.valid = size % (4 * std::max(wav.channels, 1)) == 0;
            return wav;
        }
        at += 8 + size + (size & 1);
    }
    return wav;
}

// A project file over media files: {"name", "path", "audio"} each, at inAudioRate, with the
// child clips and sequences given as the project file has them.
inline BE::ProjectRef MakeProject(const QString& inProjectPath, int inAudioRate, const QJsonArray& inMedia,
                                  const QJsonArray& inChildClips = {}, const QJsonArray& inSequences = {})
{
    const QJsonObject document{
        {QStringLiteral("name"), QStringLiteral("Conform test")},
        {QStringLiteral("timecode"), QJsonObject{{QStringLiteral("videoFrameRate"), QStringLiteral("25")},
                                                 {QStringLiteral("audioRate"), inAudioRate}}},
        {QStringLiteral("media"), inMedia},
        {QStringLiteral("childClips"), inChildClips},
        {QStringLiteral("sequences"), inSequences}};
    return HostQt::LoadProject(QJsonDocument(document).toJson(), inProjectPath);
}

inline QJsonObject MediaEntry(const QString& inName, const QString& inPath, bool inAudio = true)
{
    QJsonObject entry{{QStringLiteral("name"), inName}, {QStringLiteral("path"), inPath}};
    if (!inAudio) {
        entry.insert(QStringLiteral("audio"), false);
    }
    return entry;
}

// Every file in the media cache, temporary ones included.
inline QStringList CacheFiles()
{
    return QDir(HostQt::MediaCacheFolder()).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

// The conform messages a station carried, in order.
class MessageLog : public KOR::Listener {
public:
    MessageLog() : mStation(KOR::StationRegistry::RegisterUniqueStation())
    {
        KOR::StationUtils::AddListener(mStation, this);
    }
    ~MessageLog() override { KOR::StationRegistry::DisposeStation(mStation); }

    const std::wstring& Station() const { return mStation; }
    // Waits for the Finished message to come through the event loop.
    bool WaitForFinished()
    {
        return QTest::qWaitFor([this] { return finished; }, 20000);
    }

    void ListenerMessageHandler(const std::wstring&, const KOR::Message& inMessage) override
    {
        if (const auto* started = dynamic_cast<const ML::AudioConformationStarted*>(&inMessage)) {
            ++startedCount;
            streamCount = started->GetStreamCount();
            totalSeconds = started->GetTotalSeconds();
        } else if (const auto* progress = dynamic_cast<const ML::AudioConformationProgress*>(&inMessage)) {
            fractions.push_back(progress->GetFraction());
            mediaNames.push_back(progress->GetMediaName());
            streamIndexes.push_back(progress->GetStreamIndex());
        } else if (const auto* done = dynamic_cast<const ML::AudioConformationFinished*>(&inMessage)) {
            finished = true;
            completed = done->IsCompleted();
            failure = done->GetFailure();
        }
    }

    int startedCount = 0;
    int streamCount = -1;
    double totalSeconds = -1;
    std::vector<float> fractions;
    std::vector<std::wstring> mediaNames;
    std::vector<int> streamIndexes;
    bool finished = false;
    bool completed = false;
    std::wstring failure;

private:
    std::wstring mStation;
};

} // namespace ConformSupport
