#pragma once

#include "project/CalculationData.h"
#include "project/VelSolverCVODESettings.h"
#include "solver/Integrator.h"

namespace VELMORA_SOLVER {

/// Pattern of the Jacobian of a construction with `nEquations` per element.
JacobianPattern jacobianPattern(const VELMORA::CalculationData& data, int nEquations);

/// Attaches the linear solver that the project asks for, and says at verbosity 2 which one it is. AUTO takes
/// complete block factors at every shape and size: sparse factors are about half as fast in large bodies, and
/// the iteration with incomplete factors does not converge at long steps where good and bad conductors meet
/// (docs/performance.md).
/// @return 0, or the code of the integrator (-4 out of memory, -3 wrong input)
int attachLinearSolver(Integrator& integrator, const VELMORA::CalculationData& data, int nEquations,
                       VELMORA::VelSolverCVODESettings::linear_solver_t selected);

}  // namespace VELMORA_SOLVER
