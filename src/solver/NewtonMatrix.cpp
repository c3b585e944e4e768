#include "solver/NewtonMatrix.h"

#include <utility>

#include "foundation/Message.h"

namespace VELMORA_SOLVER {

NewtonMatrix::NewtonMatrix(JacobianPattern pattern, Factors factors)
    : pattern_(std::move(pattern)), work_(pattern_.nUnknowns()), jacobian(pattern_) {
  if (factors == Factors::SPARSE)
    sparse_ = std::make_unique<SparseFactor>(pattern_);
  else
    blocks_ = std::make_unique<BlockFactor>(pattern_, factors == Factors::BLOCKS || pattern_.isChain
                                                          ? FactorPattern::complete(pattern_)
                                                          : FactorPattern::incomplete(pattern_));
}

bool NewtonMatrix::factorise(double gamma) {
  const char* const FUNC_ID = "[NewtonMatrix::factorise]";
  gamma_ = gamma;
  if (blocks_ != nullptr) {
    if (blocks_->factorise(jacobian, gamma)) {
      if (!isExact()) prepareBalance();
      return true;
    }
    TKL::message(
        "The linear equations cannot be solved cell by cell here. A slower method that exchanges rows is "
        "used "
        "from now on.\n",
        TKL::MSG_WARNING, FUNC_ID, -1);
    sparse_ = std::make_unique<SparseFactor>(pattern_);
    blocks_.reset();
    inverseTotals_.clear();  // exact factors leave nothing to balance
  }
  return sparse_->factorise(jacobian, gamma);
}

void NewtonMatrix::solve(double* b) {
  if (blocks_ != nullptr)
    blocks_->solve(b);
  else
    sparse_->solve(b);
}

/// Sum over all cells of each equation's value times the volume.
std::vector<double> NewtonMatrix::totals(const double* v) const {
  const std::size_t n = pattern_.blockSize;
  std::vector<double> sums(n, 0.0);
  for (std::size_t cell = 0; cell < pattern_.nCells; ++cell)
    for (std::size_t k = 0; k < n; ++k) sums[k] += pattern_.volume[cell] * v[cell * n + k];
  return sums;
}

/// The totals that a shift of each equation makes, and the inverse of their matrix.
void NewtonMatrix::prepareBalance() {
  const std::size_t n = pattern_.blockSize;
  std::vector<double> shift(pattern_.nUnknowns());
  inverseTotals_.resize(n * n);
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t i = 0; i < shift.size(); ++i) shift[i] = i % n == k ? 1.0 : 0.0;
    multiply(shift.data(), work_.data());
    const std::vector<double> sums = totals(work_.data());
    for (std::size_t i = 0; i < n; ++i) inverseTotals_[i * n + k] = sums[i];
  }
  if (!invertBlock(n, inverseTotals_.data())) inverseTotals_.clear();
}

void NewtonMatrix::balance(const double* b, double* x) {
  if (inverseTotals_.empty()) return;
  const std::size_t n = pattern_.blockSize;
  multiply(x, work_.data());
  for (std::size_t i = 0; i < work_.size(); ++i) work_[i] = b[i] - work_[i];
  const std::vector<double> residual = totals(work_.data());
  std::vector<double> shift(n, 0.0);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t k = 0; k < n; ++k) shift[i] += inverseTotals_[i * n + k] * residual[k];
  for (std::size_t i = 0; i < work_.size(); ++i) x[i] += shift[i % n];
}

void NewtonMatrix::multiply(const double* v, double* product) const {
  jacobian.multiply(v, product);
  for (std::size_t i = 0; i < pattern_.nUnknowns(); ++i) product[i] = v[i] - gamma_ * product[i];
}

}  // namespace VELMORA_SOLVER
