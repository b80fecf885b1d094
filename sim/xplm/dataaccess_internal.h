// What the other areas of the host ask of the datarefs: the simulator's own per-frame
// step and the user's aircraft, whose position the datarefs hold (DataRefFlightModel.cpp).
#pragma once

namespace xpsim {

// Where the user's aircraft is: latitude, longitude (degrees), elevation (m above the
// ellipsoid) and true heading (degrees).
struct AircraftPose {
    double lat = 0.0;
    double lon = 0.0;
    double elevationM = 0.0;
    double headingDeg = 0.0;
};

// From the position datarefs, as a plug-in would read them.
AircraftPose userAircraftPose();
// Moves the user's aircraft (level, at rest) and updates every position dataref
// (local x/y/z, lat/lon, elevation, heights, headings, the attitude quaternion).
void placeUserAircraft(const AircraftPose& pose);

// The simulator's own per-frame change of its datarefs, the "flight model" step:
// advances the sim/time datarefs by one frame and derives latitude, longitude,
// elevation, headings and the quaternion from local x/y/z and psi/theta/phi, which
// plug-ins may write. Processing.cpp runs it between the before- and
// after-flight-model flight loops.
void flightModelStep();

}  // namespace xpsim
