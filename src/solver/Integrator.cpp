#include "solver/Integrator.h"

#include <nvector/nvector_serial.h>

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "solver/VectorOperations.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double EXACT_SHARE = 0.01;   // of the relative tolerance
constexpr double EXACT_LIMIT = 1e-11;  // beyond it the digits of the numbers get in the way
constexpr int EXACT_STEPS = 60;  // until order and step size have grown to those of a run that is under way

/// Settings are constants or checked before; a refusal is an error of this program, reported as such.
void check(int flag, const char* call) {
  const char* const FUNC_ID = "[Integrator::configure]";
  if (flag != CV_SUCCESS)
    throw TKL::Exception(TKL::FormatString("%1 failed with code %2.").arg(call).arg(flag), FUNC_ID);
}

}  // namespace

Integrator::~Integrator() {
  clear();
}

void Integrator::clear() {
  CVodeFree(&cvode_);
  linearSolver_.reset();
  for (N_Vector* vector : {&y_, &yInterpolated_, &ySaved_, &absTol_, &errorWeights_, &localErrors_})
    if (*vector != nullptr) N_VDestroy(std::exchange(*vector, nullptr));
  if (context_ != nullptr) SUNContext_Free(&context_);
  system_ = nullptr;
  pending_ = nullptr;
}

bool Integrator::createVectors(std::size_t size, bool ownOperations) {
  clear();
  if (SUNContext_Create(nullptr, &context_) != 0) return false;
  for (N_Vector* vector : {&y_, &yInterpolated_, &ySaved_, &errorWeights_, &localErrors_}) {
    *vector = N_VNew_Serial(static_cast<sunindextype>(size), context_);
    if (*vector == nullptr) return false;
    if (ownOperations) useFastOperations(*vector);
    N_VConst(0.0, *vector);
  }
  return true;
}

bool Integrator::createAbsoluteTolerances() {
  absTol_ = N_VClone(y_);
  if (absTol_ == nullptr) return false;
  N_VConst(0.0, absTol_);
  return true;
}

int Integrator::initialise(OdeSystem& system, double t, double relativeTolerance) {
  system_ = &system;
  cvode_ = CVodeCreate(CV_BDF, context_);
  if (cvode_ == nullptr) return CV_MEM_FAIL;
  const int flag = CVodeInit(cvode_, &Integrator::rhsFunction, t, y_);
  return flag == CV_SUCCESS ? setTolerances(relativeTolerance) : flag;
}

int Integrator::setTolerances(double relativeTolerance) {
  relativeTolerance_ = relativeTolerance;
  exactSteps_ = 0;
  return CVodeWFtolerances(cvode_, [](N_Vector y, N_Vector weights, void* data) {
    const auto& self = *static_cast<Integrator*>(data);
    double tolerance = self.relativeTolerance_;
    if (self.exactSteps_ > 0) tolerance = std::min(tolerance, std::max(EXACT_SHARE * tolerance, EXACT_LIMIT));
    return VELMORA_SOLVER::errorWeights(tolerance, y, self.absTol_, weights) ? 0 : -1;
  });
}

void Integrator::startExactly() {
  exactSteps_ = EXACT_STEPS;
}

int Integrator::attachBandSolver(long mu) {
  linearSolver_ = bandSolver(mu);
  return linearSolver_->attach(cvode_, y_, context_);
}

int Integrator::attachBlockSolver(JacobianPattern pattern, BlockMethod method) {
  try {
    linearSolver_ = blockSolver(
        std::move(pattern), method,
        [this](double t, const double* y, double* ydot) { return evaluate(t, y, ydot); },
        [this](std::span<double> increments) { system_->turnIncrements(increments); });
  } catch (const std::bad_alloc&) {
    return -4;
  }
  return linearSolver_->attach(cvode_, y_, context_);
}

void Integrator::configure(const IntegratorSettings& settings) {
  check(CVodeSetErrHandlerFn(cvode_, &Integrator::errorHandler, this), "CVodeSetErrHandlerFn");
  check(CVodeSetUserData(cvode_, this), "CVodeSetUserData");
  check(CVodeSetMaxOrd(cvode_, settings.maxOrder), "CVodeSetMaxOrd");
  check(CVodeSetMaxNumSteps(cvode_, settings.maxSteps), "CVodeSetMaxNumSteps");
  check(CVodeSetInitStep(cvode_, settings.initialStep), "CVodeSetInitStep");
  check(CVodeSetMaxStep(cvode_, settings.maxStep), "CVodeSetMaxStep");
  check(CVodeSetMinStep(cvode_, settings.minStep), "CVodeSetMinStep");
  check(CVodeSetStabLimDet(cvode_, settings.stabilityLimitDetection ? SUNTRUE : SUNFALSE),
        "CVodeSetStabLimDet");
  if (settings.nonlinearConvergenceCoefficient > 0.0)
    check(CVodeSetNonlinConvCoef(cvode_, settings.nonlinearConvergenceCoefficient), "CVodeSetNonlinConvCoef");
}

int Integrator::reinitialise(double t, double relativeTolerance) {
  const int flag = CVodeReInit(cvode_, t, y_);
  return flag == CV_SUCCESS ? setTolerances(relativeTolerance) : flag;
}

int Integrator::step(double tOut, double& t) {
  triedAgain_ = exactSteps_ > 0;
  int flag = CVode(cvode_, tOut, y_, &t, CV_ONE_STEP);
  triedAgain_ = false;
  if (flag < 0 && exactSteps_ > 0 && !pending_) {  // what is beyond reach is not asked for
    exactSteps_ = 0;
    flag = CVodeReInit(cvode_, t, y_);
    if (flag == CV_SUCCESS) flag = CVode(cvode_, tOut, y_, &t, CV_ONE_STEP);
  }
  if (pending_) std::rethrow_exception(std::exchange(pending_, nullptr));
  if (flag >= 0 && exactSteps_ > 0) --exactSteps_;
  return flag;
}

int Integrator::interpolate(double t) {
  return CVodeGetDky(cvode_, t, 0, yInterpolated_);
}

std::span<const double> Integrator::errorWeights() {
  CVodeGetErrWeights(cvode_, errorWeights_);
  return values(errorWeights_);
}

std::span<const double> Integrator::localErrors() {
  CVodeGetEstLocalErrors(cvode_, localErrors_);
  return values(localErrors_);
}

double Integrator::lastStepSize() const {
  realtype h = 0.0;
  CVodeGetLastStep(cvode_, &h);
  return h;
}

long Integrator::numberOfSteps() const {
  long steps = 0;
  CVodeGetNumSteps(cvode_, &steps);
  return steps;
}

IntegratorStatistics Integrator::statistics() const {
  IntegratorStatistics s;
  CVodeGetNumSteps(cvode_, &s.steps);
  CVodeGetNumRhsEvals(cvode_, &s.rhsEvaluations);
  CVodeGetNumJacEvals(cvode_, &s.jacobianEvaluations);
  CVodeGetNonlinSolvStats(cvode_, &s.nonlinearIterations, &s.nonlinearFailures);
  CVodeGetNumErrTestFails(cvode_, &s.errorTestFailures);
  CVodeGetCurrentOrder(cvode_, &s.order);
  CVodeGetCurrentTime(cvode_, &s.time);
  CVodeGetCurrentStep(cvode_, &s.stepSize);
  return s;
}

int Integrator::rhsFunction(realtype t, N_Vector y, N_Vector ydot, void* data) noexcept {
  return static_cast<Integrator*>(data)->evaluate(t, NV_DATA_S(y), NV_DATA_S(ydot));
}

/// The rates, without letting an exception out: it is kept for the end of the step.
int Integrator::evaluate(double t, const double* y, double* ydot) noexcept {
  try {
    return system_->calculate(t, y, ydot);
  } catch (...) {
    pending_ = std::current_exception();
    return -1;
  }
}

void Integrator::errorHandler(int code, const char* /*module*/, const char* /*function*/, char* text,
                              void* data) noexcept {
  const char* const FUNC_ID = "[CVODE]";
  // After an exception the integrator only reports that the system gave up; the exception says why.
  if (static_cast<Integrator*>(data)->pending_) return;
  if (code < 0 && static_cast<Integrator*>(data)->triedAgain_) return;
  try {
    if (code < 0) TKL::message(text, TKL::MSG_ERROR, FUNC_ID, -1);
    if (code > 0) TKL::message(std::string(text) + "\n", TKL::MSG_WARNING, FUNC_ID, -1);
  } catch (...) {
    static_cast<Integrator*>(data)->pending_ = std::current_exception();
  }
}

std::span<double> Integrator::values(N_Vector vector) {
  return {NV_DATA_S(vector), static_cast<std::size_t>(NV_LENGTH_S(vector))};
}

}  // namespace VELMORA_SOLVER
