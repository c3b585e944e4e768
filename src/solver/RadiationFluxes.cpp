#include <cmath>
#include <stdexcept>

#include "foundation/PhysicalConstants.h"
#include "solver/BoundaryClimate.h"
#include "solver/BoundaryFluxes.h"
#include "solver/SolarGeometry.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;
using VELMORA::VelWallData;

namespace {

const char* const SHORT_WAVE_ID = "[VelmoraCvodeSolver::boundaryFluxShWRad]";
const char* const LONG_WAVE_ID = "[VelmoraCvodeSolver::boundaryFluxLoWRad]";
const char* const GLOBAL_ID = "[VelmoraCvodeSolver::calculateGlobalRad]";

/// Both kinds of radiation report under the short-wave function.
[[noreturn]] void failKind(const VelBoundaryCond& bc) {
  throw std::runtime_error(
      "[VelmoraCvodeSolver::boundaryFluxShWRad]  Invalid kind type of the boundary condition '" + bc.name +
      "'");
}

double pow4(double T) {
  return T * T * T * T;
}

/// Squares of the cosine and the sine of half the inclination: shares of sky and ground in the view.
struct View {
  double sky;
  double ground;
};

View viewOf(double inclination) {
  const double c = std::cos(inclination / 2.0), s = std::sin(inclination / 2.0);
  return {c * c, s * s};
}

/// Long-wave radiation of the sky against that of the surface [W/m2], before emissivity and view.
double skyBalance(const VelBoundaryCond& bc, double T) {
  double sky = 1.0, cloud = 1.0;
  if (bc.flags[VelBoundaryCond::F_INCLUDE_RH_CLOUD]) {
    const double airT = clim(bc, VelClimateCond::C_TEMPER, LONG_WAVE_ID);
    const double RH = clim(bc, VelClimateCond::C_RELHUM, LONG_WAVE_ID);
    const double cover = clim(bc, VelClimateCond::C_CLOUDCOV, LONG_WAVE_ID);
    sky = 0.82 - 0.25 * std::exp(-0.00075006 * TKL::pSat(airT) * RH);
    cloud = 1.0 + 0.2 * cover * cover;
  }
  return TKL::SIGMA * (pow4(clim(bc, VelClimateCond::C_SKYTEMP, LONG_WAVE_ID)) * sky * cloud - pow4(T));
}

}  // namespace

/// Global radiation on the surface of a condition [W/m2] at time t [s].
double BoundaryFluxes::calculateGlobalRad(const VelBoundaryCond& bc, double t) const {
  const double direct = clim(bc, VelClimateCond::C_DIRRAD, GLOBAL_ID);
  const double diffuse = clim(bc, VelClimateCond::C_DIFRAD, GLOBAL_ID);
  const VelWallData& wall = bc.requireWallData(GLOBAL_ID);
  const double inclination = wall.para[VelWallData::P_INCLINATION].value;
  if (inclination == 0.0) return direct + diffuse;
  double ts = t + settings_.startTimeOffset;
  const TKL::Parameter& longitude = wall.para[VelWallData::P_LONGITUDE];
  if (longitude.isSet() && wall.para[VelWallData::P_TIMEZONE].isSet())
    ts = trueSolarTime(ts, longitude.value, wall.timeZone());
  const double ratio = directRadiationRatio(inclination, wall.para[VelWallData::P_ORIENTATION].value,
                                            wall.para[VelWallData::P_LATITUDE].value, dayOfYear(ts));
  const View view = viewOf(inclination);
  return diffuse * view.sky + parameter(bc, VelBoundaryCond::P_GRDREFLE) * (direct + diffuse) * view.ground +
         ratio * direct;
}

/// Short-wave radiation [W/m2], or the yield of a solar collector.
void BoundaryFluxes::shortWaveRadiation(const Term& term, double t) {
  const VelBoundaryCond& bc = *term.condition;
  const double absorption = parameter(bc, VelBoundaryCond::P_SURABSOR);
  double q = 0.0;
  switch (bc.kind) {
    case VelBoundaryCond::K_IMPFLUX:
      if (absorption != 0.0) q = absorption * clim(bc, VelClimateCond::C_SHWRAD, SHORT_WAVE_ID);
      break;
    case VelBoundaryCond::K_SUNRADM:
      if (absorption != 0.0) q = absorption * calculateGlobalRad(bc, t);
      break;
    case VelBoundaryCond::K_SOLARCOLL: {
      const double d = state_.T[term.element] - clim(bc, VelClimateCond::C_TEMPER, SHORT_WAVE_ID);
      q = calculateGlobalRad(bc, t) * parameter(bc, VelBoundaryCond::P_SOLAR_ETA0) -
          (d * parameter(bc, VelBoundaryCond::P_SOLAR_K1) * d +
           d * parameter(bc, VelBoundaryCond::P_SOLAR_K0));
      break;
    }
    default:
      failKind(bc);
  }
  records_.heatFlux[term.side][VELMORA::HF_INFILTRATION_SHORTWAVE] = q * term.inward;
}

/// Long-wave exchange with the sky and, on request, with the ground [W/m2].
void BoundaryFluxes::longWaveRadiation(const Term& term) {
  const VelBoundaryCond& bc = *term.condition;
  const double emissivity = parameter(bc, VelBoundaryCond::P_SUREMISS);
  double* slot = &records_.heatFlux[term.side][VELMORA::HF_LONGWAVE];
  *slot = 0.0;
  if (emissivity == 0.0) return;
  if (bc.kind == VelBoundaryCond::K_IMPFLUX) {
    *slot = emissivity * clim(bc, VelClimateCond::C_LOWRAD, LONG_WAVE_ID) * term.inward;
    return;
  }
  const double T = state_.T[term.element];
  const VelWallData& wall = bc.requireWallData(LONG_WAVE_ID);
  const View view = viewOf(wall.para[VelWallData::P_INCLINATION].value);
  const double groundEmissivity = parameter(bc, VelBoundaryCond::P_GRDEMISS);
  const double skyPart = view.sky * emissivity;
  const double groundPart =
      groundEmissivity > 0.0 ? view.ground / (1.0 / groundEmissivity + 1.0 / emissivity - 1.0) : 0.0;
  const bool ground = bc.flags[VelBoundaryCond::F_INCLUDE_GROUND];
  double q = 0.0;
  if (bc.kind == VelBoundaryCond::K_LRADCOMP) {
    const double own = TKL::SIGMA * pow4(T);
    q = (std::fabs(clim(bc, VelClimateCond::C_SKYEMISS, LONG_WAVE_ID)) - own) * skyPart;
    if (ground) q += (std::fabs(clim(bc, VelClimateCond::C_GRNDEMISS, LONG_WAVE_ID)) - own) * groundPart;
  } else if (bc.kind == VelBoundaryCond::K_BOLTZMAN) {
    q = skyPart * skyBalance(bc, T);
    if (ground)
      q += groundPart * TKL::SIGMA * (pow4(clim(bc, VelClimateCond::C_GRNDTEMP, LONG_WAVE_ID)) - pow4(T));
  } else {
    failKind(bc);
  }
  *slot = q * term.inward;
}

}  // namespace VELMORA_SOLVER
