#include "solver/FieldFluxes.h"

#include <algorithm>
#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "project/VelContactCond.h"
#include "solver/RangeRestriction.h"

namespace VELMORA_SOLVER {

using VELMORA::VelContactCond;

namespace {

const char* const MOISTURE_ID = "[VelmoraCvodeSolver::fieldFluxMoisture]";

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

[[noreturn]] void failSlowing() {
  throw TKL::Exception("Invalid parameter in Kv_res", MOISTURE_ID);
}

/// By how much a resistance slows the vapour, with x = K R / distance.
inline double slowed(double x) {
  if (x == -1.0) failSlowing();
  return x + 1.0;
}

}  // namespace

FieldFluxes::FieldFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
                         const std::vector<ElementTraits>& traits, const SolverState& state,
                         FluxRecords& records)
    : settings_(settings), traits_(traits), state_(state), records_(records) {
  for (const VELMORA::Side& side : data.sides)
    if (side.elementLeft != nullptr && side.elementRight != nullptr)
      sides_.push_back(innerSide(side, data.sideQuantities[static_cast<std::size_t>(side.number)]));
  for (const ElementTraits& element : traits) capacity_.push_back(element.thetaMax * TKL::RHO_W);
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
  inner.areaByDistance = side.area * side.invDistance;
  const double vapourResistance = quantities[VelContactCond::P_VAPDIFFRES];
  const double liquidResistance = quantities[VelContactCond::P_WATCONDRES];
  inner.heatSlowing = std::max(0.0, quantities[VelContactCond::P_HEATCONDRES]) * side.invDistance;
  inner.vapourSlowing = std::max(0.0, vapourResistance) * side.invDistance;
  inner.liquidSlowing = std::max(0.0, liquidResistance) * side.invDistance;
  const ElementTraits& left = traits_[inner.left];
  const ElementTraits& right = traits_[inner.right];
  const bool airAtMaterial = left.material != right.material && (left.isAir || right.isAir);
  for (const VelContactCond* contact : side.contactConds) {
    if (contact->condition == VelContactCond::C_FOIL_ADAPTIVE) inner.adaptiveFoil = contact;
    if (airAtMaterial && contact->condition == VelContactCond::C_AIR_MAT_HEATCOND) inner.airHeat = contact;
    if (airAtMaterial && contact->condition == VelContactCond::C_AIR_MAT_VAPDIFF) inner.airVapour = contact;
  }
  if (inner.airHeat != nullptr || inner.airVapour != nullptr) addAirSpace(inner);
  inner.vapourOpen = !left.vapourTight && !right.vapourTight && vapourResistance < CLOSED;
  inner.liquidForm = liquidForm(inner, liquidResistance);
  inner.isSpecial = inner.airHeat != nullptr || inner.airVapour != nullptr || inner.adaptiveFoil != nullptr ||
                    inner.liquidForm == LiquidForm::CONDUCTIVITY ||
                    inner.liquidForm == LiquidForm::KIRCHHOFF_WITH_JUMP;
  return inner;
}

FieldFluxes::LiquidForm FieldFluxes::liquidForm(const InnerSide& side, double liquidResistance) const {
  const ElementTraits& left = traits_[side.left];
  const ElementTraits& right = traits_[side.right];
  if (left.liquidTight || right.liquidTight || liquidResistance >= CLOSED) return LiquidForm::NONE;
  if (!settings_.useKirchhoff || liquidResistance > 0.0) return LiquidForm::CONDUCTIVITY;
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
  const bool energy = settings_.equations.has(BE_ENERGY);
  const bool moisture = settings_.equations.has(BE_MOISTURE);
  const bool air = settings_.equations.has(BE_AIR);
  if (energy && moisture)
    air ? calculateSides<true, true, true>() : calculateSides<true, true, false>();
  else if (energy)
    air ? calculateSides<true, false, true>() : calculateSides<true, false, false>();
  else if (moisture)
    air ? calculateSides<false, true, true>() : calculateSides<false, true, false>();
  if (!moisture || !settings_.preventOverfilling || !isAnyAlmostFull()) return;
  for (const InnerSide& side : sides_) limitOverfilling(side);
}

/// Conduction, diffusion, the flow of liquid and the vapour in the air that passes, with the enthalpy that
/// they carry. All sides go the same way through the same formulas; the flows of a special side are replaced
/// in between.
template <bool ENERGY, bool MOISTURE, bool AIR>
void FieldFluxes::calculateSides() {
  const double* const T = state_.T.data();
  const double* const lambda = state_.lambda.data();
  const double* const pV = state_.pV.data();
  const double* const Kv = state_.Kv.data();
  const double* const Psi = state_.Kirchhoff.data();
  const double* const pAir = state_.pAir.data();
  const double* const airMassFlux = records_.airMassFlux.data();
  for (const InnerSide& side : sides_) {
    const std::size_t l = side.left;
    const std::size_t r = side.right;
    const auto mean = [&](const double* K) { return K[l] * side.weightLeft + K[r] * side.weightRight; };
    Flows flows;
    if constexpr (ENERGY) {
      const double lam = mean(lambda);
      flows.heat = lam / (side.heatSlowing * lam + 1.0) * side.areaByDistance * (T[l] - T[r]);
    }
    if constexpr (MOISTURE) {
      if (side.vapourOpen) {
        const double K = mean(Kv);
        flows.vapour = K / slowed(side.vapourSlowing * K) * side.areaByDistance * (pV[l] - pV[r]);
      }
      if (side.liquidForm == LiquidForm::KIRCHHOFF) flows.liquid = side.areaByDistance * (Psi[l] - Psi[r]);
    }
    if (side.isSpecial) takeSpecialFlows(side, flows);
    if constexpr (AIR) {
      flows.air = airMassFlux[side.number];
      const std::size_t from = flows.air > 0.0 ? l : r;
      if (MOISTURE && side.vapourOpen && !isClosedByFoil(side))
        flows.airVapour = flows.air * (pV[from] / pAir[from] * (TKL::R_A / TKL::R_V));
    }
    if constexpr (MOISTURE) recordMoisture<AIR>(flows, records_.moistureFlux[side.number]);
    if constexpr (ENERGY) recordHeat<MOISTURE, AIR>(flows, T[l], T[r], records_.heatFlux[side.number]);
  }
}

template <bool AIR>
void FieldFluxes::recordMoisture(const Flows& flows, double* flux) {
  flux[VELMORA::MF_VAPOUR_DIFFUSION] = flows.vapour;
  flux[VELMORA::MF_LIQUID] = flows.liquid;
  flux[VELMORA::MF_SUM] = flows.vapour + flows.liquid;
  if constexpr (!AIR) return;
  flux[VELMORA::MF_VAPOUR_CONVECTION] = flows.airVapour;
  flux[VELMORA::MF_SUM] += flows.airVapour;
}

/// The enthalpy of each flow is that at the temperature of the element that it comes from, left or right.
template <bool MOISTURE, bool AIR>
void FieldFluxes::recordHeat(const Flows& flows, double left, double right, double* flux) {
  flux[VELMORA::HF_CONDUCTION] = flows.heat;
  flux[VELMORA::HF_SUM] = flows.heat;
  if constexpr (MOISTURE) {
    const double liquid = (flows.liquid > 0.0 ? left : right) * TKL::C_W * flows.liquid;
    const double vapour = TKL::h_v(flows.vapour > 0.0 ? left : right) * flows.vapour;
    flux[VELMORA::HF_LIQUID] = liquid;
    flux[VELMORA::HF_VAPOUR_DIFFUSION] = vapour;
    flux[VELMORA::HF_SUM] += liquid + vapour;
  }
  if constexpr (AIR) {
    const double T = flows.air > 0.0 ? left : right;
    const double vapour = TKL::h_v(T) * flows.airVapour;
    const double dryAir = T * TKL::C_A * flows.air;
    flux[VELMORA::HF_VAPOUR_CONVECTION] = vapour;
    flux[VELMORA::HF_AIR] = dryAir;
    flux[VELMORA::HF_SUM] += vapour + dryAir;
  }
}

void FieldFluxes::takeSpecialFlows(const InnerSide& side, Flows& flows) const {
  if (side.airHeat != nullptr && settings_.equations.has(BE_ENERGY)) flows.heat = exchangedHeat(side);
  if (!settings_.equations.has(BE_MOISTURE)) return;
  if (side.vapourOpen) {
    if (side.adaptiveFoil != nullptr) flows.vapour = vapourThroughFoil(side);
    if (side.airVapour != nullptr && !isClosedByFoil(side)) flows.vapour = exchangedVapour(side);
  }
  if (side.liquidForm != LiquidForm::NONE) flows.liquid = specialLiquid(side);
}

/// Between air and a material.
double FieldFluxes::exchangedHeat(const InnerSide& side) const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::fieldFluxEnergy]";
  double alpha = exchangeCoefficient(*side.airHeat, FUNC_ID);
  if (dependsOnVelocity(*side.airHeat)) alpha += byVelocity(*side.airHeat, largestAirVelocity(side));
  return (state_.T[side.left] - state_.T[side.right]) * side.area * alpha;
}

/// Between air and a material.
double FieldFluxes::exchangedVapour(const InnerSide& side) const {
  double beta = exchangeCoefficient(*side.airVapour, MOISTURE_ID);
  if (dependsOnVelocity(*side.airVapour)) beta += byVelocity(*side.airVapour, meanAirVelocity(side));
  return (state_.pV[side.left] - state_.pV[side.right]) * side.area * beta;
}

double FieldFluxes::foilResistance(const InnerSide& side) const {
  return side.adaptiveFoil->vaporResistance(state_.RH[side.left], state_.RH[side.right],
                                            side.side->horizontal);
}

/// Whether an adaptive foil lets nothing through at these humidities.
bool FieldFluxes::isClosedByFoil(const InnerSide& side) const {
  return side.adaptiveFoil != nullptr && foilResistance(side) >= CLOSED;
}

/// The resistance of an adaptive foil stands for those of other contact conditions.
double FieldFluxes::vapourThroughFoil(const InnerSide& side) const {
  const double resistance = foilResistance(side);
  if (resistance >= CLOSED) return 0.0;
  const double Kv = state_.Kv[side.left] * side.weightLeft + state_.Kv[side.right] * side.weightRight;
  return Kv / slowed(std::max(0.0, resistance) * side.invDistance * Kv) * side.areaByDistance *
         (state_.pV[side.left] - state_.pV[side.right]);
}

/// Liquid between two materials or through a resistance [kg/s]. The pressures are negative in an unsaturated
/// material; the flow runs to the lower one.
double FieldFluxes::specialLiquid(const InnerSide& side) const {
  if (side.liquidForm == LiquidForm::CONDUCTIVITY) {
    const double mean = state_.Kl[side.left] * side.weightLeft + state_.Kl[side.right] * side.weightRight;
    const double Kl = mean / (side.liquidSlowing * mean + 1.0);
    return (state_.pCTotal[side.left] - state_.pCTotal[side.right]) * Kl * side.areaByDistance;
  }
  const double jump = side.liquidForm == LiquidForm::KIRCHHOFF_WITH_JUMP ? potentialJump(side) : 0.0;
  return (state_.Kirchhoff[side.left] - state_.Kirchhoff[side.right] - jump) * side.areaByDistance;
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

bool FieldFluxes::isAnyAlmostFull() const {
  const double* const mw = state_.mw.data();
  const double* const capacity = capacity_.data();
  bool any = false;
  for (std::size_t e = 0; e < capacity_.size(); ++e) any |= capacity[e] - mw[e] < OVERFILL_WINDOW;
  return any;
}

void FieldFluxes::limitOverfilling(const InnerSide& side) {
  double* moisture = records_.moistureFlux[side.number];
  const double sum = moisture[VELMORA::MF_SUM];
  const std::size_t receiver = sum > 0.0 ? side.right : side.left;
  const double room = capacity_[receiver] - state_.mw[receiver];
  if (room >= OVERFILL_WINDOW || sum == 0.0) return;
  double* heat = records_.heatFlux[side.number];
  limitFlowsForOverfilling(room, moisture, heat);
  if (settings_.equations.has(BE_ENERGY)) records_.heatFlux.sum(side.number);
}

}  // namespace VELMORA_SOLVER
