#include "output/DerivedQuantities.h"

#include <gtest/gtest.h>

#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "output/OutputBench.h"
#include "support/MessageCapture.h"

namespace VELMORA {
namespace {

const ReferenceState REFERENCE{.maxHygRelHum = 0.95, .expRefTemper = 273.15, .expRefRelHum = 0.6};

/// A material whose water content rises in a straight line with the relative humidity, 0.3 m3/m3 at
/// saturation.
MM::Material porousMaterial() {
  const TKL::MessageCapture quiet;
  MM::Material material;
  material.readASCII(
      "[STORAGE_BASE_PARAMETERS]\n"
      "RHO = 1600 kg/m3\n"
      "CE = 850 J/kgK\n"
      "THETA_POR = 0.4 m3/m3\n"
      "THETA_EFF = 0.3 m3/m3\n"
      "[MOISTURE_STORAGE]\n"
      "FUNCTION = Theta_l(RH)\n"
      "0 1\n"
      "0 0.3\n",
      false);
  return material;
}

MM::Material tightMaterial() {
  MM::Material material;
  material.identification.flags =
      MM::MaterialIdentification::F_VAPOR_TIGHT | MM::MaterialIdentification::F_WATER_TIGHT;
  material.paraStorage[MM::MaterialBase::PS_RHO] = TKL::Parameter("RHO", 1000.0, "kg/m3");
  return material;
}

MM::Material air() {
  MM::Material material;
  material.identification.flags = MM::MaterialIdentification::F_AIR;
  return material;
}

TEST(OverhygroscopicWater, isWhatExceedsTheEndOfTheHygroscopicRange) {
  // 0.3 * 0.95 = 0.285 m3/m3 belong to the hygroscopic range
  EXPECT_NEAR(0.005, overhygroscopicWaterContent(porousMaterial(), 0.29, 293.15, REFERENCE), 1e-4);
}

TEST(OverhygroscopicWater, isNeverNegative) {
  EXPECT_EQ(0.0, overhygroscopicWaterContent(porousMaterial(), 0.1, 293.15, REFERENCE));
}

TEST(OverhygroscopicWater, isAllWaterOfAir) {
  EXPECT_EQ(0.02, overhygroscopicWaterContent(air(), 0.02, 293.15, REFERENCE));
}

TEST(OverhygroscopicWater, isZeroInTightMaterials) {
  EXPECT_EQ(0.0, overhygroscopicWaterContent(tightMaterial(), 0.02, 293.15, REFERENCE));
  EXPECT_EQ(0.0, overhygroscopicWaterContent(MM::Material(), 0.02, 293.15, REFERENCE));
}

TEST(OverhygroscopicWater, countsInAMaterialThatIsTightForVapourAlone) {
  MM::Material material = porousMaterial();
  material.identification.flags = MM::MaterialIdentification::F_VAPOR_TIGHT;
  EXPECT_NEAR(0.005, overhygroscopicWaterContent(material, 0.29, 293.15, REFERENCE), 1e-4);
}

TEST(LiquidMassFraction, isGramsOfWaterByKilogramsOfMaterial) {
  EXPECT_DOUBLE_EQ(1000.0 * 0.16 / 1600.0, liquidMassFraction(porousMaterial(), 0.16));
}

TEST(LiquidMassFraction, isZeroWithoutRetentionOrDensity) {
  EXPECT_EQ(0.0, liquidMassFraction(tightMaterial(), 0.1));
  EXPECT_EQ(0.0, liquidMassFraction(air(), 0.1));
}

TEST(HygricExpansion, isLinearInTheWaterContent) {
  MM::Material material = porousMaterial();
  material.paraMechanical[MM::MaterialBase::PM_BETA_THETA_L].value = 0.002;
  // at 60 % relative humidity the material holds 0.18 m3/m3
  EXPECT_NEAR((0.25 - 0.18) * 0.002, hygricExpansion(material, 0.25, 293.15, REFERENCE), 1e-6);
  EXPECT_NEAR((0.10 - 0.18) * 0.002, hygricExpansion(material, 0.10, 293.15, REFERENCE), 1e-6);
}

TEST(HygricExpansion, isZeroWithoutCoefficientOrRetention) {
  EXPECT_EQ(0.0, hygricExpansion(porousMaterial(), 0.25, 293.15, REFERENCE));
  MM::Material tight = tightMaterial();
  tight.paraMechanical[MM::MaterialBase::PM_BETA_THETA_L].value = 0.002;
  EXPECT_EQ(0.0, hygricExpansion(tight, 0.25, 293.15, REFERENCE));
}

TEST(ThermalExpansion, isLinearInTheTemperature) {
  MM::Material material;
  material.paraMechanical[MM::MaterialBase::PM_ALPHA].value = 1e-5;
  EXPECT_DOUBLE_EQ(20.0 * 1e-5, thermalExpansion(material, 293.15, REFERENCE));
  EXPECT_EQ(0.0, thermalExpansion(MM::Material(), 293.15, REFERENCE));
}

TEST(SaturationDegree, isTheShareOfThePoreVolume) {
  EXPECT_DOUBLE_EQ(0.25, saturationDegree(porousMaterial(), 0.1));
}

TEST(DewPoint, ofSaturatedAirIsItsTemperature) {
  EXPECT_DOUBLE_EQ(293.15, dewPoint(1.0, 293.15));
  EXPECT_DOUBLE_EQ(260.0, dewPoint(1.0, 260.0));
}

TEST(DewPoint, hasTheVapourPressureOfTheAir) {
  // Both temperatures lie on the same branch of the saturation pressure.
  EXPECT_NEAR(0.6 * TKL::pSat(303.15), TKL::pSat(dewPoint(0.6, 303.15)), 1e-6);
  EXPECT_NEAR(0.6 * TKL::pSat(263.15), TKL::pSat(dewPoint(0.6, 263.15)), 1e-6);
}

TEST(DewPoint, branchIsChosenByTheTemperatureOfTheAir) {
  // Dry air just above freezing keeps the law over water although its dew point is below.
  const double warm = std::pow(0.5, 0.12468827930174564) * (273.15 - 163.35) + 163.35;
  EXPECT_DOUBLE_EQ(warm, dewPoint(0.5, 273.15));
  EXPECT_LT(warm, 273.15);
  const double cold = std::pow(0.5, 0.08130081300813008) * (273.14 - 124.55) + 124.55;
  EXPECT_DOUBLE_EQ(cold, dewPoint(0.5, 273.14));
}

class FluxDensities : public ::testing::Test {
 protected:
  OutputBench bench;
  std::vector<double> flow = std::vector<double>(OutputBench::N_SIDES, 0.0);
};

TEST_F(FluxDensities, mean_isOverTheMagnitudesAtExistingSides) {
  flow[6] = -4.0;  // left, 0.4 m2: 10
  flow[7] = 8.0;   // right, 0.4 m2: 20
  flow[0] = 2.0;   // top, 0.2 m2: 10
  EXPECT_DOUBLE_EQ((10.0 + 20.0 + 10.0 + 0.0) / 4.0,
                   meanFluxDensity(bench.elements[0], RecordView{flow, 1}, 0));
  bench.elements[0].sideBottom = nullptr;
  EXPECT_DOUBLE_EQ((10.0 + 20.0 + 10.0) / 3.0, meanFluxDensity(bench.elements[0], RecordView{flow, 1}, 0));
}

TEST_F(FluxDensities, meanOfAnElementWithoutSides_isZero) {
  EXPECT_EQ(0.0, meanFluxDensity(Element(), RecordView{flow, 1}, 0));
}

TEST_F(FluxDensities, maximumInY_keepsItsSign) {
  flow[0] = 1.0;   // top: 5
  flow[2] = -2.0;  // bottom: -10
  EXPECT_DOUBLE_EQ(-10.0, maxFluxDensityY(bench.elements[0], flow));
  flow[0] = 3.0;
  EXPECT_DOUBLE_EQ(15.0, maxFluxDensityY(bench.elements[0], flow));
}

TEST_F(FluxDensities, maximumInX_countsOnlyAboveTheOneInY) {
  flow[6] = 4.0;  // left: 10
  EXPECT_DOUBLE_EQ(10.0, maxFluxDensityX(bench.elements[0], flow, -9.0));
  EXPECT_DOUBLE_EQ(0.0, maxFluxDensityX(bench.elements[0], flow, -10.0));
}

TEST_F(FluxDensities, maximumInX_isTheRightSideWhereBothExceedTheOneInY) {
  flow[6] = 8.0;   // left: 20
  flow[7] = -4.0;  // right: -10
  EXPECT_DOUBLE_EQ(-10.0, maxFluxDensityX(bench.elements[0], flow, 5.0));
  EXPECT_DOUBLE_EQ(20.0, maxFluxDensityX(bench.elements[0], flow, 15.0));
}

}  // namespace
}  // namespace VELMORA
