#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "project/VelBoundaryCond.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

const char* const CLIMATE_TAG = "[VelBoundaryCond::assignClimateCond]";
const char* const WALL_TAG = "[VelBoundaryCond::assignWallData]";

VelClimateCond climate(const std::string& name, VelClimateCond::condition_t condition) {
  VelClimateCond result;
  result.name = name;
  result.condition = condition;
  return result;
}

VelBoundaryCond readCondition(const std::string& text) {
  return readRecord<VelBoundaryCond>(text);
}

}  // namespace

TEST(VelBoundaryCondLink, climateConditions_areFoundByName) {
  const std::vector<VelClimateCond> climates = {climate("rh", VelClimateCond::C_RELHUM),
                                                climate("air", VelClimateCond::C_TEMPER)};
  VelBoundaryCond bc = readCondition("TEMPER = air\nRELHUM = rh");
  bc.assignClimateCond(climates);
  EXPECT_EQ(bc.climate[VelClimateCond::C_TEMPER], &climates[1]);
  EXPECT_EQ(bc.climate[VelClimateCond::C_RELHUM], &climates[0]);
  EXPECT_EQ(bc.climate[VelClimateCond::C_WINDVEL], nullptr);
}

TEST(VelBoundaryCondLink, climateOfAnotherType_fails) {
  const std::vector<VelClimateCond> climates = {climate("rh", VelClimateCond::C_RELHUM)};
  VelBoundaryCond bc = readCondition("TEMPER = rh");
  EXPECT_EQ(TKL::thrownBy([&] { bc.assignClimateCond(climates); }),
            (Thrown{"Invalid climate condition assignment with name 'rh', should be of type 'TEMPER'",
                    CLIMATE_TAG}));
}

TEST(VelBoundaryCondLink, missingClimate_isReportedAndFails) {
  TKL::MessageCapture capture;
  VelBoundaryCond bc = readCondition("TEMPER = air");
  EXPECT_EQ(TKL::thrownBy([&] { bc.assignClimateCond({}); }),
            (Thrown{"Error linking climate conditions to boundary condtions!", CLIMATE_TAG}));
  EXPECT_TRUE(capture.has("Could not find climate condition with type 'TEMPER' and name 'air'!",
                          TKL::MSG_ERROR, CLIMATE_TAG, -1));
}

TEST(VelBoundaryCondLink, allMissingClimates_areReported) {
  TKL::MessageCapture capture;
  VelBoundaryCond bc = readCondition("TEMPER = air\nRELHUM = rh");
  TKL::thrownBy([&] { bc.assignClimateCond({}); });
  EXPECT_EQ(capture.messages.size(), 2u);
}

TEST(VelBoundaryCondLink, conditionWithoutClimate_passes) {
  VelBoundaryCond bc = readCondition("NAME = n");
  EXPECT_EQ(TKL::thrownBy([&] { bc.assignClimateCond({}); }), nothingThrown());
}

TEST(VelBoundaryCondLink, wall_isFoundByName) {
  std::vector<VelWallData> walls(2);
  walls[0].name = "north";
  walls[1].name = "south";
  VelBoundaryCond bc = readCondition("WALLDATA = south");
  bc.assignWallData(walls);
  EXPECT_EQ(bc.wallData, &walls[1]);
}

TEST(VelBoundaryCondLink, missingWall_isReportedAndFails) {
  TKL::MessageCapture capture;
  VelBoundaryCond bc = readCondition("WALLDATA = west");
  EXPECT_EQ(TKL::thrownBy([&] { bc.assignWallData({}); }),
            (Thrown{"Error linking wall data to boundary condtions!", WALL_TAG}));
  EXPECT_TRUE(capture.has("Could not find wall data with name 'west'!", TKL::MSG_ERROR, WALL_TAG, -1));
}

TEST(VelBoundaryCondLink, conditionWithoutWall_passes) {
  VelBoundaryCond bc = readCondition("NAME = n");
  EXPECT_EQ(TKL::thrownBy([&] { bc.assignWallData({}); }), nothingThrown());
  EXPECT_EQ(bc.wallData, nullptr);
}

TEST(VelBoundaryCondLink, requiredClimate_isTheAttachedOne) {
  const VelClimateCond air = climate("air", VelClimateCond::C_TEMPER);
  VelBoundaryCond bc;
  bc.climate[VelClimateCond::C_TEMPER] = &air;
  EXPECT_EQ(&bc.requireClimate(VelClimateCond::C_TEMPER, "[test]"), &air);
}

TEST(VelBoundaryCondLink, requiredClimateThatIsMissing_fails) {
  const VelBoundaryCond bc = readCondition("NAME = out\nTYPE = VAPDIFF");
  EXPECT_EQ(
      TKL::thrownBy([&] { bc.requireClimate(VelClimateCond::C_RELHUM, "[caller]"); }),
      (Thrown{"Error in boundary condition 'out' with type 'VAPDIFF'.\nClimate condition of type 'RELHUM' "
              "needs to be specified!",
              "[caller]"}));
}

TEST(VelBoundaryCondLink, requiredWall_isTheAttachedOne) {
  const VelWallData wall;
  VelBoundaryCond bc;
  bc.wallData = &wall;
  EXPECT_EQ(&bc.requireWallData("[test]"), &wall);
}

TEST(VelBoundaryCondLink, requiredWallThatIsMissing_fails) {
  const VelBoundaryCond bc = readCondition("NAME = sun\nTYPE = SHWRAD");
  EXPECT_EQ(
      TKL::thrownBy([&] { bc.requireWallData("[caller]"); }),
      (Thrown{"Error in boundary condition 'sun' with type 'SHWRAD'.\nWall definition needs to be specified!",
              "[caller]"}));
}
