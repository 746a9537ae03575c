#pragma once

#include <QThreadPool>

#include <map>
#include <memory>
#include <mutex>

#include "KOR/Clock.h"
#include "KOR/WorkQueue.h"

namespace HostQt {

// The shared work queue on a pool of its own. Destroying it waits for the requests that run
// and drops those that have not started.
class WorkQueue : public KOR::SharedThreadedWorkQueue {
public:
    WorkQueue();
    ~WorkQueue() override;

    KOR::ThreadedWorkQueue& RetrieveOrCreate(int inPriority) override;
    // Drops the waiting requests and returns when the running ones have ended.
    void Shutdown();

private:
    class PriorityQueue;

    QThreadPool mPool;
    std::mutex mMutex;
    std::map<int, std::unique_ptr<PriorityQueue>> mQueues;
};

// The steady system clock; sleeping blocks the calling thread.
class SteadyClock : public KOR::ClockService {
public:
    std::int64_t Milliseconds() const override;
    void Sleep(std::int64_t inMilliseconds) override;
};

} // namespace HostQt
