#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "solver/SolverProject.h"
#include "solver/VelmoraCvodeSolver.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using Message = TKL::MessageCapture::Message;

const std::string RUN_ID = "[VelmoraCvodeSolver::run]  ";
const std::string STEP_ID = "[VelmoraCvodeSolver::runStep]";
const std::string GIVING_UP =
    "Convergence error, giving up (auto-recover is disabled)! Maybe the tolerances are set too low or the "
    "minimum time step limit is too large?";

/// Forces a timed feedback in each step, from inside the evaluations of that step.
class ImpatientCapture : public TKL::MessageCapture {
 public:
  explicit ImpatientCapture(VelmoraCvodeSolver& solver) : solver_(solver) {}
  void msg(const std::string& text, int type, const char* functionId, int level) override {
    MessageCapture::msg(text, type, functionId, level);
    if (type == TKL::MSG_PROGRESS) solver_.feedback.nextRealTime = -1.0;
  }

 private:
  VelmoraCvodeSolver& solver_;
};

class TimeLoopTest : public ::testing::Test {
 protected:
  void init() {
    text.read(project);
    if (change) change(project);
    ASSERT_TRUE(solver.init(project)) << capture.messages.back().text;
    capture.messages.clear();
  }

  /// Sets up `continued`, the continuation of the run that has ended, to 2 h.
  void continueRun() {
    text.general = "DURATION = 2 h\n";
    text.read(longer);
    longer.m_solverFlags.restart = true;
    ASSERT_TRUE(continued.init(longer));
  }

  /// Runs the project, which must end in an error.
  TKL::Thrown failureOfRun() {
    return TKL::thrownBy([&] { solver.run(); });
  }

  std::vector<Message> errors() const {
    std::vector<Message> result;
    for (const Message& message : capture.messages)
      if (message.type == TKL::MSG_ERROR && message.functionId != "[CVODE]") result.push_back(message);
    return result;
  }

  std::vector<std::string> warningsStarting(const std::string& start) const {
    std::vector<std::string> result;
    for (const Message& message : capture.messages)
      if (message.type == TKL::MSG_WARNING && message.text.compare(0, start.size(), start) == 0)
        result.push_back(message.text);
    return result;
  }

  /// Number of lines or stars of feedback.
  long feedbacks() const {
    return std::count_if(capture.messages.begin(), capture.messages.end(), [](const Message& message) {
      return message.type == TKL::MSG_STANDARD && message.functionId.empty() && message.level == -1;
    });
  }

  /// Time in the first line of the restart file [s].
  double restartTime() const { return std::stod(text.result("restart.txt")); }

  /// No heating: the state stays, and the steps grow to their limit.
  void seal() {
    text.assignments = SolverProject::assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT") +
                       SolverProject::assign("FIELDOUTPUT", "0 0 1 0", "T.out", "ELEMENT");
  }

  /// Surfaces that jump to 100 degree C over a film, and steps that cannot be shortened below `minStep`.
  void shock(const std::string& film, const std::string& minStep) {
    text.climate = SolverProject::constantClimate("Hot", "TEMPER", "100 C");
    text.boundary =
        SolverProject::heatConduction("Heated", "KIND = EXCHANGE\nTEMPER = Hot\nEXCOEFF = " + film + "\n");
    text.settings += "MIN_DT = " + minStep + "\n";
  }

  TKL::MessageCapture capture;
  SolverProject text;
  std::function<void(VELMORA::VelProject&)> change;
  VELMORA::VelProject project;
  VELMORA::VelProject longer;  // like `project`, it outlives its solver
  VelmoraCvodeSolver solver;
  VelmoraCvodeSolver continued;
};

using Times = std::vector<double>;

}  // namespace

TEST_F(TimeLoopTest, outputs_startOnceAtTheStartAndEndAtTheEnd) {
  init();
  solver.run();
  EXPECT_EQ(text.times("T.out"), (Times{0, 600, 1200, 1800, 2400, 3000, 3600}));
}

TEST_F(TimeLoopTest, outputs_areInterpolatedToTheirTimes) {
  text.general = "DURATION = 1000 s\n";
  init();
  solver.run();
  EXPECT_GT(solver.t, 1000.0);
  const auto records = text.records("T.out");
  ASSERT_EQ(text.times("T.out"), (Times{0, 600, 1000}));
  for (const auto& record : records) {
    ASSERT_EQ(record.size(), 3U);
    EXPECT_NEAR(record[1], 20.0 + record[0] / 1000.0, 1e-3);
    EXPECT_NEAR(record[2], 20.0 + record[0] / 1000.0, 1e-3);
  }
}

TEST_F(TimeLoopTest, restartFile_holdsTheStepAndNotTheOutputTime) {
  text.general = "DURATION = 1000 s\n";
  init();
  solver.run();
  EXPECT_NEAR(restartTime(), solver.t, 0.0005);
  // both cells have warmed by 1 K in 1000 s since 293.15 K
  const std::string file = text.result("restart.txt");
  EXPECT_NEAR(std::stod(file.substr(file.find('\n'))), 1e6 * (293.15 + solver.t / 1000.0), 1e3);
}

TEST_F(TimeLoopTest, longStep_servesEveryOutputInsideIt) {
  seal();
  text.general = "DURATION = 10 h\n";
  text.grids = SolverProject::grid("Grid", "0 d 1 min");
  init();
  solver.run();
  EXPECT_LT(solver.statistics().steps, 100);
  const Times times = text.times("T.out");
  ASSERT_EQ(times.size(), 601U);
  for (std::size_t i = 0; i < times.size(); ++i) EXPECT_EQ(times[i], 60.0 * static_cast<double>(i));
}

TEST_F(TimeLoopTest, gridsWithTheSameTime_shareOneOutput) {
  text.grids += SolverProject::grid("Coarse", "0 d 20 min");
  text.files += SolverProject::outputFile("C.out", "Coarse", "Temperature");
  text.assignments += SolverProject::assign("FIELDOUTPUT", "0 0 1 0", "C.out", "ELEMENT");
  init();
  solver.run();
  EXPECT_EQ(text.times("T.out"), (Times{0, 600, 1200, 1800, 2400, 3000, 3600}));
  EXPECT_EQ(text.times("C.out"), (Times{0, 1200, 2400, 3600}));
  EXPECT_EQ(feedbacks(), 6);
}

TEST_F(TimeLoopTest, outputTimes_haveNoInfluenceOnTheSteps) {
  init();
  solver.run();
  const double end = solver.t;
  text.grids = SolverProject::grid("Grid", "0 d 7 s");
  VELMORA::VelProject finer;
  text.read(finer);
  VelmoraCvodeSolver second;
  ASSERT_TRUE(second.init(finer));
  second.run();
  EXPECT_EQ(second.t, end);
}

TEST_F(TimeLoopTest, disabledOutputs_stillWriteTheRestartFile) {
  init();
  solver.initStep();
  solver.outputsEnabled = false;
  solver.runStep(-1.0, false);
  EXPECT_EQ(text.times("T.out"), Times{0});
  EXPECT_GE(restartTime(), 3600.0);
}

TEST_F(TimeLoopTest, partsOfARun_continueWhereTheLastOneEnded) {
  text.settings = "MAX_DT = 1 min\n";
  init();
  solver.initStep();
  solver.runStep(1200.0, false);
  EXPECT_GE(solver.t, 1200.0);
  EXPECT_LT(solver.t, 1260.0);
  solver.runStep(-1.0, false);
  EXPECT_EQ(text.times("T.out"), (Times{0, 600, 1200, 1800, 2400, 3000, 3600}));
}

TEST_F(TimeLoopTest, runStepWithRestart_goesBackToItsStart) {
  text.settings = "MAX_DT = 1 min\n";
  init();
  solver.initStep();
  solver.runStep(1800.0, false);
  solver.runStep(300.0, true);
  EXPECT_GE(solver.t, 300.0);
  EXPECT_LT(solver.t, 360.0);
  EXPECT_NEAR(solver.state().T[0], 293.15 + 0.3, 0.01);
}

TEST_F(TimeLoopTest, solverWithoutInit_refusesToWork) {
  EXPECT_EQ(TKL::thrownBy([&] { solver.initStep(); }),
            (TKL::Thrown{"Solver not initialized!", "[VelmoraCvodeSolver::initStep]"}));
  EXPECT_EQ(TKL::thrownBy([&] { solver.runStep(1.0, false); }),
            (TKL::Thrown{"Solver not initialized!", STEP_ID}));
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(TimeLoopTest, runWithoutInit_saysWhyItStops) {
  EXPECT_EQ(failureOfRun(), (TKL::Thrown{"Simulation stopped!", RUN_ID}));
  EXPECT_TRUE(capture.has("Solver not initialized!", TKL::MSG_ERROR, RUN_ID, -1));
}

TEST_F(TimeLoopTest, abort_reportsFromTheCauseOutwards) {
  init();
  solver.abortRequested = true;
  EXPECT_EQ(failureOfRun(), (TKL::Thrown{"Simulation stopped!", RUN_ID}));
  const auto told = errors();
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told[0], (Message{"Aborting solver...", TKL::MSG_ERROR, STEP_ID, -1, told[0].indentation}));
  EXPECT_EQ(told[1], (Message{"Simulation aborted before reaching next output time : 600 s", TKL::MSG_ERROR,
                              STEP_ID, -1, told[1].indentation}));
  EXPECT_EQ(told[2], (Message{"Solver aborted!", TKL::MSG_ERROR, RUN_ID, -1, told[2].indentation}));
}

TEST_F(TimeLoopTest, abort_keepsTheStateReached) {
  init();
  solver.abortRequested = true;
  failureOfRun();
  EXPECT_GT(solver.t, 0.0);
  EXPECT_NEAR(restartTime(), solver.t, 0.0005);
}

TEST_F(TimeLoopTest, incrementsOfQuotients_leadAwayFromTheFreezingPoint) {
  init();
  constexpr double CAPACITY = 1e6;  // [J/m3K]
  const double state[] = {CAPACITY * 273.149999, CAPACITY * 300.0};
  double rates[2];
  ASSERT_EQ(solver.calculate(0.0, state, rates), 0);
  std::vector<double> increments = {1.0, 1.0};
  solver.turnIncrements(increments);
  EXPECT_EQ(increments, (std::vector<double>{-1.0, 1.0}));
}

TEST_F(TimeLoopTest, restart_continuesWithoutAStartOutput) {
  text.settings = "MAX_DT = 1 min\n";
  init();
  solver.run();
  const double reached = restartTime();
  ASSERT_NO_FATAL_FAILURE(continueRun());
  EXPECT_EQ(continued.t, reached);
  continued.run();
  EXPECT_EQ(text.times("T.out"),
            (Times{0, 600, 1200, 1800, 2400, 3000, 3600, 4200, 4800, 5400, 6000, 6600, 7200}));
  EXPECT_NEAR(text.records("T.out").back()[1], 27.2, 1e-3);
}

TEST_F(TimeLoopTest, restart_beginsWithExactStepsAndANewStartInsideARunDoesNot) {
  shock("100 W/m2K", "1e-6 s");  // temperatures that bend
  init();
  solver.run();
  ASSERT_NO_FATAL_FAILURE(continueRun());
  continued.initStep();
  const double stop = continued.t + 300.0;
  continued.runStep(stop, false);
  const long exact = continued.statistics().steps;
  continued.runStep(stop, true);
  EXPECT_GT(exact, 3 * continued.statistics().steps / 2);
}

TEST_F(TimeLoopTest, restartBehindTheEnd_writesNothing) {
  init();
  solver.run();
  const std::string before = text.result("T.out");
  VELMORA::VelProject again;
  text.read(again);
  again.m_solverFlags.restart = true;
  VelmoraCvodeSolver second;
  ASSERT_TRUE(second.init(again));
  second.run();
  EXPECT_EQ(text.result("T.out"), before);
}

TEST_F(TimeLoopTest, failedStepWithoutRecovery_endsTheRun) {
  shock("1000 W/m2K", "30 min");
  text.settings += "USE_AUTO_RECOVER = NO\n";
  init();
  EXPECT_EQ(failureOfRun(), (TKL::Thrown{"Simulation stopped!", RUN_ID}));
  const auto told = errors();
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told[0].text, GIVING_UP);
  EXPECT_EQ(told[1].text, "Simulation aborted before reaching next output time : 600 s");
  EXPECT_EQ(told[2].text, "Solver aborted!");
  EXPECT_TRUE(warningsStarting("Adjusting").empty());
}

TEST_F(TimeLoopTest, failedStep_namesWhereTheErrorIsLargest) {
  shock("1000 W/m2K", "30 min");
  text.settings += "USE_AUTO_RECOVER = NO\n";
  init();
  failureOfRun();
  const auto places = warningsStarting("Estimated error ");
  ASSERT_FALSE(places.empty());
  EXPECT_NE(places[0].find("times the tolerance: energy balance of element "), std::string::npos);
  EXPECT_NE(places[0].find("material 'Block'\n"), std::string::npos);
}

TEST_F(TimeLoopTest, hopelessStepWithRecovery_loosensToTheLimitAndGivesUp) {
  shock("1000 W/m2K", "30 min");
  init();
  EXPECT_EQ(failureOfRun(), (TKL::Thrown{"Simulation stopped!", RUN_ID}));
  EXPECT_EQ(warningsStarting("Adjusting relative tolerance to ").size(), 72U);
  ASSERT_FALSE(errors().empty());
  EXPECT_EQ(errors()[0].text,
            "Giving up after relative tolerance reached 1.0e-2! Maybe the tolerances are set too low or the "
            "minimum time step limit is too large?");
  EXPECT_EQ(solver.t, 0.0);
}

TEST_F(TimeLoopTest, hardSpot_isPassedAndTheToleranceComesBack) {
  shock("100 W/m2K", "20 s");  // time constant 1000 s
  text.settings += "MAX_DT = 40 s\nREL_TOL = 1e-6\n";
  text.general = "DURATION = 20 h\n";
  init();
  solver.run();
  const auto loosened = warningsStarting("Adjusting relative tolerance to ").size();
  const auto tightened = warningsStarting("% internal steps taken since tolerances were adjusted.").size();
  EXPECT_GT(loosened, 1U);
  EXPECT_EQ(tightened, loosened);
  const Times times = text.times("T.out");
  ASSERT_EQ(times.size(), 121U);
  for (std::size_t i = 0; i < times.size(); ++i) EXPECT_EQ(times[i], 600.0 * static_cast<double>(i));
  EXPECT_NEAR(text.records("T.out").back()[1], 100.0, 0.1);
}

TEST_F(TimeLoopTest, verbosityZero_showsOneStarPerOutput) {
  change = [](VELMORA::VelProject& p) { p.m_solverFlags.verbosity = 0; };
  init();
  solver.run();
  EXPECT_EQ(capture.count("*"), 6);
}

TEST_F(TimeLoopTest, verbosityFour_tellsTimeAndStepOfEachEvaluation) {
  change = [](VELMORA::VelProject& p) { p.m_solverFlags.verbosity = 4; };
  init();
  solver.run();
  EXPECT_TRUE(capture.has("t = 0 s, dt = 0 s\n", TKL::MSG_PROGRESS, "[VelmoraCvodeSolver::calculate]", 4));
}

TEST_F(TimeLoopTest, verbosityThree_doesNotTellEvaluations) {
  change = [](VELMORA::VelProject& p) { p.m_solverFlags.verbosity = 3; };
  init();
  solver.run();
  EXPECT_FALSE(capture.contains("t = 0 s, dt = "));
}

TEST_F(TimeLoopTest, timedFeedback_isMarkedWithAStar) {
  change = [](VELMORA::VelProject& p) { p.m_solverFlags.verbosity = 4; };
  init();
  ImpatientCapture impatient(solver);
  solver.run();
  const auto marked =
      std::count_if(impatient.messages.begin(), impatient.messages.end(), [](const Message& m) {
        return m.functionId.empty() && m.text.size() > 3 && m.text.substr(m.text.size() - 3) == " *\n";
      });
  EXPECT_EQ(marked, solver.statistics().steps);
}

TEST_F(TimeLoopTest, monitors_haveALinePerOutputOrPerStep) {
  long steps = 0;
  const auto lines = [&](const std::string& settings) {
    text.settings = "USE_MONITORS_FILE = YES\n" + settings;
    VELMORA::VelProject monitored;
    text.read(monitored);
    VelmoraCvodeSolver monitoredSolver;
    EXPECT_TRUE(monitoredSolver.init(monitored));
    monitoredSolver.run();
    steps = monitoredSolver.statistics().steps;
    const std::string file = text.folder.read("wall.vel.cvode_monitors");
    return std::count(file.begin(), file.end(), '\n') - 4;  // date, project, empty line, titles
  };
  EXPECT_EQ(lines(""), 6);
  EXPECT_EQ(lines("USE_ONE_STEP_MONITORS = YES\n"), steps);
}

TEST_F(TimeLoopTest, heatThroughASurface_isIntegratedOverTheSteps) {
  text.formats += SolverProject::fluxFormat("Heat", "INTEGRAL", "J/m2");
  text.files += SolverProject::outputFile("Q.out", "Grid", "Heat");
  text.assignments += SolverProject::assign("FLUXOUTPUT", "0 0 0 0", "Q.out", "LEFT");
  text.settings = "MAX_DT = 1 s\n";
  init();
  solver.run();
  const auto records = text.records("Q.out");
  ASSERT_EQ(records.size(), 7U);
  // the sums include the whole of the step that passes the output time
  for (const auto& record : records) EXPECT_NEAR(std::abs(record[1]), 100.0 * record[0], 100.0 * 1.0);
}

}  // namespace VELMORA_SOLVER
