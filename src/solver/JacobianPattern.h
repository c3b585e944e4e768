#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace VELMORA_SOLVER {

/// Which cells act on the rates of which: each cell on itself and on its neighbours across a side. The
/// Jacobian of the balance equations has a dense block of `blockSize` x `blockSize` for each such pair.
/// Exchange over longer distances (gap radiation, remote sources) is left out.
///
/// Blocks are stored row by row (compressed block rows), the columns of a row in ascending order.
struct JacobianPattern {
  using index_t = std::uint32_t;
  using Place = std::array<index_t, 2>;  ///< column and row in the grid

  std::size_t nCells = 0;
  std::size_t blockSize = 0;      ///< equations per cell
  std::vector<index_t> rowStart;  ///< first block of each row, with the number of blocks at the end
  std::vector<index_t> column;    ///< cell of each block
  std::vector<index_t> diagonal;  ///< block of each row in its own column
  std::vector<index_t> mirror;    ///< of the block (r, c) the block (c, r)
  std::vector<std::vector<index_t>> groups;  ///< cells that act on no common rate, together all cells
  std::vector<double> volume;                ///< of each cell [m3], 1 unless set
  bool isChain = false;                      ///< every cell acts on the ones before and behind it only

  std::size_t nBlocks() const { return column.size(); }
  std::size_t nUnknowns() const { return nCells * blockSize; }

  /// @param pairs  numbers of the cells left and right of each inner side
  /// @param places of the cells in the grid, empty if they are not known
  static JacobianPattern of(std::size_t nCells, std::size_t blockSize,
                            const std::vector<std::pair<index_t, index_t>>& pairs,
                            const std::vector<Place>& places = {});
};

}  // namespace VELMORA_SOLVER
