// Calculating the sizes of the project manager's results for a project like the sample project:
// three two-minute movies (640x360 MPEG-4 and AAC) and two two-minute WAV files, used by two
// sequences and a child clip. Trimming measures each movie's cut by muxing it into a counting
// sink; collecting only adds up file sizes.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cmath>

#include "HostQt/ReferenceHost.h"
#include "HostQt/SampleMovie.h"
#include "HostQt/WavFile.h"
#include "KOR/BatchOperation.h"
#include "KOR/Stations.h"
#include "TL/ProjectManager.h"

namespace {

constexpr int kSeconds = 120;
constexpr int kSampleRate = 48000;

// The media on disk. Encoding them takes a while, so they are kept in the temporary folder
// between runs and made again only when incomplete.
struct Media {
    Media() : root(QDir::temp().filePath(QStringLiteral("tarvix-project-manager-bench")))
    {
        const QString complete = QDir(root).filePath(QStringLiteral("complete"));
        if (!QFile::exists(complete)) {
            QDir(root).removeRecursively();
            QDir().mkpath(root);
            Make();
            QFile(complete).open(QIODevice::WriteOnly);
        }
    }

    QString Path(const char* inName) const { return QDir(root).filePath(QString::fromLatin1(inName)); }

    void Make() const
    {
        for (const char* name : {"Harbour at dawn.mov", "Interview A.mov", "Interview B.mov"}) {
            HostQt::SampleMovie movie;
            movie.width = 640;
            movie.height = 360;
            movie.frameRate = KOR::kFrameRate_NTSC2997;
            movie.frames = kSeconds * 30000 / 1001;
            movie.gopSize = 15;
            HostQt::WriteSampleMovie(Path(name), movie);
        }
        for (const char* name : {"Gulls ambience.wav", "Narration take 3.wav"}) {
            const HostQt::WavLayout layout{HostQt::WavFormat::kInt24, 2, kSampleRate};
            QByteArray bytes = HostQt::WavHeader(layout, static_cast<std::int64_t>(kSeconds) * kSampleRate);
            for (int i = 0; i < kSeconds * kSampleRate; ++i) {
                HostQt::AppendWavSample(bytes, layout.format, 0.5 * std::sin(i * 0.01));
                HostQt::AppendWavSample(bytes, layout.format, 0.5 * std::sin(i * 0.013));
            }
            QFile file(Path(name));
            file.open(QIODevice::WriteOnly);
            file.write(bytes);
        }
    }

    // The sample project's edit, spread over the two minutes.
    QByteArray Project() const
    {
        auto item = [](const char* inClip, const char* inTrack, int inStart, int inIn, int inOut) {
            return QJsonObject{{"clip", inClip}, {"track", inTrack}, {"start", inStart}, {"in", inIn}, {"out", inOut}};
        };
        QJsonArray clips;
        for (const char* name : {"Harbour at dawn.mov", "Interview A.mov", "Interview B.mov", "Gulls ambience.wav",
                                 "Narration take 3.wav"}) {
            clips.append(QJsonObject{{"name", name}, {"path", Path(name)}});
        }
        const QJsonObject project{
            {"name", "Harbour Documentary"},
            {"timecode", QJsonObject{{"videoFrameRate", "30000/1001"}, {"audioRate", 48000}}},
            {"clips", clips},
            {"sequences",
             QJsonArray{QJsonObject{{"name", "Main Edit"},
                                    {"items", QJsonArray{item("Harbour at dawn.mov", "V1", 0, 900, 1800),
                                                         item("Interview A.mov", "V1", 900, 450, 1650),
                                                         item("Interview A.mov", "A1", 900, 450, 1650),
                                                         item("Gulls ambience.wav", "A2", 0, 0, 1500),
                                                         item("Narration take 3.wav", "A3", 600, 1000, 1900)}}},
                        QJsonObject{{"name", "Trailer"},
                                    {"frameRate", "25"},
                                    {"items", QJsonArray{item("Harbour at dawn.mov", "V1", 0, 2000, 2600),
                                                         item("Interview B.mov", "V2", 300, 0, 450)}}}}},
            {"childClips",
             QJsonArray{QJsonObject{{"name", "Interview A, second answer"}, {"clip", "Interview A.mov"}, {"in", 2500},
                                    {"out", 3000}}}}};
        return QJsonDocument(project).toJson();
    }

    QString root;
};

const Media& TheMedia()
{
    static const Media media;
    return media;
}

class Completion : public KOR::Listener {
public:
    void ListenerMessageHandler(const std::wstring&, const KOR::Message& inMessage) override
    {
        done = done || dynamic_cast<const KOR::OperationCompleteMessage*>(&inMessage) != nullptr;
    }
    bool done = false;
};

void CalculateSize(benchmark::State& ioState, bool inTrim)
{
    const Media& media = TheMedia();
    const QTemporaryDir settings;
    const QTemporaryDir destination;
    HostQt::ReferenceHost host({settings.path(), QString()});
    const BE::ProjectRef project =
        HostQt::LoadProject(media.Project(), QDir(media.root).filePath(QStringLiteral("Harbour Documentary.json")));
    TL::ProjectManager::Options options;
    options.createTrimmedProject = inTrim;
    options.destinationFolder = destination.path().toStdWString();
    std::uint64_t resulting = 0;
    for (auto _ : ioState) {
        const TL::ProjectManager::ProjectManagerOperationRef operation =
            TL::ProjectManager::CreateProjectManagerOperation(project, options, true);
        Completion completion;
        KOR::StationUtils::AddListener(operation->GetMessageStationName(), &completion);
        operation->Start();
        while (!completion.done) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        KOR::StationUtils::RemoveListener(operation->GetMessageStationName(), &completion);
        if (operation->GetResult() != TL::ProjectManager::kResult_OK) {
            ioState.SkipWithError("the calculation failed");
            return;
        }
        resulting = operation->GetResultingSize();
        ioState.counters["original_MB"] = static_cast<double>(operation->GetOriginalSize()) / 1e6;
    }
    ioState.counters["resulting_MB"] = static_cast<double>(resulting) / 1e6;
}

void CalculateTrimmedSize(benchmark::State& ioState) { CalculateSize(ioState, true); }
void CalculateCollectedSize(benchmark::State& ioState) { CalculateSize(ioState, false); }

BENCHMARK(CalculateTrimmedSize)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK(CalculateCollectedSize)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

} // namespace
