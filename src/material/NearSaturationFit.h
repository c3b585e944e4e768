#pragma once

namespace MM {

/// Polynomial that carries a tabulated retention curve from a liquid pressure of -100 Pa to saturation, where
/// the table over the logarithm of the pressure ends.
struct NearSaturationFit {
  double a0 = 0.0, a1 = 0.0, a2 = 0.0, a3 = 0.0;
  double b0 = 0.0, b1 = 0.0, b2 = 0.0;
  bool useCubic = true;

  /// Liquid content [m3/m3] at a liquid pressure [Pa].
  double value(double pl) const {
    return useCubic ? ((a3 * pl + a2) * pl + a1) * pl + a0 : (b2 * pl + b1) * pl + b0;
  }
};

}  // namespace MM
