#pragma once

#include <cstddef>
#include <random>
#include <utility>
#include <vector>

#include "solver/JacobianPattern.h"

namespace VELMORA_SOLVER {

/// Pairs of neighbours in a grid of nx by ny cells, numbered row by row.
inline std::vector<std::pair<JacobianPattern::index_t, JacobianPattern::index_t>> gridPairs(
    JacobianPattern::index_t nx, JacobianPattern::index_t ny) {
  std::vector<std::pair<JacobianPattern::index_t, JacobianPattern::index_t>> pairs;
  for (JacobianPattern::index_t j = 0; j < ny; ++j)
    for (JacobianPattern::index_t i = 0; i < nx; ++i) {
      if (i + 1 < nx) pairs.emplace_back(j * nx + i, j * nx + i + 1);
      if (j + 1 < ny) pairs.emplace_back(j * nx + i, (j + 1) * nx + i);
    }
  return pairs;
}

/// Columns and rows of its cells.
inline std::vector<JacobianPattern::Place> gridPlaces(JacobianPattern::index_t nx,
                                                      JacobianPattern::index_t ny) {
  std::vector<JacobianPattern::Place> places;
  for (JacobianPattern::index_t j = 0; j < ny; ++j)
    for (JacobianPattern::index_t i = 0; i < nx; ++i) places.push_back({i, j});
  return places;
}

inline JacobianPattern gridPattern(JacobianPattern::index_t nx, JacobianPattern::index_t ny,
                                   std::size_t blockSize) {
  return JacobianPattern::of(static_cast<std::size_t>(nx) * ny, blockSize, gridPairs(nx, ny),
                             gridPlaces(nx, ny));
}

/// A dense square matrix, row by row.
struct DenseMatrix {
  std::size_t n;
  std::vector<double> values;

  explicit DenseMatrix(std::size_t size) : n(size), values(size * size, 0.0) {}
  double& at(std::size_t i, std::size_t k) { return values[i * n + k]; }
  double at(std::size_t i, std::size_t k) const { return values[i * n + k]; }

  std::vector<double> times(const std::vector<double>& v) const {
    std::vector<double> product(n, 0.0);
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t k = 0; k < n; ++k) product[i] += at(i, k) * v[k];
    return product;
  }
};

/// Random rates on the blocks of a pattern, exchange between the cells and decay within them.
inline DenseMatrix randomRates(const JacobianPattern& pattern, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> value(0.1, 1.0);
  DenseMatrix A(pattern.nUnknowns());
  const std::size_t n = pattern.blockSize;
  for (std::size_t row = 0; row < pattern.nCells; ++row)
    for (auto p = pattern.rowStart[row]; p < pattern.rowStart[row + 1]; ++p)
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t k = 0; k < n; ++k) {
          const bool own = p == pattern.diagonal[row] && i == k;
          A.at(row * n + i, pattern.column[p] * n + k) = own ? -12.0 * value(random) : value(random);
        }
  return A;
}

}  // namespace VELMORA_SOLVER
