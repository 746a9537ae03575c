#pragma once

#include <functional>

#include "KOR/HostAPI.h"
#include "KOR/InterfaceRef.h"
#include "KOR/KORUnknown.h"

namespace KOR {

// A piece of work that can be queued as an object: the queue holds a reference to it until it
// has run.
class HOST_API IThreadedQueueRequest : public KORUnknown {
public:
    static const InterfaceID kIID;

    virtual void Run() = 0;

protected:
    ~IThreadedQueueRequest() override;
};

// Runs requests on worker threads, never on the UI thread. A request talks back only through
// station messages and reads its operation's abort flag; what it throws is reported by the
// host and dropped (see BatchOperation::RunToCompletion for the completion it still owes).
class HOST_API ThreadedWorkQueue {
public:
    virtual ~ThreadedWorkQueue();
    virtual void QueueRequest(std::function<void()> inRequest) = 0;
    // Queues inRequest's Run; false when there is no request.
    bool QueueRequest(const InterfaceRef<IThreadedQueueRequest>& inRequest);
};

// The host's one pool of worker threads, shared by every operation. Among the requests
// waiting for a thread, those of a higher priority start first.
class HOST_API SharedThreadedWorkQueue {
public:
    virtual ~SharedThreadedWorkQueue();

    // The installed queue; raises the host error when the host runs none.
    static SharedThreadedWorkQueue& Instance();
    // The queue of inPriority, made on first use; it lives as long as the host.
    virtual ThreadedWorkQueue& RetrieveOrCreate(int inPriority) = 0;
};

} // namespace KOR
