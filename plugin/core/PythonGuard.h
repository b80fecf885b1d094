// The one way into Python: a scoped guard that takes the interpreter lock on entry and
// gives it back on the way out, so that threads a script started run while the
// simulator works between callbacks. Every entry point, trampoline and handler uses it.
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
        if (--depth_ == 0 && Py_IsInitialized()) released_ = PyEval_SaveThread();
    }
    PythonGuard(const PythonGuard&) = delete;
    PythonGuard& operator=(const PythonGuard&) = delete;

    // Right after the interpreter started (holding the lock): give the lock away.
    static void releaseAfterStart();
    // Takes the lock back for good and finalises the interpreter.
    static void finalize();
    static bool inside() { return depth_ > 0; }

private:
    static int depth_;
    static PyThreadState* released_;
};

}  // namespace vorlith
