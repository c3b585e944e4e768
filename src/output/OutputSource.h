#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "grid/FluxSlots.h"

namespace VELMORA {

/// A view of records of equal length that lie one behind the other, one for each side or element.
struct RecordView {
  std::span<const double> values;
  std::size_t nSlots = 1;

  bool empty() const { return values.empty(); }
  double at(std::size_t record, std::size_t slot) const { return values[record * nSlots + slot]; }
};

/// What the solver shows to the output files at one time: views of its arrays, nothing is owned. An array
/// that is empty is not calculated in this run; a file that shows it is refused.
///
/// Arrays of elements and sides are indexed by their numbers. Flows are positive from the left to the right
/// element of a side, so downwards through horizontal sides.
struct OutputSource {
  double time = 0.0;  ///< [s] of the simulation

  // Per element: state and what follows from it.
  std::span<const double> T;            ///< [K]
  std::span<const double> U;            ///< [J/m3]
  std::span<const double> mw;           ///< [kg/m3] moisture in all phases
  std::span<const double> Theta;        ///< [m3/m3] moisture content
  std::span<const double> rhoVapour;    ///< [kg/m3]
  std::span<const double> rhoIce;       ///< [kg/m3]
  std::span<const double> iceRatio;     ///< [-] ice to pore volume
  std::span<const double> RH;           ///< [-]
  std::span<const double> pAir;         ///< [Pa]
  std::span<const double> pC;           ///< [Pa] capillary pressure
  std::span<const double> pCTotal;      ///< [Pa] with the weight of water
  std::span<const double> pV;           ///< [Pa]
  std::span<const double> mVOC1;        ///< [kg/m3] mobile pollutant
  std::span<const double> mVOC2;        ///< [kg/m3] pollutant in the solid
  std::span<const double> pVOC;         ///< [Pa]
  std::span<const double> rhoVOC;       ///< [kg/m3] in the gas phase
  std::span<const double> localErrorU;  ///< largest estimated error so far, by its error weight [-]
  std::span<const double> localErrorMw;
  std::span<const std::uint32_t> freezeThawCycles;

  // Per element: results of models.
  std::span<const double> airFlowEnthalpyIn;         ///< [W/m3]
  std::span<const double> airFlowEnthalpyOut;        ///< [W/m3]
  std::span<const double> convectiveMoistureSource;  ///< [kg/m3s]
  std::span<const double> convectiveAirFlow;         ///< [m3/m2s]
  /// Values of the heat pipe at an element, 0 where there is none. Empty: the construction has no heat pipe.
  std::span<const double> heatPipeSupply;    ///< [K]
  std::span<const double> heatPipeReturn;    ///< [K]
  std::span<const double> heatPipeHeatFlux;  ///< [W]

  // Per element: sources.
  RecordView heatSource;      ///< [W/m3] by `heatSourceSlot_t`
  RecordView moistureSource;  ///< [kg/m3s] by `moistureSourceSlot_t`
  RecordView vocSource1;      ///< [kg/m3s] by `vocSource1Slot_t`

  // Per side: flows at `time`.
  RecordView heatFlux;                  ///< [W] by `heatFluxSlot_t`
  RecordView moistureFlux;              ///< [kg/s] by `moistureFluxSlot_t`
  RecordView vocFlux;                   ///< [kg/s] by `vocFluxSlot_t`
  RecordView additionalFlux;            ///< [kg/s] by `additionalFluxSlot_t`
  std::span<const double> airMassFlux;  ///< [kg/s]

  // Per side: integrals of the flows over the time since the start of the run, with the same slots.
  RecordView heatFluxSum;        ///< [J]
  RecordView moistureFluxSum;    ///< [kg]
  RecordView vocFluxSum;         ///< [kg]
  RecordView additionalFluxSum;  ///< [kg]
};

}  // namespace VELMORA
