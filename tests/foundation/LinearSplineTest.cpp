#include "foundation/LinearSpline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <sstream>

#include "support/AllocationCounter.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

using Values = std::vector<double>;

const char* const ELIMINATE = "[LinearSpline::eliminateConsecutive]";

LinearSpline splineOf(const Values& x, const Values& y, int method = LinearSpline::EM_CONSTANT) {
  LinearSpline spline;
  spline.setValues(x, y);
  spline.extrapolationMethod = method;
  return spline;
}

TEST(LinearSpline, interpolatesBetweenNodes) {
  const LinearSpline spline = splineOf({1.0, 3.0, 4.0}, {10.0, 20.0, 0.0});
  EXPECT_DOUBLE_EQ(spline.value(1.5), 12.5);
  EXPECT_DOUBLE_EQ(spline.value(3.75), 5.0);
}

TEST(LinearSpline, valueAtNodes_isExact) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> step(1e-6, 1.0);
  Values x{-7.3};
  Values y{0.1};
  for (int i = 0; i < 500; ++i) {
    x.push_back(x.back() + step(random));
    y.push_back(1e5 * (step(random) - 0.5));
  }
  const LinearSpline spline = splineOf(x, y);
  for (std::size_t i = 0; i < x.size(); ++i) {
    EXPECT_EQ(spline.value(x[i]), y[i]);
    EXPECT_EQ(spline.nonInterpolatedValue(x[i]), y[i]);
  }
}

TEST(LinearSpline, interpolation_isTheConvexForm) {
  const LinearSpline spline = splineOf({0.1, 0.4}, {0.3, 1.7});
  const double a = (0.2 - 0.1) / (0.4 - 0.1);
  EXPECT_EQ(spline.value(0.2), (1.0 - a) * 0.3 + a * 1.7);
}

TEST(LinearSpline, constantExtrapolation_holdsTheEndValues) {
  const LinearSpline spline = splineOf({1.0, 2.0}, {3.0, 5.0});
  EXPECT_EQ(spline.value(1e9), 5.0);
  EXPECT_EQ(spline.value(-1e9), 3.0);
}

TEST(LinearSpline, linearExtrapolation_holdsTheEndSlopes) {
  const LinearSpline spline = splineOf({1.0, 2.0, 4.0}, {3.0, 5.0, 4.0}, LinearSpline::EM_LINEAR);
  EXPECT_DOUBLE_EQ(spline.value(8.0), 4.0 - 0.5 * 4.0);
  EXPECT_DOUBLE_EQ(spline.value(-2.0), 3.0 - 2.0 * 3.0);
}

TEST(LinearSpline, firstNode_isExactWithLinearExtrapolation) {
  EXPECT_EQ(splineOf({0.1, 0.3}, {0.7, 0.9}, LinearSpline::EM_LINEAR).value(0.1), 0.7);
}

TEST(LinearSpline, methodsAreNumbered) {
  EXPECT_EQ(LinearSpline().extrapolationMethod, 0);
  EXPECT_EQ(LinearSpline::EM_LINEAR, 1);
}

TEST(LinearSpline, singlePoint_isAConstantFunction) {
  const LinearSpline spline = splineOf({1.0}, {4.0}, LinearSpline::EM_LINEAR);
  EXPECT_TRUE(spline.valid);
  for (const double at : {-5.0, 1.0, 5.0}) {
    EXPECT_EQ(spline.value(at), 4.0);
    EXPECT_EQ(spline.nonInterpolatedValue(at), 4.0);
  }
}

TEST(LinearSpline, equidistantTable_isEvaluatedWithoutSearch) {
  LinearSpline spline = splineOf({0.0, 2.0, 4.0}, {1.0, 3.0, 9.0});
  spline.xStep = 2.0;
  EXPECT_DOUBLE_EQ(spline.value(1.0), 2.0);
  EXPECT_DOUBLE_EQ(spline.value(3.0), 6.0);
  EXPECT_EQ(spline.value(4.0), 9.0);
  EXPECT_EQ(spline.value(99.0), 9.0);
}

TEST(LinearSpline, equidistantTable_countsIntervalsFromTheOffsetButLinesFromZero) {
  LinearSpline spline = splineOf({10.0, 12.0, 14.0}, {1.0, 3.0, 9.0});
  spline.xStep = 2.0;
  spline.xOffset = 10.0;
  // interval 1, slope 3
  EXPECT_DOUBLE_EQ(spline.value(13.0), (13.0 - 1 * 2.0) * 3.0 + 3.0);
}

TEST(LinearSpline, equidistantTableBelowItsStart_continuesTheFirstInterval) {
  LinearSpline spline = splineOf({0.0, 2.0, 4.0}, {1.0, 3.0, 9.0});
  spline.xStep = 2.0;
  EXPECT_DOUBLE_EQ(spline.value(-6.0), -5.0);
}

TEST(LinearSpline, stepValue_holdsFromNodeToJustBelowTheNext) {
  const LinearSpline spline = splineOf({1.0, 2.0, 3.0}, {10.0, 20.0, 30.0});
  EXPECT_EQ(spline.nonInterpolatedValue(0.0), 10.0);
  EXPECT_EQ(spline.nonInterpolatedValue(std::nextafter(2.0, 0.0)), 10.0);
  EXPECT_EQ(spline.nonInterpolatedValue(2.0), 20.0);
  EXPECT_EQ(spline.nonInterpolatedValue(2.5), 20.0);
  EXPECT_EQ(spline.nonInterpolatedValue(3.0), 30.0);
  EXPECT_EQ(spline.nonInterpolatedValue(4.0), 30.0);
}

TEST(LinearSpline, value_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP() << "the sanitizer has its own operators";
  const LinearSpline spline = splineOf({1.0, 2.0, 3.0}, {10.0, 20.0, 30.0});
  const std::size_t before = allocationCount();
  volatile double sum = 0.0;
  for (double at = 0.0; at < 5.0; at += 0.01) {
    sum = sum + spline.value(at) + spline.nonInterpolatedValue(at);
  }
  EXPECT_EQ(allocationCount(), before);
}

// A walk along the table would need 10^11 steps here.
TEST(LinearSpline, value_isFoundByHalving) {
  LinearSpline spline;
  for (int i = 0; i < 1000000; ++i) {
    spline.x.push_back(i);
    spline.y.push_back(-i);
  }
  for (int i = 0; i < 1000000; i += 10) {
    ASSERT_EQ(spline.value(i), -i);
  }
}

TEST(LinearSpline, allocationCounter_countsAllocations) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP() << "the sanitizer has its own operators";
  const std::size_t before = allocationCount();
  EXPECT_FALSE(std::vector<double>(100, 1.0).empty());
  EXPECT_GT(allocationCount(), before);
}

TEST(LinearSpline, slopes_areThoseOfTheIntervals) {
  EXPECT_EQ(splineOf({0.0, 1.0, 3.0}, {0.0, 4.0, 3.0}).slope, (Values{4.0, -0.5}));
}

TEST(MakeSpline, noPoints_areInvalid) {
  LinearSpline spline;
  std::string error;
  EXPECT_FALSE(spline.makeSpline(error));
  EXPECT_EQ(error, "Invalid vector dimensions.");
}

TEST(MakeSpline, differentLengths_areInvalid) {
  LinearSpline spline = splineOf({1.0, 2.0}, {1.0, 2.0});
  spline.y.pop_back();
  std::string error;
  EXPECT_FALSE(spline.makeSpline(error));
  EXPECT_EQ(error, "Invalid vector dimensions.");
  EXPECT_FALSE(spline.valid);
  EXPECT_TRUE(spline.slope.empty());
}

TEST(MakeSpline, equalNeighbours_areInvalidAndLocated) {
  LinearSpline spline;
  spline.x = {1.0, 2.0, 2.0};
  spline.y = {1.0, 2.0, 3.0};
  std::string error;
  EXPECT_FALSE(spline.makeSpline(error));
  EXPECT_EQ(error, "X values are not strictly monotonic increasing (at position/index 1).");
  EXPECT_FALSE(spline.valid);
}

TEST(MakeSpline, notANumber_isInvalid) {
  LinearSpline spline;
  spline.x = {1.0, std::numeric_limits<double>::quiet_NaN(), 2.0};
  spline.y = {1.0, 2.0, 3.0};
  std::string error;
  EXPECT_FALSE(spline.makeSpline(error));
}

TEST(LinearSplineRead, readsTwoTexts) {
  LinearSpline spline;
  spline.read("1 2 4", " 5\t6 7 ");
  EXPECT_EQ(spline.x, (Values{1.0, 2.0, 4.0}));
  EXPECT_EQ(spline.y, (Values{5.0, 6.0, 7.0}));
  EXPECT_TRUE(spline.valid);
}

TEST(LinearSplineRead, noX_throws) {
  LinearSpline spline;
  EXPECT_EQ(thrownBy([&] { spline.read("", "1"); }),
            (Thrown{"Missing data to read!", "[LinearSpline::read]"}));
}

TEST(LinearSplineRead, differentCounts_throw) {
  LinearSpline spline;
  EXPECT_EQ(thrownBy([&] { spline.read("1 2 3", "1 2"); }),
            (Thrown{"Number of x [3] and y [2] values differs!", "[LinearSpline::read]"}));
}

TEST(LinearSplineRead, fallingX_throws) {
  LinearSpline spline;
  EXPECT_EQ(thrownBy([&] { spline.read("1 3 2", "1 2 3"); }),
            (Thrown{"X values are not strictly monotonic increasing (at position/index 1).",
                    "[LinearSpline::read]"}));
}

TEST(LinearSplineRead, formWithErrorText_doesNotThrow) {
  LinearSpline spline;
  std::string error;
  EXPECT_FALSE(spline.read("x", "1", error));
  EXPECT_EQ(error, "Missing data to read!");
}

TEST(LinearSplineRead, duplicateX_isDroppedWithOneWarning) {
  MessageCapture capture;
  LinearSpline spline;
  spline.read("1 2 2 3", "1 2 5 3");
  EXPECT_EQ(spline.x, (Values{1.0, 2.0, 3.0}));
  EXPECT_EQ(spline.y, (Values{1.0, 2.0, 3.0}));
  ASSERT_EQ(capture.messages.size(), 2U);
  EXPECT_TRUE(capture.has("Duplicate x-value 2 found (and skipped).", MSG_WARNING, ELIMINATE, 2));
  EXPECT_TRUE(
      capture.has("Skipped a total of 1 values because of duplicate x-values.", MSG_WARNING, ELIMINATE, 3));
}

TEST(LinearSplineRead, duplicateAtTheEnd_takesTheLastY) {
  MessageCapture capture;
  LinearSpline spline;
  spline.read("1 2 2", "1 2 5");
  EXPECT_EQ(spline.x, (Values{1.0, 2.0}));
  EXPECT_EQ(spline.y, (Values{1.0, 5.0}));
  EXPECT_TRUE(capture.has(
      "Duplicate x-value found at the end. End y value 5 copied to the new spline (old y value: 2.",
      MSG_WARNING, ELIMINATE, 2));
}

TEST(EliminateConsecutive, equalPointAtTheEnd_hasNoEndWarning) {
  MessageCapture capture;
  splineOf({1.0, 2.0, 2.0}, {1.0, 5.0, 5.0});
  EXPECT_FALSE(capture.contains("found at the end"));
}

TEST(EliminateConsecutive, eachRepeatedX_isReportedOnce) {
  MessageCapture capture;
  splineOf({1.0, 1.0, 1.0, 2.0, 2.0, 3.0}, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0});
  EXPECT_EQ(capture.count("Duplicate x-value 1 found (and skipped)."), 1);
  EXPECT_EQ(capture.count("Duplicate x-value 2 found (and skipped)."), 1);
  EXPECT_EQ(capture.count("Skipped a total of 3 values because of duplicate x-values."), 1);
}

TEST(EliminateConsecutive, cleanTable_isCopiedSilently) {
  MessageCapture capture;
  EXPECT_EQ(splineOf({1.0, 2.0}, {5.0, 5.0}).y, (Values{5.0, 5.0}));
  EXPECT_TRUE(capture.messages.empty());
}

TEST(EliminateConsecutive, emptyTable_givesAnEmptyTable) {
  Values x{1.0};
  Values y{1.0};
  LinearSpline::eliminateConsecutive({}, {}, x, y);
  EXPECT_TRUE(x.empty());
  EXPECT_TRUE(y.empty());
}

TEST(SetValues, differentLengths_throw) {
  EXPECT_EQ(thrownBy([] {
              splineOf({1.0, 2.0}, {1.0});
            }),
            (Thrown{"X and Y vector size mismatch.", "[LinearSpline::setValues]"}));
}

TEST(SetValues, emptyVectors_throw) {
  EXPECT_EQ(thrownBy([] { splineOf({}, {}); }),
            (Thrown{"Input vectors are empty.", "[LinearSpline::setValues]"}));
}

TEST(SetValues, fallingX_isOnlyAWarning) {
  MessageCapture capture;
  const LinearSpline spline = splineOf({2.0, 1.0}, {1.0, 2.0});
  EXPECT_FALSE(spline.valid);
  EXPECT_EQ(spline.size(), 2U);
  EXPECT_TRUE(
      capture.has("Error while makeSpline in setValues. X values are not strictly monotonic "
                  "increasing (at position/index 0).",
                  MSG_WARNING, "[LinearSpline::setValues]", 2));
}

TEST(LinearSpline, clear_removesAllPoints) {
  LinearSpline spline = splineOf({1.0, 2.0}, {3.0, 4.0}, LinearSpline::EM_LINEAR);
  spline.clear();
  EXPECT_TRUE(spline.empty());
  EXPECT_TRUE(spline.slope.empty());
  EXPECT_FALSE(spline.valid);
  EXPECT_EQ(spline.extrapolationMethod, LinearSpline::EM_LINEAR);
}

TEST(LinearSplineWrite, linesOfRightAlignedColumns) {
  std::ostringstream stream;
  splineOf({1.0, 250.5}, {-3.0, 1e-9}).write(stream, 4);
  EXPECT_EQ(stream.str(),
            "                  1            250.5  \n"
            "                 -3            1e-09  \n");
}

TEST(LinearSplineBinary, isReadAsWritten) {
  std::stringstream stream;
  splineOf({1.0, 2.5}, {-3.0, 1e-9}).write_binary(stream);
  EXPECT_EQ(stream.str().size(), 2 * (4 + 2 * 8));
  LinearSpline spline = splineOf({7.0}, {7.0});
  spline.read_binary(stream);
  EXPECT_EQ(spline.x, (Values{1.0, 2.5}));
  EXPECT_EQ(spline.y, (Values{-3.0, 1e-9}));
  EXPECT_FALSE(spline.valid);
}

TEST(LinearSplineBinary, readsTenThousandValuesButNotOneMore) {
  LinearSpline spline;
  spline.x.resize(10000);
  spline.y.resize(10000);
  std::stringstream stream;
  spline.write_binary(stream);
  EXPECT_NO_THROW(spline.read_binary(stream));
  spline.y.push_back(0.0);
  std::stringstream tooLong;
  spline.write_binary(tooLong);
  EXPECT_EQ(thrownBy([&] { spline.read_binary(tooLong); }),
            (Thrown{"Vector length exceeds given maximum!", "[read_vector_binary]"}));
}

TEST(LinearSplineBinary, truncatedStream_throwsAndKeepsTheData) {
  std::stringstream stream;
  splineOf({1.0, 2.5}, {-3.0, 1e-9}).write_binary(stream);
  std::istringstream truncated(stream.str().substr(0, 30));
  LinearSpline spline = splineOf({7.0}, {7.0});
  EXPECT_THROW(spline.read_binary(truncated), Exception);
  EXPECT_EQ(spline.x, (Values{7.0}));
}

}  // namespace
}  // namespace TKL
