#include <cmath>

#include "models/GasConvectionModel.h"
#include "models/ModelBench.h"

namespace VELMORA {

namespace {

struct Gas {
  int type;
  double lambda, eta, rho, c;
};

constexpr Gas AIR_GAS{0, 0.02496, 1.761e-05, 1.232, 1008.0};
constexpr Gas GAS_TABLE[] = {AIR_GAS,
                             {1, 0.01772, 2.28e-05, 1.784, 522.0},
                             {2, 0.00949, 2.4e-05, 3.56, 245.0},
                             {3, 0.00555, 2.3e-05, 5.898, 158.0}};
constexpr double WARM = 293.15, COLD = 273.15;

/// A gap of 20 mm between two panes, horizontally or one above the other.
class GasConvection : public ModelBench {
 protected:
  void gap(bool alongX, double inclination, int gas = 0, double percent = 100.0) {
    condition = VelFieldCond();
    condition.name = "Gap";
    condition.flags.set(VelFieldCond::F_CONVECTION_X, alongX);
    set(VelFieldCond::P_GC_GASTYPE, gas, "-");
    set(VelFieldCond::P_GC_GASPROPORTION, percent, "%");
    set(VelFieldCond::P_GC_INCLINATION, inclination, "Deg");
    draw(alongX ? std::vector<std::string>{"BaB", "BBB"} : std::vector<std::string>{"BB", "aB", "BB"});
    if (!alongX) elements[static_cast<std::size_t>(number(0, 1))].dy = WIDTH;
    model.clear();
    model.prepare(condition, alongX ? VelSelection::Range{0, 0, 2, 0} : VelSelection::Range{0, 0, 0, 2},
                  indexMatrix, elements);
    model.gapWidth = WIDTH;
    first = alongX ? number(0, 0) : number(0, 0);
    second = alongX ? number(2, 0) : number(0, 2);
    faces(COLD, WARM);
  }
  void faces(double T1, double T2) {
    T[static_cast<std::size_t>(first)] = T1;
    T[static_cast<std::size_t>(second)] = T2;
  }
  double lambda() {
    model.calculate(0.0, condition, elements, T);
    return model.lambdaEffective;
  }
  /// Conductivity by the law Nu = A (Gr Pr)^n.
  static double byLaw(const Gas& gas, double A, double n, double dT = WARM - COLD,
                      double mean = (WARM + COLD) / 2) {
    const double Gr = 9.807 * std::pow(WIDTH, 3) * dT * gas.rho * gas.rho / (mean * gas.eta * gas.eta);
    const double Pr = gas.eta * gas.c / gas.lambda;
    return A * std::pow(Gr * Pr, n) * gas.lambda;
  }
  static void expectClose(double actual, double expected) { EXPECT_NEAR(actual, expected, 1e-12 * expected); }

  static constexpr double WIDTH = 0.02;
  GasConvectionModel model;
  int first = 0, second = 0;
};

}  // namespace

TEST_F(GasConvection, uprightGap_followsItsLawForEveryGas) {
  for (const Gas& gas : GAS_TABLE) {
    gap(true, 90.0, gas.type);
    expectClose(lambda(), byLaw(gas, 0.035, 0.38));
    EXPECT_GT(lambda(), gas.lambda);
  }
}

TEST_F(GasConvection, horizontalGap_followsItsLawForEveryGas) {
  for (const Gas& gas : GAS_TABLE) {
    gap(false, 0.0, gas.type);
    expectClose(lambda(), byLaw(gas, 0.1, 0.28));
  }
}

TEST_F(GasConvection, gapAlongX_withoutInclinationIsUpright) {
  gap(true, 0.0);
  expectClose(lambda(), byLaw(AIR_GAS, 0.035, 0.38));
}

TEST_F(GasConvection, slopingGap_isInterpolated) {
  for (const Gas& gas : GAS_TABLE) {
    gap(false, 30.0, gas.type);
    expectClose(lambda(), byLaw(gas, 0.16 - 0.06 * 30 / 45, 0.28 + 0.03 * 30 / 45));
    gap(true, 45.0, gas.type);
    expectClose(lambda(), byLaw(gas, 0.1, 0.31));
    gap(true, 67.5, gas.type);
    expectClose(lambda(), byLaw(gas, 0.0675, 0.345));
  }
}

TEST_F(GasConvection, slightSlope_hasAnotherFactorThanNone) {
  gap(false, 1e-6);
  EXPECT_NEAR(lambda() / byLaw(AIR_GAS, 0.16, 0.28), 1.0, 1e-6);
}

TEST_F(GasConvection, proportionOfZero_isAirWhateverTheGas) {
  for (const Gas& gas : GAS_TABLE) {
    gap(true, 90.0, gas.type, 0.0);
    expectClose(lambda(), byLaw(AIR_GAS, 0.035, 0.38));
  }
}

TEST_F(GasConvection, mixture_hasMeansOfAllProperties) {
  gap(true, 90.0, 1, 90.0);
  const Gas& argon = GAS_TABLE[1];
  const Gas mixed{0, 0.9 * argon.lambda + 0.1 * 0.02496, 0.9 * argon.eta + 0.1 * 1.761e-05,
                  0.9 * argon.rho + 0.1 * 1.232, 0.9 * argon.c + 0.1 * 1008.0};
  expectClose(lambda(), byLaw(mixed, 0.035, 0.38));
}

TEST_F(GasConvection, pureArgonAtRest_hasItsConductivity) {
  gap(true, 90.0, 1);
  faces(WARM, WARM);
  EXPECT_DOUBLE_EQ(lambda(), 0.01772);
}

TEST_F(GasConvection, unknownGas_isAir) {
  EXPECT_EQ(GasConvectionModel::gasProperties(4).lambda, 0.02496);
  EXPECT_EQ(GasConvectionModel::gasProperties(-1).lambda, 0.02496);
}

TEST_F(GasConvection, warmTop_keepsAHorizontalGapStill) {
  gap(false, 0.0);
  faces(WARM + 50.0, COLD);
  EXPECT_DOUBLE_EQ(lambda(), 0.02496);
}

TEST_F(GasConvection, uprightGap_convectsInBothDirections) {
  gap(true, 90.0);
  const double there = lambda();
  faces(WARM, COLD);
  EXPECT_DOUBLE_EQ(lambda(), there);
}

TEST_F(GasConvection, equalTemperatures_conductAlone) {
  gap(true, 90.0);
  faces(COLD, COLD);
  EXPECT_DOUBLE_EQ(lambda(), 0.02496);
  faces(COLD, COLD + 1e-11);
  EXPECT_DOUBLE_EQ(lambda(), 0.02496);
}

TEST_F(GasConvection, narrowGap_conductsAlone) {
  gap(true, 90.0);
  model.gapWidth = 0.004;
  EXPECT_LT(
      GasConvectionModel::nusseltNumber(GasConvectionModel::gasProperties(0), 90.0, true, 0.004, COLD, WARM),
      1.0);
  EXPECT_DOUBLE_EQ(lambda(), 0.02496);
}

TEST_F(GasConvection, severalPairs_areTakenByTheirRunningProduct) {
  gap(true, 90.0);
  draw({"BaB", "BaB"});
  model.clear();
  model.prepare(condition, all(), indexMatrix, elements);
  model.gapWidth = WIDTH;
  temperature(0, 0) = 280.0;
  temperature(0, 1) = 281.0;
  temperature(2, 0) = 290.0;
  temperature(2, 1) = 292.0;
  const double T1 = ((0.0 + 280.0) * 0.1 + 281.0) * 0.2 / 0.3, T2 = ((0.0 + 290.0) * 0.1 + 292.0) * 0.2 / 0.3;
  expectClose(lambda(), byLaw(AIR_GAS, 0.035, 0.38, T2 - T1, (T1 + T2) / 2));
}

TEST_F(GasConvection, pairsOfAColumn_areWeightedByTheirWidths) {
  gap(false, 0.0);
  draw({"BB", "aa", "BB"});
  model.clear();
  model.prepare(condition, all(), indexMatrix, elements);
  model.gapWidth = WIDTH;
  for (const int i : {0, 1}) {
    temperature(i, 0) = 280.0 + i;
    temperature(i, 2) = 290.0 + 2 * i;
  }
  const double T1 = (280.0 * 0.01 + 281.0) * 0.02 / 0.03, T2 = (290.0 * 0.01 + 292.0) * 0.02 / 0.03;
  expectClose(lambda(), byLaw(AIR_GAS, 0.1, 0.28, T2 - T1, (T1 + T2) / 2));
}

TEST_F(GasConvection, conductivity_goesToTheGasAlone) {
  gap(true, 90.0);
  lambda();
  std::vector<double> values(elements.size(), 1.0);
  model.applyToConductivity(values);
  for (std::size_t e = 0; e < values.size(); ++e)
    EXPECT_EQ(values[e], elements[e].material == &air ? model.lambdaEffective : 1.0);
}

}  // namespace VELMORA
