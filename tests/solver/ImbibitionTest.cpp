// Uptake of liquid water from a wet surface.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double UPTAKE_DIFFUSIVITY = 1e-10;  // [m2/s]

/// A dry wall whose left surface touches water without pressure from the start.
WallProblem wetted(const std::vector<double>& dx, const std::string& name, const std::string& material) {
  WallProblem problem(dx);
  problem.balances = "MOISTURE";
  problem.relTol = 1e-7;
  problem.materialText(problem.all(), name, material);
  problem.initial(problem.all(), "RELHUM", "50 %");
  problem.constantClimate("T", "TEMPER", "20 C");
  problem.constantClimate("Head", "PREHEAD", "0 m");
  problem.boundary("WATCONTC", "Water", "SURFVAL", "TEMPER = T\nPREHEAD = Head\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Water", "LEFT");
  return problem;
}

PorousMaterial constantDiffusivity() {
  PorousMaterial material;
  material.lgKv = -30.0;  // practically no vapour
  material.liquid = PorousMaterial::constantDiffusivity(std::log10(UPTAKE_DIFFUSIVITY), material.thetaEff);
  return material;
}

/// Largest error [kg/m3] against the error function after 100 hours, so long that the two seconds over which
/// the contact sets in do not matter, in a body that is deep enough.
double uptakeError(int cells, double relTol) {
  constexpr double UPTAKE_TIME = 360000.0;  // [s]
  const PorousMaterial material = constantDiffusivity();
  WallProblem problem = wetted(uniform(cells, 0.08), "Body", material.text("Body"));
  problem.relTol = relTol;
  problem.settings = "ABS_TOL_MOISTURE = 1e-9\n";
  problem.duration = 2 * UPTAKE_TIME;
  problem.maxStep = 36000.0;
  WallRun run(problem);
  const double start = run.solver.state().mw[0];
  run.advance(UPTAKE_TIME);
  double error = 0.0;
  for (const VELMORA::Element& e : run.solver.data().elements) {
    const double exact = start + (1000.0 * material.thetaEff - start) *
                                     std::erfc(e.x / (2.0 * std::sqrt(UPTAKE_DIFFUSIVITY * UPTAKE_TIME)));
    error = std::max(error, std::fabs(run.solver.state().mw[static_cast<std::size_t>(e.number)] - exact));
  }
  return error;
}

}  // namespace

TEST(Imbibition, constantDiffusivity_followsTheErrorFunctionToSecondOrder) {
  const double coarse = uptakeError(80, 1e-8), medium = uptakeError(160, 1e-8), fine = uptakeError(320, 1e-8);
  EXPECT_LT(fine, 0.05);
  EXPECT_GT(coarse / medium, 3.8);
  EXPECT_GT(medium / fine, 3.8);
}

TEST(Imbibition, uptake_growsWithTheRootOfTimeOverFourDecades) {
  PorousMaterial material;
  material.liquid = PorousMaterial::conductivity(-16.0, -9.0, material.thetaEff);
  WallProblem problem = wetted(growing(2e-5, 1.05, 4.0), "Brick", material.text("Brick"));
  problem.duration = 2e6;
  problem.maxStep = 1e4;
  WallRun run(problem);
  const double start = run.water();
  std::vector<double> coefficient;
  for (const double t : {1e2, 1e3, 1e4, 1e5, 1e6}) {
    if (t <= run.solver.t) continue;
    run.advance(t);
    coefficient.push_back((run.water() - start) / std::sqrt(t));
  }
  ASSERT_EQ(coefficient.size(), 5U);
  for (const double A : coefficient) EXPECT_NEAR(A / coefficient.back(), 1.0, 0.02);
}

}  // namespace VELMORA_SOLVER
