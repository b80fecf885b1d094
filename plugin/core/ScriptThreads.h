// The Python threads scripts leave running at stop. Py_Finalize would wait for every
// non-daemon thread without a limit, and an interpreter torn down under a thread that is
// still running (daemon or not) is memory that thread uses again later: it is given a
// bounded time, then told to exit, and while one still runs the interpreter is kept.
#pragma once

namespace vorlith {

// How long threads get to end by themselves after the scripts' XPluginStop, and then
// after SystemExit was raised in them: at most two seconds in all.
constexpr double VL_ThreadEndSeconds = 1.5;
constexpr double VL_ThreadExitSeconds = 0.5;

// Called holding the interpreter (inside a PythonGuard) after every script's XPluginStop.
// Waits for the other Python threads as above, logging the names of those that did not
// end in time. True when none is left, so that the interpreter may be finalised.
bool VL_EndScriptThreads();

// Whether a Python thread other than the caller's exists now (no waiting). Holding the
// interpreter.
bool VL_OtherPythonThreadsExist();

// For an interpreter kept over a stop: drops the scripts' modules from sys.modules, so
// that the next start imports them afresh. Holding the interpreter.
void VL_ForgetScriptModules();

}  // namespace vorlith
