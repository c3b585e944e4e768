// Heat through a glazed gap whose gas convects.

#include <gtest/gtest.h>

#include <cmath>

#include "models/GasConvectionModel.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

/// Two panes of 4 mm with 16 mm of argon (90 %) between them, 20 C on the right and -5 C on the left.
WallProblem glazing() {
  WallProblem problem({0.004, 0.008, 0.008, 0.004});
  problem.material(problem.all(), "Glass", {1.0, 2e6});
  problem.material({1, 0, 2, 0}, "Gas", {0.5, 1.2e3, "AIR"});
  problem.film("Outside", 25.0, -5.0, problem.column(0), "LEFT");
  problem.film("Inside", 8.0, 20.0, problem.column(-1), "RIGHT");
  problem.field("Argon", "GAS_CONVECTION",
                "GC_GASTYPE = 1 -\nGC_GASPROPORTION = 90 %\nGC_INCLINATION = 90 Deg\nFLAGS = CONVECTION_X\n");
  problem.assign("FIELDCOND", {0, 0, 3, 0}, "Argon", "ELEMENT");
  problem.duration = 1e6;
  return problem;
}

}  // namespace

TEST(GasGap, steadyHeat_passesTheEffectiveConductivity) {
  WallRun run(glazing());
  run.advance(9e5);
  const VELMORA::GasProperties& argon = VELMORA::GasConvectionModel::gasProperties(1);
  const VELMORA::GasProperties& air = VELMORA::GasConvectionModel::gasProperties(0);
  const auto mixed = [](double a, double b) { return 0.9 * a + 0.1 * b; };
  const VELMORA::GasProperties gas{mixed(argon.lambda, air.lambda), mixed(argon.eta, air.eta),
                                   mixed(argon.rho, air.rho), mixed(argon.c, air.c)};
  const double Nu = VELMORA::GasConvectionModel::nusseltNumber(
      gas, 90.0, true, 0.016, run.celsius(0) + 273.15, run.celsius(3) + 273.15);
  ASSERT_GT(Nu, 1.0);
  EXPECT_NEAR(run.solver.state().lambda[1], Nu * gas.lambda, 1e-9);
  // between two cells of glass and gas the mean conductivity of both, by their widths
  const double between = (1.0 / 3.0) * 1.0 + (2.0 / 3.0) * Nu * gas.lambda;
  const double R = 1 / 25.0 + 2 * 0.006 / between + 0.008 / (Nu * gas.lambda) + 1 / 8.0;
  EXPECT_NEAR(run.flowLeft(2), -25.0 / R, 1e-4 * 25.0 / R);
}

TEST(GasGap, mixedGasOfStillGap_conducts) {
  WallProblem problem = glazing();
  problem.profile({5.0, 5.0, 5.0, 5.0});
  WallRun run(problem);
  EXPECT_NO_THROW(run.solver.initStep());
  EXPECT_NEAR(run.solver.state().lambda[1], 0.9 * 0.01772 + 0.1 * 0.02496, 1e-12);
}

TEST(GasGap, refusedGap_endsTheSetUp) {
  WallProblem problem = glazing();
  problem.assign("FIELDCOND", {0, 0, 3, 0}, "Argon", "ELEMENT");
  EXPECT_THROW(WallRun{problem}, std::runtime_error);
}

}  // namespace VELMORA_SOLVER
