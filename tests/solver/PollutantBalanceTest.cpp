// From the masses of a pollutant to its density, pressure and permeability, and the range of the masses.

#include "solver/PollutantBalance.h"

#include "solver/Decomposition.h"
#include "solver/PollutantElements.h"
#include "solver/RangeRestriction.h"
#include "support/AllocationCounter.h"

namespace VELMORA_SOLVER {

namespace {

const char* const VOC_RANGE_TAG = "[VelmoraCvodeSolver::restrictVOCRange]";

}  // namespace

using PollutantBalanceTest = PollutantElements;

TEST_F(PollutantBalanceTest, density_isTheMassPerPorosity) {
  decompose(2e-4, 0.0);  // whether the pores are wet or not
  EXPECT_DOUBLE_EQ(s.rhoVOC[0], 2e-4 / VOC_POROSITY);
  EXPECT_DOUBLE_EQ(s.rhoVOC[1], 2e-4 / VOC_POROSITY);
}

TEST_F(PollutantBalanceTest, pressure_isThatOfAnIdealGas) {
  decompose(2e-4, 0.0);
  EXPECT_DOUBLE_EQ(s.pVOC[0], VOC_RV * 2e-4 / VOC_POROSITY * 300.0);
  EXPECT_DOUBLE_EQ(s.pVOC[1], VOC_RV * 2e-4 / VOC_POROSITY * 285.0);
}

TEST_F(PollutantBalanceTest, permeability_isThatOfTheElementsMaterialTemperatureAndMoisture) {
  decompose(0.0, 0.0);
  EXPECT_NEAR(s.DVOC[0] / vocPermeability(BOARD_MU, 300.0, 0.1), 1.0, 1e-12);
  EXPECT_NEAR(s.DVOC[1] / vocPermeability(SCREED_MU, 285.0), 1.0, 1e-12);
}

TEST_F(PollutantBalanceTest, permeabilityBeyondThePorosity_isNegative) {
  s.Theta[0] = VOC_POROSITY + 0.01;
  decompose(0.0, 0.0);
  EXPECT_NEAR(s.DVOC[0] / vocPermeability(BOARD_MU, 300.0, VOC_POROSITY + 0.01), 1.0, 1e-9);
  EXPECT_LT(s.DVOC[0], 0.0);
}

TEST_F(PollutantBalanceTest, equilibrium_followsThePartitionCoefficientOfTheMaterial) {
  s.T = {296.15, 296.15};
  decompose(0.0, 4e-3);
  EXPECT_NEAR(balance->equilibriumDensity(0, s), 4e-3 / BOARD_K, 1e-17);
  EXPECT_NEAR(balance->equilibriumDensity(1, s), 4e-3 / SCREED_K, 1e-17);
}

TEST_F(PollutantBalanceTest, coldSolid_bindsMore) {
  decompose(0.0, 4e-3);
  EXPECT_NEAR(balance->equilibriumDensity(0, s), 4e-3 / vocPartition(BOARD_K, 300.0), 1e-17);
  EXPECT_NEAR(balance->equilibriumDensity(1, s), 4e-3 / vocPartition(SCREED_K, 285.0), 1e-17);
  EXPECT_GT(vocPartition(SCREED_K, 285.0), SCREED_K);
}

TEST_F(PollutantBalanceTest, negativeMasses_becomeZero) {
  decompose(-1e-3, -2e-3);
  EXPECT_EQ(s.mVOC1[0], 0.0);
  EXPECT_EQ(s.mVOC2[1], 0.0);
  EXPECT_EQ(s.rhoVOC[0], 0.0);
  EXPECT_EQ(s.pVOC[0], 0.0);
  EXPECT_EQ(capture.count("mVOC = -0.001 < 0 in element 0 at t = 60, limiting mVOC to 0 mg/m3"), 1);
  EXPECT_EQ(capture.count("mVOC = -0.002 < 0 in element 1 at t = 60, limiting mVOC to 0 mg/m3"), 1);
}

TEST_F(PollutantBalanceTest, bothCombinations_decomposeHeatFirst) {
  // the temperature of the pressure is that of this very state
  const ModelSettings settings = moistSettings(BE_ENERGY | BE_POLLUTANT);
  const std::vector<ElementTraits> traits = elementTraits(data.elements, settings);
  s.rhoCDry = {MOIST_RHO_C, MOIST_RHO_C};
  s.U = {MOIST_RHO_C * 310.0, MOIST_RHO_C * 310.0};
  s.mVOC1 = {1e-4, 1e-4};
  Decomposition heat(settings, traits, s, balance.get());
  EXPECT_EQ(heat.decompose(1, 0.0), 0);
  EXPECT_NEAR(s.pVOC[1], VOC_RV * 1e-4 / VOC_POROSITY * 310.0, 1e-12);
  const ModelSettings moist = moistSettings(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  s.mw = {50.0, 50.0};
  Decomposition heatAndMoisture(moist, traits, s, balance.get());
  EXPECT_EQ(heatAndMoisture.decompose(0, 0.0), 0);
  const double T = MOIST_RHO_C * 310.0 / (MOIST_RHO_C + 4180.0 * 50.0);
  EXPECT_NEAR(s.pVOC[0], VOC_RV * 1e-4 / VOC_POROSITY * T, 1e-12);
  EXPECT_NEAR(s.DVOC[0] / vocPermeability(BOARD_MU, T, 0.05), 1.0, 1e-12);
}

TEST_F(PollutantBalanceTest, wildMoistState_asksForAShorterStep) {
  const ModelSettings moist = moistSettings(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  const std::vector<ElementTraits> traits = elementTraits(data.elements, moist);
  s.rhoCDry = {MOIST_RHO_C, MOIST_RHO_C};
  s.U = {-1.0, -1.0};
  EXPECT_EQ(Decomposition(moist, traits, s, balance.get()).decompose(0, 0.0), 1);
}

TEST_F(PollutantBalanceTest, elementWithoutMaterial_isLeftToTheStartValues) {
  data.elements[1].material = nullptr;
  EXPECT_NO_THROW(PollutantBalance(data, library));
}

TEST_F(PollutantBalanceTest, doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  decompose(1e-4, 1e-3);
  const std::size_t before = allocationCount();
  balance->decompose(0, 61.0, s);
  balance->equilibriumDensity(0, s);
  EXPECT_EQ(allocationCount(), before);
}

TEST(PollutantRange, smallNegativeMass_isClippedWithoutAWord) {
  const TKL::MessageCapture capture;
  for (const double small : {-5e-9, -1e-8}) {
    double m = small;
    restrictVOCRange(3, 10.0, m);
    EXPECT_EQ(m, 0.0);
  }
  EXPECT_TRUE(capture.messages.empty());
}

TEST(PollutantRange, largerNegativeMass_isTold) {
  const TKL::MessageCapture capture;
  double m = -1.5e-8;
  restrictVOCRange(3, 10.5, m);
  EXPECT_EQ(m, 0.0);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has("mVOC = -1.5e-08 < 0 in element 3 at t = 10.5, limiting mVOC to 0 mg/m3",
                          TKL::MSG_WARNING, VOC_RANGE_TAG, 1));
}

TEST(PollutantRange, otherMasses_stay) {
  const TKL::MessageCapture capture;
  for (const double mass : {0.0, 1e-300, 5.0, 1e9}) {  // there is no upper limit
    double m = mass;
    restrictVOCRange(3, 10.0, m);
    EXPECT_EQ(m, mass);
  }
  EXPECT_TRUE(capture.messages.empty());
}

}  // namespace VELMORA_SOLVER
