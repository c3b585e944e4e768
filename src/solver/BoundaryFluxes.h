#pragma once

#include <vector>

#include "project/CalculationData.h"
#include "solver/ActivityWindow.h"
#include "solver/ElementTraits.h"
#include "solver/FluxRecords.h"
#include "solver/ModelSettings.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// Flows through the outer sides, from the climate to the elements at the surface.
///
/// Every formula gives the flux density into the element. Conditions act in the order of their assignment;
/// one that writes a contribution overwrites what an earlier one of the same side has written there.
class BoundaryFluxes {
 public:
  /// All arguments must live as long as this object; `data` must keep its vectors.
  /// Warns of a condition without a quantity.
  BoundaryFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
                 const std::vector<ElementTraits>& traits, const SolverState& state, FluxRecords& records);

  /// The flows through all outer sides at time t [s], with their sums. The climate must be that of t.
  /// @throws TKL::Exception, std::runtime_error for a missing climate condition or an impossible parameter
  void calculate(double t);

 private:
  /// One boundary condition on one outer side.
  struct Term {
    const VELMORA::VelBoundaryCond* condition = nullptr;
    std::size_t side = 0;
    std::size_t element = 0;
    double inward = 0.0;       ///< area with the sign that turns a density into the element into a flow [m2]
    double invDistance = 0.0;  ///< [1/m]
    double y = 0.0;            ///< [m] height of the element's centre
    double dz = 0.0;           ///< [m] thickness of the element
    double contactArea = 0.0;  ///< [m2] of all outer sides of the element with this condition
    ActivityWindow window;
  };

  /// One outer side and the element at it.
  struct OuterSide {
    std::size_t number = 0;
    std::size_t element = 0;
    bool elementIsRight = false;
  };

  static void warnOfIdleConditions(const VELMORA::CalculationData& data);
  void collect(const VELMORA::Side& side);
  void addContactAreas();
  bool acts(const VELMORA::VelBoundaryCond& condition) const;
  void apply(const Term& term, double t);
  void heatConduction(const Term& term);
  double heatPipe(const Term& term) const;
  void vapourDiffusion(const Term& term);
  void waterContact(const Term& term, double t);
  double waterContactDensity(const Term& term, double pressure) const;
  void airInfiltration(const Term& term);
  void pollutantDiffusion(const Term& term);
  void pollutantInfiltration(const Term& term, double m, bool entering, const char* functionId);
  void rain(const Term& term);
  double absorbingCapacity(const Term& term) const;
  void shortWaveRadiation(const Term& term, double t);
  void longWaveRadiation(const Term& term);
  double calculateGlobalRad(const VELMORA::VelBoundaryCond& bc, double t) const;
  void limitOverfilling(const OuterSide& side);

  const ModelSettings& settings_;
  const std::vector<ElementTraits>& traits_;
  const SolverState& state_;
  FluxRecords& records_;
  std::vector<OuterSide> sides_;
  std::vector<Term> terms_;
};

}  // namespace VELMORA_SOLVER
