#include <gtest/gtest.h>

#include "project/SetupCalculation.h"
#include "project/SetupFixture.h"

namespace VELMORA {
struct RoomModel {};
}  // namespace VELMORA

using namespace VELMORA;
using TKL::Thrown;

namespace {

constexpr VelSelection::Range WHOLE_GRID{0, 0, 1, 0};

VelClimateCond climate(const std::string& name, VelClimateCond::condition_t condition) {
  auto object = named<VelClimateCond>(name);
  object.condition = condition;
  return object;
}

/// A boundary condition that fails in its check: the exchange coefficient is missing.
VelBoundaryCond badBoundaryCond(const std::string& name) {
  auto condition = named<VelBoundaryCond>(name);
  condition.condition = VelBoundaryCond::C_HEATCOND;
  condition.kind = VelBoundaryCond::K_EXCHANGE;
  return condition;
}

}  // namespace

TEST(SetupMaterials, onlyUsedOnes_areTakenOver) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_materials.materials.push_back(makeMaterial("Wool"));
  setup.run();
  EXPECT_EQ(setup.data.materials,
            std::vector<const MM::Material*>{&setup.project.m_materials.materials[0].material});
  EXPECT_EQ(setup.data.elements[0].material, setup.data.materials[0]);
}

TEST(SetupMaterials, materialWithoutData_fails) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_materials.materials[0].hasData = false;
  setup.project.m_materials.materials[0].filename = "$(MATERIALS_DIR)/Brick_1.m6";
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Material 'Brick' has no data, its file '$(MATERIALS_DIR)/Brick_1.m6' could not be read.",
                    SETUP_TAG}));
}

TEST(SetupMaterials, unusedMaterialWithoutData_passes) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_materials.materials.push_back(named<MaterialDescription>("Gone"));
  EXPECT_EQ(setup.thrown(), (Thrown{"nothing thrown", ""}));
}

TEST(SetupBoundaryConds, unusedOnes_areDroppedUnchecked) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.boundaryConds = {badBoundaryCond("bad"), named<VelBoundaryCond>("good")};
  setup.assign(VelSelection::A_BOUNDARYCOND, "good", WHOLE_GRID, {VelSelection::L_LEFT});
  setup.run();
  ASSERT_EQ(setup.data.boundaryConds.size(), 1u);
  EXPECT_EQ(setup.data.boundaryConds[0].name, "good");
  EXPECT_TRUE(setup.data.boundaryConds[0].used);
}

TEST(SetupBoundaryConds, usedOnes_areChecked) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.boundaryConds = {badBoundaryCond("bad")};
  setup.assign(VelSelection::A_BOUNDARYCOND, "bad", WHOLE_GRID, {VelSelection::L_LEFT});
  EXPECT_EQ(setup.thrown().text, "EXCOEFF is required");
}

TEST(SetupBoundaryConds, wallsOfUsedOnes_areTakenOverCheckedAndLinked) {
  SetupFixture setup({1, 1}, {1});
  auto rain = named<VelBoundaryCond>("rain");
  rain.idNames[VelBoundaryCond::I_WALLDATA] = "West";
  setup.project.m_conditions.boundaryConds = {rain};
  setup.project.m_conditions.wallData = {named<VelWallData>("East"), named<VelWallData>("West")};
  setup.assign(VelSelection::A_BOUNDARYCOND, "rain", WHOLE_GRID, {VelSelection::L_LEFT});
  EXPECT_EQ(setup.thrown().text, "ORIENTATION is required");

  VelWallData& west = setup.project.m_conditions.wallData[1];
  west.para[VelWallData::P_ORIENTATION].set("ORIENTATION", 270.0, "Deg");
  west.para[VelWallData::P_INCLINATION].set("INCLINATION", 90.0, "Deg");
  west.para[VelWallData::P_LATITUDE].set("LATITUDE", 51.0, "Deg");
  setup.run();
  ASSERT_EQ(setup.data.wallData.size(), 1u);
  EXPECT_EQ(setup.data.boundaryConds[0].wallData, &setup.data.wallData[0]);
}

TEST(SetupClimate, usedConditions_areTakenOverAndLinked) {
  SetupFixture setup({1, 1}, {1});
  auto heat = named<VelBoundaryCond>("heat");
  heat.climateNames[VelClimateCond::C_TEMPER] = "T";
  auto source = named<VelFieldCond>("source");
  source.climateNames[VelClimateCond::C_ENESOURCE] = "E";
  setup.project.m_conditions.boundaryConds = {heat};
  setup.project.m_conditions.fieldConds = {source};
  setup.project.m_conditions.climateConds = {climate("unused", VelClimateCond::C_TEMPER),
                                             climate("E", VelClimateCond::C_ENESOURCE),
                                             climate("T", VelClimateCond::C_TEMPER)};
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", WHOLE_GRID, {VelSelection::L_LEFT});
  setup.assign(VelSelection::A_FIELDCOND, "source", WHOLE_GRID);
  setup.run();
  ASSERT_EQ(setup.data.climateConds.size(), 2u);
  EXPECT_EQ(setup.data.fieldConds[0].climate[VelClimateCond::C_ENESOURCE], &setup.data.climateConds[0]);
  EXPECT_EQ(setup.data.boundaryConds[0].climate[VelClimateCond::C_TEMPER], &setup.data.climateConds[1]);
}

TEST(SetupClimate, percentageOfASolution_isTakenOver) {
  SetupFixture setup({1, 1}, {1});
  VelSolutionDefinition solution;
  solution.percentage = "P";
  setup.project.m_conditions.solutionDefinitions = {VelSolutionDefinition(), solution};
  setup.project.m_conditions.climateConds = {climate("P", VelClimateCond::C_PERCENTAGE)};
  setup.run();
  EXPECT_EQ(setup.data.climateConds.size(), 1u);
}

TEST(SetupClimate, missingPercentageOfASolution_fails) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.solutionDefinitions.resize(1);
  setup.project.m_conditions.solutionDefinitions[0].percentage = "P";
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Missing climate condition of type PERCENTAGE with name 'P'", SETUP_TAG}));
}

TEST(SetupClimate, percentageOfAnotherType_fails) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.solutionDefinitions.resize(1);
  setup.project.m_conditions.solutionDefinitions[0].percentage = "P";
  setup.project.m_conditions.climateConds = {climate("P", VelClimateCond::C_RELHUM)};
  EXPECT_EQ(setup.thrown(),
            (Thrown{"Climate condition with name 'P' should have type PERCENTAGE.", SETUP_TAG}));
}

TEST(SetupFieldConds, hiddenAdsorption_isTheLastOne) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.fieldConds = {named<VelFieldCond>("a"), named<VelFieldCond>("unused")};
  setup.assign(VelSelection::A_FIELDCOND, "a", WHOLE_GRID);
  setup.run();
  ASSERT_EQ(setup.data.fieldConds.size(), 2u);
  const VelFieldCond& hidden = setup.data.fieldConds[1];
  EXPECT_EQ(hidden.name, "Automatic adsorption FC");
  EXPECT_EQ(hidden.condition, VelFieldCond::C_VOCADSORPTION);
  const TKL::Parameter& rate = hidden.para[VelFieldCond::P_GAS2SOLID_TRANSFER_COEFF];
  EXPECT_TRUE(rate.isSet());
  EXPECT_DOUBLE_EQ(rate.value, 0.1);
  EXPECT_EQ(rate.IO_unit.name(), "m3/s");
}

TEST(SetupBoundaryConds, heatPipe_isPreparedBeforeAndAfterTheElements) {
  SetupFixture setup({1, 1}, {3, 1});
  auto pipe = named<VelBoundaryCond>("pipe");
  pipe.condition = VelBoundaryCond::C_HEATCOND;
  pipe.kind = VelBoundaryCond::K_HEATPIPE;
  pipe.para[VelBoundaryCond::P_HP_RADIUS].set("HP_RADIUS", 10.0, "mm");
  pipe.para[VelBoundaryCond::P_HP_LENGTH].set("HP_LENGTH", 5.0, "m");
  pipe.para[VelBoundaryCond::P_HP_CAPACITY].set("HP_CAPACITY", 4180.0, "J/kgK");
  pipe.para[VelBoundaryCond::P_HP_TRANSFER].set("HP_TRANSFER", 200.0, "W/m2K");
  setup.project.m_conditions.boundaryConds = {pipe};
  setup.assign(VelSelection::A_BOUNDARYCOND, "pipe", {0, 0, 1, 1}, {VelSelection::L_LEFT});
  setup.run();
  const HeatPipe& heatPipe = setup.data.boundaryConds.at(0).heatPipe;
  EXPECT_DOUBLE_EQ(heatPipe.crossSection, 3.14e-4);
  ASSERT_EQ(heatPipe.shares.size(), 2u);
  EXPECT_DOUBLE_EQ(*heatPipe.share(setup.elementAt(0, 0)->number), 0.75);
  EXPECT_DOUBLE_EQ(*heatPipe.share(setup.elementAt(0, 1)->number), 0.25);
}

TEST(SetupFieldConds, unusedOnes_areDroppedUnchecked) {
  SetupFixture setup({1, 1}, {1});
  auto bad = named<VelFieldCond>("bad");
  bad.condition = VelFieldCond::C_REMENESOUR;
  setup.project.m_conditions.fieldConds = {bad};
  EXPECT_EQ(setup.thrown(), (Thrown{"nothing thrown", ""}));
  setup.assign(VelSelection::A_FIELDCOND, "bad", WHOLE_GRID);
  EXPECT_EQ(setup.thrown().text, "FLUID_CAPACITY is required");
}

TEST(SetupFieldConds, remoteCondition_isLinkedAndMatched) {
  SetupFixture setup({1, 2, 1, 2}, {1});
  auto source = named<VelFieldCond>("source");
  source.condition = VelFieldCond::C_REMENESOUR;
  source.para[VelFieldCond::P_FLUID_CAPACITY].set("FLUID_CAPACITY", 4e6, "J/m3K");
  source.remoteName = "sink";
  setup.project.m_conditions.fieldConds = {source, named<VelFieldCond>("sink")};
  setup.assign(VelSelection::A_FIELDCOND, "source", {0, 0, 1, 0});
  setup.assign(VelSelection::A_FIELDCOND, "sink", {2, 0, 3, 0});
  setup.run();
  EXPECT_EQ(setup.data.fieldConds[0].remote, &setup.data.fieldConds[1]);
  EXPECT_TRUE(setup.data.fieldConds[0].matchingVolumes);
}

TEST(SetupFieldConds, remoteConditionThatIsNotAssigned_cannotBeFound) {
  SetupFixture setup({1, 1}, {1});
  auto source = named<VelFieldCond>("source");
  source.remoteName = "sink";
  setup.project.m_conditions.fieldConds = {source, named<VelFieldCond>("sink")};
  setup.assign(VelSelection::A_FIELDCOND, "source", WHOLE_GRID);
  EXPECT_EQ(setup.thrown(), (Thrown{"Error linking remote field condition to field condtions!",
                                    "[VelFieldCond::assignRemoteFieldCond]"}));
}

TEST(SetupInitialConds, usedOnes_areTakenOverAndAssigned) {
  SetupFixture setup({1, 1}, {1});
  setup.project.m_conditions.initialConds = {named<VelInitialCond>("unused"), named<VelInitialCond>("T0")};
  setup.assign(VelSelection::A_INITIALCOND, "T0", {1, 0, 1, 0});
  setup.run();
  ASSERT_EQ(setup.data.initialConds.size(), 1u);
  EXPECT_EQ(setup.data.elements[1].initialConds, std::vector<VelInitialCond*>{&setup.data.initialConds[0]});
}

TEST(SetupContactConds, usedOnes_areCheckedAndPrepared) {
  SetupFixture setup({1, 1}, {1});
  auto foil = named<VelContactCond>("foil");
  foil.condition = VelContactCond::C_FOIL;
  setup.project.m_conditions.contactConds = {foil};
  setup.assign(VelSelection::A_CONTACTCOND, "foil", {0, 0, 0, 0}, {VelSelection::L_RIGHT});
  EXPECT_EQ(setup.thrown(), (Thrown{"Missing FOIL_NAME parameter.", "standard error"}));

  VelContactCond& condition = setup.project.m_conditions.contactConds[0];
  condition.foilName = "PE";
  condition.para[VelContactCond::P_VAPDIFFRES].set("VAPDIFFRES", 0.5, "m");
  setup.run();
  EXPECT_DOUBLE_EQ(setup.data.sideQuantities.at(0)[VelContactCond::P_VAPDIFFRES],
                   0.5 * 461.89 * 293.15 / 2.662e-05);
}

TEST(SetupRooms, room_replacesTheConditionsOfTheOutermostSides) {
  SetupFixture setup({1, 1, 1}, {1});
  setup.assign(VelSelection::A_MATERIAL, "VOID", {0, 0, 0, 0});
  setup.project.m_conditions.boundaryConds = {named<VelBoundaryCond>("heat")};
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", {1, 0, 2, 0}, {VelSelection::L_LEFT});
  RoomModel room;
  setup.project.m_assignments.roomLeft = &room;
  setup.run();
  ASSERT_EQ(setup.data.boundaryConds.size(), 2u);
  const VelBoundaryCond& condition = setup.data.boundaryConds[1];
  EXPECT_EQ(condition.name, "Room interface left");
  EXPECT_EQ(condition.condition, VelBoundaryCond::C_ROOM);
  EXPECT_EQ(condition.room, &room);
  ASSERT_NE(setup.elementAt(1, 0)->sideLeft, nullptr);
  EXPECT_EQ(setup.elementAt(1, 0)->sideLeft->boundaryConds,
            std::vector<VelBoundaryCond*>{&setup.data.boundaryConds[1]});
  EXPECT_TRUE(setup.capture.has(
      "One or more BC assignments at the left side of the construction were removed and replaced with a room "
      "interface boundary condition!\n",
      TKL::MSG_WARNING, SETUP_TAG, 2));
}

TEST(SetupRooms, rightRoom_takesTheRightSides) {
  SetupFixture setup({1, 1}, {1, 1});
  setup.project.m_conditions.boundaryConds = {named<VelBoundaryCond>("heat")};
  setup.assign(VelSelection::A_BOUNDARYCOND, "heat", {0, 1, 1, 1}, {VelSelection::L_RIGHT});
  RoomModel room;
  setup.project.m_assignments.roomRight = &room;
  setup.run();
  for (const int j : {0, 1}) {
    ASSERT_NE(setup.elementAt(1, j)->sideRight, nullptr);
    EXPECT_EQ(setup.elementAt(1, j)->sideRight->boundaryConds.at(0)->name, "Room interface right");
  }
  EXPECT_TRUE(setup.capture.has(
      "One or more BC assignments at the right side of the construction were removed and replacedwith a room "
      "interface boundary condition!\n",
      TKL::MSG_WARNING, SETUP_TAG, 2));
}

TEST(SetupRooms, freeSides_areReplacedWithoutWarning) {
  SetupFixture setup({1, 1}, {1});
  RoomModel room;
  setup.project.m_assignments.roomLeft = &room;
  setup.run();
  EXPECT_FALSE(setup.capture.contains("were removed"));
  EXPECT_NE(setup.data.elements[0].sideLeft, nullptr);
}

TEST(SetupRooms, missingConditionOfARoom_fails) {
  RoomModel room;
  VelAssignments left, right;
  left.roomLeft = &room;
  right.roomRight = &room;
  std::vector<VelBoundaryCond> none;
  SideMatrices sides(1, 1);
  EXPECT_EQ(TKL::thrownBy([&] { setup::assignRooms(left, none, sides); }),
            (Thrown{"BC with ID name 'Room interface left' expected, but not found in vector!", SETUP_TAG}));
  EXPECT_EQ(TKL::thrownBy([&] { setup::assignRooms(right, none, sides); }),
            (Thrown{"BC with ID name 'Room interface right' expected, but not found in vector!", SETUP_TAG}));
}
