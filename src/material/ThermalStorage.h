#pragma once

#include <array>

#include "material/MaterialFunctionBase.h"

namespace MM {

/// Enthalpy curve of a material with a phase change.
class ThermalStorage final : public MaterialFunctionBase {
 public:
  enum Functions { F_u_T, NUM_F };

  std::array<TKL::LinearSpline, NUM_F> functions;  ///< u(T): enthalpy over temperature [K]
  TKL::LinearSpline Tu;                            ///< generated inverse T(u)

  /// Generates the inverse of u(T), if there is one.
  /// @throws TKL::Exception "Error generating inverse thermal storage function T(u):\n" and the reason, where
  /// the enthalpy does not rise strictly
  void prepareCalculation();

  void read(const std::vector<std::string>& lines) override;
  void read(const std::string& text) override;
  void writeBinary(std::ostream& out) const override;
  void write(std::ostream& out, int indent) const override;
  void readBinary(std::istream& in) override;
  void clear() override;
};

}  // namespace MM
