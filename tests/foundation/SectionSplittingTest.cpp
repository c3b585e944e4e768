#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "foundation/StringUtilities.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

using Lines = std::vector<std::string>;

const Lines TITLES = {"MATERIAL", "MRC"};

std::vector<Lines> split(const Lines& input) {
  std::vector<Lines> sections;
  explode_sections(input, TITLES, sections, ";#");
  return sections;
}

TEST(ExplodeSections, allFormsOfATitleMatch) {
  for (const char* title :
       {"[MATERIAL]", "MATERIAL", "MATERIAL =", " \t[MATERIAL] \r", "MATERIAL=", "[MATERIAL=]"}) {
    EXPECT_EQ(split({title, "a = 1"})[0], Lines{"a = 1"}) << title;
  }
}

TEST(ExplodeSections, titleInOtherCase_isData) {
  EXPECT_EQ(split({"[MRC]", "[material]"})[1], Lines{"[material]"});
}

TEST(ExplodeSections, dataLines_areStoredUntrimmed) {
  EXPECT_EQ(split({"[MRC]", "  a = 1 \r"})[1], Lines{"  a = 1 \r"});
}

TEST(ExplodeSections, blankLines_areSkippedInsideSections) {
  EXPECT_EQ(split({"", "[MRC]", " \t\r", "a", ""})[1], Lines{"a"});
}

TEST(ExplodeSections, commentLines_areSkippedBeforeAnyTitle) {
  EXPECT_EQ(split({"; text", " # text", "[MRC]", "#[MATERIAL]", "a ; b"})[1], Lines{"a ; b"});
}

TEST(ExplodeSections, repeatedTitle_goesOnCollecting) {
  const std::vector<Lines> sections = split({"[MRC]", "a", "[MATERIAL]", "b", "[MRC]", "c"});
  EXPECT_EQ(sections[0], Lines{"b"});
  EXPECT_EQ(sections[1], (Lines{"a", "c"}));
}

TEST(ExplodeSections, output_isResizedAndEmptied) {
  std::vector<Lines> sections(5, Lines{"old"});
  explode_sections(Lines{}, TITLES, sections, ";");
  EXPECT_EQ(sections, std::vector<Lines>(2));
}

TEST(ExplodeSections, lineBeforeTitle_fails) {
  EXPECT_EQ(
      thrownBy([] {
        split({"", " x = 1"});
      }),
      (Thrown{"Expected section header in first non-empty line:\n' x = 1'", "[TKL::explode_sections]"}));
}

TEST(ExplodeSections, stream_givesLinesClosedByLineFeeds) {
  std::istringstream input("[MRC]\r\n a\n\n[MATERIAL]\nb");
  std::vector<std::string> sections;
  explode_sections(input, TITLES, sections, ";");
  EXPECT_EQ(sections, (std::vector<std::string>{"b\n", " a\n"}));
}

TEST(ExplodeSections, streamWithLineBeforeTitle_fails) {
  std::istringstream input("x\n");
  std::vector<std::string> sections;
  EXPECT_EQ(thrownBy([&] { explode_sections(input, TITLES, sections, ";"); }),
            (Thrown{"Expected section header in first non-empty line:\n'x'", "[TKL::explode_sections]"}));
}

TEST(ExplodeSection, endsAtTheNextBracketedLine) {
  Lines lines = {"old"};
  explode_section("[A]\na\n[B]\nb\nc\n[A]\nd ; comment\n", "A", lines);
  EXPECT_EQ(lines, (Lines{"a", "d "}));
}

TEST(ExplodeSection, otherSectionOnly_givesNothing) {
  Lines lines;
  explode_section("[B]\nb\n", "A", lines);
  EXPECT_TRUE(lines.empty());
}

TEST(ExplodeSection, commentAndBlankLines_mayStandBeforeTheTitle) {
  Lines lines;
  explode_section("; text\n\n \t\nA =\nx", "A", lines);
  EXPECT_EQ(lines, Lines{"x"});
}

TEST(ExplodeSection, lineBeforeAnyTitle_fails) {
  Lines lines;
  EXPECT_EQ(thrownBy([&] { explode_section("x\n[A]\n", "A", lines); }),
            (Thrown{"Expected keyword/section title!", "[explode_section]"}));
}

}  // namespace
}  // namespace TKL
