#include <cmath>
#include <stdexcept>
#include <string>

#include "solver/RightHandSide.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

namespace {

constexpr double SURFACE_COEFFICIENT = 10000.0;  // [W/m2K] a given surface temperature

/// Current value of a climate condition that a boundary condition needs.
double clim(const VelBoundaryCond& bc, VelClimateCond::condition_t quantity, const char* functionId) {
  return bc.requireClimate(quantity, functionId).currentValue;
}

/// Heat exchange coefficient [W/m2K] that grows with the velocity of the air.
double exchangeCoefficient(const VelBoundaryCond& bc, const char* functionId) {
  const double slope = bc.para[VelBoundaryCond::P_EXCH_SLOPE].value;
  const double stillAir = bc.para[VelBoundaryCond::P_EXCOEFF].value;
  if (!(slope > 0.0)) return stillAir;
  const TKL::Parameter& exponent = bc.para[VelBoundaryCond::P_EXCH_EXP];
  const double velocity = clim(bc, VelClimateCond::C_WINDVEL, functionId);
  if (!exponent.isSet() || exponent.value == 1.0) return stillAir + slope * velocity;
  return stillAir + std::pow(velocity, exponent.value) * slope;
}

}  // namespace

/// Heat flux density [W/m2] into the element. The exchange acts on the temperature of the element's centre.
double RightHandSide::boundaryFluxHeatConduction(const BoundaryTerm& term) const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::boundaryFluxHeatConduction]";
  const VelBoundaryCond& bc = *term.condition;
  const double T = state.T[static_cast<std::size_t>(term.element)];
  switch (bc.kind) {
    case VelBoundaryCond::K_SURFVAL:
      return (clim(bc, VelClimateCond::C_TEMPER, FUNC_ID) - T) * SURFACE_COEFFICIENT;
    case VelBoundaryCond::K_IMPFLUX:
      return clim(bc, VelClimateCond::C_HEATFLUXDENS, FUNC_ID);
    case VelBoundaryCond::K_EXCHANGE:
      return (clim(bc, VelClimateCond::C_TEMPER, FUNC_ID) - T) * bc.para[VelBoundaryCond::P_EXCOEFF].value;
    case VelBoundaryCond::K_EXCHANGE_VEL:
      return (clim(bc, VelClimateCond::C_TEMPER, FUNC_ID) - T) * exchangeCoefficient(bc, FUNC_ID);
    default:
      throw std::runtime_error(
          "[VelmoraCvodeSolver::boundaryFluxHeatConduction]  Invalid kind type of the boundary condition '" +
          bc.name + "'");
  }
}

}  // namespace VELMORA_SOLVER
