#include "solver/Feedback.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <iomanip>
#include <sstream>

#include "foundation/Message.h"
#include "foundation/StopWatch.h"
#include "foundation/StringUtilities.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double SPEED_WINDOW = 1728000.0;  // [ms]
constexpr double LOWEST_SPEED = 1e-5;       // [s/s]
constexpr double TIMED_FEEDBACK = 15.0;     // [s]

}  // namespace

void Feedback::clear() {
  history_.clear();
  history_.reserve(1000);
  headerCountdown = 1;
}

void Feedback::start() {
  realTimeElapsed = 0.0;
  history_.emplace_back(0.0, feedbackStart);
}

void Feedback::updateSpeeds(double t) {
  meanSpeed = realTimeElapsed > 0.0 ? (t - feedbackStart) / realTimeElapsed * 1000.0 : 0.0;
  history_.emplace_back(realTimeElapsed, t);
  const auto newest = history_.back();
  std::size_t i = history_.size() - 1;
  while (i > 0 && newest.first - history_[i].first < SPEED_WINDOW) --i;
  const double dReal = newest.first - history_[i].first;
  currentSpeed = dReal == 0.0 ? 0.0 : (newest.second - history_[i].second) * 1000.0 / dReal;
  estimatedRemaining = currentSpeed < LOWEST_SPEED ? -1.0 : (tEndTotal - t) / currentSpeed;
}

std::string Feedback::line(double t, const std::string& suffix) {
  std::ostringstream out;
  --headerCountdown;
  if (headerCountdown % 20 == 0) {
    if (headerCountdown == 0) headerCountdown = 40;
    if (!disableHeaders) {
      if (headerCountdown == 20)
        out << projectFileName << '\n';
      else
        out << "Simtime     Simdate           Realtime    MeanSp       CurrentSp    ETC\n";
    }
  }
  out << std::left << std::setw(11) << timeSpanText(t) << ' ' << dateText(t + startTimeOffset) << ' '
      << std::setw(11) << TKL::StopWatch::elapsedText(realTimeElapsed, 4) << ' ' << std::setw(12)
      << timeSpanText(meanSpeed) + "/s" << ' ' << std::setw(12) << timeSpanText(currentSpeed) + "/s" << ' '
      << (estimatedRemaining == -1.0 ? "---" : timeSpanText(estimatedRemaining)) << suffix << '\n';
  return out.str();
}

void Feedback::write(double t, const std::string& suffix, double realTime) {
  realTimeElapsed = realTime;
  updateSpeeds(t);
  if (verbosity > 0)
    TKL::message(line(t, suffix), TKL::MSG_STANDARD, nullptr, -1);
  else if (verbosity == 0 && !quiet)
    TKL::message("*", TKL::MSG_STANDARD, nullptr, -1);
  if (callback != nullptr) callback({suffix.empty() ? 1 : 0, t, currentSpeed, estimatedRemaining});
  nextRealTime = realTime / 1000.0 + TIMED_FEEDBACK;
}

std::string timeSpanText(double seconds) {
  const double size = std::fabs(seconds);
  if (size < 60.0) return TKL::val2string(seconds) + " s";
  if (size < 3600.0) return TKL::val2string(seconds / 60.0) + " min";
  if (size < 86400.0) return TKL::val2string(seconds / 3600.0) + " h";
  if (size < 31536000.0) return TKL::val2string(seconds / 86400.0) + " d";
  return TKL::val2string(seconds / 31536000.0) + " a";
}

std::string dateText(double seconds) {
  constexpr std::array<int, 12> monthLength = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  constexpr long long SECONDS_OF_YEAR = 31536000;
  auto rest = static_cast<long long>(std::floor(seconds));
  long long year = rest / SECONDS_OF_YEAR;
  rest -= year * SECONDS_OF_YEAR;
  if (rest < 0) {
    rest += SECONDS_OF_YEAR;
    --year;
  }
  auto day = static_cast<int>(rest / 86400);
  const auto second = static_cast<int>(rest % 86400);
  std::size_t month = 0;
  while (day >= monthLength[month]) day -= monthLength[month++];
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%02d.%02d.%02d %02d:%02d:%02d", day + 1,
                static_cast<int>(month) + 1, static_cast<int>(year % 100), second / 3600, second / 60 % 60,
                second % 60);
  return text.data();
}

}  // namespace VELMORA_SOLVER
