// StartPython, StopPython and the per-script relays, with the log lines a user reads
// to follow what happened.

#include "core/Lifecycle.h"

#include <dirent.h>

#include <cstdint>
#include <string>

#include "XPLMUtilities.h"
#include "core/Log.h"
#include "core/PythonErrors.h"
#include "core/PythonGuard.h"
#include "core/ScriptFiles.h"
#include "core/ScriptThreads.h"
#include "core/Text.h"
#include "modules/Modules.h"
#include "platform/DynamicLibrary.h"
#include "platform/PathConvert.h"
#include "platform/Paths.h"
#include "tools/Console.h"
#include "ui/ControlPanel.h"

namespace vorlith {

char VorlithVersionNumber[256] = {0};
char gVL_PythonPath[512] = {0};

namespace {

constexpr const char* kCredit = "- Python scripts for X-Plane, embedded Python " PY_VERSION;

// A Python string literal holding text (the folder may contain quotes or backslashes).
std::string PythonLiteral(const std::string& text) {
    std::string literal = "'";
    for (char c : text) {
        if (c == '\'' || c == '\\') literal += '\\';
        literal += c;
    }
    return literal + "'";
}

void PrintPendingError() {
    VL_PrintPythonError();
}

// The shared relay: look the method up, call it with args (stolen), report what failed.
// releaseInstance: give up the table's reference as soon as the method is found.
int CallScriptMethod(PyObject* scriptId, const char* methodName, PyObject* args, bool releaseInstance) {
    PyObject* method = PyObject_GetAttrString(scriptId, methodName);
    if (!method) {
        Py_XDECREF(args);
        PrintPendingError();
        VL_WriteToLogf("Cannot find method %s\n", methodName);
        return 1;
    }
    if (releaseInstance) Py_DECREF(scriptId);  // the bound method keeps it alive for the call
    PyObject* result = args ? PyObject_CallObject(method, args) : nullptr;
    Py_XDECREF(args);
    if (!result) PrintPendingError();
    Py_XDECREF(result);
    Py_DECREF(method);
    return 1;
}

bool IsEnabled(PyObject* scriptId) { return VLTestTable && VLTestTable->GetScriptEnabledStatus(scriptId) != 0; }

void ReportMissingScriptsFolder(const char* folder) {
    XPLMDebugString("\n*** VORLITH ERROR ***\n");
    XPLMDebugString("Path :- ");
    XPLMDebugString(folder);
    XPLMDebugString(" does not exist.\n");
    XPLMDebugString("You will need to create a folder called PythonScripts under the plugins folder\n");
    XPLMDebugString("*** VORLITH ERROR ***\n\n");
}

bool IsDirectory(const char* path) {
    DIR* dir = opendir(path);
    if (!dir) return false;
    closedir(dir);
    return true;
}

// Loads every script of the folder and starts them, inside the guard.
void LoadAndStartScripts(const char* folder, int enableScripts) {
    int files = GetScriptFiles(folder);
    for (int i = 0; i < files; ++i) {
        if (LoadScript(TestText[i], VL_StandardScript))
            VL_WriteToLogf("Script '%s.py' successfully loaded.\n", TestText[i]);
    }
    int count = VLTestTable->GetScriptTableSize();
    for (int i = 0; i < count; ++i) {
        PyObject* scriptId = VLTestTable->GetScriptId(i);
        if (VLTestTable->GetScriptType(scriptId) != VL_StandardScript) continue;
        if (CallXPluginStart(scriptId, VL_StandardScript) && enableScripts == 1) CallXPluginEnable(scriptId);
    }
    VLTestTable->AddScriptsToWidgets(count);
    VL_ShowScriptsInPicker();
}

}  // namespace

int CallXPluginStart(PyObject* scriptId, TypeOfScript kind) {
    if (!IsEnabled(scriptId)) return 0;
    PyObject* method = PyObject_GetAttrString(scriptId, "XPluginStart");
    if (!method) {
        PrintPendingError();
        VL_WriteToLog("Cannot find method XPluginStart\n");
        return 1;
    }
    PyObject* result = PyObject_CallObject(method, nullptr);
    Py_DECREF(method);
    if (!result) {
        PrintPendingError();
        return 1;
    }
    // Three texts; on Python 3 str or bytes, as everywhere the plug-in takes text.
    VL_Text name, signature, description;
    int parsed = PyTuple_Check(result) && PyArg_ParseTuple(result, "O&O&O&", VL_ParseText, &name, VL_ParseText,
                                                            &signature, VL_ParseText, &description);
    if (parsed)
        VLTestTable->SetScriptDescriptions(scriptId, name.c_str(), signature.c_str(), description.c_str(), kind);
    else if (!PyErr_Occurred())
        PyErr_Format(PyExc_TypeError, "XPluginStart must return three strings, not %.200s", Py_TYPE(result)->tp_name);
    // The script is not started; the user reads why in the log.
    if (!parsed) PrintPendingError();
    Py_DECREF(result);
    return parsed ? 1 : 0;
}

int CallXPluginEnable(PyObject* scriptId) {
    if (!IsEnabled(scriptId)) return 0;
    return CallScriptMethod(scriptId, "XPluginEnable", PyTuple_New(0), false);
}

int CallXPluginDisable(PyObject* scriptId, int checkEnabled) {
    if (checkEnabled && !IsEnabled(scriptId)) return 0;
    return CallScriptMethod(scriptId, "XPluginDisable", PyTuple_New(0), false);
}

int CallXPluginStop(PyObject* scriptId, int checkEnabled) {
    if (checkEnabled && !IsEnabled(scriptId)) return 0;
    return CallScriptMethod(scriptId, "XPluginStop", PyTuple_New(0), true);
}

int CallXPluginReceiveMessage(PyObject* scriptId, int from, int message, void* param) {
    if (!IsEnabled(scriptId)) return 0;
    // The parameter is a long on Python 2 as well, not the plain int that small pointer
    // values would become there.
    PyObject* parameter = PyLong_FromUnsignedLongLong(reinterpret_cast<std::uintptr_t>(param));
    PyObject* args = parameter ? Py_BuildValue("(ilN)", from, static_cast<long>(message), parameter) : nullptr;
    return CallScriptMethod(scriptId, "XPluginReceiveMessage", args, false);
}

int CallScriptReceiveMessage(PyObject* receiver, PyObject* sender, long message, PyObject* parameter) {
    if (!IsEnabled(receiver)) return 0;
    return CallScriptMethod(receiver, "XPluginReceiveMessage",
                            Py_BuildValue("(OlO)", sender, message, parameter), false);
}

void StartPython(int enableScripts) {
    if (!VLTestTable || VLTestTable->GetPythonRunState() == 1) return;
    VL_OutputFileEnabled = 1;
    VL_ResolveFilePaths();
    VL_WriteToLog("+++ LOGGING STARTED +++\n");
    VL_WriteToLogf("%s %s %s\n", "Vorlith", VorlithVersionNumber, kCredit);

    std::string iniPath = VL_SimPath({"Resources", "plugins", "Vorlith", "Vorlith.ini"});
    if (VL_ConvertPath(iniPath.c_str(), VL_PluginDataFile, sizeof VL_PluginDataFile) != 0) {
        VL_WriteToLog("Unable to convert PluginDataFile path\n");
        VL_CopyText(VL_PluginDataFile, iniPath);
    }
    VL_WriteToLog(VL_GetINIFileValues() ? "Vorlith.ini file found\n" : "Vorlith.ini file not found\n");

    VL_WriteToLog("Before Py_Initialize()\n");
    // After a start that found no scripts folder the interpreter is still running.
    if (!Py_IsInitialized()) {
        if (!VL_MakePythonSymbolsGlobal())
            VL_WriteToLog("Python's library could not be made global: extension modules may fail to import\n");
        char why[512];
        if (!VL_InitializeInterpreter(why, sizeof why)) {
            VL_WriteToLogf("Python could not start: %s\n", why);
            return;
        }
        PythonGuard::releaseAfterStart();
    }
    PythonGuard guard;
    VL_WriteToLog("After Py_Initialize()\n");
    VL_WriteToLogf("Python Version %s running on the %s platform\n", Py_GetVersion(), Py_GetPlatform());
    VL_WriteToLog("Before Modules Init\n");

    std::string folder = VL_SimPath({"Resources", "plugins", "PythonScripts"});
    std::string pythonForm = VL_PythonFormPath(folder, VL_SimSeparator());

    VL_ShareVirtualCameraData();
    initTembrookInternalModule();
    std::string capture = "import sys\n"
                          "sys.path.append(" + PythonLiteral(pythonForm) + ")\n"
                          "import TembrookInternalModule\n"
                          "class StdoutCatcher:\n"
                          "\tdef write(self, str):\n"
                          "\t\tTembrookInternalModule.PrintStdout(str)\n"
                          "\tdef flush(self):\n"
                          "\t\tpass\n"
                          "class StderrCatcher:\n"
                          "\tdef write(self, str):\n"
                          "\t\tTembrookInternalModule.PrintStderr(str)\n"
                          "\tdef flush(self):\n"
                          "\t\tpass\n"
                          "sys.stdout = StdoutCatcher()\n"
                          "sys.stderr = StderrCatcher()\n";
    VL_RunPythonText(capture.c_str());
    VL_WriteToLog("Using path below for script path\n");
    VL_WriteToLog(pythonForm.c_str());
    VL_WriteToLog("\n");

    VL_CopyText(gVL_PythonPath, pythonForm);
    VL_RegisterModules();
    VL_WriteToLog("After Modules Init\n");
    VL_WriteToLog("Searching for Standard Scripts\n");

    char scriptsFolder[512];
    if (VL_ConvertPath(folder.c_str(), scriptsFolder, sizeof scriptsFolder) != 0) {
        XPLMDebugString("Vorlith - Unable to convert TempPath path\n");
        VL_CopyText(scriptsFolder, folder);
    }
    if (!IsDirectory(scriptsFolder)) {
        ReportMissingScriptsFolder(scriptsFolder);
        SetErrorText();
        return;
    }
    LoadAndStartScripts(folder.c_str(), enableScripts);
    VLTestTable->SetPythonRunState(1);
}

void StopPython(int disableScripts) {
    if (!VLTestTable || VLTestTable->GetPythonRunState() == 0) return;
    bool threadsEnded = true;
    {
        PythonGuard guard;
        // A script's XPluginStop may change the table: its size is read on every turn.
        for (int i = 0; i < VLTestTable->GetScriptTableSize(); ++i) {
            PyObject* scriptId = VLTestTable->GetScriptId(i);
            if (disableScripts == 1) CallXPluginDisable(scriptId, 0);
            CallXPluginStop(scriptId, 0);
        }
        // What scripts left registered gives its objects back while their destructors
        // can still print to the log.
        VL_RetireCallbacks();
        VL_ForgetConsoleNamespace();
        VL_RunPythonText("import sys\n"
                         "sys.stdout = sys.__stdout__\n"
                         "sys.stderr = sys.__stderr__\n");
        threadsEnded = VL_EndScriptThreads();
        // A kept interpreter: the next start imports the scripts afresh all the same.
        if (!threadsEnded) VL_ForgetScriptModules();
        // Python 2's Py_Finalize prints an error of sys.exitfunc (atexit's handlers) with
        // PyErr_Print, which ends the process on SystemExit: they run here instead, at the
        // same point of the stop (after the threads), their errors printed safely.
        if (threadsEnded)
            VL_RunPythonText("import sys\n"
                             "if hasattr(sys, 'exitfunc'):\n"
                             "    _vl_exitfunc = sys.exitfunc\n"
                             "    del sys.exitfunc\n"
                             "    _vl_exitfunc()\n");
    }
    VL_WriteToLog("Before Py_Finalize()\n");
    if (threadsEnded) PythonGuard::finalize();
    VL_WriteToLog("After Py_Finalize()\n");
    if (gVL_CheckCallbacks) VL_CheckAllCallbacks();
    VL_ReleaseCallbacks();
    VLTestTable->ClearScriptTable();
    VL_UnshareVirtualCameraData();
    VL_WriteToLog("--- LOGGING STOPPED ---\n\n");
    VLTestTable->SetPythonRunState(0);
}

}  // namespace vorlith
