#include <algorithm>
#include <cmath>
#include <optional>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "solver/BoundaryClimate.h"
#include "solver/BoundaryFluxes.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;
using VELMORA::VelWallData;

namespace {

const char* const RAIN_ID = "[VelmoraCvodeSolver::boundaryFluxRain]";

/// Share of the horizontal rain that meets a wall in wind: the drops fall slanted, the larger ones less so.
/// @param rain   [kg/m2s] on the horizontal plane
/// @param angle  [Rad] between the wind and the normal of the wall, 0..pi
double drivingRainFactor(double rain, double wind, double angle) {
  constexpr double PI = 3.141592653589793;
  constexpr double SMALLEST_EXPONENT = -700.0;
  if (angle >= PI / 2.0) return 0.0;
  const double perHour = 3600.0 * rain;
  const double exponent = -12.0 / (std::pow(perHour, 0.25) * wind * 5.0);
  if (exponent < SMALLEST_EXPONENT) return 0.0;
  const double wind4 = wind * wind * wind * wind;
  return std::exp(exponent) * std::cos(angle) / std::sqrt(std::sqrt(perHour) * 1142.0 / wind4 + 1.0);
}

/// Rain normal to the surface [kg/m2s] by the horizontal rain and the wind; nothing where a wall has no
/// driving rain.
std::optional<double> standardRain(const VelBoundaryCond& bc) {
  constexpr double PI = 3.141592653589793;
  constexpr double ROOF = 0.7853981633974483;  // [Rad] flatter surfaces take the horizontal rain
  constexpr double CALM = 1e-10;
  const double rain = clim(bc, VelClimateCond::C_HORRAIN, RAIN_ID);
  const double wind = clim(bc, VelClimateCond::C_WINDVEL, RAIN_ID);
  const double direction = clim(bc, VelClimateCond::C_WINDDIR, RAIN_ID);
  const VelWallData& wall = bc.requireWallData(RAIN_ID);
  if (wall.para[VelWallData::P_INCLINATION].value < ROOF) return rain;
  if (rain <= CALM || wind <= CALM) return std::nullopt;
  double angle = std::fabs(wall.para[VelWallData::P_ORIENTATION].value - direction);
  if (angle > PI) angle = 2.0 * PI - angle;
  return drivingRainFactor(rain, wind, angle) * rain;
}

std::optional<double> normalRain(const VelBoundaryCond& bc) {
  if (bc.kind == VelBoundaryCond::K_IMPFLUX) return clim(bc, VelClimateCond::C_NORRAIN, RAIN_ID);
  if (bc.kind == VelBoundaryCond::K_STDRAIN) return standardRain(bc);
  throw TKL::Exception(
      TKL::FormatString("Invalid kind type for wind driven rain boundary condition '%1'.").arg(bc.name),
      RAIN_ID);
}

}  // namespace

/// Driving rain [kg/m2s]: what the surface can take in is absorbed, the rest runs off with the temperature of
/// the surface. Precipitation at a cold air temperature is snow and is dropped.
void BoundaryFluxes::rain(const Term& term) {
  using namespace VELMORA;
  const VelBoundaryCond& bc = *term.condition;
  double* moisture = records_.moistureFlux[term.side];
  double* heat = records_.heatFlux[term.side];
  double* additional = records_.additionalFlux[term.side];
  additional[AF_RAIN] = additional[AF_RUNOFF] = 0.0;
  moisture[MF_LIQUID] = 0.0;
  heat[HF_LIQUID] = heat[HF_RUNOFF] = 0.0;
  const double airT = clim(bc, VelClimateCond::C_TEMPER, RAIN_ID);
  if (airT <= parameter(bc, VelBoundaryCond::P_MINRTEMP)) return;
  const std::optional<double> falling = normalRain(bc);
  if (!falling || *falling <= parameter(bc, VelBoundaryCond::P_MINRFLUX) || !(*falling > 0.0)) return;
  const double r = *falling * parameter(bc, VelBoundaryCond::P_EXPCOEFF);
  const double absorbed = std::min(r, absorbingCapacity(term));
  const double runoff = r - absorbed;
  // near the dew point
  const double rainT = std::pow(clim(bc, VelClimateCond::C_RELHUM, RAIN_ID), 0.1247) * (airT + 109.8) - 109.8;
  const double absorbedEnthalpy = absorbed * TKL::C_W * rainT;
  const double balance = r * TKL::C_W * rainT - absorbedEnthalpy - runoff * TKL::C_W * state_.T[term.element];
  moisture[MF_LIQUID] = absorbed * term.inward;
  heat[HF_LIQUID] = absorbedEnthalpy * term.inward;
  heat[HF_RUNOFF] = balance * term.inward;
  additional[AF_RAIN] = r * std::fabs(term.inward);
  additional[AF_RUNOFF] = runoff * std::fabs(term.inward);
}

/// Liquid [kg/m2s] that a wet surface takes in, from its own content to saturation over half a cell.
double BoundaryFluxes::absorbingCapacity(const Term& term) const {
  const ElementTraits& traits = traits_[term.element];
  if (traits.liquidTight) return 0.0;
  const MM::MoistureTransport& transport = *traits.transport;
  const double Theta = state_.Theta[term.element];
  double capacity = 0.0;
  if (settings_.useKirchhoff) {
    capacity = (transport.Psi.value(traits.thetaEff) - transport.Psi.value(Theta)) * term.invDistance * 2.0;
  } else {
    if (transport.liquidKind != MM::MoistureTransport::L_KL)
      throw TKL::Exception("Kl(Thetal) function not available!", RAIN_ID);
    capacity = (0.5 * transport.Kl(Theta) + 0.5 * transport.Kl(traits.thetaEff)) *
               state_.pCTotal[term.element] * term.invDistance * -2.0;
  }
  return std::max(capacity, 0.0);
}

}  // namespace VELMORA_SOLVER
