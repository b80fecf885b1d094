// The one way the plug-in reports a script's pending Python error: a traceback through
// the captured standard error into the log, and the error cleared.
#pragma once

namespace vorlith {

// Prints and clears the pending Python error, if any. Never ends the process: an exit
// request (SystemExit, sys.exit(), exit()) is printed as a traceback like any other error.
void VL_PrintPythonError();

// Runs the plug-in's own Python text in __main__ (PyRun_SimpleString without its
// PyErr_Print, which would end the process on an exit request). False after an error,
// which is printed.
bool VL_RunPythonText(const char* text);

// Called inside a catch block at a boundary to the simulator (entry points, trampolines):
// logs the C++ exception that would have ended the simulator there, with where it was.
void VL_LogCppException(const char* where) noexcept;

}  // namespace vorlith
