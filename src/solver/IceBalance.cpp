#include "solver/IceBalance.h"

#include <algorithm>
#include <cmath>

#include "foundation/Counters.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "foundation/VectorMath.h"

namespace VELMORA_SOLVER {

namespace {

const char* const ICE_ID = "[VelmoraCvodeSolver::decomposeHM_ice]";
constexpr double H_ICE = -232417.0;                // [J/kg] ice of density r adds r (C_ICE T - H_ICE) to U
constexpr double C_DIFF = TKL::C_W - TKL::C_ICE;   // [J/(kg K)]
constexpr double L_MELT_RATE = 1220.940874977119;  // [J/(kg K)] latent heat over the freezing point

constexpr double PL_NEAR_SATURATION = -100.0;  // [Pa] tables of retention curves end here

/// Heat [J/kg] that an element gives off when water freezes in it and its temperature T [K] is to stay.
constexpr double freezingHeat(double T) {
  return H_ICE + C_DIFF * T;
}

[[noreturn]] void failTemperature(const char* reason) {
  throw TKL::Exception(
      std::string("Cannot compute valid rho_ice without dropping into invalid temperature range") + reason,
      ICE_ID);
}

}  // namespace

double IceBalance::temperature(double rhoIce) const {
  return (rhoIce * H_ICE + U_) / ((mw_ - rhoIce) * TKL::C_W + rhoCDry_ + rhoIce * TKL::C_ICE);
}

double IceBalance::equilibriumPressure(double T, double logarithm) {
  const double below = T - TKL::T_FREEZE;
  return ((logarithm * T - below) * C_DIFF + below * L_MELT_RATE) * TKL::RHO_W;
}

/// Liquid water [kg/m3] in equilibrium with ice at two temperatures, whose logarithms take little more than
/// those of one.
std::array<double, 2> IceBalance::liquids(std::array<double, 2> T) const {
  const std::array<double, 2> logs = TKL::logarithms({T[0] / TKL::T_FREEZE, T[1] / TKL::T_FREEZE});
  const std::array<double, 2> pressures{equilibriumPressure(T[0], logs[0]),
                                        equilibriumPressure(T[1], logs[1])};
  const bool isTabulated = storage_.kind == MM::MoistureStorage::K_SPLINE &&
                           pressures[0] < PL_NEAR_SATURATION && pressures[1] < PL_NEAR_SATURATION;
  if (!isTabulated) return {liquidAtPressure(pressures[0], T[0]), liquidAtPressure(pressures[1], T[1])};
  const TKL::LinearSpline& table = storage_.functions[MM::MoistureStorage::F_Theta_pC_de];
  const std::array<double, 2> logpC = TKL::decimalLogarithms({-pressures[0], -pressures[1]});
  return {TKL::RHO_W * table.value(logpC[0]), TKL::RHO_W * table.value(logpC[1])};
}

/// Liquid water [kg/m3] at a pressure [Pa].
double IceBalance::liquidAtPressure(double pressure, double T) const {
  if (rises_ || pressure < PL_NEAR_SATURATION) return TKL::RHO_W * storage_.Thetal_pl(pressure, T);
  const double start = storage_.Thetal_pl(std::nextafter(PL_NEAR_SATURATION, 2.0 * PL_NEAR_SATURATION), T);
  return TKL::RHO_W * (storage_.ThetaEff + (start - storage_.ThetaEff) * pressure / PL_NEAR_SATURATION);
}

bool IceBalance::risesToSaturation(const MM::MoistureStorage& storage) {
  constexpr double STEP = 1.0;  // [Pa]
  double last = storage.Thetal_pl(PL_NEAR_SATURATION - STEP, TKL::T_FREEZE);
  for (double pressure = PL_NEAR_SATURATION; pressure <= 0.0; pressure += STEP) {
    const double next = storage.Thetal_pl(pressure, TKL::T_FREEZE);
    if (!(next >= last)) return false;
    last = next;
  }
  return true;
}

double IceBalance::excess(double rhoIce) const {
  const double T = temperature(rhoIce);
  return excess(rhoIce, liquids({T, T})[0]);
}

double IceBalance::excess(double rhoIce, double liquid) const {
  return rhoIce - std::max(mw_ - liquid, 0.0);
}

int IceBalance::solve(int element, double& rhoIce, double& T) const {
  const double C = mw_ * TKL::C_W + rhoCDry_;
  Search search{};
  search.hi = (C * T_HIGH - U_) / freezingHeat(T_HIGH);
  search.lo = std::max((C * T_LOW - U_) / freezingHeat(T_LOW), 0.0);
  search.r = std::min(std::max(rhoIce, search.lo), search.hi);
  // so close below the freezing point that all ice the energy allows counts as none
  if (search.hi < ICE_TOL) {
    rhoIce = 0.0;
    return 0;
  }
  if (search.lo > mw_) return 1;  // a wild trial state
  int passNumber = 1;
  for (; passNumber <= PASSES; ++passNumber) {
    count(element, passNumber);
    if (pass(search)) break;
  }
  if (passNumber > PASSES) {
    TKL::message("No convergence", TKL::MSG_ERROR, ICE_ID, 1);
    return 1;
  }
  rhoIce = search.r < ICE_TOL ? 0.0 : search.r;
  if (rhoIce > 0.0) T = temperature(rhoIce);
  return 0;
}

void IceBalance::count(int element, int passNumber) {
  constexpr std::uint32_t TOLD_EVERY = 1000000;
  const bool isTold = ++TKL::iceIterationCount % TOLD_EVERY == 0;
  if (isTold || passNumber == WARN_AT_PASS) tell(element, isTold, passNumber == WARN_AT_PASS);
}

/// That many passes were needed in all elements, or in this one.
void IceBalance::tell(int element, bool inAll, bool inThis) {
  if (inAll)
    TKL::message(
        TKL::FormatString("  Total ICE-Decomposition Iterations = %1.").arg(TKL::iceIterationCount).str(),
        TKL::MSG_WARNING, ICE_ID, 1);
  if (inThis)
    TKL::message(TKL::FormatString("Convergence warning in ICE algorithm in element #%1.").arg(element).str(),
                 TKL::MSG_WARNING, ICE_ID, 1);
}

/// Narrows the limits at r and chooses the next r.
/// @return whether r is the result
bool IceBalance::pass(Search& s) const {
  const double T = temperature(s.r);
  if (T < T_LOW) {
    addIce(s);
    return false;
  }
  if (T >= TKL::T_FREEZE) failTemperature(" (T>=273.15).");
  const double h = s.r - ICE_FD_STEP < 0.0 ? ICE_FD_STEP : -ICE_FD_STEP;
  const auto [liquidAtT, liquidNearby] = liquids({T, temperature(s.r + h)});
  if (!(liquidAtT > mw_)) {
    const double F = excess(s.r, liquidAtT);
    return newtonPass(s, F, (excess(s.r + h, liquidNearby) - F) / h);
  }
  // All water may be liquid: the ice must go. F is cut off here and has no slope of use.
  if (s.r < s.hi) {
    if (s.r < ICE_TOL) return true;
    s.hi = s.r;
  }
  s.r = 0.7 * s.lo + 0.3 * s.hi;
  return false;
}

/// Too cold: more water must be frozen.
void IceBalance::addIce(Search& s) const {
  constexpr double STEP = 1.0;  // [kg/m3]
  const double more = std::min(s.r + STEP, s.hi);
  s.lo = more;
  if (mw_ - more < 0.0) failTemperature(".");
  s.r = more;
}

/// @param F      [kg/m3] at r
/// @param slope  of F over r [-]
bool IceBalance::newtonPass(Search& s, double F, double slope) {
  if (F >= 0.0 && s.r < s.hi) s.hi = s.r;
  if (F < 0.0 && s.lo < s.r) s.lo = s.r;
  const double step = F / slope;
  if (std::fabs(step) < ICE_TOL || std::fabs(s.hi - s.lo) < ICE_TOL) return true;
  const double next = s.r - step;
  if (F * step < 0.0)  // the curve falls here: only the signs of F tell where its root is
    s.r = 0.5 * (s.lo + s.hi);
  else if (next < s.lo)
    s.r = 0.6 * s.lo + 0.4 * s.r;
  else if (next > s.hi)
    s.r = 0.6 * s.hi + 0.4 * s.r;
  else
    s.r = next;
  return false;
}

}  // namespace VELMORA_SOLVER
