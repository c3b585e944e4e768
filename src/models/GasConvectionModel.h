#pragma once

#include <cstdint>
#include <utility>

#include "models/FieldConditionModelBase.h"

namespace VELMORA {

/// Properties of a gas at 10 C.
struct GasProperties {
  double lambda;  ///< [W/mK] thermal conductivity
  double eta;     ///< [Pa s] dynamic viscosity
  double rho;     ///< [kg/m3] density
  double c;       ///< [J/kgK] heat capacity
};

/// Convection of the gas in the gap of a multiple glazing, as a thermal conductivity that takes the place of
/// that of the gas elements: with the gap's width d, the mean temperatures T1 and T2 of its faces and the
/// properties of the mixture of gas and air
///
///     Gr = g d^3 |T1 - T2| rho^2 / (Tm eta^2),  Pr = c eta / lambda,  Nu = A (Gr Pr)^n,  not below 1
///     lambda_eff = Nu lambda
///
/// A and n depend on the inclination of the gap (0 Deg horizontal). A horizontal gap that is warmer on top
/// stays still. The form is that of EN 673.
class GasConvectionModel final : public FieldConditionModelBase {
 public:
  enum gasType_t { AIR_FILLING, ARGON_FILLING, KRYPTON_FILLING, XENON_FILLING };
  using ElementPair = std::pair<std::int32_t, std::int32_t>;

  std::vector<ElementPair> elementPairs;  ///< elements at both ends of the gap, one pair a row or column
  std::vector<std::int32_t> gapElements;  ///< gas elements between them
  double gapWidth = 0.0;                  ///< [m] clear width
  double lambdaEffective = 0.0;           ///< [W/mK] of the last calculation

  /// Properties of a filling; air for an index without one.
  static const GasProperties& gasProperties(int gasType);
  /// Nusselt number of a gap, not limited to 1.
  /// @param inclination [Deg]
  static double nusseltNumber(const GasProperties& gas, double inclination, bool alongX, double gapWidth,
                              double T1, double T2);

  /// Finds the faces of the gap in a rectangle, and corrects a direction that a construction of one row or
  /// one column does not have, which goes out as an error.
  /// @throws TKL::Exception for a second rectangle, and for one that is not a gap with a face at each end
  bool prepare(VelFieldCond& fieldCond, const VelSelection::Range& selection,
               const IndexMatrix& elementIndexMatrix, const std::vector<Element>& elements) override;

  void calculate(double t, const VelFieldCond& fieldCond, const std::vector<Element>& elements,
                 std::span<const double> temperature) override;

  /// Gives the gas elements the conductivity of the last calculation.
  void applyToConductivity(std::span<double> lambda) const {
    for (const std::int32_t n : gapElements) lambda[static_cast<std::size_t>(n)] = lambdaEffective;
  }

  void clear() override { *this = GasConvectionModel(); }

 private:
  double inclination_ = 0.0;  ///< [Deg]
};

}  // namespace VELMORA
