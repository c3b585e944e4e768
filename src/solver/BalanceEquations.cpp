#include "solver/BalanceEquations.h"

#include <algorithm>
#include <array>

#include "project/VelInit.h"

namespace VELMORA_SOLVER {

BalanceEquations BalanceEquations::fromSelection(const std::bitset<6>& selected) {
  using VELMORA::VelInit;
  BalanceEquations result;
  if (selected[VelInit::B_ENERGY]) {
    result.code |= BE_ENERGY;
    result.nEquationsPerElement += 1;
  }
  if (selected[VelInit::B_MOISTURE]) {
    result.code |= BE_MOISTURE;
    result.nEquationsPerElement += 1;
    if (selected[VelInit::B_ICE]) result.code |= BE_ICE;
  }
  if (selected[VelInit::B_AIR]) result.code |= BE_AIR;
  if (selected[VelInit::B_SALT]) result.code |= BE_SALT;
  if (selected[VelInit::B_POLLUTANT]) {
    result.code |= BE_POLLUTANT;
    result.nEquationsPerElement += 2;
  }
  return result;
}

bool BalanceEquations::isValid() const {
  constexpr std::array accepted = {1, 2, 3, 5, 7, 17, 19, 21, 23, 35};
  return std::find(accepted.begin(), accepted.end(), code) != accepted.end();
}

}  // namespace VELMORA_SOLVER
