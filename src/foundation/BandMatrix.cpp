#include "foundation/BandMatrix.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace TKL {

BandMatrix::BandMatrix(std::uint32_t order, std::uint32_t upperBandwidth, std::uint32_t lowerBandwidth)
    : BandMatrix(order, upperBandwidth, lowerBandwidth, upperBandwidth + lowerBandwidth) {}

BandMatrix::BandMatrix(std::uint32_t order, std::uint32_t upperBandwidth, std::uint32_t lowerBandwidth,
                       std::uint32_t storageUpperBandwidth)
    : n(order), mu(upperBandwidth), ml(lowerBandwidth), smu(storageUpperBandwidth), pivots(order, 0) {
  const std::uint32_t reach = order == 0 ? 0 : std::min(mu + ml, order - 1);
  smu = std::max(smu, reach);
  const std::size_t length = std::size_t{smu} + ml + 1;
  data.assign(length * n, 0.0);
  columns.reserve(n);
  for (std::size_t k = 0; k < n; ++k) {
    columns.push_back(data.data() + k * length);
  }
}

void BandMatrix::zero() {
  std::fill(data.begin(), data.end(), 0.0);
}

std::uint32_t BandMatrix::lastRow(std::uint32_t column) const {
  return ml < n - 1 - column ? column + ml : n - 1;
}

std::uint32_t BandMatrix::lu() {
  const char* const FUNC_ID = "[BandMatrix::lu]";
  if (n == 0) {
    throw Exception("Matrix is empty.", FUNC_ID);
  }
  if (pivots.size() != n) {
    throw Exception(FormatString("Mismatching sizes of matrix (n = %1) and pivots vector (size = %2).")
                        .arg(n)
                        .arg(pivots.size()),
                    FUNC_ID);
  }
  // Room for fill-in; whatever an earlier factorisation left there must not count.
  for (double* const column : columns) {
    std::fill_n(column, smu > mu ? smu - mu : 0, 0.0);
  }
  for (std::uint32_t k = 0; k + 1 < n; ++k) {
    std::uint32_t pivotRow = k;
    for (std::uint32_t i = k + 1; i <= lastRow(k); ++i) {
      if (std::fabs(at(i, k)) > std::fabs(at(pivotRow, k))) {
        pivotRow = i;
      }
    }
    pivots[k] = pivotRow;
    if (at(pivotRow, k) == 0.0) {
      return k + 1;
    }
    eliminate(k, pivotRow);
  }
  pivots[n - 1] = n - 1;
  return at(n - 1, n - 1) == 0.0 ? n : 0;
}

/// Stores the negative multipliers of column k below its diagonal and adds row k to the rows below.
void BandMatrix::eliminate(std::uint32_t k, std::uint32_t pivotRow) {
  if (pivotRow != k) {
    std::swap(at(pivotRow, k), at(k, k));
  }
  const std::uint32_t last = lastRow(k);
  const double factor = -1.0 / at(k, k);
  for (std::uint32_t i = k + 1; i <= last; ++i) {
    if (at(i, k) != 0.0) {
      at(i, k) *= factor;
    }
  }
  const std::uint32_t lastColumn = smu < n - 1 - k ? k + smu : n - 1;
  for (std::uint32_t j = k + 1; j <= lastColumn; ++j) {
    const double head = at(pivotRow, j);
    if (pivotRow != k) {
      at(pivotRow, j) = at(k, j);
      at(k, j) = head;
    }
    if (head != 0.0) {
      for (std::uint32_t i = k + 1; i <= last; ++i) {
        at(i, j) += head * at(i, k);
      }
    }
  }
}

void BandMatrix::backsolve(double* b) const {
  for (std::uint32_t k = 0; k + 1 < n; ++k) {
    const std::uint32_t l = pivots[k];
    const double m = b[l];
    if (l != k) {
      b[l] = b[k];
      b[k] = m;
    }
    for (std::uint32_t i = k + 1; i <= lastRow(k); ++i) {
      b[i] += m * at(i, k);
    }
  }
  for (std::uint32_t k = n; k-- > 0;) {
    b[k] /= at(k, k);
    const double m = -b[k];
    for (std::uint32_t i = k > smu ? k - smu : 0; i < k; ++i) {
      b[i] += m * at(i, k);
    }
  }
}

}  // namespace TKL
