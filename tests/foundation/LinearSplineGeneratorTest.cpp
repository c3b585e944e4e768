#include "foundation/LinearSplineGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "foundation/LinearSpline.h"
#include "foundation/ScalarFunction.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

using Values = std::vector<double>;

const char* const GENERATE = "[LinearSplineGenerator::generate]";

class Function : public ScalarFunction {
 public:
  explicit Function(std::function<double(double)> f) : f_(std::move(f)) {}
  double operator()(double x) const override {
    ++calls;
    return f_(x);
  }
  mutable int calls = 0;

 private:
  std::function<double(double)> f_;
};

double square(double x) {
  return x * x;
}

LinearSpline generated(const Function& function, double xMin, double xMax, double absTol, double relTol,
                       std::size_t maxPoints) {
  LinearSpline spline;
  LinearSplineGenerator::generate(spline, function, xMin, xMax, absTol, relTol, maxPoints, false);
  return spline;
}

LinearSpline tableOf(const Values& x, const Values& y) {
  LinearSpline spline;
  spline.x = x;
  spline.y = y;
  return spline;
}

TEST(LinearSplineGenerator, straightLine_needsTwoPoints) {
  const LinearSpline spline =
      generated(Function([](double x) { return 2.0 * x; }), 0.0, 3.0, 1e-6, 1e-6, 100);
  EXPECT_EQ(spline.x, (Values{0.0, 3.0}));
  EXPECT_EQ(spline.y, (Values{0.0, 6.0}));
}

TEST(LinearSplineGenerator, straightLine_isEvaluatedAtTheEndsAndInTheMiddle) {
  const Function line([](double x) { return 2.0 * x; });
  generated(line, 0.0, 3.0, 1e-6, 1e-6, 100);
  EXPECT_EQ(line.calls, 3);
}

// The chord of a parabola over an interval w is off by (w/2)^2 in the middle, so that equal halving goes on
// until (w/2)^2 <= absTol; thinning would need w^2 < absTol.
TEST(LinearSplineGenerator, parabola_isHalvedUntilTheToleranceHolds) {
  const LinearSpline spline = generated(Function(square), 0.0, 10.0, 0.01, 0.0, 1000);
  ASSERT_EQ(spline.size(), 65U);
  for (std::size_t i = 0; i < spline.size(); ++i) {
    EXPECT_EQ(spline.x[i], static_cast<double>(i) * 10.0 / 64.0);
    EXPECT_EQ(spline.y[i], square(spline.x[i]));
  }
}

TEST(LinearSplineGenerator, maxPointsPassed_endsWithoutError) {
  // 2, 3, 5, 9 and 17 points: the first count above 10 is the last
  EXPECT_EQ(generated(Function(square), 0.0, 10.0, 1e-9, 0.0, 10).size(), 17U);
}

TEST(LinearSplineGenerator, maxPointsReachedExactly_goesOn) {
  EXPECT_EQ(generated(Function(square), 0.0, 10.0, 1e-9, 0.0, 9).size(), 17U);
}

TEST(LinearSplineGenerator, steepCurve_keepsTheRelativeTolerance) {
  const LinearSpline spline =
      generated(Function([](double x) { return std::exp(x); }), 0.0, 5.0, 1e-12, 1e-4, 5000);
  LinearSpline table = spline;
  std::string error;
  ASSERT_TRUE(table.makeSpline(error)) << error;
  // The tolerance holds in the middle of intervals and where points were thinned out; in between the
  // deviations of a merged chord and of the finer ones add up.
  // value
  for (double x = 0.0; x < 5.0; x += 0.001) {
    EXPECT_NEAR(table.value(x), std::exp(x), 4e-4 * std::exp(x));
  }
}

TEST(LinearSplineGenerator, jump_isClosedInAtTheSmallestSpacing) {
  const LinearSpline spline =
      generated(Function([](double x) { return x < 0.3 ? 1.0 : 2.0; }), 0.0, 1.0, 1e-6, 0.0, 1000);
  double smallest = 1.0;
  for (std::size_t i = 0; i + 1 < spline.size(); ++i) {
    smallest = std::min(smallest, spline.x[i + 1] - spline.x[i]);
  }
  EXPECT_GT(smallest, 1e-11 * 0.3);
  EXPECT_LT(smallest, 4e-11 * 0.3);
}

TEST(LinearSplineGenerator, negativeAbscissae_areNotRefined) {
  EXPECT_EQ(generated(Function(square), -10.0, -1.0, 1e-6, 0.0, 100).size(), 2U);
}

TEST(LinearSplineGenerator, functionValueCountsWithItsSignInTheBound) {
  // middle: error 1, bound 0.5 * (-1) + 0.1 < 0: taken as fine
  EXPECT_EQ(
      generated(Function([](double x) { return x == 0.5 ? -1.0 : 0.0; }), 0.0, 1.0, 0.1, 0.5, 100).size(),
      2U);
}

TEST(LinearSplineGenerator, pointsOnALine_areThinnedOutUpToTheLastInner) {
  LinearSpline spline = tableOf({0.0, 1.0, 2.0, 3.0, 4.0, 5.0}, {0.0, 1.0, 2.0, 3.0, 4.0, 5.0});
  LinearSplineGenerator::generate(spline, Function([](double x) { return x; }), 0.0, 5.0, 1e-6, 0.0, 100,
                                  true);
  EXPECT_EQ(spline.x, (Values{0.0, 4.0, 5.0}));
  EXPECT_EQ(spline.y, (Values{0.0, 4.0, 5.0}));
}

TEST(LinearSplineGenerator, thinningJudgesAgainstTheCurrentNeighbours) {
  // parabola with spacing 1: against its first neighbours each point is off by 1 < 1.5; once point 1 is gone,
  // point 2 is off by 2 and stays, then 3 goes and 4 stays
  LinearSpline spline = tableOf({0, 1, 2, 3, 4, 5, 6}, {0, 1, 4, 9, 16, 25, 36});
  LinearSplineGenerator::generate(spline, Function(square), 0.0, 6.0, 1.5, 0.0, 100, true);
  EXPECT_EQ(spline.x, (Values{0, 2, 4, 5, 6}));
}

TEST(LinearSplineGenerator, twoIntervals_areNotThinned) {
  LinearSpline spline = tableOf({0.0, 1.0, 2.0}, {0.0, 1.0, 2.0});
  LinearSplineGenerator::generate(spline, Function([](double x) { return x; }), 0.0, 2.0, 1e-6, 0.0, 100,
                                  true);
  EXPECT_EQ(spline.size(), 3U);
}

TEST(LinearSplineGenerator, threeIntervals_areThinned) {
  LinearSpline spline = tableOf({0.0, 1.0, 2.0, 3.0}, {0.0, 1.0, 2.0, 3.0});
  LinearSplineGenerator::generate(spline, Function([](double x) { return x; }), 0.0, 3.0, 1e-6, 0.0, 100,
                                  true);
  EXPECT_EQ(spline.x, (Values{0.0, 2.0, 3.0}));
}

TEST(LinearSplineGenerator, errorOfJustTheTolerance_isNotRefined) {
  const Function hump([](double x) { return x == 0.5 ? 0.25 : 0.0; });
  EXPECT_EQ(generated(hump, 0.0, 1.0, 0.25, 0.0, 100).size(), 2U);
}

TEST(LinearSplineGenerator, pointOffByJustTheTolerance_isNotThinnedOut) {
  LinearSpline spline = tableOf({0, 1, 2, 3}, {0, 1, 0, 0});
  const Function tent([](double x) { return std::max(0.0, 1.0 - std::fabs(x - 1.0)); });
  LinearSplineGenerator::generate(spline, tent, 0.0, 3.0, 1.0, 0.0, 100, true);
  EXPECT_EQ(spline.x, (Values{0, 1, 2, 3}));
}

TEST(LinearSplineGenerator, thinningTakesItsBoundFromTheChord) {
  // the dent is 0.8 deep: within half of the chord's 2, not within half of its own 1.2
  LinearSpline spline = tableOf({0, 1, 2, 3}, {2, 1.2, 2, 2});
  const Function dent([](double x) { return x < 2.0 ? 1.2 + 0.8 * std::fabs(x - 1.0) : 2.0; });
  LinearSplineGenerator::generate(spline, dent, 0.0, 3.0, 0.0, 0.5, 100, true);
  EXPECT_EQ(spline.x, (Values{0, 2, 3}));
}

TEST(LinearSplineGenerator, refinementAndThinningThatUndoEachOther_end) {
  // 2 at whole numbers, 1.2 between: the middle is refined (0.8 > 0.5 * 1.2) and then lies within the
  // tolerance of its chord (0.8 < 0.5 * 2)
  const Function comb([](double x) { return x == std::floor(x) ? 2.0 : 1.2; });
  LinearSpline spline = tableOf({0, 1, 2, 3, 4}, {2, 2, 2, 2, 2});
  LinearSplineGenerator::generate(spline, comb, 0.0, 4.0, 0.0, 0.5, 100, true);
  EXPECT_LE(spline.size(), 100U);
}

TEST(LinearSplineGenerator, existingDataWidenTheRange) {
  MessageCapture capture;
  LinearSpline spline = tableOf({-1.0, 7.0}, {5.0, 5.0});
  LinearSplineGenerator::generate(spline, Function([](double x) { return x; }), 0.0, 2.0, 1e-6, 0.0, 100,
                                  false);
  EXPECT_EQ(spline.x, (Values{-1.0, 7.0}));
  EXPECT_EQ(spline.y, (Values{-1.0, 7.0}));
  EXPECT_TRUE(capture.has("Spline data already existing in generator, using min/max values: -1/7",
                          MSG_STANDARD, GENERATE, 3));
}

TEST(LinearSplineGenerator, singleExistingPoint_isNotUsedAsStart) {
  LinearSpline spline = tableOf({1.0}, {99.0});
  LinearSplineGenerator::generate(spline, Function([](double x) { return x; }), 0.0, 2.0, 1e-6, 0.0, 100,
                                  true);
  EXPECT_EQ(spline.x, (Values{0.0, 2.0}));
}

TEST(LinearSplineGenerator, emptyInterval_throws) {
  const Thrown expected{"Invalid interval (xMin must be < than xMax)!", GENERATE};
  EXPECT_EQ(thrownBy([] { generated(Function(square), 1.0, 1.0, 1e-6, 0.0, 10); }), expected);
  EXPECT_EQ(thrownBy([] { generated(Function(square), 2.0, 1.0, 1e-6, 0.0, 10); }), expected);
}

TEST(LinearSplineGenerator, endsWithoutAMiddleBetween_throw) {
  EXPECT_EQ(thrownBy([] { generated(Function(square), 1.0, std::nextafter(1.0, 2.0), 1e-6, 0.0, 10); }),
            (Thrown{"Division by zero while adding spline points!", GENERATE}));
}

TEST(LinearSplineGenerator, failingFunction_leavesTheSplineAsItWas) {
  LinearSpline spline = tableOf({0.0, 1.0}, {5.0, 6.0});
  const Function failing([](double x) -> double {
    if (x == 0.5) {
      throw Exception("no value", "[test]");
    }
    return x;
  });
  EXPECT_EQ(
      thrownBy([&] { LinearSplineGenerator::generate(spline, failing, 0.0, 1.0, 1e-6, 0.0, 10, false); }),
      (Thrown{"no value", "[test]"}));
  EXPECT_EQ(spline.y, (Values{5.0, 6.0}));
}

TEST(LinearSplineGenerator, makeSplineIsLeftToTheCaller) {
  LinearSpline spline;
  spline.setValues({0.0, 1.0}, {0.0, 1.0});
  LinearSplineGenerator::generate(spline, Function(square), 0.0, 1.0, 1e-3, 0.0, 10, false);
  EXPECT_FALSE(spline.valid);
}

TEST(LinearSplineGenerator, progress_isToldSweepBySweep) {
  MessageCapture capture;
  generated(Function(square), 0.0, 2.0, 0.3, 0.0, 100);
  // interval 2: error 1, split; intervals 1: error 0.25, fine; then nothing is left
  std::vector<std::string> texts;
  for (const auto& message : capture.messages) {
    texts.push_back(message.text);
    EXPECT_EQ(message.type, MSG_STANDARD);
    EXPECT_EQ(message.level, 3);
    EXPECT_EQ(message.functionId, GENERATE);
  }
  EXPECT_EQ(
      texts,
      (std::vector<std::string>{
          "Starting spline generation with 2 points, reltol = 0, abstol = 0.3.\n",
          "  Intervals refined = 1, max abs. error = 1, fEvals = 1, current spline size of 3", " [3]\n",
          "  Intervals refined = 2, max abs. error = 0.3, fEvals = 2, current spline size of 3", " [3]\n",
          "  Intervals refined = 0, max abs. error = 0.3, fEvals = 0, current spline size of 3", " [3]\n"}));
}

}  // namespace
}  // namespace TKL
