#pragma once

#include <compare>
#include <cstdint>
#include <limits>
#include <numeric>

namespace KOR {

// A frame or sample rate as an exact fraction: 30000/1001 is NTSC video, 48000/1 an audio rate.
class FrameRate {
public:
    constexpr FrameRate() = default;
    constexpr FrameRate(std::int64_t inNumerator, std::int64_t inDenominator = 1)
        : mNumerator(inNumerator), mDenominator(inDenominator <= 0 ? 1 : inDenominator)
    {
        const std::int64_t divisor = std::gcd(mNumerator, mDenominator);
        if (divisor > 1) {
            mNumerator /= divisor;
            mDenominator /= divisor;
        }
    }

    constexpr std::int64_t Numerator() const { return mNumerator; }
    constexpr std::int64_t Denominator() const { return mDenominator; }
    constexpr bool IsZero() const { return mNumerator <= 0; }
    constexpr double ToDouble() const { return static_cast<double>(mNumerator) / static_cast<double>(mDenominator); }
    friend constexpr bool operator==(const FrameRate&, const FrameRate&) = default;

private:
    std::int64_t mNumerator = 0;
    std::int64_t mDenominator = 1;
};

inline constexpr FrameRate kFrameRate_Zero{0};
inline constexpr FrameRate kFrameRate_Film23976{24000, 1001};
inline constexpr FrameRate kFrameRate_Film24{24};
inline constexpr FrameRate kFrameRate_PAL25{25};
inline constexpr FrameRate kFrameRate_NTSC2997{30000, 1001};
inline constexpr FrameRate kFrameRate_Video30{30};
inline constexpr FrameRate kFrameRate_Video48{48};
inline constexpr FrameRate kFrameRate_PAL50{50};
inline constexpr FrameRate kFrameRate_NTSC5994{60000, 1001};
inline constexpr FrameRate kFrameRate_Video60{60};
inline constexpr FrameRate kFrameRate_Video100{100};
inline constexpr FrameRate kFrameRate_NTSC11988{120000, 1001};
inline constexpr FrameRate kFrameRate_Video120{120};
inline constexpr FrameRate kFrameRate_Audio32000{32000};
inline constexpr FrameRate kFrameRate_Audio44100{44100};
inline constexpr FrameRate kFrameRate_Audio48000{48000};
inline constexpr FrameRate kFrameRate_Audio88200{88200};
inline constexpr FrameRate kFrameRate_Audio96000{96000};
inline constexpr FrameRate kFrameRate_Audio192000{192000};

// A point or span of time as a whole number of ticks. Every video and audio rate above lasts a
// whole number of ticks per frame or sample, so times at 29.97 or 23.976 add up without drift.
// A 64-bit count covers about 2000 years either way.
class Time {
public:
    static constexpr std::int64_t kTicksPerSecond = 141120000;

    constexpr Time() = default;
    explicit constexpr Time(std::int64_t inTicks) : mTicks(inTicks) {}
    // inFrames frames at inRate; a zero rate gives time zero.
    constexpr Time(std::int64_t inFrames, FrameRate inRate) : mTicks(inFrames * TicksPerFrame(inRate)) {}

    static constexpr Time FromSeconds(std::int64_t inSeconds) { return Time(inSeconds * kTicksPerSecond); }
    // Ticks of one frame at inRate; 0 for a zero rate.
    static constexpr std::int64_t TicksPerFrame(FrameRate inRate)
    {
        return inRate.IsZero() ? 0 : kTicksPerSecond * inRate.Denominator() / inRate.Numerator();
    }

    constexpr std::int64_t Ticks() const { return mTicks; }
    constexpr double Seconds() const { return static_cast<double>(mTicks) / kTicksPerSecond; }
    // The whole frames at inRate that this time holds, rounded down; 0 for a zero rate.
    constexpr std::int64_t ToFrame64(FrameRate inRate) const
    {
        const std::int64_t perFrame = TicksPerFrame(inRate);
        if (perFrame == 0) {
            return 0;
        }
        const std::int64_t frames = mTicks / perFrame;
        return (mTicks % perFrame != 0 && mTicks < 0) ? frames - 1 : frames;
    }

    friend constexpr Time operator+(Time inA, Time inB) { return Time(inA.mTicks + inB.mTicks); }
    friend constexpr Time operator-(Time inA, Time inB) { return Time(inA.mTicks - inB.mTicks); }
    friend constexpr auto operator<=>(const Time&, const Time&) = default;

private:
    std::int64_t mTicks = 0;
};

// "No time": what parsing returns for text it cannot read.
inline constexpr Time kTime_Invalid{std::numeric_limits<std::int64_t>::min()};

} // namespace KOR
