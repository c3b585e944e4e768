#include "output/OutputSchedule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

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

TEST(OutputSchedule, resume_goesOnLikeTheUninterruptedRun) {
  std::vector<VelOutputGrid> whole{gridOf(0, 100), gridOf(0, 37)};
  std::vector<VelOutputGrid> parts = whole;
  OutputSchedule uninterrupted(whole);
  uninterrupted.start(3600.0, 0.0);
  OutputSchedule resumed(parts);
  std::vector<double> passed;
  resumed.resume(3600.0, 1234.5, [&](double time) { passed.push_back(time); });
  std::vector<double> expected{0.0};
  while (expected.back() <= 1234.5) expected.push_back(uninterrupted.advance(expected.back(), 3600.0));
  EXPECT_EQ(resumed.reach(1234.5, 3600.0), expected.back());
  expected.pop_back();
  EXPECT_EQ(passed, expected);
}

TEST(OutputSchedule, resume_tellsWhichGridsAreDue) {
  std::vector<VelOutputGrid> grids{gridOf(0, 100), gridOf(0, 60)};
  OutputSchedule schedule(grids);
  std::vector<double> coarse, fine;
  schedule.resume(600.0, 310.0, [&](double time) {
    if (schedule.isDue(&grids[0], time)) coarse.push_back(time);
    if (schedule.isDue(&grids[1], time)) fine.push_back(time);
  });
  EXPECT_EQ(coarse, (std::vector<double>{0, 100, 200, 300}));
  EXPECT_EQ(fine, (std::vector<double>{0, 60, 120, 180, 240, 300}));
}

TEST(OutputSchedule, reach_keepsAnOutputShortlyBehind) {
  // a part of a run that ends 1 s before an output at 1e7 s
  std::vector<VelOutputGrid> grids{gridOf(0, 1e6)};
  OutputSchedule schedule(grids);
  schedule.resume(2e7, 1e7 - 1.0, [](double) {});
  EXPECT_EQ(schedule.reach(1e7 - 1.0, 2e7), 1e7);
}

/// The output times of a list of intervals by the rule alone: in each interval its start plus multiples of
/// its step, the end of an interval instead of a point behind it; a last duration of 0 reaches to the end.
std::vector<double> outputTimesByRule(const std::vector<std::pair<double, double>>& intervals, double end) {
  std::vector<double> times{0.0};
  double start = 0.0;
  for (const auto& [duration, step] : intervals) {
    const double stop = duration == 0.0 ? end : start + duration;
    if (step == 0.0) {
      times.push_back(stop);
    } else {
      for (int n = 1; start + n * step < stop; ++n) times.push_back(start + n * step);
      times.push_back(stop);
    }
    start = stop;
  }
  times.erase(std::remove_if(times.begin(), times.end(), [end](double t) { return t > end; }), times.end());
  return times;
}

TEST(OutputSchedule, randomIntervals_followTheRule) {
  std::mt19937 random(1);
  const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
  for (int trial = 0; trial < 500; ++trial) {
    std::vector<std::pair<double, double>> intervals;
    const int count = pick(1, 4);
    for (int k = 0; k < count; ++k) {
      const bool last = k + 1 == count;
      intervals.emplace_back(last ? 0.0 : pick(1, 500), pick(last ? 1 : 0, 60));
    }
    double before = 0.0;
    for (const auto& interval : intervals) before += interval.first;
    const double end = before + pick(1, 500);
    VelOutputGrid grid;
    for (const auto& [duration, step] : intervals) {
      grid.durations.emplace_back("DURATION", duration, "s");
      grid.steps.emplace_back("STEP", step, "s");
    }
    std::vector<VelOutputGrid> grids{grid};
    OutputSchedule schedule(grids);
    schedule.start(end, 0.0);
    std::vector<double> times{0.0};
    while (times.back() < end) times.push_back(schedule.advance(times.back(), end));
    EXPECT_EQ(times, outputTimesByRule(intervals, end)) << "trial " << trial;
  }
}

}  // namespace
}  // namespace VELMORA
