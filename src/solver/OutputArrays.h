#pragma once

#include <span>
#include <vector>

#include "output/OutputSource.h"
#include "project/VelBoundaryCond.h"

namespace VELMORA_SOLVER {

/// Values per element that exist for the output files alone.
class OutputArrays {
 public:
  /// Starts with all values 0.
  void start(std::size_t nElements);

  /// Largest estimated errors so far, in units of the tolerance, of a run with energy and moisture.
  /// @param weights,errors of the integrator: energy and moisture of each element in turn
  void noteErrors(std::span<const double> weights, std::span<const double> errors);

  /// Takes the values of all heat pipes; an element at a pipe has those of the whole pipe.
  void takeHeatPipes(std::span<const VELMORA::VelBoundaryCond> conditions);

  /// Shows the arrays to the output files.
  void show(VELMORA::OutputSource& source) const;

 private:
  std::vector<double> localErrorU_;
  std::vector<double> localErrorMw_;
  std::vector<double> heatPipeSupply_;    ///< [K]
  std::vector<double> heatPipeReturn_;    ///< [K]
  std::vector<double> heatPipeHeatFlux_;  ///< [W]
};

}  // namespace VELMORA_SOLVER
