#include "solver/VectorOperations.h"

#include <gtest/gtest.h>
#include <nvector/nvector_serial.h>
#include <sundials/sundials_context.h>

#include <cmath>
#include <limits>

namespace VELMORA_SOLVER {

namespace {

/// Vectors with this program's operations beside such with the library's.
class VectorOperationsTest : public ::testing::Test {
 protected:
  static constexpr sunindextype SIZE = 11;

  VectorOperationsTest() {
    SUNContext_Create(nullptr, &context);
    plain = N_VNew_Serial(SIZE, context);
    own = N_VNew_Serial(SIZE, context);
    useFastOperations(own);
  }
  ~VectorOperationsTest() override {
    for (const N_Vector vector : vectors) N_VDestroy(vector);
    N_VDestroy(plain);
    N_VDestroy(own);
    SUNContext_Free(&context);
  }
  N_Vector make(N_Vector like, double seed) {
    const N_Vector v = N_VClone(like);
    vectors.push_back(v);
    for (sunindextype i = 0; i < SIZE; ++i)
      NV_Ith_S(v, i) = std::sin(seed * static_cast<double>(i + 1)) + 2.0;
    return v;
  }
  static void expectEqual(N_Vector a, N_Vector b) {
    for (sunindextype i = 0; i < SIZE; ++i) EXPECT_DOUBLE_EQ(NV_Ith_S(a, i), NV_Ith_S(b, i)) << i;
  }

  SUNContext context = nullptr;
  N_Vector plain = nullptr;
  N_Vector own = nullptr;
  std::vector<N_Vector> vectors;
};

}  // namespace

TEST_F(VectorOperationsTest, linearSums_areThoseOfTheLibrary) {
  for (const auto& [a, b] :
       {std::pair{1.0, 1.0}, {1.0, -1.0}, {1.0, 0.3}, {0.3, 1.0}, {-1.0, 1.0}, {0.3, -2.0}}) {
    const N_Vector z = make(own, 0.0);
    const N_Vector expected = make(plain, 0.0);
    N_VLinearSum(a, make(own, 0.7), b, make(own, 1.3), z);
    N_VLinearSum(a, make(plain, 0.7), b, make(plain, 1.3), expected);
    expectEqual(z, expected);
  }
}

TEST_F(VectorOperationsTest, resultMayStandOverAnOperand) {
  const N_Vector x = make(own, 0.7);
  const N_Vector y = make(own, 1.3);
  const N_Vector expected = make(plain, 0.0);
  N_VLinearSum(1.0, make(plain, 0.7), 0.3, make(plain, 1.3), expected);
  N_VLinearSum(1.0, x, 0.3, y, x);
  expectEqual(x, expected);
  N_VScale(2.0, y, y);
  N_VScale(2.0, make(plain, 1.3), expected);
  expectEqual(y, expected);
}

TEST_F(VectorOperationsTest, productAndScale_areThoseOfTheLibrary) {
  const N_Vector z = make(own, 0.0);
  const N_Vector expected = make(plain, 0.0);
  N_VProd(make(own, 0.7), make(own, 1.3), z);
  N_VProd(make(plain, 0.7), make(plain, 1.3), expected);
  expectEqual(z, expected);
  N_VScale(-0.4, make(own, 0.7), z);
  N_VScale(-0.4, make(plain, 0.7), expected);
  expectEqual(z, expected);
}

TEST_F(VectorOperationsTest, normAndDotProduct_areThoseOfTheLibrary) {
  EXPECT_DOUBLE_EQ(N_VWrmsNorm(make(own, 0.7), make(own, 1.3)),
                   N_VWrmsNorm(make(plain, 0.7), make(plain, 1.3)));
  EXPECT_DOUBLE_EQ(N_VDotProd(make(own, 0.7), make(own, 1.3)),
                   N_VDotProd(make(plain, 0.7), make(plain, 1.3)));
}

TEST_F(VectorOperationsTest, clones_haveTheOperations) {
  EXPECT_EQ(make(own, 0.7)->ops->nvwrmsnorm, own->ops->nvwrmsnorm);
  EXPECT_NE(own->ops->nvwrmsnorm, plain->ops->nvwrmsnorm);
}

TEST_F(VectorOperationsTest, errorWeight_isTheReciprocalOfTheTolerance) {
  const N_Vector y = make(own, 0.7);
  const N_Vector absolute = make(own, 1.3);
  const N_Vector weights = make(own, 0.0);
  NV_Ith_S(y, 2) = -5.0;
  ASSERT_TRUE(errorWeights(0.01, y, absolute, weights));
  for (sunindextype i = 0; i < SIZE; ++i)
    EXPECT_DOUBLE_EQ(NV_Ith_S(weights, i), 1.0 / (0.01 * std::fabs(NV_Ith_S(y, i)) + NV_Ith_S(absolute, i)));
}

TEST_F(VectorOperationsTest, toleranceOfZeroOrNotANumber_hasNoWeight) {
  for (const double bad : {0.0, std::numeric_limits<double>::quiet_NaN()}) {
    const N_Vector y = make(own, 0.7);
    const N_Vector absolute = make(own, 1.3);
    NV_Ith_S(y, 3) = 0.0;
    NV_Ith_S(absolute, 3) = bad;
    EXPECT_FALSE(errorWeights(0.01, y, absolute, make(own, 0.0)));
  }
}

}  // namespace VELMORA_SOLVER
