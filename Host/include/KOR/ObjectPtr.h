#pragma once

#include <atomic>
#include <cstdint>
#include <new>
#include <utility>

#include "KOR/Allocator.h"

namespace KOR {

// A 32-bit count changed with atomic increments and decrements; shared between threads.
class AtomicValue {
public:
    explicit AtomicValue(std::int32_t inValue) : mValue(inValue) {}
    std::int32_t Increment() { return mValue.fetch_add(1, std::memory_order_relaxed) + 1; }
    std::int32_t Decrement() { return mValue.fetch_sub(1, std::memory_order_acq_rel) - 1; }
    std::int32_t Get() const { return mValue.load(std::memory_order_acquire); }

private:
    std::atomic<std::int32_t> mValue;
};

// A shared pointer whose count cell lives apart from the object, allocated from KOR::Allocator.
// The object is destroyed through its virtual destructor when the last copy lets go.
template <class T, class Count = AtomicValue>
class ObjectPtr {
public:
    ObjectPtr() = default;
    explicit ObjectPtr(T* inObject) : mObject(inObject)
    {
        if (mObject) {
            try {
                mCount = new (Allocator::Allocate(sizeof(Count))) Count(1);
            } catch (...) {
                delete mObject;
                throw;
            }
        }
    }
    ObjectPtr(const ObjectPtr& inOther) : mCount(inOther.mCount), mObject(inOther.mObject)
    {
        if (mCount) {
            mCount->Increment();
        }
    }
    ObjectPtr(ObjectPtr&& inOther) noexcept
        : mCount(std::exchange(inOther.mCount, nullptr)), mObject(std::exchange(inOther.mObject, nullptr))
    {
    }
    ~ObjectPtr() { Release(); }

    // Copy first, release after: assigning a pointer to itself never drops the count to zero.
    ObjectPtr& operator=(const ObjectPtr& inOther)
    {
        ObjectPtr copy(inOther);
        Swap(copy);
        return *this;
    }
    ObjectPtr& operator=(ObjectPtr&& inOther) noexcept
    {
        ObjectPtr moved(std::move(inOther));
        Swap(moved);
        return *this;
    }

    T* Get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }
    std::int32_t UseCount() const { return mCount ? mCount->Get() : 0; }

    void Swap(ObjectPtr& ioOther) noexcept
    {
        std::swap(mCount, ioOther.mCount);
        std::swap(mObject, ioOther.mObject);
    }

private:
    void Release()
    {
        if (mCount && mCount->Decrement() == 0) {
            delete mObject;
            mCount->~Count();
            Allocator::Free(mCount);
        }
        mCount = nullptr;
        mObject = nullptr;
    }

    Count* mCount = nullptr;
    T* mObject = nullptr;
};

} // namespace KOR
