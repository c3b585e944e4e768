#pragma once

#include <cvode/cvode.h>
#include <sundials/sundials_context.h>
#include <sundials/sundials_nvector.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <span>

#include "solver/LinearSolver.h"

namespace VELMORA_SOLVER {

/// What the integrator integrates: ydot = f(t, y).
class OdeSystem {
 public:
  virtual ~OdeSystem() = default;

  /// @param t time [s]
  /// @param y state, length of the system
  /// @param ydot derivative [unit of y per s], written on success
  /// @return 0 on success, a positive code where a smaller step may help
  virtual int calculate(double t, const double* y, double* ydot) = 0;

  /// Changes the sign of those increments of difference quotients [units of y] that would reach across a jump
  /// of the rates from the state of the last `calculate`. Must not throw.
  virtual void turnIncrements(std::span<double> /*increments*/) const {}
};

/// Limits and switches of the integrator.
struct IntegratorSettings {
  int maxOrder = 5;
  long maxSteps = 1000000;
  double initialStep = 0.01;  ///< [s]
  double maxStep = 1800.0;    ///< [s]
  double minStep = 1e-9;      ///< [s]
  bool stabilityLimitDetection = true;
  double nonlinearConvergenceCoefficient = 0.0;  ///< 0 keeps the integrator's own value
};

/// Counters of the integrator since its last (re-)initialisation.
struct IntegratorStatistics {
  long steps = 0;
  long rhsEvaluations = 0;
  long jacobianEvaluations = 0;
  long nonlinearIterations = 0;
  long nonlinearFailures = 0;
  long errorTestFailures = 0;
  int order = 0;
  double time = 0.0;      ///< [s] internal time
  double stepSize = 0.0;  ///< [s] next step
};

/// Owns the stiff integrator (backward differentiation, Newton iteration) and all its memory. An exception
/// thrown by the system never crosses the integrator's C frames: it is kept, the integrator is told to give
/// up, and `step` rethrows it.
class Integrator {
 public:
  Integrator() = default;
  ~Integrator();
  Integrator(const Integrator&) = delete;
  Integrator& operator=(const Integrator&) = delete;
  Integrator(Integrator&&) = delete;
  Integrator& operator=(Integrator&&) = delete;

  /// Creates the vectors for `size` unknowns, all 0, with this program's own operations or with those of the
  /// library. False when memory runs out.
  bool createVectors(std::size_t size, bool ownOperations = false);
  /// Creates the vector of absolute tolerances, as long as the state. False when memory runs out.
  bool createAbsoluteTolerances();
  /// Attaches the system and starts at (t, state). A non-zero result is the integrator's error code.
  int initialise(OdeSystem& system, double t, double relativeTolerance);
  /// Attaches the band matrix solver with half bandwidth `mu` on both sides. 0, or -4 (memory) or -3 (input).
  int attachBandSolver(long mu);
  /// Attaches a solver on the blocks of neighbouring cells instead. 0, or the same codes.
  int attachBlockSolver(JacobianPattern pattern, BlockMethod method);
  void configure(const IntegratorSettings& settings);
  /// Lets the next steps keep to a small share of the relative tolerance, after `initialise`. It is for a
  /// start inside a calculation: the steps of low order that a start takes use the whole tolerance, and those
  /// of many starts would add up to more than the errors of an uninterrupted run.
  /// Where such a step fails, the run goes on with the whole tolerance.
  void startExactly();
  /// Starts afresh at (t, state) with a new relative tolerance.
  int reinitialise(double t, double relativeTolerance);
  void clear();

  /// One internal step in the direction of `tOut`; `t` receives the time reached.
  /// @return the integrator's flag, negative on failure
  /// @throws whatever the system threw during the step
  int step(double tOut, double& t);

  /// State at a time inside the last step, into `interpolated()`. Returns the integrator's flag.
  int interpolate(double t);

  std::span<double> state() { return values(y_); }
  std::span<double> interpolated() { return values(yInterpolated_); }
  std::span<double> saved() { return values(ySaved_); }
  std::span<double> absoluteTolerances() { return values(absTol_); }
  /// Reciprocal error weights and estimated local errors of the last step, same length as the state.
  std::span<const double> errorWeights();
  std::span<const double> localErrors();
  double lastStepSize() const;  ///< [s]
  long numberOfSteps() const;   ///< since the last (re-)initialisation
  IntegratorStatistics statistics() const;

 private:
  int evaluate(double t, const double* y, double* ydot) noexcept;
  int setTolerances(double relativeTolerance);
  static int rhsFunction(realtype t, N_Vector y, N_Vector ydot, void* data) noexcept;
  static void errorHandler(int code, const char* module, const char* function, char* text,
                           void* data) noexcept;
  static std::span<double> values(N_Vector vector);

  SUNContext context_ = nullptr;
  N_Vector y_ = nullptr;
  N_Vector yInterpolated_ = nullptr;
  N_Vector ySaved_ = nullptr;
  N_Vector absTol_ = nullptr;
  N_Vector errorWeights_ = nullptr;
  N_Vector localErrors_ = nullptr;
  std::unique_ptr<LinearSolver> linearSolver_;
  void* cvode_ = nullptr;
  OdeSystem* system_ = nullptr;
  double relativeTolerance_ = 0.0;
  int exactSteps_ = 0;       ///< that are still to come
  bool triedAgain_ = false;  ///< where the step under way fails, with the whole tolerance
  std::exception_ptr pending_;
};

}  // namespace VELMORA_SOLVER
