#include "solver/InitialConditions.h"

#include <algorithm>

#include "foundation/Message.h"
#include "project/VelInitialCond.h"

namespace VELMORA_SOLVER {

namespace {
constexpr double COLDEST_PLAUSIBLE = 223.15;  // [K]
}

double initialTemperature(const VELMORA::Element& element, const TKL::Parameter& defaultTemperature) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::setInitialConditions]";
  const auto& conditions = element.initialConds;
  const auto last = std::find_if(conditions.rbegin(), conditions.rend(), [](const auto* condition) {
    return condition->condition == VELMORA::VelInitialCond::C_TEMPER;
  });
  const double T = last != conditions.rend() ? (*last)->value.value : defaultTemperature.value;
  if (T < COLDEST_PLAUSIBLE)
    TKL::message("Initial temperature below -50 degree C. Simulation results will probably be invalid!",
                 TKL::MSG_WARNING, FUNC_ID, -1);
  return T;
}

}  // namespace VELMORA_SOLVER
