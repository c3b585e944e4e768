#include "foundation/Time.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cmath>
#include <limits>

#include "support/Thrown.h"

namespace TKL {
namespace {

double secondsOf(unsigned int month, unsigned int day, double seconds) {
  Time time;
  time.set(2000, month, day, seconds);
  return time.seconds;
}

TEST(Time, startOfTheYear_isZero) {
  Time time;
  time.set(2000, 0, 0, 0);
  EXPECT_EQ(time.year, 2000);
  EXPECT_EQ(time.seconds, 0);
}

TEST(Time, endOfDecember_isTheLastSecondOf365Days) {
  EXPECT_EQ(secondsOf(11, 30, 86399), 365.0 * 86400 - 1);
}

TEST(Time, monthStarts_followTheCalendarWithoutLeapDay) {
  double days = 0;
  const double lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (unsigned int month = 0; month < 12; ++month) {
    EXPECT_EQ(secondsOf(month, 0, 0), days * 86400) << month;
    days += lengths[month];
  }
}

TEST(Time, monthTwelve_fails) {
  EXPECT_EQ(thrownBy([] { secondsOf(12, 0, 0); }), (Thrown{"Invalid month", "[Time::set]"}));
}

TEST(Time, dayThirtyOne_isTheLastAccepted) {
  EXPECT_EQ(secondsOf(0, 31, 0), 31.0 * 86400);
  EXPECT_EQ(thrownBy([] { secondsOf(0, 32, 0); }), (Thrown{"Invalid day", "[Time::set]"}));
}

TEST(Time, secondsOfAWholeDay_fail) {
  EXPECT_EQ(thrownBy([] { secondsOf(0, 0, 86400); }), (Thrown{"Invalid seconds", "[Time::set]"}));
  EXPECT_EQ(secondsOf(0, 0, std::nextafter(86400.0, 0.0)), std::nextafter(86400.0, 0.0));
}

TEST(Time, secondsThatAreNoNumber_fail) {
  EXPECT_EQ(thrownBy([] { secondsOf(0, 0, std::nan("")); }).text, "Invalid seconds");
}

TEST(Time, failure_leavesTheTime) {
  Time time{1999, 5};
  EXPECT_THROW(time.set(2000, 12, 0, 0), Exception);
  EXPECT_EQ(time.year, 1999);
  EXPECT_EQ(time.seconds, 5);
}

TEST(Time, dateText_hasTheFormOfMailHeaders) {
  setenv("TZ", "UTC0", 1);
  tzset();
  EXPECT_EQ(Time::dateRFC2822(0), "Thu, 01 Jan 1970 00:00:00 +0000");
  // 365 + 365 + 366 days later, and one second less.
  EXPECT_EQ(Time::dateRFC2822(std::time_t{1096} * 86400 - 1), "Sun, 31 Dec 1972 23:59:59 +0000");
}

TEST(Time, dateTextOfImpossibleTime_fails) {
  EXPECT_EQ(thrownBy([] { Time::dateRFC2822(std::numeric_limits<std::time_t>::max()); }),
            (Thrown{"Time is out of range, error calling std::localtime().", "[Time::dateRFC2822]"}));
}

TEST(Time, presentDate_hasFullLength) {
  EXPECT_EQ(Time::dateRFC2822().size(), 31U);
}

}  // namespace
}  // namespace TKL
