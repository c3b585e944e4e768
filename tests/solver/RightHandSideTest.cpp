#include "solver/RightHandSide.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "foundation/Exception.h"
#include "solver/SolverProject.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::Element;
using VELMORA::Side;
using VELMORA::VelBoundaryCond;
using VELMORA::VelContactCond;

constexpr double RHO_C = 1e6;  // [J/m3K]
constexpr double T00 = 300.0;  // [K] upper left
constexpr double T10 = 290.0;  // upper right
constexpr double T01 = 285.0;  // lower left
constexpr double T11 = 280.0;  // lower right

/// Two by two cells: columns of 0.1 m ("Block", 1 W/mK) and 0.2 m ("Other", 2 W/mK), rows of 0.3 m and
/// 0.5 m, 1 m deep. All surfaces are sealed to begin with.
class RightHandSideTest : public ::testing::Test {
 protected:
  RightHandSideTest() {
    text.disc = "X_STEPS = 0.1 0.2 m\nY_STEPS = 0.3 0.5 m\n";
    text.addMaterial("Other", "2 W/mK");
    text.climate += SolverProject::constantClimate("Warm", "TEMPER", "310 K");
    text.boundary +=
        SolverProject::heatConduction("Film", "KIND = EXCHANGE\nEXCOEFF = 8 W/m2K\nTEMPER = Warm\n");
    text.files.clear();
    text.assignments = SolverProject::assign("MATERIAL", "0 0 0 1", "Block", "ELEMENT") +
                       SolverProject::assign("MATERIAL", "1 0 1 1", "Other", "ELEMENT");
  }

  void boundary(const char* name, const char* range, const char* location) {
    text.assignments += SolverProject::assign("BOUNDARYCOND", range, name, location);
  }

  void setUp() {
    text.read(project);
    project.setup_calculation(data);
    for (auto& climate : data.climateConds)
      climate.prepareCalculation(project.m_placeholders.placeholderMap());
  }
  void build() {
    if (data.elements.empty()) setUp();
    rhs = std::make_unique<RightHandSide>(data, ModelSettings::of(project.m_init, project.m_disc));
    y.assign(4, 0.0);
    y[number(0, 0)] = RHO_C * T00;
    y[number(1, 0)] = RHO_C * T10;
    y[number(0, 1)] = RHO_C * T01;
    y[number(1, 1)] = RHO_C * T11;
    ydot.assign(4, -1.0);
  }
  void calculate(double t = 0.0) { ASSERT_EQ(rhs->calculate(t, y.data(), ydot.data()), 0); }

  Element& element(int i, int j) {
    for (Element& e : data.elements)
      if (e.i == i && e.j == j) return e;
    throw std::out_of_range("no such element");
  }
  std::size_t number(int i, int j) { return static_cast<std::size_t>(element(i, j).number); }
  double rate(int i, int j) { return ydot[number(i, j)]; }
  const double* flux(const Side* side) {
    return rhs->records.heatFlux[static_cast<std::size_t>(side->number)];
  }
  double volume(int i, int j) { return (i == 0 ? 0.1 : 0.2) * (j == 0 ? 0.3 : 0.5); }

  TKL::MessageCapture capture;
  SolverProject text;
  VELMORA::VelProject project;
  VELMORA::CalculationData data;
  std::unique_ptr<RightHandSide> rhs;
  std::vector<double> y;
  std::vector<double> ydot;
};

// mean conductivity of the two columns, weighted by their widths [W/mK]
constexpr double LAMBDA_X = (0.1 * 1.0 + 0.2 * 2.0) / 0.3;
constexpr double Q_UPPER = LAMBDA_X * 0.3 * (T00 - T10) / 0.15;   // [W] rightwards, upper row
constexpr double Q_LOWER = LAMBDA_X * 0.5 * (T01 - T11) / 0.15;   // lower row
constexpr double Q_LEFT = 1.0 * 0.1 * (T00 - T01) / 0.4;          // downwards, left column
constexpr double Q_RIGHT_COLUMN = 2.0 * 0.2 * (T10 - T11) / 0.4;  // right column
constexpr double Q_FILM_LEFT = 8.0 * 0.3 * (310.0 - T00);         // [W] into the upper left cell
constexpr double Q_FILM_TOP = 8.0 * 0.1 * (310.0 - T00);

}  // namespace

TEST_F(RightHandSideTest, state_isDecomposedToTemperatureAndConductivity) {
  build();
  calculate();
  EXPECT_DOUBLE_EQ(rhs->state.T[number(0, 0)], T00);
  EXPECT_DOUBLE_EQ(rhs->state.T[number(1, 1)], T11);
  EXPECT_DOUBLE_EQ(rhs->state.lambda[number(0, 1)], 1.0);
  EXPECT_DOUBLE_EQ(rhs->state.lambda[number(1, 1)], 2.0);
}

TEST_F(RightHandSideTest, innerFluxes_arePositiveRightwardsAndDownwards) {
  build();
  calculate();
  EXPECT_NEAR(flux(element(0, 0).sideRight)[VELMORA::HF_CONDUCTION], Q_UPPER, 1e-9);
  EXPECT_NEAR(flux(element(0, 1).sideRight)[VELMORA::HF_CONDUCTION], Q_LOWER, 1e-9);
  EXPECT_NEAR(flux(element(0, 0).sideBottom)[VELMORA::HF_CONDUCTION], Q_LEFT, 1e-9);
  EXPECT_NEAR(flux(element(1, 0).sideBottom)[VELMORA::HF_CONDUCTION], Q_RIGHT_COLUMN, 1e-9);
  EXPECT_EQ(flux(element(0, 0).sideRight)[VELMORA::HF_SUM],
            flux(element(0, 0).sideRight)[VELMORA::HF_CONDUCTION]);
}

TEST_F(RightHandSideTest, divergence_addsLeftAndTopAndSubtractsRightAndBottom) {
  build();
  calculate();
  EXPECT_NEAR(rate(0, 0), (-Q_UPPER - Q_LEFT) / volume(0, 0), 1e-8);
  EXPECT_NEAR(rate(1, 0), (Q_UPPER - Q_RIGHT_COLUMN) / volume(1, 0), 1e-8);
  EXPECT_NEAR(rate(0, 1), (Q_LEFT - Q_LOWER) / volume(0, 1), 1e-8);
  EXPECT_NEAR(rate(1, 1), (Q_LOWER + Q_RIGHT_COLUMN) / volume(1, 1), 1e-8);
}

TEST_F(RightHandSideTest, contactResistance_standsInSeriesWithTheElements) {
  setUp();
  const double R = 0.05;  // [m2K/W]
  data.sideQuantities[static_cast<std::size_t>(element(0, 0).sideRight->number)]
                     [VelContactCond::P_HEATCONDRES] = R;
  build();
  calculate();
  EXPECT_NEAR(flux(element(0, 0).sideRight)[VELMORA::HF_CONDUCTION],
              0.3 * (T00 - T10) / (0.15 / LAMBDA_X + R), 1e-9);
  EXPECT_NEAR(flux(element(0, 1).sideRight)[VELMORA::HF_CONDUCTION], Q_LOWER, 1e-9);
}

TEST_F(RightHandSideTest, warmSurroundings_heatThroughEverySide) {
  boundary("Film", "0 0 0 0", "LEFT");
  boundary("Film", "1 0 1 0", "RIGHT");
  boundary("Film", "0 0 0 0", "TOP");
  boundary("Film", "0 1 0 1", "BOTTOM");
  build();
  calculate();
  EXPECT_NEAR(flux(element(0, 0).sideLeft)[VELMORA::HF_CONDUCTION], Q_FILM_LEFT, 1e-9);
  EXPECT_NEAR(flux(element(1, 0).sideRight)[VELMORA::HF_CONDUCTION], -8.0 * 0.3 * (310.0 - T10), 1e-9);
  EXPECT_NEAR(flux(element(0, 0).sideTop)[VELMORA::HF_CONDUCTION], Q_FILM_TOP, 1e-9);
  EXPECT_NEAR(flux(element(0, 1).sideBottom)[VELMORA::HF_CONDUCTION], -8.0 * 0.1 * (310.0 - T01), 1e-9);
}

TEST_F(RightHandSideTest, cornerElement_receivesTheFluxesOfBothSides) {
  boundary("Film", "0 0 0 0", "LEFT");
  boundary("Film", "0 0 0 0", "TOP");
  build();
  calculate();
  EXPECT_NEAR(rate(0, 0), (Q_FILM_LEFT + Q_FILM_TOP - Q_UPPER - Q_LEFT) / volume(0, 0), 1e-8);
}

TEST_F(RightHandSideTest, laterCondition_overwritesTheEarlierOneOfTheSide) {
  boundary("Film", "0 0 0 0", "LEFT");
  boundary("Heated", "0 0 0 0", "LEFT");
  build();
  calculate();
  EXPECT_NEAR(flux(element(0, 0).sideLeft)[VELMORA::HF_SUM], 100.0 * 0.3, 1e-9);
}

TEST_F(RightHandSideTest, activity_hasAMarginAtBothEnds) {
  boundary("Film", "0 0 0 0", "LEFT");
  setUp();
  data.boundaryConds[0].startTime.set("START_TIME", 1.0, "s");
  data.boundaryConds[0].endTime.set("END_TIME", 2.0, "s");
  build();
  const Side* side = element(0, 0).sideLeft;
  const auto isActiveAt = [&](double t) {
    EXPECT_EQ(rhs->calculate(t, y.data(), ydot.data()), 0);
    return flux(side)[VELMORA::HF_SUM] != 0.0;
  };
  EXPECT_FALSE(isActiveAt(1.0 - 2e-10));
  EXPECT_TRUE(isActiveAt(1.0 - 5e-11));
  EXPECT_TRUE(isActiveAt(1.5));
  EXPECT_TRUE(isActiveAt(2.0 + 5e-11));
  EXPECT_FALSE(isActiveAt(2.0 + 2e-10));
}

TEST_F(RightHandSideTest, inactiveCondition_leavesAnEmptyRecord) {
  boundary("Film", "0 0 0 0", "LEFT");
  setUp();
  data.boundaryConds[0].endTime.set("END_TIME", 2.0, "s");
  build();
  calculate(1.0);
  calculate(3.0);
  for (int slot = 0; slot < VELMORA::NUM_HF; ++slot)
    EXPECT_EQ(flux(element(0, 0).sideLeft)[slot], 0.0) << slot;
}

TEST_F(RightHandSideTest, openCondition_neverEnds) {
  boundary("Film", "0 0 0 0", "LEFT");
  build();
  calculate(1e12);
  EXPECT_NEAR(flux(element(0, 0).sideLeft)[VELMORA::HF_SUM], Q_FILM_LEFT, 1e-9);
}

TEST_F(RightHandSideTest, conditionOnAnInnerSide_isReportedEachTimeAndIgnored) {
  boundary("Film", "0 0 0 0", "LEFT");
  setUp();
  element(0, 0).sideRight->boundaryConds.push_back(&data.boundaryConds[0]);
  build();
  capture.messages.clear();
  calculate();
  calculate();
  EXPECT_EQ(capture.messages.size(), 2U);
  EXPECT_TRUE(capture.has("Boundary condition assigned to internal side!", TKL::MSG_ERROR,
                          "[VelmoraCvodeSolver::calculateFlux]", 0));
  EXPECT_NEAR(flux(element(0, 0).sideRight)[VELMORA::HF_SUM], Q_UPPER, 1e-9);
}

TEST_F(RightHandSideTest, moistureConditions_doNotActOnHeat) {
  boundary("Film", "0 0 0 0", "LEFT");
  setUp();
  for (const auto quantity :
       {VelBoundaryCond::C_VAPDIFF, VelBoundaryCond::C_RAIN, VelBoundaryCond::C_WATCONTC,
        VelBoundaryCond::C_AIRPRESS, VelBoundaryCond::C_SOLCONTC, VelBoundaryCond::C_ROOM,
        VelBoundaryCond::C_VOCDIFF}) {
    data.boundaryConds[0].condition = quantity;
    build();
    calculate();
    for (int slot = 0; slot < VELMORA::NUM_HF; ++slot)
      EXPECT_EQ(flux(element(0, 0).sideLeft)[slot], 0.0) << quantity << ' ' << slot;
  }
}

TEST_F(RightHandSideTest, everyEvaluation_clearsAllSourceRecords) {
  text.climate += SolverProject::constantClimate("Heater", "ENESOURCE", "0 W/m3");
  text.field = "[FIELD_COND]\nNAME = Heating\nTYPE = ENESOURCE\nENESOURCE = Heater\n";
  text.assignments += SolverProject::assign("FIELDCOND", "0 0 0 0", "Heating", "ELEMENT");
  build();
  for (double& value : rhs->records.heatSource.values()) value = 1e9;
  calculate();
  for (const double value : rhs->records.heatSource.values()) EXPECT_EQ(value, 0.0);
}

TEST_F(RightHandSideTest, elementsWithoutConditions_haveNoSource) {
  build();
  calculate();
  for (const double value : rhs->records.heatSource.values()) EXPECT_EQ(value, 0.0);
}

TEST_F(RightHandSideTest, conditionWithoutQuantity_isWarnedOfAndIgnored) {
  boundary("Film", "0 0 0 0", "LEFT");
  setUp();
  data.boundaryConds[0].condition = VelBoundaryCond::NUM_C;
  build();
  EXPECT_TRUE(capture.has("Boundary condition 'Film' has no TYPE and is ignored.\n", TKL::MSG_WARNING,
                          "[BoundaryFluxes::BoundaryFluxes]", -1));
  calculate();
  EXPECT_EQ(flux(element(0, 0).sideLeft)[VELMORA::HF_SUM], 0.0);
}

TEST_F(RightHandSideTest, otherBalances_areRefused) {
  setUp();
  for (const int code : {0, 4, 6, 9, 16, 18, 34, 39, 51}) {
    ModelSettings settings;
    settings.equations = BalanceEquations{code, 1};
    EXPECT_EQ(TKL::thrownBy([&] { RightHandSide(data, settings); }),
              (TKL::Thrown{"This combination of balance equations is invalid or not supported in this "
                           "solver!",
                           "[RightHandSide::RightHandSide]"}))
        << code;
  }
}

TEST_F(RightHandSideTest, pollutantBalance_needsALibrary) {
  setUp();
  ModelSettings settings;
  settings.equations = BalanceEquations{17, 3};
  EXPECT_EQ(
      TKL::thrownBy([&] { RightHandSide(data, settings); }),
      (TKL::Thrown{"A pollutant balance needs a pollutant library.", "[RightHandSide::RightHandSide]"}));
}

}  // namespace VELMORA_SOLVER
