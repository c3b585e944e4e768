#include "solver/VectorOperations.h"

#include <nvector/nvector_serial.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

// Each loop works on one index at a time, so a result may be stored over an operand.
#if defined(__GNUC__) && !defined(__clang__)
#define INDEPENDENT _Pragma("GCC ivdep")
#else
#define INDEPENDENT
#endif

namespace VELMORA_SOLVER {

namespace {

std::size_t length(N_Vector v) {
  return static_cast<std::size_t>(NV_LENGTH_S(v));
}

void fill(double value, N_Vector zVector) {
  std::fill_n(NV_DATA_S(zVector), length(zVector), value);
}

void linearSum(double a, N_Vector xVector, double b, N_Vector yVector, N_Vector zVector) {
  const std::size_t n = length(xVector);
  const double* x = NV_DATA_S(xVector);
  const double* y = NV_DATA_S(yVector);
  double* z = NV_DATA_S(zVector);
  if (a == 1.0 && b == 1.0) {
    INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) z[i] = x[i] + y[i];
  } else if (a == 1.0 && b == -1.0) {
    INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) z[i] = x[i] - y[i];
  } else if (a == 1.0) {
    INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) z[i] = x[i] + b * y[i];
  } else if (b == 1.0) {
    INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) z[i] = a * x[i] + y[i];
  } else {
    INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) z[i] = a * x[i] + b * y[i];
  }
}

void scale(double factor, N_Vector xVector, N_Vector zVector) {
  const std::size_t n = length(xVector);
  const double* x = NV_DATA_S(xVector);
  double* z = NV_DATA_S(zVector);
  INDEPENDENT
  for (std::size_t i = 0; i < n; ++i) z[i] = factor * x[i];
}

void product(N_Vector xVector, N_Vector yVector, N_Vector zVector) {
  const std::size_t n = length(xVector);
  const double* x = NV_DATA_S(xVector);
  const double* y = NV_DATA_S(yVector);
  double* z = NV_DATA_S(zVector);
  INDEPENDENT
  for (std::size_t i = 0; i < n; ++i) z[i] = x[i] * y[i];
}

/// Sum of term(i) over n indices in four partial sums, which do not wait for each other.
template <class Term>
double sum(std::size_t n, Term term) {
  double partial[4] = {};
  std::size_t i = 0;
  for (; i + 4 <= n; i += 4)
    for (std::size_t k = 0; k < 4; ++k) partial[k] += term(i + k);
  for (; i < n; ++i) partial[0] += term(i);
  return (partial[0] + partial[1]) + (partial[2] + partial[3]);
}

double dotProduct(N_Vector xVector, N_Vector yVector) {
  const double* x = NV_DATA_S(xVector);
  const double* y = NV_DATA_S(yVector);
  return sum(length(xVector), [=](std::size_t i) { return x[i] * y[i]; });
}

double wrmsNorm(N_Vector xVector, N_Vector wVector) {
  const double* x = NV_DATA_S(xVector);
  const double* w = NV_DATA_S(wVector);
  const std::size_t n = length(xVector);
  const double squares = sum(n, [=](std::size_t i) { return x[i] * w[i] * (x[i] * w[i]); });
  return std::sqrt(squares / static_cast<double>(n));
}

}  // namespace

void useFastOperations(N_Vector vector) {
  vector->ops->nvconst = fill;
  vector->ops->nvlinearsum = linearSum;
  vector->ops->nvscale = scale;
  vector->ops->nvprod = product;
  vector->ops->nvdotprod = dotProduct;
  vector->ops->nvwrmsnorm = wrmsNorm;
}

void addMultiple(double factor, std::span<const double> values, std::span<double> sums) {
  const std::size_t n = values.size();
  const double* x = values.data();
  double* y = sums.data();
  INDEPENDENT
  for (std::size_t i = 0; i < n; ++i) y[i] += factor * x[i];
}

bool errorWeights(double relative, N_Vector yVector, N_Vector absoluteVector, N_Vector weightVector) {
  const std::size_t n = length(yVector);
  const double* y = NV_DATA_S(yVector);
  const double* absolute = NV_DATA_S(absoluteVector);
  double* weights = NV_DATA_S(weightVector);
  double smallest = 1.0;
  for (std::size_t i = 0; i < n; ++i) {
    const double tolerance = relative * std::fabs(y[i]) + absolute[i];
    smallest = tolerance > 0.0 ? smallest : 0.0;  // 0 for NaN, too
    weights[i] = 1.0 / tolerance;
  }
  return smallest > 0.0;
}

}  // namespace VELMORA_SOLVER
