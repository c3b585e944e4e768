#include "project/MarkUsed.h"

#include <gtest/gtest.h>

#include <chrono>

#include "project/GridBuilder.h"
#include "support/Thrown.h"

using namespace VELMORA;
using TKL::Thrown;
using TKL::thrownBy;

namespace {

VelAssignments assigned(VelSelection::assignment_t kind, const std::vector<std::string>& names) {
  VelAssignments assignments;
  for (const std::string& name : names) {
    assignments.selections.push_back(makeSelection(kind, name, {0, 0, 0, 0}));
  }
  return assignments;
}

template <class T>
std::vector<T> namedList(const std::vector<std::string>& names) {
  std::vector<T> list;
  for (const std::string& name : names) list.push_back(named<T>(name));
  return list;
}

std::string ambiguous(const std::string& name, const std::string& type) {
  return "Ambiguous assignment '" + name + "' with type '" + type +
         "'. Check whether there are multiple definitions (materials, conditions, etc.) of the same "
         "identification name!";
}

std::string invalid(const std::string& name, const std::string& type) {
  return "Invalid assignment '" + name + "' with type '" + type +
         "'. Check the ID names of your assignments!";
}

const char* const MARK_USED_TAG = "[mark_used]  ";

template <class T>
void expectMarking(VelSelection::assignment_t kind, const std::string& type) {
  const auto objects = namedList<T>({"a", "b", "c", "c"});
  EXPECT_EQ(mark_used(assigned(kind, {"b", "b"}), objects), (UsedFlags{false, true, false, false})) << type;
  EXPECT_EQ(thrownBy([&] { mark_used(assigned(kind, {"x"}), objects); }),
            (Thrown{invalid("x", type), MARK_USED_TAG}));
  EXPECT_EQ(thrownBy([&] { mark_used(assigned(kind, {"c"}), objects); }),
            (Thrown{ambiguous("c", type), MARK_USED_TAG}));
}

}  // namespace

TEST(MarkUsed, everyKind_marksItsObjectsAndFailsAlike) {
  expectMarking<VelBoundaryCond>(VelSelection::A_BOUNDARYCOND, "BOUNDARYCOND");
  expectMarking<VelInitialCond>(VelSelection::A_INITIALCOND, "INITIALCOND");
  expectMarking<VelFieldCond>(VelSelection::A_FIELDCOND, "FIELDCOND");
  expectMarking<VelContactCond>(VelSelection::A_CONTACTCOND, "CONTACTCOND");
  expectMarking<VelOutputFile>(VelSelection::A_FIELDOUTPUT, "FIELDOUTPUT");
  expectMarking<VelOutputFile>(VelSelection::A_FLUXOUTPUT, "FLUXOUTPUT");
}

TEST(MarkUsed, assignmentsOfOtherKinds_markNothing) {
  EXPECT_EQ(mark_used(assigned(VelSelection::A_FIELDCOND, {"a", "x"}), namedList<VelBoundaryCond>({"a"})),
            UsedFlags{false});
}

TEST(MarkUsed, outputFiles_areMarkedByBothKindsOfOutput) {
  VelAssignments assignments = assigned(VelSelection::A_FIELDOUTPUT, {"a"});
  assignments.selections.push_back(makeSelection(VelSelection::A_FLUXOUTPUT, "b", {0, 0, 0, 0}));
  EXPECT_EQ(mark_used(assignments, namedList<VelOutputFile>({"a", "b", "c"})),
            (UsedFlags{true, true, false}));
}

TEST(MarkUsed, materials_areFoundByIdName) {
  const std::vector<MaterialDescription> materials{makeMaterial("Brick"), makeMaterial("Wool")};
  EXPECT_EQ(mark_used(assigned(VelSelection::A_MATERIAL, {"Wool"}), materials), (UsedFlags{false, true}));
}

TEST(MarkUsed, materials_areFoundByFileNameIfNoIdNameFits) {
  std::vector<MaterialDescription> materials{makeMaterial("Brick"), makeMaterial("Wool")};
  materials[0].filename = "/db/Wool.m6";
  materials[1].filename = "/db/Cotton_7.m6";
  EXPECT_EQ(mark_used(assigned(VelSelection::A_MATERIAL, {"Cotton_7"}), materials), (UsedFlags{false, true}));
  EXPECT_EQ(mark_used(assigned(VelSelection::A_MATERIAL, {"Cotton_7.m6"}), materials),
            (UsedFlags{false, true}));
  EXPECT_EQ(mark_used(assigned(VelSelection::A_MATERIAL, {"Wool"}), materials), (UsedFlags{false, true}));
}

TEST(MarkUsed, voidMaterial_marksNothing) {
  EXPECT_EQ(mark_used(assigned(VelSelection::A_MATERIAL, {"VOID"}), {makeMaterial("Brick")}),
            UsedFlags{false});
}

TEST(MarkUsed, voidOfAnotherKind_isAName) {
  EXPECT_EQ(thrownBy([] {
              mark_used(assigned(VelSelection::A_FIELDCOND, {"VOID"}), namedList<VelFieldCond>({"a"}));
            }),
            (Thrown{invalid("VOID", "FIELDCOND"), MARK_USED_TAG}));
}

TEST(MarkUsed, missingMaterial_fails) {
  EXPECT_EQ(
      thrownBy([] { mark_used(assigned(VelSelection::A_MATERIAL, {"Wood"}), {makeMaterial("Brick")}); }),
      (Thrown{invalid("Wood", "MATERIAL"), MARK_USED_TAG}));
}

TEST(MarkUsed, twoMaterialsOfOneName_failOnlyIfReferredTo) {
  const std::vector<MaterialDescription> materials{makeMaterial("Brick"), makeMaterial("Wool"),
                                                   makeMaterial("Brick")};
  EXPECT_EQ(mark_used(assigned(VelSelection::A_MATERIAL, {"Wool"}), materials),
            (UsedFlags{false, true, false}));
  EXPECT_EQ(thrownBy([&] { mark_used(assigned(VelSelection::A_MATERIAL, {"Brick"}), materials); }),
            (Thrown{ambiguous("Brick", "MATERIAL"), MARK_USED_TAG}));
}

TEST(MarkUsedWallData, referredWall_isMarked) {
  std::vector<VelBoundaryCond> conditions(2);
  conditions[1].idNames[VelBoundaryCond::I_WALLDATA] = "West";
  EXPECT_EQ(mark_used_wd(conditions, namedList<VelWallData>({"East", "West"})), (UsedFlags{false, true}));
}

TEST(MarkUsedWallData, missingWall_fails) {
  std::vector<VelBoundaryCond> conditions{named<VelBoundaryCond>("rain")};
  conditions[0].idNames[VelBoundaryCond::I_WALLDATA] = "West";
  EXPECT_EQ(thrownBy([&] { mark_used_wd(conditions, {}); }),
            (Thrown{"Wall data with id name 'West' referred from boundary condition 'rain' does not exist!",
                    "[mark_used_wd]"}));
}

TEST(MarkUsedClimate, referencesOfBoundaryConditions_areMarked) {
  std::vector<VelBoundaryCond> conditions(1);
  conditions[0].climateNames[VelClimateCond::C_TEMPER] = "T";
  conditions[0].climateNames[VelClimateCond::C_PERCENTAGE] = "P";
  EXPECT_EQ(mark_used_cc(conditions, namedList<VelClimateCond>({"P", "Q", "T"})),
            (UsedFlags{true, false, true}));
}

TEST(MarkUsedClimate, missingReferenceOfABoundaryCondition_fails) {
  std::vector<VelBoundaryCond> conditions{named<VelBoundaryCond>("heat")};
  conditions[0].climateNames[VelClimateCond::C_TEMPER] = "T";
  EXPECT_EQ(
      thrownBy([&] { mark_used_cc(conditions, {}); }),
      (Thrown{"Climate condition with id name 'T' referred from boundary condition 'heat' does not exist!",
              "[mark_used_cc]"}));
}

TEST(MarkUsedClimate, missingReferenceOfAFieldCondition_fails) {
  std::vector<VelFieldCond> conditions{named<VelFieldCond>("leak")};
  conditions[0].climateNames[VelClimateCond::C_WATSOURCE] = "W";
  EXPECT_EQ(thrownBy([&] { mark_used_cc(conditions, {}); }),
            (Thrown{"Climate condition with id name 'W' referred from field condition 'leak' does not exist!",
                    "[mark_used_cc]"}));
}

TEST(MarkUsedClimate, referencesOfALeakageModel_areMarked) {
  std::vector<VelFieldCond> conditions(1);
  conditions[0].wtaModel.emplace();
  conditions[0].wtaModel->climateNames = {"Ti", "", "RH"};
  EXPECT_EQ(mark_used_cc(conditions, namedList<VelClimateCond>({"Ti", "To", "RH"})),
            (UsedFlags{true, false, true}));
}

TEST(RemoveUnused, keepsTheFlaggedInOrderAndTellsThemSo) {
  auto conditions = namedList<VelBoundaryCond>({"a", "b", "c"});
  removeUnused(conditions, {true, false, true});
  ASSERT_EQ(conditions.size(), 2u);
  EXPECT_EQ(conditions[0].name, "a");
  EXPECT_EQ(conditions[1].name, "c");
  EXPECT_TRUE(conditions[1].used);
}

TEST(MarkUsed, manyNames_areFoundInLinearTime) {
  // pairwise comparison of 200,000 names would take minutes
  std::vector<std::string> names;
  for (int k = 0; k < 200000; ++k) names.push_back("condition " + std::to_string(k));
  const auto objects = namedList<VelInitialCond>(names);
  const VelAssignments assignments = assigned(VelSelection::A_INITIALCOND, names);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(mark_used(assignments, objects), UsedFlags(names.size(), true));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}
