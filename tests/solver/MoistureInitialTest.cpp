#include <gtest/gtest.h>

#include <cmath>

#include "project/VelInitialCond.h"
#include "solver/InitialConditions.h"
#include "solver/MoistBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelInitialCond;

constexpr double START_T = 290.0;  // [K]
const char* const START_TAG = "[VelmoraCvodeSolver::setInitialConditions]";

VelInitialCond startCondition(VelInitialCond::condition_t kind, double value, const char* unit) {
  VelInitialCond result;
  result.condition = kind;
  result.value.set("VALUE", value, unit);
  return result;
}
VelInitialCond humidity(double RH) {
  return startCondition(VelInitialCond::C_RELHUM, RH, "---");
}
VelInitialCond mass(double mw) {
  return startCondition(VelInitialCond::C_MSTMASS, mw, "kg/m3");
}
VelInitialCond content(double Theta) {
  return startCondition(VelInitialCond::C_MSTCONT, Theta, "m3/m3");
}
VelInitialCond pressure(double pC) {
  return startCondition(VelInitialCond::C_CAPPRESS, pC, "Pa");
}

/// One element of a material that holds 200 kg/m3 times the relative humidity.
class MoistureInitialTest : public ::testing::Test {
 protected:
  InitialMoisture start(std::vector<VelInitialCond> conditions) {
    VELMORA::Element element;
    element.material = &material;
    for (VelInitialCond& condition : conditions) element.initialConds.push_back(&condition);
    capture.messages.clear();
    return initialMoisture(element, START_T, defaultHumidity);
  }
  void expectOneWarning(const std::string& text) {
    ASSERT_EQ(capture.messages.size(), 1U);
    EXPECT_TRUE(capture.has(text, TKL::MSG_WARNING, START_TAG, -1)) << capture.messages[0].text;
  }
  void expectSilence() { EXPECT_TRUE(capture.messages.empty()); }
  void useAir() { material = airMaterial(); }
  void removeStorage() { material = moistMaterial(moistText("", "", "")); }

  MM::Material material = moistMaterial();
  TKL::Parameter defaultHumidity{"DEFAULT_RELHUM", 0.8, "---"};
  TKL::MessageCapture capture;
};

const char* const NO_STORAGE =
    "Missing moisture storage function for material 'Plaster', using 0 kg/m3 as moisture content.\n";
const char* const RH_TOO_LOW = "Initial relative humidity below 1%. It was automatically corrected to 1% RH!";
const char* const RH_TOO_HIGH =
    "Initial relative humidity above 100%. It was automatically corrected to 100% RH!";
const char* const PRESSURE_TOO_HIGH =
    "Initial capillary pressure too large (must be negative!). It was automatically corrected to 0 Pa!";
constexpr double SATURATED_MASS = 1000.0 * MOIST_EFF;

}  // namespace

TEST_F(MoistureInitialTest, noCondition_takesTheDefaultHumidity) {
  EXPECT_NEAR(start({}).mw, 0.8 * SATURATED_MASS, 1e-9);
  expectSilence();
}

TEST_F(MoistureInitialTest, temperatureAlone_leavesTheDefaultHumidity) {
  EXPECT_NEAR(start({startCondition(VelInitialCond::C_TEMPER, 280.0, "K")}).mw, 0.8 * SATURATED_MASS, 1e-9);
}

TEST_F(MoistureInitialTest, lastMoistureCondition_wins) {
  EXPECT_DOUBLE_EQ(
      start({humidity(0.3), mass(20.0), startCondition(VelInitialCond::C_TEMPER, 280.0, "K")}).mw, 20.0);
  EXPECT_NEAR(start({mass(20.0), humidity(0.3)}).mw, 0.3 * SATURATED_MASS, 1e-9);
}

TEST_F(MoistureInitialTest, conditionsOfOtherKinds_areIgnored) {
  EXPECT_DOUBLE_EQ(start({mass(20.0), startCondition(VelInitialCond::C_GASPRESS, 1e5, "Pa")}).mw, 20.0);
  EXPECT_DOUBLE_EQ(start({mass(20.0), VelInitialCond()}).mw, 20.0);
}

TEST_F(MoistureInitialTest, humidity_givesPressureByKelvinsLawAndContentByTheCurve) {
  const InitialMoisture result = start({humidity(0.5)});
  EXPECT_NEAR(result.pC, KELVIN_FACTOR * START_T * std::log(0.5), 1e-6);
  EXPECT_NEAR(result.mw, 0.5 * SATURATED_MASS, 1e-9);
  expectSilence();
}

TEST_F(MoistureInitialTest, humidityBelowOnePercent_isRaised) {
  EXPECT_NEAR(start({humidity(0.005)}).mw, 0.01 * SATURATED_MASS, 1e-9);
  expectOneWarning(RH_TOO_LOW);
}

TEST_F(MoistureInitialTest, humidityAboveOne_isLowered) {
  const InitialMoisture result = start({humidity(1.2)});
  EXPECT_DOUBLE_EQ(result.mw, SATURATED_MASS);
  EXPECT_EQ(result.pC, 0.0);
  expectOneWarning(RH_TOO_HIGH);
}

TEST_F(MoistureInitialTest, humidityAtItsLimits_staysSilent) {
  EXPECT_NEAR(start({humidity(0.01)}).mw, 0.01 * SATURATED_MASS, 1e-9);
  expectSilence();
  EXPECT_DOUBLE_EQ(start({humidity(1.0)}).mw, SATURATED_MASS);
  expectSilence();
}

TEST_F(MoistureInitialTest, defaultHumidityOutOfRange_isCorrectedAsWell) {
  defaultHumidity.value = 0.0;
  EXPECT_NEAR(start({}).mw, 0.01 * SATURATED_MASS, 1e-9);
  expectOneWarning(RH_TOO_LOW);
}

TEST_F(MoistureInitialTest, humidityWithoutStorageFunction_startsDry) {
  removeStorage();
  const InitialMoisture result = start({humidity(1.2)});
  EXPECT_EQ(result.mw, 0.0);
  EXPECT_EQ(result.pC, -100.0);
  expectOneWarning(NO_STORAGE);
}

TEST_F(MoistureInitialTest, humidityOfAir_isVapourOnlyAndNotCorrected) {
  useAir();
  for (const double RH : {0.005, 0.5, 1.2}) {
    const InitialMoisture result = start({humidity(RH)});
    EXPECT_NEAR(result.mw, TKL::pSat(START_T) * RH / (START_T * 461.89), 1e-15);
    EXPECT_EQ(result.pC, -100.0);
    expectSilence();
  }
}

TEST_F(MoistureInitialTest, mass_isTakenOver) {
  const InitialMoisture result = start({mass(123.0)});
  EXPECT_EQ(result.mw, 123.0);
  EXPECT_EQ(result.pC, -100.0);
  expectSilence();
}

TEST_F(MoistureInitialTest, massUpToSaturation_staysSilent) {
  EXPECT_EQ(start({mass(0.0)}).mw, 0.0);
  expectSilence();
  EXPECT_EQ(start({mass(SATURATED_MASS)}).mw, SATURATED_MASS);
  expectSilence();
}

TEST_F(MoistureInitialTest, negativeMass_becomesZero) {
  EXPECT_EQ(start({mass(-1.0)}).mw, 0.0);
  expectOneWarning("Initial moisture mass density negative. It was automatically corrected to 0 kg/m3!");
}

TEST_F(MoistureInitialTest, massAboveSaturation_becomesSaturation) {
  EXPECT_DOUBLE_EQ(start({mass(201.0)}).mw, SATURATED_MASS);
  expectOneWarning(
      "Initial moisture mass density too large. It was automatically corrected to effective saturation!");
}

TEST_F(MoistureInitialTest, massWithoutStorageFunction_hasNoUpperLimit) {
  removeStorage();
  EXPECT_EQ(start({mass(201.0)}).mw, 201.0);
  expectSilence();
  EXPECT_EQ(start({mass(-1.0)}).mw, 0.0);
  EXPECT_EQ(capture.messages.size(), 1U);
}

TEST_F(MoistureInitialTest, massOfAir_isTakenOver) {
  useAir();
  EXPECT_EQ(start({mass(0.01)}).mw, 0.01);
  expectSilence();
}

TEST_F(MoistureInitialTest, content_isTimesTheDensityOfWater) {
  const InitialMoisture result = start({content(0.125)});
  EXPECT_EQ(result.mw, 125.0);
  EXPECT_EQ(result.pC, -100.0);
  expectSilence();
}

TEST_F(MoistureInitialTest, negativeContent_becomesZero) {
  EXPECT_EQ(start({content(-0.001)}).mw, 0.0);
  expectOneWarning("Initial moisture content is negative. It was automatically corrected to 0 m3/m3!");
}

TEST_F(MoistureInitialTest, contentAboveSaturation_becomesSaturation) {
  EXPECT_DOUBLE_EQ(start({content(0.201)}).mw, SATURATED_MASS);
  expectOneWarning(
      "Initial moisture content too big. It was automatically corrected to effective saturation!");
}

TEST_F(MoistureInitialTest, contentWithoutStorageFunction_hasNoUpperLimit) {
  removeStorage();
  EXPECT_DOUBLE_EQ(start({content(0.3)}).mw, 300.0);
  expectSilence();
}

TEST_F(MoistureInitialTest, pressure_givesTheContentOfTheCurve) {
  const double pC = -1e8;
  const InitialMoisture result = start({pressure(pC)});
  EXPECT_EQ(result.pC, pC);
  EXPECT_NEAR(result.mw, SATURATED_MASS * std::exp(pC / (KELVIN_FACTOR * START_T)), 1e-9);
  expectSilence();
}

TEST_F(MoistureInitialTest, pressureTooLow_isRaised) {
  EXPECT_EQ(start({pressure(-2e10)}).pC, -1e10);
  expectOneWarning("Initial capillary pressure too small. It was automatically corrected to -1e10 Pa!");
}

TEST_F(MoistureInitialTest, lowestPressure_leavesTheSmallestContentSilently) {
  const InitialMoisture result = start({pressure(-1e10)});
  ASSERT_LT(MOIST_EFF * std::exp(-1e10 / (KELVIN_FACTOR * START_T)), 1e-10);
  EXPECT_DOUBLE_EQ(result.mw, 1000.0 * 1e-10);
  expectSilence();
}

TEST_F(MoistureInitialTest, positivePressure_becomesZero) {
  const InitialMoisture result = start({pressure(500.0)});
  EXPECT_EQ(result.pC, 0.0);
  EXPECT_DOUBLE_EQ(result.mw, SATURATED_MASS);
  expectOneWarning(PRESSURE_TOO_HIGH);
}

TEST_F(MoistureInitialTest, pressureZero_warnsAndStaysZero) {
  EXPECT_EQ(start({pressure(0.0)}).pC, 0.0);
  expectOneWarning(PRESSURE_TOO_HIGH);
}

TEST_F(MoistureInitialTest, pressureWithoutStorageFunction_startsDry) {
  removeStorage();
  const InitialMoisture result = start({pressure(-1e8)});
  EXPECT_EQ(result.mw, 0.0);
  EXPECT_EQ(result.pC, -100.0);
  expectOneWarning(NO_STORAGE);
}

TEST_F(MoistureInitialTest, pressureOfAir_startsDry) {
  useAir();
  const InitialMoisture result = start({pressure(-1e8)});
  EXPECT_EQ(result.mw, 0.0);
  EXPECT_EQ(result.pC, -100.0);
  expectOneWarning(
      "Capillary pressure IC not applicable to AIR materials 'Cavity', using 0 kg/m3 as moisture content.\n");
}

TEST_F(MoistureInitialTest, doublyTight_holdsNoMoisture) {
  material = moistMaterial(moistText("VAPOR_TIGHT WATER_TIGHT"));
  for (const VelInitialCond& condition : {humidity(1.2), mass(-1.0), content(0.3), pressure(0.0)}) {
    const InitialMoisture result = start({condition});
    EXPECT_EQ(result.mw, 0.0);
    EXPECT_EQ(result.pC, -100.0);
    expectSilence();
  }
}

}  // namespace VELMORA_SOLVER
