#pragma once

#include <cstddef>
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
