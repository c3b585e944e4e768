// Failures of the integrator that are provoked on purpose: what is told, in which order, and that nothing
// hangs.

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

/// Calls back at each message, from inside the run.
class HookCapture : public TKL::MessageCapture {
 public:
  void msg(const std::string& text, int type, const char* functionId, int level) override {
    MessageCapture::msg(text, type, functionId, level);
    if (hook) hook(messages.back());
  }
  std::function<void(const Message&)> hook;
};

class TimeLoopFailure : public ::testing::Test {
 protected:
  /// Runs the project. What it throws, or "nothing thrown".
  TKL::Thrown run() {
    text.read(project);
    project.m_solverFlags.verbosity = verbosity;
    EXPECT_TRUE(solver.init(project)) << capture.messages.back().text;
    capture.messages.clear();
    return TKL::thrownBy([&] { solver.run(); });
  }

  /// Texts and function ids of the errors, without those of the integrator itself.
  std::vector<TKL::Thrown> errors() const {
    std::vector<TKL::Thrown> result;
    for (const auto& message : capture.messages)
      if (message.type == TKL::MSG_ERROR && message.functionId != "[CVODE]")
        result.push_back({message.text, message.functionId});
    return result;
  }
  long startingWith(const std::string& start) const {
    return std::count_if(capture.messages.begin(), capture.messages.end(),
                         [&](const auto& message) { return message.text.starts_with(start); });
  }

  /// A cause, the output time that was not reached, and the two texts around them.
  static std::vector<TKL::Thrown> chain(const std::string& cause, const std::string& time) {
    const std::string step = "[VelmoraCvodeSolver::runStep]";
    return {{cause, step},
            {"Simulation aborted before reaching next output time : " + time + " s", step},
            {"Solver aborted!", "[VelmoraCvodeSolver::run]  "}};
  }

  /// An output that warns at each of its times, from the inside of the outputs.
  void addNoisyOutput() {
    text.formats += SolverProject::fieldFormat("Noisy", "MEAN");
    text.files += SolverProject::outputFile("N.out", "Grid", "Noisy");
    text.assignments += SolverProject::assign("FIELDOUTPUT", "0 0 1 0", "N.out", "ELEMENT");
  }

  /// Surfaces that jump to 100 degree C over a film, and steps that cannot follow.
  void shock() {
    text.climate = SolverProject::constantClimate("Hot", "TEMPER", "100 C");
    text.boundary =
        SolverProject::heatConduction("Heated", "KIND = EXCHANGE\nTEMPER = Hot\nEXCOEFF = 1000 W/m2K\n");
    text.settings += "MIN_DT = 30 min\n";
  }

  HookCapture capture;
  SolverProject text;
  int verbosity = 1;
  VELMORA::VelProject project;
  VelmoraCvodeSolver solver;
};

const TKL::Thrown STOPPED{"Simulation stopped!", "[VelmoraCvodeSolver::run]  "};

}  // namespace

TEST_F(TimeLoopFailure, realTime_countsFromTheFirstOutputsOn) {
  addNoisyOutput();
  text.read(project);
  ASSERT_TRUE(solver.init(project));
  int outputs = 0;
  capture.hook = [&](const TKL::MessageCapture::Message& message) {
    if (!message.text.starts_with("Time averaged")) return;
    ++outputs;
    while (solver.stopwatch.difference() < 200.0) {
    }
  };
  solver.initStep();
  EXPECT_EQ(outputs, 1);
  EXPECT_LT(solver.stopwatch.difference(), 200.0);
}

TEST_F(TimeLoopFailure, abortAmongOutputs_endsTheRunBeforeItsFeedback) {
  addNoisyOutput();
  capture.hook = [&](const TKL::MessageCapture::Message& message) {
    solver.abortRequested = message.text.starts_with("Time averaged") && solver.t > 0.0;
  };
  EXPECT_EQ(run(), STOPPED);
  EXPECT_EQ(errors(), chain("Aborting solver...", "600"));
  EXPECT_EQ(startingWith("Simtime"), 0);
  EXPECT_GE(std::stod(text.result("restart.txt")), 600.0);
}

TEST_F(TimeLoopFailure, restartFileThatCannotBeWritten_isToldWithItsOutputTime) {
  addNoisyOutput();
  const std::string unfinished = text.resultFile("restart.txt.new");
  capture.hook = [&](const TKL::MessageCapture::Message& message) {
    if (message.text.starts_with("Time averaged"))
      std::filesystem::create_directories(text.folder.file(unfinished));
  };
  EXPECT_EQ(run(), STOPPED);
  EXPECT_EQ(
      errors(),
      chain("Cannot create restart file '" + text.folder.file(unfinished) + "': Is a directory", "600"));
}

TEST_F(TimeLoopFailure, thousandFailuresAtOneTime_endTheRun) {
  shock();
  text.settings += "REL_TOL = 1e-60\n";  // 1000 loosenings leave it far below the limit
  EXPECT_EQ(run(), STOPPED);
  EXPECT_EQ(startingWith("Adjusting relative tolerance to "), 1000);
  EXPECT_EQ(errors(),
            chain("Giving up after 1000 solver re-inits! Maybe the tolerances are set too low or the "
                  "minimum time step limit is too large?",
                  "600"));
  EXPECT_EQ(solver.t, 0.0);
}

TEST_F(TimeLoopFailure, wrongInputOfTheIntegrator_endsTheRunDespiteRecovery) {
  // a state of zero without any absolute tolerance has no error weight
  text.settings += "ABS_TOL_ENERGY = 0\n";
  text.settings += "REL_TOL = 0\n";
  EXPECT_EQ(run(), STOPPED);
  EXPECT_EQ(startingWith("Adjusting"), 0);
  EXPECT_EQ(errors(), chain("CVODE Error: Wrong input...", "600"));
}

TEST_F(TimeLoopFailure, toleranceBelowTheDigitsOfNumbers_isLoosenedUntilStepsSucceed) {
  text.settings += "REL_TOL = 1e-17\nABS_TOL_ENERGY = 1e-12\n";
  EXPECT_EQ(run().text, "nothing thrown");
  EXPECT_GT(startingWith("Adjusting relative tolerance to "), 1);
  EXPECT_EQ(text.times("T.out"), (std::vector<double>{0, 600, 1200, 1800, 2400, 3000, 3600}));
}

TEST_F(TimeLoopFailure, outputTimeBehindTheStep_isNotInterpolated) {
  text.settings += "MAX_DT = 60 s\n";
  capture.hook = [&](const TKL::MessageCapture::Message& message) {
    const bool feedback = message.type == TKL::MSG_STANDARD && message.functionId.empty();
    if (feedback) solver.t = 1e6;  // far behind the steps that have been made
  };
  EXPECT_EQ(run(), STOPPED);
  EXPECT_EQ(errors(), chain("m_nextOutputTime out of range while interpolating outputs", "1200"));
  EXPECT_EQ(text.times("T.out"), (std::vector<double>{0, 600}));
}

TEST_F(TimeLoopFailure, timedFeedback_comesAfterFailedStepsTooAndIsEmptyAtVerbosityZero) {
  shock();
  verbosity = 0;
  capture.hook = [&](const TKL::MessageCapture::Message& message) {
    if (message.text.starts_with("Adjusting")) solver.feedback.nextRealTime = -1.0;
  };
  EXPECT_EQ(run(), STOPPED);
  const long empty = std::count_if(capture.messages.begin(), capture.messages.end(), [](const auto& message) {
    return message.text.empty() && message.type == TKL::MSG_STANDARD && message.level == -1;
  });
  EXPECT_EQ(empty, 72);  // at the failures that follow the 72 loosenings
}

}  // namespace VELMORA_SOLVER
