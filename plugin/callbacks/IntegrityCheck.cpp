// The integrity check of the callback lists at interpreter stop: every registration a
// script never removed is reported with its script, and the callback lists are emptied.

#include "callbacks/Registry.h"
#include "core/Log.h"
#include "core/ScriptFiles.h"

namespace vorlith {

namespace {

// Runs after Py_Finalize: the script ids are only compared, never used as objects.
// Every record still listed belongs to the interpreter that just stopped.
void WriteRecordScript(PyObject* scriptId) {
    if (scriptId) WriteScriptInfo(scriptId);
}

// The SDK may still call the cells: they are emptied, never reused, and lead nowhere.
void CheckList(const char* name, VL_CallbackListType& list) {
    if (list.empty()) return;
    VL_WriteToLogf("%s size = %d\n", name, static_cast<int>(list.size()));
    for (_CallbackList* cell : list)
        if (cell->record) WriteRecordScript(cell->record->scriptId);
    VL_WriteToLog("Mismatch of callback creation and destruction.\n");
    VL_ReleaseCallbackList(list);
}

void CheckMemoryList(const char* name, const VL_CallbackBlockList& list) {
    if (list.empty()) return;
    VL_WriteToLogf("%s size = %d\n", name, static_cast<int>(list.size()));
    VL_WriteToLogf("Mismatch of %s creation and destruction.\n", name);
}

}  // namespace

#define VL_LIST_CHECK(kind) \
    void VL_Check##kind##Callbacks() { CheckList(#kind "CallbackList", kind##CallbackList); }
#define VL_MEMORY_LIST_CHECK(list) \
    void VL_Check##list() { CheckMemoryList(#list, list); }

VL_LIST_CHECK(Camera)
VL_LIST_CHECK(SharedData)
VL_LIST_CHECK(GetDatai)
VL_LIST_CHECK(SetDatai)
VL_LIST_CHECK(GetDataf)
VL_LIST_CHECK(SetDataf)
VL_LIST_CHECK(GetDatad)
VL_LIST_CHECK(SetDatad)
VL_LIST_CHECK(GetDatavi)
VL_LIST_CHECK(SetDatavi)
VL_LIST_CHECK(GetDatavf)
VL_LIST_CHECK(SetDatavf)
VL_LIST_CHECK(GetDatab)
VL_LIST_CHECK(SetDatab)
VL_MEMORY_LIST_CHECK(GetDataMemoryPointerList)
VL_MEMORY_LIST_CHECK(SetDataMemoryPointerList)
VL_LIST_CHECK(KeySniffer)
VL_LIST_CHECK(HotKey)
VL_LIST_CHECK(DrawWindow)
VL_LIST_CHECK(Key)
VL_LIST_CHECK(MouseClick)
VL_LIST_CHECK(CursorStatus)
VL_LIST_CHECK(MouseWheel)
VL_MEMORY_LIST_CHECK(DrawWindowMemoryPointerList)
VL_LIST_CHECK(Draw)
VL_LIST_CHECK(Menu)
VL_LIST_CHECK(PlanesAvailable)
VL_LIST_CHECK(FeatureEnumerator)
VL_LIST_CHECK(FlightLoop)
VL_LIST_CHECK(LibraryEnumerator)
VL_LIST_CHECK(ObjectLoaded)
VL_LIST_CHECK(Command)
VL_LIST_CHECK(Error)

#undef VL_LIST_CHECK
#undef VL_MEMORY_LIST_CHECK

// Widget records are found by widget, never through a pointer the SDK keeps, so they
// can be freed; their Python objects were given back before Py_Finalize.
void VL_CheckWidgetCallbacks() {
    if (WidgetCallbackList.empty()) return;
    VL_WriteToLogf("WidgetCallbackList size = %d\n", static_cast<int>(WidgetCallbackList.size()));
    for (_WidgetCallbackListEntry* record : WidgetCallbackList)
        WriteRecordScript(record->scriptId);
    VL_WriteToLog("Mismatch of callback creation and destruction.\n");
    for (_WidgetCallbackListEntry* record : WidgetCallbackList) delete record;
    WidgetCallbackList.clear();
}

void VL_CheckAllCallbacks() {
    static void (*const checks[])() = {
        VL_CheckCameraCallbacks,        VL_CheckSharedDataCallbacks,
        VL_CheckGetDataiCallbacks,      VL_CheckSetDataiCallbacks,
        VL_CheckGetDatafCallbacks,      VL_CheckSetDatafCallbacks,
        VL_CheckGetDatadCallbacks,      VL_CheckSetDatadCallbacks,
        VL_CheckGetDataviCallbacks,     VL_CheckSetDataviCallbacks,
        VL_CheckGetDatavfCallbacks,     VL_CheckSetDatavfCallbacks,
        VL_CheckGetDatabCallbacks,      VL_CheckSetDatabCallbacks,
        VL_CheckGetDataMemoryPointerList, VL_CheckSetDataMemoryPointerList,
        VL_CheckKeySnifferCallbacks,    VL_CheckHotKeyCallbacks,
        VL_CheckDrawWindowCallbacks,    VL_CheckKeyCallbacks,
        VL_CheckMouseClickCallbacks,    VL_CheckCursorStatusCallbacks,
        VL_CheckMouseWheelCallbacks,    VL_CheckDrawWindowMemoryPointerList,
        VL_CheckDrawCallbacks,          VL_CheckMenuCallbacks,
        VL_CheckPlanesAvailableCallbacks, VL_CheckFeatureEnumeratorCallbacks,
        VL_CheckFlightLoopCallbacks,    VL_CheckLibraryEnumeratorCallbacks,
        VL_CheckObjectLoadedCallbacks,  VL_CheckCommandCallbacks,
        VL_CheckErrorCallbacks,         VL_CheckWidgetCallbacks,
    };
    VL_WriteToLog("\n*** Checking Integrity of Callbacks Started. ***\n");
    for (auto check : checks) check();
    VL_WriteToLog("*** Checking Integrity of Callbacks Finished. ***\n\n");
}

}  // namespace vorlith
