#include "output/OutputRequirement.h"

#include <array>

namespace VELMORA {

namespace {

using Format = VelOutputFormat;

requirement_t fluxRequirement(int quantity) {
  switch (quantity) {
    case Format::X_HEATFLUX:
    case Format::X_SHWRAD:
    case Format::X_LWRAD:
      return REQ_ENERGY;
    case Format::X_MOISTFLUX:
    case Format::X_WATFLUX:
    case Format::X_VAPDIFF:
    case Format::X_VAPCONV:
    case Format::X_NORMRAIN:
    case Format::X_RAINRUNOFF:
    case Format::X_RAINRUNOFFENTH:
    case Format::X_WATENTH:
      return REQ_MOISTURE;
    case Format::X_AIRFLUX:
    case Format::X_AIRENTH:
      return REQ_AIR;
    case Format::X_VOCFLUX:
    case Format::X_VOCDIFF:
    case Format::X_VOCCONV:
      return REQ_POLLUTANT;
    default:
      return REQ_NEVER;
  }
}

constexpr std::array<requirement_t, Format::NUM_Q> FIELD_REQUIREMENTS{
    REQ_ENERGY,     // TEMPER
    REQ_ENERGY,     // ENERGY
    REQ_MOISTURE,   // MOISTURE
    REQ_MOISTURE,   // WATERMASS
    REQ_MOISTURE,   // VAPORMASS
    REQ_MOISTURE,   // THETAL
    REQ_MOISTURE,   // ULIQU
    REQ_MOISTURE,   // OVHWATCONT
    REQ_MOISTURE,   // OVHWATMASS
    REQ_MOISTURE,   // RELHUM
    REQ_AIR,        // GASPRESS
    REQ_AIR,        // GASPRESS_DIFF
    REQ_MOISTURE,   // LIQUIDPRESS
    REQ_MOISTURE,   // CAPILLARYPRESS
    REQ_MOISTURE,   // VAPPRESS
    REQ_SALT,       // SALT
    REQ_SALT,       // SALTMOLAL
    REQ_SALT,       // SALTMOLNUM
    REQ_SALT,       // SOLUTION
    REQ_POLLUTANT,  // VOCG
    REQ_POLLUTANT,  // VOCS
    REQ_POLLUTANT,  // VOCPRESS
    REQ_POLLUTANT,  // VOCDENSG
    REQ_ENERGY,     // THERMAL_EXPANSION
    REQ_MOISTURE,   // HYGRIC_EXPANSION
    REQ_NEVER,      // TOTAL_EXPANSION
    REQ_ENERGY,     // HEATSOURCE
    REQ_MOISTURE,   // MOISTSOURCE
    REQ_POLLUTANT,  // VOCSOURCE
    REQ_NEVER,      // LOCALERROR_U
    REQ_NEVER,      // LOCALERROR_MWV
    REQ_ICE,        // FREEZE_THAW
    REQ_ICE,        // RHO_ICE
    REQ_ICE,        // ICE_VOLUME_RATIO
    REQ_ENERGY,     // HP_FLOW_TEMPERATURE
    REQ_ENERGY,     // HP_RETURN_FLOW_TEMPERATURE
    REQ_MOISTURE,   // SATDEGREE
    REQ_MOISTURE,   // CONVECTIVE_MOISTURE_SOURCE
    REQ_MOISTURE,   // CONVECTIVE_AIR_FLOW
    REQ_ENERGY,     // HEATFLUXMEAN
    REQ_AIR,        // AIRFLUXMEAN
    REQ_AIR,        // AIRFLUXMAX_X
    REQ_AIR,        // AIRFLUXMAX_Y
    REQ_AIR,        // AIRENTHALPYFLUX
    REQ_ENERGY,     // AIRFLOWENTHALPY_IN
    REQ_ENERGY,     // AIRFLOWENTHALPY_OUT
    REQ_ENERGY,     // HP_HEAT_FLUX
    REQ_MOISTURE,   // DEW_POINT
};

}  // namespace

requirement_t outputRequirement(const VelOutputFormat& format) {
  if (format.type == Format::T_FLUX) return fluxRequirement(format.quantity);
  if (format.type != Format::T_FIELD || format.quantity < 0 || format.quantity >= Format::NUM_Q) {
    return REQ_NEVER;
  }
  return FIELD_REQUIREMENTS[static_cast<std::size_t>(format.quantity)];
}

bool isMet(requirement_t requirement, const std::bitset<VelInit::NUM_B>& balanceEquations) {
  switch (requirement) {
    case REQ_ENERGY:
      return balanceEquations[VelInit::B_ENERGY];
    case REQ_MOISTURE:
      return balanceEquations[VelInit::B_MOISTURE];
    case REQ_AIR:
      return balanceEquations[VelInit::B_AIR];
    case REQ_SALT:
      return balanceEquations[VelInit::B_SALT];
    case REQ_POLLUTANT:
      return balanceEquations[VelInit::B_POLLUTANT];
    case REQ_ICE:
      return balanceEquations[VelInit::B_ICE] && balanceEquations[VelInit::B_MOISTURE];
    case REQ_NEVER:
      break;
  }
  return false;
}

const char* requirementName(requirement_t requirement) {
  switch (requirement) {
    case REQ_ENERGY:
      return "ENERGY";
    case REQ_MOISTURE:
      return "MOISTURE";
    case REQ_AIR:
      return "AIR";
    case REQ_SALT:
      return "SALT";
    case REQ_POLLUTANT:
      return "POLLUTANT";
    case REQ_ICE:
      return "ICE";
    case REQ_NEVER:
      break;
  }
  return nullptr;
}

}  // namespace VELMORA
