#pragma once

#include <functional>
#include <vector>

#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_SOLVER {

/// Flows integrated beside the state by the same integrator, as further unknowns before and behind those of
/// the elements. What stands close to the elements that it depends on takes part in the Newton iteration and
/// is kept to rounding, the rest to the relative tolerance.
class Ledger : public OdeSystem {
 public:
  /// A flow after an evaluation of the balance equations, to be integrated over time.
  using Entry = std::function<double()>;

  /// @param solver  of a run with energy and moisture, ready to step
  Ledger(VelmoraCvodeSolver& solver, std::vector<Entry> front, std::vector<Entry> back);

  /// Integrates from the start to a time [s].
  /// @param maxStep  [s] longest step
  /// @param reach    elements at each end whose unknowns the entries of that end depend on; 0: left out of
  ///                 the Newton iteration
  void run(double end, double relativeTolerance, double maxStep, long reach);

  std::vector<double> front;  ///< integrals at the end, in the order of the entries
  std::vector<double> back;
  double heat = 0.0;      ///< [J] energy gained by all elements
  double moisture = 0.0;  ///< [kg] moisture gained by all elements

  int calculate(double t, const double* y, double* ydot) override;

 private:
  void setTolerances(Integrator& integrator) const;
  void collect(std::span<const double> y);

  VelmoraCvodeSolver& solver_;
  std::vector<Entry> frontEntries_, backEntries_;
  std::vector<double> start_;  ///< of the elements
};

}  // namespace VELMORA_SOLVER
