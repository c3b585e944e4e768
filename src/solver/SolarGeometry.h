#pragma once

namespace VELMORA_SOLVER {

/// True solar time [s] from the start of the year, of a local clock.
/// @param t          [s] of the clock from the start of the year
/// @param longitude  [Rad], east is positive
/// @param timeZone   [s] offset of the clock from universal time
/// The equation of time is that of M. Iqbal, An Introduction to Solar Radiation, 1983, after Woolf.
double trueSolarTime(double t, double longitude, double timeZone);

/// Day of the year and time of day in its fraction [d], 0 at the start of the year, of a time [s].
double dayOfYear(double t);

/// Ratio of the direct radiation on an inclined surface to that on the horizontal plane, from 0 to 5; 0 with
/// the sun behind the surface or below the horizon.
/// @param inclination  [Rad] of the surface
/// @param orientation  [Rad] that the surface faces: north 0, clockwise
/// @param latitude     [Rad]
/// @param day          [d] in true solar time, see `dayOfYear`
double directRadiationRatio(double inclination, double orientation, double latitude, double day);

}  // namespace VELMORA_SOLVER
