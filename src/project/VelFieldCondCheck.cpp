#include "project/ParameterLimits.h"
#include "project/VelFieldCond.h"

namespace VELMORA {

void VelFieldCond::checkParameters() const {
  switch (condition) {
    case C_WATSOURCE:
      checkWaterSource();
      break;
    case C_LW_RADIATION:
    case C_AMBIENTRADIATION:
      checkEmission();
      break;
    case C_REMWATSOUR:
    case C_REMWATSINK:
      checkRemoteWater();
      break;
    case C_REMENESOUR:
      requireAtLeast(para[P_FLUID_CAPACITY], "FLUID_CAPACITY", 0.0, "J/m3K");
      break;
    case C_REMENESINK:
      requireAtLeast(para[P_LIM_SNK_TEMPERATURE], "LIM_SNK_TEMPERATURE", -273.15, "C");
      break;
    case C_PCMENESOUR:
      checkPhaseChange();
      break;
    case C_GAS_CONVECTION:
      checkGasConvection();
      break;
    case C_CONVECTIVE_SOURCE:
      if (wtaModel) wtaModel->checkParameters();
      break;
    default:
      break;
  }
}

void VelFieldCond::checkWaterSource() const {
  if (para[P_MAX_WATCONT].isSet()) requireAtLeast(para[P_MAX_WATCONT], "MAX_WATCONT", 0.0, "m3/m3");
  if (para[P_MIN_WATCONT].isSet()) requireAtLeast(para[P_MIN_WATCONT], "MIN_WATCONT", 0.0, "m3/m3");
}

void VelFieldCond::checkEmission() const {
  const bool ambient = condition == C_AMBIENTRADIATION;
  const auto check = [&](para_t index, const char* keyword, flag_t direction) {
    if (ambient ? para[index].isSet() : flags.test(direction)) {
      requireWithin(para[index], keyword, 0.0, 1.0, "-");
    }
  };
  check(P_LEFT_EMISS_COEFF, "LEFT_EMISS_COEFF", F_LW_RADIATION_X);
  check(P_RIGHT_EMISS_COEFF, "RIGHT_EMISS_COEFF", F_LW_RADIATION_X);
  check(P_TOP_EMISS_COEFF, "TOP_EMISS_COEFF", F_LW_RADIATION_Y);
  check(P_BOTTOM_EMISS_COEFF, "BOTTOM_EMISS_COEFF", F_LW_RADIATION_Y);
}

void VelFieldCond::checkRemoteWater() const {
  if (condition == C_REMWATSOUR) {
    requireAtLeast(para[P_WATTRANSFCOEFF], "WATTRANSFCOEFF", 0.0, "kg/s");
  }
  requireWithin(para[P_LIM_SATDEGREE], "LIM_SATDEGREE", 0.0, 1.0, "-");
  requireAtLeast(para[P_WATTRANS_EXPONENT], "WATTRANS_EXPONENT", 0.0, "-", LIMIT_EXCLUDED);
}

void VelFieldCond::checkPhaseChange() const {
  requireAtLeast(para[P_ENETRANSFCOEFF], "ENETRANSFCOEFF", 0.0, "J/s");
  requireAtLeast(para[P_PCM_MELT_TEMP], "PCM_MELT_TEMP", -273.15, "C", LIMIT_EXCLUDED);
  requireAtLeast(para[P_PCM_DEL_TEMP], "PCM_DEL_TEMP", 0.0, "K", LIMIT_EXCLUDED);
}

void VelFieldCond::checkGasConvection() const {
  requireAtLeast(para[P_GC_GASTYPE], "GC_GASTYPE", 0.0, "-");
  requireAtMost(para[P_GC_GASTYPE], "GC_GASTYPE", 4.0, "-", LIMIT_EXCLUDED);
  requireWithin(para[P_GC_GASPROPORTION], "GC_GASPROPORTION", 0.0, 100.0, "%");
  requireWithin(para[P_GC_INCLINATION], "GC_INCLINATION", 0.0, 90.0, "Deg");
}

}  // namespace VELMORA
