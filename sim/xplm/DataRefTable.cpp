// The simulator's own datarefs: read from the embedded datarefs.tsv, then given start
// values that agree with the world (the aircraft parked at the airport of world.h,
// engines off); everything not listed here starts at zero.

#include "DataRefTable.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "host.h"
#include "tsv.h"
#include "world.h"

namespace xpsim {

extern const char datarefs_tsv[];
extern const std::size_t datarefs_tsv_size;

namespace {

// "float[8]", "int[73][10]", "byte[40]", "double": type bits and element count.
bool parseType(const std::string& text, XPLMDataTypeID* types, size_t* count) {
    size_t bracket = text.find('[');
    std::string base = text.substr(0, bracket);
    size_t n = 1;
    bool isArray = bracket != std::string::npos;
    for (size_t pos = bracket; pos != std::string::npos; pos = text.find('[', pos + 1)) {
        long dim = std::strtol(text.c_str() + pos + 1, nullptr, 10);
        if (dim <= 0) return false;
        n *= static_cast<size_t>(dim);
    }
    *count = n;
    if (base == "int") *types = isArray ? xplmType_IntArray : xplmType_Int;
    else if (base == "float") *types = isArray ? xplmType_FloatArray : xplmType_Float;
    else if (base == "double" && !isArray) *types = xplmType_Double;
    else if (base == "byte" && isArray) *types = xplmType_Data;
    else return false;
    return true;
}

std::string number(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", v);
    return text;
}

// Start values, applied through the same text form as driver::setDataref. Position,
// attitude and clock are the flight model's (DataRefFlightModel.cpp).
struct StartValue {
    const char* name;
    std::string value;
};

std::vector<StartValue> startValues() {
    const Options& options = Host::get().options;
    return {
        {"sim/flightmodel/position/lat_ref", number(world::kAirportLat)},
        {"sim/flightmodel/position/lon_ref", number(world::kAirportLon)},
        {"sim/flightmodel/controls/parkbrake", "1"},
        {"sim/cockpit2/controls/parking_brake_ratio", "1"},
        {"sim/aircraft/engine/acf_num_engines", "1"},
        {"sim/aircraft/view/acf_tailnum", "N172XP"},
        {"sim/aircraft/view/acf_ICAO", "C172"},
        {"sim/aircraft/view/acf_descrip", "Cessna 172SP Skyhawk"},
        {"sim/aircraft/view/acf_author", "xpsim"},
        {"sim/aircraft/weight/acf_m_empty", "743"},
        {"sim/aircraft/weight/acf_m_max", "1157"},
        {"sim/flightmodel/weight/m_fuel", "72,72"},
        {"sim/flightmodel/weight/m_fuel1", "72"},
        {"sim/flightmodel/weight/m_fuel2", "72"},
        {"sim/flightmodel/weight/m_fuel_total", "144"},
        {"sim/flightmodel/weight/m_total", "887"},
        {"sim/cockpit/radios/com1_freq_hz", "11970"},
        {"sim/cockpit/radios/com2_freq_hz", "12160"},
        {"sim/cockpit/radios/nav1_freq_hz", "11080"},
        {"sim/cockpit/radios/nav2_freq_hz", "11600"},
        {"sim/cockpit/radios/transponder_code", "1200"},
        {"sim/weather/barometer_sealevel_inhg", "29.92"},
        {"sim/weather/barometer_current_inhg", number(29.92 - world::kAirportElevationM * 0.0036)},
        {"sim/weather/temperature_sealevel_c", "15"},
        {"sim/time/sim_speed", "1"},
        {"sim/time/sim_speed_actual", "1"},
        {"sim/time/ground_speed", "1"},
        {"sim/time/local_date_days", "79"},  // 21 March, zero-based
        {"sim/graphics/view/window_width", std::to_string(options.screenWidth)},
        {"sim/graphics/view/window_height", std::to_string(options.screenHeight)},
        {"sim/version/sim_build_string", "xpsim " + std::to_string(options.xplaneVersion)},
        {"sim/version/xplm_build_string", "xpsim XPLM " + std::to_string(options.xplmVersion)},
    };
}

}  // namespace

DataRefTable gDataRefTable;

void loadSimulatorDataRefs() {
    DataRefTable& table = dataRefTable();
    if (table.loaded) return;
    table.loaded = true;
    forEachTsvRow(datarefs_tsv, datarefs_tsv_size, [&](const std::vector<std::string_view>& fields) {
        if (fields.size() < 3) return;
        DataRef ref;
        ref.name = fields[0];
        size_t count = 0;
        if (!parseType(std::string(fields[1]), &ref.types, &count)) {
            Host::get().log("xpsim: datarefs.tsv: unknown type for " + ref.name);
            return;
        }
        ref.writable = fields[2] == "y";
        if (ref.types == xplmType_IntArray) ref.ints.assign(count, 0);
        if (ref.types == xplmType_FloatArray) ref.floats.assign(count, 0.0f);
        if (ref.types == xplmType_Data) ref.bytes.assign(count, 0);
        std::string name = ref.name;
        table.byName.emplace(std::move(name), table.refs.add(std::move(ref)));
    });
    for (const StartValue& start : startValues()) {
        std::string error;
        if (!driver::setDataref(start.name, start.value, &error)) {
            Host::get().log("xpsim: start value of " + std::string(start.name) + ": " + error);
        }
    }
    startFlightModel();
}

bool resolveSimulatorDataRefs(const char* const* names, size_t count, void** handles, DataRef** refs) {
    loadSimulatorDataRefs();
    DataRefTable& table = dataRefTable();
    if (!table.refs.contains(handles[0])) {
        for (size_t i = 0; i < count; ++i) {
            auto it = table.byName.find(names[i]);
            handles[i] = it == table.byName.end() ? nullptr : it->second;
        }
    }
    for (size_t i = 0; i < count; ++i) {
        refs[i] = table.refs.get(handles[i]);
        if (!refs[i]) return false;
    }
    return true;
}

}  // namespace xpsim
