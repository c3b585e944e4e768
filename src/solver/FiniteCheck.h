#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "solver/BalanceEquations.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// Whether all values are finite numbers.
bool allFinite(std::span<const double> values) noexcept;

/// A quantity of an element that is not a number, or infinite.
struct NotFinite {
  std::size_t element = 0;  ///< its number
  std::string quantity;     ///< in words
};

/// Finds out where a value that is not finite comes from: a conserved quantity in `y`, a quantity that has
/// been decomposed from it, or else the derivative `ydot`. Empty where all are finite.
/// @param ydot may be empty: then it is not looked at, nor is `state`
std::optional<NotFinite> findNotFinite(std::span<const double> y, std::span<const double> ydot,
                                       const SolverState& state, const BalanceEquations& equations);

}  // namespace VELMORA_SOLVER
