#pragma once

#include <cstddef>
#include <vector>

namespace POLLUTANT_LIB {

/// Table of rows and columns, stored by rows. Elements start as a default value.
template <typename T>
class simple_matrix {
 public:
  simple_matrix() = default;
  simple_matrix(std::size_t nRows, std::size_t nCols) { resize(nRows, nCols); }
  simple_matrix(const simple_matrix&) = default;
  simple_matrix(simple_matrix&&) noexcept = default;
  simple_matrix& operator=(const simple_matrix&) = default;
  simple_matrix& operator=(simple_matrix&&) noexcept = default;
  virtual ~simple_matrix() = default;

  virtual std::size_t rows() const { return nRows_; }
  virtual std::size_t cols() const { return nCols_; }
  /// Number of elements.
  virtual std::size_t size() const { return values_.size(); }
  virtual bool empty() const { return values_.empty(); }

  /// Sets the size; all elements become the default value.
  virtual void resize(std::size_t nRows, std::size_t nCols) {
    values_.assign(nRows * nCols, T());
    nRows_ = nRows;
    nCols_ = nCols;
  }
  virtual void clear() { resize(0, 0); }

  /// Element of a row and a column that exist.
  virtual T& operator()(std::size_t row, std::size_t col) { return values_[row * nCols_ + col]; }
  virtual const T& operator()(std::size_t row, std::size_t col) const { return values_[row * nCols_ + col]; }

 private:
  std::size_t nRows_ = 0;
  std::size_t nCols_ = 0;
  std::vector<T> values_;
};

}  // namespace POLLUTANT_LIB
