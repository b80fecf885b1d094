// The one shape of every call from the simulator into a script's callable: check the
// record may be called, build the argument tuple, call, convert the result, and turn
// every Python error into a printed traceback and the kind's fixed value.
#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "callbacks/Registry.h"
#include "core/Log.h"
#include "core/PythonErrors.h"
#include "platform/Clock.h"
#include "tools/Quarantine.h"

namespace vorlith {

namespace detail {
extern bool gVL_TimingCall;               // the call being made is timed
extern std::uint64_t gVL_ScriptTicks;     // what the timed call spent in the script
extern std::uint32_t gVL_SampleState;
}  // namespace detail
// Calls are counted and timed for the performance table; off only to measure its cost.
extern bool gVL_TimeCalls;

// What a kind of callback answers when it does not get a result from Python, and the
// line it logs when its record has no callable.
template <typename R>
struct VL_CallbackKind {
    VL_CostKind cost;  // the column of the performance table its time goes to
    const char* missingLine;
    R inactive;  // the script is disabled, unknown, or of an earlier interpreter
    R missing;   // the record has no callable
    R failed;    // the callable raised
    bool printFailure = true;         // the widget kind leaves the error pending
    const char* failedLine = nullptr;  // logged after the traceback, when set
};

// The arguments of a call, each C value made into its Python object as Py_BuildValue's
// format would ("f"/"d" a float, "i"/"b"/"l" an int, "O" the object itself, "N" a new
// object taken over), without a format string parsed or a tuple made on every call.
inline PyObject* VL_Object(double value) { return PyFloat_FromDouble(value); }
inline PyObject* VL_Object(int value) { return VL_IntFromLong(value); }
inline PyObject* VL_Object(long value) { return VL_IntFromLong(value); }
inline PyObject* VL_Object(PyObject* object) {
    Py_XINCREF(object);
    return object;
}
// An object made for the call alone ("N"): its reference is taken over.
struct VL_New {
    PyObject* object;
};
inline PyObject* VL_Object(VL_New item) { return item.object; }

template <std::size_t N>
class VL_Arguments {
public:
    VL_Arguments() = default;  // a failed set: the error is pending
    template <typename... Items>
    explicit VL_Arguments(Items... values) : items_{nullptr, VL_Object(values)...} {
        ok_ = true;
        for (std::size_t i = 1; i <= N; ++i) ok_ = ok_ && items_[i];
    }
    VL_Arguments(VL_Arguments&& other) noexcept : ok_(other.ok_) {
        for (std::size_t i = 0; i <= N; ++i) std::swap(items_[i], other.items_[i]);
    }
    VL_Arguments(const VL_Arguments&) = delete;
    VL_Arguments& operator=(const VL_Arguments&) = delete;
    ~VL_Arguments() {
        for (PyObject* item : items_) Py_XDECREF(item);
    }
    bool ok() const { return ok_; }
    PyObject* call(PyObject* callable) { return VL_CallWithArguments(callable, items_ + 1, N); }

private:
    PyObject* items_[N + 1] = {};  // items_[0] is the callee's to use
    bool ok_ = false;
};

template <typename... Items>
VL_Arguments<sizeof...(Items)> VL_Pack(Items... items) {
    return VL_Arguments<sizeof...(Items)>(items...);
}

// The result formats "i", "f" and "d", as PyArg_Parse converts them but without parsing
// a format on every call: a result of another type gives 0 and its error is printed.
inline bool VL_ResultFailed() {
    if (!PyErr_Occurred()) return false;
    VL_PrintPythonError();
    return true;
}
inline int VL_ResultInt(PyObject* result) {
    if (PyFloat_Check(result)) {
        PyErr_SetString(PyExc_TypeError, "integer argument expected, got float");
        return VL_ResultFailed(), 0;
    }
    long value = PyLong_AsLong(result);
    if (value == -1 && VL_ResultFailed()) return 0;
    if (value < INT_MIN || value > INT_MAX) {
        PyErr_SetString(PyExc_OverflowError, "signed integer is out of range");
        return VL_ResultFailed(), 0;
    }
    return static_cast<int>(value);
}
inline double VL_ResultDouble(PyObject* result) {
    double value = PyFloat_AsDouble(result);
    return value == -1.0 && VL_ResultFailed() ? 0.0 : value;
}
inline float VL_ResultFloat(PyObject* result) { return static_cast<float>(VL_ResultDouble(result)); }
// Kinds whose SDK callback returns nothing.
inline int VL_ResultNone(PyObject*) { return 1; }

// Calls `callable` with the arguments `build()` makes and converts what it returns; the
// caller holds the PythonGuard and has checked the script may be called.
// Inlined into each trampoline: this is the hot path of every dispatch.
template <typename R, typename Build, typename Convert>
__attribute__((always_inline)) inline R VL_CallPython(const VL_CallbackKind<R>& kind, PyObject* callable, Build&& build,
                Convert&& convert) {
    if (!callable) {
        VL_PrintPythonError();
        VL_WriteToLog(kind.missingLine);
        return kind.missing;
    }
    // An error an earlier callback left pending would be blamed on this call.
    VL_PrintPythonError();
    Py_INCREF(callable);  // the callable may unregister itself while it runs
    PyObject* result = nullptr;
    // Nothing thrown on our side of the call may reach the simulator.
    try {
        {
            auto args = build();
            if (args.ok()) {
                if (detail::gVL_TimingCall) {
                    std::uint64_t start = VL_Ticks();
                    result = args.call(callable);
                    detail::gVL_ScriptTicks = VL_Ticks() - start;
                } else {
                    result = args.call(callable);
                }
            }
        }
        Py_DECREF(callable);
        detail::gVL_CallRaised = !result;
        if (!result) {
            if (kind.printFailure) VL_PrintPythonError();
            if (kind.failedLine) VL_WriteToLog(kind.failedLine);
            return kind.failed;
        }
        R value = convert(result);
        Py_DECREF(result);
        return value;
    } catch (...) {
        VL_LogCppException("a callback");
        return kind.failed;
    }
}

// One call in sixteen, picked at random, is timed, and the first of each kind of each
// script in each second: reading the clock four times on every call would cost a
// third of a dispatch. The performance table scales the timed calls up to all.
inline bool VL_SampleCall() {
    std::uint32_t x = detail::gVL_SampleState;
    x ^= x << 13;
    x ^= x >> 17;
    x ^= x << 5;
    detail::gVL_SampleState = x;
    return (x & 15) == 0;
}

// The timed call, out of the way of the untimed ones. `pin` keeps the status that holds
// `cost` alive over the call, which may delete the record.
template <typename R, typename Call>
__attribute__((noinline)) R VL_TimeCall(VL_CallCost& cost, const VL_ScriptStatusRef& pin, Call& call) {
    VL_ScriptStatusRef kept = pin;
    bool outer = detail::gVL_TimingCall;
    detail::gVL_TimingCall = true;
    detail::gVL_ScriptTicks = 0;
    std::uint64_t start = VL_Ticks();
    R value = call();
    std::uint64_t total = VL_Ticks() - start;
    std::uint64_t script = detail::gVL_ScriptTicks < total ? detail::gVL_ScriptTicks : total;
    detail::gVL_TimingCall = outer;
    ++cost.timed;
    cost.scriptTicks += script;
    cost.ownTicks += total - script;
    return value;
}

// Runs `call` (one VL_CallPython) counted in `cost`, timed when sampled.
template <typename R, typename Call>
__attribute__((always_inline)) inline R VL_TimedCall(VL_CallCost& cost, const VL_ScriptStatusRef& pin, Call&& call) {
    bool timed = gVL_TimeCalls && (++cost.calls, cost.timed == 0 || VL_SampleCall());
    if (__builtin_expect(timed, 0)) return VL_TimeCall<R>(cost, pin, call);
    return call();
}

// The dispatch of a callback record: `build(refcon)` makes the arguments from the record's
// reference value. The record's fields are read before the call: the call may delete it.
template <typename R, typename Build, typename Convert>
R VL_CallUser(const VL_CallbackKind<R>& kind, const _CallbackListEntry* record, Build&& build,
              Convert&& convert) {
    if (!VL_IsRecordActive(record)) return kind.inactive;
    auto call = [&]() __attribute__((always_inline)) {
        return VL_CallPython(kind, record->callable, [&] { return build(record->refconObject); },
                             convert);
    };
    // Counting failures needs the status after the call, which may delete the record.
    VL_ScriptStatusRef counted;
    PyObject* script = nullptr;
    if (gVL_DisableFailingScripts) {
        counted = record->status;
        script = record->scriptId;
        detail::gVL_CallRaised = false;
    }
    R value = VL_TimedCall<R>(record->status->cost[kind.cost], record->status, call);
    if (script) VL_CountCall(script, *counted, detail::gVL_CallRaised);
    return value;
}

}  // namespace vorlith
