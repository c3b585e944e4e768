#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "models/FieldModels.h"
#include "project/CalculationData.h"
#include "solver/BoundaryFluxes.h"
#include "solver/Decomposition.h"
#include "solver/ElementTraits.h"
#include "solver/FieldFluxes.h"
#include "solver/FluxRecords.h"
#include "solver/Integrator.h"
#include "solver/ModelSettings.h"
#include "solver/PollutantBalance.h"
#include "solver/PollutantFluxes.h"
#include "solver/SolverState.h"
#include "solver/Sources.h"

namespace VELMORA_SOLVER {

/// The balance equations of the construction, discretised in space by finite volumes: from the conserved
/// quantities of every element to their derivatives in time.
///
/// With the density u of a conserved quantity (internal energy [J/m3], moisture mass or pollutant [kg/m3]) in
/// an element of volume V [m3], the flows F [W, kg/s] through its sides (positive from left to right and from
/// top to bottom) and the sources S [W/m3, kg/m3s]:
///
///     V du/dt = F_left - F_right + F_top - F_bottom + V S
///
/// The state vector holds the conserved quantities element by element: energy, moisture, pollutant in the gas
/// of the pores and pollutant in the solid, which stays where it is. One evaluation goes from climate over
/// decomposition, fluxes per side and sources per element to the divergence. It works on flat arrays and
/// knows neither files nor the integrator.
class RightHandSide : public OdeSystem {
 public:
  /// `data` must keep its vectors as long as this object lives.
  /// @param pollutants  compounds and materials of a pollutant balance, needed with one only; as long-lived
  /// @throws TKL::Exception for a combination of equations that cannot be coupled
  RightHandSide(VELMORA::CalculationData& data, const ModelSettings& settings,
                const POLLUTANT_LIB::PollutantLibrary* pollutants = nullptr);
  RightHandSide(const RightHandSide&) = delete;
  RightHandSide& operator=(const RightHandSide&) = delete;

  /// Derivatives at time t [s]. 0, or a positive code when the state cannot be decomposed (then ydot stays).
  int calculate(double t, const double* y, double* ydot) override;

  /// Turns the increments of elements that are about to cross the freezing point, where the saturation
  /// pressure jumps by 0.2 %: a quotient across it is some hundred times the derivative, and a Newton
  /// iteration with it would end at any state.
  void turnIncrements(std::span<double> increments) const override;

  /// All quantities and fluxes of a state at time t [s], without the derivatives. Same code as `calculate`.
  int calculateFluxesAndSources(double t, const double* y);

  /// Current values of all climate conditions at time t [s].
  void updateClimate(double t);

  SolverState state;    ///< what the last decomposition found
  FluxRecords records;  ///< flows and sources of the last evaluation

 private:
  /// Numbers of the sides of an element; behind the last one for a side that is not there.
  struct SideNumbers {
    std::uint32_t left, top, right, bottom;
  };

  void sizeArrays();
  void reportInternalBoundaryConditions() const;
  int extractStateVariables(double t, const double* y);
  template <std::size_t N>
  void takeConserved(const std::array<double*, N>& arrays, const double* y);
  static int reportFailed(const VELMORA::Element& element);
  void pollutantRates(int position, double* ydot) const;
  void divergence(const RecordArray& fluxes, const RecordArray& sources, int position, double* ydot) const;

  VELMORA::CalculationData& data_;
  const ModelSettings settings_;
  const std::vector<ElementTraits> traits_;
  VELMORA::FieldModels models_;
  const std::optional<PollutantBalance> pollutant_;
  Decomposition decomposition_;
  FieldFluxes fieldFluxes_;
  BoundaryFluxes boundaryFluxes_;
  std::optional<PollutantFluxes> pollutantFluxes_;
  Sources sources_;
  std::vector<std::uint32_t>
      changed_;               ///< elements with another state than in the last evaluation come first
  std::size_t nChanged_ = 0;  ///< how many
  std::vector<SideNumbers> sideNumbers_;  ///< by element
  bool hasHorizontalSides_ = false;       ///< else all elements lie in one row, without flows across it
  std::vector<double> invVolume_;         ///< [1/m3] by element
  int nInternalBoundarySides_ = 0;        ///< inner sides with a boundary condition, which is ignored
};

}  // namespace VELMORA_SOLVER
