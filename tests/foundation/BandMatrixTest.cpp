#include "foundation/BandMatrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "support/Thrown.h"

namespace TKL {
namespace {

using Values = std::vector<double>;

/// A square matrix with all elements, row by row.
struct Dense {
  explicit Dense(std::uint32_t order) : n(order), a(order * order, 0.0) {}
  double& at(std::uint32_t i, std::uint32_t k) { return a[i * n + k]; }
  double at(std::uint32_t i, std::uint32_t k) const { return a[i * n + k]; }
  std::uint32_t n;
  Values a;
};

/// Gauss-Jordan elimination with full column search.
Values solveDense(Dense m, Values b) {
  for (std::uint32_t k = 0; k < m.n; ++k) {
    std::uint32_t pivot = k;
    for (std::uint32_t i = k; i < m.n; ++i) {
      pivot = std::fabs(m.at(i, k)) > std::fabs(m.at(pivot, k)) ? i : pivot;
    }
    for (std::uint32_t j = 0; j < m.n; ++j) {
      std::swap(m.at(k, j), m.at(pivot, j));
    }
    std::swap(b[k], b[pivot]);
    for (std::uint32_t i = 0; i < m.n; ++i) {
      const double factor = i == k ? 0.0 : m.at(i, k) / m.at(k, k);
      for (std::uint32_t j = 0; j < m.n; ++j) {
        m.at(i, j) -= factor * m.at(k, j);
      }
      b[i] -= factor * b[k];
    }
  }
  for (std::uint32_t k = 0; k < m.n; ++k) {
    b[k] /= m.at(k, k);
  }
  return b;
}

bool inBand(const BandMatrix& m, std::uint32_t i, std::uint32_t k) {
  return i <= k + m.ml && k <= i + m.mu;
}

/// The same random numbers in both; off-diagonal ones are the larger, so that rows must be exchanged.
void fillRandomly(BandMatrix& band, Dense& dense, std::mt19937& random) {
  std::uniform_real_distribution<double> numbers(-1.0, 1.0);
  for (std::uint32_t i = 0; i < band.n; ++i) {
    for (std::uint32_t k = 0; k < band.n; ++k) {
      if (inBand(band, i, k)) {
        dense.at(i, k) = i == k ? std::copysign(0.3, numbers(random)) : numbers(random);
        band.at(i, k) = dense.at(i, k);
      }
    }
  }
}

void expectSameAsDense(BandMatrix& band, std::mt19937& random) {
  Dense dense(band.n);
  fillRandomly(band, dense, random);
  Values b(band.n);
  std::uniform_real_distribution<double> numbers(-1.0, 1.0);
  std::generate(b.begin(), b.end(), [&] { return numbers(random); });
  const Values expected = solveDense(dense, b);
  ASSERT_EQ(band.lu(), 0U);
  band.backsolve(b);
  double largest = 1.0;
  for (const double x : expected) {
    largest = std::max(largest, std::fabs(x));
  }
  for (std::uint32_t i = 0; i < band.n; ++i) {
    EXPECT_NEAR(b[i], expected[i], 1e-8 * largest) << "row " << i;
  }
}

TEST(BandMatrix, orderOne) {
  BandMatrix matrix(1, 0, 0);
  matrix.at(0, 0) = 2.0;
  EXPECT_EQ(matrix.lu(), 0U);
  Values b{4.0};
  matrix.backsolve(b);
  EXPECT_EQ(b, (Values{2.0}));
}

TEST(BandMatrix, randomMatrices_solveLikeDenseOnes) {
  std::mt19937 random(11);
  for (std::uint32_t n = 1; n <= 24; ++n) {
    for (std::uint32_t mu = 0; mu < std::min(n, 5U); ++mu) {
      for (std::uint32_t ml = 0; ml < std::min(n, 5U); ++ml) {
        BandMatrix band(n, mu, ml);
        SCOPED_TRACE(std::to_string(n) + " " + std::to_string(mu) + " " + std::to_string(ml));
        expectSameAsDense(band, random);
      }
    }
  }
}

TEST(BandMatrix, storageLimitedToTheOrder_solvesLikeDense) {
  std::mt19937 random(12);
  for (std::uint32_t n = 1; n <= 8; ++n) {
    for (std::uint32_t width = 1; width <= 9; ++width) {
      BandMatrix band(n, width, width, std::min(2 * width, n));
      SCOPED_TRACE(std::to_string(n) + " " + std::to_string(width));
      expectSameAsDense(band, random);
    }
  }
}

TEST(BandMatrix, storageBandwidthTooSmall_isRaised) {
  EXPECT_EQ(BandMatrix(10, 2, 2, 0).smu, 4U);
  EXPECT_EQ(BandMatrix(3, 2, 2, 0).smu, 2U);
}

TEST(BandMatrix, storageUpperBandwidth_isThatOfBothBands) {
  EXPECT_EQ(BandMatrix(10, 3, 2).smu, 5U);
}

TEST(BandMatrix, diagonalStandsAtTheStorageBandwidth) {
  BandMatrix matrix(4, 1, 1);
  matrix.at(2, 2) = 5.0;
  matrix.at(3, 2) = 6.0;
  matrix.at(1, 2) = 7.0;
  EXPECT_EQ(matrix.columns[2][2], 5.0);
  EXPECT_EQ(matrix.columns[2][3], 6.0);
  EXPECT_EQ(matrix.columns[2][1], 7.0);
}

TEST(BandMatrix, columnsAreContiguous) {
  const BandMatrix matrix(4, 2, 1);
  EXPECT_EQ(matrix.data.size(), 4U * (3 + 1 + 1));
  EXPECT_EQ(matrix.columns[1] - matrix.columns[0], 5);
}

TEST(BandMatrix, multipliersAreStoredNegated) {
  BandMatrix matrix(2, 1, 1);
  matrix.at(0, 0) = 4.0;
  matrix.at(1, 0) = 2.0;
  matrix.at(0, 1) = 1.0;
  matrix.at(1, 1) = 3.0;
  ASSERT_EQ(matrix.lu(), 0U);
  EXPECT_EQ(matrix.at(1, 0), -0.5);
  EXPECT_EQ(matrix.at(1, 1), 3.0 - 0.5);
}

TEST(BandMatrix, equalPivotCandidates_keepTheOrderOfRows) {
  BandMatrix matrix(2, 1, 1);
  matrix.at(0, 0) = 1.0;
  matrix.at(1, 0) = -1.0;
  matrix.at(0, 1) = 1.0;
  matrix.at(1, 1) = 1.0;
  ASSERT_EQ(matrix.lu(), 0U);
  EXPECT_EQ(matrix.pivots, (std::vector<std::uint32_t>{0, 1}));
}

TEST(BandMatrix, largerCandidate_isExchanged) {
  BandMatrix matrix(2, 1, 1);
  matrix.at(0, 0) = 1.0;
  matrix.at(1, 0) = -1.5;
  matrix.at(0, 1) = 1.0;
  matrix.at(1, 1) = 1.0;
  ASSERT_EQ(matrix.lu(), 0U);
  EXPECT_EQ(matrix.pivots, (std::vector<std::uint32_t>{1, 1}));
}

TEST(BandMatrix, zeroColumn_givesItsNumberFromOne) {
  BandMatrix matrix(3, 1, 1);
  matrix.at(0, 0) = 1.0;
  matrix.at(2, 2) = 1.0;
  EXPECT_EQ(matrix.lu(), 2U);
}

TEST(BandMatrix, zeroFirstColumn_givesOne) {
  BandMatrix matrix(3, 1, 1);
  EXPECT_EQ(matrix.lu(), 1U);
}

TEST(BandMatrix, zeroLastPivot_givesTheOrder) {
  BandMatrix matrix(2, 1, 1);
  matrix.at(0, 0) = matrix.at(0, 1) = matrix.at(1, 0) = matrix.at(1, 1) = 1.0;
  EXPECT_EQ(matrix.lu(), 2U);
}

TEST(BandMatrix, zero_makesRoomForTheNextSystem) {
  std::mt19937 random(13);
  BandMatrix band(12, 2, 3);
  expectSameAsDense(band, random);
  band.zero();
  expectSameAsDense(band, random);
}

TEST(BandMatrix, fillInOfAnEarlierFactorisation_doesNotCount) {
  std::mt19937 random(14);
  BandMatrix band(12, 2, 3);
  expectSameAsDense(band, random);
  // every element of the band is written again, the rows of fill-in are not
  expectSameAsDense(band, random);
}

TEST(BandMatrix, empty_throws) {
  BandMatrix matrix;
  EXPECT_EQ(thrownBy([&] { matrix.lu(); }), (Thrown{"Matrix is empty.", "[BandMatrix::lu]"}));
}

TEST(BandMatrix, pivotsOfAnotherSize_throw) {
  BandMatrix matrix(3, 1, 1);
  matrix.pivots.resize(2);
  EXPECT_EQ(
      thrownBy([&] { matrix.lu(); }),
      (Thrown{"Mismatching sizes of matrix (n = 3) and pivots vector (size = 2).", "[BandMatrix::lu]"}));
}

TEST(BandMatrix, movedMatrix_keepsItsColumns) {
  BandMatrix matrix(1, 0, 0);
  matrix.at(0, 0) = 3.0;
  const BandMatrix moved = std::move(matrix);
  EXPECT_EQ(moved.at(0, 0), 3.0);
}

}  // namespace
}  // namespace TKL
