#pragma once

#include <vector>

#include "foundation/ScalarFunction.h"

namespace MM {

/// Retention curve after van Genuchten, several modes: saturation over liquid pressure [Pa],
///   S(pl) = sum of w * (1 + (-a pl)^n)^((1 - n) / n)
class MrcVG final : public TKL::ScalarFunction {
 public:
  struct Mode {
    double w;  ///< weight
    double a;  ///< [1/Pa]
    double n;
  };

  int modality = 0;
  std::vector<Mode> modes;

  double operator()(double pl) const override;
};

}  // namespace MM
