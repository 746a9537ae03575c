// The reference host's conforming on real files: what it writes, when it does no work, what an
// abort or a failure leaves, and which media each kind of scope covers.

#include <QDateTime>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <functional>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConformSupport.h"
#include "HostQt/Conform.h"
#include "HostQt/SampleMovie.h"
#include "HostQt/Sequences.h"
#include "TestHost.h"

namespace {

using ConformSupport::CacheFiles;
using ConformSupport::MediaEntry;
using ConformSupport::MessageLog;
using ConformSupport::ReadConformedWav;
using ML::ConformUtils::NeedsConform;
using testing::ElementsAre;
using testing::IsEmpty;

// Says stop once it has been asked inAnswersBeforeAbort times.
class CountingAbort : public KOR::RefCounted<MF::IAbort> {
public:
    explicit CountingAbort(int inAnswersBeforeAbort) : mLeft(inAnswersBeforeAbort) {}
    bool IsAborted() const override { return mLeft.fetch_sub(1) <= 0; }

private:
    mutable std::atomic<int> mLeft;
};

KOR::InterfaceRef<MF::IAbort> AbortAfter(int inAnswers)
{
    return KOR::InterfaceRef<MF::IAbort>(new CountingAbort(inAnswers));
}

class Conform : public testing::Test {
protected:
    ~Conform() override { HostQt::SetOpenProject(nullptr); }

    QString At(const QString& inName) const { return mMedia.filePath(inName); }
    BE::ProjectRef Project(const QJsonArray& inMedia, int inRate = 48000, const QJsonArray& inChildClips = {},
                           const QJsonArray& inSequences = {}) const
    {
        return ConformSupport::MakeProject(At("project.json"), inRate, inMedia, inChildClips, inSequences);
    }
    static BE::MasterClipRef Clip(const BE::ProjectRef& inProject, const std::wstring& inName)
    {
        for (const BE::MasterClipRef& clip : inProject->GetMasterClips()) {
            if (clip->GetName() == inName) {
                return clip;
            }
        }
        return nullptr;
    }
    QString Conformed(const QString& inName, int inRate, int inStream = 0) const
    {
        return HostQt::ConformedAudioPath(At(inName), inStream, inRate);
    }

    TestSupport::TestHost mHost;
    QTemporaryDir mMedia;
};

struct OutputCase {
    const char* name;
    int sourceRate;
    int channels;
    int projectRate;
    int formatCode; // 3 plain float, 0xFFFE extensible
    friend void PrintTo(const OutputCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ConformOutput : public Conform, public testing::WithParamInterface<OutputCase> {};

// Same rate: the samples are the 16-bit source scaled to [-1, 1), exactly. Another rate: the
// samples follow the tone the source holds, away from the ends where the filter starts and stops.
TEST_P(ConformOutput, IsAFloatWavAtTheProjectRateThatMatchesTheSource)
{
    const OutputCase& param = GetParam();
    constexpr double kSeconds = 1.5;
    ConformSupport::WriteToneWav(At("tone.wav"), param.sourceRate, param.channels, kSeconds);
    const BE::ProjectRef project = Project({MediaEntry("Tone", At("tone.wav"))}, param.projectRate);

    ASSERT_TRUE(NeedsConform(project, false, L"", nullptr));
    EXPECT_FALSE(NeedsConform(project, true, L"", nullptr));
    EXPECT_FALSE(NeedsConform(project, false, L"", nullptr));

    const ConformSupport::ConformedWav wav = ReadConformedWav(Conformed("tone.wav", param.projectRate));
    ASSERT_TRUE(wav.valid);
    EXPECT_EQ(wav.formatCode, param.formatCode);
    if (param.formatCode == 0xFFFE) {
        EXPECT_EQ(wav.subFormat, QByteArray("\x03\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 16));
        EXPECT_EQ(std::popcount(wav.channelMask), param.channels) << "a speaker for every channel";
    }
    EXPECT_EQ(wav.bitsPerSample, 32);
    EXPECT_EQ(wav.channels, param.channels);
    EXPECT_EQ(wav.sampleRate, param.projectRate);
    const auto expectedFrames = static_cast<std::int64_t>(std::llround(kSeconds * param.projectRate));
    EXPECT_NEAR(static_cast<double>(wav.Frames()), static_cast<double>(expectedFrames), 1.0);
    ASSERT_GE(wav.Frames(), expectedFrames - 1);

    float worst = 0;
    const std::int64_t margin = param.sourceRate == param.projectRate ? 0 : param.projectRate / 100;
    for (std::int64_t frame = margin; frame < expectedFrames - 1 - margin; ++frame) {
        for (int channel = 0; channel < param.channels; ++channel) {
            const float expected = param.sourceRate == param.projectRate
                                       ? ConformSupport::StoredToneSample(frame, channel, param.sourceRate)
                                       : static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * 441.0 *
                                                                           (channel + 1) * frame / param.projectRate));
            worst = std::max(worst, std::abs(wav.At(frame, channel) - expected));
        }
    }
    EXPECT_LE(worst, param.sourceRate == param.projectRate ? 0.0f : 2e-3f);
}

INSTANTIATE_TEST_SUITE_P(Rates, ConformOutput,
                         testing::Values(OutputCase{"Stereo48kAt48k", 48000, 2, 48000, 3},
                                         OutputCase{"Mono44kAt48k", 44100, 1, 48000, 3},
                                         OutputCase{"Stereo48kAt44k", 48000, 2, 44100, 3},
                                         OutputCase{"SixChannels48kAt48k", 48000, 6, 48000, 0xFFFE},
                                         OutputCase{"Stereo32kAt96k", 32000, 2, 96000, 3}),
                         [](const testing::TestParamInfo<OutputCase>& inInfo) { return inInfo.param.name; });

// A compressed movie: the decoder's output, by the length of the movie and the level of its tone
// (0.3 of full scale in each channel: RMS 0.212).
TEST_F(Conform, CompressedMovieAudioHasTheMoviesLengthAndLevel)
{
    HostQt::SampleMovie movie;
    movie.frames = 50; // 2 s at 25 fps
    movie.audioSampleRate = 44100;
    ASSERT_TRUE(HostQt::WriteSampleMovie(At("shot.mov"), movie));
    const BE::ProjectRef project = Project({MediaEntry("Shot", At("shot.mov"))});
    EXPECT_FALSE(NeedsConform(Clip(project, L"Shot"), true, L"", nullptr));

    const ConformSupport::ConformedWav wav = ReadConformedWav(Conformed("shot.mov", 48000));
    ASSERT_TRUE(wav.valid);
    EXPECT_EQ(wav.channels, 2);
    EXPECT_EQ(wav.sampleRate, 48000);
    EXPECT_NEAR(static_cast<double>(wav.Frames()), 2.0 * 48000, 1100.0) << "within one AAC frame";
    for (int channel = 0; channel < 2; ++channel) {
        double sum = 0;
        const std::int64_t from = wav.Frames() / 4;
        const std::int64_t to = 3 * wav.Frames() / 4;
        for (std::int64_t frame = from; frame < to; ++frame) {
            sum += static_cast<double>(wav.At(frame, channel)) * wav.At(frame, channel);
        }
        EXPECT_NEAR(std::sqrt(sum / static_cast<double>(to - from)), 0.3 / std::sqrt(2.0), 0.01) << channel;
    }
}

TEST_F(Conform, MessagesTellTheStreamsTheSecondsAndTheMediaBeingConformed)
{
    ConformSupport::WriteToneWav(At("a.wav"), 48000, 2, 2.0);
    ConformSupport::WriteToneWav(At("b.wav"), 44100, 1, 1.0);
    const BE::ProjectRef project = Project({MediaEntry("Alpha", At("a.wav")), MediaEntry("Beta", At("b.wav"))});
    MessageLog log;
    EXPECT_FALSE(NeedsConform(project, true, log.Station(), nullptr));
    ASSERT_TRUE(log.WaitForFinished());
    EXPECT_EQ(log.startedCount, 1);
    EXPECT_EQ(log.streamCount, 2);
    EXPECT_NEAR(log.totalSeconds, 3.0, 1e-3);
    EXPECT_TRUE(log.completed);
    EXPECT_THAT(log.failure, IsEmpty());
    ASSERT_FALSE(log.fractions.empty());
    EXPECT_TRUE(std::is_sorted(log.fractions.begin(), log.fractions.end()));
    EXPECT_EQ(log.fractions.front(), 0.0f);
    EXPECT_NEAR(log.fractions.back(), 1.0f, 0.01f);
    EXPECT_LE(log.fractions.size(), 1200u) << "progress is posted in steps, not for every block";
    // Beta starts two thirds of the way through, by duration.
    const auto firstBeta = std::find(log.mediaNames.begin(), log.mediaNames.end(), L"Beta");
    ASSERT_NE(firstBeta, log.mediaNames.end());
    const auto at = static_cast<std::size_t>(firstBeta - log.mediaNames.begin());
    EXPECT_NEAR(log.fractions[at], 2.0f / 3.0f, 0.01f);
    EXPECT_EQ(log.streamIndexes[at], 1);
    EXPECT_EQ(std::set<std::wstring>(log.mediaNames.begin(), log.mediaNames.end()),
              (std::set<std::wstring>{L"Alpha", L"Beta"}));
}

TEST_F(Conform, AnUpToDateFileMeansNoWorkAndAChangedSourceMeansConformingAgain)
{
    ConformSupport::WriteToneWav(At("a.wav"), 48000, 2, 1.0);
    const BE::ProjectRef project = Project({MediaEntry("Alpha", At("a.wav"))});
    ASSERT_FALSE(NeedsConform(project, true, L"", nullptr));
    const QString first = Conformed("a.wav", 48000);
    const QDateTime written = QFileInfo(first).lastModified();

    MessageLog again;
    EXPECT_FALSE(NeedsConform(project, true, again.Station(), nullptr));
    ASSERT_TRUE(again.WaitForFinished());
    EXPECT_EQ(again.streamCount, 0);
    EXPECT_TRUE(again.completed);
    EXPECT_THAT(again.fractions, IsEmpty());
    EXPECT_EQ(QFileInfo(first).lastModified(), written);

    ConformSupport::WriteToneWav(At("a.wav"), 48000, 2, 2.0);
    EXPECT_TRUE(NeedsConform(project, false, L"", nullptr)) << "the file changed";
    EXPECT_FALSE(NeedsConform(project, true, L"", nullptr));
    const QString second = Conformed("a.wav", 48000);
    EXPECT_NE(second, first);
    EXPECT_EQ(ReadConformedWav(second).Frames(), 96000);
}

// Every case leaves the cache as it was (empty: no temporary file either) and says that the
// scope still needs conforming.
struct StopCase {
    const char* name;
    int answersBeforeAbort;
    bool progressSeen;
    friend void PrintTo(const StopCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ConformStopped : public Conform, public testing::WithParamInterface<StopCase> {};

TEST_P(ConformStopped, LeavesNoFileBehind)
{
    ConformSupport::WriteToneWav(At("a.wav"), 48000, 2, 4.0);
    ConformSupport::WriteToneWav(At("b.wav"), 48000, 2, 1.0);
    const BE::ProjectRef project = Project({MediaEntry("Alpha", At("a.wav")), MediaEntry("Beta", At("b.wav"))});
    MessageLog log;
    EXPECT_TRUE(NeedsConform(project, true, log.Station(), AbortAfter(GetParam().answersBeforeAbort)));
    ASSERT_TRUE(log.WaitForFinished());
    EXPECT_FALSE(log.completed);
    EXPECT_THAT(log.failure, IsEmpty()) << "an abort is no failure";
    EXPECT_EQ(log.fractions.size() > 1, GetParam().progressSeen);
    EXPECT_THAT(CacheFiles(), IsEmpty());
    EXPECT_TRUE(NeedsConform(project, false, L"", nullptr));
}

INSTANTIATE_TEST_SUITE_P(Abort, ConformStopped,
                         testing::Values(StopCase{"BeforeTheStart", 0, false}, StopCase{"AfterTheFirstBlock", 1, false},
                                         StopCase{"PartWayThroughTheFirstFile", 40, true}),
                         [](const testing::TestParamInfo<StopCase>& inInfo) { return inInfo.param.name; });

TEST_F(Conform, AFileThatIsNoMediaFailsWithItsNameAndTheOthersAreStillConformed)
{
    QFile notes(At("notes.wav"));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.write("Shot list: harbour at dawn, gulls, the ferry leaving.\n");
    notes.close();
    ConformSupport::WriteToneWav(At("b.wav"), 48000, 1, 0.5);
    const BE::ProjectRef project = Project({MediaEntry("Notes", At("notes.wav")), MediaEntry("Beta", At("b.wav"))});
    MessageLog log;
    EXPECT_TRUE(NeedsConform(project, true, log.Station(), nullptr));
    ASSERT_TRUE(log.WaitForFinished());
    EXPECT_FALSE(log.completed);
    EXPECT_THAT(log.failure, testing::StartsWith(L"Notes: "));
    EXPECT_THAT(CacheFiles(), ElementsAre(QFileInfo(Conformed("b.wav", 48000)).fileName()));
}

// Offline media, media marked silent and files without an audio stream need nothing.
TEST_F(Conform, MediaWithoutAudioToConformNeedNothing)
{
    ConformSupport::WriteToneWav(At("silent.wav"), 48000, 1, 0.5);
    HostQt::SampleMovie movie;
    movie.frames = 10;
    movie.audioSampleRate = 0;
    ASSERT_TRUE(HostQt::WriteSampleMovie(At("picture.mov"), movie));
    const BE::ProjectRef project =
        Project({MediaEntry("Gone", At("gone.wav")), MediaEntry("Silent", At("silent.wav"), false),
                 MediaEntry("Picture", At("picture.mov"))});
    for (const bool conform : {false, true}) {
        EXPECT_FALSE(NeedsConform(project, conform, L"", nullptr)) << conform;
    }
    EXPECT_THAT(CacheFiles(), IsEmpty());
}

struct RateCase {
    const char* name;
    int openProjectRate; // 0: none open
    int expectedRate;
    friend void PrintTo(const RateCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ConformRate : public Conform, public testing::WithParamInterface<RateCase> {};

// A clip says nothing of its project: the open project's rate applies.
TEST_P(ConformRate, ClipsConformAtTheOpenProjectsRate)
{
    ConformSupport::WriteToneWav(At("a.wav"), 48000, 1, 0.5);
    const BE::ProjectRef project = Project({MediaEntry("Alpha", At("a.wav"))}, 32000);
    if (GetParam().openProjectRate > 0) {
        HostQt::SetOpenProject(Project({}, GetParam().openProjectRate));
    }
    EXPECT_FALSE(NeedsConform(Clip(project, L"Alpha"), true, L"", nullptr));
    EXPECT_EQ(ReadConformedWav(Conformed("a.wav", GetParam().expectedRate)).sampleRate, GetParam().expectedRate);
    EXPECT_EQ(HostQt::ConformSampleRate(HostQt::GetOpenProject()), GetParam().expectedRate);
}

INSTANTIATE_TEST_SUITE_P(OpenProject, ConformRate,
                         testing::Values(RateCase{"NoneOpen", 0, 48000}, RateCase{"Open44k", 44100, 44100},
                                         RateCase{"Open96k", 96000, 96000}),
                         [](const testing::TestParamInfo<RateCase>& inInfo) { return inInfo.param.name; });

// The bin: media A to E; child clip "C part" of C; sequence "Cut" with A on V1 and B on A1,
// sequence "Other" with D. Each case conforms one scope and lists the media that got files; a
// media that the scope names twice is conformed once.
using Station = const std::wstring&;

struct ScopeCase {
    const char* name;
    std::function<bool(const BE::ProjectRef&, Station)> conform;
    std::set<QString> conformed;
    friend void PrintTo(const ScopeCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

BE::SequenceRef SequenceNamed(const BE::ProjectRef& inProject, const std::wstring& inName)
{
    for (const BE::SequenceRef& sequence : inProject->GetSequences()) {
        if (sequence->GetName() == inName) {
            return sequence;
        }
    }
    return nullptr;
}

BE::MasterClipRef MasterNamed(const BE::ProjectRef& inProject, const std::wstring& inName)
{
    for (const BE::MasterClipRef& clip : inProject->GetMasterClips()) {
        if (clip->GetName() == inName) {
            return clip;
        }
    }
    return nullptr;
}

class ConformScope : public Conform, public testing::WithParamInterface<ScopeCase> {};

TEST_P(ConformScope, CoversTheMediaOfItsKind)
{
    QJsonArray media;
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        ConformSupport::WriteToneWav(At(QStringLiteral("%1.wav").arg(QLatin1String(name))), 48000, 1, 0.2);
        media.append(MediaEntry(QLatin1String(name), At(QStringLiteral("%1.wav").arg(QLatin1String(name)))));
    }
    const QJsonArray childClips{QJsonObject{{"name", "C part"}, {"clip", "C"}, {"in", 1}, {"out", 4}}};
    const QJsonArray sequences{
        QJsonObject{
            {"name", "Cut"},
            {"items", QJsonArray{QJsonObject{{"clip", "A"}, {"track", "V1"}, {"start", 0}, {"in", 0}, {"out", 4}},
                                 QJsonObject{{"clip", "B"}, {"track", "A1"}, {"start", 0}, {"in", 0}, {"out", 4}},
                                 QJsonObject{{"clip", "A"}, {"track", "A1"}, {"start", 4}, {"in", 0}, {"out", 4}}}}},
        QJsonObject{
            {"name", "Other"},
            {"items", QJsonArray{QJsonObject{{"clip", "D"}, {"track", "A1"}, {"start", 0}, {"in", 0}, {"out", 4}}}}}};
    const BE::ProjectRef project = Project(media, 48000, childClips, sequences);
    HostQt::SetOpenProject(project);

    MessageLog log;
    EXPECT_FALSE(GetParam().conform(project, log.Station()));
    ASSERT_TRUE(log.WaitForFinished());
    EXPECT_EQ(log.streamCount, static_cast<int>(GetParam().conformed.size()));
    std::set<QString> conformed;
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        if (QFileInfo(Conformed(QStringLiteral("%1.wav").arg(QLatin1String(name)), 48000)).isFile()) {
            conformed.insert(QLatin1String(name));
        }
    }
    EXPECT_EQ(conformed, GetParam().conformed);
}

bool Run(const auto& inScope, Station inStation) { return NeedsConform(inScope, true, inStation, nullptr); }

INSTANTIATE_TEST_SUITE_P(
    Kinds, ConformScope,
    testing::Values(
        ScopeCase{"Project",
                  [](const BE::ProjectRef& inProject, Station inStation) { return Run(inProject, inStation); },
                  {"A", "B", "C", "D", "E"}},
        ScopeCase{"Sequence",
                  [](const BE::ProjectRef& inProject, Station inStation) {
                      return Run(SequenceNamed(inProject, L"Cut"), inStation);
                  },
                  {"A", "B"}},
        ScopeCase{"Clip",
                  [](const BE::ProjectRef& inProject, Station inStation) {
                      return Run(SequenceNamed(inProject, L"Cut")->GetClips()[1], inStation);
                  },
                  {"B"}},
        ScopeCase{"ChildClip",
                  [](const BE::ProjectRef& inProject, Station inStation) {
                      return Run(inProject->GetChildClips().front(), inStation);
                  },
                  {"C"}},
        ScopeCase{"MasterClip",
                  [](const BE::ProjectRef& inProject, Station inStation) {
                      return Run(MasterNamed(inProject, L"E"), inStation);
                  },
                  {"E"}},
        ScopeCase{"TrackItemSelection",
                  [](const BE::ProjectRef& inProject, Station inStation) {
                      const auto clips = SequenceNamed(inProject, L"Cut")->GetClips();
                      return Run(HostQt::MakeTrackItemSelection({clips[0], clips[2]}), inStation);
                  },
                  {"A"}},
        ScopeCase{"ProjectItemSelection",
                  [](const BE::ProjectRef& inProject, Station inStation) {
                      return Run(HostQt::MakeProjectItemSelection({MasterNamed(inProject, L"E")},
                                                                  {inProject->GetChildClips().front()},
                                                                  {SequenceNamed(inProject, L"Other")}),
                                 inStation);
                  },
                  {"C", "D", "E"}},
        ScopeCase{
            "NullClip", [](const BE::ProjectRef&, Station inStation) { return Run(BE::ClipRef(), inStation); }, {}}),
    [](const testing::TestParamInfo<ScopeCase>& inInfo) { return inInfo.param.name; });

} // namespace
