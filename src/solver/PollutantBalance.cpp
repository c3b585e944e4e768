#include "solver/PollutantBalance.h"

#include <algorithm>

#include "material/Material.h"
#include "solver/RangeRestriction.h"

namespace VELMORA_SOLVER {

namespace {

constexpr std::uint32_t BALANCED_VOC = 0;         // position in the library
constexpr double PARTITION_REFERENCE_T = 296.15;  // [K] of the partition coefficients

}  // namespace

PollutantBalance::PollutantBalance(const VELMORA::CalculationData& data,
                                   const POLLUTANT_LIB::PollutantLibrary& library)
    : library_(library), gasConstant_(library.Rv(BALANCED_VOC)) {
  places_.reserve(data.elements.size());
  const double saturation = library.rhoSat(BALANCED_VOC, PARTITION_REFERENCE_T);
  for (const VELMORA::Element& element : data.elements) {
    Place& place = places_.emplace_back();
    if (element.material == nullptr) continue;  // refused when it gets its start values
    const auto material = std::find(data.materials.begin(), data.materials.end(), element.material);
    place.material = static_cast<std::uint32_t>(material - data.materials.begin());
    place.porosity = element.material->thetaPor();
    place.saturatedCapacity = library.partC(BALANCED_VOC, place.material) * saturation;
  }
}

void PollutantBalance::decompose(std::size_t e, double t, SolverState& state) const {
  const Place& place = places_[e];
  restrictVOCRange(static_cast<int>(e), t, state.mVOC1[e]);
  restrictVOCRange(static_cast<int>(e), t, state.mVOC2[e]);
  state.rhoVOC[e] = state.mVOC1[e] / place.porosity;
  state.pVOC[e] = gasConstant_ * state.rhoVOC[e] * state.T[e];
  state.DVOC[e] = library_.logKVOC(BALANCED_VOC, place.material, state.T[e], state.Theta[e]);
}

double PollutantBalance::equilibriumDensity(std::size_t e, const SolverState& state) const {
  const double partition = places_[e].saturatedCapacity / library_.rhoSat(BALANCED_VOC, state.T[e]);
  return state.mVOC2[e] / partition;
}

}  // namespace VELMORA_SOLVER
