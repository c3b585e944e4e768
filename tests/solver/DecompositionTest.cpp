#include "solver/Decomposition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "solver/MoistBench.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double LN_DRIEST = -23.025850929940457;  // ln(1e-10)

/// One element of one material, its centre 0.5 m above the bottom of a construction 3 m high.
class DecompositionTest : public ::testing::Test {
 protected:
  explicit DecompositionTest(const std::string& text = moistText()) : material(moistMaterial(text)) {
    settings.height = 3.0;
  }

  void build() {
    data.elements.resize(1);
    data.elements[0].number = 0;
    data.elements[0].material = &material;
    data.elements[0].y = 0.5;
    arrays.size(data, settings);
    decomposition = std::make_unique<Decomposition>(settings, arrays.traits, s);
  }

  /// Decomposes the element at a temperature [K] and a moisture mass [kg/m3].
  int decompose(double T, double mw) {
    if (!decomposition) build();
    const double mass = settings.equations.has(BE_ENERGY) ? std::max(mw, 0.0) : 0.0;
    s.U[0] = T * (s.rhoCDry[0] + mass * 4180.0);
    s.mw[0] = mw;
    return decomposition->decompose(0, 3600.0);
  }

  TKL::MessageCapture capture;
  MM::Material material;
  ModelSettings settings = moistSettings();
  VELMORA::CalculationData data;
  MoistArrays arrays;
  SolverState& s = arrays.state;
  std::unique_ptr<Decomposition> decomposition;
};

class AirDecompositionTest : public DecompositionTest {
 protected:
  AirDecompositionTest() { material = airMaterial(); }
};

/// Pressure [Pa] of the content by Kelvin's law, with the content 0.2 RH.
double pressureOf(double Theta, double T) {
  return KELVIN_FACTOR * T * std::log(Theta / MOIST_EFF);
}

/// Weight of the water column from the top of the construction to the centre of the element [Pa].
constexpr double HEAD = (3.0 - 0.5) * 9807.0;

}  // namespace

TEST_F(DecompositionTest, content_isMassOverDensityOfWater) {
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_DOUBLE_EQ(s.Theta[0], 0.1);
}

TEST_F(DecompositionTest, temperature_countsAllMoistureAsLiquidWater) {
  build();
  s.U[0] = 7e8;
  s.mw[0] = 100.0;
  ASSERT_EQ(decomposition->decompose(0, 0.0), 0);
  EXPECT_DOUBLE_EQ(s.T[0], 7e8 / (2e6 + 100.0 * 4180.0));
}

TEST_F(DecompositionTest, temperatureWithoutEnergyBalance_doesNotCountMoisture) {
  settings = moistSettings(BE_MOISTURE);
  build();
  s.U[0] = 6e8;
  s.mw[0] = 100.0;
  ASSERT_EQ(decomposition->decompose(0, 0.0), 0);
  EXPECT_DOUBLE_EQ(s.T[0], 300.0);
}

TEST_F(DecompositionTest, withoutEnergyBalanceAndHeatCapacity_temperatureStays) {
  settings = moistSettings(BE_MOISTURE);
  build();
  s.rhoCDry[0] = 0.0;
  s.T[0] = 281.0;
  s.mw[0] = 100.0;
  ASSERT_EQ(decomposition->decompose(0, 0.0), 0);
  EXPECT_EQ(s.T[0], 281.0);
  EXPECT_NEAR(s.pC[0], pressureOf(0.1, 281.0), 1e-3);
}

TEST_F(DecompositionTest, pressureAndHumidity_followRetentionCurveAndKelvinsLaw) {
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.pC[0], pressureOf(0.1, 300.0), 1e-3);
  EXPECT_EQ(s.pCTotal[0], s.pC[0]);
  EXPECT_NEAR(s.RH[0], 0.5, 1e-12);
}

TEST_F(DecompositionTest, vapourPressure_isHumidityTimesSaturation) {
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.pV[0], 0.5 * 288.68 * std::pow(1.098 + 26.85 / 100.0, 8.02), 1e-6);
}

TEST_F(DecompositionTest, belowFreezing_saturationIsThatOverIceAndWaterStaysLiquid) {
  ASSERT_EQ(decompose(263.15, 100.0), 0);
  EXPECT_NEAR(s.pV[0], 0.5 * 4.689 * std::pow(1.486 - 10.0 / 100.0, 12.3), 1e-8);
  EXPECT_NEAR(s.pC[0], pressureOf(0.1, 263.15), 1e-3);
  EXPECT_EQ(s.rhoIce[0], 0.0);
}

TEST_F(DecompositionTest, phases_shareThePores) {
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  const double vapour = (MOIST_POR - 0.1) * s.pV[0] / (300.0 * 461.89);
  EXPECT_DOUBLE_EQ(s.ThetaAir[0], MOIST_POR - 0.1);
  EXPECT_NEAR(s.rhoVapour[0], vapour, 1e-12);
  EXPECT_NEAR(s.rhoLiquid[0], 100.0 - vapour, 1e-12);
}

TEST_F(DecompositionTest, liquidConductivity_isTakenAtTheLiquidShareOnly) {
  ASSERT_EQ(decompose(300.0, 1.0), 0);
  const double liquid = (1.0 - s.rhoVapour[0]) / 1000.0;
  ASSERT_GT(s.rhoVapour[0], 1e-5);
  EXPECT_NEAR(std::log10(s.Kl[0]), -20.0 + 12.0 * liquid / MOIST_EFF, 1e-12);
}

TEST_F(DecompositionTest, vapourConductivity_isOfTheAirFilledPores) {
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.Kv[0], 2.662e-05 / (461.89 * 296.15) / MOIST_MEW * (MOIST_POR - 0.1) / MOIST_POR, 1e-20);
}

TEST_F(DecompositionTest, heatConductivity_growsWithTheContent) {
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.lambda[0], 0.5 * (0.8 + 2.8), 1e-12);
}

TEST_F(DecompositionTest, withoutEnergyBalance_heatConductivityIsNotCalculated) {
  settings = moistSettings(BE_MOISTURE);
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_EQ(s.lambda[0], 0.0);
}

TEST_F(DecompositionTest, potential_isTakenAtTheContent) {
  setPotential(material, 4e-6);
  ASSERT_EQ(decompose(300.0, 50.0), 0);
  EXPECT_NEAR(s.Kirchhoff[0], 1e-6, 1e-18);
}

TEST_F(DecompositionTest, withoutPotential_noneIsCalculated) {
  settings.useKirchhoff = false;
  ASSERT_EQ(decompose(300.0, 50.0), 0);
  EXPECT_EQ(s.Kirchhoff[0], 0.0);
  EXPECT_GT(s.Kl[0], 0.0);
}

TEST_F(DecompositionTest, gravity_lowersTheDrivingPressureOnly) {
  settings.useGravity = true;
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.pC[0], pressureOf(0.1, 300.0), 1e-3);
  EXPECT_NEAR(s.RH[0], 0.5, 1e-12);
  EXPECT_NEAR(s.pCTotal[0], pressureOf(0.1, 300.0) - HEAD, 1e-3);
}

TEST_F(DecompositionTest, inclination_takesItsCosineOfTheHead) {
  settings.useGravity = true;
  settings.thetaZ = 60.0;
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.pCTotal[0], pressureOf(0.1, 300.0) - 0.5 * HEAD, 1e-3);
}

TEST_F(DecompositionTest, potentialWithGravity_belongsToTheWholePressureAt20C) {
  settings.useGravity = true;
  setPotential(material, 4e-6);
  ASSERT_EQ(decompose(310.0, 50.0), 0);
  const double pressure = pressureOf(0.05, 310.0) - HEAD;
  const double RH = std::exp(pressure / (KELVIN_FACTOR * 293.15));
  EXPECT_NEAR(s.Kirchhoff[0], 4e-6 * RH, 1e-16);
}

TEST_F(DecompositionTest, saturated_isNotYetOver) {
  ASSERT_EQ(decompose(300.0, 200.0), 0);
  EXPECT_EQ(s.pC[0], 0.0);
  EXPECT_EQ(s.RH[0], 1.0);
}

TEST_F(DecompositionTest, overSaturation_raisesTheDrivingPressureAlone) {
  settings.overfillMargin = 0.02;
  ASSERT_EQ(decompose(300.0, 210.0), 0);
  EXPECT_EQ(s.RH[0], 1.0);
  EXPECT_EQ(s.pC[0], -1.0);
  EXPECT_NEAR(s.pCTotal[0], 0.01 / MOIST_SLOPE, 1e-6);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(DecompositionTest, contentAboveTheLimit_isClippedInTheState) {
  ASSERT_EQ(decompose(300.0, 210.0), 0);
  EXPECT_EQ(s.Theta[0], 0.2);
  EXPECT_EQ(s.mw[0], 200.0);
  EXPECT_TRUE(capture.has("Ol = 0.21 > Ol_max in element 0 at t = 3600, limiting Ol to 0.2 m3/m3",
                          TKL::MSG_WARNING, "[VelmoraCvodeSolver::restrictMoistureRange]", 1));
}

TEST_F(DecompositionTest, contentAboveTheLimit_countsFullyInTheTemperature) {
  ASSERT_EQ(decompose(300.0, 210.0), 0);
  EXPECT_DOUBLE_EQ(s.T[0], 300.0);
}

TEST_F(DecompositionTest, negativeMass_isClippedWithoutAMessage) {
  settings.useStrictRangeChecking = true;
  ASSERT_EQ(decompose(300.0, -100.0), 0);
  EXPECT_EQ(s.mw[0], 0.0);
  EXPECT_EQ(s.Theta[0], 0.0);
  EXPECT_DOUBLE_EQ(s.T[0], 300.0);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(DecompositionTest, farOutOfRange_asksForAShorterStepWithStrictChecking) {
  settings.useStrictRangeChecking = true;
  EXPECT_EQ(decompose(300.0, 281.0), 1);
  EXPECT_EQ(decompose(300.0, 279.0), 0);
}

TEST_F(DecompositionTest, moistureAlone_neverAsksForAShorterStep) {
  settings = moistSettings(BE_MOISTURE);
  settings.useStrictRangeChecking = true;
  EXPECT_EQ(decompose(300.0, 281.0), 0);
}

TEST_F(DecompositionTest, wildTemperature_asksForAShorterStep) {
  for (const double T : {-10.0, 0.0, 124.0, 2001.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(decompose(T, 100.0), 1) << T;
  for (const double T : {125.0, 1999.0}) EXPECT_EQ(decompose(T, 100.0), 0) << T;
}

TEST_F(DecompositionTest, moistureThatIsNotANumber_asksForAShorterStep) {
  build();
  s.U[0] = 7e8;
  s.mw[0] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(decomposition->decompose(0, 0.0), 1);
}

TEST_F(DecompositionTest, energyAlone_takesTheMoistureAsItIs) {
  settings = moistSettings(BE_ENERGY);
  build();
  s.U[0] = 7e8;
  s.mw[0] = 100.0;
  s.Theta[0] = 0.1;
  ASSERT_EQ(decomposition->decompose(0, 0.0), 0);
  EXPECT_DOUBLE_EQ(s.T[0], 7e8 / (2e6 + 100.0 * 4180.0));
  EXPECT_NEAR(s.lambda[0], 1.8, 1e-12);
  EXPECT_EQ(s.pV[0], 0.0);
}

TEST_F(DecompositionTest, doublyTight_hasTheDriestPressureAndNoFunctions) {
  material = moistMaterial(moistText("VAPOR_TIGHT WATER_TIGHT", "", ""));
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.RH[0], 1e-10, 1e-14 * 1e-10);
  EXPECT_NEAR(s.pC[0], KELVIN_FACTOR * 300.0 * LN_DRIEST, 1.0);
  EXPECT_EQ(s.pCTotal[0], s.pC[0]);
  EXPECT_NEAR(s.pV[0], 1e-10 * TKL::pSat(300.0), 1e-16);
  EXPECT_EQ(s.Kl[0], 0.0);
  EXPECT_EQ(s.Kirchhoff[0], 0.0);
  EXPECT_EQ(s.Kv[0], 0.0);
  EXPECT_NEAR(s.lambda[0], 1.8, 1e-12);
}

TEST_F(DecompositionTest, waterTight_movesVapourOnly) {
  material = moistMaterial(moistText("WATER_TIGHT", MOIST_STORAGE, ""));
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_NEAR(s.RH[0], 0.5, 1e-12);
  EXPECT_EQ(s.Kl[0], 0.0);
  EXPECT_GT(s.Kv[0], 0.0);
}

TEST_F(DecompositionTest, vapourTight_movesLiquidOnly) {
  material = moistMaterial(moistText("VAPOR_TIGHT"));
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  EXPECT_GT(s.Kl[0], 0.0);
  EXPECT_EQ(s.Kv[0], 0.0);
}

TEST_F(DecompositionTest, diffusivity_isTakenAtTheContent) {
  material = moistMaterial(moistText("", MOIST_STORAGE, MOIST_DL));
  setPotential(material, 4e-6);
  ASSERT_EQ(decompose(300.0, 50.0), 0);
  EXPECT_NEAR(std::log10(s.Dl[0]), -14.0 + 8.0 * 0.25, 1e-12);
  EXPECT_NEAR(s.Kirchhoff[0], 1e-6, 1e-18);
  EXPECT_EQ(s.Kl[0], 0.0);
}

TEST_F(DecompositionTest, diffusivityWithoutPotential_isRefused) {
  material = moistMaterial(moistText("", MOIST_STORAGE, MOIST_DL));
  material.id = 17;
  settings.useKirchhoff = false;
  EXPECT_EQ(TKL::thrownBy([&] { decompose(300.0, 50.0); }),
            (TKL::Thrown{"Liquid conductivity required for material 'Plaster [17]', because Kirchhoff "
                         "potential use is disabled and only moisture diffusivity is given.",
                         "[VelmoraCvodeSolver::decomposeHM]"}));
}

TEST_F(DecompositionTest, withoutLiquidFunction_isRefused) {
  material = moistMaterial(moistText("", MOIST_STORAGE, ""));
  for (const bool useKirchhoff : {true, false}) {
    settings.useKirchhoff = useKirchhoff;
    EXPECT_EQ(TKL::thrownBy([&] { decompose(300.0, 50.0); }),
              (TKL::Thrown{"Liquid conductivity required for material 'Plaster', because either Kirchhoff "
                           "potential use is disabled or gravity is included.",
                           "[VelmoraCvodeSolver::decomposeHM]"}));
  }
}

TEST_F(DecompositionTest, otherCombinations_haveNoDecomposition) {
  settings = moistSettings(BE_MOISTURE | BE_POLLUTANT);
  try {
    decompose(300.0, 0.0);
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(),
                 "[VelmoraCvodeSolver::extractStateVariables]  Implementation of decomposition algorithm for "
                 "this balance equation combination is missing!");
  }
}

TEST_F(DecompositionTest, doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  settings.useGravity = true;
  ASSERT_EQ(decompose(300.0, 100.0), 0);
  const std::size_t before = allocationCount();
  decompose(301.0, 101.0);
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(AirDecompositionTest, allMoisture_isVapour) {
  ASSERT_EQ(decompose(300.0, 0.01), 0);
  const double pV = 0.01 * 461.89 * 300.0;
  const double RH = pV / TKL::pSat(300.0);
  EXPECT_NEAR(s.pV[0], pV, 1e-9);
  EXPECT_NEAR(s.RH[0], RH, 1e-12);
  EXPECT_NEAR(s.pC[0], KELVIN_FACTOR * 300.0 * std::log(RH), 1e-4);
  EXPECT_EQ(s.pCTotal[0], s.pC[0]);
  EXPECT_DOUBLE_EQ(s.ThetaAir[0], 1.0 - 1e-5);
  EXPECT_DOUBLE_EQ(s.rhoVapour[0], (1.0 - 1e-5) * 0.01);
  EXPECT_NEAR(s.rhoLiquid[0], 1e-7, 1e-15);
}

TEST_F(AirDecompositionTest, supersaturated_hasTheSaturationPressure) {
  ASSERT_EQ(decompose(300.0, 1.0), 0);
  EXPECT_DOUBLE_EQ(s.pV[0], TKL::pSat(300.0));
  EXPECT_EQ(s.RH[0], 1.0);
  EXPECT_EQ(s.pC[0], -1.0);
  EXPECT_EQ(s.pCTotal[0], -1.0);
}

TEST_F(AirDecompositionTest, dry_hasTheDriestPressure) {
  ASSERT_EQ(decompose(300.0, 0.0), 0);
  EXPECT_EQ(s.RH[0], 0.0);
  EXPECT_NEAR(s.pC[0], KELVIN_FACTOR * 300.0 * LN_DRIEST, 1.0);
}

TEST_F(AirDecompositionTest, full_hasThePressureOfCompressedWater) {
  settings.overfillMargin = 0.02;
  ASSERT_EQ(decompose(300.0, 1010.0), 0);
  EXPECT_DOUBLE_EQ(s.pV[0], TKL::pSat(300.0));
  EXPECT_EQ(s.RH[0], 1.0);
  EXPECT_EQ(s.pC[0], -1.0);
  EXPECT_NEAR(s.pCTotal[0], 0.01 / 1e-7, 1e-6);
  EXPECT_EQ(s.ThetaAir[0], 0.0);
  EXPECT_EQ(s.rhoVapour[0], 0.0);
  EXPECT_EQ(s.rhoLiquid[0], 1010.0);
}

TEST_F(AirDecompositionTest, moreThanFull_isClippedWithoutAMessage) {
  settings.useStrictRangeChecking = true;
  settings.overfillMargin = 0.02;
  ASSERT_EQ(decompose(300.0, 2000.0), 0);
  EXPECT_EQ(s.Theta[0], 1.02);
  EXPECT_EQ(s.mw[0], 1020.0);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(AirDecompositionTest, gravity_actsOnTheDrivingPressure) {
  settings.useGravity = true;
  ASSERT_EQ(decompose(300.0, 1.0), 0);
  EXPECT_EQ(s.pC[0], -1.0);
  EXPECT_NEAR(s.pCTotal[0], -1.0 - HEAD, 1e-9);
}

TEST_F(AirDecompositionTest, noLiquidMoves) {
  ASSERT_EQ(decompose(300.0, 0.01), 0);
  EXPECT_EQ(s.Kl[0], 0.0);
  EXPECT_EQ(s.Kirchhoff[0], 0.0);
  EXPECT_NEAR(s.Kv[0], 2.662e-05 / (461.89 * 296.15) * (1.0 - 1e-5), 1e-20);
}

}  // namespace VELMORA_SOLVER
