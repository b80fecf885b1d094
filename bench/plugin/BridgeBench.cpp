// Cost of crossing between the simulator and Python, each against its floor measured in
// the same run: (a) one flight-loop dispatch through VL_FlightLoopCallback into a bound
// method returning a float, against calling that method from C with a prebuilt tuple;
// (b) XPLMGetDataf(ref) called from Python, against a C function that only parses its
// one argument, in the same Python loop; (c) widget messages with and without a structure.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "callbacks/Trampolines.h"
#include "core/Lifecycle.h"
#include "core/PythonGuard.h"
#include "driver.h"

namespace {

using namespace vorlith;

constexpr const char* kScript = R"(
from XPLMDataAccess import *
import BenchFloor


class Vorlith:
    def XPluginStart(self):
        self.ref = XPLMFindDataRef("sim/cockpit/autopilot/altitude")
        return "VL_Bench", "vorlith.bench", "benchmark target"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Loop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        return 1.0

    def Widget(self, message, widget, param1, param2):
        return 0

    def GetDataf(self, n):
        get, ref = XPLMGetDataf, self.ref
        for i in range(n):
            get(ref)

    def Floor(self, n):
        get, ref = BenchFloor.parse_one, self.ref
        for i in range(n):
            get(ref)
)";

// The floor of a binding: parses one object argument, as every binding does, and no more.
PyObject* ParseOne(PyObject*, PyObject* args) {
    PyObject* object;
    if (!PyArg_ParseTuple(args, "O", &object)) return nullptr;
    Py_RETURN_NONE;
}
PyMethodDef kFloorMethods[] = {
    {"parse_one", ParseOne, METH_VARARGS, "Parses one argument."},
    {nullptr, nullptr, 0, nullptr},
};

// The simulator, the interpreter and the script, for as long as the benchmarks run.
struct Session {
    Session() {
        char pattern[] = "/tmp/vorlith-bench-XXXXXX";
        if (mkdtemp(pattern)) root = pattern;
        std::string scripts = root + "/Resources/plugins/PythonScripts";
        std::filesystem::create_directories(scripts);
        std::ofstream(scripts + "/VL_Bench.py") << kScript;
        xpsim::Options options;
        options.root = root;
        std::string error;
        if (!xpsim::driver::start(options, &error)) std::fprintf(stderr, "xpsim: %s\n", error.c_str());
        VLTestTable = new VL_ScriptTable;
        {
            // The floor module must exist before the script imports it.
            Py_Initialize();
            PythonGuard::releaseAfterStart();
            PythonGuard guard;
            VL_CreateModule("BenchFloor", kFloorMethods);
        }
        StartPython(0);
        PythonGuard guard;
        script = VLTestTable->GetScriptTableSize() == 1 ? VLTestTable->GetScriptId(0) : nullptr;
        if (!script) {
            std::fprintf(stderr, "the benchmark script did not load: see %s/VorlithLog.txt\n", scripts.c_str());
            std::exit(1);
        }
        loop = PyObject_GetAttrString(script, "Loop");
        cell = VLTestTable->AddCallback(FlightLoopCallbackList, script, nullptr, loop, nullptr);
    }
    ~Session() {
        {
            PythonGuard guard;
            Py_XDECREF(loop);
        }
        StopPython(0);
        delete VLTestTable;
        VLTestTable = nullptr;
        xpsim::driver::shutdown();
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    std::string root;
    PyObject* script = nullptr;
    PyObject* loop = nullptr;
    _CallbackList* cell = nullptr;
};

Session& session() {
    static Session s;
    return s;
}

// (a) As the simulator calls it: from outside Python, with no other Python thread, so the
// guard keeps the interpreter lock between calls.
void BM_FlightLoopDispatch(benchmark::State& state) {
    void* cell = session().cell;
    int counter = 0;
    for (auto _ : state) benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
}
BENCHMARK(BM_FlightLoopDispatch);

// (a) The same while a script's thread exists (waiting, not running): the guard takes the
// interpreter lock and gives it back around every call.
void BM_FlightLoopDispatchWithThread(benchmark::State& state) {
    void* cell = session().cell;
    {
        PythonGuard guard;
        PyRun_SimpleString("import threading\n"
                           "bench_stop = threading.Event()\n"
                           "bench_thread = threading.Thread(target=bench_stop.wait)\n"
                           "bench_thread.start()\n");
    }
    int counter = 0;
    for (auto _ : state) benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
    PythonGuard guard;
    PyRun_SimpleString("bench_stop.set()\nbench_thread.join()\n");
}
BENCHMARK(BM_FlightLoopDispatchWithThread);

// (a) The same, nested in a call that already holds the lock (a flight loop dispatched
// while Python runs, e.g. from a binding that calls back).
void BM_FlightLoopDispatchInsideGuard(benchmark::State& state) {
    void* cell = session().cell;
    PythonGuard guard;
    int counter = 0;
    for (auto _ : state) benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
}
BENCHMARK(BM_FlightLoopDispatchInsideGuard);

// (a) The floor: the same bound method called from C with a prebuilt tuple.
void BM_FlightLoopFloor(benchmark::State& state) {
    PythonGuard guard;
    PyObject* args = Py_BuildValue("(ffiO)", 0.5, 0.25, 1, Py_None);
    for (auto _ : state) {
        PyObject* result = PyObject_Call(session().loop, args, nullptr);
        benchmark::DoNotOptimize(PyFloat_AsDouble(result));
        Py_DECREF(result);
    }
    Py_DECREF(args);
}
BENCHMARK(BM_FlightLoopFloor);

// (c) A widget message through VL_WidgetCallback into a bound method: one that carries no
// structure (paint), and a mouse drag, whose mouse state is copied for the decoders.
void WidgetDispatch(benchmark::State& state, XPWidgetMessage message) {
    static XPWidgetID widget = [] {
        PythonGuard guard;
        auto id = reinterpret_cast<XPWidgetID>(0x5151);
        PyObject* method = PyObject_GetAttrString(session().script, "Widget");
        VLTestTable->AddWidgetCallback(WidgetCallbackList, session().script, id, method, 1, nullptr);
        Py_XDECREF(method);
        return id;
    }();
    XPMouseState_t mouse = {10, 20, 0, 0};
    for (auto _ : state)
        benchmark::DoNotOptimize(VL_WidgetCallback(message, widget, reinterpret_cast<intptr_t>(&mouse), 0));
}
void BM_WidgetPaintDispatch(benchmark::State& state) { WidgetDispatch(state, xpMsg_Paint); }
void BM_WidgetMouseDragDispatch(benchmark::State& state) { WidgetDispatch(state, xpMsg_MouseDrag); }
BENCHMARK(BM_WidgetPaintDispatch);
BENCHMARK(BM_WidgetMouseDragDispatch);

// (b) One Python call per item; each benchmark iteration runs a loop of 1000.
void RunPythonLoop(benchmark::State& state, const char* method) {
    PythonGuard guard;
    PyObject* run = PyObject_GetAttrString(session().script, method);
    PyObject* args = Py_BuildValue("(i)", 1000);
    for (auto _ : state) {
        PyObject* result = PyObject_Call(run, args, nullptr);
        if (!result) {
            PyErr_Print();
            state.SkipWithError("the Python loop failed");
            break;
        }
        Py_DECREF(result);
    }
    state.SetItemsProcessed(state.iterations() * 1000);
    Py_DECREF(args);
    Py_DECREF(run);
}
void BM_GetDatafFromPython(benchmark::State& state) { RunPythonLoop(state, "GetDataf"); }
void BM_ParseOneFromPython(benchmark::State& state) { RunPythonLoop(state, "Floor"); }
BENCHMARK(BM_GetDatafFromPython);
BENCHMARK(BM_ParseOneFromPython);

// The ratios themselves, with measured and floor run in alternating chunks of the same
// iteration, so that a busy machine slows both alike. Counters: nanoseconds per call and
// their ratio.
template <typename Measured, typename Floor>
void Alternate(benchmark::State& state, int chunk, Measured measured, Floor floor) {
    using Clock = std::chrono::steady_clock;
    Clock::duration measuredTime{}, floorTime{};
    for (auto _ : state) {
        auto start = Clock::now();
        measured();
        auto middle = Clock::now();
        floor();
        measuredTime += middle - start;
        floorTime += Clock::now() - middle;
    }
    double calls = static_cast<double>(state.iterations()) * chunk;
    double measuredNs = std::chrono::duration<double, std::nano>(measuredTime).count() / calls;
    double floorNs = std::chrono::duration<double, std::nano>(floorTime).count() / calls;
    state.counters["measured_ns"] = measuredNs;
    state.counters["floor_ns"] = floorNs;
    state.counters["ratio"] = measuredNs / floorNs;
}

void BM_FlightLoopRatio(benchmark::State& state) {
    constexpr int kChunk = 256;
    void* cell = session().cell;
    PyObject* loop = session().loop;
    PyObject* args = nullptr;
    {
        PythonGuard guard;
        args = Py_BuildValue("(ffiO)", 0.5, 0.25, 1, Py_None);
    }
    int counter = 0;
    Alternate(state, kChunk,
              [&] {
                  for (int i = 0; i < kChunk; ++i)
                      benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
              },
              [&] {
                  // The floor holds the interpreter lock for its whole chunk.
                  PythonGuard guard;
                  for (int i = 0; i < kChunk; ++i) {
                      PyObject* result = PyObject_Call(loop, args, nullptr);
                      benchmark::DoNotOptimize(PyFloat_AsDouble(result));
                      Py_DECREF(result);
                  }
              });
    PythonGuard guard;
    Py_DECREF(args);
}
BENCHMARK(BM_FlightLoopRatio);

void BM_GetDatafRatio(benchmark::State& state) {
    constexpr int kChunk = 1000;
    PythonGuard guard;
    PyObject* getData = PyObject_GetAttrString(session().script, "GetDataf");
    PyObject* floor = PyObject_GetAttrString(session().script, "Floor");
    PyObject* args = Py_BuildValue("(i)", kChunk);
    auto run = [&](PyObject* method) {
        PyObject* result = PyObject_Call(method, args, nullptr);
        if (!result) PyErr_Print();
        Py_XDECREF(result);
    };
    Alternate(state, kChunk, [&] { run(getData); }, [&] { run(floor); });
    Py_DECREF(args);
    Py_DECREF(floor);
    Py_DECREF(getData);
}
BENCHMARK(BM_GetDatafRatio);

}  // namespace

BENCHMARK_MAIN();
