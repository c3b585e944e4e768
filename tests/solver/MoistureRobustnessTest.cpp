// Hard spots of moisture transport: no abort, no number that is none, water within its limits. The step
// counts are recorded; they may grow by a half before a test fails, so that a later slowdown shows.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

PorousMaterial hardBrick() {
  PorousMaterial material;
  material.liquid = PorousMaterial::conductivity(-16.0, -8.5, material.thetaEff);
  return material;
}

/// A brick wall of these cells, with heat exchange at both sides and sealed against moisture.
WallProblem brickWall(const std::vector<double>& dx, double days) {
  WallProblem problem(dx);
  problem.balances = "ENERGY MOISTURE";
  problem.relTol = 1e-5;
  problem.duration = days * 86400.0;
  problem.maxStep = 1800.0;
  problem.materialText(problem.all(), "Brick", hardBrick().text("Brick"));
  problem.film("Outside", 20.0, 15.0, problem.column(0), "LEFT");
  problem.film("Inside", 8.0, 20.0, problem.column(-1), "RIGHT");
  return problem;
}

/// Vapour exchange of the left surface with air of this humidity [%] between two days.
void addHumidity(WallProblem& problem, double percent, double fromDay, double untilDay) {
  const std::string name = "Air from day " + number(fromDay);
  problem.constantClimate(name, "RELHUM", number(percent) + " %");
  problem.boundary("VAPDIFF", name + " exchange", "EXCHANGE",
                   "EXCOEFF = 5e-8 s/m\nTEMPER = Outside climate\nRELHUM = " + name +
                       "\nSTART_TIME = " + number(fromDay) + " d\nEND_TIME = " + number(untilDay) + " d\n");
  problem.assign("BOUNDARYCOND", problem.column(0), name + " exchange", "LEFT");
}

/// Runs to the end and tests that every element is in a possible state.
void expectPossible(WallRun& run, double thetaEff, long recordedSteps) {
  run.solver.initStep();
  run.solver.runStep(-1.0, false);
  const SolverState& state = run.solver.state();
  for (std::size_t e = 0; e < state.mw.size(); ++e) {
    ASSERT_TRUE(std::isfinite(state.T[e]) && std::isfinite(state.mw[e])) << e;
    EXPECT_GE(state.mw[e], 0.0) << e;
    EXPECT_LE(state.Theta[e], thetaEff * (1.0 + 1e-9)) << e;
    EXPECT_GE(state.RH[e], 0.0) << e;
    EXPECT_LE(state.RH[e], 1.0) << e;
    EXPECT_NEAR(state.T[e], 293.15, 30.0) << e;
  }
  EXPECT_LT(run.solver.statistics().steps, recordedSteps * 3 / 2);
}

}  // namespace

TEST(MoistureRobustness, waterContactOnADryWallForTenDays) {
  WallProblem problem = brickWall(uniform(40, 0.2), 10);
  problem.initial(problem.all(), "RELHUM", "30 %");
  problem.constantClimate("Head", "PREHEAD", "0 m");
  problem.boundary("WATCONTC", "Water", "SURFVAL", "TEMPER = Outside climate\nPREHEAD = Head\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Water", "LEFT");
  WallRun run(problem);
  const double start = run.water();
  expectPossible(run, 0.3, 3934);
  EXPECT_GT(run.water(), start + 10.0);
}

TEST(MoistureRobustness, dryingFromSaturationIntoDryAir) {
  WallProblem problem = brickWall(uniform(40, 0.2), 30);
  problem.initial(problem.all(), "RELHUM", "100 %");
  addHumidity(problem, 5.0, 0, 60);
  WallRun run(problem);
  const double start = run.water();
  expectPossible(run, 0.3, 1858);
  EXPECT_LT(run.water(), start - 1.0);
}

TEST(MoistureRobustness, stepsOfHumidityBetweenOneAndHundredPercent) {
  WallProblem problem = brickWall(uniform(40, 0.2), 8);
  problem.initial(problem.all(), "RELHUM", "50 %");
  for (int day = 0; day < 8; day += 2) addHumidity(problem, day % 4 == 0 ? 1.0 : 100.0, day, day + 2);
  WallRun run(problem);
  expectPossible(run, 0.3, 803);
}

TEST(MoistureRobustness, twoMaterialsTwelveDecadesApart) {
  WallProblem problem(uniform(20, 0.2));
  problem.balances = "ENERGY MOISTURE";
  problem.duration = 10 * 86400.0;
  problem.maxStep = 1800.0;
  problem.relTol = 1e-5;
  PorousMaterial open = hardBrick(), tight = hardBrick();
  open.liquid = PorousMaterial::conductivity(-8.0, -8.0, 0.3);
  tight.liquid = PorousMaterial::conductivity(-20.0, -20.0, 0.3);
  problem.materialText({0, 0, 9, 0}, "Open", open.text("Open"));
  problem.materialText({10, 0, 19, 0}, "Tight", tight.text("Tight"));
  problem.initial({0, 0, 4, 0}, "RELHUM", "99.9 %");
  problem.initial({5, 0, 19, 0}, "RELHUM", "40 %");
  WallRun run(problem);
  const double start = run.water();
  expectPossible(run, 0.3, 984);
  // The rounding of the difference quotients, times the stiffness of the open half, is what may get lost.
  EXPECT_NEAR(run.water() / start, 1.0, 1e-7);
}

TEST(MoistureRobustness, thinCellBesideAThickOne) {
  WallProblem problem = brickWall({0.0001, 1.0}, 30);
  problem.initial(problem.all(), "RELHUM", "95 %");
  addHumidity(problem, 20.0, 0, 60);
  WallRun run(problem);
  expectPossible(run, 0.3, 1534);
}

}  // namespace VELMORA_SOLVER
