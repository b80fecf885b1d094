// The module XPLMDataAccess: finding, reading and writing datarefs, datarefs a script
// publishes through Python accessors (a record per accessor in twelve lists, and a read
// and a write block of cells for the SDK), and data shared between plug-ins.

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "XPLMDataAccess.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMDataAccess";
constexpr int kByteWriteBuffer = 4096;
// No dataref holds a million values; a script's count or an accessor's size beyond them
// is a mistake that must not cost gigabytes or minutes. Reads are cut there, like at the
// dataref's size; a write of more raises ValueError.
constexpr int kMaxArrayValues = 1 << 20;

// --- single values ---

PyObject* PY_XPLMFindDataRef(VL_Args args) {
    VL_Text name;
    bool parsed = args.count == 1 ? name.set(args.items[0])
                                  : VL_ParseArgs(args, "O&", VL_ParseText, &name);
    if (!parsed) return nullptr;
    XPLMDataRef ref = nullptr;
    VL_GuardedCall(kModule, "XPLMFindDataRef", [&] { ref = XPLMFindDataRef(name.c_str()); });
    if (ref) return VL_HandleObject(ref);
    char text[1024];
    std::snprintf(text, sizeof text, "DataRef [%s] not found, check that DataRef string is correct",
                  name.c_str());
    PrintException(kModule, "XPLMFindDataRef", text);
    Py_RETURN_NONE;
}

// The bindings of one dataref argument ("O") and an SDK function answering a number:
// the ones scripts call every frame.
template <typename Result, typename Make>
PyObject* QueryDataRef(VL_Args args, const char* function, Result (*query)(XPLMDataRef),
                       Make make) {
    PyObject* refObject;
    if (!VL_ParseObject(args, &refObject)) return nullptr;
    XPLMDataRef ref = VL_HandleFromObject(refObject);
    return VL_Guarded(kModule, function, [&] { return make(query(ref)); });
}

PyObject* IntObject(int value) { return VL_IntFromLong(value); }
PyObject* FloatObject(double value) { return PyFloat_FromDouble(value); }

PyObject* PY_XPLMCanWriteDataRef(VL_Args args) {
    return QueryDataRef(args, "XPLMCanWriteDataRef", XPLMCanWriteDataRef, IntObject);
}
PyObject* PY_XPLMGetDataRefTypes(VL_Args args) {
    return QueryDataRef(args, "XPLMGetDataRefTypes", XPLMGetDataRefTypes, IntObject);
}
PyObject* PY_XPLMGetDatai(VL_Args args) {
    return QueryDataRef(args, "XPLMGetDatai", XPLMGetDatai, IntObject);
}
PyObject* PY_XPLMGetDataf(VL_Args args) {
    return QueryDataRef(args, "XPLMGetDataf", XPLMGetDataf, FloatObject);
}
PyObject* PY_XPLMGetDatad(VL_Args args) {
    return QueryDataRef(args, "XPLMGetDatad", XPLMGetDatad, FloatObject);
}

// The bindings of a dataref and one value ("Oi", "Of" or "Od") given to an SDK setter.
template <typename T>
PyObject* WriteDataRef(VL_Args args, const char* function, void (*set)(XPLMDataRef, T)) {
    PyObject* refObject;
    T value;
    if (!VL_ParseObjectAndNumber(args, &refObject, &value)) return nullptr;
    XPLMDataRef ref = VL_HandleFromObject(refObject);
    return VL_Guarded(kModule, function, [&] {
        set(ref, value);
        return VL_Done();
    });
}

PyObject* PY_XPLMSetDatai(VL_Args args) {
    return WriteDataRef<int>(args, "XPLMSetDatai", XPLMSetDatai);
}
PyObject* PY_XPLMSetDataf(VL_Args args) {
    return WriteDataRef<float>(args, "XPLMSetDataf", XPLMSetDataf);
}
PyObject* PY_XPLMSetDatad(VL_Args args) {
    return WriteDataRef<double>(args, "XPLMSetDatad", XPLMSetDatad);
}

// --- arrays ---

// An array read appends what it read to the script's list; with None it only answers
// the dataref's size. The buffer has room for `max` elements (bounded by the dataref's
// size) and a zero; it is not filled in advance, so a huge size costs nothing until the
// SDK writes, and a buffer that cannot be had is a MemoryError in the script.
template <typename T, typename Append>
PyObject* ReadArray(PyObject* args, const char* function, int (*get)(XPLMDataRef, T*, int, int),
                    Append append) {
    PyObject *refObject, *list;
    int offset, max;
    if (!PyArg_ParseTuple(args, "OOii", &refObject, &list, &offset, &max)) return nullptr;
    if (!VL_CheckOutLists({list})) return nullptr;
    XPLMDataRef ref = VL_HandleFromObject(refObject);
    int size = 0;
    if (!VL_GuardedCall(kModule, function, [&] { size = get(ref, nullptr, offset, max); }))
        return VL_IntFromLong(0);
    if (list == Py_None) return VL_IntFromLong(size);
    max = std::max(0, std::min({max, size, kMaxArrayValues}));
    std::unique_ptr<T[]> buffer(new (std::nothrow) T[static_cast<std::size_t>(max) + 1]);
    if (!buffer) return PyErr_NoMemory();
    return VL_Guarded(kModule, function, [&]() -> PyObject* {
        int count = std::max(0, std::min(max, get(ref, buffer.get(), offset, max)));
        if (!append(list, buffer.get(), count, max)) return nullptr;
        return VL_IntFromLong(count);
    });
}

template <typename T>
bool AppendNumbers(PyObject* list, T* values, int count, int) {
    for (int i = 0; i < count; ++i) {
        PyObject* item = std::is_same_v<T, float> ? PyFloat_FromDouble(values[i])
                                                  : VL_IntFromLong(static_cast<long>(values[i]));
        int status = item ? PyList_Append(list, item) : -1;
        Py_XDECREF(item);
        if (status != 0) return false;
    }
    return true;
}

// Bytes come back as one text, up to the first zero byte. The bytes past what the SDK
// wrote were never filled: the text ends at `count` at the latest.
bool AppendText(PyObject* list, char* bytes, int count, int) {
    bytes[count] = 0;
    PyObject* text = VL_TextFromStringAndSize(bytes, static_cast<Py_ssize_t>(std::strlen(bytes)));
    int status = text ? PyList_Append(list, text) : -1;
    Py_XDECREF(text);
    return status == 0;
}

PyObject* PY_XPLMGetDatavi(PyObject*, PyObject* args) {
    return ReadArray(args, "XPLMGetDatavi", XPLMGetDatavi, AppendNumbers<int>);
}
PyObject* PY_XPLMGetDatavf(PyObject*, PyObject* args) {
    return ReadArray(args, "XPLMGetDatavf", XPLMGetDatavf, AppendNumbers<float>);
}
PyObject* PY_XPLMGetDatab(PyObject*, PyObject* args) {
    auto get = [](XPLMDataRef ref, char* values, int offset, int max) {
        return XPLMGetDatab(ref, values, offset, max);
    };
    return ReadArray<char>(args, "XPLMGetDatab", +get, AppendText);
}

// The first `count` elements of the sequence converted by `convert` (false with a
// TypeError set for an element of the wrong type); false when it is no sequence at all.
// Each element is fetched anew, as many as the sequence really has, whatever its __len__
// claims (a sequence shorter than it says is an IndexError): nothing is allocated ahead
// of the elements, and a conversion that changes the sequence cannot make us read past
// it. Lists and tuples have every element checked, as the SDK's own buffers would be.
template <typename T, typename Convert>
bool SequenceValues(PyObject* sequence, int count, std::vector<T>& values, Convert convert) {
    if (!PySequence_Check(sequence)) {
        PyErr_SetString(PyExc_TypeError, "expected sequence");
        return false;
    }
    Py_ssize_t length = PySequence_Size(sequence);
    if (length < 0) return false;
    Py_ssize_t wanted = std::clamp<Py_ssize_t>(count, 0, length);
    if (wanted > kMaxArrayValues) {
        PyErr_Format(PyExc_ValueError, "count %d is more than the %d values a write takes", count,
                     kMaxArrayValues);
        return false;
    }
    bool checkAll = PyList_Check(sequence) || PyTuple_Check(sequence);
    values.reserve(static_cast<std::size_t>(std::min<Py_ssize_t>(wanted, 4096)));
    for (Py_ssize_t i = 0; i < wanted || (checkAll && i < PySequence_Size(sequence)); ++i) {
        PyObject* item = PySequence_GetItem(sequence, i);
        T value{};
        bool converted = item && convert(item, value);
        Py_XDECREF(item);
        if (!converted) return false;
        if (i < wanted) values.push_back(value);
    }
    return true;
}

bool IntValue(PyObject* item, int& value) {
    if (!VL_IntCheck(item)) {
        PyErr_SetString(PyExc_TypeError, "expected sequence of integers");
        return false;
    }
    long number = PyLong_AsLong(item);
    if (number == -1 && PyErr_Occurred()) return false;
    if (number < INT_MIN || number > INT_MAX) {
        PyErr_SetString(PyExc_OverflowError, "Python int too large to convert to C int");
        return false;
    }
    value = static_cast<int>(number);
    return true;
}

bool FloatValue(PyObject* item, float& value) {
    if (!PyFloat_Check(item)) {
        PyErr_SetString(PyExc_TypeError, "expected sequence of floats");
        return false;
    }
    value = static_cast<float>(PyFloat_AS_DOUBLE(item));
    return true;
}

// The SDK gets `count` values, never more than the script gave, nor more than a million.
template <typename T>
PyObject* WriteArray(PyObject* args, const char* function, void (*set)(XPLMDataRef, T*, int, int),
                     bool (*convert)(PyObject*, T&)) {
    PyObject *refObject, *sequence;
    int offset, count;
    if (!PyArg_ParseTuple(args, "OOii", &refObject, &sequence, &offset, &count)) return nullptr;
    std::vector<T> values;
    if (!SequenceValues(sequence, count, values, convert)) return nullptr;
    count = static_cast<int>(values.size());
    XPLMDataRef ref = VL_HandleFromObject(refObject);
    return VL_Guarded(kModule, function, [&] {
        set(ref, values.data(), offset, count);
        return VL_Done();
    });
}

PyObject* PY_XPLMSetDatavi(PyObject*, PyObject* args) {
    return WriteArray<int>(args, "XPLMSetDatavi", XPLMSetDatavi, IntValue);
}
PyObject* PY_XPLMSetDatavf(PyObject*, PyObject* args) {
    return WriteArray<float>(args, "XPLMSetDatavf", XPLMSetDatavf, FloatValue);
}

// Bytes to write: a sequence holding one text (cut at `count` bytes, a zero after it
// when shorter), or a sequence of numbers of which each gives its low 8 bits (anything
// else gives 0). At most 4096 bytes go to the SDK.
PyObject* PY_XPLMSetDatab(PyObject*, PyObject* args) {
    PyObject *refObject, *sequence;
    int offset, count;
    if (!PyArg_ParseTuple(args, "OOii", &refObject, &sequence, &offset, &count)) return nullptr;
    if (!PySequence_Check(sequence)) {
        PyErr_SetString(PyExc_TypeError, "expected sequence");
        return nullptr;
    }
    // At most the 4096 bytes that reach the SDK are fetched, each anew, whatever the
    // sequence's __len__ claims: converting one may run Python code that changes it.
    Py_ssize_t length = PySequence_Size(sequence);
    if (length < 0) return nullptr;
    if (length == 0) {
        PyErr_SetString(PyExc_TypeError, "expected sequence of bytes");
        return nullptr;
    }
    std::array<char, kByteWriteBuffer> work{};
    count = std::clamp(count, 0, kByteWriteBuffer);
    Py_ssize_t n = std::min<Py_ssize_t>(length, kByteWriteBuffer);
    for (Py_ssize_t i = 0; i < n; ++i) {
        PyObject* item = PySequence_GetItem(sequence, i);
        if (!item) return nullptr;
        if (i == 0 && length == 1 && VL_TextCheck(item)) {
            VL_Text text;
            bool ok = text.set(item);
            Py_DECREF(item);
            if (!ok) return nullptr;
            std::memcpy(work.data(), text.c_str(), std::min<std::size_t>(text.size(), count));
            break;
        }
        long byte = VL_IntCheck(item) ? PyLong_AsLong(item) : 0;
        Py_DECREF(item);
        if (byte == -1 && PyErr_Occurred()) {
            PyErr_Clear();
            byte = 0;
        }
        work[i] = static_cast<char>(byte & 0xFF);
    }
    XPLMDataRef ref = VL_HandleFromObject(refObject);
    return VL_Guarded(kModule, "XPLMSetDatab", [&] {
        XPLMSetDatab(ref, work.data(), offset, count);
        return VL_Done();
    });
}

// --- data accessors ---

// The twelve accessors in the SDK's order, each with its list and its slot in the read
// or the write block.
struct Accessor {
    VL_CallbackListType* list;
    const char* listName;
    bool reads;
    int slot;
};
const Accessor kAccessors[] = {
    {&GetDataiCallbackList, "GetDataiCallbackList", true, VL_IntSlot},
    {&SetDataiCallbackList, "SetDataiCallbackList", false, VL_IntSlot},
    {&GetDatafCallbackList, "GetDatafCallbackList", true, VL_FloatSlot},
    {&SetDatafCallbackList, "SetDatafCallbackList", false, VL_FloatSlot},
    {&GetDatadCallbackList, "GetDatadCallbackList", true, VL_DoubleSlot},
    {&SetDatadCallbackList, "SetDatadCallbackList", false, VL_DoubleSlot},
    {&GetDataviCallbackList, "GetDataviCallbackList", true, VL_IntArraySlot},
    {&SetDataviCallbackList, "SetDataviCallbackList", false, VL_IntArraySlot},
    {&GetDatavfCallbackList, "GetDatavfCallbackList", true, VL_FloatArraySlot},
    {&SetDatavfCallbackList, "SetDatavfCallbackList", false, VL_FloatArraySlot},
    {&GetDatabCallbackList, "GetDatabCallbackList", true, VL_ByteArraySlot},
    {&SetDatabCallbackList, "SetDatabCallbackList", false, VL_ByteArraySlot},
};
constexpr int kAccessorCount = sizeof kAccessors / sizeof kAccessors[0];

void TraceListSizes(VL_Trace& trace) {
    for (const Accessor& accessor : kAccessors) trace.size(accessor.listName, *accessor.list);
}

PyObject* PY_XPLMRegisterDataAccessor(PyObject*, PyObject* args) {
    PyObject* self;
    VL_Text name;
    int type, writable;
    PyObject* callables[kAccessorCount];
    PyObject *readRefconObject, *writeRefconObject;
    if (!PyArg_ParseTuple(args, "OO&iiOOOOOOOOOOOOOO", &self, VL_ParseText, &name, &type, &writable,
                          &callables[0], &callables[1], &callables[2], &callables[3], &callables[4],
                          &callables[5], &callables[6], &callables[7], &callables[8], &callables[9],
                          &callables[10], &callables[11], &readRefconObject, &writeRefconObject))
        return nullptr;
    void* readRefcon = VL_RefconFromObject(readRefconObject);
    void* writeRefcon = VL_RefconFromObject(writeRefconObject);
    return VL_Guarded(kModule, "XPLMRegisterDataAccessor", [&] {
        VL_ScriptTable& table = VL_Table();
        // Only bound methods are accessors; None, 0 or a plain function leave the slot empty.
        _CallbackList* cells[kAccessorCount] = {};
        VL_CallbackBlock* read = VL_AddCallbackBlock(GetDataMemoryPointerList);
        VL_CallbackBlock* write = VL_AddCallbackBlock(SetDataMemoryPointerList);
        for (int i = 0; i < kAccessorCount; ++i) {
            const Accessor& accessor = kAccessors[i];
            if (Py_TYPE(callables[i]) != &PyMethod_Type) continue;
            cells[i] = table.AddCallback(*accessor.list, self, nullptr, callables[i],
                                         accessor.reads ? readRefcon : writeRefcon);
            (accessor.reads ? read : write)->cells[accessor.slot] = cells[i];
        }
        XPLMDataRef ref = XPLMRegisterDataAccessor(
            name.c_str(), type, writable, VL_GetDatai_Callback, VL_SetDatai_Callback,
            VL_GetDataf_Callback, VL_SetDataf_Callback, VL_GetDatad_Callback, VL_SetDatad_Callback,
            VL_GetDatavi_Callback, VL_SetDatavi_Callback, VL_GetDatavf_Callback,
            VL_SetDatavf_Callback, VL_GetDatab_Callback, VL_SetDatab_Callback, read, write);
        read->handle = ref;
        write->handle = ref;
        // Each record gets its own dataref, whatever other datarefs its callable serves.
        for (int i = 0; i < kAccessorCount; ++i)
            if (cells[i]) table.UpdateCallback(*kAccessors[i].list, cells[i], ref);
        if (VL_Tracing()) {
            VL_Trace trace("XPLMRegisterDataAccessor");
            trace.line("pScriptId = %x, inDataName = %s, inDataType = %d, inIsWritable = %d, "
                       "inReadRefcon = %d, inWriteRefcon = %d, DataRef = %x\n",
                       VL_Low32(self), name.c_str(), type, writable, VL_Int(readRefcon),
                       VL_Int(writeRefcon), VL_Low32(ref))
                .line("pDataAccessorGetCB = %x\n", VL_Low32(read))
                .line("pDataAccessorSetCB = %x\n", VL_Low32(write));
            TraceListSizes(trace);
        }
        return VL_HandleObject(ref);
    });
}

// The blocks are found by the dataref they were registered for, so unregistering one
// dataref can never free another dataref's block.
PyObject* PY_XPLMUnregisterDataAccessor(PyObject*, PyObject* args) {
    PyObject *self, *refObject;
    if (!PyArg_ParseTuple(args, "OO", &self, &refObject)) return nullptr;
    XPLMDataRef ref = VL_HandleFromObject(refObject);
    return VL_Guarded(kModule, "XPLMUnregisterDataAccessor", [&] {
        VL_ScriptTable& table = VL_Table();
        for (const Accessor& accessor : kAccessors) {
            int found = 0, position = 0;
            _CallbackList* cell = table.FindCallback(*accessor.list, self, ref, found, position);
            if (found) table.DeleteCallback(*accessor.list, cell, position);
        }
        XPLMUnregisterDataAccessor(ref);
        const void* blocks[2] = {};
        VL_CallbackBlockList* lists[2] = {&GetDataMemoryPointerList, &SetDataMemoryPointerList};
        for (int side = 0; side < 2; ++side) {
            int position = VL_FindCallbackBlock(*lists[side], ref);
            if (position < 0) {
                PrintException(kModule, "XPLMUnregisterDataAccessor", "GetData List Empty Error");
                continue;
            }
            blocks[side] = (*lists[side])[position];
            VL_DeleteCallbackBlock(*lists[side], position);
        }
        if (VL_Tracing()) {
            VL_Trace trace("XPLMUnregisterDataAccessor");
            trace.line("pScriptId = %x, Script Name = %s, inDataRef = %x\n", VL_Low32(self),
                       VL_ScriptName(self).c_str(), VL_Low32(ref))
                .line("pDataAccessorGetCB = %x\n", VL_Low32(blocks[0]))
                .line("pDataAccessorSetCB = %x\n", VL_Low32(blocks[1]));
            TraceListSizes(trace);
        }
        return VL_Done();
    });
}

// --- shared data ---

// The arguments of XPLMShareData and XPLMUnshareData ("OO&iOO"): the script, the name,
// the type, the notification callable and the script's reference value.
struct SharedDataArguments {
    PyObject* self = nullptr;
    VL_Text name;
    int type = 0;
    PyObject* callable = nullptr;
    void* refcon = nullptr;

    bool parse(PyObject* args) {
        PyObject* refconObject;
        if (!PyArg_ParseTuple(args, "OO&iOO", &self, VL_ParseText, &name, &type, &callable, &refconObject))
            return false;
        refcon = VL_RefconFromObject(refconObject);
        return true;
    }
};

PyObject* PY_XPLMShareData(PyObject*, PyObject* args) {
    SharedDataArguments a;
    if (!a.parse(args)) return nullptr;
    return VL_Guarded(kModule, "XPLMShareData", [&] {
        // Kept even when the SDK refuses: the script unshares it like any other.
        _CallbackList* cell = VL_Table().AddCallback(SharedDataCallbackList, a.self, nullptr, a.callable, a.refcon);
        int shared = XPLMShareData(a.name.c_str(), a.type, VL_SharedDataCallback, cell);
        if (VL_Tracing())
            VL_Trace("XPLMShareData")
                .line("pScriptId = %x, inDataName = %s, inDataType = %d, inNotificationRefcon = %d\n",
                      VL_Low32(a.self), a.name.c_str(), a.type, VL_Int(a.refcon))
                .size("SharedDataCallbackList", SharedDataCallbackList);
        return VL_IntFromLong(shared);
    });
}

PyObject* PY_XPLMUnshareData(PyObject*, PyObject* args) {
    SharedDataArguments a;
    if (!a.parse(args)) return nullptr;
    return VL_Guarded(kModule, "XPLMUnshareData", [&] {
        int found = 0, position = 0;
        _CallbackList* cell =
            VL_Table().FindCallback(SharedDataCallbackList, a.self, a.callable, a.refcon, found, position);
        if (found) {
            XPLMUnshareData(a.name.c_str(), a.type, VL_SharedDataCallback, cell);
            VL_Table().DeleteCallback(SharedDataCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMUnshareData", VL_NoSuchCallbackRefcon, a.self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMUnshareData")
                .line("pScriptId = %x, Script Name = %s, inDataName = %s, inDataType = %d, "
                      "inNotificationRefcon = %d\n",
                      VL_Low32(a.self), VL_ScriptName(a.self).c_str(), a.name.c_str(), a.type, VL_Int(a.refcon))
                .size("SharedDataCallbackList", SharedDataCallbackList);
        return VL_Done();
    });
}

PyMethodDef XPLMDataAccessMethods[] = {
    {"XPLMFindDataRef", VL_Fast<PY_XPLMFindDataRef>(), VL_METH_FAST, "Find Dataref."},
    {"XPLMCanWriteDataRef", VL_Fast<PY_XPLMCanWriteDataRef>(), VL_METH_FAST, "Test for writable Dataref."},
    {"XPLMGetDataRefTypes", VL_Fast<PY_XPLMGetDataRefTypes>(), VL_METH_FAST, "Get the Dataref Type."},
    {"XPLMGetDatai", VL_Fast<PY_XPLMGetDatai>(), VL_METH_FAST, "Get Integer Dataref."},
    {"XPLMSetDatai", VL_Fast<PY_XPLMSetDatai>(), VL_METH_FAST, "Set Integer Dataref."},
    {"XPLMGetDataf", VL_Fast<PY_XPLMGetDataf>(), VL_METH_FAST, "Get Float Dataref."},
    {"XPLMSetDataf", VL_Fast<PY_XPLMSetDataf>(), VL_METH_FAST, "Set Float Dataref."},
    {"XPLMGetDatad", VL_Fast<PY_XPLMGetDatad>(), VL_METH_FAST, "Get Double Dataref."},
    {"XPLMSetDatad", VL_Fast<PY_XPLMSetDatad>(), VL_METH_FAST, "Set Double Dataref."},
    {"XPLMGetDatavi", PY_XPLMGetDatavi, VL_METH_ARGS, "Get Integer Array Dataref."},
    {"XPLMSetDatavi", PY_XPLMSetDatavi, VL_METH_ARGS, "Set Integer Array Dataref."},
    {"XPLMGetDatavf", PY_XPLMGetDatavf, VL_METH_ARGS, "Get Float Array Dataref."},
    {"XPLMSetDatavf", PY_XPLMSetDatavf, VL_METH_ARGS, "Set Float Array Dataref."},
    {"XPLMGetDatab", PY_XPLMGetDatab, VL_METH_ARGS, "Get Byte Array Dataref."},
    {"XPLMSetDatab", PY_XPLMSetDatab, VL_METH_ARGS, "Set Byte Array Dataref."},
    {"XPLMRegisterDataAccessor", PY_XPLMRegisterDataAccessor, VL_METH_ARGS, "Register data accessor."},
    {"XPLMUnregisterDataAccessor", PY_XPLMUnregisterDataAccessor, VL_METH_ARGS,
     "Unregister data accessor."},
    {"XPLMShareData", PY_XPLMShareData, VL_METH_ARGS, "Share Data."},
    {"XPLMUnshareData", PY_XPLMUnshareData, VL_METH_ARGS, "Unshare Data."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPLMDataAccessConstants[] = {
    {"xplmType_Unknown", xplmType_Unknown},
    {"xplmType_Int", xplmType_Int},
    {"xplmType_Float", xplmType_Float},
    {"xplmType_Double", xplmType_Double},
    {"xplmType_FloatArray", xplmType_FloatArray},
    {"xplmType_IntArray", xplmType_IntArray},
    {"xplmType_Data", xplmType_Data},
};

}  // namespace

void initXPLMDataAccess() {
    PyObject* module = VL_CreateModule("XPLMDataAccess", XPLMDataAccessMethods);
    if (!module || !VL_AddConstants(module, XPLMDataAccessConstants)) VL_PrintPythonError();
}

}  // namespace vorlith
