#include "solver/BlockFactor.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;

constexpr double WORST_CONDITION = 1e14;

/// A -= B C, all N x N.
template <std::size_t N>
void subtractProduct(double* A, const double* B, const double* C) {
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t k = 0; k < N; ++k)
      for (std::size_t j = 0; j < N; ++j) A[i * N + j] -= B[i * N + k] * C[k * N + j];
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

/// y -= A x, A of N x N.
template <std::size_t N>
void subtractFrom(double* y, const double* A, const double* x) {
  for (std::size_t i = 0; i < N; ++i)
    for (std::size_t k = 0; k < N; ++k) y[i] -= A[i * N + k] * x[k];
}

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

BlockFactor::BlockFactor(const JacobianPattern& pattern)
    : pattern_(pattern), values_(pattern.nBlocks() * pattern.blockSize * pattern.blockSize) {
  if (pattern.blockSize < 1 || pattern.blockSize > 4)
    throw std::invalid_argument("[BlockFactor::BlockFactor] Blocks have one to four equations.");
}

bool BlockFactor::factorise(const BlockJacobian& jacobian, double gamma) {
  const std::size_t n = pattern_.blockSize;
  const double* J = jacobian.block(0);
  for (std::size_t i = 0; i < values_.size(); ++i) values_[i] = -gamma * J[i];
  for (const index_t p : pattern_.diagonal)
    for (std::size_t i = 0; i < n; ++i) values_[p * n * n + i * n + i] += 1.0;
  switch (n) {
    case 1:
      return factoriseBlocks<1>();
    case 2:
      return factoriseBlocks<2>();
    case 3:
      return factoriseBlocks<3>();
    default:
      return factoriseBlocks<4>();
  }
}

void BlockFactor::solve(double* b) const {
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

/// Row by row: the blocks left of the diagonal become L, those right of it stay as U.
template <std::size_t N>
bool BlockFactor::factoriseBlocks() {
  constexpr std::size_t SIZE = N * N;
  const JacobianPattern& P = pattern_;
  double* values = values_.data();
  for (std::size_t row = 0; row < P.nCells; ++row) {
    for (index_t p = P.rowStart[row]; p < P.diagonal[row]; ++p) {
      const index_t upper = P.column[p];
      multiplyFromRight<N>(values + p * SIZE, values + P.diagonal[upper] * SIZE);
      // Both rows are in ascending order of their columns: one pass finds the columns they share.
      index_t target = p + 1;
      for (index_t q = P.diagonal[upper] + 1; q < P.rowStart[upper + 1]; ++q) {
        while (target < P.rowStart[row + 1] && P.column[target] < P.column[q]) ++target;
        if (target == P.rowStart[row + 1]) break;
        if (P.column[target] == P.column[q])
          subtractProduct<N>(values + target * SIZE, values + p * SIZE, values + q * SIZE);
      }
    }
    if (!invert<N>(values + P.diagonal[row] * SIZE)) return false;
  }
  return true;
}

template <std::size_t N>
void BlockFactor::solveBlocks(double* b) const {
  constexpr std::size_t SIZE = N * N;
  const JacobianPattern& P = pattern_;
  const double* values = values_.data();
  for (std::size_t row = 0; row < P.nCells; ++row)
    for (index_t p = P.rowStart[row]; p < P.diagonal[row]; ++p)
      subtractFrom<N>(b + row * N, values + p * SIZE, b + P.column[p] * N);
  for (std::size_t row = P.nCells; row-- > 0;) {
    for (index_t p = P.diagonal[row] + 1; p < P.rowStart[row + 1]; ++p)
      subtractFrom<N>(b + row * N, values + p * SIZE, b + P.column[p] * N);
    double x[N] = {};
    const double* inverse = values + P.diagonal[row] * SIZE;
    for (std::size_t i = 0; i < N; ++i)
      for (std::size_t k = 0; k < N; ++k) x[i] += inverse[i * N + k] * b[row * N + k];
    std::copy_n(x, N, b + row * N);
  }
}

}  // namespace VELMORA_SOLVER
