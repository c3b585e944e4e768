#pragma once

#include <cstddef>
#include <vector>

#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "grid/Side.h"
#include "project/VelAssignments.h"
#include "project/VelDisc.h"

namespace VELMORA {

class VelBoundaryCond;
class VelContactCond;

/// All sides of all cells of the grid, used or not, each matrix stored row by row.
class SideMatrices {
 public:
  SideMatrices() = default;
  /// Sides of a grid of `columns` x `rows` cells, without data.
  SideMatrices(int columns, int rows);

  int columns() const { return columns_; }
  int rows() const { return rows_; }

  /// The side above the cell (i, j), j up to the number of rows; null outside the grid.
  Side* horizontalAt(int i, int j);
  /// The side to the left of the cell (i, j), i up to the number of columns; null outside the grid.
  Side* verticalAt(int i, int j);

  std::vector<Side> horizontal;  ///< `columns` x `rows + 1`
  std::vector<Side> vertical;    ///< `columns + 1` x `rows`

 private:
  int columns_ = 0;
  int rows_ = 0;
};

/// Position, size, neighbours, weights and distances of the sides between the rows.
/// @throws TKL::Exception "Invalid element dimensions would cause division by 0!"
void setHorizontalSides(const VelDisc& disc, const IndexMatrix& indexMatrix, std::vector<Element>& elements,
                        SideMatrices& sides);
/// The same for the sides between the columns.
void setVerticalSides(const VelDisc& disc, const IndexMatrix& indexMatrix, std::vector<Element>& elements,
                      SideMatrices& sides);

/// Hangs the boundary conditions on the edges of the rectangles that they are assigned to, whatever cells
/// lie there.
/// @throws TKL::Exception "Boundary condition '...' is not defined!"
void assign_bc(const VelAssignments& assignments, std::vector<VelBoundaryCond>& boundaryConds,
               SideMatrices& sides);

/// The same for contact conditions.
/// @throws TKL::Exception "Contact condition '...' is not defined!"
void assign_kc(const VelAssignments& assignments, std::vector<VelContactCond>& contactConds,
               SideMatrices& sides);

}  // namespace VELMORA
