#include "output/OutputSchedule.h"

#include <gtest/gtest.h>

namespace VELMORA {
namespace {

VelOutputGrid gridOf(double duration, double step) {
  VelOutputGrid grid;
  grid.durations = {TKL::Parameter("DURATION", duration, "s")};
  grid.steps = {TKL::Parameter("STEP", step, "s")};
  return grid;
}

TEST(OutputSchedule, start_countsTheStartTimeItself) {
  std::vector<VelOutputGrid> grids{gridOf(0, 60)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  EXPECT_EQ(std::vector<double>{0.0}, schedule.nextOutputTimes());
  EXPECT_TRUE(schedule.isDue(&grids[0], 0.0));
}

TEST(OutputSchedule, advanceFromZero_givesTheFirstStep) {
  std::vector<VelOutputGrid> grids{gridOf(0, 60)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  EXPECT_DOUBLE_EQ(60.0, schedule.advance(0.0, 600.0));
}

TEST(OutputSchedule, advance_givesTheEarliestOfAllGrids) {
  std::vector<VelOutputGrid> grids{gridOf(0, 100), gridOf(0, 60)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  EXPECT_DOUBLE_EQ(60.0, schedule.advance(0.0, 600.0));
  EXPECT_DOUBLE_EQ(100.0, schedule.advance(60.0, 600.0));
  EXPECT_TRUE(schedule.isDue(&grids[0], 100.0));
  EXPECT_FALSE(schedule.isDue(&grids[1], 100.0));
}

TEST(OutputSchedule, advance_isLimitedByTheStopTime) {
  std::vector<VelOutputGrid> grids{gridOf(0, 100)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  EXPECT_DOUBLE_EQ(50.0, schedule.advance(0.0, 50.0));
}

TEST(OutputSchedule, endedGrid_hasNoFurtherEffect) {
  std::vector<VelOutputGrid> grids{gridOf(100, 50)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  EXPECT_DOUBLE_EQ(600.0, schedule.advance(200.0, 600.0));
}

TEST(OutputSchedule, twoGridsOfOneTime_areDueTogether) {
  std::vector<VelOutputGrid> grids{gridOf(0, 60), gridOf(0, 60)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  schedule.advance(0.0, 600.0);
  EXPECT_TRUE(schedule.isDue(&grids[0], 60.0));
  EXPECT_TRUE(schedule.isDue(&grids[1], 60.0));
}

TEST(OutputSchedule, timesNearerThanAMillisecond_areTheSame) {
  std::vector<VelOutputGrid> grids{gridOf(0, 60)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  schedule.advance(0.0, 600.0);
  EXPECT_TRUE(schedule.isDue(&grids[0], 60.0009));
  EXPECT_FALSE(schedule.isDue(&grids[0], 60.0011));
  EXPECT_TRUE(schedule.isDue(&grids[0], 59.9991));
  EXPECT_FALSE(schedule.isDue(&grids[0], 59.9989));
}

TEST(OutputSchedule, foreignGrid_isNeverDue) {
  std::vector<VelOutputGrid> grids{gridOf(0, 60)};
  const VelOutputGrid other = gridOf(0, 60);
  OutputSchedule schedule(grids);
  schedule.start(600.0, 0.0);
  EXPECT_FALSE(schedule.isDue(&other, 0.0));
}

TEST(OutputSchedule, restart_startsFromTheRestartTime) {
  std::vector<VelOutputGrid> grids{gridOf(0, 60)};
  OutputSchedule schedule(grids);
  schedule.start(600.0, 120.0);
  EXPECT_DOUBLE_EQ(180.0, schedule.advance(120.0, 600.0));
}

}  // namespace
}  // namespace VELMORA
