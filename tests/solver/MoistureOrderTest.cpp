// The coupled balance converges with the grid and with the tolerance.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

/// A sealed wall of one material with a smooth hump of moisture and of temperature at the start.
WallProblem hump(int cells, double relTol) {
  WallProblem problem(uniform(cells, 0.2));
  problem.balances = "ENERGY MOISTURE";
  problem.relTol = relTol;
  problem.settings = "ABS_TOL_MOISTURE = 1e-7\n";
  problem.duration = 2e6;
  problem.maxStep = 1e5;
  PorousMaterial material;
  material.liquid = PorousMaterial::conductivity(-14.0, -11.0, material.thetaEff);
  problem.materialText(problem.all(), "Wall", material.text("Wall"));
  for (int i = 0; i < cells; ++i) {
    const double wave = std::cos(M_PI * (i + 0.5) / cells);
    problem.initial(problem.column(i), 20.0 + 5.0 * wave);
    problem.initial(problem.column(i), "MSTCONT", number(0.1 + 0.04 * wave) + " m3/m3");
  }
  return problem;
}

/// Moisture [kg/m2] of the left half of the wall after ten hours, in which the hump flattens.
double leftHalf(int cells, double relTol) {
  WallRun run(hump(cells, relTol));
  run.advance(36000.0);
  double sum = 0.0;
  for (int i = 0; i < cells / 2; ++i) {
    const VELMORA::Element& e = run.element(i);
    sum += run.solver.state().mw[static_cast<std::size_t>(e.number)] * e.volume;
  }
  return sum;
}

}  // namespace

TEST(MoistureOrder, grid_isOfSecondOrder) {
  const double a = leftHalf(10, 1e-9), b = leftHalf(20, 1e-9), c = leftHalf(40, 1e-9), d = leftHalf(80, 1e-9);
  // Over two refinements at once: the kinks of the material's tables scatter each single one.
  EXPECT_NEAR(std::sqrt((a - b) / (c - d)), 4.0, 0.3);
}

TEST(MoistureOrder, tolerance_bringsTheErrorDown) {
  const double exact = leftHalf(20, 1e-11);
  double last = 1.0;
  for (const double relTol : {1e-4, 1e-6, 1e-8}) {
    const double error = std::fabs(leftHalf(20, relTol) - exact);
    EXPECT_LT(error, last / 10.0) << relTol;
    last = error;
  }
}

}  // namespace VELMORA_SOLVER
