// The progress dialogs through their entry functions, on real windows, with the host's clock
// replaced and operations that post from the UI thread or from a worker of the shared queue.

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <cmath>
#include <future>
#include <limits>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DLG/ProgressDialog.h"
#include "DLG/ProgressDialogImpl.h"
#include "DLG/RenderProgressDialog.h"
#include "FakeClock.h"
#include "KOR/Platform.h"
#include "KOR/WorkQueue.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::FakeClock;
using TestSupport::CheckedUser;
using TestSupport::TestHost;
using testing::ElementsAre;

constexpr int kWaitLimitMs = 10000;

bool WaitFor(const std::function<bool()>& inCondition) { return QTest::qWaitFor(inCondition, kWaitLimitMs); }

// An operation whose messages the test posts itself, from the UI thread.
class Operation : public KOR::RefCounted<KOR::BatchOperation> {};

KOR::InterfaceRef<Operation> MakeOperation() { return KOR::InterfaceRef<Operation>(new Operation); }

// Runs on the shared work queue: reports a quarter done, waits for a cancel request, then for
// the test's leave to finish, and completes.
class WorkerOperation : public KOR::RefCounted<KOR::BatchOperation> {
public:
    void Start(KOR::InterfaceRef<WorkerOperation> inSelf)
    {
        KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(3).QueueRequest([self = std::move(inSelf)] {
            self->RunToCompletion([&] {
                self->mThread = std::this_thread::get_id();
                self->PostDescription(L"Copying media");
                self->PostProgress(0.25f);
                std::unique_lock lock(self->mMutex);
                self->mChanged.wait_for(lock, std::chrono::seconds(10),
                                        [&] { return self->IsCancelRequested() && self->mMayFinish; });
            });
        });
    }
    void RequestCancel() override
    {
        std::lock_guard lock(mMutex);
        BatchOperation::RequestCancel();
        mChanged.notify_all();
    }
    void AllowToFinish()
    {
        std::lock_guard lock(mMutex);
        mMayFinish = true;
        mChanged.notify_all();
    }
    std::thread::id mThread;

private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    bool mMayFinish = false;
};

QProgressBar* Bar(QWidget& inWindow) { return inWindow.findChild<QProgressBar*>(QStringLiteral("progressBar")); }

// The value a progress bar showed when it was last painted.
class PaintedValue : public QObject {
public:
    explicit PaintedValue(QProgressBar& inBar) : mBar(inBar) { inBar.installEventFilter(this); }
    ~PaintedValue() override { mBar.removeEventFilter(this); }
    int Value() const { return mValue; }

protected:
    bool eventFilter(QObject* inObject, QEvent* inEvent) override
    {
        if (inObject == &mBar && inEvent->type() == QEvent::Paint) {
            mValue = mBar.value();
        }
        return false;
    }

private:
    QProgressBar& mBar;
    int mValue = -1;
};
QString TextOf(QWidget& inWindow, const char* inName)
{
    const auto* label = inWindow.findChild<QLabel*>(QString::fromLatin1(inName));
    return label ? label->text() : QStringLiteral("<no %1>").arg(QString::fromLatin1(inName));
}

bool Progress(const std::wstring& inTitle, KOR::InterfaceRef<KOR::IBatchOperation> inOperation)
{
    return DLG::ProgressDialog::DoProgressDialog(inTitle, std::move(inOperation), nullptr);
}

TEST(ProgressBarValue, TruncatesAndStopsShortOfFullUntilCompletion)
{
    EXPECT_EQ(DLG::ProgressBarValue(0.0f), 0);
    EXPECT_EQ(DLG::ProgressBarValue(0.5f), 5000);
    EXPECT_EQ(DLG::ProgressBarValue(0.12345f), 1234);
    EXPECT_EQ(DLG::ProgressBarValue(0.95999f), 9599);
    EXPECT_EQ(DLG::ProgressBarValue(0.99f), 9600);
    EXPECT_EQ(DLG::ProgressBarValue(1.0f), 9600);
    EXPECT_EQ(DLG::ProgressBarValue(7.0f), 9600);
    EXPECT_EQ(DLG::ProgressBarValue(-0.25f), 0);
    EXPECT_EQ(DLG::ProgressBarValue(std::nanf("")), 0);
}

TEST(ProgressDialog, CompletionSoonAfterOpeningKeepsTheDialogUpUntil750msWithAFullBar)
{
    TestHost host(true);
    FakeClock clock;
    const auto operation = MakeOperation();
    CheckedUser user;
    int valueWhenTheWaitBegan = -1;
    int paintedWhenTheWaitBegan = -1;
    user.On(QStringLiteral("ProgressDialog")).Inspect([&](QWidget& inWindow) {
        EXPECT_EQ(inWindow.parentWidget(), host.MainWindow());
        EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Saving project"));
        EXPECT_EQ(TextOf(inWindow, "progressTitleText"), QStringLiteral("Saving project"));
        PaintedValue painted(*Bar(inWindow));
        clock.OnSleep([&](std::int64_t) {
            valueWhenTheWaitBegan = Bar(inWindow)->value();
            paintedWhenTheWaitBegan = painted.Value();
        });
        clock.Advance(100);
        operation->PostComplete();
        ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
        clock.OnSleep(nullptr);
        EXPECT_EQ(Bar(inWindow)->value(), 10000);
        EXPECT_EQ(Bar(inWindow)->maximum(), 10000);
    });
    EXPECT_TRUE(Progress(L"Saving project", operation));
    EXPECT_THAT(clock.Sleeps(), ElementsAre(650));
    EXPECT_EQ(valueWhenTheWaitBegan, 10000) << "the bar is full while the dialog waits";
    EXPECT_EQ(paintedWhenTheWaitBegan, 10000) << "the full bar is on screen before the UI thread sleeps";
    EXPECT_EQ(clock.Elapsed(), 750);
    EXPECT_FALSE(operation->IsCancelRequested());
}

// Each event: move the clock on, then post a progress (or, last, the completion) and let the
// dialog handle it.
struct TimingCase {
    const char* name;
    std::vector<std::pair<std::int64_t, float>> progress; // clock advance, fraction
    std::int64_t advanceBeforeCompletion;
    std::vector<std::int64_t> sleeps;
    friend void PrintTo(const TimingCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ProgressDialogTiming : public testing::TestWithParam<TimingCase> {};

TEST_P(ProgressDialogTiming, TheMinimumTimeUpCountsFromTheFirstProgressAfterTheShowDeadline)
{
    TestHost host;
    FakeClock clock;
    const auto operation = MakeOperation();
    CheckedUser user;
    user.On(QStringLiteral("ProgressDialog")).Inspect([&](QWidget& inWindow) {
        for (const auto& [advance, fraction] : GetParam().progress) {
            clock.Advance(advance);
            operation->PostProgress(fraction);
            const int expected = DLG::ProgressBarValue(fraction);
            ASSERT_TRUE(WaitFor([&] { return Bar(inWindow)->value() == expected; }));
        }
        clock.Advance(GetParam().advanceBeforeCompletion);
        operation->PostComplete();
        ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
    });
    EXPECT_TRUE(Progress(L"Exporting", operation));
    EXPECT_EQ(clock.Sleeps(), GetParam().sleeps);
}

INSTANTIATE_TEST_SUITE_P(
    Clock, ProgressDialogTiming,
    testing::Values(
        // Up 1.6 s since binding: no wait, since progress within 1.5 s left the start alone.
        TimingCase{"ProgressWithinTheDeadlineLeavesTheStart", {{1000, 0.3f}, {500, 0.6f}}, 100, {}},
        TimingCase{"NoProgressAtAll", {}, 400, {350}},
        // The first progress after 1.5 s restarts the count; later ones do not.
        TimingCase{"ProgressAfterTheDeadlineRestartsTheCount", {{1501, 0.5f}, {200, 0.7f}}, 100, {450}},
        TimingCase{"LongAfterTheRestartNoWait", {{1600, 0.5f}, {900, 0.7f}}, 0, {}}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

struct CancelCase {
    const char* name;
    std::function<void(TestSupport::Step&)> cancel;
    friend void PrintTo(const CancelCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ProgressDialogCancel : public testing::TestWithParam<CancelCase> {};

// The dialog stays until the worker confirms, and the result is false although the worker
// completed.
TEST_P(ProgressDialogCancel, AsksTheOperationToStopAndWaitsForItsCompletion)
{
    TestHost host;
    const KOR::InterfaceRef<WorkerOperation> operation(new WorkerOperation);
    operation->Start(operation);
    CheckedUser user;
    TestSupport::Step& step = user.On(QStringLiteral("ProgressDialog")).Inspect([&](QWidget& inWindow) {
        ASSERT_TRUE(WaitFor([&] { return Bar(inWindow)->value() == 2500; }));
        EXPECT_EQ(TextOf(inWindow, "progressTitleText"), QStringLiteral("Copying media"));
    });
    GetParam().cancel(step);
    step.Inspect([&](QWidget& inWindow) {
        EXPECT_TRUE(operation->IsCancelRequested());
        EXPECT_TRUE(inWindow.isVisible());
        EXPECT_EQ(TextOf(inWindow, "progressTitleText"), QStringLiteral("Cancelling…"));
        EXPECT_FALSE(inWindow.findChild<QPushButton*>(QStringLiteral("cancelButton"))->isEnabled());
        operation->AllowToFinish();
        ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
        EXPECT_EQ(Bar(inWindow)->value(), 2500) << "a cancelled operation never shows a full bar";
    });
    EXPECT_FALSE(Progress(L"Copying", operation));
    EXPECT_NE(operation->mThread, std::this_thread::get_id());
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ProgressDialogCancel,
    testing::Values(CancelCase{"CancelButton", [](TestSupport::Step& s) { s.Click(QStringLiteral("cancelButton")); }},
                    CancelCase{"Escape", [](TestSupport::Step& s) { s.Press(Qt::Key_Escape); }},
                    CancelCase{"CloseTheWindow", [](TestSupport::Step& s) { s.Close(); }},
                    // After one request the window's close button asks nothing more of the operation.
                    CancelCase{"CancelThenClose",
                               [](TestSupport::Step& s) { s.Click(QStringLiteral("cancelButton")).Close(); }}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

// Enter away from the Cancel button is an acceptance, which only the operation's completion gives.
TEST(ProgressDialog, EnterDoesNotEndTheDialog)
{
    TestHost host;
    FakeClock clock;
    const auto operation = MakeOperation();
    CheckedUser user;
    user.On(QStringLiteral("ProgressDialog"))
        .Inspect([](QWidget& inWindow) { inWindow.setFocus(); })
        .Press(Qt::Key_Return)
        .Inspect([&](QWidget& inWindow) {
            EXPECT_TRUE(inWindow.isVisible());
            operation->PostComplete();
        });
    EXPECT_TRUE(Progress(L"Conforming audio", operation));
    EXPECT_FALSE(operation->IsCancelRequested());
}

// Posted before the dialog exists, the completion is delivered once the dialog listens.
TEST(ProgressDialog, AnOperationThatCompletedBeforeTheDialogOpenedStillEndsIt)
{
    TestHost host;
    FakeClock clock;
    const auto operation = MakeOperation();
    operation->PostProgress(0.5f);
    operation->PostComplete();
    EXPECT_TRUE(Progress(L"Trimming", operation));
    EXPECT_THAT(clock.Sleeps(), ElementsAre(750));
}

TEST(ProgressDialog, OpensOverTheWindowThatIsModalNow)
{
    TestHost host(true);
    FakeClock clock;
    const auto operation = MakeOperation();
    QDialog outer(host.MainWindow());
    outer.setObjectName(QStringLiteral("ProjectManagerDialog"));
    bool result = false;
    CheckedUser user;
    user.On(QStringLiteral("ProjectManagerDialog")).Inspect([&](QWidget&) {
        result = DLG::ProgressDialog::DoProgressDialog(L"Collecting files", operation,
                                                       KOR::HWNDFromNode(host.Workspace().GetMainTopLevelWindow()));
        outer.accept();
    });
    user.On(QStringLiteral("ProgressDialog")).Inspect([&](QWidget& inWindow) {
        EXPECT_EQ(inWindow.parentWidget(), &outer);
        operation->PostComplete();
    });
    outer.exec();
    EXPECT_TRUE(result);
}

TEST(ProgressDialog, WithoutAnOperationTheContractFailsAndNothingOpens)
{
    TestHost host;
    EXPECT_THROW(Progress(L"Nothing", nullptr), zelcore::Error);
    EXPECT_THROW(DLG::RenderProgress::DoRenderProgressDialog(nullptr), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("inBatchOperation != NULL", "inBatchOperation != NULL"));
    EXPECT_EQ(host.Counts().autoSaveBlocks, 0);
}

// Nobody could follow or stop the operation, so it is asked to stop.
TEST(ProgressDialog, AMissingScriptReportsCancelsAndReturnsFalse)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    const auto operation = MakeOperation();
    CheckedUser user;
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    EXPECT_FALSE(Progress(L"Copying", operation));
    EXPECT_TRUE(operation->IsCancelRequested());
    EXPECT_EQ(host.Counts().autoSaveUnblocks, host.Counts().autoSaveBlocks);
}

TEST(FormatDuration, MinutesAndSecondsThenHours)
{
    EXPECT_EQ(DLG::FormatDuration(0), L"0:00");
    EXPECT_EQ(DLG::FormatDuration(59), L"0:59");
    EXPECT_EQ(DLG::FormatDuration(60), L"1:00");
    EXPECT_EQ(DLG::FormatDuration(3599), L"59:59");
    EXPECT_EQ(DLG::FormatDuration(3600), L"1:00:00");
    EXPECT_EQ(DLG::FormatDuration(36061), L"10:01:01");
    EXPECT_EQ(DLG::FormatDuration(-5), L"0:00");
}

TEST(RenderProgressDialog, DetailsShowElapsedTimeFromTheClockAndTheTimeLeft)
{
    TestHost host(true);
    FakeClock clock;
    const auto operation = MakeOperation();
    CheckedUser user;
    user.On(QStringLiteral("RenderProgressDialog"))
        .Inspect([&](QWidget& inWindow) {
            EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Rendering"));
            EXPECT_TRUE(inWindow.findChild<QGroupBox*>(QStringLiteral("detailsGroupBox"))->isHidden());
            EXPECT_EQ(TextOf(inWindow, "timeLeftStaticTextRight"), QStringLiteral("Estimating…"));
        })
        .Click(QStringLiteral("disclosureTriangle"))
        .Inspect([&](QWidget& inWindow) {
            EXPECT_FALSE(inWindow.findChild<QGroupBox*>(QStringLiteral("detailsGroupBox"))->isHidden());
            clock.Advance(65'400);
            operation->PostDescription(L"Rendering Main Edit");
            operation->PostTimeLeft(125.2);
            ASSERT_TRUE(WaitFor([&] { return TextOf(inWindow, "timeLeftStaticTextRight") == QStringLiteral("2:06"); }));
            EXPECT_EQ(TextOf(inWindow, "timeElapsedStaticTextRight"), QStringLiteral("1:05"));
            EXPECT_EQ(TextOf(inWindow, "progressTitleText"), QStringLiteral("Rendering Main Edit"));
            // Each estimate is followed by a description, so that its text is there once the
            // description shows.
            const std::vector<std::pair<double, QString>> estimates = {
                {-1.0, QStringLiteral("Estimating…")},
                {3600.0, QStringLiteral("1:00:00")},
                {1e30, QStringLiteral("Estimating…")},
                {0.2, QStringLiteral("0:01")},
                {std::numeric_limits<double>::infinity(), QStringLiteral("Estimating…")},
                {59.0, QStringLiteral("0:59")},
                {std::nan(""), QStringLiteral("Estimating…")},
            };
            for (std::size_t i = 0; i < estimates.size(); ++i) {
                const QString marker = QStringLiteral("estimate %1").arg(i);
                operation->PostTimeLeft(estimates[i].first);
                operation->PostDescription(marker.toStdWString());
                ASSERT_TRUE(WaitFor([&] { return TextOf(inWindow, "progressTitleText") == marker; }));
                EXPECT_EQ(TextOf(inWindow, "timeLeftStaticTextRight"), estimates[i].second) << estimates[i].first;
            }
        })
        .Press(Qt::Key_Space) // the check box has the focus since the click
        .Inspect([&](QWidget& inWindow) {
            EXPECT_TRUE(inWindow.findChild<QGroupBox*>(QStringLiteral("detailsGroupBox"))->isHidden());
            operation->PostProgress(0.4f);
            operation->PostComplete();
        });
    EXPECT_TRUE(DLG::RenderProgress::DoRenderProgressDialog(operation));
}

TEST(RenderProgressDialog, CancelReturnsFalseOnceTheOperationConfirms)
{
    TestHost host;
    const KOR::InterfaceRef<WorkerOperation> operation(new WorkerOperation);
    operation->Start(operation);
    CheckedUser user;
    user.On(QStringLiteral("RenderProgressDialog")).Press(Qt::Key_Escape).Inspect([&](QWidget&) {
        operation->AllowToFinish();
    });
    EXPECT_FALSE(DLG::RenderProgress::DoRenderProgressDialog(operation));
    EXPECT_TRUE(operation->IsCancelRequested());
}

} // namespace
