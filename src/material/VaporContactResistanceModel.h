#pragma once

#include <array>

#include "material/MaterialFunctionBase.h"

namespace MM {

/// Foil or vapour retarder on a surface: equivalent air layer thickness [m] over relative humidity, for
/// either direction of flow, with the parameters of its weighting.
class VaporContactResistanceModel final : public MaterialFunctionBase {
 public:
  enum Functions { F_sd_pos, F_sd_neg, NUM_F };

  enum Param {
    P_WEIGHT_FACTOR_POS,
    P_WEIGHT_FACTOR_NEG,
    P_SCALING_A_POS,
    P_SCALING_B_POS,
    P_SCALING_C_POS,
    P_SCALING_A_NEG,
    P_SCALING_B_NEG,
    P_SCALING_C_NEG,
    NUM_P
  };

  std::array<TKL::LinearSpline, NUM_F> functions;
  std::array<double, NUM_P> parameters{1.0, 1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0};

  void read(const std::vector<std::string>& lines) override;
  void read(const std::string& text) override;
  void writeBinary(std::ostream& out) const override;
  void write(std::ostream& out, int indent) const override;
  void readBinary(std::istream& in) override;
  void clear() override;

 private:
  void readKeyword(const std::string& keyword, const std::string& value, const char* functionId) override;
};

}  // namespace MM
