#pragma once

#include <vector>

#include "solver/BlockJacobian.h"

namespace VELMORA_SOLVER {

/// Replaces a matrix of n x n, row by row, by its inverse; n from 1 to 4.
/// @return false when it is singular or so badly scaled that its inverse is of no use
bool invertBlock(std::size_t n, double* matrix);

/// Incomplete factorisation of the Newton matrix I - gamma J in blocks, without fill outside its pattern
/// (ILU(0); Meijerink and van der Vorst, 1977), rows in the order of the cells. On a chain of cells there is
/// no fill, and the factorisation is exact.
///
/// Rows are exchanged inside the diagonal blocks only.
class BlockFactor {
 public:
  /// The pattern must live as long as this object.
  explicit BlockFactor(const JacobianPattern& pattern);

  /// @return false when a diagonal block is singular or so badly scaled that its inverse is of no use
  bool factorise(const BlockJacobian& jacobian, double gamma);

  /// Replaces b by the solution x of L U x = b.
  void solve(double* b) const;

 private:
  template <std::size_t N>
  bool factoriseBlocks();
  template <std::size_t N>
  void solveBlocks(double* b) const;

  const JacobianPattern& pattern_;
  std::vector<double> values_;  ///< factors; on the diagonal the inverse of the block
};

}  // namespace VELMORA_SOLVER
