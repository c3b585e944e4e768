#pragma once

#include <vector>

#include "models/FieldModels.h"
#include "project/CalculationData.h"
#include "solver/ActivityWindow.h"
#include "solver/ElementTraits.h"
#include "solver/FluxRecords.h"
#include "solver/ModelSettings.h"
#include "solver/PollutantBalance.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// Sources of heat [W/m3], moisture and pollutant [kg/(m3 s)] that field conditions add inside of elements:
/// imposed ones, exchange between two regions, phase change material, air change, fluids that flow through,
/// leaks, long-wave radiation across a gap or to the surroundings, and sorption of a pollutant.
class Sources {
 public:
  /// All arguments must live as long as this object; `data` must keep its vectors.
  /// @param pollutant  needed with a pollutant balance only
  Sources(VELMORA::CalculationData& data, const ModelSettings& settings,
          const std::vector<ElementTraits>& traits, const SolverState& state, FluxRecords& records,
          VELMORA::FieldModels& models, const PollutantBalance* pollutant = nullptr);

  /// All sources at time t [s], with their sums. The climate must be that of t.
  /// @throws TKL::Exception for a missing climate condition or remote condition
  void calculate(double t);

 private:
  /// One field condition in one element.
  struct Term {
    const VELMORA::VelFieldCond* condition = nullptr;
    const VELMORA::Element* element = nullptr;
    std::size_t number = 0;  ///< of the element
    ActivityWindow window;
    const VELMORA::WTAConvectionModel* leak = nullptr;                      ///< of the condition
    int radiationDirection = VELMORA::FieldModelAmbientRadiation::D_UNSET;  ///< of the condition
  };

  /// Where a flow comes from: an element, or the climate if there is none.
  struct Upstream {
    const VELMORA::Element* element = nullptr;
    double length = 0.0;  ///< [m] of the receiving element along the flow
  };

  /// A moisture source and the energy that comes with it.
  struct MoistureSource {
    double mass = 0.0;    ///< [kg/(m3 s)]
    double energy = 0.0;  ///< [W/m3]
  };

  void updateConditions(double t);
  double saturation(std::size_t element) const;

  static Upstream upstream(const Term& term);
  double upstreamT(const VELMORA::Element* from, const Term& term, const char* functionId) const;

  void heatSource(const Term& term);
  void pollutantSource(const Term& term);
  static double airChangeRate(const VELMORA::VelFieldCond& fc, const char* functionId);
  double airChangeHeat(const Term& term) const;
  double waterFlowHeat(const Term& term) const;
  double airFlowHeat(const Term& term);
  double mediaFlowHeat(const Term& term) const;
  double remoteHeat(const Term& term) const;
  double phaseChangeHeat(const Term& term) const;
  void gapRadiation(const Term& term);
  double ambientRadiation(const Term& term);
  void radiate(const Term& term, int partner, double emissivity1, double emissivity2, bool alongX);

  MoistureSource moistureSource(const Term& term);
  MoistureSource leakMoisture(const Term& term);
  MoistureSource imposedWater(const Term& term) const;
  MoistureSource remoteWater(const Term& term) const;
  MoistureSource airChangeMoisture(const Term& term) const;
  MoistureSource airFlowMoisture(const Term& term) const;

  VELMORA::CalculationData& data_;
  const ModelSettings& settings_;
  const std::vector<ElementTraits>& traits_;
  const SolverState& state_;
  FluxRecords& records_;
  VELMORA::FieldModels& models_;
  const PollutantBalance* const pollutant_;
  std::vector<Term> terms_;
};

}  // namespace VELMORA_SOLVER
