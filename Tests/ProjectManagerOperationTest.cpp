// The project manager operation on real media: collected and trimmed projects reopened and
// decoded to check that every clip still shows the same frames and samples, the sizes computed
// beforehand against what is written, failures and cancelling that leave nothing behind, and the
// arithmetic of cuts and names.

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <limits>
#include <optional>
#include <fstream>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "BE/ProjectSettings.h"
#include "BE/Sequence.h"
#include "HostQt/MediaCache.h"
#include "HostQt/ProjectManagerMedia.h"
#include "HostQt/ProjectManagerPlan.h"
#include "HostQt/ReferenceHost.h"
#include "HostQt/SampleMovie.h"
#include "KOR/BatchOperation.h"
#include "KOR/Stations.h"
#include "TL/ProjectManager.h"
#include "TestHost.h"

namespace {

namespace PM = TL::ProjectManager;
using namespace HostQt::ProjectManagement;

constexpr std::int64_t kTicks = KOR::Time::kTicksPerSecond;
constexpr std::int64_t kNtscFrame = kTicks * 1001 / 30000;
constexpr std::int64_t kPalFrame = kTicks / 25;
constexpr std::int64_t kSample48k = kTicks / 48000;
constexpr int kWaitLimitMs = 60000;
constexpr int kComparedSamples = 64;

// ---- The arithmetic ------------------------------------------------------------------------

struct SpanCase {
    const char* what;
    std::vector<Use> uses;
    int handles;
    std::int64_t mediaEnd;
    Span expected;
};

TEST(ProjectManagerPlan, NeededSpanCoversEveryUseWithHandlesAtItsOwnRate)
{
    const std::vector<SpanCase> cases = {
        {"one use, no handles", {{10 * kPalFrame, 20 * kPalFrame, kPalFrame}}, 0, 100 * kPalFrame,
         {10 * kPalFrame, 20 * kPalFrame}},
        {"handles before and after", {{10 * kPalFrame, 20 * kPalFrame, kPalFrame}}, 5, 100 * kPalFrame,
         {5 * kPalFrame, 25 * kPalFrame}},
        {"handles stop at the media's start and end", {{2 * kPalFrame, 98 * kPalFrame, kPalFrame}}, 5, 100 * kPalFrame,
         {0, 100 * kPalFrame}},
        {"two uses far apart: one span over both",
         {{60 * kPalFrame, 70 * kPalFrame, kPalFrame}, {10 * kPalFrame, 20 * kPalFrame, kPalFrame}}, 1, 100 * kPalFrame,
         {9 * kPalFrame, 71 * kPalFrame}},
        {"each use's handles at its own rate",
         {{100 * kPalFrame, 110 * kPalFrame, kPalFrame}, {130 * kNtscFrame, 140 * kNtscFrame, kNtscFrame}}, 10,
         kTicks * 60, {90 * kPalFrame, 150 * kNtscFrame}},
        {"no uses", {}, 30, kTicks, {0, 0}},
        {"negative handle amount counts as none", {{10 * kPalFrame, 20 * kPalFrame, kPalFrame}}, -3, kTicks * 60,
         {10 * kPalFrame, 20 * kPalFrame}},
    };
    for (const SpanCase& c : cases) {
        EXPECT_EQ(NeededSpan(c.uses, c.handles, c.mediaEnd), c.expected) << c.what;
    }
}

struct GridCase {
    const char* what;
    std::vector<std::int64_t> units;
    std::int64_t time;
};

// A cut start on the grid is a whole number of every unit, and no later than asked for and no
// more than one grid step earlier.
TEST(ProjectManagerPlan, CutStartsAreWholeFramesAndSamplesOfEveryRate)
{
    const std::vector<GridCase> cases = {
        {"29.97 frames and 48 kHz samples", {kNtscFrame, kSample48k}, 123 * kNtscFrame + 17 * kSample48k},
        {"25 and 29.97 sequences on one media", {kPalFrame, kNtscFrame, kSample48k}, 7 * kTicks + 12345},
        {"a time-base step of 1/12800", {kPalFrame, kTicks / 12800}, 3 * kTicks + 1},
        {"23.976 frames and 44.1 kHz", {kTicks * 1001 / 24000, kTicks / 44100}, 61 * kTicks},
        {"already on the grid", {kPalFrame}, 40 * kPalFrame},
        {"zero units are ignored", {0, kPalFrame, -5}, 41 * kPalFrame + 3},
    };
    for (const GridCase& c : cases) {
        const std::int64_t grid = CutGrid(c.units);
        const std::int64_t start = AlignDown(c.time, grid);
        EXPECT_LE(start, c.time) << c.what;
        EXPECT_GT(start + grid, c.time) << c.what;
        for (const std::int64_t unit : c.units) {
            if (unit > 0) {
                EXPECT_EQ(start % unit, 0) << c.what << ", unit " << unit;
            }
        }
    }
    EXPECT_EQ(CutGrid({}), 1);
    EXPECT_EQ(AlignDown(1000, 1), 1000);
}

struct NameCase {
    const char* what;
    std::wstring clipName;
    std::wstring fileName;
    bool rename;
    std::vector<std::wstring> taken;
    std::wstring expected;
};

TEST(ProjectManagerPlan, CopyNamesKeepTheExtensionAndNeverCollide)
{
    const std::vector<NameCase> cases = {
        {"clip name without extension", L"Harbour at dawn", L"A001_C003.mov", true, {}, L"Harbour at dawn.mov"},
        {"clip name with the extension", L"Harbour at dawn.mov", L"A001_C003.mov", true, {}, L"Harbour at dawn.mov"},
        {"extension compared without case", L"Gulls.WAV", L"gulls_take1.wav", true, {}, L"Gulls.wav"},
        {"another extension in the clip name is part of its name", L"Take 3.final", L"t3.wav", true, {},
         L"Take 3.final.wav"},
        {"not renaming keeps the file name", L"Harbour at dawn", L"A001_C003.mov", false, {}, L"A001_C003.mov"},
        {"slashes and colons cannot be in a file name", L"Act 1/Scene: 2", L"x.mov", true, {}, L"Act 1_Scene_ 2.mov"},
        {"a taken name is numbered", L"Interview", L"i.mov", true, {L"Interview.mov"}, L"Interview (2).mov"},
        {"numbered past every taken one", L"Interview", L"i.mov", true,
         {L"interview.MOV", L"Interview (2).mov", L"Interview (3).mov"}, L"Interview (4).mov"},
        {"same file name from two folders", L"", L"clip.mov", false, {L"clip.mov"}, L"clip (2).mov"},
    };
    for (const NameCase& c : cases) {
        EXPECT_EQ(UniqueName(CopyName(c.clipName, c.fileName, c.rename), c.taken), c.expected) << c.what;
    }
}

TEST(ProjectManagerPlan, NumberedFramesCountUpTheLastDigitsAtTheirWidth)
{
    const std::vector<std::pair<std::wstring, std::vector<std::wstring>>> cases = {
        {L"/s/take2/shot_0098.png", {L"/s/take2/shot_0098.png", L"/s/take2/shot_0099.png", L"/s/take2/shot_0100.png"}},
        {L"/s/f998", {L"/s/f998", L"/s/f999", L"/s/f1000"}},
        {L"/s/a1/plate_07_final.tif",
         {L"/s/a1/plate_07_final.tif", L"/s/a1/plate_08_final.tif", L"/s/a1/plate_09_final.tif"}},
        {L"/s/9/plate.png", {L"/s/9/plate.png"}},
    };
    for (const auto& [first, expected] : cases) {
        EXPECT_EQ(NumberedFrames(first, 3), expected) << QString::fromStdWString(first).toStdString();
    }
}

// A WAV file whose samples run past what a RIFF size holds (its data size left at its largest, as
// a recorder that never finished leaves it): no cut of it could be written as a WAV file.
TEST(ProjectManagerMedia, WavFilesPastTheRiffLimitAreCopiedWhole)
{
    const QTemporaryDir folder;
    for (const qint64 samplesBytes : {qint64{48000 * 4}, qint64{std::numeric_limits<quint32>::max()}}) {
        const QString path = folder.filePath(QString::number(samplesBytes) + ".wav");
        TestSupport::WriteWav(path, {HostQt::WavFormat::kInt16, 2, 48000}, std::vector<double>(2 * 48000));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QByteArray head = file.read(64);
        const qint64 data = head.indexOf("data");
        ASSERT_GT(data, 0);
        ASSERT_TRUE(file.seek(data + 4));
        const quint32 size = static_cast<quint32>(samplesBytes);
        file.write(reinterpret_cast<const char*>(&size), 4); // little-endian host
        ASSERT_TRUE(file.resize(data + 8 + samplesBytes)); // sparse
        file.close();
        MediaLayout layout;
        ASSERT_EQ(ProbeMedia(path, layout), 0);
        EXPECT_EQ(layout.kind, samplesBytes > 48000 * 4 ? CutKind::kWhole : CutKind::kWav) << samplesBytes;
    }
}

// ---- Decoding what a clip shows ------------------------------------------------------------

struct InputCloser {
    void operator()(AVFormatContext* inContext) const { avformat_close_input(&inContext); }
};
struct CodecFree {
    void operator()(AVCodecContext* inContext) const { avcodec_free_context(&inContext); }
};
struct FrameFree {
    void operator()(AVFrame* inFrame) const { av_frame_free(&inFrame); }
};
struct PacketFree {
    void operator()(AVPacket* inPacket) const { av_packet_free(&inPacket); }
};

// Decodes the best stream of inType of a file in order, handing each frame with its start in ticks
// to inFrame until it answers false.
bool Decode(const QString& inPath, AVMediaType inType, const std::function<bool(const AVFrame&, std::int64_t)>& inFrame)
{
    AVFormatContext* raw = nullptr;
    if (avformat_open_input(&raw, QFile::encodeName(inPath).constData(), nullptr, nullptr) < 0) {
        return false;
    }
    std::unique_ptr<AVFormatContext, InputCloser> input(raw);
    const AVCodec* codec = nullptr;
    if (avformat_find_stream_info(raw, nullptr) < 0) {
        return false;
    }
    const int index = av_find_best_stream(raw, inType, -1, -1, &codec, 0);
    if (index < 0) {
        return false;
    }
    std::unique_ptr<AVCodecContext, CodecFree> decoder(avcodec_alloc_context3(codec));
    const AVStream& stream = *raw->streams[index];
    if (avcodec_parameters_to_context(decoder.get(), stream.codecpar) < 0 ||
        avcodec_open2(decoder.get(), codec, nullptr) < 0) {
        return false;
    }
    std::unique_ptr<AVFrame, FrameFree> frame(av_frame_alloc());
    std::unique_ptr<AVPacket, PacketFree> packet(av_packet_alloc());
    auto drain = [&] {
        while (avcodec_receive_frame(decoder.get(), frame.get()) >= 0) {
            const std::int64_t time =
                av_rescale_q(frame->best_effort_timestamp, stream.time_base, {1, static_cast<int>(kTicks)});
            if (!inFrame(*frame, time)) {
                return false;
            }
        }
        return true;
    };
    bool going = true;
    while (going && av_read_frame(raw, packet.get()) >= 0) {
        if (packet->stream_index == index) {
            avcodec_send_packet(decoder.get(), packet.get());
            going = drain();
        }
        av_packet_unref(packet.get());
    }
    if (going) {
        avcodec_send_packet(decoder.get(), nullptr);
        drain();
    }
    return true;
}

// A checksum of the picture shown at inTicks: the last frame that starts at or before it.
QByteArray FrameAt(const QString& inPath, std::int64_t inTicks)
{
    QByteArray shown;
    Decode(inPath, AVMEDIA_TYPE_VIDEO, [&](const AVFrame& inFrame, std::int64_t inStart) {
        if (inStart > inTicks) {
            return false;
        }
        QCryptographicHash hash(QCryptographicHash::Sha1);
        for (int plane = 0; plane < 3 && inFrame.data[plane]; ++plane) {
            const int rows = plane == 0 ? inFrame.height : (inFrame.height + 1) / 2;
            const int bytes = plane == 0 ? inFrame.width : (inFrame.width + 1) / 2;
            for (int row = 0; row < rows; ++row) {
                hash.addData(QByteArrayView(inFrame.data[plane] + row * inFrame.linesize[plane], bytes));
            }
        }
        shown = hash.result();
        return true;
    });
    return shown;
}

double SampleValue(const AVFrame& inFrame, int inIndex)
{
    const auto format = static_cast<AVSampleFormat>(inFrame.format);
    const bool planar = av_sample_fmt_is_planar(format);
    const int at = planar ? inIndex : inIndex * inFrame.ch_layout.nb_channels;
    switch (av_get_packed_sample_fmt(format)) {
    case AV_SAMPLE_FMT_FLT:
        return reinterpret_cast<const float*>(inFrame.extended_data[0])[at];
    case AV_SAMPLE_FMT_DBL:
        return reinterpret_cast<const double*>(inFrame.extended_data[0])[at];
    case AV_SAMPLE_FMT_S16:
        return reinterpret_cast<const std::int16_t*>(inFrame.extended_data[0])[at];
    case AV_SAMPLE_FMT_S32:
        return reinterpret_cast<const std::int32_t*>(inFrame.extended_data[0])[at];
    default:
        return std::nan("");
    }
}

// inCount samples of the first channel from the one at inTicks on.
std::vector<double> SamplesAt(const QString& inPath, std::int64_t inTicks, int inCount)
{
    std::vector<double> samples;
    Decode(inPath, AVMEDIA_TYPE_AUDIO, [&](const AVFrame& inFrame, std::int64_t inStart) {
        const std::int64_t sampleTicks = kTicks / inFrame.sample_rate;
        for (int i = 0; i < inFrame.nb_samples && static_cast<int>(samples.size()) < inCount; ++i) {
            if (inStart + i * sampleTicks >= inTicks) {
                samples.push_back(SampleValue(inFrame, i));
            }
        }
        return static_cast<int>(samples.size()) < inCount;
    });
    return samples;
}

// ---- The project on disk -------------------------------------------------------------------

// The sample project's clips with real media: movies at 29.97 and 25 frames per second, WAV
// audio, a clip no sequence uses, a proxy, a preview render and conformed audio in the cache.
class ProjectOnDisk {
public:
    ProjectOnDisk()
    {
        QDir(mRoot.path()).mkpath(QStringLiteral("footage"));
        QDir(mRoot.path()).mkpath(QStringLiteral("audio"));
        QDir(mRoot.path()).mkpath(QStringLiteral("Harbour Previews"));
        Movie(QStringLiteral("footage/Harbour at dawn.mov"), KOR::kFrameRate_NTSC2997, 360, 0.0);
        Movie(QStringLiteral("footage/Interview A.mov"), KOR::kFrameRate_NTSC2997, 300, 330.0);
        Movie(QStringLiteral("footage/Interview B.mov"), KOR::kFrameRate_PAL25, 90, 550.0);
        Movie(QStringLiteral("footage/B-roll.mov"), KOR::kFrameRate_PAL25, 40, 220.0);
        Movie(QStringLiteral("footage/Harbour proxy.mov"), KOR::kFrameRate_NTSC2997, 360, 0.0);
        Wav(QStringLiteral("audio/Gulls ambience.wav"), HostQt::WavFormat::kInt16, 8);
        Wav(QStringLiteral("audio/Narration take 3.wav"), HostQt::WavFormat::kInt24, 6);
        QFile preview(Path(QStringLiteral("Harbour Previews/Main Edit render 1.mpg")));
        preview.open(QIODevice::WriteOnly);
        preview.write(QByteArray(5000, 'p'));
    }

    QString Path(const QString& inRelative) const { return mRoot.filePath(inRelative); }
    QString ProjectFile() const { return Path(QStringLiteral("Harbour.json")); }

    QJsonObject Document() const
    {
        auto item = [](const char* inClip, const char* inTrack, int inStart, int inIn, int inOut) {
            return QJsonObject{{"clip", inClip}, {"track", inTrack}, {"start", inStart}, {"in", inIn}, {"out", inOut}};
        };
        auto clip = [&](const char* inName, const QString& inPath) {
            return QJsonObject{{"name", inName}, {"path", Path(inPath)}, {"online", true}};
        };
        QJsonObject harbour = clip("Harbour at dawn.mov", QStringLiteral("footage/Harbour at dawn.mov"));
        harbour.insert("proxy", Path(QStringLiteral("footage/Harbour proxy.mov")));
        QJsonObject gulls = clip("Gulls ambience.wav", QStringLiteral("audio/Gulls ambience.wav"));
        gulls.insert("audioOnly", true);
        QJsonObject narration = clip("Narration take 3.wav", QStringLiteral("audio/Narration take 3.wav"));
        narration.insert("audioOnly", true);
        return QJsonObject{
            {"name", "Harbour Documentary"},
            {"timecode", QJsonObject{{"displayFormat", 103},
                                     {"videoFrameRate", "30000/1001"},
                                     {"audioDisplayFormat", 200},
                                     {"audioRate", 48000}}},
            {"sequences",
             QJsonArray{QJsonObject{{"name", "Main Edit"},
                                    {"items", QJsonArray{item("Harbour at dawn.mov", "V1", 0, 30, 120),
                                                         item("Interview A.mov", "V1", 90, 45, 165),
                                                         item("Interview A.mov", "A1", 90, 45, 165),
                                                         item("Gulls ambience.wav", "A2", 0, 0, 150),
                                                         item("Narration take 3.wav", "A3", 60, 10, 100)}}},
                        QJsonObject{{"name", "Trailer"},
                                    {"frameRate", "25"},
                                    {"items", QJsonArray{item("Harbour at dawn.mov", "V1", 0, 200, 260),
                                                         item("Interview B.mov", "V2", 30, 0, 45)}}}}},
            {"clips", QJsonArray{harbour, clip("Interview A.mov", QStringLiteral("footage/Interview A.mov")),
                                 clip("Interview B.mov", QStringLiteral("footage/Interview B.mov")), gulls, narration,
                                 clip("B-roll.mov", QStringLiteral("footage/B-roll.mov"))}},
            {"childClips",
             QJsonArray{QJsonObject{
                 {"name", "Interview A, second answer"}, {"clip", "Interview A.mov"}, {"in", 180}, {"out", 240}}}}};
    }

    BE::ProjectRef Load(const QJsonObject& inDocument) const
    {
        QFile file(ProjectFile());
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        file.write(QJsonDocument(inDocument).toJson());
        file.close();
        return HostQt::LoadProject(QJsonDocument(inDocument).toJson(), ProjectFile());
    }

private:
    void Movie(const QString& inRelative, KOR::FrameRate inRate, int inFrames, double inToneHz) const
    {
        HostQt::SampleMovie movie;
        movie.frameRate = inRate;
        movie.frames = inFrames;
        movie.gopSize = 12;
        movie.toneHz = inToneHz;
        movie.audioSampleRate = inToneHz > 0 ? 48000 : 0;
        ASSERT_TRUE(HostQt::WriteSampleMovie(Path(inRelative), movie)) << inRelative.toStdString();
    }

    // Samples that differ everywhere: two tones that never line up.
    void Wav(const QString& inRelative, HostQt::WavFormat inFormat, int inSeconds) const
    {
        std::vector<double> samples;
        for (int i = 0; i < 48000 * inSeconds; ++i) {
            samples.push_back(0.4 * std::sin(i * 0.0123) + 0.3 * std::sin(i * 0.000577));
            samples.push_back(0.5 * std::sin(i * 0.031));
        }
        TestSupport::WriteWav(Path(inRelative), {inFormat, 2, 48000}, samples);
    }

    QTemporaryDir mRoot;
};

// Waits for the operation's end and keeps what it said on the way.
class Watched : public KOR::Listener {
public:
    explicit Watched(PM::ProjectManagerOperationRef inOperation) : mOperation(std::move(inOperation))
    {
        KOR::StationUtils::AddListener(mOperation->GetMessageStationName(), this);
    }
    ~Watched() override { KOR::StationUtils::RemoveListener(mOperation->GetMessageStationName(), this); }

    bool ToCompletion()
    {
        return mOperation->Start() && QTest::qWaitFor([&] { return mCompleted; }, kWaitLimitMs);
    }

    void ListenerMessageHandler(const std::wstring&, const KOR::Message& inMessage) override
    {
        if (const auto* progress = dynamic_cast<const KOR::UpdateOperationProgressMessage*>(&inMessage)) {
            fractions.push_back(progress->GetFraction());
        } else if (const auto* description = dynamic_cast<const KOR::UpdateOperationDescriptionMessage*>(&inMessage)) {
            descriptions.push_back(description->GetDescription());
            if (onDescription) {
                onDescription(description->GetDescription());
            }
        } else if (dynamic_cast<const KOR::OperationCompleteMessage*>(&inMessage)) {
            mCompleted = true;
        }
    }

    std::vector<float> fractions;
    std::vector<std::wstring> descriptions;
    std::function<void(const std::wstring&)> onDescription;

private:
    PM::ProjectManagerOperationRef mOperation;
    bool mCompleted = false;
};

std::uint64_t BytesUnder(const QString& inFolder)
{
    std::uint64_t bytes = 0;
    QDirIterator files(inFolder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        bytes += static_cast<std::uint64_t>(QFileInfo(files.next()).size());
    }
    return bytes;
}

QStringList EntriesOf(const QString& inFolder)
{
    return QDir(inFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
}

BE::ProjectRef Reopen(const QString& inPath)
{
    QFile file(inPath);
    return file.open(QIODevice::ReadOnly) ? HostQt::LoadProject(file.readAll(), inPath) : BE::ProjectRef();
}

// Compressed audio decoded after a cut differs from the uncut decoding by the decoder's noise
// substitution, whose random state depends on all it decoded before: about 1e-6 here. A sample
// off by one differs by up to 0.02 with these tones, so the tolerance still tells them apart.
constexpr double kCompressedTolerance = 1e-4;

void ExpectSameSamples(const std::vector<double>& inActual, const std::vector<double>& inExpected, double inTolerance)
{
    ASSERT_EQ(inExpected.size(), static_cast<std::size_t>(kComparedSamples));
    ASSERT_EQ(inActual.size(), inExpected.size());
    for (std::size_t i = 0; i < inExpected.size(); ++i) {
        if (inTolerance == 0.0) {
            ASSERT_EQ(inActual[i], inExpected[i]) << "sample " << i;
        } else {
            ASSERT_NEAR(inActual[i], inExpected[i], inTolerance) << "sample " << i;
        }
    }
}

struct Shown {
    QString path;
    std::int64_t in = 0;
    std::int64_t out = 0;
    std::int64_t frame = 0;
    bool video = true;
};

// What each clip and child clip shows, in the project's order.
std::vector<Shown> WhatClipsShow(const BE::ProjectRef& inProject)
{
    std::vector<Shown> shown;
    for (const BE::SequenceRef& sequence : inProject->GetSequences()) {
        const std::int64_t frame = KOR::Time::TicksPerFrame(sequence->GetFrameRate());
        for (const BE::ClipRef& clip : sequence->GetClips()) {
            shown.push_back({QString::fromStdWString(clip->GetMasterClip()->GetMedia()->GetFilePath()),
                             clip->GetInPoint().Ticks(), clip->GetOutPoint().Ticks(), frame,
                             clip->GetTrackKind() == BE::TrackKind::kVideo});
        }
    }
    for (const BE::ChildClipRef& child : inProject->GetChildClips()) {
        shown.push_back({QString::fromStdWString(child->GetMasterClip()->GetMedia()->GetFilePath()),
                         child->GetInPoint().Ticks(), child->GetOutPoint().Ticks(), kNtscFrame, true});
    }
    return shown;
}

class ProjectManagerOperation : public testing::Test {
protected:
    static void SetUpTestSuite() { sProject = new ProjectOnDisk; }
    static void TearDownTestSuite()
    {
        delete sProject;
        sProject = nullptr;
    }

    PM::Options OptionsInto(const QString& inDestination) const
    {
        PM::Options options;
        options.destinationFolder = inDestination.toStdWString();
        return options;
    }

    static ProjectOnDisk* sProject;
    TestSupport::TestHost mHost;
    QTemporaryDir mDestination;
};

ProjectOnDisk* ProjectManagerOperation::sProject = nullptr;

struct EndToEndCase {
    const char* what;
    bool trim;
    int handles;
    bool includeHandles;
};

// Collected and trimmed: the written project reopens, every clip's media is there and shows the
// same frames at in and out - 1 and the same samples at in and out; the size computed beforehand
// is the size written.
TEST_F(ProjectManagerOperation, WrittenProjectsShowTheSameFramesAndSamples)
{
    const std::vector<EndToEndCase> cases = {
        {"trimmed with a second of handles", true, 30, true},
        {"trimmed with short handles", true, 6, true},
        {"trimmed without handles", true, 30, false},
        {"collected", false, 30, true},
    };
    // Audio from a movie's first sample, and audio in at a key frame: without handles its media's
    // cut starts there.
    QJsonObject document = sProject->Document();
    QJsonArray sequences = document.value("sequences").toArray();
    for (const auto& [sequence, item] : {std::pair{1, QJsonObject{{"clip", "Interview B.mov"}, {"track", "A1"},
                                                                   {"start", 30}, {"in", 0}, {"out", 45}}},
                                         std::pair{0, QJsonObject{{"clip", "Interview A.mov"}, {"track", "A4"},
                                                                   {"start", 0}, {"in", 36}, {"out", 60}}}}) {
        QJsonObject edited = sequences[sequence].toObject();
        QJsonArray items = edited.value("items").toArray();
        items.append(item);
        edited.insert("items", items);
        sequences[sequence] = edited;
    }
    document.insert("sequences", sequences);
    const BE::ProjectRef project = sProject->Load(document);
    // Conformed audio of one movie in the host's media cache.
    const QString conformed =
        HostQt::ConformedAudioPath(sProject->Path(QStringLiteral("footage/Interview A.mov")), 0, 48000);
    ASSERT_FALSE(conformed.isEmpty());
    std::vector<double> ramp;
    for (int i = 0; i < 48000 * 10; ++i) {
        ramp.insert(ramp.end(), {i / 480000.0, -i / 480000.0});
    }
    TestSupport::WriteWav(conformed, {HostQt::WavFormat::kFloat32, 2, 48000}, ramp);
    const std::vector<Shown> before = WhatClipsShow(project);

    for (const EndToEndCase& c : cases) {
        SCOPED_TRACE(c.what);
        const QTemporaryDir destination;
        PM::Options options = OptionsInto(destination.path());
        options.createTrimmedProject = c.trim;
        options.handleFrames = c.handles;
        options.includeHandles = c.includeHandles;

        const PM::ProjectManagerOperationRef calculate = PM::CreateProjectManagerOperation(project, options, true);
        Watched calculated(calculate);
        ASSERT_TRUE(calculated.ToCompletion());
        ASSERT_EQ(calculate->GetResult(), PM::kResult_OK);
        EXPECT_TRUE(EntriesOf(destination.path()).isEmpty()) << "calculating writes nothing";
        EXPECT_GE(calculate->GetOriginalSize(), BytesUnder(sProject->Path(QStringLiteral("footage"))));

        const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
        Watched run(operation);
        ASSERT_TRUE(run.ToCompletion());
        ASSERT_EQ(operation->GetResult(), PM::kResult_OK)
            << QString::fromStdWString(operation->GetFailureText()).toStdString();
        const QString written = QString::fromStdWString(operation->GetResultProjectPath());
        const QString folder = QFileInfo(written).absolutePath();
        EXPECT_EQ(folder, QDir(destination.path()).filePath(QStringLiteral("Harbour Documentary")));
        const double writtenBytes = static_cast<double>(BytesUnder(folder));
        EXPECT_NEAR(static_cast<double>(calculate->GetResultingSize()), writtenBytes, writtenBytes * 0.01);
        EXPECT_EQ(operation->GetResultingSize(), calculate->GetResultingSize());
        ASSERT_FALSE(run.fractions.empty());
        EXPECT_TRUE(std::is_sorted(run.fractions.begin(), run.fractions.end()));
        EXPECT_FLOAT_EQ(run.fractions.back(), 1.0f);
        const std::wstring firstLabel = c.trim ? L"Trimming Harbour at dawn.mov" : L"Copying Harbour at dawn.mov";
        EXPECT_NE(std::find(run.descriptions.begin(), run.descriptions.end(), firstLabel), run.descriptions.end());

        const BE::ProjectRef reopened = Reopen(written);
        ASSERT_TRUE(reopened);
        const std::vector<Shown> after = WhatClipsShow(reopened);
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            const Shown& old = before[i];
            const Shown& now = after[i];
            SCOPED_TRACE(old.path.toStdString());
            ASSERT_TRUE(now.path.startsWith(folder + QStringLiteral("/Media/")));
            ASSERT_TRUE(QFileInfo::exists(now.path));
            EXPECT_EQ(now.out - now.in, old.out - old.in);
            EXPECT_EQ(now.in % now.frame, 0) << "in points stay whole frames";
            if (old.video) {
                const QByteArray first = FrameAt(old.path, old.in);
                const QByteArray last = FrameAt(old.path, old.out - old.frame);
                ASSERT_FALSE(first.isEmpty());
                EXPECT_NE(first, last);
                EXPECT_EQ(FrameAt(now.path, now.in), first);
                EXPECT_EQ(FrameAt(now.path, now.out - now.frame), last);
            } else {
                const std::int64_t tail = kComparedSamples * kSample48k;
                const double tolerance = old.path.endsWith(QStringLiteral(".wav")) ? 0.0 : kCompressedTolerance;
                ExpectSameSamples(SamplesAt(now.path, now.in, kComparedSamples),
                                  SamplesAt(old.path, old.in, kComparedSamples), tolerance);
                ExpectSameSamples(SamplesAt(now.path, now.out - tail, kComparedSamples),
                                  SamplesAt(old.path, old.out - tail, kComparedSamples), tolerance);
            }
        }
        EXPECT_FALSE(QFileInfo::exists(QDir(folder).filePath(QStringLiteral("Media/B-roll.mov")))) << "unused";
        EXPECT_EQ(QFileInfo::exists(QDir(folder).filePath(QStringLiteral("Proxies/Harbour proxy.mov"))), !c.trim);
        EXPECT_TRUE(
            QFileInfo::exists(QDir(folder).filePath(QStringLiteral("Harbour Previews/Main Edit render 1.mpg"))));
        // Named as the host's cache names the conformed audio of the media's copy.
        const QString conformedName = QFileInfo(HostQt::ConformedAudioPath(after[1].path, 0, 48000)).fileName();
        const QString conformedCopy = QDir(folder).filePath(QStringLiteral("Conformed Audio/") + conformedName);
        ASSERT_TRUE(QFileInfo::exists(conformedCopy));
        EXPECT_EQ(EntriesOf(QDir(folder).filePath(QStringLiteral("Conformed Audio"))).size(), 1);
        // The conformed audio is cut with its media: the sample at a clip's in point stays with it.
        const Shown& interview = before[1];
        EXPECT_EQ(SamplesAt(conformedCopy, after[1].in, 8), SamplesAt(conformed, interview.in, 8));
        if (c.trim) {
            EXPECT_LT(QFileInfo(after[0].path).size(), QFileInfo(before[0].path).size());
        } else {
            EXPECT_EQ(QFileInfo(after[0].path).size(), QFileInfo(before[0].path).size());
        }
    }
    QFile::remove(conformed);
}

TEST_F(ProjectManagerOperation, UnusedClipsAreLeftOutOnlyWhenAsked)
{
    const BE::ProjectRef project = sProject->Load(sProject->Document());
    for (const bool exclude : {true, false}) {
        SCOPED_TRACE(exclude ? "excluded" : "kept");
        const QTemporaryDir destination;
        PM::Options options = OptionsInto(destination.path());
        options.excludeUnusedClips = exclude;
        const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
        Watched run(operation);
        ASSERT_TRUE(run.ToCompletion());
        ASSERT_EQ(operation->GetResult(), PM::kResult_OK);
        const BE::ProjectRef reopened = Reopen(QString::fromStdWString(operation->GetResultProjectPath()));
        const auto masters = reopened->GetMasterClips();
        const bool listed = std::any_of(masters.begin(), masters.end(), [](const BE::MasterClipRef& inMaster) {
            return inMaster->GetName() == L"B-roll.mov";
        });
        EXPECT_EQ(listed, !exclude);
        const QString copy = QFileInfo(QString::fromStdWString(operation->GetResultProjectPath())).absolutePath() +
                             QStringLiteral("/Media/B-roll.mov");
        EXPECT_EQ(QFileInfo::exists(copy), !exclude) << "an unused clip is copied whole when kept";
        EXPECT_EQ(masters.size(), exclude ? 5u : 6u);
    }
}

// Clips are found by name: of two entries named alike, the first is the one copied, and the
// second keeps pointing where it did rather than at the first one's copy.
TEST_F(ProjectManagerOperation, ASecondClipOfTheSameNameKeepsItsOwnPath)
{
    QJsonObject document = sProject->Document();
    QJsonArray clips = document.value("clips").toArray();
    const QString bRoll = clips[5].toObject().value("path").toString();
    clips.append(QJsonObject{{"name", "Interview B.mov"}, {"path", bRoll}});
    document.insert("clips", clips);
    const BE::ProjectRef project = sProject->Load(document);
    const QTemporaryDir destination;
    const PM::ProjectManagerOperationRef operation =
        PM::CreateProjectManagerOperation(project, OptionsInto(destination.path()), false);
    Watched run(operation);
    ASSERT_TRUE(run.ToCompletion());
    ASSERT_EQ(operation->GetResult(), PM::kResult_OK);
    const QString written = QString::fromStdWString(operation->GetResultProjectPath());
    std::vector<QString> paths;
    for (const BE::MasterClipRef& master : Reopen(written)->GetMasterClips()) {
        if (master->GetName() == L"Interview B.mov") {
            paths.push_back(QString::fromStdWString(master->GetMedia()->GetFilePath()));
        }
    }
    EXPECT_EQ(paths, (std::vector<QString>{QFileInfo(written).absolutePath() + "/Media/Interview B.mov", bRoll}));
}

// Only an edit list keeps a cut's first key frame and audio pre-roll where they were: a movie in
// another container is copied whole while trimming, and its clips keep their in and out.
TEST_F(ProjectManagerOperation, MoviesInOtherContainersAreCopiedWholeWhenTrimming)
{
    const QTemporaryDir footage;
    const QString avi = footage.filePath(QStringLiteral("Interview B.avi"));
    HostQt::SampleMovie movie;
    movie.frameRate = KOR::kFrameRate_PAL25;
    movie.frames = 90;
    movie.gopSize = 12;
    movie.toneHz = 550.0;
    movie.audioSampleRate = 48000;
    ASSERT_TRUE(HostQt::WriteSampleMovie(avi, movie));
    QJsonObject document = sProject->Document();
    QJsonArray clips = document.value("clips").toArray();
    QJsonObject interviewB = clips[2].toObject();
    interviewB.insert("path", avi);
    clips[2] = interviewB;
    document.insert("clips", clips);
    // Used from frame 30 on, past a key frame: a cut would move its in point.
    QJsonArray sequences = document.value("sequences").toArray();
    QJsonObject trailer = sequences[1].toObject();
    QJsonArray items = trailer.value("items").toArray();
    QJsonObject used = items[1].toObject();
    used.insert("in", 30);
    used.insert("out", 60);
    items[1] = used;
    trailer.insert("items", items);
    sequences[1] = trailer;
    document.insert("sequences", sequences);
    const BE::ProjectRef project = sProject->Load(document);
    PM::Options options = OptionsInto(mDestination.path());
    options.includeHandles = false;
    const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
    Watched run(operation);
    ASSERT_TRUE(run.ToCompletion());
    ASSERT_EQ(operation->GetResult(), PM::kResult_OK);
    const std::vector<Shown> before = WhatClipsShow(project);
    const std::vector<Shown> after = WhatClipsShow(Reopen(QString::fromStdWString(operation->GetResultProjectPath())));
    ASSERT_EQ(after.size(), before.size());
    int copiedWhole = 0;
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (after[i].path.endsWith(QStringLiteral(".avi"))) {
            EXPECT_EQ(QFileInfo(after[i].path).size(), QFileInfo(avi).size());
            EXPECT_EQ(after[i].in, before[i].in);
            ++copiedWhole;
        }
    }
    EXPECT_EQ(copiedWhole, 1);
    EXPECT_NE(std::find(run.descriptions.begin(), run.descriptions.end(), L"Copying Interview B.mov"),
              run.descriptions.end());
}

struct NamingCase {
    const char* what;
    bool rename;
    std::vector<QString> expected;
};

// Two clips whose copies would have the same name: the second is numbered, and names follow the
// clips or the files as asked.
TEST_F(ProjectManagerOperation, CopiesAreNamedAfterClipsWithoutCollisions)
{
    QJsonObject document = sProject->Document();
    QJsonArray clips = document.value("clips").toArray();
    QJsonObject renamed = clips[0].toObject();
    renamed.insert("name", "Interview A"); // becomes "Interview A.mov" beside the real one
    clips[0] = renamed;
    clips.append(QJsonObject{{"name", "Other B-roll"}, {"path", clips[5].toObject().value("path")}});
    document.insert("clips", clips);
    const BE::ProjectRef project = sProject->Load(document);
    const std::vector<NamingCase> cases = {
        {"named after clips", true,
         {"Interview A.mov", "Interview A (2).mov", "Interview B.mov", "Gulls ambience.wav", "Narration take 3.wav",
          "B-roll.mov", "Other B-roll.mov"}},
        {"named after files", false,
         {"Harbour at dawn.mov", "Interview A.mov", "Interview B.mov", "Gulls ambience.wav", "Narration take 3.wav",
          "B-roll.mov", "B-roll (2).mov"}},
    };
    for (const NamingCase& c : cases) {
        SCOPED_TRACE(c.what);
        const QTemporaryDir destination;
        PM::Options options = OptionsInto(destination.path());
        options.createTrimmedProject = false;
        options.excludeUnusedClips = false;
        options.renameMediaToClipNames = c.rename;
        const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
        Watched run(operation);
        ASSERT_TRUE(run.ToCompletion());
        ASSERT_EQ(operation->GetResult(), PM::kResult_OK);
        const BE::ProjectRef reopened = Reopen(QString::fromStdWString(operation->GetResultProjectPath()));
        std::vector<QString> names;
        for (const BE::MasterClipRef& master : reopened->GetMasterClips()) {
            const QFileInfo file(QString::fromStdWString(master->GetMedia()->GetFilePath()));
            EXPECT_TRUE(file.isFile()) << file.filePath().toStdString();
            names.push_back(file.fileName());
        }
        EXPECT_EQ(names, c.expected);
    }
}

// A numbered still sequence is its whole run of frames, under their own names, trimmed or not; a
// frame name already taken by another copy moves the run into a folder of its own.
TEST_F(ProjectManagerOperation, NumberedStillsAreCopiedAsAWholeRun)
{
    const QTemporaryDir stills;
    std::uint64_t frameBytes = 0;
    for (int i = 0; i < 3; ++i) {
        QImage image(64, 36, QImage::Format_RGB32);
        image.fill(QColor(40 * i, 90, 200 - 50 * i));
        const QString frame = stills.filePath(QStringLiteral("title_%1.png").arg(9 + i, 3, 10, QLatin1Char('0')));
        ASSERT_TRUE(image.save(frame));
        frameBytes += static_cast<std::uint64_t>(QFileInfo(frame).size());
    }
    // Another clip whose file has the name of the second frame.
    ASSERT_TRUE(QDir(stills.path()).mkpath("other"));
    ASSERT_TRUE(QFile::copy(stills.filePath("title_011.png"), stills.filePath("other/title_010.png")));
    for (const bool trim : {true, false}) {
        for (const bool clash : {false, true}) {
            SCOPED_TRACE(std::string(trim ? "trimmed" : "collected") + (clash ? ", a frame name taken" : ""));
            QJsonObject document = sProject->Document();
            QJsonArray clips = document.value("clips").toArray();
            if (clash) {
                clips.append(QJsonObject{{"name", "Other title"}, {"path", stills.filePath("other/title_010.png")}});
            }
            document.insert("clips", clips);
            const QJsonObject titles{{"name", "Titles"}, {"path", stills.filePath("title_009.png")}, {"stills", 3}};
            document.insert("media", QJsonArray{titles});
            const BE::ProjectRef project = sProject->Load(document);
            const QTemporaryDir destination;
            PM::Options options = OptionsInto(destination.path());
            options.createTrimmedProject = trim;
            options.excludeUnusedClips = false;
            options.renameMediaToClipNames = false;
            const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
            Watched run(operation);
            ASSERT_TRUE(run.ToCompletion());
            ASSERT_EQ(operation->GetResult(), PM::kResult_OK)
                << QString::fromStdWString(operation->GetFailureText()).toStdString();
            const QString written = QString::fromStdWString(operation->GetResultProjectPath());
            const QString media = QFileInfo(written).absolutePath() +
                                  (clash ? QStringLiteral("/Media/Titles/") : QStringLiteral("/Media/"));
            const BE::ProjectRef reopened = Reopen(written);
            const BE::MediaRef copy = reopened->GetMasterClips().back()->GetMedia();
            EXPECT_EQ(QString::fromStdWString(copy->GetFilePath()), media + "title_009.png");
            EXPECT_EQ(copy->GetStillCount(), 3);
            std::uint64_t copied = 0;
            for (const char* frame : {"title_009.png", "title_010.png", "title_011.png"}) {
                EXPECT_EQ(QImage(media + frame), QImage(stills.filePath(frame))) << frame;
                copied += static_cast<std::uint64_t>(QFileInfo(media + frame).size());
            }
            EXPECT_EQ(copied, frameBytes);
            EXPECT_GE(operation->GetOriginalSize(), frameBytes + BytesUnder(sProject->Path(QStringLiteral("footage"))));
            EXPECT_EQ(operation->GetResultingSize(), BytesUnder(QFileInfo(written).absolutePath()));
        }
    }
}

TEST_F(ProjectManagerOperation, OfflineResultsCopyNothingButPointWhereTheCopiesWouldBe)
{
    const BE::ProjectRef project = sProject->Load(sProject->Document());
    for (const bool trim : {true, false}) {
        SCOPED_TRACE(trim ? "trimmed" : "collected");
        const QTemporaryDir destination;
        PM::Options options = OptionsInto(destination.path());
        options.keepOnline = false;
        options.createTrimmedProject = trim;
        const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
        Watched run(operation);
        ASSERT_TRUE(run.ToCompletion());
        ASSERT_EQ(operation->GetResult(), PM::kResult_OK);
        const QString written = QString::fromStdWString(operation->GetResultProjectPath());
        const QString folder = QFileInfo(written).absolutePath();
        EXPECT_EQ(EntriesOf(folder), QStringList{QFileInfo(written).fileName()});
        EXPECT_EQ(operation->GetResultingSize(), static_cast<std::uint64_t>(QFileInfo(written).size()));
        const BE::ProjectRef reopened = Reopen(written);
        const std::vector<Shown> after = WhatClipsShow(reopened);
        const std::vector<Shown> before = WhatClipsShow(project);
        ASSERT_EQ(after.size(), before.size());
        EXPECT_EQ(reopened->GetMasterClips()[0]->GetMedia()->GetState(), BE::kMediaState_Offline);
        int moved = 0;
        for (std::size_t i = 0; i < after.size(); ++i) {
            EXPECT_TRUE(after[i].path.startsWith(folder + QStringLiteral("/Media/")));
            EXPECT_LE(after[i].in, before[i].in);
            moved += after[i].in < before[i].in ? 1 : 0;
        }
        EXPECT_EQ(moved > 0, trim) << "trimmed in points move with the cut";
    }
}

// What a failing run is given: a clip pointed at another file, the mode, another destination.
struct FailureCase {
    const char* what;
    int clip = -1; // the clip pointed at "path", or none
    QString path;
    bool trim = true;
    std::optional<std::wstring> destination;
    bool nothingUsed = false;
    long expected = 0;
    QString text; // the failure text, when it is known
};

// A run that fails leaves the destination as it found it and the source project untouched.
TEST_F(ProjectManagerOperation, FailuresNameWhatFailedAndLeaveNothingBehind)
{
    const QString missing = QDir(mDestination.path()).filePath(QStringLiteral("gone/Interview B.mov"));
    // A folder where a file is expected: it exists, and reading it fails.
    const QTemporaryDir sources;
    const QString unreadable = QDir(sources.path()).filePath(QStringLiteral("Narration take 3.wav"));
    ASSERT_TRUE(QDir().mkpath(unreadable));
    const std::vector<FailureCase> cases = {
        {"a used source is missing, trimming", 2, missing, true, {}, false, PM::kError_SourceMissing, missing},
        {"a used source is missing, collecting", 2, missing, false, {}, false, PM::kError_SourceMissing, missing},
        {"a used source cannot be read, found while writing", 4, unreadable, false, {}, false, PM::kError_ReadFailed,
         unreadable},
        {"a used source cannot be read, trimming", 4, unreadable, true, {}, false, PM::kError_ReadFailed, unreadable},
        {"a file system that refuses new folders", -1, {}, true, L"/sys", false, PM::kError_AccessDenied, "/sys"},
        {"an empty destination", -1, {}, true, L"", false, PM::kError_AccessDenied, {}},
        {"a relative destination", -1, {}, true, L"Exports/Harbour", false, PM::kError_AccessDenied,
         "Exports/Harbour"},
        {"no clip is used", -1, {}, true, {}, true, PM::kError_NothingToKeep, {}},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.what);
        QJsonObject document = sProject->Document();
        if (c.clip >= 0) {
            QJsonArray clips = document.value("clips").toArray();
            QJsonObject clip = clips[c.clip].toObject();
            clip.insert("path", c.path);
            clips[c.clip] = clip;
            document.insert("clips", clips);
        }
        if (c.nothingUsed) {
            document.remove("sequences");
            document.remove("childClips");
        }
        PM::Options options = OptionsInto(mDestination.path());
        options.createTrimmedProject = c.trim;
        if (c.destination) {
            options.destinationFolder = *c.destination;
        }
        const QString& expectedText = c.text;
        const BE::ProjectRef project = sProject->Load(document);
        const QByteArray projectBefore = QJsonDocument(document).toJson();
        const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
        Watched run(operation);
        ASSERT_TRUE(run.ToCompletion());
        EXPECT_EQ(operation->GetResult(), c.expected);
        if (!expectedText.isEmpty()) {
            EXPECT_EQ(QString::fromStdWString(operation->GetFailureText()), expectedText);
        }
        EXPECT_TRUE(EntriesOf(mDestination.path()).isEmpty()) << EntriesOf(mDestination.path()).join(',').toStdString();
        EXPECT_TRUE(operation->GetResultProjectPath().empty());
        QFile source(sProject->ProjectFile());
        source.open(QIODevice::ReadOnly);
        EXPECT_EQ(source.readAll(), projectBefore);
        EXPECT_FALSE(project->HasUnsavedChanges());
    }
}

// The sample project as it is, except that it cannot be saved anywhere.
class UnsavableProject : public KOR::RefCounted<BE::IProject> {
public:
    explicit UnsavableProject(BE::ProjectRef inProject) : mProject(std::move(inProject)) {}
    std::wstring GetName() const override { return mProject->GetName(); }
    std::wstring GetFilePath() const override { return mProject->GetFilePath(); }
    KOR::InterfaceRef<BE::IProjectSettings> GetProjectSettings() const override
    {
        return mProject->GetProjectSettings();
    }
    std::vector<BE::AudioClipRef> GetAudioClips() const override { return mProject->GetAudioClips(); }
    std::vector<BE::MasterClipRef> GetMasterClips() const override { return mProject->GetMasterClips(); }
    std::vector<BE::ChildClipRef> GetChildClips() const override { return mProject->GetChildClips(); }
    std::vector<BE::SequenceRef> GetSequences() const override { return mProject->GetSequences(); }
    long SaveToFile(const std::wstring&, bool) override { return BE::kSaveError_Failed; }

private:
    BE::ProjectRef mProject;
};

// Without the project as it would be saved there is nothing to write: the run fails before
// writing anything rather than write an empty project.
TEST_F(ProjectManagerOperation, AProjectThatCannotBeSavedFailsWithItsPath)
{
    const BE::ProjectRef project(new UnsavableProject(sProject->Load(sProject->Document())));
    for (const bool calculateOnly : {true, false}) {
        const PM::ProjectManagerOperationRef operation =
            PM::CreateProjectManagerOperation(project, OptionsInto(mDestination.path()), calculateOnly);
        Watched run(operation);
        ASSERT_TRUE(run.ToCompletion());
        EXPECT_EQ(operation->GetResult(), PM::kError_ReadFailed);
        EXPECT_EQ(QString::fromStdWString(operation->GetFailureText()), sProject->ProjectFile());
        EXPECT_TRUE(EntriesOf(mDestination.path()).isEmpty());
    }
}

// A folder only its owner may read and enter: not writeable, except for root.
TEST_F(ProjectManagerOperation, AReadOnlyDestinationIsAccessDenied)
{
    if (geteuid() == 0) {
        GTEST_SKIP() << "root writes into read-only folders; the /sys row of the failure table covers this";
    }
    const QString locked = QDir(mDestination.path()).filePath(QStringLiteral("locked"));
    ASSERT_TRUE(QDir().mkpath(locked));
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner);
    const BE::ProjectRef project = sProject->Load(sProject->Document());
    const PM::ProjectManagerOperationRef operation =
        PM::CreateProjectManagerOperation(project, OptionsInto(locked), false);
    Watched run(operation);
    ASSERT_TRUE(run.ToCompletion());
    EXPECT_EQ(operation->GetResult(), PM::kError_AccessDenied);
    EXPECT_EQ(QString::fromStdWString(operation->GetFailureText()), locked);
    QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(EntriesOf(locked).isEmpty());
}

// The last clip's media is a pipe: its copy waits for the test, which cancels once the media
// before it have been written; the folder with what was written goes.
TEST_F(ProjectManagerOperation, CancellingMidwayRemovesWhatWasWritten)
{
    const QTemporaryDir pipes;
    const QString pipe = pipes.filePath(QStringLiteral("Live feed.mov"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QJsonObject document = sProject->Document();
    QJsonArray clips = document.value("clips").toArray();
    clips.append(QJsonObject{{"name", "Live feed.mov"}, {"path", pipe}});
    document.insert("clips", clips);
    const BE::ProjectRef project = sProject->Load(document);
    PM::Options options = OptionsInto(mDestination.path());
    options.createTrimmedProject = false;
    options.excludeUnusedClips = false;
    options.includePreviews = false;
    const PM::ProjectManagerOperationRef operation = PM::CreateProjectManagerOperation(project, options, false);
    Watched run(operation);
    bool sawWrittenMedia = false;
    run.onDescription = [&](const std::wstring& inDescription) {
        if (inDescription != L"Copying Live feed.mov") {
            return;
        }
        sawWrittenMedia = QFileInfo::exists(
            QDir(mDestination.path()).filePath(QStringLiteral("Harbour Documentary/Media/Interview B.mov")));
        std::ofstream feed(QFile::encodeName(pipe).constData(), std::ios::binary); // meets the reader
        const std::string block(256 * 1024, 'x');
        feed.write(block.data(), static_cast<std::streamsize>(block.size()));
        feed.flush();
        operation->RequestCancel();
        feed.write(block.data(), static_cast<std::streamsize>(block.size()));
    };
    ASSERT_TRUE(run.ToCompletion());
    EXPECT_TRUE(sawWrittenMedia) << "the media before the pipe were written when it was cancelled";
    EXPECT_EQ(operation->GetResult(), PM::kResult_Cancelled);
    EXPECT_TRUE(EntriesOf(mDestination.path()).isEmpty()) << EntriesOf(mDestination.path()).join(',').toStdString();
}

} // namespace
