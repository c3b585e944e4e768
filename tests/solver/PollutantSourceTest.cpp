// Sources of a pollutant: imposed, by change of the air, sorption.

#include <array>
#include <memory>

#include "solver/PollutantBalance.h"
#include "solver/PollutantBench.h"
#include "solver/SourceBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double GAS_DENSITY = 3e-4;  // [kg/m3] in the pores
constexpr double BOUND_MASS = 6e-3;   // [kg/m3] in the solid
const char* const HP_TAG = "[VelmoraCvodeSolver::calculateSourcesHP]";
const char* const HMP_TAG = "[VelmoraCvodeSolver::calculateSourcesHMP]";

class PollutantSourceTest : public SourceBench {
 protected:
  PollutantSourceTest() : SourceBench(BE_ENERGY | BE_POLLUTANT) {
    file.read(library, {"Board"});
    data.materials = {&plaster};
    s.resizePollutant(NUM_CELLS);
    std::fill(s.rhoVOC.begin(), s.rhoVOC.end(), GAS_DENSITY);
    std::fill(s.mVOC2.begin(), s.mVOC2.end(), BOUND_MASS);
    arrays.records.vocSource1 = RecordArray(NUM_CELLS, VELMORA::NUM_VS1);
    arrays.records.vocSource2 = RecordArray(NUM_CELLS, VELMORA::NUM_VS2);
  }
  void withMoisture() { settings = moistSettings(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT); }
  void react(double t = 1000.0) {
    arrays.traits = elementTraits(data.elements, settings);
    const PollutantBalance balance(data, library);
    VELMORA::FieldModels models(data);
    Sources(data, settings, arrays.traits, s, arrays.records, models, &balance).calculate(t);
  }
  TKL::Thrown failureOf() {
    return TKL::thrownBy([this] { react(); });
  }
  double gas(cell_t cell, VELMORA::vocSource1Slot_t slot) const {
    return arrays.records.vocSource1[cell][slot];
  }
  double solid(cell_t cell, VELMORA::vocSource2Slot_t slot) const {
    return arrays.records.vocSource2[cell][slot];
  }
  /// Uptake of the solid [kg/m3s] by a coefficient [m3/s].
  double uptake(cell_t cell, double coefficient) const {
    return (GAS_DENSITY - BOUND_MASS / vocPartition(BOARD_K, s.T[cell])) * coefficient / volume(cell);
  }

  PollutantFile file;
  POLLUTANT_LIB::PollutantLibrary library;
};

}  // namespace

TEST_F(PollutantSourceTest, imposedSource_goesToTheGas) {
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  attach(Climate::C_VOCSOURCE, 2e-9);
  react();
  EXPECT_EQ(gas(UPPER_LEFT, VELMORA::VS1_IMPOSED), 2e-9);
  EXPECT_EQ(gas(UPPER_LEFT, VELMORA::VS1_SUM), 2e-9);
  EXPECT_EQ(solid(UPPER_LEFT, VELMORA::VS2_SUM), 0.0);
  EXPECT_EQ(gas(UPPER_RIGHT, VELMORA::VS1_SUM), 0.0);
  EXPECT_EQ(heat(UPPER_LEFT), 0.0);
}

TEST_F(PollutantSourceTest, negativeSource_isRefusedWithOneTagForBothCombinations) {
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  attach(Climate::C_VOCSOURCE, -2e-9);
  const TKL::Thrown refused{"Negative VOC sources are currently not supported.", HP_TAG};
  EXPECT_EQ(failureOf(), refused);
  withMoisture();
  EXPECT_EQ(failureOf(), refused);
}

TEST_F(PollutantSourceTest, sourceOfZero_isAllowed) {
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  attach(Climate::C_VOCSOURCE, 0.0);
  EXPECT_EQ(failureOf().text, "nothing thrown");
}

TEST_F(PollutantSourceTest, airChange_bringsTheDensityOfTheClimate) {
  act(Field::C_AIRCHANGE, {LOWER_LEFT});
  attach(Climate::C_TEMPER, s.T[LOWER_LEFT]);
  attach(Climate::C_AIRCHANGERATE, 1e-3);
  attach(Climate::C_VOCDENSG, 1e-4);
  react();
  expectClose(gas(LOWER_LEFT, VELMORA::VS1_AIR_CHANGE), (1e-4 - GAS_DENSITY) * 1e-3);
  EXPECT_EQ(gas(LOWER_LEFT, VELMORA::VS1_SUM), gas(LOWER_LEFT, VELMORA::VS1_AIR_CHANGE));
}

TEST_F(PollutantSourceTest, airFlowRate_isSharedByTheVolumeOfTheCondition) {
  act(Field::C_AIRCHANGE, {LOWER_LEFT, UPPER_RIGHT}).flags.set(Field::F_USE_FLOWRATE);
  attach(Climate::C_TEMPER, 290.0);
  attach(Climate::C_AIRFLOWRATE, 1e-3);
  attach(Climate::C_VOCDENSG, 1e-4);
  react();
  expectClose(gas(UPPER_RIGHT, VELMORA::VS1_AIR_CHANGE),
              (1e-4 - GAS_DENSITY) * 1e-3 / (volume(LOWER_LEFT) + volume(UPPER_RIGHT)));
}

TEST_F(PollutantSourceTest, adsorption_takesFromTheGasWhatTheSolidGets) {
  act(Field::C_VOCADSORPTION, {UPPER_RIGHT, LOWER_RIGHT});
  set(Field::P_GAS2SOLID_TRANSFER_COEFF, 0.02);
  react();
  for (const cell_t cell : {UPPER_RIGHT, LOWER_RIGHT}) {  // at their temperatures and volumes
    expectClose(solid(cell, VELMORA::VS2_ADSORPTION), uptake(cell, 0.02));
    EXPECT_EQ(gas(cell, VELMORA::VS1_ADSORPTION), -solid(cell, VELMORA::VS2_ADSORPTION));
    EXPECT_EQ(gas(cell, VELMORA::VS1_SUM), gas(cell, VELMORA::VS1_ADSORPTION));
    EXPECT_EQ(solid(cell, VELMORA::VS2_SUM), solid(cell, VELMORA::VS2_ADSORPTION));
  }
}

TEST_F(PollutantSourceTest, saturatedGas_isTakenUpAndRichSolidGivesBack) {
  act(Field::C_VOCADSORPTION, {UPPER_RIGHT});
  set(Field::P_GAS2SOLID_TRANSFER_COEFF, 0.02);
  s.mVOC2[UPPER_RIGHT] = 0.0;
  react();
  EXPECT_GT(solid(UPPER_RIGHT, VELMORA::VS2_ADSORPTION), 0.0);
  s.mVOC2[UPPER_RIGHT] = 1.0;
  react();
  EXPECT_LT(solid(UPPER_RIGHT, VELMORA::VS2_ADSORPTION), 0.0);
}

TEST_F(PollutantSourceTest, chemisorption_isInProportionToTheSolid) {
  act(Field::C_VOCCHEMISORPTION, {UPPER_LEFT});
  for (const double constant : {-1e-6, 2e-6}) {
    set(Field::P_CHEMISORPTION_CONST, constant);
    react();
    expectClose(solid(UPPER_LEFT, VELMORA::VS2_CHEMISORPTION), BOUND_MASS * constant);
    EXPECT_EQ(solid(UPPER_LEFT, VELMORA::VS2_SUM), solid(UPPER_LEFT, VELMORA::VS2_CHEMISORPTION));
    EXPECT_EQ(gas(UPPER_LEFT, VELMORA::VS1_SUM), 0.0);
  }
}

TEST_F(PollutantSourceTest, chemisorption_takesTheRestAtOnce) {
  act(Field::C_VOCCHEMISORPTION, {UPPER_LEFT});
  set(Field::P_CHEMISORPTION_CONST, -1e-6);
  s.mVOC2[UPPER_LEFT] = 1e-12;
  react();
  EXPECT_EQ(solid(UPPER_LEFT, VELMORA::VS2_CHEMISORPTION), -1e-12);
  s.mVOC2[UPPER_LEFT] = 1.001e-12;
  react();
  expectClose(solid(UPPER_LEFT, VELMORA::VS2_CHEMISORPTION), -1.001e-18);
  set(Field::P_CHEMISORPTION_CONST, 1e-6);  // production has no such limit
  s.mVOC2[UPPER_LEFT] = 1e-12;
  react();
  expectClose(solid(UPPER_LEFT, VELMORA::VS2_CHEMISORPTION), 1e-18);
}

TEST_F(PollutantSourceTest, secondConditionOfAKind_replacesTheFirst) {
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  act(Field::C_VOCSOURCE, {UPPER_LEFT}, 1);
  attach(Climate::C_VOCSOURCE, 2e-9);
  attach(Climate::C_VOCSOURCE, 5e-9, 1);
  react();
  EXPECT_EQ(gas(UPPER_LEFT, VELMORA::VS1_SUM), 5e-9);
}

TEST_F(PollutantSourceTest, secondExchangeOrReaction_replacesTheFirstToo) {
  act(Field::C_VOCADSORPTION, {UPPER_RIGHT});
  act(Field::C_VOCADSORPTION, {UPPER_RIGHT}, 1);
  set(Field::P_GAS2SOLID_TRANSFER_COEFF, 0.02, 0);
  set(Field::P_GAS2SOLID_TRANSFER_COEFF, 0.05, 1);
  react();
  expectClose(gas(UPPER_RIGHT, VELMORA::VS1_ADSORPTION), -uptake(UPPER_RIGHT, 0.05));
  expectClose(solid(UPPER_RIGHT, VELMORA::VS2_ADSORPTION), uptake(UPPER_RIGHT, 0.05));
  act(Field::C_VOCCHEMISORPTION, {UPPER_RIGHT});
  act(Field::C_VOCCHEMISORPTION, {UPPER_RIGHT}, 1);
  set(Field::P_CHEMISORPTION_CONST, -1e-6, 0);
  set(Field::P_CHEMISORPTION_CONST, -3e-6, 1);
  react();
  expectClose(solid(UPPER_RIGHT, VELMORA::VS2_SUM), -3e-6 * BOUND_MASS);
  for (const std::size_t n : {0U, 1U}) {
    act(Field::C_AIRCHANGE, {UPPER_RIGHT}, n);
    attach(Climate::C_TEMPER, 290.0, n);
    attach(Climate::C_AIRCHANGERATE, 1e-3, n);
    attach(Climate::C_VOCDENSG, n == 0 ? 1e-4 : 2e-4, n);
  }
  react();
  expectClose(gas(UPPER_RIGHT, VELMORA::VS1_SUM), (2e-4 - GAS_DENSITY) * 1e-3);
}

TEST_F(PollutantSourceTest, conditionsOfTwoKinds_addUp) {
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  act(Field::C_VOCADSORPTION, {UPPER_LEFT}, 1);
  attach(Climate::C_VOCSOURCE, 2e-9);
  set(Field::P_GAS2SOLID_TRANSFER_COEFF, 0.02, 1);
  react();
  expectClose(gas(UPPER_LEFT, VELMORA::VS1_SUM), 2e-9 - uptake(UPPER_LEFT, 0.02));
}

TEST_F(PollutantSourceTest, sources_endWithTheirCondition) {
  Field& source = act(Field::C_VOCSOURCE, {UPPER_LEFT});
  source.endTime.set("END_TIME", 1000.0, "s");
  attach(Climate::C_VOCSOURCE, 2e-9);
  react(1000.0);
  EXPECT_EQ(gas(UPPER_LEFT, VELMORA::VS1_SUM), 2e-9);
  react(1001.0);  // the records of the last evaluation are gone
  EXPECT_EQ(gas(UPPER_LEFT, VELMORA::VS1_SUM), 0.0);
}

TEST_F(PollutantSourceTest, changesOfTheSolid_endWithTheirCondition) {
  Field& decay = act(Field::C_VOCCHEMISORPTION, {UPPER_LEFT});
  decay.endTime.set("END_TIME", 1000.0, "s");
  set(Field::P_CHEMISORPTION_CONST, -1e-6);
  react(1000.0);
  EXPECT_LT(solid(UPPER_LEFT, VELMORA::VS2_SUM), 0.0);
  react(1001.0);
  EXPECT_EQ(solid(UPPER_LEFT, VELMORA::VS2_CHEMISORPTION), 0.0);
  EXPECT_EQ(solid(UPPER_LEFT, VELMORA::VS2_SUM), 0.0);
}

TEST_F(PollutantSourceTest, missingClimate_isNamedWithTheTagOfTheCombination) {
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  EXPECT_EQ(failureOf(), missing("VOCSOURCE", "VOCSOURCE", HP_TAG));
  withMoisture();
  EXPECT_EQ(failureOf(), missing("VOCSOURCE", "VOCSOURCE", HMP_TAG));
}

TEST_F(PollutantSourceTest, airChange_needsTheDensityOfTheClimate) {
  act(Field::C_AIRCHANGE, {UPPER_LEFT});
  attach(Climate::C_TEMPER, 290.0);
  attach(Climate::C_AIRCHANGERATE, 1e-3);
  EXPECT_EQ(failureOf(), missing("AIRCHANGE", "VOCDENSG", HP_TAG));
}

TEST_F(PollutantSourceTest, withMoisture_climateOfTheMoistureIsAskedForFirst) {
  withMoisture();
  act(Field::C_AIRCHANGE, {UPPER_LEFT});
  attach(Climate::C_TEMPER, 290.0);
  attach(Climate::C_AIRCHANGERATE, 1e-3);
  EXPECT_EQ(failureOf(), missing("AIRCHANGE", "RELHUM", "[VelmoraCvodeSolver::calculateSourcesM]"));
  attach(Climate::C_RELHUM, 0.5);
  EXPECT_EQ(failureOf(), missing("AIRCHANGE", "VOCDENSG", HMP_TAG));
}

TEST_F(PollutantSourceTest, withMoisture_heatAndMoistureSourcesActAsWell) {
  withMoisture();
  act(Field::C_AIRCHANGE, {UPPER_LEFT});
  attach(Climate::C_TEMPER, 290.0);
  attach(Climate::C_RELHUM, 0.1);
  attach(Climate::C_AIRCHANGERATE, 1e-3);
  attach(Climate::C_VOCDENSG, 0.0);
  react();
  EXPECT_LT(heat(UPPER_LEFT), 0.0);
  EXPECT_LT(moisture(UPPER_LEFT), 0.0);
  expectClose(gas(UPPER_LEFT, VELMORA::VS1_SUM), -GAS_DENSITY * 1e-3);
}

TEST_F(PollutantSourceTest, withoutPollutantBalance_nothingIsAskedFor) {
  settings = moistSettings(BE_ENERGY);
  act(Field::C_VOCSOURCE, {UPPER_LEFT});
  act(Field::C_VOCCHEMISORPTION, {UPPER_LEFT}, 1);
  EXPECT_EQ(failure().text, "nothing thrown");
}

}  // namespace VELMORA_SOLVER
