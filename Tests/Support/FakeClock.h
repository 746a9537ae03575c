#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "KOR/Clock.h"
#include "KOR/Services.h"

namespace TestSupport {

// A clock that stands still until a test moves it; sleeping on it moves it on at once. It is
// the host's clock while it lives.
class FakeClock : public KOR::ClockService {
public:
    static constexpr std::int64_t kStart = 1'000'000;

    FakeClock() : mPrevious(KOR::Services().clock) { KOR::Services().clock = this; }
    ~FakeClock() override { KOR::Services().clock = mPrevious; }
    FakeClock(const FakeClock&) = delete;
    FakeClock& operator=(const FakeClock&) = delete;

    std::int64_t Milliseconds() const override { return mNow.load(); }
    void Sleep(std::int64_t inMilliseconds) override
    {
        std::function<void(std::int64_t)> onSleep;
        {
            std::lock_guard lock(mMutex);
            mSleeps.push_back(inMilliseconds);
            onSleep = mOnSleep;
        }
        if (onSleep) {
            onSleep(inMilliseconds);
        }
        mNow += inMilliseconds;
    }

    // Called on the sleeping thread as each sleep begins: what the sleeper left on screen.
    void OnSleep(std::function<void(std::int64_t)> inHandler)
    {
        std::lock_guard lock(mMutex);
        mOnSleep = std::move(inHandler);
    }

    void Advance(std::int64_t inMilliseconds) { mNow += inMilliseconds; }
    // Milliseconds since the clock was made.
    std::int64_t Elapsed() const { return mNow.load() - kStart; }
    std::vector<std::int64_t> Sleeps() const
    {
        std::lock_guard lock(mMutex);
        return mSleeps;
    }

private:
    KOR::ClockService* mPrevious;
    std::atomic<std::int64_t> mNow{kStart};
    mutable std::mutex mMutex;
    std::vector<std::int64_t> mSleeps;
    std::function<void(std::int64_t)> mOnSleep;
};

} // namespace TestSupport
