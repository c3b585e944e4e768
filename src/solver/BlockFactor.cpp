#include "solver/BlockFactor.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;

constexpr double WORST_CONDITION = 1e14;

#if defined(__GNUC__)
/// Two numbers that are handled by one instruction.
using Pair = double __attribute__((vector_size(16), aligned(8), may_alias));

/// row -= c0 * B[0] + c1 * B[1] for the two rows of a 2 x 2 block B.
inline Pair withoutProduct(Pair row, const double* c, const double* B) {
  const Pair* const rows = reinterpret_cast<const Pair*>(B);
  return row - (Pair{c[0], c[0]} * rows[0] + Pair{c[1], c[1]} * rows[1]);
}
#endif

/// A -= B C, all N x N.
template <std::size_t N>
inline void subtractProduct(double* A, const double* B, const double* C) {
#if defined(__GNUC__)
  if constexpr (N == 2) {
    Pair* const rows = reinterpret_cast<Pair*>(A);
    rows[0] = withoutProduct(rows[0], B, C);
    rows[1] = withoutProduct(rows[1], B + 2, C);
    return;
  }
#endif
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t j = 0; j < N; ++j) {
      double sum = A[i * N + j];
      for (std::size_t k = 0; k < N; ++k) sum -= B[i * N + k] * C[k * N + j];
      A[i * N + j] = sum;
    }
}

/// A -= B[0] C + B[1] D, all N x N.
template <std::size_t N>
inline void subtractProducts(double* A, const double* B, const double* C, const double* D) {
#if defined(__GNUC__)
  if constexpr (N == 2) {
    Pair* const rows = reinterpret_cast<Pair*>(A);
    rows[0] = withoutProduct(withoutProduct(rows[0], B, C), B + 4, D);
    rows[1] = withoutProduct(withoutProduct(rows[1], B + 2, C), B + 6, D);
    return;
  }
#endif
  subtractProduct<N>(A, B, C);
  subtractProduct<N>(A, B + N * N, D);
}

/// A = A B, all N x N.
template <std::size_t N>
void multiplyFromRight(double* A, const double* B) {
  double product[N * N] = {};
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t k = 0; k < N; ++k)
      for (std::size_t j = 0; j < N; ++j) product[i * N + j] += A[i * N + k] * B[k * N + j];
  std::copy_n(product, N * N, A);
}

/// Sum of products A x of blocks with vectors, its terms kept apart until the end: so they are independent of
/// each other.
template <std::size_t N>
class SumOfProducts {
 public:
  void add(const double* A, const double* x) {
#if defined(__GNUC__)
    if constexpr (N == 2) {
      Pair* const terms = reinterpret_cast<Pair*>(terms_);
      const Pair* const rows = reinterpret_cast<const Pair*>(A);
      const Pair factors = *reinterpret_cast<const Pair*>(x);
      terms[0] += rows[0] * factors;
      terms[1] += rows[1] * factors;
      return;
    }
#endif
    for (std::size_t i = 0; i < N; ++i)
      for (std::size_t k = 0; k < N; ++k) terms_[i * N + k] += A[i * N + k] * x[k];
  }

  void subtractFrom(double* y) const {
    for (std::size_t i = 0; i < N; ++i) {
      double sum = 0.0;
      for (std::size_t k = 0; k < N; ++k) sum += terms_[i * N + k];
      y[i] -= sum;
    }
  }

 private:
  double terms_[N * N] = {};
};

template <std::size_t N>
double rowSumNorm(const double* A) {
  double norm = 0.0;
  for (std::size_t i = 0; i < N; ++i) {
    double sum = 0.0;
    for (std::size_t k = 0; k < N; ++k) sum += std::fabs(A[i * N + k]);
    norm = std::max(norm, sum);
  }
  return norm;
}

/// Divides each column of a block, then each row, by its largest entry, which is remembered: energies and
/// masses differ by many orders of magnitude.
template <std::size_t N>
bool equilibrate(double* A, double* rowScale, double* columnScale) {
  for (std::size_t k = 0; k < N; ++k) {
    columnScale[k] = 0.0;
    for (std::size_t i = 0; i < N; ++i) columnScale[k] = std::max(columnScale[k], std::fabs(A[i * N + k]));
    if (!(columnScale[k] > 0.0) || !std::isfinite(columnScale[k])) return false;
    for (std::size_t i = 0; i < N; ++i) A[i * N + k] /= columnScale[k];
  }
  for (std::size_t i = 0; i < N; ++i) {
    rowScale[i] = 0.0;
    for (std::size_t k = 0; k < N; ++k) rowScale[i] = std::max(rowScale[i], std::fabs(A[i * N + k]));
    if (!(rowScale[i] > 0.0)) return false;
    for (std::size_t k = 0; k < N; ++k) A[i * N + k] /= rowScale[i];
  }
  return true;
}

/// Inverse of a block by elimination with exchange of rows (Gauss and Jordan).
template <std::size_t N>
bool invertScaled(double* A) {
  double inverse[N * N] = {};
  for (std::size_t i = 0; i < N; ++i) inverse[i * N + i] = 1.0;
  const double norm = rowSumNorm<N>(A);
  for (std::size_t k = 0; k < N; ++k) {
    std::size_t pivot = k;
    for (std::size_t i = k + 1; i < N; ++i)
      if (std::fabs(A[i * N + k]) > std::fabs(A[pivot * N + k])) pivot = i;
    if (A[pivot * N + k] == 0.0) return false;
    if (pivot != k)
      for (std::size_t j = 0; j < N; ++j) {
        std::swap(A[k * N + j], A[pivot * N + j]);
        std::swap(inverse[k * N + j], inverse[pivot * N + j]);
      }
    const double scale = 1.0 / A[k * N + k];
    for (std::size_t j = 0; j < N; ++j) {
      A[k * N + j] *= scale;
      inverse[k * N + j] *= scale;
    }
    for (std::size_t i = 0; i < N; ++i) {
      const double factor = A[i * N + k];
      if (i == k || factor == 0.0) continue;
      for (std::size_t j = 0; j < N; ++j) {
        A[i * N + j] -= factor * A[k * N + j];
        inverse[i * N + j] -= factor * inverse[k * N + j];
      }
    }
  }
  std::copy_n(inverse, N * N, A);
  return norm * rowSumNorm<N>(A) < WORST_CONDITION;  // false for NaN, too
}

template <std::size_t N>
bool invert(double* A) {
  double rowScale[N];
  double columnScale[N];
  if (!equilibrate<N>(A, rowScale, columnScale) || !invertScaled<N>(A)) return false;
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t k = 0; k < N; ++k) A[i * N + k] /= columnScale[i] * rowScale[k];
  return true;
}

}  // namespace

bool invertBlock(std::size_t n, double* matrix) {
  switch (n) {
    case 1:
      return invert<1>(matrix);
    case 2:
      return invert<2>(matrix);
    case 3:
      return invert<3>(matrix);
    default:
      return invert<4>(matrix);
  }
}

BlockFactor::BlockFactor(const JacobianPattern& pattern, FactorPattern factors)
    : pattern_(pattern),
      factors_(std::move(factors)),
      values_((factors_.nBlocks() + 1) * pattern.blockSize * pattern.blockSize),
      blockOf_(factors_.nRows(), static_cast<index_t>(factors_.nBlocks())),
      x_(pattern.nUnknowns()) {
  if (pattern.blockSize < 1 || pattern.blockSize > 4)
    throw std::invalid_argument("[BlockFactor::BlockFactor] Blocks have one to four equations.");
}

bool BlockFactor::factorise(const BlockJacobian& jacobian, double gamma) {
  switch (pattern_.blockSize) {
    case 1:
      return factoriseBlocks<1>(jacobian, gamma);
    case 2:
      return factoriseBlocks<2>(jacobian, gamma);
    case 3:
      return factoriseBlocks<3>(jacobian, gamma);
    default:
      return factoriseBlocks<4>(jacobian, gamma);
  }
}

void BlockFactor::solve(double* b) {
  switch (pattern_.blockSize) {
    case 1:
      return solveBlocks<1>(b);
    case 2:
      return solveBlocks<2>(b);
    case 3:
      return solveBlocks<3>(b);
    default:
      return solveBlocks<4>(b);
  }
}

template <std::size_t N>
bool BlockFactor::factoriseBlocks(const BlockJacobian& jacobian, double gamma) {
  constexpr std::size_t SIZE = N * N;
  double* values = values_.data();
  std::fill(values_.begin(), values_.end(), 0.0);
  for (std::size_t p = 0; p < pattern_.nBlocks(); ++p) {
    const double* J = jacobian.block(p);
    double* target = values + factors_.target[p] * SIZE;
    for (std::size_t i = 0; i < SIZE; ++i) target[i] = -gamma * J[i];
  }
  for (std::size_t row = 0; row < factors_.nRows(); ++row)
    for (std::size_t i = 0; i < N; ++i) values[factors_.diagonal[row] * SIZE + i * (N + 1)] += 1.0;
  for (std::size_t row = 0; row < factors_.nRows(); ++row)
    if (!eliminateRow<N>(row)) return false;
  return true;
}

/// The blocks left of the diagonal become L, those right of it stay as U.
template <std::size_t N>
bool BlockFactor::eliminateRow(std::size_t row) {
  constexpr std::size_t SIZE = N * N;
  double* const values = values_.data();
  const index_t* const column = factors_.column.data();
  index_t* const blockOf = blockOf_.data();
  const index_t first = factors_.lowerStart[row];
  const index_t last = factors_.lowerStart[row + 1];
  const index_t diagonal = factors_.diagonal[row];
  const index_t rowEnd = factors_.diagonal[row + 1];
  for (index_t p = first; p < last; ++p) blockOf[column[p]] = p;
  for (index_t p = diagonal; p < rowEnd; ++p) blockOf[column[p]] = p;
  for (index_t p = first; p < last;) {
    // L in a copy, so that it can stay in registers
    double L[2 * SIZE];
    const index_t upper = column[p];
    const index_t begin = factors_.diagonal[upper] + 1;
    const index_t end = factors_.diagonal[upper + 1];
    multiplyFromRight<N>(values + p * SIZE, values + (begin - 1) * SIZE);
    std::copy_n(values + p * SIZE, SIZE, L);
    if (!factors_.isTwin[upper] || p + 1 == last) {
      for (index_t q = begin; q < end; ++q)
        subtractProduct<N>(values + blockOf[column[q]] * SIZE, L, values + q * SIZE);
      ++p;
      continue;
    }
    // The next row has the same columns: both in one pass over the row that they are taken from.
    subtractProduct<N>(values + (p + 1) * SIZE, L, values + begin * SIZE);
    const index_t twinBegin = end + 1;
    multiplyFromRight<N>(values + (p + 1) * SIZE, values + (twinBegin - 1) * SIZE);
    std::copy_n(values + (p + 1) * SIZE, SIZE, L + SIZE);
    const double* U = values + (begin + 1) * SIZE;
    const double* twin = values + twinBegin * SIZE;
    for (index_t q = begin + 1; q < end; ++q, U += SIZE, twin += SIZE)
      subtractProducts<N>(values + blockOf[column[q]] * SIZE, L, U, twin);
    p += 2;
  }
  const auto dropped = static_cast<index_t>(factors_.nBlocks());
  for (index_t p = first; p < last; ++p) blockOf[column[p]] = dropped;
  for (index_t p = diagonal; p < rowEnd; ++p) blockOf[column[p]] = dropped;
  return invert<N>(values + diagonal * SIZE);
}

template <std::size_t N>
void BlockFactor::solveBlocks(double* b) {
  constexpr std::size_t SIZE = N * N;
  const FactorPattern& F = factors_;
  const double* const values = values_.data();
  const index_t* const column = F.column.data();
  double* const x = x_.data();
  for (std::size_t row = 0; row < F.nRows(); ++row) {
    SumOfProducts<N> sum;
    const index_t end = F.lowerStart[row + 1];
    for (index_t p = F.lowerStart[row]; p < end; ++p) sum.add(values + p * SIZE, x + column[p] * N);
    double rest[N];
    std::copy_n(b + F.cell[row] * N, N, rest);
    sum.subtractFrom(rest);
    std::copy_n(rest, N, x + row * N);
  }
  for (std::size_t row = F.nRows(); row-- > 0;) {
    SumOfProducts<N> sum;
    const index_t end = F.diagonal[row + 1];
    for (index_t p = F.diagonal[row] + 1; p < end; ++p) sum.add(values + p * SIZE, x + column[p] * N);
    double rest[N];
    std::copy_n(x + row * N, N, rest);
    sum.subtractFrom(rest);
    const double* inverse = values + F.diagonal[row] * SIZE;
    double solution[N] = {};
    for (std::size_t i = 0; i < N; ++i)
      for (std::size_t k = 0; k < N; ++k) solution[i] += inverse[i * N + k] * rest[k];
    std::copy_n(solution, N, x + row * N);
    std::copy_n(solution, N, b + F.cell[row] * N);
  }
}

}  // namespace VELMORA_SOLVER
