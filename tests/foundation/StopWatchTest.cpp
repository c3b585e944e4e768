#include "foundation/StopWatch.h"

#include <gtest/gtest.h>

namespace TKL {
namespace {

TEST(StopWatch, stopped_timeStandsStill) {
  StopWatch watch;
  watch.stop();
  EXPECT_EQ(watch.difference(), watch.difference());
}

TEST(StopWatch, running_timeGrows) {
  const StopWatch watch;
  const double first = watch.difference();
  double later = first;
  for (int i = 0; i < 100000000 && later <= first; ++i) {
    later = watch.difference();
  }
  EXPECT_GE(first, 0.0);
  EXPECT_GT(later, first);
}

TEST(StopWatch, start_clearsTheStop) {
  StopWatch watch;
  watch.stop();
  watch.start();
  const double first = watch.difference();
  double later = first;
  for (int i = 0; i < 100000000 && later <= first; ++i) {
    later = watch.difference();
  }
  EXPECT_GT(later, first);
}

TEST(StopWatch, text_isThatOfItsTime) {
  StopWatch watch;
  watch.stop();
  EXPECT_EQ(watch.diff_str(12), StopWatch::elapsedText(watch.difference(), 12));
}

TEST(StopWatch, belowOneSecond_wholeMilliseconds) {
  EXPECT_EQ(StopWatch::elapsedText(0, 0), "0 ms");
  EXPECT_EQ(StopWatch::elapsedText(999.9, 0), "999 ms");
}

TEST(StopWatch, oneSecond_isGivenInSeconds) {
  EXPECT_EQ(StopWatch::elapsedText(1000, 0), "1 s");
  EXPECT_EQ(StopWatch::elapsedText(59999, 0), "59.999 s");
}

TEST(StopWatch, oneMinute_isGivenInMinutes) {
  EXPECT_EQ(StopWatch::elapsedText(60000, 0), "1 min");
  EXPECT_EQ(StopWatch::elapsedText(90000, 0), "1.5 min");
}

TEST(StopWatch, oneHour_isGivenInHours) {
  EXPECT_EQ(StopWatch::elapsedText(3600000, 0), "1 h");
}

TEST(StopWatch, numberAndUnit_fillTheWidth) {
  EXPECT_EQ(StopWatch::elapsedText(1000, 10), "       1 s");
  EXPECT_EQ(StopWatch::elapsedText(60000, 10), "     1 min");
  EXPECT_EQ(StopWatch::elapsedText(12, 4), "12 ms");
}

}  // namespace
}  // namespace TKL
