#include <algorithm>
#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "foundation/SmoothStep.h"
#include "solver/Sources.h"

namespace VELMORA_SOLVER {

using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

namespace {

const char* const MOISTURE_SOURCE_ID = "[VelmoraCvodeSolver::calculateSourcesM]";

double climateValue(const VelFieldCond& fc, VelClimateCond::condition_t quantity) {
  return fc.requireClimate(quantity, MOISTURE_SOURCE_ID).currentValue;
}

/// Vapour pressure [Pa] of the air of the climate.
double climateVapour(const VelFieldCond& fc, double T) {
  return TKL::pSat(T) * climateValue(fc, VelClimateCond::C_RELHUM);
}

/// How readily a region takes or gives water, by its free or filled share x.
double readiness(const VelFieldCond& fc, double x) {
  constexpr double NOTHING = 1e-10;
  if (!(x > NOTHING)) return 0.0;
  const double exponent = fc.para[VelFieldCond::P_WATTRANS_EXPONENT].value;
  return (exponent == 1.0 ? x : std::pow(x, exponent)) - fc.para[VelFieldCond::P_LIM_SATDEGREE].value;
}

}  // namespace

Sources::MoistureSource Sources::moistureSource(const Term& term) {
  switch (term.condition->condition) {
    case VelFieldCond::C_WATSOURCE:
      return imposedWater(term);
    case VelFieldCond::C_REMWATSOUR:
    case VelFieldCond::C_REMWATSINK:
      return remoteWater(term);
    case VelFieldCond::C_AIRCHANGE:
    case VelFieldCond::C_AMBIENTRADIATION:  // the air before a surface that radiates changes as well
      return airChangeMoisture(term);
    case VelFieldCond::C_CONVECTIVE_SOURCE:
      return leakMoisture(term);
    case VelFieldCond::C_AIRFLOW:
      return airFlowMoisture(term);
    default:
      return {};  // acts on other balances
  }
}

/// A source that fades where the element is full, a sink that fades where it is dry.
Sources::MoistureSource Sources::imposedWater(const Term& term) const {
  constexpr double WIDTH = 1e-06;  // [m3/m3]
  const VelFieldCond& fc = *term.condition;
  const TKL::Parameter& highest = fc.para[VelFieldCond::P_MAX_WATCONT];
  const TKL::Parameter& lowest = fc.para[VelFieldCond::P_MIN_WATCONT];
  const double thetaEff = traits_[term.number].thetaEff;
  const double max = highest.isSet() ? std::min(highest.value, thetaEff) : thetaEff;
  const double min = lowest.isSet() ? std::max(lowest.value, 0.0) : 0.0;
  const double Theta = state_.Theta[term.number];
  double s = climateValue(fc, VelClimateCond::C_WATSOURCE);
  if (s < 0.0 && Theta < min + WIDTH) s *= TKL::rampTo(Theta - min, WIDTH);
  if (s > 0.0 && Theta > max - WIDTH) s = Theta < thetaEff ? s * TKL::rampTo(max - Theta, WIDTH) : 0.0;
  return {s, s * TKL::C_W * state_.T[term.number]};
}

/// Water between two regions, driven by the saturation of the remote one.
Sources::MoistureSource Sources::remoteWater(const Term& term) const {
  const VelFieldCond& fc = *term.condition;
  const VelFieldCond& remote = fc.requireRemote(MOISTURE_SOURCE_ID);
  const double thetaEff = traits_[term.number].material->thetaEff();
  if (!(thetaEff > 0.0)) return {};
  const double filled = state_.Theta[term.number] / thetaEff;
  const bool isSource = fc.condition == VelFieldCond::C_REMWATSOUR;
  const double f = readiness(fc, isSource ? (thetaEff - state_.Theta[term.number]) / thetaEff : filled);
  const double drive = remote.meanSaturation - remote.para[VelFieldCond::P_LIM_SATDEGREE].value;
  const double coefficient = (isSource ? fc : remote).para[VelFieldCond::P_WATTRANSFCOEFF].value;
  const double s = drive * f * coefficient / fc.volume;
  return {isSource ? s : -s, 0.0};
}

Sources::MoistureSource Sources::airChangeMoisture(const Term& term) const {
  const VelFieldCond& fc = *term.condition;
  const double rate = airChangeRate(fc, MOISTURE_SOURCE_ID);
  const double T = state_.T[term.number];
  const double airT = climateValue(fc, VelClimateCond::C_TEMPER);
  const double outside = climateVapour(fc, airT) / (airT * TKL::R_V);
  const double inside = state_.pV[term.number] / (T * TKL::R_V);
  // The enthalpies are taken at the temperature of the other side.
  return {(outside - inside) * rate, (TKL::h_v(T) * outside - TKL::h_v(airT) * inside) * rate};
}

/// Condensate of a leak, as water of the element's temperature.
Sources::MoistureSource Sources::leakMoisture(const Term& term) {
  if (term.leak == nullptr) return {};
  const double s = term.leak->convectiveMoistureSource;
  records_.convectiveMoistureSource[term.number] = s;
  records_.convectiveAirFlow[term.number] = term.leak->convectiveAirFlow;
  return {s, s * TKL::C_W * state_.T[term.number]};
}

Sources::MoistureSource Sources::airFlowMoisture(const Term& term) const {
  const VelFieldCond& fc = *term.condition;
  const double v = climateValue(fc, VelClimateCond::C_FLUIDVELOCITY);
  if (v == 0.0) return {};
  const Upstream from = upstream(term);
  const double Tu = upstreamT(from.element, term, MOISTURE_SOURCE_ID);
  const double pVu = from.element != nullptr ? state_.pV[static_cast<std::size_t>(from.element->number)]
                                             : climateVapour(fc, climateValue(fc, VelClimateCond::C_TEMPER));
  const double T = state_.T[term.number];
  const double entering = pVu / (Tu * TKL::R_V);
  const double leaving = state_.pV[term.number] / (T * TKL::R_V);
  return {(entering - leaving) * v / from.length,
          (TKL::h_v(Tu) * entering - TKL::h_v(T) * leaving) * v / from.length};
}

}  // namespace VELMORA_SOLVER
