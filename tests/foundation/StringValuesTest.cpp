#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/StringUtilities.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

/// What a stream in the C locale makes of a text; the reference for all conversions.
template <typename T>
bool streamValue(const std::string& text, T& value) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  return static_cast<bool>(stream >> value);
}

template <typename T>
void expectAsStream(const std::string& text) {
  T expected{};
  const bool readable = streamValue(text, expected);
  T value{};
  ASSERT_EQ(tryString2val(text, value), readable) << '\'' << text << '\'';
  if (readable) {
    EXPECT_EQ(value, expected) << '\'' << text << '\'';
  }
}

const char* const NUMBER_TEXTS[] = {"0",
                                    "-0",
                                    "+5",
                                    "12x",
                                    "12 13",
                                    "  \t\n\v\f\r7",
                                    "1.5",
                                    "5.",
                                    ".5",
                                    ".",
                                    "-",
                                    "+",
                                    "",
                                    "  ",
                                    "+-5",
                                    "--5",
                                    "- 5",
                                    "1e5",
                                    "1E+5",
                                    "1e-5",
                                    "1e",
                                    "1e+",
                                    "1ex",
                                    "1.5.3",
                                    "1e5.3",
                                    "e5",
                                    ".e5",
                                    "inf",
                                    "-inf",
                                    "infinity",
                                    "nan",
                                    "NaN",
                                    "nan(1)",
                                    "0x10",
                                    "0x1p3",
                                    "1,5",
                                    "1,000",
                                    "1'000",
                                    "1e400",
                                    "-1e400",
                                    "1e-400",
                                    "-1e-400",
                                    "1e-310",
                                    "4.9e-324",
                                    "1e-99999999",
                                    "1e99999999",
                                    "0e999999999",
                                    "00012",
                                    "007.50",
                                    "2147483647",
                                    "-1",
                                    "2147483648",
                                    "-2147483648",
                                    "-2147483649",
                                    "4294967295",
                                    "4294967296",
                                    "-4294967295",
                                    "-4294967296",
                                    "9223372036854775807",
                                    "9223372036854775808",
                                    "-9223372036854775808",
                                    "18446744073709551615",
                                    "18446744073709551616",
                                    "-18446744073709551615",
                                    "99999999999999999999999",
                                    "1d5",
                                    "1_0",
                                    "0.1e1e1",
                                    "1.7976931348623157e308",
                                    "1.7976931348623159e308",
                                    "0.000000000000000000000000000000000001e-300",
                                    "123456789012345678901234567890e300",
                                    "1.#QNAN x"};

TEST(String2val, double_asAStreamReadsIt) {
  for (const char* text : NUMBER_TEXTS) {
    expectAsStream<double>(text);
  }
}

TEST(String2val, float_asAStreamReadsIt) {
  for (const char* text : NUMBER_TEXTS) {
    expectAsStream<float>(text);
  }
  expectAsStream<float>("1e-50");
  expectAsStream<float>("1e39");
}

TEST(String2val, integers_asAStreamReadsThem) {
  for (const char* text : NUMBER_TEXTS) {
    expectAsStream<int>(text);
    expectAsStream<unsigned int>(text);
    expectAsStream<long>(text);
    expectAsStream<unsigned long>(text);
    expectAsStream<long long>(text);
    expectAsStream<unsigned long long>(text);
  }
}

TEST(String2val, randomTexts_asAStreamReadsThem) {
  std::mt19937 generator(5489);
  const std::string alphabet = "0123456789+-.eE x";
  std::uniform_int_distribution<std::size_t> character(0, alphabet.size() - 1);
  std::uniform_int_distribution<int> length(0, 9);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (int n = length(generator); n > 0; --n) {
      text += alphabet[character(generator)];
    }
    expectAsStream<double>(text);
    expectAsStream<int>(text);
    expectAsStream<unsigned int>(text);
  }
}

TEST(String2val, referenceItself_refusesText) {
  double value = 0;
  EXPECT_FALSE(streamValue("x", value));
}

TEST(String2val, manyDigits_overflowOrUnderflowIsTold) {
  const std::string zeros(400, '0');
  expectAsStream<double>("1" + zeros);
  expectAsStream<double>("0." + zeros + "1");
  expectAsStream<double>("1" + zeros + "e-400");
  expectAsStream<double>("0." + zeros + "1e401");
}

TEST(String2val, trailingText_isIgnored) {
  EXPECT_EQ(string2val<int>("12x"), 12);
}

TEST(String2val, minusOneAsUnsigned_wraps) {
  EXPECT_EQ(string2val<unsigned int>("-1"), 4294967295U);
}

TEST(String2val, specialText_isNotANumber) {
  EXPECT_TRUE(std::isnan(string2val<double>("1.#QNAN")));
}

TEST(String2val, specialTextWithBlank_isReadAsOne) {
  EXPECT_EQ(string2val<double>(" 1.#QNAN"), 1.0);
}

TEST(String2val, word_isReadUpToWhiteSpace) {
  EXPECT_EQ(string2val<std::string>("  ab c"), "ab");
}

TEST(String2val, failure_namesTheText) {
  EXPECT_EQ(thrownBy([] { string2val<double>("abc"); }),
            (Thrown{"Could not convert 'abc' into value.", "[string2val]"}));
  EXPECT_EQ(thrownBy([] { string2val<std::string>("  "); }),
            (Thrown{"Could not convert '  ' into value.", "[string2val]"}));
}

TEST(String2val, failure_leavesTheValueOfTheCaller) {
  double real = 1.5;
  int integer = 7;
  EXPECT_FALSE(tryString2val("1e400", real));
  EXPECT_FALSE(tryString2val("99999999999", integer));
  EXPECT_EQ(real, 1.5);
  EXPECT_EQ(integer, 7);
}

TEST(String2val, processLocaleWithComma_changesNothing) {
  struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
  const double value = string2val<double>("1.5");
  const std::string text = val2string(2.5);
  std::locale::global(before);
  EXPECT_EQ(value, 1.5);
  EXPECT_EQ(text, "2.5");
}

TEST(String2val, tenMegabytesOfDigits_areReadOnce) {
  EXPECT_EQ(string2val<double>("0." + std::string(10000000, '3')), 1.0 / 3.0);
}

TEST(Val2string, doubles_asAStreamWritesThem) {
  for (const double value :
       {0.0, -0.0, 1.0, -1.5, 1.0 / 3.0, 123456.0, 1234567.0, 0.0001, 0.00001234567, 1e300, -1e-300, 999999.5,
        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    EXPECT_EQ(val2string(value), stream.str());
  }
}

TEST(Val2string, notANumber_isSpecialText) {
  EXPECT_EQ(val2string(std::numeric_limits<double>::quiet_NaN()), "1.#QNAN");
  EXPECT_EQ(val2string(-std::numeric_limits<double>::quiet_NaN()), "1.#QNAN");
}

TEST(Val2string, integers_areWrittenInFull) {
  EXPECT_EQ(val2string(-2147483647 - 1), "-2147483648");
  EXPECT_EQ(val2string(4294967295U), "4294967295");
}

TEST(String2valueVector, appendsUntilTextFails) {
  std::vector<double> values = {9};
  string2valueVector("1 2.5\t-3e1 x 4", values);
  EXPECT_EQ(values, (std::vector<double>{9, 1, 2.5, -30}));
}

TEST(String2valueVector, numberWithTrailingText_isTakenBeforeTheEnd) {
  std::vector<int> values;
  string2valueVector("1 2x 3", values);
  EXPECT_EQ(values, (std::vector<int>{1, 2}));
}

TEST(String2valueVector, numbersThatTouch_areSeparated) {
  std::vector<double> values;
  string2valueVector("1.5.25+3", values);
  EXPECT_EQ(values, (std::vector<double>{1.5, 0.25, 3}));
}

TEST(String2valueVector, emptyText_appendsNothing) {
  std::vector<unsigned int> values;
  string2valueVector(" ", values);
  EXPECT_TRUE(values.empty());
}

}  // namespace
}  // namespace TKL
