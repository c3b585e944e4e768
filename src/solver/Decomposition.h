#pragma once

#include <vector>

#include "solver/ElementTraits.h"
#include "solver/ModelSettings.h"
#include "solver/PollutantBalance.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// From the conserved quantities of an element to its physical state.
///
/// With U the internal energy density [J/m3], mw the moisture mass density [kg/m3] and (rho c) the heat
/// capacity of the dry material:
///
///     Theta = mw / rho_w                 moisture content
///     T     = U / (mw c_w + rho c)       all moisture counts with the heat capacity of liquid water
///     pC    = inverse retention curve at Theta, T
///     RH    = exp(pC / (rho_w R_v T))    Kelvin's law
///     pV    = RH pSat(T)
///
/// Below the freezing point of a run with ice, T and the ice follow from IceBalance before the pressures do.
/// What follows from the masses of a pollutant is told by PollutantBalance.
///
/// Each decomposition is a function of the element's conserved quantities and, as the start of an iteration,
/// of its last capillary pressure and ice density; no other element matters.
class Decomposition {
 public:
  /// The state and the traits must live as long as this object.
  /// @param pollutant  needed with a pollutant balance only
  Decomposition(const ModelSettings& settings, const std::vector<ElementTraits>& traits, SolverState& state,
                const PollutantBalance* pollutant = nullptr)
      : settings_(settings),
        storing_(settings.equations.code & ~BE_AIR),
        hasIce_(settings.equations.has(BE_ICE)),
        traits_(traits),
        state_(state),
        pollutant_(pollutant) {}

  /// Decomposes an element by the balance equations of the run at time t [s].
  /// @return 0, or 1 when the state is so far off that a shorter step is needed
  /// @throws TKL::Exception when the material lacks a function that is needed, std::runtime_error for a
  /// combination of balance equations without a decomposition
  int decompose(std::size_t element, double t);

 private:
  void decomposeH(std::size_t e);
  int decomposeHM(std::size_t e, double t);
  void decomposeAir(std::size_t e);
  int capillaryState(std::size_t e);
  int freeze(std::size_t e);
  void liquidTransport(std::size_t e);
  [[noreturn]] static void failLiquidFunction(const MM::MoistureTransport& transport,
                                              const MM::Material& material);

  const ModelSettings& settings_;
  const int storing_;  ///< code of the equations that have a state of their own: air has none
  const bool hasIce_;
  const std::vector<ElementTraits>& traits_;
  SolverState& state_;
  const PollutantBalance* const pollutant_;
};

}  // namespace VELMORA_SOLVER
