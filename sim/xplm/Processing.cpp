// XPLMProcessing: the clock and flight loops. Legacy registrations (function, refcon)
// and loops from XPLMCreateFlightLoop share one table; flightLoopFrame runs the due
// ones, phase by phase, each phase in registration order.

#include <algorithm>
#include <atomic>
#include <cmath>
#include <mutex>
#include <thread>
#include <vector>

#include "XPLMProcessing.h"
#include "dataaccess_internal.h"
#include "handles.h"
#include "host.h"

namespace xpsim {
namespace {

// Intervals arrive as floats (0.1f is a little more than 0.1 s); a deadline this close
// after a frame's time counts as reached, so float rounding never costs a whole frame.
constexpr double kDueSlackSeconds = 1e-5;
constexpr int kPhaseCount = 2;

struct FlightLoop {
    XPLMFlightLoop_f callback = nullptr;
    void* refcon = nullptr;
    int phase = xplm_FlightLoop_Phase_BeforeFlightModel;
    int plugin = 0;
    bool legacy = false;  // XPLMRegisterFlightLoopCallback, identified by (callback, refcon)

    enum class Due { Never, AtTime, AtLoop } due = Due::Never;
    double dueTime = 0.0;
    long long dueLoop = 0;
    // Of its last call, or of its registration until it has been called.
    double lastCallTime = 0.0;
    long long lastCallLoop = 0;
};

struct FlightLoops {
    HandleTable<FlightLoop> table{HandleKind::FlightLoop};
    std::vector<void*> order[kPhaseCount];  // handles in registration order; dead ones dropped later
    long long lastDispatchLoop = -1;        // cycle number of the last dispatch, -1 before the first
    double lastDispatchTime = 0.0;
    void* calling = nullptr;                // the loop whose callback runs now
    bool dispatching = false;
    // Counts removals: while it stands still, pointers into the table stay valid (it
    // only reuses freed slots) and `order` holds no dead handles.
    unsigned long removals = 0;
    unsigned long removalsAtCompaction = 0;
};

FlightLoops gLoops;

// XPLMScheduleFlightLoop is the one call the SDK allows from other threads (for an
// unscheduled loop of an enabled plug-in). Such requests wait here until the main
// thread takes them at the start of its next flight loop; nothing else is shared.
struct ScheduleRequest {
    XPLMFlightLoopID id;
    float interval;
    bool relativeToNow;
};
struct ScheduleRequests {
    std::mutex lock;
    std::vector<ScheduleRequest> pending;
    std::atomic<bool> any{false};
    std::thread::id mainThread = std::this_thread::get_id();
};
ScheduleRequests gRequests;

void dropDeadHandles() {
    if (gLoops.removals == gLoops.removalsAtCompaction) return;
    gLoops.removalsAtCompaction = gLoops.removals;
    for (auto& order : gLoops.order) {
        order.erase(std::remove_if(order.begin(), order.end(),
                                   [](void* h) { return !gLoops.table.contains(h); }),
                    order.end());
    }
}

void removeLoop(void* handle) {
    gLoops.table.remove(handle);
    ++gLoops.removals;
    if (!gLoops.dispatching) dropDeadHandles();
}

// > 0: seconds, < 0: flight loops, 0: not called until scheduled again. Measured from
// now, or from the loop's last call (its registration if never called).
void schedule(FlightLoop& loop, float interval, bool relativeToNow) {
    const Host& host = Host::get();
    if (interval == 0.0f || std::isnan(interval)) {
        loop.due = FlightLoop::Due::Never;
    } else if (interval > 0.0f) {
        loop.due = FlightLoop::Due::AtTime;
        loop.dueTime = (relativeToNow ? host.elapsedSeconds : loop.lastCallTime) + interval;
    } else {
        // -1 is the next flight loop; fractions count as whole loops, at least one.
        long long loops = std::max(1LL, static_cast<long long>(std::min(-interval, 1e9f)));
        loop.due = FlightLoop::Due::AtLoop;
        loop.dueLoop = (relativeToNow ? gLoops.lastDispatchLoop : loop.lastCallLoop) + loops;
    }
}

void* addLoop(XPLMFlightLoop_f callback, void* refcon, int phase, bool legacy) {
    FlightLoop loop;
    loop.callback = callback;
    loop.refcon = refcon;
    loop.phase = phase;
    loop.legacy = legacy;
    loop.plugin = Host::get().currentPlugin;
    loop.lastCallTime = Host::get().elapsedSeconds;
    loop.lastCallLoop = gLoops.lastDispatchLoop;
    void* handle = gLoops.table.add(loop);
    gLoops.order[phase].push_back(handle);
    return handle;
}

void* findLegacy(XPLMFlightLoop_f callback, void* refcon) {
    void* found = nullptr;
    gLoops.table.forEach([&](void* handle, FlightLoop& loop) {
        if (!found && loop.legacy && loop.callback == callback && loop.refcon == refcon) found = handle;
    });
    return found;
}

FlightLoop* createdLoop(XPLMFlightLoopID id, const char* function) {
    FlightLoop* loop = gLoops.table.get(id);
    if (!loop || loop->legacy) {
        Host::get().reportError("%s: %p is not a flight loop id", function, id);
        return nullptr;
    }
    return loop;
}

bool isDue(const FlightLoop& loop, double now, long long cycle) {
    switch (loop.due) {
        case FlightLoop::Due::AtTime: return now + kDueSlackSeconds >= loop.dueTime;
        case FlightLoop::Due::AtLoop: return cycle >= loop.dueLoop;
        case FlightLoop::Due::Never: break;
    }
    return false;
}

void takeScheduleRequests() {
    std::vector<ScheduleRequest> requests;
    {
        std::lock_guard<std::mutex> guard(gRequests.lock);
        requests.swap(gRequests.pending);
        gRequests.any.store(false, std::memory_order_relaxed);
    }
    for (const ScheduleRequest& request : requests) {
        if (FlightLoop* loop = createdLoop(request.id, "XPLMScheduleFlightLoop")) {
            schedule(*loop, request.interval, request.relativeToNow);
        }
    }
}

// Loops registered during the phase wait for the next dispatch; loops removed during
// it are skipped (their handles no longer resolve).
void runPhase(int phase, double now, long long cycle, float sinceLastLoop) {
    const size_t count = gLoops.order[phase].size();
    for (size_t i = 0; i < count; ++i) {
        void* handle = gLoops.order[phase][i];
        FlightLoop* loop = gLoops.table.get(handle);
        // A disabled plug-in's loop stays due and runs once it is enabled again.
        if (!loop || !isDue(*loop, now, cycle)) continue;
        if (!isPluginEnabled(loop->plugin)) continue;
        const float sinceLastCall = static_cast<float>(now - loop->lastCallTime);
        loop->lastCallTime = now;
        loop->lastCallLoop = cycle;
        loop->due = FlightLoop::Due::Never;
        const unsigned long removalsBefore = gLoops.removals;
        float next;
        {
            CallingPlugin calling(loop->plugin);
            gLoops.calling = handle;
            next = loop->callback(sinceLastCall, sinceLastLoop, static_cast<int>(cycle), loop->refcon);
            gLoops.calling = nullptr;
        }
        if (gLoops.removals != removalsBefore) loop = gLoops.table.get(handle);
        if (loop) schedule(*loop, next, true);
    }
}

}  // namespace

// The SDK leaves open whether the callback's counter equals XPLMGetCycleNumber; ours
// does: both are the number of frames completed before this one.
void flightLoopFrame() {
    const Host& host = Host::get();
    const double now = host.elapsedSeconds;
    const long long cycle = host.cycleNumber;
    const float sinceLastLoop = static_cast<float>(now - gLoops.lastDispatchTime);
    if (gRequests.any.load(std::memory_order_acquire)) takeScheduleRequests();
    gLoops.lastDispatchLoop = cycle;
    gLoops.lastDispatchTime = now;
    gLoops.dispatching = true;
    runPhase(xplm_FlightLoop_Phase_BeforeFlightModel, now, cycle, sinceLastLoop);
    flightModelStep();
    runPhase(xplm_FlightLoop_Phase_AfterFlightModel, now, cycle, sinceLastLoop);
    gLoops.dispatching = false;
    dropDeadHandles();
}

void forgetPluginProcessing(int plugin) {
    gLoops.table.forEach([plugin](void* handle, FlightLoop& loop) {
        if (loop.plugin == plugin) {
            gLoops.table.remove(handle);
            ++gLoops.removals;
        }
    });
    if (!gLoops.dispatching) dropDeadHandles();
}

void resetProcessing() {
    gLoops.table.clear();
    for (auto& order : gLoops.order) order.clear();
    gLoops.removalsAtCompaction = ++gLoops.removals;
    gLoops.lastDispatchLoop = -1;
    gLoops.lastDispatchTime = 0.0;
    gLoops.calling = nullptr;
    gLoops.dispatching = false;
    std::lock_guard<std::mutex> guard(gRequests.lock);
    gRequests.pending.clear();
    gRequests.any.store(false);
    gRequests.mainThread = std::this_thread::get_id();
}

}  // namespace xpsim

using namespace xpsim;

XPLM_API float XPLMGetElapsedTime(void) { return static_cast<float>(Host::get().elapsedSeconds); }

XPLM_API int XPLMGetCycleNumber(void) { return Host::get().cycleNumber; }

// The SDK does not say which phase legacy callbacks run in (2.1: "at the end", later
// SDKs: before the flight model); we follow the later, more precise statement. It
// also does not say what registering the same (callback, refcon) twice does; we keep
// one registration and re-arm it with the new interval.
XPLM_API void XPLMRegisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, float inInterval, void* inRefcon) {
    if (!inFlightLoop) {
        Host::get().reportError("XPLMRegisterFlightLoopCallback: no callback");
        return;
    }
    void* handle = findLegacy(inFlightLoop, inRefcon);
    if (!handle) handle = addLoop(inFlightLoop, inRefcon, xplm_FlightLoop_Phase_BeforeFlightModel, true);
    FlightLoop* loop = gLoops.table.get(handle);
    loop->lastCallTime = Host::get().elapsedSeconds;
    loop->lastCallLoop = gLoops.lastDispatchLoop;
    schedule(*loop, inInterval, true);
}

// Unregistering a callback from inside itself is not allowed by the SDK; it is
// reported and still done safely.
XPLM_API void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void* inRefcon) {
    void* handle = findLegacy(inFlightLoop, inRefcon);
    if (!handle) {
        Host::get().reportError("XPLMUnregisterFlightLoopCallback: %p with refcon %p is not registered",
                                reinterpret_cast<void*>(inFlightLoop), inRefcon);
        return;
    }
    if (handle == gLoops.calling) {
        Host::get().reportError("XPLMUnregisterFlightLoopCallback: called from inside that callback");
    }
    removeLoop(handle);
}

XPLM_API void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval,
                                                int inRelativeToNow, void* inRefcon) {
    void* handle = findLegacy(inFlightLoop, inRefcon);
    if (!handle) {
        Host::get().reportError("XPLMSetFlightLoopCallbackInterval: %p with refcon %p is not registered",
                                reinterpret_cast<void*>(inFlightLoop), inRefcon);
        return;
    }
    if (handle == gLoops.calling) {
        Host::get().reportError(
            "XPLMSetFlightLoopCallbackInterval: called from inside that callback; its return value decides");
    }
    schedule(*gLoops.table.get(handle), inInterval, inRelativeToNow != 0);
}

XPLM_API XPLMFlightLoopID XPLMCreateFlightLoop(XPLMCreateFlightLoop_t* inParams) {
    if (!inParams) {
        Host::get().reportError("XPLMCreateFlightLoop: no parameters");
        return nullptr;
    }
    if (inParams->structSize < static_cast<int>(sizeof(XPLMCreateFlightLoop_t))) {
        Host::get().reportError("XPLMCreateFlightLoop: structSize %d is less than %zu", inParams->structSize,
                                sizeof(XPLMCreateFlightLoop_t));
        return nullptr;
    }
    if (inParams->phase != xplm_FlightLoop_Phase_BeforeFlightModel &&
        inParams->phase != xplm_FlightLoop_Phase_AfterFlightModel) {
        Host::get().reportError("XPLMCreateFlightLoop: unknown phase %d", inParams->phase);
        return nullptr;
    }
    if (!inParams->callbackFunc) {
        Host::get().reportError("XPLMCreateFlightLoop: no callback");
        return nullptr;
    }
    return addLoop(inParams->callbackFunc, inParams->refcon, inParams->phase, false);
}

XPLM_API void XPLMDestroyFlightLoop(XPLMFlightLoopID inFlightLoopID) {
    if (createdLoop(inFlightLoopID, "XPLMDestroyFlightLoop")) removeLoop(inFlightLoopID);
}

// Interval 0 unschedules the loop; the SDK does not say so for this function, but it
// is the encoding every other flight-loop interval uses.
XPLM_API void XPLMScheduleFlightLoop(XPLMFlightLoopID inFlightLoopID, float inInterval, int inRelativeToNow) {
    if (std::this_thread::get_id() != gRequests.mainThread) {
        std::lock_guard<std::mutex> guard(gRequests.lock);
        gRequests.pending.push_back(ScheduleRequest{inFlightLoopID, inInterval, inRelativeToNow != 0});
        gRequests.any.store(true, std::memory_order_release);
        return;
    }
    if (FlightLoop* loop = createdLoop(inFlightLoopID, "XPLMScheduleFlightLoop")) {
        schedule(*loop, inInterval, inRelativeToNow != 0);
    }
}
