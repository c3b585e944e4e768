#pragma once

#include <sundials/sundials_context.h>
#include <sundials/sundials_nvector.h>

#include <functional>
#include <memory>

#include "solver/BlockJacobian.h"

namespace VELMORA_SOLVER {

/// Rates at time t [s] and a state; 0 on success. It never throws.
using GuardedRates = std::function<int(double t, const double* y, double* ydot)>;

/// Solves the linear equations of the integrator's Newton iteration.
class LinearSolver {
 public:
  virtual ~LinearSolver() = default;

  /// Makes the integrator use this solver, which must live as long as the integrator.
  /// @param y a vector of the length of the system
  /// @return 0, or the code of the step that failed (-4 out of memory, -3 wrong input)
  virtual int attach(void* cvode, N_Vector y, SUNContext context) = 0;
};

/// The integrator's own method: a band matrix of half bandwidth `mu` to both sides from difference quotients
/// of the integrator, factorised with exchange of rows.
std::unique_ptr<LinearSolver> bandSolver(long mu);

/// How the Newton matrix of blocks is solved.
enum class BlockMethod {
  BLOCK,   ///< complete block factors
  KRYLOV,  ///< iteration (GMRES) with the incomplete block factors as preconditioner
  SPARSE,  ///< complete sparse factors with exchange of rows
};

/// Solvers on the blocks of neighbouring cells.
/// @param turn  never throws, see `OdeSystem::turnIncrements`
/// @throws std::bad_alloc
std::unique_ptr<LinearSolver> blockSolver(JacobianPattern pattern, BlockMethod method, GuardedRates rates,
                                          BlockJacobian::Turner turn);

}  // namespace VELMORA_SOLVER
