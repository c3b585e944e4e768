#pragma once

#include <memory>
#include <vector>

#include "solver/BlockFactor.h"
#include "solver/BlockJacobian.h"
#include "solver/SparseFactor.h"

namespace VELMORA_SOLVER {

/// The matrix I - gamma J of the integrator's Newton iteration with its factors.
class NewtonMatrix {
 public:
  enum class Factors {
    BLOCKS,      ///< complete, in blocks
    INCOMPLETE,  ///< in blocks, without fill: rough on a grid
    SPARSE       ///< complete, with exchange of rows
  };

  NewtonMatrix(JacobianPattern pattern, Factors factors);
  NewtonMatrix(const NewtonMatrix&) = delete;
  NewtonMatrix& operator=(const NewtonMatrix&) = delete;

  /// Takes the matrix for `gamma` [s] and factorises it. Where the blocks cannot be factorised without
  /// exchange of their rows, complete factors take over for good, with a warning.
  /// @return false when the matrix is singular
  bool factorise(double gamma);

  /// Replaces b by x with F x = b for the factors F.
  void solve(double* b);

  /// product = (I - gamma J) v
  void multiply(const double* v, double* product) const;

  /// Shifts all cells of an approximate solution x of (I - gamma J) x = b alike, one amount for each
  /// equation, such that the residual, weighted by the volumes, vanishes in total. A sealed construction
  /// thereby keeps its energy and mass to rounding, however roughly the iteration has solved the rest.
  void balance(const double* b, double* x);

  /// Whether `solve` is exact.
  bool isExact() const { return sparse_ != nullptr || blocks_->isComplete(); }

 private:
  std::vector<double> totals(const double* v) const;
  void prepareBalance();

  const JacobianPattern pattern_;
  std::unique_ptr<BlockFactor> blocks_;
  std::unique_ptr<SparseFactor> sparse_;
  double gamma_ = 0.0;
  std::vector<double> work_;  ///< as long as the system
  std::vector<double>
      inverseTotals_;  ///< from totals of the residual to the shifts; empty where there are none

 public:
  BlockJacobian jacobian;  ///< to be evaluated before `factorise`; behind the pattern, which it refers to
};

}  // namespace VELMORA_SOLVER
