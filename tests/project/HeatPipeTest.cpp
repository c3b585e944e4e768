#include "project/HeatPipe.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "ConditionTexts.h"
#include "grid/Side.h"
#include "project/VelBoundaryCond.h"

using namespace VELMORA;

namespace {

const std::string PIPE =
    "TYPE = HEATCOND\nKIND = HEATPIPE\nHP_RADIUS = 10 mm\nHP_LENGTH = 5 m\nHP_CAPACITY = 4180 J/kgK\n"
    "HP_TRANSFER = 200 W/m2K\n";

VelBoundaryCond preparedPipe(const std::string& more = "") {
  VelBoundaryCond bc = readRecord<VelBoundaryCond>(PIPE + more);
  bc.prepareParameters();
  return bc;
}

/// Two elements above each other; the pipe runs at the right of both and below the lower one.
class Surroundings {
 public:
  Surroundings() {
    elements[0].number = 0;
    elements[1].number = 1;
    rightOfUpper.elementLeft = &elements[0];
    rightOfUpper.area = 0.1;
    rightOfLower.elementLeft = &elements[1];
    rightOfLower.area = 0.2;
    belowLower.elementLeft = &elements[1];
    belowLower.area = 0.1;
    between.elementLeft = &elements[0];
    between.elementRight = &elements[1];
    between.area = 5.0;
    elements[0].sideRight = &rightOfUpper;
    elements[0].sideBottom = &between;
    elements[1].sideTop = &between;
    elements[1].sideRight = &rightOfLower;
    elements[1].sideBottom = &belowLower;
  }

  void carry(VelBoundaryCond& condition) {
    for (Side* side : {&rightOfUpper, &rightOfLower, &belowLower}) side->boundaryConds.push_back(&condition);
  }

  std::vector<Element> elements = std::vector<Element>(2);
  Side rightOfUpper, rightOfLower, belowLower, between;
};

/// A pipe with one element, so that its mean temperature is that of the element.
class HeatPipeUpdate : public testing::Test {
 protected:
  HeatPipeUpdate() {
    massFlux.currentValue = 100.0;  // [kg/m2s]
    supply.currentValue = 313.15;
    power.currentValue = 50.0;
  }

  void usePipe(const std::string& more = "") {
    bc = preparedPipe(more);
    bc.heatPipe.shares = {{0, 1.0}};
    bc.climate[VelClimateCond::C_MASSFLUXDENS] = &massFlux;
    bc.climate[VelClimateCond::C_TEMPER] = &supply;
  }

  bool flowsAt(double temperature) {
    bc.update(std::array{temperature});
    return bc.heatPipe.massFlowCapacity > 0.0;
  }

  VelBoundaryCond bc;
  VelClimateCond massFlux, supply, power;
  // 100 kg/m2s through a disc with r = 10 mm, pi being 3.14
  const double capacityRate = 100.0 * (3.14 * 1e-4) * 4180.0;
  const double effectiveness = 1.0 - std::exp(-200.0 * 2.0 * 3.141592653589793 * 0.01 * 5.0 / capacityRate);
};

}  // namespace

TEST(HeatPipe, workingFields_comeFromTheParameters) {
  const HeatPipe pipe = preparedPipe().heatPipe;
  EXPECT_DOUBLE_EQ(pipe.radius, 0.01);
  EXPECT_DOUBLE_EQ(pipe.length, 5.0);
  EXPECT_DOUBLE_EQ(pipe.capacity, 4180.0);
  EXPECT_DOUBLE_EQ(pipe.transfer, 200.0);
}

TEST(HeatPipe, crossSection_isMadeWithAShortPi) {
  EXPECT_DOUBLE_EQ(preparedPipe().heatPipe.crossSection, 3.14e-4);
}

TEST(HeatPipe, runningValues_startAtTwentyDegreesWithoutHeat) {
  const HeatPipe pipe = preparedPipe().heatPipe;
  EXPECT_EQ(pipe.supplyTemperature, 293.15);
  EXPECT_EQ(pipe.returnTemperature, 293.15);
  EXPECT_EQ(pipe.heatFlux, 0.0);
  EXPECT_FALSE(pipe.upperLimitPassed);
  EXPECT_FALSE(pipe.lowerLimitPassed);
}

TEST(HeatPipe, limits_areInactiveIfNotSet) {
  const HeatPipe pipe = preparedPipe().heatPipe;
  EXPECT_FALSE(pipe.upperLimitActive);
  EXPECT_FALSE(pipe.lowerLimitActive);
  EXPECT_EQ(pipe.upperLimit, 0.0);
  EXPECT_EQ(pipe.lowerLimit, 0.0);
}

TEST(HeatPipe, limits_areActiveIfSet) {
  const HeatPipe pipe = preparedPipe("HP_TEMPER_UPPER_LIMIT = 30 C\nHP_TEMPER_LOWER_LIMIT = 0 K").heatPipe;
  EXPECT_TRUE(pipe.upperLimitActive);
  EXPECT_TRUE(pipe.lowerLimitActive);
  EXPECT_DOUBLE_EQ(pipe.upperLimit, 303.15);
  EXPECT_EQ(pipe.lowerLimit, 0.0);
}

TEST(HeatPipe, hysteresis_isTwoKelvinIfNotSet) {
  const HeatPipe pipe = preparedPipe().heatPipe;
  EXPECT_EQ(pipe.upperHysteresis, 2.0);
  EXPECT_EQ(pipe.lowerHysteresis, 2.0);
}

TEST(HeatPipe, hysteresis_isCopiedIfSet) {
  const HeatPipe pipe = preparedPipe("HP_TEMPER_UPPER_HYST = 0 K\nHP_TEMPER_LOWER_HYST = 3 K").heatPipe;
  EXPECT_EQ(pipe.upperHysteresis, 0.0);
  EXPECT_EQ(pipe.lowerHysteresis, 3.0);
}

TEST(HeatPipe, otherConditions_haveNoWorkingFields) {
  for (const char* text : {"TYPE = HEATCOND\nKIND = EXCHANGE\n", "TYPE = VAPDIFF\nKIND = HEATPIPE\n"}) {
    VelBoundaryCond bc = readRecord<VelBoundaryCond>(text + std::string("HP_RADIUS = 10 mm"));
    bc.prepareParameters();
    EXPECT_EQ(bc.heatPipe.radius, 0.0) << text;
  }
}

TEST(HeatPipe, shares_areThoseOfTheSideAreas) {
  Surroundings around;
  VelBoundaryCond bc = preparedPipe();
  around.carry(bc);
  bc.prepareElements(around.elements);
  ASSERT_EQ(bc.heatPipe.shares.size(), 2u);
  EXPECT_DOUBLE_EQ(*bc.heatPipe.share(0), 0.25);
  EXPECT_DOUBLE_EQ(*bc.heatPipe.share(1), 0.75);
}

TEST(HeatPipe, sharesTakenTwice_areTheSame) {
  Surroundings around;
  VelBoundaryCond bc = preparedPipe();
  around.carry(bc);
  bc.prepareElements(around.elements);
  bc.prepareElements(around.elements);
  EXPECT_DOUBLE_EQ(*bc.heatPipe.share(0), 0.25);
}

TEST(HeatPipe, elementAwayFromThePipe_hasNoShare) {
  Surroundings around;
  VelBoundaryCond bc = preparedPipe();
  around.rightOfLower.boundaryConds.push_back(&bc);
  bc.prepareElements(around.elements);
  EXPECT_EQ(bc.heatPipe.share(0), nullptr);
  EXPECT_EQ(bc.heatPipe.share(2), nullptr);
  EXPECT_DOUBLE_EQ(*bc.heatPipe.share(1), 1.0);
}

TEST(HeatPipe, sideBetweenElements_doesNotCount) {
  Surroundings around;
  VelBoundaryCond bc = preparedPipe();
  around.carry(bc);
  around.between.boundaryConds.push_back(&bc);
  bc.prepareElements(around.elements);
  EXPECT_DOUBLE_EQ(*bc.heatPipe.share(0), 0.25);
}

TEST(HeatPipe, sideOfAnotherCondition_doesNotCount) {
  Surroundings around;
  VelBoundaryCond bc = preparedPipe(), other = preparedPipe();
  around.rightOfUpper.boundaryConds.push_back(&bc);
  around.rightOfLower.boundaryConds.push_back(&other);
  bc.prepareElements(around.elements);
  EXPECT_DOUBLE_EQ(*bc.heatPipe.share(0), 1.0);
  EXPECT_EQ(bc.heatPipe.share(1), nullptr);
}

TEST(HeatPipe, otherConditions_collectNoElements) {
  Surroundings around;
  VelBoundaryCond bc = readRecord<VelBoundaryCond>("TYPE = HEATCOND\nKIND = EXCHANGE");
  around.carry(bc);
  bc.prepareElements(around.elements);
  EXPECT_TRUE(bc.heatPipe.shares.empty());
}

TEST_F(HeatPipeUpdate, massFlow_makesCapacityRateAndEffectiveness) {
  usePipe();
  bc.update(std::array{293.15});
  EXPECT_NEAR(bc.heatPipe.massFlowCapacity, capacityRate, 1e-12 * capacityRate);
  EXPECT_NEAR(bc.heatPipe.efficiency, effectiveness, 1e-12);
}

TEST_F(HeatPipeUpdate, heatOfTheWholePipe_followsTheEffectiveness) {
  usePipe();
  bc.update(std::array{293.15});
  EXPECT_NEAR(bc.heatPipe.heatFlux, 20.0 * capacityRate * effectiveness, 1e-9 * capacityRate);
}

TEST_F(HeatPipeUpdate, returnTemperature_closesTheHeatBalanceOfTheFluid) {
  usePipe();
  bc.update(std::array{293.15});
  const HeatPipe& pipe = bc.heatPipe;
  EXPECT_NEAR((pipe.supplyTemperature - pipe.returnTemperature) * pipe.massFlowCapacity, pipe.heatFlux,
              1e-9 * pipe.heatFlux);
}

TEST_F(HeatPipeUpdate, longPipe_givesOffAllItsHeat) {
  usePipe("HP_LENGTH = 1e6 m");
  bc.update(std::array{293.15});
  EXPECT_NEAR(bc.heatPipe.returnTemperature, 293.15, 1e-9);
}

TEST_F(HeatPipeUpdate, meanTemperature_isWeightedWithTheShares) {
  usePipe();
  bc.heatPipe.shares = {{0, 0.25}, {2, 0.75}};
  bc.update(std::array{280.0, 999.0, 300.0});
  EXPECT_DOUBLE_EQ(bc.heatPipe.meanTemperature, 295.0);
}

TEST_F(HeatPipeUpdate, withoutMassFlux_onlyThePowerIsLeft) {
  usePipe();
  bc.climate[VelClimateCond::C_MASSFLUXDENS] = nullptr;
  bc.climate[VelClimateCond::C_HEATFLOW] = &power;
  bc.update(std::array{293.15});
  EXPECT_EQ(bc.heatPipe.massFlowCapacity, 0.0);
  EXPECT_EQ(bc.heatPipe.efficiency, 0.0);
  EXPECT_DOUBLE_EQ(bc.heatPipe.heatFlux, 50.0);
  EXPECT_DOUBLE_EQ(bc.heatPipe.returnTemperature, 313.15);
}

TEST_F(HeatPipeUpdate, power_addsToTheExchange) {
  usePipe();
  bc.climate[VelClimateCond::C_HEATFLOW] = &power;
  bc.update(std::array{313.15});
  EXPECT_DOUBLE_EQ(bc.heatPipe.heatFlux, 50.0);
  EXPECT_DOUBLE_EQ(bc.heatPipe.thermalPower, 50.0);
}

TEST_F(HeatPipeUpdate, supplyTemperature_isTheClimateBeforeTheParameter) {
  usePipe("HP_SUPPTEMP = 50 C");
  bc.update(std::array{293.15});
  EXPECT_DOUBLE_EQ(bc.heatPipe.supplyTemperature, 313.15);
}

TEST_F(HeatPipeUpdate, supplyTemperatureWithoutClimate_isTheParameter) {
  usePipe("HP_SUPPTEMP = 50 C");
  bc.climate[VelClimateCond::C_TEMPER] = nullptr;
  bc.update(std::array{293.15});
  EXPECT_DOUBLE_EQ(bc.heatPipe.supplyTemperature, 323.15);
}

TEST_F(HeatPipeUpdate, supplyTemperatureWithoutAnySource_staysAtTheStart) {
  usePipe();
  bc.climate[VelClimateCond::C_TEMPER] = nullptr;
  bc.update(std::array{280.0});
  EXPECT_EQ(bc.heatPipe.supplyTemperature, 293.15);
}

TEST_F(HeatPipeUpdate, upperLimit_switchesWithHysteresis) {
  usePipe("HP_TEMPER_UPPER_LIMIT = 300 K\nHP_TEMPER_UPPER_HYST = 4 K");
  EXPECT_TRUE(flowsAt(300.0));
  EXPECT_FALSE(flowsAt(300.1));
  EXPECT_FALSE(flowsAt(296.1));
  EXPECT_TRUE(flowsAt(296.0));
  EXPECT_TRUE(flowsAt(299.9));
}

TEST_F(HeatPipeUpdate, lowerLimit_switchesWithHysteresis) {
  usePipe("HP_TEMPER_LOWER_LIMIT = 280 K");
  EXPECT_TRUE(flowsAt(280.0));
  EXPECT_FALSE(flowsAt(279.9));
  EXPECT_FALSE(flowsAt(281.9));
  EXPECT_TRUE(flowsAt(282.0));
  EXPECT_TRUE(flowsAt(280.1));
}

TEST_F(HeatPipeUpdate, withoutLimits_flowsAtAnyTemperature) {
  usePipe();
  EXPECT_TRUE(flowsAt(1.0));
  EXPECT_TRUE(flowsAt(1000.0));
}

TEST_F(HeatPipeUpdate, pipeWithoutElements_staysAsItIs) {
  usePipe();
  bc.heatPipe.shares.clear();
  bc.update(std::array{250.0});
  EXPECT_EQ(bc.heatPipe.supplyTemperature, 293.15);
  EXPECT_EQ(bc.heatPipe.massFlowCapacity, 0.0);
}

TEST_F(HeatPipeUpdate, otherConditions_areNotUpdated) {
  usePipe();
  bc.kind = VelBoundaryCond::K_EXCHANGE;
  bc.update(std::array{250.0});
  EXPECT_EQ(bc.heatPipe.massFlowCapacity, 0.0);
}
