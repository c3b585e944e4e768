#include "project/VelOutputGrid.h"

#include <gtest/gtest.h>

#include "support/MessageCapture.h"
#include "support/Thrown.h"

using TKL::Thrown;
using TKL::thrownBy;
using VELMORA::SectionText;
using VELMORA::VelOutputGrid;

namespace {

constexpr double HOUR = 3600.0;
constexpr double DAY = 86400.0;

VelOutputGrid gridFrom(const std::string& text) {
  VelOutputGrid grid;
  grid.read(SectionText("NAME = g\n" + text));
  return grid;
}

VelOutputGrid preparedGrid(const std::string& text, double endTime) {
  VelOutputGrid grid = gridFrom(text);
  grid.prepareCalculation(endTime);
  return grid;
}

Thrown thrownByPreparing(const std::string& text) {
  return thrownBy([&] { preparedGrid(text, 10 * DAY); });
}

const char* const PREPARE = "[VelOutputGrid::prepareCalculation]";

}  // namespace

TEST(VelOutputGrid, interval_isDurationUnitStepUnit) {
  const VelOutputGrid grid = gridFrom("INTERVAL = 2 d 30 min\nINTERVAL = 0 h 1 d");
  EXPECT_EQ(grid.name, "g");
  ASSERT_EQ(grid.durations.size(), 2u);
  ASSERT_EQ(grid.steps.size(), 2u);
  EXPECT_DOUBLE_EQ(grid.durations[0].value, 2 * DAY);
  EXPECT_DOUBLE_EQ(grid.steps[0].value, 1800.0);
  EXPECT_EQ(grid.steps[0].IO_unit.name(), "min");
  EXPECT_DOUBLE_EQ(grid.steps[1].value, DAY);
}

TEST(VelOutputGrid, intervalWithoutStepUnit_fails) {
  EXPECT_EQ(thrownBy([] { gridFrom("INTERVAL = 0 d 1"); }),
            (Thrown{"Invalid parameter value '0 d 1' for keyword 'INTERVAL'!", "[VelOutputGrid::read]"}));
}

TEST(VelOutputGrid, intervalWithoutNumber_fails) {
  EXPECT_EQ(thrownBy([] { gridFrom("INTERVAL = daily"); }),
            (Thrown{"Invalid parameter value 'daily' for keyword 'INTERVAL'!", "[VelOutputGrid::read]"}));
}

TEST(VelOutputGrid, intervalInMetres_fails) {
  EXPECT_EQ(thrownBy([] { gridFrom("INTERVAL = 0 d 1 m"); }),
            (Thrown{"Invalid parameter value '0 d 1 m' for keyword 'INTERVAL'!", "[VelOutputGrid::read]"}));
}

TEST(VelOutputGrid, intervalWithUnknownUnit_fails) {
  EXPECT_EQ(thrownBy([] { gridFrom("INTERVAL = 0 d 1 moment"); }).text, "Unit 'moment' not found.");
}

TEST(VelOutputGrid, unknownKeyword_isWarnedAboutAndSkipped) {
  TKL::MessageCapture capture;
  gridFrom("STEPS = 4");
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'STEPS' in this section!", TKL::MSG_WARNING,
                          "[VelOutputGrid::read]", 3));
}

TEST(VelOutputGridPrepare, intervalEnds_areSumsOfTheDurations) {
  EXPECT_EQ(preparedGrid("INTERVAL = 1 d 1 h\nINTERVAL = 2 d 1 h", 10 * DAY).intervalEnds,
            (std::vector<double>{0.0, DAY, 3 * DAY}));
}

TEST(VelOutputGridPrepare, lastIntervalWithoutDuration_endsAtTheEndTime) {
  EXPECT_EQ(preparedGrid("INTERVAL = 1 d 1 h\nINTERVAL = 0 d 1 h", 10 * DAY).intervalEnds,
            (std::vector<double>{0.0, DAY, 10 * DAY}));
}

TEST(VelOutputGridPrepare, secondCall_startsAnew) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 1 h", 10 * DAY);
  grid.prepareCalculation(2 * DAY);
  EXPECT_EQ(grid.intervalEnds, (std::vector<double>{0.0, 2 * DAY}));
}

TEST(VelOutputGridPrepare, listsOfDifferentLength_fail) {
  VelOutputGrid grid = gridFrom("INTERVAL = 0 d 1 h");
  grid.steps.clear();
  EXPECT_EQ(
      thrownBy([&] { grid.prepareCalculation(DAY); }),
      (Thrown{"Output duration and time step vectors mismatch in size. Error in output grid 'g'!", PREPARE}));
}

TEST(VelOutputGridPrepare, noInterval_fails) {
  EXPECT_EQ(thrownByPreparing(""),
            (Thrown{"Output duration not specified. Error in output grid 'g'!", PREPARE}));
}

TEST(VelOutputGridPrepare, negativeDuration_fails) {
  EXPECT_EQ(thrownByPreparing("INTERVAL = -1 d 1 h"),
            (Thrown{"Negative interval duration in output grid 'g'!", PREPARE}));
}

TEST(VelOutputGridPrepare, zeroDurationInTheMiddle_fails) {
  EXPECT_EQ(thrownByPreparing("INTERVAL = 0 d 1 h\nINTERVAL = 1 d 1 h"),
            (Thrown{"Zero interval duration only allowed for last output interval in grid. Error in output "
                    "grid 'g'!",
                    PREPARE}));
}

TEST(VelOutputGridPrepare, negativeStep_fails) {
  EXPECT_EQ(thrownByPreparing("INTERVAL = 1 d -1 h"),
            (Thrown{"Negative output step size in output grid 'g'!", PREPARE}));
}

TEST(VelOutputGridPrepare, infiniteIntervalWithoutStep_fails) {
  EXPECT_EQ(
      thrownByPreparing("INTERVAL = 0 d 0 h"),
      (Thrown{"Can't have infinity time step in last interval with infinite length. Error in output grid "
              "'g'!",
              PREPARE}));
}

TEST(VelOutputGridPrepare, lastIntervalOfFiniteLengthWithoutStep_fails) {
  EXPECT_EQ(thrownByPreparing("INTERVAL = 1 d 1 h\nINTERVAL = 1 d 0 h").text,
            "Can't have infinity time step in last interval with infinite length. Error in output grid 'g'!");
}

TEST(VelOutputGridPrepare, firstIntervalWithoutStep_passes) {
  EXPECT_EQ(thrownByPreparing("INTERVAL = 1 d 0 h\nINTERVAL = 0 d 1 h"), (Thrown{"nothing thrown", ""}));
}

TEST(VelOutputGridNext, beforeTheStart_isZero) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 1 h", 10 * DAY);
  EXPECT_EQ(grid.nextOutputTime(-1.0), 0.0);
}

TEST(VelOutputGridNext, atTheStart_isTheFirstStep) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 1 h", 10 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(0.0), HOUR);
}

TEST(VelOutputGridNext, endlessHourlyGrid_givesEveryHourToTheEnd) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 1 h", 2 * DAY);
  double t = 0.0;
  for (int hour = 1; hour <= 48; ++hour) {
    t = grid.nextOutputTime(t);
    EXPECT_DOUBLE_EQ(t, hour * HOUR);
  }
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(t), 2 * DAY);
}

TEST(VelOutputGridNext, timeStillAhead_isKept) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 1 h", 10 * DAY);
  grid.nextOutputTime(0.0);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(100.0), HOUR);
}

TEST(VelOutputGridNext, stepZero_goesToTheEndOfTheInterval) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 1 d 0 h\nINTERVAL = 0 d 1 h", 10 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(0.0), DAY);
}

TEST(VelOutputGridNext, stepBeyondTheInterval_isCutAtItsEnd) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 100 s 30 s\nINTERVAL = 0 d 1 h", 10 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(95.0), 100.0);
}

TEST(VelOutputGridNext, stepsOfAnInterval_countFromItsStart) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 100 s 30 s\nINTERVAL = 0 d 1 h", 10 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(100.0), 100.0 + HOUR);
}

TEST(VelOutputGridNext, afterTheLastInterval_isItsEnd) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 1 d 1 h", 10 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(5 * DAY), DAY);
}

TEST(VelOutputGridNext, tolerance_isRelative) {
  // at 1e8 s, a millionth of the time is 100 s: two 60 s steps are passed over
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 60 s", 2e8);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(1e8 + 20.0), 1e8 + 140.0);
}

TEST(VelOutputGridNext, endTimeInsideAnEarlierInterval_endsAtThatInterval) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 10 d 1 d\nINTERVAL = 0 d 1 h", 5 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(3.5 * DAY), 4 * DAY);
  EXPECT_DOUBLE_EQ(grid.nextOutputTime(5 * DAY), 5 * DAY);
}

TEST(VelOutputGridNext, stepFarBelowTheTime_returnsAtOnceAndGoesOn) {
  VelOutputGrid grid = preparedGrid("INTERVAL = 0 d 1e-12 s", 2e8);
  EXPECT_GE(grid.nextOutputTime(1e8), 1e8 * 1.000001);
}
