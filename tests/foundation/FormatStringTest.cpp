#include "foundation/FormatString.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "foundation/MultiLanguageString.h"
#include "foundation/Path.h"
#include "foundation/Unit.h"

namespace TKL {
namespace {

TEST(FormatString, plainText_isUnchanged) {
  EXPECT_EQ(FormatString("a b\n").str(), "a b\n");
}

TEST(FormatString, percentAtEnd_isLiteral) {
  EXPECT_EQ(FormatString("100%").str(), "100%");
}

TEST(FormatString, doublePercent_isOnePercent) {
  EXPECT_EQ(FormatString("100%%").str(), "100%");
}

TEST(FormatString, doublePercentBeforeDigit_isNoPlaceholder) {
  EXPECT_EQ(FormatString("a%%1b").arg("x").str(), "a%1b");
}

TEST(FormatString, percentBeforeLetter_isLiteral) {
  EXPECT_EQ(FormatString("5 %C %1").arg(1).str(), "5 %C 1");
}

TEST(FormatString, sameNumberTwice_isRenderedTwice) {
  EXPECT_EQ(FormatString("%1 %1").arg("x").str(), "x x");
}

TEST(FormatString, numbersOutOfOrder_takeTheirArguments) {
  EXPECT_EQ(FormatString("%2%1").arg("a").arg("b").str(), "ba");
}

TEST(FormatString, missingArgument_leavesPlaceholder) {
  EXPECT_EQ(FormatString("%3").arg("x").str(), "%3");
}

TEST(FormatString, numberZero_isAlwaysPutBack) {
  EXPECT_EQ(FormatString("a%0b").arg("x").str(), "a%0b");
}

TEST(FormatString, surplusArguments_areIgnored) {
  EXPECT_EQ(FormatString("%1").arg(1).arg(2).str(), "1");
}

TEST(FormatString, digitRun_isOneNumber) {
  EXPECT_EQ(FormatString("%12").arg("x").arg("y").str(), "%12");
}

TEST(FormatString, twelfthArgument_isReached) {
  FormatString text("%12");
  for (int i = 1; i <= 12; ++i) {
    text.arg(i);
  }
  EXPECT_EQ(text.str(), "12");
}

TEST(FormatString, leadingZeros_doNotCount) {
  EXPECT_EQ(FormatString("%01 %02").arg("x").str(), "x %2");
}

TEST(FormatString, hugeNumber_isPutBack) {
  EXPECT_EQ(FormatString("%99999999999999999999999").arg("x").str(), "%99999999999999999999999");
}

TEST(FormatString, placeholderInArgument_isNotReplaced) {
  EXPECT_EQ(FormatString("%1 %2").arg("%2").arg("b").str(), "%2 b");
}

TEST(FormatString, emptyArgument_rendersNothing) {
  EXPECT_EQ(FormatString("a%1b").arg("").str(), "ab");
}

TEST(FormatString, positiveWidth_alignsRight) {
  EXPECT_EQ(FormatString("%1").arg("ab", 4).str(), "  ab");
}

TEST(FormatString, negativeWidth_alignsLeft) {
  EXPECT_EQ(FormatString("%1").arg(std::string("ab"), -4, '.').str(), "ab..");
}

TEST(FormatString, widthBelowLength_cutsNothing) {
  EXPECT_EQ(FormatString("%1").arg("abc", 2).str(), "abc");
}

TEST(FormatString, integers_takeWidthAndFill) {
  EXPECT_EQ(FormatString("%1 %2").arg(-7, 5).arg(7U, 3, '0').str(), "   -7 007");
}

TEST(FormatString, wideIntegers_areWrittenInFull) {
  EXPECT_EQ(FormatString("%1 %2").arg(-9223372036854775807L).arg(std::size_t{18446744073709551615U}).str(),
            "-9223372036854775807 18446744073709551615");
  EXPECT_EQ(FormatString("%1 %2").arg(-5LL).arg(5ULL).str(), "-5 5");
}

TEST(FormatString, otherTextTypes_areTakenAsText) {
  EXPECT_EQ(FormatString("%1%2").arg(std::string_view("ab")).arg('c').str(), "abc");
}

TEST(FormatString, nullText_isEmpty) {
  const char* const nothing = nullptr;
  EXPECT_EQ(FormatString("<%1>").arg(nothing).str(), "<>");
}

TEST(FormatString, doubleByDefault_hasSixSignificantDigits) {
  EXPECT_EQ(FormatString("%1 %2").arg(3.14159265).arg(1234567.0).str(), "3.14159 1.23457e+06");
}

TEST(FormatString, notANumber_isSpecialTextInDefaultFormatOnly) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(FormatString("%1 %2").arg(nan).arg(nan, 5).str(), "1.#QNAN   nan");
}

TEST(FormatString, doubleWithWidth_keepsSixDigits) {
  EXPECT_EQ(FormatString("%1|%2").arg(0.1234567, 10).arg(2.0, -4).str(), "  0.123457|2   ");
}

TEST(FormatString, formatF_isFixed) {
  EXPECT_EQ(FormatString("%1 %2").arg(2.0, 0, 'f', 2).arg(0.5, 0, 'f').str(), "2.00 0.500000");
}

TEST(FormatString, formatE_isScientificInBothCases) {
  EXPECT_EQ(FormatString("%1 %2").arg(1250.0, 0, 'e', 1).arg(-0.5, 0, 'E', 2).str(), "1.2e+03 -5.00e-01");
}

TEST(FormatString, formatGWithPrecision_hasSoManyDigits) {
  EXPECT_EQ(FormatString("%1").arg(3.14159265, 0, 'g', 3).str(), "3.14");
}

TEST(FormatString, largestDoubleFixed_isWrittenInFull) {
  // 1.797...e308 has 309 digits in front of the point.
  const std::string text = FormatString("%1").arg(std::numeric_limits<double>::max(), 0, 'f', 1).str();
  EXPECT_EQ(text.size(), 311U);
}

TEST(FormatString, path_isItsText) {
  EXPECT_EQ(FormatString("%1").arg(Path("a\\b")).str(), "a/b");
}

TEST(FormatString, unit_isItsName) {
  EXPECT_EQ(FormatString("%1").arg(Unit("kg/m3")).str(), "kg/m3");
}

TEST(FormatString, languageString_isEnglish) {
  EXPECT_EQ(FormatString("%1").arg(MultiLanguageString("de:Ziegel|en:Brick")).str(), "Brick");
}

TEST(FormatString, languageStringWithoutEnglish_isTheCommonText) {
  EXPECT_EQ(FormatString("%1").arg(MultiLanguageString("Any|de:Ziegel"), 5).str(), "  Any");
}

}  // namespace
}  // namespace TKL
