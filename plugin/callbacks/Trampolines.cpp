// The trampolines of every kind except the data accessors: how each reaches its record,
// the argument tuple it builds and what it answers when Python gives no result.

#include "callbacks/Trampolines.h"

#include "callbacks/Dispatch.h"
#include "callbacks/WidgetParameters.h"
#include "core/PythonGuard.h"

namespace vorlith {

namespace {

// Missing-method line, then the values for an inactive script / a missing callable /
// a failed call. Some lines do not follow their kind's name; they are the ones scripts
// and their authors have always seen.
const VL_CallbackKind<float> kFlightLoop{VL_CostFlightLoops, "Cannot find method FlightLoopCallback\n", 1.0f, 1.0f, 1.0f};
const VL_CallbackKind<int> kDraw{VL_CostDrawing, "Cannot find method DrawCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kKeySniffer{VL_CostCommands, "Cannot find method KeySnifferCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kHotKey{VL_CostCommands, "Cannot find method HotKeyCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kDrawWindow{VL_CostDrawing, "Cannot find method DrawWindowCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kMouseClick{VL_CostDrawing, "Cannot find method MouseClickCallback\n", 0, 0, 0};
const VL_CallbackKind<int> kKey{VL_CostDrawing, "Cannot find method KeyCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kCursorStatus{VL_CostDrawing, "Cannot find method CursorStatusCallback\n", 0, 0, 0};
const VL_CallbackKind<int> kMouseWheel{VL_CostDrawing, "Cannot find method MouseWheelCallback\n", 0, 0, 0};
const VL_CallbackKind<int> kMenu{VL_CostCommands, "Cannot find method UserMenuCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kCommand{VL_CostCommands, "Cannot find method CommandCallback\n", 0, 0, 0};
const VL_CallbackKind<int> kError{VL_CostOther, "Cannot find method CommandCallback\n", 0, 0, 0};
const VL_CallbackKind<int> kPlanesAvailable{VL_CostOther, "Cannot find method UserPlanesAvailableCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kSharedData{VL_CostData, "Cannot find method UserSharedDataCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kObjectLoaded{VL_CostOther, "Cannot find method ObjectLoadedCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kFeatureEnumerator{VL_CostOther, "Cannot find method FeatureEnumeratorCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kLibraryEnumerator{VL_CostOther, "Cannot find method LibraryEnumeratorCallback\n", 0, 1, 1};
const VL_CallbackKind<int> kCameraControl{VL_CostOther, "Cannot find function UserCameraControlCallback\n", 0, 0, 0,
                                          true, "UserCameraControlCallback Call failed\n"};
const VL_CallbackKind<int> kWidget{VL_CostWidgets, "Cannot find method UserWidgetCallback\n", 0, 1, 1, false};
constexpr int kWidgetNotInList = 1;

PyObject* Handle(const void* pointer) { return PyLong_FromVoidPtr(const_cast<void*>(pointer)); }

int SignedChar(char c) { return static_cast<signed char>(c); }
int UnsignedChar(char c) { return static_cast<unsigned char>(c); }

// The seven floats of a camera position, in the SDK's order.
float* PositionField(XPLMCameraPosition_t* p, int i) {
    float* fields[] = {&p->x, &p->y, &p->z, &p->pitch, &p->heading, &p->roll, &p->zoom};
    return fields[i];
}
constexpr int kPositionFields = 7;

}  // namespace

// --- cells ---

float CallUserFlightLoopCallback(float sinceLastCall, float sinceLastFlightLoop, int counter,
                                 void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kFlightLoop, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        return VL_Pack(sinceLastCall, sinceLastFlightLoop, counter, ref);  // "(ffiO)"
    }, VL_ResultFloat);
}

int CallUserDrawCallback(XPLMDrawingPhase phase, int isBefore, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kDraw, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        return VL_Pack(phase, isBefore, ref);  // "(iiO)"
    }, VL_ResultInt);
}

int CallUserKeySnifferCallback(char key, XPLMKeyFlags flags, char virtualKey, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kKeySniffer, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        return VL_Pack(SignedChar(key), flags, UnsignedChar(virtualKey), ref);  // "(biiO)"
    }, VL_ResultInt);
}

int CallUserHotKeyCallback(void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kHotKey, VL_RecordFromCell(refcon),
                       [&](PyObject* ref) { return VL_Pack(ref); }, VL_ResultNone);
}

// The menu's reference value is the cell; the item's is the script's own integer.
int CallUserMenuCallback(void* menuRefcon, void* itemRefcon) {
    PythonGuard guard;
    return VL_CallUser(kMenu, VL_RecordFromCell(menuRefcon), [&](PyObject* ref) {
        long item = static_cast<long>(reinterpret_cast<std::intptr_t>(itemRefcon));
        return VL_Pack(ref, item);  // "(OO)"
    }, VL_ResultNone);
}

int CallUserCommandCallback(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kCommand, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        int handle = static_cast<int>(reinterpret_cast<std::intptr_t>(command));
        return VL_Pack(handle, phase, ref);  // "(iiO)"
    }, VL_ResultInt);
}

int CallUserPlanesAvailableCallback(void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kPlanesAvailable, VL_RecordFromCell(refcon),
                       [&](PyObject* ref) { return VL_Pack(ref); }, VL_ResultNone);
}

int CallUserSharedDataCallback(void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kSharedData, VL_RecordFromCell(refcon),
                       [&](PyObject* ref) { return VL_Pack(ref); }, VL_ResultNone);
}

int CallUserObjectLoadedCallback(XPLMObjectRef object, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kObjectLoaded, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        return VL_Pack(VL_New{Handle(object)}, ref);  // "(OO)"
    }, VL_ResultNone);
}

int CallUserFeatureEnumeratorCallback(const char* feature, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kFeatureEnumerator, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        return VL_Pack(VL_New{VL_TextFromString(feature)}, ref);  // "(sO)"
    }, VL_ResultNone);
}

int CallUserLibraryEnumeratorCallback(const char* filePath, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kLibraryEnumerator, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        return VL_Pack(VL_New{VL_TextFromString(filePath)}, ref);  // "(sO)"
    }, VL_ResultNone);
}

// The script moves the camera by changing the list of seven floats in place; without a
// position (control is being lost) it gets 0 instead of the list.
int CallUserCameraControlCallback(XPLMCameraPosition_t* position, int isLosingControl,
                                  void* refcon) {
    PythonGuard guard;
    PyObject* list = nullptr;
    int keep = VL_CallUser(kCameraControl, VL_RecordFromCell(refcon), [&](PyObject* ref) {
        if (!position) return VL_Pack(0L, isLosingControl, ref);  // "(liO)"
        list = PyList_New(kPositionFields);
        if (!list) return VL_Arguments<3>();
        for (int i = 0; i < kPositionFields; ++i)
            PyList_SET_ITEM(list, i, PyFloat_FromDouble(*PositionField(position, i)));
        return VL_Pack(list, isLosingControl, ref);  // "(OiO)"
    }, [&](PyObject* result) {
        int value = VL_ResultInt(result);
        if (!list) return value;
        // Only what the script left as numbers is taken; the rest keeps its value.
        Py_ssize_t size = PyList_GET_SIZE(list);
        for (int i = 0; i < kPositionFields && i < size; ++i) {
            double field = PyFloat_AsDouble(PyList_GET_ITEM(list, i));
            if (field == -1.0 && PyErr_Occurred()) PyErr_Clear();
            else *PositionField(position, i) = static_cast<float>(field);
        }
        return value;
    });
    Py_XDECREF(list);
    return keep;
}

// --- window blocks ---

int CallUserDrawWindowCallback(XPLMWindowID window, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kDrawWindow, VL_RecordFromBlock(refcon, VL_DrawWindowSlot), [&](PyObject* ref) {
        return VL_Pack(VL_New{Handle(window)}, ref);  // "(OO)"
    }, VL_ResultNone);
}

int CallUserMouseClickCallback(XPLMWindowID window, int x, int y, XPLMMouseStatus status,
                               void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kMouseClick, VL_RecordFromBlock(refcon, VL_MouseClickSlot), [&](PyObject* ref) {
        return VL_Pack(VL_New{Handle(window)}, x, y, status, ref);  // "(OiiiO)"
    }, VL_ResultInt);
}

int CallUserKeyCallback(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey,
                        void* refcon, int losingFocus) {
    PythonGuard guard;
    return VL_CallUser(kKey, VL_RecordFromBlock(refcon, VL_KeySlot), [&](PyObject* ref) {
        return VL_Pack(VL_New{Handle(window)}, SignedChar(key), flags,  // "(OiiiOi)"
                            SignedChar(virtualKey), ref, losingFocus);
    }, VL_ResultNone);
}

int CallUserCursorStatusCallback(XPLMWindowID window, int x, int y, void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kCursorStatus, VL_RecordFromBlock(refcon, VL_CursorStatusSlot), [&](PyObject* ref) {
        return VL_Pack(VL_New{Handle(window)}, x, y, ref);  // "(OiiO)"
    }, VL_ResultInt);
}

int CallUserMouseWheelCallback(XPLMWindowID window, int x, int y, int wheel, int clicks,
                               void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kMouseWheel, VL_RecordFromBlock(refcon, VL_MouseWheelSlot), [&](PyObject* ref) {
        return VL_Pack(VL_New{Handle(window)}, x, y, wheel, clicks, ref);  // "(OiiiiO)"
    }, VL_ResultInt);
}

// --- the error callback ---

int CallUserErrorCallback(const _CallbackListEntry* record, const char* message) {
    PythonGuard guard;
    return VL_CallUser(kError, record, [&](PyObject*) {
        return VL_Pack(VL_New{VL_TextFromString(message)});  // "(s)"
    }, VL_ResultNone);
}

// Walked by index: a callable may add or remove error callbacks while it runs.
void VL_ErrorCallback(const char* message) {
    PythonGuard guard;
    for (std::size_t i = 0; i < ErrorCallbackList.size(); ++i)
        CallUserErrorCallback(ErrorCallbackList[i]->record, message);
}

// --- widgets ---

int CallUserWidgetCallback(XPWidgetMessage message, XPWidgetID widget, intptr_t param1,
                           intptr_t param2) {
    PythonGuard guard;
    int found = 0, position = 0;
    const _WidgetCallbackListEntry* record =
        VLTestTable ? VLTestTable->FindWidgetCallback(WidgetCallbackList, widget, found, position)
                    : nullptr;
    if (!record) return kWidgetNotInList;
    if (!VL_IsScriptActive(record->scriptId, record->generation)) return kWidget.inactive;
    VL_WidgetDelivery delivery(message, param1, param2);  // what the decoders may read
    VL_ScriptStatusRef status = VLTestTable->StatusOf(record->scriptId);
    PyObject* script = record->scriptId;  // the call may delete the record
    detail::gVL_CallRaised = false;
    int value = VL_TimedCall<int>(status->cost[kWidget.cost], status, [&] {
        return VL_CallPython(kWidget, record->callable, [&]() {
            return VL_Pack(message, VL_New{Handle(widget)},  // "(iOOO)"
                                VL_New{Handle(reinterpret_cast<void*>(param1))},
                                VL_New{Handle(reinterpret_cast<void*>(param2))});
        }, VL_ResultInt);
    });
    if (gVL_DisableFailingScripts) VL_CountCall(script, *status, detail::gVL_CallRaised);
    return value;
}

// --- the functions the SDK calls: each hands its arguments on unchanged ---

float VL_FlightLoopCallback(float sinceLastCall, float sinceLastFlightLoop, int counter,
                            void* refcon) {
    return CallUserFlightLoopCallback(sinceLastCall, sinceLastFlightLoop, counter, refcon);
}
int VL_DrawCallback(XPLMDrawingPhase phase, int isBefore, void* refcon) {
    return CallUserDrawCallback(phase, isBefore, refcon);
}
int VL_KeySnifferCallback(char key, XPLMKeyFlags flags, char virtualKey, void* refcon) {
    return CallUserKeySnifferCallback(key, flags, virtualKey, refcon);
}
void VL_HotKeyCallback(void* refcon) { CallUserHotKeyCallback(refcon); }
void VL_MenuCallback(void* menuRefcon, void* itemRefcon) {
    CallUserMenuCallback(menuRefcon, itemRefcon);
}
int VL_CommandCallback(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    return CallUserCommandCallback(command, phase, refcon);
}
void VL_PlanesAvailableCallback(void* refcon) { CallUserPlanesAvailableCallback(refcon); }
void VL_SharedDataCallback(void* refcon) { CallUserSharedDataCallback(refcon); }
void VL_ObjectLoadedCallback(XPLMObjectRef object, void* refcon) {
    CallUserObjectLoadedCallback(object, refcon);
}
void VL_FeatureEnumeratorCallback(const char* feature, void* refcon) {
    CallUserFeatureEnumeratorCallback(feature, refcon);
}
void VL_LibraryEnumeratorCallback(const char* filePath, void* refcon) {
    CallUserLibraryEnumeratorCallback(filePath, refcon);
}
int VL_CameraControlCallback(XPLMCameraPosition_t* position, int isLosingControl, void* refcon) {
    return CallUserCameraControlCallback(position, isLosingControl, refcon);
}
void VL_DrawWindowCallback(XPLMWindowID window, void* refcon) {
    CallUserDrawWindowCallback(window, refcon);
}
int VL_MouseClickCallback(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void* refcon) {
    return CallUserMouseClickCallback(window, x, y, status, refcon);
}
void VL_KeyCallback(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey,
                    void* refcon, int losingFocus) {
    CallUserKeyCallback(window, key, flags, virtualKey, refcon, losingFocus);
}
XPLMCursorStatus VL_CursorStatusCallback(XPLMWindowID window, int x, int y, void* refcon) {
    return CallUserCursorStatusCallback(window, x, y, refcon);
}
int VL_MouseWheelCallback(XPLMWindowID window, int x, int y, int wheel, int clicks, void* refcon) {
    return CallUserMouseWheelCallback(window, x, y, wheel, clicks, refcon);
}
int VL_WidgetCallback(XPWidgetMessage message, XPWidgetID widget, intptr_t param1,
                      intptr_t param2) {
    return CallUserWidgetCallback(message, widget, param1, param2);
}

}  // namespace vorlith
