#pragma once

namespace VELMORA {

/// Slots of the records of flows through the sides and of sources in the elements. Slot 0 of a record is
/// the sum of the slots behind it; the other slots keep the contributions apart, so that they can be
/// written to output files. Flows are positive from the left to the right element of a side.

/// Slots of `heatFlux`, per side [W].
enum heatFluxSlot_t {
  HF_SUM,
  HF_CONDUCTION,
  HF_INFILTRATION_SHORTWAVE,  ///< enthalpy of vapour in infiltrated air, or short-wave radiation
  HF_LONGWAVE,                ///< long-wave radiation
  HF_VAPOUR_DIFFUSION,        ///< enthalpy carried by vapour diffusion
  HF_VAPOUR_CONVECTION,       ///< enthalpy carried by vapour convection
  HF_UNUSED,
  HF_AIR,     ///< enthalpy of air convection
  HF_LIQUID,  ///< enthalpy of liquid water
  HF_RUNOFF,  ///< enthalpy of rain that runs off
  NUM_HF
};

/// Slots of `moistureFlux`, per side [kg/s]. The record is longer than its last named slot.
enum moistureFluxSlot_t { MF_SUM, MF_VAPOUR_DIFFUSION, MF_VAPOUR_CONVECTION, MF_LIQUID, NUM_MF = 7 };

/// Slots of `vocFlux`, per side [kg/s].
enum vocFluxSlot_t { VF_SUM, VF_DIFFUSION, VF_CONVECTION, NUM_VF };

/// Slots of `additionalFlux`, per side, for outputs only: neither summed nor signed [kg/s].
enum additionalFluxSlot_t {
  AF_RAIN = 5,    ///< rain that reaches the surface
  AF_RUNOFF = 6,  ///< rain that runs off
  NUM_AF
};

/// Slots of `heatSource`, per element [W/m3].
enum heatSourceSlot_t {
  HS_SUM,
  HS_HEAT,
  HS_MOISTURE_ENTHALPY,  ///< enthalpy carried by the moisture sources
  NUM_HS
};

/// Slots of `moistureSource`, per element [kg/m3s].
enum moistureSourceSlot_t { MS_SUM, MS_MOISTURE, NUM_MS };

/// Slots of `vocSource1`, the mobile pollutant, per element [kg/m3s].
enum vocSource1Slot_t {
  VS1_SUM,
  VS1_IMPOSED,
  VS1_AIR_CHANGE,
  VS1_ADSORPTION,  ///< into the solid, negative for uptake
  NUM_VS1
};

/// Slots of `vocSource2`, the pollutant in the solid, per element [kg/m3s].
enum vocSource2Slot_t {
  VS2_SUM,
  VS2_ADSORPTION,  ///< the same amount with the other sign
  VS2_CHEMISORPTION,
  NUM_VS2
};

}  // namespace VELMORA
