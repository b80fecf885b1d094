// The one way the plug-in reports a script's pending Python error: a traceback through
// the captured standard error into the log, and the error cleared.
#pragma once

namespace vorlith {

// Prints and clears the pending Python error, if any. Never ends the process.
void VL_PrintPythonError();

}  // namespace vorlith
