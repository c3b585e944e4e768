#include "solver/Integrator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <span>
#include <stdexcept>

#include "foundation/Exception.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

/// A system of any size given by a function.
class FunctionSystem : public OdeSystem {
 public:
  using Function = std::function<int(double t, const double* y, double* ydot)>;
  explicit FunctionSystem(Function function) : function_(std::move(function)) {}
  int calculate(double t, const double* y, double* ydot) override { return function_(t, y, ydot); }

 private:
  Function function_;
};

/// An integrator of one unknown that starts at y = `start` and is ready to step.
class IntegratorTest : public ::testing::Test {
 protected:
  void begin(OdeSystem& system, double start, double t = 0.0) {
    ASSERT_TRUE(integrator.createVectors(1));
    ASSERT_TRUE(integrator.createAbsoluteTolerances());
    integrator.state()[0] = start;
    integrator.absoluteTolerances()[0] = 1e-10;
    ASSERT_EQ(integrator.initialise(system, t, 1e-8), 0);
    ASSERT_EQ(integrator.attachBandSolver(0), 0);
    integrator.configure(settings);
  }

  TKL::MessageCapture capture;
  IntegratorSettings settings;
  Integrator integrator;
};

int decay(double /*t*/, const double* y, double* ydot) {
  ydot[0] = -y[0];
  return 0;
}

/// y' = -y, whose increments are to be turned.
class TurnedDecay : public OdeSystem {
 public:
  int calculate(double t, const double* y, double* ydot) override { return decay(t, y, ydot); }
  void turnIncrements(std::span<double> increments) const override {
    ++turns;
    EXPECT_EQ(increments.size(), 1U);
  }
  mutable int turns = 0;
};

int constantRate(double /*t*/, const double* /*y*/, double* ydot) {
  ydot[0] = 1.0;
  return 0;
}

}  // namespace

TEST_F(IntegratorTest, decay_followsTheExponential) {
  FunctionSystem system(decay);
  begin(system, 2.0);
  double t = 0.0;
  while (t < 1.0) ASSERT_GE(integrator.step(1.0, t), 0);
  ASSERT_EQ(integrator.interpolate(1.0), 0);
  EXPECT_NEAR(integrator.interpolated()[0], 2.0 * std::exp(-1.0), 1e-5);
}

// a jump of the rates beside the state would spoil quotients across it
TEST_F(IntegratorTest, blockSolvers_letTheSystemTurnTheirIncrements) {
  for (const BlockMethod method : {BlockMethod::BLOCK, BlockMethod::KRYLOV, BlockMethod::SPARSE}) {
    TurnedDecay system;
    begin(system, 2.0);
    ASSERT_EQ(integrator.attachBlockSolver(JacobianPattern::of(1, 1, {}), method), 0);
    double t = 0.0;
    ASSERT_GE(integrator.step(1.0, t), 0);
    EXPECT_GT(system.turns, 0);
  }
}

TEST_F(IntegratorTest, bandSolver_keepsTheQuotientsOfTheIntegrator) {
  TurnedDecay system;
  begin(system, 2.0);
  double t = 0.0;
  ASSERT_GE(integrator.step(1.0, t), 0);
  EXPECT_EQ(system.turns, 0);
}

TEST_F(IntegratorTest, exactStart_hasAFractionOfTheErrorOfAnotherStart) {
  FunctionSystem system(decay);
  const auto errorOfTheStart = [&](bool exactly) {
    begin(system, 2.0);
    if (exactly) integrator.startExactly();
    double t = 0.0;
    while (t < 0.02) EXPECT_GE(integrator.step(10.0, t), 0);
    EXPECT_LT(integrator.numberOfSteps(), 60);
    return std::fabs(integrator.state()[0] * std::exp(t) / 2.0 - 1.0);
  };
  EXPECT_LT(errorOfTheStart(true), 0.1 * errorOfTheStart(false));
}

TEST_F(IntegratorTest, exactStart_isGivenUpWhereItsStepsAreTooShort) {
  // an error of h^2/2 in each step: 5e-9, by the tolerance of 1e-8 and by a hundredth of it
  settings.initialStep = settings.minStep = 1e-4;
  FunctionSystem system(decay);
  begin(system, 2.0);
  integrator.startExactly();
  double t = 0.0;
  for (int step = 0; step < 10; ++step) ASSERT_GE(integrator.step(10.0, t), 0);
  EXPECT_GE(t, 1e-3);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(IntegratorTest, exactStart_isSilentOnlyOfWhatIsTriedAgain) {
  FunctionSystem system(constantRate);
  begin(system, 1.0, 1e20);  // a step of 0.01 s vanishes in the rounding of the time
  integrator.startExactly();
  double t = 1e20;
  ASSERT_GE(integrator.step(2e20, t), 0);
  ASSERT_FALSE(capture.messages.empty());
  EXPECT_EQ(capture.messages.back().type, TKL::MSG_WARNING);
  EXPECT_EQ(integrator.interpolate(0.0), CV_BAD_T);
  EXPECT_EQ(capture.messages.back().type, TKL::MSG_ERROR);
}

TEST_F(IntegratorTest, exceptionInAnExactStep_comesBackAtOnce) {
  int evaluations = 0;
  FunctionSystem system([&](double, const double*, double*) -> int {
    ++evaluations;
    throw TKL::Exception("cause", "[deep]");
  });
  begin(system, 1.0);
  integrator.startExactly();
  double t = 0.0;
  EXPECT_EQ(TKL::thrownBy([&] { integrator.step(1.0, t); }), (TKL::Thrown{"cause", "[deep]"}));
  EXPECT_EQ(evaluations, 1);
}

TEST_F(IntegratorTest, exactStart_endsInTheStepsOfEveryRun) {
  settings.initialStep = 1e-4;
  FunctionSystem system(decay);
  const auto stepBehindTheStart = [&](bool exactly) {
    begin(system, 2.0);
    if (exactly) integrator.startExactly();
    double t = 0.0;
    while (t < 10.0) EXPECT_GE(integrator.step(10.0, t), 0);
    return integrator.lastStepSize();
  };
  EXPECT_GT(stepBehindTheStart(true), 0.5 * stepBehindTheStart(false));
}

TEST_F(IntegratorTest, step_mayPassItsTarget) {
  settings.initialStep = 1.0;
  FunctionSystem system(constantRate);
  begin(system, 0.0);
  double t = 0.0;
  ASSERT_GE(integrator.step(0.5, t), 0);
  EXPECT_DOUBLE_EQ(t, 1.0);
  EXPECT_DOUBLE_EQ(integrator.lastStepSize(), 1.0);
  EXPECT_EQ(integrator.numberOfSteps(), 1);
}

TEST_F(IntegratorTest, positiveReturn_makesASmallerStep) {
  settings.initialStep = 1.0;
  FunctionSystem system(
      [](double t, const double* y, double* ydot) { return t > 0.3 ? 1 : constantRate(t, y, ydot); });
  begin(system, 0.0);
  double t = 0.0;
  ASSERT_GE(integrator.step(10.0, t), 0);
  EXPECT_GT(t, 0.0);
  EXPECT_LE(t, 0.3);
}

TEST_F(IntegratorTest, alwaysPositiveReturn_failsTheStepAndKeepsTheState) {
  FunctionSystem system(
      [](double t, const double* y, double* ydot) { return t > 0.0 ? 1 : constantRate(t, y, ydot); });
  begin(system, 4.0);
  double t = 0.0;
  EXPECT_LT(integrator.step(10.0, t), 0);
  EXPECT_EQ(t, 0.0);
  EXPECT_NEAR(integrator.state()[0], 4.0, 1e-12);  // the failed prediction is taken back by subtraction
}

TEST_F(IntegratorTest, exception_comesBackWithItsWholeChain) {
  FunctionSystem system([](double, const double*, double*) -> int {
    throw TKL::Exception(TKL::Exception("cause", "[deep]"), "effect", "[high]");
  });
  begin(system, 1.0);
  double t = 0.0;
  try {
    integrator.step(1.0, t);
    FAIL() << "no exception";
  } catch (const TKL::Exception& exception) {
    ASSERT_EQ(exception.records().size(), 2U);
    EXPECT_EQ(exception.records()[0].what, "cause");
    EXPECT_EQ(exception.records()[1].location, "[high]");
  }
}

TEST_F(IntegratorTest, exception_keepsItsType) {
  FunctionSystem system([](double, const double*, double*) -> int { throw std::domain_error("outside"); });
  begin(system, 1.0);
  double t = 0.0;
  EXPECT_THROW(integrator.step(1.0, t), std::domain_error);
}

TEST_F(IntegratorTest, exceptionLateInAStep_comesBackToo) {
  FunctionSystem system([](double t, const double* y, double* ydot) {
    if (t > 0.5) throw std::domain_error("late");
    return decay(t, y, ydot);
  });
  begin(system, 1.0);
  double t = 0.0;
  EXPECT_THROW(while (t < 1.0) integrator.step(1.0, t), std::domain_error);
  EXPECT_LE(t, 0.5);
}

TEST_F(IntegratorTest, exception_isTheOnlyReport) {
  FunctionSystem system([](double, const double*, double*) -> int { throw std::domain_error("outside"); });
  begin(system, 1.0);
  double t = 0.0;
  EXPECT_THROW(integrator.step(1.0, t), std::domain_error);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(IntegratorTest, exception_isThrownOnce) {
  bool faulty = true;
  FunctionSystem system([&](double t, const double* y, double* ydot) {
    if (faulty) throw std::domain_error("outside");
    return decay(t, y, ydot);
  });
  begin(system, 1.0);
  double t = 0.0;
  EXPECT_THROW(integrator.step(1.0, t), std::domain_error);
  faulty = false;
  EXPECT_GE(integrator.step(1.0, t), 0);
}

TEST_F(IntegratorTest, failure_isAnErrorMessageAsTheIntegratorWordsIt) {
  FunctionSystem system(decay);
  begin(system, 1.0);
  double t = 0.0;
  ASSERT_GE(integrator.step(1.0, t), 0);
  EXPECT_EQ(integrator.interpolate(1e6), CV_BAD_T);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_EQ(capture.messages[0].type, TKL::MSG_ERROR);
  EXPECT_EQ(capture.messages[0].functionId, "[CVODE]");
  EXPECT_EQ(capture.messages[0].level, -1);
  EXPECT_NE(capture.messages[0].text.back(), '\n');
}

TEST_F(IntegratorTest, warning_hasALineEndAdded) {
  FunctionSystem system(constantRate);
  begin(system, 1.0, 1e20);  // a step of 0.01 s vanishes in the rounding of the time
  double t = 1e20;
  ASSERT_GE(integrator.step(2e20, t), 0);
  ASSERT_FALSE(capture.messages.empty());
  EXPECT_EQ(capture.messages[0].type, TKL::MSG_WARNING);
  EXPECT_EQ(capture.messages[0].functionId, "[CVODE]");
  EXPECT_EQ(capture.messages[0].level, -1);
  EXPECT_EQ(capture.messages[0].text.back(), '\n');
}

TEST_F(IntegratorTest, bandAsWideAsTheSystem_isWrongInput) {
  FunctionSystem system(decay);
  ASSERT_TRUE(integrator.createVectors(3));
  ASSERT_TRUE(integrator.createAbsoluteTolerances());
  ASSERT_EQ(integrator.initialise(system, 0.0, 1e-5), 0);
  EXPECT_EQ(integrator.attachBandSolver(3), -3);
  EXPECT_EQ(integrator.attachBandSolver(1000), -3);
  EXPECT_EQ(integrator.attachBandSolver(2), 0);
}

TEST_F(IntegratorTest, impossibleOrder_isRefused) {
  FunctionSystem system(decay);
  begin(system, 1.0);
  settings.maxOrder = 6;
  EXPECT_EQ(TKL::thrownBy([&] { integrator.configure(settings); }),
            (TKL::Thrown{"CVodeSetMaxOrd failed with code -22.", "[Integrator::configure]"}));
}

TEST_F(IntegratorTest, stepLimits_areKept) {
  settings.initialStep = 0.5;
  settings.maxStep = 0.5;
  FunctionSystem system(constantRate);
  begin(system, 0.0);
  double t = 0.0;
  for (int i = 0; i < 40; ++i) {
    ASSERT_GE(integrator.step(100.0, t), 0);
    ASSERT_LE(integrator.lastStepSize(), 0.5 * (1.0 + 1e-12));
  }
}

TEST_F(IntegratorTest, smallestStepTooLarge_fails) {
  settings.initialStep = 100.0;
  settings.minStep = 100.0;
  FunctionSystem system(decay);
  begin(system, 1.0);
  double t = 0.0;
  EXPECT_EQ(integrator.step(1000.0, t), CV_ERR_FAILURE);
}

TEST_F(IntegratorTest, reinitialise_startsAtTheStateWithAllCountersZero) {
  settings.initialStep = 0.25;
  FunctionSystem system(constantRate);
  begin(system, 0.0);
  double t = 0.0;
  ASSERT_GE(integrator.step(10.0, t), 0);
  ASSERT_GE(integrator.step(10.0, t), 0);
  integrator.state()[0] = 50.0;
  ASSERT_EQ(integrator.reinitialise(7.0, 1e-4), 0);
  EXPECT_EQ(integrator.numberOfSteps(), 0);
  ASSERT_GE(integrator.step(10.0, t), 0);
  EXPECT_DOUBLE_EQ(t, 7.25);
  EXPECT_DOUBLE_EQ(integrator.state()[0], 50.25);
}

TEST_F(IntegratorTest, statistics_countStepsAndEvaluations) {
  int evaluations = 0;
  FunctionSystem system([&](double t, const double* y, double* ydot) {
    ++evaluations;
    return decay(t, y, ydot);
  });
  begin(system, 1.0);
  double t = 0.0;
  for (int i = 0; i < 5; ++i) ASSERT_GE(integrator.step(1.0, t), 0);
  const IntegratorStatistics s = integrator.statistics();
  EXPECT_EQ(s.steps, 5);
  // the band of a Jacobian of one column takes one evaluation more each time
  EXPECT_EQ(s.rhsEvaluations + s.jacobianEvaluations, evaluations);
  EXPECT_DOUBLE_EQ(s.time, t);
}

}  // namespace VELMORA_SOLVER
