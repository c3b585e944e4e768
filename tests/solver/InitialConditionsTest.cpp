#include "solver/InitialConditions.h"

#include <gtest/gtest.h>

#include <cmath>

#include "project/VelInitialCond.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelInitialCond;

const char* const TOO_COLD =
    "Initial temperature below -50 degree C. Simulation results will probably be invalid!";

VelInitialCond condition(VelInitialCond::condition_t kind, double value, const char* unit) {
  VelInitialCond result;
  result.condition = kind;
  result.value.set("VALUE", value, unit);
  return result;
}

class InitialConditionsTest : public ::testing::Test {
 protected:
  TKL::MessageCapture capture;
  VELMORA::Element element;
  TKL::Parameter defaultTemperature{"DEFAULT_TEMPERATURE", 293.15, "K"};
};

}  // namespace

TEST_F(InitialConditionsTest, noCondition_takesTheDefault) {
  EXPECT_EQ(initialTemperature(element, defaultTemperature), 293.15);
}

TEST_F(InitialConditionsTest, lastTemperature_wins) {
  VelInitialCond first = condition(VelInitialCond::C_TEMPER, 280.0, "K");
  VelInitialCond last = condition(VelInitialCond::C_TEMPER, 300.0, "K");
  element.initialConds = {&first, &last};
  EXPECT_EQ(initialTemperature(element, defaultTemperature), 300.0);
}

TEST_F(InitialConditionsTest, otherQuantities_areNoTemperature) {
  VelInitialCond temperature = condition(VelInitialCond::C_TEMPER, 280.0, "K");
  VelInitialCond humidity = condition(VelInitialCond::C_RELHUM, 0.5, "---");
  VelInitialCond unset;
  element.initialConds = {&temperature, &humidity, &unset};
  EXPECT_EQ(initialTemperature(element, defaultTemperature), 280.0);
  element.initialConds = {&humidity, &unset};
  EXPECT_EQ(initialTemperature(element, defaultTemperature), 293.15);
}

TEST_F(InitialConditionsTest, minusFiftyDegrees_givesNoWarning) {
  VelInitialCond cold = condition(VelInitialCond::C_TEMPER, 223.15, "K");
  element.initialConds = {&cold};
  EXPECT_EQ(initialTemperature(element, defaultTemperature), 223.15);
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(InitialConditionsTest, belowMinusFiftyDegrees_warnsAndIsTakenOver) {
  const double T = std::nextafter(223.15, 0.0);
  VelInitialCond cold = condition(VelInitialCond::C_TEMPER, T, "K");
  element.initialConds = {&cold};
  EXPECT_EQ(initialTemperature(element, defaultTemperature), T);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(capture.has(TOO_COLD, TKL::MSG_WARNING, "[VelmoraCvodeSolver::setInitialConditions]", -1));
}

TEST_F(InitialConditionsTest, aboveSeventyDegrees_staysSilent) {
  VelInitialCond hot = condition(VelInitialCond::C_TEMPER, 400.0, "K");
  element.initialConds = {&hot};
  EXPECT_EQ(initialTemperature(element, defaultTemperature), 400.0);
  EXPECT_TRUE(capture.messages.empty());
}

}  // namespace VELMORA_SOLVER
