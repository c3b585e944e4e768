#include "project/VelOutputFile.h"

#include <gtest/gtest.h>

#include "project/GridBuilder.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

using namespace VELMORA;
using TKL::Thrown;
using TKL::thrownBy;

namespace {

/// Two by two cells, numbered column by column; the inner sides and the left ones of the first column exist.
struct Fixture {
  Fixture() : elements(4), sides(6), indexMatrix(2, 2) {
    for (int k = 0; k < 4; ++k) {
      elements[static_cast<std::size_t>(k)].number = k;
      indexMatrix.set(k / 2, k % 2, k);
    }
    for (int k = 0; k < 6; ++k) sides[static_cast<std::size_t>(k)].number = k;
    elements[0].sideLeft = &sides[0];
    elements[1].sideLeft = &sides[1];
    elements[0].sideRight = elements[2].sideLeft = &sides[2];
    elements[1].sideRight = elements[3].sideLeft = &sides[3];
    elements[0].sideBottom = elements[1].sideTop = &sides[4];
    elements[2].sideBottom = elements[3].sideTop = &sides[5];
    file.name = "out";
    file.format = &format;
  }

  void select(VelSelection::assignment_t kind, VelSelection::Range range,
              std::vector<VelSelection::location_t> locations = {}, const std::string& name = "out") {
    assignments.selections.push_back(makeSelection(kind, name, range, std::move(locations)));
  }

  std::vector<int> elementNumbers() {
    file.assignRanges(elements, indexMatrix, assignments);
    std::vector<int> numbers;
    for (const Element* element : file.elements) numbers.push_back(element->number);
    return numbers;
  }

  std::vector<int> sideNumbers() {
    file.assignRanges(elements, indexMatrix, assignments);
    std::vector<int> numbers;
    for (const Side* side : file.sides) numbers.push_back(side->number);
    return numbers;
  }

  std::vector<Element> elements;
  std::vector<Side> sides;
  IndexMatrix indexMatrix;
  VelAssignments assignments;
  VelOutputFormat format;
  VelOutputFile file;
};

}  // namespace

TEST(OutputRanges, fieldFile_holdsItsElementsByNumberAndOnce) {
  Fixture fixture;
  fixture.format.type = VelOutputFormat::T_FIELD;
  fixture.select(VelSelection::A_FIELDOUTPUT, {1, 0, 1, 1});
  fixture.select(VelSelection::A_FIELDOUTPUT, {0, 0, 1, 0});
  EXPECT_EQ(fixture.elementNumbers(), (std::vector<int>{0, 2, 3}));
  EXPECT_TRUE(fixture.file.sides.empty());
}

TEST(OutputRanges, formatDecides_notTheKindOfTheSelection) {
  Fixture fixture;
  fixture.format.type = VelOutputFormat::T_FIELD;
  fixture.select(VelSelection::A_FLUXOUTPUT, {0, 0, 0, 0}, {VelSelection::L_LEFT});
  EXPECT_EQ(fixture.elementNumbers(), std::vector<int>{0});
  fixture.format.type = VelOutputFormat::T_FLUX;
  EXPECT_EQ(fixture.sideNumbers(), std::vector<int>{0});
  EXPECT_TRUE(fixture.file.elements.empty());
}

TEST(OutputRanges, fluxFile_holdsTheChosenSidesOfEveryCell) {
  Fixture fixture;
  fixture.format.type = VelOutputFormat::T_FLUX;
  fixture.select(VelSelection::A_FLUXOUTPUT, {0, 0, 1, 1}, {VelSelection::L_LEFT});
  EXPECT_EQ(fixture.sideNumbers(), (std::vector<int>{0, 1, 2, 3}));
}

TEST(OutputRanges, everyLocation_hasItsSide) {
  const auto sidesOf = [](int i, int j, VelSelection::location_t location) {
    Fixture fixture;
    fixture.format.type = VelOutputFormat::T_FLUX;
    fixture.select(VelSelection::A_FLUXOUTPUT, {i, j, i, j}, {location});
    return fixture.sideNumbers();
  };
  EXPECT_EQ(sidesOf(0, 0, VelSelection::L_LEFT), std::vector<int>{0});
  EXPECT_EQ(sidesOf(0, 0, VelSelection::L_RIGHT), std::vector<int>{2});
  EXPECT_EQ(sidesOf(0, 0, VelSelection::L_BOTTOM), std::vector<int>{4});
  EXPECT_EQ(sidesOf(0, 1, VelSelection::L_TOP), std::vector<int>{4});
  EXPECT_EQ(sidesOf(0, 0, VelSelection::L_TOP), std::vector<int>{});
}

TEST(OutputRanges, fluxFileWithoutLocation_holdsNoSides) {
  Fixture fixture;
  fixture.format.type = VelOutputFormat::T_FLUX;
  fixture.select(VelSelection::A_FLUXOUTPUT, {0, 0, 1, 1});
  EXPECT_TRUE(fixture.sideNumbers().empty());
}

TEST(OutputRanges, selectionsOfOtherNamesAndKinds_areNotTaken) {
  Fixture fixture;
  fixture.format.type = VelOutputFormat::T_FIELD;
  fixture.select(VelSelection::A_FIELDOUTPUT, {0, 0, 1, 1}, {}, "other");
  fixture.select(VelSelection::A_FIELDCOND, {0, 0, 1, 1});
  EXPECT_TRUE(fixture.elementNumbers().empty());
}

TEST(OutputRanges, voidsAndCellsOutside_areSkipped) {
  Fixture fixture;
  fixture.format.type = VelOutputFormat::T_FIELD;
  fixture.indexMatrix.set(1, 1, -1);
  fixture.select(VelSelection::A_FIELDOUTPUT, {-2000000000, -7, 1, 1});
  EXPECT_EQ(fixture.elementNumbers(), (std::vector<int>{0, 1, 2}));
}

TEST(OutputRanges, failure_isLoggedAndSummedUp) {
  Fixture fixture;
  fixture.file.format = nullptr;
  TKL::MessageCapture capture;
  EXPECT_EQ(thrownBy([&] { fixture.elementNumbers(); }),
            (Thrown{"Error while assigning outputs!", "[VelOutputFile::assignRanges]"}));
  EXPECT_TRUE(
      capture.has("Output file 'out' has no format!", TKL::MSG_ERROR, "[VelOutputFile::assignRanges]", -1));
}

TEST(OutputRanges, numberWithoutElement_isSuchAFailure) {
  Fixture fixture;
  fixture.indexMatrix.set(0, 0, 99);
  fixture.select(VelSelection::A_FIELDOUTPUT, {0, 0, 0, 0});
  TKL::MessageCapture capture;
  EXPECT_EQ(thrownBy([&] { fixture.elementNumbers(); }).text, "Error while assigning outputs!");
  EXPECT_EQ(capture.messages.size(), 1u);
}
