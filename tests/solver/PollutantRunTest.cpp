// Whole runs with a pollutant against closed solutions and balances.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/PollutantBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double START_MASS = 1e-4;  // [kg/m3] in the pore gas

}  // namespace

TEST(PollutantRun, gasAndSolid_exchangeExponentially) {
  constexpr double VOLUME = 100.0, T = 303.15;  // of each of two equal cells, slow enough to be followed
  PollutantProblem problem({10.0, 10.0}, {10.0});
  problem.board(problem.all());
  problem.initial(problem.all(), 30.0);
  problem.mass(problem.all(), START_MASS);
  problem.maxStep = 5.0;
  WallRun run(problem);
  // m1' = -k (m1/por - m2/K), m1 + m2 = const: one eigenvalue
  const double K = vocPartition(BOARD_K, T), k = 0.1 / VOLUME;
  const double rate = k * (1.0 / VOC_POROSITY + 1.0 / K);
  const double atRest = START_MASS * (1.0 / K) / (1.0 / VOC_POROSITY + 1.0 / K);
  for (const double t : {60.0, 300.0, 1200.0}) {
    run.advance(t);
    const double expected = atRest + (START_MASS - atRest) * std::exp(-rate * t);
    EXPECT_NEAR(run.solver.state().mVOC1[0], expected, 1e-6 * START_MASS) << t;
    EXPECT_NEAR(run.solver.state().mVOC2[0], START_MASS - expected, 1e-6 * START_MASS) << t;
  }
}

}  // namespace VELMORA_SOLVER
