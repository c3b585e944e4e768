#pragma once

#include <cstdint>
#include <vector>

namespace TKL {

/// Square band matrix with a direct solver: LU factorisation with partial pivoting, in place.
class BandMatrix {
 public:
  BandMatrix() = default;
  /// A zero matrix of order `order` with the given bandwidths above and below the diagonal.
  BandMatrix(std::uint32_t order, std::uint32_t upperBandwidth, std::uint32_t lowerBandwidth);
  /// As above with a storage upper bandwidth of its own, which may be below `upperBandwidth` +
  /// `lowerBandwidth` for a small matrix; it is raised to what row exchange can reach inside the matrix.
  BandMatrix(std::uint32_t order, std::uint32_t upperBandwidth, std::uint32_t lowerBandwidth,
             std::uint32_t storageUpperBandwidth);
  BandMatrix(const BandMatrix&) = delete;
  BandMatrix& operator=(const BandMatrix&) = delete;
  BandMatrix(BandMatrix&&) = default;
  BandMatrix& operator=(BandMatrix&&) = default;
  ~BandMatrix() = default;

  /// Sets all elements to 0.
  void zero();
  /// The element in the band, counted from 0.
  double& at(std::uint32_t row, std::uint32_t column) { return columns[column][smu + row - column]; }
  double at(std::uint32_t row, std::uint32_t column) const { return columns[column][smu + row - column]; }

  /// Factorises in place.
  /// @return 0, or k + 1 if the pivot of column k is zero
  /// @throws Exception "Matrix is empty.", "Mismatching sizes of matrix (n = %1) and pivots vector ..."
  std::uint32_t lu();
  /// Solves with the factors of `lu`; `b` (n values) is replaced by the solution.
  void backsolve(double* b) const;
  /// As above.
  void backsolve(std::vector<double>& b) const { backsolve(b.data()); }

  std::uint32_t n = 0;                ///< order
  std::uint32_t mu = 0;               ///< upper bandwidth
  std::uint32_t ml = 0;               ///< lower bandwidth
  std::uint32_t smu = 0;              ///< storage upper bandwidth, with room for fill-in by row exchange
  std::vector<double> data;           ///< all columns, one after the other
  std::vector<double*> columns;       ///< in column k the element of row i stands at smu + i - k
  std::vector<std::uint32_t> pivots;  ///< row chosen at each step

 private:
  std::uint32_t lastRow(std::uint32_t column) const;
  void eliminate(std::uint32_t k, std::uint32_t pivotRow);
};

}  // namespace TKL
