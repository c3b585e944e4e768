#include "airflow/AirBench.h"

namespace VELMORA {

using PressureOutsideTest = AirBench;

namespace {

const TKL::Thrown UNDETERMINED{
    "Error while decomposition of pressure field update matrix! Zero element found in diagonal!",
    "[AirFlowLibrary::calculateLinearPressureGradient]"};

/// Pressures of two elements that are coupled by `G` and with the outside by `c`, where that drives `s`.
std::pair<double, double> twoElements(double G, double c1, double s1, double c2, double s2) {
  const double det = (c1 + G) * (c2 + G) - G * G;
  return {(s1 * (c2 + G) + G * s2) / det, (s2 * (c1 + G) + G * s1) / det};
}

}  // namespace

// ---- the law of an opening

TEST_F(PressureOutsideTest, opening_entersTheMatrixByTheRootOfThePressure) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {2.0});
  fill(loose);
  open(at(0).sideLeft, VelBoundaryCond::K_FLOWCOEFF, 0.01, 16.0, 5.0);
  exchange(at(1).sideRight, 1e-2, -3.0);
  start();
  update();
  const double G = 2e-3 / 0.1 * 2.0;
  const double c1 = std::sqrt(2 * (P_NORMAL + 16) / (287.1 * 278.15)) * 0.01 * 2.0;
  const double c2 = 1e-2 * 2.0;
  const auto [p1, p2] = twoElements(G, c1, 4.0 * c1, c2, -3.0 * c2);
  EXPECT_NEAR(dp(0), p1, 1e-9);
  EXPECT_NEAR(dp(1), p2, 1e-9);
}

TEST_F(PressureOutsideTest, suction_entersTheMatrixByItsNegativeRoot) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  open(at(0).sideLeft, VelBoundaryCond::K_FLOWCOEFF, 0.01, -16.0);
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  update();
  const double c1 = std::sqrt(2 * (P_NORMAL - 16) / (287.1 * 293.15)) * 0.01;
  EXPECT_NEAR(dp(0), twoElements(2e-2, c1, -4.0 * c1, 1e-2, 0.0).first, 1e-9);
}

TEST_F(PressureOutsideTest, inflowThroughAnOpening_hasTheDensityOutsideAndNoArea) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {2.0});
  fill(loose);
  open(at(0).sideLeft, VelBoundaryCond::K_FLOWCOEFF, 0.01, 16.0, 5.0);
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  update();
  const double expected = std::sqrt(16.0 - dp(0)) * std::sqrt(2 * (P_NORMAL + 16) / (287.1 * 278.15)) * 0.01;
  EXPECT_GT(16.0 - dp(0), 0.0);
  EXPECT_NEAR(through(at(0).sideLeft), expected, 1e-9 * expected);
}

TEST_F(PressureOutsideTest, outflowThroughAnOpening_hasTheDensityOfTheElement) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {2.0});
  fill(loose);
  temperature(1) = 310.0;
  exchange(at(0).sideLeft, 1e-2, 9.0);
  open(at(1).sideRight, VelBoundaryCond::K_FLOWCOEFF, 0.01, 0.0, 5.0);
  start();
  update();
  const double expected = std::sqrt(dp(1)) * std::sqrt(2 * (P_NORMAL + dp(1)) / (287.1 * 310.0)) * 0.01;
  EXPECT_NEAR(through(at(1).sideRight), expected, 1e-9 * expected);
}

TEST_F(PressureOutsideTest, inflowFromTheRight_isNegative) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, -9.0);
  open(at(1).sideRight, VelBoundaryCond::K_FLOWCOEFF, 0.01, 0.0);
  start();
  update();
  const double expected = -std::sqrt(-dp(1)) * std::sqrt(2 * (P_NORMAL + dp(1)) / (287.1 * 293.15)) * 0.01;
  EXPECT_NEAR(through(at(1).sideRight), expected, 1e-9 * -expected);
}

// ---- several conditions, windows, kinds

TEST_F(PressureOutsideTest, twoConditions_bothActOnThePressureAndTheLastIsTheFlow) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, 8.0);
  exchange(at(0).sideLeft, 3e-2, 4.0);
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  update();
  EXPECT_NEAR(dp(0), twoElements(2e-2, 4e-2, 0.08 + 0.12, 1e-2, 0.0).first, 1e-9);
  EXPECT_NEAR(through(at(0).sideLeft), (4.0 - dp(0)) * 3e-2, 1e-10);
}

TEST_F(PressureOutsideTest, endedCondition_leavesThePressureAndItsEarlierFlow) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, 8.0).endTime.setBaseValue("END_TIME", 100.0, TKL::Unit());
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  update(100.0 + 5e-11);  // the window is closed with a margin
  const double flowBefore = through(at(0).sideLeft);
  EXPECT_NEAR(flowBefore, 8.0 / (2 / 1e-2 + 1 / 2e-2), 1e-12);
  update(100.0 + 2e-10);
  EXPECT_EQ(through(at(0).sideLeft), flowBefore);
  EXPECT_NEAR(dp(0), 0.0, 1e-9);
  EXPECT_NEAR(through(at(0).sideRight), 0.0, 1e-15);
}

TEST_F(PressureOutsideTest, conditionBeforeItsStart_doesNotAct) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, 8.0).startTime.setBaseValue("START_TIME", 100.0, TKL::Unit());
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  update(99.0);
  EXPECT_EQ(through(at(0).sideLeft), 0.0);
  update(100.0 - 5e-11);
  EXPECT_GT(through(at(0).sideLeft), 0.0);
}

TEST_F(PressureOutsideTest, otherConditionsAndKinds_doNotAct) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, 8.0).condition = VelBoundaryCond::C_HEATCOND;
  exchange(at(0).sideTop, 1e-2, 8.0).kind = VelBoundaryCond::K_IMPFLUX;
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  update();
  for (const double m : flow) EXPECT_NEAR(m, 0.0, 1e-15);
}

TEST_F(PressureOutsideTest, closedElement_getsNoFlowFromItsConditionAndNeedsNoClimate) {
  const MM::Material loose = airMaterialOf(2e-3), tight = airMaterialOf(1e-3, "AIR_TIGHT");
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  at(0).material = &tight;
  exchange(at(0).sideLeft, 1e-2, 8.0).climate.fill(nullptr);
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  flow[static_cast<std::size_t>(at(0).sideLeft->number)] = 7.0;  // of an earlier time
  update();
  EXPECT_EQ(through(at(0).sideLeft), 0.0);
}

// ---- failures

TEST_F(PressureOutsideTest, missingPressure_isNamed) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, 8.0).climate[VelClimateCond::C_GASPRESS] = nullptr;
  start();
  EXPECT_EQ(failure(), (TKL::Thrown{"Missing climatic condition CC_GASPRESS for BC 'Opening'",
                                    "[AirFlowLibrary::buildAirMatrix]"}));
}

TEST_F(PressureOutsideTest, missingTemperature_isNamed) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, 8.0).climate[VelClimateCond::C_TEMPER] = nullptr;
  start();
  EXPECT_EQ(failure(), (TKL::Thrown{"Missing climatic condition CC_TEMPER for BC 'Opening'",
                                    "[AirFlowLibrary::buildAirMatrix]"}));
}

TEST_F(PressureOutsideTest, missingFields_areToldAfterTheUpdateHasCounted) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  start();
  air.thetaL = nullptr;
  EXPECT_EQ(failure(),
            (TKL::Thrown{"Missing input data. Temperature and moisture content field pointers need to be set "
                         "before calling the calculation function!",
                         "[AirFlowLibrary::calculateLinearPressureGradient]"}));
  EXPECT_EQ(air.updateCount, 1);
  EXPECT_TRUE(capture.has("Updating steady-state pressure field and air fluxes...\n", TKL::MSG_STANDARD,
                          "[AirFlowLibrary::calculateLinearPressureGradient]", 2));
}

TEST_F(PressureOutsideTest, closedConstruction_fails) {
  const MM::Material tight = airMaterialOf(1e-3, "AIR_TIGHT");
  grid({0.1, 0.3, 0.07}, {1.0});
  fill(tight);
  exchange(at(0).sideLeft, 1e-2, 8.0);
  start();
  EXPECT_EQ(failure(), UNDETERMINED);
}

TEST_F(PressureOutsideTest, openConstructionWithoutOutlet_fails) {
  const MM::Material loose = airMaterialOf(2e-3);
  for (const double width : {0.1, 0.3, 0.07}) {  // whatever the rounding does
    grid({0.1, width, 0.2}, {1.0, 0.3});
    fill(loose);
    start();
    EXPECT_EQ(failure(), UNDETERMINED) << width;
  }
}

TEST_F(PressureOutsideTest, outletWithoutCoefficient_isNone) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 0.0, 8.0);
  start();
  EXPECT_EQ(failure(), UNDETERMINED);
}

TEST_F(PressureOutsideTest, enclosureInAnOpenConstruction_hasNormalPressureAndIsWarnedOfOnce) {
  const MM::Material loose = airMaterialOf(2e-3), tight = airMaterialOf(1e-3, "AIR_TIGHT");
  grid({0.1, 0.1, 0.1, 0.25, 0.1}, {1.0, 0.4});
  fill(loose);
  for (const int j : {0, 1}) at(1, j).material = &tight;
  exchange(at(0).sideLeft, 1e-2, 8.0);
  start();
  update();
  update();
  for (const int j : {0, 1}) {
    EXPECT_NEAR(dp(0, j), 8.0, 1e-9);
    for (const int i : {2, 3, 4}) EXPECT_NEAR(dp(i, j), 0.0, 1e-9);
  }
  for (const double m : flow) EXPECT_NEAR(m, 0.0, 1e-15);
  EXPECT_EQ(
      capture.count("The air around element 2 (x = -1 m, y = -1 m, material 'Fibres') is enclosed; it is "
                    "taken to have normal pressure.\n"),
      1);
}

TEST_F(PressureOutsideTest, pressureThatIsNoNumber_isRefused) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  open(at(0).sideLeft, VelBoundaryCond::K_FLOWCOEFF, 0.01, -P_NORMAL - 5.0);
  exchange(at(1).sideRight, 1e-2, 0.0);
  start();
  EXPECT_EQ(
      failure(),
      (TKL::Thrown{"The air pressure of element 0 (x = -1 m, y = -1 m) is not above 0 Pa. GASPRESS must be "
                   "above 0 Pa, TEMPER above 0 K.",
                   "[AirFlowLibrary::calculateLinearPressureGradient]"}));
}

TEST_F(PressureOutsideTest, gaugePressureOfZero_isRefused) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-2, -P_NORMAL);
  start();
  EXPECT_EQ(
      failure(),
      (TKL::Thrown{"The air pressure of element 0 (x = -1 m, y = -1 m) is not above 0 Pa. GASPRESS must be "
                   "above 0 Pa, TEMPER above 0 K.",
                   "[AirFlowLibrary::calculateLinearPressureGradient]"}));
}

// the level of the pressures is unknown then, and nothing moves them
TEST_F(PressureOutsideTest, withoutAnOpeningThatActsNow_pressuresAndFlowsStand) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  for (const int i : {0, 1}) {
    VelBoundaryCond& bc = exchange(i == 0 ? at(0).sideLeft : at(1).sideRight, 1e-2, i == 0 ? 8.0 : 0.0);
    bc.startTime.setBaseValue("START_TIME", 10.0, TKL::Unit());
    bc.endTime.setBaseValue("END_TIME", 100.0, TKL::Unit());
  }
  start();
  update(0.0);
  EXPECT_EQ(dp(0), 0.0);
  EXPECT_EQ(through(at(0).sideLeft), 0.0);
  update(50.0);
  const double flowBefore = through(at(0).sideLeft), pressureBefore = dp(0);
  EXPECT_GT(flowBefore, 0.0);
  update(200.0);
  EXPECT_EQ(through(at(0).sideLeft), flowBefore);
  EXPECT_EQ(dp(0), pressureBefore);
}

TEST_F(PressureOutsideTest, failedUpdate_leavesNothingBehind) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  VelBoundaryCond& left = exchange(at(0).sideLeft, 1e-2, 8.0);
  exchange(at(1).sideRight, 1e-2, 0.0);
  const VelClimateCond* pressure = left.climate[VelClimateCond::C_GASPRESS];
  left.climate[VelClimateCond::C_GASPRESS] = nullptr;
  start();
  failure();
  left.climate[VelClimateCond::C_GASPRESS] = pressure;
  update();
  EXPECT_NEAR(through(at(0).sideLeft), 8.0 / (2 / 1e-2 + 1 / 2e-2), 1e-12);
}

TEST_F(PressureOutsideTest, clear_forgetsTheConstruction) {
  const MM::Material loose = airMaterialOf(2e-3);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  start();
  air.clear();
  EXPECT_EQ(air.nElements, 0u);
  EXPECT_EQ(air.nSides, 0u);
  EXPECT_EQ(air.updateCount, 0);
  EXPECT_TRUE(air.kGElement.empty() && air.kGSide.empty() && air.rhs.empty() && air.sideResistance.empty());
}

}  // namespace VELMORA
