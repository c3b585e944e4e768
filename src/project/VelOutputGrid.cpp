#include "project/VelOutputGrid.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

/// Widens a time so that one that is missed by rounding counts as reached.
constexpr double TIME_TOLERANCE = 1.000001;

struct Interval {
  TKL::Parameter duration;
  TKL::Parameter step;
};

Interval readInterval(const KeywordLine& line, const char* functionId) {
  const TKL::Exception invalid(TKL::FormatString("Invalid parameter value '%1' for keyword '%2'!")
                                   .arg(quotedText(line.value))
                                   .arg(line.keyword),
                               functionId);
  std::istringstream stream(line.value);
  stream.imbue(std::locale::classic());
  double duration = 0.0, step = 0.0;
  std::string durationUnit, stepUnit;
  if (!(stream >> duration >> durationUnit >> step >> stepUnit)) throw invalid;
  Interval interval;
  interval.duration.set("DURATION", duration, durationUnit);
  interval.step.set("STEP", step, stepUnit);
  const TKL::Unit seconds("s");
  if (interval.duration.IO_unit.base() != seconds || interval.step.IO_unit.base() != seconds) throw invalid;
  return interval;
}

/// First point of the row `start + n * step`, n = 1, 2, ..., that is not below `u`.
double firstPointFrom(double start, double step, double u) {
  double n = std::max(1.0, std::ceil((u - start) / step));
  // the quotient may be off by a rounding error at a whole number
  if (n > 1.0 && start + (n - 1.0) * step >= u) n -= 1.0;
  if (start + n * step < u) n += 1.0;
  return std::max(start + n * step, u);
}

}  // namespace

void VelOutputGrid::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelOutputGrid::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (line.keyword == "NAME") {
      name = line.value;
    } else if (line.keyword == "INTERVAL") {
      Interval interval = readInterval(line, FUNC_ID);
      durations.push_back(std::move(interval.duration));
      steps.push_back(std::move(interval.step));
    } else {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

void VelOutputGrid::prepareCalculation(double endTime) {
  const char* const FUNC_ID = "[VelOutputGrid::prepareCalculation]";
  const std::string inGrid = " in output grid '" + name + "'!";
  const std::string errorInGrid = " Error" + inGrid;
  intervalEnds.assign(1, 0.0);
  if (durations.size() != steps.size()) {
    throw TKL::Exception("Output duration and time step vectors mismatch in size." + errorInGrid, FUNC_ID);
  }
  if (durations.empty()) throw TKL::Exception("Output duration not specified." + errorInGrid, FUNC_ID);
  for (std::size_t k = 0; k < durations.size(); ++k) {
    const bool last = k + 1 == durations.size();
    const double duration = durations[k].value;
    const double step = steps[k].value;
    if (!(duration >= 0.0)) throw TKL::Exception("Negative interval duration" + inGrid, FUNC_ID);
    if (duration == 0.0 && !last) {
      throw TKL::Exception(
          "Zero interval duration only allowed for last output interval in grid." + errorInGrid, FUNC_ID);
    }
    if (!(step >= 0.0)) throw TKL::Exception("Negative output step size" + inGrid, FUNC_ID);
    if (step == 0.0 && last) {
      throw TKL::Exception(
          "Can't have infinity time step in last interval with infinite length." + errorInGrid, FUNC_ID);
    }
    intervalEnds.push_back(intervalEnds.back() + duration);
  }
  if (durations.back().value == 0.0) intervalEnds.back() = endTime;
}

double VelOutputGrid::nextOutputTime(double t) {
  const double u = t * TIME_TOLERANCE;
  if (nextTime > u) return nextTime;
  // a last interval without a duration may end before the one in front of it: no binary search
  std::size_t k = intervalEnds.size() - 1;
  while (k > 0 && intervalEnds[k] > u) --k;
  if (k + 1 == intervalEnds.size()) return nextTime = intervalEnds.back();

  const double end = intervalEnds[k + 1];
  const double step = steps[k].value;
  if (step == 0.0) return nextTime = end;
  const double next = firstPointFrom(intervalEnds[k], step, u);
  return nextTime = next > end * TIME_TOLERANCE ? end : next;
}

}  // namespace VELMORA
