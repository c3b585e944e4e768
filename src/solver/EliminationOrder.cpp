#include "solver/EliminationOrder.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;
using Cells = std::span<index_t>;

/// Orders cells in place by nested dissection.
class Dissection {
 public:
  explicit Dissection(const std::vector<JacobianPattern::Place>& places) : places_(places) {}

  /// Deep as the logarithm of the number of cells.
  void order(Cells cells) const {
    constexpr std::size_t SMALL = 4;
    if (cells.size() <= SMALL) return;
    const std::size_t along = longSide(cells);
    const auto line = [this, along](index_t cell) { return places_[cell][along]; };
    const auto middle = cells.begin() + static_cast<std::ptrdiff_t>(cells.size() / 2);
    std::nth_element(cells.begin(), middle, cells.end(),
                     [&](index_t a, index_t b) { return line(a) < line(b); });
    const index_t separator = line(*middle);
    const auto belowEnd =
        std::partition(cells.begin(), cells.end(), [&](index_t cell) { return line(cell) < separator; });
    const auto aboveEnd =
        std::partition(belowEnd, cells.end(), [&](index_t cell) { return line(cell) > separator; });
    order({cells.begin(), belowEnd});
    order({belowEnd, aboveEnd});
    std::sort(aboveEnd, cells.end(),
              [&](index_t a, index_t b) { return places_[a][1 - along] < places_[b][1 - along]; });
  }

 private:
  /// 0 where the cells spread over more columns than rows, else 1.
  std::size_t longSide(Cells cells) const {
    std::array<index_t, 2> lowest = places_[cells.front()];
    std::array<index_t, 2> highest = lowest;
    for (const index_t cell : cells)
      for (std::size_t k = 0; k < 2; ++k) {
        lowest[k] = std::min(lowest[k], places_[cell][k]);
        highest[k] = std::max(highest[k], places_[cell][k]);
      }
    return highest[0] - lowest[0] > highest[1] - lowest[1] ? 0 : 1;
  }

  const std::vector<JacobianPattern::Place>& places_;
};

}  // namespace

std::vector<index_t> eliminationOrder(const JacobianPattern& pattern) {
  std::vector<index_t> cells(pattern.nCells);
  std::iota(cells.begin(), cells.end(), index_t{0});
  if (!pattern.isChain && !pattern.place.empty()) Dissection(pattern.place).order(cells);
  return cells;
}

}  // namespace VELMORA_SOLVER
