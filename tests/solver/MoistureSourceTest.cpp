#include <gtest/gtest.h>

#include "solver/SourceBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

const char* const MOISTURE_TAG = "[VelmoraCvodeSolver::calculateSourcesM]";
constexpr double INFLOW = 0.004;    // [kg/(m3 s)]
constexpr double AIR_T = 310.0;     // [K]
constexpr double AIR_RH = 0.4;      // [-]
constexpr double AIR_SPEED = 2e-3;  // [m/s]
constexpr double RAMP = 1e-06;      // [m3/m3]

double vapourDensity(double pV, double T) {
  return pV / (461.89 * T);
}
double vapourEnthalpy(double T) {
  return 2050.0 * T + 3080000.0;
}
double airVapourPressure() {
  return AIR_RH * 288.68 * std::pow(1.098 + (AIR_T - 273.15) / 100.0, 8.02);
}

class MoistureSourceTest : public SourceBench {
 protected:
  MoistureSourceTest() : SourceBench(BE_ENERGY | BE_MOISTURE) {}

  void withoutEnergy() { settings = moistSettings(BE_MOISTURE); }

  /// The moisture source at a content of an element with an imposed source.
  double imposed(double source, double Theta) {
    act(VelFieldCond::C_WATSOURCE, {UPPER_LEFT});
    attach(VelClimateCond::C_WATSOURCE, source);
    s.Theta[UPPER_LEFT] = Theta;
    calculate();
    return moisture(UPPER_LEFT);
  }
  /// As above, near a limit where the rounding of the content counts.
  void expectImposed(double source, double Theta, double expected) {
    EXPECT_NEAR(imposed(source, Theta), expected, 1e-9 * std::fabs(source)) << Theta;
  }

  /// A water exchange between the right column as source and the left one as sink.
  void transfer(double exponent) {
    act(VelFieldCond::C_REMWATSOUR, {UPPER_RIGHT, LOWER_RIGHT}, 0);
    act(VelFieldCond::C_REMWATSINK, {UPPER_LEFT, LOWER_LEFT}, 1);
    connect();
    set(VelFieldCond::P_WATTRANSFCOEFF, 0.02, 0);
    set(VelFieldCond::P_WATTRANSFCOEFF, 77.0, 1);  // not read
    set(VelFieldCond::P_LIM_SATDEGREE, 0.05, 0);
    set(VelFieldCond::P_LIM_SATDEGREE, 0.1, 1);
    set(VelFieldCond::P_WATTRANS_EXPONENT, exponent, 0);
    set(VelFieldCond::P_WATTRANS_EXPONENT, exponent, 1);
  }
  double sinkSaturation() const { return (0.03 * s.Theta[UPPER_LEFT] + 0.05 * s.Theta[LOWER_LEFT]) / 0.016; }
  double sourceSaturation() const {
    return (0.06 * s.Theta[UPPER_RIGHT] + 0.1 * s.Theta[LOWER_RIGHT]) / 0.032;
  }
  double totalMoisture() const {
    double total = 0.0;
    for (const cell_t cell : {UPPER_LEFT, UPPER_RIGHT, LOWER_LEFT, LOWER_RIGHT})
      total += moisture(cell) * volume(cell);
    return total;
  }

  void attachAir() {
    attach(VelClimateCond::C_TEMPER, AIR_T);
    attach(VelClimateCond::C_RELHUM, AIR_RH);
  }
  /// Sources by air of this temperature and vapour pressure that flows into an element.
  void expectFlow(cell_t cell, double Tu, double pVu, double v, double length) {
    const double entering = vapourDensity(pVu, Tu);
    const double leaving = vapourDensity(s.pV[cell], s.T[cell]);
    expectClose(moisture(cell), (entering - leaving) * v / length);
    expectClose(enthalpy(cell),
                (vapourEnthalpy(Tu) * entering - vapourEnthalpy(s.T[cell]) * leaving) * v / length);
  }
};

}  // namespace

// ---- imposed water

TEST_F(MoistureSourceTest, imposedWater_bringsTheEnthalpyOfWaterAtTheElement) {
  EXPECT_EQ(imposed(INFLOW, 0.1), INFLOW);
  expectClose(enthalpy(UPPER_LEFT), INFLOW * 4180.0 * 300.0);
  EXPECT_EQ(moisture(UPPER_RIGHT), 0.0);
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
  EXPECT_EQ(imposed(-INFLOW, 0.1), -INFLOW);
  expectClose(enthalpy(UPPER_LEFT), -INFLOW * 4180.0 * 300.0);
}

TEST_F(MoistureSourceTest, energyOff_givesNoEnthalpy) {
  withoutEnergy();
  EXPECT_EQ(imposed(INFLOW, 0.1), INFLOW);
  for (const double value : arrays.records.heatSource.values()) EXPECT_EQ(value, 0.0);
}

TEST_F(MoistureSourceTest, moistureOff_givesNoSource) {
  settings = moistSettings(BE_ENERGY);
  EXPECT_EQ(imposed(INFLOW, 0.1), 0.0);
  EXPECT_EQ(enthalpy(UPPER_LEFT), 0.0);
}

TEST_F(MoistureSourceTest, sinkInADryElement_fadesOverItsRamp) {
  EXPECT_EQ(imposed(-INFLOW, 0.0), 0.0);
  EXPECT_EQ(imposed(-INFLOW, -0.001), 0.0);
  EXPECT_EQ(imposed(-INFLOW, RAMP), -INFLOW);
  expectImposed(-INFLOW, 0.5 * RAMP, -INFLOW * 0.5);
  expectImposed(-INFLOW, 0.25 * RAMP, -INFLOW * 0.15625);  // (2 * 0.75 - 3) 0.75^2 + 1
}

TEST_F(MoistureSourceTest, fadingSink_takesLessEnthalpy) {
  expectImposed(-INFLOW, 0.5 * RAMP, -INFLOW * 0.5);
  expectClose(enthalpy(UPPER_LEFT), moisture(UPPER_LEFT) * 4180.0 * 300.0);
}

TEST_F(MoistureSourceTest, sinkAtTheLeastContent_givesExactlyNothing) {
  set(VelFieldCond::P_MIN_WATCONT, 0.05);
  EXPECT_EQ(imposed(-INFLOW, 0.05), 0.0);
  EXPECT_EQ(imposed(-INFLOW, 0.03), 0.0);
  EXPECT_EQ(imposed(-INFLOW, 0.05 + RAMP), -INFLOW);
  expectImposed(-INFLOW, 0.05 + 0.25 * RAMP, -INFLOW * 0.15625);
}

TEST_F(MoistureSourceTest, leastContentBelowZero_countsAsZero) {
  set(VelFieldCond::P_MIN_WATCONT, -0.1);
  EXPECT_EQ(imposed(-INFLOW, 0.0), 0.0);
}

TEST_F(MoistureSourceTest, leastContent_doesNotLimitASource) {
  set(VelFieldCond::P_MIN_WATCONT, 0.05);
  EXPECT_EQ(imposed(INFLOW, 0.01), INFLOW);
}

TEST_F(MoistureSourceTest, sourceInAFullElement_fadesOverItsRamp) {
  EXPECT_EQ(imposed(INFLOW, MOIST_EFF), 0.0);
  EXPECT_EQ(imposed(INFLOW, 0.25), 0.0);
  EXPECT_EQ(imposed(INFLOW, MOIST_EFF - RAMP), INFLOW);
  expectImposed(INFLOW, MOIST_EFF - 0.5 * RAMP, INFLOW * 0.5);
  expectImposed(INFLOW, MOIST_EFF - 0.25 * RAMP, INFLOW * 0.15625);
}

TEST_F(MoistureSourceTest, sourceAtTheLargestContent_givesNothing) {
  set(VelFieldCond::P_MAX_WATCONT, 0.15);
  EXPECT_EQ(imposed(INFLOW, 0.15), 0.0);
  EXPECT_EQ(imposed(INFLOW, 0.18), 0.0);
  EXPECT_EQ(imposed(INFLOW, 0.15 - RAMP), INFLOW);
  expectImposed(INFLOW, 0.15 - 0.25 * RAMP, INFLOW * 0.15625);
}

TEST_F(MoistureSourceTest, largestContentAboveSaturation_countsAsSaturation) {
  set(VelFieldCond::P_MAX_WATCONT, 0.3);
  EXPECT_EQ(imposed(INFLOW, MOIST_EFF), 0.0);
  expectImposed(INFLOW, MOIST_EFF - 0.25 * RAMP, INFLOW * 0.15625);
}

TEST_F(MoistureSourceTest, largestContent_doesNotLimitASink) {
  set(VelFieldCond::P_MAX_WATCONT, 0.15);
  EXPECT_EQ(imposed(-INFLOW, 0.18), -INFLOW);
  EXPECT_EQ(imposed(-INFLOW, 0.25), -INFLOW);
}

TEST_F(MoistureSourceTest, sourceInAir_reachesUpToTheWholeVolume) {
  const MM::Material air = airMaterial();
  useMaterial(air);
  EXPECT_EQ(imposed(INFLOW, 0.9), INFLOW);
  EXPECT_EQ(imposed(INFLOW, 1.0), 0.0);
}

// ---- activity and sums

TEST_F(MoistureSourceTest, twoConditionsOfAnElement_addUp) {
  act(VelFieldCond::C_WATSOURCE, {UPPER_LEFT}, 0);
  act(VelFieldCond::C_WATSOURCE, {UPPER_LEFT}, 1);
  attach(VelClimateCond::C_WATSOURCE, 0.003, 0);
  attach(VelClimateCond::C_WATSOURCE, -0.001, 1);
  calculate();
  expectClose(moisture(UPPER_LEFT), 0.002);
  expectClose(enthalpy(UPPER_LEFT), 0.002 * 4180.0 * 300.0);
  EXPECT_EQ(arrays.records.moistureSource[UPPER_LEFT][VELMORA::MS_SUM], moisture(UPPER_LEFT));
}

TEST_F(MoistureSourceTest, heatAndEnthalpy_addUpInTheSumOnly) {
  act(VelFieldCond::C_WATSOURCE, {UPPER_LEFT}, 0);
  act(VelFieldCond::C_ENESOURCE, {UPPER_LEFT}, 1);
  attach(VelClimateCond::C_WATSOURCE, INFLOW, 0);
  attach(VelClimateCond::C_ENESOURCE, 250.0, 1);
  calculate();
  EXPECT_EQ(heat(UPPER_LEFT), 250.0);
  expectClose(arrays.records.heatSource[UPPER_LEFT][VELMORA::HS_SUM], 250.0 + INFLOW * 4180.0 * 300.0);
}

TEST_F(MoistureSourceTest, condition_actsFromStartToEndInclusive) {
  VelFieldCond& fc = act(VelFieldCond::C_WATSOURCE, {UPPER_LEFT});
  attach(VelClimateCond::C_WATSOURCE, INFLOW);
  fc.startTime.setBaseValue("START_TIME", 500.0, TKL::Unit("s"));
  fc.endTime.setBaseValue("END_TIME", 900.0, TKL::Unit("s"));
  const auto at = [this](double t) {
    calculate(t);
    return moisture(UPPER_LEFT);
  };
  EXPECT_EQ(at(499.9), 0.0);
  EXPECT_EQ(at(500.0), INFLOW);
  EXPECT_EQ(at(900.0), INFLOW);
  EXPECT_EQ(at(900.1), 0.0);
}

TEST_F(MoistureSourceTest, conditionsOfOtherBalances_giveNoMoisture) {
  withoutEnergy();
  for (const auto type : {VelFieldCond::C_ENESOURCE, VelFieldCond::C_WATERFLOW, VelFieldCond::C_MEDIAFLOW,
                          VelFieldCond::C_REMENESOUR, VelFieldCond::C_PCMENESINK,
                          VelFieldCond::C_LW_RADIATION, VelFieldCond::C_VOCSOURCE}) {
    act(type, {UPPER_LEFT});
    calculate();
    EXPECT_EQ(moisture(UPPER_LEFT), 0.0) << type;
  }
}

TEST_F(MoistureSourceTest, missingClimate_isNamed) {
  withoutEnergy();
  act(VelFieldCond::C_WATSOURCE, {UPPER_LEFT});
  EXPECT_EQ(failure(), missing("WATSOURCE", "WATSOURCE", MOISTURE_TAG));
  act(VelFieldCond::C_AIRFLOW, {UPPER_LEFT});
  EXPECT_EQ(failure(), missing("AIRFLOW", "FLUIDVELOCITY", MOISTURE_TAG));
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT});
  EXPECT_EQ(failure(), missing("AIRCHANGE", "AIRCHANGERATE", MOISTURE_TAG));
  data.fieldConds[0].flags.set(VelFieldCond::F_USE_FLOWRATE);
  EXPECT_EQ(failure(), missing("AIRCHANGE", "AIRFLOWRATE", MOISTURE_TAG));
}

TEST_F(MoistureSourceTest, missingStateOfTheAir_isNamed) {
  withoutEnergy();
  attach(VelClimateCond::C_FLUIDVELOCITY, AIR_SPEED);
  attach(VelClimateCond::C_AIRCHANGERATE, 0.01);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_RIGHT);
  const struct {
    VelFieldCond::condition_t condition;
    const char* type;
  } cases[] = {{VelFieldCond::C_AIRFLOW, "AIRFLOW"}, {VelFieldCond::C_AIRCHANGE, "AIRCHANGE"}};
  for (const auto& test : cases) {
    act(test.condition, {UPPER_LEFT});
    detach(VelClimateCond::C_TEMPER);
    EXPECT_EQ(failure(), missing(test.type, "TEMPER", MOISTURE_TAG));
    attach(VelClimateCond::C_TEMPER, AIR_T);
    EXPECT_EQ(failure(), missing(test.type, "RELHUM", MOISTURE_TAG));
  }
}

TEST_F(MoistureSourceTest, missingRemoteCondition_isReported) {
  const struct {
    VelFieldCond::condition_t condition;
    const char* type;
  } cases[] = {{VelFieldCond::C_REMWATSOUR, "REMWATSOUR"}, {VelFieldCond::C_REMWATSINK, "REMWATSINK"}};
  for (const auto& test : cases) {
    act(test.condition, {UPPER_LEFT});
    const TKL::Thrown expected{std::string("Error in field condition 'First' with type '") + test.type +
                                   "'.\nRemote field condition needs to be specified!",
                               MOISTURE_TAG};
    EXPECT_EQ(failure(), expected);
  }
}

// ---- water between two regions

TEST_F(MoistureSourceTest, remoteSource_followsItsFreeShareAndTheSaturationOfTheSink) {
  transfer(1.0);
  calculate();
  const double drive = sinkSaturation() - 0.1;
  expectClose(moisture(UPPER_RIGHT), drive * (0.75 - 0.05) * 0.02 / 0.16);
  expectClose(moisture(LOWER_RIGHT), drive * (0.25 - 0.05) * 0.02 / 0.16);
}

TEST_F(MoistureSourceTest, remoteSink_followsItsFilledShareAndTheSaturationOfTheSource) {
  transfer(1.0);
  s.Theta[LOWER_LEFT] = 0.04;
  calculate();
  const double drive = sourceSaturation() - 0.05;
  expectClose(moisture(UPPER_LEFT), -drive * (0.5 - 0.1) * 0.02 / 0.08);
  expectClose(moisture(LOWER_LEFT), -drive * (0.2 - 0.1) * 0.02 / 0.08);
}

TEST_F(MoistureSourceTest, remoteTransferByAPower_takesTheLimitOffThePower) {
  transfer(2.0);
  calculate();
  expectClose(moisture(UPPER_RIGHT), (sinkSaturation() - 0.1) * (0.75 * 0.75 - 0.05) * 0.02 / 0.16);
  expectClose(moisture(UPPER_LEFT), -(sourceSaturation() - 0.05) * (0.5 * 0.5 - 0.1) * 0.02 / 0.08);
}

TEST_F(MoistureSourceTest, fullRegion_takesNothing) {
  transfer(1.0);
  for (const double full : {MOIST_EFF, MOIST_EFF * (1.0 - 0.9e-10), 0.25}) {
    s.Theta[UPPER_RIGHT] = full;
    calculate();
    EXPECT_EQ(moisture(UPPER_RIGHT), 0.0) << full;
  }
  s.Theta[UPPER_RIGHT] = MOIST_EFF * (1.0 - 1.1e-10);
  calculate();
  EXPECT_NEAR(moisture(UPPER_RIGHT), (sinkSaturation() - 0.1) * -0.05 * 0.02 / 0.16, 1e-10);
}

TEST_F(MoistureSourceTest, dryRegion_givesNothing) {
  transfer(1.0);
  for (const double dry : {0.0, -0.01, 0.9e-10 * MOIST_EFF}) {
    s.Theta[UPPER_LEFT] = dry;
    calculate();
    EXPECT_EQ(moisture(UPPER_LEFT), 0.0) << dry;
  }
  s.Theta[UPPER_LEFT] = 1.1e-10 * MOIST_EFF;
  calculate();
  EXPECT_NEAR(moisture(UPPER_LEFT), (sourceSaturation() - 0.05) * 0.1 * 0.02 / 0.08, 1e-10);
}

TEST_F(MoistureSourceTest, remoteTransfer_carriesNoEnthalpy) {
  transfer(1.0);
  calculate();
  for (const double value : arrays.records.heatSource.values()) EXPECT_EQ(value, 0.0);
}

TEST_F(MoistureSourceTest, halfFullSource_getsWhatTheSinkGives) {
  transfer(1.0);
  s.Theta[UPPER_RIGHT] = s.Theta[LOWER_RIGHT] = 0.5 * MOIST_EFF;
  calculate();
  ASSERT_GT(moisture(UPPER_RIGHT), 0.0);
  EXPECT_NEAR(totalMoisture(), 0.0, 1e-12 * moisture(UPPER_RIGHT));
}

TEST_F(MoistureSourceTest, remoteTransferOfAir_isNothing) {
  const MM::Material air = airMaterial();
  useMaterial(air);
  transfer(1.0);
  calculate();
  for (const double value : arrays.records.moistureSource.values()) EXPECT_EQ(value, 0.0);
}

// ---- air change

TEST_F(MoistureSourceTest, airChange_replacesVapourWithCrossedEnthalpies) {
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT});
  attachAir();
  attach(VelClimateCond::C_AIRCHANGERATE, 0.01);
  calculate();
  const double outside = vapourDensity(airVapourPressure(), AIR_T);
  const double inside = vapourDensity(1500.0, 300.0);
  expectClose(moisture(UPPER_LEFT), (outside - inside) * 0.01);
  expectClose(enthalpy(UPPER_LEFT),
              (vapourEnthalpy(300.0) * outside - vapourEnthalpy(AIR_T) * inside) * 0.01);
  expectClose(heat(UPPER_LEFT), 10.0 * 1212.23 * 0.01);
}

TEST_F(MoistureSourceTest, airChangeByFlow_sharesItAmongAllElements) {
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT, LOWER_LEFT}).flags.set(VelFieldCond::F_USE_FLOWRATE);
  attachAir();
  attach(VelClimateCond::C_AIRFLOWRATE, 0.004);
  calculate();
  const double outside = vapourDensity(airVapourPressure(), AIR_T);
  expectClose(moisture(LOWER_LEFT), (outside - vapourDensity(700.0, 285.0)) * 0.004 / 0.08);
}

TEST_F(MoistureSourceTest, airChangeWithoutEnergy_movesVapourOnly) {
  withoutEnergy();
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT});
  attachAir();
  attach(VelClimateCond::C_AIRCHANGERATE, 0.01);
  calculate();
  EXPECT_NE(moisture(UPPER_LEFT), 0.0);
  for (const double value : arrays.records.heatSource.values()) EXPECT_EQ(value, 0.0);
}

// ---- air that flows through

TEST_F(MoistureSourceTest, airFlow_bringsTheVapourOfTheNeighbourUpstream) {
  const struct {
    cell_t cell;
    direction_t direction;
    cell_t upstream;
    double length;
  } cases[] = {{UPPER_LEFT, TO_LEFT, UPPER_RIGHT, 0.1},
               {UPPER_RIGHT, TO_RIGHT, UPPER_LEFT, 0.2},
               {UPPER_LEFT, TO_TOP, LOWER_LEFT, 0.3},
               {LOWER_LEFT, TO_BOTTOM, UPPER_LEFT, 0.5}};
  attach(VelClimateCond::C_FLUIDVELOCITY, AIR_SPEED);
  for (const auto& test : cases) {
    act(VelFieldCond::C_AIRFLOW, {test.cell});
    set(VelFieldCond::P_FLOW_DIRECTION, test.direction);
    calculate();
    expectFlow(test.cell, s.T[test.upstream], s.pV[test.upstream], AIR_SPEED, test.length);
  }
}

TEST_F(MoistureSourceTest, airFlowWithoutNeighbourUpstream_bringsTheVapourOfTheClimate) {
  const struct {
    cell_t cell;
    direction_t direction;
    double length;
  } cases[] = {{UPPER_RIGHT, TO_LEFT, 0.2},
               {UPPER_LEFT, TO_RIGHT, 0.1},
               {LOWER_LEFT, TO_RIGHT, 0.1},
               {LOWER_LEFT, TO_TOP, 0.5},
               {UPPER_LEFT, TO_BOTTOM, 0.3}};
  attachAir();
  attach(VelClimateCond::C_FLUIDVELOCITY, AIR_SPEED);
  for (const auto& test : cases) {
    act(VelFieldCond::C_AIRFLOW, {test.cell});
    set(VelFieldCond::P_FLOW_DIRECTION, test.direction);
    calculate();
    expectFlow(test.cell, AIR_T, airVapourPressure(), AIR_SPEED, test.length);
  }
}

TEST_F(MoistureSourceTest, negativeAirVelocity_keepsTheUpstreamSide) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_LEFT});
  attach(VelClimateCond::C_FLUIDVELOCITY, -AIR_SPEED);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_LEFT);
  calculate();
  expectFlow(UPPER_LEFT, 290.0, 900.0, -AIR_SPEED, 0.1);
}

TEST_F(MoistureSourceTest, airAtRest_needsNoState) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_LEFT});
  attach(VelClimateCond::C_FLUIDVELOCITY, 0.0);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_RIGHT);
  calculate();
  EXPECT_EQ(moisture(UPPER_LEFT), 0.0);
  EXPECT_EQ(enthalpy(UPPER_LEFT), 0.0);
}

TEST_F(MoistureSourceTest, airFlowWithoutEnergy_movesVapourOnly) {
  withoutEnergy();
  act(VelFieldCond::C_AIRFLOW, {UPPER_LEFT});
  attach(VelClimateCond::C_FLUIDVELOCITY, AIR_SPEED);
  calculate();
  EXPECT_NE(moisture(UPPER_LEFT), 0.0);
  for (const double value : arrays.records.heatSource.values()) EXPECT_EQ(value, 0.0);
}

}  // namespace VELMORA_SOLVER
