#include "models/FreezeThaw.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "project/VelOutputs.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {

namespace {

constexpr double ICE_DENSITY = 916.7;  // [kg/m3]
constexpr double FREEZING_POINT = 273.15;
constexpr double ENOUGH = 0.25;  // [-] share of the pores at which an element counts as frozen
constexpr int BY_TEMPERATURE = VelOutputs::TB_ZEROTEMPERATURE;
constexpr int BY_ICE = VelOutputs::TB_ICEVOLUMERATE;

MM::Material withPores(const std::string& lines) {
  const TKL::MessageCapture silence;
  MM::Material material;
  material.readASCII(
      "[IDENTIFICATION]\nNAME = en:Stone\n[STORAGE_BASE_PARAMETERS]\nRHO = 2000 kg/m3\n" + lines, false);
  return material;
}

/// A counter of a body that consists of pores alone, so that the ice density tells the saturation.
class FreezeThawTest : public ::testing::Test {
 protected:
  void update(double saturation, double T = 268.15, int kind = BY_TEMPERATURE) {
    counter.update(saturation * ICE_DENSITY, T, ENOUGH, kind);
  }
  /// Cycles of a history of ice saturations at a constant criterion.
  static unsigned cyclesOf(const std::vector<double>& saturations) {
    FreezeThaw body;
    for (const double saturation : saturations) body.update(saturation * ICE_DENSITY, 268.15, ENOUGH, BY_ICE);
    return body.cycles;
  }

  FreezeThaw counter;
};

}  // namespace

TEST_F(FreezeThawTest, start_isThawedWithoutCycles) {
  EXPECT_FALSE(counter.frozen);
  EXPECT_EQ(counter.material, nullptr);
  EXPECT_EQ(counter.poreVolume, 1.0);
  EXPECT_EQ(counter.cycles, 0U);
  EXPECT_EQ(counter.iceSaturation, 0.0);
}

TEST_F(FreezeThawTest, saturation_isIceVolumeInThePores) {
  counter.poreVolume = 0.4;
  counter.update(91.67, 268.15, 1.0, BY_ICE);
  EXPECT_DOUBLE_EQ(counter.iceSaturation, 0.1 / 0.4);
}

TEST_F(FreezeThawTest, saturationAtTheThreshold_freezes) {
  update(ENOUGH);
  EXPECT_TRUE(counter.frozen);
}

TEST_F(FreezeThawTest, saturationBelowTheThreshold_doesNotFreeze) {
  update(std::nextafter(ENOUGH, 0.0));
  EXPECT_FALSE(counter.frozen);
}

TEST_F(FreezeThawTest, freezing_isNoCycle) {
  update(0.5);
  update(0.6);
  EXPECT_EQ(counter.cycles, 0U);
}

TEST_F(FreezeThawTest, temperatureAboveTheFreezingPoint_completesACycle) {
  update(0.5);
  update(0.5, std::nextafter(FREEZING_POINT, 300.0));
  EXPECT_EQ(counter.cycles, 1U);
  EXPECT_FALSE(counter.frozen);
}

TEST_F(FreezeThawTest, temperatureAtTheFreezingPoint_isStillFrozen) {
  update(0.5);
  update(0.0, FREEZING_POINT);
  EXPECT_EQ(counter.cycles, 0U);
  EXPECT_TRUE(counter.frozen);
}

TEST_F(FreezeThawTest, byIce_temperatureDoesNotMatter) {
  update(0.5, 268.15, BY_ICE);
  update(0.5, 300.0, BY_ICE);
  EXPECT_TRUE(counter.frozen);
  update(0.1, 250.0, BY_ICE);
  EXPECT_EQ(counter.cycles, 1U);
}

TEST_F(FreezeThawTest, byIce_saturationAtTheThresholdIsStillFrozen) {
  update(0.5, 268.15, BY_ICE);
  update(ENOUGH, 268.15, BY_ICE);
  EXPECT_TRUE(counter.frozen);
  update(std::nextafter(ENOUGH, 0.0), 268.15, BY_ICE);
  EXPECT_FALSE(counter.frozen);
  EXPECT_EQ(counter.cycles, 1U);
}

TEST_F(FreezeThawTest, otherKinds_thawWithoutACount) {
  for (const int kind : {-1, 2, 99}) {
    FreezeThaw body;
    body.update(ICE_DENSITY, 268.15, ENOUGH, kind);
    EXPECT_TRUE(body.frozen);
    body.update(ICE_DENSITY, 268.15, ENOUGH, kind);
    EXPECT_FALSE(body.frozen);
    EXPECT_EQ(body.cycles, 0U);
  }
}

TEST_F(FreezeThawTest, thaw_freezesAgainAtTheNextUpdateOnly) {
  update(0.5);
  update(0.5, 280.0);
  EXPECT_FALSE(counter.frozen);  // although its ice would do
  update(0.5, 280.0);
  EXPECT_TRUE(counter.frozen);
}

TEST_F(FreezeThawTest, thresholdZero_countsEveryWarmUpdateButOne) {
  for (int i = 0; i < 10; ++i) counter.update(0.0, 280.0, 0.0, BY_TEMPERATURE);
  EXPECT_EQ(counter.cycles, 5U);
}

TEST_F(FreezeThawTest, history_hasItsNumberOfCycles) {
  EXPECT_EQ(cyclesOf({0, 0.2, 0, 0.2}), 0U);                // never enough ice
  EXPECT_EQ(cyclesOf({0, 0.3, 0.3, 0.3}), 0U);              // still frozen at the end
  EXPECT_EQ(cyclesOf({0.3, 0.1, 0.3, 0.1, 0.3, 0.1}), 3U);  // three winters
  EXPECT_EQ(cyclesOf({0.3, 0.26, 0.9, 0.25, 0.1}), 1U);     // one long one
}

TEST_F(FreezeThawTest, sinusoidalWinter_hasACycleForEachPeriod) {
  // ice from the second quarter of each period on, as in water whose temperature swings around 0 C
  FreezeThaw body;
  constexpr int PERIODS = 7, PER_PERIOD = 48;
  for (int i = 0; i < PERIODS * PER_PERIOD; ++i) {
    const double celsius = 5.0 * std::sin(2.0 * 3.14159265358979 * (i + 0.5) / PER_PERIOD);
    body.update(celsius < 0.0 ? 0.5 * ICE_DENSITY : 0.0, FREEZING_POINT + celsius, ENOUGH, BY_TEMPERATURE);
  }
  EXPECT_EQ(body.cycles, PERIODS - 1U);  // the last one is still frozen
  EXPECT_TRUE(body.frozen);
}

TEST_F(FreezeThawTest, setMaterial_takesThePorosity) {
  const MM::Material stone = withPores("THETA_POR = 0.3 m3/m3\nTHETA_EFF = 0.2 m3/m3\n");
  counter.setMaterial(&stone);
  EXPECT_EQ(counter.poreVolume, 0.3);
  EXPECT_EQ(counter.material, &stone);
}

TEST_F(FreezeThawTest, setMaterial_withoutPorosity_takesTheEffectiveSaturation) {
  const MM::Material stone = withPores("THETA_EFF = 0.2 m3/m3\n");
  counter.setMaterial(&stone);
  EXPECT_EQ(counter.poreVolume, 0.2);
  EXPECT_EQ(counter.material, &stone);
}

TEST_F(FreezeThawTest, setMaterial_withoutEither_keepsThePoreVolumeAndForgetsTheMaterial) {
  const MM::Material stone = withPores("THETA_POR = 0.3 m3/m3\n");
  const MM::Material glass = withPores("");
  counter.setMaterial(&stone);
  counter.setMaterial(&glass);
  EXPECT_EQ(counter.poreVolume, 0.3);
  EXPECT_EQ(counter.material, nullptr);
  FreezeThaw fresh;
  fresh.setMaterial(&glass);
  EXPECT_EQ(fresh.poreVolume, 1.0);
}

TEST_F(FreezeThawTest, setMaterial_withoutPores_doesNotDivideByThem) {
  const MM::Material steel = withPores("THETA_POR = 0 m3/m3\n");
  counter.setMaterial(&steel);
  update(0.0);
  EXPECT_EQ(counter.iceSaturation, 0.0);
}

TEST_F(FreezeThawTest, setMaterial_refusesNull) {
  EXPECT_EQ(TKL::thrownBy([&] { counter.setMaterial(nullptr); }),
            (TKL::Thrown{"NULL pointer passed to FreezeThaw setMaterial().", "[FreezeThaw::setMaterial]"}));
}

}  // namespace VELMORA
