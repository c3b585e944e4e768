#pragma once

#include <string>
#include <vector>

#include "foundation/Parameter.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// The times at which outputs are written: a row of intervals, each with its own step.
class VelOutputGrid {
 public:
  std::string name;
  std::vector<TKL::Parameter> durations;  ///< length of each interval, 0 in the last one: to the end
  std::vector<TKL::Parameter> steps;      ///< step in each interval, 0: one output at the interval's end
  double nextTime = 0.0;                  ///< [s] the next output time
  std::vector<double> intervalEnds;       ///< [s] prefix sums of the durations, starting with 0

  /// Reads the lines of one `OUTPUT_GRID` block.
  /// @throws TKL::Exception for a line that is no keyword line or an interval that cannot be read
  void read(const SectionText& text);

  /// Checks the intervals and sums them up to `intervalEnds`.
  /// @param endTime [s] end of the simulation, end of a last interval without a duration
  /// @throws TKL::Exception for intervals that make no sense
  void prepareCalculation(double endTime);

  /// [s] The first output time after `t` [s], kept in `nextTime`; the end of the last interval once that
  /// has passed. Needs `prepareCalculation`.
  double nextOutputTime(double t);
};

}  // namespace VELMORA
