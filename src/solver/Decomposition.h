#pragma once

#include <cstdint>
#include <optional>
#include <span>
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
/// of its last capillary pressure and ice density; no other element matters. They go together all the same,
/// since the exponentials of many elements take half the time.
class Decomposition {
 public:
  /// The state and the traits must live as long as this object; the traits are those of all elements.
  /// @param pollutant  needed with a pollutant balance only
  Decomposition(const ModelSettings& settings, const std::vector<ElementTraits>& traits, SolverState& state,
                const PollutantBalance* pollutant = nullptr);

  /// Decomposes elements by the balance equations of the run at time t [s].
  /// @return the first one whose state is so far off that a shorter step is needed; then the states of all
  /// these elements are to be taken as unknown
  /// @throws TKL::Exception when the material lacks a function that is needed, std::runtime_error for a
  /// combination of balance equations without a decomposition
  std::optional<std::size_t> decompose(std::span<const std::uint32_t> elements, double t);

  /// The same for one element: 0, or 1 to ask for a shorter step.
  int decompose(std::uint32_t element, double t) { return decompose({&element, 1}, t) ? 1 : 0; }

 private:
  /// Porous elements on their way from their pressures to their humidities, one behind the other.
  struct Porous {
    std::vector<std::uint32_t> element;
    std::vector<double> T;      ///< [K]
    std::vector<double> logRH;  ///< of the relative humidity
    std::vector<double> RH;
    std::vector<double> pSat;  ///< [Pa]
    std::size_t count = 0;

    void resize(std::size_t size);
  };

  void decomposeH(std::span<const std::uint32_t> elements);
  std::optional<std::size_t> decomposeHM(std::span<const std::uint32_t> elements, double t);
  void decomposeAir(std::size_t e);
  // In line, since each element passes through them.
  [[gnu::always_inline]] inline bool takePorous(std::uint32_t e, double t);
  inline bool freeze(std::size_t e);
  void humidities();
  void transport();
  void liquidTransport(std::size_t e);
  [[noreturn]] static void failLiquidFunction(const MM::MoistureTransport& transport,
                                              const MM::Material& material);

  const ModelSettings& settings_;
  const int storing_;  ///< code of the equations that have a state of their own: air has none
  const bool hasEnergy_;
  const bool hasIce_;
  const std::vector<ElementTraits>& traits_;
  SolverState& state_;
  const PollutantBalance* const pollutant_;
  Porous porous_;
  std::vector<std::uint32_t> done_;  ///< elements whose pressures are found come first
  std::size_t nDone_ = 0;            ///< how many
};

}  // namespace VELMORA_SOLVER
