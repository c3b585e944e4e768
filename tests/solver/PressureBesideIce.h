#pragma once

#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "solver/IceBalance.h"

namespace VELMORA_SOLVER {

/// `IceBalance::equilibriumPressure` [Pa] at T [K] with the logarithm of the library.
inline double pressureBesideIce(double T) {
  return IceBalance::equilibriumPressure(T, std::log(T / TKL::T_FREEZE));
}

}  // namespace VELMORA_SOLVER
