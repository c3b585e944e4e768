#include "foundation/CheckedMath.h"

#include <cmath>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace TKL {

namespace {

// Out of line, so that the checks stay cheap where nothing fails.
[[noreturn]] void fail(const char* text, double value, const char* functionId) {
  throw Exception(FormatString(text).arg(value), functionId);
}

}  // namespace

void failLog(double x) {
  const char* const FUNC_ID = "[TKL::f_log]";
  fail("Negative or zero value in log function, x = %1", x, FUNC_ID);
}

void failLog10(double x) {
  const char* const FUNC_ID = "[TKL::f_log10]";
  fail("Negative or zero value in log function, x = %1", x, FUNC_ID);
}

void failPow10(double x) {
  const char* const FUNC_ID = "[TKL::f_pow10]";
  fail("Exponent too large in power function, exponent = %1", x, FUNC_ID);
}

double f_pow(double base, double exponent) {
  const char* const FUNC_ID = "[TKL::f_pow]";
  if (base < 0) {
    fail("Negative base in power function, base = %1", base, FUNC_ID);
  }
  if (exponent > MAX_EXPONENT) {
    fail("Exponent too large in power function, exponent = %1", exponent, FUNC_ID);
  }
  return std::pow(base, exponent);
}

double f_pow(double base, int exponent) {
  const char* const FUNC_ID = "[TKL::f_pow]";
  if (base < 0) {
    fail("Negative base in power function, base = %1.", base, FUNC_ID);
  }
  if (exponent > MAX_EXPONENT) {
    fail("Exponent too large in power function, exponent = %1.", exponent, FUNC_ID);
  }
  return exponent == 2 ? base * base : std::pow(base, exponent);
}

}  // namespace TKL
