// Flight loops and the clock: intervals in seconds and in frames, pausing, re-arming
// relative to now or to the last call, phases and order, the callback's arguments,
// changes made from inside callbacks, plug-in ownership and handle validation.

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "plugin_test_util.h"

namespace xpsim::test {
namespace {

struct Call {
    float sinceLastCall;
    float sinceLastLoop;
    int counter;
    int cycle;      // XPLMGetCycleNumber during the call
    float elapsed;  // XPLMGetElapsedTime during the call
};

// A flight loop made of a refcon: records its calls, runs an optional action and
// returns `next`.
struct Loop {
    explicit Loop(std::string loopName, std::vector<std::string>* callOrder = nullptr)
        : name(std::move(loopName)), order(callOrder) {}
    std::string name;
    std::vector<std::string>* order = nullptr;
    float next = -1.0f;
    std::function<void()> action;
    std::vector<Call> calls;
};

float loopCallback(float sinceLastCall, float sinceLastLoop, int counter, void* refcon) {
    Loop* loop = static_cast<Loop*>(refcon);
    loop->calls.push_back({sinceLastCall, sinceLastLoop, counter, XPLMGetCycleNumber(), XPLMGetElapsedTime()});
    if (loop->order) loop->order->push_back(loop->name);
    if (loop->action) loop->action();
    return loop->next;
}

class ProcessingTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        start(60.0);
    }
    void start(double fps) {
        Options options;
        options.fps = fps;
        startSimWith(options);
    }

    XPLMFlightLoopID create(Loop& loop, XPLMFlightLoopPhaseType phase) {
        XPLMCreateFlightLoop_t params{sizeof(XPLMCreateFlightLoop_t), phase, loopCallback, &loop};
        XPLMFlightLoopID id = XPLMCreateFlightLoop(&params);
        EXPECT_NE(id, nullptr);
        return id;
    }
};

TEST_F(ProcessingTest, SecondsIntervalRunsAtTheFirstFrameAtOrAfterItsDeadline) {
    Loop exact{"exact"}, between{"between"};
    exact.next = 0.25f;
    XPLMRegisterFlightLoopCallback(loopCallback, 0.1f, &exact);     // 6 frames at 60 fps
    XPLMRegisterFlightLoopCallback(loopCallback, 0.11f, &between);  // between frames 6 and 7
    driver::runFrames(5);
    EXPECT_TRUE(exact.calls.empty());
    driver::runFrames(1);
    ASSERT_EQ(exact.calls.size(), 1u);
    EXPECT_TRUE(between.calls.empty());  // never early
    EXPECT_EQ(exact.calls[0].cycle, 5);
    EXPECT_NEAR(exact.calls[0].elapsed, 0.1f, 1e-6);
    EXPECT_NEAR(exact.calls[0].sinceLastCall, 0.1f, 1e-6);  // since registration
    driver::runFrames(1);
    ASSERT_EQ(between.calls.size(), 1u);
    EXPECT_EQ(between.calls[0].cycle, 6);

    // The returned 0.25 s counts from that call: due at 0.35 s, the 21st frame.
    driver::runFrames(13);
    EXPECT_EQ(exact.calls.size(), 1u);
    driver::runFrames(1);
    ASSERT_EQ(exact.calls.size(), 2u);
    EXPECT_EQ(exact.calls[1].cycle, 20);
    EXPECT_NEAR(exact.calls[1].sinceLastCall, 0.25f, 1e-5);
}

TEST_F(ProcessingTest, NegativeIntervalsCountFlightLoops) {
    Loop every{"every"}, third{"third"};
    third.next = -3.0f;
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &every);
    XPLMRegisterFlightLoopCallback(loopCallback, -3.0f, &third);
    driver::runFrames(9);
    ASSERT_EQ(every.calls.size(), 9u);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(every.calls[i].counter, i);
        EXPECT_EQ(every.calls[i].counter, every.calls[i].cycle);
        EXPECT_NEAR(every.calls[i].sinceLastCall, 1.0f / 60, 1e-6);
    }
    ASSERT_EQ(third.calls.size(), 3u);
    EXPECT_EQ(third.calls[0].cycle, 2);
    EXPECT_EQ(third.calls[1].cycle, 5);
    EXPECT_EQ(third.calls[2].cycle, 8);
    EXPECT_NEAR(third.calls[1].sinceLastCall, 3.0f / 60, 1e-6);
}

TEST_F(ProcessingTest, ReturningZeroPausesTheLoopUntilItIsRearmed) {
    Loop once{"once"}, idle{"idle"};
    once.next = 0.0f;
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &once);
    XPLMRegisterFlightLoopCallback(loopCallback, 0.0f, &idle);  // registered, inactive
    driver::runFrames(11);
    ASSERT_EQ(once.calls.size(), 1u);
    EXPECT_TRUE(idle.calls.empty());

    XPLMSetFlightLoopCallbackInterval(loopCallback, -1.0f, 1, &once);
    XPLMSetFlightLoopCallbackInterval(loopCallback, -2.0f, 1, &idle);
    driver::runFrames(1);
    ASSERT_EQ(once.calls.size(), 2u);
    EXPECT_NEAR(once.calls[1].sinceLastCall, 11.0f / 60, 1e-5);  // the pause included
    EXPECT_TRUE(idle.calls.empty());
    driver::runFrames(1);
    ASSERT_EQ(idle.calls.size(), 1u);
    EXPECT_NEAR(idle.calls[0].sinceLastCall, 13.0f / 60, 1e-5);  // since registration
    EXPECT_EQ(once.calls.size(), 2u);
}

TEST_F(ProcessingTest, RearmingCountsFromNowOrFromTheLastCall) {
    Loop fromCall{"fromCall"}, fromNow{"fromNow"}, fromRegistration{"fromRegistration"};
    fromCall.next = fromNow.next = 0.0f;
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &fromCall);
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &fromNow);
    driver::runFrames(30);  // both called at frame 1 (1/60 s), now 0.5 s
    XPLMRegisterFlightLoopCallback(loopCallback, 0.0f, &fromRegistration);  // at 0.5 s
    driver::runFrames(6);  // now 0.6 s
    XPLMSetFlightLoopCallbackInterval(loopCallback, 1.0f, 0, &fromCall);          // due 1/60 + 1 s
    XPLMSetFlightLoopCallbackInterval(loopCallback, 1.0f, 1, &fromNow);           // due 1.6 s
    XPLMSetFlightLoopCallbackInterval(loopCallback, 0.2f, 0, &fromRegistration);  // due 0.7 s
    XPLMSetFlightLoopCallbackInterval(loopCallback, -5.0f, 0, &fromRegistration);  // the last word wins
    driver::runFrames(120);
    ASSERT_EQ(fromCall.calls.size(), 2u);
    EXPECT_EQ(fromCall.calls[1].cycle, 60);
    ASSERT_EQ(fromNow.calls.size(), 2u);
    EXPECT_EQ(fromNow.calls[1].cycle, 95);
    EXPECT_NEAR(fromNow.calls[1].sinceLastCall, 95.0f / 60, 1e-5);
    // Five loops after its registration (after cycle 29) is cycle 34: already past, so
    // the next flight loop after re-arming (cycle 36) runs it.
    ASSERT_GE(fromRegistration.calls.size(), 1u);
    EXPECT_EQ(fromRegistration.calls[0].cycle, 36);
}

TEST_F(ProcessingTest, LoopsRunByPhaseThenInRegistrationOrder) {
    std::vector<std::string> order;
    Loop after{"after", &order}, before1{"before1", &order}, legacy{"legacy", &order}, before2{"before2", &order};
    Loop unscheduled{"unscheduled", &order};
    XPLMFlightLoopID afterId = create(after, xplm_FlightLoop_Phase_AfterFlightModel);
    XPLMFlightLoopID before1Id = create(before1, xplm_FlightLoop_Phase_BeforeFlightModel);
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &legacy);
    XPLMFlightLoopID before2Id = create(before2, xplm_FlightLoop_Phase_BeforeFlightModel);
    create(unscheduled, xplm_FlightLoop_Phase_BeforeFlightModel);
    driver::runFrames(3);
    EXPECT_EQ(order, std::vector<std::string>({"legacy", "legacy", "legacy"}));  // created loops wait

    order.clear();
    XPLMScheduleFlightLoop(afterId, -1.0f, 1);
    XPLMScheduleFlightLoop(before2Id, -1.0f, 1);
    XPLMScheduleFlightLoop(before1Id, -1.0f, 1);
    driver::runFrames(2);
    const std::vector<std::string> frame = {"before1", "legacy", "before2", "after"};
    std::vector<std::string> twice = frame;
    twice.insert(twice.end(), frame.begin(), frame.end());
    EXPECT_EQ(order, twice);
    EXPECT_TRUE(unscheduled.calls.empty());

    // Destroyed: never called again; scheduling 0 unschedules.
    order.clear();
    XPLMDestroyFlightLoop(before1Id);
    XPLMScheduleFlightLoop(afterId, 0.0f, 1);
    driver::runFrames(1);
    EXPECT_EQ(order, std::vector<std::string>({"legacy", "before2"}));
}

TEST_F(ProcessingTest, CallbackArgumentsFollowTheSimulatedClock) {
    start(50.0);
    driver::runFrames(25);  // 0.5 s
    EXPECT_FLOAT_EQ(XPLMGetElapsedTime(), 0.5f);
    EXPECT_EQ(XPLMGetCycleNumber(), 25);
    Loop loop{"loop"};
    loop.next = -2.0f;
    XPLMRegisterFlightLoopCallback(loopCallback, 0.25f, &loop);
    driver::runFrames(16);
    ASSERT_EQ(loop.calls.size(), 2u);
    const Call& first = loop.calls[0];
    EXPECT_EQ(first.cycle, 37);  // 0.75 s falls between frames; the next one is at 0.76 s
    EXPECT_EQ(first.counter, first.cycle);
    EXPECT_NEAR(first.elapsed, 0.76f, 1e-6);
    EXPECT_NEAR(first.sinceLastCall, 0.26f, 1e-5);  // since registration
    EXPECT_NEAR(first.sinceLastLoop, 0.02f, 1e-6);
    EXPECT_EQ(loop.calls[1].cycle, 39);
    EXPECT_NEAR(loop.calls[1].sinceLastCall, 0.04f, 1e-6);
}

TEST_F(ProcessingTest, CallbacksMayChangeTheLoopsWhileTheyRun) {
    std::vector<std::string> order;
    Loop first{"first", &order}, victim{"victim", &order}, added{"added", &order}, quitter{"quitter", &order};
    XPLMFlightLoopID victimId = nullptr;
    first.action = [&] {
        if (first.calls.size() != 1) return;
        XPLMDestroyFlightLoop(victimId);
        XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &added);
    };
    quitter.action = [&] { XPLMUnregisterFlightLoopCallback(loopCallback, &quitter); };
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &first);
    victimId = create(victim, xplm_FlightLoop_Phase_BeforeFlightModel);
    XPLMScheduleFlightLoop(victimId, -1.0f, 1);
    XPLMRegisterFlightLoopCallback(loopCallback, -1.0f, &quitter);

    const int before = errors();
    driver::runFrames(1);
    // The victim was destroyed before its turn; the added loop waits for the next frame.
    EXPECT_EQ(order, std::vector<std::string>({"first", "quitter"}));
    // Unregistering from inside that very callback is reported, and done.
    EXPECT_EQ(errors(), before + 1);
    order.clear();
    driver::runFrames(2);
    EXPECT_EQ(order, std::vector<std::string>({"first", "added", "first", "added"}));
}

TEST_F(ProcessingTest, ScheduleFromAnotherThreadTakesEffectAtTheNextFlightLoop) {
    Loop loop{"loop"};
    XPLMFlightLoopID id = create(loop, xplm_FlightLoop_Phase_BeforeFlightModel);
    XPLMFlightLoopID garbage = reinterpret_cast<XPLMFlightLoopID>(0x5678);
    driver::runFrames(2);
    const int before = errors();
    std::thread worker([&] {
        XPLMScheduleFlightLoop(id, -1.0f, 1);
        XPLMScheduleFlightLoop(garbage, -1.0f, 1);
    });
    worker.join();
    EXPECT_EQ(errors(), before);  // checked on the main thread, at the next flight loop
    driver::runFrames(1);
    ASSERT_EQ(loop.calls.size(), 1u);
    EXPECT_EQ(loop.calls[0].cycle, 2);
    EXPECT_EQ(errors(), before + 1);
}

TEST_F(ProcessingTest, BadFlightLoopArgumentsAreReportedAndIgnored) {
    Loop loop{"loop"};
    int before = errors();
    XPLMFlightLoopID garbage = reinterpret_cast<XPLMFlightLoopID>(0x5678);
    XPLMScheduleFlightLoop(garbage, -1.0f, 1);
    XPLMDestroyFlightLoop(garbage);
    XPLMScheduleFlightLoop(nullptr, -1.0f, 1);
    XPLMDestroyFlightLoop(nullptr);
    // A dataref handle is not a flight loop.
    XPLMScheduleFlightLoop(XPLMFindDataRef("sim/time/paused"), -1.0f, 1);
    EXPECT_EQ(errors(), before + 5);

    before = errors();
    XPLMCreateFlightLoop_t params{sizeof(XPLMCreateFlightLoop_t), xplm_FlightLoop_Phase_BeforeFlightModel,
                                  loopCallback, &loop};
    XPLMFlightLoopID id = XPLMCreateFlightLoop(&params);
    XPLMDestroyFlightLoop(id);
    XPLMScheduleFlightLoop(id, -1.0f, 1);  // destroyed
    XPLMDestroyFlightLoop(id);
    EXPECT_EQ(XPLMCreateFlightLoop(nullptr), nullptr);
    XPLMCreateFlightLoop_t small = params;
    small.structSize = 8;
    EXPECT_EQ(XPLMCreateFlightLoop(&small), nullptr);
    XPLMCreateFlightLoop_t badPhase = params;
    badPhase.phase = 7;
    EXPECT_EQ(XPLMCreateFlightLoop(&badPhase), nullptr);
    XPLMCreateFlightLoop_t noCallback = params;
    noCallback.callbackFunc = nullptr;
    EXPECT_EQ(XPLMCreateFlightLoop(&noCallback), nullptr);
    XPLMRegisterFlightLoopCallback(nullptr, -1.0f, nullptr);
    XPLMUnregisterFlightLoopCallback(loopCallback, &loop);
    XPLMSetFlightLoopCallbackInterval(loopCallback, 1.0f, 1, &loop);
    EXPECT_EQ(errors(), before + 9);
    driver::runFrames(3);
    EXPECT_TRUE(loop.calls.empty());
}

TEST_F(ProcessingTest, PluginLoopsRunAsTheirPluginOnlyWhileItIsEnabled) {
    const int id = loadTestPlugin("loops_counter", "Loops");
    ASSERT_GT(id, 0);
    driver::enablePluginsAndSendLoadMessages();
    auto value = [](const char* leaf) {
        return XPLMGetDatai(XPLMFindDataRef((std::string("xpsim/test/Loops/") + leaf).c_str()));
    };
    driver::runFrames(4);
    EXPECT_EQ(value("legacy_calls"), 4);
    EXPECT_EQ(value("created_calls"), 2);  // every second frame
    EXPECT_EQ(value("seen_id"), id);

    XPLMDisablePlugin(id);
    driver::runFrames(3);
    ASSERT_EQ(XPLMEnablePlugin(id), 1);
    EXPECT_EQ(value("legacy_calls"), 4);
    driver::runFrames(1);
    EXPECT_EQ(value("legacy_calls"), 5);

    // It leaves its loops registered when it stops: a reload must drop them, or the
    // host would call into the unloaded binary.
    driver::reloadPlugins();
    driver::runFrames(3);
    EXPECT_EQ(value("legacy_calls"), 3);
    EXPECT_EQ(value("created_calls"), 2);
    EXPECT_EQ(errorsMentioning("by plug-in " + std::to_string(id) + ":"), 0);
}

}  // namespace
}  // namespace xpsim::test
