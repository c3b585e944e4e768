#include <cvode/cvode.h>
#include <nvector/nvector_serial.h>
#include <sunlinsol/sunlinsol_band.h>
#include <sunmatrix/sunmatrix_band.h>

#include "solver/LinearSolver.h"

namespace VELMORA_SOLVER {

namespace {

class BandSolver : public LinearSolver {
 public:
  explicit BandSolver(long mu) : mu_(mu) {}
  ~BandSolver() override {
    if (solver_ != nullptr) SUNLinSolFree(solver_);
    if (matrix_ != nullptr) SUNMatDestroy(matrix_);
  }
  BandSolver(const BandSolver&) = delete;
  BandSolver& operator=(const BandSolver&) = delete;

  int attach(void* cvode, N_Vector y, SUNContext context) override {
    const sunindextype size = NV_LENGTH_S(y);
    if (mu_ >= size) return -3;
    matrix_ = SUNBandMatrix(size, mu_, mu_, context);
    if (matrix_ == nullptr) return -4;
    solver_ = SUNLinSol_Band(y, matrix_, context);
    if (solver_ == nullptr) return -4;
    return CVodeSetLinearSolver(cvode, solver_, matrix_);
  }

 private:
  long mu_;
  SUNMatrix matrix_ = nullptr;
  SUNLinearSolver solver_ = nullptr;
};

}  // namespace

std::unique_ptr<LinearSolver> bandSolver(long mu) {
  return std::make_unique<BandSolver>(mu);
}

}  // namespace VELMORA_SOLVER
