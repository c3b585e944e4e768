#pragma once

namespace VELMORA_SOLVER {

/// Relative tolerance that gives way at a hard spot of a simulation, such as a front that freezes, and comes
/// back step by step behind it. It decides; the caller re-initialises the integrator.
class ToleranceAdaption {
 public:
  static constexpr double FACTOR = 1.1;
  static constexpr double MAX_RELTOL = 0.01;
  static constexpr int MAX_REINITS_AT_ONE_TIME = 1000;
  static constexpr long MIN_STEPS_BETWEEN_TIGHTENINGS = 20;

  double relTol = 1e-5;         ///< the relative tolerance now in force [-]
  int toleranceLevel = 0;       ///< how many factors `relTol` is above its start value
  double lastReinitTime = 0.0;  ///< time of the last loosening [s]
  int reinitCount = 0;          ///< loosenings at exactly `lastReinitTime`

  /// A run, or a part of one, starts at time t [s].
  void startAt(double t);

  /// Loosens by one level after a failure at time t [s].
  /// @throws TKL::Exception when there have been too many failures at one time, or too large a tolerance
  void loosen(double t);

  /// Tightens by one level if enough steps have succeeded since the last re-initialisation.
  /// @return whether the integrator must be re-initialised
  bool tighten(long stepsSinceReinit);
};

}  // namespace VELMORA_SOLVER
