#pragma once

#include <vector>

#include "keywords/SectionText.h"
#include "project/VelSelection.h"

namespace VELMORA {

/// A room model that a calling program couples to the construction. This program has none: the type is
/// known by name only.
struct RoomModel;

/// The assignments of a project in file order. The order counts: a later material overrides an earlier one.
class VelAssignments {
 public:
  std::vector<VelSelection> selections;

  RoomModel* roomLeft = nullptr;   ///< hook for a caller that couples a room, not owned
  RoomModel* roomRight = nullptr;  ///< likewise at the right side

  /// Reads the section `ASSIGNMENTS`: blocks that begin with `SELECTION`.
  /// @throws TKL::Exception "Expected keyword, got '%1'!" for a line before the first block
  void read(const SectionText& text);
};

/// Tests that every rectangle is ordered and ends inside a grid of `nx` columns and `ny` rows. A negative
/// start passes: the cells outside the grid are skipped later.
/// @throws TKL::Exception "Invalid range in assignment, range was: %1 %2 %3 %4!"
void check_ranges(int nx, int ny, const VelAssignments& assignments);

}  // namespace VELMORA
