#include "foundation/PhysicalConstants.h"

#include <cmath>

#include "foundation/CheckedMath.h"

namespace TKL {

double pSat(double T) {
  if (T >= T_FREEZE) {
    return 288.68 * f_pow(1.098 + (T - T_FREEZE) / 100.0, 8.02);
  }
  return 4.689 * f_pow(1.486 + (T - T_FREEZE) / 100.0, 12.3);
}

double pCFromRH(double RH, double T) {
  // RHO_W * R_V * ln(1e-10)
  constexpr double DRIEST_PER_KELVIN = -10635410.2860577;
  if (RH < 1e-10) {
    return T * DRIEST_PER_KELVIN;
  }
  if (RH >= std::exp(-1.0 / (T * RHO_W * R_V))) {
    return -1.0;
  }
  return std::log(RH) * RHO_W * R_V * T;
}

}  // namespace TKL
