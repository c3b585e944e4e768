#include "solver/RightHandSide.h"

#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "keywords/KeywordList.h"
#include "material/Material.h"

namespace VELMORA_SOLVER {

using VELMORA::Element;
using VELMORA::KeywordList;
using VELMORA::Side;
using VELMORA::VelBoundaryCond;
using VELMORA::VelContactCond;
using VELMORA::VelFieldCond;

namespace {

constexpr double ACTIVITY_MARGIN = 1e-10;  // [s]

bool isActive(double from, double until, double t) {
  return (from <= t || std::fabs(from - t) <= ACTIVITY_MARGIN) &&
         (t <= until || std::fabs(until - t) <= ACTIVITY_MARGIN);
}

std::size_t index(int number) {
  return static_cast<std::size_t>(number);
}

}  // namespace

RightHandSide::RightHandSide(VELMORA::CalculationData& data, BalanceEquations equations,
                             double startTimeOffset)
    : data_(data), equations_(equations), startTimeOffset_(startTimeOffset) {
  const char* const FUNC_ID = "[RightHandSide::RightHandSide]";
  if (equations_.code != BE_ENERGY)
    throw TKL::Exception(
        "This version of the solver calculates the energy balance alone (BALANCE_EQUATIONS = ENERGY). "
        "Moisture, ice, air and pollutant balances are not available yet.",
        FUNC_ID);
  checkConditions();
  const std::size_t nSides = data_.sides.size();
  const std::size_t nElements = data_.elements.size();
  state.resize(nElements);
  records.heatFlux = RecordArray(nSides, VELMORA::NUM_HF);
  records.moistureFlux = RecordArray(nSides, VELMORA::NUM_MF);
  records.vocFlux = RecordArray(nSides, VELMORA::NUM_VF);
  records.additionalFlux = RecordArray(nSides, VELMORA::NUM_AF);
  records.heatSource = RecordArray(nElements, VELMORA::NUM_HS);
  for (const Element& e : data_.elements) state.rhoCDry[index(e.number)] = e.material->rhoCDry();
  collectInnerSides();
  collectBoundaryTerms();
}

/// Conditions that act on the energy balance but have no formula in this version must not be dropped
/// silently; those that never act on it are ignored.
void RightHandSide::checkConditions() const {
  const char* const FUNC_ID = "[RightHandSide::checkConditions]";
  for (const VelBoundaryCond& bc : data_.boundaryConds) {
    const bool known = bc.condition == VelBoundaryCond::C_HEATCOND && bc.kind != VelBoundaryCond::K_HEATPIPE;
    const bool ignored =
        bc.condition == VelBoundaryCond::C_VAPDIFF || bc.condition == VelBoundaryCond::C_RAIN ||
        bc.condition == VelBoundaryCond::C_WATCONTC || bc.condition == VelBoundaryCond::C_AIRPRESS ||
        bc.condition == VelBoundaryCond::C_VOCDIFF || bc.condition == VelBoundaryCond::C_SOLCONTC ||
        bc.condition == VelBoundaryCond::C_ROOM;
    if (known || ignored) continue;
    if (bc.condition == VelBoundaryCond::NUM_C)
      throw TKL::Exception(TKL::FormatString("Boundary condition '%1' has no TYPE.").arg(bc.name), FUNC_ID);
    throw TKL::Exception(
        TKL::FormatString("Boundary condition '%1': TYPE = %2%3 is not available in this version.")
            .arg(bc.name)
            .arg(KeywordList::Keyword("VelBoundaryCond::condition_t", static_cast<unsigned>(bc.condition)))
            .arg(bc.condition == VelBoundaryCond::C_HEATCOND ? " with KIND = HEATPIPE" : ""),
        FUNC_ID);
  }
  for (const VelFieldCond& fc : data_.fieldConds) {
    const bool ignored =
        fc.condition == VelFieldCond::C_WATSOURCE || fc.condition == VelFieldCond::C_REMWATSOUR ||
        fc.condition == VelFieldCond::C_REMWATSINK || fc.condition == VelFieldCond::C_VOCSOURCE ||
        fc.condition == VelFieldCond::C_VOCADSORPTION || fc.condition == VelFieldCond::C_VOCCHEMISORPTION;
    if (ignored) continue;
    throw TKL::Exception(
        TKL::FormatString("Field condition '%1': TYPE = %2 is not available in this version.")
            .arg(fc.name)
            .arg(KeywordList::Keyword("VelFieldCond::condition_t", static_cast<unsigned>(fc.condition))),
        FUNC_ID);
  }
}

void RightHandSide::collectInnerSides() {
  for (const Side& side : data_.sides) {
    if (side.elementLeft == nullptr || side.elementRight == nullptr) {
      outerSides_.push_back(side.number);
      continue;
    }
    InnerSide inner;
    inner.side = side.number;
    inner.left = side.elementLeft->number;
    inner.right = side.elementRight->number;
    inner.weightLeft = side.weightLeft;
    inner.weightRight = side.weightRight;
    inner.area = side.area;
    inner.invDistance = side.invDistance;
    inner.heatResistance = data_.sideQuantities[index(side.number)][VelContactCond::P_HEATCONDRES];
    const bool airAtMaterial = side.elementLeft->material != side.elementRight->material &&
                               (side.elementLeft->material->isAir() || side.elementRight->material->isAir());
    if (airAtMaterial)
      for (const VelContactCond* contact : side.contactConds)
        if (contact->condition == VelContactCond::C_AIR_MAT_HEATCOND) inner.airContact = contact;
    innerSides_.push_back(inner);
    if (!side.boundaryConds.empty()) internalBoundarySides_.push_back(side.number);
  }
}

void RightHandSide::collectBoundaryTerms() {
  for (const int number : outerSides_) {
    const Side& side = data_.sides[index(number)];
    const Element* element = side.elementLeft != nullptr ? side.elementLeft : side.elementRight;
    for (const VelBoundaryCond* condition : side.boundaryConds) {
      if (condition->condition != VelBoundaryCond::C_HEATCOND) continue;
      BoundaryTerm term;
      term.condition = condition;
      term.side = side.number;
      term.element = element->number;
      term.inward = side.elementLeft != nullptr ? -side.area : side.area;
      term.activeFrom = condition->startTime.isSet() ? condition->startTime.value : 0.0;
      term.activeUntil = condition->endTime.isSet() ? condition->endTime.value : 1e300;
      boundaryTerms_.push_back(term);
    }
  }
}

void RightHandSide::updateClimate(double t) {
  for (auto& climate : data_.climateConds) climate.calcCurrentValue(t + startTimeOffset_);
}

int RightHandSide::extractStateVariables(const double* y) {
  const int n = static_cast<int>(data_.elements.size());
  for (int e = 0; e < n; ++e) {
    state.U[index(e)] = y[e];
    decomposeH(e);
  }
  return 0;
}

void RightHandSide::decomposeH(int element) {
  const std::size_t e = index(element);
  state.T[e] = state.U[e] / (state.mw[e] * TKL::C_W + state.rhoCDry[e]);
  state.lambda[e] = data_.elements[e].material->conductivity(state.Theta[e], state.T[e], 0.0);
}

void RightHandSide::reportInternalBoundaryConditions() const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::calculateFlux]";
  for (std::size_t i = 0; i < internalBoundarySides_.size(); ++i)
    TKL::message("Boundary condition assigned to internal side!", TKL::MSG_ERROR, FUNC_ID, 0);
}

int RightHandSide::calculateFluxesAndSources(double t, const double* y) {
  updateClimate(t);
  const int code = extractStateVariables(y);
  if (code != 0) return code;
  if (!internalBoundarySides_.empty()) reportInternalBoundaryConditions();
  for (const InnerSide& side : innerSides_) {
    records.heatFlux.clear(index(side.side));
    fieldFluxEnergy(side);
    records.heatFlux.sum(index(side.side));
  }
  boundaryFluxes(t);
  records.heatSource.clear();
  return 0;
}

int RightHandSide::calculate(double t, const double* y, double* ydot) {
  const int code = calculateFluxesAndSources(t, y);
  if (code != 0) return code;
  divergence(ydot);
  return 0;
}

void RightHandSide::divergence(double* ydot) const {
  const auto flow = [this](const Side* side) {
    return side != nullptr ? records.heatFlux[index(side->number)][VELMORA::HF_SUM] : 0.0;
  };
  for (const Element& e : data_.elements) {
    const double w = 1.0 / e.volume;
    double rate = 0.0;
    rate += w * flow(e.sideLeft);
    rate += w * flow(e.sideTop);
    rate -= w * flow(e.sideRight);
    rate -= w * flow(e.sideBottom);
    rate += records.heatSource[index(e.number)][VELMORA::HS_SUM];
    ydot[e.number] = rate;
  }
}

void RightHandSide::boundaryFluxes(double t) {
  for (const int number : outerSides_) {
    records.heatFlux.clear(index(number));
    records.moistureFlux.clear(index(number));
    records.vocFlux.clear(index(number));
    records.additionalFlux.clear(index(number));
  }
  // A condition overwrites what an earlier one of the same side has written.
  for (const BoundaryTerm& term : boundaryTerms_)
    if (isActive(term.activeFrom, term.activeUntil, t))
      records.heatFlux[index(term.side)][VELMORA::HF_CONDUCTION] =
          boundaryFluxHeatConduction(term) * term.inward;
  for (const int number : outerSides_) records.heatFlux.sum(index(number));
}

}  // namespace VELMORA_SOLVER
