// The host's media probe on real files: what it reports of audio, stills and files that are no
// media, and the paths it splits and joins for the relink search.

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "KOR/Paths.h"
#include "HostQt/SampleMovie.h"
#include "TL/Media.h"
#include "TestHost.h"

namespace {

class MediaProbe : public testing::Test {
protected:
    std::wstring At(const QString& inName) const { return mRoot.filePath(inName).toStdWString(); }
    void WriteText(const QString& inName, const QByteArray& inText) const
    {
        QFile file(mRoot.filePath(inName));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(inText);
    }

    QTemporaryDir mRoot;
};

TEST_F(MediaProbe, DescribesAudioAndStills)
{
    TestSupport::WriteWav(mRoot.filePath("tone.wav"), {HostQt::WavFormat::kInt16, 2, 48000},
                          std::vector<double>(2 * 24000, 0.5));
    QImage still(64, 36, QImage::Format_RGB32);
    still.fill(Qt::darkCyan);
    ASSERT_TRUE(still.save(mRoot.filePath("still.png")));

    TL::MediaInfo tone;
    ASSERT_EQ(TL::Media::GetInfoAboutMediaFile(At("tone.wav"), tone), TL::kImporterResult_OK);
    EXPECT_TRUE(tone.hasAudio);
    EXPECT_FALSE(tone.hasVideo);
    EXPECT_EQ(tone.audioSampleRate, 48000);
    EXPECT_EQ(tone.audioChannels, 2);
    EXPECT_EQ(tone.duration, KOR::Time(KOR::Time::kTicksPerSecond / 2));
    EXPECT_EQ(tone.audioCodec, L"pcm_s16le");

    HostQt::SampleMovie movie;
    movie.frameRate = KOR::kFrameRate_NTSC2997;
    movie.frames = 30;
    ASSERT_TRUE(HostQt::WriteSampleMovie(mRoot.filePath("shot.mov"), movie));
    TL::MediaInfo shot;
    ASSERT_EQ(TL::Media::GetInfoAboutMediaFile(At("shot.mov"), shot, TL::NeededStreams::kVideoAndAudio),
              TL::kImporterResult_OK);
    EXPECT_EQ(shot.videoCodec, L"mpeg4");
    EXPECT_EQ(shot.audioCodec, L"aac");
    EXPECT_EQ(shot.frameRate, KOR::kFrameRate_NTSC2997);
    EXPECT_EQ(shot.width, 320);
    EXPECT_NEAR(shot.duration.Seconds(), 30 * 1001 / 30000.0, 0.05);

    TL::MediaInfo image;
    ASSERT_EQ(TL::Media::GetInfoAboutMediaFile(At("still.png"), image), TL::kImporterResult_OK);
    EXPECT_TRUE(image.hasVideo);
    EXPECT_EQ(image.width, 64);
    EXPECT_EQ(image.height, 36);
    EXPECT_EQ(image.videoCodec, L"png");
}

TEST_F(MediaProbe, RefusesWhatIsNoMediaOrLacksANeededStream)
{
    TestSupport::WriteWav(mRoot.filePath("tone.wav"), {HostQt::WavFormat::kInt16, 1, 48000},
                          std::vector<double>(4800, 0.5));
    WriteText("notes.txt", "Shot list: harbour at dawn, gulls, the ferry leaving.\n");
    WriteText("notes.mov", "Shot list: harbour at dawn, gulls, the ferry leaving.\n");
    WriteText("empty.wav", "");
    QDir().mkpath(mRoot.filePath("folder.mov"));
    const std::vector<std::tuple<QString, TL::NeededStreams, std::int32_t>> cases = {
        {"tone.wav", TL::NeededStreams::kAudio, TL::kImporterResult_OK},
        {"tone.wav", TL::NeededStreams::kVideo, TL::kImporterResult_NoUsableStream},
        {"tone.wav", TL::NeededStreams::kVideoAndAudio, TL::kImporterResult_NoUsableStream},
        {"notes.txt", TL::NeededStreams::kAny, TL::kImporterResult_UnsupportedFormat},
        {"notes.mov", TL::NeededStreams::kAny, TL::kImporterResult_UnsupportedFormat},
        {"empty.wav", TL::NeededStreams::kAny, TL::kImporterResult_UnsupportedFormat},
        {"folder.mov", TL::NeededStreams::kAny, TL::kImporterResult_UnsupportedFormat},
        {"missing.wav", TL::NeededStreams::kAny, TL::kImporterResult_FileNotFound},
    };
    for (const auto& [name, needs, expected] : cases) {
        TL::MediaInfo info;
        info.audioChannels = 99;
        const std::int32_t result = TL::Media::GetInfoAboutMediaFile(At(name), info, needs);
        EXPECT_EQ(result, expected) << name.toStdString();
        if (result < 0) {
            EXPECT_EQ(info.audioChannels, 99) << "a refused file leaves the answer untouched";
            EXPECT_FALSE(TL::ImporterResultToErrorString(result).empty());
        }
    }
}

TEST(RelinkPaths, SplitJoinAndRelate)
{
    using namespace KOR::PathUtils;
    EXPECT_EQ(GetFullDirectoryPart(L"/media/a.mov"), L"/media");
    EXPECT_EQ(GetFullDirectoryPart(L"/a.mov"), L"/");
    EXPECT_EQ(GetFullDirectoryPart(L"C:\\media\\a.mov"), L"C:\\media");
    EXPECT_EQ(GetFullDirectoryPart(L"a.mov"), L"");
    EXPECT_EQ(GetFullDirectoryPart(L"D:\\a.wav"), L"D:\\");
    EXPECT_EQ(CombinePaths(GetFullDirectoryPart(L"D:\\a.wav"), L"sub\\b.wav"), L"D:\\sub\\b.wav");

    const std::vector<std::tuple<std::wstring, std::wstring, std::wstring>> joins = {
        {L"/new/project/", L"fonts/title.ttf", L"/new/project/fonts/title.ttf"},
        {L"/new/project", L"../shared/./logo.png", L"/new/shared/logo.png"},
        {L"/", L"../../a.wav", L"/a.wav"},
        {L"D:\\new\\", L"..\\b.wav", L"D:\\b.wav"},
    };
    for (const auto& [base, relative, expected] : joins) {
        EXPECT_EQ(CombinePaths(base, relative), expected);
    }

    struct Relation {
        std::wstring from, to;
        bool related;
        std::wstring relative;
    };
    const std::vector<Relation> relations = {
        {L"/old/p/title.png", L"/old/p/fonts/title.ttf", true, L"fonts/title.ttf"},
        {L"/old/p/fonts/title.ttf", L"/old/shared/logo.png", true, L"../../shared/logo.png"},
        {L"/old/p/a.wav", L"/old/p/b.wav", true, L"b.wav"},
        {L"C:\\old\\a.wav", L"c:\\old\\sub\\b.wav", true, L"sub\\b.wav"},
        {L"C:\\old\\a.wav", L"D:\\old\\b.wav", false, L""},
        {L"relative/a.wav", L"relative/b.wav", false, L""},
        {L"\\\\server\\share\\a.wav", L"\\\\server\\other\\b.wav", false, L""},
    };
    for (const Relation& relation : relations) {
        std::wstring relative = L"untouched";
        EXPECT_EQ(ArePathsRelative(relation.from, relation.to, relative), relation.related);
        EXPECT_EQ(relative, relation.related ? relation.relative : L"untouched");
    }
}

} // namespace
