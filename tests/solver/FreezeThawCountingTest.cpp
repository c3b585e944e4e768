#include "solver/FreezeThawCounting.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "project/VelOutputs.h"
#include "solver/MoistBench.h"

namespace VELMORA_SOLVER {

namespace {

/// Two elements whose state is set by hand, of a material with a porosity of 0.4.
class FreezeThawCountingTest : public ::testing::Test {
 protected:
  FreezeThawCountingTest() {
    elements.resize(2);
    for (int e = 0; e < 2; ++e) {
      elements[static_cast<std::size_t>(e)].number = e;
      elements[static_cast<std::size_t>(e)].material = &material;
    }
    state.resize(2);
    state.T = {280.0, 280.0};
    counting.start(elements, 0.1, VELMORA::VelOutputs::TB_ZEROTEMPERATURE, 0.0);
  }
  void frost() {
    state.T = {270.0, 280.0};
    state.rhoIce = {100.0, 0.0};
  }
  void thaw() {
    state.T = {274.0, 280.0};
    state.rhoIce = {0.0, 0.0};
  }

  MM::Material material = moistMaterial();
  std::vector<VELMORA::Element> elements;
  SolverState state;
  FreezeThawCounting counting;
};

using Cycles = std::vector<std::uint32_t>;

}  // namespace

TEST_F(FreezeThawCountingTest, beforeTheFirstInterval_nothingIsLookedAt) {
  frost();
  counting.update(9.999, state);
  EXPECT_EQ(counting.iceSaturation()[0], 0.0);
  counting.update(10.0, state);
  EXPECT_DOUBLE_EQ(counting.iceSaturation()[0], 100.0 / 916.7 / MOIST_POR);
  EXPECT_EQ(counting.frozen(), (std::vector<std::uint8_t>{1, 0}));
}

TEST_F(FreezeThawCountingTest, stepsWithinAnInterval_changeNothing) {
  frost();
  counting.update(10.0, state);
  thaw();
  counting.update(19.9, state);
  EXPECT_EQ(counting.cycles(), (Cycles{0, 0}));
  EXPECT_GT(counting.iceSaturation()[0], 0.0);
  counting.update(20.0, state);
  EXPECT_EQ(counting.cycles(), (Cycles{1, 0}));
  EXPECT_EQ(counting.iceSaturation()[0], 0.0);
}

TEST_F(FreezeThawCountingTest, afterALongStep_theClockCatchesUpStepByStep) {
  counting.update(35.0, state);  // the clock goes to 10 s
  frost();
  counting.update(35.1, state);  // to 20 s
  thaw();
  counting.update(35.2, state);  // to 30 s
  EXPECT_EQ(counting.cycles(), (Cycles{1, 0}));
  frost();
  counting.update(35.3, state);  // has caught up: the next look is at 40 s
  EXPECT_EQ(counting.frozen(), (std::vector<std::uint8_t>{0, 0}));
  counting.update(40.0, state);
  EXPECT_EQ(counting.frozen(), (std::vector<std::uint8_t>{1, 0}));
}

TEST_F(FreezeThawCountingTest, clock_beginsAtTheStartOfTheRun) {
  counting.start(elements, 0.1, VELMORA::VelOutputs::TB_ZEROTEMPERATURE, 86400.0);
  frost();
  counting.update(86409.0, state);
  EXPECT_EQ(counting.iceSaturation()[0], 0.0);
  counting.update(86410.0, state);
  EXPECT_GT(counting.iceSaturation()[0], 0.0);
}

TEST_F(FreezeThawCountingTest, setClock_goesBackAndKeepsTheCounts) {
  frost();
  counting.update(10.0, state);
  thaw();
  counting.update(20.0, state);
  counting.setClock(0.0);
  frost();
  counting.update(10.0, state);
  EXPECT_EQ(counting.cycles(), (Cycles{1, 0}));
  EXPECT_EQ(counting.frozen(), (std::vector<std::uint8_t>{1, 0}));
}

TEST_F(FreezeThawCountingTest, criterionByIce_isPassedOn) {
  counting.start(elements, 0.1, VELMORA::VelOutputs::TB_ICEVOLUMERATE, 0.0);
  frost();
  counting.update(10.0, state);
  state.rhoIce[0] = 10.0;  // 0.027 of the pores, still at -3 C
  counting.update(20.0, state);
  EXPECT_EQ(counting.cycles(), (Cycles{1, 0}));
}

TEST_F(FreezeThawCountingTest, resumed_completesTheCycleThatHadBegun) {
  EXPECT_TRUE(counting.resume({4, 2}, {1, 0}));
  EXPECT_EQ(counting.cycles(), (Cycles{4, 2}));
  thaw();
  counting.update(10.0, state);
  EXPECT_EQ(counting.cycles(), (Cycles{5, 2}));
}

TEST_F(FreezeThawCountingTest, resumedWithoutCounts_beginsAtZero) {
  EXPECT_FALSE(counting.resume({}, {}));
  EXPECT_FALSE(counting.resume({4}, {1}));
  EXPECT_FALSE(counting.resume({4, 2}, {1}));
  EXPECT_EQ(counting.cycles(), (Cycles{0, 0}));
}

TEST_F(FreezeThawCountingTest, notStarted_isIdle) {
  FreezeThawCounting idle;
  EXPECT_FALSE(idle.isActive());
  idle.update(100.0, state);
  EXPECT_TRUE(idle.cycles().empty());
  EXPECT_TRUE(counting.isActive());
  counting.clear();
  EXPECT_FALSE(counting.isActive());
}

}  // namespace VELMORA_SOLVER
