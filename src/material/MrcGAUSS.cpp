#include "material/MrcGAUSS.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "foundation/CheckedMath.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"

namespace MM {

namespace {

constexpr double SQRT_2_PI = 2.506628;
constexpr double SURFACE_TENSION_TWICE = 0.152;  ///< [N/m] of water
constexpr double WEIGHT_TOLERANCE = 0.0001;

}  // namespace

void MrcGAUSS_dpC::setData(const std::string& weights, const std::string& deviations,
                           const std::string& radii) {
  const char* const FUNC_ID = "[MrcGAUSS_dpC::setData]";
  std::vector<double> w, s, r;
  TKL::string2valueVector(weights, w);
  TKL::string2valueVector(deviations, s);
  TKL::string2valueVector(radii, r);
  modes.clear();
  double sum = 0.0;
  for (std::size_t i = 0; i < std::min({w.size(), s.size(), r.size()}); ++i) {
    modes.push_back({w[i], r[i], s[i]});
    sum += w[i];
  }
  if (std::fabs(sum - 1.0) > WEIGHT_TOLERANCE)
    throw TKL::Exception(
        TKL::FormatString("Weight factors for MRC Gauss model sum up to %1, but sum should be 1.").arg(sum),
        FUNC_ID);
}

double MrcGAUSS_dpC::operator()(double logpC) const {
  double sum = 0.0;
  for (const Mode& mode : modes) {
    const double d = logpC - TKL::f_log10(SURFACE_TENSION_TWICE / mode.r);
    sum += mode.w / (SQRT_2_PI * mode.s) * std::exp(-(d * d) / (2.0 * mode.s * mode.s));
  }
  return sum;
}

void MrcGAUSS::setData(double thetaEff, const ModelDataContainer& model) {
  const char* const FUNC_ID = "[MrcGAUSS::setData]";
  const auto text = [&model](const char* key) {
    const auto found = model.texts.find(key);
    return found == model.texts.end() ? std::string() : found->second;
  };
  const std::string weights = text("GAUSS_Wi");
  const std::string deviations = text("GAUSS_Si");
  const std::string radii = text("GAUSS_Ri");
  if (weights.empty() || deviations.empty() || radii.empty())
    throw TKL::Exception("Mismatching or missing GAUSS model parameters.", FUNC_ID);
  scale = thetaEff;
  density.setData(weights, deviations, radii);
}

double MrcGAUSS::operator()(double logpC) const {
  return scale * std::max(0.0, 1.0 - integral(0.0, logpC));
}

/// Romberg integration after the substitution x = a + (b - a)/2 (1 + t + t (1 - t^2)/2), which lets the
/// integrand vanish at both ends: only midpoints are evaluated.
double MrcGAUSS::integral(double a, double b) const {
  constexpr int MAX_LEVELS = 20;
  constexpr int ENOUGH_LEVELS = 5;  // not to step over a narrow mode
  std::array<double, MAX_LEVELS> row{};
  double running = 0.0;
  double previous = 0.0;
  double result = 0.0;
  double step = 2.0;
  for (int level = 0; level < MAX_LEVELS; ++level, step *= 0.5) {
    double sum = 0.0;
    for (double t = -1.0 + 0.5 * step; t < 1.0; t += step) {
      const double weight = 1.0 - t * t;
      sum += weight * density(a + 0.5 * (b - a) * (1.0 + t + 0.5 * t * weight));
    }
    running = (sum * step + running) * 0.5;
    double value = running;
    double factor = 1.0;
    for (int j = 0; j < level; ++j) {
      factor *= 4.0;
      const double better = value + (value - row[static_cast<std::size_t>(j)]) / (factor - 1.0);
      row[static_cast<std::size_t>(j)] = value;
      value = better;
    }
    row[static_cast<std::size_t>(level)] = value;
    result = value;
    if (std::fabs(result - previous) < std::fabs(result) * tolerance * 16.0) break;
    // An integrand that vanishes in double precision never passes the relative test.
    if (level >= ENOUGH_LEVELS && result == 0.0 && previous == 0.0) break;
    previous = result;
  }
  return (b - a) * result * 3.0 * 0.25;
}

}  // namespace MM
