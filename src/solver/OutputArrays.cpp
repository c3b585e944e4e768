#include "solver/OutputArrays.h"

#include <algorithm>

namespace VELMORA_SOLVER {

void OutputArrays::start(std::size_t nElements) {
  for (auto* values : {&localErrorU_, &localErrorMw_, &heatPipeSupply_, &heatPipeReturn_, &heatPipeHeatFlux_})
    values->assign(nElements, 0.0);
}

void OutputArrays::noteErrors(std::span<const double> weights, std::span<const double> errors) {
  constexpr double SMALLEST = 1e-20;
  for (std::size_t e = 0; e < localErrorU_.size(); ++e) {
    const std::size_t u = 2 * e;
    localErrorU_[e] = std::max({localErrorU_[e], SMALLEST, weights[u] * errors[u]});
    localErrorMw_[e] = std::max({localErrorMw_[e], SMALLEST, weights[u + 1] * errors[u + 1]});
  }
}

void OutputArrays::takeHeatPipes(std::span<const VELMORA::VelBoundaryCond> conditions) {
  for (const VELMORA::VelBoundaryCond& condition : conditions) {
    const VELMORA::HeatPipe& pipe = condition.heatPipe;
    for (const auto& [number, share] : pipe.shares) {
      const auto e = static_cast<std::size_t>(number);
      heatPipeSupply_[e] = pipe.supplyTemperature;
      heatPipeReturn_[e] = pipe.returnTemperature;
      heatPipeHeatFlux_[e] = pipe.heatFlux;
    }
  }
}

void OutputArrays::show(VELMORA::OutputSource& source) const {
  source.localErrorU = localErrorU_;
  source.localErrorMw = localErrorMw_;
  source.heatPipeSupply = heatPipeSupply_;
  source.heatPipeReturn = heatPipeReturn_;
  source.heatPipeHeatFlux = heatPipeHeatFlux_;
}

}  // namespace VELMORA_SOLVER
