#include <algorithm>
#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "project/VelContactCond.h"
#include "solver/FieldFluxes.h"

namespace VELMORA_SOLVER {

/// What the air that passes the sides carries: vapour, with its share in the element that the air comes from,
/// and enthalpy of both.
template <bool ENERGY, bool MOISTURE>
void FieldFluxes::addAirConvection() {
  const double* const T = state_.T.data();
  const double* const pV = state_.pV.data();
  const double* const pAir = state_.pAir.data();
  for (const InnerSide& side : sides_) {
    const double m = records_.airMassFlux[side.number];
    const std::size_t from = m > 0.0 ? side.left : side.right;
    double vapour = 0.0;
    if constexpr (MOISTURE) {
      if (side.vapourOpen && !isClosedByFoil(side))
        vapour = m * (pV[from] / pAir[from] * (TKL::R_A / TKL::R_V));
      double* const moisture = records_.moistureFlux[side.number];
      moisture[VELMORA::MF_VAPOUR_CONVECTION] = vapour;
      moisture[VELMORA::MF_SUM] += vapour;
    }
    if constexpr (ENERGY) {
      double* const heat = records_.heatFlux[side.number];
      heat[VELMORA::HF_VAPOUR_CONVECTION] = TKL::h_v(T[from]) * vapour;
      heat[VELMORA::HF_AIR] = T[from] * TKL::C_A * m;
      heat[VELMORA::HF_SUM] += heat[VELMORA::HF_VAPOUR_CONVECTION] + heat[VELMORA::HF_AIR];
    }
  }
}

template void FieldFluxes::addAirConvection<true, true>();
template void FieldFluxes::addAirConvection<true, false>();
template void FieldFluxes::addAirConvection<false, true>();

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
