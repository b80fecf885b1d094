// The callback lists and their operations: records, holder cells, blocks of cells, the
// interpreter generation that retires records over a restart, and the VL_ScriptTable
// methods that bindings use to add, find, update and delete registrations.

#include "callbacks/Registry.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <unordered_set>

namespace vorlith {

VL_CallbackListType CameraCallbackList;
VL_CallbackListType SharedDataCallbackList;
VL_CallbackListType GetDataiCallbackList;
VL_CallbackListType SetDataiCallbackList;
VL_CallbackListType GetDatafCallbackList;
VL_CallbackListType SetDatafCallbackList;
VL_CallbackListType GetDatadCallbackList;
VL_CallbackListType SetDatadCallbackList;
VL_CallbackListType GetDataviCallbackList;
VL_CallbackListType SetDataviCallbackList;
VL_CallbackListType GetDatavfCallbackList;
VL_CallbackListType SetDatavfCallbackList;
VL_CallbackListType GetDatabCallbackList;
VL_CallbackListType SetDatabCallbackList;
VL_CallbackBlockList GetDataMemoryPointerList;
VL_CallbackBlockList SetDataMemoryPointerList;
VL_CallbackListType DrawCallbackList;
VL_CallbackListType KeySnifferCallbackList;
VL_CallbackListType HotKeyCallbackList;
VL_CallbackListType DrawWindowCallbackList;
VL_CallbackListType KeyCallbackList;
VL_CallbackListType MouseClickCallbackList;
VL_CallbackListType CursorStatusCallbackList;
VL_CallbackListType MouseWheelCallbackList;
VL_CallbackBlockList DrawWindowMemoryPointerList;
VL_CallbackListType MenuCallbackList;
VL_CallbackListType FlightLoopCallbackList;
VL_CallbackListType ErrorCallbackList;
VL_CallbackListType CommandCallbackList;
VL_CallbackListType PlanesAvailableCallbackList;
VL_CallbackListType FeatureEnumeratorCallbackList;
VL_CallbackListType ObjectLoadedCallbackList;
VL_CallbackListType LibraryEnumeratorCallbackList;
VL_WidgetCallbackListType WidgetCallbackList;

namespace {

unsigned gGeneration = 0;

// Cells come from fixed chunks that are never given back while the plug-in is loaded,
// so a reference value can be recognised as ours by address alone, cheaply enough for
// every dispatch, and a cell the SDK still holds never points at reused memory.
class CellArena {
public:
    _CallbackList* make() {
        if (chunks_.empty() || used_ == kChunk) {
            chunks_.emplace_back(new _CallbackList[kChunk]);
            used_ = 0;
        }
        _CallbackList* cell = &chunks_.back()[used_++];
        cell->record = nullptr;
        return cell;
    }
    bool owns(const void* pointer) const {
        auto address = reinterpret_cast<std::uintptr_t>(pointer);
        for (const auto& chunk : chunks_) {
            auto begin = reinterpret_cast<std::uintptr_t>(chunk.get());
            if (address >= begin && address < begin + kChunk * sizeof(_CallbackList))
                return (address - begin) % sizeof(_CallbackList) == 0;
        }
        return false;
    }

private:
    static constexpr std::size_t kChunk = 1024;
    std::vector<std::unique_ptr<_CallbackList[]>> chunks_;
    std::size_t used_ = 0;
};

CellArena gCells;
std::unordered_set<const void*> gBlocks;

bool IsCurrent(unsigned generation) { return generation == gGeneration; }

// Python objects may only be released while their own interpreter runs.
void ReleaseObjects(unsigned generation, PyObject* a, PyObject* b) {
    if (!IsCurrent(generation) || !Py_IsInitialized()) return;
    Py_XDECREF(a);
    Py_XDECREF(b);
}

template <typename Match>
_CallbackList* FindCell(VL_CallbackListType& list, int& found, int& position, Match match) {
    found = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const _CallbackListEntry* record = list[i]->record;
        if (record && IsCurrent(record->generation) && match(*record)) {
            found = 1;
            position = static_cast<int>(i);
            return list[i];
        }
    }
    return nullptr;
}

template <typename Match>
_WidgetCallbackListEntry* FindWidget(VL_WidgetCallbackListType& list, int& found, int& position,
                                     Match match) {
    found = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        _WidgetCallbackListEntry* record = list[i];
        if (IsCurrent(record->generation) && match(*record)) {
            found = 1;
            position = static_cast<int>(i);
            return record;
        }
    }
    return nullptr;
}

// The element at `position` when it is `item`, else wherever `item` is; -1 when absent.
template <typename List, typename Item>
int PositionOf(const List& list, Item item, int position) {
    if (position >= 0 && static_cast<std::size_t>(position) < list.size() && list[position] == item)
        return position;
    auto it = std::find(list.begin(), list.end(), item);
    return it == list.end() ? -1 : static_cast<int>(it - list.begin());
}

}  // namespace

void VL_StartCallbackGeneration() { ++gGeneration; }
unsigned VL_CallbackGeneration() { return gGeneration; }

bool VL_IsOwnCell(const void* pointer) { return pointer && gCells.owns(pointer); }
bool VL_IsOwnBlock(const void* pointer) { return pointer && gBlocks.count(pointer) != 0; }

_CallbackListEntry* VL_RecordFromCell(void* refcon) {
    if (!VL_IsOwnCell(refcon)) return nullptr;
    return static_cast<_CallbackList*>(refcon)->record;
}

_CallbackListEntry* VL_RecordFromBlock(void* refcon, int slot) {
    if (slot < 0 || slot >= VL_BlockSlots || !VL_IsOwnBlock(refcon)) return nullptr;
    _CallbackList* cell = static_cast<VL_CallbackBlock*>(refcon)->cells[slot];
    return cell ? cell->record : nullptr;
}

bool VL_IsScriptActive(PyObject* scriptId, unsigned generation) {
    return scriptId && IsCurrent(generation) && Py_IsInitialized() && VLTestTable &&
           VLTestTable->GetScriptEnabledStatus(scriptId);
}

VL_CallbackBlock* VL_AddCallbackBlock(VL_CallbackBlockList& list) {
    auto* block = new VL_CallbackBlock{nullptr, gGeneration, {}};
    gBlocks.insert(block);
    list.push_back(block);
    return block;
}

int VL_FindCallbackBlock(const VL_CallbackBlockList& list, void* handle) {
    if (!handle) return -1;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i]->handle == handle && IsCurrent(list[i]->generation)) return static_cast<int>(i);
    return -1;
}

void VL_DeleteCallbackBlock(VL_CallbackBlockList& list, int position) {
    if (position < 0 || static_cast<std::size_t>(position) >= list.size()) return;
    VL_CallbackBlock* block = list[position];
    list.erase(list.begin() + position);
    gBlocks.erase(block);
    delete block;
}

// --- VL_ScriptTable: callback list operations ---

_CallbackList* VL_ScriptTable::AddCallback(VL_CallbackListType& list, PyObject* scriptId,
                                           void* handle, PyObject* callable, void* refcon) {
    Py_XINCREF(scriptId);
    Py_XINCREF(callable);
    _CallbackList* cell = gCells.make();
    cell->record = new _CallbackListEntry{scriptId, handle, callable, refcon, gGeneration};
    list.push_back(cell);
    return cell;
}

_CallbackList* VL_ScriptTable::FindCallback(VL_CallbackListType& list, PyObject* scriptId,
                                            PyObject* callable, void* refcon, int& found,
                                            int& position) {
    return FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.scriptId == scriptId && r.callable == callable && r.refcon == refcon;
    });
}

_CallbackList* VL_ScriptTable::FindCallback(VL_CallbackListType& list, PyObject* scriptId,
                                            void* handle, int& found, int& position) {
    return FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.scriptId == scriptId && r.handle == handle;
    });
}

_CallbackList* VL_ScriptTable::FindCallback(VL_CallbackListType& list, PyObject* callable,
                                            void* refcon, int& found, int& position, int) {
    return FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.callable == callable && r.refcon == refcon;
    });
}

void VL_ScriptTable::UpdateCallback(VL_CallbackListType& list, PyObject* scriptId,
                                    PyObject* callable, void* handle) {
    int found = 0, position = 0;
    _CallbackList* cell = FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.scriptId == scriptId && r.callable == callable;
    });
    if (cell) cell->record->handle = handle;
}

void VL_ScriptTable::DeleteCallback(VL_CallbackListType& list, _CallbackList* holder,
                                    int position) {
    position = PositionOf(list, holder, position);
    if (position < 0) return;
    list.erase(list.begin() + position);
    _CallbackListEntry* record = holder->record;
    holder->record = nullptr;  // the SDK may still hold the cell; it now leads nowhere
    if (!record) return;
    // Released last: a destructor in Python may come back into the lists.
    ReleaseObjects(record->generation, record->scriptId, record->callable);
    delete record;
}

_WidgetCallbackListEntry* VL_ScriptTable::AddWidgetCallback(VL_WidgetCallbackListType& list,
                                                            PyObject* scriptId, void* widget,
                                                            PyObject* callable, int isRoot,
                                                            void* container) {
    Py_XINCREF(scriptId);
    Py_XINCREF(callable);
    auto* record = new _WidgetCallbackListEntry{scriptId, widget, callable, isRoot, container,
                                                gGeneration};
    list.push_back(record);
    return record;
}

_WidgetCallbackListEntry* VL_ScriptTable::FindWidgetCallback(VL_WidgetCallbackListType& list,
                                                             PyObject* scriptId, void* widget,
                                                             int& found, int& position) {
    return FindWidget(list, found, position, [&](const _WidgetCallbackListEntry& r) {
        return r.scriptId == scriptId && r.widget == widget;
    });
}

_WidgetCallbackListEntry* VL_ScriptTable::FindWidgetCallback(VL_WidgetCallbackListType& list,
                                                             void* widget, int& found,
                                                             int& position) {
    return FindWidget(list, found, position,
                      [&](const _WidgetCallbackListEntry& r) { return r.widget == widget; });
}

void VL_ScriptTable::UpdateWidgetCallback(VL_WidgetCallbackListType& list, PyObject* scriptId,
                                          void* widget, PyObject* callable) {
    int found = 0, position = 0;
    _WidgetCallbackListEntry* record = FindWidgetCallback(list, widget, found, position);
    if (!record) return;
    Py_XINCREF(scriptId);
    Py_XINCREF(callable);
    PyObject* oldScript = record->scriptId;
    PyObject* oldCallable = record->callable;
    record->scriptId = scriptId;
    record->callable = callable;
    ReleaseObjects(record->generation, oldScript, oldCallable);
}

void VL_ScriptTable::DeleteWidgetCallback(VL_WidgetCallbackListType& list,
                                          _WidgetCallbackListEntry* record, int position) {
    position = PositionOf(list, record, position);
    if (position < 0) return;
    list.erase(list.begin() + position);
    ReleaseObjects(record->generation, record->scriptId, record->callable);
    delete record;
}

// Widget records are found by widget, never through a pointer the SDK keeps, so the
// children's records can be freed at once.
void VL_ScriptTable::DeleteWidgetChildCallbacks(VL_WidgetCallbackListType& list, PyObject*,
                                                void* widget) {
    std::vector<_WidgetCallbackListEntry*> children;
    auto isChild = [&](_WidgetCallbackListEntry* r) { return r->container == widget; };
    std::copy_if(list.begin(), list.end(), std::back_inserter(children), isChild);
    list.erase(std::remove_if(list.begin(), list.end(), isChild), list.end());
    for (_WidgetCallbackListEntry* record : children) {
        ReleaseObjects(record->generation, record->scriptId, record->callable);
        delete record;
    }
}

}  // namespace vorlith
