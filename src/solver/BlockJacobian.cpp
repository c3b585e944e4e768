#include "solver/BlockJacobian.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace VELMORA_SOLVER {

using index_t = JacobianPattern::index_t;

BlockJacobian::BlockJacobian(const JacobianPattern& pattern)
    : pattern_(pattern),
      values_(pattern.nBlocks() * pattern.blockSize * pattern.blockSize),
      y_(pattern.nUnknowns()),
      rates_(pattern.nUnknowns()),
      increment_(pattern.nUnknowns()) {}

int BlockJacobian::evaluate(const Rates& rates, const double* y, const double* f, const double* errorWeights,
                            double smallest, const Turner& turn) {
  const double root = std::sqrt(std::numeric_limits<double>::epsilon());
  for (std::size_t i = 0; i < y_.size(); ++i) {
    y_[i] = y[i];
    increment_[i] = std::max(root * std::fabs(y[i]), smallest / errorWeights[i]);
  }
  if (turn) turn(increment_);
  const std::size_t n = pattern_.blockSize;
  for (const std::vector<index_t>& group : pattern_.groups)
    for (std::size_t equation = 0; equation < n; ++equation) {
      for (const index_t cell : group) y_[cell * n + equation] += increment_[cell * n + equation];
      if (const int code = rates(y_.data(), rates_.data()); code != 0) return code;
      for (const index_t cell : group) y_[cell * n + equation] = y[cell * n + equation];
      takeQuotients(group, equation, f);
    }
  return 0;
}

/// What the perturbation of one equation in the cells of a group has changed: their columns of the Jacobian.
void BlockJacobian::takeQuotients(const std::vector<index_t>& group, std::size_t equation, const double* f) {
  const std::size_t n = pattern_.blockSize;
  for (const index_t cell : group) {
    const double inverse = 1.0 / increment_[cell * n + equation];
    for (index_t p = pattern_.rowStart[cell]; p < pattern_.rowStart[cell + 1]; ++p) {
      const std::size_t row = pattern_.column[p] * n;
      double* block = values_.data() + pattern_.mirror[p] * n * n;
      for (std::size_t i = 0; i < n; ++i) block[i * n + equation] = (rates_[row + i] - f[row + i]) * inverse;
    }
  }
}

void BlockJacobian::multiply(const double* v, double* product) const {
  const std::size_t n = pattern_.blockSize;
  for (std::size_t row = 0; row < pattern_.nCells; ++row) {
    double* sum = product + row * n;
    std::fill_n(sum, n, 0.0);
    for (index_t p = pattern_.rowStart[row]; p < pattern_.rowStart[row + 1]; ++p) {
      const double* values = block(p);
      const double* x = v + pattern_.column[p] * n;
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t k = 0; k < n; ++k) sum[i] += values[i * n + k] * x[k];
    }
  }
}

}  // namespace VELMORA_SOLVER
