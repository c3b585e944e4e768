#include "foundation/Exception.h"
#include "solver/PollutantBalance.h"
#include "solver/Sources.h"

namespace VELMORA_SOLVER {

using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

namespace {

const char* const VOC_SOURCE_ID = "[VelmoraCvodeSolver::calculateSourcesHP]";
const char* const MOIST_VOC_SOURCE_ID = "[VelmoraCvodeSolver::calculateSourcesHMP]";

double imposedPollutant(const VelFieldCond& fc, const char* functionId) {
  const double rate = fc.requireClimate(VelClimateCond::C_VOCSOURCE, functionId).currentValue;
  if (rate < 0.0) throw TKL::Exception("Negative VOC sources are currently not supported.", VOC_SOURCE_ID);
  return rate;
}

/// Decay or production in the solid, in proportion to what it holds; next to nothing decays at once.
double chemisorption(const VelFieldCond& fc, double bound) {
  constexpr double NEXT_TO_NOTHING = 1e-12;  // [kg/m3]
  const double rate = bound * fc.para[VelFieldCond::P_CHEMISORPTION_CONST].value;
  return rate < 0.0 && bound <= NEXT_TO_NOTHING ? -bound : rate;
}

}  // namespace

/// Each contribution is that of the last condition of its kind in the element.
void Sources::pollutantSource(const Term& term) {
  const char* const functionId = settings_.equations.has(BE_MOISTURE) ? MOIST_VOC_SOURCE_ID : VOC_SOURCE_ID;
  const VelFieldCond& fc = *term.condition;
  double* gas = records_.vocSource1[term.number];
  double* solid = records_.vocSource2[term.number];
  const double density = state_.rhoVOC[term.number];
  switch (fc.condition) {
    case VelFieldCond::C_VOCSOURCE:
      gas[VELMORA::VS1_IMPOSED] = imposedPollutant(fc, functionId);
      break;
    case VelFieldCond::C_AIRCHANGE:
      gas[VELMORA::VS1_AIR_CHANGE] =
          (fc.requireClimate(VelClimateCond::C_VOCDENSG, functionId).currentValue - density) *
          airChangeRate(fc, functionId);
      break;
    case VelFieldCond::C_VOCADSORPTION: {
      const double uptake = (density - pollutant_->equilibriumDensity(term.number, state_)) *
                            fc.para[VelFieldCond::P_GAS2SOLID_TRANSFER_COEFF].value / term.element->volume;
      gas[VELMORA::VS1_ADSORPTION] = -uptake;
      solid[VELMORA::VS2_ADSORPTION] = uptake;
      break;
    }
    case VelFieldCond::C_VOCCHEMISORPTION:
      solid[VELMORA::VS2_CHEMISORPTION] = chemisorption(fc, state_.mVOC2[term.number]);
      break;
    default:
      break;  // acts on other balances
  }
}

}  // namespace VELMORA_SOLVER
