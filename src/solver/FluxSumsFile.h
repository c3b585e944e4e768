#pragma once

#include <vector>

#include "foundation/Path.h"
#include "solver/FluxRecords.h"
#include "solver/TimedRowsFile.h"

namespace VELMORA_SOLVER {

/// "restart.sums" beside the restart file: the flows that have been integrated over time up to its state, for
/// the sides whose outputs are integrals. Without it such outputs would count anew from the restart.
class FluxSumsFile {
 public:
  explicit FluxSumsFile(const TKL::Path& resultsDirectory);

  /// Writes the sums of `sides` [numbers of sides] at `t` [s].
  /// @throws TKL::Exception that names the path, when the disk does not take it
  void write(double t, const std::vector<int>& sides, const FluxRecords& sums);

  /// Reads the sums that belong to a restart state at `t` [s]. False, with `sums` unchanged, where there are
  /// none for all of `sides`.
  bool read(double t, const std::vector<int>& sides, FluxRecords& sums);

  /// Forces the last sums to disk.
  void flush() { file_.flush(); }

 private:
  TimedRowsFile file_;
};

}  // namespace VELMORA_SOLVER
