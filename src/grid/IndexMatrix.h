#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace VELMORA {

/// Element number of every cell of the grid, -1 where the cell is a void. Cells outside the grid count as
/// voids, so that a rectangle may be walked without a look at the grid's limits.
class IndexMatrix {
 public:
  IndexMatrix() = default;
  /// `columns` x `rows` cells, all of them voids.
  IndexMatrix(int columns, int rows)
      : columns_(columns),
        rows_(rows),
        numbers_(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), -1) {}

  int columns() const { return columns_; }
  int rows() const { return rows_; }
  bool contains(int i, int j) const { return i >= 0 && i < columns_ && j >= 0 && j < rows_; }

  /// Element number of the cell in column `i` and row `j`, row 0 being the top row; -1 for a void.
  int at(int i, int j) const { return contains(i, j) ? numbers_[position(i, j)] : -1; }
  /// Does nothing outside the grid.
  void set(int i, int j, int number) {
    if (contains(i, j)) numbers_[position(i, j)] = number;
  }

  /// Calls `visit(i, j, number)` for every used cell of a rectangle with inclusive limits, row by row from
  /// the top.
  template <class Visit>
  void forEachUsedCell(int left, int top, int right, int bottom, Visit visit) const {
    for (int j = std::max(top, 0); j <= std::min(bottom, rows_ - 1); ++j) {
      for (int i = std::max(left, 0); i <= std::min(right, columns_ - 1); ++i) {
        const int number = numbers_[position(i, j)];
        if (number >= 0) visit(i, j, number);
      }
    }
  }

 private:
  std::size_t position(int i, int j) const {
    return static_cast<std::size_t>(j) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(i);
  }

  int columns_ = 0;
  int rows_ = 0;
  std::vector<int> numbers_;
};

}  // namespace VELMORA
