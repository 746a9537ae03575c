#pragma once

#include <QTimer>

#include <cstdint>
#include <functional>
#include <vector>

#include "KOR/Time.h"

namespace HostQt {

// A tape deck that is not there: it runs an export to tape through its states on the host's
// clock, as a deck on a serial line would report them, so that the export dialogs can be seen
// and tested without hardware. Its timer runs on the UI thread; Tick advances it by the clock.
class SimulatedDeck {
public:
    // The export states, by the numbers the export-to-tape dialog shows.
    enum State : std::uint32_t {
        kIdle = 0,
        kCueing = 1,
        kPrerolling = 2,
        kRecording = 3,
        kDone = 4,
        kAbortedForDroppedFrames = 5,
        kAbortedByUser = 6,
        kDoneWithDroppedFrames = 7,
        kNotAnswering = 8,
        kRenderingAudio = 9,
    };

    struct Plan {
        KOR::FrameRate rate = KOR::kFrameRate_Video30;
        KOR::Time start;                    // where recording begins on the tape
        std::int64_t lengthFrames = 0;      // frames recorded
        std::int64_t prerollFrames = 0;     // the deck rolls this far before the start
        std::int64_t cueMilliseconds = 0;   // winding the tape to the preroll point
        std::int64_t renderMilliseconds = 0; // rendering audio first; 0 for none
        std::vector<std::int64_t> droppedAt; // recorded frames, counted from the start, that drop
        std::uint32_t abortAfterDropped = 0; // abort at this many dropped frames; 0 never
        bool answers = true;                 // false: the deck never answers the first command
        bool controlled = true;              // false: no cue or preroll, the movie plays out from the start
    };

    struct Listener {
        std::function<void(State)> stateChanged;
        // Start, end and current position on the tape.
        std::function<void(KOR::Time, KOR::Time, KOR::Time)> progress;
        std::function<void(std::uint32_t)> droppedFrames;
    };

    static constexpr int kTickMilliseconds = 40;

    explicit SimulatedDeck(Listener inListener);
    ~SimulatedDeck();
    SimulatedDeck(const SimulatedDeck&) = delete;
    SimulatedDeck& operator=(const SimulatedDeck&) = delete;

    void Start(const Plan& inPlan);
    // Stops a running export; the state becomes kAbortedByUser.
    void Abort();
    // Moves the deck on to the clock's time now.
    void Tick();

    State GetState() const { return mState; }
    bool IsRunning() const;
    KOR::Time GetPosition() const { return mPosition; }
    KOR::Time GetEnd() const { return mPlan.start + KOR::Time(mPlan.lengthFrames, mPlan.rate); }
    std::uint32_t GetDroppedFrames() const { return mDropped; }

private:
    // Cueing when the deck is controlled; otherwise recording at once, started by hand.
    State FirstDeckState() const { return mPlan.controlled ? kCueing : kRecording; }
    void Enter(State inState, std::int64_t inSince);
    void Finish(State inState);
    std::int64_t FramesSince(std::int64_t inMilliseconds) const;

    Listener mListener;
    QTimer mTimer;
    Plan mPlan;
    State mState = kIdle;
    std::int64_t mPhaseStart = 0; // clock time when the current state began
    KOR::Time mPosition;
    std::uint32_t mDropped = 0;
};

} // namespace HostQt
