// The conform dialog through its entry functions, over the reference host's real conforming on
// the shared work queue, and its operation on its own.

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>

#include <condition_variable>
#include <mutex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CheckedUser.h"
#include "ConformSupport.h"
#include "DLG/ConformDialog.h"
#include "HostQt/Conform.h"
#include "HostQt/Sequences.h"
#include "KOR/WorkQueue.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using ConformSupport::CacheFiles;
using ConformSupport::MediaEntry;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::CheckedUser;
using TestSupport::TestHost;

constexpr int kWaitLimitMs = 20000;

bool WaitFor(const std::function<bool()>& inCondition) { return QTest::qWaitFor(inCondition, kWaitLimitMs); }

// Keeps every thread of the host's work queue busy until released, so that a conform queued
// meanwhile waits: the reference host's pool has four threads or one per core if more.
class WorkQueueHold {
public:
    WorkQueueHold()
    {
        const int threads = std::max(4, QThread::idealThreadCount());
        for (int i = 0; i < threads; ++i) {
            KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(3).QueueRequest([state = mState] {
                std::unique_lock lock(state->mutex);
                ++state->running;
                state->changed.notify_all();
                state->changed.wait(lock, [&] { return state->released; });
            });
        }
        std::unique_lock lock(mState->mutex);
        mHolding = mState->changed.wait_for(lock, std::chrono::seconds(10), [&] { return mState->running == threads; });
    }
    ~WorkQueueHold() { Release(); }
    bool Holding() const { return mHolding; }
    void Release()
    {
        std::lock_guard lock(mState->mutex);
        mState->released = true;
        mState->changed.notify_all();
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        int running = 0;
        bool released = false;
    };
    std::shared_ptr<State> mState = std::make_shared<State>();
    bool mHolding = false;
};

QString TextOf(QWidget& inWindow)
{
    const auto* label = inWindow.findChild<QLabel*>(QStringLiteral("mediaNameStaticText"));
    return label ? label->text() : QStringLiteral("<no label>");
}
QProgressBar* Bar(QWidget& inWindow) { return inWindow.findChild<QProgressBar*>(QStringLiteral("progressBar")); }
QPushButton* CancelButton(QWidget& inWindow)
{
    return inWindow.findChild<QPushButton*>(QStringLiteral("cancelButton"));
}

BE::SequenceRef FirstSequence(const BE::ProjectRef& inProject) { return inProject->GetSequences().front(); }

// A project of one media "Alpha" at a.wav, used by a sequence "Cut" and a child clip "Alpha part".
class ConformDialogTest : public testing::Test {
protected:
    ConformDialogTest() : mHost(true) {}
    ~ConformDialogTest() override { HostQt::SetOpenProject(nullptr); }

    QString At(const QString& inName) const { return mMedia.filePath(inName); }
    BE::ProjectRef Project(double inSeconds, const QString& inFile = QStringLiteral("a.wav"))
    {
        if (inSeconds > 0) {
            ConformSupport::WriteToneWav(At(inFile), 48000, 2, inSeconds);
        }
        const QJsonArray childClips{QJsonObject{{"name", "Alpha part"}, {"clip", "Alpha"}, {"in", 1}, {"out", 4}}};
        const QJsonArray sequences{QJsonObject{
            {"name", "Cut"},
            {"items",
             QJsonArray{QJsonObject{{"clip", "Alpha"}, {"track", "A1"}, {"start", 0}, {"in", 0}, {"out", 4}}}}}};
        BE::ProjectRef project = ConformSupport::MakeProject(At("project.json"), 48000,
                                                             {MediaEntry("Alpha", At(inFile))}, childClips, sequences);
        HostQt::SetOpenProject(project);
        return project;
    }
    bool Conformed(const QString& inFile = QStringLiteral("a.wav")) const
    {
        return QFileInfo(HostQt::ConformedAudioPath(At(inFile), 0, 48000)).isFile();
    }

    TestHost mHost;
    QTemporaryDir mMedia;
};

struct KindCase {
    const char* name;
    std::function<bool(const BE::ProjectRef&)> open;
    friend void PrintTo(const KindCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ConformDialogKinds : public ConformDialogTest, public testing::WithParamInterface<KindCase> {};

// The first time the dialog conforms and confirms; the second time nothing is left, so no dialog.
TEST_P(ConformDialogKinds, ConformsWithTheDialogThenAnswersAtOnce)
{
    const BE::ProjectRef project = Project(1.0);
    WorkQueueHold hold;
    ASSERT_TRUE(hold.Holding());
    {
        CheckedUser user;
        user.On(QStringLiteral("ConformDialog")).Inspect([&](QWidget& inWindow) {
            EXPECT_EQ(inWindow.parentWidget(), mHost.MainWindow());
            EXPECT_EQ(inWindow.windowTitle(), QStringLiteral("Conforming Audio"));
            EXPECT_EQ(TextOf(inWindow), QStringLiteral("Looking for audio to conform…"));
            hold.Release();
            ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
            EXPECT_EQ(Bar(inWindow)->value(), Bar(inWindow)->maximum());
            EXPECT_EQ(TextOf(inWindow), QStringLiteral("Conforming audio of “Alpha”"));
        });
        EXPECT_TRUE(GetParam().open(project));
    }
    EXPECT_TRUE(Conformed());
    CheckedUser nobody;
    EXPECT_TRUE(GetParam().open(project));
}

INSTANTIATE_TEST_SUITE_P(
    Scopes, ConformDialogKinds,
    testing::Values(
        KindCase{"Project", [](const BE::ProjectRef& inProject) { return DLG::DoConformDialog(inProject); }},
        KindCase{"Sequence",
                 [](const BE::ProjectRef& inProject) { return DLG::DoConformDialog(FirstSequence(inProject)); }},
        KindCase{"Clip",
                 [](const BE::ProjectRef& inProject) {
                     return DLG::DoConformDialog(FirstSequence(inProject)->GetClips().front());
                 }},
        KindCase{
            "ChildClip",
            [](const BE::ProjectRef& inProject) { return DLG::DoConformDialog(inProject->GetChildClips().front()); }},
        KindCase{
            "MasterClip",
            [](const BE::ProjectRef& inProject) { return DLG::DoConformDialog(inProject->GetMasterClips().front()); }},
        KindCase{"TrackItemSelection",
                 [](const BE::ProjectRef& inProject) {
                     return DLG::DoConformDialog(HostQt::MakeTrackItemSelection(FirstSequence(inProject)->GetClips()));
                 }},
        KindCase{"ProjectItemSelection",
                 [](const BE::ProjectRef& inProject) {
                     return DLG::DoConformDialog(HostQt::MakeProjectItemSelection({}, {}, inProject->GetSequences()));
                 }}),
    [](const testing::TestParamInfo<KindCase>& inInfo) { return inInfo.param.name; });

// Offline media and null scopes have nothing to conform: true, and no window opens.
TEST_F(ConformDialogTest, NothingToConformMeansTrueWithoutADialog)
{
    const BE::ProjectRef offline = Project(0, QStringLiteral("gone.wav"));
    CheckedUser nobody;
    EXPECT_TRUE(DLG::DoConformDialog(offline));
    EXPECT_TRUE(DLG::DoConformDialog(offline->GetMasterClips().front()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::ProjectRef()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::ClipRef()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::SequenceRef()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::ChildClipRef()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::MasterClipRef()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::TrackItemSelectionRef()));
    EXPECT_TRUE(DLG::DoConformDialog(BE::ProjectItemSelectionRef()));
}

struct CancelCase {
    const char* name;
    std::function<void(TestSupport::Step&)> cancel;
    friend void PrintTo(const CancelCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ConformDialogCancel : public ConformDialogTest, public testing::WithParamInterface<CancelCase> {};

// Cancelled before the worker began: the conform stops at its first abort question and leaves
// nothing; the dialog waits for its end and says the work was not done.
TEST_P(ConformDialogCancel, BeforeTheWorkerStartsLeavesNothing)
{
    const BE::ProjectRef project = Project(1.0);
    WorkQueueHold hold;
    ASSERT_TRUE(hold.Holding());
    CheckedUser user;
    TestSupport::Step& step = user.On(QStringLiteral("ConformDialog"));
    GetParam().cancel(step);
    step.Inspect([&](QWidget& inWindow) {
        EXPECT_TRUE(inWindow.isVisible()) << "the dialog waits for the worker";
        EXPECT_EQ(TextOf(inWindow), QStringLiteral("Stopping…"));
        EXPECT_FALSE(CancelButton(inWindow)->isEnabled());
        hold.Release();
        ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
        EXPECT_EQ(Bar(inWindow)->value(), 0);
    });
    EXPECT_FALSE(DLG::DoConformDialog(project));
    EXPECT_THAT(CacheFiles(), IsEmpty());
    EXPECT_TRUE(ML::ConformUtils::NeedsConform(project, false, L"", nullptr));
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ConformDialogCancel,
    testing::Values(CancelCase{"CancelButton", [](TestSupport::Step& s) { s.Click(QStringLiteral("cancelButton")); }},
                    CancelCase{"Escape", [](TestSupport::Step& s) { s.Press(Qt::Key_Escape); }},
                    CancelCase{"CloseTheWindow", [](TestSupport::Step& s) { s.Close(); }}),
    [](const testing::TestParamInfo<CancelCase>& inInfo) { return inInfo.param.name; });

// Four minutes of audio give the user time to stop once the bar moved.
TEST_F(ConformDialogTest, CancelledPartWayLeavesNoHalfFile)
{
    const BE::ProjectRef project = Project(240.0);
    WorkQueueHold hold;
    ASSERT_TRUE(hold.Holding());
    int valueWhenCancelled = -1;
    CheckedUser user;
    user.On(QStringLiteral("ConformDialog"))
        .Inspect([&](QWidget& inWindow) {
            hold.Release();
            ASSERT_TRUE(WaitFor([&] { return Bar(inWindow)->value() > 0; }));
        })
        .Click(QStringLiteral("cancelButton"))
        .Inspect([&](QWidget& inWindow) {
            valueWhenCancelled = Bar(inWindow)->value();
            ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
        });
    EXPECT_FALSE(DLG::DoConformDialog(project));
    EXPECT_GT(valueWhenCancelled, 0);
    EXPECT_LT(valueWhenCancelled, 10000);
    EXPECT_THAT(CacheFiles(), IsEmpty());
    EXPECT_FALSE(Conformed());
}

// Progress posted on the dialog station shows as well; only the operation's end closes the dialog.
// Once the dialog is gone its listener is too: a message to the station reaches nobody.
TEST_F(ConformDialogTest, ShowsProgressFromTheDialogStation)
{
    const BE::ProjectRef project = Project(1.0);
    WorkQueueHold hold;
    ASSERT_TRUE(hold.Holding());
    CheckedUser user;
    user.On(QStringLiteral("ConformDialog")).Inspect([&](QWidget& inWindow) {
        KOR::StationUtils::PostMessage(DLG::ConformDialogStation(),
                                       std::make_shared<ML::AudioConformationProgress>(L"Gulls", 0, 0.25f));
        KOR::StationUtils::PostMessage(DLG::ConformDialogStation(),
                                       std::make_shared<ML::AudioConformationFinished>(true, L""));
        ASSERT_TRUE(WaitFor([&] { return Bar(inWindow)->value() == 2500; }));
        EXPECT_EQ(TextOf(inWindow), QStringLiteral("Conforming audio of “Gulls”"));
        EXPECT_TRUE(inWindow.isVisible());
        hold.Release();
        ASSERT_TRUE(WaitFor([&] { return !inWindow.isVisible(); }));
    });
    EXPECT_TRUE(DLG::DoConformDialog(project));
    KOR::StationUtils::PostMessage(DLG::ConformDialogStation(),
                                   std::make_shared<ML::AudioConformationProgress>(L"Gulls", 0, 0.5f));
    QCoreApplication::processEvents();
}

TEST_F(ConformDialogTest, AFailureIsToldAndTheDialogIsNotConfirmed)
{
    QFile notes(At("notes.wav"));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.write("Shot list: harbour at dawn, gulls, the ferry leaving.\n");
    notes.close();
    const BE::ProjectRef project = Project(0, QStringLiteral("notes.wav"));
    WorkQueueHold hold;
    ASSERT_TRUE(hold.Holding());
    CheckedUser user;
    user.On(QStringLiteral("ConformDialog")).Inspect([&](QWidget&) { hold.Release(); });
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    EXPECT_FALSE(DLG::DoConformDialog(project));
    ASSERT_EQ(user.MessageBoxes().size(), 1u);
    EXPECT_EQ(user.MessageBoxes()[0].caption, QStringLiteral("Conforming Audio"));
    EXPECT_TRUE(
        user.MessageBoxes()[0].text.startsWith(QStringLiteral("Some audio could not be conformed.\n\nAlpha: ")));
}

using OperationRef = KOR::InterfaceRef<DLG::ConformDialogOperation>;

OperationRef MakeOperation() { return OperationRef(new DLG::ConformDialogOperation(nullptr)); }

std::uint32_t References(DLG::ConformDialogOperation& inOperation)
{
    inOperation.AddRef();
    return inOperation.Release();
}

struct InterfaceCase {
    const char* name;
    KOR::InterfaceID id;
    std::function<void*(DLG::ConformDialogOperation&)> expected;
    friend void PrintTo(const InterfaceCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class ConformOperationInterfaces : public testing::TestWithParam<InterfaceCase> {};

TEST_P(ConformOperationInterfaces, AnswerWithTheRightPartOfTheOneObject)
{
    TestHost host;
    const OperationRef operation = MakeOperation();
    void* object = nullptr;
    ASSERT_TRUE(operation->QueryInterface(GetParam().id, &object));
    EXPECT_EQ(object, GetParam().expected(*operation));
    EXPECT_EQ(References(*operation), 2u);
    operation->Release();
    EXPECT_EQ(References(*operation), 1u);
}

INSTANTIATE_TEST_SUITE_P(
    Ids, ConformOperationInterfaces,
    testing::Values(InterfaceCase{"Unknown", KOR::KORUnknown::kIID,
                                  [](auto& inOp) -> void* {
                                      return static_cast<KOR::KORUnknown*>(static_cast<KOR::IBatchOperation*>(&inOp));
                                  }},
                    InterfaceCase{"BatchOperation", KOR::IBatchOperation::kIID,
                                  [](auto& inOp) -> void* { return static_cast<KOR::IBatchOperation*>(&inOp); }},
                    InterfaceCase{"QueueRequest", KOR::IThreadedQueueRequest::kIID,
                                  [](auto& inOp) -> void* { return static_cast<KOR::IThreadedQueueRequest*>(&inOp); }},
                    InterfaceCase{"Abort", MF::IAbort::kIID,
                                  [](auto& inOp) -> void* { return static_cast<MF::IAbort*>(&inOp); }},
                    InterfaceCase{"Itself", DLG::ConformDialogOperation::kIID,
                                  [](auto& inOp) -> void* { return static_cast<void*>(&inOp); }}),
    [](const testing::TestParamInfo<InterfaceCase>& inInfo) { return inInfo.param.name; });

TEST(ConformOperation, RefusesOtherInterfaces)
{
    TestHost host;
    const OperationRef operation = MakeOperation();
    void* object = operation.Get();
    EXPECT_FALSE(operation->QueryInterface(BE::IMedia::kIID, &object));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(References(*operation), 1u);
}

TEST(ConformOperation, OwnsItsStationForItsLifeAndCancelOnlyRaisesTheFlag)
{
    TestHost host;
    OperationRef operation = MakeOperation();
    const std::wstring station = operation->GetMessageStationName();
    EXPECT_TRUE(KOR::StationRegistry::IsRegistered(station));
    EXPECT_EQ(operation->GetName(), L"Conforming Audio");
    EXPECT_EQ(operation->GetSelf().Get(), operation.Get());
    EXPECT_FALSE(operation->IsAborted());
    operation->RequestCancel();
    EXPECT_TRUE(operation->IsAborted());
    EXPECT_TRUE(operation->IsCancelRequested());
    operation.Reset();
    EXPECT_FALSE(KOR::StationRegistry::IsRegistered(station));
}

// Without a dialog the queued work ends at once: the queue lets go of it and nothing is posted.
TEST(ConformOperation, WithoutADialogEndsAtOnceAndStartsOnlyOnce)
{
    TestHost host;
    const OperationRef operation = MakeOperation();
    ConformSupport::MessageLog log;
    KOR::StationUtils::AddListener(operation->GetMessageStationName(), &log);
    EXPECT_TRUE(operation->Start());
    ASSERT_TRUE(WaitFor([&] { return References(*operation) == 1; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(log.startedCount, 0);
    EXPECT_FALSE(log.finished);

    EXPECT_THROW(operation->Start(), zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, ElementsAre("!mStarted"));
}

TEST(ConformDialogStation, IsRegisteredOnceUnderItsName)
{
    TestHost host;
    const std::wstring& station = DLG::ConformDialogStation();
    EXPECT_EQ(station, L"DLG.ConformAudioDlgStation");
    EXPECT_TRUE(KOR::StationRegistry::IsRegistered(station));
    EXPECT_EQ(&DLG::ConformDialogStation(), &station);
    EXPECT_EQ(DLG::ConformDialogStation(), L"DLG.ConformAudioDlgStation");
}

} // namespace
