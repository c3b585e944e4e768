#include <gtest/gtest.h>

#include <cmath>

#include "solver/MoistPair.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelContactCond;

class FieldFluxMoistureTest : public MoistPair {};

constexpr double DPV = 2000.0 - 800.0;                                   // [Pa]
constexpr double KV_MEAN = 0.25 * 4e-11 + 0.75 * 2e-11;                  // [s]
constexpr double KL_MEAN = 0.25 * 4e-16 + 0.75 * 2e-16;                  // [s]
constexpr double VAPOUR_FLOW = KV_MEAN * PAIR_AREA * DPV * PAIR_G;       // [kg/s]
constexpr double LIQUID_FLOW = KL_MEAN * PAIR_AREA * 6e7 * PAIR_G;       // [kg/s] conductivity form
constexpr double POTENTIAL_FLOW = (3e-7 - 1e-7) * PAIR_AREA * PAIR_G;    // [kg/s] without a jump
constexpr double CONDUCTION = (0.25 * 1.0 + 0.75 * 3.0) * 0.5 * 10 * 5;  // [W]
constexpr double ALMOST_FULL = 200.0 - 0.04;                             // [kg/m3] half of the flow is let in

void expectClose(double actual, double expected) {
  EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
}

}  // namespace

TEST_F(FieldFluxMoistureTest, vapour_flowsToTheLowerPressure) {
  calculate();
  expectClose(vapour(), VAPOUR_FLOW);
  turnRound();
  calculate();
  expectClose(vapour(), -(0.25 * 2e-11 + 0.75 * 4e-11) * PAIR_AREA * DPV * PAIR_G);
}

TEST_F(FieldFluxMoistureTest, vapourResistance_standsInSeries) {
  resistance(VelContactCond::P_VAPDIFFRES, 5e9);
  calculate();
  expectClose(vapour(), PAIR_AREA * DPV / (1.0 / (KV_MEAN * PAIR_G) + 5e9));
}

TEST_F(FieldFluxMoistureTest, closedSide_letsNoVapourThrough) {
  resistance(VelContactCond::P_VAPDIFFRES, 1e20);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_VAPOUR_DIFFUSION), 0.0);
  EXPECT_NE(liquid(), 0.0);
}

TEST_F(FieldFluxMoistureTest, almostClosedSide_isCalculated) {
  resistance(VelContactCond::P_VAPDIFFRES, 0.99e20);
  calculate();
  EXPECT_GT(vapour(), 0.0);
}

TEST_F(FieldFluxMoistureTest, vapourTightElement_closesTheSideForVapour) {
  const MM::Material tight = moistMaterial(moistText("VAPOR_TIGHT"));
  materials(plaster, tight);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
  materials(tight, plaster);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_NE(liquid(), 0.0);
}

TEST_F(FieldFluxMoistureTest, impossibleResistance_isRefused) {
  resistance(VelContactCond::P_VAPDIFFRES, 0.8);
  const auto failure = [&] { return TKL::thrownBy([&] { calculate(); }); };
  s.Kv = {0.25, 0.25};
  EXPECT_EQ(failure().text, "nothing thrown");
  s.Kv = {-0.25, -0.25};  // times 0.8 and 5: exactly -1
  EXPECT_EQ(failure(),
            (TKL::Thrown{"Invalid parameter in Kv_res", "[VelmoraCvodeSolver::fieldFluxMoisture]"}));
}

TEST_F(FieldFluxMoistureTest, liquidWithoutPotential_flowsToTheLowerPressure) {
  settings.useKirchhoff = false;
  calculate();
  expectClose(liquid(), LIQUID_FLOW);
}

TEST_F(FieldFluxMoistureTest, liquidOfOneMaterial_followsThePotential) {
  calculate();
  expectClose(liquid(), POTENTIAL_FLOW);
}

TEST_F(FieldFluxMoistureTest, liquidOfTwoMaterials_losesTheJumpOfThePotentials) {
  materials(plaster, brick);
  calculate();
  const double p = 0.25 * -3e7 + 0.75 * -9e7;
  const double T = 0.25 * 300.0 + 0.75 * 290.0;
  const double jump = (4e-6 - 1e-6) * std::exp(p / (KELVIN_FACTOR * T));
  expectClose(liquid(), (3e-7 - 1e-7 - jump) * PAIR_AREA * PAIR_G);
}

TEST_F(FieldFluxMoistureTest, jump_isThatFromLeftToRight) {
  materials(brick, plaster);
  calculate();
  const double p = 0.25 * -3e7 + 0.75 * -9e7;
  const double T = 0.25 * 300.0 + 0.75 * 290.0;
  const double jump = (1e-6 - 4e-6) * std::exp(p / (KELVIN_FACTOR * T));
  expectClose(liquid(), (3e-7 - 1e-7 - jump) * PAIR_AREA * PAIR_G);
}

TEST_F(FieldFluxMoistureTest, twoMaterialsInEquilibrium_exchangeNoLiquid) {
  materials(plaster, brick);
  const double p = -5e7;
  const double RH = std::exp(p / (KELVIN_FACTOR * 300.0));
  s.T = {300.0, 300.0};
  s.pCTotal = {p, p};
  s.Kirchhoff = {4e-6 * RH, 1e-6 * RH};
  calculate();
  EXPECT_NEAR(liquid(), 0.0, 1e-20);
}

TEST_F(FieldFluxMoistureTest, liquidResistance_forcesTheConductivityForm) {
  materials(plaster, brick);
  resistance(VelContactCond::P_WATCONDRES, 2e14);
  calculate();
  expectClose(liquid(), PAIR_AREA * 6e7 / (1.0 / (KL_MEAN * PAIR_G) + 2e14));
}

TEST_F(FieldFluxMoistureTest, liquidResistance_actsWithoutPotentialAsWell) {
  settings.useKirchhoff = false;
  resistance(VelContactCond::P_WATCONDRES, 2e14);
  calculate();
  expectClose(liquid(), PAIR_AREA * 6e7 / (1.0 / (KL_MEAN * PAIR_G) + 2e14));
}

TEST_F(FieldFluxMoistureTest, resistanceOfDiffusivityMaterials_closesTheirLiquid) {
  resistance(VelContactCond::P_WATCONDRES, 1.0);
  s.Kl = {0.0, 0.0};
  calculate();
  EXPECT_EQ(liquid(), 0.0);
}

TEST_F(FieldFluxMoistureTest, sideClosedForLiquid_passesVapourOnly) {
  resistance(VelContactCond::P_WATCONDRES, 1e20);
  calculate();
  EXPECT_EQ(liquid(), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_LIQUID), 0.0);
  expectClose(vapour(), VAPOUR_FLOW);
}

TEST_F(FieldFluxMoistureTest, waterTightElement_closesTheSideForLiquid) {
  const MM::Material tight = moistMaterial(moistText("WATER_TIGHT", MOIST_STORAGE, ""));
  for (const bool useKirchhoff : {true, false}) {
    settings.useKirchhoff = useKirchhoff;
    materials(plaster, tight);
    calculate();
    EXPECT_EQ(liquid(), 0.0);
    materials(tight, plaster);
    calculate();
    EXPECT_EQ(liquid(), 0.0);
  }
  expectClose(vapour(), VAPOUR_FLOW);
}

TEST_F(FieldFluxMoistureTest, air_passesNoLiquid) {
  materials(plaster, cavity);
  calculate();
  EXPECT_EQ(liquid(), 0.0);
  expectClose(vapour(), VAPOUR_FLOW);
}

TEST_F(FieldFluxMoistureTest, gravity_entersByTheDrivingPressureOfTheState) {
  settings.useKirchhoff = false;
  settings.useGravity = true;
  data.sides[0].horizontal = true;
  s.pCTotal = {-1e5, -1e5 + 0.2 * 9807.0};  // in equilibrium but for the weight of 0.2 m of water
  s.Kl = {1e-9, 1e-9};
  calculate();
  expectClose(liquid(), -1e-9 * PAIR_AREA * PAIR_G * 0.2 * 9807.0);
}

TEST_F(FieldFluxMoistureTest, vapour_carriesTheEnthalpyOfItsSource) {
  calculate();
  expectClose(heat(VELMORA::HF_VAPOUR_DIFFUSION), (2050.0 * 300.0 + 3080000.0) * vapour());
  s.pV = {800.0, 2000.0};
  calculate();
  ASSERT_LT(vapour(), 0.0);
  expectClose(heat(VELMORA::HF_VAPOUR_DIFFUSION), (2050.0 * 290.0 + 3080000.0) * vapour());
}

TEST_F(FieldFluxMoistureTest, liquid_carriesTheEnthalpyOfItsSource) {
  calculate();
  expectClose(heat(VELMORA::HF_LIQUID), 4180.0 * 300.0 * liquid());
  s.Kirchhoff = {1e-7, 3e-7};
  calculate();
  ASSERT_LT(liquid(), 0.0);
  expectClose(heat(VELMORA::HF_LIQUID), 4180.0 * 290.0 * liquid());
}

TEST_F(FieldFluxMoistureTest, sums_addAllContributions) {
  calculate();
  expectClose(moisture(VELMORA::MF_SUM), VAPOUR_FLOW + POTENTIAL_FLOW);
  expectClose(heat(VELMORA::HF_SUM),
              CONDUCTION + (2050.0 * 300.0 + 3080000.0) * VAPOUR_FLOW + 4180.0 * 300.0 * POTENTIAL_FLOW);
}

TEST_F(FieldFluxMoistureTest, flowsOfTheLastCalculation_doNotStay) {
  calculate();
  ASSERT_NE(vapour(), 0.0);
  ASSERT_NE(liquid(), 0.0);
  resistance(VelContactCond::P_VAPDIFFRES, 1e20);
  resistance(VelContactCond::P_WATCONDRES, 1e20);
  calculate();
  for (const double value : arrays.records.moistureFlux.values()) EXPECT_EQ(value, 0.0);
  for (const auto slot : {VELMORA::HF_LIQUID, VELMORA::HF_VAPOUR_DIFFUSION}) EXPECT_EQ(heat(slot), 0.0);
  expectClose(heat(VELMORA::HF_SUM), CONDUCTION);
}

TEST_F(FieldFluxMoistureTest, moistureAlone_conductsNoHeat) {
  settings = moistSettings(BE_MOISTURE);
  calculate();
  expectClose(moisture(VELMORA::MF_SUM), VAPOUR_FLOW + POTENTIAL_FLOW);
  EXPECT_EQ(heat(VELMORA::HF_CONDUCTION), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_VAPOUR_DIFFUSION), 0.0);
}

TEST_F(FieldFluxMoistureTest, heatAlone_movesNoMoisture) {
  settings = moistSettings(BE_ENERGY);
  calculate();
  expectClose(heat(VELMORA::HF_SUM), CONDUCTION);
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_EQ(liquid(), 0.0);
}

TEST_F(FieldFluxMoistureTest, elementAlmostFull_takesHalfOfTheFlowsWithTheirEnthalpies) {
  s.mw[1] = ALMOST_FULL;
  calculate();
  EXPECT_NEAR(vapour(), 0.5 * VAPOUR_FLOW, 1e-9 * VAPOUR_FLOW);
  EXPECT_NEAR(liquid(), 0.5 * POTENTIAL_FLOW, 1e-9 * POTENTIAL_FLOW);
  expectClose(moisture(VELMORA::MF_SUM), vapour() + liquid());
  expectClose(heat(VELMORA::HF_SUM),
              CONDUCTION + (2050.0 * 300.0 + 3080000.0) * vapour() + 4180.0 * 300.0 * liquid());
}

TEST_F(FieldFluxMoistureTest, leftElementAlmostFull_isProtectedFromFlowsToTheLeft) {
  turnRound();
  s.mw[0] = ALMOST_FULL;
  calculate();
  EXPECT_NEAR(liquid(), -0.5 * POTENTIAL_FLOW, 1e-9 * POTENTIAL_FLOW);
}

TEST_F(FieldFluxMoistureTest, fullElement_letsItsWaterGo) {
  s.mw[0] = 200.0;
  calculate();
  expectClose(moisture(VELMORA::MF_SUM), VAPOUR_FLOW + POTENTIAL_FLOW);
}

TEST_F(FieldFluxMoistureTest, throttling_canBeSwitchedOff) {
  settings.preventOverfilling = false;
  s.mw[1] = 200.0;
  calculate();
  expectClose(moisture(VELMORA::MF_SUM), VAPOUR_FLOW + POTENTIAL_FLOW);
}

TEST_F(FieldFluxMoistureTest, hydrostaticMargin_makesRoom) {
  settings.overfillMargin = 0.02;
  s.mw[1] = 200.0;
  calculate();
  expectClose(moisture(VELMORA::MF_SUM), VAPOUR_FLOW + POTENTIAL_FLOW);
}

TEST_F(FieldFluxMoistureTest, sumOfExactlyZero_isNotThrottled) {
  s.mw = {200.0, 200.0};
  s.Kv = {1.0, 1.0};
  s.pV = {2.0, 1.0};
  s.Kirchhoff = {1.0, 2.0};  // liquid against vapour
  calculate();
  EXPECT_EQ(moisture(VELMORA::MF_SUM), 0.0);
  EXPECT_EQ(vapour(), PAIR_AREA * PAIR_G);
  EXPECT_EQ(liquid(), -PAIR_AREA * PAIR_G);
}

TEST_F(FieldFluxMoistureTest, airElement_isFullOnlyOfWater) {
  materials(plaster, cavity);
  s.mw[1] = 0.02;
  calculate();
  expectClose(vapour(), VAPOUR_FLOW);
  s.mw[1] = 1000.0;
  calculate();
  EXPECT_EQ(vapour(), 0.0);
}

TEST_F(FieldFluxMoistureTest, calculation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  materials(plaster, brick);
  FieldFluxes fluxes(data, settings, arrays.traits, s, arrays.records);
  const std::size_t before = allocationCount();
  fluxes.calculate();
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace VELMORA_SOLVER
