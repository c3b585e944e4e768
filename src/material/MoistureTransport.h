#pragma once

#include <algorithm>
#include <array>

#include "foundation/CheckedMath.h"
#include "foundation/PhysicalConstants.h"
#include "material/MaterialBase.h"
#include "material/MaterialConstants.h"
#include "material/MaterialFunctionBase.h"
#include "material/MoistureStorage.h"

namespace MM {

/// Liquid and vapour conductivity of a material in one direction.
class MoistureTransport final : public MaterialFunctionBase {
 public:
  enum Functions {
    F_lgKl,  ///< log10 of the liquid conductivity [s] over Theta_l
    F_lgDl,  ///< log10 of the liquid diffusivity [m2/s] over Theta_l
    F_lgKv,  ///< log10 of the vapour conductivity [s] over Theta_l
    F_mew,   ///< vapour diffusion resistance factor over relative humidity
    NUM_F
  };

  enum liquid_t { L_KL, L_DL, L_NONE };
  enum vapor_t { V_KV, V_MEW_RH, V_MEW, V_NONE };

  std::array<TKL::LinearSpline, NUM_F> functions;
  TKL::LinearSpline Psi;  ///< generated Kirchhoff potential [kg/ms] over Theta_l
  int liquidKind = L_NONE;
  int vaporKind = V_NONE;
  double mew = 0.0;       ///< constant vapour diffusion resistance factor
  double ThetaPor = 0.0;  ///< [m3/m3] porosity, 1 for air
  int direction = 0;      ///< 0, 1, 2 for U, V, W

  /// Liquid conductivity [s]; only with `liquidKind` `L_KL`.
  double Kl(double Theta_l) const { return TKL::f_pow10(functions[F_lgKl].value(Theta_l)); }

  /// Liquid diffusivity [m2/s]; only with `liquidKind` `L_DL`.
  double Dl(double Theta_l) const { return TKL::f_pow10(functions[F_lgDl].value(Theta_l)); }

  /// Vapour conductivity [s] at liquid content [m3/m3] and relative humidity. With a resistance factor it is
  /// that of air at 23 C over the factor, in the share of the pores that holds no water. Not below 0.
  double Kv(double Theta_l, double RH) const {
    switch (vaporKind) {
      case V_KV:
        return TKL::f_pow10(functions[F_lgKv].value(Theta_l));
      case V_MEW_RH:
        return openShare(Theta_l) * KV_AIR / functions[F_mew].value(RH);
      case V_MEW:
        return openShare(Theta_l) * KV_AIR / mew;
      default:
        return 0.0;
    }
  }

  /// Decides the kinds and generates the Kirchhoff potential.
  /// @throws TKL::Exception with the context "Error initializing moisture transport functionality for
  /// calculation."
  void prepareCalculation(const MaterialBase& material, const MoistureStorage& storage,
                          int materialDirection);

  /// Warns about a missing liquid function, or about the first interval, counted from 1, in which it falls.
  void checkLiquidFunctionMonotony(const MaterialBase& material) const;

  void read(const std::vector<std::string>& lines) override;
  void read(const std::string& text) override;
  void writeBinary(std::ostream& out) const override;
  void write(std::ostream& out, int indent) const override;
  void readBinary(std::istream& in) override;
  void clear() override;

 private:
  static constexpr double KV_AIR = D_VAPOUR / (TKL::R_V * T_DIFFUSION);  ///< [s] vapour conductivity of air

  double openShare(double Theta_l) const { return std::max(0.0, (ThetaPor - Theta_l) / ThetaPor); }

  bool chooseLiquidKind(const MaterialBase& material, const MoistureStorage& storage);
  void chooseVaporKind(const MaterialBase& material);
  void denormalize(const MaterialBase& material);
  void denormalizeKl(const MaterialBase& material);
  void denormalizeDl(const MaterialBase& material);
  void denormalizeKv(const MaterialBase& material);
  void prepareKichhoffPotential(const MaterialBase& material, const MoistureStorage& storage);
  void integrateKl(const MaterialBase& material, const MoistureStorage& storage);
  void integrateDl(const MoistureStorage& storage);
};

}  // namespace MM
