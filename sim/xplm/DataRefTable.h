// The table of datarefs behind XPLMDataAccess: the simulator's own (from datarefs.tsv),
// accessor datarefs published by plug-ins and shared data. Handles are HandleTable
// handles, so every typed read or write is a handle dereference, never a name lookup.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "XPLMDataAccess.h"
#include "handles.h"

namespace xpsim {

enum class DataRefProvider : uint8_t { Simulator, Accessor, Shared };

// A plug-in's accessor callbacks, in the order XPLMRegisterDataAccessor takes them.
struct DataAccessors {
    XPLMGetDatai_f readInt = nullptr;
    XPLMSetDatai_f writeInt = nullptr;
    XPLMGetDataf_f readFloat = nullptr;
    XPLMSetDataf_f writeFloat = nullptr;
    XPLMGetDatad_f readDouble = nullptr;
    XPLMSetDatad_f writeDouble = nullptr;
    XPLMGetDatavi_f readIntArray = nullptr;
    XPLMSetDatavi_f writeIntArray = nullptr;
    XPLMGetDatavf_f readFloatArray = nullptr;
    XPLMSetDatavf_f writeFloatArray = nullptr;
    XPLMGetDatab_f readData = nullptr;
    XPLMSetDatab_f writeData = nullptr;
    void* readRefcon = nullptr;
    void* writeRefcon = nullptr;
};

// One XPLMShareData registration; `id` tells it apart while notifications run.
struct DataSharer {
    uint64_t id = 0;
    int plugin = 0;
    XPLMDataChanged_f notify = nullptr;
    void* refcon = nullptr;
};

struct DataRef {
    std::string name;
    XPLMDataTypeID types = xplmType_Unknown;
    bool writable = false;
    // False once an accessor dataref's provider unregistered it ("orphaned"): reads give 0
    // and writes are ignored, but the handle stays valid for the plug-ins that cached it.
    bool live = true;
    DataRefProvider provider = DataRefProvider::Simulator;
    int plugin = 0;  // the accessor's provider

    // Storage of simulator and shared datarefs. Every scalar type of one dataref reads
    // and writes the same value, held as a double (exact for int and float).
    double scalar = 0.0;
    std::vector<int> ints;
    std::vector<float> floats;
    std::vector<uint8_t> bytes;

    DataAccessors accessors;          // provider == Accessor
    std::vector<DataSharer> sharers;  // provider == Shared
};

struct DataRefTable {
    HandleTable<DataRef> refs{HandleKind::DataRef};
    std::unordered_map<std::string, void*> byName;
    uint64_t nextSharerId = 1;
    bool loaded = false;  // the simulator's own datarefs are in
};

// A plain global, not a function-local static: every dataref read goes through it.
extern DataRefTable gDataRefTable;
inline DataRefTable& dataRefTable() { return gDataRefTable; }
// Puts the simulator's datarefs (datarefs.tsv) with their start values into the table,
// once per run; every name lookup calls it first.
void loadSimulatorDataRefs();
// Resolves `count` simulator datarefs by name into `refs`, through the caller's cache of
// `handles`: looked up again only when the first cached handle no longer resolves, that
// is once per run. False when the simulator's datarefs lack one of the names.
bool resolveSimulatorDataRefs(const char* const* names, size_t count, void** handles, DataRef** refs);

// A fixed list of the simulator's datarefs that the host itself reads and writes, looked
// up by name once per run so that frequent use costs no name lookups.
template <size_t N>
class SimulatorDataRefs {
public:
    constexpr explicit SimulatorDataRefs(const char* const (&names)[N]) : names_(names) {}
    bool resolve(DataRef* (&refs)[N]) { return resolveSimulatorDataRefs(names_, N, handles_, refs); }

private:
    const char* const* names_;
    void* handles_[N] = {};
};

// DataRefFlightModel.cpp: parks the aircraft at the airport and sets the clock, as the
// last step of loading.
void startFlightModel();

}  // namespace xpsim
