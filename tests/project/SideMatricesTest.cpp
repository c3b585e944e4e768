#include "project/SideMatrices.h"

#include <gtest/gtest.h>

#include "project/ElementGrid.h"
#include "project/GridBuilder.h"
#include "project/VelBoundaryCond.h"
#include "project/VelContactCond.h"
#include "support/Thrown.h"

using namespace VELMORA;
using TKL::Thrown;
using TKL::thrownBy;

namespace {

constexpr double FULL_CIRCLE = 3.14159265359;

struct Sides {
  IndexMatrix indexMatrix;
  std::vector<Element> elements;
  SideMatrices matrices;
};

/// Sides of a grid that is filled but for the cell (`voidColumn`, `voidRow`).
Sides sidesOf(const VelDisc& disc, int voidColumn = -1, int voidRow = -1) {
  const int nx = static_cast<int>(disc.dx.data.size());
  const int ny = static_cast<int>(disc.dy.data.size());
  Sides sides{IndexMatrix(nx, ny), {}, SideMatrices(nx, ny)};
  for (int j = 0; j < ny; ++j) {
    for (int i = 0; i < nx; ++i) sides.indexMatrix.set(i, j, i == voidColumn && j == voidRow ? -1 : 1);
  }
  numberElements(sides.indexMatrix, sides.elements);
  setElementGeometry(disc, sides.indexMatrix, sides.elements);
  setHorizontalSides(disc, sides.indexMatrix, sides.elements, sides.matrices);
  setVerticalSides(disc, sides.indexMatrix, sides.elements, sides.matrices);
  return sides;
}

const Element* elementAt(const Sides& sides, int i, int j) {
  return &sides.elements[static_cast<std::size_t>(sides.indexMatrix.at(i, j))];
}

VelAssignments assignedTo(VelSelection::assignment_t kind, VelSelection::Range range,
                          std::vector<VelSelection::location_t> locations) {
  VelAssignments assignments;
  assignments.selections.push_back(makeSelection(kind, "c", range, std::move(locations)));
  return assignments;
}

/// The sides with a boundary condition, as "h" or "v" and column,row.
std::string placesOf(const VelAssignments& assignments) {
  SideMatrices sides(3, 3);
  std::vector<VelBoundaryCond> conditions{named<VelBoundaryCond>("c")};
  assign_bc(assignments, conditions, sides);
  std::string places;
  const auto place = [&](const Side* side, char letter, int i, int j) {
    for (const VelBoundaryCond* condition : side->boundaryConds) {
      EXPECT_EQ(condition, &conditions[0]);
      places += std::string(1, letter) + std::to_string(i) + "," + std::to_string(j) + " ";
    }
  };
  for (int j = 0; j <= 3; ++j) {
    for (int i = 0; i < 3; ++i) place(sides.horizontalAt(i, j), 'h', i, j);
  }
  for (int j = 0; j < 3; ++j) {
    for (int i = 0; i <= 3; ++i) place(sides.verticalAt(i, j), 'v', i, j);
  }
  return places;
}

std::string boundaryPlaces(VelSelection::Range range, std::vector<VelSelection::location_t> locations) {
  return placesOf(assignedTo(VelSelection::A_BOUNDARYCOND, range, std::move(locations)));
}

}  // namespace

TEST(SideMatrices, sidesOutsideTheGrid_areNull) {
  SideMatrices sides(2, 3);
  EXPECT_EQ(sides.horizontal.size(), 8u);
  EXPECT_EQ(sides.vertical.size(), 9u);
  EXPECT_EQ(sides.horizontalAt(-1, 0), nullptr);
  EXPECT_EQ(sides.horizontalAt(2, 0), nullptr);
  EXPECT_EQ(sides.horizontalAt(0, 4), nullptr);
  EXPECT_EQ(sides.verticalAt(3, 0), nullptr);
  EXPECT_EQ(sides.verticalAt(0, 3), nullptr);
  EXPECT_EQ(sides.horizontalAt(1, 3), &sides.horizontal[7]);
  EXPECT_EQ(sides.verticalAt(2, 2), &sides.vertical[8]);
}

TEST(HorizontalSides, leftIsAboveAndRightIsBelow) {
  Sides sides = sidesOf(makeDisc({1, 1}, {1, 1}));
  const Side& side = *sides.matrices.horizontalAt(1, 1);
  EXPECT_TRUE(side.horizontal);
  EXPECT_EQ(side.i, 1);
  EXPECT_EQ(side.j, 1);
  EXPECT_EQ(side.elementLeft, elementAt(sides, 1, 0));
  EXPECT_EQ(side.elementRight, elementAt(sides, 1, 1));
}

TEST(HorizontalSides, centre_isOverAllColumnsAndFromTheBottom) {
  Sides sides = sidesOf(makeDisc({2, 4}, {1, 3}));
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(1, 0)->x, 4.0);
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(1, 0)->y, 4.0);
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(1, 1)->y, 3.0);
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(1, 2)->y, 0.0);
}

TEST(HorizontalSides, innerSide_hasSharesOfTheHeights) {
  Sides sides = sidesOf(makeDisc({1, 1}, {1, 3}));
  const Side& side = *sides.matrices.horizontalAt(0, 1);
  EXPECT_DOUBLE_EQ(side.weightLeft, 0.25);
  EXPECT_DOUBLE_EQ(side.weightRight, 0.75);
  EXPECT_DOUBLE_EQ(side.invDistance, 2.0 / 4.0);
}

TEST(HorizontalSides, outerSide_hasTheInverseOfTheWholeHeight) {
  Sides sides = sidesOf(makeDisc({1, 1}, {1, 4}));
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(0, 0)->invDistance, 1.0);
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(0, 2)->invDistance, 0.25);
  EXPECT_EQ(sides.matrices.horizontalAt(0, 0)->elementLeft, nullptr);
  EXPECT_EQ(sides.matrices.horizontalAt(0, 2)->elementRight, nullptr);
}

TEST(HorizontalSides, planeArea_isWidthTimesThickness) {
  VelDisc disc = makeDisc({2, 4}, {1, 1});
  disc.dz.data = {0.5};
  Sides sides = sidesOf(disc);
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(1, 1)->area, 2.0);
}

TEST(HorizontalSides, rotationArea_isARing) {
  Sides sides = sidesOf(makeDisc({2, 1}, {1, 1}, VelDisc::G_RSYM));
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(0, 1)->area, 4.0 * FULL_CIRCLE);
  EXPECT_DOUBLE_EQ(sides.matrices.horizontalAt(1, 1)->area, 5.0 * FULL_CIRCLE);
}

TEST(VerticalSides, neighbours_areLeftAndRight) {
  Sides sides = sidesOf(makeDisc({1, 1}, {1, 1}));
  const Side& side = *sides.matrices.verticalAt(1, 1);
  EXPECT_FALSE(side.horizontal);
  EXPECT_EQ(side.i, 1);
  EXPECT_EQ(side.j, 1);
  EXPECT_EQ(side.elementLeft, elementAt(sides, 0, 1));
  EXPECT_EQ(side.elementRight, elementAt(sides, 1, 1));
}

TEST(VerticalSides, geometry) {
  Sides sides = sidesOf(makeDisc({1, 3}, {2, 4}));
  const Side& side = *sides.matrices.verticalAt(1, 0);
  EXPECT_DOUBLE_EQ(side.x, 1.0);
  EXPECT_DOUBLE_EQ(side.y, 5.0);
  EXPECT_DOUBLE_EQ(side.weightLeft, 0.25);
  EXPECT_DOUBLE_EQ(side.weightRight, 0.75);
  EXPECT_DOUBLE_EQ(side.invDistance, 0.5);
  EXPECT_DOUBLE_EQ(side.area, 2.0);
}

TEST(VerticalSides, rotationArea_isACylinder) {
  Sides sides = sidesOf(makeDisc({2, 1}, {3, 1}, VelDisc::G_RSYM));
  EXPECT_DOUBLE_EQ(sides.matrices.verticalAt(1, 0)->area, 2.0 * 2.0 * 3.0 * FULL_CIRCLE);
}

TEST(VerticalSides, atTheAxis_haveNoAreaButADistance) {
  Sides sides = sidesOf(makeDisc({2, 1}, {3, 1}, VelDisc::G_RSYM));
  EXPECT_EQ(sides.matrices.verticalAt(0, 0)->area, 0.0);
  EXPECT_DOUBLE_EQ(sides.matrices.verticalAt(0, 0)->invDistance, 0.5);
}

TEST(VerticalSides, positions_areNotShiftedByAVoid) {
  Sides sides = sidesOf(makeDisc({1, 10, 4}, {1}), 1, 0);
  EXPECT_DOUBLE_EQ(sides.matrices.verticalAt(2, 0)->x, 11.0);
  EXPECT_DOUBLE_EQ(elementAt(sides, 2, 0)->x, 3.0);
}

TEST(VerticalSides, besideAVoid_areOuterSides) {
  Sides sides = sidesOf(makeDisc({1, 10, 4}, {1}), 1, 0);
  EXPECT_EQ(sides.matrices.verticalAt(1, 0)->elementRight, nullptr);
  EXPECT_EQ(sides.matrices.verticalAt(2, 0)->elementLeft, nullptr);
  EXPECT_DOUBLE_EQ(sides.matrices.verticalAt(2, 0)->invDistance, 0.25);
}

TEST(Sides, betweenElementsWithoutWidth_fail) {
  const VelDisc disc = makeDisc({1, 1}, {1, 1});
  const auto thrownWithout = [&](double Element::*width, auto setSides) {
    Sides sides = sidesOf(disc);
    for (Element& element : sides.elements) element.*width = 0.0;
    return thrownBy([&] { setSides(disc, sides.indexMatrix, sides.elements, sides.matrices); });
  };
  const Thrown expected{"Invalid element dimensions would cause division by 0!",
                        "[VelProject::setup_calculation]"};
  EXPECT_EQ(thrownWithout(&Element::dy, setHorizontalSides), expected);
  EXPECT_EQ(thrownWithout(&Element::dx, setVerticalSides), expected);
}

TEST(AssignBc, top_isTheSidesAboveTheFirstRow) {
  EXPECT_EQ(boundaryPlaces({0, 1, 1, 2}, {VelSelection::L_TOP}), "h0,1 h1,1 ");
}

TEST(AssignBc, bottom_isTheSidesBelowTheLastRow) {
  EXPECT_EQ(boundaryPlaces({0, 1, 1, 2}, {VelSelection::L_BOTTOM}), "h0,3 h1,3 ");
}

TEST(AssignBc, left_isTheSidesLeftOfTheFirstColumn) {
  EXPECT_EQ(boundaryPlaces({1, 1, 2, 2}, {VelSelection::L_LEFT}), "v1,1 v1,2 ");
}

TEST(AssignBc, right_isTheSidesRightOfTheLastColumn) {
  EXPECT_EQ(boundaryPlaces({1, 1, 2, 2}, {VelSelection::L_RIGHT}), "v3,1 v3,2 ");
}

TEST(AssignBc, leftAndRight_areTwoSidesOfEachRow) {
  EXPECT_EQ(boundaryPlaces({0, 0, 2, 1}, {VelSelection::L_LEFT, VelSelection::L_RIGHT}),
            "v0,0 v3,0 v0,1 v3,1 ");
}

TEST(AssignBc, elementOrNoLocation_isNoSide) {
  EXPECT_EQ(boundaryPlaces({0, 0, 2, 2}, {VelSelection::L_ELEMENT}), "");
  EXPECT_EQ(boundaryPlaces({0, 0, 2, 2}, {}), "");
}

TEST(AssignBc, cellsOutsideTheGrid_areSkipped) {
  EXPECT_EQ(boundaryPlaces({-2000000000, 0, 0, 0}, {VelSelection::L_TOP, VelSelection::L_LEFT}), "h0,0 ");
  EXPECT_EQ(boundaryPlaces({0, -3, 0, 0}, {VelSelection::L_TOP, VelSelection::L_LEFT}), "v0,0 ");
}

TEST(AssignBc, sameConditionTwice_hangsTwice) {
  VelAssignments assignments = assignedTo(VelSelection::A_BOUNDARYCOND, {0, 0, 0, 0}, {VelSelection::L_TOP});
  assignments.selections.push_back(assignments.selections[0]);
  EXPECT_EQ(placesOf(assignments), "h0,0 h0,0 ");
}

TEST(AssignBc, missingCondition_fails) {
  SideMatrices sides(1, 1);
  std::vector<VelBoundaryCond> none;
  EXPECT_EQ(thrownBy([&] {
              assign_bc(assignedTo(VelSelection::A_BOUNDARYCOND, {0, 0, 0, 0}, {}), none, sides);
            }),
            (Thrown{"Boundary condition 'c' is not defined!", "[assign_bc]"}));
}

TEST(AssignKc, contactCondition_hangsOnItsSides) {
  SideMatrices sides(2, 1);
  std::vector<VelContactCond> conditions{named<VelContactCond>("c")};
  assign_kc(assignedTo(VelSelection::A_CONTACTCOND, {0, 0, 0, 0}, {VelSelection::L_RIGHT}), conditions,
            sides);
  EXPECT_EQ(sides.verticalAt(1, 0)->contactConds, std::vector<VelContactCond*>{&conditions[0]});
  EXPECT_TRUE(sides.verticalAt(0, 0)->contactConds.empty());
  EXPECT_TRUE(sides.verticalAt(1, 0)->boundaryConds.empty());
}

TEST(AssignKc, missingCondition_fails) {
  SideMatrices sides(1, 1);
  std::vector<VelContactCond> none;
  EXPECT_EQ(thrownBy([&] {
              assign_kc(assignedTo(VelSelection::A_CONTACTCOND, {0, 0, 0, 0}, {}), none, sides);
            }),
            (Thrown{"Contact condition 'c' is not defined!", "[assign_kc]  "}));
}
