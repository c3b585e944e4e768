#include "project/AssignElements.h"

#include <gtest/gtest.h>

#include "project/ElementGrid.h"
#include "project/GridBuilder.h"
#include "support/Thrown.h"

using namespace VELMORA;

namespace {

/// Three cells in a row, the first one of 1 m3, the others of 2 and 4 m3.
struct Row {
  explicit Row(std::vector<VelSelection> selections) {
    assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "Brick", {0, 0, 2, 0}));
    for (VelSelection& selection : selections) assignments.selections.push_back(std::move(selection));
    selectUsedCells(assignments, indexMatrix);
    numberElements(indexMatrix, elements);
    setElementGeometry(makeDisc({1, 2, 4}, {1}), indexMatrix, elements);
  }

  VelAssignments assignments;
  IndexMatrix indexMatrix{3, 1};
  std::vector<Element> elements;
};

template <class Call>
std::string standardError(Call call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing thrown";
}

VelSelection select(VelSelection::assignment_t kind, const std::string& name, int left, int right) {
  return makeSelection(kind, name, {left, 0, right, 0});
}

}  // namespace

TEST(AssignMaterials, laterAssignment_overrides) {
  Row row({select(VelSelection::A_MATERIAL, "Wool", 1, 1)});
  const std::vector<MaterialDescription> materials{makeMaterial("Wool"), makeMaterial("Brick")};
  assignMaterials(row.assignments, materials, row.indexMatrix, row.elements);
  EXPECT_EQ(row.elements[0].material, &materials[1].material);
  EXPECT_EQ(row.elements[1].material, &materials[0].material);
  EXPECT_EQ(row.elements[2].material, &materials[1].material);
}

TEST(AssignMaterials, materialBehindAVoid_isAssigned) {
  Row row({select(VelSelection::A_MATERIAL, "VOID", 0, 2), select(VelSelection::A_MATERIAL, "Brick", 1, 2)});
  const std::vector<MaterialDescription> materials{makeMaterial("Brick")};
  assignMaterials(row.assignments, materials, row.indexMatrix, row.elements);
  ASSERT_EQ(row.elements.size(), 2u);
  EXPECT_EQ(row.elements[0].material, &materials[0].material);
}

TEST(AssignMaterials, voidOverUsedCells_takesTheMaterialAway) {
  Row row({});
  row.assignments.selections.push_back(select(VelSelection::A_MATERIAL, "VOID", 2, 2));
  assignMaterials(row.assignments, {makeMaterial("Brick")}, row.indexMatrix, row.elements);
  EXPECT_EQ(row.elements[2].material, nullptr);
}

TEST(AssignMaterials, missingMaterial_fails) {
  Row row({});
  EXPECT_EQ(standardError([&] { assignMaterials(row.assignments, {}, row.indexMatrix, row.elements); }),
            "Material 'Brick' is not defined!");
}

TEST(AssignInitialConds, sameCondition_mayStandTwice) {
  Row row({select(VelSelection::A_INITIALCOND, "a", 0, 1), select(VelSelection::A_INITIALCOND, "a", 1, 1)});
  std::vector<VelInitialCond> conditions{named<VelInitialCond>("a")};
  assignInitialConds(row.assignments, conditions, row.indexMatrix, row.elements);
  EXPECT_EQ(row.elements[0].initialConds.size(), 1u);
  EXPECT_EQ(row.elements[1].initialConds, (std::vector<VelInitialCond*>{&conditions[0], &conditions[0]}));
  EXPECT_TRUE(row.elements[2].initialConds.empty());
}

TEST(AssignInitialConds, missingCondition_fails) {
  Row row({select(VelSelection::A_INITIALCOND, "a", 0, 1)});
  std::vector<VelInitialCond> none;
  EXPECT_EQ(standardError([&] { assignInitialConds(row.assignments, none, row.indexMatrix, row.elements); }),
            "Initial condition 'a' is not defined!");
}

TEST(AssignFieldConds, condition_collectsItsElementsAndTheirVolume) {
  Row row({select(VelSelection::A_FIELDCOND, "a", 1, 2)});
  std::vector<VelFieldCond> conditions{named<VelFieldCond>("a")};
  assignFieldConds(row.assignments, conditions, row.indexMatrix, row.elements);
  EXPECT_EQ(conditions[0].elements, (std::vector<int>{1, 2}));
  EXPECT_DOUBLE_EQ(conditions[0].volume, 6.0);
  EXPECT_EQ(row.elements[1].fieldConds, std::vector<VelFieldCond*>{&conditions[0]});
  EXPECT_TRUE(row.elements[0].fieldConds.empty());
}

TEST(AssignFieldConds, voids_areLeftOut) {
  Row row({select(VelSelection::A_MATERIAL, "VOID", 1, 1), select(VelSelection::A_FIELDCOND, "a", 0, 2)});
  std::vector<VelFieldCond> conditions{named<VelFieldCond>("a")};
  assignFieldConds(row.assignments, conditions, row.indexMatrix, row.elements);
  EXPECT_EQ(conditions[0].elements, (std::vector<int>{0, 1}));
  EXPECT_DOUBLE_EQ(conditions[0].volume, 5.0);
}

TEST(AssignFieldConds, conditionsWithAModel_keepTheirRectangles) {
  for (const VelFieldCond::condition_t type :
       {VelFieldCond::C_GAS_CONVECTION, VelFieldCond::C_CONVECTIVE_SOURCE,
        VelFieldCond::C_AMBIENTRADIATION}) {
    Row row({select(VelSelection::A_FIELDCOND, "a", 0, 1), select(VelSelection::A_FIELDCOND, "a", 2, 2)});
    std::vector<VelFieldCond> conditions{named<VelFieldCond>("a")};
    conditions[0].condition = type;
    assignFieldConds(row.assignments, conditions, row.indexMatrix, row.elements);
    ASSERT_EQ(conditions[0].modelRanges.size(), 2u);
    EXPECT_EQ(conditions[0].modelRanges[0].right, 1);
    EXPECT_EQ(conditions[0].modelRanges[1].left, 2);
  }
}

TEST(AssignFieldConds, conditionWithoutAModel_keepsNoRectangle) {
  Row row({select(VelSelection::A_FIELDCOND, "a", 0, 1)});
  std::vector<VelFieldCond> conditions{named<VelFieldCond>("a")};
  conditions[0].condition = VelFieldCond::C_AIRCHANGE;
  assignFieldConds(row.assignments, conditions, row.indexMatrix, row.elements);
  EXPECT_TRUE(conditions[0].modelRanges.empty());
}

TEST(AssignFieldConds, missingCondition_fails) {
  Row row({select(VelSelection::A_FIELDCOND, "a", 0, 1)});
  std::vector<VelFieldCond> none;
  EXPECT_EQ(standardError([&] { assignFieldConds(row.assignments, none, row.indexMatrix, row.elements); }),
            "Field condition 'a' is not defined!");
}

TEST(AssignFieldConds, longWaveRadiation_linksTheFacesOfItsGap) {
  Row row({select(VelSelection::A_MATERIAL, "Air", 1, 1), select(VelSelection::A_FIELDCOND, "a", 0, 2)});
  const std::vector<MaterialDescription> materials{makeMaterial("Brick"), makeMaterial("Air", true)};
  std::vector<VelFieldCond> conditions{named<VelFieldCond>("a")};
  conditions[0].condition = VelFieldCond::C_LW_RADIATION;
  conditions[0].flags.set(VelFieldCond::F_LW_RADIATION_X);
  assignMaterials(row.assignments, materials, row.indexMatrix, row.elements);
  assignFieldConds(row.assignments, conditions, row.indexMatrix, row.elements);
  EXPECT_EQ(row.elements[0].lwPartnerRight, 2);
  EXPECT_EQ(row.elements[0].fieldConds.size(), 1u);
}
