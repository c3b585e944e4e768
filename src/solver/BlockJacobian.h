#pragma once

#include <functional>
#include <span>
#include <vector>

#include "solver/JacobianPattern.h"

namespace VELMORA_SOLVER {

/// Jacobian of the balance equations by difference quotients, in blocks.
class BlockJacobian {
 public:
  /// Rates at a state. 0 on success, any other code ends the evaluation.
  using Rates = std::function<int(const double* y, double* ydot)>;
  /// Changes the sign of increments that would reach across a jump of the rates.
  using Turner = std::function<void(std::span<double> increments)>;

  explicit BlockJacobian(const JacobianPattern& pattern);

  /// One-sided difference quotients at the state `y` with its rates `f`, all arrays of the length of the
  /// system. Cells that act on no common rate are perturbed together, one equation at a time, so the number
  /// of evaluations is the number of such groups times that of the equations, whatever the size of the grid.
  /// The increments are those of the integrator's own quotients: the square root of the machine precision
  /// times the value, and at least `smallest` times the error weight's reciprocal, forward unless turned.
  /// @return 0, or the code of an evaluation that failed
  int evaluate(const Rates& rates, const double* y, const double* f, const double* errorWeights,
               double smallest, const Turner& turn = {});

  /// product = J v
  void multiply(const double* v, double* product) const;

  const JacobianPattern& pattern() const { return pattern_; }
  /// Values of a block, row by row: blockSize x blockSize.
  const double* block(std::size_t p) const {
    return values_.data() + p * pattern_.blockSize * pattern_.blockSize;
  }

 private:
  void takeQuotients(const std::vector<JacobianPattern::index_t>& group, std::size_t equation,
                     const double* f);

  const JacobianPattern& pattern_;
  std::vector<double> values_;
  std::vector<double> y_;          ///< perturbed state
  std::vector<double> rates_;      ///< at the perturbed state
  std::vector<double> increment_;  ///< of each unknown
};

}  // namespace VELMORA_SOLVER
