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

TEST(VectorMath, resultMayReplaceItsOperand) {
  std::vector<double> values = {0.5, 1.5, 2.5};
  exponentials(values.data(), values.data(), 3);
  EXPECT_NEAR(values[0], std::exp(0.5), 4e-15);
  EXPECT_NEAR(values[2], std::exp(2.5), 4e-14);
}

}  // namespace TKL
