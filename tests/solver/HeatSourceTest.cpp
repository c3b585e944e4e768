#include <gtest/gtest.h>

#include <limits>

#include "solver/SourceBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

const char* const HEAT_TAG = "[VelmoraCvodeSolver::calculateSourcesH]";
constexpr double AIR = 1212.23;      // [J/m3K]
constexpr double WATER = 4180000.0;  // [J/m3K]
constexpr double OUTSIDE = 310.0;    // [K]
constexpr double VELOCITY = 2e-3;    // [m/s]

class HeatSourceTest : public SourceBench {
 protected:
  HeatSourceTest() : SourceBench(BE_ENERGY) {}
};

}  // namespace

// ---- imposed heat, activity and sums

TEST_F(HeatSourceTest, imposedHeat_actsOnItsElementsOnly) {
  act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT});
  attach(VelClimateCond::C_ENESOURCE, 250.0);
  calculate();
  EXPECT_EQ(heat(UPPER_RIGHT), 250.0);
  for (const cell_t cell : {UPPER_LEFT, LOWER_LEFT, LOWER_RIGHT}) EXPECT_EQ(heat(cell), 0.0);
}

TEST_F(HeatSourceTest, twoConditionsOfAnElement_addUp) {
  act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT}, 0);
  act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT}, 1);
  attach(VelClimateCond::C_ENESOURCE, 250.0, 0);
  attach(VelClimateCond::C_ENESOURCE, -50.0, 1);
  calculate();
  EXPECT_EQ(heat(UPPER_RIGHT), 200.0);
  EXPECT_EQ(arrays.records.heatSource[UPPER_RIGHT][VELMORA::HS_SUM], 200.0);
}

TEST_F(HeatSourceTest, evaluations_startFromZero) {
  act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT});
  attach(VelClimateCond::C_ENESOURCE, 250.0);
  calculate();
  calculate();
  EXPECT_EQ(heat(UPPER_RIGHT), 250.0);
}

TEST_F(HeatSourceTest, condition_actsFromStartToEndInclusive) {
  VelFieldCond& fc = act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT});
  attach(VelClimateCond::C_ENESOURCE, 250.0);
  fc.startTime.setBaseValue("START_TIME", 500.0, TKL::Unit("s"));
  fc.endTime.setBaseValue("END_TIME", 900.0, TKL::Unit("s"));
  const auto at = [this](double t) {
    calculate(t);
    return heat(UPPER_RIGHT);
  };
  EXPECT_EQ(at(499.9), 0.0);
  EXPECT_EQ(at(500.0), 250.0);
  EXPECT_EQ(at(900.0), 250.0);
  EXPECT_EQ(at(900.1), 0.0);
}

TEST_F(HeatSourceTest, conditionOutOfItsTime_needsNoClimate) {
  VelFieldCond& fc = act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT});
  fc.startTime.setBaseValue("START_TIME", 2000.0, TKL::Unit("s"));
  EXPECT_NO_THROW(calculate());
}

TEST_F(HeatSourceTest, conditionsOfOtherBalances_giveNoHeat) {
  for (const auto type :
       {VelFieldCond::C_WATSOURCE, VelFieldCond::C_REMWATSOUR, VelFieldCond::C_REMWATSINK,
        VelFieldCond::C_VOCSOURCE, VelFieldCond::C_VOCADSORPTION, VelFieldCond::C_VOCCHEMISORPTION}) {
    act(type, {UPPER_LEFT});
    calculate();
    EXPECT_EQ(heat(UPPER_LEFT), 0.0) << type;
  }
}

TEST_F(HeatSourceTest, calculation_clearsTheRecordsOfAllElements) {
  act(VelFieldCond::C_ENESOURCE, {UPPER_RIGHT});
  attach(VelClimateCond::C_ENESOURCE, 250.0);
  arrays.records.heatSource[UPPER_LEFT][VELMORA::HS_HEAT] = 5.0;
  calculate();
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
}

TEST_F(HeatSourceTest, missingClimate_isNamed) {
  const struct {
    VelFieldCond::condition_t condition;
    const char *type, *quantity;
  } cases[] = {{VelFieldCond::C_ENESOURCE, "ENESOURCE", "ENESOURCE"},
               {VelFieldCond::C_AIRCHANGE, "AIRCHANGE", "AIRCHANGERATE"},
               {VelFieldCond::C_WATERFLOW, "WATERFLOW", "FLUIDVELOCITY"},
               {VelFieldCond::C_AIRFLOW, "AIRFLOW", "FLUIDVELOCITY"},
               {VelFieldCond::C_MEDIAFLOW, "MEDIAFLOW", "VOLFLUIDFLUX"}};
  for (const auto& test : cases) {
    act(test.condition, {UPPER_LEFT});
    EXPECT_EQ(failure(), missing(test.type, test.quantity, HEAT_TAG));
  }
}

TEST_F(HeatSourceTest, missingTemperatureOfTheClimate_isNamedWhereItIsNeeded) {
  attach(VelClimateCond::C_AIRCHANGERATE, 0.1);
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  attach(VelClimateCond::C_VOLFLUIDFLUX, VELOCITY);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_RIGHT);
  const struct {
    VelFieldCond::condition_t condition;
    const char* type;
  } cases[] = {{VelFieldCond::C_AIRCHANGE, "AIRCHANGE"},
               {VelFieldCond::C_WATERFLOW, "WATERFLOW"},
               {VelFieldCond::C_AIRFLOW, "AIRFLOW"},
               {VelFieldCond::C_MEDIAFLOW, "MEDIAFLOW"}};
  for (const auto& test : cases) {
    act(test.condition, {UPPER_LEFT});
    EXPECT_EQ(failure(), missing(test.type, "TEMPER", HEAT_TAG));
  }
}

TEST_F(HeatSourceTest, missingRemoteCondition_isReported) {
  const struct {
    VelFieldCond::condition_t condition;
    const char* type;
  } cases[] = {{VelFieldCond::C_REMENESOUR, "REMENESOUR"},
               {VelFieldCond::C_REMENESINK, "REMENESINK"},
               {VelFieldCond::C_PCMENESOUR, "PCMENESOUR"},
               {VelFieldCond::C_PCMENESINK, "PCMENESINK"}};
  for (const auto& test : cases) {
    act(test.condition, {UPPER_LEFT});
    const TKL::Thrown expected{std::string("Error in field condition 'First' with type '") + test.type +
                                   "'.\nRemote field condition needs to be specified!",
                               HEAT_TAG};
    EXPECT_EQ(failure(), expected);
  }
}

// ---- air change

TEST_F(HeatSourceTest, airChange_replacesAirAtItsRate) {
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT, LOWER_LEFT});
  attach(VelClimateCond::C_TEMPER, OUTSIDE);
  attach(VelClimateCond::C_AIRCHANGERATE, 0.01);
  calculate();
  expectClose(heat(UPPER_LEFT), (310.0 - 300.0) * AIR * 0.01);
  expectClose(heat(LOWER_LEFT), (310.0 - 285.0) * AIR * 0.01);
}

TEST_F(HeatSourceTest, airChangeByFlow_sharesItAmongAllElements) {
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT, LOWER_LEFT}).flags.set(VelFieldCond::F_USE_FLOWRATE);
  attach(VelClimateCond::C_TEMPER, OUTSIDE);
  attach(VelClimateCond::C_AIRFLOWRATE, 0.004);
  calculate();
  expectClose(heat(LOWER_LEFT), (310.0 - 285.0) * AIR * 0.004 / 0.08);
}

TEST_F(HeatSourceTest, airChangeByFlow_needsTheFlow) {
  act(VelFieldCond::C_AIRCHANGE, {UPPER_LEFT}).flags.set(VelFieldCond::F_USE_FLOWRATE);
  attach(VelClimateCond::C_TEMPER, OUTSIDE);
  attach(VelClimateCond::C_AIRCHANGERATE, 0.01);
  EXPECT_EQ(failure(), missing("AIRCHANGE", "AIRFLOWRATE", HEAT_TAG));
}

// ---- water that flows along x

TEST_F(HeatSourceTest, waterToTheRight_bringsTheTemperatureOfTheLeftNeighbour) {
  act(VelFieldCond::C_WATERFLOW, {UPPER_RIGHT});
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  calculate();
  expectClose(heat(UPPER_RIGHT), (300.0 - 290.0) * VELOCITY * WATER / 0.2);
}

TEST_F(HeatSourceTest, waterToTheLeft_takesTheRightNeighbourAndTheSignOfTheVelocity) {
  act(VelFieldCond::C_WATERFLOW, {UPPER_LEFT});
  attach(VelClimateCond::C_FLUIDVELOCITY, -VELOCITY);
  calculate();
  expectClose(heat(UPPER_LEFT), (290.0 - 300.0) * -VELOCITY * WATER / 0.1);
}

TEST_F(HeatSourceTest, waterWithoutNeighbourUpstream_comesFromTheClimate) {
  act(VelFieldCond::C_WATERFLOW, {LOWER_LEFT});  // has no side at its left
  attach(VelClimateCond::C_TEMPER, OUTSIDE);
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  calculate();
  expectClose(heat(LOWER_LEFT), (310.0 - 285.0) * VELOCITY * WATER / 0.1);
  act(VelFieldCond::C_WATERFLOW, {UPPER_LEFT});  // has an outer side there
  calculate();
  expectClose(heat(UPPER_LEFT), (310.0 - 300.0) * VELOCITY * WATER / 0.1);
  act(VelFieldCond::C_WATERFLOW, {LOWER_RIGHT});
  attach(VelClimateCond::C_FLUIDVELOCITY, -VELOCITY);
  calculate();
  expectClose(heat(LOWER_RIGHT), (310.0 - 280.0) * -VELOCITY * WATER / 0.2);
}

TEST_F(HeatSourceTest, water_doesNotHeedTheFlowDirection) {
  act(VelFieldCond::C_WATERFLOW, {UPPER_RIGHT});
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_TOP);
  calculate();
  expectClose(heat(UPPER_RIGHT), (300.0 - 290.0) * VELOCITY * WATER / 0.2);
}

TEST_F(HeatSourceTest, fluidAtRest_needsNoTemperature) {
  attach(VelClimateCond::C_FLUIDVELOCITY, 0.0);
  attach(VelClimateCond::C_VOLFLUIDFLUX, 0.0);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_RIGHT);
  for (const auto type : {VelFieldCond::C_WATERFLOW, VelFieldCond::C_AIRFLOW, VelFieldCond::C_MEDIAFLOW}) {
    act(type, {UPPER_LEFT});
    calculate();
    EXPECT_EQ(heat(UPPER_LEFT), 0.0) << type;
  }
}

// ---- air and other fluids that flow in a given direction

TEST_F(HeatSourceTest, airFlow_comesFromTheNeighbourUpstream) {
  const struct {
    cell_t cell;
    direction_t direction;
    double upstream, length;
  } cases[] = {{UPPER_LEFT, TO_LEFT, 290.0, 0.1},
               {UPPER_RIGHT, TO_RIGHT, 300.0, 0.2},
               {UPPER_LEFT, TO_TOP, 285.0, 0.3},
               {LOWER_LEFT, TO_BOTTOM, 300.0, 0.5}};
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  for (const auto& test : cases) {
    act(VelFieldCond::C_AIRFLOW, {test.cell});
    set(VelFieldCond::P_FLOW_DIRECTION, test.direction);
    calculate();
    expectClose(heat(test.cell), VELOCITY * AIR * (test.upstream - s.T[test.cell]) / test.length);
  }
}

TEST_F(HeatSourceTest, airFlowWithoutNeighbourUpstream_comesFromTheClimate) {
  const struct {
    cell_t cell;
    direction_t direction;
    double length;
  } cases[] = {{UPPER_RIGHT, TO_LEFT, 0.2},
               {UPPER_LEFT, TO_RIGHT, 0.1},
               {LOWER_LEFT, TO_RIGHT, 0.1},
               {LOWER_LEFT, TO_TOP, 0.5},
               {UPPER_LEFT, TO_BOTTOM, 0.3}};
  attach(VelClimateCond::C_TEMPER, OUTSIDE);
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  for (const auto& test : cases) {
    act(VelFieldCond::C_AIRFLOW, {test.cell});
    set(VelFieldCond::P_FLOW_DIRECTION, test.direction);
    calculate();
    expectClose(heat(test.cell), VELOCITY * AIR * (OUTSIDE - s.T[test.cell]) / test.length);
  }
}

TEST_F(HeatSourceTest, negativeAirVelocity_keepsTheUpstreamSide) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_LEFT});
  attach(VelClimateCond::C_FLUIDVELOCITY, -VELOCITY);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_LEFT);
  calculate();
  expectClose(heat(UPPER_LEFT), -VELOCITY * AIR * (290.0 - 300.0) / 0.1);
}

TEST_F(HeatSourceTest, flowDirection_isCutToAnInteger) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_RIGHT});
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  set(VelFieldCond::P_FLOW_DIRECTION, 1.9);
  calculate();
  expectClose(heat(UPPER_RIGHT), VELOCITY * AIR * (300.0 - 290.0) / 0.2);
}

TEST_F(HeatSourceTest, flowDirectionThatDoesNotExist_isRefused) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_RIGHT});
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  for (const double direction : {-1.0, 4.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    set(VelFieldCond::P_FLOW_DIRECTION, direction);
    const TKL::Thrown expected{"Field condition 'First': FLOW_DIRECTION must be 0, 1, 2 or 3.",
                               "[Sources::upstream]"};
    EXPECT_EQ(failure(), expected);
  }
}

TEST_F(HeatSourceTest, airFlow_recordsItsEnthalpies) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_RIGHT});
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_RIGHT);
  calculate();
  expectClose(arrays.records.airFlowEnthalpyIn[UPPER_RIGHT], VELOCITY * AIR * 300.0);
  expectClose(arrays.records.airFlowEnthalpyOut[UPPER_RIGHT], VELOCITY * AIR * 290.0);
}

TEST_F(HeatSourceTest, airFlowThatEnds_leavesNoEnthalpy) {
  act(VelFieldCond::C_AIRFLOW, {UPPER_RIGHT}).endTime.setBaseValue("END_TIME", 2000.0, TKL::Unit("s"));
  attach(VelClimateCond::C_FLUIDVELOCITY, VELOCITY);
  set(VelFieldCond::P_FLOW_DIRECTION, TO_RIGHT);
  calculate(1000.0);
  calculate(3000.0);
  EXPECT_EQ(arrays.records.airFlowEnthalpyIn[UPPER_RIGHT], 0.0);
  EXPECT_EQ(arrays.records.airFlowEnthalpyOut[UPPER_RIGHT], 0.0);
}

TEST_F(HeatSourceTest, mediaFlow_hasThePropertiesOfTheMaterial) {
  const struct {
    cell_t cell;
    direction_t direction;
    double upstream, length;
  } cases[] = {{UPPER_LEFT, TO_LEFT, 290.0, 0.1},  {UPPER_RIGHT, TO_RIGHT, 300.0, 0.2},
               {UPPER_LEFT, TO_TOP, 285.0, 0.3},   {LOWER_LEFT, TO_BOTTOM, 300.0, 0.5},
               {UPPER_RIGHT, TO_LEFT, 310.0, 0.2}, {UPPER_LEFT, TO_RIGHT, 310.0, 0.1},
               {LOWER_LEFT, TO_TOP, 310.0, 0.5},   {UPPER_LEFT, TO_BOTTOM, 310.0, 0.3}};
  attach(VelClimateCond::C_TEMPER, OUTSIDE);
  attach(VelClimateCond::C_VOLFLUIDFLUX, 1e-5);
  for (const auto& test : cases) {
    act(VelFieldCond::C_MEDIAFLOW, {test.cell});
    set(VelFieldCond::P_FLOW_DIRECTION, test.direction);
    calculate();
    const double power = 1e-5 * MOIST_RHO_C * (test.upstream - s.T[test.cell]);  // [W]
    expectClose(heat(test.cell), power / volume(test.cell));
  }
}

TEST_F(HeatSourceTest, mediaFlow_doesNotCountForTheEnthalpyOfAir) {
  act(VelFieldCond::C_MEDIAFLOW, {UPPER_LEFT});
  attach(VelClimateCond::C_VOLFLUIDFLUX, 1e-5);
  calculate();
  EXPECT_EQ(arrays.records.airFlowEnthalpyIn[UPPER_LEFT], 0.0);
}

}  // namespace VELMORA_SOLVER
