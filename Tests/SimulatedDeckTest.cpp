// The reference host's simulated deck on a clock that the test moves.

#include <gtest/gtest.h>

#include <QApplication>

#include "FakeClock.h"
#include "HostQt/SimulatedDeck.h"

namespace {

using HostQt::SimulatedDeck;

struct Seen {
    std::vector<std::uint32_t> states;
    KOR::Time position;
    std::uint32_t dropped = 0;
};

SimulatedDeck::Listener ListenerFor(Seen& outSeen)
{
    return {[&outSeen](SimulatedDeck::State inState) { outSeen.states.push_back(inState); },
            [&outSeen](KOR::Time, KOR::Time, KOR::Time inCurrent) { outSeen.position = inCurrent; },
            [&outSeen](std::uint32_t inDropped) { outSeen.dropped = inDropped; }};
}

constexpr KOR::FrameRate kRate = KOR::kFrameRate_Video30;
const KOR::Time kStart(108000, kRate); // 01:00:00:00

// One second of cueing, two of preroll (60 frames), three of recording (90 frames).
SimulatedDeck::Plan BasePlan()
{
    SimulatedDeck::Plan plan;
    plan.rate = kRate;
    plan.start = kStart;
    plan.lengthFrames = 90;
    plan.prerollFrames = 60;
    plan.cueMilliseconds = 1000;
    return plan;
}

std::int64_t FrameOf(KOR::Time inTime) { return (inTime - kStart).Ticks() / KOR::Time::TicksPerFrame(kRate); }

TEST(SimulatedDeck, RunsThroughItsStatesOnItsClock)
{
    struct Stop {
        std::int64_t atMilliseconds;
        SimulatedDeck::State state;
        std::int64_t frame; // on the tape, from the recording's start
        std::uint32_t dropped;
    };
    const struct {
        const char* name;
        std::vector<std::int64_t> droppedAt;
        std::uint32_t abortAfter;
        std::int64_t renderMilliseconds;
        bool controlled;
        std::vector<Stop> stops;
    } cases[] = {
        {"clean",
         {},
         0,
         0,
         true,
         {{0, SimulatedDeck::kCueing, -60, 0},
          {999, SimulatedDeck::kCueing, -60, 0},
          {1000, SimulatedDeck::kPrerolling, -60, 0},
          {2000, SimulatedDeck::kPrerolling, -30, 0},
          {3000, SimulatedDeck::kRecording, 0, 0},
          {4500, SimulatedDeck::kRecording, 45, 0},
          {6000, SimulatedDeck::kDone, 90, 0}}},
        {"dropped frames reported",
         {10, 20},
         0,
         0,
         true,
         {{3400, SimulatedDeck::kRecording, 12, 1}, {9000, SimulatedDeck::kDoneWithDroppedFrames, 90, 2}}},
        {"aborted for dropped frames",
         {10, 20, 30},
         2,
         0,
         true,
         {{3500, SimulatedDeck::kRecording, 15, 1}, {3700, SimulatedDeck::kAbortedForDroppedFrames, 21, 2}}},
        {"audio rendered first",
         {},
         0,
         500,
         true,
         {{0, SimulatedDeck::kRenderingAudio, -60, 0},
          {500, SimulatedDeck::kCueing, -60, 0},
          {1500, SimulatedDeck::kPrerolling, -60, 0},
          {6500, SimulatedDeck::kDone, 90, 0}}},
        {"deck not controlled: neither cue nor preroll",
         {},
         0,
         0,
         false,
         {{0, SimulatedDeck::kRecording, 0, 0},
          {1500, SimulatedDeck::kRecording, 45, 0},
          {3000, SimulatedDeck::kDone, 90, 0}}},
        {"not controlled, audio rendered first",
         {},
         0,
         500,
         false,
         {{0, SimulatedDeck::kRenderingAudio, 0, 0},
          {500, SimulatedDeck::kRecording, 0, 0},
          {3500, SimulatedDeck::kDone, 90, 0}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestSupport::FakeClock clock;
        Seen seen;
        SimulatedDeck deck(ListenerFor(seen));
        SimulatedDeck::Plan plan = BasePlan();
        plan.droppedAt = c.droppedAt;
        plan.abortAfterDropped = c.abortAfter;
        plan.renderMilliseconds = c.renderMilliseconds;
        plan.controlled = c.controlled;
        deck.Start(plan);
        std::int64_t now = 0;
        for (const Stop& stop : c.stops) {
            clock.Advance(stop.atMilliseconds - now);
            now = stop.atMilliseconds;
            deck.Tick();
            EXPECT_EQ(deck.GetState(), stop.state) << "at " << stop.atMilliseconds << " ms";
            EXPECT_EQ(FrameOf(deck.GetPosition()), stop.frame) << "at " << stop.atMilliseconds << " ms";
            EXPECT_EQ(deck.GetDroppedFrames(), stop.dropped) << "at " << stop.atMilliseconds << " ms";
        }
        EXPECT_EQ(seen.states.back(), c.stops.back().state);
    }
}

TEST(SimulatedDeck, LateTickStillReportsEveryStateInOrder)
{
    TestSupport::FakeClock clock;
    Seen seen;
    SimulatedDeck deck(ListenerFor(seen));
    deck.Start(BasePlan());
    clock.Advance(7000);
    deck.Tick();
    EXPECT_EQ(seen.states, (std::vector<std::uint32_t>{1, 2, 3, 4}));
    EXPECT_FALSE(deck.IsRunning());
}

TEST(SimulatedDeck, AbortStopsARunningExportOnly)
{
    TestSupport::FakeClock clock;
    Seen seen;
    SimulatedDeck deck(ListenerFor(seen));
    deck.Abort();
    EXPECT_TRUE(seen.states.empty()) << "nothing runs yet";
    deck.Start(BasePlan());
    clock.Advance(3500);
    deck.Tick();
    deck.Abort();
    EXPECT_EQ(deck.GetState(), SimulatedDeck::kAbortedByUser);
    EXPECT_EQ(FrameOf(deck.GetPosition()), 15);
    clock.Advance(5000);
    deck.Tick();
    EXPECT_EQ(deck.GetState(), SimulatedDeck::kAbortedByUser) << "an aborted deck stays where it stopped";
    EXPECT_EQ(FrameOf(deck.GetPosition()), 15);
}

TEST(SimulatedDeck, DeckThatDoesNotAnswerEndsAtOnce)
{
    TestSupport::FakeClock clock;
    Seen seen;
    SimulatedDeck deck(ListenerFor(seen));
    SimulatedDeck::Plan plan = BasePlan();
    plan.answers = false;
    deck.Start(plan);
    EXPECT_EQ(seen.states, (std::vector<std::uint32_t>{SimulatedDeck::kNotAnswering}));
    EXPECT_FALSE(deck.IsRunning());
}

} // namespace
