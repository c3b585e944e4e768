#pragma once

#include <cstdint>
#include <vector>

#include "grid/Element.h"
#include "models/FreezeThaw.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// Counters of freezing and thawing, one for each element, which look at the state every 10 s of simulated
/// time.
///
/// The clock goes on by 10 s a step at most. After a long step it lags behind, and each of the following
/// steps is counted.
class FreezeThawCounting {
 public:
  static constexpr double INTERVAL = 10.0;  ///< [s]

  /// One counter for each element, whose material it takes, and the clock to `t` [s].
  /// @param threshold  [-] ice to pore volume at which an element counts as frozen
  /// @param kind       what counts as thawed, a `VelOutputs::ThawBeginKind`
  void start(const std::vector<VELMORA::Element>& elements, double threshold, int kind, double t);

  /// No counters.
  void clear() { *this = FreezeThawCounting(); }

  bool isActive() const { return !counters_.empty(); }

  /// Goes back to `t` [s]; the counts stay.
  void setClock(double t) { clock_ = t; }

  /// To be called after each step that has reached `t` [s].
  void update(double t, const SolverState& state);

  /// Counts and states of an earlier run. Lists that do not fit the elements change nothing, and give false.
  bool resume(const std::vector<std::uint32_t>& cycles, const std::vector<std::uint8_t>& frozen);

  const std::vector<std::uint32_t>& cycles() const { return cycles_; }         ///< by element
  const std::vector<double>& iceSaturation() const { return iceSaturation_; }  ///< [-] ice to pore volume
  std::vector<std::uint8_t> frozen() const;  ///< 1 where an element is frozen

 private:
  std::vector<VELMORA::FreezeThaw> counters_;
  std::vector<std::uint32_t> cycles_;
  std::vector<double> iceSaturation_;
  double threshold_ = 0.0;
  int kind_ = 0;
  double clock_ = 0.0;  // [s]
};

}  // namespace VELMORA_SOLVER
