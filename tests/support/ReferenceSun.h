#pragma once

#include <cmath>
#include <numbers>

namespace VELMORA_TEST {

/// Where the sun stands by the series of J. W. Spencer, Search 2 (1971) 172, and by the components of the
/// unit vector that points to it; day 0 starts the year and true solar noon is at 0.5.
struct ReferenceSun {
  double up = 0.0, east = 0.0, north = 0.0;

  /// @param latitude [Deg]
  ReferenceSun(double latitude, double day) {
    const double g = 2.0 * std::numbers::pi * (day - 0.5) / 365.0;
    const double declination = 0.006918 - 0.399912 * std::cos(g) + 0.070257 * std::sin(g) -
                               0.006758 * std::cos(2.0 * g) + 0.000907 * std::sin(2.0 * g) -
                               0.002697 * std::cos(3.0 * g) + 0.00148 * std::sin(3.0 * g);
    const double hour = 2.0 * std::numbers::pi * (day - std::floor(day) - 0.5);
    const double lat = latitude * DEGREE;
    up = std::sin(declination) * std::sin(lat) + std::cos(declination) * std::cos(lat) * std::cos(hour);
    east = -std::cos(declination) * std::sin(hour);
    north = std::sin(declination) * std::cos(lat) - std::cos(declination) * std::sin(lat) * std::cos(hour);
  }

  /// Direct radiation on a surface over that on the horizontal plane; all angles in degrees.
  double ratio(double inclination, double orientation) const {
    const double b = inclination * DEGREE, o = orientation * DEGREE;
    const double incidence = up * std::cos(b) + std::sin(b) * (east * std::sin(o) + north * std::cos(o));
    return std::fmin(std::fmax(incidence / up, 0.0), 5.0);
  }

  /// Equation of time [min] by the series of the same author.
  static double equationOfTime(double day) {
    const double g = 2.0 * std::numbers::pi * day / 365.0;
    return 229.18 * (0.000075 + 0.001868 * std::cos(g) - 0.032077 * std::sin(g) -
                     0.014615 * std::cos(2.0 * g) - 0.040849 * std::sin(2.0 * g));
  }

 private:
  static constexpr double DEGREE = std::numbers::pi / 180.0;
};

}  // namespace VELMORA_TEST
