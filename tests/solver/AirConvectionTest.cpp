// Enthalpy and vapour that flowing air carries between two elements.

#include "solver/MoistPair.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelContactCond;

constexpr double AIR_LEFT = 101400.0, AIR_RIGHT = 101300.0;  // [Pa]
constexpr double AIR_STREAM = 3e-4;                          // [kg/s]

class AirConvectionTest : public MoistPair {
 protected:
  AirConvectionTest() {
    settings = moistSettings(BE_ENERGY | BE_MOISTURE | BE_AIR);
    prepare(plaster, plaster);
  }
  void prepare(const MM::Material& left, const MM::Material& right) {
    materials(left, right);
    s.pAir = {AIR_LEFT, AIR_RIGHT};
  }
  void stream(double m) { arrays.records.airMassFlux[0] = m; }

  /// An exchange between a material at the left and air at the right, which has sides all around.
  VelContactCond& joint(VelContactCond::condition_t condition, VelContactCond::kind_t kind) {
    data.sides.resize(4);
    data.sideQuantities.resize(4);
    for (std::size_t k = 0; k < 4; ++k) data.sides[k].number = static_cast<int>(k);
    VELMORA::Element& air = data.elements[1];
    data.sides[0].elementLeft = &data.elements[0];
    data.sides[0].elementRight = air.sideRight == nullptr ? &air : &air;
    air.sideLeft = &data.sides[0];
    air.sideRight = &data.sides[1];
    air.sideTop = &data.sides[2];
    air.sideBottom = &data.sides[3];
    for (const std::size_t k : {1u, 2u, 3u}) data.sides[k].elementLeft = &air;
    prepare(plaster, cavity);
    arrays.records.airMassFlux = {1e-4, -3e-4, 2e-3, -1e-3};
    VelContactCond& result = contact(condition, kind);
    result.para[VelContactCond::P_EXCOEFF].setBaseValue("EXCOEFF", 2.0, TKL::Unit());
    result.para[VelContactCond::P_EXCH_SLOPE].setBaseValue("EXCH_SLOPE", 4.0, TKL::Unit());
    return result;
  }
  void exponent(VelContactCond& joined, double value) {
    joined.para[VelContactCond::P_EXCH_EXP].setBaseValue("EXCH_EXP", value, TKL::Unit());
  }
  static double speed(double m) { return m / (AIR_RIGHT / (287.1 * 290.0) * PAIR_AREA); }
  static void expectSame(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
  }
};

double steamEnthalpy(double T) {
  return 2050.0 * T + 3080000.0;
}

}  // namespace

TEST_F(AirConvectionTest, air_carriesItsEnthalpyFromTheElementUpwind) {
  stream(AIR_STREAM);
  calculate();
  expectSame(heat(VELMORA::HF_AIR), 300.0 * 1006.0 * AIR_STREAM);
  stream(-AIR_STREAM);
  calculate();
  expectSame(heat(VELMORA::HF_AIR), -290.0 * 1006.0 * AIR_STREAM);
}

TEST_F(AirConvectionTest, air_carriesVapourWithItsShareUpwind) {
  stream(AIR_STREAM);
  calculate();
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), AIR_STREAM * 2000.0 / AIR_LEFT * 287.1 / 461.89);
  stream(-AIR_STREAM);
  calculate();
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), -AIR_STREAM * 800.0 / AIR_RIGHT * 287.1 / 461.89);
}

TEST_F(AirConvectionTest, carriedVapour_bringsItsEnthalpy) {
  stream(AIR_STREAM);
  calculate();
  expectSame(heat(VELMORA::HF_VAPOUR_CONVECTION),
             steamEnthalpy(300.0) * moisture(VELMORA::MF_VAPOUR_CONVECTION));
  stream(-AIR_STREAM);
  calculate();
  expectSame(heat(VELMORA::HF_VAPOUR_CONVECTION),
             steamEnthalpy(290.0) * moisture(VELMORA::MF_VAPOUR_CONVECTION));
}

TEST_F(AirConvectionTest, sums_holdWhatTheAirCarries) {
  stream(AIR_STREAM);
  calculate();
  double Q = 0.0, j = 0.0;
  for (const auto slot : {VELMORA::HF_CONDUCTION, VELMORA::HF_VAPOUR_DIFFUSION, VELMORA::HF_VAPOUR_CONVECTION,
                          VELMORA::HF_AIR, VELMORA::HF_LIQUID})
    Q += heat(slot);
  for (const auto slot : {VELMORA::MF_VAPOUR_DIFFUSION, VELMORA::MF_VAPOUR_CONVECTION, VELMORA::MF_LIQUID})
    j += moisture(slot);
  expectSame(heat(VELMORA::HF_SUM), Q);
  expectSame(moisture(VELMORA::MF_SUM), j);
}

TEST_F(AirConvectionTest, airAtRest_carriesNothing) {
  calculate();
  EXPECT_EQ(heat(VELMORA::HF_AIR), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_VAPOUR_CONVECTION), 0.0);
  EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION), 0.0);
}

TEST_F(AirConvectionTest, withoutAnAirBalance_theFlowIsNotRead) {
  settings = moistSettings();
  stream(AIR_STREAM);
  calculate();
  EXPECT_EQ(heat(VELMORA::HF_AIR), 0.0);
  EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION), 0.0);
}

TEST_F(AirConvectionTest, withoutMoisture_onlyHeatIsCarried) {
  settings = moistSettings(BE_ENERGY | BE_AIR);
  stream(AIR_STREAM);
  calculate();
  expectSame(heat(VELMORA::HF_AIR), 300.0 * 1006.0 * AIR_STREAM);
  EXPECT_EQ(moisture(VELMORA::MF_SUM), 0.0);
}

TEST_F(AirConvectionTest, sideClosedForVapour_isClosedForItsConvection) {
  stream(AIR_STREAM);
  resistance(VelContactCond::P_VAPDIFFRES, 1e20);
  calculate();
  EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION), 0.0);
  EXPECT_GT(heat(VELMORA::HF_AIR), 0.0);
}

TEST_F(AirConvectionTest, closedAdaptiveFoil_closesTheSideForConvection) {
  VelContactCond& foil = contact(VelContactCond::C_FOIL_ADAPTIVE, VelContactCond::K_DIRECTION_INDEPENDENT);
  foil.functions[VelContactCond::FUN_SD_POS].setValues({0.0, 1.0}, {1e12, 1e12});
  stream(AIR_STREAM);
  calculate();
  EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION), 0.0);
}

TEST_F(AirConvectionTest, vapourTightMaterial_takesNoVapourFromTheAir) {
  const MM::Material tight = moistMaterial(moistText("VAPOR_TIGHT"));
  prepare(plaster, tight);
  stream(AIR_STREAM);
  calculate();
  EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION), 0.0);
}

// ---- exchange between air and a material, by the velocity of the air

TEST_F(AirConvectionTest, heatExchange_growsWithTheStrongestFlowOfTheAir) {
  VelContactCond& joined = joint(VelContactCond::C_AIR_MAT_HEATCOND, VelContactCond::K_EXCHANGE_VEL);
  const double v = speed(2e-3);  // of the top, over the area of this side
  calculate();
  expectSame(heat(VELMORA::HF_CONDUCTION), 10.0 * PAIR_AREA * (2.0 + 4.0 * v));
  exponent(joined, 1.0);
  calculate();
  expectSame(heat(VELMORA::HF_CONDUCTION), 10.0 * PAIR_AREA * (2.0 + 4.0 * v));
  exponent(joined, 0.8);
  calculate();
  expectSame(heat(VELMORA::HF_CONDUCTION), 10.0 * PAIR_AREA * (2.0 + 4.0 * std::pow(v, 0.8)));
}

TEST_F(AirConvectionTest, vapourExchange_growsWithTheMeanFlowBetweenLeftAndRight) {
  VelContactCond& joined = joint(VelContactCond::C_AIR_MAT_VAPDIFF, VelContactCond::K_EXCHANGE_VEL);
  const double v = speed(0.5 * (3e-4 - 1e-4));
  calculate();
  expectSame(vapour(), 1200.0 * PAIR_AREA * (2.0 + 4.0 * v));
  exponent(joined, 0.8);
  calculate();
  expectSame(vapour(), 1200.0 * PAIR_AREA * (2.0 + 4.0 * std::pow(v, 0.8)));
}

TEST_F(AirConvectionTest, vapourExchangeOfAHorizontalSide_growsWithTheMeanFlowBetweenTopAndBottom) {
  joint(VelContactCond::C_AIR_MAT_VAPDIFF, VelContactCond::K_EXCHANGE_VEL);
  data.sides[0].horizontal = true;
  calculate();
  expectSame(vapour(), 1200.0 * PAIR_AREA * (2.0 + 4.0 * speed(0.5 * (2e-3 - 1e-3))));
}

TEST_F(AirConvectionTest, sideThatIsNotThere_hasNoFlow) {
  joint(VelContactCond::C_AIR_MAT_VAPDIFF, VelContactCond::K_EXCHANGE_VEL);
  data.elements[1].sideRight = nullptr;
  calculate();
  expectSame(vapour(), 1200.0 * PAIR_AREA * (2.0 + 4.0 * speed(0.5 * 1e-4)));
}

TEST_F(AirConvectionTest, exchangeOfStillAir_staysWithoutAnAirBalance) {
  joint(VelContactCond::C_AIR_MAT_HEATCOND, VelContactCond::K_EXCHANGE_VEL);
  settings = moistSettings();
  calculate();
  expectSame(heat(VELMORA::HF_CONDUCTION), 10.0 * PAIR_AREA * 2.0);
}

TEST_F(AirConvectionTest, constantExchange_doesNotGrowWithTheAir) {
  joint(VelContactCond::C_AIR_MAT_HEATCOND, VelContactCond::K_EXCHANGE);
  calculate();
  expectSame(heat(VELMORA::HF_CONDUCTION), 10.0 * PAIR_AREA * 2.0);
}

TEST_F(AirConvectionTest, exchangeBetweenAirAndMaterial_carriesVapourWithTheAir) {
  joint(VelContactCond::C_AIR_MAT_VAPDIFF, VelContactCond::K_EXCHANGE);
  calculate();
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), 1e-4 * 2000.0 / AIR_LEFT * 287.1 / 461.89);
}

TEST_F(AirConvectionTest, evaluation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  joint(VelContactCond::C_AIR_MAT_HEATCOND, VelContactCond::K_EXCHANGE_VEL);
  arrays.traits = elementTraits(data.elements, settings);
  FieldFluxes fluxes(data, settings, arrays.traits, s, arrays.records);
  const std::size_t before = allocationCount();
  fluxes.calculate();
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace VELMORA_SOLVER
