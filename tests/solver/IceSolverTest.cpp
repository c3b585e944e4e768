// Runs with ice from the project file to the output files.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "foundation/Counters.h"
#include "solver/MoistBench.h"
#include "solver/SolverProject.h"
#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_SOLVER {

namespace {

std::string iceFormat(const std::string& quantity, const std::string& unit) {
  return "[OUTPUT_FORMAT]\nNAME = " + quantity + "\nTYPE = FIELD\nFIELD_TYPE = " + quantity +
         "\nSPACE_TYPE = SINGLE\nTIME_TYPE = NONE\nTIME_UNIT = d\nVALUE_UNIT = " + unit + "\nPRECISION = 8\n";
}

/// Two wet cells of 5 mm whose surroundings swing between 10 C and -10 C with a period of two days, warm
/// first. At -10 C they hold some 9 kg/m3 of ice, 0.025 of the pores. The surfaces let no moisture through.
class IceSolverTest : public ::testing::Test {
 protected:
  IceSolverTest() {
    const std::string lines = moistText();
    text.material = lines.substr(lines.find("[STORAGE_BASE"));
    text.balances = "BALANCE_EQUATIONS = ENERGY MOISTURE ICE\n";
    text.general = "DURATION = 8.5 d\n";
    text.settings = "MAX_DT = 10 min\n";
    text.climate =
        "[CLIMATE_COND]\nNAME = Seasons\nTYPE = TEMPER\nKIND = SINUS\nMEANVALUE = 0 C\nAMPLITUDE1 = 10 K\n"
        "OSCPERIOD1 = 2 d\nPHASESHIFT1 = 0 s\n";
    text.boundary =
        SolverProject::heatConduction("Air", "KIND = EXCHANGE\nEXCOEFF = 25 W/m2K\nTEMPER = Seasons\n") +
        "[INITIAL_CONDITIONS]\n[INIT_COND]\nNAME = Wet\nTYPE = MSTMASS\nVALUE = 190 kg/m3\n";
    text.disc = "X_STEPS = 5 5 mm\nY_STEPS = 1 m\n";
    text.grids = SolverProject::grid("Grid", "0 d 12 h");
    text.assignments = SolverProject::assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT") +
                       SolverProject::assign("INITIALCOND", "0 0 1 0", "Wet", "ELEMENT") +
                       SolverProject::assign("BOUNDARYCOND", "0 0 0 0", "Air", "LEFT") +
                       SolverProject::assign("BOUNDARYCOND", "1 0 1 0", "Air", "RIGHT");
    text.formats.clear();
    text.files.clear();
    show("FREEZE_THAW", "---");
    show("RHO_ICE", "kg/m3");
    show("ICE_VOLUME_RATIO", "---");
    show("TEMPER", "C");
  }
  void show(const std::string& quantity, const std::string& unit) {
    text.formats += iceFormat(quantity, unit);
    text.files += SolverProject::outputFile(quantity + ".out", "Grid", quantity);
    text.assignments += SolverProject::assign("FIELDOUTPUT", "0 0 1 0", quantity + ".out", "ELEMENT");
  }
  void run(bool restart = false) {
    solver.clear();  // a solver outlives no project
    project = std::make_unique<VELMORA::VelProject>();
    text.read(*project);
    project->m_solverFlags.restart = restart;
    capture.messages.clear();
    ASSERT_TRUE(solver.init(*project)) << capture.messages.back().text;
    solver.run();
  }
  std::vector<double> last(const std::string& quantity) const {
    return text.records(quantity + ".out").back();
  }

  TKL::MessageCapture capture;
  SolverProject text;
  std::unique_ptr<VELMORA::VelProject> project;
  VelmoraCvodeSolver solver;
};

using Record = std::vector<double>;

}  // namespace

TEST_F(IceSolverTest, eachPeriod_isACycle) {
  run();
  EXPECT_EQ(last("FREEZE_THAW"), (Record{8.5, 4.0, 4.0}));
  const auto records = text.records("FREEZE_THAW.out");
  EXPECT_EQ(records[3], (Record{1.5, 0.0, 0.0}));  // frozen
  EXPECT_EQ(records[5], (Record{2.5, 1.0, 1.0}));
}

TEST_F(IceSolverTest, threshold_isThatOfFreezeBegin) {
  text.files += "[GENERAL]\nFREEZE_BEGIN = 0.03 ---\n";
  run();
  EXPECT_EQ(last("FREEZE_THAW"), (Record{8.5, 0.0, 0.0}));
}

TEST_F(IceSolverTest, thawBegin_selectsTheCriterion) {
  // With so high a threshold the ice falls below it, and the cycle is complete, at some kelvins of frost.
  text.files += "[GENERAL]\nFREEZE_BEGIN = 0.02 ---\nTHAW_BEGIN = 1\n";
  text.general = "DURATION = 1.9 d\n";
  run();
  EXPECT_LT(solver.state().T[0], 273.15);
  EXPECT_EQ(last("FREEZE_THAW"), (Record{1.9, 1.0, 1.0}));
}

TEST_F(IceSolverTest, iceOutputs_belongToOneAnother) {
  run();
  const auto ice = text.records("RHO_ICE.out"), ratio = text.records("ICE_VOLUME_RATIO.out"),
             celsius = text.records("TEMPER.out");
  ASSERT_EQ(ice.size(), 18U);
  double most = 0.0;
  for (std::size_t i = 0; i < ice.size(); ++i) {
    EXPECT_TRUE(celsius[i][1] < 0.0 || ice[i][1] == 0.0) << i;
    // The ratio is up to 10 s and a step older.
    EXPECT_NEAR(ratio[i][1], ice[i][1] / 916.7 / MOIST_POR, 1e-3) << i;
    most = std::max(most, ice[i][1]);
  }
  EXPECT_NEAR(most, 9.0, 1.0);
}

TEST_F(IceSolverTest, restartedRun_goesOnCounting) {
  text.general = "DURATION = 3.5 d\n";  // in the second frost
  run();
  EXPECT_EQ(last("FREEZE_THAW"), (Record{3.5, 1.0, 1.0}));
  text.general = "DURATION = 8.5 d\n";
  run(true);
  EXPECT_EQ(last("FREEZE_THAW"), (Record{8.5, 4.0, 4.0}));
  EXPECT_FALSE(capture.contains("are counted anew"));
}

TEST_F(IceSolverTest, restartWithoutCounts_beginsAtZeroAndSaysSo) {
  text.general = "DURATION = 3.5 d\n";
  run();
  const std::string file = text.result("restart.txt");
  std::size_t end = 0;
  for (int line = 0; line < 3; ++line) end = file.find('\n', end) + 1;
  EXPECT_EQ(file.substr(end), "1 1 \n1 1 \n");
  text.folder.write(text.resultFile("restart.txt"), file.substr(0, end));
  text.general = "DURATION = 8.5 d\n";
  run(true);
  EXPECT_EQ(last("FREEZE_THAW"), (Record{8.5, 3.0, 3.0}));
  EXPECT_TRUE(capture.has("The freeze-thaw cycles up to the restart are missing: they are counted anew.\n",
                          TKL::MSG_WARNING, "[VelmoraCvodeSolver::init]", -1));
}

TEST_F(IceSolverTest, energyWithIce_hasNoIceOutputsAndCountsNothing) {
  text.balances = "BALANCE_EQUATIONS = ENERGY ICE\n";
  TKL::iceIterationCount = 0;
  run();
  EXPECT_TRUE(capture.contains("FREEZE_THAW.out' because required ICE calculation is not enabled."));
  EXPECT_FALSE(std::filesystem::exists(text.folder.file(text.resultFile("RHO_ICE.out"))));
  EXPECT_TRUE(text.result("restart.txt").ends_with("\n0 0 \n0 0 \n"));
  EXPECT_EQ(TKL::iceIterationCount, 0U);
}

TEST_F(IceSolverTest, withoutIce_nothingIsCountedAndTheRestartFileHasThreeLines) {
  text.balances = "BALANCE_EQUATIONS = ENERGY MOISTURE\n";
  TKL::iceIterationCount = 0;
  run();
  EXPECT_TRUE(capture.contains("FREEZE_THAW.out' because required ICE calculation is not enabled."));
  const std::string file = text.result("restart.txt");
  EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 3);
  EXPECT_EQ(TKL::iceIterationCount, 0U);
}

TEST_F(IceSolverTest, iceWithAir_isRefused) {
  text.balances = "BALANCE_EQUATIONS = ENERGY MOISTURE ICE AIR\n";
  project = std::make_unique<VELMORA::VelProject>();
  text.read(*project);
  EXPECT_FALSE(solver.init(*project));
  EXPECT_TRUE(
      capture.contains("This combination of balance equations is invalid or not supported in this solver!"));
}

TEST_F(IceSolverTest, secondHalfOfARun_canBeRepeated) {
  run();
  const Record counted = last("FREEZE_THAW");
  project = std::make_unique<VELMORA::VelProject>();
  text.read(*project);
  ASSERT_TRUE(solver.init(*project));
  solver.initStep();
  solver.runStep(2.0 * 86400.0, false);
  solver.runStep(2.0 * 86400.0, true);  // the clock of the counters goes back with the state
  solver.runStep(8.5 * 86400.0, false);
  EXPECT_GE(last("FREEZE_THAW")[1], counted[1]);
}

}  // namespace VELMORA_SOLVER
