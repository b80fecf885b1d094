// The module XPLMPlugin: other plug-ins (finding them, their information, enabling them,
// messages to them) and the SDK's features. A feature a script enables is kept for that
// script in the script table, whose feature list is filled once from the simulator.

#include <string>

#include "XPLMPlugin.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"
#include "modules/xplm/NativePaths.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMPlugin";
constexpr int kInfoBuffer = 1024;  // the SDK writes at most 256 bytes

bool IsBoundMethod(PyObject* callable) { return Py_TYPE(callable) == &PyMethod_Type; }

// --- plug-ins ---

PyObject* PY_XPLMGetMyID(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMGetMyID", [] { return VL_IntFromLong(XPLMGetMyID()); });
}

PyObject* PY_XPLMCountPlugins(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMCountPlugins", [] { return VL_IntFromLong(XPLMCountPlugins()); });
}

// The bindings of one int argument and an SDK function answering an int.
PyObject* QueryPlugin(PyObject* args, const char* function, int (*sdk)(int)) {
    int value;
    if (!PyArg_ParseTuple(args, "i", &value)) return nullptr;
    return VL_Guarded(kModule, function, [&] { return VL_IntFromLong(sdk(value)); });
}

PyObject* PY_XPLMGetNthPlugin(PyObject*, PyObject* args) {
    return QueryPlugin(args, "XPLMGetNthPlugin", XPLMGetNthPlugin);
}
PyObject* PY_XPLMIsPluginEnabled(PyObject*, PyObject* args) {
    return QueryPlugin(args, "XPLMIsPluginEnabled", XPLMIsPluginEnabled);
}
PyObject* PY_XPLMEnablePlugin(PyObject*, PyObject* args) {
    return QueryPlugin(args, "XPLMEnablePlugin", XPLMEnablePlugin);
}

PyObject* PY_XPLMDisablePlugin(PyObject*, PyObject* args) {
    int id;
    if (!PyArg_ParseTuple(args, "i", &id)) return nullptr;
    return VL_Guarded(kModule, "XPLMDisablePlugin", [&] {
        XPLMDisablePlugin(id);
        return VL_Done();
    });
}

PyObject* PY_XPLMReloadPlugins(PyObject*, PyObject*) {
    bool ok = VL_GuardedCallReporting(kModule, "XPLMReloadPlugins", "Function Error",
                                      [] { XPLMReloadPlugins(); });
    return VL_IntFromLong(ok ? 1 : 0);
}

PyObject* FindPlugin(const char* function, XPLMPluginID (*sdk)(const char*), const char* text) {
    return VL_Guarded(kModule, function, [&] { return VL_IntFromLong(sdk(text)); });
}

PyObject* PY_XPLMFindPluginByPath(PyObject*, PyObject* args) {
    VL_Text path;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &path)) return nullptr;
    return FindPlugin("XPLMFindPluginByPath", XPLMFindPluginByPath, path.c_str());
}

PyObject* PY_XPLMFindPluginByPath_NP(PyObject*, PyObject* args) {
    PyObject* self;
    VL_Text path;
    if (!PyArg_ParseTuple(args, "OO&", &self, VL_ParseText, &path)) return nullptr;
    VL_NativePathScope scope(self);
    return FindPlugin("XPLMFindPluginByPath", XPLMFindPluginByPath, path.c_str());
}

PyObject* PY_XPLMFindPluginBySignature(PyObject*, PyObject* args) {
    VL_Text signature;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &signature)) return nullptr;
    return FindPlugin("XPLMFindPluginBySignature", XPLMFindPluginBySignature, signature.c_str());
}

// The four texts into their out-lists. A failure is reported under another module's and
// function's name; scripts and their authors have always seen it that way.
PyObject* PluginInfo(int id, PyObject* const (&lists)[4]) {
    if (!VL_CheckOutLists({lists[0], lists[1], lists[2], lists[3]})) return nullptr;
    char texts[4][kInfoBuffer] = {};
    char* out[4];
    for (int i = 0; i < 4; ++i) out[i] = lists[i] == Py_None ? nullptr : texts[i];
    if (!VL_GuardedCallReporting("XPLMDisplay", "XPLMGetHotKeyInfo", "Parameter Error",
                                 [&] { XPLMGetPluginInfo(id, out[0], out[1], out[2], out[3]); }))
        return VL_IntFromLong(0);
    for (int i = 0; i < 4; ++i) {
        if (!out[i]) continue;
        texts[i][kInfoBuffer - 1] = '\0';
        if (!VL_StoreOut(lists[i], VL_TextFromString(texts[i]))) return nullptr;
    }
    return VL_Done();
}

PyObject* PY_XPLMGetPluginInfo(PyObject*, PyObject* args) {
    int id;
    PyObject* lists[4];
    if (!PyArg_ParseTuple(args, "iOOOO", &id, &lists[0], &lists[1], &lists[2], &lists[3]))
        return nullptr;
    return PluginInfo(id, lists);
}

PyObject* PY_XPLMGetPluginInfo_NP(PyObject*, PyObject* args) {
    PyObject* self;
    int id;
    PyObject* lists[4];
    if (!PyArg_ParseTuple(args, "OiOOOO", &self, &id, &lists[0], &lists[1], &lists[2], &lists[3]))
        return nullptr;
    VL_NativePathScope scope(self);
    return PluginInfo(id, lists);
}

// The parameter goes as a pointer: a long is the pointer's value, a text passes its own
// characters (alive for the call; delivery is synchronous). Anything else is refused.
// On Python 3 every int is a long.
PyObject* PY_XPLMSendMessageToPlugin(PyObject*, PyObject* args) {
    int id;
    long message;
    PyObject* parameter;
    if (!PyArg_ParseTuple(args, "ilO", &id, &message, &parameter)) return nullptr;
    void* pointer = nullptr;
    VL_Text text;
    if (PyLong_Check(parameter)) {
        pointer = VL_HandleFromObject(parameter);
    } else if (VL_TextCheck(parameter) && text.set(parameter)) {
        pointer = const_cast<char*>(text.c_str());
    } else {
        PyErr_Clear();
        PrintException(kModule, "XPLMSendMessageToPlugin", "Parameter Error");
        return VL_IntFromLong(0);
    }
    return VL_Guarded(kModule, "XPLMSendMessageToPlugin", [&] {
        XPLMSendMessageToPlugin(id, static_cast<int>(message), pointer);
        return VL_Done();
    });
}

// --- features ---

#define VL_REQUIRE(function) \
    if (!VL_Supported(kModule, #function, function##_ptr, VL_NotSupported200)) return VL_IntFromLong(0);

PyObject* PY_XPLMHasFeature(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMHasFeature)
    VL_Text feature;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &feature)) return nullptr;
    return VL_Guarded(kModule, "XPLMHasFeature",
                      [&] { return VL_IntFromLong(XPLMHasFeature_ptr(feature.c_str())); });
}

// The simulator's own state for the plug-in, not a script's setting.
PyObject* PY_XPLMIsFeatureEnabled(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMIsFeatureEnabled)
    VL_Text feature;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &feature)) return nullptr;
    return VL_Guarded(kModule, "XPLMIsFeatureEnabled",
                      [&] { return VL_IntFromLong(XPLMIsFeatureEnabled_ptr(feature.c_str())); });
}

// The function took the script as its first argument from one version on; old scripts
// still call it the old way.
void LogEnableFeatureUsage() {
    const std::string rule = std::string(115, '-') + "\n";
    VL_WriteToLog(rule.c_str());
    PrintException(kModule, "XPLMEnableFeature", "Wrong number of parameters Error");
    VL_WriteToLog(rule.c_str());
    VL_WriteToLog("This has changed from Version 2.0.0.1 as it has to handle native paths on a per "
                  "script basis.\n");
    VL_WriteToLog("Usage Syntax :- XPLMEnableFeature(self, inFeature, inEnable)\n");
    VL_WriteToLog("Usage Example :- XPLMEnableFeature(self, \"XPLM_WANTS_REFLECTIONS\", 1)\n");
    VL_WriteToLog("Usage Example :- XPLMEnableFeature(self, \"XPLM_USE_NATIVE_PATHS\", 1)\n");
    VL_WriteToLog(rule.c_str());
}

// Kept for the script alone: the simulator's feature stays as it is.
PyObject* PY_XPLMEnableFeature(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMEnableFeature)
    PyObject* self;
    VL_Text feature;
    int enable;
    if (!PyArg_ParseTuple(args, "OO&i", &self, VL_ParseText, &feature, &enable)) {
        LogEnableFeatureUsage();
        return nullptr;
    }
    return VL_Guarded(kModule, "XPLMEnableFeature", [&] {
        int id = VL_Table().GetFeatureIdFromFeatureName(feature.c_str());
        if (id >= 0) {
            VL_Table().SetFeatureEnable(self, id, enable);
            return VL_IntFromLong(1);
        }
        char text[1024];
        std::snprintf(text, sizeof text, "Feature [%s] not supported", feature.c_str());
        PrintException(kModule, "XPLMEnableFeature", text);
        return VL_IntFromLong(0);
    });
}

struct EnumerationRequest {
    PyObject* self;
    PyObject* callable;
    void* refcon;
};

bool ParseEnumerationRequest(PyObject* args, EnumerationRequest& r) {
    PyObject* refconObject;
    if (!PyArg_ParseTuple(args, "OOO", &r.self, &r.callable, &refconObject)) return false;
    r.refcon = VL_RefconFromObject(refconObject);
    return true;
}

// The record stays after the enumeration until VL_RemoveEnumerateFeatures; while it is
// there the same request enumerates nothing.
PyObject* PY_XPLMEnumerateFeatures(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMEnumerateFeatures)
    EnumerationRequest r;
    if (!ParseEnumerationRequest(args, r)) return nullptr;
    return VL_Guarded(kModule, "XPLMEnumerateFeatures", [&] {
        int found = 0, position = 0;
        VL_Table().FindCallback(FeatureEnumeratorCallbackList, r.self, r.callable, r.refcon, found,
                                position);
        if (IsBoundMethod(r.callable) && !found) {
            _CallbackList* cell = VL_Table().AddCallback(FeatureEnumeratorCallbackList, r.self,
                                                         nullptr, r.callable, r.refcon);
            XPLMEnumerateFeatures_ptr(VL_FeatureEnumeratorCallback, cell);
        }
        if (VL_Tracing())
            VL_Trace("XPLMEnumerateFeatures")
                .line("pScriptId = %x, inRefcon = %d\n", VL_Low32(r.self), VL_Int(r.refcon))
                .size("FeatureEnumeratorCallbackList", FeatureEnumeratorCallbackList);
        return VL_Done();
    });
}

#undef VL_REQUIRE

PyObject* PY_RemoveEnumerateFeatures(PyObject*, PyObject* args) {
    EnumerationRequest r;
    if (!ParseEnumerationRequest(args, r)) return nullptr;
    return VL_Guarded(kModule, "VL_RemoveEnumerateFeatures", [&] {
        if (IsBoundMethod(r.callable)) {
            int found = 0, position = 0;
            _CallbackList* cell = VL_Table().FindCallback(FeatureEnumeratorCallbackList, r.self,
                                                          r.callable, r.refcon, found, position);
            if (found)
                VL_Table().DeleteCallback(FeatureEnumeratorCallbackList, cell, position);
            else
                VL_ReportForScript(kModule, "VL_RemoveEnumerateFeatures", VL_NoSuchCallbackRefcon,
                                   r.self);
        }
        if (VL_Tracing())
            VL_Trace("VL_RemoveEnumerateFeatures")
                .line("pScriptId = %x, Script Name = %s, inRefcon = %d\n", VL_Low32(r.self),
                      VL_ScriptName(r.self).c_str(), VL_Int(r.refcon))
                .size("FeatureEnumeratorCallbackList", FeatureEnumeratorCallbackList);
        return VL_Done();
    });
}

// Each feature the simulator names gets the next number, in its enumeration order.
void VL_FeatureEnum(const char* feature, void*) {
    if (!VLTestTable || !feature) return;
    int id = VLTestTable->GetNumberOfFeatures();
    VLTestTable->AddFeature(id, feature);
    VLTestTable->SetNumberOfFeatures(id + 1);
}

PyMethodDef XPLMPluginMethods[] = {
    {"XPLMGetMyID", PY_XPLMGetMyID, VL_METH_ARGS, "Get plugin ID."},
    {"XPLMCountPlugins", PY_XPLMCountPlugins, VL_METH_ARGS, "Count the number of plugins."},
    {"XPLMGetNthPlugin", PY_XPLMGetNthPlugin, VL_METH_ARGS, "Get the Nth plugins."},
    {"XPLMFindPluginByPath", PY_XPLMFindPluginByPath, VL_METH_ARGS, "Find plugin by path."},
    {"XPLMFindPluginByPath_NP", PY_XPLMFindPluginByPath_NP, VL_METH_ARGS,
     "Find plugin by path using Native Paths."},
    {"XPLMFindPluginBySignature", PY_XPLMFindPluginBySignature, VL_METH_ARGS,
     "Find plugin by signature."},
    {"XPLMGetPluginInfo", PY_XPLMGetPluginInfo, VL_METH_ARGS, "Get plugin info."},
    {"XPLMGetPluginInfo_NP", PY_XPLMGetPluginInfo_NP, VL_METH_ARGS,
     "Get plugin info using Native Paths."},
    {"XPLMIsPluginEnabled", PY_XPLMIsPluginEnabled, VL_METH_ARGS, "Is the plugin enabled."},
    {"XPLMEnablePlugin", PY_XPLMEnablePlugin, VL_METH_ARGS, "Enable the plugin."},
    {"XPLMDisablePlugin", PY_XPLMDisablePlugin, VL_METH_ARGS, "Disable the plugin."},
    {"XPLMReloadPlugins", PY_XPLMReloadPlugins, VL_METH_ARGS, "Extract File and Path."},
    {"XPLMSendMessageToPlugin", PY_XPLMSendMessageToPlugin, VL_METH_ARGS, "Send message to a plugin."},
    {"XPLMHasFeature", PY_XPLMHasFeature, VL_METH_ARGS, "Has the feature."},
    {"XPLMIsFeatureEnabled", PY_XPLMIsFeatureEnabled, VL_METH_ARGS, "Is the Feature enabled."},
    {"XPLMEnableFeature", PY_XPLMEnableFeature, VL_METH_ARGS, "Enable the Feature."},
    {"XPLMEnumerateFeatures", PY_XPLMEnumerateFeatures, VL_METH_ARGS, "Enumerate Features."},
    {"VL_RemoveEnumerateFeatures", PY_RemoveEnumerateFeatures, VL_METH_ARGS,
     "Remove Enumerate Features."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPLMPluginConstants[] = {
    {"XPLM_MSG_PLANE_CRASHED", XPLM_MSG_PLANE_CRASHED},
    {"XPLM_MSG_PLANE_LOADED", XPLM_MSG_PLANE_LOADED},
    {"XPLM_MSG_AIRPORT_LOADED", XPLM_MSG_AIRPORT_LOADED},
    {"XPLM_MSG_SCENERY_LOADED", XPLM_MSG_SCENERY_LOADED},
    {"XPLM_MSG_AIRPLANE_COUNT_CHANGED", XPLM_MSG_AIRPLANE_COUNT_CHANGED},
    {"XPLM_MSG_PLANE_UNLOADED", XPLM_MSG_PLANE_UNLOADED},
    {"XPLM_MSG_WILL_WRITE_PREFS", XPLM_MSG_WILL_WRITE_PREFS},
    {"XPLM_MSG_LIVERY_LOADED", XPLM_MSG_LIVERY_LOADED},
};

}  // namespace

// The feature list lives as long as the script table: it is filled at the first start
// only, so a Reload neither repeats nor renumbers the features.
void initXPLMPlugin() {
    PyObject* module = VL_CreateModule("XPLMPlugin", XPLMPluginMethods);
    if (!module || !VL_AddConstants(module, XPLMPluginConstants)) VL_PrintPythonError();
    if (XPLMEnumerateFeatures_ptr && VLTestTable && VLTestTable->GetNumberOfFeatures() == 0)
        XPLMEnumerateFeatures_ptr(VL_FeatureEnum, nullptr);
}

}  // namespace vorlith
