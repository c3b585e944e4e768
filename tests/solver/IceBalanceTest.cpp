#include "solver/IceBalance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "foundation/Counters.h"
#include "foundation/PhysicalConstants.h"
#include "solver/MoistBench.h"
#include "solver/PressureBesideIce.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double FREEZING = 273.15;
constexpr double LATENT = 333549.8;  // [J/kg] at the freezing point: (4180 - 2108) * 273.15 - 232417
constexpr double LAW_SLOPE = 333.5e6 / 273.15;  // [Pa/K] Clausius, Clapeyron: 333.5 kJ/kg of 1000 kg/m3
const char* const ICE_FUNCTION = "[VelmoraCvodeSolver::decomposeHM_ice]";

/// Liquid water [kg/m3] beside ice at T in the material of straight lines: 200 kg/m3 times the humidity.
double liquidBesideIce(double T) {
  const double d = T - FREEZING;
  const double pressure = 1000.0 * ((std::log(T / FREEZING) * T - d) * (4180.0 - 2108.0)) + LAW_SLOPE * d;
  return 200.0 * std::exp(pressure / (KELVIN_FACTOR * T));
}

/// Energy [J/m3] of water, ice and the dry material, zero at 0 K; ice holds the latent heat less than water.
double energyOf(double T, double mw, double rhoIce) {
  return ((mw - rhoIce) * 4180.0 + MOIST_RHO_C) * T +
         rhoIce * (2108.0 * T + (4180.0 - 2108.0) * FREEZING - LATENT);
}

class IceBalanceTest : public ::testing::Test {
 protected:
  IceBalance balance(double U, double mw, double rhoC = MOIST_RHO_C) const {
    return IceBalance(U, mw, rhoC, material.moistureStorage, true);
  }
  int solve(const IceBalance& element, double start = 0.0) {
    const std::uint32_t before = TKL::iceIterationCount;
    rhoIce = start;
    T = UNTOUCHED;
    const int code = element.solve(7, rhoIce, T);
    passes = TKL::iceIterationCount - before;
    return code;
  }
  /// Solves the balance that this temperature [K] with equilibrium has.
  int solveAt(double temperature, double mw, double start = 0.0) {
    expected = mw - liquidBesideIce(temperature);
    return solve(balance(energyOf(temperature, mw, expected), mw), start);
  }

  static constexpr double UNTOUCHED = 1.0;
  TKL::MessageCapture capture;
  MM::Material material = moistMaterial();
  double rhoIce = 0.0;
  double T = 0.0;
  double expected = 0.0;
  std::uint32_t passes = 0;
};

}  // namespace

TEST_F(IceBalanceTest, latentHeat_followsFromTheConstantOfIce) {
  EXPECT_NEAR((4180.0 - 2108.0) * FREEZING - 232417.0, LATENT, 1e-6);
  const IceBalance half = balance(energyOf(FREEZING, 150.0, 75.0), 150.0);
  EXPECT_NEAR(half.temperature(75.0), FREEZING, 1e-9);
}

TEST_F(IceBalanceTest, pressureOfIce_hasTheSlopeOfClausiusClapeyron) {
  EXPECT_EQ(pressureBesideIce(FREEZING), 0.0);
  // d/dT (T ln(T/T0) - (T - T0)) = ln(T/T0)
  for (const double at : {230.0, 250.0, 265.0, 273.0}) {
    const double quotient = (pressureBesideIce(at + 0.01) - pressureBesideIce(at - 0.01)) / 0.02;
    const double slope = 1000.0 * (4180.0 - 2108.0) * std::log(at / FREEZING) + LAW_SLOPE;
    EXPECT_NEAR(quotient, slope, 1e-6 * slope) << at;
  }
}

TEST_F(IceBalanceTest, result_isTheStateOfKnownTemperature) {
  for (const double temperature : {243.15, 263.15, 272.15, 273.1}) {
    ASSERT_EQ(solveAt(temperature, 200.0), 0);
    ASSERT_GT(expected, 0.0) << temperature;
    EXPECT_NEAR(rhoIce, expected, 1.1e-8) << temperature;
    EXPECT_NEAR(T, temperature, 1e-8) << temperature;
  }
}

TEST_F(IceBalanceTest, waterThatMayAllBeLiquid_doesNotFreeze) {
  // at -1 C 0.990 of the humidity is in equilibrium, so 198 kg/m3 may be liquid
  ASSERT_EQ(solve(balance(272.15 * (MOIST_RHO_C + 4180.0 * 150.0), 150.0), 80.0), 0);
  EXPECT_EQ(rhoIce, 0.0);
  EXPECT_EQ(T, UNTOUCHED);
}

TEST_F(IceBalanceTest, start_doesNotMatterForTheResult) {
  for (const double start : {0.0, 1e-9, 30.0, 170.0, 1e6}) {
    ASSERT_EQ(solveAt(253.15, 190.0, start), 0);
    EXPECT_NEAR(rhoIce, expected, 1.1e-8) << start;
  }
}

TEST_F(IceBalanceTest, startAtTheResult_takesOnePass) {
  ASSERT_EQ(solveAt(253.15, 190.0), 0);
  ASSERT_EQ(solveAt(253.15, 190.0, rhoIce), 0);
  EXPECT_EQ(passes, 1U);
}

TEST_F(IceBalanceTest, startAboveTheBracket_isPulledToIt) {
  // without water nothing can freeze: from the upper limit the ice falls by 0.3 a pass until it is none
  const double warmest = MOIST_RHO_C * (FREEZING - 230.0) / LATENT;
  ASSERT_EQ(solve(balance(230.0 * MOIST_RHO_C, 0.0), 1e6), 0);
  EXPECT_EQ(rhoIce, 0.0);
  EXPECT_EQ(passes, 1U + static_cast<unsigned>(std::ceil(std::log(1e-8 / warmest) / std::log(0.3))));
}

TEST_F(IceBalanceTest, withoutMoisture_nothingFreezes) {
  for (const double at : {180.0, 250.0, 273.0, std::nextafter(FREEZING, 0.0)})
    for (const double start : {0.0, 1.0}) {
      ASSERT_EQ(solve(balance(at * MOIST_RHO_C, 0.0), start), 0) << at;
      EXPECT_EQ(rhoIce, 0.0) << at;
      EXPECT_EQ(T, UNTOUCHED) << at;
    }
}

TEST_F(IceBalanceTest, justBelowTheFreezingPoint_thereIsNoIce) {
  // the ice that brings an element from here to the upper limit would be less than none
  for (const double mw : {0.0, 100.0, 200.0, 220.0}) {
    const double U = FREEZING * (MOIST_RHO_C + 4180.0 * mw);
    for (const double energy : {U, std::nextafter(U, 0.0), U - 1e-4}) {
      ASSERT_EQ(solve(balance(energy, mw), 5.0), 0) << mw;
      EXPECT_EQ(rhoIce, 0.0) << mw;
      EXPECT_EQ(T, UNTOUCHED) << mw;
    }
  }
}

TEST_F(IceBalanceTest, lessThanTheSmallestIce_isNone) {
  // fully saturated, so that the first heat that is missing freezes water
  const double perIce = LATENT;  // [J/kg]
  const double U = FREEZING * (MOIST_RHO_C + 4180.0 * 220.0);
  ASSERT_EQ(solve(balance(U - 0.5e-8 * perIce, 220.0)), 0);
  EXPECT_EQ(rhoIce, 0.0);
  ASSERT_EQ(solve(balance(U - 4e-3 * perIce, 220.0)), 0);
  EXPECT_GT(rhoIce, 3.9e-3);
}

TEST_F(IceBalanceTest, overfullElement_staysAtTheFreezingPointWhileItFreezes) {
  const double U = FREEZING * (MOIST_RHO_C + 4180.0 * 220.0);
  ASSERT_EQ(solve(balance(U - 10.0 * LATENT, 220.0)), 0);
  EXPECT_NEAR(T, FREEZING, 1e-9);
  EXPECT_NEAR(rhoIce, 10.0, 1e-6);
}

TEST_F(IceBalanceTest, slowConvergence_warnsOnceAtThePassBefore) {
  // see startAboveTheBracket: 230 K takes 21 passes, a start of 10 kg/m3 takes 19
  ASSERT_EQ(solve(balance(230.0 * MOIST_RHO_C, 0.0), 10.0), 0);
  EXPECT_EQ(passes, 19U);
  EXPECT_TRUE(capture.messages.empty());
  ASSERT_EQ(solve(balance(230.0 * MOIST_RHO_C, 0.0), 1e6), 0);
  EXPECT_EQ(passes, 21U);
  EXPECT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(
      capture.has("Convergence warning in ICE algorithm in element #7.", TKL::MSG_WARNING, ICE_FUNCTION, 1));
}

TEST_F(IceBalanceTest, curveWithoutValues_endsAfter199Passes) {
  material.moistureStorage.kind = MM::MoistureStorage::K_RESERVED;
  material.moistureStorage.ThetaLimit = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(solve(balance(250.0 * MOIST_RHO_C, 100.0)), 1);
  EXPECT_EQ(passes, 199U);
  EXPECT_TRUE(capture.has("No convergence", TKL::MSG_ERROR, ICE_FUNCTION, 1));
  EXPECT_EQ(capture.count("Convergence warning in ICE algorithm in element #7."), 1);
}

TEST_F(IceBalanceTest, everyMillionthPass_isReported) {
  const std::uint32_t before = TKL::iceIterationCount;
  TKL::iceIterationCount = 999999;
  ASSERT_EQ(solveAt(253.15, 190.0), 0);
  EXPECT_TRUE(
      capture.has("  Total ICE-Decomposition Iterations = 1000000.", TKL::MSG_WARNING, ICE_FUNCTION, 1));
  EXPECT_EQ(capture.messages.size(), 1U);
  TKL::iceIterationCount = before;
}

TEST_F(IceBalanceTest, colderThanAllWaterCanWarm_asksForAShorterStep) {
  EXPECT_EQ(solve(balance(130.0 * MOIST_RHO_C, 0.0)), 1);
  EXPECT_EQ(solve(balance(130.0 * (MOIST_RHO_C + 4180.0 * 50.0), 50.0)), 1);
  EXPECT_EQ(passes, 0U);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(IceBalanceTest, tooColdByRounding_takesMoreIce) {
  // at the lower limit of the bracket the temperature is 170 K but for rounding
  constexpr double WATER = 190.0;
  unsigned more = 0;
  for (int i = 0; i < 100; ++i) {
    const double C = MOIST_RHO_C + 4180.0 * WATER;
    const double U = C * (165.0 + 0.01 * i);
    const IceBalance element = balance(U, WATER);
    const double lo = (C * 170.0 - U) / (-232417.0 + 2072.0 * 170.0);
    if (!(element.temperature(lo) < 170.0)) continue;
    ASSERT_LT(lo + 1.0, WATER);
    ASSERT_EQ(solve(element), 0);
    EXPECT_GE(rhoIce, lo + 1.0 - 1e-8);
    EXPECT_LT(passes, 20U);
    ++more;
  }
  EXPECT_GT(more, 0U);
}

TEST_F(IceBalanceTest, tooColdWithoutWaterLeft_isRefused) {
  // as before, with less than 1 kg/m3 of water beyond the lower limit
  TKL::Thrown thrown;
  for (int i = 0; i < 1000 && thrown.text.empty(); ++i) {
    const double lo = 100.0 + 0.01 * i;
    const double mw = lo + 0.5;
    const double C = MOIST_RHO_C + 4180.0 * mw;
    const IceBalance element = balance(C * 170.0 - lo * 119823.0, mw);
    const double limit = (C * 170.0 - (C * 170.0 - lo * 119823.0)) / 119823.0;
    if (element.temperature(limit) < 170.0) thrown = TKL::thrownBy([&] { solve(element); });
  }
  EXPECT_EQ(thrown,
            (TKL::Thrown{"Cannot compute valid rho_ice without dropping into invalid temperature range.",
                         ICE_FUNCTION}));
}

TEST_F(IceBalanceTest, warmerThanFreezing_isRefused) {
  // only where rounding is large against the heat capacity: here the terms of 4e15 cancel to 2e6
  TKL::Thrown thrown{"nothing thrown", ""};
  for (int i = 0; i < 1000 && thrown.text == "nothing thrown"; ++i) {
    constexpr double SEA = 1e12;  // [kg/m3]
    const double C = MOIST_RHO_C + 1000.0 * i;
    const IceBalance element = balance(C * 250.0, SEA, C - 4180.0 * SEA);
    thrown = TKL::thrownBy([&] { solve(element, 1e6); });
  }
  EXPECT_EQ(thrown,
            (TKL::Thrown{"Cannot compute valid rho_ice without dropping into invalid temperature range "
                         "(T>=273.15).",
                         ICE_FUNCTION}));
}

// ---- curves that do not rise to saturation ----

namespace {

/// A curve of few points over the logarithm of the suction, with a polynomial of one's own below 100 Pa.
class FallingCurveTest : public IceBalanceTest {
 protected:
  FallingCurveTest() {
    material = moistMaterial(
        moistText("", "[MOISTURE_STORAGE]\nFUNCTION = Theta_l(pC)_de\n0 2 4 9\n0.2 0.199 0.15 0\n"));
    fit().useCubic = true;
  }
  MM::NearSaturationFit& fit() { return material.moistureStorage.nearSaturationFit; }
  bool rises() const { return IceBalance::risesToSaturation(material.moistureStorage); }
};

}  // namespace

TEST_F(FallingCurveTest, riseToSaturation_isSeen) {
  fit().a0 = 0.2;
  fit().a1 = 0.9e-5;  // 0.1991 at -100 Pa
  fit().a2 = fit().a3 = 0.0;
  EXPECT_TRUE(rises());
  fit().a1 = 1.3e-5;  // less than the table at -100 Pa
  EXPECT_FALSE(rises());
  fit().a1 = 0.9e-5;
  fit().a0 = 0.21;  // more than at saturation
  EXPECT_FALSE(rises());
  EXPECT_TRUE(IceBalance::risesToSaturation(moistMaterial().moistureStorage));
}

TEST_F(FallingCurveTest, polynomialOfZeros_doesNotHoldTheIceAtTheFreezingPoint) {
  // the state of -1 C, on the way to thaw: its start is more ice than there can be
  fit() = MM::NearSaturationFit();
  ASSERT_FALSE(rises());
  const double pressure = pressureBesideIce(272.15);
  const double liquid = 1000.0 * material.moistureStorage.Thetal_pl(pressure, 272.15);
  const double ice = 190.0 - liquid;
  ASSERT_GT(ice, 5.0);
  const IceBalance element(energyOf(272.15, 190.0, ice), 190.0, MOIST_RHO_C, material.moistureStorage, false);
  ASSERT_EQ(solve(element, 150.0), 0);
  EXPECT_NEAR(rhoIce, ice, 1e-7);
  EXPECT_NEAR(T, 272.15, 1e-7);
}

TEST_F(FallingCurveTest, lineToSaturation_joinsTheTable) {
  fit() = MM::NearSaturationFit();
  // 199.5 kg/m3 stay liquid at -50 Pa, half way from 199 to 200
  const double T50 = FREEZING - 50.0 / LAW_SLOPE;
  const IceBalance element(energyOf(T50, 199.6, 0.1), 199.6, MOIST_RHO_C, material.moistureStorage, false);
  ASSERT_EQ(solve(element), 0);
  EXPECT_NEAR(rhoIce, 0.1, 1e-6);
  EXPECT_NEAR(T, T50, 1e-7);
}

TEST_F(FallingCurveTest, fallInTheCurve_isBisected) {
  // the polynomial falls by 0.02 towards saturation, so that more water freezes the warmer it is
  fit().a0 = 0.18;
  fit().a1 = -2e-4;
  fit().a2 = fit().a3 = 0.0;
  for (int i = 1; i < 200; ++i) {
    const double U = FREEZING * (MOIST_RHO_C + 4180.0 * 200.0) - 1e3 * i;
    EXPECT_EQ(solve(balance(U, 200.0)), 0) << i;
    EXPECT_LT(T, FREEZING);
  }
  EXPECT_FALSE(capture.contains("No convergence"));
}

}  // namespace VELMORA_SOLVER
