// Printing a script's Python error.

#include "core/PythonErrors.h"

#include "platform/PythonCompat.h"

namespace vorlith {

void VL_PrintPythonError() {
    if (PyErr_Occurred()) PyErr_Print();
}

}  // namespace vorlith
