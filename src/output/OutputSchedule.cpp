#include "output/OutputSchedule.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace VELMORA {

void OutputSchedule::start(double duration, double t) {
  nextOutputTimes_.clear();
  for (VelOutputGrid& grid : *grids_) {
    grid.prepareCalculation(duration);
    grid.nextTime = 0.0;
    nextOutputTimes_.push_back(grid.nextOutputTime(t - 1.0));
  }
}

void OutputSchedule::resume(double duration, double t, const std::function<void(double)>& passed) {
  start(duration, 0.0);
  for (double time = 0.0; time <= t; time = advance(time, std::numeric_limits<double>::infinity()))
    passed(time);
}

double OutputSchedule::reach(double t, double tStop) {
  double next = tStop;
  for (std::size_t i = 0; i < grids_->size(); ++i) {
    if (!(nextOutputTimes_[i] > t)) nextOutputTimes_[i] = (*grids_)[i].nextOutputTime(t);
    if (nextOutputTimes_[i] > t) next = std::min(next, nextOutputTimes_[i]);
  }
  return next;
}

double OutputSchedule::advance(double t, double tStop) {
  double next = tStop;
  for (std::size_t i = 0; i < grids_->size(); ++i) {
    nextOutputTimes_[i] = (*grids_)[i].nextOutputTime(t);
    // A grid that has ended stays at its end.
    if (nextOutputTimes_[i] > t) next = std::min(next, nextOutputTimes_[i]);
  }
  return next;
}

bool OutputSchedule::isDue(const VelOutputGrid* grid, double t) const {
  constexpr double SAME_TIME = 0.001;  // [s]
  for (std::size_t i = 0; i < nextOutputTimes_.size(); ++i) {
    if (&(*grids_)[i] == grid) return std::abs(nextOutputTimes_[i] - t) < SAME_TIME;
  }
  return false;
}

}  // namespace VELMORA
