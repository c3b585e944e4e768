#include <cvode/cvode.h>
#include <nvector/nvector_serial.h>
#include <sunlinsol/sunlinsol_spgmr.h>

#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include "solver/LinearSolver.h"
#include "solver/NewtonMatrix.h"

namespace VELMORA_SOLVER {

namespace {

constexpr int KRYLOV_VECTORS = 30;

NewtonMatrix::Factors factorsOf(BlockMethod method) {
  switch (method) {
    case BlockMethod::SPARSE:
      return NewtonMatrix::Factors::SPARSE;
    case BlockMethod::KRYLOV:
      return NewtonMatrix::Factors::INCOMPLETE;
    default:
      return NewtonMatrix::Factors::BLOCKS;
  }
}

/// Joins the Newton matrix to the integrator, which sees a matrix and a solver of a kind of their own. The
/// integrator's functions find this object in the content of either.
class BlockSolver : public LinearSolver {
 public:
  BlockSolver(JacobianPattern pattern, BlockMethod method, GuardedRates rates, BlockJacobian::Turner turn)
      : matrix_(std::move(pattern), factorsOf(method)),
        isKrylov_(method == BlockMethod::KRYLOV),
        rates_(std::move(rates)),
        turn_(std::move(turn)) {}
  ~BlockSolver() override {
    if (krylov_ != nullptr) SUNLinSolFree(krylov_);
    if (sunSolver_ != nullptr) SUNLinSolFreeEmpty(sunSolver_);
    if (sunMatrix_ != nullptr) SUNMatFreeEmpty(sunMatrix_);
    if (errorWeights_ != nullptr) N_VDestroy(errorWeights_);
  }
  BlockSolver(const BlockSolver&) = delete;
  BlockSolver& operator=(const BlockSolver&) = delete;

  int attach(void* cvode, N_Vector y, SUNContext context) override {
    cvode_ = cvode;
    errorWeights_ = N_VClone(y);
    sunMatrix_ = SUNMatNewEmpty(context);
    sunSolver_ = SUNLinSolNewEmpty(context);
    if (errorWeights_ == nullptr || sunMatrix_ == nullptr || sunSolver_ == nullptr) return -4;
    if (isKrylov_ && !createKrylov(y, context)) return -4;
    sunMatrix_->content = this;
    sunMatrix_->ops->getid = [](SUNMatrix) { return SUNMATRIX_CUSTOM; };
    sunSolver_->content = this;
    sunSolver_->ops->gettype = [](SUNLinearSolver solver) {
      return of(solver).isKrylov_ ? SUNLINEARSOLVER_MATRIX_ITERATIVE : SUNLINEARSOLVER_DIRECT;
    };
    sunSolver_->ops->setup = [](SUNLinearSolver solver, SUNMatrix) { return of(solver).factorise(); };
    sunSolver_->ops->solve = [](SUNLinearSolver solver, SUNMatrix, N_Vector x, N_Vector b,
                                realtype tolerance) { return of(solver).solve(x, b, tolerance); };
    if (isKrylov_)
      sunSolver_->ops->setscalingvectors = [](SUNLinearSolver solver, N_Vector s1, N_Vector s2) {
        return SUNLinSolSetScalingVectors(of(solver).krylov_, s1, s2);
      };
    if (const int flag = CVodeSetLinearSolver(cvode, sunSolver_, sunMatrix_); flag != 0) return flag;
    return CVodeSetLinSysFn(cvode, &BlockSolver::newtonMatrix);
  }

 private:
  static BlockSolver& of(SUNLinearSolver solver) { return *static_cast<BlockSolver*>(solver->content); }

  bool createKrylov(N_Vector y, SUNContext context) {
    krylov_ = SUNLinSol_SPGMR(y, SUN_PREC_LEFT, KRYLOV_VECTORS, context);
    if (krylov_ == nullptr) return false;
    const auto product = [](void* self, N_Vector v, N_Vector z) {
      static_cast<BlockSolver*>(self)->matrix_.multiply(NV_DATA_S(v), NV_DATA_S(z));
      return 0;
    };
    const auto precondition = [](void* self, N_Vector r, N_Vector z, realtype, int) {
      N_VScale(1.0, r, z);
      static_cast<BlockSolver*>(self)->matrix_.solve(NV_DATA_S(z));
      return 0;
    };
    return SUNLinSolSetATimes(krylov_, this, product) == 0 &&
           SUNLinSolSetPreconditioner(krylov_, this, nullptr, precondition) == 0 &&
           SUNLinSolInitialize(krylov_) == 0;
  }

  /// Called by the integrator for a new matrix; `isJacobianValid` where only gamma has changed.
  static int newtonMatrix(realtype t, N_Vector y, N_Vector fy, SUNMatrix matrix, booleantype isJacobianValid,
                          booleantype* isJacobianNew, realtype gamma, void*, N_Vector, N_Vector, N_Vector) {
    auto& self = *static_cast<BlockSolver*>(matrix->content);
    self.gamma_ = gamma;
    *isJacobianNew = isJacobianValid ? SUNFALSE : SUNTRUE;
    return isJacobianValid ? 0 : self.evaluateJacobian(t, y, fy);
  }

  int evaluateJacobian(double t, N_Vector y, N_Vector fy) {
    constexpr double SMALLEST_MULTIPLE = 1000.0;  // of the rounding of the rates, as in the integrator
    CVodeGetErrWeights(cvode_, errorWeights_);
    const double norm = N_VWrmsNorm(fy, errorWeights_);
    const double smallest = norm == 0.0 ? 1.0
                                        : SMALLEST_MULTIPLE * std::fabs(gamma_) *
                                              std::numeric_limits<double>::epsilon() *
                                              static_cast<double>(NV_LENGTH_S(y)) * norm;
    return matrix_.jacobian.evaluate(
        [this, t](const double* state, double* rates) { return rates_(t, state, rates); }, NV_DATA_S(y),
        NV_DATA_S(fy), NV_DATA_S(errorWeights_), smallest, turn_);
  }

  int factorise() noexcept {
    try {
      return matrix_.factorise(gamma_) ? 0 : SUNLS_LUFACT_FAIL;
    } catch (const std::bad_alloc&) {
      return SUNLS_MEM_FAIL;
    }
  }

  int solve(N_Vector x, N_Vector b, double tolerance) {
    if (isKrylov_) {
      const int flag = SUNLinSolSolve(krylov_, nullptr, x, b, tolerance);
      if (flag == SUNLS_SUCCESS) matrix_.balance(NV_DATA_S(b), NV_DATA_S(x));
      return flag;
    }
    N_VScale(1.0, b, x);
    matrix_.solve(NV_DATA_S(x));
    return SUNLS_SUCCESS;
  }

  NewtonMatrix matrix_;
  bool isKrylov_;
  GuardedRates rates_;
  BlockJacobian::Turner turn_;
  double gamma_ = 0.0;
  void* cvode_ = nullptr;
  N_Vector errorWeights_ = nullptr;
  SUNMatrix sunMatrix_ = nullptr;
  SUNLinearSolver sunSolver_ = nullptr;
  SUNLinearSolver krylov_ = nullptr;
};

}  // namespace

std::unique_ptr<LinearSolver> blockSolver(JacobianPattern pattern, BlockMethod method, GuardedRates rates,
                                          BlockJacobian::Turner turn) {
  return std::make_unique<BlockSolver>(std::move(pattern), method, std::move(rates), std::move(turn));
}

}  // namespace VELMORA_SOLVER
