// XPLMDataAccess: typed reads and writes of datarefs, accessor datarefs published by
// plug-ins, shared data with change notifications, and the driver's text access.
// The table itself and the simulator's datarefs live in DataRefTable.cpp.

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "DataRefTable.h"
#include "XPLMDataAccess.h"
#include "host.h"

namespace xpsim {
namespace {

// Shared arrays grow with writes; this bounds what one bad offset can allocate.
constexpr size_t kMaxSharedElements = size_t(1) << 22;
// Bounds what the driver copies out of a plug-in's array dataref.
constexpr int kMaxDriverElements = 1 << 20;

// NULL (what XPLMFindDataRef answers for an unknown name) and orphaned handles get the
// neutral answer silently, as the SDK documents; anything the host never handed out
// is a programming error.
__attribute__((noinline, cold)) void reportBadHandle(XPLMDataRef handle, const char* function) {
    Host::get().reportError("%s: %p is not a dataref handle", function, handle);
}

// Inlined: this is the whole cost of a read besides the copy.
inline __attribute__((always_inline)) DataRef* resolve(XPLMDataRef handle, const char* function) {
    if (!handle) return nullptr;
    DataRef* ref = dataRefTable().refs.get(handle);
    if (!ref) {
        reportBadHandle(handle, function);
        return nullptr;
    }
    return ref->live ? ref : nullptr;
}

// Who may change a dataref: plug-ins only writable ones; the simulator (the driver)
// also its own read-only ones, since it owns them.
enum class Writer { Plugin, Simulator };

bool storageWritable(const DataRef& ref, Writer writer) {
    return ref.writable || (writer == Writer::Simulator && ref.provider == DataRefProvider::Simulator);
}

// Tells every other sharer that a shared dataref changed. The SDK says "any other
// plug-in"; we do not notify the writer itself. Every write counts as a change (values
// are not compared). Callbacks may share or unshare, so each sharer is checked again
// before it is called.
void notifySharers(XPLMDataRef handle) {
    DataRef* ref = dataRefTable().refs.get(handle);
    if (!ref || ref->sharers.empty()) return;
    const int writer = Host::get().currentPlugin;
    const std::vector<DataSharer> sharers = ref->sharers;
    for (const DataSharer& sharer : sharers) {
        if (sharer.plugin == writer || !sharer.notify || !isPluginEnabled(sharer.plugin)) continue;
        ref = dataRefTable().refs.get(handle);
        if (!ref || std::none_of(ref->sharers.begin(), ref->sharers.end(),
                                 [&](const DataSharer& s) { return s.id == sharer.id; })) {
            continue;
        }
        CallingPlugin calling(sharer.plugin);
        sharer.notify(sharer.refcon);
    }
}

template <class T, XPLMDataTypeID Bit, auto Reader>
T readScalar(XPLMDataRef handle, const char* function) {
    DataRef* ref = resolve(handle, function);
    if (!ref || !(ref->types & Bit)) return T(0);
    if (ref->provider != DataRefProvider::Accessor) return static_cast<T>(ref->scalar);
    auto read = ref->accessors.*Reader;
    if (!read || !isPluginEnabled(ref->plugin)) return T(0);
    CallingPlugin calling(ref->plugin);
    return read(ref->accessors.readRefcon);
}

template <class T, XPLMDataTypeID Bit, auto WriterFn>
void writeScalar(XPLMDataRef handle, DataRef* ref, T value, Writer writer) {
    if (!ref || !(ref->types & Bit)) return;
    if (ref->provider == DataRefProvider::Accessor) {
        auto write = ref->accessors.*WriterFn;
        if (!ref->writable || !write || !isPluginEnabled(ref->plugin)) return;
        CallingPlugin calling(ref->plugin);
        write(ref->accessors.writeRefcon, value);
        return;
    }
    if (!storageWritable(*ref, writer)) return;
    ref->scalar = value;
    if (ref->provider == DataRefProvider::Shared) notifySharers(handle);
}

// Arrays and byte blocks: a NULL buffer asks for the size; otherwise up to `max`
// elements from `offset` are copied and their number returned. A plug-in's accessor
// gets the arguments unchanged: the provider implements these rules itself.
template <class T, XPLMDataTypeID Bit, auto Storage, auto Reader>
int readArray(XPLMDataRef handle, T* out, int offset, int max, const char* function) {
    DataRef* ref = resolve(handle, function);
    if (!ref || !(ref->types & Bit)) return 0;
    if (ref->provider == DataRefProvider::Accessor) {
        auto read = ref->accessors.*Reader;
        if (!read || !isPluginEnabled(ref->plugin)) return 0;
        CallingPlugin calling(ref->plugin);
        return read(ref->accessors.readRefcon, out, offset, max);
    }
    const std::vector<T>& values = ref->*Storage;
    if (!out) return static_cast<int>(values.size());
    if (offset < 0 || max < 0) {
        Host::get().reportError("%s: negative offset or count (%d, %d) for %s", function, offset, max,
                                ref->name.c_str());
        return 0;
    }
    if (static_cast<size_t>(offset) >= values.size()) return 0;
    size_t n = std::min(static_cast<size_t>(max), values.size() - offset);
    std::copy_n(values.begin() + offset, n, out);
    return static_cast<int>(n);
}

template <class T, XPLMDataTypeID Bit, auto Storage, auto WriterFn>
void writeArray(XPLMDataRef handle, DataRef* ref, const T* in, int offset, int count, Writer writer,
                const char* function) {
    if (!ref || !(ref->types & Bit)) return;
    if (ref->provider == DataRefProvider::Accessor) {
        auto write = ref->accessors.*WriterFn;
        if (!ref->writable || !write || !isPluginEnabled(ref->plugin)) return;
        CallingPlugin calling(ref->plugin);
        write(ref->accessors.writeRefcon, const_cast<T*>(in), offset, count);
        return;
    }
    if (!storageWritable(*ref, writer) || count == 0) return;
    if (!in || offset < 0 || count < 0) {
        Host::get().reportError("%s: %s (offset %d, count %d) for %s", function,
                                in ? "negative offset or count" : "no values", offset, count,
                                ref->name.c_str());
        return;
    }
    std::vector<T>& values = ref->*Storage;
    size_t end = static_cast<size_t>(offset) + static_cast<size_t>(count);
    if (ref->provider == DataRefProvider::Shared && end > values.size()) {
        // The SDK does not say how big shared arrays are; ours grow to fit what is written.
        if (end > kMaxSharedElements) {
            Host::get().reportError("%s: %zu elements is more than shared data %s can hold", function,
                                    end, ref->name.c_str());
            return;
        }
        values.resize(end);
    }
    if (static_cast<size_t>(offset) >= values.size()) return;
    size_t n = std::min(static_cast<size_t>(count), values.size() - offset);
    std::copy_n(in, n, values.begin() + offset);
    if (ref->provider == DataRefProvider::Shared) notifySharers(handle);
}

// The typed operations, once per type, so the SDK functions and the driver share them.
constexpr auto readInt = readScalar<int, xplmType_Int, &DataAccessors::readInt>;
constexpr auto readFloat = readScalar<float, xplmType_Float, &DataAccessors::readFloat>;
constexpr auto readDouble = readScalar<double, xplmType_Double, &DataAccessors::readDouble>;
constexpr auto writeInt = writeScalar<int, xplmType_Int, &DataAccessors::writeInt>;
constexpr auto writeFloat = writeScalar<float, xplmType_Float, &DataAccessors::writeFloat>;
constexpr auto writeDouble = writeScalar<double, xplmType_Double, &DataAccessors::writeDouble>;
constexpr auto readInts = readArray<int, xplmType_IntArray, &DataRef::ints, &DataAccessors::readIntArray>;
constexpr auto readFloats =
    readArray<float, xplmType_FloatArray, &DataRef::floats, &DataAccessors::readFloatArray>;
constexpr auto readBytes = readArray<uint8_t, xplmType_Data, &DataRef::bytes, &DataAccessors::readData>;
constexpr auto writeInts = writeArray<int, xplmType_IntArray, &DataRef::ints, &DataAccessors::writeIntArray>;
constexpr auto writeFloats =
    writeArray<float, xplmType_FloatArray, &DataRef::floats, &DataAccessors::writeFloatArray>;
constexpr auto writeBytes = writeArray<uint8_t, xplmType_Data, &DataRef::bytes, &DataAccessors::writeData>;

// The handle of a live dataref with this name, or null.
XPLMDataRef findLive(const char* name) {
    loadSimulatorDataRefs();
    DataRefTable& table = dataRefTable();
    auto it = table.byName.find(name);
    if (it == table.byName.end()) return nullptr;
    const DataRef* ref = table.refs.get(it->second);
    return ref && ref->live ? it->second : nullptr;
}

// A name or type that cannot be shared; reported, as it is a programming error.
bool validShareArguments(const char* function, const char* name, XPLMDataTypeID type) {
    if (!name || !*name) {
        Host::get().reportError("%s: no dataref name", function);
        return false;
    }
    const XPLMDataTypeID known = xplmType_Int | xplmType_Float | xplmType_Double | xplmType_FloatArray |
                                 xplmType_IntArray | xplmType_Data;
    if (type == xplmType_Unknown || (type & ~known)) {
        Host::get().reportError("%s: invalid type %d for %s", function, type, name);
        return false;
    }
    return true;
}

}  // namespace

// --- the host's side ---

void forgetPluginDataAccess(int plugin) {
    dataRefTable().refs.forEach([plugin](void*, DataRef& ref) {
        if (ref.provider == DataRefProvider::Accessor && ref.plugin == plugin && ref.live) {
            ref.live = false;
            ref.accessors = DataAccessors{};
        }
        auto& sharers = ref.sharers;
        sharers.erase(std::remove_if(sharers.begin(), sharers.end(),
                                     [plugin](const DataSharer& s) { return s.plugin == plugin; }),
                      sharers.end());
    });
}

void resetDataAccess() {
    DataRefTable& table = dataRefTable();
    table.refs.clear();
    table.byName.clear();
    table.nextSharerId = 1;
    table.loaded = false;
}

}  // namespace xpsim

using namespace xpsim;

// --- lookup and metadata ---

XPLM_API XPLMDataRef XPLMFindDataRef(const char* inDataRefName) {
    if (!inDataRefName) {
        Host::get().reportError("XPLMFindDataRef: no dataref name");
        return nullptr;
    }
    return findLive(inDataRefName);
}

XPLM_API int XPLMCanWriteDataRef(XPLMDataRef inDataRef) {
    const DataRef* ref = resolve(inDataRef, "XPLMCanWriteDataRef");
    return ref && ref->writable ? 1 : 0;
}

// The SDK does not say whether a dataref whose provider is disabled is "good"; it is
// unavailable to everyone then, so we answer 0.
XPLM_API int XPLMIsDataRefGood(XPLMDataRef inDataRef) {
    const DataRef* ref = resolve(inDataRef, "XPLMIsDataRefGood");
    if (!ref) return 0;
    return ref->provider != DataRefProvider::Accessor || isPluginEnabled(ref->plugin) ? 1 : 0;
}

// An orphaned dataref supports no type until its provider registers it again.
XPLM_API XPLMDataTypeID XPLMGetDataRefTypes(XPLMDataRef inDataRef) {
    const DataRef* ref = resolve(inDataRef, "XPLMGetDataRefTypes");
    return ref ? ref->types : xplmType_Unknown;
}

// --- typed access ---

XPLM_API int XPLMGetDatai(XPLMDataRef inDataRef) { return readInt(inDataRef, "XPLMGetDatai"); }
XPLM_API float XPLMGetDataf(XPLMDataRef inDataRef) { return readFloat(inDataRef, "XPLMGetDataf"); }
XPLM_API double XPLMGetDatad(XPLMDataRef inDataRef) { return readDouble(inDataRef, "XPLMGetDatad"); }

XPLM_API void XPLMSetDatai(XPLMDataRef inDataRef, int inValue) {
    writeInt(inDataRef, resolve(inDataRef, "XPLMSetDatai"), inValue, Writer::Plugin);
}
XPLM_API void XPLMSetDataf(XPLMDataRef inDataRef, float inValue) {
    writeFloat(inDataRef, resolve(inDataRef, "XPLMSetDataf"), inValue, Writer::Plugin);
}
XPLM_API void XPLMSetDatad(XPLMDataRef inDataRef, double inValue) {
    writeDouble(inDataRef, resolve(inDataRef, "XPLMSetDatad"), inValue, Writer::Plugin);
}

XPLM_API int XPLMGetDatavi(XPLMDataRef inDataRef, int* outValues, int inOffset, int inMax) {
    return readInts(inDataRef, outValues, inOffset, inMax, "XPLMGetDatavi");
}
XPLM_API void XPLMSetDatavi(XPLMDataRef inDataRef, int* inValues, int inoffset, int inCount) {
    writeInts(inDataRef, resolve(inDataRef, "XPLMSetDatavi"), inValues, inoffset, inCount, Writer::Plugin,
              "XPLMSetDatavi");
}
XPLM_API int XPLMGetDatavf(XPLMDataRef inDataRef, float* outValues, int inOffset, int inMax) {
    return readFloats(inDataRef, outValues, inOffset, inMax, "XPLMGetDatavf");
}
XPLM_API void XPLMSetDatavf(XPLMDataRef inDataRef, float* inValues, int inoffset, int inCount) {
    writeFloats(inDataRef, resolve(inDataRef, "XPLMSetDatavf"), inValues, inoffset, inCount,
                Writer::Plugin, "XPLMSetDatavf");
}
XPLM_API int XPLMGetDatab(XPLMDataRef inDataRef, void* outValue, int inOffset, int inMaxBytes) {
    return readBytes(inDataRef, static_cast<uint8_t*>(outValue), inOffset, inMaxBytes, "XPLMGetDatab");
}
XPLM_API void XPLMSetDatab(XPLMDataRef inDataRef, void* inValue, int inOffset, int inLength) {
    writeBytes(inDataRef, resolve(inDataRef, "XPLMSetDatab"), static_cast<const uint8_t*>(inValue), inOffset,
               inLength, Writer::Plugin, "XPLMSetDatab");
}

// --- accessor datarefs ---

// The SDK does not say what registering an existing name does; we refuse it (error and
// NULL), except for a name whose provider unregistered it: that handle comes back to
// life, so plug-ins that cached it keep working.
XPLM_API XPLMDataRef XPLMRegisterDataAccessor(
    const char* inDataName, XPLMDataTypeID inDataType, int inIsWritable,
    XPLMGetDatai_f inReadInt, XPLMSetDatai_f inWriteInt,
    XPLMGetDataf_f inReadFloat, XPLMSetDataf_f inWriteFloat,
    XPLMGetDatad_f inReadDouble, XPLMSetDatad_f inWriteDouble,
    XPLMGetDatavi_f inReadIntArray, XPLMSetDatavi_f inWriteIntArray,
    XPLMGetDatavf_f inReadFloatArray, XPLMSetDatavf_f inWriteFloatArray,
    XPLMGetDatab_f inReadData, XPLMSetDatab_f inWriteData,
    void* inReadRefcon, void* inWriteRefcon) {
    if (!inDataName || !*inDataName) {
        Host::get().reportError("XPLMRegisterDataAccessor: no dataref name");
        return nullptr;
    }
    loadSimulatorDataRefs();
    DataRefTable& table = dataRefTable();
    DataAccessors accessors{inReadInt, inWriteInt, inReadFloat, inWriteFloat,
                            inReadDouble, inWriteDouble, inReadIntArray, inWriteIntArray,
                            inReadFloatArray, inWriteFloatArray, inReadData, inWriteData,
                            inReadRefcon, inWriteRefcon};
    XPLMDataRef handle = nullptr;
    DataRef* ref = nullptr;
    auto it = table.byName.find(inDataName);
    if (it != table.byName.end()) {
        handle = it->second;
        ref = table.refs.get(handle);
        if (ref->live || ref->provider != DataRefProvider::Accessor) {
            Host::get().reportError("XPLMRegisterDataAccessor: a dataref named %s already exists", inDataName);
            return nullptr;
        }
    } else {
        DataRef fresh;
        fresh.name = inDataName;
        fresh.provider = DataRefProvider::Accessor;
        handle = table.refs.add(std::move(fresh));
        table.byName.emplace(inDataName, handle);
        ref = table.refs.get(handle);
    }
    ref->types = inDataType;
    ref->writable = inIsWritable != 0;
    ref->live = true;
    ref->plugin = Host::get().currentPlugin;
    ref->accessors = accessors;
    return handle;
}

XPLM_API void XPLMUnregisterDataAccessor(XPLMDataRef inDataRef) {
    DataRef* ref = dataRefTable().refs.get(inDataRef);
    if (!ref || ref->provider != DataRefProvider::Accessor || !ref->live) {
        Host::get().reportError("XPLMUnregisterDataAccessor: %p is not a registered accessor dataref",
                                inDataRef);
        return;
    }
    if (ref->plugin != Host::get().currentPlugin) {
        Host::get().reportError("XPLMUnregisterDataAccessor: %s belongs to plug-in %d", ref->name.c_str(),
                                ref->plugin);
        return;
    }
    ref->live = false;
    ref->accessors = DataAccessors{};
}

// --- shared data ---

XPLM_API int XPLMShareData(const char* inDataName, XPLMDataTypeID inDataType,
                           XPLMDataChanged_f inNotificationFunc, void* inNotificationRefcon) {
    if (!validShareArguments("XPLMShareData", inDataName, inDataType)) return 0;
    loadSimulatorDataRefs();
    DataRefTable& table = dataRefTable();
    DataRef* ref = nullptr;
    auto it = table.byName.find(inDataName);
    if (it != table.byName.end()) {
        ref = table.refs.get(it->second);
        // A simulator or accessor dataref of that name is a conflict like a different type.
        if (ref->provider != DataRefProvider::Shared || ref->types != inDataType) return 0;
    } else {
        DataRef fresh;
        fresh.name = inDataName;
        fresh.provider = DataRefProvider::Shared;
        fresh.types = inDataType;
        fresh.writable = true;
        XPLMDataRef handle = table.refs.add(std::move(fresh));
        table.byName.emplace(inDataName, handle);
        ref = table.refs.get(handle);
    }
    ref->sharers.push_back(
        DataSharer{table.nextSharerId++, Host::get().currentPlugin, inNotificationFunc, inNotificationRefcon});
    return 1;
}

// The SDK does not document the result; we answer 1 when a matching share of this
// plug-in was removed, 0 otherwise. The storage stays for the other sharers.
XPLM_API int XPLMUnshareData(const char* inDataName, XPLMDataTypeID inDataType,
                             XPLMDataChanged_f inNotificationFunc, void* inNotificationRefcon) {
    if (!validShareArguments("XPLMUnshareData", inDataName, inDataType)) return 0;
    XPLMDataRef handle = findLive(inDataName);
    DataRef* ref = handle ? dataRefTable().refs.get(handle) : nullptr;
    if (!ref || ref->provider != DataRefProvider::Shared || ref->types != inDataType) return 0;
    const int plugin = Host::get().currentPlugin;
    auto match = std::find_if(ref->sharers.begin(), ref->sharers.end(), [&](const DataSharer& s) {
        return s.plugin == plugin && s.notify == inNotificationFunc && s.refcon == inNotificationRefcon;
    });
    if (match == ref->sharers.end()) return 0;
    ref->sharers.erase(match);
    return 1;
}

// --- the driver's text access ---

namespace xpsim {
namespace {

template <class T>
std::string formatNumber(T value) {
    char text[64];
    auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

template <class T>
std::string joinNumbers(const std::vector<T>& values) {
    std::string text;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i) text += ',';
        text += formatNumber(values[i]);
    }
    return text;
}

bool parseNumbers(const std::string& text, bool integers, std::vector<double>* values, std::string* error) {
    size_t start = 0;
    while (true) {
        size_t comma = text.find(',', start);
        std::string item = text.substr(start, comma == std::string::npos ? std::string::npos : comma - start);
        const char* begin = item.c_str();
        char* end = nullptr;
        double v = std::strtod(begin, &end);
        while (end && (*end == ' ' || *end == '\t')) ++end;
        if (end == begin || *end != '\0' || !std::isfinite(v)) {
            if (error) *error = "'" + item + "' is not a number";
            return false;
        }
        if (integers && (v < INT_MIN || v > INT_MAX)) {
            if (error) *error = "'" + item + "' is out of the range of an int";
            return false;
        }
        values->push_back(v);
        if (comma == std::string::npos) return true;
        start = comma + 1;
    }
}

// The element count of an array or byte dataref, as a plug-in's size query sees it.
template <class T, class Read>
std::vector<T> readAll(XPLMDataRef handle, Read read, const char* function) {
    int n = std::clamp(read(handle, nullptr, 0, 0, function), 0, kMaxDriverElements);
    std::vector<T> values(n);
    values.resize(std::clamp(read(handle, values.data(), 0, n, function), 0, n));
    return values;
}

}  // namespace

namespace driver {

bool getDataref(const std::string& name, std::string* value, std::string* error) {
    XPLMDataRef handle = findLive(name.c_str());
    if (!handle) {
        if (error) *error = "no dataref named " + name;
        return false;
    }
    const XPLMDataTypeID types = dataRefTable().refs.get(handle)->types;
    std::string text;
    if (types & xplmType_Double) text = formatNumber(readDouble(handle, "getDataref"));
    else if (types & xplmType_Float) text = formatNumber(readFloat(handle, "getDataref"));
    else if (types & xplmType_Int) text = std::to_string(readInt(handle, "getDataref"));
    else if (types & xplmType_FloatArray) text = joinNumbers(readAll<float>(handle, readFloats, "getDataref"));
    else if (types & xplmType_IntArray) text = joinNumbers(readAll<int>(handle, readInts, "getDataref"));
    else if (types & xplmType_Data) {
        std::vector<uint8_t> bytes = readAll<uint8_t>(handle, readBytes, "getDataref");
        text.assign(bytes.begin(), std::find(bytes.begin(), bytes.end(), uint8_t(0)));
    } else {
        if (error) *error = name + " has no type the driver can read";
        return false;
    }
    if (value) *value = text;
    return true;
}

// The simulator may set its own read-only datarefs; a plug-in's dataref takes the
// value only when its provider made it writable and is enabled (else an error). Byte
// blocks take the text, padded with NULs to the block's size.
bool setDataref(const std::string& name, const std::string& value, std::string* error) {
    XPLMDataRef handle = findLive(name.c_str());
    if (!handle) {
        if (error) *error = "no dataref named " + name;
        return false;
    }
    DataRef* ref = dataRefTable().refs.get(handle);
    const XPLMDataTypeID types = ref->types;
    const bool fromPlugin = ref->provider == DataRefProvider::Accessor;
    if (fromPlugin && (!ref->writable || !isPluginEnabled(ref->plugin))) {
        if (error) {
            *error = name + (ref->writable ? " belongs to a disabled plug-in" : " is read-only") + " (plug-in " +
                     std::to_string(ref->plugin) + ")";
        }
        return false;
    }
    if (types & xplmType_Data && !(types & (xplmType_Double | xplmType_Float | xplmType_Int))) {
        size_t size = static_cast<size_t>(std::max(0, readBytes(handle, nullptr, 0, 0, "setDataref")));
        if (ref->provider == DataRefProvider::Simulator && value.size() > size) {
            if (error) *error = name + " holds " + std::to_string(size) + " bytes, the text has " +
                                std::to_string(value.size());
            return false;
        }
        std::string block = value;
        if (block.size() < size) block.resize(size, '\0');
        writeBytes(handle, ref, reinterpret_cast<const uint8_t*>(block.data()), 0, static_cast<int>(block.size()),
                   Writer::Simulator, "setDataref");
        return true;
    }
    std::vector<double> numbers;
    const bool integers = !(types & (xplmType_Double | xplmType_Float | xplmType_FloatArray));
    if (!parseNumbers(value, integers, &numbers, error)) return false;
    const bool scalar = types & (xplmType_Double | xplmType_Float | xplmType_Int);
    if (scalar && numbers.size() != 1) {
        if (error) *error = name + " takes one value";
        return false;
    }
    if (types & xplmType_Double) writeDouble(handle, ref, numbers[0], Writer::Simulator);
    else if (types & xplmType_Float) writeFloat(handle, ref, static_cast<float>(numbers[0]), Writer::Simulator);
    else if (types & xplmType_Int) writeInt(handle, ref, static_cast<int>(numbers[0]), Writer::Simulator);
    else if (types & (xplmType_FloatArray | xplmType_IntArray)) {
        const bool floats = types & xplmType_FloatArray;
        size_t size = fromPlugin ? numbers.size() : (floats ? ref->floats.size() : ref->ints.size());
        if (numbers.size() > size && ref->provider == DataRefProvider::Simulator) {
            if (error) *error = name + " has " + std::to_string(size) + " elements";
            return false;
        }
        const int count = static_cast<int>(numbers.size());
        if (floats) {
            std::vector<float> values(numbers.begin(), numbers.end());
            writeFloats(handle, ref, values.data(), 0, count, Writer::Simulator, "setDataref");
        } else {
            std::vector<int> values(numbers.begin(), numbers.end());
            writeInts(handle, ref, values.data(), 0, count, Writer::Simulator, "setDataref");
        }
    } else {
        if (error) *error = name + " has no type the driver can write";
        return false;
    }
    return true;
}

}  // namespace driver
}  // namespace xpsim
