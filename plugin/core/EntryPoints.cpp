// The five entry points the simulator calls: the only symbols lin.xpl exports. Nothing
// thrown inside the plug-in leaves them (function try blocks).

#include <cstdio>
#include <string>

#include "XPLMDefs.h"
#include "XPLMUtilities.h"
#include "core/Lifecycle.h"
#include "core/PythonErrors.h"
#include "core/PythonGuard.h"
#include "core/ScriptThreads.h"
#include "core/SdkCapabilities.h"
#include "core/Text.h"
#include "platform/DynamicLibrary.h"
#include "platform/Paths.h"
#include "tools/Tools.h"
#include "ui/ControlPanel.h"

using namespace vorlith;

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) try {
    std::snprintf(VorlithVersionNumber, sizeof VorlithVersionNumber, "%d.%02d.%02d", 2, 67, 7);
    std::string banner = std::string("VorlithVersionNumber = ") + VorlithVersionNumber + "\n";
    XPLMDebugString(banner.c_str());

    std::string sdkLibrary = VL_SdkLibraryPath();
    char sdkPath[512];
    if (VL_ConvertPath(sdkLibrary.c_str(), sdkPath, sizeof sdkPath) != 0) {
        XPLMDebugString("Skelvane - Unable to convert VL_XPLM_File path\n");
        VL_CopyText(sdkPath, sdkLibrary);
    }
    if (FoundSDK200(sdkPath)) {
        int xplaneVersion = 0, xplmVersion = 0;
        XPLMHostApplicationID host;
        XPLMGetVersions(&xplaneVersion, &xplmVersion, &host);
        VL_AppendText(VorlithVersionNumber, xplmVersion > 200 ? " (SDK 2.10)" : " (SDK 2.00)");
    } else {
        VL_AppendText(VorlithVersionNumber, " (SDK 1.02)");
    }
    if (XPLMSetErrorCallback_ptr) XPLMSetErrorCallback_ptr(VL_ErrorCallback);

    VLTestTable = new VL_ScriptTable;
    VLTestTable->SetPythonRunState(0);
    SetupWidgets();
    StartPython(0);
    VL_StartTools();

    // The SDK gives each of the three buffers 256 bytes.
    VL_CopyText(outName, 256, "Vorlith");
    VL_CopyText(outSig, 256, "tembrook.projects.vorlith");
    VL_CopyText(outDesc, 256, "Python Script Interface Plugin");
    return 1;
} catch (...) {
    VL_LogCppException("XPluginStart");
    return 1;
}

PLUGIN_API void XPluginStop() try {
    VL_StopTools();
    StopPython(0);
    // A start that found no scripts folder left the interpreter running; the binary is
    // about to be unloaded, and the next load must find no interpreter of ours. Unless a
    // script's thread still runs in it (StopPython gave it its time): then interpreter and
    // binary both stay, since the thread's code lives in them (a load of the same binary
    // finds them again).
    if (Py_IsInitialized()) {
        bool threadsEnded;
        {
            PythonGuard guard;
            threadsEnded = !VL_OtherPythonThreadsExist();
        }
        if (threadsEnded) PythonGuard::finalize();
        else VL_KeepPluginLoaded();
    }
    DestroyWidgets();
    delete VLTestTable;
    VLTestTable = nullptr;
    if (XPLMSetErrorCallback_ptr) XPLMSetErrorCallback_ptr(nullptr);
} catch (...) {
    VL_LogCppException("XPluginStop");
}

PLUGIN_API int XPluginEnable() try {
    if (!VLTestTable) return 1;
    PythonGuard guard;
    int result = 1;
    for (int i = 0; i < VLTestTable->GetScriptTableSize(); ++i) result = CallXPluginEnable(VLTestTable->GetScriptId(i));
    return result;
} catch (...) {
    VL_LogCppException("XPluginEnable");
    return 1;
}

PLUGIN_API void XPluginDisable() try {
    if (!VLTestTable) return;
    PythonGuard guard;
    for (int i = 0; i < VLTestTable->GetScriptTableSize(); ++i) CallXPluginDisable(VLTestTable->GetScriptId(i), 1);
} catch (...) {
    VL_LogCppException("XPluginDisable");
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFromWho, int inMessage, void* inParam) try {
    if (!VLTestTable) return;
    PythonGuard guard;
    for (int i = 0; i < VLTestTable->GetScriptTableSize(); ++i)
        CallXPluginReceiveMessage(VLTestTable->GetScriptId(i), inFromWho, inMessage, inParam);
} catch (...) {
    VL_LogCppException("XPluginReceiveMessage");
}
