#include <sys/statvfs.h>

#include <cstdint>
#include <exception>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "material/Material.h"
#include "project/VelProject.h"
#include "solver/InitialConditions.h"
#include "solver/LinearSolverChoice.h"
#include "solver/VelmoraCvodeSolver.h"

namespace VELMORA_SOLVER {

using VELMORA::Element;
using VELMORA::VelInit;
using VELMORA::VelProject;
using VELMORA::VelSolverCVODESettings;

namespace {

const char* const INIT_ID = "[VelmoraCvodeSolver::init]";

void progress(const std::string& text) {
  TKL::message(text, TKL::MSG_STANDARD, INIT_ID, 1);
}
void error(const std::string& text) {
  TKL::message(text, TKL::MSG_ERROR, INIT_ID, -1);
}

/// An output that has failed, after its messages have gone out: `init` only says no.
struct InitRefused {};

}  // namespace

void VelmoraCvodeSolver::clear() {
  integrator_.clear();
  monitors_ = MonitorFile();
  outputs_.reset();
  restartFile_.reset();
  fluxSumsFile_.reset();
  pollutantMassFile_.reset();
  integratedSides_.clear();
  notFinite_.reset();
  airFlow_.clear();
  rhs_.reset();
  pollutants_.reset();
  data_ = VELMORA::CalculationData();
  feedback = Feedback();
  feedback.clear();
  freezeThaw_.clear();
  outputsEnabled = true;
  initialized = false;
  abortRequested = false;
  stepwiseOutputs = false;
  stopwatch.start();
}

bool VelmoraCvodeSolver::init(VelProject& project) {
  const TKL::MessageIndentor indentor;
  try {
    initialise(project);
    initialized = true;
    return true;
  } catch (const InitRefused&) {
    return false;
  } catch (const TKL::Exception& ex) {
    ex.writeMsgStackToError();
    if (ex.inputLine() != 0)
      error(TKL::FormatString("The cause is in line %1 of project file '%2'.")
                .arg(ex.inputLine())
                .arg(projectPath_)
                .str());
  } catch (const std::exception& ex) {
    error(ex.what());
  }
  error("Error during initialization of solver!");
  return false;
}

void VelmoraCvodeSolver::initialise(VelProject& project) {
  clear();
  projectPath_ = project.m_projectFile;
  init_ = project.m_init;
  disc_ = project.m_disc;
  flags_ = project.m_solverFlags;
  defaultTemperature_ = project.m_conditions.defaultTemperature;
  defaultRelativeHumidity_ = project.m_conditions.defaultRelHum;
  progress("Setting up project\n");
  reportFreeDiskSpace();
  project.setup_calculation(data_);
  resultsDirectory = data_.outputDir;
  restartFile_ = std::make_unique<RestartFile>(resultsDirectory);
  fluxSumsFile_ = std::make_unique<FluxSumsFile>(resultsDirectory);
  prepareClimate(project);
  initPollutantModule(project);

  if (!initOutputs(project)) throw InitRefused();
  initTimeFrame();
  initSolutionVector();
  checkMaterials();
  rhs_ = std::make_unique<RightHandSide>(data_, ModelSettings::of(init_, disc_), pollutants_.get());
  initAirFlow();
  initTolerances();
  progress("Setting initial conditions\n");
  if (flags_.restart) {
    setRestartFields();
    feedback.feedbackStart = t;
  } else {
    setInitialFields();
  }
  checkMoistureStorage();
  if (!initIntegrator()) throw InitRefused();
  initOutputTimes();
  initFreezeThaw(project);
}

void VelmoraCvodeSolver::prepareClimate(const VelProject& project) {
  for (auto& climate : data_.climateConds) {
    try {
      climate.prepareCalculation(project.m_placeholders.placeholderMap());
    } catch (const TKL::Exception& ex) {
      throw ex.withInputLine(climate.inputLine);
    }
  }
}

void VelmoraCvodeSolver::reportFreeDiskSpace() const {
  // 32-bit arithmetic, so the figure wraps on very large disks; it is only reported.
  std::uint32_t megabytes = 0;
  struct statvfs disk {};
  if (::statvfs(projectPath_.str().c_str(), &disk) == 0)
    megabytes =
        static_cast<std::uint32_t>(disk.f_frsize) / 1024U * static_cast<std::uint32_t>(disk.f_bavail) / 1024U;
  progress(TKL::FormatString("Free disk space: %1 MB\n").arg(megabytes).str());
}

/// Heat cannot be stored without density and heat capacity. A material without conductivity conducts nothing,
/// which is rarely meant.
void VelmoraCvodeSolver::checkMaterials() const {
  using MM::Material;
  if (!equations_.has(BE_ENERGY)) return;
  const auto require = [](double value, const char* keyword, const Material& material) {
    if (!(value > 0.0))
      throw TKL::Exception(
          TKL::FormatString("Parameter %1 missing for %2.").arg(keyword).arg(material.name()), INIT_ID);
  };
  for (const Material* material : data_.materials) {
    require(material->paraStorage[Material::PS_RHO].value, "RHO", *material);
    require(material->paraStorage[Material::PS_CE].value, "CE", *material);
    if (material->thermalTransport[0].kind == MM::ThermalTransport::K_NONE)
      TKL::message(
          TKL::FormatString("Material '%1' has no LAMBDA and conducts no heat.\n").arg(material->name()),
          TKL::MSG_WARNING, INIT_ID, -1);
  }
}

/// Every pore space needs a retention curve, or its moisture has no pressure. To be called when the initial
/// conditions have warned of a missing one.
void VelmoraCvodeSolver::checkMoistureStorage() const {
  if (!equations_.has(BE_MOISTURE)) return;
  for (const MM::Material* material : data_.materials) {
    const bool holdsMoisture = !material->isAir() && !(material->isVaporTight() && material->isWaterTight());
    if (holdsMoisture && material->moistureStorage.kind == MM::MoistureStorage::K_NONE)
      throw TKL::Exception(
          TKL::FormatString("Material '%1' has no moisture storage function, which BALANCE_EQUATIONS = "
                            "MOISTURE needs. Without pores it has the flags VAPOR_TIGHT WATER_TIGHT.")
              .arg(material->name()),
          INIT_ID);
  }
}

/// Opens the output files. They exist from here on, even if a later step of the set-up fails.
bool VelmoraCvodeSolver::initOutputs(VelProject& project) {
  const auto& settings = project.m_outputs;
  const VELMORA::ReferenceState reference{settings.maxHygRelHum.value, settings.expRefTemper.value,
                                          settings.expRefRelHum.value};
  try {
    outputs_ = std::make_unique<VELMORA::OutputWriter>(VELMORA::outputConstruction(project, data_),
                                                       data_.outputFiles, data_.outputGrids, reference);
    outputs_->initOutputFiles(flags_.restart);
    return true;
  } catch (const std::exception& ex) {
    error(ex.what());
    error("Error creating output files!");
    return false;
  }
}

void VelmoraCvodeSolver::initTimeFrame() {
  progress("Setting up simulation time frame\n");
  t = 0.0;
  tStart_ = 0.0;
  tEnd_ = init_.duration.value;
  startTimeOffset_ = static_cast<double>(init_.startTime);
  feedback.verbosity = flags_.verbosity;
  feedback.disableHeaders = flags_.disableHeaders;
  feedback.projectFileName = projectPath_.filename();
  feedback.startTimeOffset = startTimeOffset_;
  feedback.feedbackStart = 0.0;
  feedback.tEndTotal = tEnd_;
}

void VelmoraCvodeSolver::initSolutionVector() {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::initSolutionVector]";
  if (init_.balanceEquations.none())
    throw TKL::Exception("At least one balance equation has to be specified!", FUNC_ID);
  equations_ = BalanceEquations::fromSelection(init_.balanceEquations);
  TKL::message(
      TKL::FormatString("Number of balance equations per element: %1\n").arg(equations_.nEquationsPerElement),
      TKL::MSG_STANDARD, FUNC_ID, 2);
  const auto perElement = static_cast<std::size_t>(equations_.nEquationsPerElement);
  if (perElement > 0 && !integrator_.createVectors(data_.elements.size() * perElement,
                                                   init_.solverSettings.cvodeSettings.linearSolver !=
                                                       VELMORA::VelSolverCVODESettings::L_BAND))
    throw TKL::Exception("Y memory allocation error!", FUNC_ID);
  if (!equations_.isValid())
    throw TKL::Exception("This combination of balance equations is invalid or not supported in this solver!",
                         FUNC_ID);
}

void VelmoraCvodeSolver::initTolerances() {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::initTolerances]";
  if (!integrator_.createAbsoluteTolerances())
    throw TKL::Exception("Absolute tolerances vector allocation error!", FUNC_ID);
  const VelSolverCVODESettings& settings = init_.solverSettings.cvodeSettings;
  std::vector<double> ofElement;
  if (equations_.has(BE_ENERGY)) ofElement.push_back(settings.absTolEnergy);
  if (equations_.has(BE_MOISTURE)) ofElement.push_back(settings.absTolMoisture);
  if (equations_.has(BE_POLLUTANT)) ofElement.insert(ofElement.end(), 2, settings.absTolPollutant);
  const auto tolerances = integrator_.absoluteTolerances();
  for (std::size_t i = 0; i < tolerances.size(); ++i) tolerances[i] = ofElement[i % ofElement.size()];
}

void VelmoraCvodeSolver::setInitialFields() {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::setInitialFields]";
  SolverState& state = rhs_->state;
  const bool energy = equations_.has(BE_ENERGY);
  const TKL::Parameter& defaultT = energy ? defaultTemperature_ : init_.isothermalTRef;
  for (const Element& element : data_.elements) {
    if (element.material == nullptr)
      throw TKL::Exception(
          TKL::FormatString("No material assigned to element [%1,%2]!").arg(element.i).arg(element.j),
          FUNC_ID);
    const auto e = static_cast<std::size_t>(element.number);
    const double T = initialTemperature(element, defaultT);
    state.T[e] = T;
    if (equations_.has(BE_MOISTURE)) {
      const InitialMoisture start = initialMoisture(element, T, defaultRelativeHumidity_);
      state.mw[e] = start.mw;
      state.pCTotal[e] = start.pC;
    }
    if (equations_.has(BE_POLLUTANT)) state.mVOC1[e] = initialPollutant(element);
    // without an energy balance the energy only stands for the temperature
    state.U[e] = (state.rhoCDry[e] + (energy ? TKL::C_W * state.mw[e] : 0.0)) * T;
  }
  putState();
}

/// Copies the conserved quantities into the state vector of the integrator.
void VelmoraCvodeSolver::putState() {
  const auto y = integrator_.state();
  std::size_t i = 0;
  for (std::size_t e = 0; e < data_.elements.size(); ++e) {
    if (equations_.has(BE_ENERGY)) y[i++] = rhs_->state.U[e];
    if (equations_.has(BE_MOISTURE)) y[i++] = rhs_->state.mw[e];
    if (equations_.has(BE_POLLUTANT)) {
      y[i++] = rhs_->state.mVOC1[e];
      y[i++] = rhs_->state.mVOC2[e];
    }
  }
}

void VelmoraCvodeSolver::setRestartFields() {
  RestartState restart = restartFile_->read(data_.elements.size(), equations_.has(BE_POLLUTANT));
  if (pollutantMassFile_ && !pollutantMassFile_->read(restart.t, restart.mVOC1, restart.mVOC2))
    TKL::message("The pollutant begins with the masses of the restart file, rounded to 1e-8 kg/m3.\n",
                 TKL::MSG_WARNING, INIT_ID, -1);
  t = restart.t;
  tStart_ = t;
  rhs_->state.U = restart.U;
  rhs_->state.mw = restart.mw;
  rhs_->state.mVOC1 = restart.mVOC1;
  rhs_->state.mVOC2 = restart.mVOC2;
  if (!equations_.has(BE_ENERGY))
    for (const Element& element : data_.elements)
      rhs_->state.T[static_cast<std::size_t>(element.number)] =
          initialTemperature(element, init_.isothermalTRef);
  putState();
}

bool VelmoraCvodeSolver::initIntegrator() {
  progress("Initializing CVODE integrator\n");
  tolerance_ = ToleranceAdaption();
  tolerance_.relTol = init_.solverSettings.cvodeSettings.relTol;
  if (integrator_.initialise(*this, t, tolerance_.relTol) != 0) {
    error("CVodeMalloc init error!");
    return false;
  }
  if (flags_.restart) integrator_.startExactly();
  switch (attachLinearSolver(integrator_, data_, equations_.nEquationsPerElement,
                             init_.solverSettings.cvodeSettings.linearSolver)) {
    case 0:
      break;
    case -4:
      error("CVBand memory initialization error (problem too large?)");
      return false;
    case -3:
      error("CVBand init error (wrong input?)");
      return false;
    default:
      error("CVBand init error");
      return false;
  }
  if (init_.solverSettings.cvodeSettings.useMonitorsFile)
    monitors_.open(projectPath_, flags_.restart, equations_.has(BE_AIR));
  configureIntegrator();
  return true;
}

void VelmoraCvodeSolver::configureIntegrator() {
  const VelSolverCVODESettings& project = init_.solverSettings.cvodeSettings;
  IntegratorSettings settings;
  settings.maxOrder = project.maxOrder;
  settings.maxSteps = project.maxSteps;
  settings.initialStep = project.para[VelSolverCVODESettings::P_INITIAL_DT].value;
  settings.maxStep = project.para[VelSolverCVODESettings::P_MAX_DT].value;
  settings.minStep = project.para[VelSolverCVODESettings::P_MIN_DT].value;
  // A loose error test would leave the Newton iteration too coarse: it is tightened in proportion.
  const double factor = tolerance_.relTol / 1e-5 * (init_.useGravity ? 10.0 : 1.0);
  if (factor > 1.0) {
    settings.nonlinearConvergenceCoefficient = 0.1 / factor;
    progress(TKL::FormatString("Setting Nonlinear convergence coefficient to %1\n")
                 .arg(settings.nonlinearConvergenceCoefficient)
                 .str());
  }
  integrator_.configure(settings);
}

void VelmoraCvodeSolver::initOutputTimes() {
  stepwiseOutputs = outputs_->needsEveryStep();
  showsLocalErrors_ = equations_.code == (BE_ENERGY | BE_MOISTURE) &&
                      (outputs_->shows(VELMORA::VelOutputFormat::Q_LOCALERROR_U) ||
                       outputs_->shows(VELMORA::VelOutputFormat::Q_LOCALERROR_MWV));
  const std::size_t nSides = data_.sides.size();
  stepSums_.heatFlux = RecordArray(nSides, VELMORA::NUM_HF);
  stepSums_.moistureFlux = RecordArray(nSides, VELMORA::NUM_MF);
  stepSums_.vocFlux = RecordArray(nSides, VELMORA::NUM_VF);
  stepSums_.additionalFlux = RecordArray(nSides, VELMORA::NUM_AF);
  integratedSides_ = outputs_->integratedSides();
  outputArrays_.start(data_.elements.size());
  outputs_->schedule().start(init_.duration.value, t);
}

/// Counts even without a moisture balance, where nothing freezes.
void VelmoraCvodeSolver::initFreezeThaw(const VelProject& project) {
  if (!init_.balanceEquations[VelInit::B_ICE]) return;
  stepwiseOutputs = true;
  freezeThaw_.start(data_.elements, project.m_outputs.freezeBegin.value, project.m_outputs.thawBegin, t);
  if (flags_.restart) {
    const RestartState restart = restartFile_->read(data_.elements.size(), equations_.has(BE_POLLUTANT));
    if (!freezeThaw_.resume(restart.freezeThawCycles, restart.frozen))
      TKL::message("The freeze-thaw cycles up to the restart are missing: they are counted anew.\n",
                   TKL::MSG_WARNING, INIT_ID, -1);
  }
}

}  // namespace VELMORA_SOLVER
