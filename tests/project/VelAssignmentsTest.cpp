#include "project/VelAssignments.h"

#include <gtest/gtest.h>

#include "foundation/Exception.h"
#include "support/Thrown.h"

using TKL::Thrown;
using TKL::thrownBy;
using VELMORA::check_ranges;
using VELMORA::SectionText;
using VELMORA::VelAssignments;

namespace {

VelAssignments assignmentsFrom(const std::string& text) {
  VelAssignments assignments;
  assignments.read(SectionText(text));
  return assignments;
}

Thrown thrownForRange(const std::string& range, int nx = 5, int ny = 3) {
  const VelAssignments assignments = assignmentsFrom("SELECTION\nRANGE = " + range);
  return thrownBy([&] { check_ranges(nx, ny, assignments); });
}

}  // namespace

TEST(VelAssignments, selections_keepTheirOrder) {
  const VelAssignments assignments =
      assignmentsFrom("[SELECTION]\nNAME = first\n\nSELECTION\nNAME = second\nSELECTION=\nNAME = third");
  ASSERT_EQ(assignments.selections.size(), 3u);
  EXPECT_EQ(assignments.selections[0].name, "first");
  EXPECT_EQ(assignments.selections[1].name, "second");
  EXPECT_EQ(assignments.selections[2].name, "third");
}

TEST(VelAssignments, rooms_areNotSetByTheReader) {
  const VelAssignments assignments = assignmentsFrom("SELECTION\nNAME = x");
  EXPECT_EQ(assignments.roomLeft, nullptr);
  EXPECT_EQ(assignments.roomRight, nullptr);
}

TEST(VelAssignments, lineBeforeTheFirstSelection_fails) {
  EXPECT_EQ(thrownBy([] { assignmentsFrom("NAME = x\nSELECTION"); }),
            (Thrown{"Expected keyword, got 'NAME = x'!", "[VelAssignments::read]"}));
}

TEST(VelAssignments, bracketsAroundAValue_stay) {
  EXPECT_EQ(assignmentsFrom("SELECTION\nNAME = [a]").selections.at(0).name, "[a]");
}

TEST(VelAssignments, failureInABlock_knowsItsLine) {
  try {
    assignmentsFrom("SELECTION\nNAME = x\nSELECTION\nRANGE = 1");
    FAIL() << "the range cannot be read";
  } catch (const TKL::Exception& error) {
    EXPECT_EQ(error.inputLine(), 4);
  }
}

TEST(CheckRanges, rangeThatFillsTheGrid_passes) {
  EXPECT_EQ(thrownForRange("0 0 4 2"), (Thrown{"nothing thrown", ""}));
}

TEST(CheckRanges, rightBeyondTheGrid_fails) {
  EXPECT_EQ(thrownForRange("0 0 5 2"),
            (Thrown{"Invalid range in assignment, range was: 0 0 5 2!", "[check_ranges]"}));
}

TEST(CheckRanges, bottomBeyondTheGrid_fails) {
  EXPECT_EQ(thrownForRange("0 0 4 3"),
            (Thrown{"Invalid range in assignment, range was: 0 0 4 3!", "[check_ranges]"}));
}

TEST(CheckRanges, rightLeftOfLeft_fails) {
  EXPECT_EQ(thrownForRange("3 0 1 2"),
            (Thrown{"Invalid range in assignment, range was: 3 0 1 2!", "[check_ranges]"}));
}

TEST(CheckRanges, bottomAboveTop_fails) {
  EXPECT_EQ(thrownForRange("0 2 1 1"),
            (Thrown{"Invalid range in assignment, range was: 0 2 1 1!", "[check_ranges]"}));
}

TEST(CheckRanges, negativeStart_passes) {
  EXPECT_EQ(thrownForRange("-2 -1 4 2"), (Thrown{"nothing thrown", ""}));
}

TEST(CheckRanges, firstBadRange_isNamed) {
  const VelAssignments assignments =
      assignmentsFrom("SELECTION\nRANGE = 0 0 1 1\nSELECTION\nRANGE = 0 0 9 1\nSELECTION\nRANGE = 0 0 8 1");
  EXPECT_EQ(thrownBy([&] { check_ranges(5, 3, assignments); }).text,
            "Invalid range in assignment, range was: 0 0 9 1!");
}

TEST(CheckRanges, selectionWithoutRange_fails) {
  const VelAssignments assignments = assignmentsFrom("SELECTION\nNAME = x");
  EXPECT_EQ(thrownBy([&] { check_ranges(5, 3, assignments); }).text,
            "Invalid range in assignment, range was: 0 0 -1 -1!");
}
