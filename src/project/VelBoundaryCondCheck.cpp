#include "project/ParameterLimits.h"
#include "project/VelBoundaryCond.h"

namespace VELMORA {

bool VelBoundaryCond::checkParameters() const {
  switch (condition) {
    case C_HEATCOND:
      checkHeatConduction();
      break;
    case C_VAPDIFF:
      checkVapourDiffusion();
      break;
    case C_RAIN:
      checkRain();
      break;
    case C_SHWRAD:
      checkShortWave();
      break;
    case C_LOWRAD:
      checkLongWave();
      break;
    case C_AIRPRESS:
      checkAirPressure();
      break;
    case C_VOCDIFF:
      if (kind == K_EXCHANGE) requireAtLeast(para[P_EXCOEFF], "EXCOEFF", 0.0, "m/s");
      break;
    default:
      break;
  }
  return true;
}

void VelBoundaryCond::checkHeatConduction() const {
  if (kind == K_EXCHANGE_VEL) requireAtLeast(para[P_EXCH_SLOPE], "EXCH_SLOPE", 0.0, "J/m3K");
  if (kind == K_EXCHANGE || kind == K_EXCHANGE_VEL) {
    requireAtLeast(para[P_EXCOEFF], "EXCOEFF", 0.0, "W/m2K");
  }
  if (kind == K_HEATPIPE) {
    requireAtLeast(para[P_HP_RADIUS], "HP_RADIUS", 0.0, "m", LIMIT_EXCLUDED);
    requireAtLeast(para[P_HP_LENGTH], "HP_LENGTH", 0.0, "m", LIMIT_EXCLUDED);
    requireAtLeast(para[P_HP_CAPACITY], "HP_CAPACITY", 0.0, "J/kgK", LIMIT_EXCLUDED);
    requireAtLeast(para[P_HP_TRANSFER], "HP_TRANSFER", 0.0, "W/m2K", LIMIT_EXCLUDED);
  }
}

void VelBoundaryCond::checkVapourDiffusion() const {
  if (kind == K_EXCHANGE_VEL) requireAtLeast(para[P_EXCH_SLOPE], "EXCH_SLOPE", 0.0, "s2/m2");
  if (kind == K_EXCHANGE || kind == K_EXCHANGE_VEL) {
    requireAtLeast(para[P_EXCOEFF], "EXCOEFF", 0.0, "s/m");
    if (para[P_SD_VALUE].isSet()) requireAtLeast(para[P_SD_VALUE], "SD_VALUE", 0.0, "m");
  }
}

void VelBoundaryCond::checkRain() const {
  if (kind != K_IMPFLUX && kind != K_STDRAIN) return;
  requireAtLeast(para[P_EXPCOEFF], "EXPCOEFF", 0.0, "-");
  requireAtMost(para[P_MINRTEMP], "MINRTEMP", 273.15, "K");
  requireAtLeast(para[P_MINRFLUX], "MINRFLUX", 0.0, "l/m2s");
}

void VelBoundaryCond::checkShortWave() const {
  if (kind == K_SUNRADM) requireWithin(para[P_GRDREFLE], "GRDREFLE", 0.0, 1.0, "-");
  if (kind == K_SUNRADM || kind == K_IMPFLUX) requireWithin(para[P_SURABSOR], "SURABSOR", 0.0, 1.0, "-");
  if (kind == K_SOLARCOLL) {
    requireWithin(para[P_SOLAR_ETA0], "SOLAR_ETA0", 0.0, 1.0, "-");
    requireAtLeast(para[P_SOLAR_K0], "SOLAR_K0", 0.0, "W/m2K");
    requireAtLeast(para[P_SOLAR_K1], "SOLAR_K1", 0.0, "W/m2K2");
  }
}

void VelBoundaryCond::checkLongWave() const {
  const bool fromSky = kind == K_LRADCOMP || kind == K_BOLTZMAN;
  if (fromSky && flags.test(F_INCLUDE_GROUND)) {
    requireWithin(para[P_GRDEMISS], "GRDEMISS", 0.0, 1.0, "-");
  }
  if (fromSky || kind == K_IMPFLUX) requireWithin(para[P_SUREMISS], "SUREMISS", 0.0, 1.0, "-");
}

void VelBoundaryCond::checkAirPressure() const {
  if (kind == K_EXCHANGE) requireAtLeast(para[P_EXCOEFF], "EXCOEFF", 0.0, "s/m");
  if (kind == K_FLOWCOEFF) requireWithin(para[P_AP_FLOWCOEFF], "AP_FLOWCOEFF", 0.0, 1.0, "-");
}

}  // namespace VELMORA
