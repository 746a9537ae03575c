// The clip gain dialog: its level arithmetic, and the dialog through its entry function.

#include <QApplication>
#include <QDir>
#include <QLineEdit>

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/Project.h"
#include "DLG/ClipGainDialog.h"
#include "HostQt/ReferenceHost.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using namespace DLG::ClipGain;
using TestSupport::CheckedUser;
using TestSupport::Step;
using testing::ElementsAre;

TEST(ClipGainLevel, DecibelsOfAGainStayWithinTheLimits)
{
    struct Case {
        double gain;
        double decibels;
    };
    for (const Case& c : {Case{1.0, 0.0}, Case{2.0, 6.0206}, Case{0.5, -6.0206}, Case{10.0, 20.0},
                          Case{1e-6, -96.0}, Case{1e6, 96.0}, Case{0.0, -96.0}, Case{-1.0, -96.0}}) {
        EXPECT_NEAR(DecibelsFromGain(c.gain), c.decibels, 1e-4) << "gain " << c.gain;
    }
}

TEST(ClipGainLevel, GainOfALevelIsWorkedInSinglePrecision)
{
    EXPECT_EQ(GainFromDecibels(0.0), 1.0);
    EXPECT_NEAR(GainFromDecibels(96.0), 63095.73, 0.05);
    EXPECT_NEAR(GainFromDecibels(-6.0206), 0.5, 1e-5);
    EXPECT_NEAR(GainFromDecibels(-96.0), 1.5849e-5, 1e-9);
    for (const double level : {96.0, 12.3, -0.1, -40.0}) {
        const double gain = GainFromDecibels(level);
        EXPECT_EQ(static_cast<double>(static_cast<float>(gain)), gain) << "a float's value at " << level << " dB";
    }
}

TEST(ClipGainLevel, NormalizingLiftsThePeakToFullScaleWithinTheLimits)
{
    const Normalized half = NormalizeToPeak(0.5).value();
    EXPECT_EQ(half.gain, 2.0);
    EXPECT_NEAR(half.decibels, 6.0206, 1e-4);
    const Normalized full = NormalizeToPeak(1.0).value();
    EXPECT_EQ(full.gain, 1.0);
    EXPECT_EQ(full.decibels, 0.0);
    const Normalized hot = NormalizeToPeak(4.0).value();
    EXPECT_EQ(hot.gain, 0.25) << "a float clip above full scale is brought down";
    const Normalized quiet = NormalizeToPeak(1e-7).value();
    EXPECT_EQ(quiet.decibels, kMaximumDecibels);
    EXPECT_EQ(quiet.gain, GainFromDecibels(kMaximumDecibels));
}

TEST(ClipGainLevel, SilenceOrAnUnmeasuredPeakHasNothingToNormalize)
{
    for (const double peak : {0.0, -0.0, -1.0, std::nan("")}) {
        EXPECT_FALSE(NormalizeToPeak(peak).has_value()) << "peak " << peak;
    }
}

// A clip whose peak is known; it notes the cursor the user saw while it was read.
class Clip : public KOR::RefCounted<BE::IAudioClip> {
public:
    explicit Clip(double inPeak) : mPeak(inPeak) {}
    std::wstring GetName() const override { return L"Narration.wav"; }
    std::wstring GetMediaPath() const override { return L"/media/Narration.wav"; }
    double GetPeakAmplitude() const override
    {
        const QCursor* cursor = QApplication::overrideCursor();
        mCursorsWhileRead.push_back(cursor ? cursor->shape() : Qt::ArrowCursor);
        return mPeak;
    }
    double mPeak;
    mutable std::vector<Qt::CursorShape> mCursorsWhileRead;
};

const QString kLevel = QStringLiteral("dbLevelReplacement");

// Opens the level's field, checks the number it starts from, and closes it again.
std::function<void(QWidget&)> ShowsLevel(QString inExpected)
{
    return [inExpected](QWidget& inWindow) {
        auto* field = inWindow.findChild<QWidget*>(kLevel)->findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr) << "the level's field is not open";
        EXPECT_EQ(field->text(), inExpected);
    };
}

struct GainCase {
    const char* name;
    float start;
    std::function<void(Step&)> actions;
    bool confirmed;
    float expected;
    friend void PrintTo(const GainCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ClipGainDialog : public testing::TestWithParam<GainCase> {};

TEST_P(ClipGainDialog, WritesTheGainOnlyWhenConfirmed)
{
    TestSupport::TestHost host;
    KOR::InterfaceRef<Clip> clip(new Clip(0.5));
    float gain = GetParam().start;
    CheckedUser user;
    GetParam().actions(user.On(QStringLiteral("ClipGain")));
    EXPECT_EQ(DLG::DoClipGainDialog(clip, gain), GetParam().confirmed);
    EXPECT_NEAR(gain, GetParam().expected, std::fabs(GetParam().expected) * 1e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ClipGainDialog,
    testing::Values(
        GainCase{"HalfShowsMinusSix", 0.5f,
                 [](Step& s) {
                     s.Inspect([](QWidget& inWindow) { EXPECT_TRUE(inWindow.findChild<QWidget*>(kLevel)->hasFocus()); })
                         .Click(kLevel)
                         .Inspect(ShowsLevel("-6.0"))
                         .Press(Qt::Key_Escape)
                         .Press(Qt::Key_Return);
                 },
                 true, 0.5f},
        GainCase{"TypedPastTheMaximumIsClamped", 1.0f,
                 [](Step& s) { s.Type(kLevel, "120").Press(Qt::Key_Return).Click("okButton"); }, true, 63095.73f},
        GainCase{"TypedMinusSix", 1.0f, [](Step& s) { s.Type(kLevel, "-6").Press(Qt::Key_Return).Click("okButton"); },
                 true, 0.5011872f},
        GainCase{"NormalizeThenType", 1.0f,
                 [](Step& s) { s.Click("normalizeButton").Type(kLevel, "0").Press(Qt::Key_Return).Click("okButton"); },
                 true, 1.0f},
        GainCase{"TypedThenCancel", 0.25f,
                 [](Step& s) { s.Type(kLevel, "12").Press(Qt::Key_Return).Click("cancelButton"); },
                 false, 0.25f}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(ClipGainDialogNormalize, ReadsThePeakUnderTheWaitCursorAndRestoresIt)
{
    TestSupport::TestHost host;
    KOR::InterfaceRef<Clip> clip(new Clip(0.25));
    float gain = 1.0f;
    CheckedUser user;
    user.On(QStringLiteral("ClipGain")).Click("normalizeButton").Click("normalizeButton").Click("okButton");
    EXPECT_TRUE(DLG::DoClipGainDialog(clip, gain));
    EXPECT_EQ(gain, 4.0f);
    EXPECT_THAT(clip->mCursorsWhileRead, ElementsAre(Qt::WaitCursor, Qt::WaitCursor));
    EXPECT_EQ(host.Counts().waitCursorsShown, 2);
    EXPECT_EQ(host.Counts().cursorsRestored, 2);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(ClipGainDialogNormalize, WithoutAClipRaisesTheNullInterfaceErrorAndRestoresTheCursor)
{
    TestSupport::TestHost host;
    float gain = 0.5f;
    CheckedUser user;
    user.On(QStringLiteral("ClipGain")).Click("normalizeButton");
    try {
        DLG::DoClipGainDialog(nullptr, gain);
        ADD_FAILURE() << "no error raised";
    } catch (const zelcore::Error& error) {
        EXPECT_EQ(error.Message(), L"A NULL interface pointer has been dereferenced.");
    }
    EXPECT_EQ(gain, 0.5f);
    EXPECT_EQ(host.Counts().waitCursorsShown, 1);
    EXPECT_EQ(host.Counts().cursorsRestored, 1);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(host.Counts().autoSaveBlockedNow);
}

TEST(ClipGainDialogNormalize, ASilentClipBeepsAndKeepsTheGain)
{
    TestSupport::TestHost host;
    KOR::InterfaceRef<Clip> clip(new Clip(0.0));
    float gain = 0.5f;
    CheckedUser user;
    user.On(QStringLiteral("ClipGain"))
        .Click("normalizeButton")
        .Click(kLevel)
        .Inspect(ShowsLevel("-6.0"))
        .Press(Qt::Key_Escape)
        .Click("okButton");
    EXPECT_TRUE(DLG::DoClipGainDialog(clip, gain));
    EXPECT_EQ(gain, 0.5f);
    EXPECT_EQ(host.Counts().beeps, 1);
    EXPECT_EQ(host.Counts().cursorsRestored, 1);
}

// A clip of the host's project whose media file is on disk: its peak is measured from the file.
TEST(ClipGainDialogNormalize, TheHostMeasuresThePeakOfAClipsWavFile)
{
    TestSupport::TestHost host;
    const QString media = QDir(host.ScratchDirectory()).filePath(QStringLiteral("Quiet.wav"));
    TestSupport::WriteWav(media, {HostQt::WavFormat::kInt16, 2}, {0.0, 0.125, -0.0625, 0.1});
    const QByteArray json = QStringLiteral(R"({"clips": [{"name": "Quiet.wav", "path": "%1", "audioOnly": true,
        "peakAmplitude": 0.9}]})").arg(media).toUtf8();
    const BE::ProjectRef project = HostQt::LoadProject(json, QStringLiteral("/tmp/Quiet.tvx"));
    ASSERT_EQ(project->GetAudioClips().size(), 1u);
    float gain = 1.0f;
    CheckedUser user;
    user.On(QStringLiteral("ClipGain"))
        .Click("normalizeButton")
        .Click(kLevel)
        .Inspect(ShowsLevel("18.1"))
        .Press(Qt::Key_Escape)
        .Press(Qt::Key_Return);
    EXPECT_TRUE(DLG::DoClipGainDialog(project->GetAudioClips().front(), gain));
    EXPECT_EQ(gain, 8.0f);
}

} // namespace
