#include <array>
#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "solver/Sources.h"

namespace VELMORA_SOLVER {

using VELMORA::Element;
using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

namespace {

constexpr double AIR_CAPACITY = 1212.23;      // [J/m3K] 1.205 kg/m3 of air
constexpr double WATER_CAPACITY = 4180000.0;  // [J/m3K]

const char* const HEAT_SOURCE_ID = "[VelmoraCvodeSolver::calculateSourcesH]";

double climateOf(const VelFieldCond& fc, VelClimateCond::condition_t quantity) {
  return fc.requireClimate(quantity, HEAT_SOURCE_ID).currentValue;
}

double value(const VelFieldCond& fc, VelFieldCond::para_t index) {
  return fc.para[index].value;
}

}  // namespace

double Sources::upstreamT(const Element* from, const Term& term, const char* functionId) const {
  if (from != nullptr) return state_.T[static_cast<std::size_t>(from->number)];
  return term.condition->requireClimate(VelClimateCond::C_TEMPER, functionId).currentValue;
}

void Sources::heatSource(const Term& term) {
  double& source = records_.heatSource[term.number][VELMORA::HS_HEAT];
  switch (term.condition->condition) {
    case VelFieldCond::C_ENESOURCE:
      source += climateOf(*term.condition, VelClimateCond::C_ENESOURCE);
      break;
    case VelFieldCond::C_AIRCHANGE:
      source += airChangeHeat(term);
      break;
    case VelFieldCond::C_WATERFLOW:
      source += waterFlowHeat(term);
      break;
    case VelFieldCond::C_AIRFLOW:
      source += airFlowHeat(term);
      break;
    case VelFieldCond::C_MEDIAFLOW:
      source += mediaFlowHeat(term);
      break;
    case VelFieldCond::C_REMENESOUR:
    case VelFieldCond::C_REMENESINK:
      source += remoteHeat(term);
      break;
    case VelFieldCond::C_PCMENESOUR:
    case VelFieldCond::C_PCMENESINK:
      source += phaseChangeHeat(term);
      break;
    case VelFieldCond::C_LW_RADIATION:
      gapRadiation(term);
      break;
    case VelFieldCond::C_AMBIENTRADIATION:
      source += ambientRadiation(term);
      break;
    default:
      break;  // acts on other balances
  }
}

double Sources::airChangeHeat(const Term& term) const {
  const VelFieldCond& fc = *term.condition;
  const double rate = airChangeRate(fc, HEAT_SOURCE_ID);
  return (climateOf(fc, VelClimateCond::C_TEMPER) - state_.T[term.number]) * AIR_CAPACITY * rate;
}

/// Water that flows along x, to the right for a positive velocity.
double Sources::waterFlowHeat(const Term& term) const {
  const double w = climateOf(*term.condition, VelClimateCond::C_FLUIDVELOCITY);
  if (w == 0.0) return 0.0;
  const Element& e = *term.element;
  const VELMORA::Side* side = w > 0.0 ? e.sideLeft : e.sideRight;
  const Element* from = nullptr;
  if (side != nullptr) from = w > 0.0 ? side->elementLeft : side->elementRight;
  const double Tu = upstreamT(from, term, HEAT_SOURCE_ID);
  return (Tu - state_.T[term.number]) * w * WATER_CAPACITY / e.dx;
}

double Sources::airFlowHeat(const Term& term) {
  const double v = climateOf(*term.condition, VelClimateCond::C_FLUIDVELOCITY);
  if (v == 0.0) return 0.0;
  const Upstream from = upstream(term);
  const double Tu = upstreamT(from.element, term, HEAT_SOURCE_ID);
  const double T = state_.T[term.number];
  records_.airFlowEnthalpyIn[term.number] = v * AIR_CAPACITY * Tu;
  records_.airFlowEnthalpyOut[term.number] = v * AIR_CAPACITY * T;
  return v * AIR_CAPACITY * (Tu - T) / from.length;
}

/// A fluid with the properties of the element's material.
double Sources::mediaFlowHeat(const Term& term) const {
  const double v = climateOf(*term.condition, VelClimateCond::C_VOLFLUIDFLUX);
  if (v == 0.0) return 0.0;
  const Upstream from = upstream(term);
  const double Tu = upstreamT(from.element, term, HEAT_SOURCE_ID);
  const double f = v / (term.element->volume / from.length) * term.element->material->rhoCDry();
  return (Tu - state_.T[term.number]) * f / from.length;
}

/// Heat that a fluid carries from a warmer sink region to a colder source region; the sink gives what the
/// source gets.
double Sources::remoteHeat(const Term& term) const {
  const bool isSource = term.condition->condition == VelFieldCond::C_REMENESOUR;
  const VelFieldCond& own = *term.condition;
  const VelFieldCond& remote = own.requireRemote(HEAT_SOURCE_ID);
  const VelFieldCond& source = isSource ? own : remote;
  const VelFieldCond& sink = isSource ? remote : own;
  const double dT = sink.meanTemperature - source.meanTemperature;
  if (!(dT > 0.0) || !(value(sink, VelFieldCond::P_LIM_SNK_TEMPERATURE) < sink.meanTemperature)) return 0.0;
  const double power =
      value(source, VelFieldCond::P_FLUID_CAPACITY) * climateOf(source, VelClimateCond::C_VOLFLUIDFLUX) * dT;
  return (isSource ? power : -power) / own.volume;
}

/// Heat between a phase change material and its surroundings, only within the melting range.
double Sources::phaseChangeHeat(const Term& term) const {
  constexpr double MARGIN = 1e-05;  // [K]
  const bool isSource = term.condition->condition == VelFieldCond::C_PCMENESOUR;
  const VelFieldCond& own = *term.condition;
  const VelFieldCond& remote = own.requireRemote(HEAT_SOURCE_ID);
  const VelFieldCond& material = isSource ? own : remote;
  const double half = 0.5 * value(material, VelFieldCond::P_PCM_DEL_TEMP);
  const double low = value(material, VelFieldCond::P_PCM_MELT_TEMP) - half;
  const double high = value(material, VelFieldCond::P_PCM_MELT_TEMP) + half;
  const double T = state_.T[term.number];
  const double Tm = remote.meanTemperature;
  const bool charging = Tm > T && low + MARGIN < Tm && T < high;
  const bool discharging = Tm < T && Tm < high - MARGIN && low < T;
  if (!charging && !discharging) return 0.0;
  return (Tm - T) * value(material, VelFieldCond::P_ENETRANSFCOEFF) / own.volume;
}

void Sources::gapRadiation(const Term& term) {
  const VelFieldCond& fc = *term.condition;
  const Element& e = *term.element;
  if (fc.flags[VelFieldCond::F_LW_RADIATION_X] && e.lwPartnerRight >= 0)
    radiate(term, e.lwPartnerRight, value(fc, VelFieldCond::P_LEFT_EMISS_COEFF),
            value(fc, VelFieldCond::P_RIGHT_EMISS_COEFF), true);
  if (fc.flags[VelFieldCond::F_LW_RADIATION_Y] && e.lwPartnerBottom >= 0)
    radiate(term, e.lwPartnerBottom, value(fc, VelFieldCond::P_TOP_EMISS_COEFF),
            value(fc, VelFieldCond::P_BOTTOM_EMISS_COEFF), false);
}

/// Long-wave radiation [W/m3] of a surface with the surroundings. The flow through its side is for outputs
/// only: it is no part of the sum.
double Sources::ambientRadiation(const Term& term) {
  using Model = VELMORA::FieldModelAmbientRadiation;
  const Element& e = *term.element;
  const int direction = term.radiationDirection;
  const std::array<const VELMORA::Side*, 4> sides{e.sideLeft, e.sideRight, e.sideTop, e.sideBottom};
  const VELMORA::Side* side =
      direction == Model::D_UNSET ? nullptr : sides[static_cast<std::size_t>(direction)];
  if (side == nullptr)
    throw TKL::Exception(TKL::FormatString("Field condition '%1': element %2 has no side that radiates.")
                             .arg(term.condition->name)
                             .arg(e.number),
                         HEAT_SOURCE_ID);
  const auto emission = static_cast<VelFieldCond::para_t>(VelFieldCond::P_LEFT_EMISS_COEFF + direction);
  const double T = state_.T[term.number];
  const double q = (climateOf(*term.condition, VelClimateCond::C_LOWRAD) - TKL::SIGMA * T * T * T * T) *
                   value(*term.condition, emission);
  const bool alongX = direction == Model::D_LEFT || direction == Model::D_RIGHT;
  const double sign = direction == Model::D_LEFT || direction == Model::D_TOP ? 1.0 : -1.0;
  records_.heatFlux[static_cast<std::size_t>(side->number)][VELMORA::HF_LONGWAVE] = q * side->area * sign;
  return q / (alongX ? e.dx : e.dy);
}

/// Radiation between two parallel grey surfaces; what one element gains, its partner loses.
void Sources::radiate(const Term& term, int partner, double emissivity1, double emissivity2, bool alongX) {
  const auto isWrong = [](double emissivity) { return emissivity == 0.0 || emissivity > 1.0; };
  if (isWrong(emissivity1) || isWrong(emissivity2))
    throw TKL::Exception("Wrong emission coefficient in longwave radiatuion exchange", HEAT_SOURCE_ID);
  const auto p = static_cast<std::size_t>(partner);
  const Element& other = data_.elements[p];
  const auto pow4 = [](double T) { return T * T * T * T; };
  const double q = 1.0 / (1.0 / emissivity2 + 1.0 / emissivity1 - 1.0) *
                   (pow4(state_.T[p]) - pow4(state_.T[term.number])) * TKL::SIGMA;
  records_.heatSource[term.number][VELMORA::HS_HEAT] += q / (alongX ? term.element->dx : term.element->dy);
  records_.heatSource[p][VELMORA::HS_HEAT] -= q / (alongX ? other.dx : other.dy);
}

}  // namespace VELMORA_SOLVER
