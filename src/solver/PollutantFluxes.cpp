#include "solver/PollutantFluxes.h"

#include "foundation/PhysicalConstants.h"

namespace VELMORA_SOLVER {

PollutantFluxes::PollutantFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
                                 const SolverState& state, FluxRecords& records, double gasConstant)
    : state_(state),
      records_(records),
      harmonic_(settings.equations.has(BE_MOISTURE)),
      air_(settings.equations.has(BE_AIR)),
      gasConstant_(gasConstant) {
  for (const VELMORA::Side& side : data.sides) {
    if (side.elementLeft == nullptr || side.elementRight == nullptr) continue;
    InnerSide inner;
    inner.number = static_cast<std::size_t>(side.number);
    inner.left = static_cast<std::size_t>(side.elementLeft->number);
    inner.right = static_cast<std::size_t>(side.elementRight->number);
    inner.weightLeft = side.weightLeft;
    inner.weightRight = side.weightRight;
    inner.conductance = side.area * side.invDistance;
    sides_.push_back(inner);
  }
}

void PollutantFluxes::calculate() {
  for (const InnerSide& side : sides_) {
    double* flux = records_.vocFlux[side.number];
    flux[VELMORA::VF_DIFFUSION] =
        permeability(side) * side.conductance * (state_.pVOC[side.left] - state_.pVOC[side.right]);
    if (air_) flux[VELMORA::VF_CONVECTION] = convection(side);
    records_.vocFlux.sum(side.number);
  }
}

/// Mean over the two elements [s]. The two ways of calculating it belong to runs with and without moisture.
double PollutantFluxes::permeability(const InnerSide& side) const {
  const double left = state_.DVOC[side.left];
  const double right = state_.DVOC[side.right];
  if (!harmonic_) return left * side.weightLeft + right * side.weightRight;
  const double crossed = left * side.weightRight + right * side.weightLeft;
  return crossed != 0.0 ? left * right / crossed : 0.0;
}

/// Pollutant in the air that passes a side, with its share in the element that the air comes from.
double PollutantFluxes::convection(const InnerSide& side) const {
  const double m = records_.airMassFlux[side.number];
  const std::size_t from = m > 0.0 ? side.left : side.right;
  return m * state_.pVOC[from] / gasConstant_ * TKL::R_A / state_.pAir[from];
}

}  // namespace VELMORA_SOLVER
