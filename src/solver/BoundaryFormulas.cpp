#include <cmath>
#include <stdexcept>
#include <string>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "foundation/SmoothStep.h"
#include "solver/BoundaryClimate.h"
#include "solver/BoundaryFluxes.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

namespace {

constexpr double SURFACE_COEFFICIENT = 10000.0;  // [W/m2K] a given surface temperature

const char* const HEAT_ID = "[VelmoraCvodeSolver::boundaryFluxHeatConduction]";
const char* const VAPOUR_ID = "[VelmoraCvodeSolver::boundaryFluxVapourDiffusion]";
const char* const WATER_ID = "[VelmoraCvodeSolver::boundaryFluxWaterContact]";

/// Exchange coefficient that grows with the velocity of the air, an unset exponent meaning in proportion.
double withWind(const VelBoundaryCond& bc, double stillAir, double slope, const char* functionId) {
  const TKL::Parameter& exponent = bc.para[VelBoundaryCond::P_EXCH_EXP];
  const double velocity = clim(bc, VelClimateCond::C_WINDVEL, functionId);
  if (!exponent.isSet() || exponent.value == 1.0) return stillAir + slope * velocity;
  return stillAir + std::pow(velocity, exponent.value) * slope;
}

/// Heat exchange coefficient [W/m2K].
double heatCoefficient(const VelBoundaryCond& bc) {
  const double slope = bc.para[VelBoundaryCond::P_EXCH_SLOPE].value;
  const double stillAir = bc.para[VelBoundaryCond::P_EXCOEFF].value;
  return slope > 0.0 ? withWind(bc, stillAir, slope, HEAT_ID) : stillAir;
}

/// Vapour exchange coefficient [s/m], with the resistance of a coating.
double vapourCoefficient(const VelBoundaryCond& bc) {
  constexpr double KV_STILL_AIR = 1.9659822516484094e-10;  // [s] vapour conductivity of air at 20 C
  const bool inWind = bc.kind == VelBoundaryCond::K_EXCHANGE_VEL;
  if (bc.kind != VelBoundaryCond::K_EXCHANGE && !inWind)
    throw TKL::Exception(
        TKL::FormatString("Invalid kind type for vapour diffusion boundary condition '%1'.").arg(bc.name),
        VAPOUR_ID);
  double beta = bc.para[VelBoundaryCond::P_EXCOEFF].value;
  if (!(beta > 0.0))
    throw TKL::Exception(
        TKL::FormatString("Invalid beta value (=%1) for vapor diffusion boundary condition.").arg(beta),
        VAPOUR_ID);
  if (inWind) {
    if (clim(bc, VelClimateCond::C_WINDVEL, VAPOUR_ID) < 0.0)  // told only, the formula takes it as it is
      TKL::message("Wind velocity < 0 m/s. Value is clipped to 0.", TKL::MSG_WARNING, VAPOUR_ID, 3);
    const double slope = bc.para[VelBoundaryCond::P_EXCH_SLOPE].value;
    if (slope < 0.0)
      throw TKL::Exception(
          TKL::FormatString("Invalid beta slope (=%1) for vapor diffusion boundary condition.").arg(slope),
          VAPOUR_ID);
    if (slope > 0.0) beta = withWind(bc, beta, slope, VAPOUR_ID);
  }
  const TKL::Parameter& coating = bc.para[VelBoundaryCond::P_SD_VALUE];
  return coating.isSet() ? 1.0 / (coating.value / KV_STILL_AIR + 1.0 / beta) : beta;
}

/// Vapour pressure of the ambient air [Pa].
double ambientVapourPressure(const VelBoundaryCond& bc, double ambientT) {
  const bool pressure = bc.climate[VelClimateCond::C_VAPPRESS] != nullptr;
  if (pressure && bc.climate[VelClimateCond::C_RELHUM] != nullptr)
    throw TKL::Exception(TKL::FormatString("Vapor pressure and relative humidity simultaneously assigned in "
                                           "boundary condition '%1'.")
                             .arg(bc.name),
                         VAPOUR_ID);
  if (pressure) return clim(bc, VelClimateCond::C_VAPPRESS, VAPOUR_ID);
  return TKL::pSat(ambientT) * clim(bc, VelClimateCond::C_RELHUM, VAPOUR_ID);
}

}  // namespace

/// Heat [W/m2]. The exchange acts on the temperature of the element's centre.
void BoundaryFluxes::heatConduction(const Term& term) {
  const VelBoundaryCond& bc = *term.condition;
  const double T = state_.T[term.element];
  double q = 0.0;
  switch (bc.kind) {
    case VelBoundaryCond::K_SURFVAL:
      q = (clim(bc, VelClimateCond::C_TEMPER, HEAT_ID) - T) * SURFACE_COEFFICIENT;
      break;
    case VelBoundaryCond::K_IMPFLUX:
      q = clim(bc, VelClimateCond::C_HEATFLUXDENS, HEAT_ID);
      break;
    case VelBoundaryCond::K_EXCHANGE:
      q = (clim(bc, VelClimateCond::C_TEMPER, HEAT_ID) - T) * bc.para[VelBoundaryCond::P_EXCOEFF].value;
      break;
    case VelBoundaryCond::K_EXCHANGE_VEL:
      q = (clim(bc, VelClimateCond::C_TEMPER, HEAT_ID) - T) * heatCoefficient(bc);
      break;
    case VelBoundaryCond::K_HEATPIPE:
      q = heatPipe(term);
      break;
    default:
      throw std::runtime_error(
          "[VelmoraCvodeSolver::boundaryFluxHeatConduction]  Invalid kind type of the boundary condition '" +
          bc.name + "'");
  }
  records_.heatFlux[term.side][VELMORA::HF_CONDUCTION] = q * term.inward;
}

/// Heat [W/m2] from a pipe, by the element's share of its surface, spread over all its sides at the pipe.
double BoundaryFluxes::heatPipe(const Term& term) const {
  const VelBoundaryCond& bc = *term.condition;
  const VELMORA::HeatPipe& pipe = bc.heatPipe;
  const double* share = pipe.share(static_cast<int>(term.element));
  if (share == nullptr)
    throw std::runtime_error(
        "[VelmoraCvodeSolver::boundaryFluxHeatConduction]  angle ration map in heat pipemodel in boundary "
        "condition '" +
        bc.name + "'");
  const double exchange =
      (pipe.supplyTemperature - state_.T[term.element]) * pipe.massFlowCapacity * pipe.efficiency;
  return (exchange + pipe.thermalPower) * *share / (pipe.length * term.contactArea / term.dz);
}

/// Vapour [kg/m2s] and the enthalpy that it carries.
void BoundaryFluxes::vapourDiffusion(const Term& term) {
  if (traits_[term.element].vapourTight) return;
  const VelBoundaryCond& bc = *term.condition;
  const double ambientT = clim(bc, VelClimateCond::C_TEMPER, VAPOUR_ID);
  const double pV = ambientVapourPressure(bc, ambientT);
  const double g = (pV - state_.pV[term.element]) * vapourCoefficient(bc);
  const double upwindT = g > 0.0 ? ambientT : state_.T[term.element];
  records_.moistureFlux[term.side][VELMORA::MF_VAPOUR_DIFFUSION] = g * term.inward;
  records_.heatFlux[term.side][VELMORA::HF_VAPOUR_DIFFUSION] = TKL::h_v(upwindT) * g * term.inward;
}

/// Liquid water [kg/m2s] at a wetted surface and the enthalpy that it carries. A pressure sets in smoothly
/// over two seconds, so that the integrator can start.
void BoundaryFluxes::waterContact(const Term& term, double t) {
  constexpr double PASCAL_PER_METRE = 9806.65;
  constexpr double RAMP = 2.0;  // [s]
  if (traits_[term.element].liquidTight) return;
  const VelBoundaryCond& bc = *term.condition;
  const double ambientT = clim(bc, VelClimateCond::C_TEMPER, WATER_ID);
  double q = 0.0;
  switch (bc.kind) {
    case VelBoundaryCond::K_SURFVAL:
    case VelBoundaryCond::K_HYDROSTATIC: {
      double p = clim(bc, VelClimateCond::C_PREHEAD, WATER_ID) * PASCAL_PER_METRE;
      if (bc.kind == VelBoundaryCond::K_HYDROSTATIC) {
        p -= term.y * 1000.0 * 9.80665;
        if (p < 0.0) return;  // the water stands below the element
      }
      q = waterContactDensity(term, p);
      const double sinceStart = t - term.window.from;
      if (sinceStart < RAMP) q *= TKL::smoothStep(sinceStart * 0.5);
      break;
    }
    case VelBoundaryCond::K_IMPFLUX:
      q = clim(bc, VelClimateCond::C_WATFLUXDENS, WATER_ID);
      break;
    default:
      throw TKL::Exception(
          TKL::FormatString("Invalid kind type for water contact boundary condition '%1'.").arg(bc.name),
          WATER_ID);
  }
  const double upwindT = q > 0.0 ? ambientT : state_.T[term.element];
  records_.moistureFlux[term.side][VELMORA::MF_LIQUID] = q * term.inward;
  records_.heatFlux[term.side][VELMORA::HF_LIQUID] = q * TKL::C_W * upwindT * term.inward;
}

double BoundaryFluxes::waterContactDensity(const Term& term, double pressure) const {
  const ElementTraits& traits = traits_[term.element];
  const MM::MoistureTransport& transport = *traits.transport;
  if (settings_.useKirchhoff) {
    const double content = traits.storage->Thetal_pl(pressure, state_.T[term.element]);
    return 2.0 * (transport.Psi.value(content) - state_.Kirchhoff[term.element]) * term.invDistance;
  }
  if (transport.liquidKind != MM::MoistureTransport::L_KL)
    throw TKL::Exception("Kl(Thetal) function not available!", WATER_ID);
  // half a cell deep, with the mean of the element's and the saturated conductivity
  return (pressure - state_.pCTotal[term.element]) *
         (transport.Kl(state_.Theta[term.element]) + transport.Kl(traits.thetaEff)) * term.invDistance;
}

}  // namespace VELMORA_SOLVER
