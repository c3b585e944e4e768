#include "solver/Sources.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace VELMORA_SOLVER {

using VELMORA::Element;
using VELMORA::VelFieldCond;

Sources::Sources(VELMORA::CalculationData& data, const ModelSettings& settings,
                 const std::vector<ElementTraits>& traits, const SolverState& state, FluxRecords& records,
                 VELMORA::FieldModels& models, const PollutantBalance* pollutant)
    : data_(data),
      settings_(settings),
      traits_(traits),
      state_(state),
      records_(records),
      models_(models),
      pollutant_(pollutant) {
  for (const Element& element : data_.elements)
    for (const VelFieldCond* condition : element.fieldConds) {
      Term term;
      term.condition = condition;
      term.element = &element;
      term.number = static_cast<std::size_t>(element.number);
      term.window = ActivityWindow(condition->startTime, condition->endTime);
      term.leak = models.leakOf(*condition);
      term.radiationDirection = models.radiationDirectionOf(*condition);
      terms_.push_back(term);
    }
}

void Sources::calculate(double t) {
  if (terms_.empty()) return;  // nothing writes to the arrays below: they stay 0
  records_.heatSource.clear();
  records_.moistureSource.clear();
  records_.vocSource1.clear();
  records_.vocSource2.clear();
  for (auto* values : {&records_.airFlowEnthalpyIn, &records_.airFlowEnthalpyOut,
                       &records_.convectiveMoistureSource, &records_.convectiveAirFlow})
    std::fill(values->begin(), values->end(), 0.0);
  updateConditions(t);
  const bool energy = settings_.equations.has(BE_ENERGY);
  const bool moisture = settings_.equations.has(BE_MOISTURE);
  const bool pollutant = settings_.equations.has(BE_POLLUTANT);
  for (const Term& term : terms_) {
    if (!term.window.contains(t)) continue;
    if (energy) heatSource(term);
    if (moisture) {
      const MoistureSource source = moistureSource(term);
      records_.moistureSource[term.number][VELMORA::MS_MOISTURE] += source.mass;
      if (energy) records_.heatSource[term.number][VELMORA::HS_MOISTURE_ENTHALPY] += source.energy;
    }
    if (pollutant) pollutantSource(term);
  }
  // An exchange across a gap writes to two elements, so the sums come last.
  for (std::size_t e = 0; e < data_.elements.size(); ++e) {
    if (energy) records_.heatSource.sum(e);
    if (moisture) records_.moistureSource.sum(e);
    if (!pollutant) continue;
    records_.vocSource1.sum(e);
    records_.vocSource2.sum(e);
  }
}

/// Means over the elements of every condition, before the first source needs those of another; then the
/// leaks.
void Sources::updateConditions(double t) {
  for (VelFieldCond& condition : data_.fieldConds) {
    condition.meanTemperature =
        condition.volumeMean(data_.elements, [this](std::size_t e) { return state_.T[e]; });
    condition.meanSaturation =
        condition.volumeMean(data_.elements, [this](std::size_t e) { return saturation(e); });
  }
  models_.updateLeaks(t, state_.T);
}

/// Air changes [1/s] that a field condition tells, by its rate or by its flow.
double Sources::airChangeRate(const VelFieldCond& fc, const char* functionId) {
  using VELMORA::VelClimateCond;
  if (!fc.flags[VelFieldCond::F_USE_FLOWRATE])
    return fc.requireClimate(VelClimateCond::C_AIRCHANGERATE, functionId).currentValue;
  return fc.requireClimate(VelClimateCond::C_AIRFLOWRATE, functionId).currentValue / fc.volume;
}

/// Moisture content by effective saturation [-], 0 for a material that has none.
double Sources::saturation(std::size_t element) const {
  const double thetaEff = traits_[element].material->thetaEff();
  return thetaEff > 0.0 ? state_.Theta[element] / thetaEff : 0.0;
}

/// The flow runs in the direction of `FLOW_DIRECTION`: to the left, right, top or bottom.
Sources::Upstream Sources::upstream(const Term& term) {
  const char* const FUNC_ID = "[Sources::upstream]";
  const Element& e = *term.element;
  const VELMORA::Side* side = nullptr;
  const double given = term.condition->para[VelFieldCond::P_FLOW_DIRECTION].value;
  if (!(given > -1.0 && given < 4.0))  // true for "not a number" as well
    throw TKL::Exception(TKL::FormatString("Field condition '%1': FLOW_DIRECTION must be 0, 1, 2 or 3.")
                             .arg(term.condition->name),
                         FUNC_ID);
  const auto direction = static_cast<int>(given);
  const bool alongX = direction == 0 || direction == 1;
  const bool fromRightOrBelow = direction == 0 || direction == 2;
  if (alongX)
    side = fromRightOrBelow ? e.sideRight : e.sideLeft;
  else
    side = fromRightOrBelow ? e.sideBottom : e.sideTop;
  Upstream result;
  result.length = alongX ? e.dx : e.dy;
  if (side != nullptr) result.element = fromRightOrBelow ? side->elementRight : side->elementLeft;
  return result;
}

}  // namespace VELMORA_SOLVER
