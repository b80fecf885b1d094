// Ending the scripts' Python threads at stop, within a bounded time.

#include "core/ScriptThreads.h"

#include <chrono>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/Log.h"
#include "core/PythonErrors.h"
#include "core/ScriptTable.h"
#include "platform/PythonCompat.h"

namespace vorlith {

namespace {

using ThreadId = decltype(std::declval<PyThreadState>().thread_id);

// Every thread state of the interpreter but the calling thread's: threads a script
// started, and C threads inside Python. Holding the interpreter.
std::vector<ThreadId> OtherThreads() {
    std::vector<ThreadId> ids;
    PyThreadState* self = PyThreadState_Get();
    for (PyInterpreterState* interp = PyInterpreterState_Head(); interp; interp = PyInterpreterState_Next(interp))
        for (PyThreadState* t = PyInterpreterState_ThreadHead(interp); t; t = PyThreadState_Next(t))
            if (t != self) ids.push_back(t->thread_id);
    return ids;
}

// Lets the other threads run until none is left or `seconds` have passed.
std::vector<ThreadId> WaitForOtherThreads(double seconds) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    std::vector<ThreadId> left = OtherThreads();
    while (!left.empty() && std::chrono::steady_clock::now() < deadline) {
        Py_BEGIN_ALLOW_THREADS
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        Py_END_ALLOW_THREADS
        left = OtherThreads();
    }
    return left;
}

// "Worker, Thread-2": the threading module's names of the threads, "thread <id>" for one
// it does not know (a C thread).
std::string ThreadNames(const std::vector<ThreadId>& ids) {
    PyObject* threading = PyImport_ImportModule("threading");
    PyObject* threads = threading ? PyObject_CallMethod(threading, const_cast<char*>("enumerate"), nullptr) : nullptr;
    PyObject* known = threads ? PySequence_Tuple(threads) : nullptr;
    PyErr_Clear();
    std::string names;
    for (ThreadId id : ids) {
        std::string name = "thread " + std::to_string(id);
        for (Py_ssize_t i = 0; known && i < PyTuple_GET_SIZE(known); ++i) {
            PyObject* thread = PyTuple_GET_ITEM(known, i);
            PyObject* ident = PyObject_GetAttrString(thread, "ident");
            PyObject* number = ident && ident != Py_None ? PyNumber_Long(ident) : nullptr;
            bool same = number && static_cast<ThreadId>(PyLong_AsUnsignedLongLongMask(number)) == id;
            Py_XDECREF(number);
            Py_XDECREF(ident);
            PyObject* text = same ? PyObject_GetAttrString(thread, "name") : nullptr;
            VL_Text value;
            if (text && value.set(text)) name.assign(value.c_str(), static_cast<std::size_t>(value.size()));
            Py_XDECREF(text);
            PyErr_Clear();
            if (same) break;
        }
        names += (names.empty() ? "" : ", ") + name;
    }
    Py_XDECREF(known);
    Py_XDECREF(threads);
    Py_XDECREF(threading);
    return names;
}

}  // namespace

bool VL_EndScriptThreads() {
    VL_PrintPythonError();  // nothing pending may be blamed on what runs here
    std::vector<ThreadId> left = WaitForOtherThreads(VL_ThreadEndSeconds);
    if (left.empty()) return true;
    VL_WriteToLogf("Python threads still running at stop, told to exit: %s\n", ThreadNames(left).c_str());
    // Raised at the thread's next Python instruction; one blocked in a C call sees it when
    // the call returns. An uncaught SystemExit ends a thread without a report.
    for (ThreadId id : left) PyThreadState_SetAsyncExc(id, PyExc_SystemExit);
    left = WaitForOtherThreads(VL_ThreadExitSeconds);
    if (left.empty()) return true;
    VL_WriteToLogf("Python threads still running, the interpreter is kept for them: %s\n",
                   ThreadNames(left).c_str());
    return false;
}

bool VL_OtherPythonThreadsExist() { return !OtherThreads().empty(); }

void VL_ForgetScriptModules() {
    const VL_ScriptTable* table = VLTestTable;
    if (!table) return;
    PyObject* modules = PyImport_GetModuleDict();  // borrowed
    for (int i = 0; i < table->GetScriptTableSize(); ++i) {
        const _VL_ScriptEntry* entry = table->FindEntry(table->GetScriptId(i));
        if (entry && PyDict_DelItemString(modules, entry->moduleName.c_str()) != 0) PyErr_Clear();
    }
}

}  // namespace vorlith
