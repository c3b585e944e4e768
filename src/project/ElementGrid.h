#pragma once

#include <vector>

#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "project/VelAssignments.h"
#include "project/VelDisc.h"

namespace VELMORA {

/// Cells that a material is assigned to get the number 1. A later assignment overrides an earlier one, so
/// that the material `VOID` cuts holes.
void selectUsedCells(const VelAssignments& assignments, IndexMatrix& indexMatrix);

/// How the elements are numbered: across the short side of the construction, which keeps the numbers of
/// neighbours close to each other and so the band of the Jacobian matrix narrow.
struct Numbering {
  int bandWidth = 0;     ///< largest difference of the numbers of two neighbours
  bool rowWise = false;  ///< along the rows
};

/// Replaces the marks of used cells by element numbers and makes one element for each of them, with its
/// number and its place in the grid.
Numbering numberElements(IndexMatrix& indexMatrix, std::vector<Element>& elements);

/// Sets sizes, centre and volume of each element. The x of an element counts the used cells to its left
/// only; the y counts all rows below it.
/// @throws TKL::Exception "Invalid dimensions for element %1,%2 !", "Error in numbering algorithm!"
void setElementGeometry(const VelDisc& disc, const IndexMatrix& indexMatrix, std::vector<Element>& elements);

}  // namespace VELMORA
