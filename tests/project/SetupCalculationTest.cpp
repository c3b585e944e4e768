#include <gtest/gtest.h>

#include <fstream>

#include "project/SetupFixture.h"

using namespace VELMORA;
using TKL::Thrown;

namespace {

struct Progress {
  std::string text;
  int indentation;

  bool operator==(const Progress&) const = default;
};

void PrintTo(const Progress& progress, std::ostream* stream) {
  *stream << progress.indentation << " " << progress.text;
}

std::vector<Progress> progressOf(const SetupFixture& setup) {
  std::vector<Progress> texts;
  for (const TKL::MessageCapture::Message& message : setup.capture.messages) {
    EXPECT_EQ(message.type, TKL::MSG_STANDARD);
    EXPECT_EQ(message.level, 2);
    EXPECT_EQ(message.functionId, SETUP_TAG);
    texts.push_back({message.text, message.indentation});
  }
  return texts;
}

}  // namespace

TEST(SetupProgress, textsOfAWholeSetup_comeInOrder) {
  SetupFixture setup({0.5, 0.25}, {2});
  setup.run();
  EXPECT_EQ(progressOf(setup), (std::vector<Progress>{
                                   {"Transferring materials and conditions\n", 1},
                                   {"Creating element index matrix and selecting used elements\n", 1},
                                   {"Numbering elements and creating vector with used elements\n", 1},
                                   {"Elements numbered, number of elements: 2\n", 1},
                                   {"Calculating element geometry\n", 1},
                                   {"Grid width  (x-dimension) = 0.75 m\n", 2},
                                   {"Grid height (y-dimension) = 2 m\n", 2},
                                   {"Assigning materials\n", 1},
                                   {"Assigning initial conditions\n", 1},
                                   {"Assigning field conditions\n", 1},
                                   {"Setting up horizontal sides matrix\n", 1},
                                   {"Setting up vertical sides matrix\n", 1},
                                   {"Assigning boundary conditions\n", 1},
                                   {"Assigning contact conditions\n", 1},
                                   {"Renumbering sides and creating final sides vector\n", 1},
                                   {"Side vector created, number of sides: 1\n", 1},
                                   {"Linking elements to sides\n", 1},
                                   {"Creating output folder '" + setup.folder.str() + "'\n", 1},
                                   {"Setting up output grids\n", 1},
                                   {"Assigning output ranges\n", 1},
                               }));
}

TEST(SetupProgress, rotationalGrid_hasRadiusAndHeight) {
  SetupFixture setup({0.5, 0.25}, {2}, VelDisc::G_RSYM);
  setup.run();
  EXPECT_TRUE(setup.capture.has("Grid width  (x-dim, radius) = 0.75 m\n", TKL::MSG_STANDARD, SETUP_TAG, 2));
  EXPECT_TRUE(setup.capture.has("Grid height (y-dim, height) = 2 m\n", TKL::MSG_STANDARD, SETUP_TAG, 2));
}

TEST(SetupProgress, existingOutputFolder_isNotCreated) {
  SetupFixture setup({1, 1}, {1});
  TKL::Path::makePath(setup.folder);
  setup.run();
  EXPECT_FALSE(setup.capture.contains("Creating output folder"));
  EXPECT_EQ(setup.data.outputDir, setup.folder);
}

TEST(SetupProgress, indentation_isLoweredAfterAFailure) {
  SetupFixture setup({}, {});
  setup.project.m_assignments.selections.clear();
  setup.thrown();
  EXPECT_EQ(setup.capture.indentation, 0);
}

TEST(SetupCalculation, secondRun_startsAnew) {
  SetupFixture setup({1, 1, 1}, {1});
  setup.run();
  setup.run();
  EXPECT_EQ(setup.data.elements.size(), 3u);
  EXPECT_EQ(setup.data.materials.size(), 1u);
  EXPECT_EQ(setup.data.fieldConds.size(), 1u);
}

TEST(SetupCalculation, calculationData_canBeMoved) {
  SetupFixture setup({1, 1}, {1});
  setup.run();
  const CalculationData moved = std::move(setup.data);
  EXPECT_EQ(moved.sides[0].elementLeft, &moved.elements[0]);
  EXPECT_EQ(moved.elements[0].sideRight, &moved.sides[0]);
}

TEST(SetupGrid, withoutSteps_fails) {
  const Thrown expected{"Invalid or missing discretization (dx and dy vectors)!", SETUP_TAG};
  for (const bool withX : {false, true}) {
    SetupFixture setup(withX ? std::vector<double>{1} : std::vector<double>{},
                       withX ? std::vector<double>{} : std::vector<double>{1});
    EXPECT_EQ(setup.thrown(), expected);
  }
}

TEST(SetupGrid, moreCellsThanNumbers_fails) {
  SetupFixture setup(std::vector<double>(70000, 1.0), std::vector<double>(70000, 1.0));
  EXPECT_EQ(setup.thrown().text, "Invalid or missing discretization (dx and dy vectors)!");
}

TEST(SetupGrid, rangeOutside_fails) {
  SetupFixture setup({1, 1}, {1});
  setup.assign(VelSelection::A_MATERIAL, "Brick", {0, 0, 2, 0});
  EXPECT_EQ(setup.thrown(), (Thrown{"Invalid range in assignment, range was: 0 0 2 0!", "[check_ranges]"}));
}

TEST(SetupGrid, withoutMaterial_fails) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_assignments.selections.clear();
  EXPECT_EQ(setup.thrown(), (Thrown{"No materials assigned to the construction grid!", SETUP_TAG}));
}

TEST(SetupGrid, singleElement_fails) {
  SetupFixture setup({1}, {1});
  EXPECT_EQ(setup.thrown(), (Thrown{"Just one element specified. Discretization missing?", SETUP_TAG}));
  EXPECT_TRUE(setup.capture.contains("Elements numbered, number of elements: 1\n"));
}

TEST(SetupGrid, widthThatIsNotPositive_fails) {
  SetupFixture setup({1, -1}, {1});
  EXPECT_EQ(setup.thrown(), (Thrown{"Invalid discretization data in x-direction!", SETUP_TAG}));
}

TEST(SetupGrid, heightThatIsNotPositive_fails) {
  SetupFixture setup({1}, {1, -2});
  EXPECT_EQ(setup.thrown(), (Thrown{"Invalid discretization data in y-direction!", SETUP_TAG}));
}

TEST(SetupGrid, elementWithoutWidth_fails) {
  SetupFixture setup({1, 0}, {1});
  EXPECT_EQ(setup.thrown(), (Thrown{"Invalid dimensions for element 1,0 !", SETUP_TAG}));
}

TEST(SetupGrid, numbering_isHandedBack) {
  SetupFixture wide({1, 1, 1, 1}, {1, 1});
  wide.run();
  EXPECT_EQ(wide.data.bandWidth, 2);
  EXPECT_FALSE(wide.data.numberedRowWise);
  SetupFixture high({1, 1}, {1, 1, 1, 1});
  high.run();
  EXPECT_EQ(high.data.bandWidth, 2);
  EXPECT_TRUE(high.data.numberedRowWise);
}

TEST(SetupSides, outerSideWithoutBoundaryCondition_isDropped) {
  SetupFixture setup({1, 1}, {1});
  setup.run();
  EXPECT_EQ(setup.data.sides.size(), 1u);
  EXPECT_EQ(setup.data.elements[0].sideLeft, nullptr);
  EXPECT_EQ(setup.data.elements[0].sideTop, nullptr);
  EXPECT_EQ(setup.data.elements[0].sideRight, &setup.data.sides[0]);
  EXPECT_EQ(setup.data.elements[1].sideLeft, &setup.data.sides[0]);
}

TEST(SetupSides, outerSideWithBoundaryCondition_isKept) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.boundaryConds.push_back(named<VelBoundaryCond>("heat"));
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", {0, 0, 1, 0}, {VelSelection::L_LEFT});
  setup.run();
  ASSERT_EQ(setup.data.sides.size(), 2u);
  ASSERT_NE(setup.data.elements[0].sideLeft, nullptr);
  EXPECT_EQ(setup.data.elements[0].sideLeft->boundaryConds,
            std::vector<VelBoundaryCond*>{&setup.data.boundaryConds[0]});
}

TEST(SetupSides, sideAtAVoid_needsABoundaryCondition) {
  SetupFixture setup({1, 1, 1, 1}, {1});
  setup.assign(VelSelection::A_MATERIAL, "VOID", {1, 0, 1, 0});
  setup.project.m_conditions.boundaryConds.push_back(named<VelBoundaryCond>("heat"));
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", {1, 0, 1, 0}, {VelSelection::L_LEFT});
  setup.run();
  EXPECT_NE(setup.elementAt(0, 0)->sideRight, nullptr);
  EXPECT_EQ(setup.elementAt(2, 0)->sideLeft, nullptr);
}

TEST(SetupSides, sideBetweenVoids_isDroppedDespiteItsBoundaryCondition) {
  SetupFixture setup({1, 1, 1, 1}, {1});
  setup.assign(VelSelection::A_MATERIAL, "VOID", {0, 0, 1, 0});
  setup.project.m_conditions.boundaryConds.push_back(named<VelBoundaryCond>("heat"));
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", {1, 0, 1, 0}, {VelSelection::L_LEFT});
  setup.run();
  EXPECT_EQ(setup.data.sides.size(), 1u);
}

TEST(SetupSides, horizontalSides_areNumberedFirst) {
  SetupFixture setup({1, 1}, {1, 1});
  setup.run();
  ASSERT_EQ(setup.data.sides.size(), 4u);
  for (std::size_t k = 0; k < 4; ++k) {
    EXPECT_EQ(setup.data.sides[k].number, static_cast<int>(k));
    EXPECT_EQ(setup.data.sides[k].horizontal, k < 2);
  }
}

TEST(SetupSides, laterContactCondition_overwritesAllValues) {
  SetupFixture setup({1, 1}, {1});
  auto first = named<VelContactCond>("first");
  first.para[VelContactCond::P_HEATCONDRES].set("HEATCONDRES", 0.5, "m2K/W");
  auto second = named<VelContactCond>("second");
  second.para[VelContactCond::P_EXCH_EXP].set("EXCH_EXP", 0.8, "-");
  setup.project.m_conditions.contactConds = {first, second};
  setup.assign(VelSelection::A_CONTACTCOND, "first", {0, 0, 0, 0}, {VelSelection::L_RIGHT});
  setup.run();
  EXPECT_DOUBLE_EQ(setup.data.sideQuantities.at(0)[VelContactCond::P_HEATCONDRES], 0.5);

  setup.assign(VelSelection::A_CONTACTCOND, "second", {0, 0, 0, 0}, {VelSelection::L_RIGHT});
  setup.run();
  EXPECT_EQ(setup.data.sideQuantities.at(0)[VelContactCond::P_HEATCONDRES], 0.0);
  EXPECT_DOUBLE_EQ(setup.data.sideQuantities.at(0)[VelContactCond::P_EXCH_EXP], 0.8);
}

TEST(SetupSides, sideWithoutContactCondition_hasZeroQuantities) {
  SetupFixture setup({1, 1}, {1});
  setup.run();
  ASSERT_EQ(setup.data.sideQuantities.size(), 1u);
  EXPECT_EQ(setup.data.sideQuantities[0], SideQuantities{});
}

TEST(SetupSides, contactConditionAtTheBoundary_fails) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.contactConds = {named<VelContactCond>("foil")};
  setup.assign(VelSelection::A_CONTACTCOND, "foil", {0, 0, 0, 0}, {VelSelection::L_LEFT});
  EXPECT_EQ(
      setup.thrown(),
      (Thrown{"Error while assigning contact condition 'foil'. Reason : On side is at boundary! Contact "
              "condition must be between material layers!",
              SETUP_TAG}));
}

TEST(SetupSides, contactConditionBetweenVoids_fails) {
  SetupFixture setup({1, 1, 1, 1}, {1});
  setup.assign(VelSelection::A_MATERIAL, "VOID", {0, 0, 1, 0});
  setup.project.m_conditions.contactConds = {named<VelContactCond>("foil")};
  setup.assign(VelSelection::A_CONTACTCOND, "foil", {0, 0, 0, 0}, {VelSelection::L_RIGHT});
  EXPECT_EQ(setup.thrown().text,
            "Error while assigning contact condition 'foil'. Reason : On side is at boundary! Contact "
            "condition must be between material layers!");
}

TEST(SetupSides, contactConditionAtABoundaryWithCondition_isLeftAlone) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.contactConds = {named<VelContactCond>("foil")};
  setup.project.m_conditions.boundaryConds = {named<VelBoundaryCond>("heat")};
  setup.assign(VelSelection::A_CONTACTCOND, "foil", {0, 0, 0, 0}, {VelSelection::L_LEFT});
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", {0, 0, 0, 0}, {VelSelection::L_LEFT});
  EXPECT_EQ(setup.thrown(), (Thrown{"nothing thrown", ""}));
}
