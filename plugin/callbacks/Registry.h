// The callback registry: records that tie an SDK registration to a script, its Python
// callable and its reference value; the holder cells whose addresses the SDK gets as
// reference values; the blocks of cells for windows and data accessors; the global lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/ScriptTable.h"
#include "platform/PythonCompat.h"

namespace vorlith {

// A record owns one reference on its script id, its callable and the Python integer of
// its reference value (made once, handed to every call): a script that passes a bound
// method made at the call (self.Loop instead of a stored attribute) would otherwise leave
// a dangling pointer behind for the next dispatch. Matching stays by identity, so such a
// script still cannot unregister it with another fresh method. `generation` is the
// interpreter the objects belong to: at its stop the records retire (never called or
// matched again), give their objects back before Py_Finalize, and are freed after it.
struct _CallbackListEntry {
    PyObject* scriptId;
    void* handle;         // what the SDK returned for this registration, 0 until known
    PyObject* callable;
    void* refcon;         // the script's own reference value, an integer
    unsigned generation;
    VL_FoundBy foundBy;
    PyObject* refconObject;        // refcon as the callable gets it; owned
    VL_ScriptStatusRef status;     // the script's enabled status, read at every dispatch
};

// The SDK's reference value. A cell whose record was deleted after its SDK registration
// was removed may serve a later registration; one whose registration may still be known
// to the SDK (left at a stop) is never reused and leads nowhere.
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
namespace detail {
extern unsigned gCallbackGeneration;
extern std::uintptr_t gCellsBegin, gCellsEnd;  // the cells handed out so far
}
inline unsigned VL_CallbackGeneration() { return detail::gCallbackGeneration; }

// --- an interpreter's stop ---
// Before Py_Finalize, holding the interpreter: every record of the stopping interpreter
// retires (never called or matched again) and gives back its Python objects. The lists
// keep the records for the integrity check.
void VL_RetireCallbacks();
// After Py_Finalize and the integrity check: every list is emptied and its records freed.
// Cells and blocks the SDK may still hold lead nowhere and are never reused.
void VL_ReleaseCallbacks();
// The same for one list (the integrity check empties each list it reports).
void VL_ReleaseCallbackList(VL_CallbackListType& list);

// --- cells and blocks as reference values come back from the SDK ---
// The record behind a reference value the SDK handed back, or null when the value is not
// one of our cells or its record is gone. Never reads memory that is not ours; constant
// time whatever the number of cells.
inline _CallbackListEntry* VL_RecordFromCell(void* refcon);
bool VL_IsOwnCell(const void* pointer);
// The record in slot `slot` (0-based) of the block behind a reference value, or null.
_CallbackListEntry* VL_RecordFromBlock(void* refcon, int slot);
bool VL_IsOwnBlock(const void* pointer);

// True when a record of `scriptId` made under `generation` may be called now: it belongs
// to the running interpreter and its script is in the script table and enabled.
bool VL_IsScriptActive(PyObject* scriptId, unsigned generation);
// The same for a callback record, without a search: its own status and generation.
inline bool VL_IsRecordActive(const _CallbackListEntry* record) {
    return record && record->status->enabled && record->generation == VL_CallbackGeneration();
}

inline _CallbackListEntry* VL_RecordFromCell(void* refcon) {
    auto address = reinterpret_cast<std::uintptr_t>(refcon);
    if (address < detail::gCellsBegin || address >= detail::gCellsEnd ||
        (address - detail::gCellsBegin) % sizeof(_CallbackList) != 0)
        return nullptr;
    return static_cast<_CallbackList*>(refcon)->record;
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
