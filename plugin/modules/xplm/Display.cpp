// The module XPLMDisplay: draw callbacks, key sniffers, hot keys, and windows whose five
// callbacks reach the script through one bundle of cells per window, kept in
// DrawWindowMemoryPointerList; the screen, mouse and window queries.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "XPLMDisplay.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMDisplay";

// --- out values ---

// An int the SDK writes through a pointer: null when the script passed None.
struct IntOut {
    PyObject* list;
    int value = 0;
    int* pointer() { return list == Py_None ? nullptr : &value; }
    bool store() const { return list == Py_None || VL_StoreOut(list, VL_IntFromLong(value)); }
};

template <std::size_t N>
PyObject* StoreAll(IntOut (&outs)[N]) {
    for (const IntOut& out : outs)
        if (!out.store()) return nullptr;
    return VL_Done();
}

// --- draw callbacks and key sniffers ---

PyObject* PY_XPLMRegisterDrawCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    int phase, wantsBefore;
    if (!PyArg_ParseTuple(args, "OOiiO", &self, &callable, &phase, &wantsBefore, &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMRegisterDrawCallback", [&] {
        _CallbackList* cell = VL_Table().AddCallback(DrawCallbackList, self, nullptr, callable, refcon);
        int result = XPLMRegisterDrawCallback(VL_DrawCallback, phase, wantsBefore, cell);
        if (VL_Tracing())
            VL_Trace("XPLMRegisterDrawCallback")
                .line("pScriptId = %x, inPhase = %d, inWantsBefore = %d, inRefcon = %d\n",
                      VL_Low32(self), phase, wantsBefore, VL_Int(refcon))
                .size("DrawCallbackList", DrawCallbackList);
        return VL_IntFromLong(result);
    });
}

PyObject* PY_XPLMUnregisterDrawCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    int phase, wantsBefore;
    if (!PyArg_ParseTuple(args, "OOiiO", &self, &callable, &phase, &wantsBefore, &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMUnregisterDrawCallback", [&] {
        int found = 0, position = 0, result = 0;
        _CallbackList* cell =
            VL_Table().FindCallback(DrawCallbackList, self, callable, refcon, found, position);
        if (found) {
            result = XPLMUnregisterDrawCallback(VL_DrawCallback, phase, wantsBefore, cell);
            VL_Table().DeleteCallback(DrawCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMUnregisterDrawCallback", VL_NoSuchCallbackRefcon, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMUnregisterDrawCallback")
                .line("pScriptId = %x, Script Name = %s, inPhase = %d, inWantsBefore = %d, "
                      "inRefcon = %d\n",
                      VL_Low32(self), VL_ScriptName(self).c_str(), phase, wantsBefore, VL_Int(refcon))
                .size("DrawCallbackList", DrawCallbackList);
        return VL_IntFromLong(result);
    });
}

PyObject* PY_XPLMRegisterKeySniffer(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    int beforeWindows;
    if (!PyArg_ParseTuple(args, "OOiO", &self, &callable, &beforeWindows, &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMRegisterKeySniffer", [&] {
        _CallbackList* cell =
            VL_Table().AddCallback(KeySnifferCallbackList, self, nullptr, callable, refcon);
        int result = XPLMRegisterKeySniffer(VL_KeySnifferCallback, beforeWindows, cell);
        if (VL_Tracing())
            VL_Trace("XPLMRegisterKeySniffer")
                .line("pScriptId = %x, inBeforeWindows = %d, inRefcon = %d\n", VL_Low32(self),
                      beforeWindows, VL_Int(refcon))
                .size("KeySnifferCallbackList", KeySnifferCallbackList);
        return VL_IntFromLong(result);
    });
}

PyObject* PY_XPLMUnregisterKeySniffer(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    int beforeWindows;
    if (!PyArg_ParseTuple(args, "OOiO", &self, &callable, &beforeWindows, &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMUnregisterKeySniffer", [&] {
        int found = 0, position = 0, result = 0;
        _CallbackList* cell =
            VL_Table().FindCallback(KeySnifferCallbackList, self, callable, refcon, found, position);
        if (found) {
            result = XPLMUnregisterKeySniffer(VL_KeySnifferCallback, beforeWindows, cell);
            VL_Table().DeleteCallback(KeySnifferCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMUnregisterKeySniffer", VL_NoSuchCallbackRefcon, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMUnregisterKeySniffer")
                .line("pScriptId = %x, Script Name = %s, inBeforeWindows = %d, inRefcon = %d\n",
                      VL_Low32(self), VL_ScriptName(self).c_str(), beforeWindows, VL_Int(refcon))
                .size("KeySnifferCallbackList", KeySnifferCallbackList);
        return VL_IntFromLong(result);
    });
}

// --- screen and mouse ---

PyObject* PY_XPLMGetScreenSize(PyObject*, PyObject* args) {
    IntOut outs[2] = {};
    if (!PyArg_ParseTuple(args, "OO", &outs[0].list, &outs[1].list)) return nullptr;
    if (!VL_CheckOutLists({outs[0].list, outs[1].list})) return nullptr;
    return VL_Guarded(kModule, "XPLMGetScreenSize", [&] {
        XPLMGetScreenSize(outs[0].pointer(), outs[1].pointer());
        return StoreAll(outs);
    });
}

PyObject* PY_XPLMGetMouseLocation(PyObject*, PyObject* args) {
    IntOut outs[2] = {};
    if (!PyArg_ParseTuple(args, "OO", &outs[0].list, &outs[1].list)) return nullptr;
    if (!VL_CheckOutLists({outs[0].list, outs[1].list})) return nullptr;
    return VL_Guarded(kModule, "XPLMGetMouseLocation", [&] {
        XPLMGetMouseLocation(outs[0].pointer(), outs[1].pointer());
        return StoreAll(outs);
    });
}

// --- windows ---

// A window's callbacks in the order scripts give them (draw, key, mouse click, cursor,
// wheel), which is also the order of the lists' searches and trace lines, with the slot
// each takes in the window's bundle (the structure's order: draw, click, key, ...).
struct WindowCallback {
    VL_CallbackListType* list;
    const char* listName;
    int slot;
};
const WindowCallback kWindowCallbacks[] = {
    {&DrawWindowCallbackList, "DrawWindowCallbackList", VL_DrawWindowSlot},
    {&KeyCallbackList, "KeyCallbackList", VL_KeySlot},
    {&MouseClickCallbackList, "MouseClickCallbackList", VL_MouseClickSlot},
    {&CursorStatusCallbackList, "CursorStatusCallbackList", VL_CursorStatusSlot},
    {&MouseWheelCallbackList, "MouseWheelCallbackList", VL_MouseWheelSlot},
};
constexpr int kLegacyWindowCallbacks = 3;  // XPLMCreateWindow has no cursor or wheel
constexpr int kWindowCallbackCount = 5;

void TraceWindowLists(VL_Trace& trace, int count) {
    for (int i = 0; i < count; ++i) trace.size(kWindowCallbacks[i].listName, *kWindowCallbacks[i].list);
}

// Bundles taken out of DrawWindowMemoryPointerList by a destroy whose position named
// another window's bundle while that window was still open: the SDK still hands them to
// the trampolines, so they are freed only once their own window is destroyed.
VL_CallbackBlockList gBundlesOfOpenWindows;

// Only bound methods get a record; anything else leaves its slot empty. The records and
// then the bundle are made before the SDK is asked for the window.
VL_CallbackBlock* AddWindowRecords(PyObject* self, PyObject* const* callables, int count,
                                   void* refcon) {
    VL_ScriptTable& table = VL_Table();
    _CallbackList* cells[kWindowCallbackCount] = {};
    for (int i = 0; i < count; ++i)
        if (Py_TYPE(callables[i]) == &PyMethod_Type)
            cells[i] = table.AddCallback(*kWindowCallbacks[i].list, self, nullptr, callables[i], refcon);
    VL_CallbackBlock* bundle = VL_AddCallbackBlock(DrawWindowMemoryPointerList);
    for (int i = 0; i < count; ++i) bundle->cells[kWindowCallbacks[i].slot] = cells[i];
    return bundle;
}

void SetWindowHandle(PyObject* self, PyObject* const* callables, int count,
                     VL_CallbackBlock* bundle, XPLMWindowID window) {
    bundle->handle = window;  // the window that holds this bundle, until it is destroyed
    for (int i = 0; i < count; ++i)
        if (bundle->cells[kWindowCallbacks[i].slot])
            VL_Table().UpdateCallback(*kWindowCallbacks[i].list, self, callables[i], window);
}

// Frees the bundle at `position` of DrawWindowMemoryPointerList and erases the entry: the
// list is indexed by the position a callback list's search reported, as scripts have
// always had it. That entry may be another window's bundle (windows destroyed out of
// creation order, or without records), which is then only taken out of the list and
// freed when its own window goes; a position past the end frees nothing. Returns the
// address of the bundle erased, 0 if none.
std::uintptr_t ReleaseWindowBundle(int position, XPLMWindowID window) {
    VL_CallbackBlockList& list = DrawWindowMemoryPointerList;
    if (window) {
        for (VL_CallbackBlock* bundle : list)
            if (bundle->handle == window) bundle->handle = nullptr;
        for (std::size_t i = gBundlesOfOpenWindows.size(); i-- > 0;)
            if (gBundlesOfOpenWindows[i]->handle == window)
                VL_DeleteCallbackBlock(gBundlesOfOpenWindows, static_cast<int>(i));
    }
    if (list.empty()) {
        PrintException(kModule, "XPLMDestroyWindow", "List Empty Error");
        return 0;
    }
    if (position < 0 || static_cast<std::size_t>(position) >= list.size()) return 0;
    VL_CallbackBlock* bundle = list[position];
    auto address = reinterpret_cast<std::uintptr_t>(bundle);
    if (bundle->handle) {
        list.erase(list.begin() + position);
        gBundlesOfOpenWindows.push_back(bundle);
    } else {
        VL_DeleteCallbackBlock(list, position);
    }
    return address;
}

PyObject* PY_XPLMCreateWindow(PyObject*, PyObject* args) {
    PyObject *self, *refconObject;
    PyObject* callables[kLegacyWindowCallbacks];  // draw, key, mouse click
    int left, top, right, bottom, visible;
    if (!PyArg_ParseTuple(args, "OiiiiiOOOO", &self, &left, &top, &right, &bottom, &visible,
                          &callables[0], &callables[1], &callables[2], &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMCreateWindow", [&] {
        VL_CallbackBlock* bundle = AddWindowRecords(self, callables, kLegacyWindowCallbacks, refcon);
        XPLMWindowID window = XPLMCreateWindow(left, top, right, bottom, visible, VL_DrawWindowCallback,
                                               VL_KeyCallback, VL_MouseClickCallback, bundle);
        SetWindowHandle(self, callables, kLegacyWindowCallbacks, bundle, window);
        if (VL_Tracing()) {
            VL_Trace trace("XPLMCreateWindow");
            trace.line("pScriptId = %x, Left = %d, Top = %d, Right = %d, Bottom = %d, IsVisible = %d, "
                       "Refcon = %d, WindowID = %x\n",
                       VL_Low32(self), left, top, right, bottom, visible, VL_Int(refcon),
                       VL_Low32(window));
            TraceWindowLists(trace, kLegacyWindowCallbacks);
        }
        return VL_HandleObject(window);
    });
}

// The parameters (left, top, right, bottom, visible, draw, key, mouse click, cursor,
// wheel, refcon) must be a sequence of exactly these eleven, numbers first: anything else
// is the parser's TypeError before a record or bundle is made.
PyObject* PY_XPLMCreateWindowEx(PyObject*, PyObject* args) {
    if (!XPLMCreateWindowEx_ptr) {
        PrintException(kModule, "XPLMCreateWindowEx", VL_NotSupported200);
        return VL_IntFromLong(0);
    }
    PyObject *self, *parameters, *refconObject;
    if (!PyArg_ParseTuple(args, "OO", &self, &parameters)) return nullptr;
    PyObject* fields = PySequence_Check(parameters) ? PySequence_Tuple(parameters) : nullptr;
    if (!fields) {
        if (!PyErr_Occurred())
            PyErr_SetString(PyExc_TypeError, "expected a sequence of 11 window parameters");
        return nullptr;
    }
    long numbers[5];
    PyObject* callables[kWindowCallbackCount];  // draw, key, mouse click, cursor, wheel
    if (!PyArg_ParseTuple(fields, "lllllOOOOOO", &numbers[0], &numbers[1], &numbers[2], &numbers[3],
                          &numbers[4], &callables[0], &callables[1], &callables[2], &callables[3],
                          &callables[4], &refconObject)) {
        Py_DECREF(fields);
        return nullptr;
    }
    void* refcon = VL_RefconFromObject(refconObject);
    PyObject* result = VL_Guarded(kModule, "XPLMCreateWindowEx", [&] {
        VL_CallbackBlock* bundle = AddWindowRecords(self, callables, kWindowCallbackCount, refcon);
        XPLMCreateWindow_t create = {static_cast<int>(sizeof(XPLMCreateWindow_t)),
                                     static_cast<int>(numbers[0]), static_cast<int>(numbers[1]),
                                     static_cast<int>(numbers[2]), static_cast<int>(numbers[3]),
                                     static_cast<int>(numbers[4]), VL_DrawWindowCallback,
                                     VL_MouseClickCallback, VL_KeyCallback, VL_CursorStatusCallback,
                                     VL_MouseWheelCallback, bundle};
        XPLMWindowID window = XPLMCreateWindowEx_ptr(&create);
        SetWindowHandle(self, callables, kWindowCallbackCount, bundle, window);
        if (VL_Tracing()) {
            VL_Trace trace("XPLMCreateWindowEx");
            trace.line("pScriptId = %x, left = %d, top = %d, right = %d, bottom = %d, visible = %d, "
                       "Refcon = %d, WindowID = %x\n",
                       VL_Low32(self), create.left, create.top, create.right, create.bottom,
                       create.visible, VL_Int(refcon), VL_Low32(window))
                .line("pDrawWindowCB = %x\n", VL_Low32(bundle));
            TraceWindowLists(trace, kWindowCallbackCount);
        }
        return VL_HandleObject(window);
    });
    Py_DECREF(fields);  // held the callables until their records took their own references
    return result;
}

// The records are found by script and window; the bundle freed is the one at the
// position the last successful search reported (see ReleaseWindowBundle). A window
// without records is destroyed all the same, without a report.
PyObject* PY_XPLMDestroyWindow(PyObject*, PyObject* args) {
    PyObject *self, *windowObject;
    if (!PyArg_ParseTuple(args, "OO", &self, &windowObject)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMDestroyWindow", [&] {
        VL_ScriptTable& table = VL_Table();
        int found = 0, position = 0;
        for (const WindowCallback& kind : kWindowCallbacks) {
            _CallbackList* cell = table.FindCallback(*kind.list, self, window, found, position);
            if (found) table.DeleteCallback(*kind.list, cell, position);
        }
        XPLMDestroyWindow(window);
        std::uintptr_t bundle = ReleaseWindowBundle(position, window);
        if (VL_Tracing()) {
            VL_Trace trace("XPLMDestroyWindow");
            trace.line("pScriptId = %x, Script Name = %s, WindowID = %x\n", VL_Low32(self),
                       VL_ScriptName(self).c_str(), VL_Low32(window))
                .line("pDrawWindowCB = %x\n", static_cast<unsigned>(bundle));
            TraceWindowLists(trace, kWindowCallbackCount);
        }
        return VL_Done();
    });
}

PyObject* PY_XPLMGetWindowGeometry(PyObject*, PyObject* args) {
    PyObject* windowObject;
    IntOut outs[4] = {};
    if (!PyArg_ParseTuple(args, "OOOOO", &windowObject, &outs[0].list, &outs[1].list, &outs[2].list,
                          &outs[3].list))
        return nullptr;
    if (!VL_CheckOutLists({outs[0].list, outs[1].list, outs[2].list, outs[3].list})) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMGetWindowGeometry", [&] {
        XPLMGetWindowGeometry(window, outs[0].pointer(), outs[1].pointer(), outs[2].pointer(),
                              outs[3].pointer());
        return StoreAll(outs);
    });
}

PyObject* PY_XPLMSetWindowGeometry(PyObject*, PyObject* args) {
    PyObject* windowObject;
    int left, top, right, bottom;
    if (!PyArg_ParseTuple(args, "Oiiii", &windowObject, &left, &top, &right, &bottom)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMSetWindowGeometry", [&] {
        XPLMSetWindowGeometry(window, left, top, right, bottom);
        return VL_Done();
    });
}

PyObject* PY_XPLMGetWindowIsVisible(PyObject*, PyObject* args) {
    PyObject* windowObject;
    if (!VL_ParseOneObject(args, &windowObject)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMGetWindowIsVisible",
                      [&] { return VL_IntFromLong(XPLMGetWindowIsVisible(window)); });
}

PyObject* PY_XPLMSetWindowIsVisible(PyObject*, PyObject* args) {
    PyObject* windowObject;
    int visible;
    if (!PyArg_ParseTuple(args, "Oi", &windowObject, &visible)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMSetWindowIsVisible", [&] {
        XPLMSetWindowIsVisible(window, visible);
        return VL_Done();
    });
}

// For a window made here the answer is its bundle, not the script's refcon.
PyObject* PY_XPLMGetWindowRefCon(PyObject*, PyObject* args) {
    PyObject* windowObject;
    if (!VL_ParseOneObject(args, &windowObject)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMGetWindowRefCon",
                      [&] { return VL_HandleObject(XPLMGetWindowRefCon(window)); });
}

// Replacing the refcon detaches the window from its bundle: its callbacks then find no
// record (a number that is not one of our bundles is never read as one) and do nothing.
PyObject* PY_XPLMSetWindowRefCon(PyObject*, PyObject* args) {
    PyObject* windowObject;
    long refcon;
    if (!PyArg_ParseTuple(args, "Ol", &windowObject, &refcon)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMSetWindowRefCon", [&] {
        XPLMSetWindowRefCon(window, reinterpret_cast<void*>(refcon));
        return VL_Done();
    });
}

// The window calls that take a handle alone and answer nothing (or an int).
template <void (*Function)(XPLMWindowID)>
PyObject* WindowCall(PyObject* args, const char* name) {
    PyObject* windowObject;
    if (!VL_ParseOneObject(args, &windowObject)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, name, [&] {
        Function(window);
        return VL_Done();
    });
}

PyObject* PY_XPLMTakeKeyboardFocus(PyObject*, PyObject* args) {
    return WindowCall<XPLMTakeKeyboardFocus>(args, "XPLMTakeKeyboardFocus");
}

PyObject* PY_XPLMBringWindowToFront(PyObject*, PyObject* args) {
    return WindowCall<XPLMBringWindowToFront>(args, "XPLMBringWindowToFront");
}

PyObject* PY_XPLMIsWindowInFront(PyObject*, PyObject* args) {
    PyObject* windowObject;
    if (!VL_ParseOneObject(args, &windowObject)) return nullptr;
    XPLMWindowID window = VL_HandleFromObject(windowObject);
    return VL_Guarded(kModule, "XPLMIsWindowInFront",
                      [&] { return VL_IntFromLong(XPLMIsWindowInFront(window)); });
}

// --- hot keys ---

// Descriptions come back through a 1024-byte buffer (XPLMGetHotKeyInfo); a longer one is
// cut at registration, so that no simulator can write past that buffer.
constexpr std::size_t kHotKeyDescription = 1024;

PyObject* PY_XPLMRegisterHotKey(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    unsigned char virtualKey;
    int flags;
    VL_Text description;
    if (!PyArg_ParseTuple(args, "ObiO&OO", &self, &virtualKey, &flags, VL_ParseText, &description,
                          &callable, &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMRegisterHotKey", [&] {
        std::string text(description.c_str(),
                         std::min<std::size_t>(std::strlen(description.c_str()), kHotKeyDescription - 1));
        _CallbackList* cell = VL_Table().AddCallback(HotKeyCallbackList, self, nullptr, callable, refcon);
        XPLMHotKeyID hotKey = XPLMRegisterHotKey(static_cast<char>(virtualKey), flags, text.c_str(),
                                                 VL_HotKeyCallback, cell);
        VL_Table().UpdateCallback(HotKeyCallbackList, self, callable, hotKey);
        if (VL_Tracing())
            VL_Trace("XPLMRegisterHotKey")
                .line("pScriptId = %x, inVirtualKey = %d, inFlags = %d, inDescription = %s, "
                      "inRefcon = %d\n",
                      VL_Low32(self), virtualKey, flags, text.c_str(), VL_Int(refcon))
                .size("HotKeyCallbackList", HotKeyCallbackList);
        return VL_HandleObject(hotKey);
    });
}

PyObject* PY_XPLMUnregisterHotKey(PyObject*, PyObject* args) {
    PyObject *self, *hotKeyObject;
    if (!PyArg_ParseTuple(args, "OO", &self, &hotKeyObject)) return nullptr;
    XPLMHotKeyID hotKey = VL_HandleFromObject(hotKeyObject);
    return VL_Guarded(kModule, "XPLMUnregisterHotKey", [&] {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(HotKeyCallbackList, self, hotKey, found, position);
        if (found) {
            XPLMUnregisterHotKey(hotKey);
            VL_Table().DeleteCallback(HotKeyCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMUnregisterHotKey", VL_NoSuchCallback, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMUnregisterHotKey")
                .line("pScriptId = %x, Script Name = %s, HotKeyID = %x\n", VL_Low32(self),
                      VL_ScriptName(self).c_str(), VL_Low32(hotKey))
                .size("HotKeyCallbackList", HotKeyCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMCountHotKeys(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMCountHotKeys", [] { return VL_IntFromLong(XPLMCountHotKeys()); });
}

PyObject* PY_XPLMGetNthHotKey(PyObject*, PyObject* args) {
    int index;
    if (!PyArg_ParseTuple(args, "i", &index)) return nullptr;
    return VL_Guarded(kModule, "XPLMGetNthHotKey",
                      [&] { return VL_HandleObject(XPLMGetNthHotKey(index)); });
}

PyObject* PY_XPLMGetHotKeyInfo(PyObject*, PyObject* args) {
    PyObject *hotKeyObject, *keyList, *flagsList, *descriptionList, *pluginList;
    if (!PyArg_ParseTuple(args, "OOOOO", &hotKeyObject, &keyList, &flagsList, &descriptionList,
                          &pluginList))
        return nullptr;
    if (!VL_CheckOutLists({keyList, flagsList, descriptionList, pluginList})) return nullptr;
    XPLMHotKeyID hotKey = VL_HandleFromObject(hotKeyObject);
    return VL_Guarded(kModule, "XPLMGetHotKeyInfo", [&]() -> PyObject* {
        char virtualKey = 0;
        XPLMKeyFlags flags = 0;
        char description[kHotKeyDescription] = {};
        XPLMPluginID plugin = 0;
        auto wanted = [](PyObject* list, auto* pointer) { return list == Py_None ? nullptr : pointer; };
        XPLMGetHotKeyInfo(hotKey, wanted(keyList, &virtualKey), wanted(flagsList, &flags),
                          wanted(descriptionList, description), wanted(pluginList, &plugin));
        description[sizeof description - 1] = '\0';
        if (!VL_StoreOut(keyList, VL_IntFromLong(static_cast<unsigned char>(virtualKey))) ||
            !VL_StoreOut(flagsList, VL_IntFromLong(flags)) ||
            !VL_StoreOut(descriptionList, VL_TextFromString(description)) ||
            !VL_StoreOut(pluginList, VL_IntFromLong(plugin)))
            return nullptr;
        return VL_Done();
    });
}

// The hot key is a plain 32-bit integer here, unlike in the other hot-key functions;
// scripts have always passed it so.
PyObject* PY_XPLMSetHotKeyCombination(PyObject*, PyObject* args) {
    int hotKey, flags;
    unsigned char virtualKey;
    if (!PyArg_ParseTuple(args, "ibi", &hotKey, &virtualKey, &flags)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetHotKeyCombination", [&] {
        XPLMSetHotKeyCombination(reinterpret_cast<XPLMHotKeyID>(static_cast<std::intptr_t>(hotKey)),
                                 static_cast<char>(virtualKey), flags);
        return VL_Done();
    });
}

PyMethodDef XPLMDisplayMethods[] = {
    {"XPLMRegisterDrawCallback", PY_XPLMRegisterDrawCallback, VL_METH_ARGS, "Registers a Draw Call Back."},
    {"XPLMUnregisterDrawCallback", PY_XPLMUnregisterDrawCallback, VL_METH_ARGS,
     "Unregisters a Draw Call Back."},
    {"XPLMRegisterKeySniffer", PY_XPLMRegisterKeySniffer, VL_METH_ARGS, "Registers a Key Sniffer."},
    {"XPLMUnregisterKeySniffer", PY_XPLMUnregisterKeySniffer, VL_METH_ARGS, "Unregisters a Key Sniffer."},
    {"XPLMGetScreenSize", PY_XPLMGetScreenSize, VL_METH_ARGS, "Get Screen Size."},
    {"XPLMGetMouseLocation", PY_XPLMGetMouseLocation, VL_METH_ARGS, "Get Mouse Location."},
    {"XPLMCreateWindow", PY_XPLMCreateWindow, VL_METH_ARGS, "Creates a window."},
    {"XPLMCreateWindowEx", PY_XPLMCreateWindowEx, VL_METH_ARGS, "Creates a window using a struct."},
    {"XPLMDestroyWindow", PY_XPLMDestroyWindow, VL_METH_ARGS, "Destroys a window."},
    {"XPLMGetWindowGeometry", PY_XPLMGetWindowGeometry, VL_METH_ARGS, "Get window geometry."},
    {"XPLMSetWindowGeometry", PY_XPLMSetWindowGeometry, VL_METH_ARGS, "Set window geometry."},
    {"XPLMGetWindowIsVisible", PY_XPLMGetWindowIsVisible, VL_METH_ARGS, "Get Window is Visible."},
    {"XPLMSetWindowIsVisible", PY_XPLMSetWindowIsVisible, VL_METH_ARGS, "Set Window is Visible."},
    {"XPLMGetWindowRefCon", PY_XPLMGetWindowRefCon, VL_METH_ARGS, "Get the Window RefCon."},
    {"XPLMSetWindowRefCon", PY_XPLMSetWindowRefCon, VL_METH_ARGS, "Set the Window RefCon."},
    {"XPLMTakeKeyboardFocus", PY_XPLMTakeKeyboardFocus, VL_METH_ARGS, "Take the Keyboard Focus."},
    {"XPLMBringWindowToFront", PY_XPLMBringWindowToFront, VL_METH_ARGS, "Bring Window to Front."},
    {"XPLMIsWindowInFront", PY_XPLMIsWindowInFront, VL_METH_ARGS, "Is the Window in Front."},
    {"XPLMRegisterHotKey", PY_XPLMRegisterHotKey, VL_METH_ARGS, "Register Hot Key."},
    {"XPLMUnregisterHotKey", PY_XPLMUnregisterHotKey, VL_METH_ARGS, "Unregister Hot Key."},
    {"XPLMCountHotKeys", PY_XPLMCountHotKeys, VL_METH_ARGS, "Count the Hot Keys."},
    {"XPLMGetNthHotKey", PY_XPLMGetNthHotKey, VL_METH_ARGS, "Get Nth Hot Key."},
    {"XPLMGetHotKeyInfo", PY_XPLMGetHotKeyInfo, VL_METH_ARGS, "Get Hot Key Info."},
    {"XPLMSetHotKeyCombination", PY_XPLMSetHotKeyCombination, VL_METH_ARGS,
     "Set the Hot Key Combination."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant kConstants[] = {
    {"xplm_Phase_FirstScene", xplm_Phase_FirstScene},
    {"xplm_Phase_Terrain", xplm_Phase_Terrain},
    {"xplm_Phase_Airports", xplm_Phase_Airports},
    {"xplm_Phase_Vectors", xplm_Phase_Vectors},
    {"xplm_Phase_Objects", xplm_Phase_Objects},
    {"xplm_Phase_Airplanes", xplm_Phase_Airplanes},
    {"xplm_Phase_LastScene", xplm_Phase_LastScene},
    {"xplm_Phase_FirstCockpit", xplm_Phase_FirstCockpit},
    {"xplm_Phase_Panel", xplm_Phase_Panel},
    {"xplm_Phase_Gauges", xplm_Phase_Gauges},
    {"xplm_Phase_Window", xplm_Phase_Window},
    {"xplm_Phase_LastCockpit", xplm_Phase_LastCockpit},
    {"xplm_MouseDown", xplm_MouseDown},
    {"xplm_MouseDrag", xplm_MouseDrag},
    {"xplm_MouseUp", xplm_MouseUp},
    {"xplm_CursorDefault", xplm_CursorDefault},
    {"xplm_CursorHidden", xplm_CursorHidden},
    {"xplm_CursorArrow", xplm_CursorArrow},
    {"xplm_CursorCustom", xplm_CursorCustom},
};

}  // namespace

void initXPLMDisplay() {
    PyObject* module = VL_CreateModule("XPLMDisplay", XPLMDisplayMethods);
    if (!module || !VL_AddConstants(module, kConstants)) VL_PrintPythonError();
}

}  // namespace vorlith
