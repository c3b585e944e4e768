#include "solver/JacobianPattern.h"

#include <gtest/gtest.h>

#include <set>

#include "solver/JacobianSystem.h"

namespace VELMORA_SOLVER {

namespace {

std::set<std::size_t> rowsOf(const JacobianPattern& pattern, std::size_t cell) {
  return {pattern.column.begin() + pattern.rowStart[cell],
          pattern.column.begin() + pattern.rowStart[cell + 1]};
}

}  // namespace

TEST(JacobianPattern, everyCell_meetsItselfAndItsNeighbours) {
  const JacobianPattern pattern = gridPattern(3, 3, 2);
  EXPECT_EQ(rowsOf(pattern, 4), (std::set<std::size_t>{1, 3, 4, 5, 7}));
  EXPECT_EQ(rowsOf(pattern, 0), (std::set<std::size_t>{0, 1, 3}));
  EXPECT_EQ(pattern.nUnknowns(), 18U);
  EXPECT_EQ(pattern.nBlocks(), 9U + 2U * 12U);
}

TEST(JacobianPattern, cellWithoutNeighbours_hasItsOwnBlock) {
  const JacobianPattern pattern = JacobianPattern::of(3, 1, {{0, 1}});
  EXPECT_EQ(rowsOf(pattern, 2), (std::set<std::size_t>{2}));
}

TEST(JacobianPattern, pairThatTurnsUpTwice_hasOneBlock) {
  EXPECT_EQ(JacobianPattern::of(2, 1, {{0, 1}, {1, 0}}).nBlocks(), 4U);
}

TEST(JacobianPattern, diagonalAndMirror_leadToTheirBlocks) {
  const JacobianPattern pattern = gridPattern(5, 4, 2);
  for (std::size_t row = 0; row < pattern.nCells; ++row) {
    EXPECT_EQ(pattern.column[pattern.diagonal[row]], row);
    for (auto p = pattern.rowStart[row]; p < pattern.rowStart[row + 1]; ++p) {
      const auto other = pattern.mirror[p];
      EXPECT_EQ(pattern.column[other], row);
      EXPECT_GE(other, pattern.rowStart[pattern.column[p]]);
      EXPECT_LT(other, pattern.rowStart[pattern.column[p] + 1]);
    }
  }
}

TEST(JacobianPattern, groups_holdEachCellOnceAndShareNoRow) {
  for (const auto& [nx, ny] : {std::pair{1U, 1U}, {7U, 1U}, {6U, 5U}, {20U, 20U}}) {
    const JacobianPattern pattern = gridPattern(nx, ny, 2);
    std::multiset<std::size_t> cells;
    for (const auto& group : pattern.groups) {
      std::multiset<std::size_t> rows;
      for (const auto cell : group) {
        cells.insert(cell);
        const auto own = rowsOf(pattern, cell);
        rows.insert(own.begin(), own.end());
      }
      EXPECT_EQ(rows.size(), std::set<std::size_t>(rows.begin(), rows.end()).size());
    }
    EXPECT_EQ(cells.size(), pattern.nCells);
    EXPECT_EQ(std::set<std::size_t>(cells.begin(), cells.end()).size(), pattern.nCells);
  }
}

// a cell and its neighbours differ from each other, so there are never fewer groups than that
TEST(JacobianPattern, numberOfGroups_doesNotGrowWithTheGrid) {
  EXPECT_EQ(gridPattern(100, 1, 2).groups.size(), 3U);
  EXPECT_EQ(gridPattern(10, 10, 2).groups.size(), 5U);
  EXPECT_EQ(gridPattern(80, 80, 2).groups.size(), 5U);
}

TEST(JacobianPattern, pairsAcrossTheGrid_areKeptApart) {
  auto pairs = gridPairs(10, 10);
  pairs.emplace_back(0, 55);
  const JacobianPattern pattern = JacobianPattern::of(100, 1, pairs, gridPlaces(10, 10));
  for (const auto& group : pattern.groups) {
    std::multiset<std::size_t> rows;
    for (const auto cell : group)
      for (const std::size_t row : rowsOf(pattern, cell)) rows.insert(row);
    EXPECT_EQ(rows.size(), std::set<std::size_t>(rows.begin(), rows.end()).size());
  }
}

TEST(JacobianPattern, chain_isARowOrAColumn) {
  EXPECT_TRUE(gridPattern(1, 9, 1).isChain);
  EXPECT_TRUE(gridPattern(9, 1, 1).isChain);
  EXPECT_FALSE(gridPattern(2, 2, 1).isChain);
}

}  // namespace VELMORA_SOLVER
