#pragma once

#include "project/VelDisc.h"
#include "project/VelInit.h"
#include "solver/BalanceEquations.h"

namespace VELMORA_SOLVER {

/// What the balance equations need to know of a project's settings.
struct ModelSettings {
  BalanceEquations equations;
  bool useKirchhoff = true;             ///< liquid water moves by the Kirchhoff potential where it can
  bool useGravity = false;              ///< the weight of water drives it
  bool preventOverfilling = true;       ///< throttle flows into an element that is almost full
  bool useStrictRangeChecking = false;  ///< ask for a shorter step where a state lies far out of its range
  double overfillMargin = 0.0;          ///< [m3/m3] moisture content allowed above the effective saturation
  double thetaZ = 0.0;                  ///< [Deg] inclination of the construction
  double height = 0.0;                  ///< [m] of the construction
  double startTimeOffset = 0.0;         ///< [s] start of the simulation in its year

  static ModelSettings of(const VELMORA::VelInit& init, const VELMORA::VelDisc& disc);
};

}  // namespace VELMORA_SOLVER
