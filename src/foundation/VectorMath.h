#pragma once

#include <array>
#include <cstddef>

namespace TKL {

// Functions of whole arrays, several values at a time where the machine can: the vector mathematics of the C
// library on x86-64, at half the effort of single calls. Relative error below 1e-15 (about four units in the
// last place). Input and output are the same array or do not overlap.

/// y[i] = exp(x[i]). NaN gives NaN.
void exponentials(const double* x, double* y, std::size_t n);

/// Logarithms of two values, natural and decimal, at little more than the effort of one. Only numbers above 0
/// have one. NaN gives NaN.
std::array<double, 2> logarithms(std::array<double, 2> x);
std::array<double, 2> decimalLogarithms(std::array<double, 2> x);

/// `pSat` [Pa] of temperatures [K] from 124.6 K up.
void saturationPressures(const double* T, double* p, std::size_t n);

}  // namespace TKL
