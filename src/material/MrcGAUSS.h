#pragma once

#include <string>
#include <vector>

#include "foundation/ScalarFunction.h"
#include "material/ModelDataContainer.h"

namespace MM {

/// Pore size density over log10(pC / Pa): a sum of normal distributions, one for each mode, with its mean at
/// the capillary pressure of a pore of the mode's radius.
class MrcGAUSS_dpC final : public TKL::ScalarFunction {
 public:
  struct Mode {
    double w;  ///< weight
    double r;  ///< pore radius [m]
    double s;  ///< standard deviation in log10(pC)
  };

  std::vector<Mode> modes;

  /// Takes blank separated lists of weights, deviations and radii, as long as the shortest of them.
  /// @throws TKL::Exception where the weights do not sum up to 1
  void setData(const std::string& weights, const std::string& deviations, const std::string& radii);

  double operator()(double logpC) const override;
};

/// Retention curve of the multi-modal model: liquid content [m3/m3] over log10(pC / Pa), the effective
/// saturation times what is left of the pore size distribution above pC.
class MrcGAUSS final : public TKL::ScalarFunction {
 public:
  double scale = 1.0;  ///< [m3/m3] effective saturation
  MrcGAUSS_dpC density;
  double tolerance = 1e-7;  ///< of the integral, relative

  /// Takes the lists GAUSS_Wi, GAUSS_Si and GAUSS_Ri of a model.
  /// @throws TKL::Exception "Mismatching or missing GAUSS model parameters.", and what the density throws
  void setData(double thetaEff, const ModelDataContainer& model);

  double operator()(double logpC) const override;

 private:
  double integral(double a, double b) const;
};

}  // namespace MM
