// Sources by the models of field conditions: leaks, ambient radiation and convection in gaps.

#include <gtest/gtest.h>

#include "solver/SourceBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::LeakageDefinition;
using VELMORA::VelClimateCond;
using VELMORA::VelFieldCond;

constexpr double LONG_WAVE = 300.0;  // [W/m2]

class ModelSourceTest : public SourceBench {
 protected:
  ModelSourceTest() : SourceBench(BE_ENERGY | BE_MOISTURE) { radiating(BE_ENERGY); }

  void radiating(int equations) { settings = moistSettings(equations); }

  /// A surface that radiates to one side. The cell before it is made of air.
  VelFieldCond& surface(cell_t cell, cell_t before, VelFieldCond::para_t emission) {
    VelFieldCond& fc = act(VelFieldCond::C_AMBIENTRADIATION, {cell});
    const VELMORA::Element& e = data.elements[cell];
    fc.modelRanges = {{e.i, e.j, e.i, e.j}};
    for (auto& parameter : fc.para) parameter.clear();
    set(emission, 0.9);
    for (VELMORA::Element& element : data.elements) element.material = &plaster;
    data.elements[before].material = &air;
    attach(VelClimateCond::C_LOWRAD, LONG_WAVE);
    return fc;
  }
  double gain(cell_t cell) const {
    return 0.9 * (LONG_WAVE - 5.67e-08 * s.T[cell] * s.T[cell] * s.T[cell] * s.T[cell]);
  }
  double shownFlow(std::size_t side) const { return arrays.records.heatFlux[side][VELMORA::HF_LONGWAVE]; }

  /// A leak from the bottom to the top of the left column.
  VelFieldCond& leak() {
    VelFieldCond& fc = act(VelFieldCond::C_CONVECTIVE_SOURCE, {UPPER_LEFT, LOWER_LEFT});
    fc.modelRanges = {{0, 0, 0, 1}};
    data.elements[UPPER_LEFT].y = 0.65;
    data.elements[LOWER_LEFT].y = 0.25;
    LeakageDefinition& definition = fc.wtaModel.emplace();
    definition.climateNames = {"room", "outside", "humidity"};
    definition.para[LeakageDefinition::CMP_HEIGHT].setBaseValue("CMP_HEIGHT", 5.0, TKL::Unit());
    definition.leakCoefficient = 1e-6;
    data.climateConds.resize(3);
    climateOfHouse(0, "room", VelClimateCond::C_TEMPER, 303.15);
    climateOfHouse(1, "outside", VelClimateCond::C_TEMPER, 273.15);
    climateOfHouse(2, "humidity", VelClimateCond::C_RELHUM, 0.9);
    return fc;
  }
  void climateOfHouse(std::size_t n, const char* name, VelClimateCond::condition_t type, double value) {
    data.climateConds[n].name = name;
    data.climateConds[n].condition = type;
    data.climateConds[n].currentValue = value;
  }
  static double density(double temperature) { return TKL::pSat(temperature) / (461.89 * temperature); }

  const MM::Material air = airMaterial();
};

}  // namespace

// ---- ambient radiation

TEST_F(ModelSourceTest, surface_radiatesToTheLeftAndRight) {
  surface(UPPER_RIGHT, UPPER_LEFT, VelFieldCond::P_LEFT_EMISS_COEFF);
  data.sides[0].area = 0.3;
  calculate();
  expectClose(heat(UPPER_RIGHT), gain(UPPER_RIGHT) / 0.2);
  expectClose(shownFlow(0), gain(UPPER_RIGHT) * 0.3);
  surface(UPPER_LEFT, UPPER_RIGHT, VelFieldCond::P_RIGHT_EMISS_COEFF);
  calculate();
  expectClose(heat(UPPER_LEFT), gain(UPPER_LEFT) / 0.1);
  expectClose(shownFlow(0), -gain(UPPER_LEFT) * 0.3);
}

TEST_F(ModelSourceTest, columnOfTwoRows_radiatesToTheBottom) {
  VelFieldCond& fc = surface(UPPER_LEFT, LOWER_LEFT, VelFieldCond::P_BOTTOM_EMISS_COEFF);
  fc.modelRanges = {{0, 0, 0, 1}};
  data.sides[2].area = 0.1;
  calculate();
  expectClose(heat(UPPER_LEFT), gain(UPPER_LEFT) / 0.3);
  expectClose(shownFlow(2), -gain(UPPER_LEFT) * 0.1);
}

TEST_F(ModelSourceTest, shownRadiation_isNoPartOfTheFlowOfTheSide) {
  surface(UPPER_RIGHT, UPPER_LEFT, VelFieldCond::P_LEFT_EMISS_COEFF);
  data.sides[0].area = 0.3;
  calculate();
  EXPECT_EQ(arrays.records.heatFlux[0][VELMORA::HF_SUM], 0.0);
}

TEST_F(ModelSourceTest, surfaceWithoutASide_isRefused) {
  surface(UPPER_RIGHT, UPPER_LEFT, VelFieldCond::P_LEFT_EMISS_COEFF);
  data.elements[UPPER_RIGHT].sideLeft = nullptr;
  EXPECT_EQ(failure(), (TKL::Thrown{"Field condition 'First': element 1 has no side that radiates.",
                                    "[VelmoraCvodeSolver::calculateSourcesH]"}));
}

TEST_F(ModelSourceTest, missingRadiation_isNamed) {
  surface(UPPER_RIGHT, UPPER_LEFT, VelFieldCond::P_LEFT_EMISS_COEFF);
  detach(VelClimateCond::C_LOWRAD);
  EXPECT_EQ(failure(), missing("AMBIENTRADIATION", "LOWRAD", "[VelmoraCvodeSolver::calculateSourcesH]"));
}

TEST_F(ModelSourceTest, radiatingSurface_changesTheAirOfAMoistureBalance) {
  radiating(BE_ENERGY | BE_MOISTURE);
  surface(UPPER_RIGHT, UPPER_LEFT, VelFieldCond::P_LEFT_EMISS_COEFF);
  attach(VelClimateCond::C_TEMPER, 280.0);
  attach(VelClimateCond::C_RELHUM, 0.5);
  EXPECT_EQ(failure(),
            missing("AMBIENTRADIATION", "AIRCHANGERATE", "[VelmoraCvodeSolver::calculateSourcesM]"));
  attach(VelClimateCond::C_AIRCHANGERATE, 0.01);
  calculate();
  expectClose(moisture(UPPER_RIGHT), (0.5 * density(280.0) - 900.0 / (461.89 * 290.0)) * 0.01);
}

// ---- leaks

TEST_F(ModelSourceTest, leak_wetsAllItsElements) {
  radiating(BE_ENERGY | BE_MOISTURE);
  leak();
  calculate();
  const double airFlow = 30.0 / 303.15 * 9.807 * 5.0 / 2 * 1.3 * 1e-6;
  const double source = (0.9 * density(303.15) - density(285.0)) * airFlow / 0.8;
  for (const cell_t cell : {UPPER_LEFT, LOWER_LEFT}) {
    expectClose(moisture(cell), source);
    expectClose(enthalpy(cell), source * 4180.0 * s.T[cell]);
    expectClose(arrays.records.convectiveMoistureSource[cell], source);
    expectClose(arrays.records.convectiveAirFlow[cell], airFlow);
  }
  EXPECT_EQ(moisture(UPPER_RIGHT), 0.0);
  EXPECT_EQ(arrays.records.convectiveAirFlow[UPPER_RIGHT], 0.0);
}

TEST_F(ModelSourceTest, leakWithoutEnergy_wetsAllTheSame) {
  radiating(BE_MOISTURE);
  leak();
  calculate();
  EXPECT_GT(moisture(UPPER_LEFT), 0.0);
  EXPECT_EQ(enthalpy(UPPER_LEFT), 0.0);
}

TEST_F(ModelSourceTest, endedLeak_leavesNoResultsToTheOutputs) {
  radiating(BE_ENERGY | BE_MOISTURE);
  VelFieldCond& fc = leak();
  calculate();
  fc.endTime.setBaseValue("END_TIME", 10.0, TKL::Unit());
  calculate(1000.0);
  EXPECT_EQ(moisture(UPPER_LEFT), 0.0);
  EXPECT_EQ(arrays.records.convectiveMoistureSource[UPPER_LEFT], 0.0);
  EXPECT_EQ(arrays.records.convectiveAirFlow[UPPER_LEFT], 0.0);
}

}  // namespace VELMORA_SOLVER
