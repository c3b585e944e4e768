#include "solver/ModelSettings.h"

namespace VELMORA_SOLVER {

ModelSettings ModelSettings::of(const VELMORA::VelInit& init, const VELMORA::VelDisc& disc) {
  constexpr double HYDROSTATIC_MARGIN = 0.02;  // [m3/m3] room for the pressure below a water table
  const auto& integrator = init.solverSettings.cvodeSettings;
  ModelSettings settings;
  settings.equations = BalanceEquations::fromSelection(init.balanceEquations);
  settings.useKirchhoff = init.useKirchhoff;
  settings.useGravity = init.useGravity;
  settings.preventOverfilling = integrator.preventOverfilling;
  settings.useStrictRangeChecking = integrator.useStrictRangeChecking;
  settings.overfillMargin = init.useHydrostatic ? HYDROSTATIC_MARGIN : 0.0;
  settings.thetaZ = disc.thetaZ;
  settings.height = disc.height;
  settings.startTimeOffset = static_cast<double>(init.startTime);
  return settings;
}

}  // namespace VELMORA_SOLVER
