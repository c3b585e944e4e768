// Runs that are stopped, that fail on values which are no numbers, and that go on.

#include <gtest/gtest.h>

#include <csignal>
#include <limits>
#include <numeric>

#include "solver/SolverProject.h"
#include "solver/StopRequest.h"
#include "solver/VelmoraCvodeSolver.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {
namespace {

using RunTimes = std::vector<double>;

/// Asks for the end of the run when a text of the solver comes, as a signal from outside would.
class StoppingCapture : public TKL::MessageCapture {
 public:
  void msg(const std::string& text, int type, const char* functionId, int level) override {
    MessageCapture::msg(text, type, functionId, level);
    if (type == TKL::MSG_PROGRESS && ++evaluations_ == stopAt) requestStop();
  }
  void restart(int evaluation) {
    stopAt = evaluation;
    evaluations_ = 0;
  }
  int stopAt = -1;

 private:
  int evaluations_ = 0;
};

class StopAndGo : public ::testing::Test {
 protected:
  StopAndGo() {
    clearStopRequest();
    // heat flows from the left surface to the right one, through an area of 1 m2
    text.climate = SolverProject::constantClimate("Warm", "TEMPER", "30 C") +
                   SolverProject::constantClimate("Cold", "TEMPER", "5 C");
    text.boundary =
        SolverProject::heatConduction("Heated", "KIND = EXCHANGE\nTEMPER = Warm\nEXCOEFF = 8 W/m2K\n") +
        SolverProject::heatConduction("Cooled", "KIND = EXCHANGE\nTEMPER = Cold\nEXCOEFF = 25 W/m2K\n");
    text.assignments = SolverProject::assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT") +
                       SolverProject::assign("BOUNDARYCOND", "0 0 0 0", "Heated", "LEFT") +
                       SolverProject::assign("BOUNDARYCOND", "1 0 1 0", "Cooled", "RIGHT") +
                       SolverProject::assign("FIELDOUTPUT", "0 0 1 0", "T.out", "ELEMENT");
    addFlux("Sum", "INTEGRAL", "J/m2", "0 d 10 min");
    text.general = "DURATION = 10 h\n";
    text.settings = "MAX_DT = 2 min\n";
  }
  ~StopAndGo() override { clearStopRequest(); }

  void addFlux(const std::string& name, const std::string& timeType, const char* unit,
               const std::string& interval) {
    text.grids += SolverProject::grid(name, interval);
    text.formats += SolverProject::fluxFormat(name, timeType, unit);
    text.files += SolverProject::outputFile(name + ".out", name, name);
    text.assignments += SolverProject::assign("FLUXOUTPUT", "0 0 0 0", name + ".out", "LEFT");
  }

  /// Runs the project in a solver of its own. False if it ends in an error.
  bool run(bool restart, int stopAt = -1) {
    VELMORA::VelProject project;
    text.read(project);
    project.m_solverFlags.restart = restart;
    project.m_solverFlags.verbosity = 4;
    VelmoraCvodeSolver solver;
    EXPECT_TRUE(solver.init(project));
    capture.restart(stopAt);
    try {
      solver.run();
      return true;
    } catch (const TKL::Exception&) {
      return false;
    }
  }

  StoppingCapture capture;
  SolverProject text;
};

RunTimes everyTenMinutes(int count) {
  RunTimes times;
  for (int n = 0; n <= count; ++n) times.push_back(600.0 * n);
  return times;
}

TEST_F(StopAndGo, stopRequest_endsTheRunBehindItsStep) {
  EXPECT_FALSE(run(false, 100));
  EXPECT_TRUE(capture.contains("Aborting solver..."));
  const double reached = std::stod(text.result("restart.txt"));
  EXPECT_GT(reached, 0.0);
  EXPECT_LT(reached, 36000.0);
  // what lies before the restart state has been written
  ASSERT_FALSE(text.times("T.out").empty());
  EXPECT_LE(text.times("T.out").back(), reached);
  EXPECT_GT(text.times("T.out").back() + 600.0, reached);
}

TEST_F(StopAndGo, wherever_aRunIsStopped_noOutputIsMissingOrDouble) {
  ASSERT_TRUE(run(false));
  const auto whole = text.records("T.out");
  const auto wholeSums = text.records("Sum.out");
  for (const int stopAt : {5, 40, 70, 100, 130}) {
    clearStopRequest();
    ASSERT_FALSE(run(false, stopAt)) << stopAt;
    clearStopRequest();
    ASSERT_TRUE(run(true)) << stopAt;
    EXPECT_EQ(text.times("T.out"), everyTenMinutes(60)) << stopAt;
    const auto parts = text.records("T.out");
    for (std::size_t i = 0; i < whole.size(); ++i) EXPECT_NEAR(parts[i][1], whole[i][1], 0.03) << stopAt;
    const auto sums = text.records("Sum.out");
    ASSERT_EQ(sums.size(), wholeSums.size()) << stopAt;
    // of 12000 s; the last step may reach beyond by 2 min at most
    EXPECT_NEAR(sums[20][1] / wholeSums[20][1], 1.0, 0.02) << stopAt;
  }
}

TEST_F(StopAndGo, timeIntegral_goesOnBehindARestart) {
  text.settings = "MAX_DT = 5 s\n";
  text.general = "DURATION = 2 h\n";
  ASSERT_TRUE(run(false));
  const auto whole = text.records("Sum.out");
  text.general = "DURATION = 1 h\n";
  ASSERT_TRUE(run(false));
  text.general = "DURATION = 2 h\n";
  ASSERT_TRUE(run(true));
  const auto parts = text.records("Sum.out");
  ASSERT_EQ(parts.size(), whole.size());
  // a record holds the whole last step: up to 5 s of 7200 s
  for (std::size_t i = 1; i < whole.size(); ++i) EXPECT_NEAR(parts[i][1] / whole[i][1], 1.0, 0.01) << i;
}

TEST_F(StopAndGo, missingSums_areWarnedOf) {
  text.general = "DURATION = 1 h\n";
  ASSERT_TRUE(run(false));
  std::filesystem::remove(text.folder.file(text.resultFile("restart.sums")));
  text.general = "DURATION = 2 h\n";
  ASSERT_TRUE(run(true));
  EXPECT_TRUE(
      capture.has("The sums of the fluxes up to the restart are missing: time integrals begin anew.\n",
                  TKL::MSG_WARNING, "[VelmoraCvodeSolver::resumeOutputs]", -1));
}

TEST_F(StopAndGo, sumsThatDoNotBelongToTheRestartFile_areNeverTaken) {
  // a power cut can keep a file of one time and lose that of another, or half of it
  text.general = "DURATION = 1 h\n";
  ASSERT_TRUE(run(false));
  const std::string state = text.result("restart.txt"), sums = text.result("restart.sums");
  const std::string older = text.result("restart.sums.backup");
  ASSERT_NE(sums, older);
  text.general = "DURATION = 2 h\n";
  for (const std::string& left :
       {older, sums.substr(0, sums.size() / 2), std::string(), std::string(200, '\0')}) {
    text.folder.write(text.resultFile("restart.txt"), state);
    text.folder.write(text.resultFile("restart.sums"), left);
    text.folder.write(text.resultFile("restart.sums.backup"), left);
    capture.messages.clear();
    ASSERT_TRUE(run(true));
    EXPECT_TRUE(capture.contains("time integrals begin anew")) << left;
  }
  // where only one of the two fits the state, it is taken
  text.folder.write(text.resultFile("restart.txt"), state);
  text.folder.write(text.resultFile("restart.sums"), older);
  text.folder.write(text.resultFile("restart.sums.backup"), sums);
  capture.messages.clear();
  ASSERT_TRUE(run(true));
  EXPECT_FALSE(capture.contains("time integrals begin anew"));
}

TEST_F(StopAndGo, integralAndMeans_followTheMomentaryFlux) {
  addFlux("Now", "NONE", "W/m2", "0 d 30 s");
  addFlux("Mean", "MEAN", "W/m2", "0 d 10 min");
  text.settings = "MAX_DT = 10 s\n";
  text.general = "DURATION = 3 h\n";
  ASSERT_TRUE(run(false));
  const auto now = text.records("Now.out");
  const auto sum = text.records("Sum.out");
  const auto mean = text.records("Mean.out");
  ASSERT_EQ(now.size(), 360U);  // a momentary flux has no record at the start
  const double largest = now.front()[1];
  double integral = 30.0 * now.front()[1];  // of the first 30 s, in which it falls by 0.1 %
  for (std::size_t i = 1; i < now.size(); ++i) {
    integral += 15.0 * (now[i - 1][1] + now[i][1]);
    if ((i + 1) % 20 != 0) continue;
    const std::size_t record = (i + 1) / 20;
    // the sums run to the end of a step of 10 s
    EXPECT_NEAR(sum[record][1], integral, 12.0 * largest) << record;
    if (record < 2) continue;
    EXPECT_NEAR(mean[record - 1][1], (sum[record][1] - sum[record - 1][1]) / 600.0, 1e-6 * largest) << record;
  }
}

TEST_F(StopAndGo, filesOfOneGrid_haveTheSameTimes) {
  addFlux("Shared", "NONE", "W/m2", "0 d 10 min");
  text.files += SolverProject::outputFile("Twin.out", "Shared", "Shared");
  text.assignments += SolverProject::assign("FLUXOUTPUT", "0 0 0 0", "Twin.out", "LEFT");
  ASSERT_TRUE(run(false));
  EXPECT_EQ(text.times("Shared.out"), text.times("Twin.out"));
  EXPECT_EQ(text.times("Shared.out").size(), 60U);
}

TEST_F(StopAndGo, restartFileAndBackup_areTwoSteps) {
  ASSERT_FALSE(run(false, 100));
  EXPECT_GT(std::stod(text.result("restart.txt")), std::stod(text.result("restart.txt.backup")));
}

/// Makes the outer temperature no number at an evaluation, and a number again at the first loosening.
class PoisonCapture : public TKL::MessageCapture {
 public:
  void msg(const std::string& text, int type, const char* functionId, int level) override {
    MessageCapture::msg(text, type, functionId, level);
    if (type == TKL::MSG_PROGRESS && ++evaluations_ == poisonAt)
      *value = std::numeric_limits<double>::quiet_NaN();
    if (heals && text.starts_with("Adjusting")) *value = 303.15;
  }
  double* value = nullptr;
  int poisonAt = -1;
  bool heals = false;

 private:
  int evaluations_ = 0;
};

class PoisonedRun : public StopAndGo {
 protected:
  bool runPoisoned(int poisonAt, bool heals) {
    VELMORA::VelProject project;
    text.read(project);
    project.m_solverFlags.verbosity = 4;
    VelmoraCvodeSolver solver;
    EXPECT_TRUE(solver.init(project));
    poison.value = const_cast<double*>(&solver.data().climateConds.front().currentValue);
    poison.poisonAt = poisonAt;
    poison.heals = heals;
    if (poisonAt == 0) *poison.value = std::numeric_limits<double>::quiet_NaN();
    try {
      solver.run();
      return true;
    } catch (const TKL::Exception&) {
      return false;
    }
  }
  bool culpritIsNamed() const {
    return poison.has(
        "The change of the energy density of element 0 at x = 0.05 m, y = 0.5 m, material "
        "'Block' is not a number.",
        TKL::MSG_ERROR, "[VelmoraCvodeSolver::runStep]", -1);
  }
  PoisonCapture poison;
};

TEST_F(PoisonedRun, valueThatIsNoNumberForAWhile_isPassed) {
  EXPECT_TRUE(runPoisoned(60, true));
  EXPECT_TRUE(poison.contains("Adjusting relative tolerance to "));
  EXPECT_FALSE(culpritIsNamed());
  EXPECT_EQ(text.times("T.out"), everyTenMinutes(60));
}

TEST_F(PoisonedRun, valueThatStaysNoNumber_isNamedWithElementAndMaterial) {
  EXPECT_FALSE(runPoisoned(60, false));
  EXPECT_TRUE(culpritIsNamed());
  EXPECT_TRUE(poison.contains("Giving up after relative tolerance reached 1.0e-2!"));
  // what had been reached before can be continued
  EXPECT_EQ(text.result("T.out").find("nan"), std::string::npos);
}

TEST_F(PoisonedRun, noNumberWithoutRecovery_isNamedAtOnce) {
  text.settings += "USE_AUTO_RECOVER = NO\n";
  EXPECT_FALSE(runPoisoned(60, false));
  EXPECT_TRUE(culpritIsNamed());
  EXPECT_FALSE(poison.contains("Adjusting"));
}

TEST_F(PoisonedRun, noNumberAtTheStart_endsTheRun) {
  EXPECT_FALSE(runPoisoned(0, false));
  EXPECT_TRUE(culpritIsNamed());
}

}  // namespace

TEST(StopSignals, firstSignal_isARequest) {
  const StopSignals signals;
  EXPECT_FALSE(stopRequested());
  std::raise(SIGTERM);
  EXPECT_TRUE(stopRequested());
}

TEST(StopSignals, newScope_forgetsAnOldRequest) {
  requestStop();
  const StopSignals signals;
  EXPECT_FALSE(stopRequested());
}

TEST(StopSignals, ignoredSignal_staysIgnored) {
  const auto former = std::signal(SIGINT, SIG_IGN);
  {
    const StopSignals signals;
    std::raise(SIGINT);
    EXPECT_FALSE(stopRequested());
  }
  std::signal(SIGINT, former);
}

TEST(StopSignalsDeathTest, secondSignal_endsTheProcess) {
  EXPECT_EXIT(
      {
        const StopSignals signals;
        std::raise(SIGTERM);
        std::raise(SIGINT);
      },
      ::testing::KilledBySignal(SIGINT), "");
}

TEST(StopSignalsDeathTest, behindTheScope_oneSignalEndsTheProcess) {
  EXPECT_EXIT(
      {
        { const StopSignals signals; }
        std::raise(SIGTERM);
      },
      ::testing::KilledBySignal(SIGTERM), "");
}

}  // namespace VELMORA_SOLVER
