#pragma once

#include <array>
#include <string>

#include "foundation/Parameter.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// Orientation and position of the building element that a boundary condition belongs to. Sun and rain models
/// need them.
class VelWallData {
 public:
  /// Indices of `para`, those of the keywords of "VelWallData::para_t".
  enum para_t {
    P_ORIENTATION,  ///< [Rad] compass direction that the wall faces: north 0, clockwise
    P_INCLINATION,  ///< [Rad] of the surface
    P_LATITUDE,     ///< [Rad]
    P_WALLAREA,     ///< [m2]
    P_LONGITUDE,    ///< [Rad]
    P_TIMEZONE,     ///< [s] or [-], see `timeZone`
    NUM_P
  };

  std::string name;
  std::array<TKL::Parameter, NUM_P> para;
  bool used = false;  ///< some used boundary condition refers to it

  /// Reads the lines of one `WALL_DATA` block. An unknown keyword is warned about and skipped.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", "Invalid
  /// parameter value '%1' for keyword '%2'!"
  void read(const SectionText& text);

  /// Orientation 0..2 pi, inclination 0..pi/2 and latitude -pi/2..pi/2 are required. If a longitude is given
  /// it must lie in -pi..pi, and a time zone of -12 h..12 h must go with it.
  /// @throws TKL::Exception of the parameter, its name and " is required" if it is missing
  void checkParameters() const;

  /// Offset of the local time from universal time [s]. The project file gives it as a time or as a plain
  /// number of hours.
  double timeZone() const;
};

}  // namespace VELMORA
