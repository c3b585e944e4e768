#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "solver/SolverProject.h"
#include "solver/VelmoraCvodeSolver.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

namespace {

using Message = TKL::MessageCapture::Message;
using VELMORA::VelInit;

const char* const INIT_ID = "[VelmoraCvodeSolver::init]";
const std::string CLOSING = "Error during initialization of solver!";
const std::string COEFFICIENT = "Setting Nonlinear convergence coefficient to ";

class SolverInitTest : public ::testing::Test {
 protected:
  bool init() {
    solver.clear();  // a solver outlives no project
    project = std::make_unique<VELMORA::VelProject>();
    text.read(*project);
    if (change) change(*project);
    capture.messages.clear();
    return solver.init(*project);
  }

  /// Texts of all errors of a set-up, which must fail.
  std::vector<std::string> errorsOfInit() {
    EXPECT_FALSE(init());
    EXPECT_FALSE(solver.initialized);
    std::vector<std::string> texts;
    for (const Message& message : capture.messages)
      if (message.type == TKL::MSG_ERROR) texts.push_back(message.text);
    return texts;
  }

  /// The message about the coefficient, empty where there is none.
  std::string coefficientMessage() {
    EXPECT_TRUE(init());
    for (const Message& message : capture.messages)
      if (message.text.compare(0, COEFFICIENT.size(), COEFFICIENT) == 0) {
        EXPECT_EQ(message.type, TKL::MSG_STANDARD);
        EXPECT_EQ(message.level, 1);
        EXPECT_EQ(message.functionId, INIT_ID);
        return message.text.substr(COEFFICIENT.size());
      }
    return "";
  }

  TKL::MessageCapture capture;
  SolverProject text;
  std::function<void(VELMORA::VelProject&)> change;  ///< of the project that has been read
  std::unique_ptr<VELMORA::VelProject> project;
  VelmoraCvodeSolver solver;
};

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(SolverInitTest, messages_comeInOrderWithTheirLevels) {
  text.settings = "REL_TOL = 1e-4\n";
  ASSERT_TRUE(init());
  std::vector<std::pair<std::string, int>> told;
  for (const Message& message : capture.messages)
    if (message.functionId.find("VelmoraCvodeSolver") != std::string::npos) {
      EXPECT_EQ(message.type, TKL::MSG_STANDARD) << message.text;
      const bool disk = message.text.compare(0, 17, "Free disk space: ") == 0;
      told.emplace_back(disk ? "Free disk space" : message.text, message.level);
    }
  const std::vector<std::pair<std::string, int>> expected = {
      {"Setting up project\n", 1},
      {"Free disk space", 1},
      {"Setting up simulation time frame\n", 1},
      {"Number of balance equations per element: 1\n", 2},
      {"Setting initial conditions\n", 1},
      {"Initializing CVODE integrator\n", 1},
      {"Linear solver: block factors of 2 elements.\n", 2},
      {COEFFICIENT + "0.01\n", 1},
  };
  EXPECT_EQ(told, expected);
}

TEST_F(SolverInitTest, freeDiskSpace_isToldInMegabytes) {
  ASSERT_TRUE(init());
  const auto disk = std::find_if(
      capture.messages.begin(), capture.messages.end(),
      [](const Message& message) { return message.text.compare(0, 17, "Free disk space: ") == 0; });
  ASSERT_NE(disk, capture.messages.end());
  const std::string rest = disk->text.substr(17);
  EXPECT_EQ(rest.substr(rest.find_first_not_of("0123456789")), " MB\n");
  EXPECT_NE(rest.find_first_not_of("0123456789"), 0U);
}

TEST_F(SolverInitTest, messages_areIndentedByOneStepAndTheStepIsTakenBack) {
  ASSERT_TRUE(init());
  EXPECT_EQ(capture.messages.front().text, "Setting up project\n");
  EXPECT_EQ(capture.messages.front().indentation, 1);
  EXPECT_EQ(capture.indentation, 0);
}

TEST_F(SolverInitTest, failure_takesTheIndentationBack) {
  text.balances = "BALANCE_EQUATIONS = SALT\n";
  EXPECT_FALSE(init());
  EXPECT_EQ(capture.indentation, 0);
}

TEST_F(SolverInitTest, success_leavesASolverReadyAtTheStart) {
  ASSERT_TRUE(init());
  EXPECT_TRUE(solver.initialized);
  EXPECT_TRUE(solver.outputsEnabled);
  EXPECT_FALSE(solver.abortRequested);
  EXPECT_EQ(solver.t, 0.0);
  EXPECT_EQ(solver.feedback.tEndTotal, 3600.0);
  EXPECT_EQ(solver.feedback.projectFileName, "wall.vel");
}

TEST_F(SolverInitTest, secondInit_startsClean) {
  ASSERT_TRUE(init());
  solver.abortRequested = true;
  solver.feedback.quiet = true;
  solver.outputsEnabled = false;
  ASSERT_TRUE(init());
  EXPECT_FALSE(solver.abortRequested);
  EXPECT_FALSE(solver.feedback.quiet);
  EXPECT_TRUE(solver.outputsEnabled);
  EXPECT_EQ(solver.data().elements.size(), 2U);
}

TEST_F(SolverInitTest, clear_makesTheSolverUnusable) {
  ASSERT_TRUE(init());
  solver.clear();
  EXPECT_FALSE(solver.initialized);
  EXPECT_TRUE(solver.data().elements.empty());
}

TEST_F(SolverInitTest, noBalanceEquation_isRefused) {
  change = [](VELMORA::VelProject& p) { p.m_init.balanceEquations.reset(); };
  EXPECT_EQ(errorsOfInit(), (Texts{"At least one balance equation has to be specified!", CLOSING}));
  EXPECT_TRUE(capture.has("At least one balance equation has to be specified!", TKL::MSG_ERROR,
                          "[VelmoraCvodeSolver::initSolutionVector]", 1));
  EXPECT_TRUE(capture.has(CLOSING, TKL::MSG_ERROR, INIT_ID, -1));
  EXPECT_FALSE(capture.contains("Number of balance equations"));
}

TEST_F(SolverInitTest, salt_isRefusedAloneAndWithOthers) {
  const char* const refusal =
      "This combination of balance equations is invalid or not supported in this solver!";
  for (const char* equations : {"SALT", "ENERGY SALT", "ENERGY MOISTURE SALT"}) {
    text.balances = std::string("BALANCE_EQUATIONS = ") + equations + "\n";
    EXPECT_EQ(errorsOfInit(), (Texts{refusal, CLOSING})) << equations;
    EXPECT_TRUE(capture.contains("Number of balance equations per element: ")) << equations;
  }
}

TEST_F(SolverInitTest, moistureAndIceWithoutEnergy_isRefused) {
  text.balances = "BALANCE_EQUATIONS = MOISTURE ICE\n";
  EXPECT_EQ(
      errorsOfInit(),
      (Texts{"This combination of balance equations is invalid or not supported in this solver!", CLOSING}));
}

TEST_F(SolverInitTest, iceWithEnergy_isEnergyAloneAndNeedsEveryStep) {
  text.balances = "BALANCE_EQUATIONS = ENERGY ICE\n";
  ASSERT_TRUE(init());
  EXPECT_TRUE(solver.stepwiseOutputs);
  EXPECT_TRUE(capture.contains("Number of balance equations per element: 1\n"));
}

TEST_F(SolverInitTest, missingDensity_isNamed) {
  text.material = SolverProject::storage("CE = 1000 J/kgK\n") + SolverProject::transport("LAMBDA = 1 W/mK\n");
  EXPECT_EQ(errorsOfInit(), (Texts{"Parameter RHO missing for Block.", CLOSING}));
}

TEST_F(SolverInitTest, missingHeatCapacity_isNamed) {
  text.material =
      SolverProject::storage("RHO = 1000 kg/m3\n") + SolverProject::transport("LAMBDA = 1 W/mK\n");
  EXPECT_EQ(errorsOfInit(), (Texts{"Parameter CE missing for Block.", CLOSING}));
}

TEST_F(SolverInitTest, missingConductivity_isWarnedOf) {
  text.material = SolverProject::storage("RHO = 1000 kg/m3\nCE = 1000 J/kgK\n");
  EXPECT_TRUE(init());
  EXPECT_TRUE(
      capture.has("Material 'Block' has no LAMBDA and conducts no heat.\n", TKL::MSG_WARNING, INIT_ID, -1));
}

TEST_F(SolverInitTest, outputWithoutTimeType_needsEveryStep) {
  ASSERT_TRUE(init());
  EXPECT_FALSE(solver.stepwiseOutputs);
  const std::string line = "TIME_TYPE = NONE\n";
  text.formats.erase(text.formats.find(line), line.size());
  ASSERT_TRUE(init());
  EXPECT_TRUE(solver.stepwiseOutputs);
}

TEST_F(SolverInitTest, coarseTolerance_tightensTheNewtonIteration) {
  text.settings = "REL_TOL = 1e-4\n";
  EXPECT_EQ(coefficientMessage(), "0.01\n");
}

TEST_F(SolverInitTest, coarseToleranceWithGravity_tightensItTenfold) {
  text.settings = "REL_TOL = 1e-4\n";
  text.general += "USE_GRAVITY = YES\n";
  EXPECT_EQ(coefficientMessage(), "0.001\n");
}

TEST_F(SolverInitTest, defaultTolerance_changesNothing) {
  text.settings = "REL_TOL = 1e-5\n";
  EXPECT_EQ(coefficientMessage(), "");
}

TEST_F(SolverInitTest, defaultToleranceWithGravity_tightensTheNewtonIteration) {
  text.settings = "REL_TOL = 1e-5\n";
  text.general += "USE_GRAVITY = YES\n";
  EXPECT_EQ(coefficientMessage(), "0.01\n");
}

TEST_F(SolverInitTest, integralOfAField_isRefused) {
  text.formats = SolverProject::fieldFormat("Temperature", "INTEGRAL");
  EXPECT_EQ(errorsOfInit(),
            (Texts{"You can only integrate flux outputs in time. Output format 'Temperature' was "
                   "defined with time integration!",
                   CLOSING}));
}

TEST_F(SolverInitTest, momentaryOutputs_needNoStepData) {
  ASSERT_TRUE(init());
  EXPECT_FALSE(solver.stepwiseOutputs);
}

TEST_F(SolverInitTest, integralOutputs_needDataOfEveryStep) {
  text.formats += SolverProject::fluxFormat("Heat", "INTEGRAL", "J/m2");
  text.files += SolverProject::outputFile("Q.out", "Grid", "Heat");
  text.assignments += SolverProject::assign("FLUXOUTPUT", "0 0 0 0", "Q.out", "LEFT");
  ASSERT_TRUE(init());
  EXPECT_TRUE(solver.stepwiseOutputs);
}

TEST_F(SolverInitTest, outputFileThatCannotBeCreated_endsTheSetUp) {
  std::filesystem::create_directories(text.folder.file(text.resultFile("T.out")));
  const Texts errors = errorsOfInit();
  ASSERT_EQ(errors.size(), 3U);
  EXPECT_TRUE(errors[0].ends_with("': Is a directory")) << errors[0];
  EXPECT_TRUE(errors[1].starts_with("Error creating output file '")) << errors[1];
  EXPECT_EQ(errors[2], "Error creating output files!");
  EXPECT_TRUE(capture.has(errors[1], TKL::MSG_ERROR, INIT_ID, -1));
  EXPECT_TRUE(capture.has("Error creating output files!", TKL::MSG_ERROR, INIT_ID, -1));
}

TEST_F(SolverInitTest, outputFiles_existEvenIfALaterStepFails) {
  text.balances = "BALANCE_EQUATIONS = ENERGY SALT\n";
  EXPECT_FALSE(init());
  EXPECT_TRUE(std::filesystem::exists(text.folder.file(text.resultFile("T.out"))));
}

TEST_F(SolverInitTest, scatteredCells_areTooWideForTheBandSolver) {
  text.settings = "LINEAR_SOLVER = BAND\n";
  text.disc = "X_STEPS = 0.1 0.1 0.1 m\nY_STEPS = 1 1 1 m\n";
  text.assignments = SolverProject::assign("MATERIAL", "0 0 0 0", "Block", "ELEMENT") +
                     SolverProject::assign("MATERIAL", "2 2 2 2", "Block", "ELEMENT");
  EXPECT_EQ(errorsOfInit(), (Texts{"CVBand init error (wrong input?)"}));
  EXPECT_TRUE(capture.has("CVBand init error (wrong input?)", TKL::MSG_ERROR, INIT_ID, -1));
}

TEST_F(SolverInitTest, restartWithoutFile_isRefused) {
  change = [](VELMORA::VelProject& p) { p.m_solverFlags.restart = true; };
  EXPECT_EQ(errorsOfInit(),
            (Texts{"[VelmoraCvodeSolver::setRestartFields]  Restart file missing!", CLOSING}));
}

TEST_F(SolverInitTest, restart_takesTimeAndStateFromTheFile) {
  std::filesystem::create_directories(text.folder.file("wall.results"));
  text.folder.write(text.resultFile("restart.txt"), "1234.500\n300000000.00 310000000.00 \n0.0 0.0 \n");
  change = [](VELMORA::VelProject& p) { p.m_solverFlags.restart = true; };
  ASSERT_TRUE(init());
  EXPECT_EQ(solver.t, 1234.5);
  EXPECT_EQ(solver.feedback.feedbackStart, 1234.5);
  EXPECT_EQ(solver.feedback.tEndTotal, 3600.0);
  solver.initStep();
  EXPECT_DOUBLE_EQ(solver.state().T[0], 300.0);
  EXPECT_DOUBLE_EQ(solver.state().T[1], 310.0);
}

TEST_F(SolverInitTest, start_takesTheInitialTemperature) {
  ASSERT_TRUE(init());
  solver.initStep();
  EXPECT_DOUBLE_EQ(solver.state().T[0], 293.15);
  EXPECT_EQ(solver.state().pAir[0], 101325.0);
}

TEST_F(SolverInitTest, monitorFile_isOpenedOnRequest) {
  ASSERT_TRUE(init());
  EXPECT_FALSE(std::filesystem::exists(text.folder.file("wall.vel.cvode_monitors")));
  text.settings = "USE_MONITORS_FILE = YES\n";
  ASSERT_TRUE(init());
  EXPECT_TRUE(std::filesystem::exists(text.folder.file("wall.vel.cvode_monitors")));
}

TEST_F(SolverInitTest, impossibleStepLimits_areRefused) {
  text.settings = "MIN_DT = 2 h\nMAX_DT = 1 h\n";
  const Texts errors = errorsOfInit();
  ASSERT_GE(errors.size(), 2U);
  EXPECT_EQ(errors[errors.size() - 2], "CVodeSetMinStep failed with code -22.");
  EXPECT_EQ(errors.back(), CLOSING);
}

}  // namespace VELMORA_SOLVER
