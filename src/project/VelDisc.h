#pragma once

#include "foundation/UnitVector.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// The discretisation of the construction: a rectangular grid given by the widths of its columns and the
/// heights of its rows, row 0 being the top row.
class VelDisc {
 public:
  /// Indices of the keywords of "VelDisc::geometry_t".
  enum geometry_t { G_PLANE2D, G_RSYM, NUM_G };

  geometry_t geometry = G_PLANE2D;
  TKL::UnitVector dx;          ///< [m] column widths
  TKL::UnitVector dy;          ///< [m] row heights, from the top
  TKL::UnitVector dz;          ///< [m] thicknesses, only the first one has any effect
  double thetaZ = 0.0;         ///< [Deg] inclination of the construction
  double pieSliceAngle = 0.0;  ///< kept as read; the full circle is always calculated
  double width = 0.0;          ///< [m] sum of `dx`
  double height = 0.0;         ///< [m] sum of `dy`

  /// Reads the section `DISCRETISATION`.
  /// @throws TKL::Exception for a line that is no keyword line or a value that cannot be read
  void read(const SectionText& text);

  /// [m] thickness of the construction, 1 m if none is given.
  double thickness() const;
};

}  // namespace VELMORA
