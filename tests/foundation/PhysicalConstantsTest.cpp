#include "foundation/PhysicalConstants.h"

#include <gtest/gtest.h>

#include <cmath>

#include "foundation/SmoothStep.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

TEST(PhysicalConstants, values) {
  EXPECT_EQ(RHO_W, 1000.0);
  EXPECT_EQ(C_W, 4180.0);
  EXPECT_EQ(C_V, 2050.0);
  EXPECT_EQ(C_A, 1006.0);
  EXPECT_EQ(C_ICE, 2108.0);
  EXPECT_EQ(R_V, 461.89);
  EXPECT_EQ(R_A, 287.1);
  EXPECT_EQ(H_V0, 3080000.0);
  EXPECT_EQ(T_FREEZE, 273.15);
  EXPECT_EQ(SIGMA, 5.67e-08);
  EXPECT_EQ(G_RHO, 9807.0);
}

TEST(VapourEnthalpy, isLinearInT) {
  EXPECT_DOUBLE_EQ(h_v(300.0), 2050.0 * 300.0 + 3080000.0);
}

TEST(SaturationPressure, overWater_isThePowerLaw) {
  for (const double celsius : {0.0, 10.0, 20.0, 60.0}) {
    EXPECT_NEAR(pSat(T_FREEZE + celsius), 288.68 * std::pow(1.098 + celsius / 100.0, 8.02), 1e-8);
  }
}

TEST(SaturationPressure, overIce_isThePowerLaw) {
  for (const double celsius : {-0.001, -10.0, -40.0}) {
    EXPECT_NEAR(pSat(T_FREEZE + celsius), 4.689 * std::pow(1.486 + celsius / 100.0, 12.3), 1e-8);
  }
}

// Tabulated saturation pressures of water vapour (ISO 13788, table of annex E): 611, 1228, 2339, 260 Pa.
TEST(SaturationPressure, agreesWithTables) {
  EXPECT_NEAR(pSat(273.15), 611.0, 1.0);
  EXPECT_NEAR(pSat(283.15), 1228.0, 2.0);
  EXPECT_NEAR(pSat(293.15), 2339.0, 3.0);
  EXPECT_NEAR(pSat(263.15), 260.0, 1.0);
}

TEST(SaturationPressure, freezingPointItself_isOverWater) {
  EXPECT_NEAR(pSat(273.15), 611.0, 0.1);
  EXPECT_NEAR(pSat(std::nextafter(273.15, 0.0)), 612.2, 0.1);
}

TEST(SaturationPressure, growsWithT) {
  for (double T = 130.0; T < 370.0; T += 1.0) {
    EXPECT_LT(pSat(T), pSat(T + 1.0)) << T;
  }
}

TEST(SaturationPressure, farBelowTheRange_throws) {
  EXPECT_EQ(thrownBy([] { pSat(124.0); }).location, "[TKL::f_pow]");
  EXPECT_NO_THROW(pSat(124.56));
}

TEST(CapillaryPressure, isKelvinsLaw) {
  EXPECT_DOUBLE_EQ(pCFromRH(0.8, 293.15), std::log(0.8) * 1000.0 * 461.89 * 293.15);
}

TEST(CapillaryPressure, aboveTheDriestHumidity_isKelvinsLaw) {
  EXPECT_DOUBLE_EQ(pCFromRH(5e-10, 293.15), std::log(5e-10) * 1000.0 * 461.89 * 293.15);
}

TEST(CapillaryPressure, belowTheDriestHumidity_isConstant) {
  const double driest = 1000.0 * 461.89 * std::log(1e-10) * 300.0;
  EXPECT_NEAR(pCFromRH(0.0, 300.0), driest, 1e-11 * std::fabs(driest));
  EXPECT_EQ(pCFromRH(-1.0, 300.0), pCFromRH(0.99e-10, 300.0));
}

TEST(CapillaryPressure, atTheDriestHumidity_joinsTheConstant) {
  EXPECT_NEAR(pCFromRH(1e-10, 300.0) / pCFromRH(0.0, 300.0), 1.0, 1e-11);
}

TEST(CapillaryPressure, nearSaturation_isLimitedToMinusOnePascal) {
  const double limit = std::exp(-1.0 / (300.0 * 1000.0 * 461.89));
  EXPECT_EQ(pCFromRH(limit, 300.0), -1.0);
  EXPECT_EQ(pCFromRH(1.0, 300.0), -1.0);
  EXPECT_EQ(pCFromRH(1.5, 300.0), -1.0);
  EXPECT_LT(pCFromRH(1.0 - 1e-7, 300.0), -1.0);
}

TEST(CapillaryPressure, andBack_isTheHumidity) {
  for (double RH = 0.001; RH < 1.0; RH += 0.01) {
    EXPECT_NEAR(std::exp(pCFromRH(RH, 280.0) / (280.0 * RHO_W * R_V)), RH, 1e-13);
  }
}

TEST(SmoothStep, endsAndMiddle) {
  EXPECT_EQ(smoothStep(0.0), 0.0);
  EXPECT_EQ(smoothStep(0.5), 0.5);
  EXPECT_EQ(smoothStep(1.0), 1.0);
}

TEST(SmoothStep, isTheCubic) {
  for (double x = 0.0; x <= 1.0; x += 0.05) {
    EXPECT_NEAR(smoothStep(x), x * x * (3.0 - 2.0 * x), 1e-15);
  }
}

TEST(SmoothStep, isFlatAtBothEnds) {
  EXPECT_NEAR((smoothStep(1e-6) - smoothStep(0.0)) / 1e-6, 0.0, 1e-5);
  EXPECT_NEAR((smoothStep(1.0) - smoothStep(1.0 - 1e-6)) / 1e-6, 0.0, 1e-5);
}

TEST(SmoothStep, isNotLimitedOutside) {
  EXPECT_EQ(smoothStep(2.0), -4.0);
}

TEST(RampTo, isLimitedOutside) {
  EXPECT_EQ(rampTo(-1.0, 2.0), 0.0);
  EXPECT_EQ(rampTo(0.0, 2.0), 0.0);
  EXPECT_EQ(rampTo(2.0, 2.0), 1.0);
  EXPECT_EQ(rampTo(5.0, 2.0), 1.0);
}

TEST(RampTo, isTheStretchedStep) {
  EXPECT_EQ(rampTo(1.0, 2.0), 0.5);
  EXPECT_EQ(rampTo(2e-7, 1e-6), smoothStep(2e-7 / 1e-6));
}

TEST(RampTo, zeroWidth_isAJump) {
  EXPECT_EQ(rampTo(0.0, 0.0), 0.0);
  EXPECT_EQ(rampTo(1e-300, 0.0), 1.0);
}

}  // namespace
}  // namespace TKL
