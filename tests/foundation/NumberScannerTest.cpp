#include "foundation/NumberScanner.h"

#include <gtest/gtest.h>

#include <string>

namespace TKL {
namespace {

struct Case {
  const char* text;
  double value;
  const char* rest;
};

class ScanNumber : public ::testing::TestWithParam<Case> {};

TEST_P(ScanNumber, takesTheNumberOff) {
  std::string_view text = GetParam().text;
  double value = -99.0;
  ASSERT_TRUE(scanNumber(text, value));
  EXPECT_DOUBLE_EQ(value, GetParam().value);
  EXPECT_EQ(text, GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(Numbers, ScanNumber,
                         ::testing::Values(Case{"1", 1.0, ""}, Case{"-1.5e-3x", -0.0015, "x"},
                                           Case{"+2 m", 2.0, " m"}, Case{".5.5", 0.5, ".5"},
                                           Case{"5.", 5.0, ""}, Case{"1,5", 1.0, ",5"}, Case{"1e", 1.0, "e"},
                                           Case{"0x10", 0.0, "x10"}));

TEST(ScanNumberFailure, leavesBothArguments) {
  for (const std::string start :
       {"", "-", "+", ".", "--1", "+-1", "-+1", "e5", "inf", "-inf", "nan", " 1", "1e999"}) {
    std::string_view text = start;
    double value = -99.0;
    EXPECT_FALSE(scanNumber(text, value)) << start;
    EXPECT_EQ(text, start);
    EXPECT_EQ(value, -99.0);
  }
}

TEST(ScanWord, takesWordAfterWord) {
  std::string_view text = " \t a\nbc\r";
  EXPECT_EQ(scanWord(text), "a");
  EXPECT_EQ(scanWord(text), "bc");
  EXPECT_EQ(scanWord(text), "");
  EXPECT_EQ(scanWord(text), "");
}

}  // namespace
}  // namespace TKL
