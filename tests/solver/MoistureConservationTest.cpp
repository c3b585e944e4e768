// What leaves one element enters the next: a sealed construction keeps its water and its energy, and what
// passes its surfaces is what it gains.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "solver/Ledger.h"
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

/// Flow into all elements through the surfaces and from sources: heat [W].
double heatGain(const VelmoraCvodeSolver& solver) {
  double sum = 0.0;
  for (const VELMORA::Side& side : solver.data().sides) {
    if (side.elementLeft != nullptr && side.elementRight != nullptr) continue;
    const auto s = static_cast<std::size_t>(side.number);
    sum += (side.elementLeft == nullptr ? 1.0 : -1.0) * solver.records().heatFlux[s][VELMORA::HF_SUM];
  }
  for (const VELMORA::Element& e : solver.data().elements)
    sum += solver.records().heatSource[static_cast<std::size_t>(e.number)][VELMORA::HS_SUM] * e.volume;
  return sum;
}

/// The same of moisture [kg/s].
double moistureGain(const VelmoraCvodeSolver& solver) {
  double sum = 0.0;
  for (const VELMORA::Side& side : solver.data().sides) {
    if (side.elementLeft != nullptr && side.elementRight != nullptr) continue;
    const auto s = static_cast<std::size_t>(side.number);
    sum += (side.elementLeft == nullptr ? 1.0 : -1.0) * solver.records().moistureFlux[s][VELMORA::MF_SUM];
  }
  for (const VELMORA::Element& e : solver.data().elements)
    sum += solver.records().moistureSource[static_cast<std::size_t>(e.number)][VELMORA::MS_SUM] * e.volume;
  return sum;
}

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

namespace {

void expectSealed(const std::string& settings) {
  WallProblem problem = patchwork();
  problem.relTol = 1e-7;
  problem.duration = 31 * 86400.0;
  problem.maxStep = 43200.0;
  problem.settings = settings;
  WallRun run(problem);
  run.solver.initStep();
  const double water = run.water(), energy = run.energy();
  const double wetStart = run.solver.state().mw[0];
  run.solver.runStep(30 * 86400.0, false);
  EXPECT_NEAR(run.water() / water, 1.0, 1e-10);
  EXPECT_NEAR(run.energy() / energy, 1.0, 1e-8);
  EXPECT_GT(std::fabs(run.solver.state().mw[0] - wetStart), 0.1) << "nothing has moved";
}

}  // namespace

TEST(MoistureConservation, sealedConstruction_keepsWaterAndEnergy) {
  expectSealed("");
}

TEST(MoistureConservation, everyLinearSolver_keepsWaterAndEnergy) {
  for (const char* const solver : {"BAND", "KLU", "BLOCK", "GMRES"}) {
    SCOPED_TRACE(solver);
    expectSealed(std::string("LINEAR_SOLVER = ") + solver + "\n");
  }
}

namespace {

/// The gain of ten days against the integral of what enters.
void expectBalance(const WallProblem& problem) {
  WallRun run(problem);
  run.solver.initStep();
  Ledger ledger(run.solver, {},
                {[&] { return heatGain(run.solver); }, [&] { return moistureGain(run.solver); }});
  ledger.run(10 * 86400.0, 1e-9, 1800.0, 0);
  ASSERT_EQ(ledger.back.size(), 2u);
  EXPECT_GT(std::fabs(ledger.moisture), 0.1);
  EXPECT_NEAR(ledger.back[0] / ledger.heat, 1.0, 1e-6);
  EXPECT_NEAR(ledger.back[1] / ledger.moisture, 1.0, 1e-6);
}

}  // namespace

TEST(MoistureConservation, gainIsTheIntegralOfTheSurfaceFlows) {
  expectBalance(weathered());
}

TEST(MoistureConservation, gainIsTheIntegralOfFlowsAndSources) {
  WallProblem problem = weathered();
  problem.constantClimate("Leak", "WATSOURCE", "2e-5 kg/m3s");
  problem.constantClimate("Heater", "ENESOURCE", "300 W/m3");
  problem.constantClimate("Draught", "AIRCHANGERATE", "2 1/h");
  problem.field("Leaking pipe", "WATSOURCE", "WATSOURCE = Leak\n");
  problem.field("Heating", "ENESOURCE", "ENESOURCE = Heater\n");
  problem.field("Airing", "AIRCHANGE", "TEMPER = Cold\nRELHUM = Damp\nAIRCHANGERATE = Draught\n");
  problem.assign("FIELDCOND", {2, 2, 3, 3}, "Leaking pipe", "ELEMENT");
  problem.assign("FIELDCOND", {4, 0, 5, 1}, "Heating", "ELEMENT");
  problem.assign("FIELDCOND", {5, 3, 5, 5}, "Airing", "ELEMENT");
  expectBalance(problem);
}

}  // namespace VELMORA_SOLVER
