#include <cmath>

#include "solver/WallBench.h"

using namespace VELMORA_SOLVER;

namespace {

constexpr double T_BODY = 12.0;  // [C]
constexpr double DX = 0.05, DY = 0.2, BOUNDARY_RHO_C = 2e6;
constexpr double WINDOW_START = 3600.0, WINDOW_END = 7200.0;  // [s]

/// Two by two cells; flows of one condition are read off at time 0.
WallProblem filmBody() {
  WallProblem problem(uniform(2, 2 * DX), uniform(2, 2 * DY));
  problem.material(problem.all(), "Stone", {1.4, BOUNDARY_RHO_C});
  problem.initial(problem.all(), T_BODY);
  problem.constantClimate("Air", "TEMPER", "30 C");
  problem.constantClimate("Wind", "WINDVEL", "4 m/s");
  problem.constantClimate("Heat", "HEATFLUXDENS", "50 W/m2");
  return problem;
}

/// Flow into the body through the left side of the cell at the top left.
double flowOf(const std::string& kind, const std::string& lines) {
  WallProblem problem = filmBody();
  problem.boundary("Condition", kind, lines);
  problem.assign("BOUNDARYCOND", problem.column(0), "Condition", "LEFT");
  WallRates rates(problem);
  rates.evaluate(0.0, T_BODY);
  return rates.flowLeft(0);
}

const char* const VELOCITY = "EXCOEFF = 5 W/m2K\nEXCH_SLOPE = 3 J/m3K\nTEMPER = Air\nWINDVEL = Wind\n";

/// 50 W/m2 within the window, with more conditions on the same side.
WallProblem windowed(const std::string& times) {
  WallProblem problem = filmBody();
  problem.boundary("Heater", "IMPFLUX", "HEATFLUXDENS = Heat\n" + times);
  return problem;
}
const std::string WINDOW = "START_TIME = 3600 s\nEND_TIME = 7200 s\n";

bool actsAt(double time, const std::string& times) {
  WallProblem problem = windowed(times);
  problem.assign("BOUNDARYCOND", problem.column(0), "Heater", "LEFT");
  WallRates rates(problem);
  rates.evaluate(time, T_BODY);
  return rates.flowLeft(0) != 0.0;
}

}  // namespace

TEST(HeatBoundary, surfaceValueActsByItsLargeCoefficient) {
  EXPECT_DOUBLE_EQ(flowOf("SURFVAL", "TEMPER = Air\n"), 10000.0 * (30.0 - T_BODY) * DY);
}

TEST(HeatBoundary, imposedFluxIsTimesTheArea) {
  EXPECT_DOUBLE_EQ(flowOf("IMPFLUX", "HEATFLUXDENS = Heat\n"), 50.0 * DY);
}

TEST(HeatBoundary, exchangeIsCoefficientTimesDifference) {
  EXPECT_DOUBLE_EQ(flowOf("EXCHANGE", "EXCOEFF = 5 W/m2K\nTEMPER = Air\n"), 5.0 * (30.0 - T_BODY) * DY);
}

TEST(HeatBoundary, exchangeGrowsLinearlyWithWindWhereNoExponentIsSet) {
  EXPECT_DOUBLE_EQ(flowOf("EXCHANGE_VEL", VELOCITY), (5.0 + 3.0 * 4.0) * (30.0 - T_BODY) * DY);
}

TEST(HeatBoundary, exponentOneIsTheSameAsNone) {
  EXPECT_EQ(flowOf("EXCHANGE_VEL", std::string(VELOCITY) + "EXCH_EXP = 1 -\n"),
            flowOf("EXCHANGE_VEL", VELOCITY));
}

TEST(HeatBoundary, exchangeGrowsWithAPowerOfWind) {
  EXPECT_DOUBLE_EQ(flowOf("EXCHANGE_VEL", std::string(VELOCITY) + "EXCH_EXP = 0.5 -\n"),
                   (5.0 + 3.0 * std::sqrt(4.0)) * (30.0 - T_BODY) * DY);
}

TEST(HeatBoundary, exchangeWithoutSlopeNeedsNoWind) {
  EXPECT_DOUBLE_EQ(flowOf("EXCHANGE_VEL", "EXCOEFF = 5 W/m2K\nEXCH_SLOPE = 0 J/m3K\nTEMPER = Air\n"),
                   5.0 * (30.0 - T_BODY) * DY);
}

TEST(HeatBoundary, heatInflowAtTheRightSideIsNegative) {
  WallProblem problem = filmBody();
  problem.boundary("Heater", "IMPFLUX", "HEATFLUXDENS = Heat\n");
  problem.assign("BOUNDARYCOND", problem.column(-1), "Heater", "RIGHT");
  WallRates rates(problem);
  rates.evaluate(0.0, T_BODY);
  EXPECT_DOUBLE_EQ(rates.flowRight(1), -50.0 * DY);
  EXPECT_DOUBLE_EQ(rates.rate(1), 50.0 / DX);
}

TEST(HeatBoundary, cornerCellGetsHeatThroughBothSides) {
  WallProblem problem = filmBody();
  problem.boundary("Heater", "IMPFLUX", "HEATFLUXDENS = Heat\n");
  problem.boundary("Film", "EXCHANGE", "EXCOEFF = 5 W/m2K\nTEMPER = Air\n");
  problem.assign("BOUNDARYCOND", {0, 0, 0, 0}, "Heater", "LEFT");
  problem.assign("BOUNDARYCOND", {0, 0, 0, 0}, "Film", "TOP");
  WallRates rates(problem);
  rates.evaluate(0.0, T_BODY);
  EXPECT_DOUBLE_EQ(rates.flowLeft(0), 50.0 * DY);
  EXPECT_DOUBLE_EQ(rates.flowTop(0), 5.0 * (30.0 - T_BODY) * DX);
  EXPECT_NEAR(rates.rate(0), 50.0 / DX + 5.0 * (30.0 - T_BODY) / DY, 1e-9);
  EXPECT_EQ(rates.rate(1, 1), 0.0);
}

TEST(HeatBoundary, oneConditionOnTwoSidesOfACornerActsThroughBoth) {
  WallProblem problem = filmBody();
  problem.boundary("Heater", "IMPFLUX", "HEATFLUXDENS = Heat\n");
  problem.assign("BOUNDARYCOND", {0, 0, 0, 0}, "Heater", "LEFT TOP");
  WallRates rates(problem);
  rates.evaluate(0.0, T_BODY);
  EXPECT_NEAR(rates.rate(0), 50.0 / DX + 50.0 / DY, 1e-9);
}

TEST(HeatBoundary, laterAssignmentOverwritesTheEarlierOne) {
  for (const bool filmLast : {true, false}) {
    WallProblem problem = filmBody();
    problem.boundary("Heater", "IMPFLUX", "HEATFLUXDENS = Heat\n");
    problem.boundary("Film", "EXCHANGE", "EXCOEFF = 5 W/m2K\nTEMPER = Air\n");
    problem.assign("BOUNDARYCOND", problem.column(0), filmLast ? "Heater" : "Film", "LEFT");
    problem.assign("BOUNDARYCOND", problem.column(0), filmLast ? "Film" : "Heater", "LEFT");
    WallRates rates(problem);
    rates.evaluate(0.0, T_BODY);
    EXPECT_DOUBLE_EQ(rates.flowLeft(0), filmLast ? 5.0 * (30.0 - T_BODY) * DY : 50.0 * DY);
  }
}

TEST(HeatBoundary, idleConditionLeavesTheEarlierOneInForce) {
  WallProblem problem = windowed(WINDOW);
  problem.boundary("Film", "EXCHANGE", "EXCOEFF = 5 W/m2K\nTEMPER = Air\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Film", "LEFT");
  problem.assign("BOUNDARYCOND", problem.column(0), "Heater", "LEFT");
  WallRates rates(problem);
  rates.evaluate(0.0, T_BODY);
  EXPECT_DOUBLE_EQ(rates.flowLeft(0), 5.0 * (30.0 - T_BODY) * DY);
  rates.evaluate(WINDOW_START + 1.0, T_BODY);
  EXPECT_DOUBLE_EQ(rates.flowLeft(0), 50.0 * DY);
}

TEST(ActivityWindow, isClosedBeforeItsStartAndAfterItsEnd) {
  EXPECT_FALSE(actsAt(0.0, WINDOW));
  EXPECT_TRUE(actsAt(0.5 * (WINDOW_START + WINDOW_END), WINDOW));
  EXPECT_FALSE(actsAt(2.0 * WINDOW_END, WINDOW));
}

TEST(ActivityWindow, includesBothEnds) {
  EXPECT_TRUE(actsAt(WINDOW_START, WINDOW));
  EXPECT_TRUE(actsAt(WINDOW_END, WINDOW));
}

TEST(ActivityWindow, toleratesOneTenthOfANanosecondAtBothEnds) {
  EXPECT_TRUE(actsAt(WINDOW_START - 0.5e-10, WINDOW));
  EXPECT_TRUE(actsAt(WINDOW_END + 0.5e-10, WINDOW));
  EXPECT_FALSE(actsAt(WINDOW_START - 2e-10, WINDOW));
  EXPECT_FALSE(actsAt(WINDOW_END + 2e-10, WINDOW));
}

TEST(ActivityWindow, openEndActsForever) {
  EXPECT_FALSE(actsAt(0.0, "START_TIME = 3600 s\n"));
  EXPECT_TRUE(actsAt(1e12, "START_TIME = 3600 s\n"));
}

TEST(ActivityWindow, openStartActsFromTheBeginning) {
  EXPECT_TRUE(actsAt(0.0, "END_TIME = 7200 s\n"));
  EXPECT_FALSE(actsAt(1e12, "END_TIME = 7200 s\n"));
}

TEST(ActivityWindow, runTakesInTheHeatOfTheWindowOnly) {
  WallProblem problem = windowed(WINDOW);
  problem.assign("BOUNDARYCOND", problem.column(0), "Heater", "LEFT");
  problem.maxStep = 300.0;
  WallRun run(problem);
  const double start = 2.0 * DX * 2.0 * DY * BOUNDARY_RHO_C * (T_BODY + KELVIN);  // [J]
  run.advance(WINDOW_START);
  EXPECT_NEAR(run.energy(), start, 1.0);
  run.advance(3.0 * 3600.0);
  const double heat = 50.0 * 2.0 * DY * (WINDOW_END - WINDOW_START);
  EXPECT_NEAR(run.energy() - start, heat, 1e-3 * heat);
}
