#include "HostQt/SimulatedDeck.h"

#include <algorithm>

#include "KOR/Clock.h"

namespace HostQt {

SimulatedDeck::SimulatedDeck(Listener inListener) : mListener(std::move(inListener))
{
    mTimer.setInterval(kTickMilliseconds);
    QObject::connect(&mTimer, &QTimer::timeout, [this] { Tick(); });
}

SimulatedDeck::~SimulatedDeck() = default;

bool SimulatedDeck::IsRunning() const
{
    return mState == kCueing || mState == kPrerolling || mState == kRecording || mState == kRenderingAudio;
}

void SimulatedDeck::Start(const Plan& inPlan)
{
    mPlan = inPlan;
    if (!mPlan.controlled) {
        mPlan.prerollFrames = 0;
        mPlan.cueMilliseconds = 0;
    }
    mDropped = 0;
    mPosition = mPlan.start - KOR::Time(mPlan.prerollFrames, mPlan.rate);
    if (!mPlan.answers) {
        Finish(kNotAnswering);
        return;
    }
    Enter(mPlan.renderMilliseconds > 0 ? kRenderingAudio : FirstDeckState(), KOR::Clock::GetMilliseconds());
    mTimer.start();
}

void SimulatedDeck::Abort()
{
    if (IsRunning()) {
        Finish(kAbortedByUser);
    }
}

std::int64_t SimulatedDeck::FramesSince(std::int64_t inMilliseconds) const
{
    const std::int64_t elapsed = KOR::Clock::GetMilliseconds() - inMilliseconds;
    return elapsed * mPlan.rate.Numerator() / (1000 * mPlan.rate.Denominator());
}

void SimulatedDeck::Tick()
{
    const std::int64_t now = KOR::Clock::GetMilliseconds();
    // Each state begins when the one before was due to end, however late the tick comes.
    if (mState == kRenderingAudio && now - mPhaseStart >= mPlan.renderMilliseconds) {
        Enter(FirstDeckState(), mPhaseStart + mPlan.renderMilliseconds);
    }
    if (mState == kCueing && now - mPhaseStart >= mPlan.cueMilliseconds) {
        Enter(kPrerolling, mPhaseStart + mPlan.cueMilliseconds);
    }
    if (mState == kPrerolling) {
        const std::int64_t rolled = std::min(FramesSince(mPhaseStart), mPlan.prerollFrames);
        mPosition = mPlan.start - KOR::Time(mPlan.prerollFrames - rolled, mPlan.rate);
        if (rolled < mPlan.prerollFrames) {
            mListener.progress(mPlan.start, GetEnd(), mPosition);
            return;
        }
        Enter(kRecording, mPhaseStart + mPlan.prerollFrames * 1000 * mPlan.rate.Denominator() / mPlan.rate.Numerator());
    }
    if (mState != kRecording) {
        return;
    }
    const std::int64_t recorded = std::min(FramesSince(mPhaseStart), mPlan.lengthFrames);
    mPosition = mPlan.start + KOR::Time(recorded, mPlan.rate);
    const auto dropped = static_cast<std::uint32_t>(std::count_if(
        mPlan.droppedAt.begin(), mPlan.droppedAt.end(), [&](std::int64_t inFrame) { return inFrame < recorded; }));
    if (dropped != mDropped) {
        mDropped = dropped;
        mListener.droppedFrames(mDropped);
    }
    mListener.progress(mPlan.start, GetEnd(), mPosition);
    if (mPlan.abortAfterDropped > 0 && mDropped >= mPlan.abortAfterDropped) {
        Finish(kAbortedForDroppedFrames);
    } else if (recorded >= mPlan.lengthFrames) {
        Finish(mDropped > 0 ? kDoneWithDroppedFrames : kDone);
    }
}

void SimulatedDeck::Enter(State inState, std::int64_t inSince)
{
    mState = inState;
    mPhaseStart = inSince;
    mListener.stateChanged(inState);
}

void SimulatedDeck::Finish(State inState)
{
    mTimer.stop();
    mState = inState;
    mListener.stateChanged(inState);
}

} // namespace HostQt
