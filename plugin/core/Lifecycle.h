// The interpreter's life and the relay of the simulator's events to every script:
// StartPython / StopPython (also behind the control panel's buttons) and the calls of
// each script's XPluginStart, XPluginEnable, XPluginDisable, XPluginStop and
// XPluginReceiveMessage.
#pragma once

#include "core/ScriptTable.h"

namespace vorlith {

extern char VorlithVersionNumber[256];  // "2.67.07 (SDK x.xx)"
extern char gVL_PythonPath[512];        // the scripts folder as appended to sys.path

// Each does nothing when the run state already is what it would produce. Call them
// outside any PythonGuard (from an entry point or a control-panel handler).
void StartPython(int enableScripts);
void StopPython(int disableScripts);

// Per-script relays; each returns 0 when skipped for a disabled script, else 1.
int CallXPluginStart(PyObject* scriptId, TypeOfScript kind);
int CallXPluginEnable(PyObject* scriptId);
int CallXPluginDisable(PyObject* scriptId, int checkEnabled);
int CallXPluginStop(PyObject* scriptId, int checkEnabled);
int CallXPluginReceiveMessage(PyObject* scriptId, int from, int message, void* param);
// A message from one script to another: the sender object and any parameter object.
int CallScriptReceiveMessage(PyObject* receiver, PyObject* sender, long message, PyObject* parameter);

// Defined with the callback lists (callbacks/): the SDK's error callback, which hands the
// message to every script's error callback, the check of every list at stop, and the
// release of the records a stopping interpreter left (before and after Py_Finalize).
void VL_ErrorCallback(const char* message);
void VL_CheckAllCallbacks();
void VL_RetireCallbacks();
void VL_ReleaseCallbacks();

}  // namespace vorlith
