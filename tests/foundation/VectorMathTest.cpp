#include "foundation/VectorMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "foundation/PhysicalConstants.h"

namespace TKL {

namespace {

constexpr double FEW_UNITS = 1e-15;  // relative: about four units in the last place

}  // namespace

TEST(VectorMath, exponentials_areThoseOfTheLibrary) {
  std::vector<double> x;
  for (int i = 0; i < 10001; ++i) x.push_back(-80.0 + 0.0137 * i);
  std::vector<double> y(x.size());
  exponentials(x.data(), y.data(), x.size());
  for (std::size_t i = 0; i < x.size(); ++i) ASSERT_NEAR(y[i] / std::exp(x[i]), 1.0, FEW_UNITS) << x[i];
}

TEST(VectorMath, exponentialOfZero_isOne) {
  const std::vector<double> zeros(5, 0.0);
  std::vector<double> y(5);
  exponentials(zeros.data(), y.data(), 5);
  for (const double value : y) EXPECT_EQ(value, 1.0);
}

TEST(VectorMath, hugeExponents_underflowAndOverflow) {
  const std::vector<double> x = {-1000.0, 1000.0};
  std::vector<double> y(2);
  exponentials(x.data(), y.data(), 2);
  EXPECT_EQ(y[0], 0.0);
  EXPECT_GT(y[1], std::numeric_limits<double>::max());
}

TEST(VectorMath, logarithmsOfPairs_areThoseOfTheLibrary) {
  for (double x = 1e-6; x < 1e12; x *= 1.0137) {
    const auto [one, other] = logarithms({x, 0.9 * x});
    const auto [decimalOne, decimalOther] = decimalLogarithms({x, 0.9 * x});
    ASSERT_NEAR(one, std::log(x), FEW_UNITS * std::fabs(std::log(x))) << x;
    ASSERT_NEAR(other, std::log(0.9 * x), FEW_UNITS * std::fabs(std::log(0.9 * x))) << x;
    ASSERT_NEAR(decimalOne, std::log10(x), FEW_UNITS * std::fabs(std::log10(x))) << x;
    ASSERT_NEAR(decimalOther, std::log10(0.9 * x), FEW_UNITS * std::fabs(std::log10(0.9 * x))) << x;
  }
}

// As T / 273.15 K just below the freezing point does.
TEST(VectorMath, logarithmsNearOne_keepTheirDigits) {
  for (double below = 0.3; below > 1e-12; below *= 0.83) {
    const double x = 1.0 - below;
    const auto [one, other] = logarithms({x, 1.0});
    ASSERT_NEAR(one, std::log(x), FEW_UNITS * std::fabs(std::log(x))) << below;
    ASSERT_EQ(other, 0.0);
  }
}

// The exponent of the power multiplies the error of the logarithm, and towards 124.6 K that of the base,
// which vanishes there.
TEST(VectorMath, saturationPressures_areThoseOfSingleTemperatures) {
  std::vector<double> T;
  for (int i = 0; i < 4001; ++i) T.push_back(125.0 + 0.1 * i);
  T.push_back(T_FREEZE);
  T.push_back(std::nextafter(T_FREEZE, 0.0));
  std::vector<double> p(T.size());
  saturationPressures(T.data(), p.data(), T.size());
  for (std::size_t i = 0; i < T.size(); ++i)
    ASSERT_NEAR(p[i] / pSat(T[i]), 1.0, T[i] > 200.0 ? 2e-14 : 1e-12) << T[i];
}

TEST(VectorMath, notANumber_staysOne) {
  for (std::size_t n = 1; n < 5; ++n) {
    std::vector<double> values(n, 300.0);
    values.back() = std::nan("");
    std::vector<double> y(n);
    exponentials(values.data(), y.data(), n);
    EXPECT_FALSE(y.back() >= 0.0 || y.back() < 0.0);
    saturationPressures(values.data(), y.data(), n);
    EXPECT_FALSE(y.back() >= 0.0 || y.back() < 0.0);
  }
}

TEST(VectorMath, logarithmOfNoNumber_isNone) {
  const auto isNumber = [](double value) { return value >= 0.0 || value < 0.0; };
  for (const auto& logarithms : {TKL::logarithms, TKL::decimalLogarithms}) {
    const auto [none, one] = logarithms({std::nan(""), 2.0});
    EXPECT_FALSE(isNumber(none));
    EXPECT_TRUE(isNumber(one));
    EXPECT_FALSE(isNumber(logarithms({2.0, std::nan("")})[1]));
  }
}

TEST(VectorMath, resultMayReplaceItsOperand) {
  std::vector<double> values = {0.5, 1.5, 2.5};
  exponentials(values.data(), values.data(), 3);
  EXPECT_NEAR(values[0], std::exp(0.5), 4e-15);
  EXPECT_NEAR(values[2], std::exp(2.5), 4e-14);
}

}  // namespace TKL
