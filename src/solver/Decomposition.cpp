#include "solver/Decomposition.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "foundation/VectorMath.h"
#include "solver/IceBalance.h"
#include "solver/RangeRestriction.h"

namespace VELMORA_SOLVER {

using MM::MoistureTransport;

namespace {

// A material that stores nothing is as dry as RH = 1e-10.
constexpr double DRIEST_LOG_RH = -23.025850929940457;
constexpr double DRIEST_PER_KELVIN = -10635410.2860577;  // [Pa/K] RHO_W R_V times this logarithm
constexpr double GRAVITY_REFERENCE_T = 293.15;           // [K] potential of a pressure that has a head
constexpr double LOWEST_T = 124.55;                      // [K] the saturation pressure has no value below
constexpr double HIGHEST_T = 2000.0;                     // [K] a trial state beyond these is wild

}  // namespace

void Decomposition::Porous::resize(std::size_t size) {
  element.resize(size);
  for (auto* values : {&T, &logRH, &RH, &pSat}) values->resize(size);
}

Decomposition::Decomposition(const ModelSettings& settings, const std::vector<ElementTraits>& traits,
                             SolverState& state, const PollutantBalance* pollutant)
    : settings_(settings),
      storing_(settings.equations.code & ~BE_AIR),
      hasEnergy_(settings.equations.has(BE_ENERGY)),
      hasIce_(settings.equations.has(BE_ICE)),
      traits_(traits),
      state_(state),
      pollutant_(pollutant) {
  porous_.resize(traits.size());
  done_.resize(traits.size());
}

std::optional<std::size_t> Decomposition::decompose(std::span<const std::uint32_t> elements, double t) {
  std::optional<std::size_t> failed;
  switch (storing_) {
    case BE_ENERGY:
    case BE_ENERGY | BE_POLLUTANT:
      decomposeH(elements);
      break;
    case BE_MOISTURE:
      decomposeHM(elements, t);  // a shorter step is never asked for without an energy balance
      break;
    case BE_ENERGY | BE_MOISTURE:
    case BE_ENERGY | BE_MOISTURE | BE_ICE:
    case BE_ENERGY | BE_MOISTURE | BE_POLLUTANT:
      failed = decomposeHM(elements, t);
      break;
    default:
      throw std::runtime_error(
          "[VelmoraCvodeSolver::extractStateVariables]  Implementation of decomposition algorithm for this "
          "balance equation combination is missing!");
  }
  if (pollutant_ != nullptr && !failed)
    for (const std::uint32_t e : elements) pollutant_->decompose(e, t, state_);
  return failed;
}

void Decomposition::decomposeH(std::span<const std::uint32_t> elements) {
  const double* const U = state_.U.data();
  const double* const mw = state_.mw.data();
  const double* const rhoCDry = state_.rhoCDry.data();
  for (const std::uint32_t e : elements) {
    const double T = U[e] / (mw[e] * TKL::C_W + rhoCDry[e]);
    state_.T[e] = T;
    state_.lambda[e] = traits_[e].material->conductivity(state_.Theta[e], T, 0.0);
  }
}

/// First the pressure of the liquid in each element, then the humidity over it in all, then what depends on
/// both.
std::optional<std::size_t> Decomposition::decomposeHM(std::span<const std::uint32_t> elements, double t) {
  std::optional<std::size_t> failed;
  const double* const U = state_.U.data();
  const double* const rhoCDry = state_.rhoCDry.data();
  double* const mw = state_.mw.data();
  double* const T = state_.T.data();
  double* const Theta = state_.Theta.data();
  porous_.count = 0;
  nDone_ = 0;
  for (const std::uint32_t e : elements) {
    mw[e] = std::max(mw[e], 0.0);  // in this order what is not a number stays so, and is refused
    Theta[e] = mw[e] / TKL::RHO_W;
    if (hasEnergy_)
      T[e] = U[e] / (mw[e] * TKL::C_W + rhoCDry[e]);
    else if (rhoCDry[e] > 0.0)
      T[e] = U[e] / rhoCDry[e];
    const bool found = T[e] > LOWEST_T && T[e] < HIGHEST_T && (traits_[e].isAir || takePorous(e, t));
    if (!found) {
      if (!failed) failed = e;
      if (hasEnergy_) return failed;
      continue;
    }
    if (traits_[e].isAir) decomposeAir(e);
    done_[nDone_++] = e;
  }
  humidities();
  transport();
  return failed;
}

/// Pressure in the pores of a material, and the logarithm of the humidity over it by Kelvin's law.
/// @return false when the content is far out of range or no ice density is found
bool Decomposition::takePorous(std::uint32_t e, double t) {
  const ElementTraits& traits = traits_[e];
  SolverState& s = state_;
  if (!(s.Theta[e] <= traits.thetaMax) &&
      !restrictMoistureRange(static_cast<int>(e), t, settings_.useStrictRangeChecking, traits.thetaMax,
                             s.Theta[e], s.mw[e]))
    return false;
  if (hasIce_ && !traits.storesNothing && !freeze(e)) return false;
  const double Theta = s.Theta[e];
  const double T = s.T[e];
  double p = T * DRIEST_PER_KELVIN;
  double logRH = DRIEST_LOG_RH;
  bool isFull = false;
  if (!traits.storesNothing) {
    p = traits.storage->pl_Thetal(Theta, T, s.pCTotal[e]);
    isFull = Theta > traits.thetaEff;
    logRH = isFull ? 0.0 : p / (T * (TKL::RHO_W * TKL::R_V));
  }
  s.pCTotal[e] = p;
  s.pC[e] = isFull ? -1.0 : p;
  const std::size_t i = porous_.count++;
  porous_.element[i] = e;
  porous_.T[i] = T;
  porous_.logRH[i] = logRH;
  return true;
}

/// Humidities over the liquid in the pores, and the phases.
void Decomposition::humidities() {
  SolverState& s = state_;
  TKL::exponentials(porous_.logRH.data(), porous_.RH.data(), porous_.count);
  TKL::saturationPressures(porous_.T.data(), porous_.pSat.data(), porous_.count);
  for (std::size_t i = 0; i < porous_.count; ++i) {
    const std::size_t e = porous_.element[i];
    const double pV = porous_.pSat[i] * porous_.RH[i];
    const double ThetaAir = traits_[e].thetaPor - s.Theta[e];
    const double rhoVapour = ThetaAir * pV / (porous_.T[i] * TKL::R_V);
    s.RH[e] = porous_.RH[i];
    s.pV[e] = pV;
    s.ThetaAir[e] = ThetaAir;
    s.rhoVapour[e] = rhoVapour;
    s.rhoLiquid[e] = s.mw[e] - s.rhoIce[e] - rhoVapour;
  }
}

/// In a run with ice: splits the water below the freezing point, which warms the element by the heat of
/// freezing.
/// @return false when no ice density is found
bool Decomposition::freeze(std::size_t e) {
  SolverState& s = state_;
  if (s.T[e] >= TKL::T_FREEZE) {
    s.rhoIce[e] = 0.0;
    return true;
  }
  const IceBalance balance(s.U[e], s.mw[e], s.rhoCDry[e], *traits_[e].storage, traits_[e].risesToSaturation);
  return balance.solve(static_cast<int>(e), s.rhoIce[e], s.T[e]) == 0;
}

/// Conductivities and potentials.
void Decomposition::transport() {
  const double* const Theta = state_.Theta.data();
  const double* const T = state_.T.data();
  const double* const RH = state_.RH.data();
  const double* const rhoIce = state_.rhoIce.data();
  double* const pCTotal = state_.pCTotal.data();
  double* const Kv = state_.Kv.data();
  double* const Kirchhoff = state_.Kirchhoff.data();
  double* const lambda = state_.lambda.data();
  for (std::size_t i = 0; i < nDone_; ++i) {
    const std::uint32_t e = done_[i];
    const ElementTraits& traits = traits_[e];
    pCTotal[e] -= traits.gravityHead;
    if (traits.hasPlainPotential)
      Kirchhoff[e] = traits.transport->Psi.value(Theta[e]);
    else if (!traits.liquidTight)
      liquidTransport(e);
    if (!traits.vapourTight) Kv[e] = traits.transport->Kv(Theta[e], RH[e]);
    if (hasEnergy_)
      lambda[e] = traits.material->conductivity(Theta[e], T[e], hasIce_ ? rhoIce[e] / TKL::RHO_W : 0.0);
  }
}

/// A space of air: all its moisture is vapour until it would be full of water.
void Decomposition::decomposeAir(std::size_t e) {
  const ElementTraits& traits = traits_[e];
  SolverState& s = state_;
  if (s.Theta[e] > traits.thetaMax) {
    s.Theta[e] = traits.thetaMax;
    s.mw[e] = traits.thetaMax * TKL::RHO_W;
  }
  const double saturation = TKL::pSat(s.T[e]);
  if (s.Theta[e] < 1.0) {
    s.pV[e] = s.mw[e] * TKL::R_V * s.T[e];
    if (s.pV[e] < saturation) {
      s.RH[e] = s.pV[e] / saturation;
    } else {
      s.pV[e] = saturation;
      s.RH[e] = 1.0;
    }
    s.pC[e] = s.pCTotal[e] = TKL::pCFromRH(s.RH[e], s.T[e]);
    s.ThetaAir[e] = 1.0 - s.Theta[e];
    s.rhoVapour[e] = s.ThetaAir[e] * s.mw[e];
  } else {
    s.pV[e] = saturation;
    s.RH[e] = 1.0;
    s.pC[e] = -1.0;
    s.pCTotal[e] = (s.Theta[e] - 1.0) / traits.storage->slopeOverSaturation;
    s.ThetaAir[e] = 0.0;
    s.rhoVapour[e] = 0.0;
  }
  s.rhoLiquid[e] = s.mw[e] - s.rhoVapour[e];
  s.rhoIce[e] = 0.0;
}

void Decomposition::liquidTransport(std::size_t e) {
  const ElementTraits& traits = traits_[e];
  const MoistureTransport& transport = *traits.transport;
  SolverState& s = state_;
  const bool hasKl = transport.liquidKind == MoistureTransport::L_KL;
  const bool hasDl = transport.liquidKind == MoistureTransport::L_DL && settings_.useKirchhoff;
  if (!hasKl && !hasDl) failLiquidFunction(transport, *traits.material);
  if (traits.needsConductivity) {
    if (hasKl) s.Kl[e] = transport.Kl(s.rhoLiquid[e] / TKL::RHO_W);
    if (hasDl) s.Dl[e] = transport.Dl(s.Theta[e]);
  }
  if (!settings_.useKirchhoff) return;
  // The head makes the potential that of the content which belongs to the whole pressure.
  const double content =
      settings_.useGravity ? traits.storage->Thetal_pl(s.pCTotal[e], GRAVITY_REFERENCE_T) : s.Theta[e];
  s.Kirchhoff[e] = transport.Psi.value(content);
}

void Decomposition::failLiquidFunction(const MoistureTransport& transport, const MM::Material& material) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::decomposeHM]";
  if (transport.liquidKind == MoistureTransport::L_DL)
    throw TKL::Exception(
        TKL::FormatString("Liquid conductivity required for material '%1', because Kirchhoff potential use "
                          "is disabled and only moisture diffusivity is given.")
            .arg(material.name() + " [" + std::to_string(material.id) + "]"),
        FUNC_ID);
  throw TKL::Exception(
      TKL::FormatString("Liquid conductivity required for material '%1', because either Kirchhoff potential "
                        "use is disabled or gravity is included.")
          .arg(material.name()),
      FUNC_ID);
}

}  // namespace VELMORA_SOLVER
