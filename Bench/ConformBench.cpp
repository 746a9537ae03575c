// Conforming ten minutes of 48 kHz stereo AAC to 32-bit float WAV at 48 kHz, beside the ffmpeg
// command-line tool doing the same conversion of the same file in the same run. The source is
// made once with ffmpeg's AAC encoder and kept in the temporary folder between runs.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>

#include "HostQt/Conform.h"
#include "HostQt/MediaCache.h"
#include "HostQt/ReferenceHost.h"
#include "KOR/Paths.h"
#include "ML/ConformUtils.h"

namespace {

constexpr int kSeconds = 600;

QString Quoted(const QString& inPath) { return QLatin1Char('\'') + inPath + QLatin1Char('\''); }

bool HaveFfmpeg() { return std::system("ffmpeg -version >/dev/null 2>&1") == 0; }

// Two tones, one a channel, at 192 kbit/s.
struct Source {
    Source() : root(QDir::temp().filePath(QStringLiteral("tarvix-conform-bench")))
    {
        QDir().mkpath(root);
        path = QDir(root).filePath(QStringLiteral("ten minutes.m4a"));
        cache = QDir(root).filePath(QStringLiteral("Media Cache"));
        QDir().mkpath(cache);
        if (!QFile::exists(path) && HaveFfmpeg()) {
            const QString partial = QDir(root).filePath(QStringLiteral("partial.m4a"));
            const QString command =
                QStringLiteral("ffmpeg -nostdin -loglevel error -y -filter_complex "
                               "'sine=frequency=440:sample_rate=48000:duration=%1[l];"
                               "sine=frequency=660:sample_rate=48000:duration=%1[r];[l][r]amerge=inputs=2' "
                               "-c:a aac -b:a 192k %2")
                    .arg(kSeconds)
                    .arg(Quoted(partial));
            if (std::system(command.toLocal8Bit().constData()) == 0) {
                QFile::rename(partial, path);
            }
        }
        KOR::DirectoryRegistry::RegisterDirectory(L"media.cache", cache.toStdWString());
        const QJsonObject document{
            {QStringLiteral("timecode"), QJsonObject{{QStringLiteral("audioRate"), 48000}}},
            {QStringLiteral("media"), QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("Ten minutes")},
                                                             {QStringLiteral("path"), path}}}}};
        project = HostQt::LoadProject(QJsonDocument(document).toJson(), QDir(root).filePath(QStringLiteral("p.json")));
    }

    bool Ready() const { return QFile::exists(path); }

    QString root;
    QString path;
    QString cache;
    BE::ProjectRef project;
};

Source& TheSource()
{
    static Source source;
    return source;
}

void ConformWithTheHost(benchmark::State& ioState)
{
    Source& source = TheSource();
    if (!source.Ready()) {
        ioState.SkipWithError("no source: ffmpeg is needed to make it");
        return;
    }
    const BE::MasterClipRef clip = source.project->GetMasterClips().front();
    const QString target = HostQt::ConformedAudioPath(source.path, 0, 48000);
    for (auto _ : ioState) {
        ioState.PauseTiming();
        QFile::remove(target);
        ioState.ResumeTiming();
        if (ML::ConformUtils::NeedsConform(clip, true, L"", nullptr)) {
            ioState.SkipWithError("the conform failed");
            return;
        }
    }
    ioState.counters["MB"] = static_cast<double>(QFileInfo(target).size()) / 1e6;
    QFile::remove(target);
}
BENCHMARK(ConformWithTheHost)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1)->Repetitions(5);

void ConformWithTheFfmpegTool(benchmark::State& ioState)
{
    Source& source = TheSource();
    if (!source.Ready()) {
        ioState.SkipWithError("no source: ffmpeg is needed to make it");
        return;
    }
    const QString target = QDir(source.cache).filePath(QStringLiteral("ffmpeg.wav"));
    const QByteArray command = QStringLiteral("ffmpeg -nostdin -loglevel error -y -i %1 -f wav -c:a pcm_f32le %2")
                                   .arg(Quoted(source.path), Quoted(target))
                                   .toLocal8Bit();
    for (auto _ : ioState) {
        ioState.PauseTiming();
        QFile::remove(target);
        ioState.ResumeTiming();
        if (std::system(command.constData()) != 0) {
            ioState.SkipWithError("ffmpeg failed");
            return;
        }
    }
    ioState.counters["MB"] = static_cast<double>(QFileInfo(target).size()) / 1e6;
    QFile::remove(target);
}
BENCHMARK(ConformWithTheFfmpegTool)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1)->Repetitions(5);

} // namespace
