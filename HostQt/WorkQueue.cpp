// The shared threaded work queue on QThreadPool, and the host's clock.

#include "HostQt/WorkQueue.h"

#include <QThread>
#include <QtGlobal>

#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>

#include "KOR/Services.h"
#include "zelcore/Error.h"

namespace {
// Operations may wait on a file or a lock; a few threads more than cores keep the queue moving.
constexpr int kMinimumThreads = 4;
} // namespace

namespace HostQt {

class WorkQueue::PriorityQueue : public KOR::ThreadedWorkQueue {
public:
    PriorityQueue(QThreadPool& inPool, int inPriority) : mPool(inPool), mPriority(inPriority) {}

    void QueueRequest(std::function<void()> inRequest) override
    {
        mPool.start(
            [request = std::move(inRequest)] {
                try {
                    request();
                } catch (const std::exception& error) {
                    qCritical("A queued request raised an error; it was dropped: %s", error.what());
                } catch (...) {
                    qCritical("A queued request raised an error; it was dropped.");
                }
            },
            mPriority);
    }

private:
    QThreadPool& mPool;
    int mPriority;
};

WorkQueue::WorkQueue() { mPool.setMaxThreadCount(std::max(kMinimumThreads, QThread::idealThreadCount())); }

WorkQueue::~WorkQueue() { Shutdown(); }

KOR::ThreadedWorkQueue& WorkQueue::RetrieveOrCreate(int inPriority)
{
    std::lock_guard lock(mMutex);
    std::unique_ptr<PriorityQueue>& queue = mQueues[inPriority];
    if (!queue) {
        queue = std::make_unique<PriorityQueue>(mPool, inPriority);
    }
    return *queue;
}

void WorkQueue::Shutdown()
{
    mPool.clear();
    mPool.waitForDone();
}

std::int64_t SteadyClock::Milliseconds() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void SteadyClock::Sleep(std::int64_t inMilliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(inMilliseconds));
}

} // namespace HostQt

namespace KOR {

ThreadedWorkQueue::~ThreadedWorkQueue() = default;

const InterfaceID IThreadedQueueRequest::kIID = {0x4b, 0x4f, 0x52, 0x51, 0x75, 0x65, 0x75, 0x65,
                                                 0x52, 0x65, 0x71, 0x00, 0x00, 0x00, 0x00, 0x01};
IThreadedQueueRequest::~IThreadedQueueRequest() = default;

bool ThreadedWorkQueue::QueueRequest(const InterfaceRef<IThreadedQueueRequest>& inRequest)
{
    if (!inRequest) {
        return false;
    }
    QueueRequest([inRequest] { inRequest->Run(); });
    return true;
}
SharedThreadedWorkQueue::~SharedThreadedWorkQueue() = default;

SharedThreadedWorkQueue& SharedThreadedWorkQueue::Instance()
{
    SharedThreadedWorkQueue* queue = Services().workQueue;
    if (!queue) {
        zelcore::config::ThrowError(L"$$$/KOR/Error/NoWorkQueue=The host runs no work queue.");
    }
    return *queue;
}

ClockService::~ClockService() = default;

namespace Clock {

std::int64_t GetMilliseconds()
{
    if (const ClockService* clock = Services().clock) {
        return clock->Milliseconds();
    }
    return HostQt::SteadyClock().Milliseconds();
}

void SleepMilliseconds(std::int64_t inMilliseconds)
{
    if (inMilliseconds <= 0) {
        return;
    }
    if (ClockService* clock = Services().clock) {
        clock->Sleep(inMilliseconds);
    } else {
        HostQt::SteadyClock().Sleep(inMilliseconds);
    }
}

} // namespace Clock

} // namespace KOR
