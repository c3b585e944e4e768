#pragma once

#include <cstdint>
#include <vector>

#include "foundation/Path.h"
#include "solver/TwoGenerationFile.h"

namespace VELMORA_SOLVER {

/// A state from which a stopped calculation continues. Numbers per element, in element order.
struct RestartState {
  double t = 0.0;          ///< time of the state [s]
  std::vector<double> U;   ///< internal energy density [J/m3]
  std::vector<double> mw;  ///< moisture mass density [kg/m3]
  // Of runs with a pollutant, else empty.
  std::vector<double> mVOC1{};  ///< pollutant in the pore gas [kg/m3]
  std::vector<double> mVOC2{};  ///< pollutant in the solid [kg/m3]
  // Of runs with ice, else empty; they may be missing in the file.
  std::vector<std::uint32_t> freezeThawCycles{};  ///< completed ones
  std::vector<std::uint8_t> frozen{};             ///< 1 for an element in its frozen state
};

/// "restart.txt" in the results directory, and the last one but one as "restart.txt.backup".
class RestartFile {
 public:
  explicit RestartFile(const TKL::Path& resultsDirectory);

  /// Writes a state and moves the last one to the backup.
  /// @throws TKL::Exception that names the path, when the disk does not take it
  void write(const RestartState& state);

  /// Reads the state of `nElements` elements, that of a pollutant where it has been balanced.
  /// @throws TKL::Exception "Restart file missing!", "Error reading time point from restart file!" or "Error
  /// reading restart file!", each behind the function id
  RestartState read(std::size_t nElements, bool withPollutant = false) const;

  /// Forces the last state to disk.
  /// @throws TKL::Exception that names path and reason
  void flush() { file_.flush(); }

 private:
  TwoGenerationFile file_;
};

}  // namespace VELMORA_SOLVER
