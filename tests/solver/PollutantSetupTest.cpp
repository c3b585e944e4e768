// How a project's pollutant comes to work: database, materials, automatic adsorption, start values.

#include <gtest/gtest.h>

#include <algorithm>

#include "solver/InitialConditions.h"
#include "solver/PollutantBench.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelFieldCond;
using VELMORA::VelInitialCond;
using Reasons = std::vector<std::string>;

const char* const CLOSING_LINE = "Error during initialization of solver!";
const char* const LIBRARY_FAILS = "Error initializing pollutant/VOC lib!";
const char* const SETUP_TAG = "[VelmoraCvodeSolver::initPollutantModule]";

/// Two columns of "Board".
class PollutantSetupTest : public ::testing::Test {
 protected:
  bool init() {
    const ProjectFolder place;
    VELMORA::VelProject project;
    std::string reason;
    EXPECT_EQ(project.read(place.write(problem.text()), reason), 0) << reason;
    return solver.init(project);
  }
  void lists(const std::string& ids) {
    problem.general = "VOC_DATABASE = " + problem.database().path() + "\nVOC_IDS = " + ids + "\n";
  }
  Reasons errors() {
    if (problem.text().find("NAME = Board") == std::string::npos) problem.board(problem.all());
    EXPECT_FALSE(init());
    Reasons result;
    for (const auto& message : capture.messages)
      if (message.type == TKL::MSG_ERROR) result.push_back(message.text);
    return result;
  }
  std::vector<std::string> conditionsOf(std::size_t element) const {
    std::vector<std::string> names;
    for (const VelFieldCond* condition : solver.data().elements[element].fieldConds)
      names.push_back(condition->name);
    return names;
  }

  PollutantProblem problem{{0.1, 0.1}};
  TKL::MessageCapture capture;
  VelmoraCvodeSolver solver;
};

const char* const AUTOMATIC = "Automatic adsorption FC";

}  // namespace

TEST_F(PollutantSetupTest, missingDatabase_isToldBeforeAnythingElse) {
  problem.general = "VOC_IDS = Vapour\n";
  EXPECT_EQ(errors(), (Reasons{"Missing pollutant/VOC database file name!", CLOSING_LINE}));
  EXPECT_TRUE(capture.has("Missing pollutant/VOC database file name!", TKL::MSG_ERROR, SETUP_TAG, 1));
}

TEST_F(PollutantSetupTest, databaseThatCannotBeRead_isNamed) {
  problem.general = "VOC_DATABASE = /nowhere/voc.txt\nVOC_IDS = Vapour\n";
  EXPECT_EQ(errors(), (Reasons{"[PollutantLibrary::readDatabase]  Couldn't open database '/nowhere/voc.txt'!",
                               LIBRARY_FAILS, CLOSING_LINE}));
  EXPECT_TRUE(capture.has("[PollutantLibrary::readDatabase]  Couldn't open database '/nowhere/voc.txt'!",
                          TKL::MSG_ERROR, SETUP_TAG, -1));
}

TEST_F(PollutantSetupTest, databaseBesideTheProject_isFoundByItsPlaceholder) {
  const ProjectFolder place;
  std::ofstream(place.file("own.txt")) << PollutantFile::text();
  problem.general = "VOC_DATABASE = $(PROJECT_DIR)/own.txt\nVOC_IDS = Vapour\n";
  problem.board(problem.all());
  VELMORA::VelProject project;
  std::string reason;
  ASSERT_EQ(project.read(place.write(problem.text()), reason), 0) << reason;
  EXPECT_TRUE(solver.init(project));
}

TEST_F(PollutantSetupTest, materialWithoutResistance_isNamed) {
  problem.materialText(problem.all(), "Board",
                       "RHO = 1000 kg/m3\nCE = 1000 J/kgK\nLAMBDA = 1 W/mK\nTHETA_POR = 0.4 m3/m3\n");
  EXPECT_EQ(errors(), (Reasons{"MEW <= 0 for material Board!", CLOSING_LINE}));
  EXPECT_TRUE(capture.has("MEW <= 0 for material Board!", TKL::MSG_ERROR, SETUP_TAG, 1));
}

TEST_F(PollutantSetupTest, materialWithoutPorosity_isNamed) {
  problem.materialText(problem.all(), "Board",
                       "RHO = 1000 kg/m3\nCE = 1000 J/kgK\nLAMBDA = 1 W/mK\nMEW = 10 -\n");
  EXPECT_EQ(errors(), (Reasons{"OPOR <= 0 for material Board!", CLOSING_LINE}));
  EXPECT_TRUE(capture.has("OPOR <= 0 for material Board!", TKL::MSG_ERROR, SETUP_TAG, 1));
}

TEST_F(PollutantSetupTest, unknownCompound_failsInTheLibrary) {
  lists("Smoke");
  EXPECT_EQ(errors(), (Reasons{"[PollutantLibrary::init]  VOCData 'Smoke' not in database!", LIBRARY_FAILS,
                               CLOSING_LINE}));
  EXPECT_TRUE(capture.has("[PollutantLibrary::init]  VOCData 'Smoke' not in database!", TKL::MSG_ERROR,
                          SETUP_TAG, -1));
  EXPECT_TRUE(capture.has(LIBRARY_FAILS, TKL::MSG_ERROR, SETUP_TAG, 1));
}

TEST_F(PollutantSetupTest, emptyList_failsInTheLibrary) {
  lists(" ; ;");
  EXPECT_EQ(errors(), (Reasons{"[PollutantLibrary::init]  Invalid input (vector is empty)!", LIBRARY_FAILS,
                               CLOSING_LINE}));
}

TEST_F(PollutantSetupTest, allCompoundsOfTheList_needAllMaterials) {
  lists("Vapour;Other");
  problem.layer(problem.column(-1), "Screed");
  problem.board(problem.column(0));
  EXPECT_EQ(errors(), (Reasons{"[PollutantLibrary::init]  Data missing in DB for combination of VOC 'Other' "
                               "and material 'Screed'!",
                               LIBRARY_FAILS, CLOSING_LINE}));
}

TEST_F(PollutantSetupTest, firstCompoundOfTheList_isTransported) {
  // "Other" binds a seventh of what "Vapour" does
  double bound[2];
  for (int i = 0; i < 2; ++i) {
    PollutantProblem both({0.1, 0.1});
    both.general = "VOC_DATABASE = " + both.database().path() +
                   "\nVOC_IDS = " + (i == 0 ? " Vapour ;; Other\t;" : "Other;Vapour") + "\n";
    both.board(both.all());
    both.mass(both.all(), 1e-3);
    both.initial(both.all(), 23.0);
    WallRun run(both);
    run.advance(1e5);
    bound[i] = run.solver.state().mVOC2[0] / run.solver.state().rhoVOC[0];
  }
  EXPECT_NEAR(bound[0], BOARD_K, 1e-4 * BOARD_K);
  EXPECT_NEAR(bound[1], 7.0, 1e-3);
}

TEST_F(PollutantSetupTest, elementsWithoutAdsorption_getTheAutomaticOne) {
  problem.board(problem.all());
  problem.field("Own", "VOCADSORPTION", "GAS2SOLID_TRANSFER_COEFF = 0.3 m3/s\n");
  problem.field("Decay", "VOCCHEMISORPTION", "CHEMISORPTION_CONST = -1e-6 1/s\n");
  problem.assign("FIELDCOND", problem.column(0), "Own", "ELEMENT");
  problem.assign("FIELDCOND", problem.all(), "Decay", "ELEMENT");
  ASSERT_TRUE(init());
  EXPECT_EQ(conditionsOf(0), (std::vector<std::string>{"Own", "Decay"}));
  EXPECT_EQ(conditionsOf(1), (std::vector<std::string>{"Decay", AUTOMATIC}));
  const VelFieldCond& automatic = solver.data().fieldConds.back();
  EXPECT_EQ(automatic.name, AUTOMATIC);
  EXPECT_EQ(automatic.para[VelFieldCond::P_GAS2SOLID_TRANSFER_COEFF].value, 0.1);
  EXPECT_TRUE(automatic.elements.empty());  // its own list and volume stay as they are
  EXPECT_EQ(automatic.volume, 0.0);
}

TEST_F(PollutantSetupTest, withoutPollutantBalance_nothingIsAskedFor) {
  problem.balances = "ENERGY";
  problem.general = "VOC_DATABASE = /nowhere/voc.txt\n";
  problem.board(problem.all());
  ASSERT_TRUE(init());
  EXPECT_TRUE(conditionsOf(0).empty());
}

TEST_F(PollutantSetupTest, refusedCombination_isToldBehindTheDatabase) {
  problem.balances = "MOISTURE POLLUTANT";
  EXPECT_EQ(errors(),
            (Reasons{"This combination of balance equations is invalid or not supported in this solver!",
                     CLOSING_LINE}));
  capture.messages.clear();
  problem.general.clear();
  EXPECT_EQ(errors(), (Reasons{"Missing pollutant/VOC database file name!", CLOSING_LINE}));
}

TEST_F(PollutantSetupTest, equationsPerElement_areToldForEachCombination) {
  const std::pair<const char*, int> counts[] = {
      {"ENERGY POLLUTANT", 3}, {"ENERGY MOISTURE POLLUTANT", 4}, {"ENERGY POLLUTANT ICE", 3}};
  for (const auto& [balances, n] : counts) {
    PollutantProblem other({0.1, 0.1}, {1.0}, balances);
    other.board(other.all());
    problem.balances = balances;
    const ProjectFolder place;
    VELMORA::VelProject project;
    std::string reason;
    ASSERT_EQ(project.read(place.write(other.text()), reason), 0) << reason;
    capture.messages.clear();
    EXPECT_TRUE(solver.init(project));
    EXPECT_EQ(capture.count("Number of balance equations per element: " + std::to_string(n) + "\n"), 1);
  }
}

namespace {

VelInitialCond startOf(VelInitialCond::condition_t kind, double value) {
  VelInitialCond condition;
  condition.condition = kind;
  condition.value.setBaseValue("VALUE", value, TKL::Unit());
  return condition;
}

}  // namespace

TEST(PollutantStart, lastMassOfAPollutant_counts) {
  VelInitialCond first = startOf(VelInitialCond::C_VOCMASS, 1e-3);
  VelInitialCond second = startOf(VelInitialCond::C_VOCMASS, 2e-3);
  VelInitialCond other = startOf(VelInitialCond::C_MSTMASS, 7.0);
  VELMORA::Element element;
  EXPECT_EQ(initialPollutant(element), 0.0);
  element.initialConds = {&other};
  EXPECT_EQ(initialPollutant(element), 0.0);
  element.initialConds = {&first, &second, &other};
  EXPECT_EQ(initialPollutant(element), 2e-3);
}

TEST(PollutantStart, negativeMass_isCorrectedToNothing) {
  const TKL::MessageCapture capture;
  VelInitialCond negative = startOf(VelInitialCond::C_VOCMASS, -1e-3);
  VELMORA::Element element;
  element.initialConds = {&negative};
  EXPECT_EQ(initialPollutant(element), 0.0);
  ASSERT_EQ(capture.messages.size(), 1U);
  EXPECT_TRUE(
      capture.has("Initial VOC mass density below 0 kg/m3. It was automatically corrected to 0 kg/m3!\n",
                  TKL::MSG_WARNING, "[VelmoraCvodeSolver::initialConditionsHP]", -1));
}

TEST(PollutantStart, startMass_isInTheGasAndNothingInTheSolid) {
  for (const char* balances : {"ENERGY POLLUTANT", "ENERGY MOISTURE POLLUTANT"}) {
    PollutantProblem problem({0.1, 0.1}, {1.0}, balances);
    problem.board(problem.all());
    problem.mass(problem.column(0), 3e-4);
    problem.initial(problem.all(), 30.0);
    WallRun run(problem);
    EXPECT_EQ(run.solver.state().mVOC1, (std::vector<double>{3e-4, 0.0}));
    EXPECT_EQ(run.solver.state().mVOC2, (std::vector<double>{0.0, 0.0}));
    EXPECT_NEAR(run.celsius(0), 30.0, 1e-9);
  }
}

TEST(PollutantStart, withMoisture_everyWarningComesOnce) {
  PollutantProblem problem({0.1, 0.1}, {1.0}, "ENERGY MOISTURE POLLUTANT");
  problem.board(problem.all());
  problem.initial(problem.all(), "RELHUM", "0.5 %");
  problem.mass(problem.all(), -1e-3);
  WallRun run(problem);
  EXPECT_EQ(run.capture.count("Initial relative humidity below 1%. It was automatically corrected to 1% RH!"),
            2);
  EXPECT_EQ(run.capture.count(
                "Initial VOC mass density below 0 kg/m3. It was automatically corrected to 0 kg/m3!\n"),
            2);
}

}  // namespace VELMORA_SOLVER
