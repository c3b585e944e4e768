#pragma once

#include <vector>

#include "solver/JacobianPattern.h"

namespace VELMORA_SOLVER {

/// Cells in the order of their elimination, such that complete factors get little fill: next comes about the
/// cell with the fewest neighbours left (approximate minimum degree; Amestoy, Davis and Duff, 1996). A chain
/// keeps its order.
/// @throws std::bad_alloc, std::runtime_error where the library that orders them fails
std::vector<JacobianPattern::index_t> eliminationOrder(const JacobianPattern& pattern);

}  // namespace VELMORA_SOLVER
