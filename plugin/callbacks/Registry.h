// The callback registry: records that tie an SDK registration to a script, its Python
// callable and its reference value; the holder cells whose addresses the SDK gets as
// reference values; the blocks of cells for windows and data accessors; the global lists.
#pragma once

#include <cstddef>
#include <vector>

#include "core/ScriptTable.h"
#include "platform/PythonCompat.h"

namespace vorlith {

// A record owns one reference on its script id and one on its callable: a script that
// passes a bound method made at the call (self.Loop instead of a stored attribute) would
// otherwise leave a dangling pointer behind for the next dispatch. Matching stays by
// identity, so such a script still cannot unregister it with another fresh method.
// `generation` is the interpreter the objects belong to; a record of an earlier
// interpreter (left behind over a Reload) is never called, matched or released, even if
// a new object now lives at the old address.
struct _CallbackListEntry {
    PyObject* scriptId;
    void* handle;         // what the SDK returned for this registration, 0 until known
    PyObject* callable;
    void* refcon;         // the script's own reference value, an integer
    unsigned generation;
};

// The SDK's reference value. A cell lives until the plug-in is unloaded, even after its
// record was deleted: a registration whose record was matched by another handle (the
// same callable registered twice) may still be called with it, and then finds no record.
struct _CallbackList {
    _CallbackListEntry* record;
};

struct _WidgetCallbackListEntry {
    PyObject* scriptId;   // null until XPAddWidgetCallback; owned reference
    void* widget;
    PyObject* callable;   // null until XPAddWidgetCallback; owned reference
    int isRoot;
    void* container;
    unsigned generation;
};

// A block of cells handed to the SDK as one reference value: five for a window (draw,
// mouse click, key, cursor status, mouse wheel), six for each side of a data accessor
// (int, float, double, int array, float array, byte array). Empty slots are null.
constexpr int VL_BlockSlots = 6;
struct VL_CallbackBlock {
    void* handle;         // the window or dataref it was registered for, once known
    unsigned generation;
    _CallbackList* cells[VL_BlockSlots];
};

using VL_CallbackBlockList = std::vector<VL_CallbackBlock*>;

// --- the interpreter generation ---
// Starts a new interpreter's records; called once per start before any script loads.
void VL_StartCallbackGeneration();
unsigned VL_CallbackGeneration();

// --- cells and blocks as reference values come back from the SDK ---
// The record behind a reference value the SDK handed back, or null when the value is not
// one of our cells or its record is gone. Never reads memory that is not ours.
_CallbackListEntry* VL_RecordFromCell(void* refcon);
bool VL_IsOwnCell(const void* pointer);
// The record in slot `slot` (0-based) of the block behind a reference value, or null.
_CallbackListEntry* VL_RecordFromBlock(void* refcon, int slot);
bool VL_IsOwnBlock(const void* pointer);

// True when a record of `scriptId` made under `generation` may be called now: it belongs
// to the running interpreter and its script is in the script table and enabled.
bool VL_IsScriptActive(PyObject* scriptId, unsigned generation);
inline bool VL_IsRecordActive(const _CallbackListEntry* record) {
    return record && VL_IsScriptActive(record->scriptId, record->generation);
}

// --- blocks ---
// A new empty block appended to `list`.
VL_CallbackBlock* VL_AddCallbackBlock(VL_CallbackBlockList& list);
// Position of the running interpreter's block registered for `handle`, or -1.
int VL_FindCallbackBlock(const VL_CallbackBlockList& list, void* handle);
// Frees the block at `position` and removes it from the list.
void VL_DeleteCallbackBlock(VL_CallbackBlockList& list, int position);

// --- the global lists; they live as long as the plug-in and survive interpreter restarts ---
extern VL_CallbackListType CameraCallbackList;
extern VL_CallbackListType SharedDataCallbackList;
extern VL_CallbackListType GetDataiCallbackList;
extern VL_CallbackListType SetDataiCallbackList;
extern VL_CallbackListType GetDatafCallbackList;
extern VL_CallbackListType SetDatafCallbackList;
extern VL_CallbackListType GetDatadCallbackList;
extern VL_CallbackListType SetDatadCallbackList;
extern VL_CallbackListType GetDataviCallbackList;
extern VL_CallbackListType SetDataviCallbackList;
extern VL_CallbackListType GetDatavfCallbackList;
extern VL_CallbackListType SetDatavfCallbackList;
extern VL_CallbackListType GetDatabCallbackList;
extern VL_CallbackListType SetDatabCallbackList;
extern VL_CallbackBlockList GetDataMemoryPointerList;
extern VL_CallbackBlockList SetDataMemoryPointerList;
extern VL_CallbackListType DrawCallbackList;
extern VL_CallbackListType KeySnifferCallbackList;
extern VL_CallbackListType HotKeyCallbackList;
extern VL_CallbackListType DrawWindowCallbackList;
extern VL_CallbackListType KeyCallbackList;
extern VL_CallbackListType MouseClickCallbackList;
extern VL_CallbackListType CursorStatusCallbackList;
extern VL_CallbackListType MouseWheelCallbackList;
extern VL_CallbackBlockList DrawWindowMemoryPointerList;
extern VL_CallbackListType MenuCallbackList;
extern VL_CallbackListType FlightLoopCallbackList;
extern VL_CallbackListType ErrorCallbackList;
extern VL_CallbackListType CommandCallbackList;
extern VL_CallbackListType PlanesAvailableCallbackList;
extern VL_CallbackListType FeatureEnumeratorCallbackList;
extern VL_CallbackListType ObjectLoadedCallbackList;
extern VL_CallbackListType LibraryEnumeratorCallbackList;
extern VL_WidgetCallbackListType WidgetCallbackList;

// --- the integrity check at interpreter stop (DEBUG:CheckCallbacks) ---
// Reports every list that still holds records, then empties it; memory lists are only
// reported. Runs after Py_Finalize: it never touches a Python object.
void VL_CheckAllCallbacks();
// One check per list, in the order VL_CheckAllCallbacks runs them.
void VL_CheckCameraCallbacks();
void VL_CheckSharedDataCallbacks();
void VL_CheckGetDataiCallbacks();
void VL_CheckSetDataiCallbacks();
void VL_CheckGetDatafCallbacks();
void VL_CheckSetDatafCallbacks();
void VL_CheckGetDatadCallbacks();
void VL_CheckSetDatadCallbacks();
void VL_CheckGetDataviCallbacks();
void VL_CheckSetDataviCallbacks();
void VL_CheckGetDatavfCallbacks();
void VL_CheckSetDatavfCallbacks();
void VL_CheckGetDatabCallbacks();
void VL_CheckSetDatabCallbacks();
void VL_CheckGetDataMemoryPointerList();
void VL_CheckSetDataMemoryPointerList();
void VL_CheckKeySnifferCallbacks();
void VL_CheckHotKeyCallbacks();
void VL_CheckDrawWindowCallbacks();
void VL_CheckKeyCallbacks();
void VL_CheckMouseClickCallbacks();
void VL_CheckCursorStatusCallbacks();
void VL_CheckMouseWheelCallbacks();
void VL_CheckDrawWindowMemoryPointerList();
void VL_CheckDrawCallbacks();
void VL_CheckMenuCallbacks();
void VL_CheckPlanesAvailableCallbacks();
void VL_CheckFeatureEnumeratorCallbacks();
void VL_CheckFlightLoopCallbacks();
void VL_CheckLibraryEnumeratorCallbacks();
void VL_CheckObjectLoadedCallbacks();
void VL_CheckCommandCallbacks();
void VL_CheckErrorCallbacks();
void VL_CheckWidgetCallbacks();

}  // namespace vorlith
