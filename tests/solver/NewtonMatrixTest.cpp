#include "solver/NewtonMatrix.h"

#include <gtest/gtest.h>

#include "solver/JacobianSystem.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double NEWTON_GAMMA = 0.7;
const char* const PIVOT_WARNING =
    "The linear equations cannot be solved cell by cell here. A slower method that exchanges rows is used "
    "from "
    "now on.\n";

/// Fills the Jacobian of a Newton matrix with that of y' = A y.
void setJacobian(NewtonMatrix& matrix, const DenseMatrix& A) {
  const std::vector<double> zero(A.n, 0.0);
  const std::vector<double> one(A.n, 1.0);
  matrix.jacobian.evaluate(
      [&A](const double* state, double* rates) {
        const std::vector<double> product = A.times({state, state + A.n});
        std::copy(product.begin(), product.end(), rates);
        return 0;
      },
      zero.data(), zero.data(), one.data(), 1.0);
}

std::vector<double> newtonSolution(std::size_t n) {
  std::vector<double> x;
  for (std::size_t i = 0; i < n; ++i) x.push_back(1.0 + 0.1 * static_cast<double>(i % 7));
  return x;
}

/// (I - gamma A) x
std::vector<double> newtonProduct(const DenseMatrix& A, const std::vector<double>& x, double gamma) {
  std::vector<double> b = A.times(x);
  for (std::size_t i = 0; i < b.size(); ++i) b[i] = x[i] - gamma * b[i];
  return b;
}

double newtonError(NewtonMatrix& matrix, const DenseMatrix& A, double gamma) {
  const std::vector<double> x = newtonSolution(A.n);
  std::vector<double> b = newtonProduct(A, x, gamma);
  matrix.solve(b.data());
  double error = 0.0;
  for (std::size_t i = 0; i < b.size(); ++i) error = std::max(error, std::fabs(b[i] - x[i]));
  return error;
}

}  // namespace

TEST(NewtonMatrix, blocksOfAChain_areSolvedExactly) {
  for (const std::size_t n : {1U, 2U, 3U, 4U}) {
    const JacobianPattern pattern = gridPattern(30, 1, n);
    const DenseMatrix A = randomRates(pattern, 5);
    NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
    EXPECT_TRUE(matrix.isExact());
    setJacobian(matrix, A);
    ASSERT_TRUE(matrix.factorise(NEWTON_GAMMA));
    EXPECT_LT(newtonError(matrix, A, NEWTON_GAMMA), 1e-10) << n;
  }
}

TEST(NewtonMatrix, blocksOfAGrid_areSolvedExactly) {
  for (const std::size_t n : {1U, 2U, 3U, 4U}) {
    const JacobianPattern pattern = gridPattern(11, 8, n);
    NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
    EXPECT_TRUE(matrix.isExact());
    for (const unsigned seed : {5U, 6U}) {
      const DenseMatrix A = randomRates(pattern, seed);
      setJacobian(matrix, A);
      ASSERT_TRUE(matrix.factorise(0.1));  // as in a run, the diagonal dominates
      EXPECT_LT(newtonError(matrix, A, 0.1), 1e-10) << n;
    }
  }
}

// pairs that are no neighbours in the grid need fill of their own
TEST(NewtonMatrix, blocksOfAnyPattern_areSolvedExactly) {
  auto pairs = gridPairs(6, 5);
  pairs.emplace_back(0, 29);
  pairs.emplace_back(7, 20);
  const JacobianPattern pattern = JacobianPattern::of(30, 2, pairs, gridPlaces(6, 5));
  const DenseMatrix A = randomRates(pattern, 5);
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
  setJacobian(matrix, A);
  ASSERT_TRUE(matrix.factorise(NEWTON_GAMMA));
  EXPECT_LT(newtonError(matrix, A, NEWTON_GAMMA), 1e-10);
}

TEST(NewtonMatrix, incompleteBlocksOfAGrid_areSolvedRoughly) {
  const JacobianPattern pattern = gridPattern(12, 12, 2);
  const DenseMatrix A = randomRates(pattern, 5);
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::INCOMPLETE);
  EXPECT_FALSE(matrix.isExact());
  setJacobian(matrix, A);
  ASSERT_TRUE(matrix.factorise(0.05));
  const double error = newtonError(matrix, A, 0.05);
  EXPECT_GT(error, 1e-10);
  EXPECT_LT(error, 0.1);
}

TEST(NewtonMatrix, sparseFactors_areExactOnAGridAndForANewMatrix) {
  const JacobianPattern pattern = gridPattern(9, 7, 3);
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::SPARSE);
  EXPECT_TRUE(matrix.isExact());
  for (const unsigned seed : {5U, 6U, 7U}) {
    const DenseMatrix A = randomRates(pattern, seed);
    setJacobian(matrix, A);
    for (const double gamma : {NEWTON_GAMMA, 0.01}) {
      ASSERT_TRUE(matrix.factorise(gamma));
      EXPECT_LT(newtonError(matrix, A, gamma), 1e-10) << seed;
    }
  }
}

TEST(NewtonMatrix, product_isThatOfTheMatrix) {
  const JacobianPattern pattern = gridPattern(5, 4, 2);
  const DenseMatrix A = randomRates(pattern, 5);
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
  setJacobian(matrix, A);
  ASSERT_TRUE(matrix.factorise(NEWTON_GAMMA));
  const std::vector<double> x = newtonSolution(A.n);
  const std::vector<double> b = newtonProduct(A, x, NEWTON_GAMMA);
  std::vector<double> product(A.n);
  matrix.multiply(x.data(), product.data());
  for (std::size_t i = 0; i < b.size(); ++i) EXPECT_NEAR(product[i], b[i], 1e-12);
}

TEST(NewtonMatrix, balance_makesTheTotalsOfTheResidualVanish) {
  JacobianPattern pattern = gridPattern(8, 6, 2);
  for (std::size_t cell = 0; cell < pattern.nCells; ++cell)
    pattern.volume[cell] = 1.0 + 0.2 * static_cast<double>(cell % 5);
  const DenseMatrix A = randomRates(pattern, 5);
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::INCOMPLETE);
  setJacobian(matrix, A);
  ASSERT_TRUE(matrix.factorise(0.05));
  const std::vector<double> b = newtonProduct(A, newtonSolution(A.n), 0.05);
  std::vector<double> x = b;
  matrix.solve(x.data());  // roughly
  const auto totals = [&] {
    const std::vector<double> product = newtonProduct(A, x, 0.05);
    std::vector<double> sums(2, 0.0);
    for (std::size_t i = 0; i < b.size(); ++i) sums[i % 2] += pattern.volume[i / 2] * (b[i] - product[i]);
    return sums;
  };
  EXPECT_GT(std::fabs(totals()[0]) + std::fabs(totals()[1]), 1e-6);
  matrix.balance(b.data(), x.data());
  EXPECT_NEAR(totals()[0], 0.0, 1e-11);
  EXPECT_NEAR(totals()[1], 0.0, 1e-11);
}

// energy and mass of one cell differ by many orders of magnitude without harm
TEST(NewtonMatrix, badlyScaledBlocks_areNoReasonToExchangeRows) {
  const TKL::MessageCapture capture;
  const JacobianPattern pattern = gridPattern(10, 1, 2);
  DenseMatrix A = randomRates(pattern, 5);
  for (std::size_t i = 0; i < A.n; ++i)
    for (std::size_t k = 0; k < A.n; ++k) A.at(i, k) *= (i % 2 == 0 ? 1e9 : 1.0) * (k % 2 == 0 ? 1e-9 : 1.0);
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
  setJacobian(matrix, A);
  EXPECT_TRUE(matrix.factorise(NEWTON_GAMMA));
  EXPECT_TRUE(capture.messages.empty());
}

// the first cell's own block is singular, the matrix is not
TEST(NewtonMatrix, singularBlock_makesRowsExchangeWithOneWarning) {
  const TKL::MessageCapture capture;
  const JacobianPattern pattern = gridPattern(6, 1, 1);
  DenseMatrix A = randomRates(pattern, 5);
  A.at(0, 0) = 1.0;
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
  setJacobian(matrix, A);
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(matrix.factorise(1.0));
    EXPECT_LT(newtonError(matrix, A, 1.0), 1e-10);
  }
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has(PIVOT_WARNING, TKL::MSG_WARNING, "[NewtonMatrix::factorise]", -1));
  EXPECT_TRUE(matrix.isExact());
}

TEST(NewtonMatrix, singularMatrix_isNotFactorised) {
  const TKL::MessageCapture capture;
  const JacobianPattern pattern = gridPattern(3, 1, 1);
  DenseMatrix A(3);
  for (std::size_t i = 0; i < 3; ++i) A.at(i, i) = 1.0;
  NewtonMatrix matrix(pattern, NewtonMatrix::Factors::BLOCKS);
  setJacobian(matrix, A);
  EXPECT_FALSE(matrix.factorise(1.0));
}

}  // namespace VELMORA_SOLVER
