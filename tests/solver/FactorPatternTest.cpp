#include "solver/FactorPattern.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "solver/EliminationOrder.h"
#include "solver/JacobianSystem.h"

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;

/// Which entries are there after an elimination of the whole matrix, entry by entry.
std::vector<std::set<index_t>> filledRows(const JacobianPattern& pattern, const FactorPattern& factors) {
  std::vector<index_t> rowOf(pattern.nCells);
  for (std::size_t row = 0; row < pattern.nCells; ++row) rowOf[factors.cell[row]] = static_cast<index_t>(row);
  std::vector<std::set<index_t>> rows(pattern.nCells);
  for (std::size_t cell = 0; cell < pattern.nCells; ++cell)
    for (index_t p = pattern.rowStart[cell]; p < pattern.rowStart[cell + 1]; ++p)
      rows[rowOf[cell]].insert(rowOf[pattern.column[p]]);
  for (index_t pivot = 0; pivot < pattern.nCells; ++pivot)
    for (index_t row = pivot + 1; row < pattern.nCells; ++row)
      if (rows[row].count(pivot) > 0)
        for (const index_t column : rows[pivot])
          if (column > pivot) rows[row].insert(column);
  return rows;
}

}  // namespace

TEST(EliminationOrder, everyCell_turnsUpOnce) {
  for (const auto& [nx, ny] : {std::pair{1U, 1U}, {9U, 1U}, {2U, 2U}, {7U, 5U}, {30U, 3U}, {16U, 16U}}) {
    const JacobianPattern pattern = gridPattern(nx, ny, 1);
    const std::vector<index_t> order = eliminationOrder(pattern);
    EXPECT_EQ(order.size(), pattern.nCells);
    EXPECT_EQ(std::set<index_t>(order.begin(), order.end()).size(), pattern.nCells);
  }
}

TEST(EliminationOrder, chain_keepsItsOrder) {
  const std::vector<index_t> order = eliminationOrder(gridPattern(5, 1, 1));
  EXPECT_EQ(order, (std::vector<index_t>{0, 1, 2, 3, 4}));
}

// each of the others has one neighbour only; the middle first would join all of them
TEST(EliminationOrder, middleOfAStar_makesNoFill) {
  const JacobianPattern star = JacobianPattern::of(7, 1, {{0, 1}, {0, 2}, {0, 3}, {0, 4}, {0, 5}, {0, 6}});
  EXPECT_EQ(FactorPattern::complete(star).nBlocks(), star.nBlocks());
}

TEST(FactorPattern, completePattern_isThatOfTheElimination) {
  for (const auto& [nx, ny] : {std::pair{6U, 1U}, {5U, 4U}, {9U, 9U}, {12U, 3U}}) {
    const JacobianPattern pattern = gridPattern(nx, ny, 2);
    const FactorPattern factors = FactorPattern::complete(pattern);
    const auto expected = filledRows(pattern, factors);
    for (std::size_t row = 0; row < factors.nRows(); ++row) {
      const auto begin = factors.column.begin();
      std::vector<index_t> found(begin + factors.lowerStart[row], begin + factors.lowerStart[row + 1]);
      found.insert(found.end(), begin + factors.diagonal[row], begin + factors.diagonal[row + 1]);
      EXPECT_EQ(found, std::vector<index_t>(expected[row].begin(), expected[row].end())) << row;
      EXPECT_EQ(factors.column[factors.diagonal[row]], row);
    }
  }
}

TEST(FactorPattern, targets_areTheBlocksOfTheSameCells) {
  const JacobianPattern pattern = gridPattern(6, 7, 2);
  for (const FactorPattern& factors :
       {FactorPattern::complete(pattern), FactorPattern::incomplete(pattern)}) {
    std::vector<std::size_t> rowOf(pattern.nCells);
    for (std::size_t row = 0; row < pattern.nCells; ++row) rowOf[factors.cell[row]] = row;
    for (std::size_t cell = 0; cell < pattern.nCells; ++cell)
      for (index_t p = pattern.rowStart[cell]; p < pattern.rowStart[cell + 1]; ++p) {
        const index_t block = factors.target[p];
        EXPECT_EQ(factors.column[block], rowOf[pattern.column[p]]);
        const std::size_t row = rowOf[cell];
        const auto& start = rowOf[pattern.column[p]] < row ? factors.lowerStart : factors.diagonal;
        EXPECT_GE(block, start[row]);
        EXPECT_LT(block, start[row + 1]);
      }
  }
}

TEST(FactorPattern, chain_hasNoFill) {
  const JacobianPattern pattern = gridPattern(50, 1, 2);
  EXPECT_EQ(FactorPattern::complete(pattern).nBlocks(), pattern.nBlocks());
}

// near n log n; the factors of a band grow by 8 for twice the edge
TEST(FactorPattern, fillOfASquare_growsLittleFasterThanItsCells) {
  const auto blocks = [](index_t edge) {
    return static_cast<double>(FactorPattern::complete(gridPattern(edge, edge, 1)).nBlocks());
  };
  EXPECT_LT(blocks(64) / blocks(32), 6.0);
  EXPECT_LT(blocks(128) / blocks(64), 6.0);
}

// in the order of the rows, each cell of a strip fills the band up to the cell beside it in the next row
TEST(FactorPattern, fillOfAStrip_isLessThanThatOfItsBand) {
  const index_t length = 200, width = 10;
  const std::size_t band = 2 * length * width * width;
  EXPECT_LT(FactorPattern::complete(gridPattern(length, width, 1)).nBlocks(), band);
}

}  // namespace VELMORA_SOLVER
