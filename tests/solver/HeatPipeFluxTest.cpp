#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "solver/MoistSurface.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;

constexpr double PIPE_LENGTH = 5.0;      // [m]
constexpr double PIPE_RADIUS = 0.01;     // [m]
constexpr double PIPE_TRANSFER = 200.0;  // [W/m2K]
constexpr double PIPE_SUPPLY = 308.15;   // [K]
constexpr double PIPE_CAPACITY = 120.0;  // [W/K] of the flowing fluid
constexpr double PIPE_EFFICIENCY = 0.4;  // [-]
constexpr double PIPE_DZ = 1.0;          // [m] thickness of the wall
constexpr double EXCHANGED = (PIPE_SUPPLY - SURFACE_T) * PIPE_CAPACITY * PIPE_EFFICIENCY;  // [W]

/// One element at a pipe whose running values are set by hand.
class HeatPipeFlux : public MoistSurface {
 protected:
  HeatPipeFlux() {
    condition.condition = VelBoundaryCond::C_HEATCOND;
    condition.kind = VelBoundaryCond::K_HEATPIPE;
    condition.heatPipe.length = PIPE_LENGTH;
    condition.heatPipe.supplyTemperature = PIPE_SUPPLY;
    condition.heatPipe.massFlowCapacity = PIPE_CAPACITY;
    condition.heatPipe.efficiency = PIPE_EFFICIENCY;
    condition.heatPipe.shares = {{0, 1.0}};
    data.elements[0].dz = PIPE_DZ;
  }
  double conduction(location_t location = LEFT) {
    calculate(location);
    return heat(VELMORA::HF_CONDUCTION);
  }
};

/// A block of three by three cells with a pipe in the middle one, 20 C all over.
class PipeInBlock {
 public:
  static constexpr double CELL = 0.05;          // [m]
  static constexpr double SUPPLY = 35.0;        // [C]
  static constexpr double MASS_FLUX = 100.0;    // [kg/m2s]
  static constexpr double FLUID_HEAT = 4180.0;  // [J/kgK]
  static constexpr double BLOCK = 20.0;         // [C]

  PipeInBlock() : problem(uniform(3, 3 * CELL), uniform(3, 3 * CELL)) {
    problem.material(problem.all(), "Screed", {1.4, 2e6});
    problem.hollow({1, 1, 1, 1});
    problem.initial(problem.all(), BLOCK);
    problem.constantClimate("Supply", "TEMPER", number(SUPPLY) + " C");
    problem.constantClimate("Pump", "MASSFLUXDENS", number(MASS_FLUX) + " kg/m2s");
  }
  void pipe(const std::string& lines) {
    problem.boundary("Pipe", "HEATPIPE",
                     "HP_RADIUS = 10 mm\nHP_LENGTH = 5 m\nHP_CAPACITY = 4180 J/kgK\n"
                     "HP_TRANSFER = 200 W/m2K\n" +
                         lines);
    problem.assign("BOUNDARYCOND", {0, 1, 0, 1}, "Pipe", "RIGHT");
    problem.assign("BOUNDARYCOND", {2, 1, 2, 1}, "Pipe", "LEFT");
    problem.assign("BOUNDARYCOND", {1, 0, 1, 0}, "Pipe", "BOTTOM");
    problem.assign("BOUNDARYCOND", {1, 2, 1, 2}, "Pipe", "TOP");
  }
  /// Heat that the elements around the pipe gain [W].
  static std::vector<double> gains(const WallRates& rates) {
    const double volume = CELL * CELL * 1.0;
    return {rates.rate(0, 1) * volume, rates.rate(2, 1) * volume, rates.rate(1, 0) * volume,
            rates.rate(1, 2) * volume};
  }

  WallProblem problem;
};

/// Heat [W] of the whole pipe with a fluid of a capacity rate that flows past a wall of one temperature. The
/// cross-section is reckoned with 3.14.
double pipeHeat(double difference) {
  const double rate = PipeInBlock::MASS_FLUX * 3.14 * PIPE_RADIUS * PIPE_RADIUS * PipeInBlock::FLUID_HEAT;
  const double surface = 2.0 * 3.141592653589793 * PIPE_RADIUS * PIPE_LENGTH;
  return difference * rate * (1.0 - std::exp(-PIPE_TRANSFER * surface / rate));
}

}  // namespace

TEST_F(HeatPipeFlux, onlyElement_getsTheHeatOfTheLengthInTheWall) {
  EXPECT_NEAR(conduction(), EXCHANGED * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, elementOfTheWholeLength_getsAllTheHeat) {
  data.elements[0].dz = PIPE_LENGTH;
  EXPECT_NEAR(conduction(), EXCHANGED, 1e-9);
}

TEST_F(HeatPipeFlux, heat_followsTheShareOfTheElement) {
  condition.heatPipe.shares = {{0, 0.25}, {7, 0.75}};
  EXPECT_NEAR(conduction(), 0.25 * EXCHANGED * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, heat_doesNotDependOnTheAreaOfTheOnlySide) {
  data.sides[LEFT].area = 3.0 * SURFACE_AREA;
  EXPECT_NEAR(conduction(), EXCHANGED * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, inflow_isNegativeAtTheRightAndAtTheBottom) {
  for (const auto location : {RIGHT, BOTTOM}) {
    EXPECT_NEAR(conduction(location), -EXCHANGED * PIPE_DZ / PIPE_LENGTH, 1e-9);
    EXPECT_EQ(heat(VELMORA::HF_SUM), heat(VELMORA::HF_CONDUCTION));
  }
}

TEST_F(HeatPipeFlux, elementWithTwoSidesAtThePipe_getsItsShareOnce) {
  data.sides[TOP].area = 3.0 * SURFACE_AREA;
  for (const auto location : {LEFT, TOP}) data.sides[location].boundaryConds.push_back(&condition);
  BoundaryFluxes(data, settings, arrays.traits, s, arrays.records).calculate(0.0);
  const double left = arrays.records.heatFlux[LEFT][VELMORA::HF_CONDUCTION];
  const double top = arrays.records.heatFlux[TOP][VELMORA::HF_CONDUCTION];
  EXPECT_NEAR(left + top, EXCHANGED * PIPE_DZ / PIPE_LENGTH, 1e-9);
  EXPECT_NEAR(top, 3.0 * left, 1e-9) << "by area";
}

TEST_F(HeatPipeFlux, pipeThatIsAssignedTwiceToASide_heatsOnce) {
  data.sides[LEFT].boundaryConds = {&condition, &condition};
  BoundaryFluxes(data, settings, arrays.traits, s, arrays.records).calculate(0.0);
  EXPECT_NEAR(arrays.records.heatFlux[LEFT][VELMORA::HF_CONDUCTION], EXCHANGED * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, thermalPower_addsToTheExchange) {
  condition.heatPipe.thermalPower = 500.0;
  EXPECT_NEAR(conduction(), (EXCHANGED + 500.0) * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, warmElement_givesHeatToThePipe) {
  s.T = {PIPE_SUPPLY + 10.0};
  EXPECT_NEAR(conduction(), -10.0 * PIPE_CAPACITY * PIPE_EFFICIENCY * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, fluidAtRest_exchangesNothing) {
  condition.heatPipe.massFlowCapacity = condition.heatPipe.efficiency = 0.0;
  EXPECT_EQ(conduction(), 0.0);
}

TEST_F(HeatPipeFlux, fluidAtRest_leavesTheThermalPower) {
  condition.heatPipe.massFlowCapacity = condition.heatPipe.efficiency = 0.0;
  condition.heatPipe.thermalPower = 500.0;
  EXPECT_NEAR(conduction(), 500.0 * PIPE_DZ / PIPE_LENGTH, 1e-9);
}

TEST_F(HeatPipeFlux, elementThatThePipeDoesNotKnow_isRefused) {
  condition.heatPipe.shares = {{1, 1.0}};
  try {
    conduction();
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(),
                 "[VelmoraCvodeSolver::boundaryFluxHeatConduction]  angle ration map in heat pipemodel in "
                 "boundary condition 'Weather'");
  }
}

TEST(PipeInWall, elementsAround_getTheHeatOfThePipeInEqualParts) {
  PipeInBlock block;
  block.pipe("TEMPER = Supply\nMASSFLUXDENS = Pump\n");
  WallRates rates(block.problem);
  rates.evaluate(0.0, PipeInBlock::BLOCK);
  const double heat = pipeHeat(PipeInBlock::SUPPLY - PipeInBlock::BLOCK) / PIPE_LENGTH;  // of 1 m
  EXPECT_TRUE(agree(PipeInBlock::gains(rates), {heat / 4, heat / 4, heat / 4, heat / 4}, 1e-6 * heat));
  EXPECT_GT(heat, 1.0);
}

TEST(PipeInWall, supplyTemperatureMayBeFixed) {
  PipeInBlock block;
  block.pipe("HP_SUPPTEMP = 50 C\nMASSFLUXDENS = Pump\n");
  WallRates rates(block.problem);
  rates.evaluate(0.0, PipeInBlock::BLOCK);
  const double heat = pipeHeat(50.0 - PipeInBlock::BLOCK) / PIPE_LENGTH;
  EXPECT_TRUE(agree(PipeInBlock::gains(rates), {heat / 4, heat / 4, heat / 4, heat / 4}, 1e-6 * heat));
}

TEST(PipeInWall, wallAboveTheUpperLimit_switchesThePumpOffUntilItHasCooledByTheHysteresis) {
  PipeInBlock block;
  block.pipe(
      "TEMPER = Supply\nMASSFLUXDENS = Pump\nHP_TEMPER_UPPER_LIMIT = 25 C\n"
      "HP_TEMPER_UPPER_HYST = 3 K\n");
  WallRates rates(block.problem);
  const auto gainAt = [&](double celsius) {
    rates.evaluate(0.0, celsius);
    return PipeInBlock::gains(rates)[0];
  };
  EXPECT_GT(gainAt(24.9), 0.0);
  EXPECT_EQ(gainAt(25.1), 0.0);
  EXPECT_EQ(gainAt(22.1), 0.0);
  EXPECT_GT(gainAt(21.9), 0.0);
}

TEST(PipeInWall, withoutAPump_heatFlowAloneWarmsTheWall) {
  PipeInBlock block;
  block.problem.constantClimate("Power", "HEATFLOW", "100 W");
  block.pipe("TEMPER = Supply\nHEATFLOW = Power\n");
  WallRates rates(block.problem);
  rates.evaluate(0.0, PipeInBlock::BLOCK);
  const double part = 100.0 / PIPE_LENGTH / 4.0;
  EXPECT_TRUE(agree(PipeInBlock::gains(rates), {part, part, part, part}, 1e-6));
}

}  // namespace VELMORA_SOLVER
