// Every source of a project file against a formula by hand, and what is told when its climate or its remote
// condition is missing. Cells: brick of 30 C, air, brick of 20 C and of 10 C, half a metre wide each.

#include <gtest/gtest.h>

#include <cmath>

#include "system/ConditionProject.h"

namespace VELMORA_TEST {

namespace {

constexpr int WARM_CELL = 0, MEDIUM_CELL = 2, COLD_CELL = 3;
constexpr double CELL_WIDTH = ConditionProject::CELL;
constexpr double AIR_RHO_C = 1.205 * 1006.0;  // [J/m3K]
constexpr double WATER_C = 4180.0, VAPOUR_C = 2050.0, VAPOUR_H0 = 3.08e6;
constexpr double R_VAPOUR = 461.89;
constexpr double DRAUGHT_T = 273.15 + 5.0;  // [K] of the climate

double saturationOf(double T) {
  return 288.68 * std::pow(1.098 + (T - 273.15) / 100.0, 8.02);
}
/// Vapour [kg/m3] in air.
double vapourDensity(double T, double RH) {
  return RH * saturationOf(T) / (R_VAPOUR * T);
}
double vapourEnthalpy(double T) {
  return VAPOUR_C * T + VAPOUR_H0;
}

class SourceKinds : public ::testing::Test {
 protected:
  SourceKinds() { project.fieldOutput("HEATSOURCE", "W/m3"); }
  void withMoisture() {
    project.balances = "ENERGY MOISTURE";
    project.fieldOutput("MOISTSOURCE", "kg/m3s");
  }
  void airClimate() {
    project.climate("TEMPER", "5 C");
    project.climate("RELHUM", "90 %");
  }
  /// The source of heat [W/m3] in each cell.
  std::vector<double> heat() {
    const ProcessResult result = project.run();
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return project.values("HEATSOURCE");
  }
  static void expectClose(double actual, double expected) {
    EXPECT_NE(expected, 0.0);
    EXPECT_NEAR(actual, expected, 2e-3 * std::fabs(expected));
  }
  void expectFailure(const std::string& text) {
    const ProcessResult result = project.run();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.errHasInOrder({text})) << result.err;
  }

  ConditionProject project;
};

}  // namespace

TEST_F(SourceKinds, heat_isReleasedInItsCell) {
  project.climate("ENESOURCE", "100 W/m3");
  project.source("Heater", "ENESOURCE", "ENESOURCE = ENESOURCE\n", COLD_CELL, COLD_CELL);
  const auto q = heat();
  expectClose(q[COLD_CELL], 100.0);
  EXPECT_EQ(q[WARM_CELL], 0.0);
}

TEST_F(SourceKinds, airChange_bringsTheTemperatureOfTheClimate) {
  airClimate();
  project.climate("AIRCHANGERATE", "0.5 1/h");
  project.source("Draught", "AIRCHANGE", "TEMPER = TEMPER\nAIRCHANGERATE = AIRCHANGERATE\n", COLD_CELL,
                 COLD_CELL);
  expectClose(heat()[COLD_CELL], -5.0 * AIR_RHO_C * 0.5 / 3600.0);
}

TEST_F(SourceKinds, airFlowRate_isSharedByTheVolume) {
  airClimate();
  project.climate("AIRFLOWRATE", "0.001 m3/s");
  project.source("Fan", "AIRCHANGE", "FLAGS = USE_FLOWRATE\nTEMPER = TEMPER\nAIRFLOWRATE = AIRFLOWRATE\n",
                 COLD_CELL, COLD_CELL);
  expectClose(heat()[COLD_CELL], -5.0 * AIR_RHO_C * 0.001 / CELL_WIDTH);
}

TEST_F(SourceKinds, airChange_bringsVapour) {
  withMoisture();
  airClimate();
  project.climate("AIRCHANGERATE", "0.5 1/h");
  project.source("Draught", "AIRCHANGE", "TEMPER = TEMPER\nRELHUM = RELHUM\nAIRCHANGERATE = AIRCHANGERATE\n",
                 COLD_CELL, COLD_CELL);
  const double n = 0.5 / 3600.0, T = ConditionProject::COLD;
  const double outside = vapourDensity(DRAUGHT_T, 0.9), inside = vapourDensity(T, 0.8);
  expectClose(heat()[COLD_CELL],
              n * (-5.0 * AIR_RHO_C + vapourEnthalpy(T) * outside - vapourEnthalpy(DRAUGHT_T) * inside));
  expectClose(project.values("MOISTSOURCE")[COLD_CELL], n * (outside - inside));
}

TEST_F(SourceKinds, water_flowsFromTheNeighbour) {
  project.climate("FLUIDVELOCITY", "1e-6 m/s");
  project.source("Stream", "WATERFLOW", "FLUIDVELOCITY = FLUIDVELOCITY\n", COLD_CELL, COLD_CELL);
  expectClose(heat()[COLD_CELL], 10.0 * 1e-6 * 4.18e6 / CELL_WIDTH);
}

TEST_F(SourceKinds, air_flowsFromTheNeighbour) {
  withMoisture();
  project.climate("FLUIDVELOCITY", "0.001 m/s");
  project.source("Breeze", "AIRFLOW", "FLOW_DIRECTION = 1 -\nFLUIDVELOCITY = FLUIDVELOCITY\n", COLD_CELL,
                 COLD_CELL);
  const double v = 0.001 / CELL_WIDTH, from = ConditionProject::MEDIUM, T = ConditionProject::COLD;
  const double entering = vapourDensity(from, 0.8), leaving = vapourDensity(T, 0.8);
  expectClose(heat()[COLD_CELL],
              v * (10.0 * AIR_RHO_C + vapourEnthalpy(from) * entering - vapourEnthalpy(T) * leaving));
  expectClose(project.values("MOISTSOURCE")[COLD_CELL], v * (entering - leaving));
}

TEST_F(SourceKinds, medium_flowsFromTheNeighbour) {
  project.climate("VOLFLUIDFLUX", "1e-6 m3/s");
  project.source("Medium", "MEDIAFLOW", "FLOW_DIRECTION = 1 -\nVOLFLUIDFLUX = VOLFLUIDFLUX\n", COLD_CELL,
                 COLD_CELL);
  expectClose(heat()[COLD_CELL], 10.0 * 1e-6 * ConditionProject::RHO_C / CELL_WIDTH);
}

TEST_F(SourceKinds, remotePair_movesTheHeatOfItsFluid) {
  project.climate("VOLFLUIDFLUX", "1e-6 m3/s");
  project.source("Source", "REMENESOUR",
                 "FLUID_CAPACITY = 4.18e6 J/m3K\nVOLFLUIDFLUX = VOLFLUIDFLUX\nREMOTE_COND = Sink\n",
                 COLD_CELL, COLD_CELL);
  project.source("Sink", "REMENESINK", "LIM_SNK_TEMPERATURE = 25 C\nREMOTE_COND = Source\n", WARM_CELL,
                 WARM_CELL);
  const auto q = heat();
  expectClose(q[COLD_CELL], 4.18 * 20.0 / CELL_WIDTH);
  EXPECT_NEAR(q[WARM_CELL], -q[COLD_CELL], 1e-9 * q[COLD_CELL]);
}

TEST_F(SourceKinds, phaseChangePair_chargesInTheMeltingRange) {
  project.source("Pcm", "PCMENESOUR",
                 "PCM_MELT_TEMP = 20 C\nPCM_DEL_TEMP = 4 K\nENETRANSFCOEFF = 5 J/s\nREMOTE_COND = Room\n",
                 COLD_CELL, COLD_CELL);
  project.source("Room", "PCMENESINK", "REMOTE_COND = Pcm\n", WARM_CELL, WARM_CELL);
  const auto q = heat();
  expectClose(q[COLD_CELL], 20.0 * 5.0 / CELL_WIDTH);
  EXPECT_NEAR(q[WARM_CELL], -q[COLD_CELL], 1e-9 * q[COLD_CELL]);
}

TEST_F(SourceKinds, facesOfAGap_exchangeRadiation) {
  project.source("Gap", "LW_RADIATION",
                 "FLAGS = LW_RADIATION_X\nLEFT_EMISS_COEFF = 0.9 -\nRIGHT_EMISS_COEFF = 0.8 -\n", WARM_CELL,
                 MEDIUM_CELL);
  const double exchange =
      5.67e-8 * (std::pow(303.15, 4.0) - std::pow(293.15, 4.0)) / (1.0 / 0.9 + 1.0 / 0.8 - 1.0);
  const auto q = heat();
  expectClose(q[MEDIUM_CELL], exchange / CELL_WIDTH);
  EXPECT_NEAR(q[WARM_CELL], -q[MEDIUM_CELL], 1e-9 * q[MEDIUM_CELL]);
}

TEST_F(SourceKinds, water_isReleasedWithItsEnthalpy) {
  withMoisture();
  project.climate("WATSOURCE", "1e-5 kg/m3s");
  project.source("Leak", "WATSOURCE", "MAX_WATCONT = 0.2 m3/m3\nWATSOURCE = WATSOURCE\n", COLD_CELL,
                 COLD_CELL);
  expectClose(heat()[COLD_CELL], 1e-5 * WATER_C * ConditionProject::COLD);
  expectClose(project.values("MOISTSOURCE")[COLD_CELL], 1e-5);
}

TEST_F(SourceKinds, remotePair_movesWaterBySaturation) {
  withMoisture();
  project.moisture = "MSTCONT\nVALUE = 0.064 m3/m3";  // a quarter of the effective saturation of 0.256
  project.damp = "MSTCONT\nVALUE = 0.128 m3/m3";
  project.source(
      "Source", "REMWATSOUR",
      "WATTRANSFCOEFF = 1e-3 kg/s\nLIM_SATDEGREE = 0.1 -\nWATTRANS_EXPONENT = 1 -\nREMOTE_COND = Sink\n",
      COLD_CELL, COLD_CELL);
  project.source("Sink", "REMWATSINK",
                 "LIM_SATDEGREE = 0.05 -\nWATTRANS_EXPONENT = 2 -\nREMOTE_COND = Source\n", WARM_CELL,
                 WARM_CELL);
  heat();
  const auto s = project.values("MOISTSOURCE");
  expectClose(s[COLD_CELL], (0.5 - 0.05) * (0.75 - 0.1) * 1e-3 / CELL_WIDTH);
  expectClose(s[WARM_CELL], -(0.25 - 0.1) * (0.25 - 0.05) * 1e-3 / CELL_WIDTH);
}

TEST_F(SourceKinds, climate_isAskedFor) {
  const std::vector<std::pair<std::string, std::string>> needs{
      {"ENESOURCE", "ENESOURCE"},   {"AIRCHANGE", "AIRCHANGERATE"}, {"WATERFLOW", "FLUIDVELOCITY"},
      {"AIRFLOW", "FLUIDVELOCITY"}, {"MEDIAFLOW", "VOLFLUIDFLUX"},  {"WATSOURCE", "WATSOURCE"}};
  for (const auto& [type, climate] : needs) {
    ConditionProject other;
    other.balances = "ENERGY MOISTURE";
    other.source("Term", type, "", COLD_CELL, COLD_CELL);
    const ProcessResult result = other.run();
    EXPECT_EQ(result.exitCode, 1) << type;
    EXPECT_TRUE(
        result.errHasInOrder({"Error in in field condition 'Term' with type '" + type +
                              "'.\nClimate condition of type '" + climate + "' needs to be specified!"}))
        << result.err;
  }
}

TEST_F(SourceKinds, remoteCondition_isAskedFor) {
  project.climate("VOLFLUIDFLUX", "1e-6 m3/s");
  project.source("Source", "REMENESOUR", "FLUID_CAPACITY = 4.18e6 J/m3K\nVOLFLUIDFLUX = VOLFLUIDFLUX\n",
                 COLD_CELL, COLD_CELL);
  expectFailure(
      "Error in field condition 'Source' with type 'REMENESOUR'.\nRemote field condition needs to be "
      "specified!");
}

}  // namespace VELMORA_TEST
