// Whole runs with a pollutant against closed solutions and balances.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/PollutantBench.h"
#include "support/AllocationCounter.h"

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

namespace {

/// Three by four cells of two materials, each with a temperature, a humidity and a mass of its own.
PollutantProblem pollutedPatchwork(const std::string& balances) {
  PollutantProblem problem(uniform(3, 0.06), uniform(4, 0.12), balances);
  const std::string open = balances.find("AIR") != std::string::npos ? "KG = 1e-4 s\n" : "";
  problem.board({0, 0, 1, 3}, open);
  problem.layer({2, 0, 2, 3}, "Screed", open);
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 4; ++j) {
      const WallProblem::Range cell{i, j, i, j};
      problem.initial(cell, 10.0 + 5.0 * i - 3.0 * j);
      problem.mass(cell, 1e-4 * (1.0 + i * j));
      if (problem.hasMoisture()) problem.initial(cell, "RELHUM", number(40.0 + 10.0 * i + 3.0 * j) + " %");
    }
  return problem;
}

/// The patchwork between two openings: air enters at the left of the top row and leaves at the right of the
/// bottom row. The surfaces exchange heat and pollutant, and there are sources.
PollutantProblem blownPatchwork(const std::string& balances) {
  PollutantProblem problem = pollutedPatchwork(balances);
  problem.film("Warm", 8.0, 25.0, problem.column(0), "LEFT");
  problem.constantClimate("Foul", "VOCDENSG", "3e-5 kg/m3");
  problem.constantClimate("Damp", "RELHUM", "55 %");
  problem.constantClimate("Pressed", "GASPRESS", "101335 Pa");
  problem.constantClimate("Normal", "GASPRESS", "101325 Pa");
  problem.constantClimate("Emission", "VOCSOURCE", "1e-10 kg/m3s");
  problem.boundary("VOCDIFF", "Skin", "EXCHANGE", "EXCOEFF = 0.001 m/s\nVOCDENSG = Foul\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Skin", "LEFT");
  for (const char* name : {"Pressed", "Normal"})
    problem.boundary(
        "AIRPRESS", std::string(name) + " opening", "EXCHANGE",
        std::string("EXCOEFF = 10 s/m\nTEMPER = Warm climate\nRELHUM = Damp\nVOCDENSG = Foul\n") +
            "GASPRESS = " + name + "\n");
  problem.assign("BOUNDARYCOND", {0, 0, 0, 0}, "Pressed opening", "LEFT");
  problem.assign("BOUNDARYCOND", {2, 3, 2, 3}, "Normal opening", "RIGHT");
  problem.field("Emitter", "VOCSOURCE", "VOCSOURCE = Emission\n");
  problem.field("Decay", "VOCCHEMISORPTION", "CHEMISORPTION_CONST = -1e-6 1/s\n");
  problem.assign("FIELDCOND", problem.column(2), "Emitter", "ELEMENT");
  problem.assign("FIELDCOND", problem.column(1), "Decay", "ELEMENT");
  return problem;
}

}  // namespace

TEST(PollutantRun, sealedConstruction_keepsItsPollutant) {
  for (const char* balances : {"ENERGY POLLUTANT", "ENERGY MOISTURE POLLUTANT"}) {
    WallRun run(pollutedPatchwork(balances));
    const double start = pollutantMass(run);
    for (const double t : {1e3, 2e5, 3e6}) {
      run.advance(t);
      EXPECT_NEAR(pollutantMass(run) / start, 1.0, 1e-10) << balances << t;
    }
    // and it has moved
    EXPECT_GT(run.solver.state().mVOC1[0], 0.0);
    EXPECT_NE(run.solver.state().mVOC1[0], 1e-4);
  }
}

TEST(PollutantRun, emissionIntoAClosedRoom_keepsTheMassAndEndsInEquilibrium) {
  PollutantProblem problem(joined(uniform(4, 0.02), {0.5}));
  problem.board({0, 0, 3, 0});
  problem.materialText(problem.column(-1), "Cavity", PollutantProblem::dry("Cavity") + "FLAGS = AIR\n");
  problem.mass({0, 0, 3, 0}, 1e-3);
  problem.initial(problem.all(), 23.0);
  WallRun run(problem);
  const double start = pollutantMass(run);
  const auto& state = run.solver.state();
  EXPECT_EQ(state.mVOC1[4], 0.0);
  for (const double t : {1e4, 1e6, 1e8}) {
    run.advance(t);
    EXPECT_NEAR(pollutantMass(run) / start, 1.0, 1e-10) << t;
  }
  // the density in the pores is that of the room: V_b (por + K) rho + V_r (por + 1) rho
  const double rho = start / (0.02 * (VOC_POROSITY + BOARD_K) + 0.5 * (VOC_POROSITY + 1.0));
  for (std::size_t e = 0; e < 5; ++e) EXPECT_NEAR(state.rhoVOC[e] / rho, 1.0, 1e-6) << e;
  EXPECT_NEAR(state.mVOC2[0] / (BOARD_K * rho), 1.0, 1e-6);
}

TEST(PollutantRun, allTheConstructionGains_comesThroughSurfacesAndFromSources) {
  for (const char* balances : {"ENERGY AIR POLLUTANT", "ENERGY MOISTURE AIR POLLUTANT"}) {
    PollutantProblem problem = blownPatchwork(balances);
    WallRun run(problem);
    run.advance(5e3);
    const auto& state = run.solver.state();
    const auto& records = run.solver.records();
    const bool moisture = problem.hasMoisture();
    std::vector<double> y;
    for (std::size_t e = 0; e < state.T.size(); ++e) {
      y.push_back(state.U[e]);
      if (moisture) y.push_back(state.mw[e]);
      y.push_back(state.mVOC1[e]);
      y.push_back(state.mVOC2[e]);
    }
    std::vector<double> rates(y.size());
    ASSERT_EQ(run.solver.calculate(run.solver.t, y.data(), rates.data()), 0);
    const std::size_t n = moisture ? 4 : 3;
    double growth = 0.0, gain = 0.0, gross = 0.0;
    for (const VELMORA::Element& e : run.solver.data().elements) {
      const auto k = static_cast<std::size_t>(e.number);
      growth += e.volume * (rates[k * n + n - 2] + rates[k * n + n - 1]);
      gain += e.volume * (records.vocSource1[k][VELMORA::VS1_IMPOSED] +
                          records.vocSource2[k][VELMORA::VS2_CHEMISORPTION]);
    }
    for (const VELMORA::Side& side : run.solver.data().sides) {
      const double flow = records.vocFlux[static_cast<std::size_t>(side.number)][VELMORA::VF_SUM];
      gross += std::fabs(flow);
      if (side.elementLeft == nullptr) gain += flow;
      if (side.elementRight == nullptr) gain -= flow;
    }
    EXPECT_NEAR(growth, gain, 1e-12 * gross) << balances;
    EXPECT_GT(std::fabs(gain), 1e-6 * gross);
  }
}

TEST(PollutantRun, solidDoesNotMove) {
  PollutantProblem problem({0.1, 0.1});
  problem.board(problem.all());
  problem.mass(problem.column(0), 1e-3);
  problem.field("None", "VOCADSORPTION", "GAS2SOLID_TRANSFER_COEFF = 0 m3/s\n");
  problem.assign("FIELDCOND", problem.all(), "None", "ELEMENT");
  WallRun run(problem);
  run.advance(1e7);
  EXPECT_EQ(run.solver.state().mVOC2, (std::vector<double>{0.0, 0.0}));
  EXPECT_NEAR(run.solver.state().mVOC1[1], 5e-4, 1e-8);
}

TEST(PollutantRun, linearSolvers_agree) {
  for (const char* balances :
       {"ENERGY POLLUTANT", "ENERGY MOISTURE POLLUTANT", "ENERGY MOISTURE AIR POLLUTANT"}) {
    std::vector<double> gas[3], solid[3];
    const char* const solvers[] = {"BAND", "KLU", "BLOCK"};
    for (int i = 0; i < 3; ++i) {
      PollutantProblem problem = std::string(balances).find("AIR") != std::string::npos
                                     ? blownPatchwork(balances)
                                     : pollutedPatchwork(balances);
      problem.settings += std::string("LINEAR_SOLVER = ") + solvers[i] + "\n";
      WallRun run(problem);
      run.advance(1e5);
      gas[i] = run.solver.state().mVOC1;
      solid[i] = run.solver.state().mVOC2;
    }
    for (int i = 1; i < 3; ++i) {
      EXPECT_TRUE(agree(gas[i], gas[0], 1e-10)) << balances << solvers[i];
      EXPECT_TRUE(agree(solid[i], solid[0], 1e-8)) << balances << solvers[i];
    }
  }
}

TEST(PollutantRun, unchangedElements_areNotDecomposedAnew) {
  PollutantProblem problem({0.1, 0.1});
  problem.board(problem.all());
  problem.mass(problem.all(), 1e-4);
  const TKL::MessageCapture silence;
  VELMORA::VelProject project;
  const ProjectFolder place;
  std::string reason;
  ASSERT_EQ(project.read(place.write(problem.text()), reason), 0) << reason;
  VELMORA::CalculationData data;
  project.setup_calculation(data);
  POLLUTANT_LIB::PollutantLibrary library;
  problem.database().read(library, {"Board"});
  RightHandSide rhs(data, ModelSettings::of(project.m_init, project.m_disc), &library);
  std::vector<double> y{2.9e8, 1e-4, 0.0, 3e8, 1e-4, 0.0}, rates(6);
  constexpr double MARK = 7.0;
  ASSERT_EQ(rhs.calculate(0.0, y.data(), rates.data()), 0);
  EXPECT_NEAR(rhs.state.T[1], 300.0, 1e-9);
  rhs.state.DVOC = {MARK, MARK};
  ASSERT_EQ(rhs.calculate(0.0, y.data(), rates.data()), 0);
  EXPECT_EQ(rhs.state.DVOC, (std::vector<double>{MARK, MARK}));
  y[5] = 1e-9;
  ASSERT_EQ(rhs.calculate(0.0, y.data(), rates.data()), 0);
  EXPECT_EQ(rhs.state.DVOC[0], MARK);
  EXPECT_NE(rhs.state.DVOC[1], MARK);
  rhs.state.DVOC[0] = MARK;
  y[1] = 2e-4;
  ASSERT_EQ(rhs.calculate(0.0, y.data(), rates.data()), 0);
  EXPECT_NE(rhs.state.DVOC[0], MARK);
}

TEST(PollutantRun, evaluation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  const PollutantProblem problem = blownPatchwork("ENERGY MOISTURE AIR POLLUTANT");
  WallRun run(problem);
  run.advance(1e3);
  const auto& state = run.solver.state();
  std::vector<double> y;
  for (std::size_t e = 0; e < state.T.size(); ++e)
    for (const double value : {state.U[e], state.mw[e], state.mVOC1[e], state.mVOC2[e] * 1.001})
      y.push_back(value);
  std::vector<double> rates(y.size());
  const std::size_t before = allocationCount();
  ASSERT_EQ(run.solver.calculate(run.solver.t, y.data(), rates.data()), 0);
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace VELMORA_SOLVER
