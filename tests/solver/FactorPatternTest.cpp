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

TEST(EliminationOrder, cellsWithoutPlaces_keepTheirOrder) {
  const JacobianPattern pattern = JacobianPattern::of(6, 1, gridPairs(3, 2));
  EXPECT_EQ(eliminationOrder(pattern), (std::vector<index_t>{0, 1, 2, 3, 4, 5}));
}

// the middle row of a square parts it in two halves that do not touch
TEST(EliminationOrder, lineBetweenTheHalves_comesLast) {
  const std::vector<index_t> order = eliminationOrder(gridPattern(5, 5, 1));
  EXPECT_EQ(std::vector<index_t>(order.end() - 5, order.end()), (std::vector<index_t>{10, 11, 12, 13, 14}));
}

TEST(FactorPattern, completePattern_isThatOfTheElimination) {
  for (const auto& [nx, ny] : {std::pair{6U, 1U}, {5U, 4U}, {9U, 9U}, {12U, 3U}}) {
    const JacobianPattern pattern = gridPattern(nx, ny, 2);
    const FactorPattern factors = FactorPattern::complete(pattern);
    const auto expected = filledRows(pattern, factors);
    for (std::size_t row = 0; row < factors.nRows(); ++row) {
      const auto begin = factors.column.begin();
      const std::vector<index_t> found(begin + factors.rowStart[row], begin + factors.rowStart[row + 1]);
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
        EXPECT_GE(block, factors.rowStart[rowOf[cell]]);
        EXPECT_LT(block, factors.rowStart[rowOf[cell] + 1]);
      }
  }
}

TEST(FactorPattern, chain_hasNoFill) {
  const JacobianPattern pattern = gridPattern(50, 1, 2);
  EXPECT_EQ(FactorPattern::complete(pattern).nBlocks(), pattern.nBlocks());
}

// n log n, towards which small grids tend from above; the factors of a band grow by 8 for twice the edge
TEST(FactorPattern, fillOfASquare_growsLittleFasterThanItsCells) {
  const auto blocks = [](index_t edge) {
    return static_cast<double>(FactorPattern::complete(gridPattern(edge, edge, 1)).nBlocks());
  };
  EXPECT_LT(blocks(64) / blocks(32), 6.0);
  EXPECT_LT(blocks(128) / blocks(64), blocks(64) / blocks(32));
}

}  // namespace VELMORA_SOLVER
