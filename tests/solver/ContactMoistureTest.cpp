#include <gtest/gtest.h>

#include <cmath>

#include "solver/MoistPair.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelContactCond;

class ContactMoistureTest : public MoistPair {
 protected:
  VelContactCond& exchange(VelContactCond::condition_t condition, double coefficient,
                           VelContactCond::kind_t kind = VelContactCond::K_EXCHANGE) {
    VelContactCond& result = contact(condition, kind);
    result.para[VelContactCond::P_EXCOEFF].setBaseValue("EXCOEFF", coefficient, TKL::Unit());
    return result;
  }
  /// sd-values of 1 m to 5 m from dry to wet air, and of ten times as much in the negative direction.
  VelContactCond& adaptiveFoil(VelContactCond::kind_t kind) {
    VelContactCond& foil = contact(VelContactCond::C_FOIL_ADAPTIVE, kind);
    foil.functions[VelContactCond::FUN_SD_POS].setValues({0.0, 1.0}, {1.0, 5.0});
    foil.functions[VelContactCond::FUN_SD_NEG].setValues({0.0, 1.0}, {10.0, 50.0});
    return foil;
  }
};

const char* const NO_MODEL =
    "Invalid/unsupported model type for contact condition 'Joint' between air and non-air material!";
constexpr double PER_SD = 293.15 * 461.89 / 2.662e-05;  // [1/s] resistance of 1 m of still air
constexpr double JOINT_DPV = 2000.0 - 800.0;            // [Pa]
constexpr double JOINT_DT = 10.0;                       // [K]

/// Vapour flow [kg/s] through a side with a foil of this sd-value [m].
double flowBehind(double sd, double dp = JOINT_DPV, double meanKv = 0.25 * 4e-11 + 0.75 * 2e-11) {
  return PAIR_AREA * dp / (1.0 / (meanKv * PAIR_G) + sd * PER_SD);
}
void expectEqual(double actual, double expected) {
  EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
}

}  // namespace

TEST_F(ContactMoistureTest, preparedFoil_isAVapourResistanceAndClosesTheSideForLiquid) {
  VelContactCond& foil = contact(VelContactCond::C_FOIL);
  foil.para[VelContactCond::P_VAPDIFFRES].set("VAPDIFFRES", 2.0, "m");
  foil.prepareParameters();
  for (std::size_t i = 0; i < VelContactCond::NUM_P; ++i) data.sideQuantities[0][i] = foil.para[i].value;
  for (const bool horizontal : {false, true}) {
    data.sides[0].horizontal = horizontal;
    calculate();
    EXPECT_NEAR(vapour(), flowBehind(2.0), 1e-9 * flowBehind(2.0));
    EXPECT_EQ(liquid(), 0.0);
  }
}

TEST_F(ContactMoistureTest, adaptiveFoil_hasTheResistanceOfTheHigherHumidity) {
  adaptiveFoil(VelContactCond::K_DIRECTION_INDEPENDENT);
  for (const bool horizontal : {false, true}) {
    data.sides[0].horizontal = horizontal;
    calculate();
    expectEqual(vapour(), flowBehind(1.0 + 4.0 * 0.6));
  }
}

TEST_F(ContactMoistureTest, directedFoilInAVerticalSide_dependsOnTheSideOfTheHigherHumidity) {
  adaptiveFoil(VelContactCond::K_DIRECTION_DEPENDENT);
  calculate();  // humid at the left
  expectEqual(vapour(), flowBehind(1.0 + 4.0 * 0.6));
  turnRound();
  calculate();
  expectEqual(vapour(), flowBehind(10.0 + 40.0 * 0.6, -JOINT_DPV, 0.25 * 2e-11 + 0.75 * 4e-11));
}

TEST_F(ContactMoistureTest, directedFoilInAHorizontalSide_isTheOtherWayRound) {
  adaptiveFoil(VelContactCond::K_DIRECTION_DEPENDENT);
  data.sides[0].horizontal = true;
  calculate();  // humid at the top
  expectEqual(vapour(), flowBehind(10.0 + 40.0 * 0.6));
  turnRound();
  calculate();
  expectEqual(vapour(), flowBehind(1.0 + 4.0 * 0.6, -JOINT_DPV, 0.25 * 2e-11 + 0.75 * 4e-11));
}

TEST_F(ContactMoistureTest, adaptiveFoil_takesThePlaceOfAFixedResistance) {
  resistance(VelContactCond::P_VAPDIFFRES, 1e12);
  adaptiveFoil(VelContactCond::K_DIRECTION_INDEPENDENT);
  calculate();
  expectEqual(vapour(), flowBehind(1.0 + 4.0 * 0.6));
}

TEST_F(ContactMoistureTest, lastAdaptiveFoil_wins) {
  adaptiveFoil(VelContactCond::K_DIRECTION_DEPENDENT);
  VelContactCond& last = adaptiveFoil(VelContactCond::K_DIRECTION_INDEPENDENT);
  last.functions[VelContactCond::FUN_SD_POS].setValues({0.0, 1.0}, {7.0, 7.0});
  calculate();
  expectEqual(vapour(), flowBehind(7.0));
}

TEST_F(ContactMoistureTest, adaptiveFoilOfASideThatIsClosed_letsNothingThrough) {
  resistance(VelContactCond::P_VAPDIFFRES, 1e20);
  adaptiveFoil(VelContactCond::K_DIRECTION_INDEPENDENT);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_VAPOUR_DIFFUSION), 0.0);
}

TEST_F(ContactMoistureTest, adaptiveFoilOfHugeResistance_closesTheSide) {
  VelContactCond& foil = adaptiveFoil(VelContactCond::K_DIRECTION_INDEPENDENT);
  const double sd = 1.001e20 / PER_SD;
  foil.functions[VelContactCond::FUN_SD_POS].setValues({0.0, 1.0}, {sd, sd});
  calculate();
  EXPECT_EQ(vapour(), 0.0);
}

TEST_F(ContactMoistureTest, heatTransferAtAir_isCoefficientTimesDifference) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 8.0);
  calculate();
  expectEqual(heat(VELMORA::HF_CONDUCTION), JOINT_DT * PAIR_AREA * 8.0);
  materials(cavity, plaster);
  calculate();
  expectEqual(heat(VELMORA::HF_CONDUCTION), JOINT_DT * PAIR_AREA * 8.0);
}

TEST_F(ContactMoistureTest, heatTransferAtAir_ignoresAHeatResistance) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 8.0);
  resistance(VelContactCond::P_HEATCONDRES, 3.0);
  calculate();
  expectEqual(heat(VELMORA::HF_CONDUCTION), JOINT_DT * PAIR_AREA * 8.0);
}

TEST_F(ContactMoistureTest, vapourTransferAtAir_isCoefficientTimesDifference) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_VAPDIFF, 2e-8);
  for (const bool horizontal : {false, true}) {
    data.sides[0].horizontal = horizontal;
    calculate();
    expectEqual(vapour(), JOINT_DPV * PAIR_AREA * 2e-8);
    expectEqual(heat(VELMORA::HF_VAPOUR_DIFFUSION), (2050.0 * 300.0 + 3080000.0) * vapour());
  }
}

TEST_F(ContactMoistureTest, vapourTransferAtAir_ignoresAResistanceUnlessItClosesTheSide) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_VAPDIFF, 2e-8);
  resistance(VelContactCond::P_VAPDIFFRES, 1e12);
  calculate();
  expectEqual(vapour(), JOINT_DPV * PAIR_AREA * 2e-8);
  resistance(VelContactCond::P_VAPDIFFRES, 1e20);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
}

TEST_F(ContactMoistureTest, transferByAirVelocity_isThatOfStillAirWithoutAnAirBalance) {
  materials(plaster, cavity);
  for (const auto condition : {VelContactCond::C_AIR_MAT_HEATCOND, VelContactCond::C_AIR_MAT_VAPDIFF}) {
    VelContactCond& joint = exchange(condition, 3e-8, VelContactCond::K_EXCHANGE_VEL);
    joint.para[VelContactCond::P_EXCH_SLOPE].setBaseValue("EXCH_SLOPE", 1e-3, TKL::Unit());
  }
  calculate();
  expectEqual(heat(VELMORA::HF_CONDUCTION), JOINT_DT * PAIR_AREA * 3e-8);
  expectEqual(vapour(), JOINT_DPV * PAIR_AREA * 3e-8);
}

TEST_F(ContactMoistureTest, lastTransferAtAir_wins) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 8.0);
  exchange(VelContactCond::C_AIR_MAT_VAPDIFF, 2e-8);
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 5.0);
  exchange(VelContactCond::C_AIR_MAT_VAPDIFF, 1e-8);
  calculate();
  expectEqual(heat(VELMORA::HF_CONDUCTION), JOINT_DT * PAIR_AREA * 5.0);
  expectEqual(vapour(), JOINT_DPV * PAIR_AREA * 1e-8);
}

TEST_F(ContactMoistureTest, oneMaterialOrNoAir_ignoresTransfersAtAir) {
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 8.0, VelContactCond::NUM_K);
  exchange(VelContactCond::C_AIR_MAT_VAPDIFF, 2e-8, VelContactCond::NUM_K);
  const double conduction = (0.25 * 1.0 + 0.75 * 3.0) * PAIR_AREA * JOINT_DT * PAIR_G;
  const auto check = [&](const MM::Material& left, const MM::Material& right) {
    materials(left, right);
    calculate();
    expectEqual(heat(VELMORA::HF_CONDUCTION), conduction);
    expectEqual(vapour(), flowBehind(0.0));
  };
  check(cavity, cavity);
  check(plaster, brick);
}

TEST_F(ContactMoistureTest, interfaceWithoutTransfer_isAPlainSide) {
  materials(plaster, cavity);
  contact(VelContactCond::C_FOIL);
  calculate();
  expectEqual(heat(VELMORA::HF_CONDUCTION), (0.25 * 1.0 + 0.75 * 3.0) * PAIR_AREA * JOINT_DT * PAIR_G);
  expectEqual(vapour(), flowBehind(0.0));
}

TEST_F(ContactMoistureTest, heatTransferWithoutModel_isRefused) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 8.0, VelContactCond::K_DIRECTION_DEPENDENT);
  EXPECT_EQ(TKL::thrownBy([&] { calculate(); }),
            (TKL::Thrown{NO_MODEL, "[VelmoraCvodeSolver::fieldFluxEnergy]"}));
}

TEST_F(ContactMoistureTest, vapourTransferWithoutModel_isRefused) {
  materials(plaster, cavity);
  exchange(VelContactCond::C_AIR_MAT_VAPDIFF, 8.0, VelContactCond::NUM_K);
  EXPECT_EQ(TKL::thrownBy([&] { calculate(); }),
            (TKL::Thrown{NO_MODEL, "[VelmoraCvodeSolver::fieldFluxMoisture]"}));
}

TEST_F(ContactMoistureTest, calculation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  materials(plaster, cavity);
  adaptiveFoil(VelContactCond::K_DIRECTION_DEPENDENT);
  exchange(VelContactCond::C_AIR_MAT_HEATCOND, 8.0);
  arrays.traits = elementTraits(data.elements, settings);
  FieldFluxes fluxes(data, settings, arrays.traits, s, arrays.records);
  const std::size_t before = allocationCount();
  fluxes.calculate();
  EXPECT_EQ(allocationCount(), before);
}

}  // namespace VELMORA_SOLVER
