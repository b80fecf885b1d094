// Where the simulated world is: the airport the user's aircraft is parked at, the
// local OpenGL frame around it and the terrain. Datarefs, graphics conversions,
// navigation and terrain probes all derive from these, so they agree.
#pragma once

#include <cmath>

namespace xpsim::world {

// The user's aircraft is parked at this airport (also in the default navaid set).
inline constexpr const char* kAirportId = "KSEA";
inline constexpr const char* kAirportName = "Seattle Tacoma Intl";
inline constexpr double kAirportLat = 47.4490;
inline constexpr double kAirportLon = -122.3093;
inline constexpr double kAirportElevationM = 131.0;  // 430 ft
inline constexpr double kAircraftHeadingDeg = 180.0;

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kMetersPerDegLat = 111319.49079327357;  // spherical earth, R = 6378137 m

// The local frame: origin on the ellipsoid at the reference point (the airport),
// +x east, +y up, -z north, metres. A flat tangent plane: exact inverses of each other.
inline void worldToLocal(double lat, double lon, double alt, double* x, double* y, double* z) {
    *x = (lon - kAirportLon) * kMetersPerDegLat * std::cos(kAirportLat * kPi / 180.0);
    *y = alt;
    *z = -(lat - kAirportLat) * kMetersPerDegLat;
}
inline void localToWorld(double x, double y, double z, double* lat, double* lon, double* alt) {
    *lat = kAirportLat - z / kMetersPerDegLat;
    *lon = kAirportLon + x / (kMetersPerDegLat * std::cos(kAirportLat * kPi / 180.0));
    *alt = y;
}

// Terrain height above the ellipsoid (m): flat at the airport's elevation within 5 km
// of it, gentle deterministic hills beyond.
inline double terrainElevation(double lat, double lon) {
    double x, y, z;
    worldToLocal(lat, lon, 0.0, &x, &y, &z);
    double d = std::sqrt(x * x + z * z);
    if (d <= 5000.0) return kAirportElevationM;
    double ramp = std::fmin(1.0, (d - 5000.0) / 5000.0);
    return kAirportElevationM + ramp * (150.0 + 120.0 * std::sin(x / 3000.0) * std::cos(z / 4000.0));
}

}  // namespace xpsim::world
