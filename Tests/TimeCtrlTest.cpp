// The time control and the project's timecode info, on real widgets.

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/ProjectSettings.h"
#include "ControlWindow.h"
#include "DLG/Module.h"
#include "DLG/SequenceZeroPointDialog.h"
#include "DLG/TimeCtrl.h"
#include "DLG/TimecodeInfo.h"
#include "HostQt/ReferenceHost.h"
#include "CheckedUser.h"
#include "zelcore/Error.h"

namespace {

using namespace KOR;
using TestSupport::ControlWindow;
using TestSupport::CheckedUser;

BE::ProjectRef MakeProject(unsigned int inFormat, const char* inRate)
{
    const QByteArray json = QStringLiteral(R"({"name": "Test", "timecode": {"displayFormat": %1, "videoFrameRate": "%2",
        "audioDisplayFormat": 200, "audioRate": "48000"}})")
                                .arg(inFormat)
                                .arg(QLatin1String(inRate))
                                .toUtf8();
    return HostQt::LoadProject(json, QStringLiteral("/tmp/Test.tvx"));
}

UIF::TimecodeControlInfo Info(unsigned int inFormat, FrameRate inRate)
{
    UIF::TimecodeControlInfo info;
    info.displayFormat = inFormat;
    info.videoFrameRate = inRate;
    info.audioDisplayFormat = kTimecodeFormat_AudioSamples;
    info.audioRate = kFrameRate_Audio48000;
    return info;
}

struct EntryCase {
    const char* typed;
    std::int64_t expectedFrames;
    friend void PrintTo(const EntryCase& inCase, std::ostream* outStream) { *outStream << inCase.typed; }
};

class TimeCtrlEntry : public testing::TestWithParam<EntryCase> {};

// The control shows 00:00:10:00 at 30 fps, with a minimum of 5 seconds.
TEST_P(TimeCtrlEntry, TypedTimecodeAbsoluteOrRelative)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE30, kFrameRate_Video30));
    control.SetMinimumTime(Time::FromSeconds(5));
    control.SetTime(Time::FromSeconds(10));
    control.SetEnabled(true);
    ControlWindow::Place(control);
    int changes = 0;
    control.NotifyWhenChanged([&] { ++changes; });
    ControlWindow::TypeIn(control, QString::fromLatin1(GetParam().typed));
    EXPECT_EQ(control.GetTime(), Time(GetParam().expectedFrames, kFrameRate_Video30));
    EXPECT_EQ(control.GetText(), [&] {
        Timecode timecode;
        timecode.SetFormat(kTimecodeFormat_SMPTE30, kFrameRate_Video30);
        timecode.SetTime(control.GetTime());
        return timecode.GetString();
    }());
    EXPECT_EQ(changes, GetParam().expectedFrames == 300 ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Entries, TimeCtrlEntry,
                         testing::Values(EntryCase{"+10", 310}, EntryCase{"-1:00", 270}, EntryCase{"-20:00", 150},
                                         EntryCase{"200", 150}, EntryCase{"123456789", 300}, EntryCase{"abc", 300}));

TEST(TimeCtrl, NineDigitsFitOnlyAnAudioTimeFormat)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_AudioSamples, kFrameRate_Audio48000));
    control.SetEnabled(true);
    ControlWindow::Place(control);
    ControlWindow::TypeIn(control, QStringLiteral("100024000"));
    EXPECT_EQ(control.GetTime(), Time::FromSeconds(600) + Time(24000, kFrameRate_Audio48000));
    EXPECT_EQ(control.GetText(), L"00:10:00:24000");
}

// Whatever format is left at a zero rate still tells times apart, and reads them back.
TEST(TimeCtrl, AtAZeroRateNoFormatShowsTheSameTextForEveryTime)
{
    ControlWindow window;
    for (const unsigned int format :
         {kTimecodeFormat_SMPTE25, kTimecodeFormat_SMPTE2997DropFrame, kTimecodeFormat_FeetFrames16mm,
          kTimecodeFormat_Frames, kTimecodeFormat_FeetFrames35mm, kTimecodeFormat_AudioSamples,
          kTimecodeFormat_Milliseconds}) {
        DLG::TimeCtrl control(nullptr, window.Node(), Info(format, kFrameRate_Zero));
        control.SetTime(Time::FromSeconds(2));
        const std::wstring two = control.GetText();
        control.SetTime(Time::FromSeconds(90));
        EXPECT_NE(control.GetText(), two) << format;
        EXPECT_EQ(control.GetTime(), Time::FromSeconds(90)) << format;
    }
    DLG::TimeCtrl feet(nullptr, window.Node(), Info(kTimecodeFormat_FeetFrames16mm, kFrameRate_Zero));
    feet.SetTime(Time::FromSeconds(10));
    EXPECT_EQ(feet.GetText(), L"6+00") << "240 film frames at 40 a foot";
}

TEST(TimeCtrl, ShownTimeIsClampedAndTheMinimumWinsWhenLimitsCross)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE25, kFrameRate_PAL25));
    control.SetMaximumTime(Time::FromSeconds(2));
    control.SetTime(Time::FromSeconds(3));
    EXPECT_EQ(control.GetText(), L"00:00:02:00");
    control.SetMinimumTime(Time::FromSeconds(4));
    EXPECT_EQ(control.GetText(), L"00:00:04:00");
}

TEST(TimeCtrl, DragStepsOneFramePerPixelWhateverTheModifiers)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE2997DropFrame, kFrameRate_NTSC2997));
    control.SetTime(Time(1795, kFrameRate_NTSC2997));
    control.SetEnabled(true);
    QWidget* widget = ControlWindow::Place(control);
    TestSupport::DragAcross(widget, QPoint(20, 10), 10, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(control.GetTime(), Time(1805, kFrameRate_NTSC2997));
    EXPECT_EQ(control.GetText(), L"00:01:00;07") << "the drag crossed a dropped minute";
}

TEST(TimeCtrl, OptionClickIsTheControlsOwnAndOpensNoField)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE30, kFrameRate_Video30));
    control.SetEnabled(true);
    QWidget* widget = ControlWindow::Place(control);
    QTest::mouseClick(widget, Qt::LeftButton, Qt::AltModifier);
    EXPECT_EQ(ControlWindow::InPlaceField(control), nullptr);
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_NE(ControlWindow::InPlaceField(control), nullptr);
}

TEST(TimecodeInfo, FollowsTheProjectAndEveryBoundControlHearsOfChanges)
{
    ControlWindow window;
    const BE::ProjectRef project = MakeProject(kTimecodeFormat_SMPTE2997DropFrame, "30000/1001");
    const UIF::TimecodeInfo info = DLG::GetTimecodeInfo(project);
    EXPECT_EQ(info.displayFormat, kTimecodeFormat_SMPTE2997DropFrame);
    EXPECT_EQ(info.videoFrameRate, kFrameRate_NTSC2997);
    EXPECT_EQ(info.audioDisplayFormat, kTimecodeFormat_AudioSamples);
    EXPECT_EQ(info.audioRate, kFrameRate_Audio48000);

    // The first control holds the only copy of its info: the notifier must live on with it.
    DLG::TimeCtrl first(nullptr, window.Node(), DLG::CreateNotifyingTimecodeControlInfo(project));
    const UIF::TimecodeControlInfo controlInfo = DLG::CreateNotifyingTimecodeControlInfo(project);
    DLG::TimeCtrl second(nullptr, window.Node(), controlInfo);
    second.SetUseAlternateDisplay(true);
    first.SetTime(Time::FromSeconds(60));
    second.SetTime(Time::FromSeconds(60));
    EXPECT_EQ(first.GetText(), L"00:00:59;28");
    EXPECT_EQ(second.GetText(), L"00:01:00:00000");

    project->GetProjectSettings()->GetVideoSettings()->SetFrameRate(kFrameRate_PAL25);
    project->GetProjectSettings()->SetTimeDisplayFormat(kTimecodeFormat_SMPTE25);
    project->GetProjectSettings()->SetAudioTimeDisplayFormat(kTimecodeFormat_Milliseconds);
    // The control kept the exact minute it was given, not frame 1798 at 29.97.
    EXPECT_EQ(first.GetText(), L"00:01:00:00");
    EXPECT_EQ(first.GetTime(), Time::FromSeconds(60));
    EXPECT_EQ(second.GetText(), L"00:01:00.000");
}

TEST(TimecodeInfo, NullProjectOrSettingsBreakTheContract)
{
    TestSupport::TestHost host;
    EXPECT_THROW(DLG::GetTimecodeInfo(nullptr), zelcore::Error);
    class Bare : public KOR::RefCounted<BE::IProject> {
    public:
        std::wstring GetName() const override { return L"Bare"; }
        std::wstring GetFilePath() const override { return {}; }
        KOR::InterfaceRef<BE::IProjectSettings> GetProjectSettings() const override { return {}; }
        std::vector<BE::AudioClipRef> GetAudioClips() const override { return {}; }
        long SaveToFile(const std::wstring&, bool) override { return BE::kSaveError_Failed; }
    };
    EXPECT_THROW(DLG::CreateNotifyingTimecodeControlInfo(BE::ProjectRef(new Bare)), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, testing::ElementsAre("inProject != NULL", "inProjectSettings != NULL"));
}

struct ZeroPointCase {
    const char* name;
    std::function<void(TestSupport::Step&)> actions;
    bool confirmed;
    Time expected;
    friend void PrintTo(const ZeroPointCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class SequenceZeroPoint : public testing::TestWithParam<ZeroPointCase> {};

// The project counts 25 fps; the zero point starts at one hour.
TEST_P(SequenceZeroPoint, WritesTheTimeOnlyWhenConfirmed)
{
    TestSupport::TestHost host;
    DLG::SetProject(MakeProject(kTimecodeFormat_SMPTE25, "25"));
    CheckedUser user;
    GetParam().actions(user.On(QStringLiteral("SequenceZeroPointDialog")));
    Time zeroPoint = Time::FromSeconds(3600);
    EXPECT_EQ(DLG::DoSequenceZeroPointDialog(zeroPoint), GetParam().confirmed);
    EXPECT_EQ(zeroPoint, GetParam().expected);
}

const QString kTimeControl = QStringLiteral("timecodeControlReplacement");

INSTANTIATE_TEST_SUITE_P(
    Inputs, SequenceZeroPoint,
    testing::Values(
        // The first Enter closes the time's field, the second confirms.
        ZeroPointCase{"TypeThenEnterTwice",
                      [](auto& s) {
                          s.Inspect([](QWidget& inWindow) {
                               EXPECT_TRUE(inWindow.findChild<QWidget*>(kTimeControl)->hasFocus());
                           })
                              .Type(kTimeControl, "10:00:00:00")
                              .Press(Qt::Key_Return)
                              .Press(Qt::Key_Return);
                      },
                      true, Time::FromSeconds(36000)},
        ZeroPointCase{"TypeThenEscapeTwice",
                      [](auto& s) { s.Type(kTimeControl, "5").Press(Qt::Key_Escape).Press(Qt::Key_Escape); }, false,
                      Time::FromSeconds(3600)}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// A project whose video rate is unknown yet, showing frame counts: the control counts
// milliseconds instead and keeps its time. Timecode formats count at a rate of their own.
TEST(TimeCtrl, AZeroRateTurnsFrameCountsIntoMilliseconds)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_Frames, kFrameRate_Zero));
    EXPECT_EQ(control.GetDisplayFormat(), kTimecodeFormat_Milliseconds);
    control.SetTime(Time::FromSeconds(90));
    EXPECT_EQ(control.GetText(), L"00:01:30.000");
    control.SetEnabled(true);
    ControlWindow::Place(control);
    ControlWindow::TypeIn(control, QStringLiteral("+1.5"));
    EXPECT_EQ(control.GetTime(), Time::FromSeconds(91) + Time(500, FrameRate(1000)));

    DLG::TimeCtrl feet(nullptr, window.Node(), Info(kTimecodeFormat_FeetFrames35mm, kFrameRate_Film24));
    feet.SetFrameRate(kFrameRate_Zero);
    EXPECT_EQ(feet.GetDisplayFormat(), kTimecodeFormat_Milliseconds);
    DLG::TimeCtrl smpte(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE25, kFrameRate_PAL25));
    smpte.SetFrameRate(kFrameRate_Zero);
    EXPECT_EQ(smpte.GetDisplayFormat(), kTimecodeFormat_SMPTE25);
}

// Arrow keys and drags stop at the limits: what is shown is what GetTime returns.
TEST(TimeCtrl, StepsStopAtTheLimitsAndAnUneditedTimeStaysExact)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE25, kFrameRate_PAL25));
    control.SetMaximumTime(Time::FromSeconds(2));
    control.SetTime(Time::FromSeconds(2) - Time(2, kFrameRate_PAL25));
    control.SetEnabled(true);
    QWidget* widget = ControlWindow::Place(control);
    widget->setFocus();
    for (int press = 0; press < 5; ++press) {
        QTest::keyClick(widget, Qt::Key_Up);
    }
    EXPECT_EQ(control.GetTime(), Time::FromSeconds(2));
    QTest::keyClick(widget, Qt::Key_Down);
    EXPECT_EQ(control.GetText(), L"00:00:01:24") << "no dead zone above the maximum";

    const Time betweenFrames = Time::FromSeconds(1) + Time(1);
    control.SetTime(betweenFrames);
    control.SetFrameRate(kFrameRate_NTSC2997);
    control.SetFrameRate(kFrameRate_PAL25);
    EXPECT_EQ(control.GetTime(), betweenFrames) << "looking at a time, or a change of rate, does not round it";
}

// A listener of the commit that moves the focus does not commit a second time, and Tab
// leaves the field for the next control at once.
TEST(TimeCtrl, ACommitHappensOnceAndTabMovesOn)
{
    ControlWindow window;
    DLG::TimeCtrl control(nullptr, window.Node(), Info(kTimecodeFormat_SMPTE30, kFrameRate_Video30));
    control.SetEnabled(true);
    QWidget* widget = ControlWindow::Place(control);
    QLineEdit next(widget->parentWidget());
    next.setGeometry(10, 50, 100, 24);
    next.show();
    int changes = 0;
    control.NotifyWhenChanged([&] {
        ++changes;
        next.setFocus(Qt::OtherFocusReason);
    });
    ControlWindow::TypeIn(control, QStringLiteral("+10"));
    EXPECT_EQ(control.GetTime(), Time(10, kFrameRate_Video30));
    EXPECT_EQ(changes, 1);

    QTest::mouseClick(widget, Qt::LeftButton);
    QLineEdit* field = ControlWindow::InPlaceField(control);
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, QStringLiteral("+5"));
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_EQ(control.GetTime(), Time(15, kFrameRate_Video30));
    EXPECT_EQ(QApplication::focusWidget(), &next);
}

} // namespace
