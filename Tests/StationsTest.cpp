// Station messages posted from worker threads, and the shared work queue.

#include <QApplication>
#include <QTest>
#include <QThread>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "KOR/BatchOperation.h"
#include "KOR/Clock.h"
#include "KOR/Services.h"
#include "KOR/Stations.h"
#include "KOR/WorkQueue.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kWaitLimitMs = 10000;

bool WaitFor(const std::function<bool()>& inCondition) { return QTest::qWaitFor(inCondition, kWaitLimitMs); }

KOR::MessagePtr Progress(float inFraction) { return std::make_shared<KOR::UpdateOperationProgressMessage>(inFraction); }

// Remembers what it heard and on which thread.
class RecordingListener : public KOR::Listener {
public:
    void ListenerMessageHandler(const std::wstring&, const KOR::Message& inMessage) override
    {
        onUIThread = onUIThread && QThread::currentThread() == QApplication::instance()->thread();
        if (const auto* progress = dynamic_cast<const KOR::UpdateOperationProgressMessage*>(&inMessage)) {
            fractions.push_back(progress->GetFraction());
        }
        if (dynamic_cast<const KOR::OperationCompleteMessage*>(&inMessage)) {
            ++completions;
        }
        if (onMessage) {
            onMessage();
        }
    }
    std::vector<float> fractions;
    int completions = 0;
    bool onUIThread = true;
    std::function<void()> onMessage;
};

class Station {
public:
    Station() : mName(KOR::StationRegistry::RegisterUniqueStation()) {}
    ~Station() { KOR::StationRegistry::DisposeStation(mName); }
    const std::wstring& Name() const { return mName; }

private:
    std::wstring mName;
};

TEST(Stations, MessagesFromWorkerThreadsArriveOnTheUIThreadInEachThreadsOrder)
{
    Station station;
    RecordingListener listener;
    KOR::StationUtils::AddListener(station.Name(), &listener);
    constexpr int kPerThread = 200;
    // Thread a posts fractions in [0, 1), thread b in [1, 2): each run must come in order.
    auto post = [&](float inBase) {
        for (int i = 0; i < kPerThread; ++i) {
            KOR::StationUtils::PostMessage(station.Name(), Progress(inBase + static_cast<float>(i) / kPerThread));
        }
    };
    std::thread a(post, 0.0f);
    std::thread b(post, 1.0f);
    a.join();
    b.join();
    EXPECT_THAT(listener.fractions, IsEmpty()) << "delivered only when the UI thread runs its events";

    ASSERT_TRUE(WaitFor([&] { return listener.fractions.size() == 2 * kPerThread; }));
    EXPECT_TRUE(listener.onUIThread);
    std::vector<float> fromA;
    std::vector<float> fromB;
    for (const float fraction : listener.fractions) {
        (fraction < 1.0f ? fromA : fromB).push_back(fraction);
    }
    ASSERT_EQ(fromA.size(), static_cast<std::size_t>(kPerThread));
    EXPECT_TRUE(std::is_sorted(fromA.begin(), fromA.end()));
    EXPECT_TRUE(std::is_sorted(fromB.begin(), fromB.end()));
}

// Removed after the post, destroyed after it, or removed by an earlier listener's handler during
// the delivery: none of them is called.
TEST(Stations, ListenersGoneBeforeTheirCallAreNotCalled)
{
    Station station;
    RecordingListener first;
    RecordingListener removedByFirst;
    RecordingListener removed;
    auto destroyed = std::make_unique<RecordingListener>();
    RecordingListener last;
    first.onMessage = [&] { KOR::StationUtils::RemoveListener(station.Name(), &removedByFirst); };
    for (RecordingListener* listener : {&first, &removedByFirst, &removed, destroyed.get(), &last}) {
        KOR::StationUtils::AddListener(station.Name(), listener);
    }
    KOR::StationUtils::PostMessage(station.Name(), Progress(0.5f));
    KOR::StationUtils::RemoveListener(station.Name(), &removed);
    destroyed.reset();
    ASSERT_TRUE(WaitFor([&] { return !last.fractions.empty(); }));
    EXPECT_THAT(first.fractions, ElementsAre(0.5f));
    EXPECT_THAT(removedByFirst.fractions, IsEmpty());
    EXPECT_THAT(removed.fractions, IsEmpty());
    EXPECT_FALSE(KOR::StationUtils::IsListening(station.Name(), &removed));
}

TEST(Stations, ADisposedStationDropsItsListenersAndMessages)
{
    RecordingListener listener;
    Station sentinel;
    RecordingListener sentinelListener;
    KOR::StationUtils::AddListener(sentinel.Name(), &sentinelListener);
    std::wstring name;
    {
        Station station;
        name = station.Name();
        KOR::StationUtils::AddListener(name, &listener);
        KOR::StationUtils::PostMessage(name, Progress(0.5f));
    }
    KOR::StationUtils::PostMessage(sentinel.Name(), Progress(1.0f));
    ASSERT_TRUE(WaitFor([&] { return !sentinelListener.fractions.empty(); }));
    EXPECT_THAT(listener.fractions, IsEmpty());
    EXPECT_FALSE(KOR::StationUtils::IsListening(name, &listener));
}

TEST(Stations, MessageIdentifiersAreTheFnv1aHashOfTheTypeName)
{
    EXPECT_EQ(KOR::HashMessageTypeNameToMessageID(""), 2166136261u);
    EXPECT_EQ(KOR::HashMessageTypeNameToMessageID("a"), 0xe40c292cu);
    EXPECT_EQ(KOR::OperationCompleteMessage().GetID(),
              KOR::HashMessageTypeNameToMessageID("KOR::OperationCompleteMessage"));
    const std::set<KOR::MessageID> ids = {KOR::OperationCompleteMessage().GetID(), Progress(0)->GetID(),
                                          KOR::UpdateOperationDescriptionMessage(L"").GetID(),
                                          KOR::UpdateOperationTimeLeftMessage(0).GetID()};
    EXPECT_EQ(ids.size(), 4u);
}

// Requests wait for each other: they all finish only when they run at the same time.
TEST(WorkQueue, RequestsRunTogetherOnWorkerThreads)
{
    TestSupport::TestHost host;
    constexpr int kRequests = 4;
    std::mutex mutex;
    std::condition_variable allStarted;
    std::set<std::thread::id> threads;
    std::atomic<int> finished{0};
    KOR::ThreadedWorkQueue& queue = KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(3);
    EXPECT_EQ(&queue, &KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(3));
    for (int i = 0; i < kRequests; ++i) {
        queue.QueueRequest([&] {
            std::unique_lock lock(mutex);
            threads.insert(std::this_thread::get_id());
            allStarted.notify_all();
            if (allStarted.wait_for(lock, std::chrono::seconds(10), [&] { return threads.size() == kRequests; })) {
                ++finished;
            }
        });
    }
    ASSERT_TRUE(WaitFor([&] { return finished == kRequests; }));
    std::lock_guard lock(mutex);
    EXPECT_EQ(threads.count(std::this_thread::get_id()), 0u);
}

// A request still running when the host goes keeps the host's services to the end.
TEST(WorkQueue, DestroyingTheHostWaitsForTheRunningRequestWithItsServicesInPlace)
{
    auto host = std::make_unique<TestSupport::TestHost>();
    const KOR::ClockService* const clock = KOR::Services().clock;
    ASSERT_NE(clock, nullptr);
    std::atomic<bool> started{false};
    std::atomic<bool> leaving{false};
    std::atomic<bool> finished{false};
    std::atomic<bool> hadTheClock{false};
    KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(0).QueueRequest([&] {
        started = true;
        while (!leaving) {
            std::this_thread::yield();
        }
        // Still at work well after the host began to go.
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        hadTheClock = KOR::Services().clock == clock;
        finished = true;
    });
    while (!started) {
        std::this_thread::yield();
    }
    leaving = true;
    host.reset();
    EXPECT_TRUE(finished);
    EXPECT_TRUE(hadTheClock);
}

// What the host reports with qCritical, from any thread, while it lives.
class CriticalMessages {
public:
    CriticalMessages()
    {
        sMessages.clear();
        sPrevious = qInstallMessageHandler(&Handle);
    }
    ~CriticalMessages() { qInstallMessageHandler(sPrevious); }
    bool Contains(const QString& inText) const
    {
        std::lock_guard lock(sMutex);
        return sMessages.filter(inText).size() == 1;
    }

private:
    static void Handle(QtMsgType inType, const QMessageLogContext& inContext, const QString& inText)
    {
        if (inType != QtCriticalMsg) {
            sPrevious(inType, inContext, inText);
            return;
        }
        std::lock_guard lock(sMutex);
        sMessages << inText;
    }

    static inline QtMessageHandler sPrevious = nullptr;
    static inline std::mutex sMutex;
    static inline QStringList sMessages;
};

class Operation : public KOR::RefCounted<KOR::BatchOperation> {};

struct FailureCase {
    const char* name;
    std::function<void()> fail;
    QString reported;
    friend void PrintTo(const FailureCase& inCase, std::ostream* outStream) { *outStream << inCase.name; }
};

class WorkQueueFailure : public testing::TestWithParam<FailureCase> {};

// A failing worker neither takes the process down unreported nor leaves the operation's dialog
// waiting for an end that never comes; the pool goes on running requests.
TEST_P(WorkQueueFailure, IsReportedAndTheOperationStillCompletes)
{
    TestSupport::TestHost host;
    CriticalMessages critical;
    const KOR::InterfaceRef<Operation> operation(new Operation);
    RecordingListener listener;
    KOR::StationUtils::AddListener(operation->GetMessageStationName(), &listener);
    KOR::ThreadedWorkQueue& queue = KOR::SharedThreadedWorkQueue::Instance().RetrieveOrCreate(3);
    queue.QueueRequest([operation, fail = GetParam().fail] {
        operation->RunToCompletion([&] {
            operation->PostProgress(0.5f);
            fail();
        });
    });
    ASSERT_TRUE(WaitFor([&] { return listener.completions == 1; }));
    EXPECT_THAT(listener.fractions, ElementsAre(0.5f));
    EXPECT_TRUE(WaitFor([&] { return critical.Contains(GetParam().reported); }));

    std::atomic<bool> ranAfter{false};
    queue.QueueRequest([&] { ranAfter = true; });
    EXPECT_TRUE(WaitFor([&] { return ranAfter.load(); }));
}

INSTANTIATE_TEST_SUITE_P(
    Errors, WorkQueueFailure,
    testing::Values(FailureCase{"StandardError", [] { throw std::runtime_error("the disk is full"); },
                                QStringLiteral("dropped: the disk is full")},
                    FailureCase{"HostError", [] { zelcore::config::ThrowError(L"No media drive."); },
                                QStringLiteral("dropped: No media drive.")},
                    FailureCase{"AnythingElse", [] { throw 42; }, QStringLiteral("it was dropped.")}),
    [](const auto& inInfo) { return std::string(inInfo.param.name); });

TEST(WorkQueue, WithoutAHostInstanceRaisesTheHostError)
{
    const KOR::ServiceTable saved = KOR::Services();
    KOR::Services().workQueue = nullptr;
    EXPECT_THROW(KOR::SharedThreadedWorkQueue::Instance(), zelcore::Error);
    KOR::Services() = saved;
}

TEST(Stations, ANamedStationIsNumberedWhileItsNameIsTakenAndNeverSharesOne)
{
    using KOR::StationRegistry;
    const std::wstring name = L"test.named.station";
    const std::wstring first = StationRegistry::RegisterStation(name);
    const std::wstring second = StationRegistry::RegisterStation(name);
    EXPECT_EQ(first, name);
    EXPECT_TRUE(second.starts_with(name + L"."));
    StationRegistry::DisposeStation(first);
    EXPECT_TRUE(StationRegistry::IsRegistered(second)) << "disposing one leaves the other";
    EXPECT_EQ(StationRegistry::RegisterStation(name), name) << "the name is free again";

    // A unique station skips a name that a named one took.
    const std::wstring unique = StationRegistry::RegisterUniqueStation();
    const std::wstring next = L"station." + std::to_wstring(std::stoull(unique.substr(unique.find(L'.') + 1)) + 1);
    EXPECT_EQ(StationRegistry::RegisterStation(next), next);
    const std::wstring after = StationRegistry::RegisterUniqueStation();
    EXPECT_NE(after, next);
    for (const std::wstring& station : {name, second, unique, next, after}) {
        StationRegistry::DisposeStation(station);
    }
}

} // namespace
