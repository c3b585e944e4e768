#include "foundation/StopWatch.h"

#include <cmath>

#include "foundation/StringUtilities.h"

namespace TKL {

void StopWatch::start() {
  start_ = Clock::now();
  running_ = true;
}

void StopWatch::stop() {
  stop_ = Clock::now();
  running_ = false;
}

double StopWatch::difference() const {
  const Clock::time_point end = running_ ? Clock::now() : stop_;
  return std::chrono::duration<double, std::milli>(end - start_).count();
}

std::string StopWatch::diff_str(unsigned int width) const {
  return elapsedText(difference(), width);
}

std::string StopWatch::elapsedText(double milliseconds, unsigned int width) {
  std::string number;
  std::string unit;
  if (milliseconds < 1000) {
    number = val2string(std::floor(milliseconds));
    unit = " ms";
  } else if (milliseconds < 60000) {
    number = val2string(milliseconds / 1000);
    unit = " s";
  } else if (milliseconds < 3600000) {
    number = val2string(milliseconds / 60000);
    unit = " min";
  } else {
    number = val2string(milliseconds / 3600000);
    unit = " h";
  }
  return pad_text(number + unit, static_cast<int>(width));
}

}  // namespace TKL
