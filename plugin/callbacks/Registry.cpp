// The callback lists and their operations: records, holder cells, blocks of cells, the
// interpreter generation that retires records over a restart, and the VL_ScriptTable
// methods that bindings use to add, find, update and delete registrations.

#include "callbacks/Registry.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <initializer_list>
#include <iterator>
#include <new>

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

namespace detail {
unsigned gCallbackGeneration = 0;
std::uintptr_t gCellsBegin = 0, gCellsEnd = 0;
}

namespace {

// Every list, for the stop of an interpreter.
VL_CallbackListType* const kCallbackLists[] = {
    &CameraCallbackList,      &SharedDataCallbackList,    &GetDataiCallbackList,
    &SetDataiCallbackList,    &GetDatafCallbackList,      &SetDatafCallbackList,
    &GetDatadCallbackList,    &SetDatadCallbackList,      &GetDataviCallbackList,
    &SetDataviCallbackList,   &GetDatavfCallbackList,     &SetDatavfCallbackList,
    &GetDatabCallbackList,    &SetDatabCallbackList,      &DrawCallbackList,
    &KeySnifferCallbackList,  &HotKeyCallbackList,        &DrawWindowCallbackList,
    &KeyCallbackList,         &MouseClickCallbackList,    &CursorStatusCallbackList,
    &MouseWheelCallbackList,  &MenuCallbackList,          &FlightLoopCallbackList,
    &ErrorCallbackList,       &CommandCallbackList,       &PlanesAvailableCallbackList,
    &FeatureEnumeratorCallbackList, &ObjectLoadedCallbackList, &LibraryEnumeratorCallbackList,
};
VL_CallbackBlockList* const kBlockLists[] = {
    &GetDataMemoryPointerList, &SetDataMemoryPointerList, &DrawWindowMemoryPointerList,
};

bool IsCurrent(unsigned generation) { return generation == detail::gCallbackGeneration; }

// Cells and blocks come from one fixed reservation each, whose pages the system provides
// only as they are touched, so that a reference value is recognised as ours by address
// alone in constant time. A slot given back after its SDK registration was removed is
// reused, oldest first and only after many others were given back, so that a call the
// SDK already had under way for the old registration cannot reach the new one. One the
// SDK may still hold is never reused.
template <typename T, std::size_t Capacity>
class SlotArena {
public:
    SlotArena() : slots_(static_cast<T*>(std::calloc(Capacity, sizeof(T)))) {}
    ~SlotArena() { std::free(slots_); }
    SlotArena(const SlotArena&) = delete;
    SlotArena& operator=(const SlotArena&) = delete;

    T* make() {
        T* slot = nullptr;
        if (free_.size() > kQuarantine) {
            slot = free_.front();
            free_.pop_front();
        } else if (slots_ && used_ < Capacity) {
            slot = &slots_[used_++];
        } else {
            throw std::bad_alloc();  // the binding reports it; nothing is registered
        }
        *slot = T{};
        return slot;
    }
    void reuse(T* slot) { free_.push_back(slot); }
    std::uintptr_t begin() const { return reinterpret_cast<std::uintptr_t>(slots_); }
    std::uintptr_t end() const { return begin() + used_ * sizeof(T); }
    bool owns(const void* pointer) const {
        auto address = reinterpret_cast<std::uintptr_t>(pointer);
        auto begin = reinterpret_cast<std::uintptr_t>(slots_);
        return address >= begin && address < begin + used_ * sizeof(T) &&
               (address - begin) % sizeof(T) == 0;
    }

private:
    static constexpr std::size_t kQuarantine = 256;
    T* slots_;
    std::size_t used_ = 0;
    std::deque<T*> free_;
};

// 32 MiB of addresses each, of which only what registrations use becomes memory.
SlotArena<_CallbackList, (std::size_t{32} << 20) / sizeof(_CallbackList)> gCells;
SlotArena<VL_CallbackBlock, (std::size_t{32} << 20) / sizeof(VL_CallbackBlock)> gBlocks;
// Blocks are also told apart from freed ones: a freed block's generation is 0.
constexpr unsigned kFreedBlock = 0;

// Python objects may only be released while their own interpreter runs.
void ReleaseObjects(unsigned generation, std::initializer_list<PyObject*> objects) {
    if (!IsCurrent(generation) || !Py_IsInitialized()) return;
    for (PyObject* object : objects) Py_XDECREF(object);
}

// Frees a record and leaves its cell leading nowhere; the cell serves again only when
// the SDK no longer knows it.
void FreeRecord(_CallbackList* cell, bool sdkReleasedCell) {
    _CallbackListEntry* record = cell->record;
    cell->record = nullptr;
    if (sdkReleasedCell) gCells.reuse(cell);
    if (!record) return;
    // Released last: a destructor in Python may come back into the lists.
    ReleaseObjects(record->generation, {record->scriptId, record->callable, record->refconObject});
    delete record;
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

void VL_StartCallbackGeneration() { ++detail::gCallbackGeneration; }

bool VL_IsOwnCell(const void* pointer) { return gCells.owns(pointer); }
bool VL_IsOwnBlock(const void* pointer) {
    return gBlocks.owns(pointer) &&
           static_cast<const VL_CallbackBlock*>(pointer)->generation != kFreedBlock;
}

_CallbackListEntry* VL_RecordFromBlock(void* refcon, int slot) {
    if (slot < 0 || slot >= VL_BlockSlots || !VL_IsOwnBlock(refcon)) return nullptr;
    _CallbackList* cell = static_cast<VL_CallbackBlock*>(refcon)->cells[slot];
    return cell ? cell->record : nullptr;
}

bool VL_IsScriptActive(PyObject* scriptId, unsigned generation) {
    return scriptId && IsCurrent(generation) && VLTestTable &&
           VLTestTable->GetScriptEnabledStatus(scriptId);
}

VL_CallbackBlock* VL_AddCallbackBlock(VL_CallbackBlockList& list) {
    VL_CallbackBlock* block = gBlocks.make();
    block->generation = detail::gCallbackGeneration;
    list.push_back(block);
    return block;
}

int VL_FindCallbackBlock(const VL_CallbackBlockList& list, void* handle) {
    if (!handle) return -1;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i]->handle == handle && IsCurrent(list[i]->generation)) return static_cast<int>(i);
    return -1;
}

// Called once the SDK registration that held the block is gone, so it may serve again.
void VL_DeleteCallbackBlock(VL_CallbackBlockList& list, int position) {
    if (position < 0 || static_cast<std::size_t>(position) >= list.size()) return;
    VL_CallbackBlock* block = list[position];
    list.erase(list.begin() + position);
    *block = VL_CallbackBlock{};
    block->generation = kFreedBlock;
    gBlocks.reuse(block);
}

void VL_RetireCallbacks() {
    std::vector<PyObject*> objects;
    for (VL_CallbackListType* list : kCallbackLists) {
        for (_CallbackList* cell : *list) {
            _CallbackListEntry* record = cell->record;
            if (!record || !IsCurrent(record->generation)) continue;
            objects.insert(objects.end(), {record->scriptId, record->callable, record->refconObject});
        }
    }
    for (_WidgetCallbackListEntry* record : WidgetCallbackList)
        if (IsCurrent(record->generation)) objects.insert(objects.end(), {record->scriptId, record->callable});
    // From here the records are of an earlier interpreter: their objects are not theirs.
    ++detail::gCallbackGeneration;
    if (!Py_IsInitialized()) return;
    for (PyObject* object : objects) Py_XDECREF(object);
}

// The SDK may still hold the cells of records left at a stop: they are never reused.
void VL_ReleaseCallbackList(VL_CallbackListType& list) {
    for (_CallbackList* cell : list) FreeRecord(cell, false);
    list.clear();
}

void VL_ReleaseCallbacks() {
    for (VL_CallbackListType* list : kCallbackLists) VL_ReleaseCallbackList(*list);
    // Blocks left registered keep their memory, empty: their cells were just emptied.
    for (VL_CallbackBlockList* list : kBlockLists) list->clear();
    for (_WidgetCallbackListEntry* record : WidgetCallbackList) delete record;
    WidgetCallbackList.clear();
}

// --- VL_ScriptTable: callback list operations ---

_CallbackList* VL_ScriptTable::AddCallback(VL_CallbackListType& list, PyObject* scriptId,
                                           void* handle, PyObject* callable, void* refcon,
                                           VL_FoundBy foundBy) {
    _CallbackList* cell = gCells.make();
    detail::gCellsBegin = gCells.begin();
    detail::gCellsEnd = gCells.end();
    PyObject* refconObject =
        VL_IntFromLong(static_cast<long>(reinterpret_cast<std::intptr_t>(refcon)));
    if (!refconObject) {
        gCells.reuse(cell);  // never handed to the SDK
        throw std::bad_alloc();
    }
    Py_XINCREF(scriptId);
    Py_XINCREF(callable);
    cell->record = new _CallbackListEntry{scriptId, handle, callable, refcon,
                                          detail::gCallbackGeneration, foundBy, refconObject,
                                          StatusOf(scriptId)};
    list.push_back(cell);
    return cell;
}

_CallbackList* VL_ScriptTable::FindCallback(VL_CallbackListType& list, PyObject* scriptId,
                                            PyObject* callable, void* refcon, int& found,
                                            int& position) {
    return FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.foundBy != VL_FoundBy::Handle && r.scriptId == scriptId && r.callable == callable &&
               r.refcon == refcon;
    });
}

_CallbackList* VL_ScriptTable::FindCallback(VL_CallbackListType& list, PyObject* scriptId,
                                            void* handle, int& found, int& position) {
    return FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.foundBy != VL_FoundBy::Callable && r.scriptId == scriptId && r.handle == handle;
    });
}

_CallbackList* VL_ScriptTable::FindCallback(VL_CallbackListType& list, PyObject* callable,
                                            void* refcon, int& found, int& position, int) {
    return FindCell(list, found, position, [&](const _CallbackListEntry& r) {
        return r.foundBy != VL_FoundBy::Handle && r.callable == callable && r.refcon == refcon;
    });
}

void VL_ScriptTable::UpdateCallback(VL_CallbackListType&, _CallbackList* holder, void* handle) {
    if (!holder || !holder->record) return;
    holder->record->handle = handle;
    holder->record->foundBy = VL_FoundBy::Handle;
}

void VL_ScriptTable::UpdateCallback(VL_CallbackListType& list, PyObject* scriptId,
                                    PyObject* callable, void* handle) {
    for (auto it = list.rbegin(); it != list.rend(); ++it) {
        const _CallbackListEntry* r = (*it)->record;
        if (r && IsCurrent(r->generation) && r->scriptId == scriptId && r->callable == callable)
            return UpdateCallback(list, *it, handle);
    }
}

void VL_ScriptTable::DeleteCallback(VL_CallbackListType& list, _CallbackList* holder,
                                    int position) {
    position = PositionOf(list, holder, position);
    if (position < 0) return;
    list.erase(list.begin() + position);
    // The binding removed the SDK registration first: the cell may serve another.
    FreeRecord(holder, true);
}

_WidgetCallbackListEntry* VL_ScriptTable::AddWidgetCallback(VL_WidgetCallbackListType& list,
                                                            PyObject* scriptId, void* widget,
                                                            PyObject* callable, int isRoot,
                                                            void* container) {
    Py_XINCREF(scriptId);
    Py_XINCREF(callable);
    auto* record = new _WidgetCallbackListEntry{scriptId, widget, callable, isRoot, container,
                                                detail::gCallbackGeneration};
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
    ReleaseObjects(record->generation, {oldScript, oldCallable});
}

void VL_ScriptTable::DeleteWidgetCallback(VL_WidgetCallbackListType& list,
                                          _WidgetCallbackListEntry* record, int position) {
    position = PositionOf(list, record, position);
    if (position < 0) return;
    list.erase(list.begin() + position);
    ReleaseObjects(record->generation, {record->scriptId, record->callable});
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
        ReleaseObjects(record->generation, {record->scriptId, record->callable});
        delete record;
    }
}

}  // namespace vorlith
