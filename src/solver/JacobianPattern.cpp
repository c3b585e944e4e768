#include "solver/JacobianPattern.h"

#include <algorithm>

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;

index_t count(std::size_t n) {
  return static_cast<index_t>(n);
}

/// Cells in ascending order, each into the first group that has no cell with a common neighbour (greedy
/// colouring of the columns; Curtis, Powell and Reid, 1974).
std::vector<std::vector<index_t>> independentGroups(const JacobianPattern& pattern) {
  std::vector<std::vector<index_t>> groups;
  std::vector<std::size_t> groupOf(pattern.nCells, 0);  // 1 + group, 0 as long as there is none
  std::vector<std::size_t> takenBy;                     // by group: 1 + last cell that cannot join it
  for (std::size_t cell = 0; cell < pattern.nCells; ++cell) {
    for (index_t p = pattern.rowStart[cell]; p < pattern.rowStart[cell + 1]; ++p) {
      const index_t row = pattern.column[p];
      for (index_t q = pattern.rowStart[row]; q < pattern.rowStart[row + 1]; ++q)
        if (const std::size_t group = groupOf[pattern.column[q]]; group > 0) takenBy[group - 1] = cell + 1;
    }
    std::size_t group = 0;
    while (group < groups.size() && takenBy[group] == cell + 1) ++group;
    if (group == groups.size()) {
      groups.emplace_back();
      takenBy.push_back(0);
    }
    groups[group].push_back(count(cell));
    groupOf[cell] = group + 1;
  }
  return groups;
}

}  // namespace

JacobianPattern JacobianPattern::of(std::size_t nCells, std::size_t blockSize,
                                    const std::vector<std::pair<index_t, index_t>>& pairs) {
  std::vector<std::vector<index_t>> rows(nCells);
  for (std::size_t cell = 0; cell < nCells; ++cell) rows[cell].push_back(count(cell));
  JacobianPattern pattern;
  pattern.isChain = true;
  for (const auto& [left, right] : pairs) {
    rows[left].push_back(right);
    rows[right].push_back(left);
    if (std::max(left, right) - std::min(left, right) > 1) pattern.isChain = false;
  }
  pattern.nCells = nCells;
  pattern.volume.assign(nCells, 1.0);
  pattern.blockSize = blockSize;
  pattern.rowStart.push_back(0);
  for (std::size_t cell = 0; cell < nCells; ++cell) {
    std::vector<index_t>& row = rows[cell];
    std::sort(row.begin(), row.end());
    row.erase(std::unique(row.begin(), row.end()), row.end());
    const auto own = std::lower_bound(row.begin(), row.end(), count(cell));
    pattern.diagonal.push_back(pattern.rowStart.back() + count(static_cast<std::size_t>(own - row.begin())));
    pattern.column.insert(pattern.column.end(), row.begin(), row.end());
    pattern.rowStart.push_back(count(pattern.column.size()));
  }
  // Rows are visited in ascending order, so the blocks of each column turn up in theirs.
  std::vector<index_t> next(pattern.rowStart.begin(), pattern.rowStart.end() - 1);
  pattern.mirror.resize(pattern.nBlocks());
  for (std::size_t row = 0; row < nCells; ++row)
    for (index_t p = pattern.rowStart[row]; p < pattern.rowStart[row + 1]; ++p)
      pattern.mirror[p] = next[pattern.column[p]]++;
  pattern.groups = independentGroups(pattern);
  return pattern;
}

}  // namespace VELMORA_SOLVER
