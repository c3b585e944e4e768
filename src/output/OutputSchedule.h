#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "project/VelOutputGrid.h"

namespace VELMORA {

/// The next output time of every output grid.
class OutputSchedule {
 public:
  /// `grids` must keep their places as long as this object lives.
  explicit OutputSchedule(std::vector<VelOutputGrid>& grids) : grids_(&grids) {}

  /// Prepares the grids for a simulation of `duration` [s] and finds their first output times from `t` [s]
  /// on; `t` itself counts.
  /// @throws TKL::Exception for a grid whose intervals make no sense
  void start(double duration, double t);

  /// The same for a run that goes on at `t` [s]: passes all output times up to `t`, so that those behind it
  /// are the same as without the stop. Calls `passed` at each of them, while its outputs are due.
  void resume(double duration, double t, const std::function<void(double)>& passed);

  /// Like `advance`, but keeps the times that are known already and lie after `t`: a part of a run may end
  /// nearer before an output time than the grids tell times apart.
  double reach(double t, double tStop);

  /// Moves every grid on to its first output time after `t` [s].
  /// @return [s] the earliest of them, not later than `tStop` [s]
  double advance(double t, double tStop);

  /// Whether outputs of the grid are due at `t` [s]. Times nearer than 1 ms are the same.
  bool isDue(const VelOutputGrid* grid, double t) const;

  /// [s] next output time of each grid
  const std::vector<double>& nextOutputTimes() const { return nextOutputTimes_; }

 private:
  std::vector<VelOutputGrid>* grids_;
  std::vector<double> nextOutputTimes_;
};

}  // namespace VELMORA
