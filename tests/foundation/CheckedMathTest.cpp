#include "foundation/CheckedMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Thrown.h"

namespace TKL {
namespace {

TEST(CheckedMath, logarithms_ofPositiveNumbers) {
  EXPECT_DOUBLE_EQ(f_log(std::exp(2.0)), 2.0);
  EXPECT_DOUBLE_EQ(f_log10(1000.0), 3.0);
}

TEST(CheckedMath, log_zeroAndNegativeFail) {
  EXPECT_EQ(thrownBy([] { f_log(0); }),
            (Thrown{"Negative or zero value in log function, x = 0", "[TKL::f_log]"}));
  EXPECT_EQ(thrownBy([] { f_log(-2.5); }),
            (Thrown{"Negative or zero value in log function, x = -2.5", "[TKL::f_log]"}));
}

TEST(CheckedMath, log10_zeroAndNegativeFail) {
  EXPECT_EQ(thrownBy([] { f_log10(0); }),
            (Thrown{"Negative or zero value in log function, x = 0", "[TKL::f_log10]"}));
  EXPECT_EQ(thrownBy([] { f_log10(-1e-9); }),
            (Thrown{"Negative or zero value in log function, x = -1e-09", "[TKL::f_log10]"}));
}

TEST(CheckedMath, smallestPositiveNumber_hasALogarithm) {
  EXPECT_TRUE(std::isfinite(f_log(std::numeric_limits<double>::denorm_min())));
}

TEST(CheckedMath, pow10_fiftyIsTheLimit) {
  EXPECT_NEAR(f_pow10(50) / 1e50, 1.0, 2e-14);  // half a unit in the last place of 50 ln 10
  EXPECT_EQ(thrownBy([] { f_pow10(50.0001); }),
            (Thrown{"Exponent too large in power function, exponent = 50.0001", "[TKL::f_pow10]"}));
}

TEST(CheckedMath, pow10_negativeExponentHasNoLimit) {
  EXPECT_EQ(f_pow10(-1000), 0.0);
}

TEST(CheckedMath, pow_zeroBaseIsAllowed) {
  EXPECT_EQ(f_pow(0.0, 2.0), 0.0);
}

TEST(CheckedMath, pow_negativeBaseFails) {
  EXPECT_EQ(thrownBy([] { f_pow(-0.5, 2.0); }),
            (Thrown{"Negative base in power function, base = -0.5", "[TKL::f_pow]"}));
}

TEST(CheckedMath, pow_fiftyIsTheLimit) {
  EXPECT_DOUBLE_EQ(f_pow(2.0, 50.0), 1125899906842624.0);
  EXPECT_EQ(thrownBy([] { f_pow(2.0, 50.0001); }),
            (Thrown{"Exponent too large in power function, exponent = 50.0001", "[TKL::f_pow]"}));
}

TEST(CheckedMath, pow_limitHoldsForSmallBasesToo) {
  EXPECT_EQ(thrownBy([] { f_pow(0.5, 51.0); }).location, "[TKL::f_pow]");
}

TEST(CheckedMath, integerPow_textsEndWithAPoint) {
  EXPECT_EQ(thrownBy([] { f_pow(-0.5, 2); }),
            (Thrown{"Negative base in power function, base = -0.5.", "[TKL::f_pow]"}));
  EXPECT_EQ(thrownBy([] { f_pow(0.5, 51); }),
            (Thrown{"Exponent too large in power function, exponent = 51.", "[TKL::f_pow]"}));
}

TEST(CheckedMath, integerPow_squareIsTheProduct) {
  const double base = 1.0 / 3.0;
  EXPECT_EQ(f_pow(base, 2), base * base);
}

TEST(CheckedMath, integerPow_otherExponents) {
  EXPECT_DOUBLE_EQ(f_pow(2.0, 10), 1024.0);
  EXPECT_DOUBLE_EQ(f_pow(2.0, -1), 0.5);
  EXPECT_DOUBLE_EQ(f_pow(2.0, 50), 1125899906842624.0);
}

}  // namespace
}  // namespace TKL
