#include "foundation/PhysicalConstants.h"

#include <cmath>

#include "foundation/CheckedMath.h"
#include "foundation/SaturationLaw.h"

namespace TKL {

double pSat(double T) {
  const SaturationLaw law = SaturationLaw::at(T);
  const double base = law.baseAt(T);
  if (base < 0.0) f_pow(base, law.exponent);                    // throws
  return law.factor * std::exp(law.exponent * std::log(base));  // faster than pow
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
