#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "KOR/KORUnknown.h"
#include "KOR/Stations.h"

namespace KOR {

// What a batch operation broadcasts on its station while it runs.
class HOST_API OperationCompleteMessage : public Message {
public:
    static constexpr const char* kTypeName = "KOR::OperationCompleteMessage";
    OperationCompleteMessage();
    ~OperationCompleteMessage() override;
};

class HOST_API UpdateOperationProgressMessage : public Message {
public:
    static constexpr const char* kTypeName = "KOR::UpdateOperationProgressMessage";
    explicit UpdateOperationProgressMessage(float inFraction);
    ~UpdateOperationProgressMessage() override;
    float GetFraction() const { return mFraction; } // 0 to 1

private:
    float mFraction;
};

class HOST_API UpdateOperationDescriptionMessage : public Message {
public:
    static constexpr const char* kTypeName = "KOR::UpdateOperationDescriptionMessage";
    explicit UpdateOperationDescriptionMessage(std::wstring inDescription);
    ~UpdateOperationDescriptionMessage() override;
    const std::wstring& GetDescription() const { return mDescription; }

private:
    std::wstring mDescription;
};

class HOST_API UpdateOperationTimeLeftMessage : public Message {
public:
    static constexpr const char* kTypeName = "KOR::UpdateOperationTimeLeftMessage";
    explicit UpdateOperationTimeLeftMessage(double inSecondsLeft);
    ~UpdateOperationTimeLeftMessage() override;
    // The operation's estimate in seconds; negative when it cannot tell.
    double GetSecondsLeft() const { return mSecondsLeft; }

private:
    double mSecondsLeft;
};

// A long operation that runs on worker threads and reports on its message station: progress,
// description and time left as it goes, and one OperationCompleteMessage as the last message,
// whether it finished, failed or stopped at a cancel request.
class HOST_API IBatchOperation : public KORUnknown {
public:
    static const InterfaceID kIID;

    virtual std::wstring GetMessageStationName() const = 0;
    // Asks the operation to stop soon; from any thread. The operation still ends with its
    // completion message.
    virtual void RequestCancel() = 0;
    virtual bool IsCancelRequested() const = 0;

protected:
    ~IBatchOperation() override;
};

// The common part of a batch operation: its own station, the abort flag (the only state its
// workers share with the UI besides the station's messages) and posting helpers for workers.
class HOST_API BatchOperation : public IBatchOperation {
public:
    BatchOperation();
    ~BatchOperation() override;

    std::wstring GetMessageStationName() const override { return mStation; }
    void RequestCancel() override;
    bool IsCancelRequested() const override { return mCancelRequested.load(std::memory_order_acquire); }

    void PostProgress(float inFraction) const;
    void PostDescription(const std::wstring& inDescription) const;
    void PostTimeLeft(double inSecondsLeft) const;
    void PostComplete() const;
    // Runs the operation's work (on a worker) and then posts the completion message, also when
    // the work throws: whoever follows the operation always hears its end. The error goes on to
    // the caller, the work queue, which reports it.
    void RunToCompletion(const std::function<void()>& inWork) const;

private:
    const std::wstring mStation;
    std::atomic<bool> mCancelRequested{false};
};

} // namespace KOR
