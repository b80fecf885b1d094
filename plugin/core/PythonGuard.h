// The one way into Python: a scoped guard that holds the interpreter lock while it lives
// and, on the way out, gives it back whenever another Python thread exists, so that threads
// a script started run while the simulator works between callbacks. Every entry point,
// trampoline and handler uses it.
#pragma once

#include "platform/PythonCompat.h"

namespace vorlith {

class PythonGuard {
public:
    PythonGuard() {
        if (depth_++ == 0 && released_) {
            PyEval_RestoreThread(released_);
            released_ = nullptr;
        }
    }
    ~PythonGuard() {
        // A stop inside the guard finalised the interpreter: there is no lock to give back.
        // With no other thread to run, giving the lock back and taking it again on the next
        // call costs more than the call itself: the simulator's thread keeps it instead.
        if (--depth_ == 0 && running_ && OtherThreadsExist())
            released_ = PyEval_SaveThread();
    }
    PythonGuard(const PythonGuard&) = delete;
    PythonGuard& operator=(const PythonGuard&) = delete;

    // Right after the interpreter started (holding the lock): give the lock away.
    static void releaseAfterStart();
    // Takes the lock back for good and finalises the interpreter.
    static void finalize();
    static bool inside() { return depth_ > 0; }
    // True while the simulator's thread has given the lock away between calls.
    static bool released() { return released_ != nullptr; }

private:
    // Whether a thread other than the simulator's has a Python thread state: a thread a
    // script started (its state exists before start() returns), or a C thread entering
    // Python with PyGILState_Ensure. Read while holding the lock. Such a C thread, when it
    // is the first other thread, waits for the end of the simulator's next call into Python,
    // at most a frame: releaseAfterStart registers a flight loop that passes through here.
    // The interpreter is the one kept at start; a new thread's state goes to the head of
    // its list, so the simulator's thread is alone when it is the list's only state.
    static bool OtherThreadsExist() {
        PyThreadState* head = PyInterpreterState_ThreadHead(interpreter_);
        return !head || PyThreadState_Next(head);
    }

    static int depth_;
    static PyThreadState* released_;
    static bool running_;  // the interpreter is initialised: kept here, asked on every call
    static PyInterpreterState* interpreter_;
};

}  // namespace vorlith
