#pragma once

#include <optional>
#include <vector>

#include "foundation/Path.h"
#include "foundation/StopWatch.h"

namespace VELMORA_SOLVER {

/// A state from which a stopped calculation continues. Numbers per element, in element order.
struct RestartState {
  double t = 0.0;          ///< time of the state [s]
  std::vector<double> U;   ///< internal energy density [J/m3]
  std::vector<double> mw;  ///< moisture mass density [kg/m3]
};

/// "restart.txt" in the results directory, and the last one but one as "restart.txt.backup". A new state is
/// written to a third name and then renamed, so that at every instant one of the two names holds a complete
/// state. It is forced to disk before it is renamed, but at most once per second of real time: that guards
/// against a power cut without making a fast run wait for the disk at each output.
class RestartFile {
 public:
  explicit RestartFile(const TKL::Path& resultsDirectory);

  /// Writes a state and moves the last one to the backup.
  /// @throws TKL::Exception that names the path, when the disk does not take it
  void write(const RestartState& state);

  /// Reads the state of `nElements` elements.
  /// @throws TKL::Exception "Restart file missing!", "Error reading time point from restart file!" or "Error
  /// reading restart file!", each behind the function id
  RestartState read(std::size_t nElements) const;

 private:
  TKL::Path file_;
  TKL::Path backup_;
  TKL::Path unfinished_;
  std::optional<TKL::StopWatch> sinceFlush_;  ///< since a state was last forced to disk
};

}  // namespace VELMORA_SOLVER
