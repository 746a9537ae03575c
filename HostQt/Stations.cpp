// Message stations and their listeners, the messages of batch operations, and delivery of
// messages posted from any thread to the listeners on the UI thread.

#include <QCoreApplication>
#include <QMetaObject>

#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

#include "HostQt/Widgets.h"
#include "KOR/BatchOperation.h"
#include "KOR/Stations.h"

namespace KOR {

namespace {

struct StationTable {
    std::mutex mMutex;
    std::map<std::wstring, std::vector<Listener*>> mListeners; // every registered station
    std::uint64_t mNext = 0;
};

// Never destroyed: listeners that are statics themselves may leave it at exit.
StationTable& Table()
{
    static auto* table = new StationTable;
    return *table;
}

std::vector<Listener*> ListenersOf(const std::wstring& inStation)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    const auto found = table.mListeners.find(inStation);
    return found == table.mListeners.end() ? std::vector<Listener*>() : found->second;
}

// On the UI thread. A handler may remove listeners, its own or others': each one is asked
// again just before its call.
void Deliver(const std::wstring& inStation, const Message& inMessage)
{
    for (Listener* listener : ListenersOf(inStation)) {
        if (StationUtils::IsListening(inStation, listener)) {
            HostQt::Guarded([&] { listener->ListenerMessageHandler(inStation, inMessage); });
        }
    }
}

// inBase, when inBaseFirst and no live station has it, else inBase "." and the next number that
// no live station has: unique and named stations never share a name.
std::wstring RegisterFreeName(const std::wstring& inBase, bool inBaseFirst)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    std::wstring name = inBaseFirst ? inBase : inBase + L"." + std::to_wstring(++table.mNext);
    while (!table.mListeners.emplace(name, std::vector<Listener*>()).second) {
        name = inBase + L"." + std::to_wstring(++table.mNext);
    }
    return name;
}

} // namespace

std::wstring StationRegistry::RegisterUniqueStation() { return RegisterFreeName(L"station", false); }

std::wstring StationRegistry::RegisterStation(const std::wstring& inName) { return RegisterFreeName(inName, true); }

void StationRegistry::DisposeStation(const std::wstring& inName)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    table.mListeners.erase(inName);
}

bool StationRegistry::IsRegistered(const std::wstring& inName)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    return table.mListeners.count(inName) != 0;
}

Message::~Message() = default;

Listener::~Listener()
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    for (auto& [station, listeners] : table.mListeners) {
        std::erase(listeners, this);
    }
}

namespace StationUtils {

void AddListener(const std::wstring& inStation, Listener* inListener)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    const auto found = table.mListeners.find(inStation);
    if (found != table.mListeners.end() && inListener &&
        std::find(found->second.begin(), found->second.end(), inListener) == found->second.end()) {
        found->second.push_back(inListener);
    }
}

void RemoveListener(const std::wstring& inStation, Listener* inListener)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    if (const auto found = table.mListeners.find(inStation); found != table.mListeners.end()) {
        std::erase(found->second, inListener);
    }
}

bool IsListening(const std::wstring& inStation, const Listener* inListener)
{
    StationTable& table = Table();
    std::lock_guard lock(table.mMutex);
    const auto found = table.mListeners.find(inStation);
    return found != table.mListeners.end() &&
           std::find(found->second.begin(), found->second.end(), inListener) != found->second.end();
}

// Queued calls on the application object run on the UI thread, in the order they were posted.
void PostMessage(const std::wstring& inStation, MessagePtr inMessage)
{
    QCoreApplication* application = QCoreApplication::instance();
    if (!application || !inMessage) {
        return;
    }
    QMetaObject::invokeMethod(
        application, [inStation, message = std::move(inMessage)] { Deliver(inStation, *message); },
        Qt::QueuedConnection);
}

} // namespace StationUtils

OperationCompleteMessage::OperationCompleteMessage() : Message(HashMessageTypeNameToMessageID(kTypeName)) {}

UpdateOperationProgressMessage::UpdateOperationProgressMessage(float inFraction)
    : Message(HashMessageTypeNameToMessageID(kTypeName)), mFraction(inFraction)
{
}

UpdateOperationDescriptionMessage::UpdateOperationDescriptionMessage(std::wstring inDescription)
    : Message(HashMessageTypeNameToMessageID(kTypeName)), mDescription(std::move(inDescription))
{
}

UpdateOperationTimeLeftMessage::UpdateOperationTimeLeftMessage(double inSecondsLeft)
    : Message(HashMessageTypeNameToMessageID(kTypeName)), mSecondsLeft(inSecondsLeft)
{
}

OperationCompleteMessage::~OperationCompleteMessage() = default;
UpdateOperationProgressMessage::~UpdateOperationProgressMessage() = default;
UpdateOperationDescriptionMessage::~UpdateOperationDescriptionMessage() = default;
UpdateOperationTimeLeftMessage::~UpdateOperationTimeLeftMessage() = default;

const InterfaceID IBatchOperation::kIID = {0x4b, 0x4f, 0x52, 0x42, 0x61, 0x74, 0x63, 0x68,
                                           0x4f, 0x70, 0x65, 0x72, 0x61, 0x74, 0x6e, 0x01};
IBatchOperation::~IBatchOperation() = default;

BatchOperation::BatchOperation() : mStation(StationRegistry::RegisterUniqueStation()) {}

BatchOperation::~BatchOperation() { StationRegistry::DisposeStation(mStation); }

void BatchOperation::RequestCancel() { mCancelRequested.store(true, std::memory_order_release); }

void BatchOperation::PostProgress(float inFraction) const
{
    StationUtils::PostMessage(mStation, std::make_shared<UpdateOperationProgressMessage>(inFraction));
}

void BatchOperation::PostDescription(const std::wstring& inDescription) const
{
    StationUtils::PostMessage(mStation, std::make_shared<UpdateOperationDescriptionMessage>(inDescription));
}

void BatchOperation::PostTimeLeft(double inSecondsLeft) const
{
    StationUtils::PostMessage(mStation, std::make_shared<UpdateOperationTimeLeftMessage>(inSecondsLeft));
}

void BatchOperation::PostComplete() const
{
    StationUtils::PostMessage(mStation, std::make_shared<OperationCompleteMessage>());
}

void BatchOperation::RunToCompletion(const std::function<void()>& inWork) const
{
    try {
        inWork();
    } catch (...) {
        PostComplete();
        throw;
    }
    PostComplete();
}

} // namespace KOR
