// The reference host's project file: peaks measured from WAV files, audio clips read from it.

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "BE/Project.h"
#include "HostQt/ProjectFile.h"
#include "HostQt/ReferenceHost.h"
#include "TestHost.h"

namespace {

using HostQt::WavFormat;

struct PeakCase {
    const char* name;
    WavFormat format;
    int channels;
    std::vector<double> samples;
    double peak;
    bool oddChunk = false;
};

class WavPeak : public testing::TestWithParam<PeakCase> {};

TEST_P(WavPeak, IsTheLargestMagnitudeOverAllChannels)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("clip.wav"));
    const QByteArray oddChunk("LIST\x03\0\0\0abc\0", 12);
    TestSupport::WriteWav(path, {GetParam().format, GetParam().channels}, GetParam().samples,
                          GetParam().oddChunk ? oddChunk : QByteArray());
    const std::optional<double> peak = HostQt::MeasureWavPeak(path);
    ASSERT_TRUE(peak.has_value());
    EXPECT_DOUBLE_EQ(*peak, GetParam().peak);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, WavPeak,
    testing::Values(PeakCase{"UInt8", WavFormat::kUInt8, 1, {0.25, -0.5, 0.125}, 0.5},
                    PeakCase{"Int16Stereo", WavFormat::kInt16, 2, {0.1, -0.75, 0.5, 0.25}, 0.75},
                    PeakCase{"Int16NegativeFullScale", WavFormat::kInt16, 1, {0.5, -1.0}, 1.0},
                    PeakCase{"Int24", WavFormat::kInt24, 1, {-0.125, 0.375, 0.0}, 0.375},
                    PeakCase{"Int32", WavFormat::kInt32, 2, {0.5, -0.25}, 0.5},
                    PeakCase{"Float32AboveFullScale", WavFormat::kFloat32, 1, {0.5, -1.5}, 1.5},
                    PeakCase{"Float64", WavFormat::kFloat64, 1, {0.0625, -0.03125}, 0.0625},
                    PeakCase{"Extensible24", WavFormat::kExtensibleInt24, 2, {0.25, -0.625}, 0.625},
                    PeakCase{"OddChunkBeforeTheSamples", WavFormat::kInt16, 1, {0.5, 0.25}, 0.5, true},
                    PeakCase{"Silence", WavFormat::kInt16, 1, {0.0, 0.0}, 0.0}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(WavPeak, NothingForAMissingOrForeignFile)
{
    const QTemporaryDir dir;
    EXPECT_FALSE(HostQt::MeasureWavPeak(dir.filePath(QStringLiteral("missing.wav"))));
    QFile text(dir.filePath(QStringLiteral("notes.wav")));
    text.open(QIODevice::WriteOnly);
    text.write("RIFF\x10\x00\x00\x00TEXTnot audio at all");
    text.close();
    EXPECT_FALSE(HostQt::MeasureWavPeak(text.fileName()));
}

// A file cut short (a copy that stopped) is measured over the samples it has.
TEST(WavPeak, ATruncatedFileIsMeasuredOverWhatItHolds)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cut.wav"));
    TestSupport::WriteWav(path, {WavFormat::kInt16, 1}, {0.25, 0.5, 0.75});
    QFile file(path);
    ASSERT_TRUE(file.resize(file.size() - 2));
    EXPECT_DOUBLE_EQ(HostQt::MeasureWavPeak(path).value_or(-1.0), 0.5);
}

TEST(ProjectAudioClips, AreTheAudioOnlyClipsAndThoseWithAPeak)
{
    const QTemporaryDir dir;
    const QString media = dir.filePath(QStringLiteral("Gulls.wav"));
    TestSupport::WriteWav(media, {WavFormat::kInt16, 1}, {0.5, -0.25});
    const QByteArray json = QStringLiteral(R"({"clips": [
        {"name": "Harbour.mov", "path": "/media/Harbour.mov"},
        {"name": "Interview.mov", "path": "/media/missing/Interview.mov", "peakAmplitude": 0.8},
        {"name": "Gulls.wav", "path": "%1", "audioOnly": true, "peakAmplitude": 0.1},
        {"name": "Silent.wav", "path": "/media/missing/Silent.wav", "audioOnly": true}]})")
                                .arg(media)
                                .toUtf8();
    const BE::ProjectRef project = HostQt::LoadProject(json, QStringLiteral("/tmp/Clips.tvx"));
    const std::vector<BE::AudioClipRef> clips = project->GetAudioClips();
    ASSERT_EQ(clips.size(), 3u);
    EXPECT_EQ(clips[0]->GetName(), L"Interview.mov");
    EXPECT_EQ(clips[0]->GetPeakAmplitude(), 0.8) << "offline: the peak the project recorded";
    EXPECT_EQ(clips[1]->GetPeakAmplitude(), 0.5) << "online: measured from the file";
    EXPECT_EQ(clips[2]->GetPeakAmplitude(), BE::IAudioClip::kPeakUnknown)
        << "nothing recorded, nothing to measure: unknown, not silence";
}

// Saving records the peaks that are known and invents none for the clips that cannot be measured.
TEST(ProjectAudioClips, OnlyKnownPeaksAreWrittenBack)
{
    const QTemporaryDir dir;
    const QString media = dir.filePath(QStringLiteral("Gulls.wav"));
    TestSupport::WriteWav(media, {WavFormat::kInt16, 1}, {0.25, -0.5});
    const QJsonArray clips = QJsonDocument::fromJson(QStringLiteral(R"([
        {"name": "Gulls.wav", "path": "%1", "audioOnly": true},
        {"name": "Silent.wav", "path": "/media/missing/Silent.wav", "audioOnly": true}])")
                                                         .arg(media)
                                                         .toUtf8())
                                 .array();
    const std::vector<BE::AudioClipRef> audio = HostQt::ReadAudioClips(clips);
    ASSERT_EQ(audio.size(), 2u);
    for (const BE::AudioClipRef& clip : audio) {
        clip->GetPeakAmplitude();
    }
    const QJsonArray written = HostQt::WriteAudioClips(clips, audio);
    EXPECT_EQ(written.at(0).toObject().value(QStringLiteral("peakAmplitude")).toDouble(-2.0), 0.5);
    EXPECT_EQ(written.at(1).toObject(), clips.at(1).toObject());
}

} // namespace

namespace {

// The bin and sequences of a project file: clips sorted by track and start, times at the
// sequence's rate, items naming no master clip left out; a relink is an unsaved change.
TEST(ProjectBin, SequencesAndChildClipsReferToTheMasterClipsByName)
{
    const QByteArray json = R"({"name": "Bin", "timecode": {"videoFrameRate": "25"},
        "clips": [{"name": "A.mov", "path": "/m/A.mov"}, {"name": "B.wav", "path": "/m/B.wav", "audioOnly": true}],
        "childClips": [{"name": "A part", "clip": "A.mov", "in": 10, "out": 20}, {"name": "lost", "clip": "X"}],
        "sequences": [{"name": "Edit", "frameRate": "30000/1001", "items": [
            {"clip": "B.wav", "track": "A1", "start": 0, "in": 0, "out": 30},
            {"clip": "A.mov", "track": "V1", "start": 50, "in": 5, "out": 15},
            {"clip": "A.mov", "track": "V1", "start": 0, "in": 30, "out": 60},
            {"clip": "nowhere", "track": "V1", "start": 70, "in": 0, "out": 1},
            {"clip": "A.mov", "track": "X9", "start": 0, "in": 0, "out": 1}]}]})";
    const BE::ProjectRef project = HostQt::LoadProject(json, QStringLiteral("/p/Bin.json"));

    const std::vector<BE::MasterClipRef> masters = project->GetMasterClips();
    ASSERT_EQ(masters.size(), 2u);
    EXPECT_FALSE(masters[1]->GetMedia()->HasVideo());

    const std::vector<BE::ChildClipRef> children = project->GetChildClips();
    ASSERT_EQ(children.size(), 1u);
    EXPECT_EQ(children[0]->GetMasterClip().Get(), masters[0].Get());
    EXPECT_EQ(children[0]->GetInPoint(), KOR::Time(10, KOR::kFrameRate_PAL25));

    const std::vector<BE::SequenceRef> sequences = project->GetSequences();
    ASSERT_EQ(sequences.size(), 1u);
    EXPECT_EQ(sequences[0]->GetFrameRate(), KOR::kFrameRate_NTSC2997);
    const std::vector<BE::ClipRef> clips = sequences[0]->GetClips();
    ASSERT_EQ(clips.size(), 3u);
    EXPECT_EQ(clips[0]->GetStart(), KOR::Time());
    EXPECT_EQ(clips[0]->GetInPoint(), KOR::Time(30, KOR::kFrameRate_NTSC2997));
    EXPECT_EQ(clips[1]->GetStart(), KOR::Time(50, KOR::kFrameRate_NTSC2997));
    EXPECT_EQ(clips[2]->GetTrackKind(), BE::TrackKind::kAudio);
    EXPECT_EQ(clips[2]->GetMasterClip().Get(), masters[1].Get());

    EXPECT_FALSE(project->HasUnsavedChanges());
    masters[0]->GetMedia()->Relink(L"/elsewhere/A.mov");
    EXPECT_TRUE(project->HasUnsavedChanges());
    const QTemporaryDir dir;
    ASSERT_EQ(project->SaveToFile(dir.filePath(QStringLiteral("Bin.json")).toStdWString(), false), BE::kSave_OK);
    EXPECT_FALSE(project->HasUnsavedChanges());
}

} // namespace
