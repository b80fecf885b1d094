// The simulator's own motion of its datarefs: the clock, and the user's aircraft. As in
// X-Plane, local x/y/z and psi/theta/phi are what plug-ins write to move it; latitude,
// longitude, elevation, heights, headings and the quaternion follow from them.

#include <cmath>

#include "DataRefTable.h"
#include "dataaccess_internal.h"
#include "host.h"
#include "world.h"

namespace xpsim {
namespace {

constexpr double kDaySeconds = 24 * 3600.0;
constexpr double kStartZuluSeconds = 18 * 3600.0;    // 18:00 Z
constexpr double kLocalOffsetSeconds = -8 * 3600.0;  // the airport's time zone
// Wheels on the runway: the reference point sits at most this far above the terrain.
constexpr double kOnGroundMeters = 0.5;

enum Ref {
    RunningTime, FlightTime, ZuluTime, LocalTime,
    LocalX, LocalY, LocalZ, Latitude, Longitude, Elevation, HeightAgl, OnGroundAny, OnGroundAll,
    Theta, Phi, Psi, TrueTheta, TruePhi, TruePsi, MagPsi, MagPsiToo, Hpath, Quaternion,
    RefCount
};
constexpr const char* kRefNames[RefCount] = {
    "sim/time/total_running_time_sec", "sim/time/total_flight_time_sec",
    "sim/time/zulu_time_sec", "sim/time/local_time_sec",
    "sim/flightmodel/position/local_x", "sim/flightmodel/position/local_y",
    "sim/flightmodel/position/local_z", "sim/flightmodel/position/latitude",
    "sim/flightmodel/position/longitude", "sim/flightmodel/position/elevation",
    "sim/flightmodel/position/y_agl", "sim/flightmodel/failures/onground_any",
    "sim/flightmodel/failures/onground_all", "sim/flightmodel/position/theta",
    "sim/flightmodel/position/phi", "sim/flightmodel/position/psi",
    "sim/flightmodel/position/true_theta", "sim/flightmodel/position/true_phi",
    "sim/flightmodel/position/true_psi", "sim/flightmodel/position/magpsi",
    "sim/flightmodel/position/mag_psi", "sim/flightmodel/position/hpath",
    "sim/flightmodel/position/q",
};

// The flight model's datarefs; resolve() is false when the simulator's datarefs lack
// one of them.
SimulatorDataRefs modelRefs(kRefNames);

// X-Plane's attitude quaternion from heading, pitch and roll (degrees).
void attitudeQuaternion(double psi, double theta, double phi, std::vector<float>& q) {
    const double toHalfRadians = world::kPi / 360.0;
    const double cy = std::cos(psi * toHalfRadians), sy = std::sin(psi * toHalfRadians);
    const double cp = std::cos(theta * toHalfRadians), sp = std::sin(theta * toHalfRadians);
    const double cr = std::cos(phi * toHalfRadians), sr = std::sin(phi * toHalfRadians);
    q.assign({static_cast<float>(cy * cp * cr + sy * sp * sr), static_cast<float>(cy * cp * sr - sy * sp * cr),
              static_cast<float>(cy * sp * cr + sy * cp * sr), static_cast<float>(-cy * sp * sr + sy * cp * cr)});
}

// There is no magnetic variation and no motion in this world: magnetic heading and
// track equal the true heading.
void derivePosition(DataRef* (&r)[RefCount]) {
    double lat, lon, elevation;
    world::localToWorld(r[LocalX]->scalar, r[LocalY]->scalar, r[LocalZ]->scalar, &lat, &lon, &elevation);
    r[Latitude]->scalar = lat;
    r[Longitude]->scalar = lon;
    r[Elevation]->scalar = elevation;
    const double agl = elevation - world::terrainElevation(lat, lon);
    r[HeightAgl]->scalar = agl;
    r[OnGroundAny]->scalar = r[OnGroundAll]->scalar = agl <= kOnGroundMeters ? 1 : 0;
    r[TrueTheta]->scalar = r[Theta]->scalar;
    r[TruePhi]->scalar = r[Phi]->scalar;
    for (Ref heading : {TruePsi, MagPsi, MagPsiToo, Hpath}) r[heading]->scalar = r[Psi]->scalar;
    attitudeQuaternion(r[Psi]->scalar, r[Theta]->scalar, r[Phi]->scalar, r[Quaternion]->floats);
}

}  // namespace

AircraftPose userAircraftPose() {
    DataRef* r[RefCount];
    if (!modelRefs.resolve(r)) return AircraftPose{};
    return AircraftPose{r[Latitude]->scalar, r[Longitude]->scalar, r[Elevation]->scalar, r[Psi]->scalar};
}

void placeUserAircraft(const AircraftPose& pose) {
    DataRef* r[RefCount];
    if (!modelRefs.resolve(r)) return;
    world::worldToLocal(pose.lat, pose.lon, pose.elevationM, &r[LocalX]->scalar, &r[LocalY]->scalar,
                        &r[LocalZ]->scalar);
    r[Psi]->scalar = static_cast<float>(pose.headingDeg);
    r[Theta]->scalar = r[Phi]->scalar = 0.0;
    derivePosition(r);
}

void startFlightModel() {
    DataRef* r[RefCount];
    if (!modelRefs.resolve(r)) {
        Host::get().log("xpsim: datarefs.tsv lacks a dataref of the flight model");
        return;
    }
    r[ZuluTime]->scalar = kStartZuluSeconds;
    r[LocalTime]->scalar = kStartZuluSeconds + kLocalOffsetSeconds;
    placeUserAircraft(AircraftPose{world::kAirportLat, world::kAirportLon, world::kAirportElevationM,
                                   world::kAircraftHeadingDeg});
}

// Kept in double precision: float steps of 1/60 s would drift by seconds a day. Zulu
// time runs on from whatever a plug-in set it to; local time follows it.
void flightModelStep() {
    DataRef* r[RefCount];
    if (!modelRefs.resolve(r)) return;
    const Host& host = Host::get();
    r[RunningTime]->scalar = host.elapsedSeconds;
    r[FlightTime]->scalar += host.frameSeconds();
    r[ZuluTime]->scalar = std::fmod(r[ZuluTime]->scalar + host.frameSeconds(), kDaySeconds);
    r[LocalTime]->scalar = std::fmod(r[ZuluTime]->scalar + kLocalOffsetSeconds + kDaySeconds, kDaySeconds);
    derivePosition(r);
}

}  // namespace xpsim
