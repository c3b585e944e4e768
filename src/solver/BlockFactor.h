#pragma once

#include <vector>

#include "solver/BlockJacobian.h"
#include "solver/FactorPattern.h"

namespace VELMORA_SOLVER {

/// Replaces a matrix of n x n, row by row, by its inverse; n from 1 to 4.
/// @return false when it is singular or so badly scaled that its inverse is of no use
bool invertBlock(std::size_t n, double* matrix);

/// Factorisation L U of the Newton matrix I - gamma J in blocks, row by row in the order of a factor pattern.
/// With a complete pattern it is exact; with an incomplete one all fill outside of it is dropped (ILU(0);
/// Meijerink and van der Vorst, 1977).
///
/// Rows are exchanged inside the diagonal blocks only.
class BlockFactor {
 public:
  /// @param pattern of the Jacobian; must live as long as this object
  BlockFactor(const JacobianPattern& pattern, FactorPattern factors);

  /// @return false when a diagonal block is singular or so badly scaled that its inverse is of no use
  bool factorise(const BlockJacobian& jacobian, double gamma);

  /// Replaces b, in the order of the cells, by the solution x of L U x = b.
  void solve(double* b);

  bool isComplete() const { return factors_.isComplete; }

 private:
  using index_t = JacobianPattern::index_t;

  template <std::size_t N>
  bool factoriseBlocks(const BlockJacobian& jacobian, double gamma);
  template <std::size_t N>
  bool eliminateRow(std::size_t row);
  template <std::size_t N>
  void solveBlocks(double* b);

  const JacobianPattern& pattern_;
  const FactorPattern factors_;
  std::vector<double>
      values_;  ///< factors; on the diagonal the inverse of the block; dropped fill at the end
  std::vector<index_t> blockOf_;  ///< of each column in the row that is being eliminated
  std::vector<double> x_;         ///< right-hand side and solution in the order of elimination
};

}  // namespace VELMORA_SOLVER
