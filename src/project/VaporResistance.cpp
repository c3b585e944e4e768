#include <algorithm>
#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "project/VelContactCond.h"

namespace VELMORA {

namespace {

/// Humidity [-] between the lower and the higher one at which the sd-value of a foil is taken.
double meanHumidity(double low, double high, double weight) {
  return (1.0 - weight) * low + high * weight;
}

/// A weight that is not set is 1, and the sd-value is not scaled then.
struct FoilSide {
  double weight = 1.0;
  double factor = 1.0;
};

FoilSide foilSide(const std::array<TKL::Parameter, VelContactCond::NUM_P>& para,
                  VelContactCond::para_t weightIndex, VelContactCond::para_t firstScaling, double percent) {
  FoilSide side;
  if (!para[weightIndex].isSet()) return side;
  const auto coefficient = [&](std::size_t i) { return para[firstScaling + i].value; };
  side.weight = para[weightIndex].value;
  side.factor = coefficient(0) + coefficient(1) * percent + coefficient(2) * percent * percent + 1.0;
  return side;
}

}  // namespace

double VelContactCond::vaporResistance(double rhLeft, double rhRight, bool horizontal) const {
  // sd-value [m] to resistance [m/s]: gas constant of vapour, 293.15 K and its diffusivity in air
  constexpr double PER_METRE = 293.15 * TKL::R_V / 2.662e-05;
  if (condition != C_FOIL_ADAPTIVE) return para[P_VAPDIFFRES].value;
  const double percent = std::fabs(rhLeft - rhRight) * 100.0;
  const double high = std::max(rhLeft, rhRight);
  const double low = std::min(rhLeft, rhRight);
  const FoilSide positive = foilSide(para, P_WEIGHT_FACTOR_POS, P_SCALING_A_POS, percent);
  if (kind == K_DIRECTION_INDEPENDENT)
    return functions[FUN_SD_POS].value(meanHumidity(low, high, positive.weight)) * PER_METRE;
  const bool direction = horizontal ? rhLeft <= rhRight : rhRight < rhLeft;
  if (direction == sdPositiveDirection)
    return positive.factor * functions[FUN_SD_POS].value(meanHumidity(low, high, positive.weight)) *
           PER_METRE;
  const FoilSide negative = foilSide(para, P_WEIGHT_FACTOR_NEG, P_SCALING_A_NEG, percent);
  return negative.factor * functions[FUN_SD_NEG].value(meanHumidity(low, high, negative.weight)) * PER_METRE;
}

}  // namespace VELMORA
