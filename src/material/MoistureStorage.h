#pragma once

#include <array>

#include "foundation/CheckedMath.h"
#include "material/MaterialBase.h"
#include "material/MaterialFunctionBase.h"
#include "material/MrcVG.h"
#include "material/NearSaturationFit.h"

namespace MM {

/// Moisture retention curve: liquid content Theta_l [m3/m3] over liquid pressure pl [Pa], and its inverse.
class MoistureStorage final : public MaterialFunctionBase {
 public:
  enum Functions {
    F_Theta_pC_de,  ///< Theta_l over log10(pC / Pa), descending
    F_pC_Theta_de,  ///< log10(pC / Pa) over Theta_l
    F_Theta_RH,     ///< Theta_l over relative humidity
    F_Theta_pC_ad,  ///< adsorption, kept only
    F_pC_Theta_ad,  ///< adsorption, kept only
    F_mwu_T,        ///< kept only
    NUM_F
  };

  enum ModelTypes { MT_GAUSS, MT_VAN_GENUCHTEN, NUM_MT };

  /// The curve in use.
  enum kind_t { K_SPLINE, K_ANALYTIC, K_RH, K_RESERVED, K_NONE };

  std::array<TKL::LinearSpline, NUM_F> functions;
  int kind = K_NONE;
  double ThetaEff = 0.0;               ///< [m3/m3] effective saturation
  double slopeOverSaturation = 1e-07;  ///< [m3/m3 per Pa] keeps the storage capacity above 0 at saturation
  double ThetaLimit = 0.0;             ///< [m3/m3] where the linear branch starts
  double plLimit = 0.0;                ///< [Pa] likewise
  TKL::LinearSpline inverseRH;         ///< relative humidity over Theta_l
  NearSaturationFit nearSaturationFit;
  int modelType = MT_GAUSS;
  MrcVG vanGenuchten;
  bool isAir = false;

  /// Liquid content [m3/m3] at liquid pressure `pl` [Pa] and temperature `T` [K].
  /// @throws TKL::Exception "Unsupported type of moisture storage function or missing initialisation."
  double Thetal_pl(double pl, double T) const;

  /// Liquid pressure [Pa] of a liquid content [m3/m3]; `plGuess` [Pa] is used where no inverse is tabulated.
  /// @throws TKL::Exception "Unsupported type of moisture storage function or missing initialization."
  double pl_Thetal(double Theta_l, double T, double plGuess) const {
    const TKL::LinearSpline& inverse = functions[F_pC_Theta_de];
    const bool isTabulated = kind <= K_ANALYTIC && Theta_l < ThetaLimit && !inverse.empty();
    return isTabulated ? -TKL::f_pow10(inverse.value(Theta_l)) : otherPressure(Theta_l, T, plGuess);
  }

  /// log10(pC / Pa) of a liquid content by a secant iteration from a guess. Counts its passes in
  /// `TKL::mrcIterationCount`. Without convergence: a warning and the last value.
  /// @throws TKL::Exception "Invalid MRC function type."
  double pC_Thetal_iterative(double Theta_l, double logpCGuess) const;

  /// Decides the curve. Faults of the curve are warnings.
  /// @throws TKL::Exception with the context "Error initializing moisture storage functionality for
  /// calculation."
  void prepareCalculation(const MaterialBase& material);

  /// Warns about a curve that does not fit the base parameters.
  void checkLimits(const MaterialBase& material) const;

  /// Scales curves that are given over 0..1 with the effective saturation.
  void denormalize(const MaterialBase& material);

  /// Warns where the curve and its tabulated inverse do not fit together.
  void doReverseCheck() const;

  void read(const std::vector<std::string>& lines) override;
  void read(const std::string& text) override;
  void writeBinary(std::ostream& out) const override;
  void write(std::ostream& out, int indent) const override;
  void readBinary(std::istream& in) override;
  void clear() override;

 private:
  double otherPressure(double Theta_l, double T, double plGuess) const;
  void chooseCurve();
  void prepareTable();
  void prepareModel();
  void generateGaussTable(const ModelDataContainer& model);
  void fitNearSaturation();
  void checkTableLimits() const;
  void checkInverseLimits() const;
  double contentAtLog(double logpC) const;
};

}  // namespace MM
