#include "solver/SolarGeometry.h"

#include <algorithm>
#include <cmath>

namespace VELMORA_SOLVER {

namespace {

constexpr double PI = 3.141592653589793;
constexpr double YEAR = 31536000.0;  // [s]
constexpr double OBLIQUITY = -23.5 * PI / 180.0;
constexpr double LARGEST_RATIO = 5.0;

double inYear(double t) {
  if (t < 0.0) return t + YEAR;
  return t > YEAR ? t - YEAR : t;
}

/// Where the sun stands; all angles by their sine.
struct Sun {
  double sinAltitude = 0.0;
  double cosAltitude = 0.0;
  double sinAzimuth = 0.0;  ///< positive in the east; 0 with the sun in the zenith
  double southSign = 1.0;   ///< -1 with the sun south of due east or west
};

Sun sunAt(double latitude, double day) {
  const double season = (day + 101.25) * 2.0 * PI / 365.0;
  const double declination = OBLIQUITY * std::sin(season);
  const double hour = 2.0 * PI * day;
  const double sd = std::sin(declination), cd = std::cos(declination);
  const double sl = std::sin(latitude), cl = std::cos(latitude);
  Sun sun;
  sun.sinAltitude = sd * sl - cd * cl * std::cos(hour);
  const double h = sun.sinAltitude;
  const double q = std::sqrt(std::max(1.0 - h * h, 0.0));
  sun.cosAltitude = q;
  if (q == 0.0) return sun;
  sun.sinAzimuth = cd * std::sin(hour) / q;
  if (sd - h * sl < 0.0) sun.southSign = -1.0;
  return sun;
}

}  // namespace

double trueSolarTime(double t, double longitude, double timeZone) {
  constexpr double DEGREE = 0.01745329252;  // [Rad]
  const double zone = std::trunc(timeZone / 3600.0);
  double degrees = zone * 15.0 - longitude / DEGREE;
  if (zone == 12.0 || zone == -12.0) {  // across the date line
    if (degrees >= 345.0)
      degrees -= 360.0;
    else if (degrees <= -345.0)
      degrees += 360.0;
  }
  const double mean = inYear(t - 240.0 * degrees);
  const double B = (dayOfYear(mean) - 81.0) * 2.0 * PI / 365.0;
  const double minutes = 9.87 * std::sin(2.0 * B) - 7.53 * std::cos(B) - 1.5 * std::sin(B);
  return inYear(mean + 60.0 * minutes);
}

double dayOfYear(double t) {
  return t / 3600.0 / 24.0 - 365.0 * std::trunc(t / 365.0 / 3600.0 / 24.0);
}

double directRadiationRatio(double inclination, double orientation, double latitude, double day) {
  const Sun sun = sunAt(latitude, day);
  if (sun.sinAltitude < 0.0) return 0.0;
  if (inclination == 0.0 || std::cos(inclination) == 1.0) return 1.0;
  const double cosAzimuth = std::sqrt(std::max(1.0 - sun.sinAzimuth * sun.sinAzimuth, 0.0));
  const double facing =
      sun.southSign * cosAzimuth * std::cos(orientation) + sun.sinAzimuth * std::sin(orientation);
  if (sun.sinAltitude == 0.0) return facing > 0.0 ? LARGEST_RATIO : 0.0;
  const double c = facing / sun.sinAltitude * sun.cosAltitude;
  return std::clamp(std::sin(inclination) * c + std::cos(inclination), 0.0, LARGEST_RATIO);
}

}  // namespace VELMORA_SOLVER
