#pragma once

#include <sundials/sundials_nvector.h>

namespace VELMORA_SOLVER {

/// Gives a serial vector of the integrator faster forms of the operations that a step spends its time in:
/// linear sums, scaling, products, weighted norms and dot products. Its clones have them, too. Norms and dot
/// products add in another order than the library's, so their last bits differ.
void useFastOperations(N_Vector vector);

/// weights = 1 / (relative |y| + absolute), in one pass. False where a weight would not be finite and
/// positive.
bool errorWeights(double relative, N_Vector y, N_Vector absolute, N_Vector weights);

}  // namespace VELMORA_SOLVER
