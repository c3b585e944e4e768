#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "foundation/PhysicalConstants.h"
#include "grid/FluxSlots.h"
#include "material/Material.h"
#include "project/CalculationData.h"
#include "solver/ElementTraits.h"
#include "solver/FluxRecords.h"
#include "solver/ModelSettings.h"
#include "solver/SolverState.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

constexpr double MOIST_POR = 0.4;           ///< [m3/m3] porosity of a moist material
constexpr double MOIST_EFF = 0.2;           ///< [m3/m3] its effective saturation
constexpr double MOIST_RHO_C = 2e6;         ///< [J/m3K] its dry heat capacity
constexpr double MOIST_MEW = 10.0;          ///< [-] its vapour diffusion resistance factor
constexpr double MOIST_SLOPE = 1e-7;        ///< [1/Pa] its storage above saturation
constexpr double KELVIN_FACTOR = 461890.0;  ///< [Pa/K] density of water times the gas constant of vapour

inline const char* const MOIST_STORAGE = "[MOISTURE_STORAGE]\nFUNCTION = Theta_l(RH)\n0 1\n0 0.2\n";
inline const char* const MOIST_KL = "[MOISTURE_TRANSPORT]\nFUNCTION = lgKl(Theta_l)\n0 0.2\n-20 -8\n";
inline const char* const MOIST_DL = "[MOISTURE_TRANSPORT]\nFUNCTION = lgDl(Theta_l)\n0 0.2\n-14 -6\n";

/// A material whose functions are straight lines: content 0.2 RH, log10 of the liquid conductivity from -20
/// to -8 and heat conductivity from 0.8 to 2.8 W/mK between dry and full.
inline std::string moistText(const std::string& flags = "", const std::string& storage = MOIST_STORAGE,
                             const std::string& liquid = MOIST_KL) {
  return "[IDENTIFICATION]\nNAME = en:Plaster\n" + (flags.empty() ? flags : "FLAGS = " + flags + "\n") +
         "[STORAGE_BASE_PARAMETERS]\nRHO = 2000 kg/m3\nCE = 1000 J/kgK\nTHETA_POR = 0.4 m3/m3\n"
         "THETA_EFF = 0.2 m3/m3\n[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\nMEW = 10 -\n" +
         storage + liquid + "[HEAT_TRANSPORT]\nFUNCTION = lambda(Theta_l)\n0 0.2\n0.8 2.8\n";
}

inline MM::Material moistMaterial(const std::string& text = moistText()) {
  const TKL::MessageCapture silence;
  MM::Material material;
  material.readASCII(text, false);
  return material;
}

inline MM::Material airMaterial() {
  return moistMaterial(
      "[IDENTIFICATION]\nNAME = en:Cavity\nFLAGS = AIR\n[STORAGE_BASE_PARAMETERS]\nRHO = 1.2 kg/m3\n"
      "CE = 1000 J/kgK\n[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.1 W/mK\nMEW = 1 -\n");
}

/// The potential of a material as a straight line from 0 to `full` [kg/ms] at effective saturation.
inline void setPotential(MM::Material& material, double full) {
  material.moistureTransport[MM::Material::D_U].Psi.setValues({0.0, MOIST_EFF}, {0.0, full});
}

/// Settings of a run of heat and moisture.
inline ModelSettings moistSettings(int equations = BE_ENERGY | BE_MOISTURE) {
  ModelSettings settings;
  settings.equations.code = equations;
  settings.equations.nEquationsPerElement =
      (settings.equations.has(BE_ENERGY) ? 1 : 0) + (settings.equations.has(BE_MOISTURE) ? 1 : 0);
  return settings;
}

/// Arrays for a calculation whose elements and sides are in `data`.
struct MoistArrays {
  void size(const VELMORA::CalculationData& data, const ModelSettings& settings) {
    traits = elementTraits(data.elements, settings);
    state.resize(data.elements.size());
    for (const VELMORA::Element& e : data.elements)
      state.rhoCDry[static_cast<std::size_t>(e.number)] = e.material->rhoCDry();
    records.heatFlux = RecordArray(data.sides.size(), VELMORA::NUM_HF);
    records.moistureFlux = RecordArray(data.sides.size(), VELMORA::NUM_MF);
    records.vocFlux = RecordArray(data.sides.size(), VELMORA::NUM_VF);
    records.additionalFlux = RecordArray(data.sides.size(), VELMORA::NUM_AF);
    records.airMassFlux.assign(data.sides.size(), 0.0);
  }

  std::vector<ElementTraits> traits;
  SolverState state;
  FluxRecords records;
};

}  // namespace VELMORA_SOLVER
