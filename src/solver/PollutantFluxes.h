#pragma once

#include <vector>

#include "project/CalculationData.h"
#include "solver/FluxRecords.h"
#include "solver/ModelSettings.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// Flows of the pollutant [kg/s] through the sides between two elements.
///
/// With L and R for the two elements, w for the share of each in the sum of their widths, A for the area and
/// g = 2 / (d_L + d_R):
///
///     diffusion   D A g (p_L - p_R)       D = w_L D_L + w_R D_R                    without moisture
///                                         D = D_L D_R / (D_L w_R + D_R w_L)        with moisture
///     air         m rho_u / rho_air,u     with the air m that flows, from the element u upwind
class PollutantFluxes {
 public:
  /// All arguments must live as long as this object; `data` must keep its vectors.
  PollutantFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
                  const SolverState& state, FluxRecords& records, double gasConstant);

  /// The flows through all inner sides, with their sums.
  void calculate();

 private:
  struct InnerSide {
    std::size_t number = 0;
    std::size_t left = 0;
    std::size_t right = 0;
    double weightLeft = 0.0;
    double weightRight = 0.0;
    double conductance = 0.0;  ///< [m] area over distance
  };

  double permeability(const InnerSide& side) const;
  double convection(const InnerSide& side) const;

  const SolverState& state_;
  FluxRecords& records_;
  const bool harmonic_;  ///< mean of the permeabilities
  const bool air_;
  const double gasConstant_;  ///< of the pollutant [J/kgK]
  std::vector<InnerSide> sides_;
};

}  // namespace VELMORA_SOLVER
