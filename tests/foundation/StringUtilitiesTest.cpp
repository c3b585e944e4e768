#include "foundation/StringUtilities.h"

#include <gtest/gtest.h>

#include <string>

namespace TKL {
namespace {

std::string trimmed(std::string text, std::string_view chars = TRIM_CHARS) {
  trim(text, chars);
  return text;
}

TEST(Trim, cutsBlanksTabsAndCarriageReturns) {
  EXPECT_EQ(trimmed(" \t\ra b\r\t "), "a b");
}

TEST(Trim, keepsLineFeeds) {
  EXPECT_EQ(trimmed(" \na\n "), "\na\n");
}

TEST(Trim, nothingButBlanks_becomesEmpty) {
  EXPECT_EQ(trimmed(" \t \r"), "");
}

TEST(Trim, empty_staysEmpty) {
  EXPECT_EQ(trimmed(""), "");
}

TEST(Trim, ownCharacters_replaceTheDefault) {
  EXPECT_EQ(trimmed("xx axx", "x"), " a");
}

TEST(Trim, copy_givesTheSame) {
  for (const std::string text : {" a ", "", "  ", "\ta\n", "ab"}) {
    EXPECT_EQ(trim_copy(text), trimmed(text));
  }
}

TEST(Case, lowerAndUpper_changeLettersOnly) {
  EXPECT_EQ(to_lower("aB1_\xC4"), "ab1_\xC4");
  EXPECT_EQ(to_upper("aB1_\xE4"), "AB1_\xE4");
}

TEST(NoCase, compare_ignoresCase) {
  EXPECT_TRUE(string_nocase_compare("yEs", "YeS"));
}

TEST(NoCase, compare_needsEqualLengths) {
  EXPECT_FALSE(string_nocase_compare("yes", "yesx"));
  EXPECT_FALSE(string_nocase_compare("yesx", "yes"));
}

TEST(NoCase, compare_seesOtherLetters) {
  EXPECT_FALSE(string_nocase_compare("yes", "yet"));
}

TEST(NoCase, find_givesFirstPosition) {
  EXPECT_EQ(string_nocase_find("xABab", "Ab"), 1);
}

TEST(NoCase, find_emptyTextGivesMinusOne) {
  EXPECT_EQ(string_nocase_find("", "a"), -1);
}

TEST(NoCase, find_emptyTextComesBeforeEmptyPattern) {
  EXPECT_EQ(string_nocase_find("", ""), -1);
}

TEST(NoCase, find_emptyPatternGivesZero) {
  EXPECT_EQ(string_nocase_find("abc", ""), 0);
}

TEST(NoCase, find_noMatchGivesMinusOne) {
  EXPECT_EQ(string_nocase_find("abc", "abcd"), -1);
}

TEST(ExtractKeyword, splitsAtTheFirstEqualSign) {
  std::string keyword;
  std::string value;
  EXPECT_TRUE(extract_keyword(" A \t=  B = C\r", keyword, value));
  EXPECT_EQ(keyword, "A");
  EXPECT_EQ(value, "B = C");
}

TEST(ExtractKeyword, noEqualSign_valueIsTheWholeLine) {
  std::string keyword = "old";
  std::string value;
  EXPECT_FALSE(extract_keyword(" some text ", keyword, value));
  EXPECT_EQ(keyword, "");
  EXPECT_EQ(value, " some text ");
}

TEST(ExtractKeyword, nothingBehindEqualSign_valueIsEmpty) {
  std::string keyword;
  std::string value = "old";
  EXPECT_TRUE(extract_keyword("A = \t", keyword, value));
  EXPECT_EQ(value, "");
}

TEST(ExtractKeyword, lineMayBeTheValueItself) {
  std::string keyword;
  std::string line = "A = B";
  EXPECT_TRUE(extract_keyword(line, keyword, line));
  EXPECT_EQ(keyword, "A");
  EXPECT_EQ(line, "B");
}

TEST(RemoveComment, cutsAtTheFirstSemicolon) {
  EXPECT_EQ(remove_comment("a ;b;c"), "a ");
}

TEST(RemoveComment, withoutComment_isUnchanged) {
  EXPECT_EQ(remove_comment("a # b"), "a # b");
}

TEST(SectionTitle, allFormsOfATitle) {
  for (const char* line : {"INIT", "[INIT]", "[INIT", "INIT]", "INIT=", "[INIT=]"}) {
    EXPECT_EQ(section_title(line), "INIT") << line;
  }
}

TEST(SectionTitle, blanksStay) {
  EXPECT_EQ(section_title("INIT ="), "INIT ");
  EXPECT_EQ(section_title(" [INIT]"), " [INIT");
}

TEST(SectionTitle, bracketsAndSignsOnly_becomeEmpty) {
  EXPECT_EQ(section_title(""), "");
  EXPECT_EQ(section_title("["), "");
  EXPECT_EQ(section_title("[=]"), "");
}

TEST(SectionTitle, onlyOneOfEachIsCut) {
  EXPECT_EQ(section_title("[[A==]]"), "[A==]");
}

TEST(PadText, widthZero_isUnchanged) {
  EXPECT_EQ(pad_text("a", 0), "a");
}

TEST(PadText, signOfWidth_givesTheSide) {
  EXPECT_EQ(pad_text("a", 3, '-'), "--a");
  EXPECT_EQ(pad_text("a", -3), "a  ");
}

}  // namespace
}  // namespace TKL
