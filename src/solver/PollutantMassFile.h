#pragma once

#include <vector>

#include "foundation/Path.h"
#include "solver/TimedRowsFile.h"

namespace VELMORA_SOLVER {

/// "restart.pollutant" beside the restart file: the masses of a pollutant with all their digits. Pollutants
/// are often thinner than the last decimal of the restart file.
class PollutantMassFile {
 public:
  explicit PollutantMassFile(const TKL::Path& resultsDirectory);

  /// Writes the masses [kg/m3] in gas and solid of each element at `t` [s].
  /// @throws TKL::Exception that names the path, when the disk does not take it
  void write(double t, const std::vector<double>& gas, const std::vector<double>& solid);

  /// Gives the masses of a restart state at `t` [s] their digits back. False, with all as it was, where there
  /// are none that belong to it: those that the restart file rounds to other values do not.
  bool read(double t, std::vector<double>& gas, std::vector<double>& solid);

  /// Forces the last masses to disk.
  void flush() { file_.flush(); }

 private:
  TimedRowsFile file_;
};

}  // namespace VELMORA_SOLVER
