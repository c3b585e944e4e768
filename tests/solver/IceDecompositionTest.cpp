// Elements of a run with ice: what the decomposition makes of the water below the freezing point.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "solver/Decomposition.h"
#include "solver/IceBalance.h"
#include "solver/MoistBench.h"
#include "solver/PressureBesideIce.h"
#include "support/AllocationCounter.h"

namespace VELMORA_SOLVER {

namespace {

constexpr int WITH_ICE = BE_ENERGY | BE_MOISTURE | BE_ICE;
constexpr double FROST = 258.15;  // [K]

/// One element of the material of straight lines, or of another one.
class IceDecompositionTest : public ::testing::Test {
 protected:
  void build() {
    data.elements.resize(1);
    data.elements[0].number = 0;
    data.elements[0].material = &material;
    arrays.size(data, settings);
    decomposition = std::make_unique<Decomposition>(settings, arrays.traits, s);
  }
  int decompose(double U, double mw) {
    if (!decomposition) build();
    s.U[0] = U;
    s.mw[0] = mw;
    return decomposition->decompose(0, 0.0);
  }
  /// The element in equilibrium at -15 C, with 180 kg/m3 of water in all.
  int freeze() {
    ice = 180.0 - 200.0 * std::exp(pressureBesideIce(FROST) / (KELVIN_FACTOR * FROST));
    const double capacity = MOIST_RHO_C + (180.0 - ice) * 4180.0 + ice * 2108.0;
    return decompose(capacity * FROST + ice * 232417.0, 180.0);
  }

  TKL::MessageCapture capture;
  MM::Material material = moistMaterial();
  ModelSettings settings = moistSettings(WITH_ICE);
  VELMORA::CalculationData data;
  MoistArrays arrays;
  SolverState& s = arrays.state;
  std::unique_ptr<Decomposition> decomposition;
  double ice = 0.0;
};

}  // namespace

TEST_F(IceDecompositionTest, frost_splitsTheWater) {
  ASSERT_EQ(freeze(), 0);
  ASSERT_GT(ice, 5.0);
  EXPECT_NEAR(s.T[0], FROST, 1e-8);
  EXPECT_NEAR(s.rhoIce[0], ice, 1e-7);
  EXPECT_NEAR(s.rhoLiquid[0], 180.0 - ice - s.rhoVapour[0], 1e-7);
}

TEST_F(IceDecompositionTest, pressureAndHumidity_areThoseOfTheWholeContentAtTheNewTemperature) {
  ASSERT_EQ(freeze(), 0);
  EXPECT_NEAR(s.RH[0], 0.9, 1e-12);
  EXPECT_NEAR(s.pC[0], KELVIN_FACTOR * s.T[0] * std::log(0.9), 1e-3);
  EXPECT_EQ(s.pCTotal[0], s.pC[0]);
  EXPECT_NEAR(s.pV[0], 0.9 * TKL::pSat(s.T[0]), 1e-9);
  EXPECT_DOUBLE_EQ(s.ThetaAir[0], MOIST_POR - 0.18);
}

TEST_F(IceDecompositionTest, liquidConductivity_isThatOfTheWaterLeft) {
  ASSERT_EQ(freeze(), 0);
  EXPECT_NEAR(std::log10(s.Kl[0]), -20.0 + 12.0 * s.rhoLiquid[0] / 200.0, 1e-12);
}

TEST_F(IceDecompositionTest, potential_isThatOfTheWholeContent) {
  setPotential(material, 4e-6);
  ASSERT_EQ(freeze(), 0);
  EXPECT_NEAR(s.Kirchhoff[0], 4e-6 * 0.9, 1e-18);
}

TEST_F(IceDecompositionTest, heatConductivity_gainsWhereIceReplacesWater) {
  ASSERT_EQ(freeze(), 0);
  EXPECT_NEAR(s.lambda[0], 0.8 + 2.0 * 0.9 + (2.2 - 0.6) * s.rhoIce[0] / 1000.0, 1e-12);
}

TEST_F(IceDecompositionTest, withoutIceBalance_allWaterStaysLiquid) {
  settings = moistSettings(BE_ENERGY | BE_MOISTURE);
  ASSERT_EQ(freeze(), 0);
  EXPECT_EQ(s.rhoIce[0], 0.0);
  EXPECT_LT(s.T[0], FROST);
  EXPECT_NEAR(s.lambda[0], 0.8 + 2.0 * 0.9, 1e-12);
}

TEST_F(IceDecompositionTest, atTheFreezingPoint_theIceIsGone) {
  constexpr double MW = 180.0;
  const double capacity = MOIST_RHO_C + MW * 4180.0;
  double U = 273.15 * capacity;
  while (U / capacity < 273.15) U = std::nextafter(U, 1e12);
  while (U / capacity > 273.15) U = std::nextafter(U, 0.0);
  ASSERT_EQ(U / capacity, 273.15);
  build();
  s.rhoIce[0] = 40.0;
  ASSERT_EQ(decompose(U, MW), 0);
  EXPECT_EQ(s.rhoIce[0], 0.0);
  EXPECT_EQ(s.T[0], 273.15);
}

TEST_F(IceDecompositionTest, thaw_leavesNoIce) {
  ASSERT_EQ(freeze(), 0);
  ASSERT_EQ(decompose(280.0 * (MOIST_RHO_C + 180.0 * 4180.0), 180.0), 0);
  EXPECT_EQ(s.rhoIce[0], 0.0);
  EXPECT_DOUBLE_EQ(s.T[0], 280.0);
}

TEST_F(IceDecompositionTest, doublyTight_neverFreezes) {
  material = moistMaterial(moistText("VAPOR_TIGHT WATER_TIGHT", "", ""));
  ASSERT_EQ(decompose(250.0 * (MOIST_RHO_C + 180.0 * 4180.0), 180.0), 0);
  EXPECT_EQ(s.rhoIce[0], 0.0);
  EXPECT_DOUBLE_EQ(s.T[0], 250.0);
}

TEST_F(IceDecompositionTest, air_neverFreezes) {
  material = airMaterial();
  build();
  s.rhoIce[0] = 1.0;
  ASSERT_EQ(decompose(250.0 * (s.rhoCDry[0] + 0.01 * 4180.0), 0.01), 0);
  EXPECT_EQ(s.rhoIce[0], 0.0);
  EXPECT_DOUBLE_EQ(s.T[0], 250.0);
}

TEST_F(IceDecompositionTest, clippedContent_freezesWithoutFailure) {
  // The temperature counts all water, the ice balance what the pores can hold: it may find itself above the
  // freezing point.
  for (const double excess : {0.1, 1.0, 30.0})
    for (const double below : {1e-12, 1e-6, 1e-3, 1.0, 10.0}) {
      const double mw = 200.0 + excess;
      ASSERT_EQ(decompose((273.15 - below) * (MOIST_RHO_C + mw * 4180.0), mw), 0) << excess << ' ' << below;
      EXPECT_LE(s.rhoIce[0], 200.0);
      EXPECT_LT(s.T[0], 273.15);
    }
}

TEST_F(IceDecompositionTest, withoutConvergence_aShorterStepIsAskedFor) {
  material.moistureStorage.kind = MM::MoistureStorage::K_RESERVED;
  material.moistureStorage.ThetaLimit = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(decompose(250.0 * (MOIST_RHO_C + 100.0 * 4180.0), 100.0), 1);
}

TEST_F(IceDecompositionTest, doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  ASSERT_EQ(freeze(), 0);
  const std::size_t before = allocationCount();
  decompose(s.U[0] - 1e6, 181.0);
  EXPECT_EQ(allocationCount(), before);
  EXPECT_GT(s.rhoIce[0], 0.0);
}

}  // namespace VELMORA_SOLVER
