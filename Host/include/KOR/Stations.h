#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "KOR/HostAPI.h"

namespace KOR {

// Named message stations: controls and views register one to be reached by messages.
class HOST_API StationRegistry {
public:
    // A name no other live station has.
    static std::wstring RegisterUniqueStation();
    // Registers inName, or while a live station has it, inName followed by "." and a number that
    // makes it unique. Returns the name registered.
    static std::wstring RegisterStation(const std::wstring& inName);
    // Drops the station with its listeners; messages still on their way to it are dropped too.
    static void DisposeStation(const std::wstring& inName);
    static bool IsRegistered(const std::wstring& inName);
};

using MessageID = std::uint32_t;

// A message type's identifier: the 32-bit FNV-1a hash of its type name, so that every module
// computes the same identifier for the same type without a shared table.
constexpr MessageID HashMessageTypeNameToMessageID(std::string_view inTypeName)
{
    MessageID hash = 2166136261u;
    for (const char c : inTypeName) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 16777619u;
    }
    return hash;
}

// What a station carries. A listener tells the types apart by GetID() and then reads the
// concrete type's fields.
class HOST_API Message {
public:
    explicit Message(MessageID inID) : mID(inID) {}
    virtual ~Message();
    MessageID GetID() const { return mID; }

private:
    MessageID mID;
};

using MessagePtr = std::shared_ptr<const Message>;

// Hears the messages of the stations it was added to. Messages are delivered on the host's UI
// thread, in the order each posting thread posted them, to the listeners a station has when the
// message is delivered: a listener removed (or destroyed) before then is not called.
class HOST_API Listener {
public:
    Listener() = default;
    // Removes the listener from every station it is still on.
    virtual ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    virtual void ListenerMessageHandler(const std::wstring& inStation, const Message& inMessage) = 0;
};

namespace StationUtils {
// Listening is set up and ended on the UI thread. Adding to a station that is not registered
// does nothing.
HOST_API void AddListener(const std::wstring& inStation, Listener* inListener);
HOST_API void RemoveListener(const std::wstring& inStation, Listener* inListener);
HOST_API bool IsListening(const std::wstring& inStation, const Listener* inListener);
// From any thread. The message reaches the station's listeners later, on the UI thread.
HOST_API void PostMessage(const std::wstring& inStation, MessagePtr inMessage);
} // namespace StationUtils

} // namespace KOR
