#pragma once

#include <vector>

#include "solver/JacobianPattern.h"

namespace VELMORA_SOLVER {

/// Cells in the order of their elimination: on a grid by nested dissection, which keeps the fill of complete
/// factors near n log n (George, 1973). A line of cells that parts the rest in two halves comes last, the
/// halves before it are ordered in the same way. A chain, and cells without places, keep their order.
std::vector<JacobianPattern::index_t> eliminationOrder(const JacobianPattern& pattern);

}  // namespace VELMORA_SOLVER
