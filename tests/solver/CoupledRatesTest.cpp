#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "solver/MoistBench.h"
#include "solver/RightHandSide.h"
#include "solver/SolverProject.h"
#include "support/AllocationCounter.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::Side;

constexpr double WARM = 300.0, COOL = 290.0;    // [K]
constexpr double MOIST = 100.0, DRYER = 40.0;   // [kg/m3]
constexpr double CELL_VOLUME[] = {0.05, 0.15};  // [m3]
const char* const SHORTER_STEP =
    "Decomposition algorithm reported recoverable error: 1 (time step too large?) in element 0 (coordinates: "
    "0.05, 0.25)!\n";

/// Two cells of 0.1 m and 0.3 m, 0.5 m high, of one porous material; all surfaces are sealed.
class CoupledRatesTest : public ::testing::Test {
 protected:
  CoupledRatesTest() {
    const std::string lines = moistText();
    text.material = lines.substr(lines.find("[STORAGE_BASE"));
    text.balances = "BALANCE_EQUATIONS = ENERGY MOISTURE\n";
    text.disc = "X_STEPS = 0.1 0.3 m\nY_STEPS = 0.5 m\n";
    text.climate.clear();
    text.boundary.clear();
    text.files.clear();
    text.assignments = SolverProject::assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT");
  }

  void build() {
    text.read(project);
    project.setup_calculation(data);
    for (auto& climate : data.climateConds)
      climate.prepareCalculation(project.m_placeholders.placeholderMap());
    rhs = std::make_unique<RightHandSide>(data, ModelSettings::of(project.m_init, project.m_disc));
    ASSERT_EQ(data.elements[0].i, 0);
    capture.messages.clear();
    y = {energy(WARM, MOIST), MOIST, energy(COOL, DRYER), DRYER};
    ydot.assign(4, -1.0);
  }
  static double energy(double T, double mw) { return (MOIST_RHO_C + 4180.0 * mw) * T; }
  int calculate(double t = 0.0) { return rhs->calculate(t, y.data(), ydot.data()); }
  const double* heat(const Side* side) {
    return rhs->records.heatFlux[static_cast<std::size_t>(side->number)];
  }
  const double* moisture(const Side* side) {
    return rhs->records.moistureFlux[static_cast<std::size_t>(side->number)];
  }
  const Side* middle() const { return data.elements[0].sideRight; }

  TKL::MessageCapture capture;
  SolverProject text;
  VELMORA::VelProject project;
  VELMORA::CalculationData data;
  std::unique_ptr<RightHandSide> rhs;
  std::vector<double> y;
  std::vector<double> ydot;
};

class MoistureRatesTest : public CoupledRatesTest {
 protected:
  MoistureRatesTest() { text.balances = "BALANCE_EQUATIONS = MOISTURE\n"; }
  void buildMoistureOnly() {
    build();
    y = {MOIST, DRYER};
    ydot.assign(2, -1.0);
    rhs->state.U = {MOIST_RHO_C * WARM, MOIST_RHO_C * COOL};
  }
};

}  // namespace

TEST_F(CoupledRatesTest, state_isEnergyBeforeMoistureElementByElement) {
  build();
  ASSERT_EQ(calculate(), 0);
  const SolverState& s = rhs->state;
  EXPECT_EQ(s.U, (std::vector<double>{y[0], y[2]}));
  EXPECT_EQ(s.mw, (std::vector<double>{MOIST, DRYER}));
  EXPECT_DOUBLE_EQ(s.T[0], WARM);
  EXPECT_DOUBLE_EQ(s.T[1], COOL);
  EXPECT_NEAR(s.RH[0], 0.5, 1e-12);
  EXPECT_NEAR(s.RH[1], 0.2, 1e-12);
}

TEST_F(CoupledRatesTest, incrementsAtTheFreezingPoint_leadAwayFromIt) {
  build();
  const auto turned = [&](double T, double mw) {
    y[0] = energy(T, mw), y[1] = mw;
    EXPECT_EQ(calculate(), 0);
    std::vector<double> increments = {1.0, 2.0, 3.0, 4.0};
    rhs->turnIncrements(increments);
    EXPECT_EQ(increments[2], 3.0);  // the other element is warm
    EXPECT_EQ(increments[3], 4.0);
    return std::pair(increments[0], increments[1]);
  };
  EXPECT_EQ(turned(273.149999, MOIST), std::pair(-1.0, 2.0));
  EXPECT_EQ(turned(273.150001, MOIST), std::pair(1.0, -2.0));
  EXPECT_EQ(turned(273.150001, 1.9), std::pair(1.0, 2.0));  // less water than the increment
  EXPECT_EQ(turned(272.15, MOIST), std::pair(1.0, 2.0));
  EXPECT_EQ(turned(274.15, MOIST), std::pair(1.0, 2.0));
}

// The saturation pressure jumps by 0.2 % there, while it rises by 7 % in a kelvin.
TEST_F(CoupledRatesTest, quotientsAtTheFreezingPoint_areThoseBesideIt) {
  build();
  const auto quotient = [&](double T, bool turning, std::size_t unknown) {
    const std::vector<double> start = {energy(T, MOIST), MOIST, energy(T, DRYER), DRYER};
    y = start;
    EXPECT_EQ(calculate(), 0);
    const double before = ydot[1];
    std::vector<double> increments = start;
    for (double& increment : increments) increment *= 1e-7;
    if (turning) rhs->turnIncrements(increments);
    y[unknown] += increments[unknown];
    EXPECT_EQ(calculate(), 0);
    return (ydot[1] - before) / increments[unknown];
  };
  constexpr double FREEZING = 273.15;
  const double below = FREEZING - 1e-7, above = FREEZING + 1e-7;
  EXPECT_NEAR(quotient(below, true, 0) / quotient(FREEZING - 0.1, false, 0), 1.0, 0.05);
  EXPECT_GT(std::fabs(quotient(below, false, 0) / quotient(FREEZING - 0.1, false, 0)), 100.0);
  EXPECT_NEAR(quotient(above, true, 1) / quotient(FREEZING + 0.1, false, 1), 1.0, 0.05);
  EXPECT_GT(std::fabs(quotient(above, false, 1) / quotient(FREEZING + 0.1, false, 1)), 5.0);
}

TEST_F(CoupledRatesTest, rates_areTheDivergenceOfBothFluxes) {
  build();
  ASSERT_EQ(calculate(), 0);
  const double Q = heat(middle())[VELMORA::HF_SUM];
  const double m = moisture(middle())[VELMORA::MF_SUM];
  ASSERT_GT(m, 0.0);
  EXPECT_DOUBLE_EQ(ydot[0], -Q / CELL_VOLUME[0]);
  EXPECT_DOUBLE_EQ(ydot[1], -m / CELL_VOLUME[0]);
  EXPECT_DOUBLE_EQ(ydot[2], Q / CELL_VOLUME[1]);
  EXPECT_DOUBLE_EQ(ydot[3], m / CELL_VOLUME[1]);
}

TEST_F(CoupledRatesTest, heatFlow_holdsConductionAndTheEnthalpyOfBothMassFlows) {
  build();
  ASSERT_EQ(calculate(), 0);
  const double lambda = 0.25 * (0.8 + 10.0 * 0.1) + 0.75 * (0.8 + 10.0 * 0.04);
  const double* mass = moisture(middle());
  const double vapour = mass[VELMORA::MF_VAPOUR_DIFFUSION];
  const double liquid = mass[VELMORA::MF_LIQUID];
  ASSERT_NE(vapour, 0.0);
  ASSERT_NE(liquid, 0.0);
  const double expected =
      lambda * 0.5 * (WARM - COOL) * 5.0 + (2050.0 * WARM + 3080000.0) * vapour + 4180.0 * WARM * liquid;
  EXPECT_NEAR(heat(middle())[VELMORA::HF_SUM], expected, 1e-10 * expected);
}

TEST_F(CoupledRatesTest, vapourFlow_followsTheVapourPressures) {
  build();
  ASSERT_EQ(calculate(), 0);
  const double air = 2.662e-05 / (461.89 * 296.15) / MOIST_MEW;
  const double Kv = air * (0.25 * (0.4 - 0.1) + 0.75 * (0.4 - 0.04)) / 0.4;
  const double dp = 0.5 * TKL::pSat(WARM) - 0.2 * TKL::pSat(COOL);
  EXPECT_NEAR(moisture(middle())[VELMORA::MF_VAPOUR_DIFFUSION], Kv * 0.5 * dp * 5.0, 1e-18);
}

TEST_F(CoupledRatesTest, unchangedState_isNotDecomposedAgain) {
  build();
  ASSERT_EQ(calculate(), 0);
  rhs->state.T[0] = 333.0;
  rhs->state.T[1] = 333.0;
  y[3] += 1.0;
  y[2] = energy(COOL, y[3]);
  ASSERT_EQ(calculate(), 0);
  EXPECT_EQ(rhs->state.T[0], 333.0);
  EXPECT_DOUBLE_EQ(rhs->state.T[1], COOL);
}

TEST_F(CoupledRatesTest, changeOfOneQuantity_isDecomposed) {
  build();
  const std::vector<double> start = y;
  for (const std::size_t changed : {0U, 1U}) {
    y = start;
    ASSERT_EQ(calculate(), 0);
    rhs->state.T[0] = 333.0;
    y[changed] *= 1.001;
    ASSERT_EQ(calculate(), 0);
    EXPECT_NEAR(rhs->state.T[0], WARM, 1.0) << changed;
  }
}

TEST_F(CoupledRatesTest, stateThatIsAlreadyInTheArrays_isDecomposedTheFirstTime) {
  build();
  rhs->state.U = {y[0], y[2]};
  rhs->state.mw = {y[1], y[3]};
  ASSERT_EQ(calculate(), 0);
  EXPECT_DOUBLE_EQ(rhs->state.T[0], WARM);
}

TEST_F(CoupledRatesTest, recoverableError_isReportedWithItsPlace) {
  text.settings = "USE_STRICT_RANGE_CHECKING = YES\n";
  build();
  y[1] = 300.0;
  EXPECT_EQ(calculate(), 1);
  EXPECT_TRUE(capture.has(SHORTER_STEP, TKL::MSG_ERROR, "[VelmoraCvodeSolver::extractStateVariables]", 1));
}

TEST_F(CoupledRatesTest, recoverableError_leavesTheRatesTheFluxesAndTheElementsBehind) {
  text.settings = "USE_STRICT_RANGE_CHECKING = YES\n";
  build();
  ASSERT_EQ(calculate(), 0);
  const std::vector<double> before = ydot;
  const double Q = heat(middle())[VELMORA::HF_SUM];
  y[1] = 300.0;
  y[2] = energy(COOL + 5.0, DRYER);
  EXPECT_EQ(calculate(), 1);
  EXPECT_EQ(ydot, before);
  EXPECT_EQ(heat(middle())[VELMORA::HF_SUM], Q);
  EXPECT_DOUBLE_EQ(rhs->state.T[1], COOL);
}

TEST_F(CoupledRatesTest, recoverableError_comesBackWithTheSameState) {
  text.settings = "USE_STRICT_RANGE_CHECKING = YES\n";
  build();
  y[1] = 300.0;
  EXPECT_EQ(calculate(), 1);
  EXPECT_EQ(calculate(), 1);
  y[1] = MOIST;
  EXPECT_EQ(calculate(), 0);
}

TEST_F(CoupledRatesTest, clippedContent_doesNotTouchTheVectorOfTheIntegrator) {
  build();
  y[1] = -1e-6;
  y[3] = 250.0;
  ASSERT_EQ(calculate(), 0);
  EXPECT_EQ(y[1], -1e-6);
  EXPECT_EQ(y[3], 250.0);
  EXPECT_EQ(rhs->state.mw, (std::vector<double>{0.0, 200.0}));
}

TEST_F(CoupledRatesTest, exchangeWithHumidAir_entersBothBalances) {
  text.climate = SolverProject::constantClimate("Air", "TEMPER", "300 K") +
                 SolverProject::constantClimate("Vapour", "VAPPRESS", "3000 Pa");
  text.boundary =
      "[BOUND_COND]\nNAME = Exchange\nTYPE = VAPDIFF\nKIND = EXCHANGE\nEXCOEFF = 2e-8 s/m\nTEMPER = Air\n"
      "VAPPRESS = Vapour\n";
  text.assignments += SolverProject::assign("BOUNDARYCOND", "1 0 1 0", "Exchange", "RIGHT");
  build();
  ASSERT_EQ(calculate(), 0);
  const double in = (3000.0 - 0.2 * TKL::pSat(COOL)) * 2e-8 * 0.5;
  const double m = moisture(middle())[VELMORA::MF_SUM] + in;
  const double Q = heat(middle())[VELMORA::HF_SUM] + (2050.0 * 300.0 + 3080000.0) * in;
  EXPECT_NEAR(ydot[3], m / CELL_VOLUME[1], 1e-12 * ydot[3]);
  EXPECT_NEAR(ydot[2], Q / CELL_VOLUME[1], 1e-12 * ydot[2]);
}

TEST_F(CoupledRatesTest, evaluation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  build();
  ASSERT_EQ(calculate(), 0);
  for (double& value : y) value *= 1.001;
  const std::size_t before = allocationCount();
  calculate(1.0);
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(MoistureRatesTest, state_isTheMoistureOfEachElement) {
  buildMoistureOnly();
  ASSERT_EQ(calculate(), 0);
  EXPECT_EQ(rhs->state.mw, (std::vector<double>{MOIST, DRYER}));
  EXPECT_DOUBLE_EQ(rhs->state.T[0], WARM);
  EXPECT_DOUBLE_EQ(rhs->state.T[1], COOL);
  const double m = moisture(middle())[VELMORA::MF_SUM];
  EXPECT_DOUBLE_EQ(ydot[0], -m / CELL_VOLUME[0]);
  EXPECT_DOUBLE_EQ(ydot[1], m / CELL_VOLUME[1]);
}

TEST_F(MoistureRatesTest, unchangedState_isDecomposedEachTime) {
  buildMoistureOnly();
  ASSERT_EQ(calculate(), 0);
  rhs->state.RH[0] = 0.9;
  ASSERT_EQ(calculate(), 0);
  EXPECT_NEAR(rhs->state.RH[0], 0.5, 1e-12);
}

TEST_F(MoistureRatesTest, heat_doesNotFlow) {
  buildMoistureOnly();
  ASSERT_EQ(calculate(), 0);
  EXPECT_EQ(heat(middle())[VELMORA::HF_CONDUCTION], 0.0);
  EXPECT_EQ(heat(middle())[VELMORA::HF_SUM], 0.0);
}

TEST_F(MoistureRatesTest, stateOutOfRange_doesNotStopTheStep) {
  text.settings = "USE_STRICT_RANGE_CHECKING = YES\n";
  buildMoistureOnly();
  y[0] = 300.0;
  EXPECT_EQ(calculate(), 0);
}

}  // namespace VELMORA_SOLVER
