// The navigation database: navaids read from <root>/Resources/default data/xpsim_navaids.txt
// (or a built-in set around the world's airport), grouped by type, indexed by XPLMNavRef.
#pragma once

#include <string>
#include <vector>

namespace xpsim {

struct NavAid {
    int type = 0;           // one XPLMNavType bit
    double lat = 0.0;
    double lon = 0.0;
    float heightM = 0.0f;   // elevation above sea level, metres
    int frequency = 0;      // nav.dat convention: NDB in kHz, others MHz x 100; 0 = none
    float heading = 0.0f;   // degrees true (localizer course and the like)
    std::string id;         // at most kMaxNavIdLength characters
    std::string name;       // at most kMaxNavNameLength characters
};

// The shortest buffers the SDK lets a plug-in pass for the ID and the name, minus the NUL.
inline constexpr size_t kMaxNavIdLength = 5;
inline constexpr size_t kMaxNavNameLength = 40;

// The database, loaded on first use after a reset. Ref n is element n.
const std::vector<NavAid>& navaids();
const NavAid* navAid(int ref);  // null when ref is not a valid XPLMNavRef
// The airport whose identifier is `id` (exact, case-insensitive), or -1.
int findAirport(const std::string& id);

// Parses the text format described in nav_database.cpp; lines that do not parse are
// logged with `source` and skipped.
std::vector<NavAid> parseNavAids(const std::string& text, const std::string& source);

void resetNavDatabase();

}  // namespace xpsim
