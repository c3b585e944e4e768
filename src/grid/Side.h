#pragma once

#include <array>
#include <vector>

namespace VELMORA {

class VelBoundaryCond;
class VelContactCond;
struct Element;

/// The face between two cells, or between a cell and the outside. Flows are positive from `elementLeft`
/// to `elementRight`; for a horizontal side that is from the element above to the one below.
struct Side {
  int i = -1;               ///< column in its matrix of sides
  int j = -1;               ///< row in its matrix of sides
  int number = -1;          ///< position in the final sides vector
  bool horizontal = false;  ///< lies between a cell and the one above or below it: flux runs along y

  Element* elementLeft = nullptr;   ///< neighbour to the left or above, null at the outside
  Element* elementRight = nullptr;  ///< neighbour to the right or below, null at the outside

  double x = 0.0;            ///< [m] centre, over all columns
  double y = 0.0;            ///< [m] centre, from the bottom of the grid up
  double weightLeft = 0.0;   ///< [-] share of the left element in the sum of the two widths
  double weightRight = 0.0;  ///< [-] share of the right element
  double invDistance = 0.0;  ///< [1/m] 2/(dL+dR) inside, 1/d at the outside
  double area = 0.0;         ///< [m2]

  std::vector<VelBoundaryCond*> boundaryConds;
  std::vector<VelContactCond*> contactConds;
};

/// Values of the contact conditions of one side in the order of `VelContactCond::para_t`.
using SideQuantities = std::array<double, 16>;

}  // namespace VELMORA
