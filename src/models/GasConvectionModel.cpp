#include "models/GasConvectionModel.h"

#include <array>
#include <cmath>

#include "foundation/CheckedMath.h"
#include "models/GapFaces.h"

namespace VELMORA {

namespace {

constexpr double GRAVITY_OF_GAS = 9.807;  // [m/s2]

constexpr std::array<GasProperties, 4> GASES{{{0.02496, 1.761e-05, 1.232, 1008.0},
                                              {0.01772, 2.28e-05, 1.784, 522.0},
                                              {0.00949, 2.4e-05, 3.56, 245.0},
                                              {0.00555, 2.3e-05, 5.898, 158.0}}};

/// The gas with the share p, filled up with air.
GasProperties mixture(const GasProperties& gas, double p) {
  const GasProperties& air = GASES[GasConvectionModel::AIR_FILLING];
  const auto mixed = [p](double ofGas, double ofAir) { return ofGas * p + (1.0 - p) * ofAir; };
  return {mixed(gas.lambda, air.lambda), mixed(gas.eta, air.eta), mixed(gas.rho, air.rho),
          mixed(gas.c, air.c)};
}

/// Factor and exponent of Nu = A (Gr Pr)^n.
struct Correlation {
  double A, n;
};

Correlation correlation(double inclination, bool alongX) {
  if (inclination == 0.0) return alongX ? Correlation{0.035, 0.38} : Correlation{0.1, 0.28};
  const double q = inclination / 45.0;
  if (inclination < 45.0) return {0.16 - q * 0.06, q * 0.03 + 0.28};
  return {0.1 - (q - 1.0) * 0.065, (q - 1.0) * 0.07 + 0.31};
}

}  // namespace

const GasProperties& GasConvectionModel::gasProperties(int gasType) {
  const bool known = gasType >= 0 && gasType < static_cast<int>(GASES.size());
  return GASES[known ? static_cast<std::size_t>(gasType) : std::size_t{AIR_FILLING}];
}

double GasConvectionModel::nusseltNumber(const GasProperties& gas, double inclination, bool alongX,
                                         double gapWidth, double T1, double T2) {
  const Correlation law = correlation(inclination, alongX);
  const double Gr = std::fabs(T1 - T2) * gapWidth * gapWidth * gapWidth * GRAVITY_OF_GAS * gas.rho * gas.rho /
                    ((T1 + T2) * 0.5 * gas.eta * gas.eta);
  const double Pr = gas.c * gas.eta / gas.lambda;
  return law.A * TKL::f_pow(Gr * Pr, law.n);
}

bool GasConvectionModel::prepare(VelFieldCond& fieldCond, const VelSelection::Range& selection,
                                 const IndexMatrix& elementIndexMatrix,
                                 const std::vector<Element>& elements) {
  failIfUsed(!elementPairs.empty() || !gapElements.empty(), fieldCond);
  correctFlowDirection(fieldCond, elements);
  GapFaces faces(fieldCond, selection, elementIndexMatrix, elements);
  faces.find();
  elementPairs = faces.pairs;
  gapElements = faces.inner;
  gapWidth = faces.width();
  inclination_ = fieldCond.para[VelFieldCond::P_GC_INCLINATION].get_value("Deg");
  return true;
}

void GasConvectionModel::calculate(double /*t*/, const VelFieldCond& fieldCond,
                                   const std::vector<Element>& elements,
                                   std::span<const double> temperature) {
  constexpr double SAME = 1e-10;  // [K]
  const bool alongX = fieldCond.flags[VelFieldCond::F_CONVECTION_X];
  const GasProperties gas =
      mixture(gasProperties(static_cast<int>(fieldCond.para[VelFieldCond::P_GC_GASTYPE].value)),
              fieldCond.para[VelFieldCond::P_GC_GASPROPORTION].value);
  // A running product, exact for one pair; for several ones the first temperatures count less.
  double sum1 = 0.0, sum2 = 0.0, weight = 0.0;
  for (const auto& [first, second] : elementPairs) {
    const auto a = static_cast<std::size_t>(first);
    const double width = alongX ? elements[a].dy : elements[a].dx;
    sum1 = (sum1 + temperature[a]) * width;
    sum2 = (sum2 + temperature[static_cast<std::size_t>(second)]) * width;
    weight += width;
  }
  const double T1 = sum1 / weight;
  const double T2 = sum2 / weight;
  lambdaEffective = gas.lambda;
  if (!(std::fabs(T1 - T2) > SAME) || (!alongX && T1 > T2)) return;
  const double Nu = nusseltNumber(gas, inclination_, alongX, gapWidth, T1, T2);
  if (Nu >= 1.0) lambdaEffective = Nu * gas.lambda;
}

}  // namespace VELMORA
