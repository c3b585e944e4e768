#include <cmath>

#include "project/VelContactCond.h"
#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_SOLVER {

void VelmoraCvodeSolver::initAirFlow() {
  if (!equations_.has(BE_AIR)) return;
  constexpr int LINEAR = 0;
  airFlow_.init(LINEAR, data_.elements, data_.sides, data_.bandWidth, init_.useBuoyancy);
  airFlow_.temperature = &rhs_->state.T;
  airFlow_.thetaL = &rhs_->state.Theta;
  for (std::size_t s = 0; s < data_.sides.size(); ++s)
    airFlow_.sideResistance[s] = data_.sideQuantities[s][VELMORA::VelContactCond::P_AIRCONVRES];
  nextPressureUpdate_ = 0.0;
}

/// Brings the air pressures up to date where their interval has passed, with temperatures, water contents and
/// climate of the last evaluation. In between the flows of air stay what they are.
void VelmoraCvodeSolver::updateAirFlow(double time) {
  constexpr double MARGIN = 1e-5;  // [s]
  constexpr double NEVER = -1.0;
  if (!equations_.has(BE_AIR) || nextPressureUpdate_ == NEVER) return;
  if (!(time > nextPressureUpdate_) && !(std::fabs(time - nextPressureUpdate_) < MARGIN)) return;
  airFlow_.calculate(time, rhs_->state.pAir, rhs_->records.airMassFlux);
  const double interval = init_.pressureUpdateInterval.value;
  nextPressureUpdate_ = interval > 0.0 ? time + interval : NEVER;
}

}  // namespace VELMORA_SOLVER
