#include "foundation/Time.h"

#include <array>
#include <numeric>

#include "foundation/Exception.h"

namespace TKL {

void Time::set(int newYear, unsigned int month, unsigned int day, double secondsOfDay) {
  const char* const FUNC_ID = "[Time::set]";
  static constexpr std::array<unsigned int, 12> DAYS = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month > 11) {
    throw Exception("Invalid month", FUNC_ID);
  }
  if (day > 31) {
    throw Exception("Invalid day", FUNC_ID);
  }
  if (!(secondsOfDay < SECONDS_PER_DAY)) {
    throw Exception("Invalid seconds", FUNC_ID);
  }
  const unsigned int dayOfYear = std::accumulate(DAYS.begin(), DAYS.begin() + month, day);
  year = newYear;
  seconds = secondsOfDay + dayOfYear * SECONDS_PER_DAY;
}

std::string Time::dateRFC2822() {
  return dateRFC2822(std::time(nullptr));
}

std::string Time::dateRFC2822(std::time_t time) {
  const char* const FUNC_ID = "[Time::dateRFC2822]";
  // The names are English whatever the process locale.
  static constexpr std::array<const char*, 7> WEEKDAYS = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr std::array<const char*, 12> MONTHS = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm local{};
  if (localtime_r(&time, &local) == nullptr) {
    throw Exception("Time is out of range, error calling std::localtime().", FUNC_ID);
  }
  std::array<char, 64> day{};
  std::array<char, 64> rest{};
  std::strftime(day.data(), day.size(), "%d", &local);
  std::strftime(rest.data(), rest.size(), "%Y %H:%M:%S %z", &local);
  return std::string(WEEKDAYS[static_cast<std::size_t>(local.tm_wday)]) + ", " + day.data() + " " +
         MONTHS[static_cast<std::size_t>(local.tm_mon)] + " " + rest.data();
}

}  // namespace TKL
