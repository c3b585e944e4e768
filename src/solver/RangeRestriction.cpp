#include "solver/RangeRestriction.h"

#include <algorithm>

#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "foundation/SmoothStep.h"
#include "grid/FluxSlots.h"

namespace VELMORA_SOLVER {

namespace {

const char* const RANGE_ID = "[VelmoraCvodeSolver::restrictMoistureRange]";

bool refuse() {
  TKL::message("Ol out of range, reattempting integration with smaller time step.", TKL::MSG_WARNING,
               RANGE_ID, 1);
  return false;
}

}  // namespace

bool restrictMoistureRange(int element, double t, bool strict, double limit, double& Theta, double& mw) {
  if (Theta > limit) {
    if (strict && Theta > 1.4 * limit) return refuse();
    // a hundredth of the limit, so that practically every clip is told
    if (Theta > 0.01 * limit)
      TKL::message(TKL::FormatString("Ol = %1 > Ol_max in element %2 at t = %3, limiting Ol to %4 m3/m3")
                       .arg(Theta)
                       .arg(element)
                       .arg(t)
                       .arg(limit),
                   TKL::MSG_WARNING, RANGE_ID, 1);
    mw = limit * TKL::RHO_W;
    Theta = limit;
  } else if (Theta < 0.0) {
    if (strict && Theta < -0.2 * limit) return refuse();
    if (Theta < -0.01 * limit)
      TKL::message(TKL::FormatString("Ol = %1 < 0 in element %2 at t = %3, limiting mw to 0 kg/m3")
                       .arg(Theta)
                       .arg(element)
                       .arg(t),
                   TKL::MSG_WARNING, RANGE_ID, 1);
    Theta = 0.0;
    mw = 0.0;
  }
  return true;
}

void restrictVOCRange(int element, double t, double& m) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::restrictVOCRange]";
  constexpr double UNTOLD = -1e-08;  // [kg/m3]
  if (!(m < 0.0)) return;
  if (m < UNTOLD)
    TKL::message(TKL::FormatString("mVOC = %1 < 0 in element %2 at t = %3, limiting mVOC to 0 mg/m3")
                     .arg(m)
                     .arg(element)
                     .arg(t),
                 TKL::MSG_WARNING, FUNC_ID, 1);
  m = 0.0;
}

void limitFlowsForOverfilling(double room, double* moistureFlux, double* heatFlux) {
  using namespace VELMORA;
  if (room >= OVERFILL_WINDOW) return;
  const double f = TKL::smoothStep(std::max(room / OVERFILL_WINDOW, 0.0));
  if (f == 1.0) return;
  const bool forward = moistureFlux[MF_SUM] > 0.0;
  const auto isInward = [forward](double flow) { return forward ? flow > 0.0 : flow < 0.0; };
  if (isInward(moistureFlux[MF_VAPOUR_DIFFUSION])) {
    moistureFlux[MF_VAPOUR_DIFFUSION] *= f;
    heatFlux[HF_VAPOUR_DIFFUSION] *= f;
  }
  if (isInward(moistureFlux[MF_LIQUID])) {
    moistureFlux[MF_LIQUID] *= f;
    heatFlux[HF_LIQUID] *= f;
  }
  if (isInward(moistureFlux[MF_VAPOUR_CONVECTION])) {
    moistureFlux[MF_VAPOUR_CONVECTION] *= f;
    heatFlux[HF_VAPOUR_CONVECTION] *= f;
    heatFlux[HF_AIR] *= f;
  }
  moistureFlux[MF_SUM] = 0.0;
  for (int slot = MF_SUM + 1; slot < NUM_MF; ++slot) moistureFlux[MF_SUM] += moistureFlux[slot];
}

}  // namespace VELMORA_SOLVER
