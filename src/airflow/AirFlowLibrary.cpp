#include "airflow/AirFlowLibrary.h"

#include <algorithm>
#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "material/Material.h"
#include "project/ActivityWindow.h"
#include "project/VelBoundaryCond.h"

namespace VELMORA {

namespace {

constexpr double GRAVITY = 9.807;       // [m/s2]
constexpr double CLOSED_SIDE = 1e-100;  // [s] conductivity of a side that no air passes

const char* const UPDATE_ID = "[AirFlowLibrary::calculateLinearPressureGradient]";
const char* const BUILD_ID = "[AirFlowLibrary::buildAirMatrix]";

std::size_t at(const Element& element) {
  return static_cast<std::size_t>(element.number);
}
std::size_t at(const Side& side) {
  return static_cast<std::size_t>(side.number);
}

bool isClosed(const Element& element) {
  return element.material->isAirTight();
}

double signedSqrt(double x) {
  return x >= 0.0 ? std::sqrt(x) : -std::sqrt(-x);
}

[[noreturn]] void failUndetermined() {
  throw TKL::Exception(
      "Error while decomposition of pressure field update matrix! Zero element found in diagonal!",
      UPDATE_ID);
}

}  // namespace

void AirFlowLibrary::init(int solution, const std::vector<Element>& elements, const std::vector<Side>& sides,
                          int elementBandWidth, bool buoyancy) {
  clear();
  kind = solution;
  elements_ = &elements;
  sides_ = &sides;
  nElements = static_cast<std::uint32_t>(elements.size());
  nSides = static_cast<std::uint32_t>(sides.size());
  useBuoyancy = buoyancy;
  sideResistance.assign(nSides, 0.0);
  kGElement.assign(nElements, 0.0);
  kGSide.assign(nSides, 0.0);
  rhs.assign(nElements, 0.0);
  density_.assign(nElements, 0.0);
  fromOutside_.assign(nElements, 0.0);
  anchored_.assign(nElements, 0);
  const auto bandWidth = static_cast<std::uint32_t>(elementBandWidth);
  matrix_ = TKL::BandMatrix(nElements, bandWidth, bandWidth, std::min(2 * bandWidth, nElements));
}

void AirFlowLibrary::clear() {
  *this = AirFlowLibrary();
}

void AirFlowLibrary::calculate(double time, std::vector<double>& pAir, std::vector<double>& airMassFlux) {
  t = time;
  pAir_ = &pAir;
  airMassFlux_ = &airMassFlux;
  calculateLinearPressureGradient();
}

void AirFlowLibrary::calculateLinearPressureGradient() {
  TKL::message("Updating steady-state pressure field and air fluxes...\n", TKL::MSG_STANDARD, UPDATE_ID, 2);
  ++updateCount;
  if (temperature == nullptr || thetaL == nullptr)
    throw TKL::Exception(
        "Missing input data. Temperature and moisture content field pointers need to be set before calling "
        "the calculation function!",
        UPDATE_ID);
  calculateConductivities();
  for (const Element& e : *elements_) density_[at(e)] = density(e);
  matrix_.zero();
  std::fill(rhs.begin(), rhs.end(), 0.0);
  std::fill(fromOutside_.begin(), fromOutside_.end(), 0.0);
  for (const Element& e : *elements_) {
    if (e.sideLeft != nullptr) buildAirMatrix(e, e.sideLeft->elementLeft, *e.sideLeft, true);
    if (e.sideRight != nullptr) buildAirMatrix(e, e.sideRight->elementRight, *e.sideRight, false);
    if (e.sideTop != nullptr) buildAirMatrix(e, e.sideTop->elementLeft, *e.sideTop, true);
    if (e.sideBottom != nullptr) buildAirMatrix(e, e.sideBottom->elementRight, *e.sideBottom, false);
  }
  if (!anchorPressures()) return;  // pressures and flows stand until an opening acts
  if (matrix_.lu() != 0) failUndetermined();
  matrix_.backsolve(rhs);
  checkPressures();
  for (std::size_t e = 0; e < rhs.size(); ++e) (*pAir_)[e] = rhs[e] + NORMAL_PRESSURE;
  for (const Side& side : *sides_) {
    if (side.elementLeft != nullptr && side.elementRight != nullptr)
      (*airMassFlux_)[at(side)] = innerFlow(side);
    else
      setOuterFlow(side);
  }
}

void AirFlowLibrary::calculateConductivities() {
  for (const Element& e : *elements_)
    kGElement[at(e)] =
        isClosed(e) ? 0.0 : e.material->airTransport[MM::Material::D_U].conductivity((*thetaL)[at(e)]);
  for (const Side& side : *sides_) {
    double& kG = kGSide[at(side)];
    kG = CLOSED_SIDE;
    if (side.elementLeft == nullptr || side.elementRight == nullptr) continue;
    if (isClosed(*side.elementLeft) || isClosed(*side.elementRight)) continue;
    const double left = kGElement[at(*side.elementLeft)];
    const double right = kGElement[at(*side.elementRight)];
    if (left != 0.0 && right != 0.0) kG = left * right / (right * side.weightLeft + side.weightRight * left);
    const double resistance = sideResistance[at(side)];
    if (resistance > 0.0) kG = kG / (kG * resistance * side.invDistance + 1.0);
  }
}

/// Adds one side to the balance of an element. The density takes the right weight with the element itself,
/// whichever side of it is meant; so for unequal heights it is not quite that of the flow.
void AirFlowLibrary::buildAirMatrix(const Element& element, const Element* neighbour, const Side& side,
                                    bool leftOrTop) {
  if (neighbour == nullptr) return addOuterSide(element, side);
  const double c = kGSide[at(side)] * side.area;
  matrix_.at(static_cast<std::uint32_t>(neighbour->number), static_cast<std::uint32_t>(element.number)) +=
      c * side.invDistance;
  addToDiagonal(element, c * side.invDistance);
  if (!side.horizontal || !useBuoyancy) return;
  const double weight =
      (density_[at(element)] * side.weightRight + density_[at(*neighbour)] * side.weightLeft) * c * GRAVITY;
  rhs[at(element)] += leftOrTop ? -weight : weight;
}

void AirFlowLibrary::addOuterSide(const Element& element, const Side& side) {
  if (isClosed(element)) return;
  for (const VelBoundaryCond* condition : side.boundaryConds) {
    if (!acts(*condition)) continue;
    const Climate outside = climateOf(*condition, BUILD_ID);
    const double dp = outside.pressure - NORMAL_PRESSURE;
    double c = 0.0;
    double drive = dp;
    if (condition->kind == VelBoundaryCond::K_EXCHANGE) {
      c = condition->para[VelBoundaryCond::P_EXCOEFF].value * side.area;
    } else {
      c = std::sqrt(2.0 * outside.pressure / (TKL::R_A * outside.temperature)) *
          condition->para[VelBoundaryCond::P_AP_FLOWCOEFF].value * side.area;
      drive = signedSqrt(dp);
    }
    addToDiagonal(element, c);
    fromOutside_[at(element)] += c;
    rhs[at(element)] -= drive * c;
  }
}

void AirFlowLibrary::addToDiagonal(const Element& element, double coefficient) {
  const auto e = static_cast<std::uint32_t>(element.number);
  matrix_.at(e, e) -= coefficient;
}

double AirFlowLibrary::density(const Element& element) const {
  return (*pAir_)[at(element)] / ((*temperature)[at(element)] * TKL::R_A);
}

bool AirFlowLibrary::exchangesAir(const VelBoundaryCond& bc) {
  return bc.condition == VelBoundaryCond::C_AIRPRESS &&
         (bc.kind == VelBoundaryCond::K_EXCHANGE || bc.kind == VelBoundaryCond::K_FLOWCOEFF);
}

bool AirFlowLibrary::acts(const VelBoundaryCond& bc) const {
  return exchangesAir(bc) && ActivityWindow(bc.startTime, bc.endTime).contains(t);
}

AirFlowLibrary::Climate AirFlowLibrary::climateOf(const VelBoundaryCond& bc, const char* functionId) {
  const VelClimateCond* pressure = bc.climate[VelClimateCond::C_GASPRESS];
  const VelClimateCond* air = bc.climate[VelClimateCond::C_TEMPER];
  if (pressure == nullptr)
    throw TKL::Exception("Missing climatic condition CC_GASPRESS for BC '" + bc.name + "'", functionId);
  if (air == nullptr)
    throw TKL::Exception("Missing climatic condition CC_TEMPER for BC '" + bc.name + "'", functionId);
  return {pressure->currentValue, air->currentValue};
}

/// With the densities of the balance, so that the flows of an element sum up to 0.
double AirFlowLibrary::innerFlow(const Side& side) const {
  const Element& left = *side.elementLeft;
  const Element& right = *side.elementRight;
  const double kG = kGSide[at(side)];
  if (isClosed(left) || isClosed(right) || kG <= CLOSED_SIDE) return 0.0;
  // from the differences to the normal pressure, which have the more digits
  double flow = kG * side.area * (rhs[at(left)] - rhs[at(right)]) * side.invDistance;
  if (side.horizontal && useBuoyancy)
    flow += side.area * kG * (density_[at(right)] * side.weightRight + density_[at(left)] * side.weightLeft) *
            GRAVITY;
  return flow;
}

/// The last condition that acts decides. Without one the flow stays what it was.
void AirFlowLibrary::setOuterFlow(const Side& side) {
  const Element& element = side.elementLeft != nullptr ? *side.elementLeft : *side.elementRight;
  for (const VelBoundaryCond* condition : side.boundaryConds)
    if (acts(*condition)) (*airMassFlux_)[at(side)] = isClosed(element) ? 0.0 : outerFlow(*condition, side);
}

double AirFlowLibrary::outerFlow(const VelBoundaryCond& bc, const Side& side) const {
  const Climate outside = climateOf(bc, UPDATE_ID);
  const bool fromOutside = side.elementLeft == nullptr;
  const Element& element = fromOutside ? *side.elementRight : *side.elementLeft;
  const double inward = outside.pressure - NORMAL_PRESSURE - rhs[at(element)];
  const double flow = fromOutside ? inward : -inward;
  if (bc.kind == VelBoundaryCond::K_EXCHANGE)
    return flow * (bc.para[VelBoundaryCond::P_EXCOEFF].value * side.area);
  const double rho = fromOutside ? outside.pressure / (TKL::R_A * outside.temperature) : density(element);
  return signedSqrt(flow) * std::sqrt(2.0 * rho) * bc.para[VelBoundaryCond::P_AP_FLOWCOEFF].value;
}

}  // namespace VELMORA
