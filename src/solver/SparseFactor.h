#pragma once

#include <memory>
#include <vector>

#include "solver/BlockJacobian.h"

namespace VELMORA_SOLVER {

/// Complete factorisation of the Newton matrix I - gamma J with exchange of rows and an ordering that keeps
/// the fill small (KLU of SuiteSparse with approximate minimum degree; Davis and Palamadai Natarajan, 2010).
class SparseFactor {
 public:
  /// The pattern must live as long as this object.
  /// @throws std::bad_alloc
  explicit SparseFactor(const JacobianPattern& pattern);
  ~SparseFactor();
  SparseFactor(const SparseFactor&) = delete;
  SparseFactor& operator=(const SparseFactor&) = delete;

  /// @return false when the matrix is singular or memory runs out
  bool factorise(const BlockJacobian& jacobian, double gamma);

  /// Replaces b by the solution x of (I - gamma J) x = b.
  void solve(double* b);

 private:
  struct Workspace;

  void buildColumns();
  void fillValues(const BlockJacobian& jacobian, double gamma);

  const JacobianPattern& pattern_;
  std::vector<int> columnStart_;     ///< of each unknown
  std::vector<int> row_;             ///< of each entry
  std::vector<std::size_t> source_;  ///< of each entry: its position among the values of the Jacobian
  std::vector<double> values_;
  std::unique_ptr<Workspace> workspace_;
};

}  // namespace VELMORA_SOLVER
