#pragma once

#include <sundials/sundials_nvector.h>

#include <span>

namespace VELMORA_SOLVER {

/// Gives a serial vector of the integrator faster forms of the operations that a step spends its time in:
/// filling, linear sums, scaling, products, weighted norms and dot products. Its clones have them, too. Norms
/// and dot products add in another order than the library's, so their last bits differ.
void useFastOperations(N_Vector vector);

/// sums += factor * values, arrays of the same length.
void addMultiple(double factor, std::span<const double> values, std::span<double> sums);

/// weights = 1 / (relative |y| + absolute), in one pass. False where a weight would not be finite and
/// positive.
bool errorWeights(double relative, N_Vector y, N_Vector absolute, N_Vector weights);

}  // namespace VELMORA_SOLVER
