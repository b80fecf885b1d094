// Cost of crossing between the simulator and Python, each against its floor measured in
// the same run: (a) one flight-loop dispatch through VL_FlightLoopCallback into a bound
// method returning a float, against calling that method from C with a prebuilt tuple and
// against a minimal C trampoline boxing the same fresh arguments; (b) XPLMGetDataf(ref)
// called from Python, against a METH_O no-op, in the same Python loop; (c) a frame that
// reads 2,700 datarefs against the same loop calling the no-op; (d) the dispatch cost
// with 1, 10, 100 and 256 scripts each with one flight loop; (e) a widget message with
// and without a structure behind its parameter.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <time.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "callbacks/Trampolines.h"
#include "core/Lifecycle.h"
#include "core/PythonGuard.h"
#include "callbacks/Dispatch.h"
#include "XPLMDataAccess.h"
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
        get, ref = BenchFloor.noop, self.ref
        for i in range(n):
            get(ref)

    def FindFrame(self, names):
        self.frame = [XPLMFindDataRef(name) for name in names]

    def Frame(self, n):
        get = XPLMGetDataf
        for ref in self.frame:
            get(ref)

    def FrameFloor(self, n):
        get = BenchFloor.noop
        for ref in self.frame:
            get(ref)

    def MinimalRead(self, n):
        get, ref = BenchFloor.getdataf, self.ref
        for i in range(n):
            get(ref)

    def MinimalFrame(self, n):
        get = BenchFloor.getdataf
        for ref in self.frame:
            get(ref)
)";

constexpr int kFrameReads = 2700;

// The frame's datarefs: the simulator's float datarefs, in table order, as many times
// as it takes to make 2,700 reads.
std::vector<std::string> FrameNames() {
    std::ifstream table(VORLITH_DATAREFS_TSV);
    std::vector<std::string> floats;
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) {
        std::istringstream fields(line);
        std::string name, type;
        std::getline(fields, name, '\t');
        std::getline(fields, type, '\t');
        if (type == "float") floats.push_back(name);
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; !floats.empty() && names.size() < kFrameReads; ++i)
        names.push_back(floats[i % floats.size()]);
    return names;
}

// The floor of a binding: the cheapest C built-in Python can call with one argument.
PyObject* NoOp(PyObject*, PyObject*) { Py_RETURN_NONE; }
// The least any XPLMGetDataf binding does: the handle from the int, the simulator's read,
// a new float. What the binding costs beyond the work itself is measured against this.
PyObject* MinimalGetDataf(PyObject*, PyObject* ref) {
    void* handle = PyLong_AsVoidPtr(ref);
    if (!handle && PyErr_Occurred()) return nullptr;
    return PyFloat_FromDouble(XPLMGetDataf(handle));
}
PyMethodDef kFloorMethods[] = {
    {"noop", NoOp, METH_O, "Does nothing."},
    {"getdataf", MinimalGetDataf, METH_O, "Reads a float dataref."},
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
        PyObject* names = PyList_New(0);
        for (const std::string& name : FrameNames()) {
            PyObject* text = VL_TextFromString(name.c_str());
            PyList_Append(names, text);
            Py_DECREF(text);
        }
        PyObject* found = PyObject_CallMethod(script, "FindFrame", "(O)", names);
        if (!found) PyErr_Print();
        Py_XDECREF(found);
        Py_DECREF(names);
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
void BM_NoOpFromPython(benchmark::State& state) { RunPythonLoop(state, "Floor"); }
BENCHMARK(BM_GetDatafFromPython);
BENCHMARK(BM_NoOpFromPython);

// The ratios themselves, with measured and floor run in alternating chunks of the same
// iteration, each timed by the thread's own CPU clock, so that a busy machine slows
// neither. Counters: nanoseconds per call and their ratio.
double ThreadNanoseconds() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

template <typename Measured, typename Floor>
void Alternate(benchmark::State& state, int chunk, Measured measured, Floor floor) {
    double measuredTime = 0, floorTime = 0;
    for (auto _ : state) {
        double start = ThreadNanoseconds();
        measured();
        double middle = ThreadNanoseconds();
        floor();
        measuredTime += middle - start;
        floorTime += ThreadNanoseconds() - middle;
    }
    double calls = static_cast<double>(state.iterations()) * chunk;
    state.counters["measured_ns"] = measuredTime / calls;
    state.counters["floor_ns"] = floorTime / calls;
    state.counters["ratio"] = measuredTime / floorTime;
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

// The same dispatch with and without the counting and timing of the performance table.
void BM_FlightLoopTimingRatio(benchmark::State& state) {
    constexpr int kChunk = 256;
    void* cell = session().cell;
    int counter = 0;
    auto chunk = [&](bool timed) {
        gVL_TimeCalls = timed;
        for (int i = 0; i < kChunk; ++i)
            benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
    };
    Alternate(state, kChunk, [&] { chunk(true); }, [&] { chunk(false); });
    gVL_TimeCalls = true;
}
BENCHMARK(BM_FlightLoopTimingRatio);

// Two of the script's loops, each called with `chunk`, alternating; counters per call.
void AlternateMethods(benchmark::State& state, int chunk, const char* measuredName,
                      const char* floorName) {
    PythonGuard guard;
    PyObject* measured = PyObject_GetAttrString(session().script, measuredName);
    PyObject* floor = PyObject_GetAttrString(session().script, floorName);
    PyObject* args = Py_BuildValue("(i)", chunk);
    auto run = [&](PyObject* method) {
        PyObject* result = PyObject_Call(method, args, nullptr);
        if (!result) PyErr_Print();
        Py_XDECREF(result);
    };
    Alternate(state, chunk, [&] { run(measured); }, [&] { run(floor); });
    Py_DECREF(args);
    Py_DECREF(floor);
    Py_DECREF(measured);
}

void BM_GetDatafRatio(benchmark::State& state) { AlternateMethods(state, 1000, "GetDataf", "Floor"); }
BENCHMARK(BM_GetDatafRatio);

// (c) A frame of 2,700 XPLMGetDataf reads against the same loop calling the no-op;
// counters per read.
void BM_FrameRatio(benchmark::State& state) {
    AlternateMethods(state, kFrameReads, "Frame", "FrameFloor");
}
BENCHMARK(BM_FrameRatio);

// (b, c) The same two loops against a minimal METH_O binding doing the same work: the
// ratio is what the binding adds to the read itself.
void BM_GetDatafVsMinimalBinding(benchmark::State& state) {
    AlternateMethods(state, 1000, "GetDataf", "MinimalRead");
}
void BM_FrameVsMinimalBinding(benchmark::State& state) {
    AlternateMethods(state, kFrameReads, "Frame", "MinimalFrame");
}
BENCHMARK(BM_GetDatafVsMinimalBinding);
BENCHMARK(BM_FrameVsMinimalBinding);

// (a) What a minimal hand-written trampoline does: box the same fresh arguments, call
// the same bound method, convert its float; the caller holds the interpreter.
float MinimalTrampoline(float sinceLastCall, float sinceLastLoop, int counter, PyObject* loop) {
    PyObject* args[5] = {nullptr, PyFloat_FromDouble(sinceLastCall),
                         PyFloat_FromDouble(sinceLastLoop), VL_IntFromLong(counter), Py_None};
    Py_INCREF(Py_None);
    PyObject* result = VL_CallWithArguments(loop, args + 1, 4);
    for (int i = 1; i < 5; ++i) Py_DECREF(args[i]);
    float value = result ? static_cast<float>(PyFloat_AsDouble(result)) : 1.0f;
    Py_XDECREF(result);
    return value;
}

// The dispatch as the simulator calls it (no lock held between calls), against the
// minimal trampoline holding the lock for its whole chunk.
void BM_FlightLoopVsMinimalTrampoline(benchmark::State& state) {
    constexpr int kChunk = 256;
    void* cell = session().cell;
    PyObject* loop = session().loop;
    int counter = 0;
    Alternate(state, kChunk,
              [&] {
                  for (int i = 0; i < kChunk; ++i)
                      benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
              },
              [&] {
                  PythonGuard guard;
                  for (int i = 0; i < kChunk; ++i)
                      benchmark::DoNotOptimize(MinimalTrampoline(0.5f, 0.25f, ++counter, loop));
              });
}
BENCHMARK(BM_FlightLoopVsMinimalTrampoline);

// (d) N scripts, each with one flight loop, all dispatched once per iteration: the cost
// per dispatch must not grow with N (the scripts come last in the table, after the one
// that loaded).
void BM_DispatchScaling(benchmark::State& state) {
    const int scripts = static_cast<int>(state.range(0));
    std::vector<PyObject*> ids;
    std::vector<_CallbackList*> cells;
    {
        PythonGuard guard;
        PyObject* type = PyObject_GetAttrString(session().script, "__class__");  // old-style on 2.7
        for (int i = 0; i < scripts; ++i) {
            PyObject* id = PyObject_CallObject(type, nullptr);
            VLTestTable->AddScriptId(id, ("VL_Scale" + std::to_string(i)).c_str(), VL_StandardScript);
            PyObject* loop = PyObject_GetAttrString(id, "Loop");
            cells.push_back(VLTestTable->AddCallback(FlightLoopCallbackList, id, nullptr, loop, nullptr));
            Py_DECREF(loop);
            ids.push_back(id);
        }
        Py_DECREF(type);
    }
    int counter = 0;
    for (auto _ : state)
        for (_CallbackList* cell : cells)
            benchmark::DoNotOptimize(VL_FlightLoopCallback(0.5f, 0.25f, ++counter, cell));
    state.SetItemsProcessed(state.iterations() * scripts);
    state.counters["ns_per_dispatch"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * scripts,
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    PythonGuard guard;
    for (_CallbackList* cell : cells) VLTestTable->DeleteCallback(FlightLoopCallbackList, cell, -1);
    for (PyObject* id : ids) {
        VLTestTable->RemoveScriptId(id, VL_StandardScript);
        Py_DECREF(id);
    }
}
BENCHMARK(BM_DispatchScaling)->Arg(1)->Arg(10)->Arg(100)->Arg(256);

// (e) A widget message through VL_WidgetCallback into a bound method: one that carries no
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

}  // namespace

BENCHMARK_MAIN();
