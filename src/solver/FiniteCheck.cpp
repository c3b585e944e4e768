#include "solver/FiniteCheck.h"

#include <array>
#include <cmath>
#include <vector>

namespace VELMORA_SOLVER {

namespace {

struct NamedArray {
  std::vector<double> SolverState::*values;
  const char* name;
};

/// In the order in which they follow from each other.
constexpr std::array<NamedArray, 15> DECOMPOSED{{
    {&SolverState::T, "temperature"},
    {&SolverState::Theta, "moisture content"},
    {&SolverState::pC, "capillary pressure"},
    {&SolverState::RH, "relative humidity"},
    {&SolverState::pV, "vapour pressure"},
    {&SolverState::rhoVapour, "vapour density"},
    {&SolverState::rhoIce, "ice density"},
    {&SolverState::lambda, "thermal conductivity"},
    {&SolverState::Kv, "vapour conductivity"},
    {&SolverState::Kirchhoff, "liquid flow potential"},
    {&SolverState::Kl, "liquid conductivity"},
    {&SolverState::Dl, "liquid diffusivity"},
    {&SolverState::rhoVOC, "pollutant density in the pore gas"},
    {&SolverState::pVOC, "pollutant pressure"},
    {&SolverState::DVOC, "pollutant conductivity"},
}};

std::size_t firstNotFinite(std::span<const double> values) {
  std::size_t i = 0;
  while (i < values.size() && std::isfinite(values[i])) ++i;
  return i;
}

const char* conservedQuantity(std::size_t position, const BalanceEquations& equations) {
  const bool energy = equations.has(BE_ENERGY);
  if (energy && position == 0) return "energy density";
  const bool moisture = equations.has(BE_MOISTURE);
  if (moisture && position == (energy ? 1U : 0U)) return "moisture density";
  const std::size_t ofGas = equations.has(BE_MOISTURE) ? 2U : 1U;  // a pollutant comes with energy only
  return position == ofGas ? "pollutant mass in the pore gas" : "pollutant mass in the solid";
}

}  // namespace

bool allFinite(std::span<const double> values) noexcept {
  // a finite number times 0 is 0, any other is NaN, and stays so in the sums
  double sums[4] = {};
  std::size_t i = 0;
  for (; i + 4 <= values.size(); i += 4)
    for (std::size_t k = 0; k < 4; ++k) sums[k] += values[i + k] * 0.0;
  for (; i < values.size(); ++i) sums[0] += values[i] * 0.0;
  return sums[0] + sums[1] + sums[2] + sums[3] == 0.0;
}

std::optional<NotFinite> findNotFinite(std::span<const double> y, std::span<const double> ydot,
                                       const SolverState& state, const BalanceEquations& equations) {
  const auto perElement = static_cast<std::size_t>(equations.nEquationsPerElement);
  const std::size_t inState = firstNotFinite(y);
  if (inState < y.size())
    return NotFinite{inState / perElement, conservedQuantity(inState % perElement, equations)};
  if (ydot.empty()) return std::nullopt;
  for (const NamedArray& array : DECOMPOSED) {
    const std::vector<double>& values = state.*array.values;
    const std::size_t element = firstNotFinite(values);
    if (element < values.size()) return NotFinite{element, array.name};
  }
  const std::size_t inRate = firstNotFinite(ydot);
  if (inRate == ydot.size()) return std::nullopt;
  return NotFinite{inRate / perElement,
                   std::string("change of the ") + conservedQuantity(inRate % perElement, equations)};
}

}  // namespace VELMORA_SOLVER
