#include "project/ElementGrid.h"

#include <gtest/gtest.h>

#include <numbers>

#include "project/GridBuilder.h"
#include "support/Thrown.h"

using namespace VELMORA;
using TKL::Thrown;
using TKL::thrownBy;

namespace {

const char* const TAG = "[VelProject::setup_calculation]";

VelAssignments filled(int nx, int ny) {
  VelAssignments assignments;
  assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "m", {0, 0, nx - 1, ny - 1}));
  return assignments;
}

struct Grid {
  IndexMatrix indexMatrix;
  std::vector<Element> elements;
  Numbering numbering;
};

Grid gridOf(int nx, int ny, const VelAssignments& assignments) {
  Grid grid;
  grid.indexMatrix = IndexMatrix(nx, ny);
  selectUsedCells(assignments, grid.indexMatrix);
  grid.numbering = numberElements(grid.indexMatrix, grid.elements);
  return grid;
}

Grid gridOf(const VelDisc& disc, const VelAssignments& assignments) {
  Grid grid =
      gridOf(static_cast<int>(disc.dx.data.size()), static_cast<int>(disc.dy.data.size()), assignments);
  setElementGeometry(disc, grid.indexMatrix, grid.elements);
  return grid;
}

}  // namespace

TEST(IndexMatrix, outsideTheGrid_isVoid) {
  IndexMatrix matrix(2, 2);
  matrix.set(-1, 0, 7);
  matrix.set(2, 0, 7);
  matrix.set(1, 1, 7);
  EXPECT_EQ(matrix.at(-1, 0), -1);
  EXPECT_EQ(matrix.at(2, 0), -1);
  EXPECT_EQ(matrix.at(0, 2), -1);
  EXPECT_EQ(matrix.at(1, 1), 7);
}

TEST(SelectUsedCells, laterVoid_cutsAHole) {
  VelAssignments assignments = filled(3, 3);
  assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "VOID", {1, 1, 1, 1}));
  const Grid grid = gridOf(3, 3, assignments);
  EXPECT_EQ(grid.elements.size(), 8u);
  EXPECT_EQ(grid.indexMatrix.at(1, 1), -1);
}

TEST(SelectUsedCells, materialAfterAVoid_fillsTheHole) {
  VelAssignments assignments = filled(3, 3);
  assignments.selections.insert(assignments.selections.begin(),
                                makeSelection(VelSelection::A_MATERIAL, "VOID", {1, 1, 1, 1}));
  EXPECT_EQ(gridOf(3, 3, assignments).elements.size(), 9u);
}

TEST(SelectUsedCells, negativeStart_isCutAtTheGrid) {
  VelAssignments assignments;
  assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "m", {-2000000000, -5, 0, 1}));
  EXPECT_EQ(gridOf(3, 3, assignments).elements.size(), 2u);
}

TEST(SelectUsedCells, otherKinds_selectNothing) {
  VelAssignments assignments;
  assignments.selections.push_back(makeSelection(VelSelection::A_FIELDCOND, "m", {0, 0, 2, 2}));
  EXPECT_TRUE(gridOf(3, 3, assignments).elements.empty());
}

TEST(NumberElements, wideGrid_isNumberedColumnByColumn) {
  const Grid grid = gridOf(4, 2, filled(4, 2));
  EXPECT_FALSE(grid.numbering.rowWise);
  EXPECT_EQ(grid.numbering.bandWidth, 2);
  EXPECT_EQ(grid.indexMatrix.at(0, 1), 1);
  EXPECT_EQ(grid.indexMatrix.at(1, 0), 2);
}

TEST(NumberElements, highGrid_isNumberedRowByRow) {
  const Grid grid = gridOf(2, 4, filled(2, 4));
  EXPECT_TRUE(grid.numbering.rowWise);
  EXPECT_EQ(grid.numbering.bandWidth, 2);
  EXPECT_EQ(grid.indexMatrix.at(1, 0), 1);
  EXPECT_EQ(grid.indexMatrix.at(0, 1), 2);
}

TEST(NumberElements, squareGrid_isNumberedColumnByColumn) {
  const Grid grid = gridOf(3, 3, filled(3, 3));
  EXPECT_FALSE(grid.numbering.rowWise);
  EXPECT_EQ(grid.numbering.bandWidth, 3);
}

TEST(NumberElements, spans_areThoseOfTheUsedCells) {
  VelAssignments assignments;
  assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "m", {5, 1, 6, 3}));
  const Grid grid = gridOf(20, 5, assignments);
  EXPECT_TRUE(grid.numbering.rowWise);
  EXPECT_EQ(grid.numbering.bandWidth, 2);
}

TEST(NumberElements, numbers_arePositions) {
  const Grid grid = gridOf(4, 3, filled(4, 3));
  for (std::size_t k = 0; k < grid.elements.size(); ++k) {
    const Element& element = grid.elements[k];
    EXPECT_EQ(element.number, static_cast<int>(k));
    EXPECT_EQ(grid.indexMatrix.at(element.i, element.j), element.number);
  }
}

TEST(ElementGeometry, y_countsFromTheBottomAndRowsFromTheTop) {
  const Grid grid = gridOf(makeDisc({1, 1}, {2, 4}), filled(2, 2));
  EXPECT_DOUBLE_EQ(grid.elements[static_cast<std::size_t>(grid.indexMatrix.at(0, 0))].y, 5.0);
  EXPECT_DOUBLE_EQ(grid.elements[static_cast<std::size_t>(grid.indexMatrix.at(0, 1))].y, 2.0);
}

TEST(ElementGeometry, x_isNotShiftedByAVoid) {
  VelAssignments assignments = filled(3, 1);
  assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "VOID", {1, 0, 1, 0}));
  const Grid grid = gridOf(makeDisc({1, 10, 4}, {1}), assignments);
  EXPECT_DOUBLE_EQ(grid.elements[0].x, 0.5);
  EXPECT_DOUBLE_EQ(grid.elements[1].x, 3.0);
}

TEST(ElementGeometry, planeVolume_isTheProductOfTheSizes) {
  VelDisc disc = makeDisc({2, 1}, {3});
  disc.dz.data = {0.5, 7.0};
  const Grid grid = gridOf(disc, filled(2, 1));
  EXPECT_DOUBLE_EQ(grid.elements[0].dz, 0.5);
  EXPECT_DOUBLE_EQ(grid.elements[0].volume, 3.0);
}

TEST(ElementGeometry, withoutThickness_isOneMetreThick) {
  EXPECT_DOUBLE_EQ(gridOf(makeDisc({2, 1}, {3}), filled(2, 1)).elements[0].volume, 6.0);
}

TEST(ElementGeometry, rotationVolume_isThatOfAHollowCylinder) {
  const Grid grid = gridOf(makeDisc({2, 1}, {3}, VelDisc::G_RSYM), filled(2, 1));
  EXPECT_DOUBLE_EQ(grid.elements[0].volume, 4.0 * std::numbers::pi * 3.0);
  EXPECT_DOUBLE_EQ(grid.elements[1].volume, (9.0 - 4.0) * std::numbers::pi * 3.0);
}

TEST(ElementGeometry, cellWithoutWidth_fails) {
  EXPECT_EQ(thrownBy([] {
              gridOf(makeDisc({1, 0, 1}, {1}), filled(3, 1));
            }),
            (Thrown{"Invalid dimensions for element 1,0 !", TAG}));
}

TEST(ElementGeometry, cellOfNegativeHeight_fails) {
  EXPECT_EQ(thrownBy([] {
              gridOf(makeDisc({1}, {3, -1}), filled(1, 2));
            }),
            (Thrown{"Invalid dimensions for element 0,1 !", TAG}));
}

TEST(ElementGeometry, voidWithoutWidth_passes) {
  VelAssignments assignments = filled(3, 1);
  assignments.selections.push_back(makeSelection(VelSelection::A_MATERIAL, "VOID", {1, 0, 1, 0}));
  EXPECT_EQ(gridOf(makeDisc({1, 0, 1}, {1}), assignments).elements.size(), 2u);
}

TEST(ElementGeometry, numberWithoutElement_fails) {
  IndexMatrix indexMatrix(2, 1);
  indexMatrix.set(1, 0, 1);
  std::vector<Element> elements(1);
  EXPECT_EQ(thrownBy([&] {
              setElementGeometry(makeDisc({1, 1}, {1}), indexMatrix, elements);
            }),
            (Thrown{"Error in numbering algorithm!", TAG}));
}
