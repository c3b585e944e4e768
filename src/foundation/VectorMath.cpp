#include "foundation/VectorMath.h"

#include <cmath>

#include "foundation/SaturationLaw.h"

// This file is compiled with -ffast-math, without which g++ does not use the vector functions. Nothing in it
// depends on the order of operations.

namespace TKL {

void exponentials(const double* x, double* y, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) y[i] = std::exp(x[i]);
}

std::array<double, 2> logarithms(std::array<double, 2> x) {
#pragma GCC unroll 1  // as a loop, which becomes one call of the vector function
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = std::log(x[i]);
  return x;
}

std::array<double, 2> decimalLogarithms(std::array<double, 2> x) {
#pragma GCC unroll 1
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = std::log10(x[i]);
  return x;
}

void saturationPressures(const double* T, double* p, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) {
    const SaturationLaw law = SaturationLaw::at(T[i]);
    p[i] = law.factor * std::exp(law.exponent * std::log(law.baseAt(T[i])));
  }
}

}  // namespace TKL
