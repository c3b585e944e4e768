#include "solver/FreezeThawCounting.h"

namespace VELMORA_SOLVER {

void FreezeThawCounting::start(const std::vector<VELMORA::Element>& elements, double threshold, int kind,
                               double t) {
  counters_.assign(elements.size(), VELMORA::FreezeThaw());
  for (const VELMORA::Element& element : elements)
    counters_[static_cast<std::size_t>(element.number)].setMaterial(element.material);
  cycles_.assign(elements.size(), 0);
  iceSaturation_.assign(elements.size(), 0.0);
  threshold_ = threshold;
  kind_ = kind;
  clock_ = t;
}

void FreezeThawCounting::update(double t, const SolverState& state) {
  if (!isActive() || t < clock_ + INTERVAL) return;
  for (std::size_t e = 0; e < counters_.size(); ++e) {
    counters_[e].update(state.rhoIce[e], state.T[e], threshold_, kind_);
    cycles_[e] = counters_[e].cycles;
    iceSaturation_[e] = counters_[e].iceSaturation;
  }
  clock_ += INTERVAL;
}

bool FreezeThawCounting::resume(const std::vector<std::uint32_t>& cycles,
                                const std::vector<std::uint8_t>& frozen) {
  if (cycles.size() != counters_.size() || frozen.size() != counters_.size()) return false;
  cycles_ = cycles;
  for (std::size_t e = 0; e < counters_.size(); ++e) {
    counters_[e].cycles = cycles[e];
    counters_[e].frozen = frozen[e] != 0;
  }
  return true;
}

std::vector<std::uint8_t> FreezeThawCounting::frozen() const {
  std::vector<std::uint8_t> result;
  for (const VELMORA::FreezeThaw& counter : counters_) result.push_back(counter.frozen ? 1 : 0);
  return result;
}

}  // namespace VELMORA_SOLVER
