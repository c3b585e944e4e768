#include <algorithm>
#include <cmath>
#include <iomanip>
#include <numeric>
#include <sstream>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/Material.h"
#include "solver/StopRequest.h"
#include "solver/VectorOperations.h"
#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_SOLVER {

namespace {

const char* const STEP_ID = "[VelmoraCvodeSolver::runStep]";
constexpr double TIMED_FEEDBACK = 15.0;  // [s] of real time

[[noreturn]] void fail(const std::string& text) {
  throw TKL::Exception(text, STEP_ID);
}

}  // namespace

void VelmoraCvodeSolver::run() {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::run]  ";
  try {
    if (!initialized) throw TKL::Exception("Solver not initialized!", FUNC_ID);
    initStep();
    runStep(tEnd_, false);
    closeFiles();
  } catch (const std::exception& ex) {
    TKL::message(ex.what(), TKL::MSG_ERROR, FUNC_ID, -1);
    try {
      flushRestartFiles();
    } catch (const std::exception& second) {
      TKL::message(second.what(), TKL::MSG_ERROR, FUNC_ID, -1);
    }
    throw TKL::Exception("Simulation stopped!", FUNC_ID);
  }
}

void VelmoraCvodeSolver::initStep() {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::initStep]";
  if (!initialized) throw TKL::Exception("Solver not initialized!", FUNC_ID);
  feedback.start();
  if (equations_.has(BE_AIR)) {
    rhs_->updateClimate(t);
    rhs_->calculateFluxesAndSources(t, integrator_.state().data());
    updateAirFlow(t);
  }
  rhs_->calculateFluxesAndSources(t, integrator_.state().data());
  if (flags_.restart)
    resumeOutputs();
  else
    writeOutput(t);
  stopwatch.start();
}

void VelmoraCvodeSolver::runStep(double tStop, bool restart) {
  if (!initialized) fail("Solver not initialized!");
  const auto y = integrator_.state();
  const auto saved = integrator_.saved();
  if (restart) {
    t = tSaved_;
    freezeThaw_.setClock(t);
    std::copy(saved.begin(), saved.end(), y.begin());
    const int flag = integrator_.reinitialise(t, tolerance_.relTol);
    if (flag != 0)
      throw TKL::Exception(
          TKL::FormatString("Error during re-initialization of CVODE solver, error code = %1.").arg(flag),
          STEP_ID);
  } else {
    std::copy(y.begin(), y.end(), saved.begin());
    tSaved_ = t;
  }
  try {
    tEnd_ = tStop >= 0.0 ? tStop : init_.duration.value;
    tStart_ = t;
    tolerance_.startAt(t);
    nextOutputTime_ = outputs_->schedule().reach(t, tEnd_);
    feedback.nextRealTime = stopwatch.difference() / 1000.0 + TIMED_FEEDBACK;
    while (tEnd_ > t) step();
  } catch (const std::exception& ex) {
    TKL::message(ex.what(), TKL::MSG_ERROR, STEP_ID, -1);
    TKL::message(
        TKL::FormatString("Simulation aborted before reaching next output time : %1 s").arg(nextOutputTime_),
        TKL::MSG_ERROR, STEP_ID, -1);
    fail("Solver aborted!");
  }
}

int VelmoraCvodeSolver::calculate(double time, const double* y, double* ydot) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::calculate]";
  constexpr int NOT_A_NUMBER = 1;  // a smaller step may help
  const std::span<const double> state(y, integrator_.state().size());
  if (!allFinite(state)) {
    notFinite_ = findNotFinite(state, {}, rhs_->state, equations_);
    return NOT_A_NUMBER;
  }
  const int code = rhs_->calculate(time, y, ydot);
  if (code != 0) return code;
  const std::span<const double> rate(ydot, state.size());
  if (!allFinite(rate)) {
    notFinite_ = findNotFinite(state, rate, rhs_->state, equations_);
    return NOT_A_NUMBER;
  }
  if (flags_.verbosity > 3 && !feedback.quiet) {
    std::ostringstream text;
    text << std::setprecision(14) << "t = " << time << " s, dt = " << integrator_.lastStepSize() << " s\n";
    TKL::message(text.str(), TKL::MSG_PROGRESS, FUNC_ID, 4);
  }
  return 0;
}

void VelmoraCvodeSolver::step() {
  updateAirFlow(t);
  const int flag = integrator_.step(tEnd_, t);
  const double h = integrator_.lastStepSize();
  if (stopRequested()) abortRequested = true;
  if (abortRequested) abortBehindStep(flag, h);
  timedFeedback();
  if (flag < 0) {
    handleFailedStep(flag);
    return;
  }
  notFinite_.reset();
  const auto& settings = init_.solverSettings.cvodeSettings;
  if (settings.useMonitorsFile && settings.useOneStepMonitors)
    monitors_.write(integrator_.statistics(), tolerance_.relTol, airFlow_.updateCount);
  finishStep(h);
  // A re-initialisation forgets the last step, which the outputs inside it need: it waits for a step
  // without outputs.
  if (tolerance_.toleranceLevel > 0 && t < nextOutputTime_) adjustTolerances(false);
  serveOutputTimes(true);
}

/// Ends the run. What lies inside the last step is written first, for the run that goes on begins behind it.
void VelmoraCvodeSolver::abortBehindStep(int flag, double h) {
  const bool outputsInside = flag >= 0 && t >= nextOutputTime_;
  if (flag >= 0) finishStep(h);
  if (outputsInside)
    serveOutputTimes(false);
  else
    writeRestartFile(nextOutputTime_);
  throw TKL::Exception("Aborting solver...", "[VelmoraCvodeSolver::writeFeedbackFromF]");
}

void VelmoraCvodeSolver::finishStep(double h) {
  accumulateStepFluxes(h);
  freezeThaw_.update(t, rhs_->state);
  if (showsLocalErrors_) outputArrays_.noteErrors(integrator_.errorWeights(), integrator_.localErrors());
}

/// Writes the outputs of all output times inside the last step. The restart file stands for the end of the
/// step, so it waits for the last of them: a run that goes on from it writes only what lies behind.
void VelmoraCvodeSolver::serveOutputTimes(bool withFeedback) {
  while (t >= nextOutputTime_) {
    const bool atEnd = nextOutputTime_ >= tEnd_;
    writeDueOutputs();
    // failures of what follows are told with the output time that it belongs to
    const double next = atEnd ? nextOutputTime_ : outputs_->schedule().advance(nextOutputTime_, tEnd_);
    if (atEnd || t < next) writeRestartFile(next);
    if (withFeedback) writeFeedback(nextOutputTime_, "");
    if (atEnd) break;
    nextOutputTime_ = next;
  }
}

void VelmoraCvodeSolver::timedFeedback() {
  if (stopwatch.difference() / 1000.0 <= feedback.nextRealTime) return;
  feedback.nextRealTime += TIMED_FEEDBACK;
  if (flags_.verbosity != 0)
    writeFeedback(t, " *");
  else
    TKL::message("", TKL::MSG_STANDARD, STEP_ID, -1);
}

void VelmoraCvodeSolver::handleFailedStep(int flag) {
  if (flag == CV_ILL_INPUT) fail("CVODE Error: Wrong input...");
  if (!init_.solverSettings.cvodeSettings.useAutoRecover) {
    reportFailure();
    fail(
        "Convergence error, giving up (auto-recover is disabled)! Maybe the tolerances are set too low or "
        "the minimum time step limit is too large?");
  }
  try {
    adjustTolerances(true);
  } catch (const TKL::Exception&) {
    reportFailure();
    throw;
  }
}

void VelmoraCvodeSolver::adjustTolerances(bool increase) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::adjustTolerances]";
  if (increase)
    tolerance_.loosen(t);
  else if (!tolerance_.tighten(integrator_.numberOfSteps()))
    return;
  if (integrator_.reinitialise(t, tolerance_.relTol) != 0)
    throw TKL::Exception("Re-initialization failed!", FUNC_ID);
}

void VelmoraCvodeSolver::reportFailure() {
  reportLargestErrors();
  if (!notFinite_) return;
  const VELMORA::Element& element = data_.elements[notFinite_->element];
  TKL::message(TKL::FormatString("The %1 of element %2 at x = %3 m, y = %4 m, material '%5' is not a number.")
                   .arg(notFinite_->quantity)
                   .arg(element.number)
                   .arg(element.x)
                   .arg(element.y)
                   .arg(element.material->name()),
               TKL::MSG_ERROR, STEP_ID, -1);
}

/// Names the places where a step has failed: the largest estimated errors in units of the tolerance.
void VelmoraCvodeSolver::reportLargestErrors() {
  constexpr std::size_t SHOWN = 3;
  const auto weights = integrator_.errorWeights();
  const auto errors = integrator_.localErrors();
  std::vector<std::size_t> order(errors.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto size = [&](std::size_t i) { return std::fabs(weights[i] * errors[i]); };
  const auto shown = order.begin() + static_cast<std::ptrdiff_t>(std::min(SHOWN, order.size()));
  std::partial_sort(order.begin(), shown, order.end(),
                    [&](std::size_t a, std::size_t b) { return size(a) > size(b); });
  for (auto i = order.begin(); i != shown && size(*i) > 0.0; ++i) {
    const auto perElement = static_cast<std::size_t>(equations_.nEquationsPerElement);
    const VELMORA::Element& element = data_.elements[*i / perElement];
    const std::size_t position = *i % perElement + (equations_.has(BE_ENERGY) ? 0 : 1);
    const bool moisture = equations_.has(BE_MOISTURE) && position == 1;
    TKL::message(TKL::FormatString("Estimated error %1 times the tolerance: %2 balance of element %3 at "
                                   "x = %4 m, y = %5 m, material '%6'\n")
                     .arg(size(*i))
                     .arg(position == 0 ? "energy"
                          : moisture    ? "moisture"
                                        : "pollutant")
                     .arg(element.number)
                     .arg(element.x)
                     .arg(element.y)
                     .arg(element.material->name()),
                 TKL::MSG_WARNING, STEP_ID, 1);
  }
}

void VelmoraCvodeSolver::accumulateStepFluxes(double h) {
  if (!stepwiseOutputs) return;
  const FluxRecords& flows = rhs_->records;
  if (equations_.has(BE_ENERGY)) addMultiple(h, flows.heatFlux.values(), stepSums_.heatFlux.values());
  if (equations_.has(BE_MOISTURE)) {
    addMultiple(h, flows.moistureFlux.values(), stepSums_.moistureFlux.values());
    addMultiple(h, flows.additionalFlux.values(), stepSums_.additionalFlux.values());  // of rain
  }
  if (equations_.has(BE_POLLUTANT)) addMultiple(h, flows.vocFlux.values(), stepSums_.vocFlux.values());
}

void VelmoraCvodeSolver::writeDueOutputs() {
  const int flag = integrator_.interpolate(nextOutputTime_);
  if (flag == CV_BAD_T) fail("m_nextOutputTime out of range while interpolating outputs");
  if (flag != 0) fail("Couldn't interpolate output values.");
  rhs_->calculateFluxesAndSources(nextOutputTime_, integrator_.interpolated().data());
  const auto& settings = init_.solverSettings.cvodeSettings;
  if (outputsEnabled) {
    writeOutput(nextOutputTime_);
    if (settings.useMonitorsFile && !settings.useOneStepMonitors)
      monitors_.write(integrator_.statistics(), tolerance_.relTol, airFlow_.updateCount);
  }
}

void VelmoraCvodeSolver::writeFeedback(double time, const std::string& suffix) {
  if (abortRequested) throw TKL::Exception("Aborting solver...", "[VelmoraCvodeSolver::writeFeedback]");
  feedback.write(time, suffix, stopwatch.difference());
}

void VelmoraCvodeSolver::writeOutput(double time) {
  const auto view = [](const RecordArray& records) {
    return VELMORA::RecordView{records.values(), records.nSlots()};
  };
  const SolverState& state = rhs_->state;
  const FluxRecords& records = rhs_->records;
  VELMORA::OutputSource source;
  source.time = time;
  source.T = state.T;
  source.U = state.U;
  source.heatSource = view(records.heatSource);
  source.heatFlux = view(records.heatFlux);
  source.airFlowEnthalpyIn = records.airFlowEnthalpyIn;
  source.airFlowEnthalpyOut = records.airFlowEnthalpyOut;
  source.heatFluxSum = view(stepSums_.heatFlux);
  if (equations_.has(BE_MOISTURE)) {
    source.mw = state.mw;
    source.Theta = state.Theta;
    source.rhoVapour = state.rhoVapour;
    source.rhoIce = state.rhoIce;
    source.RH = state.RH;
    source.pC = state.pC;
    source.pCTotal = state.pCTotal;
    source.pV = state.pV;
    source.moistureSource = view(records.moistureSource);
    source.moistureFlux = view(records.moistureFlux);
    source.moistureFluxSum = view(stepSums_.moistureFlux);
    source.additionalFlux = view(records.additionalFlux);
    source.additionalFluxSum = view(stepSums_.additionalFlux);
    source.convectiveMoistureSource = records.convectiveMoistureSource;
    source.convectiveAirFlow = records.convectiveAirFlow;
  }
  if (equations_.has(BE_AIR)) {
    source.pAir = state.pAir;
    source.airMassFlux = records.airMassFlux;
  }
  if (equations_.has(BE_POLLUTANT)) {
    source.mVOC1 = state.mVOC1;
    source.mVOC2 = state.mVOC2;
    source.pVOC = state.pVOC;
    source.rhoVOC = state.rhoVOC;
    source.vocSource1 = view(records.vocSource1);
    source.vocFlux = view(records.vocFlux);
    source.vocFluxSum = view(stepSums_.vocFlux);
  }
  if (equations_.has(BE_ICE)) {
    source.iceRatio = freezeThaw_.iceSaturation();
    source.freezeThawCycles = freezeThaw_.cycles();
  }
  outputArrays_.takeHeatPipes(data_.boundaryConds);
  outputArrays_.show(source);
  outputs_->writeOutput(source);
}

void VelmoraCvodeSolver::writeRestartFile(double nextOutputTime) {
  // What is not integrated keeps its constant values.
  RestartState restart;
  restart.t = restartTime(nextOutputTime);
  restart.U = rhs_->state.U;
  restart.mw = rhs_->state.mw;
  restart.mVOC1 = rhs_->state.mVOC1;
  restart.mVOC2 = rhs_->state.mVOC2;
  const auto y = integrator_.state();
  std::size_t i = 0;
  for (std::size_t e = 0; e < data_.elements.size(); ++e) {
    if (equations_.has(BE_ENERGY)) restart.U[e] = y[i++];
    if (equations_.has(BE_MOISTURE)) restart.mw[e] = y[i++];
    if (equations_.has(BE_POLLUTANT)) {
      restart.mVOC1[e] = y[i++];
      restart.mVOC2[e] = y[i++];
    }
  }
  if (freezeThaw_.isActive()) {
    restart.freezeThawCycles = freezeThaw_.cycles();
    restart.frozen = freezeThaw_.frozen();
  }
  if (!integratedSides_.empty()) fluxSumsFile_->write(restart.t, integratedSides_, stepSums_);
  if (pollutantMassFile_) pollutantMassFile_->write(restart.t, restart.mVOC1, restart.mVOC2);
  restartFile_->write(restart);
}

/// Time of the restart state. The file keeps milliseconds: a time that rounding would carry over the next
/// output time is rounded down, or that output would be missing after the restart.
double VelmoraCvodeSolver::restartTime(double nextOutputTime) const {
  constexpr double PER_SECOND = 1000.0;
  const bool carriedOver = t < nextOutputTime && std::round(t * PER_SECOND) / PER_SECOND >= nextOutputTime;
  return carriedOver ? std::floor(t * PER_SECOND) / PER_SECOND : t;
}

/// Prepares the files of the stopped run for being continued.
void VelmoraCvodeSolver::resumeOutputs() {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::resumeOutputs]";
  outputs_->continueFrom(init_.duration.value, t);
  if (!integratedSides_.empty() && !fluxSumsFile_->read(t, integratedSides_, stepSums_))
    TKL::message("The sums of the fluxes up to the restart are missing: time integrals begin anew.\n",
                 TKL::MSG_WARNING, FUNC_ID, -1);
}

void VelmoraCvodeSolver::closeFiles() {
  outputs_->close();
  monitors_.close();
  flushRestartFiles();
}

void VelmoraCvodeSolver::flushRestartFiles() {
  if (fluxSumsFile_) fluxSumsFile_->flush();
  if (pollutantMassFile_) pollutantMassFile_->flush();
  if (restartFile_) restartFile_->flush();
}

}  // namespace VELMORA_SOLVER
