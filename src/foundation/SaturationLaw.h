#pragma once

#include "foundation/PhysicalConstants.h"

namespace TKL {

/// Saturation pressure of vapour, p = factor * (base + (T - T_FREEZE) / 100)^exponent.
struct SaturationLaw {
  double factor;  ///< [Pa]
  double base;
  double exponent;

  constexpr double baseAt(double T) const { return base + (T - T_FREEZE) / 100.0; }

  static constexpr SaturationLaw at(double T) {
    const bool isWater = T >= T_FREEZE;
    return {isWater ? 288.68 : 4.689, isWater ? 1.098 : 1.486, isWater ? 8.02 : 12.3};
  }
};

}  // namespace TKL
