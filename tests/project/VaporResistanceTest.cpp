#include <gtest/gtest.h>

#include "project/VelContactCond.h"

namespace VELMORA {

namespace {

constexpr double PER_METRE_OF_AIR = 293.15 * 461.89 / 2.662e-05;  // [1/s]
constexpr double HUMID = 0.75, DRY = 0.25;
constexpr double PERCENT = 50.0;  // difference of the two

/// An adaptive foil with sd-values of 1 m to 5 m over the humidity in the positive direction, and of 10 m to
/// 50 m in the negative one.
class VaporResistanceTest : public ::testing::Test {
 protected:
  VaporResistanceTest() {
    foil.condition = VelContactCond::C_FOIL_ADAPTIVE;
    foil.kind = VelContactCond::K_DIRECTION_INDEPENDENT;
    foil.functions[VelContactCond::FUN_SD_POS].setValues({0.0, 1.0}, {1.0, 5.0});
    foil.functions[VelContactCond::FUN_SD_NEG].setValues({0.0, 1.0}, {10.0, 50.0});
  }
  void set(VelContactCond::para_t index, double value) { foil.para[index].set("X", value, "-"); }
  /// sd-value [m] between two humidities.
  double sd(double rhLeft, double rhRight, bool horizontal = false) const {
    return foil.vaporResistance(rhLeft, rhRight, horizontal) / PER_METRE_OF_AIR;
  }
  void directed() { foil.kind = VelContactCond::K_DIRECTION_DEPENDENT; }

  VelContactCond foil;
};

double positive(double rh) {
  return 1.0 + 4.0 * rh;
}
double negative(double rh) {
  return 10.0 + 40.0 * rh;
}

}  // namespace

TEST_F(VaporResistanceTest, otherConditions_haveTheFixedResistance) {
  foil.para[VelContactCond::P_VAPDIFFRES].set("VAPDIFFRES", 123.0, "m/s");
  for (int condition = 0; condition < VelContactCond::NUM_C; ++condition) {
    foil.condition = static_cast<VelContactCond::condition_t>(condition);
    if (foil.condition == VelContactCond::C_FOIL_ADAPTIVE) continue;
    EXPECT_EQ(foil.vaporResistance(HUMID, DRY, false), 123.0) << condition;
  }
}

TEST_F(VaporResistanceTest, adaptiveFoil_doesNotReadTheFixedResistance) {
  foil.para[VelContactCond::P_VAPDIFFRES].set("VAPDIFFRES", 1e30, "m/s");
  EXPECT_NEAR(sd(HUMID, DRY), positive(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, withoutWeight_theHigherHumidityCounts) {
  EXPECT_NEAR(sd(HUMID, DRY), positive(HUMID), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID), positive(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, weight_isTheShareOfTheHigherHumidity) {
  set(VelContactCond::P_WEIGHT_FACTOR_POS, 0.25);
  const double mean = 0.75 * DRY + 0.25 * HUMID;
  EXPECT_NEAR(sd(HUMID, DRY), positive(mean), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID), positive(mean), 1e-12);
}

TEST_F(VaporResistanceTest, weightZero_isAWeight) {
  set(VelContactCond::P_WEIGHT_FACTOR_POS, 0.0);
  EXPECT_NEAR(sd(HUMID, DRY), positive(DRY), 1e-12);
}

TEST_F(VaporResistanceTest, bothDirectionsAlike_areNotScaled) {
  set(VelContactCond::P_WEIGHT_FACTOR_POS, 1.0);
  set(VelContactCond::P_SCALING_A_POS, 2.0);
  set(VelContactCond::P_SCALING_B_POS, 3.0);
  EXPECT_NEAR(sd(HUMID, DRY), positive(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, verticalSide_isPassedInThePositiveDirectionFromHumidLeft) {
  directed();
  EXPECT_NEAR(sd(HUMID, DRY), positive(HUMID), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID), negative(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, horizontalSide_isPassedInThePositiveDirectionFromHumidBelow) {
  directed();
  EXPECT_NEAR(sd(HUMID, DRY, true), negative(HUMID), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID, true), positive(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, turnedFoil_exchangesTheDirections) {
  directed();
  foil.sdPositiveDirection = false;
  EXPECT_NEAR(sd(HUMID, DRY), negative(HUMID), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID), positive(HUMID), 1e-12);
  EXPECT_NEAR(sd(HUMID, DRY, true), positive(HUMID), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID, true), negative(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, equalHumidities_areNegativeInAVerticalAndPositiveInAHorizontalSide) {
  directed();
  EXPECT_NEAR(sd(HUMID, HUMID, false), negative(HUMID), 1e-12);
  EXPECT_NEAR(sd(HUMID, HUMID, true), positive(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, positiveScaling_isAPolynomialOfTheDifferenceInPercent) {
  directed();
  set(VelContactCond::P_WEIGHT_FACTOR_POS, 0.5);
  set(VelContactCond::P_SCALING_A_POS, 0.5);
  set(VelContactCond::P_SCALING_B_POS, 0.02);
  set(VelContactCond::P_SCALING_C_POS, 0.001);
  const double factor = 0.5 + 0.02 * PERCENT + 0.001 * PERCENT * PERCENT + 1.0;
  EXPECT_NEAR(sd(HUMID, DRY), factor * positive(0.5), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID), negative(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, negativeScaling_hasParametersOfItsOwn) {
  directed();
  set(VelContactCond::P_WEIGHT_FACTOR_NEG, 0.5);
  set(VelContactCond::P_SCALING_A_NEG, 0.25);
  set(VelContactCond::P_SCALING_B_NEG, 0.01);
  set(VelContactCond::P_SCALING_C_NEG, 0.002);
  const double factor = 0.25 + 0.01 * PERCENT + 0.002 * PERCENT * PERCENT + 1.0;
  EXPECT_NEAR(sd(DRY, HUMID), factor * negative(0.5), 1e-12);
  EXPECT_NEAR(sd(HUMID, DRY), positive(HUMID), 1e-12);
}

TEST_F(VaporResistanceTest, scalingWithoutAWeight_isIgnored) {
  directed();
  set(VelContactCond::P_SCALING_A_POS, 2.0);
  set(VelContactCond::P_SCALING_A_NEG, 2.0);
  EXPECT_NEAR(sd(HUMID, DRY), positive(HUMID), 1e-12);
  EXPECT_NEAR(sd(DRY, HUMID), negative(HUMID), 1e-12);
}

}  // namespace VELMORA
