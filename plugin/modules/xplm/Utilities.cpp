// The module XPLMUtilities: speech and debug output, legacy keys and buttons, paths and
// directory listings (plain and _NP), versions, data files, commands with their handlers
// (CommandCallbackList) and each script's error callback (ErrorCallbackList).

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "XPLMUtilities.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"
#include "modules/xplm/NativePaths.h"
#include "platform/Paths.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMUtilities";
// The SDK writes at most 512 bytes of a path; the buffers have room to spare.
constexpr int kPathBuffer = 1024;
// A script may ask for any listing size; past these the listing is cut rather than the
// plug-in allocating whatever a number says.
constexpr long kMaxNameBuffer = 1L << 20;
constexpr long kMaxIndexCount = 1L << 16;

bool IsBoundMethod(PyObject* callable) { return Py_TYPE(callable) == &PyMethod_Type; }

PyObject* Text(const std::string& text) {
    return VL_TextFromStringAndSize(text.data(), static_cast<Py_ssize_t>(text.size()));
}

// (first, second) as two texts.
PyObject* TextPair(const std::string& first, const std::string& second) {
    PyObject* a = Text(first);
    PyObject* b = a ? Text(second) : nullptr;
    PyObject* pair = b ? PyTuple_Pack(2, a, b) : nullptr;
    Py_XDECREF(a);
    Py_XDECREF(b);
    return pair;
}

// --- output, keys and buttons ---

PyObject* CallWithText(PyObject* args, const char* function, void (*sdk)(const char*)) {
    VL_Text text;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &text)) return nullptr;
    return VL_Guarded(kModule, function, [&] {
        sdk(text.c_str());
        return VL_Done();
    });
}

PyObject* PY_XPLMSpeakString(PyObject*, PyObject* args) {
    return CallWithText(args, "XPLMSpeakString", XPLMSpeakString);
}
PyObject* PY_XPLMDebugString(PyObject*, PyObject* args) {
    return CallWithText(args, "XPLMDebugString", XPLMDebugString);
}

PyObject* CallWithId(PyObject* args, const char* function, void (*sdk)(int)) {
    int id;
    if (!PyArg_ParseTuple(args, "i", &id)) return nullptr;
    return VL_Guarded(kModule, function, [&] {
        sdk(id);
        return VL_Done();
    });
}

PyObject* PY_XPLMCommandKeyStroke(PyObject*, PyObject* args) {
    return CallWithId(args, "XPLMCommandKeyStroke", XPLMCommandKeyStroke);
}
PyObject* PY_XPLMCommandButtonPress(PyObject*, PyObject* args) {
    return CallWithId(args, "XPLMCommandButtonPress", XPLMCommandButtonPress);
}
PyObject* PY_XPLMCommandButtonRelease(PyObject*, PyObject* args) {
    return CallWithId(args, "XPLMCommandButtonRelease", XPLMCommandButtonRelease);
}

PyObject* PY_XPLMGetVirtualKeyDescription(PyObject*, PyObject* args) {
    unsigned char key;
    if (!PyArg_ParseTuple(args, "b", &key)) return nullptr;
    std::string description;
    VL_GuardedCall(kModule, "XPLMGetVirtualKeyDescription", [&] {
        const char* text = XPLMGetVirtualKeyDescription(static_cast<char>(key));
        description = text ? text : "";
    });
    return Text(description);
}

PyObject* PY_XPLMReloadScenery(PyObject*, PyObject*) {
    bool ok = VL_GuardedCallReporting(kModule, "XPLMReloadScenery", "Function Error",
                                      [] { XPLMReloadScenery(); });
    return VL_IntFromLong(ok ? 1 : 0);
}

// --- paths ---

// A path the SDK writes into a caller's buffer; "" after a failure.
std::string SdkPath(const char* function, void (*sdk)(char*)) {
    std::string path;
    VL_GuardedCall(kModule, function, [&] {
        char buffer[kPathBuffer] = {0};
        sdk(buffer);
        buffer[kPathBuffer - 1] = '\0';
        path = buffer;
    });
    return path;
}

PyObject* PY_XPLMGetSystemPath(PyObject*, PyObject*) {
    return Text(VL_ScriptPathFromSim(SdkPath("XPLMGetSystemPath", XPLMGetSystemPath).c_str()));
}
PyObject* PY_XPLMGetPrefsPath(PyObject*, PyObject*) {
    return Text(VL_ScriptPathFromSim(SdkPath("XPLMGetPrefsPath", XPLMGetPrefsPath).c_str()));
}

std::string Separator() {
    std::string separator;
    VL_GuardedCall(kModule, "XPLMGetDirectorySeparator", [&] {
        const char* text = XPLMGetDirectorySeparator();
        separator = text ? text : "";
    });
    return separator;
}

PyObject* PY_XPLMGetDirectorySeparator(PyObject*, PyObject*) { return Text(Separator()); }

// The SDK cuts the path it is given in place. It gets a copy sized to the path, so the
// script's string (immutable, perhaps shared) is never written and no length is too long.
// The folder keeps the simulator's separators; the argument itself stays as it was.
PyObject* ExtractFileAndPath(const std::string& simPath) {
    std::vector<char> buffer(simPath.begin(), simPath.end());
    buffer.push_back('\0');
    std::string file, folder;
    if (!VL_GuardedCall(kModule, "XPLMExtractFileAndPath", [&] {
            const char* filePart = XPLMExtractFileAndPath(buffer.data());
            buffer.back() = '\0';
            file = filePart ? filePart : "";
            folder = buffer.data();
        })) {
        file.clear();
        folder.clear();
    }
    return TextPair(file, folder);
}

PyObject* PY_XPLMExtractFileAndPath(PyObject*, PyObject* args) {
    VL_Text path;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &path)) return nullptr;
    return ExtractFileAndPath(VL_SimPathFromScript(path.c_str()));
}

// XPLMGetDirectoryContents' arguments after the script id of the _NP form.
struct DirectoryRequest {
    VL_Text path;
    long firstReturn = 0;
    PyObject* names = nullptr;
    long bufferSize = 0;
    PyObject* indices = nullptr;
    long indexCount = 0;
    PyObject* totalFiles = nullptr;
    PyObject* returnedFiles = nullptr;
};

bool ParseDirectoryRequest(PyObject* args, DirectoryRequest& r, PyObject** self) {
    bool parsed = self ? PyArg_ParseTuple(args, "OO&lOlOlOO", self, VL_ParseText, &r.path,
                                          &r.firstReturn, &r.names, &r.bufferSize, &r.indices,
                                          &r.indexCount, &r.totalFiles, &r.returnedFiles)
                       : PyArg_ParseTuple(args, "O&lOlOlOO", VL_ParseText, &r.path, &r.firstReturn,
                                          &r.names, &r.bufferSize, &r.indices, &r.indexCount,
                                          &r.totalFiles, &r.returnedFiles);
    return parsed && VL_CheckOutLists({r.names, r.indices, r.totalFiles, r.returnedFiles});
}

bool AppendText(PyObject* list, const char* text) {
    PyObject* item = VL_TextFromString(text);
    int status = item ? PyList_Append(list, item) : -1;
    Py_XDECREF(item);
    return status == 0;
}

// The index array holds real pointers, one more than asked for, so the SDK can never
// write past it; a script that wants no index list gives the SDK none, so the index count
// does not limit its names. The counts always have somewhere to go, so an index list
// wanted without its returned-files list still knows how many names to read.
PyObject* ListDirectory(DirectoryRequest& r, const char* path) {
    const long bufferSize = std::clamp(r.bufferSize, 0L, kMaxNameBuffer);
    const long indexCount = std::clamp(r.indexCount, 0L, kMaxIndexCount);
    const int first = static_cast<int>(std::clamp(r.firstReturn, static_cast<long>(INT_MIN),
                                                  static_cast<long>(INT_MAX)));
    std::vector<char> names(static_cast<std::size_t>(bufferSize) + 1, '\0');
    std::vector<char*> indices(static_cast<std::size_t>(indexCount) + 1, nullptr);
    int result = 0, total = 0, returned = 0;
    if (!VL_GuardedCall(kModule, "XPLMGetDirectoryContents", [&] {
            result = XPLMGetDirectoryContents(path, first, names.data(), static_cast<int>(bufferSize),
                                              r.indices == Py_None ? nullptr : indices.data(),
                                              static_cast<int>(indexCount), &total,
                                              &returned);
        }))
        return Py_BuildValue("(i)", 0);
    names.back() = '\0';
    // Names are appended after what the lists hold: the first name only to the names list.
    if (r.names != Py_None && !AppendText(r.names, names.data())) return nullptr;
    if (r.indices != Py_None) {
        const char* begin = names.data();
        const char* end = begin + names.size();
        int count = std::min(returned, static_cast<int>(indexCount));
        for (int i = 0; i < count; ++i) {
            const char* name = indices[static_cast<std::size_t>(i)];
            if (name < begin || name >= end) break;  // never read outside the buffer
            if (!AppendText(r.indices, name)) return nullptr;
        }
    }
    if (!VL_StoreOut(r.totalFiles, VL_IntFromLong(total)) ||
        !VL_StoreOut(r.returnedFiles, VL_IntFromLong(returned)))
        return nullptr;
    return Py_BuildValue("(i)", result);
}

PyObject* PY_XPLMGetDirectoryContents(PyObject*, PyObject* args) {
    DirectoryRequest request;
    if (!ParseDirectoryRequest(args, request, nullptr)) return nullptr;
    return ListDirectory(request, request.path.c_str());
}

// --- the same with the script's own path setting (no colon conversion) ---

PyObject* PY_XPLMGetSystemPath_NP(PyObject*, PyObject* args) {
    PyObject* self;
    if (!VL_ParseOneObject(args, &self)) return nullptr;
    VL_NativePathScope scope(self);
    return Text(SdkPath("XPLMGetSystemPath", XPLMGetSystemPath));
}

PyObject* PY_XPLMGetPrefsPath_NP(PyObject*, PyObject* args) {
    PyObject* self;
    if (!VL_ParseOneObject(args, &self)) return nullptr;
    VL_NativePathScope scope(self);
    return Text(SdkPath("XPLMGetPrefsPath", XPLMGetPrefsPath));
}

PyObject* PY_XPLMGetDirectorySeparator_NP(PyObject*, PyObject* args) {
    PyObject* self;
    if (!VL_ParseOneObject(args, &self)) return nullptr;
    VL_NativePathScope scope(self);
    return Text(Separator());
}

PyObject* PY_XPLMExtractFileAndPath_NP(PyObject*, PyObject* args) {
    PyObject* self;
    VL_Text path;
    if (!PyArg_ParseTuple(args, "OO&", &self, VL_ParseText, &path)) return nullptr;
    VL_NativePathScope scope(self);
    return ExtractFileAndPath(path.c_str());
}

PyObject* PY_XPLMGetDirectoryContents_NP(PyObject*, PyObject* args) {
    DirectoryRequest request;
    PyObject* self;
    if (!ParseDirectoryRequest(args, request, &self)) return nullptr;
    VL_NativePathScope scope(self);
    return ListDirectory(request, request.path.c_str());
}

// --- versions ---

PyObject* PY_XPLMInitialized(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMInitialized", [] { return VL_IntFromLong(XPLMInitialized()); });
}

PyObject* PY_XPLMGetVersions(PyObject*, PyObject*) {
    int xplane = 0, xplm = 0;
    XPLMHostApplicationID host = 0;
    if (!VL_GuardedCall(kModule, "XPLMGetVersions", [&] { XPLMGetVersions(&xplane, &xplm, &host); }))
        xplane = xplm = host = 0;
    return Py_BuildValue("(iii)", xplane, xplm, host);
}

PyObject* PY_XPLMGetLanguage(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMGetLanguage", [] { return VL_IntFromLong(XPLMGetLanguage()); });
}

// --- each script's error callback, called by VL_ErrorCallback ---

PyObject* PY_XPLMSetErrorCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable;
    if (!PyArg_ParseTuple(args, "OO", &self, &callable)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetErrorCallback", [&] {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(ErrorCallbackList, self, nullptr, found, position);
        if (IsBoundMethod(callable)) {
            // The first callable stays in force.
            if (!found) VL_Table().AddCallback(ErrorCallbackList, self, nullptr, callable, nullptr);
        } else if (found) {
            VL_Table().DeleteCallback(ErrorCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMSetErrorCallback", VL_NoSuchCallback, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMSetErrorCallback")
                .line("pScriptId = %x, Script Name = %s, TempCallback = %x\n", VL_Low32(self),
                      VL_ScriptName(self).c_str(), VL_Low32(callable))
                .size("ErrorCallbackList", ErrorCallbackList);
        return VL_Done();
    });
}

PyObject* PY_RemoveErrorCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable;
    if (!PyArg_ParseTuple(args, "OO", &self, &callable)) return nullptr;
    return VL_Guarded(kModule, "VL_RemoveErrorCallback", [&] {
        if (IsBoundMethod(callable)) {
            int found = 0, position = 0;
            _CallbackList* cell =
                VL_Table().FindCallback(ErrorCallbackList, self, nullptr, found, position);
            if (found)
                VL_Table().DeleteCallback(ErrorCallbackList, cell, position);
            else
                VL_ReportForScript(kModule, "VL_RemoveErrorCallback", VL_NoSuchCallbackRefcon, self);
        }
        if (VL_Tracing())
            VL_Trace("VL_RemoveErrorCallback")
                .line("pScriptId = %x, Script Name = %s\n", VL_Low32(self), VL_ScriptName(self).c_str())
                .size("ErrorCallbackList", ErrorCallbackList);
        return VL_Done();
    });
}

// --- functions of SDK 2.00: symbols, data files, commands ---

#define VL_REQUIRE(function) \
    if (!VL_Supported(kModule, #function, function##_ptr, VL_NotSupported200)) return VL_IntFromLong(0);

PyObject* PY_XPLMFindSymbol(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMFindSymbol)
    VL_Text name;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &name)) return nullptr;
    return VL_Guarded(kModule, "XPLMFindSymbol",
                      [&] { return VL_HandleObject(XPLMFindSymbol_ptr(name.c_str())); });
}

PyObject* DataFile(PyObject* args, const char* function, int (*sdk)(XPLMDataFileType, const char*)) {
    int type;
    VL_Text path;
    if (!PyArg_ParseTuple(args, "iO&", &type, VL_ParseText, &path)) return nullptr;
    return VL_Guarded(kModule, function, [&] { return VL_IntFromLong(sdk(type, path.c_str())); });
}

PyObject* PY_XPLMLoadDataFile(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMLoadDataFile)
    return DataFile(args, "XPLMLoadDataFile", XPLMLoadDataFile_ptr);
}
PyObject* PY_XPLMSaveDataFile(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMSaveDataFile)
    return DataFile(args, "XPLMSaveDataFile", XPLMSaveDataFile_ptr);
}

PyObject* PY_XPLMFindCommand(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMFindCommand)
    VL_Text name;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &name)) return nullptr;
    return VL_Guarded(kModule, "XPLMFindCommand",
                      [&] { return VL_HandleObject(XPLMFindCommand_ptr(name.c_str())); });
}

PyObject* PY_XPLMCreateCommand(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMCreateCommand)
    VL_Text name, description;
    if (!PyArg_ParseTuple(args, "O&O&", VL_ParseText, &name, VL_ParseText, &description))
        return nullptr;
    return VL_Guarded(kModule, "XPLMCreateCommand", [&] {
        return VL_HandleObject(XPLMCreateCommand_ptr(name.c_str(), description.c_str()));
    });
}

PyObject* CallWithCommand(PyObject* args, const char* function, void (*sdk)(XPLMCommandRef)) {
    PyObject* commandObject;
    if (!VL_ParseOneObject(args, &commandObject)) return nullptr;
    XPLMCommandRef command = VL_HandleFromObject(commandObject);
    return VL_Guarded(kModule, function, [&] {
        sdk(command);
        return VL_Done();
    });
}

PyObject* PY_XPLMCommandBegin(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMCommandBegin)
    return CallWithCommand(args, "XPLMCommandBegin", XPLMCommandBegin_ptr);
}
PyObject* PY_XPLMCommandEnd(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMCommandEnd)
    return CallWithCommand(args, "XPLMCommandEnd", XPLMCommandEnd_ptr);
}
PyObject* PY_XPLMCommandOnce(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMCommandOnce)
    return CallWithCommand(args, "XPLMCommandOnce", XPLMCommandOnce_ptr);
}

struct HandlerRequest {
    PyObject* self;
    XPLMCommandRef command;
    PyObject* callable;
    int before;
    void* refcon;
};

bool ParseHandlerRequest(PyObject* args, HandlerRequest& r) {
    PyObject *commandObject, *refconObject;
    if (!PyArg_ParseTuple(args, "OOOiO", &r.self, &commandObject, &r.callable, &r.before,
                          &refconObject))
        return false;
    r.command = VL_HandleFromObject(commandObject);
    r.refcon = VL_RefconFromObject(refconObject);
    return true;
}

// Any callable is taken: the trampoline reports what cannot be called.
PyObject* PY_XPLMRegisterCommandHandler(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMRegisterCommandHandler)
    HandlerRequest r;
    if (!ParseHandlerRequest(args, r)) return nullptr;
    return VL_Guarded(kModule, "XPLMRegisterCommandHandler", [&] {
        _CallbackList* cell =
            VL_Table().AddCallback(CommandCallbackList, r.self, nullptr, r.callable, r.refcon);
        XPLMRegisterCommandHandler_ptr(r.command, VL_CommandCallback, r.before, cell);
        if (VL_Tracing())
            VL_Trace("XPLMRegisterCommandHandler")
                .line("pScriptId = %x, inCommand = %d, inBefore = %d, inRefcon = %d\n",
                      VL_Low32(r.self), VL_Int(r.command), r.before, VL_Int(r.refcon))
                .size("CommandCallbackList", CommandCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMUnregisterCommandHandler(PyObject*, PyObject* args) {
    VL_REQUIRE(XPLMUnregisterCommandHandler)
    HandlerRequest r;
    if (!ParseHandlerRequest(args, r)) return nullptr;
    return VL_Guarded(kModule, "XPLMUnregisterCommandHandler", [&] {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(CommandCallbackList, r.self, r.callable,
                                                      r.refcon, found, position);
        if (found) {
            XPLMUnregisterCommandHandler_ptr(r.command, VL_CommandCallback, r.before, cell);
            VL_Table().DeleteCallback(CommandCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMUnregisterCommandHandler", VL_NoSuchCallbackRefcon,
                               r.self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMUnregisterCommandHandler")
                .line("pScriptId = %x, Script Name = %s, inCommand = %d, inBefore = %d, "
                      "inRefcon = %d\n",
                      VL_Low32(r.self), VL_ScriptName(r.self).c_str(), VL_Int(r.command), r.before,
                      VL_Int(r.refcon))
                .size("CommandCallbackList", CommandCallbackList);
        return VL_Done();
    });
}

#undef VL_REQUIRE

PyMethodDef XPLMUtilitiesMethods[] = {
    {"XPLMSpeakString", PY_XPLMSpeakString, VL_METH_ARGS, "Speak and Display String."},
    {"XPLMCommandKeyStroke", PY_XPLMCommandKeyStroke, VL_METH_ARGS, "Send a Command Key."},
    {"XPLMCommandButtonPress", PY_XPLMCommandButtonPress, VL_METH_ARGS, "Send a Command Button Press."},
    {"XPLMCommandButtonRelease", PY_XPLMCommandButtonRelease, VL_METH_ARGS,
     "Send a Command Button Release."},
    {"XPLMGetVirtualKeyDescription", PY_XPLMGetVirtualKeyDescription, VL_METH_ARGS,
     "Get Virtual Key Description."},
    {"XPLMReloadScenery", PY_XPLMReloadScenery, VL_METH_ARGS, "Reload the Scenery."},
    {"XPLMGetSystemPath", PY_XPLMGetSystemPath, VL_METH_ARGS, "Get the XPlane System Path."},
    {"XPLMGetPrefsPath", PY_XPLMGetPrefsPath, VL_METH_ARGS, "Get the Xplane Pref Path."},
    {"XPLMGetDirectorySeparator", PY_XPLMGetDirectorySeparator, VL_METH_ARGS,
     "Get the OS Directory Separator."},
    {"XPLMExtractFileAndPath", PY_XPLMExtractFileAndPath, VL_METH_ARGS, "Extract File and Path."},
    {"XPLMGetDirectoryContents", PY_XPLMGetDirectoryContents, VL_METH_ARGS,
     "Get the Directory Contents."},
    {"XPLMGetSystemPath_NP", PY_XPLMGetSystemPath_NP, VL_METH_ARGS,
     "Get the XPlane System Path using Native Paths."},
    {"XPLMGetPrefsPath_NP", PY_XPLMGetPrefsPath_NP, VL_METH_ARGS,
     "Get the Xplane Pref Path using Native Paths."},
    {"XPLMGetDirectorySeparator_NP", PY_XPLMGetDirectorySeparator_NP, VL_METH_ARGS,
     "Get the OS Directory Separator using Native Paths."},
    {"XPLMExtractFileAndPath_NP", PY_XPLMExtractFileAndPath_NP, VL_METH_ARGS,
     "Extract File and Path using Native Paths."},
    {"XPLMGetDirectoryContents_NP", PY_XPLMGetDirectoryContents_NP, VL_METH_ARGS,
     "Get the Directory Contents using Native Paths."},
    {"XPLMInitialized", PY_XPLMInitialized, VL_METH_ARGS, "Is XPLM Initialized Properly."},
    {"XPLMGetVersions", PY_XPLMGetVersions, VL_METH_ARGS, "Get Xplane and XPLM Versions."},
    {"XPLMGetLanguage", PY_XPLMGetLanguage, VL_METH_ARGS, "Get Language."},
    {"XPLMDebugString", PY_XPLMDebugString, VL_METH_ARGS, "Write Debug String to Error.out."},
    {"XPLMSetErrorCallback", PY_XPLMSetErrorCallback, VL_METH_ARGS, "Set the callback for errors."},
    {"VL_RemoveErrorCallback", PY_RemoveErrorCallback, VL_METH_ARGS, "Remove the callback for errors."},
    {"XPLMFindSymbol", PY_XPLMFindSymbol, VL_METH_ARGS, "Find symbol."},
    {"XPLMLoadDataFile", PY_XPLMLoadDataFile, VL_METH_ARGS, "Load Data File."},
    {"XPLMSaveDataFile", PY_XPLMSaveDataFile, VL_METH_ARGS, "Save Data File."},
    {"XPLMFindCommand", PY_XPLMFindCommand, VL_METH_ARGS, "Find the Command."},
    {"XPLMCommandBegin", PY_XPLMCommandBegin, VL_METH_ARGS, "Begin the Command."},
    {"XPLMCommandEnd", PY_XPLMCommandEnd, VL_METH_ARGS, "End the Command."},
    {"XPLMCommandOnce", PY_XPLMCommandOnce, VL_METH_ARGS, "Do Command Once."},
    {"XPLMCreateCommand", PY_XPLMCreateCommand, VL_METH_ARGS, "Create Commmand."},
    {"XPLMRegisterCommandHandler", PY_XPLMRegisterCommandHandler, VL_METH_ARGS,
     "Register the Command Callback."},
    {"XPLMUnregisterCommandHandler", PY_XPLMUnregisterCommandHandler, VL_METH_ARGS,
     "Unregister the Command Callback."},
    {nullptr, nullptr, 0, nullptr},
};

#define VL_CONSTANT(name) {#name, name}

const VL_Constant XPLMUtilitiesConstants[] = {
    // command keys, 0 to 94
    VL_CONSTANT(xplm_key_pause), VL_CONSTANT(xplm_key_revthrust), VL_CONSTANT(xplm_key_jettison),
    VL_CONSTANT(xplm_key_brakesreg), VL_CONSTANT(xplm_key_brakesmax), VL_CONSTANT(xplm_key_gear),
    VL_CONSTANT(xplm_key_timedn), VL_CONSTANT(xplm_key_timeup), VL_CONSTANT(xplm_key_fadec),
    VL_CONSTANT(xplm_key_otto_dis), VL_CONSTANT(xplm_key_otto_atr), VL_CONSTANT(xplm_key_otto_asi),
    VL_CONSTANT(xplm_key_otto_hdg), VL_CONSTANT(xplm_key_otto_gps), VL_CONSTANT(xplm_key_otto_lev),
    VL_CONSTANT(xplm_key_otto_hnav), VL_CONSTANT(xplm_key_otto_alt), VL_CONSTANT(xplm_key_otto_vvi),
    VL_CONSTANT(xplm_key_otto_vnav), VL_CONSTANT(xplm_key_otto_nav1), VL_CONSTANT(xplm_key_otto_nav2),
    VL_CONSTANT(xplm_key_targ_dn), VL_CONSTANT(xplm_key_targ_up), VL_CONSTANT(xplm_key_hdgdn),
    VL_CONSTANT(xplm_key_hdgup), VL_CONSTANT(xplm_key_barodn), VL_CONSTANT(xplm_key_baroup),
    VL_CONSTANT(xplm_key_obs1dn), VL_CONSTANT(xplm_key_obs1up), VL_CONSTANT(xplm_key_obs2dn),
    VL_CONSTANT(xplm_key_obs2up), VL_CONSTANT(xplm_key_com1_1), VL_CONSTANT(xplm_key_com1_2),
    VL_CONSTANT(xplm_key_com1_3), VL_CONSTANT(xplm_key_com1_4), VL_CONSTANT(xplm_key_nav1_1),
    VL_CONSTANT(xplm_key_nav1_2), VL_CONSTANT(xplm_key_nav1_3), VL_CONSTANT(xplm_key_nav1_4),
    VL_CONSTANT(xplm_key_com2_1), VL_CONSTANT(xplm_key_com2_2), VL_CONSTANT(xplm_key_com2_3),
    VL_CONSTANT(xplm_key_com2_4), VL_CONSTANT(xplm_key_nav2_1), VL_CONSTANT(xplm_key_nav2_2),
    VL_CONSTANT(xplm_key_nav2_3), VL_CONSTANT(xplm_key_nav2_4), VL_CONSTANT(xplm_key_adf_1),
    VL_CONSTANT(xplm_key_adf_2), VL_CONSTANT(xplm_key_adf_3), VL_CONSTANT(xplm_key_adf_4),
    VL_CONSTANT(xplm_key_adf_5), VL_CONSTANT(xplm_key_adf_6), VL_CONSTANT(xplm_key_transpon_1),
    VL_CONSTANT(xplm_key_transpon_2), VL_CONSTANT(xplm_key_transpon_3),
    VL_CONSTANT(xplm_key_transpon_4), VL_CONSTANT(xplm_key_transpon_5),
    VL_CONSTANT(xplm_key_transpon_6), VL_CONSTANT(xplm_key_transpon_7),
    VL_CONSTANT(xplm_key_transpon_8), VL_CONSTANT(xplm_key_flapsup), VL_CONSTANT(xplm_key_flapsdn),
    VL_CONSTANT(xplm_key_cheatoff), VL_CONSTANT(xplm_key_cheaton), VL_CONSTANT(xplm_key_sbrkoff),
    VL_CONSTANT(xplm_key_sbrkon), VL_CONSTANT(xplm_key_ailtrimL), VL_CONSTANT(xplm_key_ailtrimR),
    VL_CONSTANT(xplm_key_rudtrimL), VL_CONSTANT(xplm_key_rudtrimR), VL_CONSTANT(xplm_key_elvtrimD),
    VL_CONSTANT(xplm_key_elvtrimU), VL_CONSTANT(xplm_key_forward), VL_CONSTANT(xplm_key_down),
    VL_CONSTANT(xplm_key_left), VL_CONSTANT(xplm_key_right), VL_CONSTANT(xplm_key_back),
    VL_CONSTANT(xplm_key_tower), VL_CONSTANT(xplm_key_runway), VL_CONSTANT(xplm_key_chase),
    VL_CONSTANT(xplm_key_free1), VL_CONSTANT(xplm_key_free2), VL_CONSTANT(xplm_key_spot),
    VL_CONSTANT(xplm_key_fullscrn1), VL_CONSTANT(xplm_key_fullscrn2), VL_CONSTANT(xplm_key_tanspan),
    VL_CONSTANT(xplm_key_smoke), VL_CONSTANT(xplm_key_map), VL_CONSTANT(xplm_key_zoomin),
    VL_CONSTANT(xplm_key_zoomout), VL_CONSTANT(xplm_key_cycledump), VL_CONSTANT(xplm_key_replay),
    VL_CONSTANT(xplm_key_tranID), VL_CONSTANT(xplm_key_max),
    // command buttons, 0 to 94
    VL_CONSTANT(xplm_joy_nothing), VL_CONSTANT(xplm_joy_start_all), VL_CONSTANT(xplm_joy_start_0),
    VL_CONSTANT(xplm_joy_start_1), VL_CONSTANT(xplm_joy_start_2), VL_CONSTANT(xplm_joy_start_3),
    VL_CONSTANT(xplm_joy_start_4), VL_CONSTANT(xplm_joy_start_5), VL_CONSTANT(xplm_joy_start_6),
    VL_CONSTANT(xplm_joy_start_7), VL_CONSTANT(xplm_joy_throt_up), VL_CONSTANT(xplm_joy_throt_dn),
    VL_CONSTANT(xplm_joy_prop_up), VL_CONSTANT(xplm_joy_prop_dn), VL_CONSTANT(xplm_joy_mixt_up),
    VL_CONSTANT(xplm_joy_mixt_dn), VL_CONSTANT(xplm_joy_carb_tog), VL_CONSTANT(xplm_joy_carb_on),
    VL_CONSTANT(xplm_joy_carb_off), VL_CONSTANT(xplm_joy_trev), VL_CONSTANT(xplm_joy_trm_up),
    VL_CONSTANT(xplm_joy_trm_dn), VL_CONSTANT(xplm_joy_rot_trm_up), VL_CONSTANT(xplm_joy_rot_trm_dn),
    VL_CONSTANT(xplm_joy_rud_lft), VL_CONSTANT(xplm_joy_rud_cntr), VL_CONSTANT(xplm_joy_rud_rgt),
    VL_CONSTANT(xplm_joy_ail_lft), VL_CONSTANT(xplm_joy_ail_cntr), VL_CONSTANT(xplm_joy_ail_rgt),
    VL_CONSTANT(xplm_joy_B_rud_lft), VL_CONSTANT(xplm_joy_B_rud_rgt), VL_CONSTANT(xplm_joy_look_up),
    VL_CONSTANT(xplm_joy_look_dn), VL_CONSTANT(xplm_joy_look_lft), VL_CONSTANT(xplm_joy_look_rgt),
    VL_CONSTANT(xplm_joy_glance_l), VL_CONSTANT(xplm_joy_glance_r), VL_CONSTANT(xplm_joy_v_fnh),
    VL_CONSTANT(xplm_joy_v_fwh), VL_CONSTANT(xplm_joy_v_tra), VL_CONSTANT(xplm_joy_v_twr),
    VL_CONSTANT(xplm_joy_v_run), VL_CONSTANT(xplm_joy_v_cha), VL_CONSTANT(xplm_joy_v_fr1),
    VL_CONSTANT(xplm_joy_v_fr2), VL_CONSTANT(xplm_joy_v_spo), VL_CONSTANT(xplm_joy_flapsup),
    VL_CONSTANT(xplm_joy_flapsdn), VL_CONSTANT(xplm_joy_vctswpfwd), VL_CONSTANT(xplm_joy_vctswpaft),
    VL_CONSTANT(xplm_joy_gear_tog), VL_CONSTANT(xplm_joy_gear_up), VL_CONSTANT(xplm_joy_gear_down),
    VL_CONSTANT(xplm_joy_lft_brake), VL_CONSTANT(xplm_joy_rgt_brake), VL_CONSTANT(xplm_joy_brakesREG),
    VL_CONSTANT(xplm_joy_brakesMAX), VL_CONSTANT(xplm_joy_speedbrake), VL_CONSTANT(xplm_joy_ott_dis),
    VL_CONSTANT(xplm_joy_ott_atr), VL_CONSTANT(xplm_joy_ott_asi), VL_CONSTANT(xplm_joy_ott_hdg),
    VL_CONSTANT(xplm_joy_ott_alt), VL_CONSTANT(xplm_joy_ott_vvi), VL_CONSTANT(xplm_joy_tim_start),
    VL_CONSTANT(xplm_joy_tim_reset), VL_CONSTANT(xplm_joy_ecam_up), VL_CONSTANT(xplm_joy_ecam_dn),
    VL_CONSTANT(xplm_joy_fadec), VL_CONSTANT(xplm_joy_yaw_damp), VL_CONSTANT(xplm_joy_art_stab),
    VL_CONSTANT(xplm_joy_chute), VL_CONSTANT(xplm_joy_JATO), VL_CONSTANT(xplm_joy_arrest),
    VL_CONSTANT(xplm_joy_jettison), VL_CONSTANT(xplm_joy_fuel_dump), VL_CONSTANT(xplm_joy_puffsmoke),
    VL_CONSTANT(xplm_joy_prerotate), VL_CONSTANT(xplm_joy_UL_prerot), VL_CONSTANT(xplm_joy_UL_collec),
    VL_CONSTANT(xplm_joy_TOGA), VL_CONSTANT(xplm_joy_shutdown), VL_CONSTANT(xplm_joy_con_atc),
    VL_CONSTANT(xplm_joy_fail_now), VL_CONSTANT(xplm_joy_pause), VL_CONSTANT(xplm_joy_rock_up),
    VL_CONSTANT(xplm_joy_rock_dn), VL_CONSTANT(xplm_joy_rock_lft), VL_CONSTANT(xplm_joy_rock_rgt),
    VL_CONSTANT(xplm_joy_rock_for), VL_CONSTANT(xplm_joy_rock_aft), VL_CONSTANT(xplm_joy_idle_hilo),
    VL_CONSTANT(xplm_joy_lanlights), VL_CONSTANT(xplm_joy_max),
    // host applications
    VL_CONSTANT(xplm_Host_Unknown), VL_CONSTANT(xplm_Host_XPlane), VL_CONSTANT(xplm_Host_PlaneMaker),
    VL_CONSTANT(xplm_Host_WorldMaker), VL_CONSTANT(xplm_Host_Briefer), VL_CONSTANT(xplm_Host_PartMaker),
    VL_CONSTANT(xplm_Host_YoungsMod), VL_CONSTANT(xplm_Host_XAuto),
    // languages (none past Korean)
    VL_CONSTANT(xplm_Language_Unknown), VL_CONSTANT(xplm_Language_English),
    VL_CONSTANT(xplm_Language_French), VL_CONSTANT(xplm_Language_German),
    VL_CONSTANT(xplm_Language_Italian), VL_CONSTANT(xplm_Language_Spanish),
    VL_CONSTANT(xplm_Language_Korean),
    // data files and command phases
    VL_CONSTANT(xplm_DataFile_Situation), VL_CONSTANT(xplm_DataFile_ReplayMovie),
    VL_CONSTANT(xplm_CommandBegin), VL_CONSTANT(xplm_CommandContinue), VL_CONSTANT(xplm_CommandEnd),
};

#undef VL_CONSTANT

}  // namespace

void initXPLMUtilities() {
    PyObject* module = VL_CreateModule("XPLMUtilities", XPLMUtilitiesMethods);
    if (!module || !VL_AddConstants(module, XPLMUtilitiesConstants)) VL_PrintPythonError();
}

}  // namespace vorlith
