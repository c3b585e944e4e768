#include "solver/FieldFluxes.h"

#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "project/VelContactCond.h"
#include "solver/RangeRestriction.h"

namespace VELMORA_SOLVER {

using VELMORA::VelContactCond;

namespace {

constexpr double CLOSED = 1e20;  // [m/s] a resistance from here on closes a side

/// Exchange coefficient between air at rest and a material.
double exchangeCoefficient(const VelContactCond& contact, const char* functionId) {
  if (contact.kind != VelContactCond::K_EXCHANGE && contact.kind != VelContactCond::K_EXCHANGE_VEL)
    throw TKL::Exception(TKL::FormatString("Invalid/unsupported model type for contact condition '%1' "
                                           "between air and non-air material!")
                             .arg(contact.name),
                         functionId);
  return contact.para[VelContactCond::P_EXCOEFF].value;
}

/// What an air velocity [m/s] adds to it, an unset exponent meaning in proportion.
double byVelocity(const VelContactCond& contact, double velocity) {
  const double slope = contact.para[VelContactCond::P_EXCH_SLOPE].value;
  const TKL::Parameter& exponent = contact.para[VelContactCond::P_EXCH_EXP];
  if (!exponent.isSet() || exponent.value == 1.0) return slope * velocity;
  return slope * std::pow(velocity, exponent.value);
}

}  // namespace

FieldFluxes::FieldFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
                         const std::vector<ElementTraits>& traits, const SolverState& state,
                         FluxRecords& records)
    : settings_(settings), traits_(traits), state_(state), records_(records) {
  for (const VELMORA::Side& side : data.sides)
    if (side.elementLeft != nullptr && side.elementRight != nullptr)
      sides_.push_back(innerSide(side, data.sideQuantities[static_cast<std::size_t>(side.number)]));
}

FieldFluxes::InnerSide FieldFluxes::innerSide(const VELMORA::Side& side,
                                              const VELMORA::SideQuantities& quantities) {
  InnerSide inner;
  inner.side = &side;
  inner.number = static_cast<std::size_t>(side.number);
  inner.left = static_cast<std::size_t>(side.elementLeft->number);
  inner.right = static_cast<std::size_t>(side.elementRight->number);
  inner.weightLeft = side.weightLeft;
  inner.weightRight = side.weightRight;
  inner.area = side.area;
  inner.invDistance = side.invDistance;
  inner.heatResistance = quantities[VelContactCond::P_HEATCONDRES];
  inner.vapourResistance = quantities[VelContactCond::P_VAPDIFFRES];
  inner.liquidResistance = quantities[VelContactCond::P_WATCONDRES];
  const ElementTraits& left = traits_[inner.left];
  const ElementTraits& right = traits_[inner.right];
  const bool airAtMaterial = left.material != right.material && (left.isAir || right.isAir);
  for (const VelContactCond* contact : side.contactConds) {
    if (contact->condition == VelContactCond::C_FOIL_ADAPTIVE) inner.adaptiveFoil = contact;
    if (airAtMaterial && contact->condition == VelContactCond::C_AIR_MAT_HEATCOND) inner.airHeat = contact;
    if (airAtMaterial && contact->condition == VelContactCond::C_AIR_MAT_VAPDIFF) inner.airVapour = contact;
  }
  if (inner.airHeat != nullptr || inner.airVapour != nullptr) addAirSpace(inner);
  inner.vapourOpen = !left.vapourTight && !right.vapourTight && inner.vapourResistance < CLOSED;
  inner.liquidForm = liquidForm(inner);
  return inner;
}

FieldFluxes::LiquidForm FieldFluxes::liquidForm(const InnerSide& side) const {
  const ElementTraits& left = traits_[side.left];
  const ElementTraits& right = traits_[side.right];
  if (left.liquidTight || right.liquidTight || side.liquidResistance >= CLOSED) return LiquidForm::NONE;
  if (!settings_.useKirchhoff || side.liquidResistance > 0.0) return LiquidForm::CONDUCTIVITY;
  return left.material == right.material ? LiquidForm::KIRCHHOFF : LiquidForm::KIRCHHOFF_WITH_JUMP;
}

/// The element of air at a side and the sides by which its velocity is told.
void FieldFluxes::addAirSpace(InnerSide& inner) {
  const VELMORA::Element& air =
      traits_[inner.left].isAir ? *inner.side->elementLeft : *inner.side->elementRight;
  const auto number = [](const VELMORA::Side* side) { return side != nullptr ? side->number : -1; };
  AirSpace space;
  space.element = static_cast<std::size_t>(air.number);
  space.sides = {number(air.sideLeft), number(air.sideRight), number(air.sideTop), number(air.sideBottom)};
  const std::size_t first = inner.side->horizontal ? 2 : 0;
  space.across = {space.sides[first], space.sides[first + 1]};
  inner.air = airSpaces_.size();
  airSpaces_.push_back(space);
}

void FieldFluxes::calculate() {
  if (settings_.equations.has(BE_AIR))
    calculateSides<true>();
  else
    calculateSides<false>();
}

/// @tparam AIR  air flows, which costs nothing where it does not
template <bool AIR>
void FieldFluxes::calculateSides() {
  const bool energy = settings_.equations.has(BE_ENERGY);
  const bool moisture = settings_.equations.has(BE_MOISTURE);
  for (const InnerSide& side : sides_) {
    records_.heatFlux.clear(side.number);
    if (moisture) {
      records_.moistureFlux.clear(side.number);
      moistureFlux<AIR>(side);
    }
    if (energy) energyFlux(side);
    if constexpr (AIR)
      if (energy) airConvection(side);
    if (moisture) {
      records_.moistureFlux.sum(side.number);
      limitOverfilling(side);
    }
    if (energy) records_.heatFlux.sum(side.number);
  }
}

void FieldFluxes::energyFlux(const InnerSide& side) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::fieldFluxEnergy]";
  double* flux = records_.heatFlux[side.number];
  const double dT = state_.T[side.left] - state_.T[side.right];
  if (side.airHeat == nullptr) {
    double lam = state_.lambda[side.left] * side.weightLeft + state_.lambda[side.right] * side.weightRight;
    if (side.heatResistance > 0.0) lam = lam / (side.heatResistance * lam * side.invDistance + 1.0);
    flux[VELMORA::HF_CONDUCTION] = lam * side.area * dT * side.invDistance;
  } else {
    double alpha = exchangeCoefficient(*side.airHeat, FUNC_ID);
    if (dependsOnVelocity(*side.airHeat)) alpha += byVelocity(*side.airHeat, largestAirVelocity(side));
    flux[VELMORA::HF_CONDUCTION] = dT * side.area * alpha;
  }
  if (settings_.equations.has(BE_MOISTURE)) enthalpyFlux(side);
}

/// Enthalpy carried by the mass flows, at the temperature of the element that they come from.
void FieldFluxes::enthalpyFlux(const InnerSide& side) {
  const double* mass = records_.moistureFlux[side.number];
  double* flux = records_.heatFlux[side.number];
  const auto upwindT = [&](double flow) { return state_.T[flow > 0.0 ? side.left : side.right]; };
  const double liquid = mass[VELMORA::MF_LIQUID];
  const double vapour = mass[VELMORA::MF_VAPOUR_DIFFUSION];
  if (liquid != 0.0) flux[VELMORA::HF_LIQUID] = upwindT(liquid) * TKL::C_W * liquid;
  if (vapour != 0.0) flux[VELMORA::HF_VAPOUR_DIFFUSION] = TKL::h_v(upwindT(vapour)) * vapour;
}

template <bool AIR>
void FieldFluxes::moistureFlux(const InnerSide& side) {
  double* flux = records_.moistureFlux[side.number];
  const bool open = side.vapourOpen && vapourFlux(side, flux);
  if constexpr (AIR)
    if (open) vapourConvection(side, flux);
  if (side.liquidForm != LiquidForm::NONE) flux[VELMORA::MF_LIQUID] = liquidFlux(side);
}

/// Diffusion of vapour.
/// @return false for a side that a foil closes at these humidities
bool FieldFluxes::vapourFlux(const InnerSide& side, double* flux) const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::fieldFluxMoisture]";
  double resistance = side.vapourResistance;
  if (side.adaptiveFoil != nullptr) {
    resistance = side.adaptiveFoil->vaporResistance(state_.RH[side.left], state_.RH[side.right],
                                                    side.side->horizontal);
    if (resistance >= CLOSED) return false;
  }
  const double dp = state_.pV[side.left] - state_.pV[side.right];
  if (side.airVapour != nullptr) {
    double beta = exchangeCoefficient(*side.airVapour, FUNC_ID);
    if (dependsOnVelocity(*side.airVapour)) beta += byVelocity(*side.airVapour, meanAirVelocity(side));
    flux[VELMORA::MF_VAPOUR_DIFFUSION] = dp * side.area * beta;
    return true;
  }
  double Kv = state_.Kv[side.left] * side.weightLeft + state_.Kv[side.right] * side.weightRight;
  if (resistance > 0.0) {
    const double x = Kv * resistance * side.invDistance;
    if (x == -1.0) throw TKL::Exception("Invalid parameter in Kv_res", FUNC_ID);
    Kv = Kv / (x + 1.0);
  }
  flux[VELMORA::MF_VAPOUR_DIFFUSION] = Kv * side.area * dp * side.invDistance;
  return true;
}

/// Flow of liquid water [kg/s]. The pressures are negative in an unsaturated material; the flow runs to the
/// lower one.
double FieldFluxes::liquidFlux(const InnerSide& side) const {
  double flow = 0.0;
  if (side.liquidForm == LiquidForm::CONDUCTIVITY) {
    double Kl = state_.Kl[side.left] * side.weightLeft + state_.Kl[side.right] * side.weightRight;
    if (side.liquidResistance > 0.0) Kl = Kl / (side.liquidResistance * Kl * side.invDistance + 1.0);
    flow = (state_.pCTotal[side.left] - state_.pCTotal[side.right]) * Kl * side.area;
  } else {
    const double jump = side.liquidForm == LiquidForm::KIRCHHOFF_WITH_JUMP ? potentialJump(side) : 0.0;
    flow = (state_.Kirchhoff[side.left] - state_.Kirchhoff[side.right] - jump) * side.area;
  }
  return flow * side.invDistance;
}

/// The potentials of two materials are not continuous where they meet, the pressure is: the difference of
/// the potentials at the pressure of the interface.
double FieldFluxes::potentialJump(const InnerSide& side) const {
  const double p =
      side.weightLeft * state_.pCTotal[side.left] + side.weightRight * state_.pCTotal[side.right];
  const double T = side.weightLeft * state_.T[side.left] + side.weightRight * state_.T[side.right];
  const auto potential = [p, T](const ElementTraits& traits) {
    return traits.transport->Psi.value(traits.storage->Thetal_pl(p, T));
  };
  return potential(traits_[side.left]) - potential(traits_[side.right]);
}

void FieldFluxes::limitOverfilling(const InnerSide& side) {
  double* moisture = records_.moistureFlux[side.number];
  if (!settings_.preventOverfilling || moisture[VELMORA::MF_SUM] == 0.0) return;
  const std::size_t receiver = moisture[VELMORA::MF_SUM] > 0.0 ? side.right : side.left;
  const double room = traits_[receiver].thetaMax * TKL::RHO_W - state_.mw[receiver];
  limitFlowsForOverfilling(room, moisture, records_.heatFlux[side.number]);
}

}  // namespace VELMORA_SOLVER
