#include "solver/BlockJacobian.h"

#include <gtest/gtest.h>

#include "solver/JacobianSystem.h"

namespace VELMORA_SOLVER {

namespace {

/// The Jacobian of rates y' = A y, whose quotients are exact but for rounding.
struct LinearRates {
  explicit LinearRates(JacobianPattern p)
      : pattern(std::move(p)), A(randomRates(pattern, 3)), jacobian(pattern) {
    for (std::size_t i = 0; i < A.n; ++i) y.push_back(1.0 + 0.01 * static_cast<double>(i));
    f = A.times(y);
  }
  int evaluate(double smallest = 1e-6) {
    const std::vector<double> weights(A.n, 1.0);
    return jacobian.evaluate(
        [this](const double* state, double* rates) {
          ++evaluations;
          if (evaluations == failAt) return 7;
          const std::vector<double> product = A.times({state, state + A.n});
          std::copy(product.begin(), product.end(), rates);
          return 0;
        },
        y.data(), f.data(), weights.data(), smallest);
  }

  JacobianPattern pattern;
  DenseMatrix A;
  BlockJacobian jacobian;
  std::vector<double> y;
  std::vector<double> f;
  std::size_t evaluations = 0;
  std::size_t failAt = 0;
};

}  // namespace

TEST(BlockJacobian, linearRates_haveTheirMatrix) {
  for (const std::size_t n : {1U, 2U, 3U, 4U}) {
    LinearRates rates(gridPattern(5, 4, n));
    ASSERT_EQ(rates.evaluate(), 0);
    const JacobianPattern& P = rates.pattern;
    for (std::size_t row = 0; row < P.nCells; ++row)
      for (auto p = P.rowStart[row]; p < P.rowStart[row + 1]; ++p)
        for (std::size_t i = 0; i < n; ++i)
          for (std::size_t k = 0; k < n; ++k)
            EXPECT_NEAR(rates.jacobian.block(p)[i * n + k], rates.A.at(row * n + i, P.column[p] * n + k),
                        1e-6);
  }
}

TEST(BlockJacobian, evaluations_areGroupsTimesEquations) {
  LinearRates rates(gridPattern(12, 9, 2));
  rates.evaluate();
  EXPECT_EQ(rates.evaluations, 2 * rates.pattern.groups.size());
}

TEST(BlockJacobian, stateOfZero_isPerturbedByTheSmallestIncrement) {
  LinearRates rates(gridPattern(4, 1, 1));
  rates.y.assign(4, 0.0);
  rates.f.assign(4, 0.0);
  ASSERT_EQ(rates.evaluate(0.5), 0);
  EXPECT_NEAR(rates.jacobian.block(0)[0], rates.A.at(0, 0), 1e-14);
}

// y' = -3 y, and 1 less from y = 2 on
TEST(BlockJacobian, turnedIncrement_keepsTheQuotientOnItsSideOfAJump) {
  const JacobianPattern pattern = gridPattern(1, 1, 1);
  const auto rates = [](const double* y, double* ydot) {
    ydot[0] = -3.0 * y[0] - (y[0] >= 2.0 ? 1.0 : 0.0);
    return 0;
  };
  const double y = 2.0 - 1e-9, weight = 1.0;
  double f = 0.0;
  rates(&y, &f);
  BlockJacobian jacobian(pattern);
  ASSERT_EQ(jacobian.evaluate(rates, &y, &f, &weight, 0.0), 0);
  EXPECT_LT(jacobian.block(0)[0], -1e7);
  const auto turn = [](std::span<double> increments) { increments[0] = -increments[0]; };
  ASSERT_EQ(jacobian.evaluate(rates, &y, &f, &weight, 0.0, turn), 0);
  EXPECT_NEAR(jacobian.block(0)[0], -3.0, 1e-6);
}

TEST(BlockJacobian, failedEvaluation_endsWithItsCode) {
  LinearRates rates(gridPattern(4, 4, 2));
  rates.failAt = 3;
  EXPECT_EQ(rates.evaluate(), 7);
  EXPECT_EQ(rates.evaluations, 3U);
}

TEST(BlockJacobian, product_isThatOfTheMatrix) {
  LinearRates rates(gridPattern(5, 4, 2));
  rates.evaluate();
  std::vector<double> product(rates.A.n);
  rates.jacobian.multiply(rates.y.data(), product.data());
  for (std::size_t i = 0; i < product.size(); ++i) EXPECT_NEAR(product[i], rates.f[i], 1e-5);
}

}  // namespace VELMORA_SOLVER
