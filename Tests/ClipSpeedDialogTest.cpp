// The clip speed dialog: its arithmetic without a window, the gang view, and the dialog through
// its entry function with the scripted user.

#include <QApplication>
#include <QKeyEvent>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/Backend.h"
#include "ControlWindow.h"
#include "DLG/ClipSpeedDialogImpl.h"
#include "DLG/Module.h"
#include "HostQt/ReferenceHost.h"
#include "KOR/Stations.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using namespace KOR;
using namespace DLG::ClipSpeedDialog;
using TestSupport::CheckedUser;
using TestSupport::TestHost;
using testing::ElementsAre;

const Time kTenSeconds = Time::FromSeconds(10);

// ---------------------------------------------------------------------------------------------
// Arithmetic

TEST(ClipSpeedArithmetic, TypedPercentRoundsHalfToEvenHundredths)
{
    const std::vector<std::pair<double, std::int32_t>> cases = {
        {50.0, 5000},  {100.0, 10000}, {0.125, 12},     {0.375, 38},      {33.335, 3334},
        {2.675, 268},  {1.005, 100},   {-200.0, -20000}, {-0.125, -12},   {1e12, 2147483647},
        {-1e12, -2147483647}};
    for (const auto& [percent, hundredths] : cases) {
        EXPECT_EQ(HundredthsFromPercent(percent), hundredths) << percent;
    }
    EXPECT_EQ(ShownPercent(20000), 20000 * 0.009999999776482582);
    EXPECT_EQ(KeptPercent(3333), double(33.33f));
    EXPECT_EQ(KeptPercent(5000), 50.0);
}

struct DurationCase {
    std::int64_t referenceTicks;
    double multiplier;
    std::int32_t hundredths;
    std::int64_t expectedTicks;
};

TEST(ClipSpeedArithmetic, DurationIsReferenceTimesMultiplierOverFactorToTheTick)
{
    const std::int64_t second = Time::kTicksPerSecond;
    const std::int64_t huge = (std::int64_t(1) << 62) + 1; // beyond a double's 53 bits
    const std::vector<DurationCase> cases = {
        {10 * second, 1.0, 5000, 20 * second},    // the Part's case: half speed, twice as long
        {10 * second, 1.0, 20000, 5 * second},
        {10 * second, 2.0, 10000, 20 * second},
        {10 * second, 0.5, 10000, 5 * second},
        {3, 1.0, 20000, 2},                        // 1.5 ticks: half to even
        {5, 1.0, 20000, 2},                        // 2.5 ticks: half to even
        {7, 1.0, 20000, 4},                        // 3.5 ticks
        {1001 * second, 1000.0 / 1001.0, 10000, 1000 * second},
        {huge, 1.0, 10000, huge},
        {huge - 1, 1.0, 20000, (huge - 1) / 2},
        {10 * second, 0.0, 10000, 10 * second},    // no valid multiplier counts as 1
        {10 * second, -3.0, 10000, 10 * second},
    };
    for (const DurationCase& c : cases) {
        EXPECT_EQ(DurationAtSpeed(Time(c.referenceTicks), c.multiplier, c.hundredths).Ticks(), c.expectedTicks)
            << c.referenceTicks << " x " << c.multiplier << " at " << c.hundredths;
    }
}

TEST(ClipSpeedArithmetic, SpeedForADurationIsTheInverseRoundedHalfToEven)
{
    EXPECT_EQ(HundredthsForDuration(kTenSeconds, 1.0, Time::FromSeconds(20)), 5000);
    EXPECT_EQ(HundredthsForDuration(kTenSeconds, 1.0, Time::FromSeconds(30)), 3333);
    EXPECT_EQ(HundredthsForDuration(kTenSeconds, 2.0, Time::FromSeconds(30)), 6667);
    EXPECT_EQ(HundredthsForDuration(Time(3), 1.0, Time(20000)), 2) << "1.5 hundredths";
    EXPECT_EQ(HundredthsForDuration(Time::FromSeconds(3600), 1.0, kLongestDuration), 417);
}

// One edit of the link, with what the fields must show afterwards.
struct Edit {
    enum Kind { kSpeed, kDuration, kToggle } kind;
    double speed = 0.0;
    Time duration;
    bool reversed = false;
};

Edit Speed(double inPercent) { return {Edit::kSpeed, inPercent, {}, false}; }
Edit Duration(Time inDuration) { return {Edit::kDuration, 0.0, inDuration, false}; }
Edit Toggle(bool inReversed = false) { return {Edit::kToggle, 0.0, {}, inReversed}; }

SpeedLink::Update Apply(SpeedLink& ioLink, const Edit& inEdit)
{
    switch (inEdit.kind) {
    case Edit::kSpeed: return ioLink.EnterSpeed(inEdit.speed);
    case Edit::kDuration: return ioLink.EnterDuration(inEdit.duration, 1000000);
    case Edit::kToggle: break;
    }
    return ioLink.ToggleGang(inEdit.reversed);
}

struct LinkCase {
    const char* name;
    Time reference;
    bool ganged;
    Edit edit;
    std::optional<double> shownSpeed;
    bool checkReverse;
    Time duration;
    double keptSpeed;
    bool gangedAfter;
    friend void PrintTo(const LinkCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ClipSpeedLink : public testing::TestWithParam<LinkCase> {};

// Every case starts at 100 % with the duration 12 s, so that an untouched duration shows.
TEST_P(ClipSpeedLink, OneEditShowsAndKeeps)
{
    const LinkCase& c = GetParam();
    SpeedLink link(c.reference, 1.0, 100.0, Time::FromSeconds(12), c.ganged);
    const SpeedLink::Update update = Apply(link, c.edit);
    EXPECT_EQ(update.shownSpeed, c.shownSpeed);
    EXPECT_EQ(update.checkReverse, c.checkReverse);
    EXPECT_EQ(update.duration, c.duration);
    EXPECT_EQ(update.keptSpeed, c.keptSpeed);
    EXPECT_EQ(link.Duration(), c.duration);
    EXPECT_EQ(link.IsGanged(), c.gangedAfter);
}

const Time kHour = Time::FromSeconds(3600);
const Time kTwelve = Time::FromSeconds(12);

INSTANTIATE_TEST_SUITE_P(
    Edits, ClipSpeedLink,
    testing::Values(
        LinkCase{"HalfSpeedDoublesTheDuration", kTenSeconds, true, Speed(50), {}, false, Time::FromSeconds(20), 50.0, true},
        LinkCase{"NegativeSpeedReversesAndShowsPositive", kTenSeconds, true, Speed(-200), ShownPercent(20000), true,
                 Time::FromSeconds(5), 200.0, true},
        LinkCase{"ZeroSpeedLeavesTheDuration", kTenSeconds, true, Speed(0), {}, false, kTwelve, 0.0, true},
        LinkCase{"UngangedSpeedLeavesTheDuration", kTenSeconds, false, Speed(50), {}, false, kTwelve, 50.0, false},
        LinkCase{"TooSlowStopsAtTheLimitShownNegated", kHour, true, Speed(1), -ShownPercent(417), false,
                 kLongestDuration, double(4.17f), true},
        LinkCase{"TooSlowTypedNegativeShowsPositive", kHour, true, Speed(-1), ShownPercent(417), true,
                 kLongestDuration, double(4.17f), true},
        LinkCase{"GangedDurationSetsTheSpeed", kTenSeconds, true, Duration(Time::FromSeconds(40)), ShownPercent(2500),
                 false, Time::FromSeconds(40), 25.0, true},
        LinkCase{"GangedDurationKeepsWhatWasTyped", kTenSeconds, true, Duration(Time::FromSeconds(30)),
                 ShownPercent(3333), false, Time::FromSeconds(30), double(33.33f), true},
        LinkCase{"GangedZeroDurationTakesTheFastestSpeed", kTenSeconds, true, Duration(Time()),
                 ShownPercent(1000000), false, Time(Time::kTicksPerSecond / 10), 10000.0, true},
        LinkCase{"UngangedDurationLeavesTheSpeed", kTenSeconds, false, Duration(Time::FromSeconds(40)), {}, false,
                 Time::FromSeconds(40), 100.0, false},
        LinkCase{"LinkingDerivesTheDuration", kTenSeconds, false, Toggle(), {}, false, kTenSeconds, 100.0, true},
        LinkCase{"UnlinkingKeepsTheDuration", kTenSeconds, true, Toggle(), {}, false, kTwelve, 100.0, false}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(ClipSpeedLink, LinkingAtTheLimitShowsTheSpeedSignedByTheReverseFlag)
{
    for (const bool reversed : {false, true}) {
        SpeedLink link(kHour, 1.0, 1.0, kTwelve, false);
        const SpeedLink::Update update = link.ToggleGang(reversed);
        EXPECT_EQ(update.duration, kLongestDuration);
        EXPECT_EQ(update.shownSpeed, reversed ? -ShownPercent(417) : ShownPercent(417));
        EXPECT_EQ(link.Hundredths(), 417);
        EXPECT_DOUBLE_EQ(link.Factor(), 3600.0 / 86340.0) << "the factor that gives 23:59:00, not 4.17 %";
    }
}

// Unlinking and linking again with nothing changed in between changes nothing: a duration that
// set the speed (typed, or the longest) comes back, not the one the rounded speed would give.
TEST(ClipSpeedLink, RelinkingGivesBackTheDurationThatSetTheSpeed)
{
    struct Case {
        const char* name;
        Time reference;
        Edit edit;
        Time duration;
        std::int32_t hundredths;
    };
    const Time oddTicks = Time(Time::FromSeconds(30).Ticks() + 7);
    const std::vector<Case> cases = {
        {"typed a third", kTenSeconds, Duration(Time::FromSeconds(30)), Time::FromSeconds(30), 3333},
        {"typed at odd ticks", kTenSeconds, Duration(oddTicks), oddTicks, 3333},
        {"too slow", kHour, Speed(1), kLongestDuration, 417},
        {"too slow typed negative", kHour, Speed(-1), kLongestDuration, 417},
    };
    for (const Case& c : cases) {
        SpeedLink link(c.reference, 1.0, 100.0, c.reference, true);
        Apply(link, c.edit);
        link.ToggleGang(false);
        const SpeedLink::Update update = link.ToggleGang(false);
        EXPECT_EQ(update.duration, c.duration) << c.name;
        EXPECT_EQ(update.shownSpeed, std::nullopt) << c.name << ": the speed shown stays";
        EXPECT_EQ(link.Hundredths(), c.hundredths) << c.name;
        EXPECT_EQ(update.keptSpeed, KeptPercent(c.hundredths)) << c.name;
    }
}

struct RoundTripCase {
    const char* name;
    Time reference;
    double multiplier;
    bool ganged;
    std::vector<Edit> edits;
    friend void PrintTo(const RoundTripCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ClipSpeedRoundTrip : public testing::TestWithParam<RoundTripCase> {};

// However the user got there, normal speed while linked gives back reference x multiplier.
TEST_P(ClipSpeedRoundTrip, NormalSpeedGivesBackTheReferenceToTheTick)
{
    const RoundTripCase& c = GetParam();
    SpeedLink link(c.reference, c.multiplier, 100.0, c.reference, c.ganged);
    for (const Edit& edit : c.edits) {
        Apply(link, edit);
    }
    if (!link.IsGanged()) {
        link.ToggleGang(false);
    }
    const SpeedLink::Update update = link.EnterSpeed(100.0);
    const Time expected = c.multiplier == 1.0 ? c.reference : DurationAtSpeed(c.reference, c.multiplier, kNormalSpeed);
    EXPECT_EQ(update.duration, expected);
    EXPECT_EQ(link.Hundredths(), kNormalSpeed);
}

// 10 s of 29.97 video, 1 h of 23.976 video and odd tick counts that no frame rate gives.
const Time kNtscTen = Time(300, kFrameRate_NTSC2997);
const Time kOddTicks = Time(299, kFrameRate_NTSC2997) + Time(7);
const Time kFilmHour = Time(86400, kFrameRate_Film23976);
const Time kOddFilm = Time(1439, kFrameRate_Film23976) + Time(13);

INSTANTIATE_TEST_SUITE_P(
    Sequences, ClipSpeedRoundTrip,
    testing::Values(
        RoundTripCase{"TogglesAtTheLimit", kOddTicks, 1.0, true, {Toggle(), Speed(0.03), Toggle(true), Toggle()}},
        RoundTripCase{"TypedDurationPastTheLimit", kOddTicks, 1.0, true, {Duration(Time::FromSeconds(90000))}},
        RoundTripCase{"WithAMultiplier", kOddTicks, 1000.0 / 1001.0, true,
                      {Speed(33.33), Duration(Time::FromSeconds(2)), Speed(-70)}},
        RoundTripCase{"FilmHourThroughTheLimitAndRelinked", kFilmHour, 1.0, true,
                      {Speed(2), Toggle(), Toggle(true), Duration(Time(1439, kFrameRate_Film23976)), Toggle(),
                       Toggle()}},
        RoundTripCase{"LongestDurationTypedThenReversed", kOddTicks, 1.0, true,
                      {Duration(kLongestDuration), Speed(-100.005), Toggle(), Duration(Time()), Toggle(true)}},
        RoundTripCase{"UnlinkedAtTheLimitWithAMultiplier", kFilmHour, 1001.0 / 1000.0, false,
                      {Speed(0.01), Duration(kLongestDuration), Toggle(), Speed(-33.335)}}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// Many seeded walks of speeds, durations and toggles over 29.97 and 23.976 references.
TEST(ClipSpeedRoundTrip, RandomWalksGiveBackTheReferenceToTheTick)
{
    std::mt19937_64 random(9117);
    const std::vector<Time> references = {kNtscTen, kOddTicks, kFilmHour, kOddFilm, Time(1)};
    const std::vector<double> speeds = {100.0, 50.0, -50.0, 0.0, 0.01, -0.01, 33.335, 99.995, 10000.0, -2.675};
    for (int walk = 0; walk < 400; ++walk) {
        const Time reference = references[walk % references.size()];
        SpeedLink link(reference, 1.0, 100.0, reference, walk % 2 == 0);
        std::string trail;
        for (int step = 0; step < 8; ++step) {
            switch (random() % 3) {
            case 0: {
                const double speed = speeds[random() % speeds.size()] + static_cast<double>(random() % 7) * 0.003;
                link.EnterSpeed(speed);
                trail += " speed " + std::to_string(speed);
                break;
            }
            case 1: {
                const Time duration(static_cast<std::int64_t>(random() % (kLongestDuration.Ticks() + 2)));
                link.EnterDuration(duration, 1000000);
                trail += " duration " + std::to_string(duration.Ticks());
                break;
            }
            default:
                link.ToggleGang(random() % 2 == 0);
                trail += " toggle";
            }
        }
        if (!link.IsGanged()) {
            link.ToggleGang(false);
        }
        EXPECT_EQ(link.EnterSpeed(100.0).duration, reference) << reference.Ticks() << ":" << trail;
    }
}

// ---------------------------------------------------------------------------------------------
// The host's sub-view and its images

class ProbeView : public zelui::ui::UI_SubView {
public:
    using UI_SubView::UI_SubView;
    void UI_Draw(zelui::drawbot::DrawInterface& ioDrawer) override
    {
        const zelui::ui::Rect bounds = GetLocalRect();
        ioDrawer.FillRect(bounds, zelui::drawbot::ColorRole::kWindow);
        found.push_back(ioDrawer.DrawImage(L"GangLinked", {0, 0, bounds.width / 2, bounds.height}));
        found.push_back(ioDrawer.DrawImage(L"GangUnlinked", {bounds.width / 2, 0, bounds.width / 2, bounds.height}));
        found.push_back(ioDrawer.DrawImage(L"NoSuchImage", bounds));
    }
    std::vector<bool> found;
};

// Keys a sub-view leaves reach its parent: the dialog's cases below confirm with Enter on the focused gang view.
TEST(SubView, DrawsHostImagesByName)
{
    TestSupport::ControlWindow window;
    QWidget* host = HostQt::PeerWidget<QWidget>(window.Node());
    auto* areaWidget = new QWidget(host);
    areaWidget->setGeometry(10, 10, 48, 48);
    areaWidget->show();
    zelui::ui::UI_Node area(std::make_unique<zelui::ui::NodePeer>(areaWidget));
    boost::intrusive_ptr<ProbeView> view(new ProbeView(area, L"probe"));
    auto* widget = HostQt::PeerWidget<QWidget>(view.get());
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->parentWidget(), areaWidget);
    const QImage image = widget->grab().toImage();
    EXPECT_THAT(view->found, ElementsAre(true, true, false));
    EXPECT_EQ(view->GetLocalRect(), (zelui::ui::Rect{0, 0, 48, 48})) << "the view fills its area";
    // The linked chain is blue where the unlinked one is grey: both halves hold ink.
    auto inked = [&](int inLeft) {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = inLeft; x < inLeft + image.width() / 2; ++x) {
                if (image.pixelColor(x, y) != image.pixelColor(0, 0)) {
                    return true;
                }
            }
        }
        return false;
    };
    EXPECT_TRUE(inked(0));
    EXPECT_TRUE(inked(image.width() / 2));
}

// ---------------------------------------------------------------------------------------------
// The dialog

const QString kDialog = QStringLiteral("ClipSpeedDialog");
const QString kSpeed = QStringLiteral("clipSpeedReplacement");
const QString kDurationField = QStringLiteral("timecodeControlReplacement");
const QString kGang = QStringLiteral("gangSubView");

BE::ProjectRef NtscProject()
{
    return HostQt::LoadProject(R"({"name": "Clips", "timecode": {"displayFormat": 103, "videoFrameRate": "30000/1001",
        "audioDisplayFormat": 200, "audioRate": "48000"}})",
                               QStringLiteral("/tmp/Clips.tvx"));
}

// A 10-second clip of 29.97 video at normal speed.
struct Caller {
    double speed = 100.0;
    Time duration = kNtscTen;
    Time reference = kNtscTen;
    bool reverse = false;
    bool pitch = true;
    bool ganged = false;
    bool enableReverse = true;
    bool enablePitch = true;
    bool enableDuration = true;
    UIF::Commander* commander = nullptr;

    bool Run(BE::ProjectRef inProject = NtscProject())
    {
        return DoClipSpeedDialog(commander, inProject, speed, duration, reference, reverse, pitch, ganged,
                                 enableReverse, enablePitch, enableDuration);
    }
};

// What a hot number shows, its label included.
QString Shown(QWidget& inWindow, const QString& inName)
{
    auto* control = inWindow.findChild<QWidget*>(inName);
    return control ? control->property("displayText").toString() : QStringLiteral("<no %1>").arg(inName);
}

std::optional<bool> GangedInSettingsFile(const TestHost& inHost)
{
    QFile file(inHost.SettingsDirectory() + QStringLiteral("/Backend.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QJsonValue value = QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("ClipSpeed.Ganged"));
    return value.isBool() ? std::optional<bool>(value.toBool()) : std::nullopt;
}

struct DialogCase {
    const char* name;
    std::function<void(TestSupport::Step&)> actions;
    bool confirmed;
    double speed;
    Time duration;
    bool reverse;
    bool ganged;
    friend void PrintTo(const DialogCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ClipSpeedDialogRun : public testing::TestWithParam<DialogCase> {};

// The remembered gang starts linked (the default); the caller's pitch flag stays on throughout.
TEST_P(ClipSpeedDialogRun, WritesTheCallersValuesOnlyWhenConfirmed)
{
    TestHost host;
    CheckedUser user;
    GetParam().actions(user.On(kDialog));
    Caller caller;
    EXPECT_EQ(caller.Run(), GetParam().confirmed);
    EXPECT_EQ(caller.speed, GetParam().speed);
    EXPECT_EQ(caller.duration, GetParam().duration);
    EXPECT_EQ(caller.reverse, GetParam().reverse);
    EXPECT_TRUE(caller.pitch);
    EXPECT_EQ(caller.ganged, GetParam().ganged);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, ClipSpeedDialogRun,
    testing::Values(
        // A negative speed checks Reverse and shows positive.
        DialogCase{"NegativeHalfSpeedThenEnter",
                   [](auto& s) {
                       s.Type(kSpeed, "-50")
                           .Press(Qt::Key_Return)
                           .Inspect([](QWidget& inWindow) {
                               EXPECT_EQ(Shown(inWindow, kDurationField), QStringLiteral("00:00:20;00"));
                               EXPECT_EQ(Shown(inWindow, kSpeed), QStringLiteral("50.00 %"));
                           })
                           .Press(Qt::Key_Return);
                   },
                   true, 50.0, Time(600, kFrameRate_NTSC2997), true, true},
        DialogCase{"DurationSetsTheSpeed",
                   [](auto& s) { s.Type(kDurationField, "40;00").Press(Qt::Key_Return).Press(Qt::Key_Return); }, true,
                   25.0, Time(1200, kFrameRate_NTSC2997), false, true},
        DialogCase{"UnlinkedBySpaceAfterTab",
                   [](auto& s) {
                       s.Press(Qt::Key_Tab)
                           .Inspect([](QWidget& inWindow) {
                               ASSERT_NE(QApplication::focusWidget(), nullptr);
                               EXPECT_EQ(QApplication::focusWidget()->objectName(), kGang);
                               EXPECT_EQ(inWindow.findChild<QWidget*>(kGang)->accessibleName(),
                                         QStringLiteral("Speed and duration linked"));
                           })
                           .Press(Qt::Key_Space)
                           .Inspect([](QWidget& inWindow) {
                               EXPECT_EQ(inWindow.findChild<QWidget*>(kGang)->accessibleName(),
                                         QStringLiteral("Speed and duration not linked"));
                           })
                           .Press(Qt::Key_Return);
                   },
                   true, 100.0, kNtscTen, false, false},
        DialogCase{"HeldSpaceTogglesOnce",
                   [](auto& s) {
                       s.Press(Qt::Key_Tab)
                           .Inspect([](QWidget&) {
                               QWidget* gang = QApplication::focusWidget();
                               ASSERT_NE(gang, nullptr);
                               for (const bool repeated : {false, true, true, true}) {
                                   QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "),
                                                   repeated);
                                   QApplication::sendEvent(gang, &press);
                               }
                               QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
                               QApplication::sendEvent(gang, &release);
                           })
                           .Press(Qt::Key_Return);
                   },
                   true, 100.0, kNtscTen, false, false},
        DialogCase{"TypedThenCancel", [](auto& s) { s.Type(kSpeed, "-50").Press(Qt::Key_Return).Click("cancelButton"); },
                   false, 100.0, kNtscTen, false, false}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(ClipSpeedDialog, TheGangIsRememberedInTheSettingsFileAtEachToggle)
{
    TestHost host;
    EXPECT_EQ(GangedInSettingsFile(host), std::nullopt);
    {
        CheckedUser user;
        user.On(kDialog)
            .Click(kGang)
            .Inspect([&](QWidget&) { EXPECT_EQ(GangedInSettingsFile(host), false); })
            .Click(kGang)
            .Inspect([&](QWidget&) { EXPECT_EQ(GangedInSettingsFile(host), true); })
            .Click(kGang)
            .Click("cancelButton");
        Caller caller;
        EXPECT_FALSE(caller.Run());
    }
    EXPECT_EQ(GangedInSettingsFile(host), false) << "a toggle is remembered even when the dialog is cancelled";

    // The next time the dialog opens unlinked: the speed leaves the duration alone.
    CheckedUser user;
    user.On(kDialog).Type(kSpeed, "50").Press(Qt::Key_Return).Press(Qt::Key_Return);
    Caller caller;
    EXPECT_TRUE(caller.Run());
    EXPECT_EQ(caller.duration, kNtscTen);
    EXPECT_FALSE(caller.ganged);
}

TEST(ClipSpeedDialog, DisabledPartsCannotBeChanged)
{
    TestHost host;
    BE::GetBackend()->SetBoolProperty(kGangedProperty, true);
    CheckedUser user;
    user.On(kDialog)
        .Inspect([](QWidget& inWindow) {
            EXPECT_FALSE(inWindow.findChild<QWidget*>(QStringLiteral("reverseSpeed"))->isEnabled());
            EXPECT_TRUE(inWindow.findChild<QWidget*>(QStringLiteral("maintainAudioPitch"))->isEnabled());
            EXPECT_FALSE(inWindow.findChild<QWidget*>(kDurationField)->isEnabled());
            EXPECT_FALSE(inWindow.findChild<QWidget*>(QStringLiteral("durationTimecodeStaticText"))->isEnabled());
            EXPECT_FALSE(inWindow.findChild<QWidget*>(kGang)->isEnabled());
        })
        .Click(kGang)
        .Type(kSpeed, "50")
        .Press(Qt::Key_Return)
        .Click("maintainAudioPitch")
        .Press(Qt::Key_Return);
    Caller caller;
    caller.enableReverse = false;
    caller.enableDuration = false;
    caller.ganged = true;
    EXPECT_TRUE(caller.Run());
    EXPECT_EQ(caller.speed, 50.0);
    EXPECT_EQ(caller.duration, kNtscTen) << "without a duration to change, the speed changes alone";
    EXPECT_FALSE(caller.ganged);
    EXPECT_FALSE(caller.pitch);
    EXPECT_TRUE(BE::GetBackend()->GetBoolProperty(kGangedProperty, false)) << "the remembered gang is untouched";
}

TEST(ClipSpeedDialog, EveryFocusableControlHasANameAndTheTabOrderFollowsTheLayout)
{
    TestHost host;
    CheckedUser user;
    QStringList order;
    user.On(kDialog)
        .Inspect([&](QWidget& inWindow) {
            for (const char* label : {"speedStaticText", "durationTimecodeStaticText"}) {
                const QWidget* buddy = inWindow.findChild<QLabel*>(QLatin1String(label))->buddy();
                ASSERT_NE(buddy, nullptr) << label;
                EXPECT_TRUE(buddy->isVisible()) << label << " points at the field that shows";
            }
            QWidget* const start = QApplication::focusWidget();
            ASSERT_NE(start, nullptr);
            QWidget* current = start;
            do {
                order << current->objectName();
                const bool named = !current->accessibleName().isEmpty() || !current->property("text").toString().isEmpty();
                EXPECT_TRUE(named) << current->objectName().toStdString();
                QTest::keyClick(current, Qt::Key_Tab);
                current = QApplication::focusWidget();
            } while (current && current != start && order.size() < 20);
        })
        .Press(Qt::Key_Escape);
    Caller caller;
    EXPECT_FALSE(caller.Run());
    EXPECT_THAT(order, ElementsAre(kSpeed, kGang, kDurationField, QStringLiteral("reverseSpeed"),
                                   QStringLiteral("maintainAudioPitch"), QStringLiteral("okButton"),
                                   QStringLiteral("cancelButton")));
}

TEST(ClipSpeedDialog, TheCallersCommanderGetsTheCommandsBackHoweverTheDialogEnds)
{
    TestHost host;
    HostQt::TabView timeline(host.Workspace(), L"Timeline", host.Workspace().MainCommander());
    host.Workspace().SetFocusedTabView(&timeline);
    CheckedUser user;
    user.On(kDialog)
        .Inspect([&](QWidget&) { EXPECT_EQ(host.Workspace().CommandTarget(), host.Workspace().MainCommander()); })
        .Press(Qt::Key_Escape);
    Caller caller;
    caller.commander = &timeline;
    EXPECT_FALSE(caller.Run());
    EXPECT_EQ(host.Workspace().CommandTarget(), &timeline);

    // Without a backend the toggle raises the host's error, and the target still comes back.
    host.Workspace().SetCommandTarget(nullptr);
    KOR::Services().backend = nullptr;
    user.On(kDialog).Click(kGang);
    try {
        caller.Run();
        ADD_FAILURE() << "the toggle raised nothing";
    } catch (const zelcore::Error& error) {
        EXPECT_EQ(error.Message(), L"A NULL interface pointer has been dereferenced.");
    }
    EXPECT_EQ(host.Workspace().CommandTarget(), &timeline);
    EXPECT_EQ(caller.speed, 100.0);
}

TEST(ClipSpeedDialog, TheDurationIsOnItsNamedStationWhileTheDialogIsOpen)
{
    TestHost host;
    CheckedUser user;
    user.On(kDialog)
        .Inspect([](QWidget&) { EXPECT_TRUE(KOR::StationRegistry::IsRegistered(kDurationStation)); })
        .Press(Qt::Key_Escape);
    Caller caller;
    EXPECT_FALSE(caller.Run());
    EXPECT_FALSE(KOR::StationRegistry::IsRegistered(kDurationStation));
}

TEST(ClipSpeedDialog, NullProjectBreaksTheContract)
{
    TestHost host;
    Caller caller;
    EXPECT_THROW(caller.Run(nullptr), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("inProject != NULL"));
    EXPECT_EQ(host.Counts().autoSaveBlocks, 0) << "nothing was opened";
}

} // namespace
