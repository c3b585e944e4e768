#include "project/VelSelection.h"

#include <gtest/gtest.h>

#include "support/MessageCapture.h"
#include "support/Thrown.h"

using TKL::Thrown;
using TKL::thrownBy;
using VELMORA::SectionText;
using VELMORA::VelSelection;

namespace {

VelSelection selectionFrom(const std::string& text) {
  VelSelection selection;
  selection.read(SectionText(text));
  return selection;
}

}  // namespace

TEST(VelSelection, block_isReadWhole) {
  const VelSelection selection = selectionFrom(
      "TYPE = BOUNDARYCOND\nRANGE = 1 2 3 4\nNAME = West wind\nCONDITION_TYPE = any text\nLOCATION = LEFT");
  EXPECT_EQ(selection.kind, VelSelection::A_BOUNDARYCOND);
  EXPECT_EQ(selection.range.left, 1);
  EXPECT_EQ(selection.range.top, 2);
  EXPECT_EQ(selection.range.right, 3);
  EXPECT_EQ(selection.range.bottom, 4);
  EXPECT_EQ(selection.name, "West wind");
  EXPECT_EQ(selection.conditionType, "any text");
  EXPECT_EQ(selection.location.to_ulong(), 1ul << VelSelection::L_LEFT);
}

TEST(VelSelection, everyType_hasItsIndex) {
  const std::vector<std::string> types = {"MATERIAL",    "BOUNDARYCOND", "INITIALCOND", "FIELDCOND",
                                          "CONTACTCOND", "FIELDOUTPUT",  "FLUXOUTPUT",  "Interface"};
  ASSERT_EQ(types.size(), static_cast<std::size_t>(VelSelection::NUM_A));
  for (std::size_t k = 0; k < types.size(); ++k) {
    EXPECT_EQ(selectionFrom("TYPE = " + types[k]).kind, static_cast<int>(k)) << types[k];
  }
}

TEST(VelSelection, everyLocation_hasItsBit) {
  const std::vector<std::string> locations = {"ELEMENT", "LEFT", "RIGHT", "TOP", "BOTTOM"};
  for (std::size_t k = 0; k < locations.size(); ++k) {
    EXPECT_EQ(selectionFrom("LOCATION = " + locations[k]).location.to_ulong(), 1ul << k) << locations[k];
  }
}

TEST(VelSelection, oldWordOutput_meansFieldOutput) {
  EXPECT_EQ(selectionFrom("TYPE = OUTPUT").kind, VelSelection::A_FIELDOUTPUT);
}

TEST(VelSelection, unknownType_fails) {
  EXPECT_EQ(
      thrownBy([] { selectionFrom("TYPE = PAINT"); }),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelSelection::assignment_t' and "
              "keyword 'PAINT'.",
              "[KeywordList::Enumeration]"}));
}

TEST(VelSelection, locationWords_addUp) {
  const VelSelection selection = selectionFrom("LOCATION = LEFT \t TOP\nLOCATION = ELEMENT");
  EXPECT_TRUE(selection.location.test(VelSelection::L_LEFT));
  EXPECT_TRUE(selection.location.test(VelSelection::L_TOP));
  EXPECT_TRUE(selection.location.test(VelSelection::L_ELEMENT));
  EXPECT_EQ(selection.location.count(), 3u);
}

TEST(VelSelection, unknownLocation_fails) {
  EXPECT_EQ(thrownBy([] { selectionFrom("LOCATION = LEFT BEHIND"); }),
            (Thrown{"Cannot determine enumeration value for enumeration type 'VelSelection::location_t' and "
                    "keyword 'BEHIND'.",
                    "[KeywordList::Enumeration]"}));
}

TEST(VelSelection, rangeOfThreeNumbers_fails) {
  EXPECT_EQ(thrownBy([] { selectionFrom("RANGE = 0 0 4"); }),
            (Thrown{"Error reading selection range from string '0 0 4'!", "[VelSelection::read]"}));
}

TEST(VelSelection, rangeBeyondThirtyTwoBits_fails) {
  EXPECT_EQ(
      thrownBy([] { selectionFrom("RANGE = 0 0 4 99999999999"); }),
      (Thrown{"Error reading selection range from string '0 0 4 99999999999'!", "[VelSelection::read]"}));
}

TEST(VelSelection, rangeOfFiveNumbers_ignoresTheLast) {
  EXPECT_EQ(selectionFrom("RANGE = 0 1 2 3 4").range.bottom, 3);
}

TEST(VelSelection, unknownKeyword_isWarnedAboutAndSkipped) {
  TKL::MessageCapture capture;
  EXPECT_EQ(selectionFrom("COLOUR = red\nNAME = x").name, "x");
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'COLOUR' in this section!", TKL::MSG_WARNING,
                          "[VelSelection::read]", 3));
}

TEST(VelSelection, nameVoid_isAVoidForMaterialsOnly) {
  EXPECT_TRUE(selectionFrom("TYPE = MATERIAL\nNAME = VOID").isVoid());
  EXPECT_FALSE(selectionFrom("TYPE = FIELDCOND\nNAME = VOID").isVoid());
  EXPECT_FALSE(selectionFrom("TYPE = MATERIAL\nNAME = void").isVoid());
}

TEST(VelSelection, onlyOutputs_areOutputs) {
  EXPECT_TRUE(selectionFrom("TYPE = FIELDOUTPUT").isOutput());
  EXPECT_TRUE(selectionFrom("TYPE = FLUXOUTPUT").isOutput());
  EXPECT_FALSE(selectionFrom("TYPE = FIELDCOND").isOutput());
}
