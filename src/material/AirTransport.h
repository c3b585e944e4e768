#pragma once

#include <algorithm>
#include <array>

#include "material/MaterialBase.h"
#include "material/MaterialFunctionBase.h"

namespace MM {

/// Air conductivity of a material in one direction.
class AirTransport final : public MaterialFunctionBase {
 public:
  enum Functions { F_Kg, NUM_F };
  enum kind_t { K_SPLINE, K_CONSTANT, K_NONE };

  std::array<TKL::LinearSpline, NUM_F> functions;  ///< Kg [s] over Theta_l [m3/m3]
  int kind = K_NONE;
  double KG = 0.0;        ///< [s] air conductivity of the dry material
  double ThetaPor = 0.0;  ///< [m3/m3] porosity that air can flow through
  int direction = 0;      ///< 0, 1, 2 for U, V, W

  /// Air conductivity [s] at a liquid content [m3/m3]. Without a table it falls with the share of the pores
  /// that is filled with water, not below 0 then.
  double conductivity(double Theta_l) const {
    switch (kind) {
      case K_SPLINE:
        return functions[F_Kg].value(Theta_l);
      case K_CONSTANT:
        return KG * std::max(0.0, (ThetaPor - Theta_l) / ThetaPor);
      default:
        return 0.0;
    }
  }

  /// Decides the kind. Without KG the material becomes air tight; air without porosity takes 1 for it.
  /// @throws TKL::Exception with the context "Error initializing air transport functionality for
  /// calculation."
  void prepareCalculation(MaterialBase& material, int materialDirection);

  /// Warns about a table that does not fit the base parameters.
  void checkLimits(const MaterialBase& material) const;

  void read(const std::vector<std::string>& lines) override;
  void read(const std::string& text) override;
  void writeBinary(std::ostream& out) const override;
  void write(std::ostream& out, int indent) const override;
  void readBinary(std::istream& in) override;
  void clear() override;

 private:
  void choosePorosity(MaterialBase& material);
};

}  // namespace MM
