#pragma once

#include <chrono>
#include <string>

namespace TKL {

/// Elapsed wall-clock time, from a monotonic clock. Runs from its construction on.
class StopWatch {
 public:
  StopWatch() { start(); }

  void start();
  void stop();
  /// Time from the start to the stop, or to now while it runs [ms].
  double difference() const;
  /// The elapsed time with its unit, "ms", "s", "min" or "h", filled up on the left to `width` characters.
  std::string diff_str(unsigned int width = 0) const;

  /// `diff_str` of a given time [ms].
  static std::string elapsedText(double milliseconds, unsigned int width);

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_;
  Clock::time_point stop_;
  bool running_ = true;
};

}  // namespace TKL
