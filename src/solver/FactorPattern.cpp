#include "solver/FactorPattern.h"

#include <algorithm>
#include <numeric>

#include "solver/EliminationOrder.h"

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;
using Rows = std::vector<std::vector<index_t>>;

std::vector<index_t> inverseOf(const std::vector<index_t>& order) {
  std::vector<index_t> inverse(order.size());
  for (std::size_t row = 0; row < order.size(); ++row) inverse[order[row]] = static_cast<index_t>(row);
  return inverse;
}

/// Columns behind the diagonal of each row with all fill. Eliminating a row joins the rows of all its
/// columns; it is enough to hand its columns on to the first of them, which hands them on in turn
/// (elimination tree; Liu, 1990).
Rows upperColumns(const JacobianPattern& pattern, const std::vector<index_t>& order,
                  const std::vector<index_t>& rowOf) {
  Rows upper(order.size());
  Rows children(order.size());
  std::vector<std::size_t> taken(order.size(), 0);  // 1 + last row that has this column
  for (std::size_t row = 0; row < order.size(); ++row) {
    std::vector<index_t>& columns = upper[row];
    const auto take = [&](index_t column) {
      if (column <= row || taken[column] == row + 1) return;
      taken[column] = row + 1;
      columns.push_back(column);
    };
    const index_t cell = order[row];
    for (index_t p = pattern.rowStart[cell]; p < pattern.rowStart[cell + 1]; ++p)
      take(rowOf[pattern.column[p]]);
    for (const index_t child : children[row])
      for (const index_t column : upper[child]) take(column);
    std::sort(columns.begin(), columns.end());
    if (!columns.empty()) children[columns.front()].push_back(static_cast<index_t>(row));
  }
  return upper;
}

/// Lays out the blocks; the pattern is symmetric, so the columns before the diagonal are the rows that have
/// this column behind theirs.
void layOut(const Rows& upper, FactorPattern& factors) {
  Rows lower(upper.size());
  for (std::size_t row = 0; row < upper.size(); ++row)
    for (const index_t column : upper[row]) lower[column].push_back(static_cast<index_t>(row));
  const auto end = [&] { return static_cast<index_t>(factors.column.size()); };
  for (const auto& columns : lower) {
    factors.lowerStart.push_back(end());
    factors.column.insert(factors.column.end(), columns.begin(), columns.end());
  }
  factors.lowerStart.push_back(end());
  for (std::size_t row = 0; row < upper.size(); ++row) {
    factors.diagonal.push_back(end());
    factors.column.push_back(static_cast<index_t>(row));
    factors.column.insert(factors.column.end(), upper[row].begin(), upper[row].end());
  }
  factors.diagonal.push_back(end());
}

void findTargets(const JacobianPattern& pattern, const std::vector<index_t>& rowOf, FactorPattern& factors) {
  factors.target.resize(pattern.nBlocks());
  const auto begin = factors.column.begin();
  for (std::size_t cell = 0; cell < pattern.nCells; ++cell) {
    const index_t row = rowOf[cell];
    for (index_t p = pattern.rowStart[cell]; p < pattern.rowStart[cell + 1]; ++p) {
      const index_t column = rowOf[pattern.column[p]];
      const auto& start = column < row ? factors.lowerStart : factors.diagonal;
      factors.target[p] =
          static_cast<index_t>(std::lower_bound(begin + start[row], begin + start[row + 1], column) - begin);
    }
  }
}

/// Columns behind the diagonal of each row without any fill, in the order of the cells.
Rows ownColumns(const JacobianPattern& pattern) {
  Rows upper(pattern.nCells);
  for (std::size_t row = 0; row < pattern.nCells; ++row)
    upper[row].assign(pattern.column.begin() + pattern.diagonal[row] + 1,
                      pattern.column.begin() + pattern.rowStart[row + 1]);
  return upper;
}

}  // namespace

void FactorPattern::findTwins() {
  isTwin.assign(nRows(), 0);
  for (std::size_t row = 0; row + 1 < nRows(); ++row) {
    const auto next = column.begin() + diagonal[row + 1];
    const auto nextEnd = column.begin() + diagonal[row + 2];
    isTwin[row] = std::equal(column.begin() + diagonal[row] + 1, next, next, nextEnd) ? 1 : 0;
  }
}

FactorPattern FactorPattern::incomplete(const JacobianPattern& pattern) {
  FactorPattern factors;
  factors.cell.resize(pattern.nCells);
  std::iota(factors.cell.begin(), factors.cell.end(), index_t{0});
  layOut(ownColumns(pattern), factors);
  findTargets(pattern, factors.cell, factors);
  factors.isTwin.assign(factors.nRows(), 0);
  return factors;
}

FactorPattern FactorPattern::complete(const JacobianPattern& pattern) {
  FactorPattern factors;
  factors.cell = eliminationOrder(pattern);
  factors.isComplete = true;
  const std::vector<index_t> rowOf = inverseOf(factors.cell);
  layOut(upperColumns(pattern, factors.cell, rowOf), factors);
  findTargets(pattern, rowOf, factors);
  factors.findTwins();
  return factors;
}

}  // namespace VELMORA_SOLVER
