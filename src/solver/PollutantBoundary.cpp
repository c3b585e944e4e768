#include <stdexcept>

#include "foundation/PhysicalConstants.h"
#include "solver/BoundaryClimate.h"
#include "solver/BoundaryFluxes.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

/// Pollutant [kg/s] that a surface gives to the ambient air or takes from it.
void BoundaryFluxes::pollutantDiffusion(const Term& term) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::boundaryFluxVOCDiffusion]";
  const VelBoundaryCond& bc = *term.condition;
  if (bc.kind != VelBoundaryCond::K_EXCHANGE)
    throw std::runtime_error(std::string(FUNC_ID) +
                             "  Invalid kind type for VOC diffusion boundary condition '" + bc.name + "'");
  const double difference = clim(bc, VelClimateCond::C_VOCDENSG, FUNC_ID) - state_.rhoVOC[term.element];
  records_.vocFlux[term.side][VELMORA::VF_DIFFUSION] =
      difference * parameter(bc, VelBoundaryCond::P_EXCOEFF) * term.inward;
}

/// Pollutant [kg/s] in the air m [kg/s] that passes a surface: its density over that of the air, of the
/// climate or of the element that the air leaves.
void BoundaryFluxes::pollutantInfiltration(const Term& term, double m, bool entering,
                                           const char* functionId) {
  const VelBoundaryCond& bc = *term.condition;
  const std::size_t e = term.element;
  double density = state_.rhoVOC[e];
  double pressure = state_.pAir[e];
  double T = state_.T[e];
  if (entering) {
    density = clim(bc, VelClimateCond::C_VOCDENSG, functionId);
    pressure = clim(bc, VelClimateCond::C_GASPRESS, functionId);
    T = clim(bc, VelClimateCond::C_TEMPER, functionId);
  }
  records_.vocFlux[term.side][VELMORA::VF_CONVECTION] = density / (pressure / (T * TKL::R_A)) * m;
}

}  // namespace VELMORA_SOLVER
