#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "airflow/AirFlowLibrary.h"
#include "foundation/Path.h"
#include "foundation/StopWatch.h"
#include "output/OutputWriter.h"
#include "pollutant/PollutantLibrary.h"
#include "project/CalculationData.h"
#include "project/SolverFlags.h"
#include "project/VelDisc.h"
#include "project/VelInit.h"
#include "solver/BalanceEquations.h"
#include "solver/Feedback.h"
#include "solver/FiniteCheck.h"
#include "solver/FluxRecords.h"
#include "solver/FluxSumsFile.h"
#include "solver/FreezeThawCounting.h"
#include "solver/Integrator.h"
#include "solver/MonitorFile.h"
#include "solver/OutputArrays.h"
#include "solver/PollutantMassFile.h"
#include "solver/RestartFile.h"
#include "solver/RightHandSide.h"
#include "solver/ToleranceAdaption.h"

namespace VELMORA {
class VelProject;
}

namespace VELMORA_SOLVER {

/// Turns a project into a running integration: `init` once, then `run` once.
///
/// The integrator takes its own steps; an output time inside a step is served by interpolating the state, so
/// outputs have no influence on the steps. A convergence failure loosens the tolerances instead of ending
/// the run, see ToleranceAdaption.
class VelmoraCvodeSolver : public OdeSystem {
 public:
  VelmoraCvodeSolver() { clear(); }

  /// Builds the calculation of a project that has been read. The project must outlive the solver.
  /// @return whether the solver is ready; if not, the reasons have gone out as messages
  bool init(VELMORA::VelProject& project);

  /// Integrates to the end of the simulated time and writes all outputs.
  /// @throws TKL::Exception "Simulation stopped!" after the reasons have gone out as messages
  void run();

  /// Prepares the states, the start outputs and the timers at the start of the run.
  /// @throws TKL::Exception "Solver not initialized!"
  void initStep();

  /// Integrates to `tStop` [s], or to the end of the simulation if that is negative. With `restart` the
  /// state at the start of the last call comes back first.
  /// @throws TKL::Exception "Solver aborted!" after the reasons have gone out as messages
  void runStep(double tStop, bool restart);

  /// What the integrator integrates: the right-hand side, and at high verbosity a line for each evaluation.
  int calculate(double time, const double* y, double* ydot) override;
  void turnIncrements(std::span<double> increments) const override { rhs_->turnIncrements(increments); }

  /// Frees all that `init` has built.
  void clear();

  TKL::StopWatch stopwatch;
  Feedback feedback;
  bool outputsEnabled = true;    ///< `runStep` writes outputs
  bool initialized = false;      ///< `init` has succeeded
  bool abortRequested = false;   ///< tested after each step; the state reached is kept as restart file
  bool stepwiseOutputs = false;  ///< some output needs data from every step
  TKL::Path resultsDirectory;

  double t = 0.0;  ///< time reached by the integrator [s]

  /// What the solver runs on and what it has found last; valid after `init`.
  const VELMORA::CalculationData& data() const { return data_; }
  const SolverState& state() const { return rhs_->state; }
  const FluxRecords& records() const { return rhs_->records; }
  IntegratorStatistics statistics() const { return integrator_.statistics(); }

 private:
  // initialisation, VelmoraCvodeSolverInit.cpp
  void initialise(VELMORA::VelProject& project);
  void prepareClimate(const VELMORA::VelProject& project);
  void reportFreeDiskSpace() const;
  void checkMaterials() const;
  void checkMoistureStorage() const;
  bool initOutputs(VELMORA::VelProject& project);
  void initTimeFrame();
  void initSolutionVector();
  void initTolerances();
  void setInitialFields();
  void setRestartFields();
  void putState();
  bool initIntegrator();
  void configureIntegrator();
  void initOutputTimes();
  void initFreezeThaw(const VELMORA::VelProject& project);
  void initAirFlow();
  void initPollutantModule(const VELMORA::VelProject& project);

  // time loop, TimeLoop.cpp
  void step();
  void updateAirFlow(double time);
  void timedFeedback();
  void handleFailedStep(int flag);
  void abortBehindStep(int flag, double h);
  void finishStep(double h);
  void writeDueOutputs();
  void serveOutputTimes(bool withFeedback);
  void resumeOutputs();
  void closeFiles();
  void flushRestartFiles();
  void adjustTolerances(bool increase);
  void accumulateStepFluxes(double h);
  void reportFailure();
  void reportLargestErrors();
  void writeOutput(double time);
  void writeFeedback(double time, const std::string& suffix);
  void writeRestartFile(double nextOutputTime);
  double restartTime(double nextOutputTime) const;

  VELMORA::CalculationData data_;
  VELMORA::VelInit init_;
  VELMORA::VelDisc disc_;
  VELMORA::SolverFlags flags_;
  TKL::Path projectPath_;
  TKL::Parameter defaultTemperature_;
  TKL::Parameter defaultRelativeHumidity_;
  BalanceEquations equations_;
  std::unique_ptr<POLLUTANT_LIB::PollutantLibrary> pollutants_;  ///< null without a pollutant balance
  std::unique_ptr<RightHandSide> rhs_;
  std::unique_ptr<VELMORA::OutputWriter> outputs_;
  std::unique_ptr<RestartFile> restartFile_;
  std::unique_ptr<FluxSumsFile> fluxSumsFile_;
  std::unique_ptr<PollutantMassFile> pollutantMassFile_;  ///< null without a pollutant balance
  std::vector<int> integratedSides_;                      ///< whose flows go into the file of sums
  OutputArrays outputArrays_;
  bool showsLocalErrors_ = false;       ///< some output shows the estimated errors of the steps
  std::optional<NotFinite> notFinite_;  ///< found in the step that is being tried
  VELMORA::AirFlowLibrary airFlow_;     ///< empty without an air balance
  Integrator integrator_;
  ToleranceAdaption tolerance_;
  MonitorFile monitors_;
  FreezeThawCounting freezeThaw_;  ///< empty without ice
  FluxRecords stepSums_;           ///< flows integrated over the steps [J], [kg]

  double tSaved_ = 0.0;
  double tStart_ = 0.0;
  double tEnd_ = 0.0;
  double startTimeOffset_ = 0.0;
  double nextOutputTime_ = 0.0;
  double nextPressureUpdate_ = 0.0;  ///< [s], -1: no further one
};

}  // namespace VELMORA_SOLVER
