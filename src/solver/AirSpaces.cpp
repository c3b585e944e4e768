#include <algorithm>
#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "project/VelContactCond.h"
#include "solver/FieldFluxes.h"

namespace VELMORA_SOLVER {

bool FieldFluxes::dependsOnVelocity(const VELMORA::VelContactCond& contact) const {
  return contact.kind == VELMORA::VelContactCond::K_EXCHANGE_VEL && settings_.equations.has(BE_AIR);
}

double FieldFluxes::airDensity(std::size_t element) const {
  return state_.pAir[element] / (TKL::R_A * state_.T[element]);
}

/// Nothing flows through a side that is not there.
double FieldFluxes::airFlow(int side) const {
  return side >= 0 ? records_.airMassFlux[static_cast<std::size_t>(side)] : 0.0;
}

/// Velocity [m/s] of the strongest flow into or out of the air beside a material; for the exchange of heat.
double FieldFluxes::largestAirVelocity(const InnerSide& side) const {
  double largest = 0.0;
  const AirSpace& space = airSpaces_[side.air];
  for (const int number : space.sides) largest = std::max(largest, std::fabs(airFlow(number)));
  return largest / (airDensity(space.element) * side.area);
}

/// Velocity [m/s] of the mean flow through the air beside a material; for the exchange of vapour.
double FieldFluxes::meanAirVelocity(const InnerSide& side) const {
  const AirSpace& space = airSpaces_[side.air];
  const double mean = 0.5 * (airFlow(space.across[0]) + airFlow(space.across[1]));
  return std::fabs(mean) / (airDensity(space.element) * side.area);
}

}  // namespace VELMORA_SOLVER
