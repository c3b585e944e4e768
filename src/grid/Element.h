#pragma once

#include <vector>

namespace MM {
class Material;
}

namespace VELMORA {

class VelFieldCond;
class VelInitialCond;
struct Side;

/// One used cell of the calculation grid. Pointers are not owned; they lead into vectors that keep their
/// size for as long as the solver lives.
struct Element {
  int i = -1;       ///< column in the grid
  int j = -1;       ///< row in the grid, row 0 is the top row
  int number = -1;  ///< position in the elements vector

  /// Numbers of the elements across a gap in which long wave radiation acts, -1 where there is none.
  int lwPartnerLeft = -1;
  int lwPartnerRight = -1;
  int lwPartnerTop = -1;
  int lwPartnerBottom = -1;

  /// The sides of the cell, null where an outer side carries no boundary condition.
  Side* sideLeft = nullptr;
  Side* sideRight = nullptr;
  Side* sideTop = nullptr;
  Side* sideBottom = nullptr;

  const MM::Material* material = nullptr;

  double dx = -1.0;      ///< [m] width, radial in a rotationally symmetric body
  double dy = -1.0;      ///< [m] height
  double dz = -1.0;      ///< [m] thickness, without a role in a rotationally symmetric body
  double x = -1.0;       ///< [m] centre, from the left edge over the used cells only
  double y = -1.0;       ///< [m] centre, from the bottom of the grid up
  double volume = -1.0;  ///< [m3]

  std::vector<VelInitialCond*> initialConds;
  std::vector<VelFieldCond*> fieldConds;
};

}  // namespace VELMORA
