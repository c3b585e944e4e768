#include "foundation/PhysicalConstants.h"
#include "material/Material.h"
#include "solver/BoundaryClimate.h"
#include "solver/BoundaryFluxes.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

namespace {

const char* const INFILTRATION_ID = "[VelmoraCvodeSolver::boundaryFluxAirInfiltration]";

/// Vapour pressure [Pa] of air that enters.
double enteringVapour(const VelBoundaryCond& bc) {
  if (bc.climate[VelClimateCond::C_RELHUM] == nullptr)
    return clim(bc, VelClimateCond::C_VAPPRESS, INFILTRATION_ID);
  return TKL::pSat(clim(bc, VelClimateCond::C_TEMPER, INFILTRATION_ID)) *
         clim(bc, VelClimateCond::C_RELHUM, INFILTRATION_ID);
}

}  // namespace

/// Enthalpy, vapour and pollutant of the air that passes a surface [W], [kg/s]. The flow of air has its sign
/// already. Air that leaves needs no climate but the pressure.
void BoundaryFluxes::airInfiltration(const Term& term) {
  if (traits_[term.element].material->isAirTight()) return;
  const VelBoundaryCond& bc = *term.condition;
  const double outside = clim(bc, VelClimateCond::C_GASPRESS, INFILTRATION_ID);
  const double m = records_.airMassFlux[term.side];
  const bool entering = term.inward > 0.0 ? m > 0.0 : m < 0.0;
  const bool energy = settings_.equations.has(BE_ENERGY);
  double* heat = records_.heatFlux[term.side];
  double Tu = state_.T[term.element];
  if (energy) {
    if (entering) Tu = clim(bc, VelClimateCond::C_TEMPER, INFILTRATION_ID);
    heat[VELMORA::HF_AIR] = Tu * TKL::C_A * m;
  }
  if (settings_.equations.has(BE_MOISTURE)) {
    const double pV = entering ? enteringVapour(bc) : state_.pV[term.element];
    const double pressure = entering ? outside : state_.pAir[term.element];
    const double vapour = pV / TKL::R_V * TKL::R_A / pressure * m;
    records_.moistureFlux[term.side][VELMORA::MF_VAPOUR_CONVECTION] = vapour;
    if (energy) heat[VELMORA::HF_INFILTRATION_SHORTWAVE] = TKL::h_v(Tu) * vapour;
  }
  if (settings_.equations.has(BE_POLLUTANT)) pollutantInfiltration(term, m, entering, INFILTRATION_ID);
}

}  // namespace VELMORA_SOLVER
