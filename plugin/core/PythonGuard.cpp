// The interpreter lock's state between calls from the simulator.

#include "core/PythonGuard.h"

namespace vorlith {

int PythonGuard::depth_ = 0;
PyThreadState* PythonGuard::released_ = nullptr;

void PythonGuard::releaseAfterStart() {
    if (depth_ == 0 && !released_ && Py_IsInitialized()) released_ = PyEval_SaveThread();
}

void PythonGuard::finalize() {
    if (!Py_IsInitialized()) return;
    // Between calls the lock is either given away (take it back) or still ours.
    if (depth_ == 0 && released_) {
        PyEval_RestoreThread(released_);
        released_ = nullptr;
    }
    Py_Finalize();
}

}  // namespace vorlith
