#pragma once

#include <cstdint>
#include <vector>

#include "solver/JacobianPattern.h"

namespace VELMORA_SOLVER {

/// Which blocks the factors of a Newton matrix have, row by row in the order of elimination, the columns of a
/// row, in the same order, ascending. First come the blocks left of the diagonal of all rows, then those on
/// it and right of it: the passes of a solution each go through half of them from end to end.
struct FactorPattern {
  using index_t = JacobianPattern::index_t;

  std::vector<index_t> cell;        ///< of each row
  std::vector<index_t> lowerStart;  ///< first block of each row left of the diagonal, at the end their number
  std::vector<index_t> diagonal;    ///< block of each row in its own column, at the end the number of blocks
  std::vector<index_t> column;      ///< of each block
  std::vector<index_t> target;      ///< of each block of the Jacobian: its place among these blocks
  /// Of each row: its columns behind the diagonal are the next row and all columns of that behind its own
  /// diagonal, as in cells that come last. (Bytes, since they are read in the elimination.)
  std::vector<std::uint8_t> isTwin;
  bool isComplete = false;  ///< all fill is there, the factors are exact

  std::size_t nRows() const { return cell.size(); }
  std::size_t nBlocks() const { return column.size(); }

  /// Without any fill: the pattern of the Jacobian itself, in the order of the cells.
  static FactorPattern incomplete(const JacobianPattern& pattern);

  /// With all the fill that the elimination makes, in the order of `eliminationOrder`.
  static FactorPattern complete(const JacobianPattern& pattern);

 private:
  void findTwins();
};

}  // namespace VELMORA_SOLVER
