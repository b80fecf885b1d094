// The module XPLMNavigation: the navigation database, the FMS entries and the GPS
// destination. Navaid references and indexes are plain ints; a failed call answers -1
// (XPLM_NAV_NOT_FOUND) for them, so a script's loop over navaids ends.

#include "XPLMNavigation.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMNavigation";

// Text buffers of the info functions: the SDK writes at most 32 bytes of ID and 256 of
// name; these leave ample room.
constexpr int kTextBuffer = 1024;
constexpr int kFMSIDBuffer = 256;

// A reference or an index, or -1 after a failed call (reported under `function`).
template <typename Call>
PyObject* ReferenceOrNotFound(const char* function, Call&& call) {
    int value = XPLM_NAV_NOT_FOUND;
    if (!VL_GuardedCall(kModule, function, [&] { value = call(); })) value = XPLM_NAV_NOT_FOUND;
    return VL_IntFromLong(value);
}

// The functions without arguments do not look at their argument tuple at all.
template <int (*Query)()>
PyObject* Query0(const char* function) {
    return ReferenceOrNotFound(function, Query);
}

template <int (*Query)(int)>
PyObject* Query1(PyObject* args, const char* function) {
    int value;
    if (!PyArg_ParseTuple(args, "i", &value)) return nullptr;
    return ReferenceOrNotFound(function, [&] { return Query(value); });
}

template <void (*Set)(int)>
PyObject* Set1(PyObject* args, const char* function) {
    int index;
    if (!PyArg_ParseTuple(args, "i", &index)) return nullptr;
    return VL_Guarded(kModule, function, [&] {
        Set(index);
        return VL_Done();
    });
}

PyObject* PY_XPLMGetFirstNavAid(PyObject*, PyObject*) {
    return Query0<XPLMGetFirstNavAid>("XPLMGetFirstNavAid");
}
PyObject* PY_XPLMGetNextNavAid(PyObject*, PyObject* args) {
    return Query1<XPLMGetNextNavAid>(args, "XPLMGetNextNavAid");
}
PyObject* PY_XPLMFindFirstNavAidOfType(PyObject*, PyObject* args) {
    return Query1<XPLMFindFirstNavAidOfType>(args, "XPLMFindFirstNavAidOfType");
}
// Its failures have always been reported under the name of XPLMGetFirstNavAid.
PyObject* PY_XPLMFindLastNavAidOfType(PyObject*, PyObject* args) {
    return Query1<XPLMFindLastNavAidOfType>(args, "XPLMGetFirstNavAid");
}

// Each criterion may be None, which leaves it out of the search.
PyObject* PY_XPLMFindNavAid(PyObject*, PyObject* args) {
    PyObject *nameObject, *idObject, *latObject, *lonObject, *frequencyObject;
    int type;
    if (!PyArg_ParseTuple(args, "OOOOOi", &nameObject, &idObject, &latObject, &lonObject,
                          &frequencyObject, &type))
        return nullptr;
    VL_Text name, id;
    float lat = 0, lon = 0;
    int frequency = 0;
    if ((nameObject != Py_None && !name.set(nameObject)) || (idObject != Py_None && !id.set(idObject)))
        return nullptr;
    if (latObject != Py_None) lat = static_cast<float>(PyFloat_AsDouble(latObject));
    if (lonObject != Py_None) lon = static_cast<float>(PyFloat_AsDouble(lonObject));
    if (frequencyObject != Py_None) frequency = static_cast<int>(PyLong_AsLong(frequencyObject));
    if (PyErr_Occurred()) return nullptr;  // a criterion that is not a number
    return ReferenceOrNotFound("XPLMFindNavAid", [&] {
        return XPLMFindNavAid(nameObject == Py_None ? nullptr : name.c_str(),
                              idObject == Py_None ? nullptr : id.c_str(),
                              latObject == Py_None ? nullptr : &lat, lonObject == Py_None ? nullptr : &lon,
                              frequencyObject == Py_None ? nullptr : &frequency, type);
    });
}

// The out pointer for a list, or null when the script passed None.
template <typename T>
T* Wanted(PyObject* list, T* local) {
    return list == Py_None ? nullptr : local;
}

PyObject* PY_XPLMGetNavAidInfo(PyObject*, PyObject* args) {
    int ref;
    PyObject *typeList, *latList, *lonList, *heightList, *frequencyList, *headingList, *idList,
        *nameList, *regionList;
    if (!PyArg_ParseTuple(args, "iOOOOOOOOO", &ref, &typeList, &latList, &lonList, &heightList,
                          &frequencyList, &headingList, &idList, &nameList, &regionList) ||
        !VL_CheckOutLists({typeList, latList, lonList, heightList, frequencyList, headingList, idList,
                           nameList, regionList}))
        return nullptr;
    XPLMNavType type = 0;
    float lat = 0, lon = 0, height = 0, heading = 0;
    int frequency = 0;
    char id[kTextBuffer] = {0}, name[kTextBuffer] = {0}, region = 0;
    if (!VL_GuardedCall(kModule, "XPLMGetNavAidInfo", [&] {
            XPLMGetNavAidInfo(ref, Wanted(typeList, &type), Wanted(latList, &lat), Wanted(lonList, &lon),
                              Wanted(heightList, &height), Wanted(frequencyList, &frequency),
                              Wanted(headingList, &heading), Wanted(idList, id), Wanted(nameList, name),
                              Wanted(regionList, &region));
        }))
        return Py_BuildValue("(i)", -1);
    id[kTextBuffer - 1] = name[kTextBuffer - 1] = '\0';
    if (!VL_StoreOut(typeList, VL_IntFromLong(type)) || !VL_StoreOut(latList, PyFloat_FromDouble(lat)) ||
        !VL_StoreOut(lonList, PyFloat_FromDouble(lon)) ||
        !VL_StoreOut(heightList, PyFloat_FromDouble(height)) ||
        !VL_StoreOut(frequencyList, VL_IntFromLong(frequency)) ||
        !VL_StoreOut(headingList, PyFloat_FromDouble(heading)) ||
        !VL_StoreOut(idList, VL_TextFromString(id)) || !VL_StoreOut(nameList, VL_TextFromString(name)) ||
        !VL_StoreOut(regionList, VL_IntFromLong(region)))
        return nullptr;
    return Py_BuildValue("(i)", 1);
}

PyObject* PY_XPLMCountFMSEntries(PyObject*, PyObject*) {
    return Query0<XPLMCountFMSEntries>("XPLMCountFMSEntries");
}
PyObject* PY_XPLMGetDisplayedFMSEntry(PyObject*, PyObject*) {
    return Query0<XPLMGetDisplayedFMSEntry>("XPLMGetDisplayedFMSEntry");
}
PyObject* PY_XPLMGetDestinationFMSEntry(PyObject*, PyObject*) {
    return Query0<XPLMGetDestinationFMSEntry>("XPLMGetDestinationFMSEntry");
}
PyObject* PY_XPLMSetDisplayedFMSEntry(PyObject*, PyObject* args) {
    return Set1<XPLMSetDisplayedFMSEntry>(args, "XPLMSetDisplayedFMSEntry");
}
PyObject* PY_XPLMSetDestinationFMSEntry(PyObject*, PyObject* args) {
    return Set1<XPLMSetDestinationFMSEntry>(args, "XPLMSetDestinationFMSEntry");
}

PyObject* PY_XPLMGetFMSEntryInfo(PyObject*, PyObject* args) {
    int index;
    PyObject *typeList, *idList, *refList, *altitudeList, *latList, *lonList;
    if (!PyArg_ParseTuple(args, "iOOOOOO", &index, &typeList, &idList, &refList, &altitudeList, &latList,
                          &lonList) ||
        !VL_CheckOutLists({typeList, idList, refList, altitudeList, latList, lonList}))
        return nullptr;
    XPLMNavType type = 0;
    char id[kFMSIDBuffer] = {0};
    XPLMNavRef ref = 0;
    int altitude = 0;
    float lat = 0, lon = 0;
    if (!VL_GuardedCall(kModule, "XPLMGetFMSEntryInfo", [&] {
            XPLMGetFMSEntryInfo(index, Wanted(typeList, &type), Wanted(idList, id), Wanted(refList, &ref),
                                Wanted(altitudeList, &altitude), Wanted(latList, &lat), Wanted(lonList, &lon));
        }))
        return Py_BuildValue("(i)", -1);
    id[kFMSIDBuffer - 1] = '\0';
    if (!VL_StoreOut(typeList, VL_IntFromLong(type)) || !VL_StoreOut(idList, VL_TextFromString(id)) ||
        !VL_StoreOut(refList, VL_IntFromLong(ref)) || !VL_StoreOut(altitudeList, VL_IntFromLong(altitude)) ||
        !VL_StoreOut(latList, PyFloat_FromDouble(lat)) || !VL_StoreOut(lonList, PyFloat_FromDouble(lon)))
        return nullptr;
    return Py_BuildValue("(i)", 1);
}

PyObject* PY_XPLMSetFMSEntryInfo(PyObject*, PyObject* args) {
    int index, ref, altitude;
    if (!PyArg_ParseTuple(args, "iii", &index, &ref, &altitude)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetFMSEntryInfo", [&] {
        XPLMSetFMSEntryInfo(index, ref, altitude);
        return VL_Done();
    });
}

PyObject* PY_XPLMSetFMSEntryLatLon(PyObject*, PyObject* args) {
    int index, altitude;
    float lat, lon;
    if (!PyArg_ParseTuple(args, "iffi", &index, &lat, &lon, &altitude)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetFMSEntryLatLon", [&] {
        XPLMSetFMSEntryLatLon(index, lat, lon, altitude);
        return VL_Done();
    });
}

PyObject* PY_XPLMClearFMSEntry(PyObject*, PyObject* args) {
    return Set1<XPLMClearFMSEntry>(args, "XPLMClearFMSEntry");
}
PyObject* PY_XPLMGetGPSDestinationType(PyObject*, PyObject*) {
    return Query0<XPLMGetGPSDestinationType>("XPLMGetGPSDestinationType");
}
PyObject* PY_XPLMGetGPSDestination(PyObject*, PyObject*) {
    return Query0<XPLMGetGPSDestination>("XPLMGetGPSDestination");
}

PyMethodDef XPLMNavigationMethods[] = {
    {"XPLMGetFirstNavAid", PY_XPLMGetFirstNavAid, VL_METH_ARGS, "Get First Nav Aid."},
    {"XPLMGetNextNavAid", PY_XPLMGetNextNavAid, VL_METH_ARGS, "Get Next Nav Aid."},
    {"XPLMFindFirstNavAidOfType", PY_XPLMFindFirstNavAidOfType, VL_METH_ARGS, "Find First Nav Aid Of Type."},
    {"XPLMFindLastNavAidOfType", PY_XPLMFindLastNavAidOfType, VL_METH_ARGS, "Find Last Nav Aid Of Type."},
    {"XPLMFindNavAid", PY_XPLMFindNavAid, VL_METH_ARGS, "Find Nav Aid."},
    {"XPLMGetNavAidInfo", PY_XPLMGetNavAidInfo, VL_METH_ARGS, "Get Nav Aid Info."},
    {"XPLMCountFMSEntries", PY_XPLMCountFMSEntries, VL_METH_ARGS, "Count FMS Entries."},
    {"XPLMGetDisplayedFMSEntry", PY_XPLMGetDisplayedFMSEntry, VL_METH_ARGS, "Get Displayed FMS Entry."},
    {"XPLMGetDestinationFMSEntry", PY_XPLMGetDestinationFMSEntry, VL_METH_ARGS, "Get Destination FMS Entry."},
    {"XPLMSetDisplayedFMSEntry", PY_XPLMSetDisplayedFMSEntry, VL_METH_ARGS, "Set Displayed FMS Entry."},
    {"XPLMSetDestinationFMSEntry", PY_XPLMSetDestinationFMSEntry, VL_METH_ARGS, "Set Destination FMS Entry."},
    {"XPLMGetFMSEntryInfo", PY_XPLMGetFMSEntryInfo, VL_METH_ARGS, "Get FMS Entry Info."},
    {"XPLMSetFMSEntryInfo", PY_XPLMSetFMSEntryInfo, VL_METH_ARGS, "Set FMS Entry Info."},
    {"XPLMSetFMSEntryLatLon", PY_XPLMSetFMSEntryLatLon, VL_METH_ARGS, "Set FMS Entry LatLon."},
    {"XPLMClearFMSEntry", PY_XPLMClearFMSEntry, VL_METH_ARGS, "Clear FMSEntry."},
    {"XPLMGetGPSDestinationType", PY_XPLMGetGPSDestinationType, VL_METH_ARGS, "Get GPS DestinationType."},
    {"XPLMGetGPSDestination", PY_XPLMGetGPSDestination, VL_METH_ARGS, "Get GPS Destination."},
    {nullptr, nullptr, 0, nullptr},
};

#define VL_CONSTANT(name) {#name, name}
const VL_Constant XPLMNavigationConstants[] = {
    VL_CONSTANT(xplm_Nav_Unknown),      VL_CONSTANT(xplm_Nav_Airport),      VL_CONSTANT(xplm_Nav_NDB),
    VL_CONSTANT(xplm_Nav_VOR),          VL_CONSTANT(xplm_Nav_ILS),          VL_CONSTANT(xplm_Nav_Localizer),
    VL_CONSTANT(xplm_Nav_GlideSlope),   VL_CONSTANT(xplm_Nav_OuterMarker),  VL_CONSTANT(xplm_Nav_MiddleMarker),
    VL_CONSTANT(xplm_Nav_InnerMarker),  VL_CONSTANT(xplm_Nav_Fix),          VL_CONSTANT(xplm_Nav_DME),
    VL_CONSTANT(xplm_Nav_LatLon),       VL_CONSTANT(XPLM_NAV_NOT_FOUND),
};
#undef VL_CONSTANT

}  // namespace

void initXPLMNavigation() {
    PyObject* module = VL_CreateModule("XPLMNavigation", XPLMNavigationMethods);
    if (!module || !VL_AddConstants(module, XPLMNavigationConstants)) VL_PrintPythonError();
}

}  // namespace vorlith
