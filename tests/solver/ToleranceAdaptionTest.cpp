#include "solver/ToleranceAdaption.h"

#include <gtest/gtest.h>

#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {
const char* const TAG = "[VelmoraCvodeSolver::adjustTolerances]";
const char* const TOO_LOOSE =
    "Giving up after relative tolerance reached 1.0e-2! Maybe the tolerances are set too low or the minimum "
    "time step limit is too large?";
const char* const TOO_OFTEN =
    "Giving up after 1000 solver re-inits! Maybe the tolerances are set too low or the minimum time step "
    "limit is too large?";
}  // namespace

TEST(ToleranceAdaption, loosening_multipliesAndSaysSo) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.startAt(0.0);
  tolerance.loosen(10.0);
  EXPECT_DOUBLE_EQ(tolerance.relTol, 1.1e-5);
  EXPECT_EQ(tolerance.toleranceLevel, 1);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has(
      "Adjusting relative tolerance to 1.1e-05 (level 1) and attempting re-initialization of solver!\n",
      TKL::MSG_WARNING, TAG, -1));
}

TEST(ToleranceAdaption, seventyTwoLoosenings_thenGivesUp) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  for (int i = 0; i < 72; ++i) ASSERT_NO_THROW(tolerance.loosen(10.0)) << i;
  EXPECT_NEAR(tolerance.relTol, 0.00955, 0.00001);
  EXPECT_EQ(TKL::thrownBy([&] { tolerance.loosen(10.0); }), (TKL::Thrown{TOO_LOOSE, TAG}));
  EXPECT_NEAR(tolerance.relTol, 0.0105, 0.0001);
  EXPECT_EQ(capture.messages.size(), 72U);  // giving up announces no further attempt
}

TEST(ToleranceAdaption, thousandRepeatsAtOneTime_thenGivesUp) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.relTol = 1e-60;
  tolerance.startAt(5.0);
  for (int i = 0; i < 1000; ++i) ASSERT_NO_THROW(tolerance.loosen(5.0)) << i;
  EXPECT_EQ(TKL::thrownBy([&] { tolerance.loosen(5.0); }), (TKL::Thrown{TOO_OFTEN, TAG}));
  EXPECT_EQ(tolerance.toleranceLevel, 1000);
}

TEST(ToleranceAdaption, firstFailureAtTheStartTime_isARepeat) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.startAt(5.0);
  tolerance.loosen(5.0);
  EXPECT_EQ(tolerance.reinitCount, 1);
}

TEST(ToleranceAdaption, failureAtAnotherTime_startsTheCountAfresh) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.startAt(5.0);
  tolerance.loosen(5.0);
  tolerance.loosen(5.0 + 1e-15);  // exactly equal times only
  EXPECT_EQ(tolerance.reinitCount, 0);
  EXPECT_EQ(tolerance.lastReinitTime, 5.0 + 1e-15);
  tolerance.loosen(5.0 + 1e-15);
  EXPECT_EQ(tolerance.reinitCount, 1);
}

TEST(ToleranceAdaption, startAt_forgetsTheRepeats) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.loosen(0.0);
  tolerance.startAt(7.0);
  EXPECT_EQ(tolerance.reinitCount, 0);
  EXPECT_EQ(tolerance.lastReinitTime, 7.0);
}

TEST(ToleranceAdaption, twentySteps_areTooFewToTighten) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.relTol = 1.1e-5;
  tolerance.toleranceLevel = 1;
  EXPECT_FALSE(tolerance.tighten(20));
  EXPECT_EQ(tolerance.relTol, 1.1e-5);
  EXPECT_EQ(tolerance.toleranceLevel, 1);
  EXPECT_TRUE(capture.messages.empty());
}

TEST(ToleranceAdaption, twentyOneSteps_tightenByOneLevel) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.loosen(10.0);
  tolerance.loosen(10.0);
  EXPECT_TRUE(tolerance.tighten(21));
  EXPECT_DOUBLE_EQ(tolerance.relTol, 1.1e-5);
  EXPECT_EQ(tolerance.toleranceLevel, 1);
}

TEST(ToleranceAdaption, tighteningText_showsStepsAndToleranceInItsTwoPlaces) {
  TKL::MessageCapture capture;
  ToleranceAdaption tolerance;
  tolerance.relTol = 2.2e-5;
  tolerance.toleranceLevel = 7;
  tolerance.tighten(33);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(
      capture.has("% internal steps taken since tolerances were adjusted. Reducing relative tolerance to 33 "
                  "(level 2e-05).\n",
                  TKL::MSG_WARNING, TAG, -1));
}

}  // namespace VELMORA_SOLVER
