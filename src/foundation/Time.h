#pragma once

#include <ctime>
#include <string>

namespace TKL {

inline constexpr double SECONDS_PER_DAY = 86400;      ///< [s]
inline constexpr double SECONDS_PER_YEAR = 31536000;  ///< [s] 365 days: the calendar has no leap years

/// A calendar position: a year and the seconds since its start, in years of 365 days.
struct Time {
  int year = 0;
  double seconds = 0;  ///< [s] since the start of the year

  /// `month` 0 to 11, `day` counted from 0, `secondsOfDay` [s] below 86400.
  /// @throws Exception "Invalid month", "Invalid day" (above 31), "Invalid seconds"
  void set(int newYear, unsigned int month, unsigned int day, double secondsOfDay);

  /// The system's present time, as in "Mon, 05 Jan 2015 12:30:00 +0100".
  static std::string dateRFC2822();
  /// The same for a given time.
  /// @throws Exception "Time is out of range, error calling std::localtime()."
  static std::string dateRFC2822(std::time_t time);
};

}  // namespace TKL
