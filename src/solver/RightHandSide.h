#pragma once

#include <vector>

#include "project/CalculationData.h"
#include "solver/BalanceEquations.h"
#include "solver/FluxRecords.h"
#include "solver/Integrator.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// The balance equations of the construction, discretised in space by finite volumes: from the conserved
/// quantities of every element to their derivatives in time.
///
/// With the internal energy density U [J/m3] of an element of volume V [m3], the flows Q [W] through its
/// sides (positive from left to right and from top to bottom) and the sources S [W/m3]:
///
///     V dU/dt = Q_left - Q_right + Q_top - Q_bottom + V S
///
/// One evaluation goes from climate over decomposition, fluxes per side and sources per element to the
/// divergence. It works on flat arrays and knows neither files nor the integrator.
class RightHandSide : public OdeSystem {
 public:
  /// `data` must keep its vectors as long as this object lives.
  /// @param startTimeOffset start of the simulation in its year [s]
  /// @throws TKL::Exception when a condition or a combination of equations has no implementation yet
  RightHandSide(VELMORA::CalculationData& data, BalanceEquations equations, double startTimeOffset);

  /// Derivatives at time t [s]. 0, or a positive code when the state cannot be decomposed (then ydot stays).
  int calculate(double t, const double* y, double* ydot) override;

  /// All quantities and fluxes of a state at time t [s], without the derivatives. Same code as `calculate`.
  int calculateFluxesAndSources(double t, const double* y);

  /// Current values of all climate conditions at time t [s].
  void updateClimate(double t);

  SolverState state;    ///< what the last decomposition found
  FluxRecords records;  ///< flows and sources of the last evaluation

 private:
  friend class RightHandSideTestAccess;

  /// What one side needs of its neighbours, in one place for the loop over all inner sides.
  struct InnerSide {
    int side = 0;
    int left = 0;
    int right = 0;
    double weightLeft = 0.0;
    double weightRight = 0.0;
    double area = 0.0;                                    ///< [m2]
    double invDistance = 0.0;                             ///< [1/m]
    double heatResistance = 0.0;                          ///< of contact conditions [m2K/W]
    const VELMORA::VelContactCond* airContact = nullptr;  ///< heat transfer between air and a material
  };

  /// One boundary condition on one outer side.
  struct BoundaryTerm {
    const VELMORA::VelBoundaryCond* condition = nullptr;
    int side = 0;
    int element = 0;
    double inward = 0.0;       ///< area with the sign that turns a density into the element into a flow [m2]
    double activeFrom = 0.0;   ///< [s]
    double activeUntil = 0.0;  ///< [s]
  };

  void collectInnerSides();
  void collectBoundaryTerms();
  void checkConditions() const;
  void reportInternalBoundaryConditions() const;

  int extractStateVariables(const double* y);
  void decomposeH(int element);
  void fieldFluxEnergy(const InnerSide& side);
  void boundaryFluxes(double t);
  double boundaryFluxHeatConduction(const BoundaryTerm& term) const;
  void divergence(double* ydot) const;

  VELMORA::CalculationData& data_;
  BalanceEquations equations_;
  double startTimeOffset_;
  std::vector<InnerSide> innerSides_;
  std::vector<int> outerSides_;
  std::vector<BoundaryTerm> boundaryTerms_;
  std::vector<int> internalBoundarySides_;  ///< inner sides with a boundary condition, which is ignored
};

}  // namespace VELMORA_SOLVER
