#include "solver/RangeRestriction.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "grid/FluxSlots.h"
#include "support/AllocationCounter.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

namespace {

using namespace VELMORA;

const char* const RESTRICT_TAG = "[VelmoraCvodeSolver::restrictMoistureRange]";
const char* const SMALLER_STEP = "Ol out of range, reattempting integration with smaller time step.";
constexpr double RANGE_LIMIT = 0.25;  // [m3/m3], a power of two so that all bounds are exact

/// A content and the mass that belongs to it, through the restriction of element 7 at 60 s.
class MoistureRangeTest : public ::testing::Test {
 protected:
  bool restrict(double content, bool strict = false) {
    Theta = content;
    mw = content * 1000.0;
    return restrictMoistureRange(7, 60.0, strict, RANGE_LIMIT, Theta, mw);
  }
  void expectClippedTo(double content) {
    EXPECT_EQ(Theta, content);
    EXPECT_EQ(mw, content * 1000.0);
  }

  TKL::MessageCapture capture;
  double Theta = 0.0;
  double mw = 0.0;
};

/// The records of a side: inward flows 1 to 3 kg/s and outward ones where a test turns them, with heat flows
/// of 10 W times the number of their slot.
class OverfillTest : public ::testing::Test {
 protected:
  OverfillTest() {
    moisture[MF_VAPOUR_DIFFUSION] = 1.0;
    moisture[MF_VAPOUR_CONVECTION] = 2.0;
    moisture[MF_LIQUID] = 3.0;
    for (std::size_t slot = 1; slot < NUM_HF; ++slot) heat[slot] = 10.0 * static_cast<double>(slot);
    heatBefore = heat;
  }
  void limit(double room) {
    moisture[MF_SUM] = moisture[MF_VAPOUR_DIFFUSION] + moisture[MF_VAPOUR_CONVECTION] + moisture[MF_LIQUID];
    limitFlowsForOverfilling(room, moisture.data(), heat.data());
  }
  void reverse() {
    for (double& flow : moisture) flow = -flow;
  }
  /// Factor by which a heat flow has been scaled.
  double scale(heatFluxSlot_t slot) const { return heat[slot] / heatBefore[slot]; }

  std::array<double, NUM_MF> moisture{};
  std::array<double, NUM_HF> heat{};
  std::array<double, NUM_HF> heatBefore{};
};

constexpr double ROOM_HALF = 0.04;  // [kg/m3], half of the window: half of the flows

}  // namespace

TEST_F(MoistureRangeTest, insideTheRange_nothingChanges) {
  for (const double content : {0.0, 0.1, RANGE_LIMIT}) {
    EXPECT_TRUE(restrict(content, true));
    expectClippedTo(content);
  }
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(MoistureRangeTest, doubleTheLimit_isClippedWithAMessage) {
  EXPECT_TRUE(restrict(0.5));
  expectClippedTo(RANGE_LIMIT);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has("Ol = 0.5 > Ol_max in element 7 at t = 60, limiting Ol to 0.25 m3/m3",
                          TKL::MSG_WARNING, RESTRICT_TAG, 1));
}

TEST_F(MoistureRangeTest, smallestExcess_isToldAsWell) {
  EXPECT_TRUE(restrict(std::nextafter(RANGE_LIMIT, 1.0)));
  expectClippedTo(RANGE_LIMIT);
  EXPECT_TRUE(capture.contains("Ol = 0.25 > Ol_max in element 7"));
}

TEST_F(MoistureRangeTest, strict_clipsUpToFortyPercentAbove) {
  EXPECT_TRUE(restrict(1.4 * RANGE_LIMIT, true));
  expectClippedTo(RANGE_LIMIT);
  EXPECT_TRUE(capture.contains("limiting Ol to 0.25 m3/m3"));
}

TEST_F(MoistureRangeTest, strict_asksForASmallerStepBeyond) {
  const double content = std::nextafter(1.4 * RANGE_LIMIT, 1.0);
  EXPECT_FALSE(restrict(content, true));
  expectClippedTo(content);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has(SMALLER_STEP, TKL::MSG_WARNING, RESTRICT_TAG, 1));
}

TEST_F(MoistureRangeTest, negativeContent_isClippedWithAMessage) {
  EXPECT_TRUE(restrict(-0.125));
  expectClippedTo(0.0);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has("Ol = -0.125 < 0 in element 7 at t = 60, limiting mw to 0 kg/m3", TKL::MSG_WARNING,
                          RESTRICT_TAG, 1));
}

TEST_F(MoistureRangeTest, onePercentBelowZero_isClippedSilently) {
  EXPECT_TRUE(restrict(-0.01 * RANGE_LIMIT));
  expectClippedTo(0.0);
  EXPECT_TRUE(capture.messages.empty());
  EXPECT_TRUE(restrict(std::nextafter(-0.01 * RANGE_LIMIT, -1.0)));
  EXPECT_EQ(capture.messages.size(), 1U);
}

TEST_F(MoistureRangeTest, strict_clipsDownToTwentyPercentBelowZero) {
  EXPECT_TRUE(restrict(-0.2 * RANGE_LIMIT, true));
  expectClippedTo(0.0);
}

TEST_F(MoistureRangeTest, strict_asksForASmallerStepBelow) {
  const double content = std::nextafter(-0.2 * RANGE_LIMIT, -1.0);
  EXPECT_FALSE(restrict(content, true));
  expectClippedTo(content);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has(SMALLER_STEP, TKL::MSG_WARNING, RESTRICT_TAG, 1));
}

TEST_F(MoistureRangeTest, withoutStrictChecking_nothingIsTooFar) {
  EXPECT_TRUE(restrict(100.0));
  EXPECT_TRUE(restrict(-100.0));
}

TEST_F(OverfillTest, roomOfTheWholeWindow_leavesAllFlows) {
  for (const double room : {0.08, 1.0, 1000.0}) {
    limit(room);
    EXPECT_EQ(moisture[MF_SUM], 6.0);
    EXPECT_EQ(heat, heatBefore);
  }
}

TEST_F(OverfillTest, halfTheWindow_halvesTheVapourAndItsEnthalpy) {
  limit(ROOM_HALF);
  EXPECT_DOUBLE_EQ(moisture[MF_VAPOUR_DIFFUSION], 0.5);
  EXPECT_DOUBLE_EQ(scale(HF_VAPOUR_DIFFUSION), 0.5);
}

TEST_F(OverfillTest, halfTheWindow_halvesTheLiquidAndItsEnthalpy) {
  limit(ROOM_HALF);
  EXPECT_DOUBLE_EQ(moisture[MF_LIQUID], 1.5);
  EXPECT_DOUBLE_EQ(scale(HF_LIQUID), 0.5);
}

TEST_F(OverfillTest, halfTheWindow_halvesConvectionWithVapourAndAirEnthalpy) {
  limit(ROOM_HALF);
  EXPECT_DOUBLE_EQ(moisture[MF_VAPOUR_CONVECTION], 1.0);
  EXPECT_DOUBLE_EQ(scale(HF_VAPOUR_CONVECTION), 0.5);
  EXPECT_DOUBLE_EQ(scale(HF_AIR), 0.5);
}

TEST_F(OverfillTest, otherHeatFlows_stay) {
  limit(ROOM_HALF);
  for (const auto slot : {HF_CONDUCTION, HF_INFILTRATION_SHORTWAVE, HF_LONGWAVE, HF_RUNOFF})
    EXPECT_EQ(scale(slot), 1.0) << slot;
}

TEST_F(OverfillTest, sum_isThatOfTheThrottledFlows) {
  limit(ROOM_HALF);
  EXPECT_DOUBLE_EQ(moisture[MF_SUM], 3.0);
}

TEST_F(OverfillTest, factor_isSmooth) {
  limit(0.02);  // a quarter of the window: 3 x^2 - 2 x^3
  EXPECT_DOUBLE_EQ(moisture[MF_LIQUID], 3.0 * (3.0 / 16.0 - 2.0 / 64.0));
}

TEST_F(OverfillTest, fullElement_takesNothing) {
  limit(0.0);
  for (const double flow : moisture) EXPECT_EQ(flow, 0.0);
  EXPECT_EQ(heat[HF_LIQUID], 0.0);
  EXPECT_EQ(heat[HF_VAPOUR_DIFFUSION], 0.0);
}

TEST_F(OverfillTest, overfullElement_takesNothing) {
  limit(-0.1);
  for (const double flow : moisture) EXPECT_EQ(flow, 0.0);
  EXPECT_EQ(heat[HF_LIQUID], 0.0);
}

TEST_F(OverfillTest, negativeSum_throttlesNegativeFlows) {
  reverse();
  limit(ROOM_HALF);
  EXPECT_DOUBLE_EQ(moisture[MF_SUM], -3.0);
  EXPECT_DOUBLE_EQ(scale(HF_LIQUID), 0.5);
}

TEST_F(OverfillTest, flowsAgainstTheSum_stay) {
  moisture[MF_VAPOUR_DIFFUSION] = -1.0;
  limit(ROOM_HALF);
  EXPECT_EQ(moisture[MF_VAPOUR_DIFFUSION], -1.0);
  EXPECT_EQ(scale(HF_VAPOUR_DIFFUSION), 1.0);
  EXPECT_DOUBLE_EQ(moisture[MF_LIQUID], 1.5);
  EXPECT_DOUBLE_EQ(moisture[MF_SUM], -1.0 + 1.0 + 1.5);
}

TEST_F(OverfillTest, airEnthalpy_staysWithAVapourConvectionAgainstTheSum) {
  moisture[MF_VAPOUR_CONVECTION] = -2.0;
  limit(ROOM_HALF);
  EXPECT_EQ(scale(HF_VAPOUR_CONVECTION), 1.0);
  EXPECT_EQ(scale(HF_AIR), 1.0);
}

TEST_F(OverfillTest, doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  const std::size_t before = allocationCount();
  limit(ROOM_HALF);
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace VELMORA_SOLVER
