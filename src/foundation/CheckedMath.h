#pragma once

#include <cmath>

namespace TKL {

/// Largest exponent of the power functions below; it keeps `pow` out of overflow when a wild iterate reaches
/// a material function.
inline constexpr double MAX_EXPONENT = 50;

// Mathematical functions that fail in a reportable way instead of giving a NaN that surfaces far away. A
// not-a-number argument passes through.

/// They throw what the functions below throw for a value without a logarithm, or an exponent above
/// MAX_EXPONENT.
[[noreturn]] void failLog(double x);
[[noreturn]] void failLog10(double x);
[[noreturn]] void failPow10(double x);

/// Natural logarithm. @throws Exception "Negative or zero value in log function, x = %1"
inline double f_log(double x) {
  if (x <= 0) failLog(x);
  return std::log(x);
}

/// Decimal logarithm. @throws Exception "Negative or zero value in log function, x = %1"
inline double f_log10(double x) {
  if (x <= 0) failLog10(x);
  return std::log10(x);
}

/// 10^x as exp(x ln 10), which takes half the time of `pow`; the relative error grows to 1e-14 at the largest
/// exponent.
/// @throws Exception "Exponent too large in power function, exponent = %1" above MAX_EXPONENT
inline double f_pow10(double x) {
  constexpr double LN_10 = 2.302585092994045684;
  if (x > MAX_EXPONENT) failPow10(x);
  return std::exp(x * LN_10);
}

/// base^exponent.
/// @throws Exception "Negative base in power function, base = %1",
///                   "Exponent too large in power function, exponent = %1" above MAX_EXPONENT
double f_pow(double base, double exponent);

/// base^exponent, same limits; the texts end with a point.
double f_pow(double base, int exponent);

}  // namespace TKL
