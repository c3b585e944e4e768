#include <gtest/gtest.h>

#include "solver/SourceBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

const char* const EXCHANGE_TAG = "[VelmoraCvodeSolver::calculateSourcesH]";

/// Heat that parts of the construction exchange: by a fluid, with phase change material, across a gap.
class HeatExchangeSourceTest : public SourceBench {
 protected:
  HeatExchangeSourceTest() : SourceBench(BE_ENERGY) {}

  /// A heat exchange between the right column as source and the left one as sink.
  void pump() {
    act(VelFieldCond::C_REMENESOUR, {UPPER_RIGHT, LOWER_RIGHT}, 0);
    act(VelFieldCond::C_REMENESINK, {UPPER_LEFT, LOWER_LEFT}, 1);
    connect();
    attach(VelClimateCond::C_VOLFLUIDFLUX, 1e-6);
    set(VelFieldCond::P_FLUID_CAPACITY, 4e6);
    set(VelFieldCond::P_LIM_SNK_TEMPERATURE, 280.0, 1);
  }
  double sinkMean() const { return (0.03 * s.T[UPPER_LEFT] + 0.05 * s.T[LOWER_LEFT]) / 0.08; }
  double sourceMean() const { return (0.06 * s.T[UPPER_RIGHT] + 0.1 * s.T[LOWER_RIGHT]) / 0.16; }

  /// Phase change material in the upper left element that melts between 294 K and 298 K, with the upper right
  /// one as its surroundings.
  void melt(double T, double surroundings) {
    act(VelFieldCond::C_PCMENESOUR, {UPPER_LEFT}, 0);
    act(VelFieldCond::C_PCMENESINK, {UPPER_RIGHT}, 1);
    connect();
    set(VelFieldCond::P_PCM_MELT_TEMP, 296.0);
    set(VelFieldCond::P_PCM_DEL_TEMP, 4.0);
    set(VelFieldCond::P_ENETRANSFCOEFF, 7.0);
    s.T[UPPER_LEFT] = T;
    s.T[UPPER_RIGHT] = surroundings;
    calculate();
  }
  void expectExchange() {
    const double power = 7.0 * (s.T[UPPER_RIGHT] - s.T[UPPER_LEFT]);
    expectClose(heat(UPPER_LEFT), power / volume(UPPER_LEFT));
    expectClose(heat(UPPER_RIGHT), -power / volume(UPPER_RIGHT));
  }
  void expectNothing() {
    EXPECT_EQ(heat(UPPER_LEFT), 0.0);
    EXPECT_EQ(heat(UPPER_RIGHT), 0.0);
  }

  /// A gap between the columns, and one between the rows.
  VelFieldCond& gap() {
    VelFieldCond& fc = act(VelFieldCond::C_LW_RADIATION, {UPPER_LEFT});
    data.elements[UPPER_LEFT].lwPartnerRight = UPPER_RIGHT;
    data.elements[UPPER_LEFT].lwPartnerBottom = LOWER_LEFT;
    set(VelFieldCond::P_LEFT_EMISS_COEFF, 0.9);
    set(VelFieldCond::P_RIGHT_EMISS_COEFF, 0.5);
    set(VelFieldCond::P_TOP_EMISS_COEFF, 0.8);
    set(VelFieldCond::P_BOTTOM_EMISS_COEFF, 0.2);
    return fc;
  }
  static double radiation(double T, double partner, double e1, double e2) {
    return 5.67e-08 * (std::pow(partner, 4) - std::pow(T, 4)) / (1.0 / e1 + 1.0 / e2 - 1.0);
  }
};

}  // namespace

// ---- two regions

TEST_F(HeatExchangeSourceTest, remoteSource_getsTheHeatOfTheFluid) {
  pump();
  calculate();
  const double power = 4e6 * 1e-6 * (sinkMean() - sourceMean());
  ASSERT_GT(power, 0.0);
  expectClose(heat(UPPER_RIGHT), power / 0.16);
  expectClose(heat(LOWER_RIGHT), power / 0.16);
  expectClose(heat(UPPER_LEFT), -power / 0.08);
  expectClose(heat(LOWER_LEFT), -power / 0.08);
}

TEST_F(HeatExchangeSourceTest, remoteSource_getsWhatTheSinkGives) {
  pump();
  calculate();
  EXPECT_NEAR(totalHeat(), 0.0, 1e-12 * heat(UPPER_RIGHT));
}

TEST_F(HeatExchangeSourceTest, remoteSource_isOffUnlessTheSinkIsAboveItsLimit) {
  pump();
  s.T = {300.0, 290.0, 300.0, 290.0};
  for (const double limit : {300.0, 301.0}) {
    set(VelFieldCond::P_LIM_SNK_TEMPERATURE, limit, 1);
    calculate();
    expectNothing();
  }
  set(VelFieldCond::P_LIM_SNK_TEMPERATURE, 299.999, 1);
  calculate();
  expectClose(heat(UPPER_RIGHT), 4.0 * 10.0 / 0.16);
}

TEST_F(HeatExchangeSourceTest, remoteSource_doesNotHeedItsOwnLimit) {
  pump();
  set(VelFieldCond::P_LIM_SNK_TEMPERATURE, 1000.0, 0);
  calculate();
  EXPECT_GT(heat(UPPER_RIGHT), 0.0);
}

TEST_F(HeatExchangeSourceTest, remoteSource_isOffUnlessTheSinkIsWarmer) {
  pump();
  s.T = {300.0, 300.0, 300.0, 300.0};
  calculate();
  expectNothing();
  s.T = {300.0, 301.0, 300.0, 301.0};
  calculate();
  expectNothing();
}

TEST_F(HeatExchangeSourceTest, remoteSink_needsTheFlowOfTheSource) {
  pump();
  detach(VelClimateCond::C_VOLFLUIDFLUX);
  act(VelFieldCond::C_REMENESOUR, {});
  data.fieldConds[0].elements = {UPPER_RIGHT};
  EXPECT_EQ(failure(), missing("REMENESOUR", "VOLFLUIDFLUX", EXCHANGE_TAG));
}

TEST_F(HeatExchangeSourceTest, pairOutOfItsRange_needsNoFlow) {
  pump();
  detach(VelClimateCond::C_VOLFLUIDFLUX);
  s.T = {300.0, 300.0, 300.0, 300.0};
  EXPECT_NO_THROW(calculate());
}

TEST_F(HeatExchangeSourceTest, phaseChange_chargesFromWarmerSurroundings) {
  melt(295.0, 297.0);
  expectExchange();
  EXPECT_GT(heat(UPPER_LEFT), 0.0);
  EXPECT_NEAR(totalHeat(), 0.0, 1e-12 * heat(UPPER_LEFT));
}

TEST_F(HeatExchangeSourceTest, phaseChange_dischargesToColderSurroundings) {
  melt(297.0, 295.0);
  expectExchange();
  EXPECT_LT(heat(UPPER_LEFT), 0.0);
  EXPECT_NEAR(totalHeat(), 0.0, -1e-12 * heat(UPPER_LEFT));
}

TEST_F(HeatExchangeSourceTest, phaseChangeAtEqualTemperatures_givesNothing) {
  melt(296.0, 296.0);
  expectNothing();
}

TEST_F(HeatExchangeSourceTest, charging_stopsWhereAllIsMolten) {
  melt(298.0, 299.0);
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
  melt(297.999, 299.0);
  expectClose(heat(UPPER_LEFT), 7.0 * (299.0 - 297.999) / volume(UPPER_LEFT));
}

TEST_F(HeatExchangeSourceTest, charging_startsAboveTheMeltingRangeWithAMargin) {
  melt(290.0, 294.0 + 0.9e-05);
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
  melt(290.0, 294.0 + 1.1e-05);
  expectExchange();
}

TEST_F(HeatExchangeSourceTest, discharging_stopsWhereAllIsSolid) {
  melt(294.0, 293.0);
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
  melt(294.001, 293.0);
  expectClose(heat(UPPER_LEFT), 7.0 * (293.0 - 294.001) / volume(UPPER_LEFT));
}

TEST_F(HeatExchangeSourceTest, discharging_startsBelowTheMeltingRangeWithAMargin) {
  melt(299.0, 298.0 - 0.9e-05);
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
  melt(299.0, 298.0 - 1.1e-05);
  expectClose(heat(UPPER_LEFT), 7.0 * (298.0 - 1.1e-05 - 299.0) / volume(UPPER_LEFT));
}

TEST_F(HeatExchangeSourceTest, surroundingsOfPhaseChange_coolWithinTheirOwnMargin) {
  melt(298.0 - 0.9e-05, 299.0);  // the material as seen from the surroundings
  EXPECT_EQ(heat(UPPER_RIGHT), 0.0);
  melt(298.0 - 1.1e-05, 299.0);
  expectClose(heat(UPPER_RIGHT), -7.0 * (299.0 - 298.0 + 1.1e-05) / volume(UPPER_RIGHT));
  melt(290.0, 294.0);  // too cold to melt it
  EXPECT_EQ(heat(UPPER_RIGHT), 0.0);
}

TEST_F(HeatExchangeSourceTest, surroundingsOfPhaseChange_warmWithinTheirOwnMargin) {
  melt(294.0 + 0.9e-05, 293.0);
  EXPECT_EQ(heat(UPPER_RIGHT), 0.0);
  melt(294.0 + 1.1e-05, 293.0);
  expectClose(heat(UPPER_RIGHT), 7.0 * (294.0 + 1.1e-05 - 293.0) / volume(UPPER_RIGHT));
  melt(299.0, 298.0);  // too warm to freeze it
  EXPECT_EQ(heat(UPPER_RIGHT), 0.0);
}

TEST_F(HeatExchangeSourceTest, phaseChange_comparesEachElementWithTheMeanOfTheRemote) {
  melt(295.0, 297.0);
  act(VelFieldCond::C_PCMENESOUR, {UPPER_LEFT, LOWER_LEFT}, 0);
  s.T[LOWER_LEFT] = 296.0;
  calculate();
  expectClose(heat(UPPER_LEFT), 7.0 * 2.0 / 0.08);
  expectClose(heat(LOWER_LEFT), 7.0 * 1.0 / 0.08);
  expectClose(heat(UPPER_RIGHT), 7.0 * ((0.03 * 295.0 + 0.05 * 296.0) / 0.08 - 297.0) / 0.06);
}

// ---- radiation across a gap

TEST_F(HeatExchangeSourceTest, gapAlongX_isAntisymmetric) {
  gap().flags.set(VelFieldCond::F_LW_RADIATION_X);
  calculate();
  const double q = radiation(300.0, 290.0, 0.9, 0.5);
  expectClose(heat(UPPER_LEFT), q / 0.1);
  expectClose(heat(UPPER_RIGHT), -q / 0.2);
  EXPECT_EQ(heat(LOWER_LEFT), 0.0);
  EXPECT_NEAR(totalHeat(), 0.0, 1e-12 * std::fabs(q));
}

TEST_F(HeatExchangeSourceTest, gapAlongY_isAntisymmetric) {
  gap().flags.set(VelFieldCond::F_LW_RADIATION_Y);
  calculate();
  const double q = radiation(300.0, 285.0, 0.8, 0.2);
  expectClose(heat(UPPER_LEFT), q / 0.3);
  expectClose(heat(LOWER_LEFT), -q / 0.5);
  EXPECT_EQ(heat(UPPER_RIGHT), 0.0);
}

TEST_F(HeatExchangeSourceTest, gapAlongBothAxes_addsUp) {
  VelFieldCond& fc = gap();
  fc.flags.set(VelFieldCond::F_LW_RADIATION_X);
  fc.flags.set(VelFieldCond::F_LW_RADIATION_Y);
  calculate();
  expectClose(heat(UPPER_LEFT),
              radiation(300.0, 290.0, 0.9, 0.5) / 0.1 + radiation(300.0, 285.0, 0.8, 0.2) / 0.3);
}

TEST_F(HeatExchangeSourceTest, partnerOfAGap_entersTheSumThoughVisitedEarlier) {
  gap().flags.set(VelFieldCond::F_LW_RADIATION_X);
  act(VelFieldCond::C_LW_RADIATION, {UPPER_RIGHT});
  data.elements[UPPER_RIGHT].lwPartnerRight = UPPER_LEFT;
  calculate();
  EXPECT_NE(heat(UPPER_LEFT), 0.0);
  EXPECT_EQ(arrays.records.heatSource[UPPER_LEFT][VELMORA::HS_SUM], heat(UPPER_LEFT));
}

TEST_F(HeatExchangeSourceTest, gapWithoutFlagOrPartner_givesNothing) {
  VelFieldCond& fc = gap();
  calculate();
  expectNothing();
  fc.flags.set(VelFieldCond::F_LW_RADIATION_X);
  data.elements[UPPER_LEFT].lwPartnerRight = -1;
  set(VelFieldCond::P_LEFT_EMISS_COEFF, 0.0);
  calculate();
  expectNothing();
}

TEST_F(HeatExchangeSourceTest, blackSurfaces_exchangeWithoutResistance) {
  gap().flags.set(VelFieldCond::F_LW_RADIATION_X);
  set(VelFieldCond::P_LEFT_EMISS_COEFF, 1.0);
  set(VelFieldCond::P_RIGHT_EMISS_COEFF, 1.0);
  calculate();
  expectClose(heat(UPPER_LEFT), 5.67e-08 * (std::pow(290.0, 4) - std::pow(300.0, 4)) / 0.1);
}

TEST_F(HeatExchangeSourceTest, wrongEmissivity_isReported) {
  const TKL::Thrown expected{"Wrong emission coefficient in longwave radiatuion exchange", EXCHANGE_TAG};
  VelFieldCond& fc = gap();
  const auto fails = [&](VelFieldCond::flag_t flag, VelFieldCond::para_t index) {
    gap();
    fc.flags.reset();
    fc.flags.set(flag);
    for (const double emissivity : {0.0, 1.0001}) {
      set(index, emissivity);
      EXPECT_EQ(failure(), expected) << index;
    }
  };
  fails(VelFieldCond::F_LW_RADIATION_X, VelFieldCond::P_LEFT_EMISS_COEFF);
  fails(VelFieldCond::F_LW_RADIATION_X, VelFieldCond::P_RIGHT_EMISS_COEFF);
  fails(VelFieldCond::F_LW_RADIATION_Y, VelFieldCond::P_TOP_EMISS_COEFF);
  fails(VelFieldCond::F_LW_RADIATION_Y, VelFieldCond::P_BOTTOM_EMISS_COEFF);
}

}  // namespace VELMORA_SOLVER
