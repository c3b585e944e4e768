#include "solver/RightHandSide.h"

#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"

namespace VELMORA_SOLVER {

using VELMORA::Element;
using VELMORA::Side;

namespace {

std::size_t index(int number) {
  return static_cast<std::size_t>(number);
}

const ModelSettings& checked(const ModelSettings& settings) {
  const char* const FUNC_ID = "[RightHandSide::RightHandSide]";
  if (!settings.equations.isValid())
    throw TKL::Exception("This combination of balance equations is invalid or not supported in this solver!",
                         FUNC_ID);
  return settings;
}

std::optional<PollutantBalance> pollutantBalance(const VELMORA::CalculationData& data,
                                                 const ModelSettings& settings,
                                                 const POLLUTANT_LIB::PollutantLibrary* library) {
  const char* const FUNC_ID = "[RightHandSide::RightHandSide]";
  if (!settings.equations.has(BE_POLLUTANT)) return std::nullopt;
  if (library == nullptr) throw TKL::Exception("A pollutant balance needs a pollutant library.", FUNC_ID);
  return PollutantBalance(data, *library);
}

}  // namespace

RightHandSide::RightHandSide(VELMORA::CalculationData& data, const ModelSettings& settings,
                             const POLLUTANT_LIB::PollutantLibrary* pollutants)
    : data_(data),
      settings_(checked(settings)),
      traits_(elementTraits(data, settings)),
      models_(data),
      pollutant_(pollutantBalance(data, settings, pollutants)),
      decomposition_(settings_, traits_, state, pollutant_ ? &*pollutant_ : nullptr),
      fieldFluxes_(data, settings_, traits_, state, records),
      boundaryFluxes_(data, settings_, traits_, state, records),
      sources_(data, settings_, traits_, state, records, models_, pollutant_ ? &*pollutant_ : nullptr) {
  sizeArrays();
  changed_.resize(data_.elements.size());
  if (pollutant_) pollutantFluxes_.emplace(data, settings_, state, records, pollutant_->gasConstant());
  for (const Element& e : data_.elements) {
    if (e.material != nullptr) state.rhoCDry[index(e.number)] = e.material->rhoCDry();
    const auto numberOf = [this](const Side* side) {
      return static_cast<std::uint32_t>(side != nullptr ? index(side->number) : data_.sides.size());
    };
    sideNumbers_.push_back(
        {numberOf(e.sideLeft), numberOf(e.sideTop), numberOf(e.sideRight), numberOf(e.sideBottom)});
    if (e.sideTop != nullptr || e.sideBottom != nullptr) hasHorizontalSides_ = true;
    invVolume_.push_back(1.0 / e.volume);
  }
  for (const Side& side : data_.sides)
    if (side.elementLeft != nullptr && side.elementRight != nullptr && !side.boundaryConds.empty())
      ++nInternalBoundarySides_;
}

void RightHandSide::sizeArrays() {
  const std::size_t nSides = data_.sides.size();
  const std::size_t nElements = data_.elements.size();
  state.resize(nElements);
  records.heatFlux = RecordArray(nSides, VELMORA::NUM_HF);
  records.moistureFlux = RecordArray(nSides, VELMORA::NUM_MF);
  records.vocFlux = RecordArray(nSides, VELMORA::NUM_VF);
  records.additionalFlux = RecordArray(nSides, VELMORA::NUM_AF);
  records.heatSource = RecordArray(nElements, VELMORA::NUM_HS);
  records.moistureSource = RecordArray(nElements, VELMORA::NUM_MS);
  records.airMassFlux.assign(nSides, 0.0);
  for (auto* values : {&records.airFlowEnthalpyIn, &records.airFlowEnthalpyOut,
                       &records.convectiveMoistureSource, &records.convectiveAirFlow})
    values->assign(nElements, 0.0);
  if (!pollutant_) return;
  state.resizePollutant(nElements);
  records.vocSource1 = RecordArray(nElements, VELMORA::NUM_VS1);
  records.vocSource2 = RecordArray(nElements, VELMORA::NUM_VS2);
}

void RightHandSide::updateClimate(double t) {
  for (auto& climate : data_.climateConds) climate.calcCurrentValue(t + settings_.startTimeOffset);
}

int RightHandSide::calculate(double t, const double* y, double* ydot) {
  const int code = calculateFluxesAndSources(t, y);
  if (code != 0) return code;
  int position = 0;
  if (settings_.equations.has(BE_ENERGY)) divergence(records.heatFlux, records.heatSource, position++, ydot);
  if (settings_.equations.has(BE_MOISTURE))
    divergence(records.moistureFlux, records.moistureSource, position++, ydot);
  if (pollutant_) pollutantRates(position, ydot);
  return 0;
}

void RightHandSide::turnIncrements(std::span<double> increments) const {
  constexpr double NEAR = 0.01;  // [K], far more than any increment
  if (!settings_.equations.has(BE_ENERGY)) return;
  const bool moisture = settings_.equations.has(BE_MOISTURE);
  const std::size_t nEquations = index(settings_.equations.nEquationsPerElement);
  for (std::size_t e = 0; e < data_.elements.size(); ++e) {
    const double above = state.T[e] - TKL::T_FREEZE;
    if (std::fabs(above) > NEAR) continue;
    double* const increment = increments.data() + e * nEquations;
    // energy warms; water that shares the energy cools, unless there is none to be taken away
    if (above < 0.0)
      increment[0] = -increment[0];
    else if (moisture && increment[1] < state.mw[e])
      increment[1] = -increment[1];
  }
}

int RightHandSide::calculateFluxesAndSources(double t, const double* y) {
  updateClimate(t);
  const int code = extractStateVariables(t, y);
  if (code != 0) return code;
  models_.updateConductivities(t, state.T, state.lambda);
  for (auto& condition : data_.boundaryConds) condition.update(state.T);
  if (nInternalBoundarySides_ > 0) reportInternalBoundaryConditions();
  fieldFluxes_.calculate();
  boundaryFluxes_.calculate(t);
  if (pollutantFluxes_) pollutantFluxes_->calculate();
  sources_.calculate(t);
  return 0;
}

/// Takes the conserved quantities out of the state vector and collects the elements where one has changed.
template <std::size_t N>
void RightHandSide::takeConserved(const std::array<double*, N>& arrays, const double* y) {
  const std::size_t nElements = data_.elements.size();
  std::uint8_t* const decomposed = state.decomposed.data();
  std::uint32_t* const changedElements = changed_.data();
  std::size_t nChanged = 0;
  for (std::size_t e = 0; e < nElements; ++e, y += N) {
    bool changed = N == 1 || decomposed[e] == 0;
    for (std::size_t k = 0; k < N; ++k) {
      changed |= y[k] != arrays[k][e];
      arrays[k][e] = y[k];
    }
    if (!changed) continue;
    changedElements[nChanged++] = static_cast<std::uint32_t>(e);
    decomposed[e] = 0;
  }
  nChanged_ = nChanged;
}

/// Decomposes all elements. An element whose state has not changed since its last decomposition is left as it
/// is, if it has more than one state variable.
int RightHandSide::extractStateVariables(double t, const double* y) {
  double* const U = state.U.data();
  double* const mw = state.mw.data();
  const bool energy = settings_.equations.has(BE_ENERGY);
  const bool moisture = settings_.equations.has(BE_MOISTURE);
  if (pollutant_ && moisture)
    takeConserved<4>({U, mw, state.mVOC1.data(), state.mVOC2.data()}, y);
  else if (pollutant_)
    takeConserved<3>({U, state.mVOC1.data(), state.mVOC2.data()}, y);
  else if (energy && moisture)
    takeConserved<2>({U, mw}, y);
  else
    takeConserved<1>({energy ? U : mw}, y);
  const std::span<const std::uint32_t> changed(changed_.data(), nChanged_);
  if (const auto failed = decomposition_.decompose(changed, t)) return reportFailed(data_.elements[*failed]);
  for (const std::uint32_t e : changed) state.decomposed[e] = 1;
  return 0;
}

/// Tells that the integrator is asked for a shorter step.
int RightHandSide::reportFailed(const Element& element) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::extractStateVariables]";
  constexpr int RECOVERABLE = 1;
  TKL::message(TKL::FormatString("Decomposition algorithm reported recoverable error: %1 (time step too "
                                 "large?) in element %2 (coordinates: %3, %4)!\n")
                   .arg(RECOVERABLE)
                   .arg(element.number)
                   .arg(element.x)
                   .arg(element.y),
               TKL::MSG_ERROR, FUNC_ID, 1);
  return RECOVERABLE;
}

void RightHandSide::reportInternalBoundaryConditions() const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::calculateFlux]";
  for (int i = 0; i < nInternalBoundarySides_; ++i)
    TKL::message("Boundary condition assigned to internal side!", TKL::MSG_ERROR, FUNC_ID, 0);
}

/// Derivatives of the two masses of a pollutant, the first of which is at `position`. The second one does not
/// move.
void RightHandSide::pollutantRates(int position, double* ydot) const {
  divergence(records.vocFlux, records.vocSource1, position, ydot);
  const std::size_t nEquations = index(settings_.equations.nEquationsPerElement);
  for (std::size_t e = 0; e < data_.elements.size(); ++e)
    ydot[e * nEquations + index(position) + 1] = records.vocSource2[e][0];
}

/// Derivatives of the conserved quantity at `position` among those of an element.
void RightHandSide::divergence(const RecordArray& fluxes, const RecordArray& sources, int position,
                               double* ydot) const {
  const std::size_t nEquations = index(settings_.equations.nEquationsPerElement);
  const std::size_t nElements = invVolume_.size();
  const bool hasHorizontalSides = hasHorizontalSides_;
  const SideNumbers* const sideNumbers = sideNumbers_.data();
  const double* const invVolume = invVolume_.data();
  double* rate = ydot + position;
  for (std::size_t e = 0; e < nElements; ++e, rate += nEquations) {
    const SideNumbers& sides = sideNumbers[e];
    double inflow = fluxes[sides.left][0] - fluxes[sides.right][0];
    if (hasHorizontalSides) inflow += fluxes[sides.top][0] - fluxes[sides.bottom][0];
    *rate = invVolume[e] * inflow + sources[e][0];
  }
}

}  // namespace VELMORA_SOLVER
