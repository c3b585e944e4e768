#include "solver/EliminationOrder.h"

#include <amd.h>

#include <new>
#include <numeric>
#include <stdexcept>
#include <string>

namespace VELMORA_SOLVER {

namespace {

using index_t = JacobianPattern::index_t;

std::vector<index_t> minimumDegreeOrder(const JacobianPattern& pattern) {
  const char* const FUNC_ID = "[EliminationOrder::minimumDegreeOrder]";
  const std::vector<int> rowStart(pattern.rowStart.begin(), pattern.rowStart.end());
  const std::vector<int> column(pattern.column.begin(), pattern.column.end());
  std::vector<int> order(pattern.nCells);
  const int status = amd_order(static_cast<int>(pattern.nCells), rowStart.data(), column.data(), order.data(),
                               nullptr, nullptr);
  if (status == AMD_OUT_OF_MEMORY) throw std::bad_alloc();
  if (status != AMD_OK) throw std::runtime_error(std::string(FUNC_ID) + " The cells cannot be ordered.");
  return {order.begin(), order.end()};
}

}  // namespace

std::vector<index_t> eliminationOrder(const JacobianPattern& pattern) {
  if (!pattern.isChain) return minimumDegreeOrder(pattern);
  std::vector<index_t> cells(pattern.nCells);
  std::iota(cells.begin(), cells.end(), index_t{0});
  return cells;
}

}  // namespace VELMORA_SOLVER
