#pragma once

#include <bitset>

namespace VELMORA_SOLVER {

/// Bit values of a combination of balance equations as the solver sees it. They differ from the order in
/// which the project names the equations.
enum balanceEquation_t {
  BE_ENERGY = 1,
  BE_MOISTURE = 2,
  BE_AIR = 4,
  BE_SALT = 8,
  BE_POLLUTANT = 16,
  BE_ICE = 32,  ///< only together with moisture
};

/// A combination of balance equations and the number of state variables it needs per element.
struct BalanceEquations {
  int code = 0;
  int nEquationsPerElement = 0;

  /// @param selected the project's set, in the order energy, moisture, ice, air, salt, pollutant
  static BalanceEquations fromSelection(const std::bitset<6>& selected);

  /// Whether the balances of this combination can be coupled at all.
  bool isValid() const;

  bool has(balanceEquation_t equation) const { return (code & equation) != 0; }
};

}  // namespace VELMORA_SOLVER
