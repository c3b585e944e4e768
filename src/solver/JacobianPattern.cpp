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

/// On a grid whose cells act on their neighbours in a row or column only, five groups are enough: cells of
/// the same colour are a knight's move or more apart.
std::vector<std::vector<index_t>> latticeGroups(const std::vector<JacobianPattern::Place>& places) {
  constexpr std::size_t COLOURS = 5;
  std::vector<std::vector<index_t>> groups(COLOURS);
  for (std::size_t cell = 0; cell < places.size(); ++cell)
    groups[(places[cell][0] + 2 * static_cast<std::size_t>(places[cell][1])) % COLOURS].push_back(
        count(cell));
  return groups;
}

index_t distance(index_t a, index_t b) {
  return std::max(a, b) - std::min(a, b);
}

/// Whether each of the pairs are neighbours in a row or column.
bool isLattice(const std::vector<JacobianPattern::Place>& places,
               const std::vector<std::pair<index_t, index_t>>& pairs) {
  return !places.empty() && std::all_of(pairs.begin(), pairs.end(), [&places](const auto& pair) {
    const auto& [a, b] = pair;
    return distance(places[a][0], places[b][0]) + distance(places[a][1], places[b][1]) == 1;
  });
}

}  // namespace

JacobianPattern JacobianPattern::of(std::size_t nCells, std::size_t blockSize,
                                    const std::vector<std::pair<index_t, index_t>>& pairs,
                                    const std::vector<Place>& places) {
  std::vector<std::vector<index_t>> rows(nCells);
  for (std::size_t cell = 0; cell < nCells; ++cell) rows[cell].push_back(count(cell));
  JacobianPattern pattern;
  pattern.isChain = true;
  for (const auto& [left, right] : pairs) {
    rows[left].push_back(right);
    rows[right].push_back(left);
    if (distance(left, right) > 1) pattern.isChain = false;
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
  const bool lattice = !pattern.isChain && isLattice(places, pairs);
  pattern.groups = lattice ? latticeGroups(places) : independentGroups(pattern);
  return pattern;
}

}  // namespace VELMORA_SOLVER
