// The interpreter lock's state between calls from the simulator.

#include "core/PythonGuard.h"

#include "XPLMProcessing.h"

namespace vorlith {

int PythonGuard::depth_ = 0;
PyThreadState* PythonGuard::released_ = nullptr;
bool PythonGuard::running_ = false;
PyInterpreterState* PythonGuard::interpreter_ = nullptr;

namespace {

// A C thread that enters Python while the simulator's thread keeps the lock waits for the
// end of the next call into Python. Passing through the guard once a frame bounds that
// wait to a frame even when no script has a callback of its own.
float VL_PassLockOnLoop(float, float, int, void*) {
    PythonGuard guard;
    return -1.0f;
}

}  // namespace

void PythonGuard::releaseAfterStart() {
    running_ = Py_IsInitialized() != 0;
    interpreter_ = running_ ? PyInterpreterState_Head() : nullptr;
    if (depth_ == 0 && !released_ && Py_IsInitialized()) released_ = PyEval_SaveThread();
    XPLMRegisterFlightLoopCallback(VL_PassLockOnLoop, -1.0f, nullptr);
}

void PythonGuard::finalize() {
    if (!Py_IsInitialized()) return;
    XPLMUnregisterFlightLoopCallback(VL_PassLockOnLoop, nullptr);
    // Between calls the lock is either given away (take it back) or still ours.
    if (depth_ == 0 && released_) {
        PyEval_RestoreThread(released_);
        released_ = nullptr;
    }
    running_ = false;
    Py_Finalize();
}

}  // namespace vorlith
