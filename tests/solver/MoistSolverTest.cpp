#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "solver/MoistBench.h"
#include "solver/SolverProject.h"
#include "solver/VelmoraCvodeSolver.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

const std::string COUPLED = "BALANCE_EQUATIONS = ENERGY MOISTURE\n";
const std::string HYGRIC = "BALANCE_EQUATIONS = MOISTURE\n";

/// Two equal cells of a porous material with sealed surfaces, from the set-up to the run.
class MoistSolverTest : public ::testing::Test {
 protected:
  MoistSolverTest() {
    useMaterial(moistText());
    text.balances = COUPLED;
    text.climate.clear();
    text.boundary.clear();
    text.assignments = SolverProject::assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT") +
                       SolverProject::assign("FIELDOUTPUT", "0 0 1 0", "T.out", "ELEMENT");
  }
  void useMaterial(const std::string& lines) { text.material = lines.substr(lines.find("[STORAGE_BASE")); }
  void start(const std::string& type, const std::string& value, const std::string& range) {
    const std::string name = type + " " + range;
    if (text.boundary.find("[INITIAL_CONDITIONS]") == std::string::npos)
      text.boundary += "[INITIAL_CONDITIONS]\n";
    text.boundary += "[INIT_COND]\nNAME = " + name + "\nTYPE = " + type + "\nVALUE = " + value + "\n";
    text.assignments += SolverProject::assign("INITIALCOND", range, name, "ELEMENT");
  }
  void restartFrom(const std::string& content) {
    std::filesystem::create_directories(text.folder.file("wall.results"));
    text.folder.write(text.resultFile("restart.txt"), content);
    restart = true;
  }
  bool init() {
    solver.clear();  // a solver outlives no project
    project = std::make_unique<VELMORA::VelProject>();
    text.read(*project);
    project->m_solverFlags.restart = restart;
    capture.messages.clear();
    return solver.init(*project);
  }
  /// Steps to the end of the simulated time with these lines of settings.
  long stepsWith(const std::string& settings) {
    text.settings = settings;
    EXPECT_TRUE(init());
    solver.run();
    return solver.statistics().steps;
  }

  TKL::MessageCapture capture;
  SolverProject text;
  bool restart = false;
  std::unique_ptr<VELMORA::VelProject> project;
  VelmoraCvodeSolver solver;
};

using Values = std::vector<double>;

}  // namespace

TEST_F(MoistSolverTest, numberOfEquations_isToldPerElement) {
  ASSERT_TRUE(init());
  EXPECT_EQ(capture.count("Number of balance equations per element: 2\n"), 1);
  text.balances = HYGRIC;
  ASSERT_TRUE(init());
  EXPECT_EQ(capture.count("Number of balance equations per element: 1\n"), 1);
}

TEST_F(MoistSolverTest, start_isTheEnergyOfMaterialAndWater) {
  start("TEMPER", "25 C", "0 0 0 0");
  start("RELHUM", "50 %", "0 0 0 0");
  start("MSTMASS", "120 kg/m3", "1 0 1 0");
  ASSERT_TRUE(init());
  const SolverState& s = solver.state();
  EXPECT_NEAR(s.mw[0], 100.0, 1e-9);
  EXPECT_EQ(s.mw[1], 120.0);
  EXPECT_NEAR(s.U[0], (2e6 + 4180.0 * 100.0) * 298.15, 1.0);
  EXPECT_NEAR(s.U[1], (2e6 + 4180.0 * 120.0) * 293.15, 1.0);
  solver.initStep();
  EXPECT_NEAR(s.T[0], 298.15, 1e-9);
  EXPECT_NEAR(s.T[1], 293.15, 1e-9);
}

TEST_F(MoistSolverTest, startOfMoistureAlone_hasTheReferenceTemperature) {
  text.balances = HYGRIC;
  text.general += "ISOTHERMAL_T_REF = 10 C\n";
  start("TEMPER", "25 C", "0 0 0 0");
  start("MSTMASS", "120 kg/m3", "0 0 1 0");
  ASSERT_TRUE(init());
  solver.initStep();
  EXPECT_NEAR(solver.state().T[0], 298.15, 1e-9);
  EXPECT_NEAR(solver.state().T[1], 283.15, 1e-9);
  EXPECT_NEAR(solver.state().U[1], 2e6 * 283.15, 1e-3);
}

TEST_F(MoistSolverTest, startWithoutStorageFunction_warnsAndIsRefused) {
  useMaterial(moistText("", "", ""));
  EXPECT_FALSE(init());
  EXPECT_EQ(capture.count("Missing moisture storage function for material 'Block', using 0 kg/m3 as moisture "
                          "content.\n"),
            2);
  EXPECT_TRUE(capture.contains(
      "Material 'Block' has no moisture storage function, which BALANCE_EQUATIONS = MOISTURE needs."));
}

TEST_F(MoistSolverTest, coupledRestart_takesBothLinesOfTheFile) {
  restartFrom("1234.500\n600000000.00 650000000.00 \n50.00000000 60.00000000 \n");
  ASSERT_TRUE(init());
  EXPECT_EQ(solver.t, 1234.5);
  solver.initStep();
  EXPECT_EQ(solver.state().mw, (Values{50.0, 60.0}));
  EXPECT_DOUBLE_EQ(solver.state().T[0], 6e8 / (2e6 + 4180.0 * 50.0));
  EXPECT_DOUBLE_EQ(solver.state().T[1], 6.5e8 / (2e6 + 4180.0 * 60.0));
  EXPECT_NEAR(solver.state().RH[1], 0.3, 1e-12);
}

TEST_F(MoistSolverTest, restartOfMoistureAlone_integratesTheSecondLineAndKeepsTheFirst) {
  text.balances = HYGRIC;
  restartFrom("10.000\n600000000.00 580000000.00 \n50.00000000 60.00000000 \n");
  ASSERT_TRUE(init());
  solver.initStep();
  EXPECT_EQ(solver.state().U, (Values{6e8, 5.8e8}));
  EXPECT_EQ(solver.state().mw, (Values{50.0, 60.0}));
  EXPECT_DOUBLE_EQ(solver.state().T[0], 300.0);
  EXPECT_DOUBLE_EQ(solver.state().T[1], 290.0);
}

TEST_F(MoistSolverTest, restartFile_holdsEnergyAndMoistureOfTheLastStep) {
  start("MSTMASS", "120 kg/m3", "0 0 0 0");
  start("MSTMASS", "80 kg/m3", "1 0 1 0");
  ASSERT_TRUE(init());
  solver.run();
  const RestartState last = RestartFile(solver.resultsDirectory).read(2);
  EXPECT_NEAR(last.t, solver.t, 0.0005);
  EXPECT_LT(last.mw[0], 120.0);
  EXPECT_GT(last.mw[0], last.mw[1]);
  EXPECT_NEAR(last.mw[0] + last.mw[1], 200.0, 1e-5);
  EXPECT_NEAR((last.U[0] + last.U[1]) / (4e6 + 200.0 * 4180.0), 293.15, 1e-6);
}

TEST_F(MoistSolverTest, restartFileOfMoistureAlone_keepsTheEnergy) {
  text.balances = HYGRIC;
  start("MSTMASS", "120 kg/m3", "0 0 0 0");
  start("MSTMASS", "80 kg/m3", "1 0 1 0");
  ASSERT_TRUE(init());
  solver.run();
  const RestartState last = RestartFile(solver.resultsDirectory).read(2);
  EXPECT_EQ(last.U, (Values{2e6 * 293.15, 2e6 * 293.15}));
  EXPECT_LT(last.mw[0], 120.0);
}

TEST_F(MoistSolverTest, continuedRun_endsLikeAnUninterruptedOne) {
  start("MSTMASS", "120 kg/m3", "0 0 0 0");
  start("MSTMASS", "80 kg/m3", "1 0 1 0");
  text.general = "DURATION = 2 h\n";
  ASSERT_TRUE(init());
  solver.run();
  const Values expected = solver.state().mw;
  text.general = "DURATION = 1 h\n";
  ASSERT_TRUE(init());
  solver.run();
  text.general = "DURATION = 2 h\n";
  restart = true;
  ASSERT_TRUE(init());
  EXPECT_GE(solver.t, 3600.0);
  solver.run();
  EXPECT_NEAR(solver.state().mw[0], expected[0], 1e-2);
  EXPECT_NEAR(solver.state().mw[1], expected[1], 1e-2);
  EXPECT_LT(expected[0], 119.5);
}

TEST_F(MoistSolverTest, neighbours_fillTheBandOfTwoEquationsEach) {
  EXPECT_TRUE(init());  // half width 2 (1 + 1) - 1 of 4 rows
}

TEST_F(MoistSolverTest, cellsTwoApart_areTooWideForTheBandSolver) {
  text.settings = "LINEAR_SOLVER = BAND\n";
  text.disc = "X_STEPS = 0.1 0.1 0.1 m\nY_STEPS = 1 1 m\n";
  text.assignments = SolverProject::assign("MATERIAL", "0 0 0 0", "Block", "ELEMENT") +
                     SolverProject::assign("MATERIAL", "2 1 2 1", "Block", "ELEMENT");
  EXPECT_FALSE(init());
  EXPECT_EQ(capture.count("CVBand init error (wrong input?)"), 1);
}

TEST_F(MoistSolverTest, moistureTolerance_governsTheMoistureOnly) {
  // hardly any moisture: its error is far larger in units of itself than in units of the energy
  start("MSTMASS", "0.4 kg/m3", "0 0 0 0");
  start("MSTMASS", "0.2 kg/m3", "1 0 1 0");
  text.general = "DURATION = 100 d\n";
  text.grids = SolverProject::grid("Grid", "0 d 100 d");
  const std::string base = "REL_TOL = 1e-8\nMAX_DT = 100 d\n";
  const long both = stepsWith(base + "ABS_TOL_ENERGY = 1e-3\nABS_TOL_MOISTURE = 1e-12\n");
  const long looseEnergy = stepsWith(base + "ABS_TOL_ENERGY = 1e9\nABS_TOL_MOISTURE = 1e-12\n");
  const long looseMoisture = stepsWith(base + "ABS_TOL_ENERGY = 1e-3\nABS_TOL_MOISTURE = 1e3\n");
  EXPECT_GT(looseEnergy, both * 7 / 10);
  EXPECT_LT(looseMoisture, both * 6 / 10) << both << " " << looseEnergy;
}

TEST_F(MoistSolverTest, failedStep_namesTheMoistureBalance) {
  text.climate = SolverProject::constantClimate("Air", "TEMPER", "20 C") +
                 SolverProject::constantClimate("Vapour", "VAPPRESS", "2300 Pa");
  text.boundary =
      "[BOUND_COND]\nNAME = Exchange\nTYPE = VAPDIFF\nKIND = EXCHANGE\nEXCOEFF = 1e-3 s/m\nTEMPER = Air\n"
      "VAPPRESS = Vapour\n";
  start("RELHUM", "10 %", "0 0 1 0");
  text.assignments += SolverProject::assign("BOUNDARYCOND", "1 0 1 0", "Exchange", "RIGHT");
  text.settings = "MIN_DT = 30 min\nUSE_AUTO_RECOVER = NO\n";
  for (const std::string& balances : {HYGRIC, COUPLED}) {
    text.balances = balances;
    ASSERT_TRUE(init());
    EXPECT_EQ(TKL::thrownBy([&] { solver.run(); }).text, "Simulation stopped!");
    EXPECT_TRUE(capture.contains("times the tolerance: moisture balance of element 1 at ")) << balances;
  }
}

}  // namespace VELMORA_SOLVER
