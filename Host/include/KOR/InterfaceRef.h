#pragma once

#include <type_traits>
#include <utility>

#include "KOR/KORUnknown.h"

namespace KOR {

// Raises the host error "A NULL interface pointer has been dereferenced.".
[[noreturn]] HOST_API void ThrowNullInterfaceDereference();

// An add-ref'd pointer to a host interface. Dereferencing a null one raises the host error
// instead of crashing.
template <class T>
class InterfaceRef {
public:
    InterfaceRef() = default;
    InterfaceRef(std::nullptr_t) {}
    explicit InterfaceRef(T* inObject) : mObject(inObject)
    {
        if (mObject) {
            mObject->AddRef();
        }
    }
    InterfaceRef(const InterfaceRef& inOther) : InterfaceRef(inOther.mObject) {}
    InterfaceRef(InterfaceRef&& inOther) noexcept : mObject(std::exchange(inOther.mObject, nullptr)) {}
    // Only towards a base interface; Query asks an object for another interface.
    template <class U>
        requires std::is_convertible_v<U*, T*>
    InterfaceRef(const InterfaceRef<U>& inOther) : InterfaceRef(static_cast<T*>(inOther.Get()))
    {
    }
    ~InterfaceRef() { Reset(); }

    // Add-ref before release, so that assigning the held object again keeps it alive.
    InterfaceRef& operator=(const InterfaceRef& inOther)
    {
        InterfaceRef copy(inOther);
        std::swap(mObject, copy.mObject);
        return *this;
    }
    InterfaceRef& operator=(InterfaceRef&& inOther) noexcept
    {
        InterfaceRef moved(std::move(inOther));
        std::swap(mObject, moved.mObject);
        return *this;
    }

    // Asks inSource for interface T; null when it does not offer it.
    template <class U>
    static InterfaceRef Query(const InterfaceRef<U>& inSource)
    {
        InterfaceRef result;
        void* object = nullptr;
        if (inSource.Get() && inSource.Get()->QueryInterface(T::kIID, &object)) {
            result.mObject = static_cast<T*>(object);
        }
        return result;
    }

    T* operator->() const
    {
        if (!mObject) {
            ThrowNullInterfaceDereference();
        }
        return mObject;
    }
    T& operator*() const { return *operator->(); }
    T* Get() const { return mObject; }
    explicit operator bool() const { return mObject != nullptr; }
    friend bool operator==(const InterfaceRef& inA, std::nullptr_t) { return inA.mObject == nullptr; }
    friend bool operator==(const InterfaceRef& inA, const InterfaceRef& inB) { return inA.mObject == inB.mObject; }

    void Reset()
    {
        if (T* object = std::exchange(mObject, nullptr)) {
            object->Release();
        }
    }

private:
    T* mObject = nullptr;
};

} // namespace KOR
