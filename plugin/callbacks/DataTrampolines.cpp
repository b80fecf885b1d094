// The twelve data accessor trampolines: the SDK hands back the read or the write block
// of a dataref a script published, and each kind reads its own slot of it. Arrays cross
// as Python lists; nothing is ever written outside the buffer the SDK gave.

#include <algorithm>

#include "callbacks/Dispatch.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/PythonGuard.h"

namespace vorlith {

namespace {

const VL_CallbackKind<int> kGetDatai{VL_CostData, "Cannot find method UserGetDataiCallback\n", 0, 1, 1};
const VL_CallbackKind<float> kGetDataf{VL_CostData, "Cannot find method UserGetDataf_Callback\n", 0.0f, 1.0f, 1.0f};
const VL_CallbackKind<double> kGetDatad{VL_CostData, "Cannot find method UserGetDataf_Callback\n", 0.0, 1.0, 1.0};
const VL_CallbackKind<int> kGetDatavi{VL_CostData, "Cannot find method UserGetDatavi_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kGetDatavf{VL_CostData, "Cannot find method UserGetDatavf_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kGetDatab{VL_CostData, "Cannot find method UserGetDatab_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kSetDatai{VL_CostData, "Cannot find method UserSetDatai_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kSetDataf{VL_CostData, "Cannot find method UserSetDataf_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kSetDatad{VL_CostData, "Cannot find method UserSetDatad_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kSetDatavi{VL_CostData, "Cannot find method UserSetDatavi_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kSetDatavf{VL_CostData, "Cannot find method UserSetDatavf_Callback\n", 0, 1, 1};
const VL_CallbackKind<int> kSetDatab{VL_CostData, "Cannot find method UserSetDatab_Callback\n", 0, 1, 1};

VL_Arguments<1> Single(PyObject* ref) { return VL_Pack(ref); }  // "(O)"

// Element i of the values as a number; a non-number gives 0 and its error printed.
long LongItem(PyObject* items, Py_ssize_t i) {
    long value = PyLong_AsLong(PyTuple_GET_ITEM(items, i));
    if (value == -1 && PyErr_Occurred()) {
        VL_PrintPythonError();
        return 0;
    }
    return value;
}
double DoubleItem(PyObject* items, Py_ssize_t i) {
    double value = PyFloat_AsDouble(PyTuple_GET_ITEM(items, i));
    if (value == -1.0 && PyErr_Occurred()) {
        VL_PrintPythonError();
        return 0.0;
    }
    return value;
}

// The getter of an array: the script appends the values to the list it gets (None for a
// size query) and returns their count; at most `max` of them, and no more than the list
// holds, reach the buffer. A size query answers the script's count whatever `max` is, as
// the SDK promises readers that ask with no buffer. The values are read from a private
// tuple of the list: an item's __index__ or __float__ runs Python code that may empty
// the list while it is being read.
template <typename T, typename Store>
int GetArray(const VL_CallbackKind<int>& kind, int slot, void* refcon, T* values, int offset,
             int max, Store store) {
    PythonGuard guard;
    PyObject* list = nullptr;
    int count = VL_CallUser(kind, VL_RecordFromBlock(refcon, slot), [&](PyObject* ref) {
        if (values && !(list = PyList_New(0))) return VL_Arguments<4>();
        return VL_Pack(ref, list ? list : Py_None, offset, max);  // "(OOii)"
    }, [&](PyObject* result) {
        int count = std::max(0, VL_ResultInt(result));
        if (!list) return count;
        PyObject* items = PyList_AsTuple(list);
        if (!items) {
            VL_PrintPythonError();
            return kind.failed;
        }
        int limit = std::max(0, max);  // a negative max from another plug-in reads nothing
        int stored = store(values, items, std::min(limit, count), limit);
        Py_DECREF(items);
        return stored;
    });
    Py_XDECREF(list);
    return count;
}

template <typename T>
int StoreNumbers(T* values, PyObject* items, int n, int) {
    n = static_cast<int>(std::min<Py_ssize_t>(n, PyTuple_GET_SIZE(items)));
    for (int i = 0; i < n; ++i) {
        if constexpr (std::is_same_v<T, float>)
            values[i] = static_cast<float>(DoubleItem(items, i));
        else
            values[i] = static_cast<T>(LongItem(items, i));
    }
    return n;
}

// A byte getter may give one text (copied with its terminating zero while it fits) or a
// list of numbers (their low 8 bits).
int StoreBytes(void* buffer, PyObject* items, int n, int max) {
    auto* bytes = static_cast<unsigned char*>(buffer);
    PyObject* first = PyTuple_GET_SIZE(items) > 0 ? PyTuple_GET_ITEM(items, 0) : nullptr;
    if (first && VL_TextCheck(first)) {
        VL_Text text;
        if (!text.set(first)) {
            VL_PrintPythonError();
            return 0;
        }
        Py_ssize_t length = std::min<Py_ssize_t>(text.size(), max);
        std::copy(text.c_str(), text.c_str() + length, bytes);
        if (length < max) bytes[length] = 0;
        return n;
    }
    n = static_cast<int>(std::min<Py_ssize_t>(n, PyTuple_GET_SIZE(items)));
    for (int i = 0; i < n; ++i) bytes[i] = static_cast<unsigned char>(LongItem(items, i) & 0xFF);
    return n;
}

// The setter of an array gets the SDK's values as a new list (None when there are none).
template <typename T, typename Make>
int SetArray(const VL_CallbackKind<int>& kind, int slot, void* refcon, const T* values,
             int offset, int count, Make make) {
    PythonGuard guard;
    return VL_CallUser(kind, VL_RecordFromBlock(refcon, slot), [&](PyObject* ref) {
        PyObject* list = Py_None;
        Py_INCREF(list);
        if (values) {
            Py_DECREF(list);
            list = PyList_New(std::max(0, count));
            if (!list) return VL_Arguments<4>();
            for (int i = 0; i < count; ++i) PyList_SET_ITEM(list, i, make(values[i]));
        }
        return VL_Pack(ref, VL_New{list}, offset, count);  // "(OOii)"
    }, VL_ResultNone);
}

PyObject* IntObject(int v) { return VL_IntFromLong(v); }
PyObject* FloatObject(float v) { return PyFloat_FromDouble(v); }
PyObject* ByteObject(unsigned char v) { return VL_IntFromLong(static_cast<signed char>(v)); }

}  // namespace

int CallUserGetDatai_Callback(void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kGetDatai, VL_RecordFromBlock(refcon, VL_IntSlot), Single, VL_ResultInt);
}
float CallUserGetDataf_Callback(void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kGetDataf, VL_RecordFromBlock(refcon, VL_FloatSlot), Single, VL_ResultFloat);
}
double CallUserGetDatad_Callback(void* refcon) {
    PythonGuard guard;
    return VL_CallUser(kGetDatad, VL_RecordFromBlock(refcon, VL_DoubleSlot), Single, VL_ResultDouble);
}
int CallUserGetDatavi_Callback(void* refcon, int* values, int offset, int max) {
    return GetArray(kGetDatavi, VL_IntArraySlot, refcon, values, offset, max, StoreNumbers<int>);
}
int CallUserGetDatavf_Callback(void* refcon, float* values, int offset, int max) {
    return GetArray(kGetDatavf, VL_FloatArraySlot, refcon, values, offset, max, StoreNumbers<float>);
}
int CallUserGetDatab_Callback(void* refcon, void* values, int offset, int max) {
    return GetArray(kGetDatab, VL_ByteArraySlot, refcon, values, offset, max, StoreBytes);
}

int CallUserSetDatai_Callback(void* refcon, int value) {
    PythonGuard guard;
    return VL_CallUser(kSetDatai, VL_RecordFromBlock(refcon, VL_IntSlot), [&](PyObject* ref) {
        return VL_Pack(ref, value);  // "(Oi)"
    }, VL_ResultNone);
}
int CallUserSetDataf_Callback(void* refcon, float value) {
    PythonGuard guard;
    return VL_CallUser(kSetDataf, VL_RecordFromBlock(refcon, VL_FloatSlot), [&](PyObject* ref) {
        return VL_Pack(ref, value);  // "(Of)"
    }, VL_ResultNone);
}
int CallUserSetDatad_Callback(void* refcon, double value) {
    PythonGuard guard;
    return VL_CallUser(kSetDatad, VL_RecordFromBlock(refcon, VL_DoubleSlot), [&](PyObject* ref) {
        return VL_Pack(ref, value);  // "(Od)"
    }, VL_ResultNone);
}
int CallUserSetDatavi_Callback(void* refcon, int* values, int offset, int count) {
    return SetArray(kSetDatavi, VL_IntArraySlot, refcon, values, offset, count, IntObject);
}
int CallUserSetDatavf_Callback(void* refcon, float* values, int offset, int count) {
    return SetArray(kSetDatavf, VL_FloatArraySlot, refcon, values, offset, count, FloatObject);
}
int CallUserSetDatab_Callback(void* refcon, void* values, int offset, int count) {
    return SetArray(kSetDatab, VL_ByteArraySlot, refcon, static_cast<unsigned char*>(values),
                    offset, count, ByteObject);
}

int VL_GetDatai_Callback(void* refcon) { return CallUserGetDatai_Callback(refcon); }
float VL_GetDataf_Callback(void* refcon) { return CallUserGetDataf_Callback(refcon); }
double VL_GetDatad_Callback(void* refcon) { return CallUserGetDatad_Callback(refcon); }
int VL_GetDatavi_Callback(void* refcon, int* values, int offset, int max) {
    return CallUserGetDatavi_Callback(refcon, values, offset, max);
}
int VL_GetDatavf_Callback(void* refcon, float* values, int offset, int max) {
    return CallUserGetDatavf_Callback(refcon, values, offset, max);
}
int VL_GetDatab_Callback(void* refcon, void* values, int offset, int max) {
    return CallUserGetDatab_Callback(refcon, values, offset, max);
}
void VL_SetDatai_Callback(void* refcon, int value) { CallUserSetDatai_Callback(refcon, value); }
void VL_SetDataf_Callback(void* refcon, float value) { CallUserSetDataf_Callback(refcon, value); }
void VL_SetDatad_Callback(void* refcon, double value) { CallUserSetDatad_Callback(refcon, value); }
void VL_SetDatavi_Callback(void* refcon, int* values, int offset, int count) {
    CallUserSetDatavi_Callback(refcon, values, offset, count);
}
void VL_SetDatavf_Callback(void* refcon, float* values, int offset, int count) {
    CallUserSetDatavf_Callback(refcon, values, offset, count);
}
void VL_SetDatab_Callback(void* refcon, void* values, int offset, int count) {
    CallUserSetDatab_Callback(refcon, values, offset, count);
}

}  // namespace vorlith
