#pragma once

#include <cmath>

#include "foundation/Parameter.h"

namespace VELMORA {

/// The time in which a condition acts [s]; both ends belong to it, with a margin for rounding.
struct ActivityWindow {
  double from = 0.0;
  double until = 1e300;  ///< never ends

  ActivityWindow() = default;
  ActivityWindow(const TKL::Parameter& start, const TKL::Parameter& end) {
    if (start.isSet()) from = start.value;
    if (end.isSet()) until = end.value;
  }

  bool contains(double t) const {
    constexpr double MARGIN = 1e-10;
    return (from <= t || std::fabs(from - t) <= MARGIN) && (t <= until || std::fabs(until - t) <= MARGIN);
  }
};

}  // namespace VELMORA
