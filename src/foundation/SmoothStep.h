#pragma once

namespace TKL {

/// Cubic blend: 0 at x = 0, 1 at x = 1, flat at both ends. Not limited outside of 0..1.
constexpr double smoothStep(double x) {
  const double u = 1.0 - x;
  return (2.0 * u - 3.0) * (u * u) + 1.0;
}

/// `smoothStep` stretched to 0..width: 0 below and 1 above.
constexpr double rampTo(double x, double width) {
  if (x <= 0.0) return 0.0;
  if (x >= width) return 1.0;
  return smoothStep(x / width);
}

}  // namespace TKL
