#pragma once

#include <array>

#include "material/MaterialBase.h"
#include "material/MaterialFunctionBase.h"

namespace MM {

/// Thermal conductivity of a material in one direction.
class ThermalTransport final : public MaterialFunctionBase {
 public:
  enum Functions { F_lambda_Theta, F_lambda_T, NUM_F };

  /// What the conductivity depends on.
  enum kind_t { K_THETA, K_T, K_THETA_AND_T, K_CONSTANT, K_NONE };

  std::array<TKL::LinearSpline, NUM_F> functions;  ///< [W/mK] over Theta_l [m3/m3], over T [K]
  int kind = K_NONE;
  double lambda = 0.0;  ///< [W/mK] of the dry material
  int direction = 0;    ///< 0, 1, 2 for U, V, W

  /// Thermal conductivity [W/mK] at liquid content `Theta_l` [m3/m3], temperature `T` [K] and ice content
  /// [m3/m3, volume of the melted ice]. Both curves are absolute, so their product is divided by the dry
  /// value once. Ice conducts better than water: it adds the difference of the two in a parallel
  /// arrangement, if the conductivity depends on moisture at all. 0 without a function.
  double conductivity(double Theta_l, double T, double iceContent) const {
    if (kind == K_THETA) return functions[F_lambda_Theta].value(Theta_l) + ICE_GAIN * iceContent;
    return otherConductivity(Theta_l, T, iceContent);
  }

  /// Decides the kind. A missing LAMBDA is a warning and leaves `K_NONE`.
  /// @throws TKL::Exception with the context "Error initializing thermal transport functionality for
  /// calculation."
  void prepareCalculation(const MaterialBase& material, int materialDirection);

  /// Warns about curves that do not fit the base parameters.
  void checkLimits(const MaterialBase& material) const;

  void read(const std::vector<std::string>& lines) override;
  void read(const std::string& text) override;
  void writeBinary(std::ostream& out) const override;
  void write(std::ostream& out, int indent) const override;
  void readBinary(std::istream& in) override;
  void clear() override;

 private:
  static constexpr double ICE_GAIN = 2.2 - 0.6;  ///< [W/mK] conductivity of ice less that of water

  double otherConductivity(double Theta_l, double T, double iceContent) const;
  void denormalize(const MaterialBase& material);
  void denormalizeTheta(const MaterialBase& material);
  void checkThetaLimits(const MaterialBase& material) const;
  void checkScaling(const MaterialBase& material) const;
};

}  // namespace MM
