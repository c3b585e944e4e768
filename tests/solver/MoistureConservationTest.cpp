// What leaves one element enters the next: a sealed construction keeps its water and its energy, and what
// passes its surfaces is what it gains.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

/// Six by six cells of a brick, a tight clay and a fibre board, every cell with a state of its own.
WallProblem patchwork() {
  WallProblem problem(uniform(6, 0.12), uniform(6, 0.18));
  problem.balances = "ENERGY MOISTURE";
  PorousMaterial brick, clay, board;
  brick.liquid = PorousMaterial::conductivity(-16.0, -9.0, brick.thetaEff);
  clay.thetaEff = 0.45;
  clay.alpha = 1e-7;
  clay.lgKv = -12.0;
  clay.liquid = PorousMaterial::constantDiffusivity(-9.0, clay.thetaEff);
  board.thetaEff = 0.6;
  board.alpha = 3e-6;
  board.rhoC = 4e5;
  board.lambda = 0.05;
  board.lgKv = -10.3;
  board.liquid = PorousMaterial::conductivity(-18.0, -12.0, board.thetaEff);
  problem.materialText({0, 0, 1, 5}, "Brick", brick.text("Brick"));
  problem.materialText({2, 0, 3, 5}, "Clay", clay.text("Clay"));
  problem.materialText({4, 0, 5, 5}, "Board", board.text("Board"));
  std::mt19937 generator(20);
  std::uniform_real_distribution<double> celsius(-5.0, 35.0), percent(20.0, 97.0);
  for (int i = 0; i < 6; ++i)
    for (int j = 0; j < 6; ++j) {
      problem.initial({i, j, i, j}, celsius(generator));
      problem.initial({i, j, i, j}, "RELHUM", number(percent(generator)) + " %");
    }
  return problem;
}

/// The balance equations of a problem with the flows through its surfaces integrated beside the state, as
/// two more unknowns at its end: heat [J] and moisture [kg].
class LedgerSystem : public OdeSystem {
 public:
  explicit LedgerSystem(VelmoraCvodeSolver& solver) : solver_(solver) {}

  int calculate(double t, const double* y, double* ydot) override {
    const int code = solver_.calculate(t, y, ydot);
    if (code != 0) return code;
    double heat = 0.0, moisture = 0.0;
    for (const VELMORA::Side& side : solver_.data().sides) {
      const auto s = static_cast<std::size_t>(side.number);
      if (side.elementLeft != nullptr && side.elementRight != nullptr) continue;
      const double inward = side.elementLeft == nullptr ? 1.0 : -1.0;
      heat += inward * solver_.records().heatFlux[s][VELMORA::HF_SUM];
      moisture += inward * solver_.records().moistureFlux[s][VELMORA::MF_SUM];
    }
    const std::size_t n = 2 * solver_.data().elements.size();
    ydot[n] = heat;
    ydot[n + 1] = moisture;
    return 0;
  }

 private:
  VelmoraCvodeSolver& solver_;
};

/// Cold and damp at the left, warm and dry at the right, water at the foot of the brick.
WallProblem weathered() {
  WallProblem problem = patchwork();
  problem.constantClimate("Warm", "TEMPER", "24 C");
  problem.constantClimate("Cold", "TEMPER", "-4 C");
  problem.constantClimate("Dry", "RELHUM", "35 %");
  problem.constantClimate("Damp", "RELHUM", "88 %");
  problem.constantClimate("Head", "PREHEAD", "0 m");
  problem.boundary("Cold film", "EXCHANGE", "EXCOEFF = 17 W/m2K\nTEMPER = Cold\n");
  problem.boundary("Warm film", "EXCHANGE", "EXCOEFF = 8 W/m2K\nTEMPER = Warm\n");
  problem.boundary("VAPDIFF", "Cold vapour", "EXCHANGE",
                   "EXCOEFF = 1e-7 s/m\nTEMPER = Cold\nRELHUM = Damp\n");
  problem.boundary("VAPDIFF", "Warm vapour", "EXCHANGE", "EXCOEFF = 3e-8 s/m\nTEMPER = Warm\nRELHUM = Dry\n");
  problem.boundary("WATCONTC", "Rising damp", "SURFVAL", "TEMPER = Cold\nPREHEAD = Head\n");
  for (const char* const name : {"Cold film", "Cold vapour"})
    problem.assign("BOUNDARYCOND", problem.column(0), name, "LEFT");
  for (const char* const name : {"Warm film", "Warm vapour"})
    problem.assign("BOUNDARYCOND", problem.column(-1), name, "RIGHT");
  problem.assign("BOUNDARYCOND", {0, 5, 1, 5}, "Rising damp", "BOTTOM");
  return problem;
}

}  // namespace

TEST(MoistureConservation, sealedConstruction_keepsWaterAndEnergy) {
  WallProblem problem = patchwork();
  problem.relTol = 1e-7;
  problem.duration = 31 * 86400.0;
  problem.maxStep = 43200.0;
  WallRun run(problem);
  run.solver.initStep();
  const double water = run.water(), energy = run.energy();
  const double wetStart = run.solver.state().mw[0];
  run.solver.runStep(30 * 86400.0, false);
  EXPECT_NEAR(run.water() / water, 1.0, 1e-10);
  EXPECT_NEAR(run.energy() / energy, 1.0, 1e-8);
  EXPECT_GT(std::fabs(run.solver.state().mw[0] - wetStart), 0.1) << "nothing has moved";
}

TEST(MoistureConservation, gainIsTheIntegralOfTheSurfaceFlows) {
  constexpr double END = 10 * 86400.0;
  WallRun run(weathered());
  run.solver.initStep();
  LedgerSystem ledger(run.solver);
  std::vector<double> start;
  for (std::size_t e = 0; e < run.solver.data().elements.size(); ++e) {
    start.push_back(run.solver.state().U[e]);
    start.push_back(run.solver.state().mw[e]);
  }
  const std::size_t n = start.size();
  Integrator integrator;
  ASSERT_TRUE(integrator.createVectors(n + 2));
  ASSERT_TRUE(integrator.createAbsoluteTolerances());
  const auto y = integrator.state();
  const auto tolerance = integrator.absoluteTolerances();
  std::copy(start.begin(), start.end(), y.begin());
  for (std::size_t i = 0; i < n; ++i) tolerance[i] = i % 2 == 0 ? 1e-1 : 1e-8;
  tolerance[n] = 1e-3;
  tolerance[n + 1] = 1e-10;
  ASSERT_EQ(integrator.initialise(ledger, 0.0, 1e-9), 0);
  ASSERT_EQ(integrator.attachBandSolver((run.solver.data().bandWidth + 1) * 2 - 1), 0);
  IntegratorSettings settings;
  settings.maxSteps = 1000000;
  integrator.configure(settings);
  double t = 0.0;
  while (t < END) ASSERT_GE(integrator.step(END, t), 0);
  double heat = 0.0, moisture = 0.0;
  for (const VELMORA::Element& e : run.solver.data().elements) {
    const auto i = 2 * static_cast<std::size_t>(e.number);
    heat += (y[i] - start[i]) * e.volume;
    moisture += (y[i + 1] - start[i + 1]) * e.volume;
  }
  EXPECT_GT(std::fabs(moisture), 0.1);
  EXPECT_NEAR(y[n] / heat, 1.0, 1e-6);
  EXPECT_NEAR(y[n + 1] / moisture, 1.0, 1e-6);
}

}  // namespace VELMORA_SOLVER
