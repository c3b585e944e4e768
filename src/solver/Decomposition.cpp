#include "solver/Decomposition.h"

#include <cmath>
#include <stdexcept>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "solver/IceBalance.h"
#include "solver/RangeRestriction.h"

namespace VELMORA_SOLVER {

using MM::MoistureTransport;

namespace {

constexpr double DRIEST_RH = 1e-10;                      // of a material that stores nothing
constexpr double DRIEST_PER_KELVIN = -10635410.2860577;  // [Pa/K] RHO_W R_V ln(1e-10)
constexpr double GRAVITY_REFERENCE_T = 293.15;           // [K] potential of a pressure that has a head
constexpr double LOWEST_T = 124.55;                      // [K] the saturation pressure has no value below
constexpr double HIGHEST_T = 2000.0;                     // [K] a trial state beyond these is wild

}  // namespace

int Decomposition::decompose(std::size_t element, double t) {
  switch (storing_) {
    case BE_ENERGY:
      decomposeH(element);
      return 0;
    case BE_MOISTURE:
      decomposeHM(element, t);  // a shorter step is never asked for without an energy balance
      return 0;
    case BE_ENERGY | BE_MOISTURE:
    case BE_ENERGY | BE_MOISTURE | BE_ICE:
      return decomposeHM(element, t);
    case BE_ENERGY | BE_POLLUTANT:
      decomposeH(element);
      pollutant_->decompose(element, t, state_);
      return 0;
    case BE_ENERGY | BE_MOISTURE | BE_POLLUTANT:
      if (decomposeHM(element, t) != 0) return 1;
      pollutant_->decompose(element, t, state_);
      return 0;
    default:
      throw std::runtime_error(
          "[VelmoraCvodeSolver::extractStateVariables]  Implementation of decomposition algorithm for this "
          "balance equation combination is missing!");
  }
}

void Decomposition::decomposeH(std::size_t e) {
  state_.T[e] = state_.U[e] / (state_.mw[e] * TKL::C_W + state_.rhoCDry[e]);
  state_.lambda[e] = traits_[e].material->conductivity(state_.Theta[e], state_.T[e], 0.0);
}

int Decomposition::decomposeHM(std::size_t e, double t) {
  const ElementTraits& traits = traits_[e];
  SolverState& s = state_;
  if (s.mw[e] < 0.0) s.mw[e] = 0.0;
  s.Theta[e] = s.mw[e] / TKL::RHO_W;
  if (settings_.equations.has(BE_ENERGY))
    s.T[e] = s.U[e] / (s.mw[e] * TKL::C_W + s.rhoCDry[e]);
  else if (s.rhoCDry[e] > 0.0)
    s.T[e] = s.U[e] / s.rhoCDry[e];
  if (!(s.T[e] > LOWEST_T && s.T[e] < HIGHEST_T)) return 1;

  if (traits.isAir) {
    decomposeAir(e);
  } else {
    if (!restrictMoistureRange(static_cast<int>(e), t, settings_.useStrictRangeChecking, traits.thetaMax,
                               s.Theta[e], s.mw[e]))
      return 1;
    if (capillaryState(e) != 0) return 1;
  }
  s.pCTotal[e] -= traits.gravityHead;
  if (!traits.liquidTight) liquidTransport(e);
  if (!traits.vapourTight) s.Kv[e] = traits.transport->Kv(s.Theta[e], s.RH[e]);
  if (settings_.equations.has(BE_ENERGY))
    s.lambda[e] = traits.material->conductivity(s.Theta[e], s.T[e], hasIce_ ? s.rhoIce[e] / TKL::RHO_W : 0.0);
  return 0;
}

/// Pressures and phases in the pores of a material.
/// @return 0, or 1 when no ice density is found
int Decomposition::capillaryState(std::size_t e) {
  const ElementTraits& traits = traits_[e];
  SolverState& s = state_;
  if (traits.storesNothing) {
    s.RH[e] = DRIEST_RH;
    s.pC[e] = s.pCTotal[e] = s.T[e] * DRIEST_PER_KELVIN;
  } else {
    if (!hasIce_)
      s.rhoIce[e] = 0.0;
    else if (freeze(e) != 0)
      return 1;
    s.pCTotal[e] = traits.storage->pl_Thetal(s.Theta[e], s.T[e], s.pCTotal[e]);
    if (s.Theta[e] <= traits.thetaEff) {
      s.pC[e] = s.pCTotal[e];
      s.RH[e] = std::exp(s.pC[e] / (s.T[e] * TKL::RHO_W * TKL::R_V));
    } else {
      s.pC[e] = -1.0;
      s.RH[e] = 1.0;
    }
  }
  s.pV[e] = TKL::pSat(s.T[e]) * s.RH[e];
  s.ThetaAir[e] = traits.thetaPor - s.Theta[e];
  s.rhoVapour[e] = s.ThetaAir[e] * s.pV[e] / (s.T[e] * TKL::R_V);
  s.rhoLiquid[e] = s.mw[e] - s.rhoIce[e] - s.rhoVapour[e];
  return 0;
}

/// In a run with ice: splits the water below the freezing point, which warms the element by the heat of
/// freezing.
/// @return 0, or 1 when no ice density is found
int Decomposition::freeze(std::size_t e) {
  SolverState& s = state_;
  if (s.T[e] >= TKL::T_FREEZE) {
    s.rhoIce[e] = 0.0;
    return 0;
  }
  const IceBalance balance(s.U[e], s.mw[e], s.rhoCDry[e], *traits_[e].storage, traits_[e].risesToSaturation);
  return balance.solve(static_cast<int>(e), s.rhoIce[e], s.T[e]);
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
  if (transport.liquidKind == MoistureTransport::L_KL)
    s.Kl[e] = transport.Kl(s.rhoLiquid[e] / TKL::RHO_W);
  else if (transport.liquidKind == MoistureTransport::L_DL && settings_.useKirchhoff)
    s.Dl[e] = transport.Dl(s.Theta[e]);
  else
    failLiquidFunction(transport, *traits.material);
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
