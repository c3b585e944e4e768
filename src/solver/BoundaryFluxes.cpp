#include "solver/BoundaryFluxes.h"

#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "solver/RangeRestriction.h"

namespace VELMORA_SOLVER {

using VELMORA::VelBoundaryCond;

BoundaryFluxes::BoundaryFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
                               const std::vector<ElementTraits>& traits, const SolverState& state,
                               FluxRecords& records)
    : settings_(settings), traits_(traits), state_(state), records_(records) {
  warnOfIdleConditions(data);
  for (const VELMORA::Side& side : data.sides)
    if (side.elementLeft == nullptr || side.elementRight == nullptr) collect(side);
  addContactAreas();
}

/// Whether a condition acts on the balance equations of the run; one that does not is ignored.
bool BoundaryFluxes::acts(const VelBoundaryCond& condition) const {
  switch (condition.condition) {
    case VelBoundaryCond::C_HEATCOND:
    case VelBoundaryCond::C_SHWRAD:
    case VelBoundaryCond::C_LOWRAD:
      return settings_.equations.has(BE_ENERGY);
    case VelBoundaryCond::C_VAPDIFF:
    case VelBoundaryCond::C_RAIN:
    case VelBoundaryCond::C_WATCONTC:
      return settings_.equations.has(BE_MOISTURE);
    case VelBoundaryCond::C_AIRPRESS:
      return settings_.equations.has(BE_AIR);
    case VelBoundaryCond::C_VOCDIFF:
      return settings_.equations.has(BE_POLLUTANT);
    default:
      return false;  // no formula in any combination: SOLCONTC, and ROOM without a room
  }
}

/// A condition without a quantity acts on nothing, which is hardly meant.
void BoundaryFluxes::warnOfIdleConditions(const VELMORA::CalculationData& data) {
  const char* const FUNC_ID = "[BoundaryFluxes::BoundaryFluxes]";
  for (const VelBoundaryCond& bc : data.boundaryConds)
    if (bc.condition == VelBoundaryCond::NUM_C)
      TKL::message(TKL::FormatString("Boundary condition '%1' has no TYPE and is ignored.\n").arg(bc.name),
                   TKL::MSG_WARNING, FUNC_ID, -1);
}

void BoundaryFluxes::collect(const VELMORA::Side& side) {
  const VELMORA::Element& element = side.elementLeft != nullptr ? *side.elementLeft : *side.elementRight;
  OuterSide outer;
  outer.number = static_cast<std::size_t>(side.number);
  outer.element = static_cast<std::size_t>(element.number);
  outer.elementIsRight = side.elementLeft == nullptr;
  sides_.push_back(outer);
  for (const VelBoundaryCond* condition : side.boundaryConds) {
    if (!acts(*condition)) continue;
    Term term;
    term.condition = condition;
    term.side = outer.number;
    term.element = outer.element;
    term.inward = outer.elementIsRight ? side.area : -side.area;
    term.invDistance = side.invDistance;
    term.y = element.y;
    term.dz = element.dz;
    term.window = ActivityWindow(condition->startTime, condition->endTime);
    terms_.push_back(term);
  }
}

/// A condition that is assigned to a side twice counts once.
void BoundaryFluxes::addContactAreas() {
  using Place = std::pair<const VelBoundaryCond*, std::size_t>;
  std::set<Place> sides;
  std::map<Place, double> areas;  // by element
  for (const Term& term : terms_)
    if (sides.insert({term.condition, term.side}).second)
      areas[{term.condition, term.element}] += std::fabs(term.inward);
  for (Term& term : terms_) term.contactArea = areas[{term.condition, term.element}];
}

void BoundaryFluxes::calculate(double t) {
  for (const OuterSide& side : sides_) {
    records_.heatFlux.clear(side.number);
    records_.moistureFlux.clear(side.number);
    records_.vocFlux.clear(side.number);
    records_.additionalFlux.clear(side.number);
  }
  for (const Term& term : terms_)
    if (term.window.contains(t)) apply(term, t);
  const bool moisture = settings_.equations.has(BE_MOISTURE);
  const bool energy = settings_.equations.has(BE_ENERGY);
  const bool pollutant = settings_.equations.has(BE_POLLUTANT);
  for (const OuterSide& side : sides_) {
    if (moisture) {
      records_.moistureFlux.sum(side.number);
      limitOverfilling(side);
    }
    if (energy) records_.heatFlux.sum(side.number);
    if (pollutant) records_.vocFlux.sum(side.number);
  }
}

void BoundaryFluxes::apply(const Term& term, double t) {
  switch (term.condition->condition) {
    case VelBoundaryCond::C_HEATCOND:
      return heatConduction(term);
    case VelBoundaryCond::C_VAPDIFF:
      return vapourDiffusion(term);
    case VelBoundaryCond::C_RAIN:
      return rain(term);
    case VelBoundaryCond::C_SHWRAD:
      return shortWaveRadiation(term, t);
    case VelBoundaryCond::C_LOWRAD:
      return longWaveRadiation(term);
    case VelBoundaryCond::C_AIRPRESS:
      return airInfiltration(term);
    case VelBoundaryCond::C_VOCDIFF:
      return pollutantDiffusion(term);
    default:
      return waterContact(term, t);
  }
}

void BoundaryFluxes::limitOverfilling(const OuterSide& side) {
  double* moisture = records_.moistureFlux[side.number];
  const double sum = moisture[VELMORA::MF_SUM];
  if (!settings_.preventOverfilling || sum == 0.0) return;
  if ((sum > 0.0) != side.elementIsRight) return;  // out of the element
  const double room = traits_[side.element].thetaMax * TKL::RHO_W - state_.mw[side.element];
  limitFlowsForOverfilling(room, moisture, records_.heatFlux[side.number]);
}

}  // namespace VELMORA_SOLVER
